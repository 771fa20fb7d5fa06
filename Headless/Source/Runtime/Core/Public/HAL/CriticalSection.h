// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <mutex>
#include <shared_mutex>

/**
 * A mutual-exclusion lock. It is recursive: the thread that holds it may lock it again and must unlock
 * it as many times.
 */
class FCriticalSection
{
public:
	FCriticalSection() = default;
	FCriticalSection(const FCriticalSection&) = delete;
	FCriticalSection& operator=(const FCriticalSection&) = delete;

	/** Blocks until the calling thread holds the lock. */
	FORCEINLINE void Lock() { Mutex.lock(); }

	/** Takes the lock if it is free or already held by the calling thread; returns whether it did. */
	FORCEINLINE bool TryLock() { return Mutex.try_lock(); }

	/** Releases one level of the lock. */
	FORCEINLINE void Unlock() { Mutex.unlock(); }

private:
	std::recursive_mutex Mutex;
};

/** A lock shared by readers and exclusive for a writer. Not recursive. */
class FRWLock
{
public:
	FRWLock() = default;
	explicit FRWLock(uint32 /*Level*/) {}
	FRWLock(const FRWLock&) = delete;
	FRWLock& operator=(const FRWLock&) = delete;

	FORCEINLINE void ReadLock() { Mutex.lock_shared(); }

	FORCEINLINE void WriteLock() { Mutex.lock(); }

	FORCEINLINE bool TryReadLock() { return Mutex.try_lock_shared(); }

	FORCEINLINE bool TryWriteLock() { return Mutex.try_lock(); }

	FORCEINLINE void ReadUnlock() { Mutex.unlock_shared(); }

	FORCEINLINE void WriteUnlock() { Mutex.unlock(); }

private:
	std::shared_mutex Mutex;
};
