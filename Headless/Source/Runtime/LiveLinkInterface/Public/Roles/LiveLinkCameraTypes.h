// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Roles/LiveLinkTransformTypes.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkCameraTypes.generated.h"

/** How a camera projects the scene. */
UENUM(BlueprintType)
enum class ELiveLinkCameraProjectionMode : uint8
{
	Perspective,
	Orthographic
};

/** The static data of the camera role: which lens values the source sends, and the film back. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkCameraStaticData : public FLiveLinkTransformStaticData
{
	GENERATED_BODY()

	/** The frames' FieldOfView is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsFieldOfViewSupported = false;

	/** The frames' AspectRatio is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsAspectRatioSupported = false;

	/** The frames' FocalLength is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsFocalLengthSupported = false;

	/** The frames' ProjectionMode is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsProjectionModeSupported = false;

	/** The film back's width in millimetres; applied to a cine camera when above zero. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	float FilmBackWidth = -1.0f;

	/** The film back's height in millimetres; applied to a cine camera when above zero. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	float FilmBackHeight = -1.0f;

	/** The frames' Aperture is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsApertureSupported = false;

	/** The frames' FocusDistance is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsFocusDistanceSupported = false;

	/** False turns depth of field off on a cine camera. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera")
	bool bIsDepthOfFieldSupported = true;
};

/** A frame of the camera role: the transform and the lens. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkCameraFrameData : public FLiveLinkTransformFrameData
{
	GENERATED_BODY()

	/** The horizontal field of view in degrees. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	float FieldOfView = 90.f;

	/** Width over height. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	float AspectRatio = 1.777778f;

	/** The focal length in millimetres. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	float FocalLength = 50.f;

	/** The aperture as an f-stop. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	float Aperture = 2.8f;

	/** The focus distance in centimetres; used with the manual focus method. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	float FocusDistance = 100000.0f;

	/** The projection. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Interp, Category = "Camera")
	ELiveLinkCameraProjectionMode ProjectionMode = ELiveLinkCameraProjectionMode::Perspective;
};

/** The data of the camera role as handed to Blueprints. */
USTRUCT(BlueprintType)
struct FLiveLinkCameraBlueprintData : public FLiveLinkBaseBlueprintData
{
	GENERATED_BODY()

	/** The subject's static data. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkCameraStaticData StaticData;

	/** The evaluated frame. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkCameraFrameData FrameData;
};
