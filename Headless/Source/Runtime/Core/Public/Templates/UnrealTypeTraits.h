// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <type_traits>

/** True for types that can be copied with memcpy and need no constructor or destructor. */
template <typename T>
struct TIsPODType
{
	static constexpr bool Value = std::is_trivially_copyable_v<T> && std::is_trivially_default_constructible_v<T>;
};

template <typename T>
struct TIsTriviallyDestructible
{
	enum
	{
		Value = std::is_trivially_destructible_v<T>
	};
};

template <typename T>
struct TIsTriviallyCopyConstructible
{
	static constexpr bool Value = std::is_trivially_copy_constructible_v<T>;
};

template <typename T>
struct TIsTriviallyCopyAssignable
{
	static constexpr bool Value = std::is_trivially_copy_assignable_v<T>;
};

/** True when a value of T may be moved in memory with memcpy, leaving no dangling self-references. */
template <typename T>
struct TIsBitwiseRelocatable
{
	static constexpr bool Value = std::is_trivially_copyable_v<T>;
};

/** True for types whose all-zero bit pattern is a valid default value. */
template <typename T>
struct TIsZeroConstructType
{
	static constexpr bool Value = std::is_enum_v<T> || std::is_arithmetic_v<T> || std::is_pointer_v<T>;
};

template <typename T>
struct TIsEnum
{
	static constexpr bool Value = std::is_enum_v<T>;
};

template <typename T>
struct TIsArithmetic
{
	static constexpr bool Value = std::is_arithmetic_v<T>;
};

template <typename T>
struct TIsIntegral
{
	static constexpr bool Value = std::is_integral_v<T>;
};

template <typename T>
struct TIsFloatingPoint
{
	static constexpr bool Value = std::is_floating_point_v<T>;
};

template <typename T>
struct TIsPointer
{
	static constexpr bool Value = std::is_pointer_v<T>;
};

template <typename A, typename B>
struct TIsSame
{
	static constexpr bool Value = std::is_same_v<A, B>;
};

template <typename From, typename To>
struct TIsDerivedFrom
{
	static constexpr bool Value = std::is_base_of_v<To, From>;
	static constexpr bool IsDerived = Value;
};

template <typename T>
struct TIsConst
{
	static constexpr bool Value = std::is_const_v<T>;
};

template <typename T>
struct TIsReferenceType
{
	static constexpr bool Value = std::is_reference_v<T>;
};

template <typename T>
struct TIsLValueReferenceType
{
	static constexpr bool Value = std::is_lvalue_reference_v<T>;
};

template <typename T>
struct TIsRValueReferenceType
{
	static constexpr bool Value = std::is_rvalue_reference_v<T>;
};

template <typename T>
struct TRemoveReference
{
	typedef std::remove_reference_t<T> Type;
};

template <typename T>
struct TRemoveCV
{
	typedef std::remove_cv_t<T> Type;
};

template <typename T>
struct TRemovePointer
{
	typedef std::remove_pointer_t<T> Type;
};

template <typename T>
struct TDecay
{
	typedef std::decay_t<T> Type;
};

template <bool bCondition, typename TrueType, typename FalseType>
struct TChooseClass
{
	typedef std::conditional_t<bCondition, TrueType, FalseType> Result;
};

template <bool bPredicate, typename Result = void>
struct TEnableIf
{
};

template <typename Result>
struct TEnableIf<true, Result>
{
	typedef Result Type;
};

template <typename T>
struct TIsFundamentalType
{
	static constexpr bool Value = std::is_fundamental_v<T>;
};

/** Chooses how a type is passed as a parameter: small trivially copyable types by value, others by const reference. */
template <typename T>
struct TCallTraits
{
	typedef std::conditional_t<std::is_arithmetic_v<T> || std::is_pointer_v<T> || std::is_enum_v<T>, const T, const T&>
		ParamType;
	typedef const T& ConstReference;
	typedef T& Reference;
	typedef T ValueType;
	typedef ParamType ConstPointerType;
};

/** Describes how a type is stored and compared in containers. */
template <typename T>
struct TTypeTraits
{
	typedef typename TCallTraits<T>::ParamType ConstInitType;
	typedef typename TCallTraits<T>::ParamType ConstPointerType;
	static constexpr bool IsBytewiseComparable = std::is_enum_v<T> || std::is_arithmetic_v<T> || std::is_pointer_v<T>;
};

/** Marks a type as a contiguous container: TArray, TArrayView and the like specialise this. */
template <typename T>
struct TIsContiguousContainer
{
	static constexpr bool Value = false;
};

template <typename T>
struct TIsContiguousContainer<const T> : TIsContiguousContainer<T>
{
};

template <typename T>
struct TIsContiguousContainer<T&> : TIsContiguousContainer<T>
{
};

template <typename T, size_t N>
struct TIsContiguousContainer<T[N]>
{
	static constexpr bool Value = true;
};

/** True for TArray specialisations. */
template <typename T>
struct TIsTArray
{
	static constexpr bool Value = false;
};
