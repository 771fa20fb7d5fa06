// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/UObjectBase.h"

DECLARE_LOG_CATEGORY_EXTERN(LogUObjectGlobals, Log, All);
DECLARE_LOG_CATEGORY_EXTERN(LogGarbage, Log, All);
DECLARE_LOG_CATEGORY_EXTERN(LogClass, Log, All);

/** One slot of the global object table. */
struct FUObjectItem
{
	UObjectBase* Object = nullptr;

	/** Identifies this use of the slot; weak pointers compare it. Zero for a free slot. */
	int32 SerialNumber = 0;

	EInternalObjectFlags Flags = EInternalObjectFlags::None;
};

/** What the object system knows about an object before its constructor runs. */
struct FObjectConstructionRecord
{
	void* Memory = nullptr;
	UClass* Class = nullptr;
	UObject* Outer = nullptr;
	FName Name;
	EObjectFlags Flags = RF_NoFlags;
	int32 Index = INDEX_NONE;
	/** False while registering compiled-in classes: their outer is set afterwards. */
	bool bHash = true;
};

/** Reaches into UObjectBase for the object system itself. */
struct FUObjectArrayAccess
{
	static void SetClass(UObjectBase* Object, UClass* Class) { Object->ClassPrivate = Class; }
	static void SetOuter(UObjectBase* Object, UObject* Outer) { Object->OuterPrivate = Outer; }
	static void SetName(UObjectBase* Object, FName Name) { Object->NamePrivate = Name; }
	static int32 GetIndex(const UObjectBase* Object) { return Object->InternalIndex; }
	static void SetIndex(UObjectBase* Object, int32 Index) { Object->InternalIndex = Index; }
	static void SetFlagsTo(UObjectBase* Object, EObjectFlags Flags) { Object->SetFlagsTo(Flags); }
	static void SetFlags(UObjectBase* Object, EObjectFlags Flags) { Object->AtomicallySetFlags(Flags); }
	static void ClearFlags(UObjectBase* Object, EObjectFlags Flags) { Object->AtomicallyClearFlags(Flags); }
};

/** The global object table: slots with serial numbers, plus the name and outer indexes. */
class FUObjectArray
{
public:
	int32 AllocateSlot(UObjectBase* Object);
	void FreeSlot(int32 Index);

	FUObjectItem* GetItem(int32 Index) { return Index >= 0 && Index < Items.Num() ? &Items[Index] : nullptr; }
	FUObjectItem* GetItem(const UObjectBase* Object) { return GetItem(FUObjectArrayAccess::GetIndex(Object)); }

	int32 GetMaxIndex() const { return Items.Num(); }

	void HashObject(UObjectBase* Object);
	void UnhashObject(UObjectBase* Object);

	/** Objects with this name (any outer). */
	const TArray<UObjectBase*>* FindByName(FName Name) const { return NameHash.Find(Name); }

	/** Objects directly inside Outer. */
	const TArray<UObjectBase*>* FindInners(const UObjectBase* Outer) const
	{
		return OuterHash.Find(const_cast<UObjectBase*>(Outer));
	}

	/** Every live object. */
	template <typename FunctionType>
	void ForEachObject(FunctionType&& Function)
	{
		for (int32 Index = 0; Index < Items.Num(); ++Index)
		{
			if (Items[Index].Object)
			{
				Function(Items[Index]);
			}
		}
	}

private:
	TArray<FUObjectItem> Items;
	TArray<int32> FreeIndices;
	int32 NextSerialNumber = 1;
	TMap<FName, TArray<UObjectBase*>> NameHash;
	TMap<UObjectBase*, TArray<UObjectBase*>> OuterHash;
};

namespace UE::CoreUObject::Private
{
	FUObjectArray& GetObjectArray();

	/** The record the next UObjectBase constructor takes its identity from. */
	void SetPendingConstruction(FObjectConstructionRecord* Record);

	/** Destroys an object the caller has taken out of use: BeginDestroy, FinishDestroy, destructor, free. */
	void DestroyObjectNow(UObject* Object);

	/** Runs the destructor of an object and gives its slot and memory back. */
	void FreeObject(UObject* Object);

	/** Constructs the properties a non-native class adds after its native parent. */
	void InitializeNonNativeProperties(UObject* Object);
	void DestroyNonNativeProperties(UObject* Object);

	/** True while compiled-in types are being registered. */
	bool IsRegisteringCompiledInTypes();

	/** The "/Script/<Module>" package of compiled-in types, created on first use. */
	UPackage* FindOrCreateScriptPackage(const TCHAR* PackageName);

	/** Splits "/Pkg/Path.Obj:Sub.Sub2" into its object names ("/Pkg/Path", "Obj", "Sub", "Sub2"). */
	void SplitObjectPath(const FString& Path, TArray<FString>& OutNames);

	/** True if Object is of Class (exactly, when bExactClass). */
	bool IsObjectOfClass(const UObjectBase* Object, const UClass* Class, bool bExactClass);
} // namespace UE::CoreUObject::Private
