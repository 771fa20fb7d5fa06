// Copyright Orvane. All Rights Reserved.

#include "LiveLinkCameraController.h"

#include "Camera/CameraComponent.h"
#include "CineCameraComponent.h"
#include "LiveLinkTypes.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"

namespace LiveLinkCameraControllerPrivate
{
	/** The farthest focus distance a normalized focus input maps to, in centimetres. */
	constexpr float MaxFocusDistance = 100000.0f;

	/** Millimetres to the world's centimetres. */
	constexpr float MillimetresToCentimetres = 0.1f;

	ECameraProjectionMode::Type ToCameraProjectionMode(ELiveLinkCameraProjectionMode Mode)
	{
		return Mode == ELiveLinkCameraProjectionMode::Orthographic ? ECameraProjectionMode::Orthographic
																   : ECameraProjectionMode::Perspective;
	}
} // namespace LiveLinkCameraControllerPrivate

ULiveLinkCameraController::ULiveLinkCameraController() = default;

void ULiveLinkCameraController::Tick(float DeltaTime, const FLiveLinkSubjectFrameData& SubjectData)
{
	const FLiveLinkCameraStaticData* StaticData = SubjectData.StaticData.Cast<FLiveLinkCameraStaticData>();
	const FLiveLinkCameraFrameData* FrameData = SubjectData.FrameData.Cast<FLiveLinkCameraFrameData>();
	UCameraComponent* CameraComponent = Cast<UCameraComponent>(GetAttachedComponent());
	if (StaticData == nullptr || FrameData == nullptr || CameraComponent == nullptr)
	{
		return;
	}

	ApplyCameraSettings(CameraComponent, *StaticData, *FrameData);
	if (UCineCameraComponent* CineCameraComponent = Cast<UCineCameraComponent>(CameraComponent))
	{
		ApplyFilmback(CineCameraComponent, *StaticData);
		ApplyFocusMethod(CineCameraComponent, *StaticData);
		ApplyFIZ(CineCameraComponent, *StaticData, *FrameData);
	}
	// bShouldUpdateVisualComponentOnChange asks for the camera's frustum drawing to be rebuilt after a change;
	// the headless editor draws no camera, so there is nothing to rebuild.
}

bool ULiveLinkCameraController::IsRoleSupported(const TSubclassOf<ULiveLinkRole>& RoleToSupport)
{
	return RoleToSupport.Get() == ULiveLinkCameraRole::StaticClass();
}

TSubclassOf<UActorComponent> ULiveLinkCameraController::GetDesiredComponentClass() const
{
	return UCameraComponent::StaticClass();
}

void ULiveLinkCameraController::ApplyCameraSettings(UCameraComponent* CameraComponent,
	const FLiveLinkCameraStaticData& StaticData, const FLiveLinkCameraFrameData& FrameData) const
{
	if (StaticData.bIsFieldOfViewSupported && UpdateFlags.bApplyFieldOfView)
	{
		CameraComponent->SetFieldOfView(FrameData.FieldOfView);
	}
	if (StaticData.bIsAspectRatioSupported && UpdateFlags.bApplyAspectRatio)
	{
		CameraComponent->SetAspectRatio(FrameData.AspectRatio);
	}
	if (StaticData.bIsProjectionModeSupported && UpdateFlags.bApplyProjectionMode)
	{
		CameraComponent->SetProjectionMode(
			LiveLinkCameraControllerPrivate::ToCameraProjectionMode(FrameData.ProjectionMode));
	}
}

void ULiveLinkCameraController::ApplyFilmback(
	UCineCameraComponent* CineCameraComponent, const FLiveLinkCameraStaticData& StaticData) const
{
	if (!UpdateFlags.bApplyFilmBack || (StaticData.FilmBackWidth <= 0.0f && StaticData.FilmBackHeight <= 0.0f))
	{
		return;
	}
	// A non-positive size means the subject does not know that side of its sensor; the camera keeps its own.
	FCameraFilmbackSettings Filmback = CineCameraComponent->Filmback;
	if (StaticData.FilmBackWidth > 0.0f)
	{
		Filmback.SensorWidth = StaticData.FilmBackWidth;
	}
	if (StaticData.FilmBackHeight > 0.0f)
	{
		Filmback.SensorHeight = StaticData.FilmBackHeight;
	}
	if (Filmback != CineCameraComponent->Filmback)
	{
		CineCameraComponent->SetFilmback(Filmback);
	}
}

void ULiveLinkCameraController::ApplyFocusMethod(
	UCineCameraComponent* CineCameraComponent, const FLiveLinkCameraStaticData& StaticData) const
{
	if (!StaticData.bIsDepthOfFieldSupported)
	{
		CineCameraComponent->FocusSettings.FocusMethod = ECameraFocusMethod::Disable;
	}
	else if (StaticData.bIsFocusDistanceSupported && UpdateFlags.bApplyFocusDistance)
	{
		// The subject drives the focus distance, which only the manual focus method reads.
		CineCameraComponent->FocusSettings.FocusMethod = ECameraFocusMethod::Manual;
	}
}

void ULiveLinkCameraController::ApplyFIZ(UCineCameraComponent* CineCameraComponent,
	const FLiveLinkCameraStaticData& StaticData, const FLiveLinkCameraFrameData& FrameData) const
{
	using namespace LiveLinkCameraControllerPrivate;

	const FCameraLensSettings& Lens = CineCameraComponent->LensSettings;
	if (StaticData.bIsFocalLengthSupported && UpdateFlags.bApplyFocalLength)
	{
		const TOptional<float> FocalLength =
			ToPhysicalLensValue(FrameData.FocalLength, Lens.MinFocalLength, Lens.MaxFocalLength);
		if (FocalLength.IsSet())
		{
			CineCameraComponent->SetCurrentFocalLength(FocalLength.GetValue());
		}
	}
	if (StaticData.bIsApertureSupported && UpdateFlags.bApplyAperture)
	{
		const TOptional<float> Aperture = ToPhysicalLensValue(FrameData.Aperture, Lens.MinFStop, Lens.MaxFStop);
		if (Aperture.IsSet())
		{
			CineCameraComponent->SetCurrentAperture(Aperture.GetValue());
		}
	}
	if (StaticData.bIsFocusDistanceSupported && UpdateFlags.bApplyFocusDistance)
	{
		const TOptional<float> FocusDistance = ToPhysicalLensValue(
			FrameData.FocusDistance, Lens.MinimumFocusDistance * MillimetresToCentimetres, MaxFocusDistance);
		if (FocusDistance.IsSet())
		{
			CineCameraComponent->FocusSettings.ManualFocusDistance = FocusDistance.GetValue();
		}
	}
}

TOptional<float> ULiveLinkCameraController::ToPhysicalLensValue(float Input, float RangeMin, float RangeMax) const
{
	if (bUseCameraRange)
	{
		return FMath::Lerp(RangeMin, RangeMax, Input);
	}
	if (Input > 1.0f)
	{
		return Input;
	}
	return TOptional<float>();
}
