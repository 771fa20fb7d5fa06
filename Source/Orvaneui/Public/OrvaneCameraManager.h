// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/WeakObjectPtrTemplates.h"

class AActor;
class UObject;

/**
 * Every change the one-click setup makes to the editor level and the project: the camera, the Live Link
 * source and preset, the post-process material for alpha and the project settings. All members are static
 * and run on the game thread; deferred steps run later on the same thread and read the last created camera
 * when they fire.
 */
class ORVANEUI_API FOrvaneCameraManager
{
public:
	/**
	 * Sets the default game mode, replaces the Live Link source and preset, spawns the camera and, for alpha,
	 * puts the mask material on it and makes the renderer settings alpha-ready. The preset is saved and bound
	 * to the camera about one second later. True when the source was created and the camera spawned and set up.
	 */
	static bool CreateCompleteSetup(const FString& Endpoint, const FString& PresetName, bool bRenderAlpha);

	/** Spawns a camera and binds it, one second later, to the project's default Live Link preset if there is one. */
	static bool CreateOrvaneCameraOnly();

	/** The camera spawned last, or null once it is gone or was never spawned. */
	static AActor* GetLastCreatedCamera();

	/** Whether the project's default Live Link preset is set and loads. Loads it; logs nothing. */
	static bool HasDefaultPreset();

private:
	friend struct FOrvaneCameraManagerTestAccess;

	/** Removes earlier cameras, spawns the camera at the origin and remembers it; binds and dresses it as asked. */
	static bool CreateOrvaneCamera(const FString& PresetName, bool bApplyAlphaMaterial);

	/** Replaces the earlier sources and preset, creates the source and schedules the preset step one second later. */
	static bool CreateLiveLinkSourceAndPreset(const FString& Endpoint, const FString& PresetName);

	/** Writes the preset /Game/Orvane/<PresetName> and the enable switch into the camera's Blueprint variables. */
	static bool SetLiveLinkPresetOnCamera(AActor* Camera, const FString& PresetName);

	/** Binds the preset to whatever camera is the last created one, one second from now. */
	static void ApplyPresetToLastCreatedCamera(const FString& PresetName);

	/** Destroys every camera of the plug-in's camera class in the editor level and forgets the last one. */
	static void RemoveExistingOrvaneCameras();

	/** Removes the plug-in's Live Link sources. */
	static void RemoveExistingLiveLinkSources();

	/** Removes the preset of that name from memory and from disk, clearing the startup preset if it is this one. */
	static void RemoveExistingPreset(const FString& PresetName);

	/** Makes the preset and its package transient, destroys them and deletes the package file. */
	static void CleanupPresetAsset(UObject* Preset, const FString& PresetPath);

	/** Deletes the package file of an object or package path. */
	static void DeletePresetFile(const FString& PresetPath);

	/** Clears the Live Link startup preset when it refers to Preset. */
	static void ClearStartupPresetIfMatching(UObject* Preset);

	/** Makes the plug-in's game mode the project's global default game mode. */
	static bool SetDefaultGameMode();

	/** Makes the preset /Game/Orvane/<PresetName> the project's Live Link startup preset. */
	static bool SetLiveLinkStartupPreset(const FString& PresetName);

	/** Appends the material at MaterialPath to the camera's post-process blendables with weight 1. */
	static bool SetPostProcessMaterialOnCamera(AActor* Camera, const FString& MaterialPath);

	/** Appends the material to whatever camera is the last created one, one second from now. */
	static void ApplyPostProcessMaterialToLastCreatedCamera(const FString& MaterialPath);

	/** The camera spawned last; it never keeps the actor alive. */
	static TWeakObjectPtr<AActor> LastCreatedCamera;
};
