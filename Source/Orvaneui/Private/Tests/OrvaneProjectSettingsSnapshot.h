// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

#if WITH_DEV_AUTOMATION_TESTS

/**
 * The project settings the camera setup writes, as they were when the snapshot was taken: the default
 * configuration files on disk and the values of the settings objects in memory. Restoring puts both back, so a
 * test that runs a setup leaves the project as it found it.
 */
class FOrvaneProjectSettingsSnapshot
{
public:
	/** Records the files and the values. */
	void Capture();

	/** Writes the recorded files back, makes the configuration cache read them again and resets the values. */
	void Restore() const;

	/** The recorded text of a default configuration file ("DefaultEngine.ini"). */
	FString GetConfigText(const FString& BaseFilename) const;

	/** The current text of a default configuration file of the project. */
	static FString ReadConfigText(const FString& BaseFilename);

	/** The full name of a default configuration file of the project. */
	static FString GetConfigFilename(const FString& BaseFilename);

private:
	TMap<FString, TArray<uint8>> ConfigFiles;
	bool bAlphaChannel = false;
	uint8 BackBufferPixelFormat = 0;
	FString GlobalDefaultGameMode;
	FString DefaultLiveLinkPreset;
};

#endif
