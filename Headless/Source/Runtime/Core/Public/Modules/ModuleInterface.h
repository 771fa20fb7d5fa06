// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** The interface every module implements; the module manager creates it, starts it and shuts it down. */
class IModuleInterface
{
public:
	virtual ~IModuleInterface() {}

	/** Called right after the module is created and loaded. */
	virtual void StartupModule() {}

	/** Called before the module is unloaded, while every other module is still loaded. */
	virtual void PreUnloadCallback() {}

	/** Called after the module was reloaded. */
	virtual void PostLoadCallback() {}

	/** Called before the module is destroyed, at unload or at shutdown. */
	virtual void ShutdownModule() {}

	/** Whether the module may be unloaded and loaded again while the application runs. */
	virtual bool SupportsDynamicReloading() { return true; }

	/** Whether UnloadModulesAtShutdown shuts this module down; others are left to the process exit. */
	virtual bool SupportsAutomaticShutdown() { return true; }

	/** Whether this is a game module. */
	virtual bool IsGameModule() const { return false; }
};
