// Copyright Orvane. All Rights Reserved.

#include "Internationalization/Text.h"
#include "EngineTestPrinters.h"
#include "Internationalization/Internationalization.h"

#include <gtest/gtest.h>

#define LOCTEXT_NAMESPACE "TextTest"

TEST(TextTest, DefaultTextIsEmpty)
{
	const FText Empty;
	EXPECT_TRUE(Empty.IsEmpty());
	EXPECT_TRUE(Empty.IsEmptyOrWhitespace());
	EXPECT_TRUE(Empty.ToString().IsEmpty());
	EXPECT_TRUE(FText::GetEmpty().IsEmpty());
	EXPECT_TRUE(Empty.IdenticalTo(FText::GetEmpty()));
	EXPECT_TRUE(FText::FromString(TEXT(" \t ")).IsEmptyOrWhitespace());
	EXPECT_FALSE(FText::FromString(TEXT(" x ")).IsEmptyOrWhitespace());
}

TEST(TextTest, FromStringShowsTheStringWithoutAnIdentity)
{
	const FText Text = FText::FromString(TEXT("Plain"));
	EXPECT_EQ(ToUtf8(Text.ToString()), "Plain");
	EXPECT_FALSE(FTextInspector::GetNamespace(Text).IsSet());
	EXPECT_FALSE(FTextInspector::GetKey(Text).IsSet());
	EXPECT_EQ(ToUtf8(*FTextInspector::GetSourceString(Text)), "Plain");
	EXPECT_FALSE(Text.ShouldGatherForLocalization());
	EXPECT_EQ(ToUtf8(FText::FromName(FName(TEXT("TextTestName"))).ToString()), "TextTestName");
	EXPECT_TRUE(FText::AsCultureInvariant(TEXT("Fixed")).IsCultureInvariant());
	EXPECT_EQ(ToUtf8(INVTEXT("Invariant").ToString()), "Invariant");
	EXPECT_TRUE(INVTEXT("Invariant").IsCultureInvariant());
}

TEST(TextTest, LocTextKeepsNamespaceKeyAndSource)
{
	const FText Text = LOCTEXT("GreetingKey", "Hello there");
	EXPECT_EQ(ToUtf8(Text.ToString()), "Hello there");
	ASSERT_TRUE(FTextInspector::GetNamespace(Text).IsSet());
	EXPECT_EQ(ToUtf8(FTextInspector::GetNamespace(Text).GetValue()), "TextTest");
	ASSERT_TRUE(FTextInspector::GetKey(Text).IsSet());
	EXPECT_EQ(ToUtf8(FTextInspector::GetKey(Text).GetValue()), "GreetingKey");
	ASSERT_NE(FTextInspector::GetSourceString(Text), nullptr);
	EXPECT_EQ(ToUtf8(*FTextInspector::GetSourceString(Text)), "Hello there");
	EXPECT_TRUE(Text.ShouldGatherForLocalization());
	EXPECT_FALSE(Text.IsCultureInvariant());

	const FText Explicit = NSLOCTEXT("OtherNamespace", "OtherKey", "Other text");
	EXPECT_EQ(ToUtf8(FTextInspector::GetNamespace(Explicit).GetValue()), "OtherNamespace");
	EXPECT_EQ(ToUtf8(FTextInspector::GetKey(Explicit).GetValue()), "OtherKey");
	EXPECT_EQ(ToUtf8(Explicit.ToString()), "Other text");
}

TEST(TextTest, ComparesByCaseAndByIdentity)
{
	const FText Lower = FText::FromString(TEXT("value"));
	const FText Upper = FText::FromString(TEXT("VALUE"));
	EXPECT_FALSE(Lower.EqualTo(Upper));
	EXPECT_TRUE(Lower.EqualToCaseIgnored(Upper));
	EXPECT_TRUE(Lower.EqualTo(FText::FromString(TEXT("value"))));

	const FText Copy = Lower;
	EXPECT_TRUE(Copy.IdenticalTo(Lower));
	EXPECT_FALSE(Lower.IdenticalTo(FText::FromString(TEXT("value"))));
	EXPECT_TRUE(
		LOCTEXT("Same", "Same text").IdenticalTo(LOCTEXT("Same", "Same text"), ETextIdenticalModeFlags::DeepCompare));
	EXPECT_FALSE(LOCTEXT("Same", "Same text")
					 .IdenticalTo(LOCTEXT("Different", "Same text"), ETextIdenticalModeFlags::DeepCompare));
}

TEST(TextTest, FormatsOrderedArguments)
{
	const FText Result =
		FText::Format(LOCTEXT("Ordered", "{0} has {1} items, {0}!"), FText::FromString(TEXT("Cart")), 3);
	EXPECT_EQ(ToUtf8(Result.ToString()), "Cart has 3 items, Cart!");

	FFormatOrderedArguments Arguments;
	Arguments.Add(FText::FromString(TEXT("first")));
	Arguments.Add(FText::FromString(TEXT("second")));
	EXPECT_EQ(ToUtf8(FText::Format(LOCTEXT("Swap", "{1} {0}"), Arguments).ToString()), "second first");

	// Missing arguments stay visible; a backtick escapes a brace.
	EXPECT_EQ(
		ToUtf8(FText::Format(LOCTEXT("Missing", "{0} and {2}"), FText::FromString(TEXT("x"))).ToString()), "x and {2}");
	EXPECT_EQ(
		ToUtf8(FText::Format(LOCTEXT("Escaped", "`{0`} is {0}"), FText::FromString(TEXT("y"))).ToString()), "{0} is y");
}

TEST(TextTest, FormatsNamedArguments)
{
	FFormatNamedArguments Arguments;
	Arguments.Add(TEXT("Name"), FText::FromString(TEXT("Ada")));
	Arguments.Add(TEXT("Count"), 1234567);
	const FText Result = FText::Format(LOCTEXT("Named", "{Name} scored {Count} ({Unknown})"), Arguments);
	EXPECT_EQ(ToUtf8(Result.ToString()), "Ada scored 1,234,567 ({Unknown})");

	const FText Inline =
		FText::FormatNamed(LOCTEXT("Inline", "{A}-{B}"), TEXT("A"), FText::FromString(TEXT("x")), TEXT("B"), 2.5);
	EXPECT_EQ(ToUtf8(Inline.ToString()), "x-2.5");

	TArray<FString> Names;
	FTextFormat(LOCTEXT("Names", "{Name} {Count} {Name}")).GetFormatArgumentNames(Names);
	ASSERT_EQ(Names.Num(), 2);
	EXPECT_EQ(ToUtf8(Names[0]), "Name");
	EXPECT_EQ(ToUtf8(Names[1]), "Count");
}

TEST(TextTest, FormatsNumbersForTheCurrentCulture)
{
	EXPECT_EQ(ToUtf8(FText::AsNumber(1234).ToString()), "1,234");
	EXPECT_EQ(ToUtf8(FText::AsNumber(-1234567).ToString()), "-1,234,567");
	EXPECT_EQ(ToUtf8(FText::AsNumber(999).ToString()), "999");
	EXPECT_EQ(ToUtf8(FText::AsNumber(1234.5678).ToString()), "1,234.568");
	EXPECT_EQ(ToUtf8(FText::AsNumber(0.5).ToString()), "0.5");
	EXPECT_EQ(ToUtf8(FText::AsNumber(2.0).ToString()), "2");
	FNumberFormattingOptions Options;
	Options.SetUseGrouping(false).SetMinimumFractionalDigits(2).SetMaximumFractionalDigits(2);
	EXPECT_EQ(ToUtf8(FText::AsNumber(1234.5, &Options).ToString()), "1234.50");
}

#undef LOCTEXT_NAMESPACE
