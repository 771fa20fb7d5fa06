// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectPtr.h"

class UClass;
class UObject;

namespace ECastCheckedType
{
	enum Type
	{
		NullAllowed,
		NullChecked
	};
}

/** True if Object is of Class or a subclass; out of line so this header needs no complete UObject. */
COREUOBJECT_API bool CastIsA(const UObject* Object, const UClass* Class);

/** True if Object's class is exactly Class. */
COREUOBJECT_API bool CastIsExactly(const UObject* Object, const UClass* Class);

/** Reports a failed CastChecked; fatal. */
COREUOBJECT_API void CastLogError(const UObject* From, const UClass* ToClass);

/** The object as a To, or null if it is null or not a To. */
template <typename To, typename From>
FORCEINLINE To* Cast(From* Src)
{
	if (Src && CastIsA(static_cast<const UObject*>(Src), To::StaticClass()))
	{
		return (To*)Src;
	}
	return nullptr;
}

template <typename To, typename From>
FORCEINLINE const To* Cast(const From* Src)
{
	if (Src && CastIsA(static_cast<const UObject*>(Src), To::StaticClass()))
	{
		return (const To*)Src;
	}
	return nullptr;
}

template <typename To, typename From>
FORCEINLINE To* Cast(const TObjectPtr<From>& Src)
{
	return Cast<To>(Src.Get());
}

/** The object as a To if its class is exactly To's class. */
template <typename To, typename From>
FORCEINLINE To* ExactCast(From* Src)
{
	return Src && CastIsExactly(static_cast<const UObject*>(Src), To::StaticClass()) ? (To*)Src : nullptr;
}

template <typename To, typename From>
FORCEINLINE To* ExactCast(const TObjectPtr<From>& Src)
{
	return ExactCast<To>(Src.Get());
}

/** The object as a To; fatal if it is not one (or, with NullChecked, if it is null). */
template <typename To, typename From>
FORCEINLINE To* CastChecked(From* Src, ECastCheckedType::Type CheckType = ECastCheckedType::NullChecked)
{
	if (Src)
	{
		To* Result = Cast<To>(Src);
		if (!Result)
		{
			CastLogError(static_cast<const UObject*>(Src), To::StaticClass());
		}
		return Result;
	}
	if (CheckType == ECastCheckedType::NullChecked)
	{
		CastLogError(nullptr, To::StaticClass());
	}
	return nullptr;
}

template <typename To, typename From>
FORCEINLINE const To* CastChecked(const From* Src, ECastCheckedType::Type CheckType = ECastCheckedType::NullChecked)
{
	return CastChecked<To>(const_cast<From*>(Src), CheckType);
}

template <typename To, typename From>
FORCEINLINE To* CastChecked(
	const TObjectPtr<From>& Src, ECastCheckedType::Type CheckType = ECastCheckedType::NullChecked)
{
	return CastChecked<To>(Src.Get(), CheckType);
}
