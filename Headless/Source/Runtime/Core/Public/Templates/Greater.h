// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <utility>

/** Binary predicate comparing with operator<, reversed: A > B is B < A. */
template <typename T = void>
struct TGreater
{
	FORCEINLINE bool operator()(const T& A, const T& B) const { return B < A; }
};

template <>
struct TGreater<void>
{
	template <typename T, typename U>
	FORCEINLINE bool operator()(T&& A, U&& B) const
	{
		return std::forward<U>(B) < std::forward<T>(A);
	}
};
