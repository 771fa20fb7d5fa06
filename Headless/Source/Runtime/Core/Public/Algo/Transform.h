// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"

namespace Algo
{
	/** Adds Trans(Element) to Output for every element of Input. */
	template <typename InT, typename OutT, typename TransformT>
	void Transform(const InT& Input, OutT&& Output, TransformT Trans)
	{
		for (const auto& Element : Input)
		{
			Output.Add(::Invoke(Trans, Element));
		}
	}

	/** Adds Trans(Element) to Output for every element of Input matching the predicate. */
	template <typename InT, typename OutT, typename PredicateT, typename TransformT>
	void TransformIf(const InT& Input, OutT&& Output, PredicateT Predicate, TransformT Trans)
	{
		for (const auto& Element : Input)
		{
			if (::Invoke(Predicate, Element))
			{
				Output.Add(::Invoke(Trans, Element));
			}
		}
	}
} // namespace Algo
