// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Misc/Parse.h"

namespace UE::Math
{
	/**
	 * An orientation as three angles in degrees. Pitch turns around the right axis (Y, positive looks
	 * up), Yaw around the up axis (Z, positive turns right), Roll around the forward axis (X). Applied
	 * in the order roll, pitch, yaw.
	 */
	template <typename T>
	struct TRotator
	{
		using FReal = T;

		T Pitch = 0;
		T Yaw = 0;
		T Roll = 0;

		/** All three angles zero. */
		static const TRotator ZeroRotator;

		constexpr TRotator() = default;
		explicit constexpr TRotator(T InF)
			: Pitch(InF)
			, Yaw(InF)
			, Roll(InF)
		{
		}
		constexpr TRotator(T InPitch, T InYaw, T InRoll)
			: Pitch(InPitch)
			, Yaw(InYaw)
			, Roll(InRoll)
		{
		}
		explicit constexpr TRotator(EForceInit)
			: Pitch(0)
			, Yaw(0)
			, Roll(0)
		{
		}
		template <typename FArg, typename = std::enable_if_t<!std::is_same_v<T, FArg>>>
		explicit TRotator(const TRotator<FArg>& From)
			: Pitch((T)From.Pitch)
			, Yaw((T)From.Yaw)
			, Roll((T)From.Roll)
		{
		}

		/** The rotator equivalent to a quaternion. */
		explicit TRotator(const TQuat<T>& Quat);

		TRotator operator+(const TRotator& R) const { return TRotator(Pitch + R.Pitch, Yaw + R.Yaw, Roll + R.Roll); }
		TRotator operator-(const TRotator& R) const { return TRotator(Pitch - R.Pitch, Yaw - R.Yaw, Roll - R.Roll); }
		TRotator operator*(T Scale) const { return TRotator(Pitch * Scale, Yaw * Scale, Roll * Scale); }

		TRotator& operator*=(T Scale)
		{
			Pitch *= Scale;
			Yaw *= Scale;
			Roll *= Scale;
			return *this;
		}

		TRotator& operator+=(const TRotator& R)
		{
			Pitch += R.Pitch;
			Yaw += R.Yaw;
			Roll += R.Roll;
			return *this;
		}

		TRotator& operator-=(const TRotator& R)
		{
			Pitch -= R.Pitch;
			Yaw -= R.Yaw;
			Roll -= R.Roll;
			return *this;
		}

		bool operator==(const TRotator& R) const { return Pitch == R.Pitch && Yaw == R.Yaw && Roll == R.Roll; }
		bool operator!=(const TRotator& R) const { return !(*this == R); }

		/** Whether every angle, taken modulo 360, is within Tolerance of zero. */
		bool IsNearlyZero(T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(NormalizeAxis(Pitch)) <= Tolerance && FMath::Abs(NormalizeAxis(Yaw)) <= Tolerance &&
				   FMath::Abs(NormalizeAxis(Roll)) <= Tolerance;
		}

		/** Whether every angle is a whole multiple of 360. */
		bool IsZero() const { return ClampAxis(Pitch) == 0 && ClampAxis(Yaw) == 0 && ClampAxis(Roll) == 0; }

		/** Whether the angles match modulo 360, within Tolerance. */
		bool Equals(const TRotator& R, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return FMath::Abs(NormalizeAxis(Pitch - R.Pitch)) <= Tolerance &&
				   FMath::Abs(NormalizeAxis(Yaw - R.Yaw)) <= Tolerance &&
				   FMath::Abs(NormalizeAxis(Roll - R.Roll)) <= Tolerance;
		}

		TRotator Add(T DeltaPitch, T DeltaYaw, T DeltaRoll)
		{
			Pitch += DeltaPitch;
			Yaw += DeltaYaw;
			Roll += DeltaRoll;
			return *this;
		}

		bool ContainsNaN() const { return !FMath::IsFinite(Pitch) || !FMath::IsFinite(Yaw) || !FMath::IsFinite(Roll); }

		/** Every angle mapped into [0, 360). */
		TRotator Clamp() const { return TRotator(ClampAxis(Pitch), ClampAxis(Yaw), ClampAxis(Roll)); }

		/** Every angle mapped into (-180, 180]. */
		TRotator GetNormalized() const
		{
			return TRotator(NormalizeAxis(Pitch), NormalizeAxis(Yaw), NormalizeAxis(Roll));
		}

		/** Every angle mapped into [0, 360). */
		TRotator GetDenormalized() const { return Clamp(); }

		/** Maps every angle into (-180, 180]. */
		void Normalize()
		{
			Pitch = NormalizeAxis(Pitch);
			Yaw = NormalizeAxis(Yaw);
			Roll = NormalizeAxis(Roll);
		}

		/** The rotation that undoes this one. */
		TRotator GetInverse() const;

		/** The unit vector this rotation turns the X axis into (roll does not affect it). */
		TVector<T> Vector() const;

		/** The same rotation as a quaternion. */
		TQuat<T> Quaternion() const;

		/** The angles as a vector: X = Roll, Y = Pitch, Z = Yaw. */
		TVector<T> Euler() const { return TVector<T>(Roll, Pitch, Yaw); }

		/** Rotates a vector by this rotation. */
		TVector<T> RotateVector(const TVector<T>& V) const;

		/** Rotates a vector by the inverse of this rotation. */
		TVector<T> UnrotateVector(const TVector<T>& V) const;

		T GetComponentForAxis(int32 Axis) const { return Axis == 0 ? Roll : (Axis == 1 ? Pitch : Yaw); }

		/** The largest absolute angle change between this rotator and Rotator, each axis taken modulo 360. */
		T GetManhattanDistance(const TRotator& R) const
		{
			return FMath::Abs(NormalizeAxis(Yaw - R.Yaw)) + FMath::Abs(NormalizeAxis(Pitch - R.Pitch)) +
				   FMath::Abs(NormalizeAxis(Roll - R.Roll));
		}

		/** Formats the rotator as "P=10.000000 Y=20.000000 R=30.000000". */
		FString ToString() const
		{
			return FString::Printf(TEXT("P=%f Y=%f R=%f"), (double)Pitch, (double)Yaw, (double)Roll);
		}

		/** Reads a rotator written by ToString; returns false and leaves it unchanged if an angle is missing. */
		bool InitFromString(const FString& InSourceString)
		{
			T NewPitch = 0;
			T NewYaw = 0;
			T NewRoll = 0;
			if (!FParse::Value(*InSourceString, TEXT("P="), NewPitch) ||
				!FParse::Value(*InSourceString, TEXT("Y="), NewYaw) ||
				!FParse::Value(*InSourceString, TEXT("R="), NewRoll))
			{
				return false;
			}
			Pitch = NewPitch;
			Yaw = NewYaw;
			Roll = NewRoll;
			return true;
		}

		/** Maps an angle in degrees into [0, 360). */
		static T ClampAxis(T Angle) { return FMath::ClampAxis(Angle); }

		/** Maps an angle in degrees into (-180, 180]. */
		static T NormalizeAxis(T Angle) { return FMath::NormalizeAxis(Angle); }

		/** The rotator whose Euler() is the given vector (X = Roll, Y = Pitch, Z = Yaw). */
		static TRotator MakeFromEuler(const TVector<T>& Euler) { return TRotator(Euler.Y, Euler.Z, Euler.X); }
	};

	template <typename T, typename T2, typename = std::enable_if_t<std::is_arithmetic_v<T2>>>
	inline TRotator<T> operator*(T2 Scale, const TRotator<T>& R)
	{
		return R * (T)Scale;
	}

	template <typename T>
	inline const TRotator<T> TRotator<T>::ZeroRotator(0, 0, 0);

	template <typename T>
	TVector<T> TRotator<T>::Vector() const
	{
		T SP = 0;
		T CP = 0;
		T SY = 0;
		T CY = 0;
		FMath::SinCos(&SP, &CP, FMath::DegreesToRadians(FMath::Fmod(Pitch, (T)360)));
		FMath::SinCos(&SY, &CY, FMath::DegreesToRadians(FMath::Fmod(Yaw, (T)360)));
		return TVector<T>(CP * CY, CP * SY, SP);
	}

	template <typename T>
	TRotator<T> TVector<T>::Rotation() const
	{
		return TRotator<T>(FMath::RadiansToDegrees(FMath::Atan2(Z, FMath::Sqrt(X * X + Y * Y))),
			FMath::RadiansToDegrees(FMath::Atan2(Y, X)), 0);
	}

	template <typename T>
	TRotator<T> TVector<T>::ToOrientationRotator() const
	{
		return Rotation();
	}
} // namespace UE::Math

// The quaternion completes the rotator's Quaternion(), RotateVector() and friends.
#include "Math/Quat.h"
