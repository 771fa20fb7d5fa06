// Copyright Orvane. All Rights Reserved.

#include "Misc/FrameRate.h"

#include "Containers/UnrealString.h"

#include <cmath>

namespace
{
	/**
	 * Rounds a decimal frame to a whole one when it is within floating-point noise of it, so that converting a
	 * frame's time in seconds back to frames gives that frame and not the one before.
	 */
	FFrameTime FrameTimeFromDecimal(double DecimalFrame)
	{
		const double Nearest = std::round(DecimalFrame);
		if (std::abs(DecimalFrame - Nearest) < 1.0e-6)
		{
			return FFrameTime(FFrameNumber(static_cast<int32>(Nearest)));
		}
		return FFrameTime::FromDecimal(DecimalFrame);
	}

	/** Integer division rounding towards negative infinity. */
	__int128 FloorDivide(__int128 Dividend, __int128 Divisor)
	{
		__int128 Quotient = Dividend / Divisor;
		if ((Dividend % Divisor != 0) && ((Dividend < 0) != (Divisor < 0)))
		{
			--Quotient;
		}
		return Quotient;
	}
} // namespace

double FFrameRate::AsSeconds(FFrameTime FrameTime) const
{
	return FrameTime.AsDecimal() * static_cast<double>(Denominator) / static_cast<double>(Numerator);
}

FFrameTime FFrameRate::AsFrameTime(double InTimeSeconds) const
{
	return FrameTimeFromDecimal(InTimeSeconds * static_cast<double>(Numerator) / static_cast<double>(Denominator));
}

FFrameNumber FFrameRate::AsFrameNumber(double InTimeSeconds) const
{
	return AsFrameTime(InTimeSeconds).FloorToFrame();
}

bool FFrameRate::IsMultipleOf(FFrameRate Other) const
{
	// Other's frame interval is a whole number of this rate's intervals.
	const int64 Scaled = static_cast<int64>(Numerator) * Other.Denominator;
	const int64 OtherScaled = static_cast<int64>(Other.Numerator) * Denominator;
	return OtherScaled != 0 && Scaled >= OtherScaled && Scaled % OtherScaled == 0;
}

bool FFrameRate::IsFactorOf(FFrameRate Other) const
{
	return Other.IsMultipleOf(*this);
}

FFrameTime FFrameRate::TransformTime(FFrameTime SourceTime, FFrameRate SourceRate, FFrameRate DestinationRate)
{
	if (SourceRate == DestinationRate)
	{
		return SourceTime;
	}
	// Whole source frames are converted with integers, so tick-resolution grids stay exact; only the remainder
	// and the source sub-frame go through floating point.
	const __int128 ScaleNumerator = static_cast<__int128>(DestinationRate.Numerator) * SourceRate.Denominator;
	const __int128 ScaleDenominator = static_cast<__int128>(DestinationRate.Denominator) * SourceRate.Numerator;
	const __int128 ScaledFrame = static_cast<__int128>(SourceTime.FrameNumber.Value) * ScaleNumerator;
	const __int128 WholeFrames = FloorDivide(ScaledFrame, ScaleDenominator);
	const double Remainder =
		static_cast<double>(ScaledFrame - WholeFrames * ScaleDenominator) / static_cast<double>(ScaleDenominator);
	const double SubFrames =
		SourceTime.GetSubFrame() * static_cast<double>(ScaleNumerator) / static_cast<double>(ScaleDenominator);
	const FFrameTime Fraction = FrameTimeFromDecimal(Remainder + SubFrames);
	return FFrameTime(FFrameNumber(static_cast<int32>(WholeFrames)) + Fraction.FrameNumber, Fraction.GetSubFrame());
}

FFrameTime FFrameRate::Snap(FFrameTime SourceTime, FFrameRate SourceRate, FFrameRate SnapToRate)
{
	const FFrameNumber Snapped = TransformTime(SourceTime, SourceRate, SnapToRate).RoundToFrame();
	return TransformTime(FFrameTime(Snapped), SnapToRate, SourceRate);
}

FText FFrameRate::ToPrettyText() const
{
	const double FramesPerSecond = AsDecimal();
	FString Number = FString::Printf(TEXT("%.2f"), FramesPerSecond);
	// "24.00" reads as "24", "29.97" stays as it is.
	while (Number.EndsWith(TEXT("0")))
	{
		Number.LeftChopInline(1);
	}
	if (Number.EndsWith(TEXT(".")))
	{
		Number.LeftChopInline(1);
	}
	return FText::FromString(Number + TEXT(" fps"));
}
