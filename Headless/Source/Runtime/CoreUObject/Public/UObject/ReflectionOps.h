// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/UnrealType.h"

// Operation tables that let map, set and soft reference properties handle values of a native type they
// do not know. The generated code instantiates them for the member's type; code that builds properties
// at run time picks the instantiation for the value type it stores.

namespace UE::CoreUObject::Private
{
	template <typename MapType>
	struct TMapOps
	{
		using KeyType = typename MapType::KeyType;
		using ValueType = typename MapType::ValueType;

		static void Construct(void* Map) { ::new (Map) MapType(); }
		static void Destruct(void* Map) { ((MapType*)Map)->~MapType(); }
		static void Copy(void* Dest, const void* Src) { *(MapType*)Dest = *(const MapType*)Src; }
		static int32 Num(const void* Map) { return ((const MapType*)Map)->Num(); }
		static void GetPairs(const void* Map, TArray<TPair<void*, void*>>& OutPairs)
		{
			for (auto& Pair : *(MapType*)Map)
			{
				OutPairs.Add(TPair<void*, void*>((void*)&Pair.Key, (void*)&Pair.Value));
			}
		}
		static void* FindValue(const void* Map, const void* Key)
		{
			return (void*)((MapType*)Map)->Find(*(const KeyType*)Key);
		}
		static void* FindOrAddValue(void* Map, const void* Key)
		{
			return (void*)&((MapType*)Map)->FindOrAdd(*(const KeyType*)Key);
		}
		static bool Remove(void* Map, const void* Key) { return ((MapType*)Map)->Remove(*(const KeyType*)Key) > 0; }
		static void Empty(void* Map) { ((MapType*)Map)->Empty(); }

		static inline const FScriptMapOps Ops = {(int32)sizeof(MapType), (int32)alignof(MapType), &Construct, &Destruct,
			&Copy, &Num, &GetPairs, &FindValue, &FindOrAddValue, &Remove, &Empty};
	};

	template <typename SetType>
	struct TSetOps
	{
		using ElementType = typename SetType::ElementType;

		static void Construct(void* Set) { ::new (Set) SetType(); }
		static void Destruct(void* Set) { ((SetType*)Set)->~SetType(); }
		static void Copy(void* Dest, const void* Src) { *(SetType*)Dest = *(const SetType*)Src; }
		static int32 Num(const void* Set) { return ((const SetType*)Set)->Num(); }
		static void GetElements(const void* Set, TArray<void*>& OutElements)
		{
			for (auto& Element : *(SetType*)Set)
			{
				OutElements.Add((void*)&Element);
			}
		}
		static void* Find(const void* Set, const void* Element)
		{
			return (void*)((SetType*)Set)->Find(*(const ElementType*)Element);
		}
		static void* Add(void* Set, const void* Element)
		{
			return (void*)&((SetType*)Set)->FindOrAdd(*(const ElementType*)Element);
		}
		static bool Remove(void* Set, const void* Element)
		{
			return ((SetType*)Set)->Remove(*(const ElementType*)Element) > 0;
		}
		static void Empty(void* Set) { ((SetType*)Set)->Empty(); }

		static inline const FScriptSetOps Ops = {(int32)sizeof(SetType), (int32)alignof(SetType), &Construct, &Destruct,
			&Copy, &Num, &GetElements, &Find, &Add, &Remove, &Empty};
	};

	/** Operations of a soft reference type (TSoftObjectPtr<T>, TSoftClassPtr<T>, FSoftObjectPtr). */
	template <typename SoftPtrType>
	struct TSoftObjectValueOps
	{
		static void Construct(void* Value) { ::new (Value) SoftPtrType(); }
		static void Destruct(void* Value) { ((SoftPtrType*)Value)->~SoftPtrType(); }
		static void Copy(void* Dest, const void* Src) { *(SoftPtrType*)Dest = *(const SoftPtrType*)Src; }
		static bool Identical(const void* A, const void* B)
		{
			return ((const SoftPtrType*)A)->ToString() == ((const SoftPtrType*)B)->ToString();
		}
		static FString ToString(const void* Value) { return ((const SoftPtrType*)Value)->ToString(); }
		static void SetPath(void* Value, const FString& Path)
		{
			using FPathType = std::decay_t<decltype(((const SoftPtrType*)Value)->ToSoftObjectPath())>;
			if (Path.IsEmpty())
			{
				((SoftPtrType*)Value)->Reset();
			}
			else
			{
				*(SoftPtrType*)Value = SoftPtrType(FPathType(Path));
			}
		}
		static UObject* Get(const void* Value) { return (UObject*)((const SoftPtrType*)Value)->Get(); }
		static void SetObject(void* Value, UObject* Object)
		{
			using FPathType = std::decay_t<decltype(((const SoftPtrType*)Value)->ToSoftObjectPath())>;
			if (Object == nullptr)
			{
				((SoftPtrType*)Value)->Reset();
			}
			else
			{
				*(SoftPtrType*)Value = SoftPtrType(FPathType(Object));
			}
		}
		static uint32 Hash(const void* Value) { return GetTypeHash(((const SoftPtrType*)Value)->ToString()); }

		static inline const FSoftObjectValueOps Ops = {(int32)sizeof(SoftPtrType), (int32)alignof(SoftPtrType),
			&Construct, &Destruct, &Copy, &Identical, &ToString, &SetPath, &Get, &SetObject, &Hash};
	};
} // namespace UE::CoreUObject::Private
