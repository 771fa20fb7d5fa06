// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"

/**
 * The headless editor's main loop. PreInit reads the command line and mounts the project, Init loads
 * the engine and plug-in modules, Tick runs one frame, Exit shuts the modules down in reverse order.
 * With FApp::UseFixedTimeStep() each frame advances the application clock by FApp::GetFixedDeltaTime()
 * without waiting, which is how tests run on a simulated clock.
 */
class LAUNCH_API FEngineLoop
{
public:
	/** Parses the command line (first token: a project file or folder) and sets the project paths. */
	int32 PreInit(const TCHAR* CmdLine);

	/** Loads the plug-in's modules through the module manager, so their StartupModule runs. */
	int32 Init();

	/** Advances the application clock by one frame and ticks the core ticker and the engine. */
	void Tick();

	/** Shuts down and unloads every module, in reverse load order. */
	void Exit();

	/** Names of the plug-in modules Init loaded, in load order. */
	const TArray<FName>& GetLoadedPluginModules() const { return LoadedPluginModules; }

private:
	/** Appends the plug-in modules of one loading phase that are now loaded. */
	void RecordLoadedPluginModules(ELoadingPhase::Type Phase);

	TArray<FName> LoadedPluginModules;
	double LastRealTime = 0.0;
};

/** The process's engine loop. */
extern LAUNCH_API FEngineLoop GEngineLoop;
