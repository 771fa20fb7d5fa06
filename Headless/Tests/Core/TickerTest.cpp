// Copyright Orvane. All Rights Reserved.

#include "Containers/Ticker.h"
#include "Async/Async.h"
#include "HAL/Event.h"
#include "HAL/PlatformProcess.h"
#include "Templates/SharedPointer.h"
#include "Templates/UniquePtr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace
{
	/** Counts the ticks a delegate fired on and the delta times it was given. */
	struct FFireLog
	{
		std::vector<int32> Ticks;
		std::vector<float> DeltaTimes;
	};

	class FSharedTickTarget : public TSharedFromThis<FSharedTickTarget>
	{
	public:
		bool OnTick(float DeltaTime)
		{
			++Fires;
			return true;
		}

		int32 Fires = 0;
	};

	class FTickingObject : public FTSTickerObjectBase
	{
	public:
		FTickingObject(FTSTicker& Ticker, int32& InFires)
			: FTSTickerObjectBase(0.0f, Ticker)
			, Fires(InFires)
		{
		}

		bool Tick(float DeltaTime) override
		{
			++Fires;
			return true;
		}

		int32& Fires;
	};
} // namespace

TEST(TickerTest, ZeroDelayFiresAtTheNextTick)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Fires](float)
		{
			++Fires;
			return true;
		}));
	EXPECT_EQ(Fires, 0);
	Ticker.Tick(0.016f);
	EXPECT_EQ(Fires, 1);
	Ticker.Tick(0.016f);
	EXPECT_EQ(Fires, 2);
}

TEST(TickerTest, DelayCountsTickerTimeAndRepeats)
{
	FTSTicker Ticker;
	FFireLog Log;
	int32 TickIndex = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
						 [&Log, &TickIndex](float DeltaTime)
						 {
							 Log.Ticks.push_back(TickIndex);
							 Log.DeltaTimes.push_back(DeltaTime);
							 return true;
						 }),
		1.0f);
	for (TickIndex = 1; TickIndex <= 6; ++TickIndex)
	{
		Ticker.Tick(0.5f);
	}
	// Due at 1.0 s, then every 1.0 s: ticks 2, 4 and 6 of 0.5 s each.
	EXPECT_EQ(Log.Ticks, (std::vector<int32>{2, 4, 6}));
	EXPECT_EQ(Log.DeltaTimes, (std::vector<float>{0.5f, 0.5f, 0.5f}));
}

TEST(TickerTest, ReturningFalseRemovesTheDelegate)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	FTSTicker::FDelegateHandle Handle = Ticker.AddTicker(FTickerDelegate::CreateLambda(
															 [&Fires](float)
															 {
																 ++Fires;
																 return false;
															 }),
		0.25f);
	EXPECT_TRUE(Handle.IsValid());
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires, 0);
	Ticker.Tick(0.2f);
	EXPECT_EQ(Fires, 1);
	Ticker.Tick(1.0f);
	EXPECT_EQ(Fires, 1);
	// The ticker let go of it, so the handle expired.
	EXPECT_FALSE(Handle.IsValid());
}

TEST(TickerTest, FiresAtMostOncePerTick)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
						 [&Fires](float)
						 {
							 ++Fires;
							 return true;
						 }),
		0.1f);
	Ticker.Tick(1.0f);
	EXPECT_EQ(Fires, 1);
	Ticker.Tick(1.0f);
	EXPECT_EQ(Fires, 2);
}

TEST(TickerTest, DueDelegatesFireByDueTimeThenInOrderOfAddition)
{
	FTSTicker Ticker;
	std::string Order;
	const auto Add = [&Ticker, &Order](char Name, float Delay)
	{
		Ticker.AddTicker(FTickerDelegate::CreateLambda(
							 [&Order, Name](float)
							 {
								 Order += Name;
								 return false;
							 }),
			Delay);
	};
	Add('A', 0.5f);
	Add('B', 0.25f);
	Add('C', 0.25f);
	Add('D', 0.0f);
	Add('E', 0.0f);
	Ticker.Tick(1.0f);
	EXPECT_EQ(Order, "DEBCA");
}

TEST(TickerTest, TickersAddedDuringATickFireAtTheNextTick)
{
	FTSTicker Ticker;
	int32 InnerFires = 0;
	int32 OuterFires = 0;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&](float)
		{
			++OuterFires;
			Ticker.AddTicker(FTickerDelegate::CreateLambda(
				[&InnerFires](float)
				{
					++InnerFires;
					return false;
				}));
			return false;
		}));
	Ticker.Tick(0.1f);
	EXPECT_EQ(OuterFires, 1);
	EXPECT_EQ(InnerFires, 0);
	Ticker.Tick(0.1f);
	EXPECT_EQ(InnerFires, 1);
}

TEST(TickerTest, RemovedTickerNeverFires)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	FTSTicker::FDelegateHandle Handle = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Fires](float)
		{
			++Fires;
			return true;
		}));
	FTSTicker::RemoveTicker(Handle);
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires, 0);
	EXPECT_FALSE(Handle.IsValid());
	// Removing again, or with an empty handle, does nothing.
	FTSTicker::RemoveTicker(Handle);
	FTSTicker::RemoveTicker(FTSTicker::FDelegateHandle());
}

TEST(TickerTest, TickerMayRemoveItselfFromInsideItsCall)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	FTSTicker::FDelegateHandle Handle;
	Handle = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Fires, &Handle](float)
		{
			++Fires;
			FTSTicker::RemoveTicker(Handle);
			return true;
		}));
	Ticker.Tick(0.1f);
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires, 1);
}

TEST(TickerTest, RemovingALaterTickerDuringATickStopsItThisTick)
{
	FTSTicker Ticker;
	int32 LaterFires = 0;
	FTSTicker::FDelegateHandle Later;
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Later](float)
		{
			FTSTicker::RemoveTicker(Later);
			return false;
		}));
	Later = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&LaterFires](float)
		{
			++LaterFires;
			return true;
		}));
	Ticker.Tick(0.1f);
	Ticker.Tick(0.1f);
	EXPECT_EQ(LaterFires, 0);
}

TEST(TickerTest, RemoveTickerFromAnotherThreadWaitsForTheRunningCall)
{
	FTSTicker Ticker;
	std::atomic<bool> bEntered{false};
	std::atomic<bool> bFinished{false};
	std::atomic<int32> Fires{0};
	FTSTicker::FDelegateHandle Handle = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&](float)
		{
			++Fires;
			bEntered = true;
			FPlatformProcess::Sleep(0.1f);
			bFinished = true;
			return true;
		}));

	bool bFinishedWhenRemoveReturned = false;
	std::thread Remover(
		[&]
		{
			while (!bEntered)
			{
				FPlatformProcess::Sleep(0.001f);
			}
			FTSTicker::RemoveTicker(Handle);
			bFinishedWhenRemoveReturned = bFinished;
		});
	Ticker.Tick(0.1f);
	Remover.join();
	EXPECT_TRUE(bFinishedWhenRemoveReturned);
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires.load(), 1);
}

TEST(TickerTest, TickersAddedFromAnotherThreadFireOnTheTickingThread)
{
	FTSTicker Ticker;
	std::atomic<int32> Fires{0};
	std::thread::id FiredOn;
	std::vector<std::thread> Adders;
	for (int32 Index = 0; Index < 4; ++Index)
	{
		Adders.emplace_back(
			[&]
			{
				for (int32 Step = 0; Step < 25; ++Step)
				{
					Ticker.AddTicker(FTickerDelegate::CreateLambda(
						[&](float)
						{
							++Fires;
							FiredOn = std::this_thread::get_id();
							return false;
						}));
				}
			});
	}
	for (std::thread& Adder : Adders)
	{
		Adder.join();
	}
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires.load(), 100);
	EXPECT_EQ(FiredOn, std::this_thread::get_id());
}

TEST(TickerTest, NamedFunctionMayOwnMoveOnlyState)
{
	FTSTicker Ticker;
	TUniquePtr<int32> Owned = MakeUnique<int32>(41);
	int32 Seen = 0;
	Ticker.AddTicker(TEXT("MoveOnly"), 0.0f,
		[State = MoveTemp(Owned), &Seen](float) mutable
		{
			Seen = ++*State;
			return false;
		});
	Ticker.Tick(0.1f);
	EXPECT_EQ(Seen, 42);
}

TEST(TickerTest, ExpiredSharedDelegateIsDropped)
{
	FTSTicker Ticker;
	TSharedPtr<FSharedTickTarget> Target = MakeShared<FSharedTickTarget>();
	FTSTicker::FDelegateHandle Handle =
		Ticker.AddTicker(FTickerDelegate::CreateSP(Target.ToSharedRef(), &FSharedTickTarget::OnTick));
	Ticker.Tick(0.1f);
	EXPECT_EQ(Target->Fires, 1);
	Target.Reset();
	Ticker.Tick(0.1f);
	EXPECT_FALSE(Handle.IsValid());
}

TEST(TickerTest, ResetRemovesEverything)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	FTSTicker::FDelegateHandle Active = Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Fires](float)
		{
			++Fires;
			return true;
		}));
	Ticker.Tick(0.1f);
	Ticker.AddTicker(FTickerDelegate::CreateLambda(
		[&Fires](float)
		{
			++Fires;
			return true;
		}));
	Ticker.Reset();
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires, 1);
	EXPECT_FALSE(Active.IsValid());
}

TEST(TickerTest, TickerObjectTicksWhileItLives)
{
	FTSTicker Ticker;
	int32 Fires = 0;
	{
		FTickingObject Object(Ticker, Fires);
		Ticker.Tick(0.1f);
		Ticker.Tick(0.1f);
	}
	Ticker.Tick(0.1f);
	EXPECT_EQ(Fires, 2);
}

TEST(TickerTest, CoreTickerIsOneInstance)
{
	EXPECT_EQ(&FTSTicker::GetCoreTicker(), &FTSTicker::GetCoreTicker());
	int32 Fires = 0;
	FTSTicker::FDelegateHandle Handle = FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
		[&Fires](float)
		{
			++Fires;
			return true;
		}));
	FTSTicker::GetCoreTicker().Tick(0.1f);
	FTSTicker::RemoveTicker(Handle);
	FTSTicker::GetCoreTicker().Tick(0.1f);
	EXPECT_EQ(Fires, 1);
}

TEST(AsyncTaskTest, GameThreadTasksRunAtTheNextCoreTick)
{
	std::atomic<int32> Runs{0};
	std::thread::id RanOn;
	std::thread Producer(
		[&]
		{
			AsyncTask(ENamedThreads::GameThread,
				[&]
				{
					++Runs;
					RanOn = std::this_thread::get_id();
				});
		});
	Producer.join();
	// Queued from the game thread itself, a task still waits for the tick.
	AsyncTask(ENamedThreads::GameThread,
		[&]
		{
			++Runs;
		});
	EXPECT_EQ(Runs.load(), 0);
	FTSTicker::GetCoreTicker().Tick(0.01f);
	EXPECT_EQ(Runs.load(), 2);
	EXPECT_EQ(RanOn, std::this_thread::get_id());
	FTSTicker::GetCoreTicker().Tick(0.01f);
	EXPECT_EQ(Runs.load(), 2);
}

TEST(AsyncTaskTest, AnyThreadTasksRunOnAnotherThread)
{
	FEventRef Done;
	std::thread::id RanOn = std::this_thread::get_id();
	AsyncTask(ENamedThreads::AnyBackgroundThreadNormalTask,
		[&]
		{
			RanOn = std::this_thread::get_id();
			Done->Trigger();
		});
	ASSERT_TRUE(Done->Wait(5000));
	EXPECT_NE(RanOn, std::this_thread::get_id());
}
