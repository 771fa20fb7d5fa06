// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Misc/Parse.h"

namespace UE::Math
{
	/** A point or size in two integer dimensions (pixels, grid cells). */
	template <typename InIntType>
	struct TIntPoint
	{
		using IntType = InIntType;

		IntType X = 0;
		IntType Y = 0;

		/** The point (0, 0). */
		static const TIntPoint ZeroValue;

		/** The point (INDEX_NONE, INDEX_NONE), used to mean "no point". */
		static const TIntPoint NoneValue;

		constexpr TIntPoint() = default;
		constexpr TIntPoint(IntType InX, IntType InY)
			: X(InX)
			, Y(InY)
		{
		}
		explicit constexpr TIntPoint(IntType InXY)
			: X(InXY)
			, Y(InXY)
		{
		}
		explicit constexpr TIntPoint(EForceInit)
			: X(0)
			, Y(0)
		{
		}

		IntType& operator[](int32 Index) { return Index == 0 ? X : Y; }
		IntType operator[](int32 Index) const { return Index == 0 ? X : Y; }

		bool operator==(const TIntPoint& Other) const { return X == Other.X && Y == Other.Y; }
		bool operator!=(const TIntPoint& Other) const { return !(*this == Other); }

		TIntPoint operator+(const TIntPoint& Other) const { return TIntPoint(X + Other.X, Y + Other.Y); }
		TIntPoint operator-(const TIntPoint& Other) const { return TIntPoint(X - Other.X, Y - Other.Y); }
		TIntPoint operator*(const TIntPoint& Other) const { return TIntPoint(X * Other.X, Y * Other.Y); }
		TIntPoint operator*(IntType Scale) const { return TIntPoint(X * Scale, Y * Scale); }
		TIntPoint operator/(const TIntPoint& Other) const { return TIntPoint(X / Other.X, Y / Other.Y); }
		TIntPoint operator/(IntType Divisor) const { return TIntPoint(X / Divisor, Y / Divisor); }

		TIntPoint& operator+=(const TIntPoint& Other)
		{
			X += Other.X;
			Y += Other.Y;
			return *this;
		}

		TIntPoint& operator-=(const TIntPoint& Other)
		{
			X -= Other.X;
			Y -= Other.Y;
			return *this;
		}

		TIntPoint& operator*=(IntType Scale)
		{
			X *= Scale;
			Y *= Scale;
			return *this;
		}

		TIntPoint& operator/=(IntType Divisor)
		{
			X /= Divisor;
			Y /= Divisor;
			return *this;
		}

		TIntPoint ComponentMin(const TIntPoint& Other) const
		{
			return TIntPoint(FMath::Min(X, Other.X), FMath::Min(Y, Other.Y));
		}

		TIntPoint ComponentMax(const TIntPoint& Other) const
		{
			return TIntPoint(FMath::Max(X, Other.X), FMath::Max(Y, Other.Y));
		}

		IntType GetMax() const { return FMath::Max(X, Y); }
		IntType GetMin() const { return FMath::Min(X, Y); }
		IntType SizeSquared() const { return X * X + Y * Y; }
		IntType Size() const { return (IntType)FMath::Sqrt((double)SizeSquared()); }

		static TIntPoint DivideAndRoundUp(TIntPoint Lhs, IntType Divisor)
		{
			return TIntPoint(FMath::DivideAndRoundUp(Lhs.X, Divisor), FMath::DivideAndRoundUp(Lhs.Y, Divisor));
		}

		/** Formats the point as "X=1 Y=2". */
		FString ToString() const { return FString::Printf(TEXT("X=%lld Y=%lld"), (long long)X, (long long)Y); }

		/** Reads a point written by ToString; returns false and leaves the point unchanged if either part is missing.
		 */
		bool InitFromString(const FString& InSourceString)
		{
			int64 NewX = 0;
			int64 NewY = 0;
			if (!FParse::Value(*InSourceString, TEXT("X="), NewX) || !FParse::Value(*InSourceString, TEXT("Y="), NewY))
			{
				return false;
			}
			X = (IntType)NewX;
			Y = (IntType)NewY;
			return true;
		}
	};

	template <typename InIntType>
	inline const TIntPoint<InIntType> TIntPoint<InIntType>::ZeroValue(0, 0);

	template <typename InIntType>
	inline const TIntPoint<InIntType> TIntPoint<InIntType>::NoneValue(INDEX_NONE, INDEX_NONE);
} // namespace UE::Math
