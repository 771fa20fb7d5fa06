// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

namespace UE::Math
{
	/**
	 * Scale, then rotation, then translation. A * B is the transform that applies A first and then B,
	 * so a child's world transform is ChildRelative * ParentWorld.
	 */
	template <typename T>
	struct TTransform
	{
		using FReal = T;

		/** Zero translation, no rotation, unit scale. */
		static const TTransform Identity;

		TTransform() = default;

		explicit TTransform(const TVector<T>& InTranslation)
			: Translation(InTranslation)
		{
		}

		explicit TTransform(const TQuat<T>& InRotation)
			: Rotation(InRotation)
		{
		}

		explicit TTransform(const TRotator<T>& InRotation)
			: Rotation(InRotation)
		{
		}

		TTransform(const TQuat<T>& InRotation, const TVector<T>& InTranslation,
			const TVector<T>& InScale3D = TVector<T>::OneVector)
			: Rotation(InRotation)
			, Translation(InTranslation)
			, Scale3D(InScale3D)
		{
		}

		TTransform(const TRotator<T>& InRotation, const TVector<T>& InTranslation,
			const TVector<T>& InScale3D = TVector<T>::OneVector)
			: Rotation(InRotation)
			, Translation(InTranslation)
			, Scale3D(InScale3D)
		{
		}

		/** The transform that applies this one and then Other. */
		TTransform operator*(const TTransform& Other) const
		{
			TTransform Result;
			Result.Rotation = Other.Rotation * Rotation;
			Result.Scale3D = Scale3D * Other.Scale3D;
			Result.Translation = Other.Rotation.RotateVector(Other.Scale3D * Translation) + Other.Translation;
			return Result;
		}

		TTransform& operator*=(const TTransform& Other)
		{
			*this = *this * Other;
			return *this;
		}

		/** This transform followed by the rotation Other. */
		TTransform operator*(const TQuat<T>& Other) const { return *this * TTransform(Other); }

		TVector<T> GetLocation() const { return Translation; }
		TVector<T> GetTranslation() const { return Translation; }
		void SetLocation(const TVector<T>& Origin) { Translation = Origin; }
		void SetTranslation(const TVector<T>& NewTranslation) { Translation = NewTranslation; }
		void AddToTranslation(const TVector<T>& DeltaTranslation) { Translation += DeltaTranslation; }
		TQuat<T> GetRotation() const { return Rotation; }
		void SetRotation(const TQuat<T>& NewRotation) { Rotation = NewRotation; }
		TRotator<T> Rotator() const { return Rotation.Rotator(); }
		TVector<T> GetScale3D() const { return Scale3D; }
		void SetScale3D(const TVector<T>& NewScale3D) { Scale3D = NewScale3D; }

		void SetComponents(const TQuat<T>& InRotation, const TVector<T>& InTranslation, const TVector<T>& InScale3D)
		{
			Rotation = InRotation;
			Translation = InTranslation;
			Scale3D = InScale3D;
		}

		void SetIdentity() { *this = TTransform(); }

		TVector<T> GetUnitAxis(int32 Axis) const
		{
			return Axis == 0 ? Rotation.GetAxisX() : (Axis == 1 ? Rotation.GetAxisY() : Rotation.GetAxisZ());
		}

		/** Scale, rotate, then translate a point. */
		TVector<T> TransformPosition(const TVector<T>& V) const
		{
			return Rotation.RotateVector(Scale3D * V) + Translation;
		}

		TVector<T> TransformPositionNoScale(const TVector<T>& V) const
		{
			return Rotation.RotateVector(V) + Translation;
		}

		/** Scale and rotate a direction; translation does not apply. */
		TVector<T> TransformVector(const TVector<T>& V) const { return Rotation.RotateVector(Scale3D * V); }

		TVector<T> TransformVectorNoScale(const TVector<T>& V) const { return Rotation.RotateVector(V); }

		TQuat<T> TransformRotation(const TQuat<T>& Q) const { return Rotation * Q; }

		/** Undo TransformPosition. */
		TVector<T> InverseTransformPosition(const TVector<T>& V) const
		{
			return Rotation.UnrotateVector(V - Translation) * GetSafeScaleReciprocal(Scale3D);
		}

		TVector<T> InverseTransformPositionNoScale(const TVector<T>& V) const
		{
			return Rotation.UnrotateVector(V - Translation);
		}

		/** Undo TransformVector. */
		TVector<T> InverseTransformVector(const TVector<T>& V) const
		{
			return Rotation.UnrotateVector(V) * GetSafeScaleReciprocal(Scale3D);
		}

		TVector<T> InverseTransformVectorNoScale(const TVector<T>& V) const { return Rotation.UnrotateVector(V); }

		TQuat<T> InverseTransformRotation(const TQuat<T>& Q) const { return Rotation.Inverse() * Q; }

		/** The transform that undoes this one (exact for uniform scale). */
		TTransform Inverse() const
		{
			const TQuat<T> InvRotation = Rotation.Inverse();
			const TVector<T> InvScale3D = GetSafeScaleReciprocal(Scale3D);
			const TVector<T> InvTranslation = InvRotation.RotateVector(InvScale3D * -Translation);
			return TTransform(InvRotation, InvTranslation, InvScale3D);
		}

		/** This transform expressed relative to Other: the X with X * Other == *this. */
		TTransform GetRelativeTransform(const TTransform& Other) const { return *this * Other.Inverse(); }

		bool Equals(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return Rotation.Equals(Other.Rotation, Tolerance) && Translation.Equals(Other.Translation, Tolerance) &&
				   Scale3D.Equals(Other.Scale3D, Tolerance);
		}

		bool EqualsNoScale(const TTransform& Other, T Tolerance = UE_KINDA_SMALL_NUMBER) const
		{
			return Rotation.Equals(Other.Rotation, Tolerance) && Translation.Equals(Other.Translation, Tolerance);
		}

		bool ContainsNaN() const
		{
			return Rotation.ContainsNaN() || Translation.ContainsNaN() || Scale3D.ContainsNaN();
		}

		bool IsRotationNormalized() const { return Rotation.IsNormalized(); }
		void NormalizeRotation() { Rotation.Normalize(); }

		/** Reciprocal of each scale component, with zero for components within Tolerance of zero. */
		static TVector<T> GetSafeScaleReciprocal(const TVector<T>& InScale, T Tolerance = UE_SMALL_NUMBER)
		{
			return TVector<T>(FMath::Abs(InScale.X) <= Tolerance ? 0 : 1 / InScale.X,
				FMath::Abs(InScale.Y) <= Tolerance ? 0 : 1 / InScale.Y,
				FMath::Abs(InScale.Z) <= Tolerance ? 0 : 1 / InScale.Z);
		}

		/** Formats as "Tx,Ty,Tz|Pitch,Yaw,Roll|Sx,Sy,Sz". */
		FString ToString() const
		{
			const TRotator<T> R = Rotator();
			return FString::Printf(TEXT("%f,%f,%f|%f,%f,%f|%f,%f,%f"), (double)Translation.X, (double)Translation.Y,
				(double)Translation.Z, (double)R.Pitch, (double)R.Yaw, (double)R.Roll, (double)Scale3D.X,
				(double)Scale3D.Y, (double)Scale3D.Z);
		}

	private:
		TQuat<T> Rotation = TQuat<T>(0, 0, 0, 1);
		TVector<T> Translation = TVector<T>(0, 0, 0);
		TVector<T> Scale3D = TVector<T>(1, 1, 1);
	};

	template <typename T>
	inline const TTransform<T> TTransform<T>::Identity = TTransform<T>();
} // namespace UE::Math
