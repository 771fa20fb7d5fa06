// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** True if every element converts to true (and for an empty range). */
	template <typename RangeType>
	bool AllOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (!Element)
			{
				return false;
			}
		}
		return true;
	}

	/** True if the projection of every element is true (and for an empty range). */
	template <typename RangeType, typename ProjectionType>
	bool AllOf(const RangeType& Range, ProjectionType Projection)
	{
		for (const auto& Element : Range)
		{
			if (!::Invoke(Projection, Element))
			{
				return false;
			}
		}
		return true;
	}
} // namespace Algo
