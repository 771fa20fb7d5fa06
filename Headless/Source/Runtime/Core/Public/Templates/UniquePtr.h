// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <cstddef>
#include <type_traits>
#include <utility>

/** Deletes with delete, or delete[] for array types. */
template <typename T>
struct TDefaultDelete
{
	TDefaultDelete() = default;
	template <typename U>
	requires(std::is_convertible_v<U*, T*>) TDefaultDelete(const TDefaultDelete<U>&) {}
	void operator()(T* Ptr) const { delete Ptr; }
};

template <typename T>
struct TDefaultDelete<T[]>
{
	void operator()(T* Ptr) const { delete[] Ptr; }
};

/** Sole owner of an object; destroys it when the pointer is destroyed or reset. Move-only. */
template <typename T, typename Deleter = TDefaultDelete<T>>
class TUniquePtr : private Deleter
{
	template <typename, typename>
	friend class TUniquePtr;

public:
	using ElementType = T;

	TUniquePtr() = default;
	TUniquePtr(std::nullptr_t) {}
	explicit TUniquePtr(T* InPtr)
		: Ptr(InPtr)
	{
	}
	TUniquePtr(T* InPtr, const Deleter& InDeleter)
		: Deleter(InDeleter)
		, Ptr(InPtr)
	{
	}
	TUniquePtr(TUniquePtr&& Other) noexcept
		: Deleter(std::move(Other.GetDeleter()))
		, Ptr(Other.Ptr)
	{
		Other.Ptr = nullptr;
	}
	template <typename OtherT, typename OtherDeleter>
	requires(std::is_convertible_v<OtherT*, T*> && !std::is_array_v<OtherT>)
		TUniquePtr(TUniquePtr<OtherT, OtherDeleter>&& Other)
		: Deleter(std::move(Other.GetDeleter()))
		, Ptr(Other.Ptr)
	{
		Other.Ptr = nullptr;
	}
	TUniquePtr(const TUniquePtr&) = delete;
	TUniquePtr& operator=(const TUniquePtr&) = delete;

	TUniquePtr& operator=(TUniquePtr&& Other) noexcept
	{
		if (this != &Other)
		{
			Reset(Other.Release());
			GetDeleter() = std::move(Other.GetDeleter());
		}
		return *this;
	}
	template <typename OtherT, typename OtherDeleter>
	requires(std::is_convertible_v<OtherT*, T*> && !std::is_array_v<OtherT>) TUniquePtr& operator=(
		TUniquePtr<OtherT, OtherDeleter>&& Other)
	{
		Reset(Other.Release());
		GetDeleter() = std::move(Other.GetDeleter());
		return *this;
	}
	TUniquePtr& operator=(std::nullptr_t)
	{
		Reset();
		return *this;
	}

	~TUniquePtr() { Reset(); }

	bool IsValid() const { return Ptr != nullptr; }
	explicit operator bool() const { return Ptr != nullptr; }
	T* Get() const { return Ptr; }
	T* operator->() const { return Ptr; }
	T& operator*() const { return *Ptr; }

	/** Gives up ownership without destroying the object, and returns it. */
	[[nodiscard]] T* Release()
	{
		T* Result = Ptr;
		Ptr = nullptr;
		return Result;
	}

	/** Destroys the owned object (if any) and takes ownership of InPtr. */
	void Reset(T* InPtr = nullptr)
	{
		if (Ptr != InPtr)
		{
			T* Old = Ptr;
			Ptr = InPtr;
			if (Old)
			{
				GetDeleter()(Old);
			}
		}
	}

	Deleter& GetDeleter() { return static_cast<Deleter&>(*this); }
	const Deleter& GetDeleter() const { return static_cast<const Deleter&>(*this); }

private:
	T* Ptr = nullptr;
};

/** Sole owner of an array allocated with new[]. */
template <typename T, typename Deleter>
class TUniquePtr<T[], Deleter> : private Deleter
{
public:
	using ElementType = T;

	TUniquePtr() = default;
	TUniquePtr(std::nullptr_t) {}
	explicit TUniquePtr(T* InPtr)
		: Ptr(InPtr)
	{
	}
	TUniquePtr(TUniquePtr&& Other) noexcept
		: Deleter(std::move(Other.GetDeleter()))
		, Ptr(Other.Ptr)
	{
		Other.Ptr = nullptr;
	}
	TUniquePtr(const TUniquePtr&) = delete;
	TUniquePtr& operator=(const TUniquePtr&) = delete;
	TUniquePtr& operator=(TUniquePtr&& Other) noexcept
	{
		if (this != &Other)
		{
			Reset(Other.Release());
		}
		return *this;
	}
	TUniquePtr& operator=(std::nullptr_t)
	{
		Reset();
		return *this;
	}
	~TUniquePtr() { Reset(); }

	bool IsValid() const { return Ptr != nullptr; }
	explicit operator bool() const { return Ptr != nullptr; }
	T* Get() const { return Ptr; }
	T& operator[](SIZE_T Index) const { return Ptr[Index]; }
	[[nodiscard]] T* Release()
	{
		T* Result = Ptr;
		Ptr = nullptr;
		return Result;
	}
	void Reset(T* InPtr = nullptr)
	{
		if (Ptr != InPtr)
		{
			T* Old = Ptr;
			Ptr = InPtr;
			if (Old)
			{
				GetDeleter()(Old);
			}
		}
	}
	Deleter& GetDeleter() { return static_cast<Deleter&>(*this); }

private:
	T* Ptr = nullptr;
};

template <typename LhsT, typename LhsDeleter, typename RhsT, typename RhsDeleter>
bool operator==(const TUniquePtr<LhsT, LhsDeleter>& Lhs, const TUniquePtr<RhsT, RhsDeleter>& Rhs)
{
	return Lhs.Get() == Rhs.Get();
}

template <typename T, typename Deleter>
bool operator==(const TUniquePtr<T, Deleter>& Lhs, std::nullptr_t)
{
	return !Lhs.IsValid();
}

template <typename T, typename Deleter>
uint32 GetTypeHash(const TUniquePtr<T, Deleter>& Ptr)
{
	return ::PointerHash(Ptr.Get());
}

/** Constructs an object owned by a new unique pointer. */
template <typename T, typename... ArgTypes>
requires(!std::is_array_v<T>) [[nodiscard]] TUniquePtr<T> MakeUnique(ArgTypes&&... Args)
{
	return TUniquePtr<T>(new T(std::forward<ArgTypes>(Args)...));
}

/** Allocates a value-initialised array owned by a new unique pointer. */
template <typename T>
requires(std::is_unbounded_array_v<T>) [[nodiscard]] TUniquePtr<T> MakeUnique(SIZE_T Size)
{
	using ElementType = std::remove_extent_t<T>;
	return TUniquePtr<T>(new ElementType[Size]());
}
