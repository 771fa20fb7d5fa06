// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkControllerBase.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkCameraController.generated.h"

class UCameraComponent;
class UCineCameraComponent;
struct FLiveLinkCameraFrameData;
struct FLiveLinkCameraStaticData;

/** Which of the camera values a subject provides the controller passes on to the camera. */
USTRUCT()
struct FLiveLinkCameraControllerUpdateFlags
{
	GENERATED_BODY()

	/** Apply the frames' field of view when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyFieldOfView = true;

	/** Apply the frames' aspect ratio when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyAspectRatio = true;

	/** Apply the frames' focal length when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyFocalLength = true;

	/** Apply the frames' projection mode when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyProjectionMode = true;

	/** Apply the sensor size the subject's static data declares. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyFilmBack = true;

	/** Apply the frames' aperture when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyAperture = true;

	/** Apply the frames' focus distance when the subject provides it. */
	UPROPERTY(EditAnywhere, Category = "Updates")
	bool bApplyFocusDistance = true;
};

/**
 * Drives a camera component from a subject of the Camera role: field of view, aspect ratio and projection on
 * any camera; filmback, focal length, aperture and focus on a cine camera. The subject's transform is applied
 * by the Transform controller the component controller creates for the Transform level of the role.
 */
UCLASS()
class LIVELINKCAMERA_API ULiveLinkCameraController : public ULiveLinkControllerBase
{
	GENERATED_BODY()

public:
	ULiveLinkCameraController();

	/**
	 * Reads focal length, aperture and focus distance as fractions (0..1) of the camera's lens limits instead
	 * of physical values.
	 */
	UPROPERTY(EditAnywhere, Category = "Camera Calibration")
	bool bUseCameraRange = false;

	/** Which of the subject's camera values reach the camera. */
	UPROPERTY(EditAnywhere, Category = "Camera Calibration", AdvancedDisplay)
	FLiveLinkCameraControllerUpdateFlags UpdateFlags;

	/** Whether to refresh the camera's visual representation when a value changes. */
	UPROPERTY(EditAnywhere, Category = "Camera Calibration", AdvancedDisplay)
	bool bShouldUpdateVisualComponentOnChange = true;

	virtual void Tick(float DeltaTime, const FLiveLinkSubjectFrameData& SubjectData) override;
	virtual bool IsRoleSupported(const TSubclassOf<ULiveLinkRole>& RoleToSupport) override;
	virtual TSubclassOf<UActorComponent> GetDesiredComponentClass() const override;

private:
	/** Field of view, aspect ratio and projection mode, on any camera component. */
	void ApplyCameraSettings(UCameraComponent* CameraComponent, const FLiveLinkCameraStaticData& StaticData,
		const FLiveLinkCameraFrameData& FrameData) const;

	/** The sensor size the subject declares, if any. */
	void ApplyFilmback(UCineCameraComponent* CineCameraComponent, const FLiveLinkCameraStaticData& StaticData) const;

	/** Turns depth of field off, or to manual focus, as the subject's capabilities say. */
	void ApplyFocusMethod(UCineCameraComponent* CineCameraComponent, const FLiveLinkCameraStaticData& StaticData) const;

	/** Focal length, aperture and focus distance (the lens's focus, iris and zoom). */
	void ApplyFIZ(UCineCameraComponent* CineCameraComponent, const FLiveLinkCameraStaticData& StaticData,
		const FLiveLinkCameraFrameData& FrameData) const;

	/**
	 * The physical value a lens input stands for: lerped over [RangeMin, RangeMax] with bUseCameraRange;
	 * otherwise the input itself, which only counts when it is above 1 (smaller inputs are normalized encoder
	 * positions that cannot be read without a calibration). Unset when the input is not to be applied.
	 */
	TOptional<float> ToPhysicalLensValue(float Input, float RangeMin, float RangeMax) const;
};
