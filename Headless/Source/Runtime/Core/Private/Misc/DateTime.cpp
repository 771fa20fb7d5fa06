// Copyright Orvane. All Rights Reserved.

#include "Misc/DateTime.h"

#include "Misc/AssertionMacros.h"

#include <ctime>
#include <sys/time.h>

namespace
{
	/** Days from 0001-01-01 to 1970-01-01 in the proleptic Gregorian calendar. */
	constexpr int64 UnixEpochDays = 719162;

	const TCHAR* const ShortDayNames[] = {
		TEXT("Mon"), TEXT("Tue"), TEXT("Wed"), TEXT("Thu"), TEXT("Fri"), TEXT("Sat"), TEXT("Sun")};
	const TCHAR* const LongDayNames[] = {TEXT("Monday"), TEXT("Tuesday"), TEXT("Wednesday"), TEXT("Thursday"),
		TEXT("Friday"), TEXT("Saturday"), TEXT("Sunday")};
	const TCHAR* const ShortMonthNames[] = {TEXT("Jan"), TEXT("Feb"), TEXT("Mar"), TEXT("Apr"), TEXT("May"),
		TEXT("Jun"), TEXT("Jul"), TEXT("Aug"), TEXT("Sep"), TEXT("Oct"), TEXT("Nov"), TEXT("Dec")};
	const TCHAR* const LongMonthNames[] = {TEXT("January"), TEXT("February"), TEXT("March"), TEXT("April"), TEXT("May"),
		TEXT("June"), TEXT("July"), TEXT("August"), TEXT("September"), TEXT("October"), TEXT("November"),
		TEXT("December")};

	/** Days since 0001-01-01 of a civil date (valid for the whole supported range). */
	int64 DaysFromCivil(int64 Year, int64 Month, int64 Day)
	{
		// Count years from March, so the leap day is the last day of the counting year.
		Year -= Month <= 2 ? 1 : 0;
		const int64 Era = (Year >= 0 ? Year : Year - 399) / 400;
		const int64 YearOfEra = Year - Era * 400;
		const int64 DayOfYear = (153 * (Month + (Month > 2 ? -3 : 9)) + 2) / 5 + Day - 1;
		const int64 DayOfEra = YearOfEra * 365 + YearOfEra / 4 - YearOfEra / 100 + DayOfYear;
		return Era * 146097 + DayOfEra - 719468 + UnixEpochDays;
	}

	void CivilFromDays(int64 Days, int32& OutYear, int32& OutMonth, int32& OutDay)
	{
		const int64 Shifted = Days - UnixEpochDays + 719468;
		const int64 Era = (Shifted >= 0 ? Shifted : Shifted - 146096) / 146097;
		const int64 DayOfEra = Shifted - Era * 146097;
		const int64 YearOfEra = (DayOfEra - DayOfEra / 1460 + DayOfEra / 36524 - DayOfEra / 146096) / 365;
		const int64 DayOfYear = DayOfEra - (365 * YearOfEra + YearOfEra / 4 - YearOfEra / 100);
		const int64 MonthIndex = (5 * DayOfYear + 2) / 153;
		OutDay = static_cast<int32>(DayOfYear - (153 * MonthIndex + 2) / 5 + 1);
		OutMonth = static_cast<int32>(MonthIndex < 10 ? MonthIndex + 3 : MonthIndex - 9);
		OutYear = static_cast<int32>(YearOfEra + Era * 400 + (OutMonth <= 2 ? 1 : 0));
	}

	int64 UtcNowTicks(int64& OutLocalOffsetSeconds)
	{
		timeval Now;
		gettimeofday(&Now, nullptr);
		const time_t Seconds = Now.tv_sec;
		tm Local;
		localtime_r(&Seconds, &Local);
		OutLocalOffsetSeconds = Local.tm_gmtoff;
		return (UnixEpochDays * 86400 + static_cast<int64>(Now.tv_sec)) * ETimespan::TicksPerSecond +
			   static_cast<int64>(Now.tv_usec) * ETimespan::TicksPerMicrosecond;
	}

	/** Reads exactly Count digits at InOutIndex. */
	bool ReadDigits(const TCHAR* Text, int32& InOutIndex, int32 Count, int32& OutValue)
	{
		int32 Value = 0;
		for (int32 Digit = 0; Digit < Count; ++Digit)
		{
			const TCHAR Char = Text[InOutIndex];
			if (!FChar::IsDigit(Char))
			{
				return false;
			}
			Value = Value * 10 + FChar::ConvertCharDigitToInt(Char);
			++InOutIndex;
		}
		OutValue = Value;
		return true;
	}
} // namespace

FDateTime::FDateTime(int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond)
{
	checkf(Validate(Year, Month, Day, Hour, Minute, Second, Millisecond),
		TEXT("Invalid date and time %04i-%02i-%02i %02i:%02i:%02i.%03i"), Year, Month, Day, Hour, Minute, Second,
		Millisecond);
	Ticks = DaysFromCivil(Year, Month, Day) * ETimespan::TicksPerDay + Hour * ETimespan::TicksPerHour +
			Minute * ETimespan::TicksPerMinute + Second * ETimespan::TicksPerSecond +
			Millisecond * ETimespan::TicksPerMillisecond;
}

FDateTime FDateTime::Now()
{
	int64 OffsetSeconds = 0;
	const int64 Utc = UtcNowTicks(OffsetSeconds);
	return FDateTime(Utc + OffsetSeconds * ETimespan::TicksPerSecond);
}

FDateTime FDateTime::UtcNow()
{
	int64 OffsetSeconds = 0;
	return FDateTime(UtcNowTicks(OffsetSeconds));
}

FDateTime FDateTime::Today()
{
	return Now().GetDate();
}

int32 FDateTime::DaysInMonth(int32 Year, int32 Month)
{
	check(Month >= 1 && Month <= 12);
	static const int32 Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
	return Month == 2 && IsLeapYear(Year) ? 29 : Days[Month - 1];
}

bool FDateTime::IsLeapYear(int32 Year)
{
	return (Year % 4 == 0) && (Year % 100 != 0 || Year % 400 == 0);
}

bool FDateTime::Validate(int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond)
{
	return Year >= 1 && Year <= 9999 && Month >= 1 && Month <= 12 && Day >= 1 && Day <= DaysInMonth(Year, Month) &&
		   Hour >= 0 && Hour <= 23 && Minute >= 0 && Minute <= 59 && Second >= 0 && Second <= 59 && Millisecond >= 0 &&
		   Millisecond <= 999;
}

FDateTime FDateTime::FromUnixTimestamp(int64 UnixTime)
{
	return FDateTime((UnixEpochDays * 86400 + UnixTime) * ETimespan::TicksPerSecond);
}

int64 FDateTime::ToUnixTimestamp() const
{
	// Whole seconds, rounded down, like the engine's division of the tick difference.
	const int64 Difference = Ticks - UnixEpochDays * ETimespan::TicksPerDay;
	return Difference / ETimespan::TicksPerSecond;
}

void FDateTime::GetDate(int32& OutYear, int32& OutMonth, int32& OutDay) const
{
	CivilFromDays(Ticks / ETimespan::TicksPerDay, OutYear, OutMonth, OutDay);
}

int32 FDateTime::GetYear() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Year;
}

int32 FDateTime::GetMonth() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Month;
}

int32 FDateTime::GetDay() const
{
	int32 Year, Month, Day;
	GetDate(Year, Month, Day);
	return Day;
}

EDayOfWeek FDateTime::GetDayOfWeek() const
{
	// January 1st of year 1 was a Monday.
	return static_cast<EDayOfWeek>((Ticks / ETimespan::TicksPerDay) % 7);
}

int32 FDateTime::GetDayOfYear() const
{
	const int32 Year = GetYear();
	return static_cast<int32>(Ticks / ETimespan::TicksPerDay - DaysFromCivil(Year, 1, 1)) + 1;
}

int32 FDateTime::GetHour12() const
{
	const int32 Hour = GetHour() % 12;
	return Hour == 0 ? 12 : Hour;
}

FString FDateTime::ToString() const
{
	return ToString(TEXT("%Y.%m.%d-%H.%M.%S"));
}

FString FDateTime::ToString(const TCHAR* Format) const
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
			case TEXT('a'):
				Result += IsMorning() ? TEXT("am") : TEXT("pm");
				break;
			case TEXT('A'):
				Result += IsMorning() ? TEXT("AM") : TEXT("PM");
				break;
			case TEXT('d'):
				Result += FString::Printf(TEXT("%02i"), GetDay());
				break;
			case TEXT('D'):
				Result += FString::Printf(TEXT("%03i"), GetDayOfYear());
				break;
			case TEXT('m'):
				Result += FString::Printf(TEXT("%02i"), GetMonth());
				break;
			case TEXT('y'):
				Result += FString::Printf(TEXT("%02i"), GetYear() % 100);
				break;
			case TEXT('Y'):
				Result += FString::Printf(TEXT("%04i"), GetYear());
				break;
			case TEXT('h'):
				Result += FString::Printf(TEXT("%02i"), GetHour12());
				break;
			case TEXT('H'):
				Result += FString::Printf(TEXT("%02i"), GetHour());
				break;
			case TEXT('M'):
				Result += FString::Printf(TEXT("%02i"), GetMinute());
				break;
			case TEXT('S'):
				Result += FString::Printf(TEXT("%02i"), GetSecond());
				break;
			case TEXT('s'):
				Result += FString::Printf(TEXT("%03i"), GetMillisecond());
				break;
			default:
				Result.AppendChar(*Format);
		}
	}
	return Result;
}

FString FDateTime::ToFormattedString(const TCHAR* Format) const
{
	FString Result;
	const int32 DayOfWeek = static_cast<int32>(GetDayOfWeek());
	for (; Format && *Format; ++Format)
	{
		if (*Format != TEXT('%') || Format[1] == 0)
		{
			Result.AppendChar(*Format);
			continue;
		}
		switch (*++Format)
		{
			case TEXT('a'):
				Result += ShortDayNames[DayOfWeek];
				break;
			case TEXT('A'):
				Result += LongDayNames[DayOfWeek];
				break;
			case TEXT('w'):
				// Sunday is 0 here, unlike EDayOfWeek.
				Result += FString::Printf(TEXT("%i"), (DayOfWeek + 1) % 7);
				break;
			case TEXT('y'):
				Result += FString::Printf(TEXT("%02i"), GetYear() % 100);
				break;
			case TEXT('Y'):
				Result += FString::Printf(TEXT("%04i"), GetYear());
				break;
			case TEXT('b'):
				Result += ShortMonthNames[GetMonth() - 1];
				break;
			case TEXT('B'):
				Result += LongMonthNames[GetMonth() - 1];
				break;
			case TEXT('m'):
				Result += FString::Printf(TEXT("%02i"), GetMonth());
				break;
			case TEXT('d'):
				Result += FString::Printf(TEXT("%02i"), GetDay());
				break;
			case TEXT('e'):
				Result += FString::Printf(TEXT("%i"), GetDay());
				break;
			case TEXT('l'):
				Result += FString::Printf(TEXT("%i"), GetHour12());
				break;
			case TEXT('I'):
				Result += FString::Printf(TEXT("%02i"), GetHour12());
				break;
			case TEXT('H'):
				Result += FString::Printf(TEXT("%02i"), GetHour());
				break;
			case TEXT('M'):
				Result += FString::Printf(TEXT("%02i"), GetMinute());
				break;
			case TEXT('S'):
				Result += FString::Printf(TEXT("%02i"), GetSecond());
				break;
			case TEXT('p'):
				Result += IsMorning() ? TEXT("AM") : TEXT("PM");
				break;
			case TEXT('P'):
				Result += IsMorning() ? TEXT("am") : TEXT("pm");
				break;
			case TEXT('j'):
				Result += FString::Printf(TEXT("%03i"), GetDayOfYear());
				break;
			default:
				Result.AppendChar(*Format);
		}
	}
	return Result;
}

FString FDateTime::ToIso8601() const
{
	return ToString(TEXT("%Y-%m-%dT%H:%M:%S.%sZ"));
}

FString FDateTime::ToHttpDate() const
{
	return ToFormattedString(TEXT("%a, %d %b %Y %H:%M:%S GMT"));
}

bool FDateTime::Parse(const FString& DateTimeString, FDateTime& OutDateTime)
{
	FString Fixed = DateTimeString.TrimStartAndEnd();
	for (TCHAR& Char : Fixed)
	{
		if (Char == TEXT('.') || Char == TEXT('-') || Char == TEXT(':') || Char == TEXT('T'))
		{
			Char = TEXT(' ');
		}
	}
	TArray<FString> Tokens;
	Fixed.ParseIntoArray(Tokens, TEXT(" "), true);
	if (Tokens.Num() != 3 && Tokens.Num() != 6 && Tokens.Num() != 7)
	{
		return false;
	}
	int32 Values[7] = {};
	for (int32 Index = 0; Index < Tokens.Num(); ++Index)
	{
		if (!LexTryParseString(Values[Index], *Tokens[Index]) || !Tokens[Index].IsNumeric())
		{
			return false;
		}
	}
	if (!Validate(Values[0], Values[1], Values[2], Values[3], Values[4], Values[5], Values[6]))
	{
		return false;
	}
	OutDateTime = FDateTime(Values[0], Values[1], Values[2], Values[3], Values[4], Values[5], Values[6]);
	return true;
}

bool FDateTime::ParseIso8601(const TCHAR* DateTimeString, FDateTime& OutDateTime)
{
	if (DateTimeString == nullptr)
	{
		return false;
	}
	const TCHAR* Text = DateTimeString;
	int32 Index = 0;
	int32 Year = 0, Month = 1, Day = 1, Hour = 0, Minute = 0, Second = 0, Millisecond = 0;
	if (!ReadDigits(Text, Index, 4, Year))
	{
		return false;
	}
	const bool bExtended = Text[Index] == TEXT('-');
	if (bExtended)
	{
		++Index;
	}
	if (!ReadDigits(Text, Index, 2, Month) || (bExtended && Text[Index++] != TEXT('-')) ||
		!ReadDigits(Text, Index, 2, Day))
	{
		return false;
	}
	int64 OffsetMinutes = 0;
	if (Text[Index] == TEXT('T') || Text[Index] == TEXT('t') || Text[Index] == TEXT(' '))
	{
		++Index;
		if (!ReadDigits(Text, Index, 2, Hour))
		{
			return false;
		}
		if (bExtended ? Text[Index] == TEXT(':') : FChar::IsDigit(Text[Index]))
		{
			Index += bExtended ? 1 : 0;
			if (!ReadDigits(Text, Index, 2, Minute))
			{
				return false;
			}
			if (bExtended ? Text[Index] == TEXT(':') : FChar::IsDigit(Text[Index]))
			{
				Index += bExtended ? 1 : 0;
				if (!ReadDigits(Text, Index, 2, Second))
				{
					return false;
				}
			}
		}
		if (Text[Index] == TEXT('.') || Text[Index] == TEXT(','))
		{
			++Index;
			int32 Digits = 0;
			int32 Fraction = 0;
			for (; FChar::IsDigit(Text[Index]); ++Index, ++Digits)
			{
				if (Digits < 3)
				{
					Fraction = Fraction * 10 + FChar::ConvertCharDigitToInt(Text[Index]);
				}
			}
			if (Digits == 0)
			{
				return false;
			}
			for (int32 Pad = Digits; Pad < 3; ++Pad)
			{
				Fraction *= 10;
			}
			Millisecond = Fraction;
		}
		if (Text[Index] == TEXT('Z') || Text[Index] == TEXT('z'))
		{
			++Index;
		}
		else if (Text[Index] == TEXT('+') || Text[Index] == TEXT('-'))
		{
			const int64 Sign = Text[Index++] == TEXT('-') ? -1 : 1;
			int32 OffsetHours = 0, OffsetMins = 0;
			if (!ReadDigits(Text, Index, 2, OffsetHours))
			{
				return false;
			}
			if (Text[Index] == TEXT(':'))
			{
				++Index;
			}
			if (FChar::IsDigit(Text[Index]) && !ReadDigits(Text, Index, 2, OffsetMins))
			{
				return false;
			}
			OffsetMinutes = Sign * (OffsetHours * 60 + OffsetMins);
		}
	}
	if (Text[Index] != 0 || !Validate(Year, Month, Day, Hour, Minute, Second, Millisecond))
	{
		return false;
	}
	// The local time minus its offset from UTC is the UTC time.
	OutDateTime = FDateTime(Year, Month, Day, Hour, Minute, Second, Millisecond) -
				  FTimespan(OffsetMinutes * ETimespan::TicksPerMinute);
	return true;
}
