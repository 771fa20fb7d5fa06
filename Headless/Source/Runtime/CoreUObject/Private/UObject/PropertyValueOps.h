// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

// Properties whose C++ type is known only through an operation table (maps, sets, soft pointers)
// construct, destroy and copy their ArrayDim elements the same way.
namespace UE::CoreUObject::Private
{
	template <typename OpsType>
	void ConstructValues(const OpsType& Ops, void* Dest, int32 Count, int32 ElementSize)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Ops.Construct((uint8*)Dest + Index * ElementSize);
		}
	}

	template <typename OpsType>
	void DestructValues(const OpsType& Ops, void* Dest, int32 Count, int32 ElementSize)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Ops.Destruct((uint8*)Dest + Index * ElementSize);
		}
	}

	template <typename OpsType>
	void CopyValues(const OpsType& Ops, void* Dest, const void* Src, int32 Count, int32 ElementSize)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Ops.Copy((uint8*)Dest + Index * ElementSize, (const uint8*)Src + Index * ElementSize);
		}
	}
} // namespace UE::CoreUObject::Private
