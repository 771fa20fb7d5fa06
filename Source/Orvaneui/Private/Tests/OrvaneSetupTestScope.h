// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "OrvaneLogCapture.h"
#include "OrvaneProjectSettingsSnapshot.h"
#include "Templates/UniquePtr.h"

#if WITH_DEV_AUTOMATION_TESTS

/**
 * One camera-setup test's footprint: it records the log and the project settings when the test starts and, when
 * the test ends, removes the cameras, sources and presets the test made and puts the settings back.
 */
class FOrvaneSetupTestScope
{
public:
	/** Starts recording; PresetNames are the presets the test may create. */
	void Begin(const TArray<FString>& InPresetNames = {});

	/** Cleans up and stops recording. */
	void End();

	/** The LogTemp lines since Begin. */
	FOrvaneLogCapture& GetLog() { return *Log; }

	/** The project settings as they were at Begin. */
	const FOrvaneProjectSettingsSnapshot& GetSettingsAtBegin() const { return Settings; }

	/** Gives the renderer settings the values of a project that does or does not render alpha (in memory only). */
	static void SetRendererAlphaReady(bool bAlphaChannel, uint8 BackBufferPixelFormat);

private:
	TUniquePtr<FOrvaneLogCapture> Log;
	FOrvaneProjectSettingsSnapshot Settings;
	TArray<FString> PresetNames;
};

#endif
