// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectPtr.h"
#include "UObject/WeakObjectPtr.h"
#include "UObject/WeakObjectPtrTemplatesFwd.h"

#include <type_traits>

/** A typed weak object pointer. */
template <class T, class TWeakObjectPtrBase>
struct TWeakObjectPtr : private TWeakObjectPtrBase
{
	template <class, class>
	friend struct TWeakObjectPtr;

public:
	using ElementType = T;

	TWeakObjectPtr() = default;
	TWeakObjectPtr(const TWeakObjectPtr&) = default;
	TWeakObjectPtr& operator=(const TWeakObjectPtr&) = default;

	FORCEINLINE TWeakObjectPtr(TYPE_OF_NULLPTR)
		: TWeakObjectPtrBase(nullptr)
	{
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr(U* Object)
		: TWeakObjectPtrBase(static_cast<const UObject*>(static_cast<const T*>(Object)))
	{
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr(const TObjectPtr<U>& Object)
		: TWeakObjectPtrBase(static_cast<const UObject*>(static_cast<const T*>(Object.Get())))
	{
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr(
		const TWeakObjectPtr<U, TWeakObjectPtrBase>& Other)
		: TWeakObjectPtrBase(*(const TWeakObjectPtrBase*)&Other)
	{
	}

	FORCEINLINE void Reset() { TWeakObjectPtrBase::Reset(); }

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr& operator=(U* Object)
	{
		TWeakObjectPtrBase::operator=(static_cast<const UObject*>(static_cast<const T*>(Object)));
		return *this;
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr& operator=(const TObjectPtr<U>& Object)
	{
		TWeakObjectPtrBase::operator=(static_cast<const UObject*>(static_cast<const T*>(Object.Get())));
		return *this;
	}

	template <typename U>
	requires std::is_convertible_v<U*, T*> FORCEINLINE TWeakObjectPtr& operator=(
		const TWeakObjectPtr<U, TWeakObjectPtrBase>& Other)
	{
		*(TWeakObjectPtrBase*)this = *(const TWeakObjectPtrBase*)&Other;
		return *this;
	}

	FORCEINLINE TWeakObjectPtr& operator=(TYPE_OF_NULLPTR)
	{
		Reset();
		return *this;
	}

	FORCEINLINE T* Get(bool bEvenIfPendingKill) const { return (T*)TWeakObjectPtrBase::Get(bEvenIfPendingKill); }
	FORCEINLINE T* Get() const { return (T*)TWeakObjectPtrBase::Get(); }
	FORCEINLINE T* GetEvenIfUnreachable() const { return (T*)TWeakObjectPtrBase::GetEvenIfUnreachable(); }

	FORCEINLINE T& operator*() const { return *Get(); }
	FORCEINLINE T* operator->() const { return Get(); }

	FORCEINLINE bool IsValid(bool bEvenIfPendingKill, bool bThreadsafeTest = false) const
	{
		return TWeakObjectPtrBase::IsValid(bEvenIfPendingKill, bThreadsafeTest);
	}
	FORCEINLINE bool IsValid() const { return TWeakObjectPtrBase::IsValid(); }
	FORCEINLINE bool IsStale(bool bIncludingIfPendingKill = true, bool bThreadsafeTest = false) const
	{
		return TWeakObjectPtrBase::IsStale(bIncludingIfPendingKill, bThreadsafeTest);
	}
	FORCEINLINE bool IsExplicitlyNull() const { return TWeakObjectPtrBase::IsExplicitlyNull(); }

	FORCEINLINE explicit operator bool() const { return TWeakObjectPtrBase::IsValid(); }

	FORCEINLINE bool HasSameIndexAndSerialNumber(const TWeakObjectPtr& Other) const
	{
		return TWeakObjectPtrBase::HasSameIndexAndSerialNumber(Other);
	}

	template <class U>
	FORCEINLINE bool operator==(const TWeakObjectPtr<U, TWeakObjectPtrBase>& Rhs) const
	{
		return (const TWeakObjectPtrBase&)*this == (const TWeakObjectPtrBase&)Rhs;
	}
	template <class U>
	FORCEINLINE bool operator!=(const TWeakObjectPtr<U, TWeakObjectPtrBase>& Rhs) const
	{
		return !(*this == Rhs);
	}
	template <class U>
	FORCEINLINE bool operator==(const U* Rhs) const
	{
		return Get() == Rhs;
	}
	FORCEINLINE bool operator==(TYPE_OF_NULLPTR) const { return !IsValid(); }

	FORCEINLINE uint32 GetWeakPtrTypeHash() const { return TWeakObjectPtrBase::GetTypeHashValue(); }

	friend FORCEINLINE uint32 GetTypeHash(const TWeakObjectPtr& WeakObjectPtr)
	{
		return WeakObjectPtr.GetWeakPtrTypeHash();
	}
};

template <typename T>
FORCEINLINE TWeakObjectPtr<T> MakeWeakObjectPtr(T* Object)
{
	return TWeakObjectPtr<T>(Object);
}

template <typename T>
struct TIsWeakPointerType
{
	static constexpr bool Value = false;
};

template <typename T, typename U>
struct TIsWeakPointerType<TWeakObjectPtr<T, U>>
{
	static constexpr bool Value = true;
};
