// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** The high-resolution monotonic clock. One cycle is one microsecond. */
struct FPlatformTime
{
	/** Prepares the clock and returns Seconds(). */
	static CORE_API double InitTiming();

	/** Seconds since an arbitrary fixed point; never goes back. */
	static CORE_API double Seconds();

	/** The clock in cycles, wrapping at 32 bits (about 71 minutes). */
	static CORE_API uint32 Cycles();

	/** The clock in cycles. */
	static CORE_API uint64 Cycles64();

	/** Length of one cycle in seconds. */
	static FORCEINLINE double GetSecondsPerCycle() { return 1.0e-6; }

	/** Length of one cycle in seconds, for Cycles64 values. */
	static FORCEINLINE double GetSecondsPerCycle64() { return 1.0e-6; }

	/** Converts a cycle count to seconds. */
	static FORCEINLINE double ToSeconds(const uint32 Cycles) { return GetSecondsPerCycle() * Cycles; }

	/** Converts a cycle count to milliseconds. */
	static FORCEINLINE float ToMilliseconds(const uint32 Cycles)
	{
		return (float)(1000.0 * GetSecondsPerCycle() * Cycles);
	}

	/** Converts a 64-bit cycle count to seconds. */
	static FORCEINLINE double ToSeconds64(const uint64 Cycles) { return GetSecondsPerCycle64() * (double)Cycles; }

	/** Converts a 64-bit cycle count to milliseconds. */
	static FORCEINLINE double ToMilliseconds64(const uint64 Cycles) { return 1000.0 * ToSeconds64(Cycles); }

	/** Seconds spent by the process on the CPU, in user and kernel mode together. */
	static CORE_API double GetCPUTimeSeconds();
};
