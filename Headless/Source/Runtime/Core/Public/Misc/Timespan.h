// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

/** Tick counts for the units of time; a tick is 100 nanoseconds. */
namespace ETimespan
{
	inline constexpr int64 MaxTicks = MAX_int64;
	inline constexpr int64 MinTicks = MIN_int64;
	inline constexpr int64 NanosecondsPerTick = 100;
	inline constexpr int64 TicksPerDay = 864000000000;
	inline constexpr int64 TicksPerHour = 36000000000;
	inline constexpr int64 TicksPerMicrosecond = 10;
	inline constexpr int64 TicksPerMillisecond = 10000;
	inline constexpr int64 TicksPerMinute = 600000000;
	inline constexpr int64 TicksPerSecond = 10000000;
	inline constexpr int64 TicksPerWeek = 6048000000000;
	inline constexpr int64 TicksPerYear = 365 * TicksPerDay;
} // namespace ETimespan

/** A signed time interval with a resolution of 100 nanoseconds. */
struct CORE_API FTimespan
{
	FTimespan() = default;
	FTimespan(int64 InTicks)
		: Ticks(InTicks)
	{
	}
	FTimespan(int32 Hours, int32 Minutes, int32 Seconds);
	FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds);
	FTimespan(int32 Days, int32 Hours, int32 Minutes, int32 Seconds, int32 FractionNano);

	static FTimespan FromDays(double Days);
	static FTimespan FromHours(double Hours);
	static FTimespan FromMinutes(double Minutes);
	static FTimespan FromSeconds(double Seconds);
	static FTimespan FromMilliseconds(double Milliseconds);
	static FTimespan FromMicroseconds(double Microseconds);

	static FTimespan Zero() { return FTimespan(0); }
	static FTimespan MaxValue() { return FTimespan(ETimespan::MaxTicks); }
	static FTimespan MinValue() { return FTimespan(ETimespan::MinTicks); }

	/** Whole units of the interval; each is negative for a negative interval. */
	int32 GetDays() const { return static_cast<int32>(Ticks / ETimespan::TicksPerDay); }
	int32 GetHours() const { return static_cast<int32>((Ticks / ETimespan::TicksPerHour) % 24); }
	int32 GetMinutes() const { return static_cast<int32>((Ticks / ETimespan::TicksPerMinute) % 60); }
	int32 GetSeconds() const { return static_cast<int32>((Ticks / ETimespan::TicksPerSecond) % 60); }
	int32 GetFractionMilli() const
	{
		return static_cast<int32>((Ticks % ETimespan::TicksPerSecond) / ETimespan::TicksPerMillisecond);
	}
	int32 GetFractionMicro() const
	{
		return static_cast<int32>((Ticks % ETimespan::TicksPerSecond) / ETimespan::TicksPerMicrosecond);
	}
	int32 GetFractionNano() const
	{
		return static_cast<int32>((Ticks % ETimespan::TicksPerSecond) * ETimespan::NanosecondsPerTick);
	}
	int32 GetFractionTicks() const { return static_cast<int32>(Ticks % ETimespan::TicksPerSecond); }

	double GetTotalDays() const { return static_cast<double>(Ticks) / ETimespan::TicksPerDay; }
	double GetTotalHours() const { return static_cast<double>(Ticks) / ETimespan::TicksPerHour; }
	double GetTotalMinutes() const { return static_cast<double>(Ticks) / ETimespan::TicksPerMinute; }
	double GetTotalSeconds() const { return static_cast<double>(Ticks) / ETimespan::TicksPerSecond; }
	double GetTotalMilliseconds() const { return static_cast<double>(Ticks) / ETimespan::TicksPerMillisecond; }
	double GetTotalMicroseconds() const { return static_cast<double>(Ticks) / ETimespan::TicksPerMicrosecond; }

	int64 GetTicks() const { return Ticks; }
	FTimespan GetDuration() const { return FTimespan(Ticks >= 0 ? Ticks : -Ticks); }
	bool IsZero() const { return Ticks == 0; }

	/** "[-][d.]hh:mm:ss.fff": the day part only when there are whole days. */
	FString ToString() const;

	/**
	 * Formats with: %d days, %D days (8 digits), %h hours, %m minutes, %s seconds (2 digits each),
	 * %f milliseconds (3 digits), %u microseconds (6), %t ticks (7), %n '-' when negative, %N '-' or '+'.
	 */
	FString ToString(const TCHAR* Format) const;

	/** Parses "[-][d.]hh:mm:ss[.fff]". */
	static bool Parse(const FString& TimespanString, FTimespan& OutTimespan);

	FTimespan operator+(const FTimespan& Other) const { return FTimespan(Ticks + Other.Ticks); }
	FTimespan& operator+=(const FTimespan& Other)
	{
		Ticks += Other.Ticks;
		return *this;
	}
	FTimespan operator-() const { return FTimespan(-Ticks); }
	FTimespan operator-(const FTimespan& Other) const { return FTimespan(Ticks - Other.Ticks); }
	FTimespan& operator-=(const FTimespan& Other)
	{
		Ticks -= Other.Ticks;
		return *this;
	}
	FTimespan operator*(double Scalar) const;
	FTimespan& operator*=(double Scalar)
	{
		*this = *this * Scalar;
		return *this;
	}
	FTimespan operator/(double Scalar) const;
	FTimespan& operator/=(double Scalar)
	{
		*this = *this / Scalar;
		return *this;
	}
	FTimespan operator%(const FTimespan& Other) const { return FTimespan(Ticks % Other.Ticks); }

	bool operator==(const FTimespan& Other) const { return Ticks == Other.Ticks; }
	bool operator!=(const FTimespan& Other) const { return Ticks != Other.Ticks; }
	bool operator<(const FTimespan& Other) const { return Ticks < Other.Ticks; }
	bool operator<=(const FTimespan& Other) const { return Ticks <= Other.Ticks; }
	bool operator>(const FTimespan& Other) const { return Ticks > Other.Ticks; }
	bool operator>=(const FTimespan& Other) const { return Ticks >= Other.Ticks; }

	friend uint32 GetTypeHash(const FTimespan& Timespan)
	{
		return static_cast<uint32>(Timespan.Ticks) +
			   static_cast<uint32>(static_cast<uint64>(Timespan.Ticks) >> 32) * 23u;
	}

private:
	int64 Ticks = 0;
};

inline FTimespan operator*(double Scalar, const FTimespan& Timespan)
{
	return Timespan * Scalar;
}
