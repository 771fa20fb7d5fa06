// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "UObject/NameTypes.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(NameTest, NoneIsTheDefaultAndPrintsAsNone)
{
	const FName Default;
	EXPECT_TRUE(Default.IsNone());
	EXPECT_EQ(Default, NAME_None);
	EXPECT_TRUE(Default == NAME_None);
	EXPECT_EQ(ToUtf8(FName(NAME_None).ToString()), "None");
	EXPECT_EQ(ToUtf8(Default.ToString()), "None");
	EXPECT_TRUE(FName(TEXT("")).IsNone());
	EXPECT_TRUE(FName(TEXT("none")).IsNone());
	FName FromEName = NAME_None;
	EXPECT_TRUE(FromEName.IsNone());
}

TEST(NameTest, ComparisonIgnoresCaseAndKeepsTheFirstSpelling)
{
	const FName First(TEXT("NameTestLiveLinkPreset"));
	const FName Second(TEXT("nametestlivelinkpreset"));
	EXPECT_EQ(First, Second);
	EXPECT_FALSE(First != Second);
	EXPECT_EQ(GetTypeHash(First), GetTypeHash(Second));
	EXPECT_EQ(ToUtf8(Second.ToString()), "NameTestLiveLinkPreset");
	EXPECT_TRUE(First == TEXT("NAMETESTLIVELINKPRESET"));
	EXPECT_TRUE(First == "nameTestLiveLinkPreset");
	EXPECT_FALSE(First == TEXT("Other"));
	EXPECT_NE(First, FName(TEXT("NameTestSomethingElse")));
	EXPECT_TRUE(First.IsEqual(Second));
	EXPECT_TRUE(First.IsValid());
}

TEST(NameTest, FindNeverAddsUnknownText)
{
	const FName Missing(TEXT("NameTestNeverRegistered_Xyz"), FNAME_Find);
	EXPECT_TRUE(Missing.IsNone());
	EXPECT_EQ(Missing, NAME_None);
	// Finding it again still fails: the first lookup did not add it.
	EXPECT_TRUE(FName(TEXT("NameTestNeverRegistered_Xyz"), FNAME_Find).IsNone());

	const FName Added(TEXT("NameTestRegistered"));
	const FName Found(TEXT("NAMETESTREGISTERED"), FNAME_Find);
	EXPECT_FALSE(Found.IsNone());
	EXPECT_EQ(Found, Added);
	EXPECT_EQ(ToUtf8(Found.ToString()), "NameTestRegistered");
	EXPECT_EQ(FName(TEXT("None"), FNAME_Find), NAME_None);
}

TEST(NameTest, SplitsATrailingNumberSuffix)
{
	const FName Numbered(TEXT("NameTestFoo_3"));
	EXPECT_EQ(Numbered.GetNumber(), 4);
	EXPECT_EQ(ToUtf8(Numbered.GetPlainNameString()), "NameTestFoo");
	EXPECT_EQ(ToUtf8(Numbered.ToString()), "NameTestFoo_3");
	EXPECT_EQ(Numbered, FName(TEXT("NameTestFoo"), 4));
	EXPECT_NE(Numbered, FName(TEXT("NameTestFoo")));
	EXPECT_EQ(Numbered.GetComparisonIndex(), FName(TEXT("NameTestFoo")).GetComparisonIndex());

	const FName Zero(TEXT("NameTestFoo_0"));
	EXPECT_EQ(Zero.GetNumber(), 1);
	EXPECT_EQ(ToUtf8(Zero.ToString()), "NameTestFoo_0");

	// A leading zero keeps the digits in the text.
	const FName LeadingZero(TEXT("NameTestFoo_03"));
	EXPECT_EQ(LeadingZero.GetNumber(), NAME_NO_NUMBER_INTERNAL);
	EXPECT_EQ(ToUtf8(LeadingZero.GetPlainNameString()), "NameTestFoo_03");
	EXPECT_EQ(ToUtf8(LeadingZero.ToString()), "NameTestFoo_03");

	EXPECT_EQ(FName(TEXT("NameTestFoo_")).GetNumber(), NAME_NO_NUMBER_INTERNAL);
	EXPECT_EQ(FName(TEXT("NameTest12")).GetNumber(), NAME_NO_NUMBER_INTERNAL);
	EXPECT_EQ(FName(TEXT("NameTestBig_99999999999")).GetNumber(), NAME_NO_NUMBER_INTERNAL);

	FName Renumbered(TEXT("NameTestFoo"));
	Renumbered.SetNumber(NAME_EXTERNAL_TO_INTERNAL(7));
	EXPECT_EQ(ToUtf8(Renumbered.ToString()), "NameTestFoo_7");

	FString Appended(TEXT("Name: "));
	Numbered.AppendString(Appended);
	EXPECT_EQ(ToUtf8(Appended), "Name: NameTestFoo_3");
}

TEST(NameTest, ConstructsFromStringsAndViews)
{
	const FString Source(TEXT("NameTestFromString"));
	EXPECT_EQ(FName(*Source), FName(Source));
	EXPECT_EQ(FName(FStringView(Source)), FName(TEXT("NameTestFromString")));
	EXPECT_EQ(FName(8, TEXT("NameTestTruncated")), FName(TEXT("NameTest")));
	EXPECT_EQ(ToUtf8(FName("NameTestNarrow").ToString()), "NameTestNarrow");
	FString Out;
	FName(TEXT("NameTestOut")).ToString(Out);
	EXPECT_EQ(ToUtf8(Out), "NameTestOut");
	EXPECT_EQ(ToUtf8(LexToString(FName(TEXT("NameTestLex")))), "NameTestLex");
}

TEST(NameTest, OrdersLexicallyIgnoringCase)
{
	const FName Apple(TEXT("NameTestApple"));
	const FName Banana(TEXT("nametestbanana"));
	EXPECT_TRUE(Apple.LexicalLess(Banana));
	EXPECT_FALSE(Banana.LexicalLess(Apple));
	EXPECT_LT(Apple.Compare(Banana), 0);
	EXPECT_EQ(Apple.Compare(FName(TEXT("NAMETESTAPPLE"))), 0);
	EXPECT_LT(FName(TEXT("NameTestApple_1")).Compare(FName(TEXT("NameTestApple_2"))), 0);
	EXPECT_NE(Apple.FastLess(Banana), Banana.FastLess(Apple));
}

TEST(NameTest, TooLongTextBecomesNone)
{
	const FString Long = FString::ChrN(NAME_SIZE, TEXT('n'));
	EXPECT_TRUE(FName(*Long).IsNone());
	const FString Longest = FString::ChrN(NAME_SIZE - 1, TEXT('n'));
	EXPECT_FALSE(FName(*Longest).IsNone());
}

TEST(NameTest, TableIsSafeToUseFromManyThreads)
{
	std::vector<std::thread> Threads;
	std::vector<FName> Results(8);
	for (int32 Index = 0; Index < 8; ++Index)
	{
		Threads.emplace_back(
			[&Results, Index]()
			{
				for (int32 Round = 0; Round < 200; ++Round)
				{
					Results[Index] = FName(*FString::Printf(TEXT("NameTestThread%d"), Round));
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	for (const FName& Result : Results)
	{
		EXPECT_EQ(Result, FName(TEXT("NameTestThread199")));
	}
}
