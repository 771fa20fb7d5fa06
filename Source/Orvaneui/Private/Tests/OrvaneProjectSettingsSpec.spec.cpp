// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "GameMapsSettings.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/PlatformFileManager.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneMissingPluginContent.h"
#include "OrvaneSetupTestScope.h"
#include "UObject/Package.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneProjectSettingsSpec, "Orvane.CameraManager.ProjectSettings",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString PresetName = TEXT("ProjectSettingsSpec_Preset");
	const FString GameModeLine = TEXT("Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C");
	const FString StartupLine = TEXT("LiveLink startup preset configured");

	FString GetStartupPresetPath() const
	{
		return GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.ToSoftObjectPath().ToString();
	}

	FString GetSavedStartupPreset() const
	{
		return GetIniValue(FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini")),
			TEXT("/Script/LiveLink.LiveLinkSettings"), TEXT("DefaultLiveLinkPreset"));
	}

	FString GetSavedGameMode() const
	{
		return GetIniValue(FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini")),
			TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("GlobalDefaultGameMode"));
	}

	/** How often a key appears in a section of a default configuration file. */
	int32 CountKeyLines(const FString& BaseFilename, const FString& Key) const
	{
		TArray<FString> Lines;
		FOrvaneProjectSettingsSnapshot::ReadConfigText(BaseFilename).ParseIntoArrayLines(Lines);
		int32 Count = 0;
		for (const FString& Line : Lines)
		{
			Count += Line.StartsWith(Key + TEXT("=")) ? 1 : 0;
		}
		return Count;
	}
END_DEFINE_SPEC(FOrvaneProjectSettingsSpec)

void FOrvaneProjectSettingsSpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin({PresetName});
		});

	AfterEach(
		[this]()
		{
			Scope.End();
		});

	Describe("SetDefaultGameMode",
		[this]()
		{
			It("makes the plug-in's game mode the default, in memory and in DefaultEngine.ini",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(GameModeLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);

					TestTrue(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetDefaultGameMode());

					TestEqual(TEXT("In memory"), UGameMapsSettings::GetGlobalDefaultGameMode(),
						FString(TEXT("/Orvane/Orvane_GM.Orvane_GM_C")));
					TestEqual(TEXT("Saved"), GetSavedGameMode(), FString(TEXT("/Orvane/Orvane_GM.Orvane_GM_C")));
					TestTrue(TEXT("Only that key changed in DefaultEngine.ini"),
						OnlyGameModeChanged(Scope.GetSettingsAtBegin().GetConfigText(TEXT("DefaultEngine.ini")),
							FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini"))));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("writes the same value twice when called twice, with the message each time",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(GameModeLine), LogWarning(GameModeLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);

					TestTrue(TEXT("First"), FOrvaneCameraManagerTestAccess::SetDefaultGameMode());
					const FString AfterFirst =
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini"));
					TestTrue(TEXT("Second"), FOrvaneCameraManagerTestAccess::SetDefaultGameMode());

					TestEqual(TEXT("Same file"),
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini")), AfterFirst);
					TestEqual(TEXT("One key line"),
						CountKeyLines(TEXT("DefaultEngine.ini"), TEXT("GlobalDefaultGameMode")), 1);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("without the game mode Blueprint clears the setting and still reports success",
				[this]()
				{
					FOrvaneMissingPluginContent MissingContent;
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Default game mode set to: "))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("Orvane_GM"), EAutomationExpectedErrorFlags::Contains, -1);

					TestTrue(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetDefaultGameMode());

					TestEqual(TEXT("Cleared in memory"), UGameMapsSettings::GetGlobalDefaultGameMode(), FString());
					TestEqual(TEXT("One key line"),
						CountKeyLines(TEXT("DefaultEngine.ini"), TEXT("GlobalDefaultGameMode")), 1);
					const FString Saved = GetSavedGameMode();
					TestTrue(TEXT("Cleared in DefaultEngine.ini: ") + Saved, Saved.IsEmpty() || Saved == TEXT("None"));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("keeps the new value in memory and succeeds when DefaultEngine.ini is read-only",
				[this]()
				{
					const FString Filename =
						FOrvaneProjectSettingsSnapshot::GetConfigFilename(TEXT("DefaultEngine.ini"));
					const FString Before = FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini"));
					UGameMapsSettings::SetGlobalDefaultGameMode(TEXT("/Script/Engine.GameModeBase"));
					FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*Filename, true);
					const TArray<FOrvaneLogLine> Expected = {LogWarning(GameModeLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("DefaultEngine.ini"), EAutomationExpectedErrorFlags::Contains, -1);

					TestTrue(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetDefaultGameMode());

					FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*Filename, false);
					TestEqual(TEXT("File untouched"),
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini")), Before);
					TestEqual(TEXT("Value kept in memory"), UGameMapsSettings::GetGlobalDefaultGameMode(),
						FString(TEXT("/Orvane/Orvane_GM.Orvane_GM_C")));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});
		});

	Describe("SetLiveLinkStartupPreset",
		[this]()
		{
			It("points the startup preset at the object path of a saved preset",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(StartupLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));

					TestTrue(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));

					const FString ObjectPath = TEXT("/Game/Orvane/") + PresetName + TEXT(".") + PresetName;
					TestEqual(TEXT("In memory"), GetStartupPresetPath(), ObjectPath);
					TestEqual(TEXT("Saved"), GetSavedStartupPreset(), ObjectPath);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("keeps the package path as it loaded when only the package loads",
				[this]()
				{
					// A package whose asset carries another name: only the package answers to the package path.
					UPackage* Package = CreatePackage(*(TEXT("/Game/Orvane/") + PresetName));
					NewObject<ULiveLinkPreset>(Package, FName(TEXT("Renamed")), RF_Public | RF_Standalone);
					const TArray<FOrvaneLogLine> Expected = {LogWarning(StartupLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(FString::Printf(TEXT("Failed to find object 'Object /Game/Orvane/%s.%s'"),
											  *PresetName, *PresetName),
						EAutomationExpectedErrorFlags::Exact, 1);

					TestTrue(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));

					TestEqual(TEXT("In memory"), GetStartupPresetPath(), TEXT("/Game/Orvane/") + PresetName);
					TestEqual(TEXT("Saved"), GetSavedStartupPreset(), TEXT("/Game/Orvane/") + PresetName);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("refuses an unknown preset silently and keeps the previous startup preset",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(StartupLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(
						TEXT("Failed to find object 'Object /Game/Orvane/ProjectSettingsSpec_Unknown"),
						EAutomationExpectedErrorFlags::Contains, 2);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Startup preset set"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));
					const FString GameIniBefore =
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini"));

					TestFalse(TEXT("Result"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(TEXT("ProjectSettingsSpec_Unknown")));

					TestEqual(TEXT("Previous kept"), GetStartupPresetPath(),
						TEXT("/Game/Orvane/") + PresetName + TEXT(".") + PresetName);
					TestEqual(TEXT("File untouched"),
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini")), GameIniBefore);
					Scope.GetLog().TestLines(*this, TEXT("Lines (only the first call's)"), Expected);
				});

			It("writes the same value twice when called twice, with the message each time",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(StartupLine), LogWarning(StartupLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));

					TestTrue(TEXT("First"), FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));
					const FString AfterFirst = FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini"));
					TestTrue(TEXT("Second"), FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));

					TestEqual(TEXT("Same file"),
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini")), AfterFirst);
					TestEqual(
						TEXT("One key line"), CountKeyLines(TEXT("DefaultGame.ini"), TEXT("DefaultLiveLinkPreset")), 1);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});
		});
}

#endif
