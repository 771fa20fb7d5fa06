// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/UnrealTemplate.h"

namespace Algo
{
	/** Reverses Num elements starting at Array. */
	template <typename T>
	void Reverse(T* Array, int32 ArraySize)
	{
		for (int32 Index = 0, Last = ArraySize - 1; Index < Last; ++Index, --Last)
		{
			::Swap(Array[Index], Array[Last]);
		}
	}

	/** Reverses a contiguous range in place. */
	template <typename ContainerType>
	void Reverse(ContainerType& Container)
	{
		Reverse(GetData(Container), static_cast<int32>(GetNum(Container)));
	}
} // namespace Algo
