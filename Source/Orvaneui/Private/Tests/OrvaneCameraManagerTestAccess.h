// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "OrvaneCameraManager.h"

#if WITH_DEV_AUTOMATION_TESTS

/** Lets the camera manager's tests call its private steps one at a time. */
struct FOrvaneCameraManagerTestAccess
{
	static bool CreateOrvaneCamera(const FString& PresetName, bool bApplyAlphaMaterial)
	{
		return FOrvaneCameraManager::CreateOrvaneCamera(PresetName, bApplyAlphaMaterial);
	}

	static bool CreateLiveLinkSourceAndPreset(const FString& Endpoint, const FString& PresetName)
	{
		return FOrvaneCameraManager::CreateLiveLinkSourceAndPreset(Endpoint, PresetName);
	}

	static bool SetLiveLinkPresetOnCamera(AActor* Camera, const FString& PresetName)
	{
		return FOrvaneCameraManager::SetLiveLinkPresetOnCamera(Camera, PresetName);
	}

	static void ApplyPresetToLastCreatedCamera(const FString& PresetName)
	{
		FOrvaneCameraManager::ApplyPresetToLastCreatedCamera(PresetName);
	}

	static void RemoveExistingOrvaneCameras() { FOrvaneCameraManager::RemoveExistingOrvaneCameras(); }

	static void RemoveExistingLiveLinkSources() { FOrvaneCameraManager::RemoveExistingLiveLinkSources(); }

	static void RemoveExistingPreset(const FString& PresetName)
	{
		FOrvaneCameraManager::RemoveExistingPreset(PresetName);
	}

	static void DeletePresetFile(const FString& PresetPath) { FOrvaneCameraManager::DeletePresetFile(PresetPath); }

	static void ClearStartupPresetIfMatching(UObject* Preset)
	{
		FOrvaneCameraManager::ClearStartupPresetIfMatching(Preset);
	}

	static bool SetDefaultGameMode() { return FOrvaneCameraManager::SetDefaultGameMode(); }

	static bool SetLiveLinkStartupPreset(const FString& PresetName)
	{
		return FOrvaneCameraManager::SetLiveLinkStartupPreset(PresetName);
	}

	static bool SetPostProcessMaterialOnCamera(AActor* Camera, const FString& MaterialPath)
	{
		return FOrvaneCameraManager::SetPostProcessMaterialOnCamera(Camera, MaterialPath);
	}

	static void ApplyPostProcessMaterialToLastCreatedCamera(const FString& MaterialPath)
	{
		FOrvaneCameraManager::ApplyPostProcessMaterialToLastCreatedCamera(MaterialPath);
	}

	/** Makes an actor the remembered camera, as a spawn would, without spawning one. */
	static void RememberCamera(AActor* Camera) { FOrvaneCameraManager::LastCreatedCamera = Camera; }
};

#endif
