// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Scene.h"
#include "OrvaneLogCapture.h"

#if WITH_DEV_AUTOMATION_TESTS

class AActor;
class FAutomationTestBase;
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

	/** Whether the only lines an .ini text changed by are game mode lines of the game maps settings (or blank). */
	bool OnlyGameModeChanged(const FString& Before, const FString& After);

	/** The lines of a complete setup that succeeds in a level without a camera of the plug-in. */
	TArray<FOrvaneLogLine> GetCompleteSetupLines();

	/** The lines of the deferred preset step when it saves the preset and binds it to a camera. */
	TArray<FOrvaneLogLine> GetPresetStepLines();

	/** The lines of two complete setups in a row: the second removes the camera of the first. */
	TArray<FOrvaneLogLine> GetTwoCompleteSetupsLines(const FString& FirstCameraName);

	/**
	 * Declares the lines of two complete setups in a row and of their two preset steps. The removal line names a
	 * camera that does not exist yet, so it is declared by its beginning.
	 */
	void ExpectTwoCompleteSetups(FAutomationTestBase& Test);
} // namespace OrvaneCameraManagerTests

#endif
