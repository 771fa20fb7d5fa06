// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "HAL/PlatformAffinity.h"

class FRunnable;

/**
 * A thread running an FRunnable. Create starts it and returns once the runnable's Init has run on
 * the new thread. Deleting the object kills the thread and waits for it.
 */
class CORE_API FRunnableThread
{
public:
	/**
	 * Starts a thread running InRunnable. Returns null if the thread could not be started.
	 * @param InStackSize Stack size in bytes; 0 for the system's default.
	 */
	static FRunnableThread* Create(FRunnable* InRunnable, const TCHAR* ThreadName, uint32 InStackSize = 0,
		EThreadPriority InThreadPri = TPri_Normal, uint64 InThreadAffinityMask = FPlatformAffinity::GetNoAffinityMask(),
		EThreadCreateFlags InCreateFlags = EThreadCreateFlags::None);

	/** The FRunnableThread the calling thread belongs to, or null for threads not made by Create. */
	static FRunnableThread* GetRunnableThread();

	virtual ~FRunnableThread();

	/** Changes the thread's priority (recorded; the headless engine does not reprioritise threads). */
	virtual void SetThreadPriority(EThreadPriority NewPriority) = 0;

	/** Pausing a thread is not supported by the headless engine; the call reports itself as unimplemented. */
	virtual void Suspend(bool bShouldPause = true) = 0;

	/**
	 * Calls the runnable's Stop, then, if bShouldWait, waits for the thread to finish.
	 * Returns true once the thread is asked to stop.
	 */
	virtual bool Kill(bool bShouldWait = true) = 0;

	/** Waits for the thread to finish. */
	virtual void WaitForCompletion() = 0;

	/** The operating system's id of the thread. */
	uint32 GetThreadID() const { return ThreadID; }

	/** The name given to Create. */
	const FString& GetThreadName() const { return ThreadName; }

	/** The priority the thread was created with or last set to. */
	EThreadPriority GetThreadPriority() const { return ThreadPriority; }

protected:
	FRunnableThread();

	FString ThreadName;
	FRunnable* Runnable = nullptr;
	uint32 ThreadID = 0;
	EThreadPriority ThreadPriority = TPri_Normal;
	uint64 ThreadAffinityMask = 0;
};
