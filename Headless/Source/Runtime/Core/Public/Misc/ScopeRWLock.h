// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "HAL/CriticalSection.h"

/** Holds a read lock for the lifetime of the scope. */
class FReadScopeLock
{
public:
	[[nodiscard]] explicit FReadScopeLock(FRWLock& InLock)
		: Lock(InLock)
	{
		Lock.ReadLock();
	}

	~FReadScopeLock() { Lock.ReadUnlock(); }

	FReadScopeLock(const FReadScopeLock&) = delete;
	FReadScopeLock& operator=(const FReadScopeLock&) = delete;

private:
	FRWLock& Lock;
};

/** Holds the write lock for the lifetime of the scope. */
class FWriteScopeLock
{
public:
	[[nodiscard]] explicit FWriteScopeLock(FRWLock& InLock)
		: Lock(InLock)
	{
		Lock.WriteLock();
	}

	~FWriteScopeLock() { Lock.WriteUnlock(); }

	FWriteScopeLock(const FWriteScopeLock&) = delete;
	FWriteScopeLock& operator=(const FWriteScopeLock&) = delete;

private:
	FRWLock& Lock;
};
