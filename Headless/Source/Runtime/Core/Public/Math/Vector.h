// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector2D.h"
#include "Misc/Parse.h"

namespace UE::Math
{
	/**
	 * A vector in 3-D space, in the engine's left-handed, Z-up frame: X forward, Y right, Z up.
	 * Distances are in centimetres.
	 */
	template <typename T>
	struct TVector
	{
		using FReal = T;

		T X = 0;
		T Y = 0;
		T Z = 0;

		static const TVector ZeroVector;
		static const TVector OneVector;
		static const TVector UpVector;
		static const TVector DownVector;
		static const TVector ForwardVector;
		static const TVector BackwardVector;
		static const TVector RightVector;
		static const TVector LeftVector;
		static const TVector XAxisVector;
		static const TVector YAxisVector;
		static const TVector ZAxisVector;

		static TVector Zero() { return ZeroVector; }
		static TVector One() { return OneVector; }
		static TVector UnitX() { return XAxisVector; }
		static TVector UnitY() { return YAxisVector; }
		static TVector UnitZ() { return ZAxisVector; }

		constexpr TVector() = default;
		explicit constexpr TVector(T InF)
			: X(InF)
			, Y(InF)
			, Z(InF)
		{
		}
		constexpr TVector(T InX, T InY, T InZ)
			: X(InX)
			, Y(InY)
			, Z(InZ)
		{
		}
		explicit constexpr TVector(EForceInit)
			: X(0)
			, Y(0)
			, Z(0)
		{
		}
		TVector(const TVector2<T>& V, T InZ)
			: X(V.X)
			, Y(V.Y)
			, Z(InZ)
		{
		}
		template <typename FArg, typename = std::enable_if_t<!std::is_same_v<T, FArg>>>
		explicit TVector(const TVector<FArg>& From)
			: X((T)From.X)
			, Y((T)From.Y)
			, Z((T)From.Z)
		{
		}

		/** Cross product. */
		TVector operator^(const TVector& V) const
		{
			return TVector(Y * V.Z - Z * V.Y, Z * V.X - X * V.Z, X * V.Y - Y * V.X);
		}

		/** Dot product. */
		T operator|(const TVector& V) const { return X * V.X + Y * V.Y + Z * V.Z; }

		static TVector CrossProduct(const TVector& A, const TVector& B) { return A ^ B; }
		static T DotProduct(const TVector& A, const TVector& B) { return A | B; }
		TVector Cross(const TVector& V) const { return *this ^ V; }
		T Dot(const TVector& V) const { return *this | V; }

		TVector operator+(const TVector& V) const { return TVector(X + V.X, Y + V.Y, Z + V.Z); }
		TVector operator-(const TVector& V) const { return TVector(X - V.X, Y - V.Y, Z - V.Z); }
		TVector operator*(const TVector& V) const { return TVector(X * V.X, Y * V.Y, Z * V.Z); }
		TVector operator/(const TVector& V) const { return TVector(X / V.X, Y / V.Y, Z / V.Z); }
		TVector operator*(T Scale) const { return TVector(X * Scale, Y * Scale, Z * Scale); }
		TVector operator/(T Scale) const { return TVector(X / Scale, Y / Scale, Z / Scale); }
		TVector operator+(T Bias) const { return TVector(X + Bias, Y + Bias, Z + Bias); }
		TVector operator-(T Bias) const { return TVector(X - Bias, Y - Bias, Z - Bias); }
		TVector operator-() const { return TVector(-X, -Y, -Z); }

		bool operator==(const TVector& V) const { return X == V.X && Y == V.Y && Z == V.Z; }
		bool operator!=(const TVector& V) const { return !(*this == V); }

		TVector& operator+=(const TVector& V)
		{
			X += V.X;
			Y += V.Y;
			Z += V.Z;
			return *this;
		}

		TVector& operator-=(const TVector& V)
		{
			X -= V.X;
			Y -= V.Y;
			Z -= V.Z;
			return *this;
		}

		TVector& operator*=(const TVector& V)
		{
			X *= V.X;
			Y *= V.Y;
			Z *= V.Z;
			return *this;
		}

		TVector& operator/=(const TVector& V)
		{
			X /= V.X;
			Y /= V.Y;
			Z /= V.Z;
			return *this;
		}

		TVector& operator*=(T Scale)
		{
			X *= Scale;
			Y *= Scale;
			Z *= Scale;
			return *this;
		}

		TVector& operator/=(T V)
		{
			X /= V;
			Y /= V;
			Z /= V;
			return *this;
		}

		T& operator[](int32 Index) { return Index == 0 ? X : (Index == 1 ? Y : Z); }
		T operator[](int32 Index) const { return Index == 0 ? X : (Index == 1 ? Y : Z); }

		void Set(T InX, T InY, T InZ)
		{
			X = InX;
			Y = InY;
			Z = InZ;
		}

		bool Equals(const TVector& V, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X - V.X) <= Tolerance && FMath::Abs(Y - V.Y) <= Tolerance &&
				   FMath::Abs(Z - V.Z) <= Tolerance;
		}

		bool AllComponentsEqual(T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X - Y) <= Tolerance && FMath::Abs(X - Z) <= Tolerance && FMath::Abs(Y - Z) <= Tolerance;
		}

		T GetMax() const { return FMath::Max3(X, Y, Z); }
		T GetMin() const { return FMath::Min3(X, Y, Z); }
		T GetAbsMax() const { return FMath::Max3(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
		T GetAbsMin() const { return FMath::Min3(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
		TVector GetAbs() const { return TVector(FMath::Abs(X), FMath::Abs(Y), FMath::Abs(Z)); }
		TVector ComponentMin(const TVector& V) const
		{
			return TVector(FMath::Min(X, V.X), FMath::Min(Y, V.Y), FMath::Min(Z, V.Z));
		}
		TVector ComponentMax(const TVector& V) const
		{
			return TVector(FMath::Max(X, V.X), FMath::Max(Y, V.Y), FMath::Max(Z, V.Z));
		}
		static TVector Min(const TVector& A, const TVector& B) { return A.ComponentMin(B); }
		static TVector Max(const TVector& A, const TVector& B) { return A.ComponentMax(B); }

		T Size() const { return FMath::Sqrt(X * X + Y * Y + Z * Z); }
		T Length() const { return Size(); }
		T SizeSquared() const { return X * X + Y * Y + Z * Z; }
		T SquaredLength() const { return SizeSquared(); }
		T Size2D() const { return FMath::Sqrt(X * X + Y * Y); }
		T SizeSquared2D() const { return X * X + Y * Y; }

		bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(X) <= Tolerance && FMath::Abs(Y) <= Tolerance && FMath::Abs(Z) <= Tolerance;
		}

		bool IsZero() const { return X == 0 && Y == 0 && Z == 0; }
		bool IsUnit(T LengthSquaredTolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(1 - SizeSquared()) < LengthSquaredTolerance;
		}
		bool IsNormalized() const { return FMath::Abs(1 - SizeSquared()) < UE_THRESH_VECTOR_NORMALIZED; }
		bool IsUniform(T Tolerance = UE_KINDA_SMALL_NUMBER) const { return AllComponentsEqual(Tolerance); }
		bool ContainsNaN() const { return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z); }

		/** Scales the vector to unit length; returns false and leaves it unchanged when it is too short to normalize.
		 */
		bool Normalize(T Tolerance = UE_SMALL_NUMBER)
		{
			const T SquareSum = SizeSquared();
			if (SquareSum > Tolerance)
			{
				*this *= FMath::InvSqrt(SquareSum);
				return true;
			}
			return false;
		}

		/** A unit-length copy, or ResultIfZero when the vector is too short to normalize. */
		TVector GetSafeNormal(T Tolerance = UE_SMALL_NUMBER, const TVector& ResultIfZero = ZeroVector) const
		{
			const T SquareSum = SizeSquared();
			if (SquareSum == 1)
			{
				return *this;
			}
			if (SquareSum < Tolerance)
			{
				return ResultIfZero;
			}
			return *this * FMath::InvSqrt(SquareSum);
		}

		/** The unit-length copy of (X, Y, 0), or ResultIfZero when that is too short to normalize. */
		TVector GetSafeNormal2D(T Tolerance = UE_SMALL_NUMBER, const TVector& ResultIfZero = ZeroVector) const
		{
			const T SquareSum = SizeSquared2D();
			if (SquareSum < Tolerance)
			{
				return ResultIfZero;
			}
			const T Scale = FMath::InvSqrt(SquareSum);
			return TVector(X * Scale, Y * Scale, 0);
		}

		TVector GetUnsafeNormal() const { return *this * FMath::InvSqrt(SizeSquared()); }

		/** Splits the vector into a unit direction and its length. */
		void ToDirectionAndLength(TVector& OutDir, T& OutLength) const
		{
			OutLength = Size();
			OutDir = (OutLength > (T)UE_SMALL_NUMBER) ? *this / OutLength : ZeroVector;
		}

		TVector GetClampedToMaxSize(T MaxSize) const
		{
			if (MaxSize < (T)UE_KINDA_SMALL_NUMBER)
			{
				return ZeroVector;
			}
			const T VSq = SizeSquared();
			return (VSq > MaxSize * MaxSize) ? *this * (MaxSize * FMath::InvSqrt(VSq)) : *this;
		}

		/** This vector rotated by AngleDeg degrees around Axis, which must be normalized. */
		TVector RotateAngleAxis(T AngleDeg, const TVector& Axis) const
		{
			return RotateAngleAxisRad(FMath::DegreesToRadians(AngleDeg), Axis);
		}

		/** This vector rotated by AngleRad radians around Axis, which must be normalized. */
		TVector RotateAngleAxisRad(T AngleRad, const TVector& Axis) const
		{
			T S = 0;
			T C = 0;
			FMath::SinCos(&S, &C, AngleRad);
			// Rodrigues' rotation formula.
			return *this * C + (Axis ^ *this) * S + Axis * ((Axis | *this) * (1 - C));
		}

		/** The direction of this vector as a rotator (yaw and pitch; roll is zero). */
		TRotator<T> Rotation() const;

		/** Same as Rotation(). */
		TRotator<T> ToOrientationRotator() const;

		/** The rotation that turns the X axis onto this vector, without roll. */
		TQuat<T> ToOrientationQuat() const;

		static T Dist(const TVector& V1, const TVector& V2) { return FMath::Sqrt(DistSquared(V1, V2)); }
		static T Distance(const TVector& V1, const TVector& V2) { return Dist(V1, V2); }
		static T DistSquared(const TVector& V1, const TVector& V2) { return (V2 - V1).SizeSquared(); }
		static T Dist2D(const TVector& V1, const TVector& V2) { return FMath::Sqrt(DistSquared2D(V1, V2)); }
		static T DistXY(const TVector& V1, const TVector& V2) { return Dist2D(V1, V2); }
		static T DistSquared2D(const TVector& V1, const TVector& V2)
		{
			return FMath::Square(V2.X - V1.X) + FMath::Square(V2.Y - V1.Y);
		}
		static T DistSquaredXY(const TVector& V1, const TVector& V2) { return DistSquared2D(V1, V2); }

		/** Whether two normalized vectors point the same way within the cosine threshold. */
		static bool Parallel(const TVector& Normal1, const TVector& Normal2, T ParallelCosineThreshold = (T)0.999845f)
		{
			return FMath::Abs(Normal1 | Normal2) >= ParallelCosineThreshold;
		}

		/** Whether two normalized vectors are at right angles within the cosine threshold. */
		static bool Orthogonal(
			const TVector& Normal1, const TVector& Normal2, T OrthogonalCosineThreshold = (T)0.017455f)
		{
			return FMath::Abs(Normal1 | Normal2) <= OrthogonalCosineThreshold;
		}

		/** Formats the vector as "X=1.000 Y=2.000 Z=3.000". */
		FString ToString() const
		{
			return FString::Printf(TEXT("X=%3.3f Y=%3.3f Z=%3.3f"), (double)X, (double)Y, (double)Z);
		}

		/** Reads a vector written by ToString; returns false and leaves the vector unchanged if a component is missing.
		 */
		bool InitFromString(const FString& InSourceString)
		{
			T NewX = 0;
			T NewY = 0;
			T NewZ = 0;
			if (!FParse::Value(*InSourceString, TEXT("X="), NewX) ||
				!FParse::Value(*InSourceString, TEXT("Y="), NewY) || !FParse::Value(*InSourceString, TEXT("Z="), NewZ))
			{
				return false;
			}
			Set(NewX, NewY, NewZ);
			return true;
		}
	};

	template <typename T, typename T2, typename = std::enable_if_t<std::is_arithmetic_v<T2>>>
	inline TVector<T> operator*(T2 Scale, const TVector<T>& V)
	{
		return V * (T)Scale;
	}

	template <typename T>
	inline TVector2<T>::TVector2(const TVector<T>& V)
		: X(V.X)
		, Y(V.Y)
	{
	}

	template <typename T>
	inline const TVector<T> TVector<T>::ZeroVector(0, 0, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::OneVector(1, 1, 1);
	template <typename T>
	inline const TVector<T> TVector<T>::UpVector(0, 0, 1);
	template <typename T>
	inline const TVector<T> TVector<T>::DownVector(0, 0, -1);
	template <typename T>
	inline const TVector<T> TVector<T>::ForwardVector(1, 0, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::BackwardVector(-1, 0, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::RightVector(0, 1, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::LeftVector(0, -1, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::XAxisVector(1, 0, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::YAxisVector(0, 1, 0);
	template <typename T>
	inline const TVector<T> TVector<T>::ZAxisVector(0, 0, 1);
} // namespace UE::Math

// The rotation types complete the vector's Rotation() and ToOrientationQuat().
#include "Math/Rotator.h"
