// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Math/UnrealMathUtility.h"
#include "Templates/TypeHash.h"

/** A whole frame on a frame grid; its rate lives elsewhere (an FFrameRate next to it). */
struct FFrameNumber
{
	constexpr FFrameNumber()
		: Value(0)
	{
	}

	constexpr FFrameNumber(int32 InValue)
		: Value(InValue)
	{
	}

	FFrameNumber& operator+=(FFrameNumber RHS)
	{
		Value += RHS.Value;
		return *this;
	}
	FFrameNumber& operator-=(FFrameNumber RHS)
	{
		Value -= RHS.Value;
		return *this;
	}
	FFrameNumber& operator%=(FFrameNumber RHS)
	{
		Value %= RHS.Value;
		return *this;
	}
	FFrameNumber& operator++()
	{
		++Value;
		return *this;
	}
	FFrameNumber& operator--()
	{
		--Value;
		return *this;
	}
	FFrameNumber operator++(int32)
	{
		const FFrameNumber Previous = *this;
		++Value;
		return Previous;
	}
	FFrameNumber operator--(int32)
	{
		const FFrameNumber Previous = *this;
		--Value;
		return Previous;
	}

	friend constexpr bool operator==(FFrameNumber A, FFrameNumber B) { return A.Value == B.Value; }
	friend constexpr bool operator!=(FFrameNumber A, FFrameNumber B) { return A.Value != B.Value; }
	friend constexpr bool operator<(FFrameNumber A, FFrameNumber B) { return A.Value < B.Value; }
	friend constexpr bool operator>(FFrameNumber A, FFrameNumber B) { return A.Value > B.Value; }
	friend constexpr bool operator<=(FFrameNumber A, FFrameNumber B) { return A.Value <= B.Value; }
	friend constexpr bool operator>=(FFrameNumber A, FFrameNumber B) { return A.Value >= B.Value; }

	friend constexpr FFrameNumber operator+(FFrameNumber A, FFrameNumber B) { return FFrameNumber(A.Value + B.Value); }
	friend constexpr FFrameNumber operator-(FFrameNumber A, FFrameNumber B) { return FFrameNumber(A.Value - B.Value); }
	friend constexpr FFrameNumber operator%(FFrameNumber A, FFrameNumber B) { return FFrameNumber(A.Value % B.Value); }
	friend constexpr FFrameNumber operator-(FFrameNumber A) { return FFrameNumber(-A.Value); }

	/** Scales the frame number, rounding down to the frame at or before the result. */
	friend FFrameNumber operator*(FFrameNumber A, float Scalar)
	{
		return FFrameNumber(static_cast<int32>(std::floor(static_cast<double>(A.Value) * Scalar)));
	}

	/** Divides the frame number, rounding down to the frame at or before the result. */
	friend FFrameNumber operator/(FFrameNumber A, float Scalar)
	{
		return FFrameNumber(static_cast<int32>(std::floor(static_cast<double>(A.Value) / Scalar)));
	}

	friend uint32 GetTypeHash(FFrameNumber A) { return ::GetTypeHash(A.Value); }

	/** The frame's index on its grid. */
	int32 Value;
};
