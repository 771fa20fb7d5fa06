// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "LogCapture.h"

/** Which of the setup dialog's actions `orvane editor --setup` performs. */
enum class ESetupMode : uint8
{
	/** No setup: boot and report only. */
	None,
	/** "Full Setup": camera, Live Link source and preset, game mode and, if asked, alpha output. */
	Complete,
	/** "Create Camera Only": a camera bound to the project's default preset. */
	CameraOnly
};

/** The setup options of `orvane editor`, with the setup dialog's defaults. */
struct FSetupRunOptions
{
	ESetupMode Mode = ESetupMode::None;

	/** The Live Link endpoint text, passed on as typed (after trimming, as the dialog does). */
	FString Endpoint = TEXT("0.0.0.0:9001");

	/** The name of the Live Link preset asset to create. */
	FString PresetName = TEXT("Orvane_LiveLink_Preset");

	/** The dialog's "Render Alpha:" check box. */
	bool bRenderAlpha = true;

	/** Application time to run after the setup call, so its deferred steps happen. */
	double AdvanceSeconds = 2.0;

	/**
	 * Takes the setup options out of the arguments, leaving the rest.
	 * @return false, with an explanation, when an option is malformed or does not apply to the chosen setup.
	 */
	bool Parse(TArray<FString>& InOutArgs, FString& OutError);
};

/** What one setup run did, as observed from outside the plug-in. */
struct FSetupRunResult
{
	/** The call made, written as source code, e.g. CreateCompleteSetup("0.0.0.0:9001", "P", true). */
	FString Call;

	/** What the call returned. */
	bool bSucceeded = false;

	/** Frames ticked after the call, and the application time they covered. */
	int32 FramesTicked = 0;
	double SecondsAdvanced = 0.0;

	/** The log messages, of every category, from the call to the end of the run. */
	TArray<FCapturedLogLine> LogLines;

	/** The on-screen messages added during the run, and the application time each was added at. */
	TArray<FOnScreenDebugMessageRecord> ScreenMessages;
	TArray<double> ScreenMessageTimes;

	/** The messages still on screen at the end of the run: the unkeyed ones top first, then the keyed ones. */
	TArray<FScreenMessageString> ShownMessages;

	/** The application restart requests made during the run, by the application time they were made at. */
	TArray<double> RestartRequestTimes;
};

/** The duration of one frame of the simulated clock a setup run ticks on. */
inline constexpr double SetupFrameSeconds = 1.0 / 60.0;

/**
 * Calls the setup operation the options name, the way the setup dialog's button does, then ticks the
 * engine loop on a fixed step for the options' application time. The editor must be running.
 */
FSetupRunResult RunSetup(const FSetupRunOptions& Options);
