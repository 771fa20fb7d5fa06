// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** Number of elements equal to Value. */
	template <typename InT, typename ValueType>
	SIZE_T Count(const InT& Input, const ValueType& Value)
	{
		SIZE_T Result = 0;
		for (const auto& Element : Input)
		{
			if (Element == Value)
			{
				++Result;
			}
		}
		return Result;
	}

	/** Number of elements matching the predicate. */
	template <typename InT, typename PredicateType>
	SIZE_T CountIf(const InT& Input, PredicateType Predicate)
	{
		SIZE_T Result = 0;
		for (const auto& Element : Input)
		{
			if (::Invoke(Predicate, Element))
			{
				++Result;
			}
		}
		return Result;
	}
} // namespace Algo
