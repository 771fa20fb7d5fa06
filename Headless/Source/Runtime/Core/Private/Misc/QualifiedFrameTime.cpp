// Copyright Orvane. All Rights Reserved.

#include "Misc/QualifiedFrameTime.h"

FQualifiedFrameTime::FQualifiedFrameTime(const FTimecode& InTimecode, const FFrameRate& InRate)
	: Time(InTimecode.ToFrameNumber(InRate), InTimecode.Subframe)
	, Rate(InRate)
{
}

FTimecode FQualifiedFrameTime::ToTimecode() const
{
	FTimecode Timecode = FTimecode::FromFrameNumber(Time.FloorToFrame(), Rate, FTimecode::UseDropFormatTimecode(Rate));
	Timecode.Subframe = Time.GetSubFrame();
	return Timecode;
}
