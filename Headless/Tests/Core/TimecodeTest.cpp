// Copyright Orvane. All Rights Reserved.

#include "Misc/Timecode.h"
#include "EngineTestPrinters.h"
#include "Misc/FrameRate.h"
#include "Misc/QualifiedFrameTime.h"

#include <gtest/gtest.h>

namespace
{
	const FFrameRate Rate2997(30000, 1001);
	const FFrameRate Rate5994(60000, 1001);

	std::string LabelOf(int32 Frame, const FFrameRate& Rate, bool bDropFrame)
	{
		return ToUtf8(FTimecode::FromFrameNumber(FFrameNumber(Frame), Rate, bDropFrame).ToString());
	}
} // namespace

TEST(TimecodeTest, NonDropFrameLabelsCountWholeSeconds)
{
	EXPECT_EQ(LabelOf(0, FFrameRate(24, 1), false), "00:00:00:00");
	EXPECT_EQ(LabelOf(24 * 3723 + 4, FFrameRate(24, 1), false), "01:02:03:04");
	EXPECT_EQ(LabelOf(86400 * 24 - 1, FFrameRate(24, 1), false), "23:59:59:23");
	EXPECT_EQ(FTimecode(1, 2, 3, 4, false).ToFrameNumber(FFrameRate(24, 1)).Value, 24 * 3723 + 4);
	// 23.976 fps counts 24 labels per second without dropping any.
	EXPECT_EQ(LabelOf(24, FFrameRate(24000, 1001), true), "00:00:01:00");
	// 29.97 fps without drop-frame labels counts 30 per second and drifts from the wall clock.
	EXPECT_EQ(LabelOf(1800, Rate2997, false), "00:01:00:00");
}

TEST(TimecodeTest, DropFrameSkipsTwoLabelsAtMostMinutesAt2997)
{
	EXPECT_EQ(LabelOf(1799, Rate2997, true), "00:00:59;29");
	EXPECT_EQ(LabelOf(1800, Rate2997, true), "00:01:00;02");
	EXPECT_EQ(LabelOf(1801, Rate2997, true), "00:01:00;03");
	EXPECT_EQ(LabelOf(3597, Rate2997, true), "00:01:59;29");
	EXPECT_EQ(LabelOf(3598, Rate2997, true), "00:02:00;02");
	EXPECT_EQ(LabelOf(17981, Rate2997, true), "00:09:59;29");
	// Every tenth minute keeps its first labels.
	EXPECT_EQ(LabelOf(17982, Rate2997, true), "00:10:00;00");
	EXPECT_EQ(LabelOf(17983, Rate2997, true), "00:10:00;01");
	EXPECT_EQ(LabelOf(19781, Rate2997, true), "00:10:59;29");
	EXPECT_EQ(LabelOf(19782, Rate2997, true), "00:11:00;02");
	// One hour of 29.97 fps is 107892 frames.
	EXPECT_EQ(LabelOf(107892, Rate2997, true), "01:00:00;00");
	EXPECT_EQ(FTimecode(0, 1, 0, 2, true).ToFrameNumber(Rate2997).Value, 1800);
	EXPECT_EQ(FTimecode(1, 0, 0, 0, true).ToFrameNumber(Rate2997).Value, 107892);
}

TEST(TimecodeTest, DropFrameSkipsFourLabelsAt5994)
{
	EXPECT_EQ(LabelOf(3599, Rate5994, true), "00:00:59;59");
	EXPECT_EQ(LabelOf(3600, Rate5994, true), "00:01:00;04");
	EXPECT_EQ(LabelOf(35964, Rate5994, true), "00:10:00;00");
	EXPECT_EQ(FTimecode(0, 1, 0, 4, true).ToFrameNumber(Rate5994).Value, 3600);
}

TEST(TimecodeTest, EveryDropFrameLabelIsValidAndRoundTrips)
{
	for (const FFrameRate& Rate : {Rate2997, Rate5994})
	{
		const int32 Dropped = Rate == Rate2997 ? 2 : 4;
		for (int32 Frame = 0; Frame < 2 * 107892 * (Dropped / 2) + 1000; ++Frame)
		{
			const FTimecode Timecode = FTimecode::FromFrameNumber(FFrameNumber(Frame), Rate, true);
			ASSERT_TRUE(Timecode.bDropFrameFormat);
			const bool bSkippedLabel = Timecode.Seconds == 0 && Timecode.Frames < Dropped && Timecode.Minutes % 10 != 0;
			ASSERT_FALSE(bSkippedLabel) << "frame " << Frame << " got " << ToUtf8(Timecode.ToString());
			ASSERT_EQ(Timecode.ToFrameNumber(Rate).Value, Frame) << ToUtf8(Timecode.ToString());
		}
	}
}

TEST(TimecodeTest, DropFrameIsOnlyForNtscRates)
{
	EXPECT_TRUE(FTimecode::IsDropFormatTimecodeSupported(Rate2997));
	EXPECT_TRUE(FTimecode::IsDropFormatTimecodeSupported(Rate5994));
	EXPECT_FALSE(FTimecode::IsDropFormatTimecodeSupported(FFrameRate(24000, 1001)));
	EXPECT_FALSE(FTimecode::IsDropFormatTimecodeSupported(FFrameRate(30, 1)));
	EXPECT_FALSE(FTimecode::IsDropFormatTimecodeSupported(FFrameRate(25, 1)));
	EXPECT_TRUE(FTimecode::UseDropFormatTimecode(Rate2997));
	EXPECT_FALSE(FTimecode::UseDropFormatTimecode(FFrameRate(25, 1)));

	const FTimecode AskedForDrop = FTimecode::FromFrameNumber(FFrameNumber(1500), FFrameRate(25, 1), true);
	EXPECT_FALSE(AskedForDrop.bDropFrameFormat);
	EXPECT_EQ(ToUtf8(AskedForDrop.ToString()), "00:01:00:00");
	EXPECT_EQ(ToUtf8(FTimecode::FromFrameNumber(FFrameNumber(1800), Rate2997).ToString()), "00:01:00;02");
}

TEST(TimecodeTest, NegativeTimecodesCarryTheSign)
{
	const FTimecode Negative = FTimecode::FromFrameNumber(FFrameNumber(-26), FFrameRate(25, 1), false);
	EXPECT_EQ(ToUtf8(Negative.ToString()), "-00:00:01:01");
	EXPECT_EQ(Negative.ToFrameNumber(FFrameRate(25, 1)).Value, -26);
	EXPECT_EQ(ToUtf8(FTimecode(0, 0, 1, 0, false).ToString(true)), "+00:00:01:00");
	EXPECT_EQ(ToUtf8(FTimecode(0, 0, 1, 2, 0.5f, false).ToString(false, true)), "00:00:01:02.50");
}

TEST(TimecodeTest, SecondsAndTimespansConvert)
{
	EXPECT_EQ(FTimecode(3661.5, FFrameRate(24, 1), false, false), FTimecode(1, 1, 1, 12, false));
	EXPECT_EQ(FTimecode(90000.0, FFrameRate(24, 1), false, true), FTimecode(1, 0, 0, 0, false));
	EXPECT_EQ(FTimecode(90000.0, FFrameRate(24, 1), false, false).Hours, 25);
	EXPECT_TRUE(FTimecode(60.0, Rate2997, false).bDropFrameFormat);
	EXPECT_DOUBLE_EQ(FTimecode(0, 0, 2, 12, false).ToTimespan(FFrameRate(24, 1)).GetTotalSeconds(), 2.5);
	const FTimecode FromSpan = FTimecode::FromTimespan(FTimespan::FromSeconds(2.5), FFrameRate(24, 1), false, false);
	EXPECT_EQ(FromSpan, FTimecode(0, 0, 2, 12, false));
}

TEST(QualifiedFrameTimeTest, DefaultsToFrameZeroAt24)
{
	const FQualifiedFrameTime Time;
	EXPECT_EQ(Time.Time, FFrameTime(0));
	EXPECT_EQ(Time.Rate, FFrameRate(24, 1));
	EXPECT_DOUBLE_EQ(Time.AsSeconds(), 0.0);
}

TEST(QualifiedFrameTimeTest, CarriesATimecodeWithItsRate)
{
	const FQualifiedFrameTime Hour(FTimecode(1, 0, 0, 0, true), Rate2997);
	EXPECT_EQ(Hour.Time, FFrameTime(107892));
	EXPECT_NEAR(Hour.AsSeconds(), 107892 * 1001.0 / 30000.0, 1e-9);
	EXPECT_EQ(ToUtf8(Hour.ToTimecode().ToString()), "01:00:00;00");

	const FQualifiedFrameTime WithSubframe(FTimecode(0, 0, 1, 2, 0.25f, false), FFrameRate(25, 1));
	EXPECT_EQ(WithSubframe.Time, FFrameTime(FFrameNumber(27), 0.25f));
	const FTimecode Back = WithSubframe.ToTimecode();
	EXPECT_EQ(Back, FTimecode(0, 0, 1, 2, 0.25f, false));

	EXPECT_EQ(FQualifiedFrameTime(FFrameTime(12), FFrameRate(24, 1)).ConvertTo(FFrameRate(48, 1)), FFrameTime(24));
	EXPECT_EQ(
		FQualifiedFrameTime(FFrameTime(12), FFrameRate(24, 1)), FQualifiedFrameTime(FFrameTime(12), FFrameRate(24, 1)));
}
