// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"

DEFINE_LOG_CATEGORY(LogUObjectGlobals);
DEFINE_LOG_CATEGORY(LogGarbage);
DEFINE_LOG_CATEGORY(LogClass);

int32 FUObjectArray::AllocateSlot(UObjectBase* Object)
{
	int32 Index;
	if (FreeIndices.Num() > 0)
	{
		Index = FreeIndices.Pop();
	}
	else
	{
		Index = Items.AddDefaulted();
	}
	FUObjectItem& Item = Items[Index];
	Item.Object = Object;
	Item.Flags = EInternalObjectFlags::None;
	// Serial numbers are never reused, so a weak pointer to an earlier object in this slot stays null.
	Item.SerialNumber = NextSerialNumber++;
	return Index;
}

void FUObjectArray::FreeSlot(int32 Index)
{
	FUObjectItem& Item = Items[Index];
	Item.Object = nullptr;
	Item.SerialNumber = 0;
	Item.Flags = EInternalObjectFlags::None;
	FreeIndices.Add(Index);
}

void FUObjectArray::HashObject(UObjectBase* Object)
{
	NameHash.FindOrAdd(Object->GetFName()).Add(Object);
	if (UObject* Outer = Object->GetOuter())
	{
		OuterHash.FindOrAdd((UObjectBase*)Outer).Add(Object);
	}
}

void FUObjectArray::UnhashObject(UObjectBase* Object)
{
	if (TArray<UObjectBase*>* Named = NameHash.Find(Object->GetFName()))
	{
		Named->RemoveSingle(Object);
		if (Named->Num() == 0)
		{
			NameHash.Remove(Object->GetFName());
		}
	}
	if (UObject* Outer = Object->GetOuter())
	{
		if (TArray<UObjectBase*>* Inners = OuterHash.Find((UObjectBase*)Outer))
		{
			Inners->RemoveSingle(Object);
			if (Inners->Num() == 0)
			{
				OuterHash.Remove((UObjectBase*)Outer);
			}
		}
	}
}

namespace UE::CoreUObject::Private
{
	FUObjectArray& GetObjectArray()
	{
		// Never destroyed: objects may still be released while the process shuts down.
		static FUObjectArray* Array = new FUObjectArray();
		return *Array;
	}

	static thread_local FObjectConstructionRecord* GPendingConstruction = nullptr;

	void SetPendingConstruction(FObjectConstructionRecord* Record)
	{
		GPendingConstruction = Record;
	}

	FObjectConstructionRecord* TakePendingConstruction(void* Memory)
	{
		FObjectConstructionRecord* Record = GPendingConstruction;
		checkf(Record && Record->Memory == Memory,
			TEXT("Objects must be created with NewObject (or the object system's other creation functions)."));
		GPendingConstruction = nullptr;
		return Record;
	}
} // namespace UE::CoreUObject::Private

UObjectBase::UObjectBase()
{
	FObjectConstructionRecord* Record = UE::CoreUObject::Private::TakePendingConstruction(this);
	ObjectFlags.store((uint32)Record->Flags, std::memory_order_relaxed);
	InternalIndex = Record->Index;
	ClassPrivate = Record->Class;
	NamePrivate = Record->Name;
	OuterPrivate = Record->Outer;
	if (Record->bHash)
	{
		UE::CoreUObject::Private::GetObjectArray().HashObject(this);
	}
}

UObjectBase::~UObjectBase() = default;

bool UObjectBase::IsValidLowLevel() const
{
	FUObjectItem* Item = UE::CoreUObject::Private::GetObjectArray().GetItem(InternalIndex);
	return Item && Item->Object == this && ClassPrivate != nullptr;
}

bool UObjectBase::IsValidLowLevelFast(bool bRecursive) const
{
	return IsValidLowLevel();
}
