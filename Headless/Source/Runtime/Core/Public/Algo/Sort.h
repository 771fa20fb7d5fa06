// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"
#include "Templates/Less.h"
#include "Templates/UnrealTemplate.h"

#include <algorithm>

namespace Algo
{
	/** Sorts a contiguous range with operator<. Not stable. */
	template <typename RangeType>
	void Sort(RangeType&& Range)
	{
		auto* Data = GetData(Range);
		std::sort(Data, Data + GetNum(Range), TLess<>());
	}

	template <typename RangeType, typename PredicateType>
	void Sort(RangeType&& Range, PredicateType Predicate)
	{
		auto* Data = GetData(Range);
		std::sort(Data, Data + GetNum(Range),
			[&Predicate](const auto& A, const auto& B)
			{
				return Predicate(A, B);
			});
	}

	/** Sorts by a projection of the elements (a member pointer or callable). */
	template <typename RangeType, typename ProjectionType>
	void SortBy(RangeType&& Range, ProjectionType Proj)
	{
		auto* Data = GetData(Range);
		std::sort(Data, Data + GetNum(Range),
			[&Proj](const auto& A, const auto& B)
			{
				return ::Invoke(Proj, A) < ::Invoke(Proj, B);
			});
	}

	template <typename RangeType, typename ProjectionType, typename PredicateType>
	void SortBy(RangeType&& Range, ProjectionType Proj, PredicateType Predicate)
	{
		auto* Data = GetData(Range);
		std::sort(Data, Data + GetNum(Range),
			[&Proj, &Predicate](const auto& A, const auto& B)
			{
				return Predicate(::Invoke(Proj, A), ::Invoke(Proj, B));
			});
	}

	/** Sorts keeping equal elements in their original order. */
	template <typename RangeType>
	void StableSort(RangeType&& Range)
	{
		auto* Data = GetData(Range);
		std::stable_sort(Data, Data + GetNum(Range), TLess<>());
	}

	template <typename RangeType, typename PredicateType>
	void StableSort(RangeType&& Range, PredicateType Predicate)
	{
		auto* Data = GetData(Range);
		std::stable_sort(Data, Data + GetNum(Range),
			[&Predicate](const auto& A, const auto& B)
			{
				return Predicate(A, B);
			});
	}

	template <typename RangeType, typename ProjectionType>
	void StableSortBy(RangeType&& Range, ProjectionType Proj)
	{
		auto* Data = GetData(Range);
		std::stable_sort(Data, Data + GetNum(Range),
			[&Proj](const auto& A, const auto& B)
			{
				return ::Invoke(Proj, A) < ::Invoke(Proj, B);
			});
	}
} // namespace Algo
