// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/IntPoint.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Misc/Parse.h"

namespace UE::Math
{
	/** A vector in 2-D space: screen positions, sizes, texture coordinates. */
	template <typename T>
	struct TVector2
	{
		using FReal = T;

		T X = 0;
		T Y = 0;

		/** (0, 0). */
		static const TVector2 ZeroVector;

		/** (1, 1). */
		static const TVector2 UnitVector;

		/** (1/sqrt(2), 1/sqrt(2)): the unit vector at 45 degrees. */
		static const TVector2 Unit45Deg;

		constexpr TVector2() = default;
		constexpr TVector2(T InX, T InY)
			: X(InX)
			, Y(InY)
		{
		}
		explicit constexpr TVector2(T InF)
			: X(InF)
			, Y(InF)
		{
		}
		explicit constexpr TVector2(EForceInit)
			: X(0)
			, Y(0)
		{
		}
		explicit TVector2(FIntPoint InPos)
			: X((T)InPos.X)
			, Y((T)InPos.Y)
		{
		}
		template <typename FArg, typename = std::enable_if_t<!std::is_same_v<T, FArg>>>
		explicit TVector2(const TVector2<FArg>& From)
			: X((T)From.X)
			, Y((T)From.Y)
		{
		}

		/** Keeps the X and Y of a 3-D vector; defined with TVector. */
		explicit TVector2(const TVector<T>& V);

		TVector2 operator+(const TVector2& V) const { return TVector2(X + V.X, Y + V.Y); }
		TVector2 operator-(const TVector2& V) const { return TVector2(X - V.X, Y - V.Y); }
		TVector2 operator*(const TVector2& V) const { return TVector2(X * V.X, Y * V.Y); }
		TVector2 operator/(const TVector2& V) const { return TVector2(X / V.X, Y / V.Y); }
		TVector2 operator*(T Scale) const { return TVector2(X * Scale, Y * Scale); }
		TVector2 operator/(T Scale) const { return TVector2(X / Scale, Y / Scale); }
		TVector2 operator+(T A) const { return TVector2(X + A, Y + A); }
		TVector2 operator-(T A) const { return TVector2(X - A, Y - A); }
		TVector2 operator-() const { return TVector2(-X, -Y); }

		/** Dot product. */
		T operator|(const TVector2& V) const { return X * V.X + Y * V.Y; }

		/** Z component of the 3-D cross product. */
		T operator^(const TVector2& V) const { return X * V.Y - Y * V.X; }

		bool operator==(const TVector2& V) const { return X == V.X && Y == V.Y; }
		bool operator!=(const TVector2& V) const { return X != V.X || Y != V.Y; }

		TVector2& operator+=(const TVector2& V)
		{
			X += V.X;
			Y += V.Y;
			return *this;
		}

		TVector2& operator-=(const TVector2& V)
		{
			X -= V.X;
			Y -= V.Y;
			return *this;
		}

		TVector2& operator*=(T Scale)
		{
			X *= Scale;
			Y *= Scale;
			return *this;
		}

		TVector2& operator/=(T V)
		{
			X /= V;
			Y /= V;
			return *this;
		}

		T& operator[](int32 Index) { return Index == 0 ? X : Y; }
		T operator[](int32 Index) const { return Index == 0 ? X : Y; }

		static T DotProduct(const TVector2& A, const TVector2& B) { return A | B; }
		static T CrossProduct(const TVector2& A, const TVector2& B) { return A ^ B; }
		static T DistSquared(const TVector2& A, const TVector2& B)
		{
			return FMath::Square(B.X - A.X) + FMath::Square(B.Y - A.Y);
		}
		static T Distance(const TVector2& A, const TVector2& B) { return FMath::Sqrt(DistSquared(A, B)); }
		static TVector2 Max(const TVector2& A, const TVector2& B) { return A.ComponentMax(B); }
		static TVector2 Min(const TVector2& A, const TVector2& B) { return A.ComponentMin(B); }

		void Set(T InX, T InY)
		{
			X = InX;
			Y = InY;
		}

		T Size() const { return FMath::Sqrt(X * X + Y * Y); }
		T Length() const { return Size(); }
		T SizeSquared() const { return X * X + Y * Y; }
		T SquaredLength() const { return SizeSquared(); }
		T GetMax() const { return FMath::Max(X, Y); }
		T GetMin() const { return FMath::Min(X, Y); }
		T GetAbsMax() const { return FMath::Max(FMath::Abs(X), FMath::Abs(Y)); }
		TVector2 GetAbs() const { return TVector2(FMath::Abs(X), FMath::Abs(Y)); }
		TVector2 GetSignVector() const { return TVector2(X >= 0 ? (T)1 : (T)-1, Y >= 0 ? (T)1 : (T)-1); }
		TVector2 ComponentMin(const TVector2& V) const { return TVector2(FMath::Min(X, V.X), FMath::Min(Y, V.Y)); }
		TVector2 ComponentMax(const TVector2& V) const { return TVector2(FMath::Max(X, V.X), FMath::Max(Y, V.Y)); }
		TVector2 ClampAxes(T MinAxisVal, T MaxAxisVal) const
		{
			return TVector2(FMath::Clamp(X, MinAxisVal, MaxAxisVal), FMath::Clamp(Y, MinAxisVal, MaxAxisVal));
		}
		FIntPoint IntPoint() const { return FIntPoint(FMath::RoundToInt(X), FMath::RoundToInt(Y)); }

		bool Equals(const TVector2& V, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance;
		}

		bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X) <= Tolerance && FMath::Abs(Y) <= Tolerance;
		}

		bool IsZero() const { return X == 0 && Y == 0; }
		bool ContainsNaN() const { return !FMath::IsFinite(X) || !FMath::IsFinite(Y); }

		/** Scales the vector to unit length; a vector shorter than the tolerance becomes zero. */
		void Normalize(T Tolerance = UE_SMALL_NUMBER)
		{
			const T SquareSum = SizeSquared();
			if (SquareSum > Tolerance)
			{
				const T Scale = FMath::InvSqrt(SquareSum);
				X *= Scale;
				Y *= Scale;
				return;
			}
			X = 0;
			Y = 0;
		}

		TVector2 GetSafeNormal(T Tolerance = UE_SMALL_NUMBER) const
		{
			const T SquareSum = SizeSquared();
			if (SquareSum > Tolerance)
			{
				const T Scale = FMath::InvSqrt(SquareSum);
				return TVector2(X * Scale, Y * Scale);
			}
			return TVector2(0, 0);
		}

		/** This vector rotated counter-clockwise by AngleDeg degrees. */
		TVector2 GetRotated(T AngleDeg) const
		{
			T S = 0;
			T C = 0;
			FMath::SinCos(&S, &C, FMath::DegreesToRadians(AngleDeg));
			return TVector2(C * X - S * Y, S * X + C * Y);
		}

		/** Formats the vector as "X=1.000 Y=2.000". */
		FString ToString() const { return FString::Printf(TEXT("X=%3.3f Y=%3.3f"), (double)X, (double)Y); }

		/** Reads a vector written by ToString; returns false if either component is missing. */
		bool InitFromString(const FString& InSourceString)
		{
			T NewX = 0;
			T NewY = 0;
			if (!FParse::Value(*InSourceString, TEXT("X="), NewX) || !FParse::Value(*InSourceString, TEXT("Y="), NewY))
			{
				return false;
			}
			X = NewX;
			Y = NewY;
			return true;
		}
	};

	template <typename T, typename T2, typename = std::enable_if_t<std::is_arithmetic_v<T2>>>
	inline TVector2<T> operator*(T2 Scale, const TVector2<T>& V)
	{
		return V * (T)Scale;
	}

	template <typename T>
	inline const TVector2<T> TVector2<T>::ZeroVector(0, 0);

	template <typename T>
	inline const TVector2<T> TVector2<T>::UnitVector(1, 1);

	template <typename T>
	inline const TVector2<T> TVector2<T>::Unit45Deg((T)UE_DOUBLE_SQRT_2 / 2, (T)UE_DOUBLE_SQRT_2 / 2);
} // namespace UE::Math
