// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "LiveLinkModuleFixture.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "LiveLinkTestSource.h"
#include "LiveLinkTestUtils.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/CoreDelegates.h"
#include "Misc/FileHelper.h"
#include "PackageTestUtils.h"
#include "Roles/LiveLinkCameraRole.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

using namespace LiveLinkTestUtils;

namespace
{
	const TCHAR* const StartupPackage = TEXT("/Game/Orvane/Startup");
	const TCHAR* const StartupObject = TEXT("/Game/Orvane/Startup.Startup");

	/** A project whose DefaultGame.ini names the preset to apply when the engine loop has started. */
	class FStartupPresetTest : public FLiveLinkModuleFixture
	{
	protected:
		void TearDown() override
		{
			PackageTestUtils::Unload(StartupPackage);
			delete GConfig;
			GConfig = nullptr;
			FLiveLinkModuleFixture::TearDown();
		}

		/** Writes DefaultGame.ini and starts the config system on it. */
		void StartConfig(const FString& GameIni)
		{
			ASSERT_TRUE(FFileHelper::SaveStringToFile(GameIni, *(ProjectDir / TEXT("Config/DefaultGame.ini"))));
			FConfigCacheIni::InitializeConfigSystem();
			GetMutableDefault<ULiveLinkSettings>()->ReloadConfig();
		}

		/** Saves a preset asset holding one test source, then empties the client and unloads the asset. */
		FGuid SaveStartupPreset()
		{
			const FGuid Guid = Client->AddSource(MakeShared<FLiveLinkTestSource>(TEXT("10.20.30.40:9001")));
			Client->PushSubjectStaticData_AnyThread(
				FLiveLinkSubjectKey(Guid, TEXT("Camera")), ULiveLinkCameraRole::StaticClass(), MakeCameraStatic());
			Frame();
			UPackage* Package = CreatePackage(StartupPackage);
			ULiveLinkPreset* Preset = NewObject<ULiveLinkPreset>(Package, TEXT("Startup"), RF_Public | RF_Standalone);
			Preset->BuildFromClient();
			EXPECT_TRUE(PackageTestUtils::Save(Package, Preset));
			RemoveEverySource();
			PackageTestUtils::Unload(StartupPackage);
			return Guid;
		}
	};
} // namespace

TEST_F(FStartupPresetTest, TheProjectsPresetIsLoadedAndAppliedWhenTheEngineLoopHasStarted)
{
	const FGuid Guid = SaveStartupPreset();
	StartConfig(FString(TEXT("[/Script/LiveLink.LiveLinkSettings]\n")) + TEXT("DefaultLiveLinkPreset=") +
				StartupObject + TEXT("\n"));
	const ULiveLinkSettings* Settings = GetDefault<ULiveLinkSettings>();
	EXPECT_EQ(ToUtf8(Settings->DefaultLiveLinkPreset.ToString()), ToUtf8(StartupObject));
	EXPECT_EQ(Settings->GetTimeWithoutFrameToBeConsiderAsInvalid(), 0.5);

	FLogCapture Log;
	FCoreDelegates::OnFEngineLoopInitComplete.Broadcast();
	EXPECT_EQ(Log.Count(TEXT("Applying the default Live Link preset '/Game/Orvane/Startup.Startup'.")), 1);
	// The apply finishes at the end of a frame, once the client is known to be empty.
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());
	ASSERT_TRUE(RunFramesUntil(
		[this, Guid]()
		{
			return Client->GetSources().Contains(Guid);
		}));
	EXPECT_EQ(ToUtf8(Client->GetSourceSettings(Guid)->ConnectionString), "10.20.30.40:9001");
	EXPECT_TRUE(Client->GetSubjects(true, true).Contains(FLiveLinkSubjectKey(Guid, TEXT("Camera"))));
	EXPECT_EQ(Log.NumProblems(), 0) << ToUtf8(Log.ProblemsText());
}

TEST_F(FStartupPresetTest, APresetThatCannotBeLoadedIsReported)
{
	StartConfig(TEXT("[/Script/LiveLink.LiveLinkSettings]\nDefaultLiveLinkPreset=/Game/Orvane/Missing.Missing\n"));
	FLogCapture Log;
	FCoreDelegates::OnFEngineLoopInitComplete.Broadcast();
	EXPECT_EQ(Log.Count(TEXT("The default Live Link preset '/Game/Orvane/Missing.Missing' could not be loaded.")), 1);
	Frame();
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());
}

TEST_F(FStartupPresetTest, WithoutAPresetNothingHappens)
{
	// Reading the config only sets the keys it has: clear what an earlier test left in the default object.
	GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.Reset();
	StartConfig(TEXT("[/Script/LiveLink.LiveLinkSettings]\n"));
	ASSERT_TRUE(GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.IsNull());
	FLogCapture Log;
	FCoreDelegates::OnFEngineLoopInitComplete.Broadcast();
	Frame();
	EXPECT_EQ(Log.Count(TEXT("Live Link preset")), 0);
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());
}

TEST_F(FStartupPresetTest, TheSettingsLiveInTheirSectionOfDefaultGameIni)
{
	StartConfig(TEXT("; project settings\n"));
	ULiveLinkSettings* Settings = GetMutableDefault<ULiveLinkSettings>();
	EXPECT_TRUE(Settings->GetDefaultConfigFilename().EndsWith(TEXT("/Config/DefaultGame.ini")));
	EXPECT_EQ(ToUtf8(Settings->GetConfigSectionName()), "/Script/LiveLink.LiveLinkSettings");

	Settings->DefaultLiveLinkPreset = TSoftObjectPtr<ULiveLinkPreset>(FSoftObjectPath(FString(StartupObject)));
	Settings->UpdateSinglePropertyInConfigFile(
		FindFProperty<FProperty>(ULiveLinkSettings::StaticClass(), TEXT("DefaultLiveLinkPreset")),
		Settings->GetDefaultConfigFilename());
	GConfig->Flush(false, Settings->GetDefaultConfigFilename());
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *(ProjectDir / TEXT("Config/DefaultGame.ini"))));
	EXPECT_EQ(ToUtf8(Text),
		"; project "
		"settings\n\n[/Script/LiveLink.LiveLinkSettings]\nDefaultLiveLinkPreset=/Game/Orvane/Startup.Startup\n");
	EXPECT_NE(FindFProperty<FProperty>(ULiveLinkSettings::StaticClass(), TEXT("TimeWithoutFrameToBeConsiderAsInvalid")),
		nullptr);
	Settings->DefaultLiveLinkPreset.Reset();
}
