// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** True if no element converts to true. */
	template <typename RangeType>
	bool NoneOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (Element)
			{
				return false;
			}
		}
		return true;
	}

	/** True if the projection of no element is true. */
	template <typename RangeType, typename ProjectionType>
	bool NoneOf(const RangeType& Range, ProjectionType Projection)
	{
		for (const auto& Element : Range)
		{
			if (::Invoke(Projection, Element))
			{
				return false;
			}
		}
		return true;
	}
} // namespace Algo
