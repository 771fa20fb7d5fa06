// Copyright Orvane. All Rights Reserved.

#include "TimerManager.h"
#include "CoreGlobals.h"
#include "EngineTestWorld.h"

namespace
{
	/** A timer manager ticked as the engine ticks it: once per frame. */
	class FTimerManagerTest : public ::testing::Test
	{
	protected:
		void Advance(float DeltaTime, int32 Frames = 1)
		{
			for (int32 Frame = 0; Frame < Frames; ++Frame)
			{
				++GFrameCounter;
				Timers.Tick(DeltaTime);
			}
		}

		FTimerDelegate Record(const TCHAR* Name)
		{
			return FTimerDelegate::CreateLambda(
				[this, Label = FString(Name)]()
				{
					Fired.Add(Label);
				});
		}

		FTimerManager Timers;
		TArray<FString> Fired;
	};
} // namespace

TEST_F(FTimerManagerTest, ANegativeFirstDelayMeansOnePeriod)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("A")), 1.0f, false);
	EXPECT_TRUE(Handle.IsValid());
	EXPECT_TRUE(Timers.IsTimerActive(Handle));
	EXPECT_FLOAT_EQ(Timers.GetTimerRemaining(Handle), 1.0f);
	EXPECT_FLOAT_EQ(Timers.GetTimerRate(Handle), 1.0f);
	Advance(0.25f, 3);
	EXPECT_EQ(Fired.Num(), 0);
	EXPECT_FLOAT_EQ(Timers.GetTimerRemaining(Handle), 0.25f);
	EXPECT_FLOAT_EQ(Timers.GetTimerElapsed(Handle), 0.75f);
	Advance(0.25f);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("A")}));
	// A timer that does not loop is gone once it fired.
	EXPECT_FALSE(Timers.TimerExists(Handle));
	EXPECT_FALSE(Timers.IsTimerActive(Handle));
	EXPECT_FLOAT_EQ(Timers.GetTimerRemaining(Handle), -1.f);
	Advance(1.0f, 3);
	EXPECT_EQ(Fired.Num(), 1);
}

TEST_F(FTimerManagerTest, AnExplicitFirstDelayIsUsedOnceThenTheRate)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("Tick")), 1.0f, true, 0.5f);
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 1);
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 1);
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 2);
	Advance(1.0f);
	EXPECT_EQ(Fired.Num(), 3);
	// A first delay of zero fires at the next tick.
	FTimerHandle Immediate;
	Timers.SetTimer(Immediate, Record(TEXT("Now")), 2.0f, false, 0.0f);
	Advance(0.01f);
	EXPECT_EQ(Fired.Last(), FString(TEXT("Now")));
}

TEST_F(FTimerManagerTest, ALoopingTimerFiresOncePerPeriodThatPassed)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("L")), 0.5f, true);
	Advance(0.25f, 4);
	EXPECT_EQ(Fired.Num(), 2);
	// A long frame makes up for every period it covered, and the timer does not drift.
	Advance(1.6f);
	EXPECT_EQ(Fired.Num(), 5);
	EXPECT_NEAR(Timers.GetTimerRemaining(Handle), 0.4f, 1e-4);

	FTimerHandle Once;
	FTimerManagerTimerParameters Parameters;
	Parameters.bLoop = true;
	Parameters.bMaxOncePerFrame = true;
	Timers.SetTimer(Once, Record(TEXT("O")), 0.5f, Parameters);
	Fired.Reset();
	Advance(2.0f);
	EXPECT_EQ(Fired
				  .FilterByPredicate(
					  [](const FString& Name)
					  {
						  return Name == TEXT("O");
					  })
				  .Num(),
		1);
}

TEST_F(FTimerManagerTest, ClearingStopsATimerAndInvalidatesTheHandle)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("A")), 0.5f, true);
	Advance(0.5f);
	Timers.ClearTimer(Handle);
	EXPECT_FALSE(Handle.IsValid());
	Advance(0.5f, 4);
	EXPECT_EQ(Fired.Num(), 1);
	// Clearing an invalid handle is harmless.
	Timers.ClearTimer(Handle);
}

TEST_F(FTimerManagerTest, ARateOfZeroOrLessClearsTheTimer)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("A")), 0.5f, true);
	const FTimerHandle Old = Handle;
	Timers.SetTimer(Handle, Record(TEXT("B")), 0.0f, true);
	EXPECT_FALSE(Handle.IsValid());
	EXPECT_FALSE(Timers.TimerExists(Old));
	Timers.SetTimer(Handle, Record(TEXT("C")), -1.0f, false);
	EXPECT_FALSE(Handle.IsValid());
	Advance(1.0f, 2);
	EXPECT_EQ(Fired.Num(), 0);
	EXPECT_EQ(Timers.GetNumTimers(), 0);
}

TEST_F(FTimerManagerTest, SettingAHandleAgainReplacesItsTimer)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("Old")), 0.5f, false);
	const FTimerHandle Old = Handle;
	Timers.SetTimer(Handle, Record(TEXT("New")), 1.0f, false);
	EXPECT_NE(Handle, Old);
	Advance(0.5f, 2);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("New")}));
}

TEST_F(FTimerManagerTest, TimersDueInTheSameTickFireByExpiryThenInTheOrderTheyWereSet)
{
	FTimerHandle Late, Early, SameAsLateA, SameAsLateB;
	Timers.SetTimer(Late, Record(TEXT("Late")), 0.9f, false);
	Timers.SetTimer(SameAsLateA, Record(TEXT("SameA")), 0.9f, false);
	Timers.SetTimer(Early, Record(TEXT("Early")), 0.2f, false);
	Timers.SetTimer(SameAsLateB, Record(TEXT("SameB")), 0.9f, false);
	Advance(1.0f);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("Early"), TEXT("Late"), TEXT("SameA"), TEXT("SameB")}));
}

TEST_F(FTimerManagerTest, TimersSetDuringATickFireNoEarlierThanTheNextTick)
{
	FTimerHandle Outer, Inner;
	Timers.SetTimer(Outer,
		FTimerDelegate::CreateLambda(
			[this, &Inner]()
			{
				Fired.Add(TEXT("Outer"));
				Timers.SetTimer(Inner, Record(TEXT("Inner")), 0.1f, false, 0.0f);
				EXPECT_TRUE(Timers.IsTimerPending(Inner));
			}),
		0.5f, false);
	Advance(1.0f);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("Outer")}));
	Advance(0.01f);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("Outer"), TEXT("Inner")}));
}

TEST_F(FTimerManagerTest, ATimerMayClearItselfAndOthersFromItsCallback)
{
	FTimerHandle Self, Other;
	Timers.SetTimer(Self,
		FTimerDelegate::CreateLambda(
			[this, &Self, &Other]()
			{
				Fired.Add(TEXT("Self"));
				Timers.ClearTimer(Self);
				Timers.ClearTimer(Other);
			}),
		0.5f, true);
	Timers.SetTimer(Other, Record(TEXT("Other")), 0.5f, true);
	Advance(0.5f, 3);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("Self")}));
	EXPECT_EQ(Timers.GetNumTimers(), 0);
}

TEST_F(FTimerManagerTest, PausedTimersKeepTheirRemainingTime)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("A")), 1.0f, false);
	Advance(0.25f);
	Timers.PauseTimer(Handle);
	EXPECT_FALSE(Timers.IsTimerActive(Handle));
	EXPECT_TRUE(Timers.IsTimerPaused(Handle));
	EXPECT_TRUE(Timers.TimerExists(Handle));
	Advance(5.0f);
	EXPECT_EQ(Fired.Num(), 0);
	EXPECT_FLOAT_EQ(Timers.GetTimerRemaining(Handle), 0.75f);
	Timers.UnPauseTimer(Handle);
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 0);
	Advance(0.25f);
	EXPECT_EQ(Fired.Num(), 1);
}

TEST_F(FTimerManagerTest, TimersWithoutACallbackAndFunctionTimers)
{
	FTimerHandle Clock;
	Timers.SetTimer(Clock, 2.0f, false);
	Advance(1.5f);
	EXPECT_NEAR(Timers.GetTimerRemaining(Clock), 0.5f, 1e-5);
	Advance(0.5f);
	EXPECT_FALSE(Timers.TimerExists(Clock));

	int32 Calls = 0;
	FTimerHandle Function;
	Timers.SetTimer(
		Function,
		[&Calls]()
		{
			++Calls;
		},
		0.5f, true);
	Advance(0.5f, 3);
	EXPECT_EQ(Calls, 3);

	const FTimerHandle Next = Timers.SetTimerForNextTick(Record(TEXT("Next")));
	EXPECT_TRUE(Timers.TimerExists(Next));
	Advance(0.0f);
	EXPECT_EQ(Fired, (TArray<FString>{TEXT("Next")}));
}

TEST_F(FTimerManagerTest, TheManagerTicksOncePerFrame)
{
	FTimerHandle Handle;
	Timers.SetTimer(Handle, Record(TEXT("A")), 1.0f, false);
	++GFrameCounter;
	Timers.Tick(0.6f);
	EXPECT_TRUE(Timers.HasBeenTickedThisFrame());
	Timers.Tick(0.6f);
	EXPECT_EQ(Fired.Num(), 0);
	EXPECT_NEAR(Timers.GetTimerRemaining(Handle), 0.4f, 1e-5);
}

TEST_F(FTimerManagerTest, ATimerBoundToADeadObjectIsDroppedAndMethodTimersCallTheirObject)
{
	UWorld* World = UWorld::CreateWorld(EWorldType::Editor, false);
	AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>();
	FTimerHandle MethodHandle;
	// RerunConstructionScripts is a method of the actor: the timer calls it on the actor.
	Timers.SetTimer(MethodHandle, Actor, &AEngineTestActor::RerunConstructionScripts, 0.5f, true);
	Advance(0.5f);
	EXPECT_EQ(Actor->ConstructionCount, 2);

	FTimerHandle WeakHandle;
	Timers.SetTimer(WeakHandle,
		FTimerDelegate::CreateWeakLambda(Actor,
			[this]()
			{
				Fired.Add(TEXT("Weak"));
			}),
		0.5f, true);
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 1);
	Timers.ClearAllTimersForObject(Actor);
	EXPECT_FALSE(Timers.TimerExists(MethodHandle));
	EXPECT_FALSE(Timers.TimerExists(WeakHandle));

	Timers.SetTimer(WeakHandle,
		FTimerDelegate::CreateWeakLambda(Actor,
			[this]()
			{
				Fired.Add(TEXT("Weak"));
			}),
		0.5f, true);
	Actor->Destroy();
	Advance(0.5f);
	EXPECT_EQ(Fired.Num(), 1);
	EXPECT_FALSE(Timers.TimerExists(WeakHandle));
	World->DestroyWorld(false);
}
