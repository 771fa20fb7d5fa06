// Copyright Orvane. All Rights Reserved.

#include "CineCameraSettings.h"

namespace UE::CinematicCamera::Private
{
	FNamedFilmbackPreset MakeFilmbackPreset(const TCHAR* Name, float SensorWidth, float SensorHeight)
	{
		FNamedFilmbackPreset Preset;
		Preset.Name = Name;
		Preset.FilmbackSettings.SensorWidth = SensorWidth;
		Preset.FilmbackSettings.SensorHeight = SensorHeight;
		Preset.FilmbackSettings.RecalcSensorAspectRatio();
		return Preset;
	}

	FNamedLensPreset MakeLensPreset(const TCHAR* Name, float MinFocalLength, float MaxFocalLength, float MinFStop,
		float MaxFStop, int32 DiaphragmBladeCount)
	{
		FNamedLensPreset Preset;
		Preset.Name = Name;
		Preset.LensSettings.MinFocalLength = MinFocalLength;
		Preset.LensSettings.MaxFocalLength = MaxFocalLength;
		Preset.LensSettings.MinFStop = MinFStop;
		Preset.LensSettings.MaxFStop = MaxFStop;
		Preset.LensSettings.DiaphragmBladeCount = DiaphragmBladeCount;
		return Preset;
	}
} // namespace UE::CinematicCamera::Private

UCineCameraSettings::UCineCameraSettings(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	using namespace UE::CinematicCamera::Private;
	// The defaults the engine ships with; a project adds its own presets in its engine config.
	DefaultLensPresetName = TEXT("Universal Zoom");
	DefaultLensFocalLength = 35.f;
	DefaultLensFStop = 2.8f;
	LensPresets.Add(MakeLensPreset(TEXT("Universal Zoom"), 4.f, 1000.f, 1.2f, 22.f, 7));

	DefaultFilmbackPreset = TEXT("16:9 Digital Film");
	FilmbackPresets.Add(MakeFilmbackPreset(TEXT("16:9 Film"), 24.00f, 13.5f));
	FilmbackPresets.Add(MakeFilmbackPreset(TEXT("16:9 Digital Film"), 23.76f, 13.365f));
	FilmbackPresets.Add(MakeFilmbackPreset(TEXT("16:9 DSLR"), 36.f, 20.25f));
	FilmbackPresets.Add(MakeFilmbackPreset(TEXT("Super 35mm"), 24.89f, 18.66f));
	FilmbackPresets.Add(MakeFilmbackPreset(TEXT("Full Frame DSLR"), 36.f, 24.f));
}

bool UCineCameraSettings::GetLensPresetByName(const FString PresetName, FCameraLensSettings& OutLensSettings) const
{
	for (const FNamedLensPreset& Preset : LensPresets)
	{
		if (Preset.Name == PresetName)
		{
			OutLensSettings = Preset.LensSettings;
			return true;
		}
	}
	return false;
}

bool UCineCameraSettings::GetFilmbackPresetByName(
	const FString PresetName, FCameraFilmbackSettings& OutFilmbackSettings) const
{
	for (const FNamedFilmbackPreset& Preset : FilmbackPresets)
	{
		if (Preset.Name == PresetName)
		{
			OutFilmbackSettings = Preset.FilmbackSettings;
			OutFilmbackSettings.RecalcSensorAspectRatio();
			return true;
		}
	}
	return false;
}

TArray<FNamedLensPreset> const& UCineCameraSettings::GetLensPresets()
{
	return GetDefault<UCineCameraSettings>()->LensPresets;
}

TArray<FNamedFilmbackPreset> const& UCineCameraSettings::GetFilmbackPresets()
{
	return GetDefault<UCineCameraSettings>()->FilmbackPresets;
}

FName UCineCameraSettings::GetCategoryName() const
{
	return TEXT("Engine");
}
