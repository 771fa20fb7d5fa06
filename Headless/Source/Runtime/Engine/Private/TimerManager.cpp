// Copyright Orvane. All Rights Reserved.

#include "TimerManager.h"

#include "CoreGlobals.h"

/** The state of one timer. */
struct FTimerManager::FTimerData
{
	enum class EStatus : uint8
	{
		/** Set during a Tick: considered from the next Tick on. */
		Pending,
		/** Waiting for its expiry time. */
		Active,
		/** Stopped; ExpireTime holds the time that remained. */
		Paused,
		/** Its callback is running. */
		Executing,
		/** Cleared while its callback was running: removed when the callback returns. */
		ActivePendingRemoval,
	};

	FTimerCallback Callback;
	double Rate = 0.0;
	double ExpireTime = 0.0;
	bool bLoop = false;
	bool bMaxOncePerFrame = false;
	bool bPauseWhenDone = false;
	EStatus Status = EStatus::Active;

	/** Orders timers with the same expiry time: the earlier set (or re-armed) fires first. */
	uint64 Sequence = 0;
};

FString FTimerHandle::ToString() const
{
	return FString::Printf(TEXT("%llu"), (unsigned long long)Handle);
}

FTimerManager::FTimerManager(UGameInstance* GameInstance) {}

FTimerManager::~FTimerManager() = default;

FTimerManager::FTimerData* FTimerManager::FindTimer(FTimerHandle InHandle)
{
	if (!InHandle.IsValid())
	{
		return nullptr;
	}
	TUniquePtr<FTimerData>* Found = Timers.Find(InHandle.Handle);
	if (!Found || (*Found)->Status == FTimerData::EStatus::ActivePendingRemoval)
	{
		return nullptr;
	}
	return Found->Get();
}

const FTimerManager::FTimerData* FTimerManager::FindTimer(FTimerHandle InHandle) const
{
	return const_cast<FTimerManager*>(this)->FindTimer(InHandle);
}

void FTimerManager::RemoveTimer(uint64 Handle)
{
	TUniquePtr<FTimerData>* Found = Timers.Find(Handle);
	if (!Found)
	{
		return;
	}
	if ((*Found)->Status == FTimerData::EStatus::Executing)
	{
		// Its callback is running: the timer goes when the callback returns.
		(*Found)->Status = FTimerData::EStatus::ActivePendingRemoval;
		return;
	}
	Timers.Remove(Handle);
}

void FTimerManager::InternalSetTimer(FTimerHandle& InOutHandle, FTimerCallback&& Callback, float InRate, bool InbLoop,
	float InFirstDelay, bool bMaxOncePerFrame)
{
	if (InOutHandle.IsValid())
	{
		ClearTimer(InOutHandle);
	}
	if (InRate <= 0.f)
	{
		InOutHandle.Invalidate();
		return;
	}
	TUniquePtr<FTimerData> Timer = MakeUnique<FTimerData>();
	Timer->Callback = MoveTemp(Callback);
	Timer->Rate = InRate;
	Timer->bLoop = InbLoop;
	Timer->bMaxOncePerFrame = bMaxOncePerFrame;
	const double FirstDelay = InFirstDelay >= 0.f ? (double)InFirstDelay : (double)InRate;
	Timer->ExpireTime = InternalTime + FirstDelay;
	Timer->Status = bInsideTick ? FTimerData::EStatus::Pending : FTimerData::EStatus::Active;
	Timer->Sequence = NextSequence++;
	InOutHandle.Handle = NextHandle++;
	Timers.Add(InOutHandle.Handle, MoveTemp(Timer));
}

FTimerHandle FTimerManager::InternalSetTimerForNextTick(FTimerCallback&& Callback)
{
	TUniquePtr<FTimerData> Timer = MakeUnique<FTimerData>();
	Timer->Callback = MoveTemp(Callback);
	Timer->Rate = 0.0;
	Timer->ExpireTime = InternalTime;
	Timer->Status = bInsideTick ? FTimerData::EStatus::Pending : FTimerData::EStatus::Active;
	Timer->Sequence = NextSequence++;
	FTimerHandle Handle;
	Handle.Handle = NextHandle++;
	Timers.Add(Handle.Handle, MoveTemp(Timer));
	return Handle;
}

void FTimerManager::SetTimer(
	FTimerHandle& InOutHandle, FTimerDelegate const& InDelegate, float InRate, bool InbLoop, float InFirstDelay)
{
	FTimerCallback Callback;
	Callback.Delegate = InDelegate;
	InternalSetTimer(InOutHandle, MoveTemp(Callback), InRate, InbLoop, InFirstDelay, false);
}

void FTimerManager::SetTimer(FTimerHandle& InOutHandle, float InRate, bool InbLoop, float InFirstDelay)
{
	InternalSetTimer(InOutHandle, FTimerCallback(), InRate, InbLoop, InFirstDelay, false);
}

void FTimerManager::SetTimer(
	FTimerHandle& InOutHandle, TFunction<void(void)>&& Callback, float InRate, bool InbLoop, float InFirstDelay)
{
	FTimerCallback TimerCallback;
	TimerCallback.Function = MoveTemp(Callback);
	InternalSetTimer(InOutHandle, MoveTemp(TimerCallback), InRate, InbLoop, InFirstDelay, false);
}

void FTimerManager::SetTimer(FTimerHandle& InOutHandle, FTimerDelegate const& InDelegate, float InRate,
	const FTimerManagerTimerParameters& InTimerParameters)
{
	FTimerCallback Callback;
	Callback.Delegate = InDelegate;
	InternalSetTimer(InOutHandle, MoveTemp(Callback), InRate, InTimerParameters.bLoop, InTimerParameters.FirstDelay,
		InTimerParameters.bMaxOncePerFrame);
}

void FTimerManager::SetTimer(
	FTimerHandle& InOutHandle, float InRate, const FTimerManagerTimerParameters& InTimerParameters)
{
	InternalSetTimer(InOutHandle, FTimerCallback(), InRate, InTimerParameters.bLoop, InTimerParameters.FirstDelay,
		InTimerParameters.bMaxOncePerFrame);
}

void FTimerManager::SetTimer(FTimerHandle& InOutHandle, TFunction<void(void)>&& Callback, float InRate,
	const FTimerManagerTimerParameters& InTimerParameters)
{
	FTimerCallback TimerCallback;
	TimerCallback.Function = MoveTemp(Callback);
	InternalSetTimer(InOutHandle, MoveTemp(TimerCallback), InRate, InTimerParameters.bLoop,
		InTimerParameters.FirstDelay, InTimerParameters.bMaxOncePerFrame);
}

FTimerHandle FTimerManager::SetTimerForNextTick(FTimerDelegate const& InDelegate)
{
	FTimerCallback Callback;
	Callback.Delegate = InDelegate;
	return InternalSetTimerForNextTick(MoveTemp(Callback));
}

FTimerHandle FTimerManager::SetTimerForNextTick(TFunction<void(void)>&& Callback)
{
	FTimerCallback TimerCallback;
	TimerCallback.Function = MoveTemp(Callback);
	return InternalSetTimerForNextTick(MoveTemp(TimerCallback));
}

void FTimerManager::ClearTimer(FTimerHandle& InHandle)
{
	if (InHandle.IsValid())
	{
		RemoveTimer(InHandle.Handle);
	}
	InHandle.Invalidate();
}

void FTimerManager::ClearAllTimersForObject(void const* Object)
{
	if (!Object)
	{
		return;
	}
	TArray<uint64> ToClear;
	for (const TPair<uint64, TUniquePtr<FTimerData>>& Pair : Timers)
	{
		if (Pair.Value->Callback.Delegate.IsBoundToObject(Object))
		{
			ToClear.Add(Pair.Key);
		}
	}
	for (uint64 Handle : ToClear)
	{
		RemoveTimer(Handle);
	}
}

void FTimerManager::PauseTimer(FTimerHandle InHandle)
{
	FTimerData* Timer = FindTimer(InHandle);
	if (!Timer || Timer->Status == FTimerData::EStatus::Paused)
	{
		return;
	}
	if (Timer->Status == FTimerData::EStatus::Executing)
	{
		Timer->bPauseWhenDone = true;
		return;
	}
	Timer->ExpireTime = Timer->ExpireTime - InternalTime;
	Timer->Status = FTimerData::EStatus::Paused;
}

void FTimerManager::UnPauseTimer(FTimerHandle InHandle)
{
	FTimerData* Timer = FindTimer(InHandle);
	if (!Timer)
	{
		return;
	}
	if (Timer->Status == FTimerData::EStatus::Executing)
	{
		Timer->bPauseWhenDone = false;
		return;
	}
	if (Timer->Status != FTimerData::EStatus::Paused)
	{
		return;
	}
	Timer->ExpireTime = InternalTime + Timer->ExpireTime;
	Timer->Status = bInsideTick ? FTimerData::EStatus::Pending : FTimerData::EStatus::Active;
	Timer->Sequence = NextSequence++;
}

float FTimerManager::GetTimerRate(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	return Timer ? (float)Timer->Rate : -1.f;
}

bool FTimerManager::IsTimerActive(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	return Timer && Timer->Status != FTimerData::EStatus::Paused;
}

bool FTimerManager::IsTimerPaused(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	return Timer && Timer->Status == FTimerData::EStatus::Paused;
}

bool FTimerManager::IsTimerPending(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	return Timer && Timer->Status == FTimerData::EStatus::Pending;
}

bool FTimerManager::TimerExists(FTimerHandle InHandle) const
{
	return FindTimer(InHandle) != nullptr;
}

float FTimerManager::GetTimerRemaining(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	if (!Timer)
	{
		return -1.f;
	}
	if (Timer->Status == FTimerData::EStatus::Paused)
	{
		return (float)Timer->ExpireTime;
	}
	return (float)(Timer->ExpireTime - InternalTime);
}

float FTimerManager::GetTimerElapsed(FTimerHandle InHandle) const
{
	const FTimerData* Timer = FindTimer(InHandle);
	if (!Timer)
	{
		return -1.f;
	}
	return (float)(Timer->Rate - GetTimerRemaining(InHandle));
}

bool FTimerManager::HasBeenTickedThisFrame() const
{
	return LastTickedFrame == GFrameCounter;
}

int32 FTimerManager::GetNumTimers() const
{
	int32 Count = 0;
	for (const TPair<uint64, TUniquePtr<FTimerData>>& Pair : Timers)
	{
		Count += Pair.Value->Status != FTimerData::EStatus::ActivePendingRemoval ? 1 : 0;
	}
	return Count;
}

void FTimerManager::Tick(float DeltaTime)
{
	// A timer manager runs once per engine frame, however many times it is asked to.
	if (HasBeenTickedThisFrame())
	{
		return;
	}
	LastTickedFrame = GFrameCounter;
	InternalTime += DeltaTime;

	// Timers set during the previous Tick take part from now on.
	for (TPair<uint64, TUniquePtr<FTimerData>>& Pair : Timers)
	{
		if (Pair.Value->Status == FTimerData::EStatus::Pending)
		{
			Pair.Value->Status = FTimerData::EStatus::Active;
		}
	}

	bInsideTick = true;
	for (;;)
	{
		// The due timer with the earliest expiry time (then the earliest set) fires next.
		uint64 NextHandleToFire = 0;
		FTimerData* Next = nullptr;
		for (TPair<uint64, TUniquePtr<FTimerData>>& Pair : Timers)
		{
			FTimerData* Timer = Pair.Value.Get();
			if (Timer->Status != FTimerData::EStatus::Active || Timer->ExpireTime > InternalTime)
			{
				continue;
			}
			if (!Next || Timer->ExpireTime < Next->ExpireTime ||
				(Timer->ExpireTime == Next->ExpireTime && Timer->Sequence < Next->Sequence))
			{
				Next = Timer;
				NextHandleToFire = Pair.Key;
			}
		}
		if (!Next)
		{
			break;
		}

		// A looping timer fires once for every period that has passed since it was due, or only once when it
		// may fire at most once per frame (the other periods are skipped, not postponed).
		int32 PeriodsPassed = 1;
		if (Next->bLoop && Next->Rate > 0.0)
		{
			PeriodsPassed = (int32)FMath::FloorToDouble((InternalTime - Next->ExpireTime) / Next->Rate) + 1;
		}
		const int32 CallCount = Next->bMaxOncePerFrame ? 1 : PeriodsPassed;

		Next->Status = FTimerData::EStatus::Executing;
		for (int32 Call = 0; Call < CallCount; ++Call)
		{
			const FTimerCallback& Callback = Next->Callback;
			if (Callback.Function)
			{
				Callback.Function();
			}
			else if (Callback.Delegate.GetDelegateInstanceProtected())
			{
				if (!Callback.Delegate.IsBound())
				{
					// The object the delegate was bound to is gone: the timer goes with it.
					Next->Status = FTimerData::EStatus::ActivePendingRemoval;
					break;
				}
				Callback.Delegate.Execute();
			}
			// The callback may have cleared its own timer; the data stays until here either way.
			if (Next->Status != FTimerData::EStatus::Executing)
			{
				break;
			}
		}

		if (Next->Status == FTimerData::EStatus::Executing && Next->bLoop)
		{
			Next->ExpireTime += PeriodsPassed * Next->Rate;
			Next->Sequence = NextSequence++;
			Next->Status = FTimerData::EStatus::Active;
			if (Next->bPauseWhenDone)
			{
				Next->bPauseWhenDone = false;
				Next->ExpireTime -= InternalTime;
				Next->Status = FTimerData::EStatus::Paused;
			}
		}
		else
		{
			Timers.Remove(NextHandleToFire);
		}
	}
	bInsideTick = false;
}
