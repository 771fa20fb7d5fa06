// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

namespace UE::Core::Private
{
	/** Reports an index outside a container's bounds; fatal. Kept out of line so containers stay small. */
	[[noreturn]] CORE_API void OnInvalidIndex(int64 Index, int64 Num, const ANSICHAR* File, int32 Line);

	/** Reports a negative or overflowing element count; fatal. */
	[[noreturn]] CORE_API void OnInvalidArrayNum(int64 NewNum, const ANSICHAR* File, int32 Line);

	/** Reports a container changed while a range-for loop walked it; fatal. */
	[[noreturn]] CORE_API void OnContainerChangedDuringIteration(const ANSICHAR* File, int32 Line);
} // namespace UE::Core::Private
