// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "HAL/ThreadSafeCounter.h"

/** A boolean read and written atomically. */
class FThreadSafeBool : private FThreadSafeCounter
{
public:
	FThreadSafeBool(bool bValue = false)
		: FThreadSafeCounter(bValue ? 1 : 0)
	{
	}

	operator bool() const { return GetValue() != 0; }

	bool operator=(bool bNewValue)
	{
		Set(bNewValue ? 1 : 0);
		return bNewValue;
	}

	/** Sets the value and returns the old value. */
	bool AtomicSet(bool bNewValue) { return Set(bNewValue ? 1 : 0) != 0; }

	bool operator==(bool bValue) const { return (GetValue() != 0) == bValue; }

	bool operator!=(bool bValue) const { return (GetValue() != 0) != bValue; }
};
