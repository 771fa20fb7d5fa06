// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** Pointer to the first element equal to Value, or null. */
	template <typename RangeType, typename ValueType>
	auto Find(RangeType&& Range, const ValueType& Value) -> decltype(&*Range.begin())
	{
		for (auto& Element : Range)
		{
			if (Element == Value)
			{
				return &Element;
			}
		}
		return nullptr;
	}

	/** Pointer to the first element whose projection equals Value, or null. */
	template <typename RangeType, typename ValueType, typename ProjectionType>
	auto FindBy(RangeType&& Range, const ValueType& Value, ProjectionType Proj) -> decltype(&*Range.begin())
	{
		for (auto& Element : Range)
		{
			if (::Invoke(Proj, Element) == Value)
			{
				return &Element;
			}
		}
		return nullptr;
	}

	/** Pointer to the first element matching the predicate, or null. */
	template <typename RangeType, typename PredicateType>
	auto FindByPredicate(RangeType&& Range, PredicateType Pred) -> decltype(&*Range.begin())
	{
		for (auto& Element : Range)
		{
			if (::Invoke(Pred, Element))
			{
				return &Element;
			}
		}
		return nullptr;
	}

	/** Pointer to the last element equal to Value in a contiguous range, or null. */
	template <typename RangeType, typename ValueType>
	auto FindLast(RangeType&& Range, const ValueType& Value) -> decltype(GetData(Range))
	{
		auto* Data = GetData(Range);
		for (auto Index = GetNum(Range); Index > 0; --Index)
		{
			if (Data[Index - 1] == Value)
			{
				return Data + Index - 1;
			}
		}
		return nullptr;
	}
} // namespace Algo
