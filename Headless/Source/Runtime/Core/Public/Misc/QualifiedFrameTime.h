// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/FrameRate.h"
#include "Misc/FrameTime.h"
#include "Misc/Timecode.h"

/** A frame time together with the rate of its grid, so it means a point in time on its own. */
struct FQualifiedFrameTime
{
	/** Frame 0 at 24 fps. */
	FQualifiedFrameTime()
		: Time(0)
		, Rate(24, 1)
	{
	}

	FQualifiedFrameTime(const FFrameTime& InTime, const FFrameRate& InRate)
		: Time(InTime)
		, Rate(InRate)
	{
	}

	/** The frame a timecode labels at a rate, with the timecode's sub-frame. */
	CORE_API FQualifiedFrameTime(const FTimecode& InTimecode, const FFrameRate& InRate);

	/** The time in seconds. */
	double AsSeconds() const { return Rate.AsSeconds(Time); }

	/** The same time on another rate's grid. */
	FFrameTime ConvertTo(FFrameRate DesiredRate) const { return FFrameRate::TransformTime(Time, Rate, DesiredRate); }

	/** The timecode of this time, in drop-frame format when FTimecode::UseDropFormatTimecode(Rate) says so. */
	CORE_API FTimecode ToTimecode() const;

	friend bool operator==(const FQualifiedFrameTime& A, const FQualifiedFrameTime& B)
	{
		return A.Time == B.Time && A.Rate == B.Rate;
	}
	friend bool operator!=(const FQualifiedFrameTime& A, const FQualifiedFrameTime& B) { return !(A == B); }

	/** The time on Rate's grid. */
	FFrameTime Time;

	/** The rate of Time's grid. */
	FFrameRate Rate;
};
