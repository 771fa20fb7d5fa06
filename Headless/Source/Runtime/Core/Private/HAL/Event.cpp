// Copyright Orvane. All Rights Reserved.

#include "HAL/Event.h"

#include "HAL/PlatformProcess.h"
#include "Misc/AssertionMacros.h"
#include "Misc/Timespan.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace
{
	/** An event built on a mutex and a condition variable. */
	class FEventStd final : public FEvent
	{
	public:
		bool Create(bool bInIsManualReset) override
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			bManualReset = bInIsManualReset;
			bTriggered = false;
			bCreated = true;
			return true;
		}

		bool IsManualReset() override { return bManualReset; }

		void Trigger() override
		{
			check(bCreated);
			// Notifying under the lock keeps the condition variable in use until the waiter can see the signal.
			std::lock_guard<std::mutex> Lock(Mutex);
			bTriggered = true;
			// A manual-reset event releases everyone; an auto-reset one a single waiter, who resets it.
			if (bManualReset)
			{
				Condition.notify_all();
			}
			else
			{
				Condition.notify_one();
			}
		}

		void Reset() override
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			bTriggered = false;
		}

		bool Wait(uint32 WaitTime, const bool /*bIgnoreThreadIdleStats*/) override
		{
			check(bCreated);
			std::unique_lock<std::mutex> Lock(Mutex);
			const auto IsTriggered = [this]
			{
				return bTriggered;
			};
			if (WaitTime == MAX_uint32)
			{
				Condition.wait(Lock, IsTriggered);
			}
			else if (!Condition.wait_for(Lock, std::chrono::milliseconds(WaitTime), IsTriggered))
			{
				return false;
			}
			if (!bManualReset)
			{
				bTriggered = false;
			}
			return true;
		}

	private:
		std::mutex Mutex;
		std::condition_variable Condition;
		bool bTriggered = false;
		bool bManualReset = false;
		bool bCreated = false;
	};

	/** Events handed back to the pool, one list per reset mode. */
	struct FEventPool
	{
		std::mutex Mutex;
		std::vector<FEvent*> Free[2];

		static FEventPool& Get()
		{
			// Never destroyed: events may be returned while the process exits.
			static FEventPool* const Pool = new FEventPool();
			return *Pool;
		}
	};
} // namespace

bool FEvent::Wait(const FTimespan& WaitTime, const bool bIgnoreThreadIdleStats)
{
	// Negative spans do not wait; spans beyond the millisecond range wait forever.
	const double Milliseconds = WaitTime.GetTotalMilliseconds();
	const uint32 ClampedMilliseconds =
		Milliseconds <= 0.0 ? 0 : (Milliseconds >= (double)MAX_uint32 ? MAX_uint32 : (uint32)Milliseconds);
	return Wait(ClampedMilliseconds, bIgnoreThreadIdleStats);
}

FEvent* FPlatformProcess::CreateSynchEvent(bool bIsManualReset)
{
	FEvent* Event = new FEventStd();
	Event->Create(bIsManualReset);
	return Event;
}

FEvent* FPlatformProcess::GetSynchEventFromPool(bool bIsManualReset)
{
	FEventPool& Pool = FEventPool::Get();
	{
		std::lock_guard<std::mutex> Lock(Pool.Mutex);
		std::vector<FEvent*>& Free = Pool.Free[bIsManualReset ? 1 : 0];
		if (!Free.empty())
		{
			FEvent* Event = Free.back();
			Free.pop_back();
			return Event;
		}
	}
	return CreateSynchEvent(bIsManualReset);
}

void FPlatformProcess::ReturnSynchEventToPool(FEvent* Event)
{
	if (!Event)
	{
		return;
	}
	// The next user expects an event that is not triggered.
	Event->Reset();
	FEventPool& Pool = FEventPool::Get();
	std::lock_guard<std::mutex> Lock(Pool.Mutex);
	Pool.Free[Event->IsManualReset() ? 1 : 0].push_back(Event);
}

FEventRef::FEventRef(EEventMode Mode)
	: Event(FPlatformProcess::GetSynchEventFromPool(Mode == EEventMode::ManualReset))
{
}

FEventRef::~FEventRef()
{
	FPlatformProcess::ReturnSynchEventToPool(Event);
}
