// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <atomic>

/** A 64-bit counter updated atomically. */
class FThreadSafeCounter64
{
public:
	typedef int64 IntegerType;

	FThreadSafeCounter64()
		: Counter(0)
	{
	}

	FThreadSafeCounter64(const FThreadSafeCounter64& Other)
		: Counter(Other.GetValue())
	{
	}

	FThreadSafeCounter64(int64 Value)
		: Counter(Value)
	{
	}

	FThreadSafeCounter64& operator=(const FThreadSafeCounter64&) = delete;

	/** Adds one and returns the new value. */
	int64 Increment() { return Counter.fetch_add(1) + 1; }

	/** Adds an amount and returns the old value. */
	int64 Add(int64 Amount) { return Counter.fetch_add(Amount); }

	/** Subtracts one and returns the new value. */
	int64 Decrement() { return Counter.fetch_sub(1) - 1; }

	/** Subtracts an amount and returns the old value. */
	int64 Subtract(int64 Amount) { return Counter.fetch_sub(Amount); }

	/** Sets the value and returns the old value. */
	int64 Set(int64 Value) { return Counter.exchange(Value); }

	/** Sets the value to zero and returns the old value. */
	int64 Reset() { return Counter.exchange(0); }

	/** The current value. */
	int64 GetValue() const { return Counter.load(); }

private:
	std::atomic<int64> Counter;
};
