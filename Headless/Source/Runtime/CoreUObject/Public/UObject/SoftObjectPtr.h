// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "UObject/SoftObjectPath.h"

#include <type_traits>

class UClass;
class UObject;

namespace UE::SoftObjectPtr::Private
{
	/** Object when it is an instance of Class (or of a child of it), otherwise null. */
	COREUOBJECT_API UObject* CastToClass(UObject* Object, const UClass* Class);

	/** Object when it is a class that is BaseClass or a child of it, otherwise null. */
	COREUOBJECT_API UClass* CastToSubclassOf(UObject* Object, const UClass* BaseClass);
} // namespace UE::SoftObjectPtr::Private

/**
 * A soft reference to an object: its path, resolved to the object while it is in memory. Holding one
 * never keeps the object alive or loads it; LoadSynchronous loads it.
 */
struct FSoftObjectPtr
{
	FSoftObjectPtr() = default;
	FSoftObjectPtr(const FSoftObjectPtr&) = default;
	FSoftObjectPtr(FSoftObjectPtr&&) = default;
	FSoftObjectPtr& operator=(const FSoftObjectPtr&) = default;
	FSoftObjectPtr& operator=(FSoftObjectPtr&&) = default;

	FSoftObjectPtr(decltype(nullptr)) {}

	explicit FSoftObjectPtr(const FSoftObjectPath& ObjectPath)
		: ObjectPathPrivate(ObjectPath)
	{
	}

	/** Refers to an object in memory by its path. */
	explicit FSoftObjectPtr(const UObject* Object)
		: ObjectPathPrivate(Object)
	{
	}

	FSoftObjectPtr& operator=(decltype(nullptr))
	{
		Reset();
		return *this;
	}

	FSoftObjectPtr& operator=(const FSoftObjectPath& ObjectPath)
	{
		ObjectPathPrivate = ObjectPath;
		return *this;
	}

	FSoftObjectPtr& operator=(const UObject* Object)
	{
		ObjectPathPrivate = FSoftObjectPath(Object);
		return *this;
	}

	void Reset() { ObjectPathPrivate.Reset(); }

	/** The object if it is in memory (and not being destroyed); never loads. */
	COREUOBJECT_API UObject* Get() const;

	/** The object, loaded if needed; null for a null path or a missing object. */
	COREUOBJECT_API UObject* LoadSynchronous() const;

	const FSoftObjectPath& ToSoftObjectPath() const { return ObjectPathPrivate; }
	const FSoftObjectPath& GetUniqueID() const { return ObjectPathPrivate; }

	FString ToString() const { return ObjectPathPrivate.ToString(); }
	FString GetLongPackageName() const { return ObjectPathPrivate.GetLongPackageName(); }
	FString GetAssetName() const { return ObjectPathPrivate.GetAssetName(); }

	/** Whether the path is set and the object is in memory. */
	bool IsValid() const { return Get() != nullptr; }

	/** Whether the path is set but the object is not in memory. */
	bool IsPending() const { return !IsNull() && Get() == nullptr; }

	/** Whether no path is set. */
	bool IsNull() const { return ObjectPathPrivate.IsNull(); }

	explicit operator bool() const { return IsValid(); }

	bool operator==(const FSoftObjectPtr& Other) const { return ObjectPathPrivate == Other.ObjectPathPrivate; }
	bool operator!=(const FSoftObjectPtr& Other) const { return !(*this == Other); }
	bool operator==(decltype(nullptr)) const { return IsNull(); }
	bool operator!=(decltype(nullptr)) const { return !IsNull(); }

	friend uint32 GetTypeHash(const FSoftObjectPtr& Ptr) { return GetTypeHash(Ptr.ObjectPathPrivate); }

private:
	FSoftObjectPath ObjectPathPrivate;
};

/** A soft reference to an object of class T (see FSoftObjectPtr). */
template <class T = UObject>
struct TSoftObjectPtr
{
	template <class U>
	friend struct TSoftObjectPtr;

	TSoftObjectPtr() = default;
	TSoftObjectPtr(const TSoftObjectPtr&) = default;
	TSoftObjectPtr(TSoftObjectPtr&&) = default;
	TSoftObjectPtr& operator=(const TSoftObjectPtr&) = default;
	TSoftObjectPtr& operator=(TSoftObjectPtr&&) = default;

	TSoftObjectPtr(decltype(nullptr)) {}

	template <class U>
	requires std::is_convertible_v<U*, T*> TSoftObjectPtr(const TSoftObjectPtr<U>& Other)
		: SoftObjectPtr(Other.SoftObjectPtr)
	{
	}

	/** Refers to an object in memory by its path. */
	template <class U>
	requires std::is_convertible_v<const U*, const T*> TSoftObjectPtr(const U* Object)
		: SoftObjectPtr(static_cast<const UObject*>(static_cast<const T*>(Object)))
	{
	}

	explicit TSoftObjectPtr(const FSoftObjectPath& ObjectPath)
		: SoftObjectPtr(ObjectPath)
	{
	}

	TSoftObjectPtr& operator=(decltype(nullptr))
	{
		Reset();
		return *this;
	}

	template <class U>
	requires std::is_convertible_v<const U*, const T*> TSoftObjectPtr& operator=(const U* Object)
	{
		SoftObjectPtr = static_cast<const UObject*>(static_cast<const T*>(Object));
		return *this;
	}

	template <class U>
	requires std::is_convertible_v<U*, T*> TSoftObjectPtr& operator=(const TSoftObjectPtr<U>& Other)
	{
		SoftObjectPtr = Other.SoftObjectPtr;
		return *this;
	}

	void Reset() { SoftObjectPtr.Reset(); }

	/** The object if it is in memory and is a T; never loads. */
	T* Get() const
	{
		return static_cast<T*>(UE::SoftObjectPtr::Private::CastToClass(SoftObjectPtr.Get(), T::StaticClass()));
	}

	T& operator*() const { return *Get(); }
	T* operator->() const { return Get(); }

	/** The object, loaded if needed; null for a null path, a missing object or one that is not a T. */
	T* LoadSynchronous() const
	{
		return static_cast<T*>(
			UE::SoftObjectPtr::Private::CastToClass(SoftObjectPtr.LoadSynchronous(), T::StaticClass()));
	}

	/** Whether the path is set and a T is in memory there. */
	bool IsValid() const { return Get() != nullptr; }

	/** Whether the path is set but the object is not in memory. */
	bool IsPending() const { return SoftObjectPtr.IsPending(); }

	/** Whether no path is set. */
	bool IsNull() const { return SoftObjectPtr.IsNull(); }

	explicit operator bool() const { return IsValid(); }

	const FSoftObjectPath& ToSoftObjectPath() const { return SoftObjectPtr.ToSoftObjectPath(); }
	const FSoftObjectPath& GetUniqueID() const { return SoftObjectPtr.GetUniqueID(); }
	FString ToString() const { return SoftObjectPtr.ToString(); }
	FString GetLongPackageName() const { return SoftObjectPtr.GetLongPackageName(); }
	FString GetAssetName() const { return SoftObjectPtr.GetAssetName(); }

	template <class U>
	bool operator==(const TSoftObjectPtr<U>& Other) const
	{
		return SoftObjectPtr == Other.SoftObjectPtr;
	}

	template <class U>
	bool operator!=(const TSoftObjectPtr<U>& Other) const
	{
		return !(*this == Other);
	}

	bool operator==(decltype(nullptr)) const { return IsNull(); }
	bool operator!=(decltype(nullptr)) const { return !IsNull(); }

	friend uint32 GetTypeHash(const TSoftObjectPtr& Ptr) { return GetTypeHash(Ptr.SoftObjectPtr); }

private:
	FSoftObjectPtr SoftObjectPtr;
};

/** Makes a soft pointer to an object in memory. */
template <class T>
TSoftObjectPtr<T> MakeSoftObjectPtr(T* Object)
{
	return TSoftObjectPtr<T>(Object);
}

/** A soft reference to a class that is TClass or a child of it. */
template <class TClass = UObject>
struct TSoftClassPtr
{
	template <class U>
	friend struct TSoftClassPtr;

	TSoftClassPtr() = default;
	TSoftClassPtr(const TSoftClassPtr&) = default;
	TSoftClassPtr(TSoftClassPtr&&) = default;
	TSoftClassPtr& operator=(const TSoftClassPtr&) = default;
	TSoftClassPtr& operator=(TSoftClassPtr&&) = default;

	TSoftClassPtr(decltype(nullptr)) {}

	template <class U>
	requires std::is_convertible_v<U*, TClass*> TSoftClassPtr(const TSoftClassPtr<U>& Other)
		: SoftObjectPtr(Other.SoftObjectPtr)
	{
	}

	/** Refers to a class in memory by its path. */
	TSoftClassPtr(const UClass* From)
		: SoftObjectPtr(static_cast<const FSoftObjectPath&>(FSoftClassPath(From)))
	{
	}

	explicit TSoftClassPtr(const FSoftObjectPath& ObjectPath)
		: SoftObjectPtr(ObjectPath)
	{
	}

	TSoftClassPtr& operator=(decltype(nullptr))
	{
		Reset();
		return *this;
	}

	TSoftClassPtr& operator=(const UClass* From)
	{
		SoftObjectPtr = static_cast<const FSoftObjectPath&>(FSoftClassPath(From));
		return *this;
	}

	void Reset() { SoftObjectPtr.Reset(); }

	/** The class if it is in memory and is TClass or a child of it; never loads. */
	UClass* Get() const
	{
		return UE::SoftObjectPtr::Private::CastToSubclassOf(SoftObjectPtr.Get(), TClass::StaticClass());
	}

	UClass& operator*() const { return *Get(); }
	UClass* operator->() const { return Get(); }

	/** The class, loaded if needed; null for a null path, a missing class or one that is not a TClass. */
	UClass* LoadSynchronous() const
	{
		return UE::SoftObjectPtr::Private::CastToSubclassOf(SoftObjectPtr.LoadSynchronous(), TClass::StaticClass());
	}

	bool IsValid() const { return Get() != nullptr; }
	bool IsPending() const { return SoftObjectPtr.IsPending(); }
	bool IsNull() const { return SoftObjectPtr.IsNull(); }
	explicit operator bool() const { return IsValid(); }

	const FSoftObjectPath& ToSoftObjectPath() const { return SoftObjectPtr.ToSoftObjectPath(); }
	const FSoftObjectPath& GetUniqueID() const { return SoftObjectPtr.GetUniqueID(); }
	FString ToString() const { return SoftObjectPtr.ToString(); }
	FString GetLongPackageName() const { return SoftObjectPtr.GetLongPackageName(); }
	FString GetAssetName() const { return SoftObjectPtr.GetAssetName(); }

	template <class U>
	bool operator==(const TSoftClassPtr<U>& Other) const
	{
		return SoftObjectPtr == Other.SoftObjectPtr;
	}

	template <class U>
	bool operator!=(const TSoftClassPtr<U>& Other) const
	{
		return !(*this == Other);
	}

	bool operator==(decltype(nullptr)) const { return IsNull(); }
	bool operator!=(decltype(nullptr)) const { return !IsNull(); }

	friend uint32 GetTypeHash(const TSoftClassPtr& Ptr) { return GetTypeHash(Ptr.SoftObjectPtr); }

private:
	FSoftObjectPtr SoftObjectPtr;
};
