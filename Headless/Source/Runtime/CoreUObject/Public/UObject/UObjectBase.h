// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include <atomic>

class UClass;
class UObject;
class UPackage;

/**
 * The lowest level of every object: its class, name, outer, flags and slot in the global object table.
 * These are set by the object system while the object is being created, never by the constructor's caller.
 */
class COREUOBJECT_API UObjectBase
{
	friend class UObjectBaseUtility;
	friend struct FUObjectArrayAccess;

protected:
	/** Takes the class, name, outer and flags from the object system's construction of this object. */
	UObjectBase();

public:
	UObjectBase(const UObjectBase&) = delete;
	UObjectBase& operator=(const UObjectBase&) = delete;

	virtual ~UObjectBase();

	/** The object's class; never null for a live object. */
	FORCEINLINE UClass* GetClass() const { return ClassPrivate; }

	/** The object this one lives in; null only for packages. */
	FORCEINLINE UObject* GetOuter() const { return OuterPrivate; }

	FORCEINLINE FName GetFName() const { return NamePrivate; }

	FORCEINLINE EObjectFlags GetFlags() const { return (EObjectFlags)ObjectFlags.load(std::memory_order_relaxed); }

	/** The object's index in the global object table. */
	FORCEINLINE uint32 GetUniqueID() const { return (uint32)InternalIndex; }

	/** True if this pointer looks like a live object of the object table. */
	bool IsValidLowLevel() const;
	bool IsValidLowLevelFast(bool bRecursive = true) const;

protected:
	FORCEINLINE void AtomicallySetFlags(EObjectFlags FlagsToAdd)
	{
		ObjectFlags.fetch_or((uint32)FlagsToAdd, std::memory_order_relaxed);
	}

	FORCEINLINE void AtomicallyClearFlags(EObjectFlags FlagsToClear)
	{
		ObjectFlags.fetch_and(~(uint32)FlagsToClear, std::memory_order_relaxed);
	}

	FORCEINLINE void SetFlagsTo(EObjectFlags NewFlags)
	{
		ObjectFlags.store((uint32)NewFlags, std::memory_order_relaxed);
	}

private:
	std::atomic<uint32> ObjectFlags;
	int32 InternalIndex;
	UClass* ClassPrivate;
	FName NamePrivate;
	UObject* OuterPrivate;
};
