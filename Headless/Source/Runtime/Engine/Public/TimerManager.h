// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/TimerHandle.h"
#include "Templates/Function.h"

#include <type_traits>

class UGameInstance;
class UObject;

/** The delegate a timer calls. */
using FTimerDelegate = TDelegate<void(), FNotThreadSafeNotCheckedDelegateUserPolicy>;

/** The callable a timer calls when it is set with a function instead of a delegate. */
using FTimerFunction = TFunction<void(void)>;

/** The options of a timer, for the SetTimer overloads that take them. */
struct FTimerManagerTimerParameters
{
	/** Whether the timer fires again every InRate seconds after the first time. */
	bool bLoop = false;

	/** Whether a looping timer fires at most once per Tick even when several periods have passed. */
	bool bMaxOncePerFrame = false;

	/** Seconds before the first firing; negative means one period of the rate. */
	float FirstDelay = -1.f;
};

/**
 * Calls delegates after a delay, once or repeatedly, from Tick. The manager keeps its own clock, advanced by
 * each Tick's delta time. A timer is due when that clock reaches its expiry time; the timers due in one Tick
 * fire in order of expiry time, then in the order they were set. A looping timer fires once for every period
 * that has passed (unless bMaxOncePerFrame) and is re-armed from its previous expiry time, so it does not
 * drift. A timer set during a Tick is considered from the next Tick on.
 */
class ENGINE_API FTimerManager
{
public:
	explicit FTimerManager(UGameInstance* GameInstance = nullptr);
	~FTimerManager();

	FTimerManager(const FTimerManager&) = delete;
	FTimerManager& operator=(const FTimerManager&) = delete;

	/** Advances the manager's clock and fires the timers that are due. */
	void Tick(float DeltaTime);

	/**
	 * Sets a timer that calls a method of an object. The handle is cleared first if it names a timer, and then
	 * names the new one. A rate of zero or less only clears the timer.
	 */
	template <class UserClass>
	void SetTimer(FTimerHandle& InOutHandle, UserClass* InObj,
		typename FTimerDelegate::template TMethodPtr<false, UserClass> InTimerMethod, float InRate,
		bool InbLoop = false, float InFirstDelay = -1.f)
	{
		InternalSetTimer(InOutHandle, MakeCallback(InObj, InTimerMethod), InRate, InbLoop, InFirstDelay, false);
	}

	template <class UserClass>
	void SetTimer(FTimerHandle& InOutHandle, UserClass* InObj,
		typename FTimerDelegate::template TMethodPtr<true, UserClass> InTimerMethod, float InRate, bool InbLoop = false,
		float InFirstDelay = -1.f)
	{
		InternalSetTimer(InOutHandle, MakeCallback(InObj, InTimerMethod), InRate, InbLoop, InFirstDelay, false);
	}

	/** Sets a timer that calls a delegate. */
	void SetTimer(FTimerHandle& InOutHandle, FTimerDelegate const& InDelegate, float InRate, bool InbLoop,
		float InFirstDelay = -1.f);

	/** Sets a timer that calls nothing: it only measures time (IsTimerActive, GetTimerRemaining). */
	void SetTimer(FTimerHandle& InOutHandle, float InRate, bool InbLoop, float InFirstDelay = -1.f);

	/** Sets a timer that calls a function. */
	void SetTimer(FTimerHandle& InOutHandle, TFunction<void(void)>&& Callback, float InRate, bool InbLoop,
		float InFirstDelay = -1.f);

	template <class UserClass>
	void SetTimer(FTimerHandle& InOutHandle, UserClass* InObj,
		typename FTimerDelegate::template TMethodPtr<false, UserClass> InTimerMethod, float InRate,
		const FTimerManagerTimerParameters& InTimerParameters)
	{
		InternalSetTimer(InOutHandle, MakeCallback(InObj, InTimerMethod), InRate, InTimerParameters.bLoop,
			InTimerParameters.FirstDelay, InTimerParameters.bMaxOncePerFrame);
	}

	template <class UserClass>
	void SetTimer(FTimerHandle& InOutHandle, UserClass* InObj,
		typename FTimerDelegate::template TMethodPtr<true, UserClass> InTimerMethod, float InRate,
		const FTimerManagerTimerParameters& InTimerParameters)
	{
		InternalSetTimer(InOutHandle, MakeCallback(InObj, InTimerMethod), InRate, InTimerParameters.bLoop,
			InTimerParameters.FirstDelay, InTimerParameters.bMaxOncePerFrame);
	}

	void SetTimer(FTimerHandle& InOutHandle, FTimerDelegate const& InDelegate, float InRate,
		const FTimerManagerTimerParameters& InTimerParameters);
	void SetTimer(FTimerHandle& InOutHandle, float InRate, const FTimerManagerTimerParameters& InTimerParameters);
	void SetTimer(FTimerHandle& InOutHandle, TFunction<void(void)>&& Callback, float InRate,
		const FTimerManagerTimerParameters& InTimerParameters);

	/** Sets a timer that fires once, at the next Tick. */
	template <class UserClass>
	FTimerHandle SetTimerForNextTick(
		UserClass* InObj, typename FTimerDelegate::template TMethodPtr<false, UserClass> InTimerMethod)
	{
		return InternalSetTimerForNextTick(MakeCallback(InObj, InTimerMethod));
	}

	template <class UserClass>
	FTimerHandle SetTimerForNextTick(
		UserClass* InObj, typename FTimerDelegate::template TMethodPtr<true, UserClass> InTimerMethod)
	{
		return InternalSetTimerForNextTick(MakeCallback(InObj, InTimerMethod));
	}

	FTimerHandle SetTimerForNextTick(FTimerDelegate const& InDelegate);
	FTimerHandle SetTimerForNextTick(TFunction<void(void)>&& Callback);

	/** Removes the timer and invalidates the handle. Clearing a timer from its own callback is allowed. */
	void ClearTimer(FTimerHandle& InHandle);

	/** Removes every timer whose delegate is bound to the object. */
	void ClearAllTimersForObject(void const* Object);

	/** Stops the timer's clock; it keeps its remaining time. */
	void PauseTimer(FTimerHandle InHandle);

	/** Restarts a paused timer's clock. */
	void UnPauseTimer(FTimerHandle InHandle);

	/** Seconds between two firings; -1 if there is no such timer. */
	float GetTimerRate(FTimerHandle InHandle) const;

	/** True if the timer exists and is not paused. */
	bool IsTimerActive(FTimerHandle InHandle) const;

	/** True if the timer exists and is paused. */
	bool IsTimerPaused(FTimerHandle InHandle) const;

	/** True if the timer was set during the current Tick and is not considered yet. */
	bool IsTimerPending(FTimerHandle InHandle) const;

	/** True if the timer exists (active, paused or pending). */
	bool TimerExists(FTimerHandle InHandle) const;

	/** Seconds since the timer last fired (or was set); -1 if there is no such timer. */
	float GetTimerElapsed(FTimerHandle InHandle) const;

	/** Seconds until the timer fires; -1 if there is no such timer. */
	float GetTimerRemaining(FTimerHandle InHandle) const;

	/** True if Tick already ran during the current engine frame. */
	bool HasBeenTickedThisFrame() const;

	/** The number of timers the manager holds. */
	int32 GetNumTimers() const;

private:
	struct FTimerData;

	/** What a timer calls, and whether the object it is bound to is still alive. */
	struct FTimerCallback
	{
		FTimerDelegate Delegate;
		TFunction<void(void)> Function;

		/** True for a timer set without a delegate or function. */
		bool IsEmpty() const { return !Delegate.GetDelegateInstanceProtected() && !Function; }
	};

	template <class UserClass, class MethodType>
	static FTimerCallback MakeCallback(UserClass* InObj, MethodType InTimerMethod)
	{
		FTimerCallback Callback;
		if constexpr (std::is_base_of_v<UObject, std::remove_const_t<UserClass>>)
		{
			Callback.Delegate = FTimerDelegate::CreateUObject(InObj, InTimerMethod);
		}
		else
		{
			Callback.Delegate = FTimerDelegate::CreateRaw(InObj, InTimerMethod);
		}
		return Callback;
	}

	void InternalSetTimer(FTimerHandle& InOutHandle, FTimerCallback&& Callback, float InRate, bool InbLoop,
		float InFirstDelay, bool bMaxOncePerFrame);
	FTimerHandle InternalSetTimerForNextTick(FTimerCallback&& Callback);

	FTimerData* FindTimer(FTimerHandle InHandle);
	const FTimerData* FindTimer(FTimerHandle InHandle) const;
	void RemoveTimer(uint64 Handle);

	/** The manager's clock, in seconds. */
	double InternalTime = 0.0;

	/** Timers by handle value. */
	TMap<uint64, TUniquePtr<FTimerData>> Timers;

	/** The next handle value; handle values are never reused. */
	uint64 NextHandle = 1;

	/** Orders timers set at the same expiry time. */
	uint64 NextSequence = 0;

	/** The frame the manager last ticked in. */
	uint64 LastTickedFrame = MAX_uint64;

	/** True while Tick runs: timers set now are pending until the next Tick. */
	bool bInsideTick = false;
};
