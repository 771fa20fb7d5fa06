// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/Timespan.h"

/** Days of the week, Monday first. */
enum class EDayOfWeek
{
	Monday = 0,
	Tuesday,
	Wednesday,
	Thursday,
	Friday,
	Saturday,
	Sunday
};

/** Months of the year, January being 1. */
enum class EMonthOfYear
{
	January = 1,
	February,
	March,
	April,
	May,
	June,
	July,
	August,
	September,
	October,
	November,
	December
};

/**
 * A date and time in the proleptic Gregorian calendar, counted in 100-nanosecond ticks from
 * 00:00:00 on January 1st of year 1, up to the end of year 9999.
 */
struct CORE_API FDateTime
{
	FDateTime() = default;
	FDateTime(int64 InTicks)
		: Ticks(InTicks)
	{
	}

	/** The given moment; the parts must form a valid date and time (checked). */
	FDateTime(
		int32 Year, int32 Month, int32 Day, int32 Hour = 0, int32 Minute = 0, int32 Second = 0, int32 Millisecond = 0);

	/** The local date and time of the machine. */
	static FDateTime Now();
	static FDateTime UtcNow();

	/** Midnight of the local date. */
	static FDateTime Today();

	static FDateTime MaxValue() { return FDateTime(3652059 * ETimespan::TicksPerDay - 1); }
	static FDateTime MinValue() { return FDateTime(0); }

	static int32 DaysInMonth(int32 Year, int32 Month);
	static int32 DaysInYear(int32 Year) { return IsLeapYear(Year) ? 366 : 365; }
	static bool IsLeapYear(int32 Year);
	static bool Validate(int32 Year, int32 Month, int32 Day, int32 Hour, int32 Minute, int32 Second, int32 Millisecond);

	static FDateTime FromUnixTimestamp(int64 UnixTime);
	int64 ToUnixTimestamp() const;

	FDateTime GetDate() const { return FDateTime(Ticks - Ticks % ETimespan::TicksPerDay); }
	void GetDate(int32& OutYear, int32& OutMonth, int32& OutDay) const;
	int32 GetYear() const;
	int32 GetMonth() const;
	EMonthOfYear GetMonthOfYear() const { return static_cast<EMonthOfYear>(GetMonth()); }
	int32 GetDay() const;
	EDayOfWeek GetDayOfWeek() const;
	int32 GetDayOfYear() const;
	int32 GetHour() const { return static_cast<int32>((Ticks / ETimespan::TicksPerHour) % 24); }
	int32 GetHour12() const;
	int32 GetMinute() const { return static_cast<int32>((Ticks / ETimespan::TicksPerMinute) % 60); }
	int32 GetSecond() const { return static_cast<int32>((Ticks / ETimespan::TicksPerSecond) % 60); }
	int32 GetMillisecond() const { return static_cast<int32>((Ticks / ETimespan::TicksPerMillisecond) % 1000); }
	int64 GetTicks() const { return Ticks; }
	FTimespan GetTimeOfDay() const { return FTimespan(Ticks % ETimespan::TicksPerDay); }
	double GetJulianDay() const { return 1721425.5 + static_cast<double>(Ticks) / ETimespan::TicksPerDay; }
	double GetModifiedJulianDay() const { return GetJulianDay() - 2400000.5; }
	bool IsAfternoon() const { return GetHour() >= 12; }
	bool IsMorning() const { return GetHour() < 12; }

	/** "yyyy.mm.dd-hh.mm.ss". */
	FString ToString() const;

	/**
	 * Formats with: %a am/pm, %A AM/PM, %d day (01-31), %D day of year (001-366), %m month (01-12),
	 * %y year (YY), %Y year (YYYY), %h 12h hour (01-12), %H 24h hour (00-23), %M minute, %S second,
	 * %s millisecond (000-999).
	 */
	FString ToString(const TCHAR* Format) const;

	/** Formats with strftime-like specifiers (%a Sun, %A Sunday, %b Jan, %B January, %e, %I, %l, %p, %P, %j, %w...). */
	FString ToFormattedString(const TCHAR* Format) const;

	/** "yyyy-mm-ddThh:mm:ss.sssZ". */
	FString ToIso8601() const;

	/** RFC 1123 form: "Sun, 06 Nov 1994 08:49:37 GMT". */
	FString ToHttpDate() const;

	/** Parses "yyyy.mm.dd-hh.mm.ss[.sss]" (ToString's form) or "yyyy.mm.dd". */
	static bool Parse(const FString& DateTimeString, FDateTime& OutDateTime);

	/** Parses ISO 8601 dates and times; an offset ("+hh:mm") is converted to UTC. */
	static bool ParseIso8601(const TCHAR* DateTimeString, FDateTime& OutDateTime);

	FDateTime operator+(const FTimespan& Other) const { return FDateTime(Ticks + Other.GetTicks()); }
	FDateTime& operator+=(const FTimespan& Other)
	{
		Ticks += Other.GetTicks();
		return *this;
	}
	FTimespan operator-(const FDateTime& Other) const { return FTimespan(Ticks - Other.Ticks); }
	FDateTime operator-(const FTimespan& Other) const { return FDateTime(Ticks - Other.GetTicks()); }
	FDateTime& operator-=(const FTimespan& Other)
	{
		Ticks -= Other.GetTicks();
		return *this;
	}

	bool operator==(const FDateTime& Other) const { return Ticks == Other.Ticks; }
	bool operator!=(const FDateTime& Other) const { return Ticks != Other.Ticks; }
	bool operator<(const FDateTime& Other) const { return Ticks < Other.Ticks; }
	bool operator<=(const FDateTime& Other) const { return Ticks <= Other.Ticks; }
	bool operator>(const FDateTime& Other) const { return Ticks > Other.Ticks; }
	bool operator>=(const FDateTime& Other) const { return Ticks >= Other.Ticks; }

	friend uint32 GetTypeHash(const FDateTime& Date)
	{
		return static_cast<uint32>(Date.Ticks) + static_cast<uint32>(static_cast<uint64>(Date.Ticks) >> 32) * 23u;
	}

private:
	int64 Ticks = 0;
};
