// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

class UObject;

/**
 * A reference that does not keep the object alive. It names the object by its slot in the object table
 * and that slot's serial number, so it turns null as soon as the object is marked as garbage or
 * destroyed, and never resolves to a later object reusing the slot.
 */
struct COREUOBJECT_API FWeakObjectPtr
{
	FWeakObjectPtr() = default;
	FWeakObjectPtr(TYPE_OF_NULLPTR) {}
	FWeakObjectPtr(const UObject* Object) { (*this) = Object; }
	FWeakObjectPtr(const FWeakObjectPtr&) = default;
	FWeakObjectPtr& operator=(const FWeakObjectPtr&) = default;

	void operator=(const UObject* Object);

	template <typename T>
	void operator=(const T* Object) requires(!std::is_same_v<T, UObject>)
	{
		(*this) = static_cast<const UObject*>(Object);
	}

	FORCEINLINE void Reset()
	{
		ObjectIndex = INDEX_NONE;
		ObjectSerialNumber = 0;
	}

	/** The object, or null if never set, reset, garbage or destroyed. */
	UObject* Get() const;

	/** As Get; with bEvenIfGarbage, also returns objects marked as garbage that still exist. */
	UObject* Get(bool bEvenIfGarbage) const;

	/** As Get, even for objects the garbage collector found unreachable but has not destroyed yet. */
	UObject* GetEvenIfUnreachable() const;

	FORCEINLINE bool IsValid() const { return Get() != nullptr; }
	bool IsValid(bool bEvenIfGarbage, bool bThreadsafeTest = false) const;

	/** True if the pointer was set to an object that is gone (or garbage, with bIncludingGarbage). */
	bool IsStale(bool bIncludingGarbage = true, bool bThreadsafeTest = false) const;

	/** True if the pointer was never set or was reset. */
	FORCEINLINE bool IsExplicitlyNull() const { return ObjectIndex == INDEX_NONE; }

	FORCEINLINE bool operator==(const FWeakObjectPtr& Other) const
	{
		return (ObjectIndex == Other.ObjectIndex && ObjectSerialNumber == Other.ObjectSerialNumber) ||
			   (!IsValid() && !Other.IsValid());
	}
	FORCEINLINE bool operator!=(const FWeakObjectPtr& Other) const { return !(*this == Other); }

	/** True if both name the same slot and serial (even if the object is gone). */
	FORCEINLINE bool HasSameIndexAndSerialNumber(const FWeakObjectPtr& Other) const
	{
		return ObjectIndex == Other.ObjectIndex && ObjectSerialNumber == Other.ObjectSerialNumber;
	}

	FORCEINLINE uint32 GetTypeHashValue() const { return (uint32)ObjectIndex ^ (uint32)ObjectSerialNumber; }

	friend FORCEINLINE uint32 GetTypeHash(const FWeakObjectPtr& WeakObjectPtr)
	{
		return WeakObjectPtr.GetTypeHashValue();
	}

	int32 GetObjectIndex_Private() const { return ObjectIndex; }
	int32 GetObjectSerialNumber_Private() const { return ObjectSerialNumber; }

private:
	UObject* Resolve(bool bEvenIfGarbage, bool bEvenIfUnreachable) const;

	int32 ObjectIndex = INDEX_NONE;
	int32 ObjectSerialNumber = 0;
};
