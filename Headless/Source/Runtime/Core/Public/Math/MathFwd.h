// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

// Forward declarations of the math types. The engine's large-world build stores positions as double;
// the "3f"/"4f" aliases are the single-precision variants.
namespace UE::Math
{
	template <typename T>
	struct TVector;
	template <typename T>
	struct TVector2;
	template <typename T>
	struct TVector4;
	template <typename T>
	struct TRotator;
	template <typename T>
	struct TQuat;
	template <typename T>
	struct TTransform;
	template <typename T>
	struct TIntPoint;
	template <typename T>
	struct TIntVector3;
} // namespace UE::Math

using FVector = UE::Math::TVector<double>;
using FVector3d = UE::Math::TVector<double>;
using FVector3f = UE::Math::TVector<float>;
using FVector2D = UE::Math::TVector2<double>;
using FVector2d = UE::Math::TVector2<double>;
using FVector2f = UE::Math::TVector2<float>;
using FVector4 = UE::Math::TVector4<double>;
using FVector4d = UE::Math::TVector4<double>;
using FVector4f = UE::Math::TVector4<float>;
using FRotator = UE::Math::TRotator<double>;
using FRotator3d = UE::Math::TRotator<double>;
using FRotator3f = UE::Math::TRotator<float>;
using FQuat = UE::Math::TQuat<double>;
using FQuat4d = UE::Math::TQuat<double>;
using FQuat4f = UE::Math::TQuat<float>;
using FTransform = UE::Math::TTransform<double>;
using FTransform3d = UE::Math::TTransform<double>;
using FTransform3f = UE::Math::TTransform<float>;
using FIntPoint = UE::Math::TIntPoint<int32>;
using FInt32Point = UE::Math::TIntPoint<int32>;
using FIntVector = UE::Math::TIntVector3<int32>;

struct FColor;
struct FLinearColor;
