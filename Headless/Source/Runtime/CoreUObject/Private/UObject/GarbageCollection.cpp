// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/GCObject.h"
#include "UObject/StrongObjectPtr.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

namespace
{
	bool GIsCollecting = false;

	TArray<FGCObject*>& GCObjects()
	{
		static TArray<FGCObject*>* Objects = new TArray<FGCObject*>();
		return *Objects;
	}

	/** Marks what it is given as reachable and queues it; clears references to objects marked as garbage. */
	class FReachabilityCollector final : public FReferenceCollector
	{
	public:
		FReachabilityCollector(TArray<uint8>& InReachable, TArray<UObject*>& InQueue)
			: Reachable(InReachable)
			, Queue(InQueue)
		{
		}

		virtual void HandleObjectReference(
			UObject*& InObject, const UObject* InReferencingObject, const FProperty* InReferencingProperty) override
		{
			if (!InObject)
			{
				return;
			}
			FUObjectItem* Item = GetObjectArray().GetItem(InObject);
			if (!Item || Item->Object != InObject)
			{
				return;
			}
			if (bClearGarbageReferences && EnumHasAnyFlags(Item->Flags, EInternalObjectFlags::Garbage) &&
				!EnumHasAnyFlags(Item->Flags, EInternalObjectFlags::RootSet))
			{
				// Garbage is unreachable even when referenced: the reference is cleared.
				InObject = nullptr;
				return;
			}
			Mark(InObject);
		}

		void Mark(UObject* Object)
		{
			const int32 Index = (int32)Object->GetUniqueID();
			if (!Reachable[Index])
			{
				Reachable[Index] = 1;
				Queue.Add(Object);
			}
		}

		/** Outers and classes are followed even when they are garbage: they must outlive what is in them. */
		bool bClearGarbageReferences = true;

	private:
		TArray<uint8>& Reachable;
		TArray<UObject*>& Queue;
	};

	void CollectObjectReferences(UObject* Object, FReachabilityCollector& Collector)
	{
		Collector.bClearGarbageReferences = false;
		UObject* Outer = Object->GetOuter();
		Collector.HandleObjectReference(Outer, Object, nullptr);
		UObject* Class = (UObject*)Object->GetClass();
		Collector.HandleObjectReference(Class, Object, nullptr);
		Collector.bClearGarbageReferences = true;

		UClass* ObjectClass = Object->GetClass();
		ObjectClass->CollectReferences(Object, Collector, Object);
		if (ObjectClass->ClassAddReferencedObjects)
		{
			ObjectClass->ClassAddReferencedObjects(Object, Collector);
		}
		// Reflection objects keep what they describe alive.
		Collector.bClearGarbageReferences = false;
		if (UStruct* Struct = Cast<UStruct>(Object))
		{
			UObject* Super = Struct->GetSuperStruct();
			Collector.HandleObjectReference(Super, Object, nullptr);
			for (UField* Child = Struct->Children; Child; Child = Child->Next)
			{
				UObject* ChildObject = Child;
				Collector.HandleObjectReference(ChildObject, Object, nullptr);
			}
			if (UClass* AsClass = Cast<UClass>(Object))
			{
				UObject* Default = AsClass->ClassDefaultObject;
				Collector.HandleObjectReference(Default, Object, nullptr);
			}
		}
		Collector.bClearGarbageReferences = true;
	}
} // namespace

namespace UE::CoreUObject::Private
{
	void FreeObject(UObject* Object)
	{
		const int32 Index = (int32)Object->GetUniqueID();
		GetObjectArray().UnhashObject(Object);
		Object->~UObject();
		GetObjectArray().FreeSlot(Index);
		FMemory::Free(Object);
	}

	void DestroyObjectNow(UObject* Object)
	{
		Object->SetInternalFlags(EInternalObjectFlags::Unreachable);
		Object->ConditionalBeginDestroy();
		Object->ConditionalFinishDestroy();
		if (UClass* Class = Object->GetClass())
		{
			if (Class->ClassDefaultObject == Object)
			{
				Class->ClassDefaultObject = nullptr;
			}
		}
		FreeObject(Object);
	}
} // namespace UE::CoreUObject::Private

bool IsGarbageCollecting()
{
	return GIsCollecting;
}

void CollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge)
{
	const bool bCollected = TryCollectGarbage(KeepFlags, bPerformFullPurge);
	checkf(bCollected, TEXT("CollectGarbage cannot run while a garbage collection is running"));
}

bool TryCollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge)
{
	if (GIsCollecting)
	{
		return false;
	}
	ProcessNewlyLoadedUObjects();
	FCoreUObjectDelegates::GetPreGarbageCollectDelegate().Broadcast();
	GIsCollecting = true;

	FUObjectArray& Array = GetObjectArray();
	TArray<uint8> Reachable;
	Reachable.AddZeroed(Array.GetMaxIndex());
	TArray<UObject*> Queue;
	FReachabilityCollector Collector(Reachable, Queue);

	// Roots: the root set, compiled-in reflection data, objects under construction and objects with a keep flag.
	const EInternalObjectFlags RootInternalFlags =
		EInternalObjectFlags::RootSet | EInternalObjectFlags::Native | EInternalObjectFlags::PendingConstruction;
	Array.ForEachObject(
		[&](FUObjectItem& Item)
		{
			UObject* Object = (UObject*)Item.Object;
			const bool bGarbage = EnumHasAnyFlags(Item.Flags, EInternalObjectFlags::Garbage);
			if (EnumHasAnyFlags(Item.Flags, RootInternalFlags) ||
				(!bGarbage && KeepFlags != RF_NoFlags && Object->HasAnyFlags(KeepFlags)))
			{
				Collector.Mark(Object);
			}
		});
	for (FGCObject* Referencer : GCObjects())
	{
		Referencer->AddReferencedObjects(Collector);
	}

	while (Queue.Num() > 0)
	{
		UObject* Object = Queue.Pop();
		CollectObjectReferences(Object, Collector);
	}

	TArray<UObject*> Unreachable;
	Array.ForEachObject(
		[&](FUObjectItem& Item)
		{
			UObject* Object = (UObject*)Item.Object;
			if (!Reachable[(int32)Object->GetUniqueID()])
			{
				Item.Flags |= EInternalObjectFlags::Unreachable;
				Unreachable.Add(Object);
			}
		});

	for (UObject* Object : Unreachable)
	{
		Object->ConditionalBeginDestroy();
	}
	for (UObject* Object : Unreachable)
	{
		Object->ConditionalFinishDestroy();
	}
	// Instances go before the classes that describe them.
	for (UObject* Object : Unreachable)
	{
		if (UClass* Class = Object->GetClass())
		{
			if (Class->ClassDefaultObject == Object)
			{
				Class->ClassDefaultObject = nullptr;
			}
		}
	}
	TArray<UObject*> Structs;
	for (UObject* Object : Unreachable)
	{
		if (Object->IsA(UStruct::StaticClass()))
		{
			Structs.Add(Object);
		}
		else
		{
			FreeObject(Object);
		}
	}
	for (UObject* Object : Structs)
	{
		FreeObject(Object);
	}
	UE_LOG(LogGarbage, Verbose, TEXT("Garbage collection destroyed %d objects"), Unreachable.Num());

	GIsCollecting = false;
	FCoreUObjectDelegates::GetPostGarbageCollect().Broadcast();
	return true;
}

// ---------------------------------------------------------------------------------------------------
// FGCObject

FGCObject::FGCObject()
{
	GCObjects().Add(this);
}

FGCObject::FGCObject(const FGCObject& Other)
	: FGCObject()
{
}

FGCObject::FGCObject(FGCObject&& Other)
	: FGCObject()
{
}

FGCObject::~FGCObject()
{
	GCObjects().RemoveSingle(this);
}

void FGCObject::ForEachReferencer(TFunctionRef<void(FGCObject&)> Callback)
{
	for (FGCObject* Referencer : GCObjects())
	{
		Callback(*Referencer);
	}
}

namespace UE::CoreUObject::Private
{
	void FStrongObjectReferencer::AddReferencedObjects(FReferenceCollector& Collector)
	{
		Collector.AddReferencedObject(Object);
	}

	FString FStrongObjectReferencer::GetReferencerName() const
	{
		return TEXT("TStrongObjectPtr");
	}
} // namespace UE::CoreUObject::Private
