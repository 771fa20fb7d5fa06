// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <atomic>
#include <type_traits>

/** Ordering of an atomic access relative to other memory accesses. */
enum class EMemoryOrder
{
	/** No ordering; only the access itself is atomic. */
	Relaxed,
	/** A single total order of all such accesses on every thread. */
	SequentiallyConsistent
};

namespace UE::Core::Private
{
	constexpr std::memory_order ToStdMemoryOrder(EMemoryOrder Order)
	{
		return Order == EMemoryOrder::Relaxed ? std::memory_order_relaxed : std::memory_order_seq_cst;
	}
} // namespace UE::Core::Private

/** A value read and written atomically. Arithmetic operators exist for integer and pointer types. */
template <typename T>
class TAtomic
{
	static_assert(std::is_trivially_copyable_v<T>, "TAtomic needs a trivially copyable type.");

public:
	constexpr TAtomic()
		: Value(T())
	{
	}

	constexpr TAtomic(T InValue)
		: Value(InValue)
	{
	}

	TAtomic(const TAtomic&) = delete;
	TAtomic& operator=(const TAtomic&) = delete;

	operator T() const { return Value.load(); }

	T operator=(T InValue)
	{
		Value.store(InValue);
		return InValue;
	}

	/** Reads the value. */
	T Load(EMemoryOrder Order = EMemoryOrder::SequentiallyConsistent) const
	{
		return Value.load(UE::Core::Private::ToStdMemoryOrder(Order));
	}

	/** Writes the value. */
	void Store(T InValue, EMemoryOrder Order = EMemoryOrder::SequentiallyConsistent)
	{
		Value.store(InValue, UE::Core::Private::ToStdMemoryOrder(Order));
	}

	/** Writes the value and returns the previous one. */
	T Exchange(T InValue) { return Value.exchange(InValue); }

	/**
	 * Writes Desired if the value equals Expected and returns true; otherwise copies the current
	 * value into Expected and returns false.
	 */
	bool CompareExchange(T& Expected, T Desired) { return Value.compare_exchange_strong(Expected, Desired); }

	/** Returns the new value. */
	T operator++() { return ++Value; }

	/** Returns the old value. */
	T operator++(int) { return Value++; }

	T operator--() { return --Value; }

	T operator--(int) { return Value--; }

	template <typename DiffType>
	T operator+=(DiffType Diff)
	{
		return Value += Diff;
	}

	template <typename DiffType>
	T operator-=(DiffType Diff)
	{
		return Value -= Diff;
	}

	T operator&=(T Bits) { return Value &= Bits; }

	T operator|=(T Bits) { return Value |= Bits; }

	T operator^=(T Bits) { return Value ^= Bits; }

	/** Adds and returns the old value. */
	template <typename DiffType>
	T AddExchange(DiffType Diff)
	{
		return Value.fetch_add(Diff);
	}

	/** Subtracts and returns the old value. */
	template <typename DiffType>
	T SubExchange(DiffType Diff)
	{
		return Value.fetch_sub(Diff);
	}

	/** Increments and returns the old value. */
	T IncrementExchange() { return Value.fetch_add(1); }

	/** Decrements and returns the old value. */
	T DecrementExchange() { return Value.fetch_sub(1); }

private:
	std::atomic<T> Value;
};
