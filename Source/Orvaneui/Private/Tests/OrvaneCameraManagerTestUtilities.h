// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Scene.h"

#if WITH_DEV_AUTOMATION_TESTS

class AActor;
class UClass;
class UWorld;

/** What the camera manager's tests share: the editor level, the plug-in's camera, waiting on the clock. */
namespace OrvaneCameraManagerTests
{
	/** The plug-in's content paths, as the setup uses them. */
	extern const TCHAR* const CameraClassPath;
	extern const TCHAR* const GameModeClassPath;
	extern const TCHAR* const MaskMaterialPath;

	/** The level being edited. */
	UWorld* GetEditorWorld();

	/** The plug-in's camera Blueprint class, loaded. */
	UClass* LoadCameraClass();

	/** The actors of a class (and its subclasses) in the editor level's active levels, in iteration order. */
	TArray<AActor*> GetActorsOfClass(UClass* Class);

	/** Destroys every actor of the class in the editor level, without a word in the log. */
	void DestroyActorsOfClass(UClass* Class);

	/** An endpoint on the loopback interface that no socket uses right now. */
	FString MakeFreeLoopbackEndpoint();

	/** Removes every tracking source of the plug-in and the preset assets of these names, quietly. */
	void RemoveSourcesAndPresets(const TArray<FString>& PresetNames);

	/** Calls Then once Seconds of application time have passed (the simulated clock in the headless editor). */
	void WaitSeconds(double Seconds, TFunction<void()> Then);

	/** The camera's post-process blendables. */
	TArray<FWeightedBlendable> GetBlendables(const AActor* Camera);

	/** The value of the camera's Blueprint variable "LiveLinkPreset". */
	UObject* GetPresetVariable(const AActor* Camera);

	/** The value of the camera's Blueprint variable "Set LiveLink Preset". */
	bool GetPresetEnableVariable(const AActor* Camera);

	/** The Live Link preset asset /Game/Orvane/<Name>, loaded, or null. */
	UObject* FindPresetAsset(const FString& PresetName);

	/** Whether the package file of the preset /Game/Orvane/<Name> exists. */
	bool PresetFileExists(const FString& PresetName);

	/** The value of a key in a section of an .ini text, or an empty string; the last line of the key wins. */
	FString GetIniValue(const FString& IniText, const FString& Section, const FString& Key);

	/** The lines of an .ini text that differ, as "-old" and "+new" lines (a line diff, in order). */
	TArray<FString> DiffLines(const FString& Before, const FString& After);
} // namespace OrvaneCameraManagerTests

#endif
