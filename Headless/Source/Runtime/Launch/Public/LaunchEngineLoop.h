// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"
#include "UnrealEngine.h"

/**
 * The headless editor's main loop. PreInit reads the command line and mounts the project, Init loads
 * the engine and plug-in modules and creates the editor engine (GEngine, GEditor) with its world, Tick
 * runs one frame, Exit shuts the engine and the modules down in reverse order.
 * With FApp::UseFixedTimeStep() each frame advances the application clock by FApp::GetFixedDeltaTime()
 * without waiting, which is how tests run on a simulated clock.
 */
class LAUNCH_API FEngineLoop : public IEngineLoop
{
public:
	/** Parses the command line (first token: a project file or folder) and sets the project paths. */
	int32 PreInit(const TCHAR* CmdLine);

	/**
	 * Loads the engine modules and the plug-ins' modules through the module manager, so their StartupModule
	 * runs. The editor engine is created after the modules of the loading phases up to PostDefault and before
	 * those of PostEngineInit, as in the editor.
	 */
	virtual int32 Init() override;

	/**
	 * Advances the application clock by one frame: begin-frame events, the core ticker, then the engine's tick
	 * (the editor's timers and world), then the end-frame event.
	 */
	virtual void Tick() override;

	/** Nothing is queued for deletion at the end of a headless frame. */
	virtual void ClearPendingCleanupObjects() override {}

	/** Shuts down and unloads every module, in reverse load order. */
	void Exit();

	/** Names of the plug-in modules Init loaded, in load order. */
	const TArray<FName>& GetLoadedPluginModules() const { return LoadedPluginModules; }

private:
	/** Creates GEngine (and GEditor) from the configured editor engine class and starts it. */
	bool InitEngine();

	/** Appends the plug-in modules of one loading phase that are now loaded. */
	void RecordLoadedPluginModules(ELoadingPhase::Type Phase);

	TArray<FName> LoadedPluginModules;
	double LastRealTime = 0.0;
};

/** The process's engine loop. */
extern LAUNCH_API FEngineLoop GEngineLoop;
