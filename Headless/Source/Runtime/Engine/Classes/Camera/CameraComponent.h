// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Camera/CameraTypes.h"
#include "Components/SceneComponent.h"
#include "CoreMinimal.h"
#include "Engine/Scene.h"
#include "UObject/ObjectMacros.h"

#include "CameraComponent.generated.h"

/** A camera viewpoint: projection, field of view and the post-process settings it applies. */
UCLASS(Blueprintable, meta = (BlueprintSpawnableComponent))
class ENGINE_API UCameraComponent : public USceneComponent
{
	GENERATED_BODY()

public:
	UCameraComponent(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The horizontal field of view in degrees, in perspective mode (1 to 170). */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = CameraSettings,
		meta = (UIMin = "5.0", UIMax = "170", ClampMin = "0.001", ClampMax = "360.0", Units = deg))
	float FieldOfView = 90.f;

	/** The width of the view in world units, in orthographic mode. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	float OrthoWidth = 512.f;

	/** The near clip plane in orthographic mode. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	float OrthoNearClipPlane = 0.f;

	/** The far clip plane in orthographic mode. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	float OrthoFarClipPlane = 2097152.f;

	/** Width divided by height. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = CameraSettings,
		meta = (ClampMin = "0.1", ClampMax = "100.0"))
	float AspectRatio = 16.f / 9.f;

	/** Whether the view is letterboxed to the aspect ratio. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	uint8 bConstrainAspectRatio : 1;

	/** Whether the camera follows the controlling pawn's view rotation. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	uint8 bUsePawnControlRotation : 1;

	/** Perspective or orthographic. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = CameraSettings)
	TEnumAsByte<ECameraProjectionMode::Type> ProjectionMode = ECameraProjectionMode::Perspective;

	/** How much the camera's post-process settings apply (0 to 1). */
	UPROPERTY(Interp, BlueprintReadWrite, Category = PostProcess, meta = (UIMin = "0.0", UIMax = "1.0"))
	float PostProcessBlendWeight = 1.f;

	/** The post-process settings the camera applies. */
	UPROPERTY(Interp, BlueprintReadWrite, Category = PostProcess, meta = (ShowOnlyInnerProperties))
	FPostProcessSettings PostProcessSettings;

	virtual void SetFieldOfView(float InFieldOfView) { FieldOfView = InFieldOfView; }
	void SetOrthoWidth(float InOrthoWidth) { OrthoWidth = InOrthoWidth; }
	void SetOrthoNearClipPlane(float InOrthoNearClipPlane) { OrthoNearClipPlane = InOrthoNearClipPlane; }
	void SetOrthoFarClipPlane(float InOrthoFarClipPlane) { OrthoFarClipPlane = InOrthoFarClipPlane; }
	void SetAspectRatio(float InAspectRatio) { AspectRatio = InAspectRatio; }
	void SetConstraintAspectRatio(bool bInConstrainAspectRatio) { bConstrainAspectRatio = bInConstrainAspectRatio; }
	void SetUsePawnControlRotation(bool bInUsePawnControlRotation)
	{
		bUsePawnControlRotation = bInUsePawnControlRotation;
	}
	void SetProjectionMode(ECameraProjectionMode::Type InProjectionMode) { ProjectionMode = InProjectionMode; }
	void SetPostProcessBlendWeight(float InPostProcessBlendWeight)
	{
		PostProcessBlendWeight = InPostProcessBlendWeight;
	}

	/** Adds a post-process material (or other blendable) to the camera's settings. */
	void AddOrUpdateBlendable(UObject* InBlendableObject, float InWeight = 1.f);

	/** Removes a blendable from the camera's settings. */
	void RemoveBlendable(UObject* InBlendableObject);
};
