// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "HAL/CriticalSection.h"
#include "Misc/AssertionMacros.h"

/** Holds a critical section for the lifetime of the scope. */
class FScopeLock
{
public:
	/** Locks the critical section, blocking until it is free. */
	[[nodiscard]] explicit FScopeLock(FCriticalSection* InSynchObject)
		: SynchObject(InSynchObject)
	{
		check(SynchObject);
		SynchObject->Lock();
	}

	~FScopeLock() { Unlock(); }

	/** Releases the critical section before the end of the scope. */
	void Unlock()
	{
		if (SynchObject)
		{
			SynchObject->Unlock();
			SynchObject = nullptr;
		}
	}

	FScopeLock(const FScopeLock&) = delete;
	FScopeLock& operator=(const FScopeLock&) = delete;

private:
	FCriticalSection* SynchObject;
};

/** Releases a held critical section for the lifetime of the scope and takes it back at its end. */
class FScopeUnlock
{
public:
	[[nodiscard]] explicit FScopeUnlock(FCriticalSection* InSynchObject)
		: SynchObject(InSynchObject)
	{
		if (SynchObject)
		{
			SynchObject->Unlock();
		}
	}

	~FScopeUnlock()
	{
		if (SynchObject)
		{
			SynchObject->Lock();
		}
	}

	FScopeUnlock(const FScopeUnlock&) = delete;
	FScopeUnlock& operator=(const FScopeUnlock&) = delete;

private:
	FCriticalSection* SynchObject;
};
