// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

struct FTimespan;

/**
 * A synchronisation event threads wait on. An auto-reset event releases one waiter per Trigger and
 * resets itself; a manual-reset event releases every waiter and stays triggered until Reset.
 * Get one from FPlatformProcess::GetSynchEventFromPool or use FEventRef.
 */
class FEvent
{
public:
	FEvent() = default;
	FEvent(const FEvent&) = delete;
	FEvent& operator=(const FEvent&) = delete;
	virtual ~FEvent() = default;

	/** Prepares the event; returns false if it could not be created. */
	virtual bool Create(bool bIsManualReset = false) = 0;

	/** True for a manual-reset event. */
	virtual bool IsManualReset() = 0;

	/** Signals the event. */
	virtual void Trigger() = 0;

	/** Clears the signal. */
	virtual void Reset() = 0;

	/**
	 * Waits until the event is signalled or WaitTime milliseconds pass (MAX_uint32 waits forever).
	 * Returns true if the event was signalled, false on time-out.
	 */
	virtual bool Wait(uint32 WaitTime, const bool bIgnoreThreadIdleStats = false) = 0;

	/** Waits until the event is signalled. */
	bool Wait() { return Wait(MAX_uint32); }

	/** Waits until the event is signalled or the time span passes; returns whether it was signalled. */
	CORE_API bool Wait(const FTimespan& WaitTime, const bool bIgnoreThreadIdleStats = false);
};

/** Whether an FEventRef's event resets itself after releasing a waiter. */
enum class EEventMode
{
	AutoReset,
	ManualReset
};

/** Owns a pooled event for its lifetime. */
class FEventRef final
{
public:
	CORE_API explicit FEventRef(EEventMode Mode = EEventMode::AutoReset);
	CORE_API ~FEventRef();

	FEventRef(const FEventRef&) = delete;
	FEventRef& operator=(const FEventRef&) = delete;

	FEvent* operator->() const { return Event; }

	FEvent& operator*() const { return *Event; }

	FEvent* Get() const { return Event; }

private:
	FEvent* Event;
};
