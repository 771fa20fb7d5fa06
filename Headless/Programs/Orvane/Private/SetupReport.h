// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

class FConfigSnapshot;
struct FSetupRunOptions;
struct FSetupRunResult;

/**
 * The sections `orvane editor --setup` prints, each under a heading of the form "== Title ==" that scripts
 * can find. The camera and Live Link sections read the running editor; the others read the disk.
 */
namespace SetupReport
{
	/**
	 * "Setup call", "Log (LogTemp)", "Warnings and errors of other log categories", "On-screen messages" and
	 * "Restart requests".
	 */
	void PrintRun(const FSetupRunResult& Result);

	/** "Camera": the last created camera, its Blueprint variables and post-process blendables. */
	void PrintCamera();

	/** "Live Link sources": each source of the client with its type, connection string and status. */
	void PrintLiveLinkSources();

	/** "Configuration written": the unified diff of the project's .ini files. */
	void PrintConfigChanges(const FConfigSnapshot& Before, const FConfigSnapshot& After);

	/** "Preset asset": the files under Content/Orvane/ with their sizes, and the text of each package file. */
	void PrintPresetAsset(const FString& ProjectDir, const FSetupRunOptions& Options);
} // namespace SetupReport
