// Copyright Orvane. All Rights Reserved.

#include "Misc/FrameRate.h"
#include "EngineTestPrinters.h"
#include "Misc/FrameNumber.h"
#include "Misc/FrameTime.h"

#include <gtest/gtest.h>

namespace
{
	const FFrameRate Film(24, 1);
	const FFrameRate Ntsc(30000, 1001);
	const FFrameRate TickResolution(60000, 1);
} // namespace

TEST(FrameRateTest, DefaultRateIsTheTickResolution)
{
	const FFrameRate Default;
	EXPECT_EQ(Default.Numerator, 60000);
	EXPECT_EQ(Default.Denominator, 1);
	EXPECT_TRUE(Default.IsValid());
	EXPECT_FALSE(FFrameRate(24, 0).IsValid());
}

TEST(FrameRateTest, IntervalAndDecimalAreReciprocal)
{
	EXPECT_DOUBLE_EQ(Film.AsDecimal(), 24.0);
	EXPECT_DOUBLE_EQ(Film.AsInterval(), 1.0 / 24.0);
	EXPECT_NEAR(Ntsc.AsDecimal(), 29.97002997, 1e-8);
	EXPECT_DOUBLE_EQ(Ntsc.AsInterval(), 1001.0 / 30000.0);
	EXPECT_EQ(Film.Reciprocal().Numerator, 1);
	EXPECT_EQ(Film.Reciprocal().Denominator, 24);
}

TEST(FrameRateTest, ConvertsBetweenSecondsAndFrames)
{
	EXPECT_DOUBLE_EQ(Film.AsSeconds(FFrameTime(48)), 2.0);
	EXPECT_DOUBLE_EQ(Film.AsSeconds(FFrameTime(FFrameNumber(1), 0.5f)), 1.5 / 24.0);
	EXPECT_EQ(Film.AsFrameTime(2.0), FFrameTime(48));
	const FFrameTime Half = Film.AsFrameTime(0.5 / 24.0);
	EXPECT_EQ(Half.GetFrame().Value, 0);
	EXPECT_FLOAT_EQ(Half.GetSubFrame(), 0.5f);
	EXPECT_EQ(Film.AsFrameNumber(1.99 / 24.0).Value, 1);
	EXPECT_EQ(Film.AsFrameNumber(-0.01).Value, -1);
	EXPECT_DOUBLE_EQ(FFrameNumber(72) / Film, 3.0);
	EXPECT_EQ(3.0 * Film, FFrameTime(72));
}

TEST(FrameRateTest, EveryNtscFrameSurvivesARoundTripThroughSeconds)
{
	for (int32 Frame = -1000; Frame < 200000; ++Frame)
	{
		const FFrameTime Back = Ntsc.AsFrameTime(Ntsc.AsSeconds(FFrameTime(Frame)));
		ASSERT_EQ(Back, FFrameTime(Frame)) << "frame " << Frame;
	}
}

TEST(FrameRateTest, TransformTimeIsExactForWholeFrames)
{
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(1), Film, TickResolution), FFrameTime(2500));
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(1), Ntsc, TickResolution), FFrameTime(2002));
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(-1), Film, TickResolution), FFrameTime(-2500));
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(2500), TickResolution, Film), FFrameTime(1));
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(1000000), Ntsc, TickResolution), FFrameTime(2002000000));

	const FFrameTime Quarter = FFrameRate::TransformTime(FFrameTime(1), TickResolution, Film);
	EXPECT_EQ(Quarter.GetFrame().Value, 0);
	EXPECT_FLOAT_EQ(Quarter.GetSubFrame(), 0.0004f);

	const FFrameTime WithSubFrame =
		FFrameRate::TransformTime(FFrameTime(FFrameNumber(10), 0.5f), FFrameRate(25, 1), FFrameRate(50, 1));
	EXPECT_EQ(WithSubFrame, FFrameTime(21));

	const FFrameTime Negative = FFrameRate::TransformTime(FFrameTime(-3), FFrameRate(50, 1), FFrameRate(25, 1));
	EXPECT_EQ(Negative.GetFrame().Value, -2);
	EXPECT_FLOAT_EQ(Negative.GetSubFrame(), 0.5f);
	EXPECT_EQ(FFrameRate::TransformTime(FFrameTime(7), Film, Film), FFrameTime(7));
}

TEST(FrameRateTest, SnapRoundsToTheOtherGrid)
{
	// Tick 1300 at 60000 fps is 0.52 of a frame at 24 fps: it snaps to frame 1, tick 2500.
	EXPECT_EQ(FFrameRate::Snap(FFrameTime(1300), TickResolution, Film), FFrameTime(2500));
	EXPECT_EQ(FFrameRate::Snap(FFrameTime(1200), TickResolution, Film), FFrameTime(0));
}

TEST(FrameRateTest, ComparesRatesByValue)
{
	EXPECT_EQ(FFrameRate(48, 2), Film);
	EXPECT_NE(Ntsc, FFrameRate(30, 1));
	EXPECT_EQ(GetTypeHash(Film), GetTypeHash(FFrameRate(24, 1)));
	EXPECT_TRUE(TickResolution.IsMultipleOf(Film));
	EXPECT_TRUE(Film.IsFactorOf(TickResolution));
	EXPECT_FALSE(Film.IsMultipleOf(FFrameRate(60, 1)));
	EXPECT_EQ(FFrameRate(24, 1) * FFrameRate(2, 1), FFrameRate(48, 1));
	EXPECT_EQ(FFrameRate(24, 1) / FFrameRate(2, 1), FFrameRate(12, 1));
}

TEST(FrameRateTest, PrettyTextDropsTrailingZeros)
{
	EXPECT_EQ(ToUtf8(Film.ToPrettyText().ToString()), "24 fps");
	EXPECT_EQ(ToUtf8(Ntsc.ToPrettyText().ToString()), "29.97 fps");
	EXPECT_EQ(ToUtf8(FFrameRate(25, 2).ToPrettyText().ToString()), "12.5 fps");
}

TEST(FrameTimeTest, SubFrameIsClampedIntoTheFrame)
{
	EXPECT_EQ(FFrameTime(FFrameNumber(5), 1.5f).GetSubFrame(), FFrameTime::MaxSubframe);
	EXPECT_EQ(FFrameTime(FFrameNumber(5), -0.5f).GetSubFrame(), 0.f);
	EXPECT_LT(FFrameTime::MaxSubframe, 1.f);
}

TEST(FrameTimeTest, ArithmeticCarriesAndBorrowsSubFrames)
{
	EXPECT_EQ(
		FFrameTime(FFrameNumber(1), 0.75f) + FFrameTime(FFrameNumber(2), 0.5f), FFrameTime(FFrameNumber(4), 0.25f));
	EXPECT_EQ(
		FFrameTime(FFrameNumber(3), 0.25f) - FFrameTime(FFrameNumber(1), 0.5f), FFrameTime(FFrameNumber(1), 0.75f));
	EXPECT_EQ(-FFrameTime(FFrameNumber(2), 0.25f), FFrameTime(FFrameNumber(-3), 0.75f));
	EXPECT_EQ(-FFrameTime(2), FFrameTime(-2));
	EXPECT_EQ(FFrameTime::FromDecimal(-0.25), FFrameTime(FFrameNumber(-1), 0.75f));
	EXPECT_DOUBLE_EQ(FFrameTime(FFrameNumber(-1), 0.75f).AsDecimal(), -0.25);
	EXPECT_EQ(FFrameTime(10) * 1.5f, FFrameTime(15));
	EXPECT_EQ(FFrameTime(15) / 2.f, FFrameTime(FFrameNumber(7), 0.5f));
	EXPECT_EQ(FFrameTime(FFrameNumber(7), 0.5f) % FFrameTime(2), FFrameTime(FFrameNumber(1), 0.5f));

	FFrameTime Accumulated(1);
	Accumulated += FFrameTime(FFrameNumber(0), 0.5f);
	Accumulated -= FFrameTime(2);
	EXPECT_EQ(Accumulated, FFrameTime(FFrameNumber(-1), 0.5f));
}

TEST(FrameTimeTest, RoundsAndComparesThroughTheSubFrame)
{
	const FFrameTime Time(FFrameNumber(4), 0.5f);
	EXPECT_EQ(Time.FloorToFrame().Value, 4);
	EXPECT_EQ(Time.CeilToFrame().Value, 5);
	EXPECT_EQ(Time.RoundToFrame().Value, 5);
	EXPECT_EQ(FFrameTime(FFrameNumber(4), 0.49f).RoundToFrame().Value, 4);
	EXPECT_EQ(FFrameTime(4).CeilToFrame().Value, 4);
	EXPECT_LT(FFrameTime(4), Time);
	EXPECT_GT(FFrameTime(5), Time);
	EXPECT_LE(Time, Time);
	EXPECT_GE(Time, FFrameTime(FFrameNumber(4), 0.25f));
	EXPECT_NE(Time, FFrameTime(4));
}

TEST(FrameNumberTest, BehavesAsAnInteger)
{
	FFrameNumber Frame(10);
	Frame += 5;
	Frame -= FFrameNumber(3);
	EXPECT_EQ(Frame.Value, 12);
	EXPECT_EQ((Frame++).Value, 12);
	EXPECT_EQ((++Frame).Value, 14);
	EXPECT_EQ((--Frame).Value, 13);
	EXPECT_EQ((FFrameNumber(7) % FFrameNumber(4)).Value, 3);
	EXPECT_EQ((-FFrameNumber(7)).Value, -7);
	EXPECT_EQ((FFrameNumber(7) * 0.5f).Value, 3);
	EXPECT_EQ((FFrameNumber(-7) / 2.f).Value, -4);
	EXPECT_TRUE(FFrameNumber(1) < FFrameNumber(2));
	EXPECT_EQ(GetTypeHash(FFrameNumber(9)), GetTypeHash(FFrameNumber(9)));
}
