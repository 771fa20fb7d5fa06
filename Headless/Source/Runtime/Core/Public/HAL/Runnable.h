// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class FSingleThreadRunnable;

/**
 * Work that runs on its own thread. FRunnableThread::Create calls Init on the new thread, then Run if
 * Init succeeded, then Exit. Stop asks Run to return early; it is called from another thread.
 */
class FRunnable
{
public:
	virtual ~FRunnable() = default;

	/** Prepares the work on the new thread; returning false skips Run and Exit. */
	virtual bool Init() { return true; }

	/** Does the work; the return value is the thread's exit code. */
	virtual uint32 Run() = 0;

	/** Asks Run to finish early. Called from another thread, typically by FRunnableThread::Kill. */
	virtual void Stop() {}

	/** Cleans up on the thread after Run returned. */
	virtual void Exit() {}

	/** The interface used to tick the work when threads are not available; null when it needs a thread. */
	virtual FSingleThreadRunnable* GetSingleThreadInterface() { return nullptr; }
};
