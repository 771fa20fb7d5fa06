// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** The engine loop as the engine sees it: the process's FEngineLoop implements it. */
class IEngineLoop
{
public:
	virtual ~IEngineLoop() = default;

	/** Starts the engine; zero on success. */
	virtual int32 Init() = 0;

	/** Runs one frame. */
	virtual void Tick() = 0;

	/** Frees what was queued for deletion at the end of a frame. */
	virtual void ClearPendingCleanupObjects() = 0;
};
