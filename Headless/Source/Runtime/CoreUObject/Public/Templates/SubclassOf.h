// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/ObjectPtr.h"

/** A class reference restricted to T and its subclasses; a class outside them reads as null. */
template <class T>
class TSubclassOf
{
	template <class U>
	friend class TSubclassOf;

public:
	using ElementType = T;

	TSubclassOf() = default;
	TSubclassOf(const TSubclassOf&) = default;
	TSubclassOf& operator=(const TSubclassOf&) = default;

	FORCEINLINE TSubclassOf(TYPE_OF_NULLPTR) {}

	FORCEINLINE TSubclassOf(UClass* From)
		: Class(From)
	{
	}

	template <class U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TSubclassOf(const TSubclassOf<U>& From)
		: Class(From.Class)
	{
	}

	FORCEINLINE TSubclassOf& operator=(UClass* From)
	{
		Class = From;
		return *this;
	}

	template <class U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TSubclassOf& operator=(const TSubclassOf<U>& From)
	{
		Class = From.Class;
		return *this;
	}

	/** The class, or null if it is not T or a subclass of T. */
	FORCEINLINE UClass* Get() const
	{
		UClass* Result = Class;
		if (!Result || !Result->IsChildOf(T::StaticClass()))
		{
			return nullptr;
		}
		return Result;
	}

	FORCEINLINE UClass* operator*() const { return Get(); }
	FORCEINLINE UClass* operator->() const { return Get(); }
	FORCEINLINE operator UClass*() const { return Get(); }

	/** The class default object of the class, as a T. */
	FORCEINLINE T* GetDefaultObject() const
	{
		UClass* Result = Get();
		return Result ? (T*)Result->GetDefaultObject() : nullptr;
	}

	friend FORCEINLINE uint32 GetTypeHash(const TSubclassOf& SubclassOf)
	{
		return GetTypeHash((const void*)SubclassOf.Class);
	}

private:
	UClass* Class = nullptr;
};
