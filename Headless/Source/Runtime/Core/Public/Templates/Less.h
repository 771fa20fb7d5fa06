// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <utility>

/** Binary predicate comparing with operator<. */
template <typename T = void>
struct TLess
{
	FORCEINLINE bool operator()(const T& A, const T& B) const { return A < B; }
};

template <>
struct TLess<void>
{
	template <typename T, typename U>
	FORCEINLINE bool operator()(T&& A, U&& B) const
	{
		return std::forward<T>(A) < std::forward<U>(B);
	}
};
