// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/DeveloperSettings.h"
#include "GameFramework/Actor.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPtr.h"

#include "CineCameraSettings.generated.h"

/** The size of the filmback or digital sensor of a cine camera. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FCameraFilmbackSettings
{
	GENERATED_BODY()

	/** Horizontal size of filmback or digital sensor, in mm. */
	UPROPERTY(
		Interp, EditAnywhere, BlueprintReadWrite, Category = "Filmback", meta = (ClampMin = "0.001", ForceUnits = mm))
	float SensorWidth = 24.89f;

	/** Vertical size of filmback or digital sensor, in mm. */
	UPROPERTY(
		Interp, EditAnywhere, BlueprintReadWrite, Category = "Filmback", meta = (ClampMin = "0.001", ForceUnits = mm))
	float SensorHeight = 18.67f;

	/** Horizontal offset of the filmback, in mm. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Filmback", meta = (ForceUnits = mm))
	float SensorHorizontalOffset = 0.f;

	/** Vertical offset of the filmback, in mm. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Filmback", meta = (ForceUnits = mm))
	float SensorVerticalOffset = 0.f;

	/** Read-only. Computed from Sensor dimensions. */
	UPROPERTY(Interp, VisibleAnywhere, BlueprintReadOnly, Category = "Filmback")
	float SensorAspectRatio = 1.33f;

	FCameraFilmbackSettings() = default;

	bool operator==(const FCameraFilmbackSettings& Other) const
	{
		return SensorWidth == Other.SensorWidth && SensorHeight == Other.SensorHeight &&
			   SensorHorizontalOffset == Other.SensorHorizontalOffset &&
			   SensorVerticalOffset == Other.SensorVerticalOffset;
	}

	bool operator!=(const FCameraFilmbackSettings& Other) const { return !(*this == Other); }

	/** Recomputes SensorAspectRatio from the sensor's size. */
	void RecalcSensorAspectRatio() { SensorAspectRatio = SensorHeight != 0.f ? SensorWidth / SensorHeight : 0.f; }
};

/** The physical limits of a cine camera's lens. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FCameraLensSettings
{
	GENERATED_BODY()

	/** Minimum focal length for this lens, in mm. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens", meta = (ForceUnits = mm, ClampMin = "0.001"))
	float MinFocalLength = 50.f;

	/** Maximum focal length for this lens, in mm. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens", meta = (ForceUnits = mm, ClampMin = "0.001"))
	float MaxFocalLength = 50.f;

	/** Minimum aperture for this lens (e.g. 2.8 for an f/2.8 lens). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens")
	float MinFStop = 2.f;

	/** Maximum aperture for this lens (e.g. 2.8 for an f/2.8 lens). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens")
	float MaxFStop = 2.f;

	/** Shortest distance this lens can focus on, in mm. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens", meta = (ForceUnits = mm))
	float MinimumFocusDistance = 15.f;

	/** Horizontal squeeze of an anamorphic lens; 1 for a spherical lens. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens",
		meta = (UIMin = "1", UIMax = "2", ClampMin = "0.01", ClampMax = "10"))
	float SqueezeFactor = 1.f;

	/** Number of blades of diaphragm. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Lens", meta = (ClampMin = "4", ClampMax = "16"))
	int32 DiaphragmBladeCount = 5;

	FCameraLensSettings() = default;

	bool operator==(const FCameraLensSettings& Other) const
	{
		return MinFocalLength == Other.MinFocalLength && MaxFocalLength == Other.MaxFocalLength &&
			   MinFStop == Other.MinFStop && MaxFStop == Other.MaxFStop &&
			   MinimumFocusDistance == Other.MinimumFocusDistance && SqueezeFactor == Other.SqueezeFactor &&
			   DiaphragmBladeCount == Other.DiaphragmBladeCount;
	}

	bool operator!=(const FCameraLensSettings& Other) const { return !(*this == Other); }
};

/** Supported methods for focusing the camera. */
UENUM()
enum class ECameraFocusMethod : uint8
{
	/** Don't override, ie. allow post process volume settings to persist. */
	DoNotOverride,
	/** Allows for specifying or animating exact focus distances. */
	Manual,
	/** Locks focus to specific object. */
	Tracking,
	/** Disable depth of field entirely. */
	Disable,
	MAX UMETA(Hidden)
};

/** Settings to control tracking-focus mode. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FCameraTrackingFocusSettings
{
	GENERATED_BODY()

	/** Focus distance will be tied to this actor's location. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Tracking Focus")
	TSoftObjectPtr<AActor> ActorToTrack;

	/** Offset from the tracked actor's location, in its local space. */
	FVector RelativeOffset = FVector::ZeroVector;

	/** True to draw a debug representation of the tracked position. */
	UPROPERTY(Transient, EditAnywhere, BlueprintReadWrite, Category = "Tracking Focus")
	uint8 bDrawDebugTrackingFocusPoint : 1;

	FCameraTrackingFocusSettings()
		: bDrawDebugTrackingFocusPoint(false)
	{
	}
};

/** Settings to control camera focus. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FCameraFocusSettings
{
	GENERATED_BODY()

	/** Which method to use to handle camera focus. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Camera Settings")
	ECameraFocusMethod FocusMethod = ECameraFocusMethod::Manual;

	/** Manually-controlled focus distance (manual focus mode only), in world units. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Manual Focus Settings", meta = (Units = cm))
	float ManualFocusDistance = 100000.f;

	/** Settings to control tracking focus (tracking focus mode only). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Tracking Focus Settings")
	FCameraTrackingFocusSettings TrackingFocusSettings;

	/** For customizing the focus plane color, in case the default doesn't show up well in your scene. */
	FColor DebugFocusPlaneColor = FColor(102, 26, 204, 153);

	/** True to draw a translucent plane at the current focus depth, for easy tweaking. */
	UPROPERTY(Transient, EditAnywhere, Category = "Manual Focus Settings")
	uint8 bDrawDebugFocusPlane : 1;

	/** True to use interpolation to smooth out changes in focus distance, false for focus distance changes to be
	 * instantaneous. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Focus Smoothing")
	uint8 bSmoothFocusChanges : 1;

	/** Controls interpolation speed when smoothing focus distance changes. Ignored if bSmoothFocusChanges is false. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Focus Smoothing")
	float FocusSmoothingInterpSpeed = 8.f;

	/** Additional focus depth offset, used for manually tweaking if your chosen focus method needs adjustment. */
	UPROPERTY(Interp, EditAnywhere, BlueprintReadWrite, Category = "Camera Settings", meta = (Units = cm))
	float FocusOffset = 0.f;

	FCameraFocusSettings()
		: bDrawDebugFocusPlane(false)
		, bSmoothFocusChanges(false)
	{
	}
};

/** A named bundle of filmback settings used to implement filmback presets. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FNamedFilmbackPreset
{
	GENERATED_BODY()

	/** Name for the preset. */
	UPROPERTY(BlueprintReadWrite, Category = "Filmback")
	FString Name;

	UPROPERTY(BlueprintReadWrite, Category = "Filmback")
	FCameraFilmbackSettings FilmbackSettings;
};

/** A named bundle of lens settings used to implement lens presets. */
USTRUCT(BlueprintType)
struct CINEMATICCAMERA_API FNamedLensPreset
{
	GENERATED_BODY()

	/** Name for the preset. */
	UPROPERTY(BlueprintReadWrite, Category = "Lens")
	FString Name;

	UPROPERTY(BlueprintReadWrite, Category = "Lens")
	FCameraLensSettings LensSettings;
};

/**
 * The presets and defaults cine cameras are made with, stored in the project's engine config. The engine's
 * shipped defaults (the "16:9 Digital Film" filmback, the "Universal Zoom" lens at 35 mm and f/2.8) are set
 * here; presets in the config are added to them.
 */
UCLASS(Config = Engine, defaultconfig, meta = (DisplayName = "Cinematic Camera"))
class CINEMATICCAMERA_API UCineCameraSettings : public UDeveloperSettings
{
	GENERATED_BODY()

public:
	UCineCameraSettings(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** Name of the default lens preset. */
	UPROPERTY(config, EditAnywhere, Category = Lens)
	FString DefaultLensPresetName;

	/** Default focal length (will be constrained by default lens). */
	UPROPERTY(config, EditAnywhere, Category = Lens)
	float DefaultLensFocalLength = 35.f;

	/** Default aperture (will be constrained by default lens). */
	UPROPERTY(config, EditAnywhere, Category = Lens)
	float DefaultLensFStop = 2.8f;

	/** List of available lens presets. */
	UPROPERTY(config, EditAnywhere, Category = Lens)
	TArray<FNamedLensPreset> LensPresets;

	/** Name of the default filmback preset. */
	UPROPERTY(config, EditAnywhere, Category = Filmback)
	FString DefaultFilmbackPreset;

	/** List of available filmback presets. */
	UPROPERTY(config, EditAnywhere, Category = Filmback)
	TArray<FNamedFilmbackPreset> FilmbackPresets;

	/** Gets the lens settings of a preset; true if a preset of that name exists. */
	bool GetLensPresetByName(const FString PresetName, FCameraLensSettings& LensSettings) const;

	/** Gets the filmback settings of a preset; true if a preset of that name exists. */
	bool GetFilmbackPresetByName(const FString PresetName, FCameraFilmbackSettings& FilmbackSettings) const;

	/** The lens presets of the settings' default object. */
	static TArray<FNamedLensPreset> const& GetLensPresets();

	/** The filmback presets of the settings' default object. */
	static TArray<FNamedFilmbackPreset> const& GetFilmbackPresets();

	virtual FName GetCategoryName() const override;
};
