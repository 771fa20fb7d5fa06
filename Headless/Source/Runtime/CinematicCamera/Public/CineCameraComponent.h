// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Camera/CameraComponent.h"
#include "CineCameraSettings.h"
#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "CineCameraComponent.generated.h"

/**
 * A camera component that models a real camera: a filmback (sensor), a lens with physical limits, and focus. The
 * field of view follows from the focal length and the sensor width, 2 * atan(SensorWidth / (2 * FocalLength)); the
 * derived values are recomputed when the settings change through the setters, when the component is registered and
 * on every tick (it ticks in the editor too), so values written directly into the properties take effect on the next
 * frame.
 */
UCLASS(Blueprintable, meta = (BlueprintSpawnableComponent), Config = Engine)
class CINEMATICCAMERA_API UCineCameraComponent : public UCameraComponent
{
	GENERATED_BODY()

public:
	UCineCameraComponent(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** Controls the filmback of the camera. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings")
	FCameraFilmbackSettings Filmback;

	/** Controls the camera's lens. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings")
	FCameraLensSettings LensSettings;

	/** Controls the camera's focus. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings")
	FCameraFocusSettings FocusSettings;

	/** Current focal length of the camera (i.e. controls FoV, zoom), in mm. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings", meta = (ForceUnits = mm))
	float CurrentFocalLength = 35.f;

	/** Current aperture, in terms of f-stop (e.g. 2.8 for f/2.8). */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings")
	float CurrentAperture = 2.8f;

	/** Read-only. Control this value via FocusSettings. */
	UPROPERTY(Interp, VisibleAnywhere, BlueprintReadOnly, Category = "Current Camera Settings", meta = (Units = cm))
	float CurrentFocusDistance = 0.f;

	/** Set bOverride_CustomNearClippingPlane to true if you want to use a custom clipping plane instead of the project
	 * default. */
	UPROPERTY(BlueprintReadWrite, EditAnywhere, Category = "Current Camera Settings")
	uint8 bOverride_CustomNearClippingPlane : 1;

	/** Set near clipping plane for this camera, in world units. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Current Camera Settings",
		meta = (ClampMin = "0.001", Units = cm))
	float CustomNearClippingPlane = 10.f;

	/** Read-only. Control this value with CurrentFocalLength (and Filmback settings). */
	UPROPERTY(Interp, VisibleAnywhere, BlueprintReadOnly, Category = "Current Camera Settings", meta = (Units = deg))
	float CurrentHorizontalFOV = 0.f;

	/** Sets the focal length (clamped to the lens) and recomputes the field of view. */
	void SetCurrentFocalLength(float InFocalLength);

	/** Sets the aperture (clamped to the lens). */
	void SetCurrentAperture(const float NewCurrentAperture);

	/** Sets the near clipping plane and turns its override on. */
	void SetCustomNearClippingPlane(const float NewCustomNearClippingPlane);

	/** The horizontal field of view of the camera with the current settings, in degrees. */
	float GetHorizontalFieldOfView() const;

	/** The vertical field of view of the camera with the current settings, in degrees. */
	float GetVerticalFieldOfView() const;

	/** The name of the filmback preset the current filmback matches; empty if none. */
	FString GetFilmbackPresetName() const;

	/** The name of the default filmback preset. */
	FString GetDefaultFilmbackPresetName() const;

	/** Sets the filmback to a preset; an unknown name changes nothing. */
	void SetFilmbackPresetByName(const FString& InPresetName);

	/** The name of the lens preset the current lens matches; empty if none. */
	FString GetLensPresetName() const;

	/** Sets the lens to a preset; an unknown name changes nothing. */
	void SetLensPresetByName(const FString& InPresetName);

	static TArray<FNamedFilmbackPreset> GetFilmbackPresetsCopy();
	static TArray<FNamedLensPreset> GetLensPresetsCopy();

	void SetFilmback(const FCameraFilmbackSettings& NewFilmback);
	void SetLensSettings(const FCameraLensSettings& NewLensSettings);
	void SetFocusSettings(const FCameraFocusSettings& NewFocusSettings);

	/** The field of view follows the focal length: it is recomputed, not set. */
	virtual void SetFieldOfView(float InFieldOfView) override;

	virtual void TickComponent(
		float DeltaTime, enum ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction) override;
	virtual void PostInitProperties() override;
	virtual void PostLoad() override;
#if WITH_EDITOR
	virtual void PostEditChangeProperty(FPropertyChangedEvent& PropertyChangedEvent) override;
#endif

protected:
	virtual void OnRegister() override;

	/** Applies the lens limits and recomputes the values derived from the settings. */
	void RecalcDerivedData();

	/** The focus distance the focus settings ask for, from the camera at InLocation. */
	float GetDesiredFocusDistance(const FVector& InLocation) const;

	/** World units per metre (the headless engine works in centimetres). */
	float GetWorldToMetersScale() const
	{
		return 100.f;
	}
};
