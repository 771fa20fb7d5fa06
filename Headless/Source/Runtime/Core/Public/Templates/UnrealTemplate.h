// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "HAL/UnrealMemory.h"
#include "Templates/UnrealTypeTraits.h"

#include <type_traits>
#include <utility>

/** Tag asking a wrapper to construct its value in place from the following arguments. */
enum EInPlace
{
	InPlace
};

/** Casts to an rvalue; refuses const objects and rvalues, where a move would silently copy or do nothing. */
template <typename T>
FORCEINLINE std::remove_reference_t<T>&& MoveTemp(T&& Obj)
{
	typedef std::remove_reference_t<T> CastType;
	static_assert(std::is_lvalue_reference_v<T>, "MoveTemp called on an rvalue");
	static_assert(!std::is_const_v<CastType>, "MoveTemp called on a const object");
	return static_cast<CastType&&>(Obj);
}

/** Like MoveTemp, but quietly accepts const objects and rvalues (used in generic code). */
template <typename T>
FORCEINLINE std::remove_reference_t<T>&& MoveTempIfPossible(T&& Obj)
{
	return static_cast<std::remove_reference_t<T>&&>(Obj);
}

/** Makes a copy of an lvalue, or passes an rvalue through as a prvalue. */
template <typename T>
FORCEINLINE T CopyTemp(T& Val)
{
	return const_cast<const T&>(Val);
}

template <typename T>
FORCEINLINE T CopyTemp(const T& Val)
{
	return Val;
}

template <typename T>
FORCEINLINE T&& CopyTemp(T&& Val)
{
	return MoveTemp(Val);
}

template <typename T>
FORCEINLINE T&& Forward(std::remove_reference_t<T>& Obj)
{
	return static_cast<T&&>(Obj);
}

template <typename T>
FORCEINLINE T&& Forward(std::remove_reference_t<T>&& Obj)
{
	return static_cast<T&&>(Obj);
}

/** Swaps two values by moving them. */
template <typename T>
inline void Swap(T& A, T& B)
{
	T Temp = MoveTemp(A);
	A = MoveTemp(B);
	B = MoveTemp(Temp);
}

/** Same as Swap; kept for code written against the older name. */
template <typename T>
inline void Exchange(T& A, T& B)
{
	Swap(A, B);
}

/** Assigns a new value and returns the old one. */
template <typename T, typename U = T>
inline T Exchange(T& Obj, U&& NewValue)
{
	T OldValue = MoveTemp(Obj);
	Obj = Forward<U>(NewValue);
	return OldValue;
}

template <typename T>
FORCEINLINE constexpr const T& AsConst(T& Ref)
{
	return Ref;
}

template <typename T>
FORCEINLINE T* IfAThenAElseB(T* A, T* B)
{
	return A ? A : B;
}

template <typename T, size_t N>
constexpr SIZE_T GetNum(T (&)[N])
{
	return N;
}

template <typename T, size_t N>
constexpr T* GetData(T (&Container)[N])
{
	return Container;
}

/** Disables copying of a class. */
class FNoncopyable
{
protected:
	FNoncopyable() = default;
	~FNoncopyable() = default;

private:
	FNoncopyable(const FNoncopyable&) = delete;
	FNoncopyable& operator=(const FNoncopyable&) = delete;
};

/** Restores a variable's value when the guard goes out of scope. */
template <typename RefType, typename AssignedType = RefType>
struct TGuardValue : private FNoncopyable
{
	TGuardValue(RefType& ReferenceValue, const AssignedType& NewValue)
		: RefValue(ReferenceValue)
		, OriginalValue(ReferenceValue)
	{
		RefValue = NewValue;
	}

	~TGuardValue() { RefValue = OriginalValue; }

	const AssignedType& GetOriginalValue() const { return OriginalValue; }

private:
	RefType& RefValue;
	AssignedType OriginalValue;
};

/** Returns the value by dereferencing a pointer, or the value itself; used to sort arrays of pointers by pointee. */
template <typename T, typename PredicateType>
class TDereferenceWrapper
{
	const PredicateType& Predicate;

public:
	TDereferenceWrapper(const PredicateType& InPredicate)
		: Predicate(InPredicate)
	{
	}

	FORCEINLINE bool operator()(T& A, T& B) { return Predicate(A, B); }
	FORCEINLINE bool operator()(const T& A, const T& B) const { return Predicate(A, B); }
};

template <typename T, typename PredicateType>
class TDereferenceWrapper<T*, PredicateType>
{
	const PredicateType& Predicate;

public:
	TDereferenceWrapper(const PredicateType& InPredicate)
		: Predicate(InPredicate)
	{
	}

	FORCEINLINE bool operator()(T* A, T* B) const { return Predicate(*A, *B); }
};
