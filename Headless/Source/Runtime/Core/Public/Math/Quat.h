// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Misc/Parse.h"

namespace UE::Math
{
	/**
	 * A rotation as a unit quaternion. A * B is the rotation that applies B first and then A, and
	 * Q.RotateVector(V) turns V by Q.
	 */
	template <typename T>
	struct alignas(16) TQuat
	{
		using FReal = T;

		T X = 0;
		T Y = 0;
		T Z = 0;
		T W = 1;

		/** The rotation that changes nothing. */
		static const TQuat Identity;

		constexpr TQuat() = default;
		constexpr TQuat(T InX, T InY, T InZ, T InW)
			: X(InX)
			, Y(InY)
			, Z(InZ)
			, W(InW)
		{
		}

		/** ForceInit gives the identity, ForceInitToZero all zeros. */
		explicit constexpr TQuat(EForceInit ZeroOrNot)
			: X(0)
			, Y(0)
			, Z(0)
			, W(ZeroOrNot == ForceInitToZero ? 0 : 1)
		{
		}

		template <typename FArg, typename = std::enable_if_t<!std::is_same_v<T, FArg>>>
		explicit TQuat(const TQuat<FArg>& From)
			: X((T)From.X)
			, Y((T)From.Y)
			, Z((T)From.Z)
			, W((T)From.W)
		{
		}

		/** The quaternion equivalent to a rotator. */
		explicit TQuat(const TRotator<T>& R);

		/** A rotation of AngleRad radians around Axis (right-handed about the axis; Axis must be normalized). */
		TQuat(const TVector<T>& Axis, T AngleRad)
		{
			T S = 0;
			T C = 0;
			FMath::SinCos(&S, &C, AngleRad * (T)0.5);
			X = Axis.X * S;
			Y = Axis.Y * S;
			Z = Axis.Z * S;
			W = C;
		}

		/** The rotation that applies Q first and then this one. */
		TQuat operator*(const TQuat& Q) const
		{
			return TQuat(W * Q.X + X * Q.W + Y * Q.Z - Z * Q.Y, W * Q.Y - X * Q.Z + Y * Q.W + Z * Q.X,
				W * Q.Z + X * Q.Y - Y * Q.X + Z * Q.W, W * Q.W - X * Q.X - Y * Q.Y - Z * Q.Z);
		}

		TQuat& operator*=(const TQuat& Q)
		{
			*this = *this * Q;
			return *this;
		}

		/** Rotates a vector by this quaternion. */
		TVector<T> operator*(const TVector<T>& V) const { return RotateVector(V); }

		TQuat operator*(T Scale) const { return TQuat(X * Scale, Y * Scale, Z * Scale, W * Scale); }
		TQuat operator/(T Scale) const { return TQuat(X / Scale, Y / Scale, Z / Scale, W / Scale); }
		TQuat operator+(const TQuat& Q) const { return TQuat(X + Q.X, Y + Q.Y, Z + Q.Z, W + Q.W); }
		TQuat operator-(const TQuat& Q) const { return TQuat(X - Q.X, Y - Q.Y, Z - Q.Z, W - Q.W); }
		TQuat operator-() const { return TQuat(-X, -Y, -Z, -W); }

		/** Four-component dot product. */
		T operator|(const TQuat& Q) const { return X * Q.X + Y * Q.Y + Z * Q.Z + W * Q.W; }

		bool operator==(const TQuat& Q) const { return X == Q.X && Y == Q.Y && Z == Q.Z && W == Q.W; }
		bool operator!=(const TQuat& Q) const { return !(*this == Q); }

		/** Whether both describe the same rotation within Tolerance; Q and -Q count as equal. */
		bool Equals(const TQuat& Q, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			const bool bSame = FMath::Abs(X - Q.X) <= Tolerance && FMath::Abs(Y - Q.Y) <= Tolerance &&
							   FMath::Abs(Z - Q.Z) <= Tolerance && FMath::Abs(W - Q.W) <= Tolerance;
			const bool bNegated = FMath::Abs(X + Q.X) <= Tolerance && FMath::Abs(Y + Q.Y) <= Tolerance &&
								  FMath::Abs(Z + Q.Z) <= Tolerance && FMath::Abs(W + Q.W) <= Tolerance;
			return bSame || bNegated;
		}

		bool IsIdentity(T Tolerance = UE_SMALL_NUMBER) const { return Equals(Identity, Tolerance); }

		T SizeSquared() const { return X * X + Y * Y + Z * Z + W * W; }
		T Size() const { return FMath::Sqrt(SizeSquared()); }
		bool IsNormalized() const { return FMath::Abs(1 - SizeSquared()) < UE_THRESH_QUAT_NORMALIZED; }
		bool ContainsNaN() const
		{
			return !FMath::IsFinite(X) || !FMath::IsFinite(Y) || !FMath::IsFinite(Z) || !FMath::IsFinite(W);
		}

		/** Scales to unit length; a quaternion too short to normalize becomes the identity. */
		void Normalize(T Tolerance = UE_SMALL_NUMBER)
		{
			const T SquareSum = SizeSquared();
			if (SquareSum >= Tolerance)
			{
				const T Scale = FMath::InvSqrt(SquareSum);
				X *= Scale;
				Y *= Scale;
				Z *= Scale;
				W *= Scale;
			}
			else
			{
				*this = Identity;
			}
		}

		TQuat GetNormalized(T Tolerance = UE_SMALL_NUMBER) const
		{
			TQuat Result(*this);
			Result.Normalize(Tolerance);
			return Result;
		}

		/** The opposite rotation. The quaternion must be normalized. */
		TQuat Inverse() const { return TQuat(-X, -Y, -Z, W); }

		/** The rotation angle in radians, in [0, 2*PI]. */
		T GetAngle() const { return (T)2 * FMath::Acos(W); }

		/** The rotation axis; the X axis when the rotation is too small to have a meaningful axis. */
		TVector<T> GetRotationAxis() const
		{
			const T S = FMath::Sqrt(FMath::Max((T)1 - W * W, (T)0));
			if (S >= (T)0.0001)
			{
				return TVector<T>(X / S, Y / S, Z / S);
			}
			return TVector<T>(1, 0, 0);
		}

		void ToAxisAndAngle(TVector<T>& Axis, T& Angle) const
		{
			Angle = GetAngle();
			Axis = GetRotationAxis();
		}

		/** The angle in radians between two rotations. */
		T AngularDistance(const TQuat& Q) const
		{
			const T InnerProd = *this | Q;
			return FMath::Acos((2 * InnerProd * InnerProd) - 1);
		}

		/** Rotates a vector by this quaternion. */
		TVector<T> RotateVector(const TVector<T>& V) const
		{
			// V' = V + 2W(Q x V) + 2(Q x (Q x V)), with Q the vector part.
			const TVector<T> Q(X, Y, Z);
			const TVector<T> TT = (Q ^ V) * (T)2;
			return V + (TT * W) + (Q ^ TT);
		}

		/** Rotates a vector by the inverse of this quaternion. */
		TVector<T> UnrotateVector(const TVector<T>& V) const
		{
			const TVector<T> Q(-X, -Y, -Z);
			const TVector<T> TT = (Q ^ V) * (T)2;
			return V + (TT * W) + (Q ^ TT);
		}

		TVector<T> GetAxisX() const { return RotateVector(TVector<T>(1, 0, 0)); }
		TVector<T> GetAxisY() const { return RotateVector(TVector<T>(0, 1, 0)); }
		TVector<T> GetAxisZ() const { return RotateVector(TVector<T>(0, 0, 1)); }
		TVector<T> GetForwardVector() const { return GetAxisX(); }
		TVector<T> GetRightVector() const { return GetAxisY(); }
		TVector<T> GetUpVector() const { return GetAxisZ(); }
		TVector<T> Vector() const { return GetAxisX(); }

		/** The same rotation as a rotator. */
		TRotator<T> Rotator() const;

		/** The rotation as Euler angles in degrees: X = Roll, Y = Pitch, Z = Yaw. */
		TVector<T> Euler() const;

		/** The rotation given by Euler angles in degrees: X = Roll, Y = Pitch, Z = Yaw. */
		static TQuat MakeFromEuler(const TVector<T>& Euler);

		static TQuat MakeFromRotator(const TRotator<T>& R) { return TQuat(R); }

		/** The shortest rotation that turns the normalized vector A onto the normalized vector B. */
		static TQuat FindBetweenNormals(const TVector<T>& A, const TVector<T>& B)
		{
			const T NormAB = 1;
			T WPart = NormAB + (A | B);
			TQuat Result;
			if (WPart >= (T)1e-6 * NormAB)
			{
				const TVector<T> Axis = A ^ B;
				Result = TQuat(Axis.X, Axis.Y, Axis.Z, WPart);
			}
			else
			{
				// Opposite vectors: turn half way round any axis perpendicular to A.
				WPart = 0;
				Result = FMath::Abs(A.X) > FMath::Abs(A.Y) ? TQuat(-A.Z, 0, A.X, WPart) : TQuat(0, -A.Z, A.Y, WPart);
			}
			Result.Normalize();
			return Result;
		}

		/** The shortest rotation that turns vector A onto vector B; neither needs to be normalized. */
		static TQuat FindBetweenVectors(const TVector<T>& A, const TVector<T>& B)
		{
			return FindBetweenNormals(A.GetSafeNormal(), B.GetSafeNormal());
		}

		static TQuat FindBetween(const TVector<T>& A, const TVector<T>& B) { return FindBetweenVectors(A, B); }

		/** Spherical interpolation along the shorter arc; the result is not normalized. */
		static TQuat Slerp_NotNormalized(const TQuat& Quat1, const TQuat& Quat2, T Slerp)
		{
			const T RawCosom = Quat1 | Quat2;
			const T Cosom = RawCosom >= 0 ? RawCosom : -RawCosom;
			T Scale0 = 1 - Slerp;
			T Scale1 = Slerp;
			if (Cosom < (T)0.9999)
			{
				const T Omega = FMath::Acos(Cosom);
				const T InvSin = 1 / FMath::Sin(Omega);
				Scale0 = FMath::Sin((1 - Slerp) * Omega) * InvSin;
				Scale1 = FMath::Sin(Slerp * Omega) * InvSin;
			}
			Scale1 = RawCosom >= 0 ? Scale1 : -Scale1;
			return TQuat(Scale0 * Quat1.X + Scale1 * Quat2.X, Scale0 * Quat1.Y + Scale1 * Quat2.Y,
				Scale0 * Quat1.Z + Scale1 * Quat2.Z, Scale0 * Quat1.W + Scale1 * Quat2.W);
		}

		/** Spherical interpolation along the shorter arc, normalized. */
		static TQuat Slerp(const TQuat& Quat1, const TQuat& Quat2, T Slerp)
		{
			return Slerp_NotNormalized(Quat1, Quat2, Slerp).GetNormalized();
		}

		/** Formats the quaternion as "X=0.000000000 Y=0.000000000 Z=0.000000000 W=1.000000000". */
		FString ToString() const
		{
			return FString::Printf(TEXT("X=%.9f Y=%.9f Z=%.9f W=%.9f"), (double)X, (double)Y, (double)Z, (double)W);
		}

		/** Reads a quaternion written by ToString; returns false and leaves it unchanged if a component is missing. */
		bool InitFromString(const FString& InSourceString)
		{
			T NewX = 0;
			T NewY = 0;
			T NewZ = 0;
			T NewW = 0;
			if (!FParse::Value(*InSourceString, TEXT("X="), NewX) ||
				!FParse::Value(*InSourceString, TEXT("Y="), NewY) ||
				!FParse::Value(*InSourceString, TEXT("Z="), NewZ) || !FParse::Value(*InSourceString, TEXT("W="), NewW))
			{
				return false;
			}
			*this = TQuat(NewX, NewY, NewZ, NewW);
			return true;
		}
	};

	template <typename T>
	inline const TQuat<T> TQuat<T>::Identity(0, 0, 0, 1);

	template <typename T>
	TQuat<T>::TQuat(const TRotator<T>& R)
	{
		// Roll about -X, then pitch about -Y, then yaw about +Z: the engine's angles are left-handed
		// for pitch and roll in this right-handed quaternion algebra.
		T SP = 0;
		T CP = 0;
		T SY = 0;
		T CY = 0;
		T SR = 0;
		T CR = 0;
		const T HalfDegToRad = (T)(UE_DOUBLE_PI / 360.0);
		FMath::SinCos(&SP, &CP, FMath::Fmod(R.Pitch, (T)360) * HalfDegToRad);
		FMath::SinCos(&SY, &CY, FMath::Fmod(R.Yaw, (T)360) * HalfDegToRad);
		FMath::SinCos(&SR, &CR, FMath::Fmod(R.Roll, (T)360) * HalfDegToRad);
		X = CR * SP * SY - SR * CP * CY;
		Y = -CR * SP * CY - SR * CP * SY;
		Z = CR * CP * SY - SR * SP * CY;
		W = CR * CP * CY + SR * SP * SY;
	}

	template <typename T>
	TRotator<T> TQuat<T>::Rotator() const
	{
		// Read the angles back from where the rotation sends the X and Y axes. Straight up or down,
		// only yaw minus (or plus) roll is defined; the whole turn is then given to yaw.
		const T ForwardX = 1 - 2 * (Y * Y + Z * Z);
		const T ForwardY = 2 * (X * Y + W * Z);
		const T ForwardZ = 2 * (X * Z - W * Y);
		const T RightX = 2 * (X * Y - W * Z);
		const T RightY = 1 - 2 * (X * X + Z * Z);
		const T RightZ = 2 * (Y * Z + W * X);
		const T UpZ = 1 - 2 * (X * X + Y * Y);
		const T SingularityThreshold = (T)0.9999999;

		if (ForwardZ > SingularityThreshold || ForwardZ < -SingularityThreshold)
		{
			const T Pitch = ForwardZ > 0 ? (T)90 : (T)-90;
			const T Yaw = FMath::RadiansToDegrees(FMath::Atan2(-RightX, RightY));
			return TRotator<T>(Pitch, Yaw, 0);
		}
		const T Pitch = FMath::RadiansToDegrees(FMath::Asin(ForwardZ));
		const T Yaw = FMath::RadiansToDegrees(FMath::Atan2(ForwardY, ForwardX));
		const T Roll = FMath::RadiansToDegrees(FMath::Atan2(-RightZ, UpZ));
		return TRotator<T>(Pitch, Yaw, Roll);
	}

	template <typename T>
	TVector<T> TQuat<T>::Euler() const
	{
		return Rotator().Euler();
	}

	template <typename T>
	TQuat<T> TQuat<T>::MakeFromEuler(const TVector<T>& Euler)
	{
		return TQuat(TRotator<T>::MakeFromEuler(Euler));
	}

	template <typename T>
	TRotator<T>::TRotator(const TQuat<T>& Quat)
	{
		*this = Quat.Rotator();
	}

	template <typename T>
	TQuat<T> TRotator<T>::Quaternion() const
	{
		return TQuat<T>(*this);
	}

	template <typename T>
	TRotator<T> TRotator<T>::GetInverse() const
	{
		return Quaternion().Inverse().Rotator();
	}

	template <typename T>
	TVector<T> TRotator<T>::RotateVector(const TVector<T>& V) const
	{
		return Quaternion().RotateVector(V);
	}

	template <typename T>
	TVector<T> TRotator<T>::UnrotateVector(const TVector<T>& V) const
	{
		return Quaternion().UnrotateVector(V);
	}

	template <typename T>
	TQuat<T> TVector<T>::ToOrientationQuat() const
	{
		return TQuat<T>(Rotation());
	}
} // namespace UE::Math
