// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "HAL/CriticalSection.h"
#include "HAL/Event.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTLS.h"
#include "HAL/PlatformTime.h"
#include "HAL/Runnable.h"
#include "HAL/RunnableThread.h"
#include "HAL/ThreadSafeBool.h"
#include "HAL/ThreadSafeCounter.h"
#include "HAL/ThreadSafeCounter64.h"
#include "Misc/ScopeLock.h"
#include "Misc/ScopeRWLock.h"
#include "Misc/Timespan.h"
#include "Templates/Atomic.h"

#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace
{
	/** Records what happens to it, and on which thread. */
	class FRecordingRunnable : public FRunnable
	{
	public:
		explicit FRecordingRunnable(bool bInInitResult = true)
			: bInitResult(bInInitResult)
		{
		}

		bool Init() override
		{
			Record("Init");
			InitThreadId = FPlatformTLS::GetCurrentThreadId();
			// Create must wait for this to finish.
			FPlatformProcess::Sleep(0.05f);
			bInitFinished = true;
			return bInitResult;
		}

		uint32 Run() override
		{
			Record("Run");
			SelfThread = FRunnableThread::GetRunnableThread();
			bRunStarted = true;
			while (!bStopRequested)
			{
				FPlatformProcess::Sleep(0.001f);
			}
			return 0;
		}

		void Stop() override
		{
			Record("Stop");
			bStopRequested = true;
		}

		void Exit() override { Record("Exit"); }

		std::vector<std::string> Events()
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			return EventLog;
		}

		/** Waits until Run has started, so a Stop is known to arrive while it runs. */
		void WaitForRun()
		{
			while (!bRunStarted)
			{
				FPlatformProcess::Sleep(0.001f);
			}
		}

		std::atomic<bool> bInitFinished{false};
		std::atomic<bool> bRunStarted{false};
		std::atomic<bool> bStopRequested{false};
		uint32 InitThreadId = 0;
		FRunnableThread* SelfThread = nullptr;

	private:
		void Record(const char* Event)
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			EventLog.push_back(Event);
		}

		bool bInitResult;
		std::mutex Mutex;
		std::vector<std::string> EventLog;
	};
} // namespace

TEST(RunnableThreadTest, RunsInitRunExitOnTheNewThreadAndKillStopsIt)
{
	FRecordingRunnable Runnable;
	FRunnableThread* Thread = FRunnableThread::Create(&Runnable, TEXT("RecordingThread"));
	ASSERT_NE(Thread, nullptr);
	// Create returned only after Init finished on the new thread.
	EXPECT_TRUE(Runnable.bInitFinished);
	EXPECT_NE(Runnable.InitThreadId, FPlatformTLS::GetCurrentThreadId());
	EXPECT_EQ(Thread->GetThreadID(), Runnable.InitThreadId);
	EXPECT_EQ(std::string(TCHAR_TO_UTF8(*Thread->GetThreadName())), "RecordingThread");
	EXPECT_EQ(FRunnableThread::GetRunnableThread(), nullptr);

	Runnable.WaitForRun();
	EXPECT_TRUE(Thread->Kill(true));
	EXPECT_EQ(Runnable.Events(), (std::vector<std::string>{"Init", "Run", "Stop", "Exit"}));
	EXPECT_EQ(Runnable.SelfThread, Thread);
	delete Thread;
}

TEST(RunnableThreadTest, FailedInitSkipsRunAndExit)
{
	FRecordingRunnable Runnable(false);
	FRunnableThread* Thread = FRunnableThread::Create(&Runnable, TEXT("FailingInit"));
	ASSERT_NE(Thread, nullptr);
	Thread->WaitForCompletion();
	EXPECT_EQ(Runnable.Events(), (std::vector<std::string>{"Init"}));
	delete Thread;
	// Deleting kills the thread, which asks the runnable to stop even though it never ran.
	EXPECT_EQ(Runnable.Events(), (std::vector<std::string>{"Init", "Stop"}));
}

TEST(RunnableThreadTest, DeletingTheThreadStopsAndWaitsForIt)
{
	FRecordingRunnable Runnable;
	FRunnableThread* Thread = FRunnableThread::Create(&Runnable, TEXT("Deleted"), 256 * 1024, TPri_BelowNormal);
	ASSERT_NE(Thread, nullptr);
	EXPECT_EQ(Thread->GetThreadPriority(), TPri_BelowNormal);
	Runnable.WaitForRun();
	delete Thread;
	EXPECT_EQ(Runnable.Events(), (std::vector<std::string>{"Init", "Run", "Stop", "Exit"}));
}

TEST(EventTest, AutoResetEventReleasesOneWaitAndResets)
{
	FEvent* Event = FPlatformProcess::GetSynchEventFromPool(false);
	ASSERT_NE(Event, nullptr);
	EXPECT_FALSE(Event->IsManualReset());
	EXPECT_FALSE(Event->Wait(0));
	Event->Trigger();
	EXPECT_TRUE(Event->Wait(0));
	// The successful wait reset it.
	EXPECT_FALSE(Event->Wait(0));
	FPlatformProcess::ReturnSynchEventToPool(Event);
}

TEST(EventTest, ManualResetEventStaysTriggeredUntilReset)
{
	FEvent* Event = FPlatformProcess::GetSynchEventFromPool(true);
	EXPECT_TRUE(Event->IsManualReset());
	Event->Trigger();
	EXPECT_TRUE(Event->Wait(0));
	EXPECT_TRUE(Event->Wait(0));
	Event->Reset();
	EXPECT_FALSE(Event->Wait(0));
	Event->Trigger();
	// Returning it to the pool resets it for the next user.
	FPlatformProcess::ReturnSynchEventToPool(Event);
	FEvent* Again = FPlatformProcess::GetSynchEventFromPool(true);
	EXPECT_FALSE(Again->Wait(0));
	FPlatformProcess::ReturnSynchEventToPool(Again);
}

TEST(EventTest, WaitTimesOutAfterTheGivenMilliseconds)
{
	FEventRef Event;
	const double Start = FPlatformTime::Seconds();
	EXPECT_FALSE(Event->Wait(60));
	const double Elapsed = FPlatformTime::Seconds() - Start;
	EXPECT_GE(Elapsed, 0.055);
	EXPECT_LT(Elapsed, 1.0);
}

TEST(EventTest, WaitTakesATimespan)
{
	FEventRef Event;
	const double Start = FPlatformTime::Seconds();
	EXPECT_FALSE(Event->Wait(FTimespan::FromMilliseconds(40.0)));
	EXPECT_GE(FPlatformTime::Seconds() - Start, 0.035);
	Event->Trigger();
	EXPECT_TRUE(Event->Wait(FTimespan::FromMilliseconds(40.0)));
	EXPECT_FALSE(Event->Wait(FTimespan::FromMilliseconds(-5.0)));
}

TEST(EventTest, TriggerFromAnotherThreadWakesTheWaiter)
{
	FEventRef Event(EEventMode::AutoReset);
	std::atomic<bool> bTriggered{false};
	std::thread Trigger(
		[&Event, &bTriggered]
		{
			// Gives the waiter time to block first; the assertion below does not depend on it.
			FPlatformProcess::Sleep(0.03f);
			bTriggered = true;
			Event->Trigger();
		});
	EXPECT_TRUE(Event->Wait());
	EXPECT_TRUE(bTriggered.load()) << "Wait returned before the other thread triggered the event";
	Trigger.join();
}

TEST(EventTest, ManualResetEventReleasesEveryWaiter)
{
	FEventRef Event(EEventMode::ManualReset);
	std::atomic<int32> Released{0};
	std::vector<std::thread> Waiters;
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Waiters.emplace_back(
			[&]
			{
				if (Event->Wait(5000))
				{
					++Released;
				}
			});
	}
	FPlatformProcess::Sleep(0.02f);
	Event->Trigger();
	for (std::thread& Waiter : Waiters)
	{
		Waiter.join();
	}
	EXPECT_EQ(Released.load(), 3);
}

TEST(CriticalSectionTest, ProtectsACounterUnderContention)
{
	FCriticalSection Mutex;
	int64 Counter = 0;
	constexpr int32 NumThreads = 4;
	constexpr int32 PerThread = 20000;
	std::vector<std::thread> Threads;
	for (int32 Index = 0; Index < NumThreads; ++Index)
	{
		Threads.emplace_back(
			[&]
			{
				for (int32 Step = 0; Step < PerThread; ++Step)
				{
					FScopeLock Lock(&Mutex);
					// A read-modify-write in two steps would lose updates without the lock.
					const int64 Read = Counter;
					Counter = Read + 1;
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Counter, (int64)NumThreads * PerThread);
}

TEST(CriticalSectionTest, IsRecursiveAndTryLockFailsWhileAnotherThreadHoldsIt)
{
	FCriticalSection Mutex;
	Mutex.Lock();
	EXPECT_TRUE(Mutex.TryLock());
	Mutex.Unlock();

	bool bOtherGotIt = true;
	std::thread Other(
		[&]
		{
			bOtherGotIt = Mutex.TryLock();
		});
	Other.join();
	EXPECT_FALSE(bOtherGotIt);
	Mutex.Unlock();

	std::thread Again(
		[&]
		{
			bOtherGotIt = Mutex.TryLock();
			if (bOtherGotIt)
			{
				Mutex.Unlock();
			}
		});
	Again.join();
	EXPECT_TRUE(bOtherGotIt);
}

TEST(CriticalSectionTest, ScopeUnlockReleasesForItsScope)
{
	FCriticalSection Mutex;
	FScopeLock Lock(&Mutex);
	{
		FScopeUnlock Unlock(&Mutex);
		bool bOtherGotIt = false;
		std::thread Other(
			[&]
			{
				bOtherGotIt = Mutex.TryLock();
				if (bOtherGotIt)
				{
					Mutex.Unlock();
				}
			});
		Other.join();
		EXPECT_TRUE(bOtherGotIt);
	}
	bool bOtherGotIt = true;
	std::thread Other(
		[&]
		{
			bOtherGotIt = Mutex.TryLock();
		});
	Other.join();
	EXPECT_FALSE(bOtherGotIt);
}

TEST(CriticalSectionTest, ReadLocksShareAndWriteLockExcludes)
{
	FRWLock Lock;
	{
		FReadScopeLock ReadA(Lock);
		EXPECT_TRUE(Lock.TryReadLock());
		Lock.ReadUnlock();
		EXPECT_FALSE(Lock.TryWriteLock());
	}
	FWriteScopeLock Write(Lock);
	bool bReadWhileWriting = true;
	std::thread Reader(
		[&]
		{
			bReadWhileWriting = Lock.TryReadLock();
		});
	Reader.join();
	EXPECT_FALSE(bReadWhileWriting);
}

TEST(ThreadSafeCounterTest, ReturnsNewOrOldValuesAsDocumented)
{
	FThreadSafeCounter Counter(5);
	EXPECT_EQ(Counter.Increment(), 6);
	EXPECT_EQ(Counter.Decrement(), 5);
	EXPECT_EQ(Counter.Add(10), 5);
	EXPECT_EQ(Counter.GetValue(), 15);
	EXPECT_EQ(Counter.Subtract(3), 15);
	EXPECT_EQ(Counter.Set(100), 12);
	EXPECT_EQ(Counter.Reset(), 100);
	EXPECT_EQ(Counter.GetValue(), 0);

	FThreadSafeCounter64 Big(1ll << 40);
	EXPECT_EQ(Big.Increment(), (1ll << 40) + 1);
	EXPECT_EQ(Big.Add(1), (1ll << 40) + 1);
	EXPECT_EQ(Big.GetValue(), (1ll << 40) + 2);
}

TEST(ThreadSafeCounterTest, CountsEveryIncrementFromManyThreads)
{
	FThreadSafeCounter Counter;
	std::vector<std::thread> Threads;
	for (int32 Index = 0; Index < 4; ++Index)
	{
		Threads.emplace_back(
			[&]
			{
				for (int32 Step = 0; Step < 10000; ++Step)
				{
					Counter.Increment();
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Counter.GetValue(), 40000);
}

TEST(ThreadSafeBoolTest, AtomicSetReturnsTheOldValue)
{
	FThreadSafeBool Flag;
	EXPECT_FALSE(Flag);
	EXPECT_FALSE(Flag.AtomicSet(true));
	EXPECT_TRUE(Flag);
	EXPECT_TRUE(Flag.AtomicSet(false));
	Flag = true;
	EXPECT_TRUE(Flag == true);
}

TEST(AtomicTest, WrapsTheStandardAtomicOperations)
{
	TAtomic<int32> Value(3);
	EXPECT_EQ(++Value, 4);
	EXPECT_EQ(Value++, 4);
	EXPECT_EQ(Value.Load(), 5);
	EXPECT_EQ(Value.Exchange(9), 5);
	int32 Expected = 8;
	EXPECT_FALSE(Value.CompareExchange(Expected, 1));
	EXPECT_EQ(Expected, 9);
	EXPECT_TRUE(Value.CompareExchange(Expected, 1));
	EXPECT_EQ((int32)Value, 1);
	Value.Store(7, EMemoryOrder::Relaxed);
	EXPECT_EQ(Value.Load(EMemoryOrder::Relaxed), 7);
	EXPECT_EQ(Value.AddExchange(3), 7);
	EXPECT_EQ(Value += 2, 12);
}

TEST(PlatformTLSTest, ThreadIdsDifferAndSlotsAreThreadLocal)
{
	const uint32 MainId = FPlatformTLS::GetCurrentThreadId();
	const uint32 Slot = FPlatformTLS::AllocTlsSlot();
	ASSERT_TRUE(FPlatformTLS::IsValidTlsSlot(Slot));
	int32 MainValue = 1;
	FPlatformTLS::SetTlsValue(Slot, &MainValue);

	uint32 OtherId = MainId;
	void* OtherValue = &MainValue;
	std::thread Other(
		[&]
		{
			OtherId = FPlatformTLS::GetCurrentThreadId();
			OtherValue = FPlatformTLS::GetTlsValue(Slot);
		});
	Other.join();
	EXPECT_NE(OtherId, MainId);
	EXPECT_EQ(OtherValue, nullptr);
	EXPECT_EQ(FPlatformTLS::GetTlsValue(Slot), &MainValue);
	FPlatformTLS::FreeTlsSlot(Slot);
}
