// Copyright Orvane. All Rights Reserved.

#include "Misc/Guid.h"
#include "Containers/Map.h"
#include "EngineTestPrinters.h"

#include <gtest/gtest.h>

namespace
{
	const FGuid Sample(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210);
}

TEST(GuidTest, DefaultGuidIsInvalid)
{
	FGuid Guid;
	EXPECT_FALSE(Guid.IsValid());
	EXPECT_EQ(ToUtf8(Guid.ToString()), "00000000000000000000000000000000");
	FGuid Valid = Sample;
	EXPECT_TRUE(Valid.IsValid());
	Valid.Invalidate();
	EXPECT_FALSE(Valid.IsValid());
}

TEST(GuidTest, FormatsInEveryTextForm)
{
	EXPECT_EQ(ToUtf8(Sample.ToString()), "0123456789ABCDEFFEDCBA9876543210");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::DigitsLower)), "0123456789abcdeffedcba9876543210");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::DigitsWithHyphens)), "01234567-89AB-CDEF-FEDC-BA9876543210");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::DigitsWithHyphensLower)), "01234567-89ab-cdef-fedc-ba9876543210");
	EXPECT_EQ(
		ToUtf8(Sample.ToString(EGuidFormats::DigitsWithHyphensInBraces)), "{01234567-89AB-CDEF-FEDC-BA9876543210}");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::DigitsWithHyphensInParentheses)),
		"(01234567-89AB-CDEF-FEDC-BA9876543210)");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::HexValuesInBraces)),
		"{0x01234567,0x89AB,0xCDEF,{0xFE,0xDC,0xBA,0x98,0x76,0x54,0x32,0x10}}");
	EXPECT_EQ(ToUtf8(Sample.ToString(EGuidFormats::UniqueObjectGuid)), "01234567-89ABCDEF-FEDCBA98-76543210");
	EXPECT_EQ(Sample.ToString(EGuidFormats::Short).Len(), 22);
}

TEST(GuidTest, ParsesEveryTextFormBack)
{
	const EGuidFormats Formats[] = {EGuidFormats::Digits, EGuidFormats::DigitsLower, EGuidFormats::DigitsWithHyphens,
		EGuidFormats::DigitsWithHyphensLower, EGuidFormats::DigitsWithHyphensInBraces,
		EGuidFormats::DigitsWithHyphensInParentheses, EGuidFormats::HexValuesInBraces, EGuidFormats::UniqueObjectGuid,
		EGuidFormats::Short};
	for (const EGuidFormats Format : Formats)
	{
		const FString Text = Sample.ToString(Format);
		FGuid Parsed;
		EXPECT_TRUE(FGuid::Parse(Text, Parsed)) << ToUtf8(Text);
		EXPECT_EQ(Parsed, Sample) << ToUtf8(Text);
		FGuid Exact;
		EXPECT_TRUE(FGuid::ParseExact(Text, Format, Exact)) << ToUtf8(Text);
		EXPECT_EQ(Exact, Sample) << ToUtf8(Text);
	}
	EXPECT_EQ(FGuid(FString(TEXT("01234567-89ab-cdef-fedc-ba9876543210"))), Sample);
}

TEST(GuidTest, RejectsMalformedText)
{
	FGuid Parsed(1, 2, 3, 4);
	EXPECT_FALSE(FGuid::Parse(TEXT("not a guid"), Parsed));
	EXPECT_FALSE(FGuid::Parse(TEXT("0123456789ABCDEFFEDCBA987654321G"), Parsed));
	EXPECT_FALSE(FGuid::Parse(TEXT("01234567+89AB-CDEF-FEDC-BA9876543210"), Parsed));
	EXPECT_FALSE(FGuid::ParseExact(TEXT("0123456789ABCDEFFEDCBA9876543210"), EGuidFormats::DigitsWithHyphens, Parsed));
	EXPECT_EQ(Parsed, FGuid(1, 2, 3, 4));
	EXPECT_FALSE(FGuid(FString(TEXT("garbage"))).IsValid());
}

TEST(GuidTest, NewGuidsAreRandomVersionFourGuids)
{
	const FGuid First = FGuid::NewGuid();
	const FGuid Second = FGuid::NewGuid();
	EXPECT_TRUE(First.IsValid());
	EXPECT_NE(First, Second);
	const FString Text = First.ToString(EGuidFormats::DigitsWithHyphens);
	EXPECT_EQ(Text[14], TEXT('4'));
	EXPECT_TRUE(Text[19] == TEXT('8') || Text[19] == TEXT('9') || Text[19] == TEXT('A') || Text[19] == TEXT('B'));
}

TEST(GuidTest, ComparesOrdersAndHashes)
{
	EXPECT_EQ(Sample, FGuid(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210));
	EXPECT_NE(Sample, FGuid(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543211));
	EXPECT_TRUE(FGuid(1, 0, 0, 0) < FGuid(2, 0, 0, 0));
	EXPECT_TRUE(FGuid(1, 1, 0, 0) < FGuid(1, 2, 0, 0));
	EXPECT_FALSE(Sample < Sample);
	EXPECT_EQ(Sample[3], 0x76543210u);

	TMap<FGuid, int32> Map;
	Map.Add(Sample, 5);
	ASSERT_NE(Map.Find(FGuid(0x01234567, 0x89ABCDEF, 0xFEDCBA98, 0x76543210)), nullptr);
	EXPECT_EQ(*Map.Find(Sample), 5);
}
