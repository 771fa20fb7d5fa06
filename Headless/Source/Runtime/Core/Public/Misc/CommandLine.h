// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/**
 * The process's command line, without the executable name. Set once at start-up; later switches
 * are added with Append. GetOriginal keeps the text as first set.
 */
struct FCommandLine
{
	/** Longest command line kept, as in the engine's fixed-size buffer. */
	static constexpr uint32 MaxCommandLineSize = 16384;

	/** Replaces the command line; the first call also records the original. Returns false if it was cut to size. */
	static CORE_API bool Set(const TCHAR* NewCommandLine);

	/** The current command line; empty (never null) before Set. */
	static CORE_API const TCHAR* Get();

	/** The command line as first set, before any Append. */
	static CORE_API const TCHAR* GetOriginal();

	/** Adds text to the end of the current command line (callers include the leading space). */
	static CORE_API void Append(const TCHAR* AppendString);

	/** Whether Set has been called. */
	static CORE_API bool IsInitialized();

	/** Forgets the command line, so Set records a new original; for hosts that run several sessions. */
	static CORE_API void Reset();
};
