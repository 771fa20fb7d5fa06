// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Internationalization/Text.h"
#include "Misc/FrameNumber.h"
#include "Misc/FrameTime.h"
#include "Templates/TypeHash.h"

/** A frame rate as a fraction of frames per second (30000/1001 for 29.97 fps). */
struct FFrameRate
{
	/** 60000 frames per second, a resolution fine enough for every common rate. */
	FFrameRate()
		: Numerator(60000)
		, Denominator(1)
	{
	}

	FFrameRate(uint32 InNumerator, uint32 InDenominator)
		: Numerator(static_cast<int32>(InNumerator))
		, Denominator(static_cast<int32>(InDenominator))
	{
	}

	/** True when the rate can be used: its denominator is above zero. */
	bool IsValid() const { return Denominator > 0; }

	/** The length of one frame in seconds. */
	double AsInterval() const { return static_cast<double>(Denominator) / static_cast<double>(Numerator); }

	/** The number of frames per second. */
	double AsDecimal() const { return static_cast<double>(Numerator) / static_cast<double>(Denominator); }

	/** The time in seconds of a frame time on this rate's grid. */
	CORE_API double AsSeconds(FFrameTime FrameTime) const;

	/** The frame time of a time in seconds on this rate's grid. */
	CORE_API FFrameTime AsFrameTime(double InTimeSeconds) const;

	/** The frame at or before a time in seconds on this rate's grid. */
	CORE_API FFrameNumber AsFrameNumber(double InTimeSeconds) const;

	/** True when every frame of Other starts on a frame of this rate. */
	CORE_API bool IsMultipleOf(FFrameRate Other) const;

	/** True when every frame of this rate starts on a frame of Other. */
	CORE_API bool IsFactorOf(FFrameRate Other) const;

	/** Converts a frame time from one rate's grid to another's, exactly for whole source frames. */
	static CORE_API FFrameTime TransformTime(FFrameTime SourceTime, FFrameRate SourceRate, FFrameRate DestinationRate);

	/** Converts a frame time to SnapToRate's grid, rounds it to a whole frame there and converts it back. */
	static CORE_API FFrameTime Snap(FFrameTime SourceTime, FFrameRate SourceRate, FFrameRate SnapToRate);

	/** "24 fps", "29.97 fps". */
	CORE_API FText ToPrettyText() const;

	/** The rate whose frames are this rate's seconds. */
	FFrameRate Reciprocal() const { return FFrameRate(Denominator, Numerator); }

	friend bool operator==(const FFrameRate& A, const FFrameRate& B)
	{
		return static_cast<int64>(A.Numerator) * B.Denominator == static_cast<int64>(B.Numerator) * A.Denominator;
	}
	friend bool operator!=(const FFrameRate& A, const FFrameRate& B) { return !(A == B); }

	friend FFrameRate operator*(FFrameRate A, FFrameRate B)
	{
		return FFrameRate(A.Numerator * B.Numerator, A.Denominator * B.Denominator);
	}
	friend FFrameRate operator/(FFrameRate A, FFrameRate B)
	{
		return FFrameRate(A.Numerator * B.Denominator, A.Denominator * B.Numerator);
	}

	friend uint32 GetTypeHash(const FFrameRate& Rate)
	{
		return HashCombine(::GetTypeHash(Rate.Numerator), ::GetTypeHash(Rate.Denominator));
	}

	/** Frames per Denominator seconds. */
	int32 Numerator;

	/** Seconds per Numerator frames. */
	int32 Denominator;
};

/** The time in seconds of a frame on Rate's grid. */
inline double operator/(FFrameNumber Frame, FFrameRate Rate)
{
	return Rate.AsSeconds(FFrameTime(Frame));
}

/** The frame time of a time in seconds on Rate's grid. */
inline FFrameTime operator*(double TimeInSeconds, FFrameRate Rate)
{
	return Rate.AsFrameTime(TimeInSeconds);
}
