// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** True if any element converts to true. */
	template <typename RangeType>
	bool AnyOf(const RangeType& Range)
	{
		for (const auto& Element : Range)
		{
			if (Element)
			{
				return true;
			}
		}
		return false;
	}

	/** True if the projection of any element is true. */
	template <typename RangeType, typename ProjectionType>
	bool AnyOf(const RangeType& Range, ProjectionType Projection)
	{
		for (const auto& Element : Range)
		{
			if (::Invoke(Projection, Element))
			{
				return true;
			}
		}
		return false;
	}
} // namespace Algo
