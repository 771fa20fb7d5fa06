// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

namespace UE::Math
{
	/** A four-component vector: homogeneous points and packed shader parameters. */
	template <typename T>
	struct TVector4
	{
		using FReal = T;

		T X = 0;
		T Y = 0;
		T Z = 0;
		T W = 0;

		constexpr TVector4() = default;
		constexpr TVector4(T InX, T InY, T InZ, T InW = 1)
			: X(InX)
			, Y(InY)
			, Z(InZ)
			, W(InW)
		{
		}
		explicit constexpr TVector4(EForceInit) {}
		TVector4(const TVector<T>& InVector, T InW = 1)
			: X(InVector.X)
			, Y(InVector.Y)
			, Z(InVector.Z)
			, W(InW)
		{
		}

		TVector4 operator+(const TVector4& V) const { return TVector4(X + V.X, Y + V.Y, Z + V.Z, W + V.W); }
		TVector4 operator-(const TVector4& V) const { return TVector4(X - V.X, Y - V.Y, Z - V.Z, W - V.W); }
		TVector4 operator*(const TVector4& V) const { return TVector4(X * V.X, Y * V.Y, Z * V.Z, W * V.W); }
		TVector4 operator*(T Scale) const { return TVector4(X * Scale, Y * Scale, Z * Scale, W * Scale); }
		TVector4 operator/(T Scale) const { return TVector4(X / Scale, Y / Scale, Z / Scale, W / Scale); }
		TVector4 operator-() const { return TVector4(-X, -Y, -Z, -W); }
		bool operator==(const TVector4& V) const { return X == V.X && Y == V.Y && Z == V.Z && W == V.W; }
		bool operator!=(const TVector4& V) const { return !(*this == V); }

		T& operator[](int32 Index) { return Index == 0 ? X : (Index == 1 ? Y : (Index == 2 ? Z : W)); }
		T operator[](int32 Index) const { return Index == 0 ? X : (Index == 1 ? Y : (Index == 2 ? Z : W)); }

		bool Equals(const TVector4& V, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance &&
				   FMath::Abs(Z - V.Z) <= Tolerance && FMath::Abs(W - V.W) <= Tolerance;
		}

		/** The X, Y and Z components. */
		TVector<T> GetXYZ() const { return TVector<T>(X, Y, Z); }

		T Size3() const { return FMath::Sqrt(X * X + Y * Y + Z * Z); }
		T SizeSquared3() const { return X * X + Y * Y + Z * Z; }
		T Size() const { return FMath::Sqrt(X * X + Y * Y + Z * Z + W * W); }
		T SizeSquared() const { return X * X + Y * Y + Z * Z + W * W; }

		/** Formats as "X=1.000 Y=2.000 Z=3.000 W=4.000". */
		FString ToString() const
		{
			return FString::Printf(TEXT("X=%3.3f Y=%3.3f Z=%3.3f W=%3.3f"), (double)X, (double)Y, (double)Z, (double)W);
		}
	};
} // namespace UE::Math
