// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class FEvent;

/** The running process and the calling thread, as the operating system sees them. */
struct FPlatformProcess
{
	/** Suspends the calling thread for at least the given number of seconds; 0 yields the processor. */
	static CORE_API void Sleep(float Seconds);

	/** Same as Sleep; the headless engine keeps no thread statistics. */
	static CORE_API void SleepNoStats(float Seconds);

	/** Suspends the calling thread forever. */
	[[noreturn]] static CORE_API void SleepInfinite();

	/** Gives the rest of the calling thread's time slice to other threads. */
	static CORE_API void YieldThread();

	/** The folder of the running executable, ending with '/'. */
	static CORE_API const TCHAR* BaseDir();

	/** The full path of the running executable. */
	static CORE_API const TCHAR* ExecutablePath();

	/** The running executable's file name, without its extension when bRemoveExtension is set. */
	static CORE_API const TCHAR* ExecutableName(bool bRemoveExtension = true);

	/** The process id. */
	static CORE_API uint32 GetCurrentProcessId();

	/** The machine's host name. */
	static CORE_API const TCHAR* ComputerName();

	/** The name of the user running the process, keeping only letters and digits when bOnlyAlphaNumeric. */
	static CORE_API const TCHAR* UserName(bool bOnlyAlphaNumeric = true);

	/** Threads are always available in the headless engine. */
	static constexpr bool SupportsMultithreading() { return true; }

	/** Creates an event the caller owns and deletes. Prefer GetSynchEventFromPool. */
	static CORE_API FEvent* CreateSynchEvent(bool bIsManualReset = false);

	/** Takes an event from the pool, not triggered. Give it back with ReturnSynchEventToPool. */
	static CORE_API FEvent* GetSynchEventFromPool(bool bIsManualReset = false);

	/** Gives a pooled event back; it must have no waiters. Null is ignored. */
	static CORE_API void ReturnSynchEventToPool(FEvent* Event);
};
