// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Scheduling priority of a thread. */
enum EThreadPriority
{
	TPri_Normal,
	TPri_AboveNormal,
	TPri_BelowNormal,
	TPri_Highest,
	TPri_Lowest,
	TPri_SlightlyBelowNormal,
	TPri_TimeCritical,
	TPri_Num,
};

/** Options for creating a thread. */
enum class EThreadCreateFlags : int8
{
	None = 0,
	SMTExclusive = (1 << 0),
};

/** Which processors threads may run on. The headless engine lets them run on any. */
struct FPlatformAffinity
{
	/** The mask meaning "any processor". */
	static constexpr uint64 GetNoAffinityMask() { return MAX_uint64; }

	static constexpr uint64 GetMainGameMask() { return GetNoAffinityMask(); }

	static constexpr uint64 GetTaskGraphThreadMask() { return GetNoAffinityMask(); }

	static constexpr EThreadPriority GetTaskThreadPriority() { return TPri_SlightlyBelowNormal; }
};
