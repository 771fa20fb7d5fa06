// Copyright Orvane. All Rights Reserved.

#include "Misc/CommandLine.h"
#include "EngineTestPrinters.h"
#include "Misc/Parse.h"

#include <gtest/gtest.h>

namespace
{
	class FCommandLineTest : public ::testing::Test
	{
	protected:
		void SetUp() override { FCommandLine::Reset(); }
		void TearDown() override { FCommandLine::Reset(); }
	};
} // namespace

TEST_F(FCommandLineTest, StartsEmptyAndUninitialized)
{
	EXPECT_FALSE(FCommandLine::IsInitialized());
	ASSERT_NE(FCommandLine::Get(), nullptr);
	EXPECT_EQ(ToUtf8(FCommandLine::Get()), "");
}

TEST_F(FCommandLineTest, SetAppendAndOriginal)
{
	EXPECT_TRUE(FCommandLine::Set(TEXT("Game.uproject -Port=5000")));
	EXPECT_TRUE(FCommandLine::IsInitialized());
	FCommandLine::Append(TEXT(" -unattended"));

	EXPECT_EQ(ToUtf8(FCommandLine::Get()), "Game.uproject -Port=5000 -unattended");
	EXPECT_EQ(ToUtf8(FCommandLine::GetOriginal()), "Game.uproject -Port=5000");
	EXPECT_TRUE(FParse::Param(FCommandLine::Get(), TEXT("unattended")));
	int32 Port = 0;
	EXPECT_TRUE(FParse::Value(FCommandLine::Get(), TEXT("-Port="), Port));
	EXPECT_EQ(Port, 5000);

	// Setting again replaces the current line but the original stays as first set.
	EXPECT_TRUE(FCommandLine::Set(TEXT("Other.uproject")));
	EXPECT_EQ(ToUtf8(FCommandLine::Get()), "Other.uproject");
	EXPECT_EQ(ToUtf8(FCommandLine::GetOriginal()), "Game.uproject -Port=5000");
}

TEST_F(FCommandLineTest, OverlongLinesAreCutToTheBufferSize)
{
	const FString Long = FString::ChrN(FCommandLine::MaxCommandLineSize + 10, TEXT('x'));
	EXPECT_FALSE(FCommandLine::Set(*Long));
	EXPECT_EQ(FString(FCommandLine::Get()).Len(), (int32)FCommandLine::MaxCommandLineSize - 1);
}
