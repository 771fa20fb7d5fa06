// Copyright Orvane. All Rights Reserved.

#include "CineCameraComponent.h"

#include "UObject/UnrealType.h"

UCineCameraComponent::UCineCameraComponent(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, bOverride_CustomNearClippingPlane(false)
{
	// New cameras take the project's default filmback and lens.
	const UCineCameraSettings* Settings = GetDefault<UCineCameraSettings>();
	Settings->GetFilmbackPresetByName(Settings->DefaultFilmbackPreset, Filmback);
	Settings->GetLensPresetByName(Settings->DefaultLensPresetName, LensSettings);
	CurrentFocalLength = Settings->DefaultLensFocalLength;
	CurrentAperture = Settings->DefaultLensFStop;

	bConstrainAspectRatio = true;

	// The derived values are kept up to date every frame, in the editor as well.
	PrimaryComponentTick.bCanEverTick = true;
	bTickInEditor = true;

	RecalcDerivedData();
}

void UCineCameraComponent::PostInitProperties()
{
	Super::PostInitProperties();
	RecalcDerivedData();
}

void UCineCameraComponent::PostLoad()
{
	Super::PostLoad();
	RecalcDerivedData();
}

void UCineCameraComponent::OnRegister()
{
	Super::OnRegister();
	RecalcDerivedData();
}

#if WITH_EDITOR
void UCineCameraComponent::PostEditChangeProperty(FPropertyChangedEvent& PropertyChangedEvent)
{
	RecalcDerivedData();
	Super::PostEditChangeProperty(PropertyChangedEvent);
}
#endif

void UCineCameraComponent::TickComponent(
	float DeltaTime, ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction)
{
	RecalcDerivedData();
	if (FocusSettings.bSmoothFocusChanges)
	{
		const float Desired = GetDesiredFocusDistance(GetComponentLocation());
		CurrentFocusDistance =
			FMath::FInterpTo(CurrentFocusDistance, Desired, DeltaTime, FocusSettings.FocusSmoothingInterpSpeed);
	}
	Super::TickComponent(DeltaTime, TickType, ThisTickFunction);
}

void UCineCameraComponent::SetCurrentFocalLength(float InFocalLength)
{
	CurrentFocalLength = InFocalLength;
	RecalcDerivedData();
}

void UCineCameraComponent::SetCurrentAperture(const float NewCurrentAperture)
{
	CurrentAperture = NewCurrentAperture;
	RecalcDerivedData();
}

void UCineCameraComponent::SetCustomNearClippingPlane(const float NewCustomNearClippingPlane)
{
	CustomNearClippingPlane = NewCustomNearClippingPlane;
	bOverride_CustomNearClippingPlane = true;
}

void UCineCameraComponent::SetFilmback(const FCameraFilmbackSettings& NewFilmback)
{
	Filmback = NewFilmback;
	RecalcDerivedData();
}

void UCineCameraComponent::SetLensSettings(const FCameraLensSettings& NewLensSettings)
{
	LensSettings = NewLensSettings;
	RecalcDerivedData();
}

void UCineCameraComponent::SetFocusSettings(const FCameraFocusSettings& NewFocusSettings)
{
	FocusSettings = NewFocusSettings;
	RecalcDerivedData();
}

void UCineCameraComponent::SetFieldOfView(float InFieldOfView)
{
	// A cine camera's field of view is a consequence of its lens and sensor.
	RecalcDerivedData();
}

float UCineCameraComponent::GetHorizontalFieldOfView() const
{
	if (CurrentFocalLength <= 0.f)
	{
		return 0.f;
	}
	const float SensorWidth = Filmback.SensorWidth * LensSettings.SqueezeFactor;
	return FMath::RadiansToDegrees(2.f * FMath::Atan(SensorWidth / (2.f * CurrentFocalLength)));
}

float UCineCameraComponent::GetVerticalFieldOfView() const
{
	if (CurrentFocalLength <= 0.f)
	{
		return 0.f;
	}
	return FMath::RadiansToDegrees(2.f * FMath::Atan(Filmback.SensorHeight / (2.f * CurrentFocalLength)));
}

FString UCineCameraComponent::GetFilmbackPresetName() const
{
	for (const FNamedFilmbackPreset& Preset : UCineCameraSettings::GetFilmbackPresets())
	{
		if (Preset.FilmbackSettings == Filmback)
		{
			return Preset.Name;
		}
	}
	return FString();
}

FString UCineCameraComponent::GetDefaultFilmbackPresetName() const
{
	return GetDefault<UCineCameraSettings>()->DefaultFilmbackPreset;
}

void UCineCameraComponent::SetFilmbackPresetByName(const FString& InPresetName)
{
	FCameraFilmbackSettings NewFilmback;
	if (GetDefault<UCineCameraSettings>()->GetFilmbackPresetByName(InPresetName, NewFilmback))
	{
		SetFilmback(NewFilmback);
	}
}

FString UCineCameraComponent::GetLensPresetName() const
{
	for (const FNamedLensPreset& Preset : UCineCameraSettings::GetLensPresets())
	{
		if (Preset.LensSettings == LensSettings)
		{
			return Preset.Name;
		}
	}
	return FString();
}

void UCineCameraComponent::SetLensPresetByName(const FString& InPresetName)
{
	FCameraLensSettings NewLensSettings;
	if (GetDefault<UCineCameraSettings>()->GetLensPresetByName(InPresetName, NewLensSettings))
	{
		SetLensSettings(NewLensSettings);
	}
}

TArray<FNamedFilmbackPreset> UCineCameraComponent::GetFilmbackPresetsCopy()
{
	return UCineCameraSettings::GetFilmbackPresets();
}

TArray<FNamedLensPreset> UCineCameraComponent::GetLensPresetsCopy()
{
	return UCineCameraSettings::GetLensPresets();
}

float UCineCameraComponent::GetDesiredFocusDistance(const FVector& InLocation) const
{
	float Desired = 0.f;
	switch (FocusSettings.FocusMethod)
	{
		case ECameraFocusMethod::Manual:
			Desired = FocusSettings.ManualFocusDistance;
			break;
		case ECameraFocusMethod::Tracking:
		{
			const FCameraTrackingFocusSettings& Tracking = FocusSettings.TrackingFocusSettings;
			const AActor* Tracked = Tracking.ActorToTrack.Get();
			const FVector FocusPoint = Tracked ? Tracked->GetActorTransform().TransformPosition(Tracking.RelativeOffset)
											   : Tracking.RelativeOffset;
			// Focus is a distance along the view direction, not to the point itself.
			Desired = (float)((FocusPoint - InLocation) | GetForwardVector());
			break;
		}
		case ECameraFocusMethod::DoNotOverride:
		case ECameraFocusMethod::Disable:
		default:
			return 0.f;
	}
	const float MinFocusDistanceInWorldUnits = LensSettings.MinimumFocusDistance * (GetWorldToMetersScale() / 1000.f);
	return FMath::Max(Desired + FocusSettings.FocusOffset, MinFocusDistanceInWorldUnits);
}

void UCineCameraComponent::RecalcDerivedData()
{
	// The simulated hardware has physical limits.
	CurrentFocalLength = FMath::Clamp(CurrentFocalLength, LensSettings.MinFocalLength, LensSettings.MaxFocalLength);
	CurrentAperture = FMath::Clamp(CurrentAperture, LensSettings.MinFStop, LensSettings.MaxFStop);
	const float MinFocusDistanceInWorldUnits = LensSettings.MinimumFocusDistance * (GetWorldToMetersScale() / 1000.f);
	FocusSettings.ManualFocusDistance = FMath::Max(FocusSettings.ManualFocusDistance, MinFocusDistanceInWorldUnits);

	Filmback.RecalcSensorAspectRatio();
	CurrentHorizontalFOV = GetHorizontalFieldOfView();
	FieldOfView = CurrentHorizontalFOV;
	if (Filmback.SensorHeight > 0.f)
	{
		AspectRatio = Filmback.SensorWidth * LensSettings.SqueezeFactor / Filmback.SensorHeight;
	}
	if (!FocusSettings.bSmoothFocusChanges)
	{
		CurrentFocusDistance = GetDesiredFocusDistance(GetComponentLocation());
	}
}
