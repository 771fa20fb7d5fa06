// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"

namespace UE::Math
{
	/** A point or size in three integer dimensions. */
	template <typename InIntType>
	struct TIntVector3
	{
		using IntType = InIntType;

		IntType X = 0;
		IntType Y = 0;
		IntType Z = 0;

		/** (0, 0, 0). */
		static const TIntVector3 ZeroValue;

		/** (INDEX_NONE, INDEX_NONE, INDEX_NONE), used to mean "no point". */
		static const TIntVector3 NoneValue;

		constexpr TIntVector3() = default;
		constexpr TIntVector3(IntType InX, IntType InY, IntType InZ)
			: X(InX)
			, Y(InY)
			, Z(InZ)
		{
		}
		explicit constexpr TIntVector3(IntType InValue)
			: X(InValue)
			, Y(InValue)
			, Z(InValue)
		{
		}
		explicit constexpr TIntVector3(EForceInit) {}

		bool operator==(const TIntVector3& Other) const { return X == Other.X && Y == Other.Y && Z == Other.Z; }
		bool operator!=(const TIntVector3& Other) const { return !(*this == Other); }
		TIntVector3 operator+(const TIntVector3& Other) const
		{
			return TIntVector3(X + Other.X, Y + Other.Y, Z + Other.Z);
		}
		TIntVector3 operator-(const TIntVector3& Other) const
		{
			return TIntVector3(X - Other.X, Y - Other.Y, Z - Other.Z);
		}
		TIntVector3 operator*(IntType Scale) const { return TIntVector3(X * Scale, Y * Scale, Z * Scale); }
		TIntVector3 operator/(IntType Divisor) const { return TIntVector3(X / Divisor, Y / Divisor, Z / Divisor); }

		IntType& operator[](int32 Index) { return Index == 0 ? X : (Index == 1 ? Y : Z); }
		IntType operator[](int32 Index) const { return Index == 0 ? X : (Index == 1 ? Y : Z); }

		IntType GetMax() const { return FMath::Max3(X, Y, Z); }
		IntType GetMin() const { return FMath::Min3(X, Y, Z); }
		bool IsZero() const { return X == 0 && Y == 0 && Z == 0; }

		/** Formats as "X=1 Y=2 Z=3". */
		FString ToString() const
		{
			return FString::Printf(TEXT("X=%lld Y=%lld Z=%lld"), (long long)X, (long long)Y, (long long)Z);
		}
	};

	template <typename InIntType>
	inline const TIntVector3<InIntType> TIntVector3<InIntType>::ZeroValue(0, 0, 0);

	template <typename InIntType>
	inline const TIntVector3<InIntType> TIntVector3<InIntType>::NoneValue(INDEX_NONE, INDEX_NONE, INDEX_NONE);
} // namespace UE::Math
