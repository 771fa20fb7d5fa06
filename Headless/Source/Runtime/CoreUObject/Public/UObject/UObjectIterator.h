// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/UObjectHash.h"

/**
 * Visits the live objects of a class. The set of objects is taken when the iterator is made; objects
 * marked as garbage or being destroyed are skipped.
 */
class COREUOBJECT_API FObjectIterator
{
public:
	explicit FObjectIterator(UClass* InClass = UObject::StaticClass(), bool bOnlyGCedObjects = false,
		EObjectFlags AdditionalExclusionFlags = RF_NoFlags,
		EInternalObjectFlags InInternalExclusionFlags = EInternalObjectFlags::None);

	FORCEINLINE void operator++() { Advance(); }
	FORCEINLINE explicit operator bool() const { return Objects.IsValidIndex(Index); }
	FORCEINLINE bool operator!() const { return !(bool)*this; }
	FORCEINLINE UObject* operator*() const { return Objects[Index]; }
	FORCEINLINE UObject* operator->() const { return Objects[Index]; }

protected:
	FObjectIterator(UClass* InClass, EObjectFlags AdditionalExclusionFlags,
		EInternalObjectFlags InInternalExclusionFlags, bool bIncludeDerivedClasses);

	void Advance();

	TArray<UObject*> Objects;
	int32 Index = 0;
	EObjectFlags ExclusionFlags = RF_NoFlags;
};

/** Visits the live objects of class T (and its subclasses); class default objects are skipped by default. */
template <class T>
class TObjectIterator : public FObjectIterator
{
public:
	explicit TObjectIterator(EObjectFlags AdditionalExclusionFlags = RF_ClassDefaultObject,
		bool bIncludeDerivedClasses = true, EInternalObjectFlags InInternalExclusionFlags = EInternalObjectFlags::None)
		: FObjectIterator(T::StaticClass(), AdditionalExclusionFlags, InInternalExclusionFlags, bIncludeDerivedClasses)
	{
	}

	FORCEINLINE T* operator*() const { return (T*)FObjectIterator::operator*(); }
	FORCEINLINE T* operator->() const { return (T*)FObjectIterator::operator->(); }
};

/** Range-for adaptor of TObjectIterator. */
template <class T>
class TObjectRange
{
public:
	explicit TObjectRange(EObjectFlags AdditionalExclusionFlags = RF_ClassDefaultObject,
		bool bIncludeDerivedClasses = true, EInternalObjectFlags InInternalExclusionFlags = EInternalObjectFlags::None)
		: It(AdditionalExclusionFlags, bIncludeDerivedClasses, InInternalExclusionFlags)
	{
	}

	struct FSentinel
	{
	};

	struct FIterator
	{
		TObjectIterator<T>& It;
		T* operator*() const { return *It; }
		void operator++() { ++It; }
		bool operator!=(FSentinel) const { return (bool)It; }
	};

	FIterator begin() { return FIterator{It}; }
	FSentinel end() { return FSentinel(); }

private:
	TObjectIterator<T> It;
};
