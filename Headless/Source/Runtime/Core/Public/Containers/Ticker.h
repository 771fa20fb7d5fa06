// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Delegates/Delegate.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"

#include <atomic>
#include <mutex>
#include <vector>

/** A ticker callback: receives the tick's delta time; returns true to fire again, false to be removed. */
DECLARE_DELEGATE_RetVal_OneParam(bool, FTickerDelegate, float);

/**
 * Calls delegates after a delay, from Tick, on the thread that ticks it. The ticker keeps its own
 * clock, advanced by each Tick's delta time. A delegate fires at the first Tick at which its delay has
 * passed (a delay of 0 fires at the next Tick), at most once per Tick; returning true schedules it
 * again after the same delay. Delegates due at the same Tick fire in order of due time, then in the
 * order they were added. Delegates added during a Tick fire at the next Tick at the earliest.
 * AddTicker and RemoveTicker may be called from any thread.
 */
class FTSTicker
{
public:
	struct FElement;

	/** Identifies an added delegate; it expires when the delegate is removed. */
	using FDelegateHandle = TWeakPtr<FElement>;

	/** The ticker the engine loop ticks once per frame on the game thread. */
	static CORE_API FTSTicker& GetCoreTicker();

	CORE_API FTSTicker();
	CORE_API ~FTSTicker();

	FTSTicker(const FTSTicker&) = delete;
	FTSTicker& operator=(const FTSTicker&) = delete;

	/** Adds a delegate that fires after InDelay seconds of ticker time and then every InDelay seconds while it returns
	 * true. */
	CORE_API FDelegateHandle AddTicker(const FTickerDelegate& InDelegate, float InDelay = 0.0f);

	/** As AddTicker with a delegate, for a named function. */
	CORE_API FDelegateHandle AddTicker(const TCHAR* InName, float InDelay, TUniqueFunction<bool(float)>&& InFunction);

	/**
	 * Removes a delegate so it never fires again. If it is firing on another thread, waits until it
	 * returns; a delegate may remove itself while it fires. An expired handle is ignored.
	 */
	static CORE_API void RemoveTicker(FDelegateHandle Handle);

	/** Advances the ticker's clock and fires the delegates that are due. Not to be called from two threads at once. */
	CORE_API void Tick(float DeltaTime);

	/** Removes every delegate and restarts the clock at zero. */
	CORE_API void Reset();

	/** One added delegate and its schedule. */
	struct FElement
	{
		/** Ticker time at which the delegate is next due. */
		double FireTime = 0.0;

		/** Seconds between fires. */
		float DelayTime = 0.0f;

		/** Position in the order of addition; breaks ties between delegates due at the same time. */
		uint64 Sequence = 0;

		/** Name given to AddTicker, for diagnostics; may be null. */
		const TCHAR* Name = nullptr;

		/** What fires: a delegate or a function, whichever was given. */
		FTickerDelegate Delegate;
		TUniqueFunction<bool(float)> Function;

		/** Set once removed; the element never fires again. */
		std::atomic<bool> bRemoved{false};

		/** Id of the thread running the element's callback, 0 when it is not running. */
		std::atomic<uint32> ExecutingThreadId{0};

		/** Held while the callback runs, so RemoveTicker from another thread can wait for it. */
		std::mutex ExecutionMutex;

		/** Calls the delegate or function; false when there is nothing to call any more. */
		bool Fire(float DeltaTime);
	};

private:
	FDelegateHandle AddElement(const TSharedPtr<FElement>& Element, float InDelay);

	/** Delegates added since the last Tick began; guarded by NewElementsMutex. */
	std::vector<TSharedPtr<FElement>> NewElements;
	std::mutex NewElementsMutex;

	/** Delegates taking part in ticks; touched only by the ticking thread. */
	std::vector<TSharedPtr<FElement>> Elements;

	/** The ticker's clock; touched only by the ticking thread. */
	double CurrentTime = 0.0;

	/** Order of addition of the next delegate; guarded by NewElementsMutex. */
	uint64 NextSequence = 0;
	bool bInTick = false;
};

/** Base for objects that tick on a ticker for as long as they live. */
class CORE_API FTSTickerObjectBase
{
public:
	/**
	 * Starts ticking this object on the ticker every InDelay seconds.
	 * @param InTicker The ticker to tick on; the core ticker by default.
	 */
	FTSTickerObjectBase(float InDelay = 0.0f, FTSTicker& InTicker = FTSTicker::GetCoreTicker());

	/** Stops ticking; waits if the object is ticking on another thread. */
	virtual ~FTSTickerObjectBase();

	FTSTickerObjectBase(const FTSTickerObjectBase&) = delete;
	FTSTickerObjectBase& operator=(const FTSTickerObjectBase&) = delete;

	/** Called by the ticker; return false to stop ticking. */
	virtual bool Tick(float DeltaTime) = 0;

private:
	FTSTicker::FDelegateHandle TickHandle;
};
