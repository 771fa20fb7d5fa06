// Copyright Orvane. All Rights Reserved.

#include "Misc/Timespan.h"

#include "Misc/AssertionMacros.h"

#include <cmath>

namespace
{
	int64 TicksFromParts(int64 Days, int64 Hours, int64 Minutes, int64 Seconds, int64 FractionNano)
	{
		const int64 TotalSeconds = ((Days * 24 + Hours) * 60 + Minutes) * 60 + Seconds;
		checkf(TotalSeconds >= ETimespan::MinTicks / ETimespan::TicksPerSecond &&
				   TotalSeconds <= ETimespan::MaxTicks / ETimespan::TicksPerSecond,
			TEXT("The time span is out of range"));
		return TotalSeconds * ETimespan::TicksPerSecond + FractionNano / ETimespan::NanosecondsPerTick;
	}

	/** Rounds a tick count to the nearest tick, refusing values outside the representable range. */
	FTimespan FromTicksChecked(double TickCount)
	{
		checkf(TickCount >= static_cast<double>(ETimespan::MinTicks) &&
				   TickCount <= static_cast<double>(ETimespan::MaxTicks),
			TEXT("The time span is out of range"));
		return FTimespan(static_cast<int64>(std::floor(TickCount + 0.5)));
	}

	int32 Abs32(int32 Value)
	{
		return Value < 0 ? -Value : Value;
	}

	/** Reads a run of decimal digits; returns false when there is none. */
	bool ReadNumber(const FString& Text, int32& InOutIndex, int64& OutValue, int32* OutDigits = nullptr)
	{
		const int32 Start = InOutIndex;
		int64 Value = 0;
		while (InOutIndex < Text.Len() && FChar::IsDigit(Text[InOutIndex]) && InOutIndex - Start < 18)
		{
			Value = Value * 10 + FChar::ConvertCharDigitToInt(Text[InOutIndex]);
			++InOutIndex;
		}
		if (OutDigits)
		{
			*OutDigits = InOutIndex - Start;
		}
		OutValue = Value;
		return InOutIndex > Start;
	}
} // namespace

FTimespan::FTimespan(int32 Hours, int32 Minutes, int32 Seconds)
	: Ticks(TicksFromParts(0, Hours, Minutes, Seconds, 0))
{
}

FTimespan::FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds)
	: Ticks(TicksFromParts(Days, Hours, Minutes, Seconds, 0))
{
}

FTimespan::FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds, int32 FractionNano)
	: Ticks(TicksFromParts(Days, Hours, Minutes, Seconds, FractionNano))
{
}

FTimespan FTimespan::FromDays(double Days)
{
	return FromTicksChecked(Days * ETimespan::TicksPerDay);
}

FTimespan FTimespan::FromHours(double Hours)
{
	return FromTicksChecked(Hours * ETimespan::TicksPerHour);
}

FTimespan FTimespan::FromMinutes(double Minutes)
{
	return FromTicksChecked(Minutes * ETimespan::TicksPerMinute);
}

FTimespan FTimespan::FromSeconds(double Seconds)
{
	return FromTicksChecked(Seconds * ETimespan::TicksPerSecond);
}

FTimespan FTimespan::FromMilliseconds(double Milliseconds)
{
	return FromTicksChecked(Milliseconds * ETimespan::TicksPerMillisecond);
}

FTimespan FTimespan::FromMicroseconds(double Microseconds)
{
	return FromTicksChecked(Microseconds * ETimespan::TicksPerMicrosecond);
}

FTimespan FTimespan::operator*(double Scalar) const
{
	return FromTicksChecked(static_cast<double>(Ticks) * Scalar);
}

FTimespan FTimespan::operator/(double Scalar) const
{
	return FromTicksChecked(static_cast<double>(Ticks) / Scalar);
}

FString FTimespan::ToString() const
{
	return ToString(GetDays() == 0 ? TEXT("%n%h:%m:%s.%f") : TEXT("%n%d.%h:%m:%s.%f"));
}

FString FTimespan::ToString(const TCHAR* Format) const
{
	FString Result;
	for (; Format && *Format; ++Format)
	{
		if (*Format != TEXT('%') || Format[1] == 0)
		{
			Result.AppendChar(*Format);
			continue;
		}
		switch (*++Format)
		{
			case TEXT('n'):
				if (Ticks < 0)
				{
					Result.AppendChar(TEXT('-'));
				}
				break;
			case TEXT('N'):
				Result.AppendChar(Ticks < 0 ? TEXT('-') : TEXT('+'));
				break;
			case TEXT('d'):
				Result += FString::Printf(TEXT("%i"), Abs32(GetDays()));
				break;
			case TEXT('D'):
				Result += FString::Printf(TEXT("%08i"), Abs32(GetDays()));
				break;
			case TEXT('h'):
				Result += FString::Printf(TEXT("%02i"), Abs32(GetHours()));
				break;
			case TEXT('m'):
				Result += FString::Printf(TEXT("%02i"), Abs32(GetMinutes()));
				break;
			case TEXT('s'):
				Result += FString::Printf(TEXT("%02i"), Abs32(GetSeconds()));
				break;
			case TEXT('f'):
				Result += FString::Printf(TEXT("%03i"), Abs32(GetFractionMilli()));
				break;
			case TEXT('u'):
				Result += FString::Printf(TEXT("%06i"), Abs32(GetFractionMicro()));
				break;
			case TEXT('t'):
				Result += FString::Printf(TEXT("%07i"), Abs32(GetFractionTicks()));
				break;
			default:
				Result.AppendChar(*Format);
		}
	}
	return Result;
}

bool FTimespan::Parse(const FString& TimespanString, FTimespan& OutTimespan)
{
	const FString Text = TimespanString.TrimStartAndEnd();
	int32 Index = 0;
	const bool bNegative = Text.StartsWith(TEXT("-"));
	if (bNegative || Text.StartsWith(TEXT("+")))
	{
		++Index;
	}
	int64 Days = 0;
	int64 Hours = 0;
	int64 Minutes = 0;
	int64 Seconds = 0;
	int64 FractionTicks = 0;
	if (!ReadNumber(Text, Index, Hours))
	{
		return false;
	}
	if (Index < Text.Len() && Text[Index] == TEXT('.'))
	{
		// The first number was the day count.
		Days = Hours;
		++Index;
		if (!ReadNumber(Text, Index, Hours))
		{
			return false;
		}
	}
	if (Index >= Text.Len() || Text[Index++] != TEXT(':') || !ReadNumber(Text, Index, Minutes) || Index >= Text.Len() ||
		Text[Index++] != TEXT(':') || !ReadNumber(Text, Index, Seconds))
	{
		return false;
	}
	if (Index < Text.Len() && Text[Index] == TEXT('.'))
	{
		++Index;
		int64 Fraction = 0;
		int32 Digits = 0;
		if (!ReadNumber(Text, Index, Fraction, &Digits) || Digits > 7)
		{
			return false;
		}
		FractionTicks = Fraction;
		for (; Digits < 7; ++Digits)
		{
			FractionTicks *= 10;
		}
	}
	if (Index != Text.Len() || Hours > 23 || Minutes > 59 || Seconds > 59)
	{
		return false;
	}
	const int64 Total = TicksFromParts(Days, Hours, Minutes, Seconds, 0) + FractionTicks;
	OutTimespan = FTimespan(bNegative ? -Total : Total);
	return true;
}
