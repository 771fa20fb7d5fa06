// Copyright Orvane. All Rights Reserved.

#include "UObject/UObjectHash.h"

#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectIterator.h"

using namespace UE::CoreUObject::Private;

namespace
{
	bool IsLive(UObject* Object, EObjectFlags ExcludeFlags, EInternalObjectFlags ExclusionInternalFlags)
	{
		return !Object->HasAnyFlags(ExcludeFlags) &&
			   !Object->HasAnyInternalFlags(ExclusionInternalFlags | EInternalObjectFlags::Unreachable |
											EInternalObjectFlags::PendingConstruction);
	}
} // namespace

void ForEachObjectOfClass(const UClass* ClassToLookFor, TFunctionRef<void(UObject*)> Operation,
	bool bIncludeDerivedClasses, EObjectFlags ExcludeFlags, EInternalObjectFlags ExclusionInternalFlags)
{
	TArray<UObject*> Objects;
	GetObjectsOfClass(ClassToLookFor, Objects, bIncludeDerivedClasses, ExcludeFlags, ExclusionInternalFlags);
	for (UObject* Object : Objects)
	{
		Operation(Object);
	}
}

void GetObjectsOfClass(const UClass* ClassToLookFor, TArray<UObject*>& Results, bool bIncludeDerivedClasses,
	EObjectFlags ExcludeFlags, EInternalObjectFlags ExclusionInternalFlags)
{
	ProcessNewlyLoadedUObjects();
	GetObjectArray().ForEachObject(
		[&](FUObjectItem& Item)
		{
			UObject* Object = (UObject*)Item.Object;
			if (Object->GetClass() && IsObjectOfClass(Object, ClassToLookFor, !bIncludeDerivedClasses) &&
				IsLive(Object, ExcludeFlags, ExclusionInternalFlags))
			{
				Results.Add(Object);
			}
		});
}

void ForEachObjectWithOuter(const UObjectBase* Outer, TFunctionRef<void(UObject*)> Operation,
	bool bIncludeNestedObjects, EObjectFlags ExclusionFlags, EInternalObjectFlags ExclusionInternalFlags)
{
	TArray<UObject*> Objects;
	GetObjectsWithOuter(Outer, Objects, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags);
	for (UObject* Object : Objects)
	{
		Operation(Object);
	}
}

void GetObjectsWithOuter(const UObjectBase* Outer, TArray<UObject*>& Results, bool bIncludeNestedObjects,
	EObjectFlags ExclusionFlags, EInternalObjectFlags ExclusionInternalFlags)
{
	const int32 Start = Results.Num();
	if (const TArray<UObjectBase*>* Inners = GetObjectArray().FindInners(Outer))
	{
		for (UObjectBase* Inner : *Inners)
		{
			if (IsLive((UObject*)Inner, ExclusionFlags, ExclusionInternalFlags))
			{
				Results.Add((UObject*)Inner);
			}
		}
	}
	if (bIncludeNestedObjects)
	{
		const int32 End = Results.Num();
		for (int32 Index = Start; Index < End; ++Index)
		{
			GetObjectsWithOuter(Results[Index], Results, true, ExclusionFlags, ExclusionInternalFlags);
		}
	}
}

void GetObjectsWithPackage(const UPackage* Package, TArray<UObject*>& Results, bool bIncludeNestedObjects,
	EObjectFlags ExclusionFlags, EInternalObjectFlags ExclusionInternalFlags)
{
	GetObjectsWithOuter(Package, Results, bIncludeNestedObjects, ExclusionFlags, ExclusionInternalFlags);
}

UObject* FindObjectWithOuter(const UObjectBase* Outer, const UClass* ClassToLookFor, FName NameToLookFor)
{
	if (!NameToLookFor.IsNone())
	{
		return StaticFindObjectFast(const_cast<UClass*>(ClassToLookFor), (UObject*)Outer, NameToLookFor);
	}
	if (const TArray<UObjectBase*>* Inners = GetObjectArray().FindInners(Outer))
	{
		for (UObjectBase* Inner : *Inners)
		{
			if (IsObjectOfClass(Inner, ClassToLookFor, false) &&
				IsLive((UObject*)Inner, RF_NoFlags, EInternalObjectFlags::None))
			{
				return (UObject*)Inner;
			}
		}
	}
	return nullptr;
}

void GetDerivedClasses(const UClass* ClassToLookFor, TArray<UClass*>& Results, bool bRecursive)
{
	TArray<UObject*> Classes;
	GetObjectsOfClass(UClass::StaticClass(), Classes, true, RF_NoFlags);
	for (UObject* Object : Classes)
	{
		UClass* Class = (UClass*)Object;
		if (Class == ClassToLookFor)
		{
			continue;
		}
		if (bRecursive ? Class->IsChildOf(ClassToLookFor) : Class->GetSuperClass() == ClassToLookFor)
		{
			Results.Add(Class);
		}
	}
}

// ---------------------------------------------------------------------------------------------------
// FObjectIterator

FObjectIterator::FObjectIterator(UClass* InClass, bool bOnlyGCedObjects, EObjectFlags AdditionalExclusionFlags,
	EInternalObjectFlags InInternalExclusionFlags)
	: FObjectIterator(InClass, AdditionalExclusionFlags, InInternalExclusionFlags, true)
{
}

FObjectIterator::FObjectIterator(UClass* InClass, EObjectFlags AdditionalExclusionFlags,
	EInternalObjectFlags InInternalExclusionFlags, bool bIncludeDerivedClasses)
	: ExclusionFlags(AdditionalExclusionFlags)
{
	GetObjectsOfClass(InClass, Objects, bIncludeDerivedClasses, AdditionalExclusionFlags,
		InInternalExclusionFlags | EInternalObjectFlags::Garbage);
	Index = 0;
	while (Objects.IsValidIndex(Index) && !IsValid(Objects[Index]))
	{
		++Index;
	}
}

void FObjectIterator::Advance()
{
	++Index;
	// Objects collected or marked as garbage since the iterator was made are skipped.
	while (Objects.IsValidIndex(Index) && !IsValid(Objects[Index]))
	{
		++Index;
	}
}
