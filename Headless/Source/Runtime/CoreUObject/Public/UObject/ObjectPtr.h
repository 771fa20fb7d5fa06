// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include <type_traits>

class UObject;

/**
 * A reference to an object held by a UPROPERTY. In an editor build it behaves like the raw pointer it
 * wraps: same size, implicit conversions both ways, comparison by address.
 */
template <typename T>
class TObjectPtr
{
public:
	using ElementType = T;

	TObjectPtr() = default;
	TObjectPtr(const TObjectPtr&) = default;
	TObjectPtr& operator=(const TObjectPtr&) = default;

	FORCEINLINE TObjectPtr(TYPE_OF_NULLPTR)
		: Ptr(nullptr)
	{
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TObjectPtr(U* Object)
		: Ptr(Object)
	{
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TObjectPtr(const TObjectPtr<U>& Other)
		: Ptr(Other.Get())
	{
	}

	FORCEINLINE TObjectPtr& operator=(TYPE_OF_NULLPTR)
	{
		Ptr = nullptr;
		return *this;
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TObjectPtr& operator=(U* Object)
	{
		Ptr = Object;
		return *this;
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TObjectPtr& operator=(const TObjectPtr<U>& Other)
	{
		Ptr = Other.Get();
		return *this;
	}

	FORCEINLINE T* Get() const { return Ptr; }
	FORCEINLINE operator T*() const { return Ptr; }
	template <typename U>
	requires(!std::is_same_v<U, T> && std::is_convertible_v<T*, U*>) explicit FORCEINLINE operator U*() const
	{
		return Ptr;
	}
	FORCEINLINE T* operator->() const { return Ptr; }
	FORCEINLINE T& operator*() const { return *Ptr; }
	FORCEINLINE explicit operator bool() const { return Ptr != nullptr; }
	FORCEINLINE bool operator!() const { return Ptr == nullptr; }

	template <typename U>
	FORCEINLINE bool operator==(const TObjectPtr<U>& Other) const
	{
		return (const void*)Ptr == (const void*)Other.Get();
	}
	template <typename U>
	FORCEINLINE bool operator==(U* Other) const
	{
		return (const void*)Ptr == (const void*)Other;
	}
	FORCEINLINE bool operator==(TYPE_OF_NULLPTR) const { return Ptr == nullptr; }

	friend FORCEINLINE uint32 GetTypeHash(const TObjectPtr& Object) { return GetTypeHash((const void*)Object.Ptr); }

private:
	T* Ptr = nullptr;
};

template <typename T>
FORCEINLINE T* ToRawPtr(const TObjectPtr<T>& Ptr)
{
	return Ptr.Get();
}

template <typename T>
FORCEINLINE T* ToRawPtr(T* Ptr)
{
	return Ptr;
}

template <typename T>
FORCEINLINE TArray<T*>& ToRawPtrTArrayUnsafe(TArray<TObjectPtr<T>>& Array)
{
	static_assert(sizeof(TObjectPtr<T>) == sizeof(T*));
	return reinterpret_cast<TArray<T*>&>(Array);
}

template <typename T>
FORCEINLINE TObjectPtr<T> MakeObjectPtrUnsafe(UObject* Object)
{
	return TObjectPtr<T>((T*)Object);
}

template <typename T>
struct TIsTObjectPtr
{
	static constexpr bool Value = false;
};

template <typename T>
struct TIsTObjectPtr<TObjectPtr<T>>
{
	static constexpr bool Value = true;
};
