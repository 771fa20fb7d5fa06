// Copyright Orvane. All Rights Reserved.

#include "Misc/DateTime.h"
#include "EngineTestPrinters.h"
#include "Misc/Timespan.h"

#include <gtest/gtest.h>

TEST(TimespanTest, ConvertsBetweenUnits)
{
	EXPECT_EQ(FTimespan::FromSeconds(1.5).GetTicks(), 15000000);
	EXPECT_EQ(FTimespan::FromMilliseconds(2).GetTicks(), 20000);
	EXPECT_EQ(FTimespan::FromMinutes(1).GetTicks(), ETimespan::TicksPerMinute);
	EXPECT_EQ(FTimespan::FromHours(2), FTimespan(2, 0, 0));
	EXPECT_EQ(FTimespan::FromDays(1.5), FTimespan(1, 12, 0, 0));
	EXPECT_DOUBLE_EQ(FTimespan::FromSeconds(90).GetTotalMinutes(), 1.5);
	EXPECT_DOUBLE_EQ(FTimespan::FromSeconds(2.25).GetTotalMilliseconds(), 2250.0);
	EXPECT_DOUBLE_EQ(FTimespan(1, 0, 0, 0).GetTotalHours(), 24.0);
	EXPECT_EQ(FTimespan::Zero().GetTicks(), 0);
	EXPECT_TRUE(FTimespan::Zero().IsZero());
	EXPECT_EQ(FTimespan::MaxValue().GetTicks(), MAX_int64);

	const FTimespan Span(1, 2, 3, 4, 567000000);
	EXPECT_EQ(Span.GetDays(), 1);
	EXPECT_EQ(Span.GetHours(), 2);
	EXPECT_EQ(Span.GetMinutes(), 3);
	EXPECT_EQ(Span.GetSeconds(), 4);
	EXPECT_EQ(Span.GetFractionMilli(), 567);
	EXPECT_EQ((-Span).GetHours(), -2);
	EXPECT_EQ((-Span).GetDuration(), Span);
}

TEST(TimespanTest, SupportsArithmetic)
{
	const FTimespan A = FTimespan::FromSeconds(10);
	const FTimespan B = FTimespan::FromSeconds(4);
	EXPECT_EQ(A + B, FTimespan::FromSeconds(14));
	EXPECT_EQ(A - B, FTimespan::FromSeconds(6));
	EXPECT_EQ(A * 1.5, FTimespan::FromSeconds(15));
	EXPECT_EQ(A / 4.0, FTimespan::FromSeconds(2.5));
	EXPECT_EQ(A % B, FTimespan::FromSeconds(2));
	EXPECT_TRUE(B < A);
	FTimespan C = A;
	C += B;
	C -= FTimespan::FromSeconds(1);
	EXPECT_EQ(C, FTimespan::FromSeconds(13));
}

TEST(TimespanTest, FormatsAndParses)
{
	EXPECT_EQ(ToUtf8(FTimespan::FromSeconds(90.5).ToString()), "00:01:30.500");
	EXPECT_EQ(ToUtf8(FTimespan(1, 2, 3, 4).ToString()), "1.02:03:04.000");
	EXPECT_EQ(ToUtf8(FTimespan::FromSeconds(-90.5).ToString()), "-00:01:30.500");
	EXPECT_EQ(ToUtf8(FTimespan::FromSeconds(-90.5).ToString(TEXT("%N%m:%s"))), "-01:30");
	EXPECT_EQ(ToUtf8(FTimespan::FromSeconds(5).ToString(TEXT("%N%h:%m:%s.%u"))), "+00:00:05.000000");

	FTimespan Parsed;
	EXPECT_TRUE(FTimespan::Parse(TEXT("1.02:03:04.500"), Parsed));
	EXPECT_EQ(Parsed, FTimespan(1, 2, 3, 4, 500000000));
	EXPECT_TRUE(FTimespan::Parse(TEXT("-00:01:30"), Parsed));
	EXPECT_EQ(Parsed, FTimespan::FromSeconds(-90));
	EXPECT_FALSE(FTimespan::Parse(TEXT("00:61:00"), Parsed));
	EXPECT_FALSE(FTimespan::Parse(TEXT("nonsense"), Parsed));
}

TEST(DateTimeTest, BreaksTicksIntoCalendarParts)
{
	const FDateTime Date(2024, 3, 15, 13, 45, 30, 123);
	EXPECT_EQ(Date.GetYear(), 2024);
	EXPECT_EQ(Date.GetMonth(), 3);
	EXPECT_EQ(Date.GetMonthOfYear(), EMonthOfYear::March);
	EXPECT_EQ(Date.GetDay(), 15);
	EXPECT_EQ(Date.GetHour(), 13);
	EXPECT_EQ(Date.GetHour12(), 1);
	EXPECT_EQ(Date.GetMinute(), 45);
	EXPECT_EQ(Date.GetSecond(), 30);
	EXPECT_EQ(Date.GetMillisecond(), 123);
	EXPECT_EQ(Date.GetDayOfWeek(), EDayOfWeek::Friday);
	EXPECT_EQ(Date.GetDayOfYear(), 75);
	EXPECT_TRUE(Date.IsAfternoon());
	EXPECT_EQ(Date.GetDate(), FDateTime(2024, 3, 15));
	EXPECT_EQ(Date.GetTimeOfDay(), FTimespan(0, 13, 45, 30, 123000000));

	EXPECT_EQ(FDateTime(1, 1, 1).GetTicks(), 0);
	EXPECT_EQ(FDateTime(1, 1, 1).GetDayOfWeek(), EDayOfWeek::Monday);
	EXPECT_EQ(FDateTime(1970, 1, 1).GetTicks(), 621355968000000000);
	EXPECT_EQ(FDateTime(2000, 2, 29).GetDayOfWeek(), EDayOfWeek::Tuesday);
	EXPECT_EQ(FDateTime::MaxValue().GetYear(), 9999);
	EXPECT_EQ(FDateTime::MaxValue().GetMonth(), 12);
	EXPECT_EQ(FDateTime::MaxValue().GetDay(), 31);
}

TEST(DateTimeTest, KnowsTheCalendarRules)
{
	EXPECT_TRUE(FDateTime::IsLeapYear(2000));
	EXPECT_FALSE(FDateTime::IsLeapYear(1900));
	EXPECT_TRUE(FDateTime::IsLeapYear(2024));
	EXPECT_EQ(FDateTime::DaysInMonth(2023, 2), 28);
	EXPECT_EQ(FDateTime::DaysInMonth(2024, 2), 29);
	EXPECT_EQ(FDateTime::DaysInYear(2024), 366);
	EXPECT_TRUE(FDateTime::Validate(2024, 2, 29, 23, 59, 59, 999));
	EXPECT_FALSE(FDateTime::Validate(2023, 2, 29, 0, 0, 0, 0));
	EXPECT_FALSE(FDateTime::Validate(2023, 13, 1, 0, 0, 0, 0));
}

TEST(DateTimeTest, FormatsText)
{
	const FDateTime Date(2024, 3, 15, 13, 45, 30, 123);
	EXPECT_EQ(ToUtf8(Date.ToString()), "2024.03.15-13.45.30");
	EXPECT_EQ(ToUtf8(Date.ToIso8601()), "2024-03-15T13:45:30.123Z");
	EXPECT_EQ(ToUtf8(Date.ToString(TEXT("%a %A %h %D %y %s%%"))), "pm PM 01 075 24 123%");
	EXPECT_EQ(ToUtf8(Date.ToFormattedString(TEXT("%a %A %b %B %e %l %I %p %P %j %w"))),
		"Fri Friday Mar March 15 1 01 PM pm 075 5");
	EXPECT_EQ(ToUtf8(Date.ToHttpDate()), "Fri, 15 Mar 2024 13:45:30 GMT");
}

TEST(DateTimeTest, ParsesItsOwnFormsAndIso8601)
{
	FDateTime Parsed;
	EXPECT_TRUE(FDateTime::Parse(TEXT("2024.03.15-13.45.30"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15, 13, 45, 30));
	EXPECT_TRUE(FDateTime::Parse(TEXT("2024.03.15"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15));
	EXPECT_FALSE(FDateTime::Parse(TEXT("2024.02.30-00.00.00"), Parsed));

	EXPECT_TRUE(FDateTime::ParseIso8601(TEXT("2024-03-15T13:45:30.123Z"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15, 13, 45, 30, 123));
	EXPECT_TRUE(FDateTime::ParseIso8601(TEXT("2024-03-15"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15));
	EXPECT_TRUE(FDateTime::ParseIso8601(TEXT("2024-03-15T15:45:30+02:00"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15, 13, 45, 30));
	EXPECT_TRUE(FDateTime::ParseIso8601(TEXT("20240315T134530Z"), Parsed));
	EXPECT_EQ(Parsed, FDateTime(2024, 3, 15, 13, 45, 30));
	EXPECT_FALSE(FDateTime::ParseIso8601(TEXT("2024-13-01"), Parsed));
	EXPECT_FALSE(FDateTime::ParseIso8601(TEXT("yesterday"), Parsed));
}

TEST(DateTimeTest, ConvertsUnixTimeAndDoesArithmetic)
{
	const FDateTime Date(2024, 3, 15, 13, 45, 30);
	EXPECT_EQ(Date.ToUnixTimestamp(), 1710510330);
	EXPECT_EQ(FDateTime::FromUnixTimestamp(1710510330), Date);
	EXPECT_EQ(Date + FTimespan(1, 0, 0, 0), FDateTime(2024, 3, 16, 13, 45, 30));
	EXPECT_EQ(Date - FTimespan::FromHours(14), FDateTime(2024, 3, 14, 23, 45, 30));
	EXPECT_EQ(FDateTime(2024, 3, 1) - FDateTime(2024, 2, 1), FTimespan(29, 0, 0, 0));
	EXPECT_TRUE(FDateTime(2024, 1, 1) < Date);
}

TEST(DateTimeTest, NowIsCloseToTheSystemClock)
{
	const FDateTime Utc = FDateTime::UtcNow();
	const int64 SystemSeconds = static_cast<int64>(std::time(nullptr));
	EXPECT_LE(std::abs(Utc.ToUnixTimestamp() - SystemSeconds), 2);
	EXPECT_GE(Utc.GetYear(), 2024);
	const FDateTime Local = FDateTime::Now();
	EXPECT_LE((Local - Utc).GetDuration(), FTimespan::FromHours(14.1));
	EXPECT_EQ(FDateTime::Today().GetTimeOfDay(), FTimespan::Zero());
}

TEST(DateTimeDeathTest, InvalidDatesAreRejected)
{
	EXPECT_DEATH(FDateTime(2023, 2, 29), "Invalid date and time 2023-02-29");
}
