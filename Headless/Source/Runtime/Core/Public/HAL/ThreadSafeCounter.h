// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <atomic>

/** A 32-bit counter updated atomically. */
class FThreadSafeCounter
{
public:
	typedef int32 IntegerType;

	FThreadSafeCounter()
		: Counter(0)
	{
	}

	FThreadSafeCounter(const FThreadSafeCounter& Other)
		: Counter(Other.GetValue())
	{
	}

	FThreadSafeCounter(int32 Value)
		: Counter(Value)
	{
	}

	/** Copying a counter between threads is not atomic as a whole, so it is not allowed. */
	FThreadSafeCounter& operator=(const FThreadSafeCounter&) = delete;

	/** Adds one and returns the new value. */
	int32 Increment() { return Counter.fetch_add(1) + 1; }

	/** Adds an amount and returns the old value. */
	int32 Add(int32 Amount) { return Counter.fetch_add(Amount); }

	/** Subtracts one and returns the new value. */
	int32 Decrement() { return Counter.fetch_sub(1) - 1; }

	/** Subtracts an amount and returns the old value. */
	int32 Subtract(int32 Amount) { return Counter.fetch_sub(Amount); }

	/** Sets the value and returns the old value. */
	int32 Set(int32 Value) { return Counter.exchange(Value); }

	/** Sets the value to zero and returns the old value. */
	int32 Reset() { return Counter.exchange(0); }

	/** The current value. */
	int32 GetValue() const { return Counter.load(); }

private:
	std::atomic<int32> Counter;
};
