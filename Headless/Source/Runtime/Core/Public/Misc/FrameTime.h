// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Math/UnrealMathUtility.h"
#include "Misc/FrameNumber.h"

struct Z_Construct_UScriptStruct_FFrameTime_Statics;

/**
 * A time on a frame grid: a whole frame and the fraction of the next one, in [0, 1). The rate of the grid
 * lives elsewhere (see FQualifiedFrameTime).
 */
struct FFrameTime
{
	/** The largest sub-frame below 1 a float can hold. */
	static constexpr float MaxSubframe = 0.99999994f;

	constexpr FFrameTime()
		: FrameNumber(0)
		, SubFrame(0.f)
	{
	}

	constexpr FFrameTime(int32 InFrameNumber)
		: FrameNumber(InFrameNumber)
		, SubFrame(0.f)
	{
	}

	constexpr FFrameTime(FFrameNumber InFrameNumber)
		: FrameNumber(InFrameNumber)
		, SubFrame(0.f)
	{
	}

	/** A sub-frame outside [0, 1) is clamped into it. */
	FFrameTime(FFrameNumber InFrameNumber, float InSubFrame)
		: FrameNumber(InFrameNumber)
		, SubFrame(ClampSubFrame(InSubFrame))
	{
	}

	FFrameNumber GetFrame() const { return FrameNumber; }
	float GetSubFrame() const { return SubFrame; }

	/** The frame at or before this time. */
	FFrameNumber FloorToFrame() const { return FrameNumber; }

	/** The frame at or after this time. */
	FFrameNumber CeilToFrame() const { return SubFrame == 0.f ? FrameNumber : FFrameNumber(FrameNumber.Value + 1); }

	/** The nearest frame; a time half-way between two frames rounds up. */
	FFrameNumber RoundToFrame() const { return SubFrame < 0.5f ? FrameNumber : FFrameNumber(FrameNumber.Value + 1); }

	/** The time as a decimal number of frames. */
	double AsDecimal() const { return static_cast<double>(FrameNumber.Value) + SubFrame; }

	/** The time of a decimal number of frames. */
	static FFrameTime FromDecimal(double InDecimalFrame)
	{
		const double Floor = std::floor(InDecimalFrame);
		return FFrameTime(FFrameNumber(static_cast<int32>(Floor)), static_cast<float>(InDecimalFrame - Floor));
	}

	FFrameTime& operator+=(FFrameTime RHS)
	{
		*this = *this + RHS;
		return *this;
	}
	FFrameTime& operator-=(FFrameTime RHS)
	{
		*this = *this - RHS;
		return *this;
	}
	FFrameTime& operator%=(FFrameTime RHS)
	{
		*this = *this % RHS;
		return *this;
	}

	friend bool operator==(FFrameTime A, FFrameTime B)
	{
		return A.FrameNumber == B.FrameNumber && A.SubFrame == B.SubFrame;
	}
	friend bool operator!=(FFrameTime A, FFrameTime B) { return !(A == B); }
	friend bool operator<(FFrameTime A, FFrameTime B)
	{
		return A.FrameNumber != B.FrameNumber ? A.FrameNumber < B.FrameNumber : A.SubFrame < B.SubFrame;
	}
	friend bool operator>(FFrameTime A, FFrameTime B) { return B < A; }
	friend bool operator<=(FFrameTime A, FFrameTime B) { return !(B < A); }
	friend bool operator>=(FFrameTime A, FFrameTime B) { return !(A < B); }

	friend FFrameTime operator+(FFrameTime A, FFrameTime B)
	{
		const float Sum = A.SubFrame + B.SubFrame;
		const int32 Carry = Sum >= 1.f ? 1 : 0;
		return FFrameTime(FFrameNumber(A.FrameNumber.Value + B.FrameNumber.Value + Carry), Sum - Carry);
	}

	friend FFrameTime operator-(FFrameTime A, FFrameTime B)
	{
		const float Difference = A.SubFrame - B.SubFrame;
		const int32 Borrow = Difference < 0.f ? 1 : 0;
		return FFrameTime(FFrameNumber(A.FrameNumber.Value - B.FrameNumber.Value - Borrow), Difference + Borrow);
	}

	friend FFrameTime operator%(FFrameTime A, FFrameTime B)
	{
		if (B.AsDecimal() == 0.0)
		{
			return A;
		}
		return FromDecimal(std::fmod(A.AsDecimal(), B.AsDecimal()));
	}

	friend FFrameTime operator-(FFrameTime A)
	{
		return A.SubFrame == 0.f ? FFrameTime(-A.FrameNumber)
								 : FFrameTime(FFrameNumber(-A.FrameNumber.Value - 1), 1.f - A.SubFrame);
	}

	friend FFrameTime operator*(FFrameTime A, float Scalar) { return FromDecimal(A.AsDecimal() * Scalar); }
	friend FFrameTime operator/(FFrameTime A, float Scalar) { return FromDecimal(A.AsDecimal() / Scalar); }

	/** The whole frame. */
	FFrameNumber FrameNumber;

private:
	friend struct Z_Construct_UScriptStruct_FFrameTime_Statics;

	static float ClampSubFrame(float InSubFrame) { return FMath::Clamp(InSubFrame, 0.f, MaxSubframe); }

	/** The fraction of the next frame, in [0, 1). */
	float SubFrame;
};
