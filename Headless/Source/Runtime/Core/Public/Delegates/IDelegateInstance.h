// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class UObject;

/**
 * Identifies one binding of a delegate, so it can be removed from a multicast delegate later. A
 * default-constructed handle is invalid; each generated handle is unique in the process.
 */
class FDelegateHandle
{
public:
	enum EGenerateNewHandleType
	{
		GenerateNewHandle
	};

	/** An invalid handle. */
	FDelegateHandle()
		: ID(0)
	{
	}

	/** A handle with a new unique id. */
	explicit FDelegateHandle(EGenerateNewHandleType)
		: ID(GenerateNewID())
	{
	}

	/** True for a generated handle. */
	bool IsValid() const { return ID != 0; }

	/** Makes the handle invalid. */
	void Reset() { ID = 0; }

	friend bool operator==(const FDelegateHandle& Lhs, const FDelegateHandle& Rhs) { return Lhs.ID == Rhs.ID; }

	friend bool operator!=(const FDelegateHandle& Lhs, const FDelegateHandle& Rhs) { return Lhs.ID != Rhs.ID; }

	friend uint32 GetTypeHash(const FDelegateHandle& Key) { return (uint32)(Key.ID ^ (Key.ID >> 32)); }

private:
	/** Returns the next id; ids start at 1 and are never reused. Thread-safe. */
	static CORE_API uint64 GenerateNewID();

	uint64 ID;
};

/** What every delegate binding can tell about itself, whatever its signature. */
class IDelegateInstance
{
public:
	virtual ~IDelegateInstance() = default;

	/** The handle of this binding. */
	virtual FDelegateHandle GetHandle() const = 0;

	/** False once the object the binding depends on is gone (an expired shared or UObject owner). */
	virtual bool IsSafeToExecute() const = 0;

	/** True if the binding calls into, or is owned by, this object. */
	virtual bool HasSameObject(const void* InUserObject) const = 0;

	/** The UObject the binding is bound to, or null. */
	virtual UObject* GetUObject() const = 0;

	/** The object the binding is bound to, or null for lambdas and free functions. */
	virtual const void* GetObjectForTimerManager() const = 0;

	/** True if the binding can be dropped from a list because it can never execute again. */
	virtual bool IsCompactable() const { return !IsSafeToExecute(); }
};
