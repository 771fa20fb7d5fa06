// Copyright Orvane. All Rights Reserved.

#include "HAL/PlatformTime.h"

#include <ctime>

namespace
{
	uint64 MonotonicMicroseconds()
	{
		timespec Now;
		clock_gettime(CLOCK_MONOTONIC, &Now);
		return (uint64)Now.tv_sec * 1000000ull + (uint64)Now.tv_nsec / 1000ull;
	}
} // namespace

double FPlatformTime::InitTiming()
{
	return Seconds();
}

double FPlatformTime::Seconds()
{
	timespec Now;
	clock_gettime(CLOCK_MONOTONIC, &Now);
	return (double)Now.tv_sec + (double)Now.tv_nsec * 1.0e-9;
}

uint32 FPlatformTime::Cycles()
{
	return (uint32)MonotonicMicroseconds();
}

uint64 FPlatformTime::Cycles64()
{
	return MonotonicMicroseconds();
}

double FPlatformTime::GetCPUTimeSeconds()
{
	timespec Used;
	clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &Used);
	return (double)Used.tv_sec + (double)Used.tv_nsec * 1.0e-9;
}
