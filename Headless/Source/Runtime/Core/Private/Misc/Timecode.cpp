// Copyright Orvane. All Rights Reserved.

#include "Misc/Timecode.h"

#include <cmath>
#include <cstdlib>

namespace
{
	constexpr int32 SecondsPerMinute = 60;
	constexpr int32 SecondsPerHour = 3600;
	constexpr int32 HoursPerDay = 24;

	/** The frame labels per second: the rate rounded up, so 29.97 fps counts 30 labels. */
	int32 LabelsPerSecond(const FFrameRate& Rate)
	{
		// A tolerance keeps exact integral rates (30000/1000) from rounding up to the next number.
		return static_cast<int32>(std::ceil(Rate.AsDecimal() - 1.0e-9));
	}

	/** The labels dropped at the start of each minute that is not a multiple of ten: 2 at 29.97, 4 at 59.94. */
	int32 DroppedLabelsPerMinute(const FFrameRate& Rate)
	{
		return LabelsPerSecond(Rate) / 15;
	}

	/** The frame count of non-negative timecode fields. */
	int64 CountFrames(int32 Hours, int32 Minutes, int32 Seconds, int32 Frames, const FFrameRate& Rate, bool bDrop)
	{
		const int64 Labels = LabelsPerSecond(Rate);
		const int64 TotalSeconds = static_cast<int64>(Hours) * SecondsPerHour + Minutes * SecondsPerMinute + Seconds;
		int64 Count = TotalSeconds * Labels + Frames;
		if (bDrop)
		{
			const int64 TotalMinutes = static_cast<int64>(Hours) * 60 + Minutes;
			Count -= DroppedLabelsPerMinute(Rate) * (TotalMinutes - TotalMinutes / 10);
		}
		return Count;
	}
} // namespace

FTimecode::FTimecode(double InSeconds, const FFrameRate& InFrameRate, bool bInDropFrame, bool bInRollover)
{
	*this = FromTimespan(FTimespan::FromSeconds(InSeconds), InFrameRate, bInDropFrame, bInRollover);
}

FTimecode::FTimecode(double InSeconds, const FFrameRate& InFrameRate, bool bInRollover)
	: FTimecode(InSeconds, InFrameRate, UseDropFormatTimecode(InFrameRate), bInRollover)
{
}

FFrameNumber FTimecode::ToFrameNumber(const FFrameRate& InFrameRate) const
{
	const bool bNegative = Hours < 0 || Minutes < 0 || Seconds < 0 || Frames < 0;
	const bool bDrop = bDropFrameFormat && IsDropFormatTimecodeSupported(InFrameRate);
	const int64 Count =
		CountFrames(std::abs(Hours), std::abs(Minutes), std::abs(Seconds), std::abs(Frames), InFrameRate, bDrop);
	// On a grid whose rate is not whole (23.976 without drop frames) the labels count frames of the rounded rate,
	// so a label's frame is its count.
	return FFrameNumber(static_cast<int32>(bNegative ? -Count : Count));
}

FTimecode FTimecode::FromFrameNumber(
	const FFrameNumber& InFrameNumber, const FFrameRate& InFrameRate, bool bInDropFrame)
{
	const bool bDrop = bInDropFrame && IsDropFormatTimecodeSupported(InFrameRate);
	const int64 Labels = LabelsPerSecond(InFrameRate);
	const bool bNegative = InFrameNumber.Value < 0;
	int64 Count = std::llabs(static_cast<int64>(InFrameNumber.Value));
	if (bDrop)
	{
		// Add back the labels skipped before this frame: none in the first minute of each ten, Drop in each other.
		const int64 Drop = DroppedLabelsPerMinute(InFrameRate);
		const int64 FramesPerMinute = Labels * SecondsPerMinute - Drop;
		const int64 FramesPerTenMinutes = Labels * SecondsPerMinute * 10 - Drop * 9;
		const int64 TenMinuteBlocks = Count / FramesPerTenMinutes;
		const int64 IntoBlock = Count % FramesPerTenMinutes;
		Count += Drop * 9 * TenMinuteBlocks;
		if (IntoBlock > Drop)
		{
			Count += Drop * ((IntoBlock - Drop) / FramesPerMinute);
		}
	}
	const int64 TotalSeconds = Count / Labels;
	FTimecode Result(static_cast<int32>(TotalSeconds / SecondsPerHour),
		static_cast<int32>((TotalSeconds / SecondsPerMinute) % 60), static_cast<int32>(TotalSeconds % 60),
		static_cast<int32>(Count % Labels), bDrop);
	if (bNegative)
	{
		Result.Hours = -Result.Hours;
		Result.Minutes = -Result.Minutes;
		Result.Seconds = -Result.Seconds;
		Result.Frames = -Result.Frames;
	}
	return Result;
}

FTimecode FTimecode::FromFrameNumber(const FFrameNumber& InFrameNumber, const FFrameRate& InFrameRate)
{
	return FromFrameNumber(InFrameNumber, InFrameRate, UseDropFormatTimecode(InFrameRate));
}

FTimespan FTimecode::ToTimespan(const FFrameRate& InFrameRate) const
{
	const FFrameTime Time(ToFrameNumber(InFrameRate), Subframe);
	return FTimespan::FromSeconds(InFrameRate.AsSeconds(Time));
}

FTimecode FTimecode::FromTimespan(
	const FTimespan& InTimespan, const FFrameRate& InFrameRate, bool bInDropFrame, bool bInRollover)
{
	FTimespan Timespan = InTimespan;
	if (bInRollover)
	{
		const int64 Day = ETimespan::TicksPerDay;
		Timespan = FTimespan(((InTimespan.GetTicks() % Day) + Day) % Day);
	}
	const FFrameTime Time = InFrameRate.AsFrameTime(Timespan.GetTotalSeconds());
	FTimecode Result = FromFrameNumber(Time.FloorToFrame(), InFrameRate, bInDropFrame);
	Result.Subframe = Time.GetSubFrame();
	if (bInRollover)
	{
		Result.Hours %= HoursPerDay;
	}
	return Result;
}

FString FTimecode::ToString(bool bForceSignDisplay, bool bAlwaysDisplaySubframe) const
{
	const bool bNegative = Hours < 0 || Minutes < 0 || Seconds < 0 || Frames < 0;
	FString Result;
	if (bNegative)
	{
		Result += TEXT("-");
	}
	else if (bForceSignDisplay)
	{
		Result += TEXT("+");
	}
	Result += FString::Printf(TEXT("%02d:%02d:%02d%s%02d"), std::abs(Hours), std::abs(Minutes), std::abs(Seconds),
		bDropFrameFormat ? TEXT(";") : TEXT(":"), std::abs(Frames));
	if (bAlwaysDisplaySubframe)
	{
		Result += FString::Printf(TEXT(".%02d"), static_cast<int32>(std::floor(Subframe * 100.f)));
	}
	return Result;
}

bool FTimecode::IsDropFormatTimecodeSupported(const FFrameRate& InFrameRate)
{
	const double Rate = InFrameRate.AsDecimal();
	return std::abs(Rate - 30.0 / 1.001) < 1.0e-4 || std::abs(Rate - 60.0 / 1.001) < 1.0e-4;
}

bool FTimecode::UseDropFormatTimecode(const FFrameRate& InFrameRate)
{
	return IsDropFormatTimecodeSupported(InFrameRate) && UseDropFormatTimecodeByDefaultWhenSupported();
}

bool FTimecode::UseDropFormatTimecodeByDefaultWhenSupported()
{
	// Drop-frame labels are the broadcast convention for 29.97 and 59.94 fps, so they are the default.
	return true;
}
