// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

namespace ENamedThreads
{
	/** Where a task runs: a named thread, or any worker thread with a priority. */
	enum Type : int32
	{
		UnusedAnchor = -1,
		RHIThread = 0,
		GameThread = 1,
		ActualRenderingThread = 2,
		AnyThread = 0xff,

		/** Mask selecting the thread part of a value. */
		ThreadIndexMask = 0xff,

		HighTaskPriority = 0x100,
		BackgroundThreadPriority = 0x200,
		HighThreadPriority = 0x400,

		GameThread_Local = GameThread | 0x1000,
		AnyHiPriThreadNormalTask = AnyThread | HighThreadPriority,
		AnyHiPriThreadHiPriTask = AnyThread | HighThreadPriority | HighTaskPriority,
		AnyNormalThreadNormalTask = AnyThread,
		AnyNormalThreadHiPriTask = AnyThread | HighTaskPriority,
		AnyBackgroundThreadNormalTask = AnyThread | BackgroundThreadPriority,
		AnyBackgroundHiPriTask = AnyThread | BackgroundThreadPriority | HighTaskPriority,
	};

	/** The thread part of a value: GameThread, AnyThread, ... */
	FORCEINLINE Type GetThreadIndex(Type ThreadAndIndex)
	{
		return (Type)(ThreadAndIndex & ThreadIndexMask);
	}
} // namespace ENamedThreads
