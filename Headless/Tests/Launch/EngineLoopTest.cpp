// Copyright Orvane. All Rights Reserved.

#include "Containers/Ticker.h"
#include "CoreGlobals.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "Misc/CoreDelegates.h"

#include <gtest/gtest.h>

namespace
{
	/** Runs the engine loop on a fixed step of a quarter second, as the test runner does. */
	class FEngineLoopTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			FApp::SetUseFixedTimeStep(true);
			FApp::SetFixedDeltaTime(0.25);
			FApp::SetCurrentTime(100.0);
		}
	};
} // namespace

TEST_F(FEngineLoopTest, EachFrameAdvancesTheApplicationClockByTheFixedStep)
{
	const uint64 FirstFrame = GFrameCounter;
	for (int32 Frame = 0; Frame < 4; ++Frame)
	{
		GEngineLoop.Tick();
		EXPECT_DOUBLE_EQ(FApp::GetDeltaTime(), 0.25);
	}
	EXPECT_DOUBLE_EQ(FApp::GetCurrentTime(), 101.0);
	EXPECT_DOUBLE_EQ(FApp::GetLastTime(), 100.75);
	EXPECT_EQ(GFrameCounter, FirstFrame + 4);
}

TEST_F(FEngineLoopTest, TheCoreTickerFiresAOneSecondDelayOnTheFourthFrame)
{
	int32 FiredOnFrame = 0;
	int32 Frame = 0;
	FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
											 [&FiredOnFrame, &Frame](float)
											 {
												 FiredOnFrame = Frame;
												 return false;
											 }),
		1.0f);
	for (Frame = 1; Frame <= 6; ++Frame)
	{
		GEngineLoop.Tick();
	}
	EXPECT_EQ(FiredOnFrame, 4);
}

TEST_F(FEngineLoopTest, FramesAreBracketedByTheBeginAndEndFrameEvents)
{
	FString Order;
	const FDelegateHandle Begin = FCoreDelegates::OnBeginFrame.AddLambda(
		[&Order]()
		{
			Order += TEXT("B");
		});
	FTSTicker::FDelegateHandle Ticker = FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
		[&Order](float)
		{
			Order += TEXT("T");
			return true;
		}));
	const FDelegateHandle End = FCoreDelegates::OnEndFrame.AddLambda(
		[&Order]()
		{
			Order += TEXT("E");
		});

	GEngineLoop.Tick();
	GEngineLoop.Tick();

	FCoreDelegates::OnBeginFrame.Remove(Begin);
	FCoreDelegates::OnEndFrame.Remove(End);
	FTSTicker::RemoveTicker(Ticker);
	EXPECT_EQ(Order, FString(TEXT("BTEBTE")));
}
