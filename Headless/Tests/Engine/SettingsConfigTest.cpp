// Copyright Orvane. All Rights Reserved.

#include "ConfigTestFiles.h"
#include "Engine/RendererSettings.h"
#include "GameMapsSettings.h"
#include "LiveLinkSettings.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/Paths.h"
#include "UObject/Class.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	using namespace ConfigTestFiles;

	const char* const GameModePath = "/Orvane/Orvane_GM.Orvane_GM_C";
	const char* const PresetPath = "/Game/Orvane/Orvane_LiveLink_Preset.Orvane_LiveLink_Preset";

	FProperty* Prop(UClass* Class, const TCHAR* Name)
	{
		FProperty* Property = FindFProperty<FProperty>(Class, FName(Name));
		EXPECT_NE(Property, nullptr) << ToUtf8(Name);
		return Property;
	}

	/** A project whose Config folder holds copies of a real project's files. */
	class SettingsConfigTest : public FTemplateProjectTest
	{
	protected:
		void SetUp() override
		{
			FTemplateProjectTest::SetUp();
			PreviousIsEditor = GIsEditor;
			GIsEditor = true;
			StartConfig();
		}

		void TearDown() override
		{
			FTemplateProjectTest::TearDown();
			GIsEditor = PreviousIsEditor;
		}

		/** Starts the config system and gives the settings objects the project's values. */
		void StartConfig()
		{
			FConfigCacheIni::InitializeConfigSystem();
			// The default objects outlive a test; read this project's values into them again.
			GetMutableDefault<URendererSettings>()->ReloadConfig();
			GetMutableDefault<UGameMapsSettings>()->ReloadConfig();
			GetMutableDefault<ULiveLinkSettings>()->ReloadConfig();
		}

		/** Saves the settings the way the plug-in does: one key per property into each Default file, then a flush. */
		void SaveAsThePlugInDoes()
		{
			URendererSettings* Renderer = GetMutableDefault<URendererSettings>();
			Renderer->bEnableAlphaChannelInPostProcessing = true;
			Renderer->DefaultBackBufferPixelFormat = EDefaultBackBufferPixelFormat::FromInt(4);
			UClass* RendererClass = URendererSettings::StaticClass();
			Renderer->UpdateSinglePropertyInConfigFile(
				Prop(RendererClass, TEXT("bEnableAlphaChannelInPostProcessing")), Renderer->GetDefaultConfigFilename());
			Renderer->UpdateSinglePropertyInConfigFile(
				Prop(RendererClass, TEXT("DefaultBackBufferPixelFormat")), Renderer->GetDefaultConfigFilename());
			GConfig->Flush(false, Renderer->GetDefaultConfigFilename());

			UGameMapsSettings::SetGlobalDefaultGameMode(UTF8_TO_TCHAR(GameModePath));
			UGameMapsSettings* Maps = UGameMapsSettings::GetGameMapsSettings();
			Maps->UpdateSinglePropertyInConfigFile(
				FindFProperty<FStructProperty>(UGameMapsSettings::StaticClass(), FName(TEXT("GlobalDefaultGameMode"))),
				Maps->GetDefaultConfigFilename());
			GConfig->Flush(false, Maps->GetDefaultConfigFilename());

			ULiveLinkSettings* LiveLink = GetMutableDefault<ULiveLinkSettings>();
			LiveLink->DefaultLiveLinkPreset =
				TSoftObjectPtr<ULiveLinkPreset>(FSoftObjectPath(FString(UTF8_TO_TCHAR(PresetPath))));
			LiveLink->UpdateSinglePropertyInConfigFile(
				Prop(ULiveLinkSettings::StaticClass(), TEXT("DefaultLiveLinkPreset")),
				LiveLink->GetDefaultConfigFilename());
			GConfig->Flush(false, LiveLink->GetDefaultConfigFilename());
		}

		/** The engine file with the game mode added after the last entry of the maps section. */
		std::string WithGameMode(const std::string& EngineText) const
		{
			return InsertAfterLine(EngineText, "EditorStartupMap=/Game/Main.Main\nEditorStartupMap=/Game/Main.Main",
				std::string("GlobalDefaultGameMode=") + GameModePath);
		}

		/** The game file with the Live Link section added at its end. */
		std::string WithPreset(const std::string& GameText) const
		{
			return GameText + "\n[/Script/LiveLink.LiveLinkSettings]\nDefaultLiveLinkPreset=" + PresetPath + "\n";
		}

		bool PreviousIsEditor = false;
	};
} // namespace

TEST_F(SettingsConfigTest, SettingsClassesAreStoredWhereTheEngineStoresThem)
{
	const URendererSettings* Renderer = GetDefault<URendererSettings>();
	EXPECT_EQ(ToUtf8(Renderer->GetDefaultConfigFilename()), (ConfigDir / "DefaultEngine.ini").string());
	EXPECT_EQ(ToUtf8(URendererSettings::StaticClass()->GetPathName()), "/Script/Engine.RendererSettings");
	EXPECT_TRUE(URendererSettings::StaticClass()->HasAllClassFlags(CLASS_Config | CLASS_DefaultConfig));
	EXPECT_TRUE(URendererSettings::StaticClass()->IsChildOf(UDeveloperSettings::StaticClass()));
	EXPECT_EQ(ToUtf8(UDeveloperSettings::StaticClass()->GetPathName()), "/Script/DeveloperSettings.DeveloperSettings");
	EXPECT_EQ(ToUtf8(UGameMapsSettings::StaticClass()->GetPathName()), "/Script/EngineSettings.GameMapsSettings");
	EXPECT_EQ(ToUtf8(GetDefault<UGameMapsSettings>()->GetDefaultConfigFilename()),
		(ConfigDir / "DefaultEngine.ini").string());
	EXPECT_EQ(ToUtf8(ULiveLinkSettings::StaticClass()->GetPathName()), "/Script/LiveLink.LiveLinkSettings");
	EXPECT_EQ(
		ToUtf8(GetDefault<ULiveLinkSettings>()->GetDefaultConfigFilename()), (ConfigDir / "DefaultGame.ini").string());

	// The game mode is a struct property of the soft class path struct, as code that sets it by reflection expects.
	FStructProperty* GameMode =
		FindFProperty<FStructProperty>(UGameMapsSettings::StaticClass(), FName(TEXT("GlobalDefaultGameMode")));
	ASSERT_NE(GameMode, nullptr);
	EXPECT_EQ(GameMode->Struct, StaticStruct<FSoftClassPath>());
	EXPECT_TRUE(GameMode->HasAnyPropertyFlags(CPF_Config));
	EXPECT_EQ(ToUtf8(GameMode->GetMetaData(TEXT("MetaClass"))), "/Script/Engine.GameModeBase");

	FProperty* Alpha = Prop(URendererSettings::StaticClass(), TEXT("bEnableAlphaChannelInPostProcessing"));
	ASSERT_NE(CastField<FBoolProperty>(Alpha), nullptr);
	EXPECT_FALSE(CastField<FBoolProperty>(Alpha)->IsNativeBool()) << "a one-bit field";
	EXPECT_EQ(ToUtf8(Alpha->GetMetaData(TEXT("ConsoleVariable"))), "r.PostProcessing.PropagateAlpha");
	FByteProperty* Format =
		CastField<FByteProperty>(Prop(URendererSettings::StaticClass(), TEXT("DefaultBackBufferPixelFormat")));
	ASSERT_NE(Format, nullptr);
	ASSERT_NE(Format->Enum, nullptr);
	EXPECT_EQ(Format->Enum->GetValueByNameString(TEXT("DBBPF_A2B10G10R10")), 4);
	EXPECT_EQ(ToUtf8(Format->GetMetaData(TEXT("ConsoleVariable"))), "r.DefaultBackBufferPixelFormat");
}

TEST_F(SettingsConfigTest, DefaultObjectsHoldTheProjectValues)
{
	const URendererSettings* Renderer = GetDefault<URendererSettings>();
	EXPECT_TRUE(Renderer->bEnableAlphaChannelInPostProcessing);
	EXPECT_EQ(Renderer->DefaultBackBufferPixelFormat, EDefaultBackBufferPixelFormat::DBBPF_A2B10G10R10);
	EXPECT_FALSE(Renderer->bDefaultFeatureAutoExposure);
	EXPECT_FALSE(Renderer->bDefaultFeatureMotionBlur);
	EXPECT_FALSE(Renderer->bDefaultFeatureBloom);
	EXPECT_TRUE(Renderer->bAllowStaticLighting);
	EXPECT_EQ(Renderer->ReflectionCaptureResolution, 2048);
	EXPECT_EQ(ToUtf8(GetDefault<UGameMapsSettings>()->EditorStartupMap.ToString()), "/Game/Main.Main");
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(SettingsConfigTest, SavingTheAlphaModeAndPresetChangesOnlyThoseKeys)
{
	SaveAsThePlugInDoes();

	// The project already says r.PostProcessing.PropagateAlpha=1 and r.DefaultBackBufferPixelFormat=4, which mean
	// the values being saved: those lines stay as they are, and only the game mode and the preset are added.
	const std::string ExpectedEngine = WithGameMode(OriginalEngine);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), ExpectedEngine);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultGame.ini"), WithPreset(OriginalGame));
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();

	// What was saved is what the next editor session reads.
	delete GConfig;
	GConfig = nullptr;
	UGameMapsSettings::SetGlobalDefaultGameMode(FString());
	GetMutableDefault<URendererSettings>()->bEnableAlphaChannelInPostProcessing = false;
	GetMutableDefault<URendererSettings>()->DefaultBackBufferPixelFormat =
		EDefaultBackBufferPixelFormat::DBBPF_B8G8R8A8;
	GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.Reset();
	StartConfig();
	EXPECT_EQ(ToUtf8(UGameMapsSettings::GetGlobalDefaultGameMode()), GameModePath);
	EXPECT_TRUE(GetDefault<URendererSettings>()->bEnableAlphaChannelInPostProcessing);
	EXPECT_EQ(GetDefault<URendererSettings>()->DefaultBackBufferPixelFormat,
		EDefaultBackBufferPixelFormat::DBBPF_A2B10G10R10);
	EXPECT_EQ(ToUtf8(GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.ToString()), PresetPath);
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(SettingsConfigTest, SavingOverOtherRendererValuesRewritesThemInPlace)
{
	std::string Engine =
		ReplaceOnlyLine(OriginalEngine, "r.PostProcessing.PropagateAlpha=1", "r.PostProcessing.PropagateAlpha=0");
	Engine = ReplaceOnlyLine(Engine, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=0");
	WriteBytes(ConfigDir / "DefaultEngine.ini", Engine);
	delete GConfig;
	GConfig = nullptr;
	StartConfig();
	ASSERT_FALSE(GetDefault<URendererSettings>()->bEnableAlphaChannelInPostProcessing);
	ASSERT_EQ(
		GetDefault<URendererSettings>()->DefaultBackBufferPixelFormat, EDefaultBackBufferPixelFormat::DBBPF_B8G8R8A8);

	SaveAsThePlugInDoes();

	std::string Expected =
		ReplaceOnlyLine(Engine, "r.PostProcessing.PropagateAlpha=0", "r.PostProcessing.PropagateAlpha=True");
	Expected = ReplaceOnlyLine(Expected, "r.DefaultBackBufferPixelFormat=0", "r.DefaultBackBufferPixelFormat=4");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), WithGameMode(Expected));
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultGame.ini"), WithPreset(OriginalGame));
	FString Value;
	EXPECT_TRUE(GConfig->GetString(
		TEXT("/Script/Engine.RendererSettings"), TEXT("r.DefaultBackBufferPixelFormat"), Value, GEngineIni));
	EXPECT_EQ(ToUtf8(Value), "4");
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(SettingsConfigTest, SaveConfigOfTheRendererWritesConsoleVariableKeysIntoTheBranch)
{
	URendererSettings* Renderer = GetMutableDefault<URendererSettings>();
	Renderer->bDefaultFeatureMotionBlur = true;
	Renderer->ReflectionCaptureResolution = 512;
	Renderer->DefaultBackBufferPixelFormat = EDefaultBackBufferPixelFormat::DBBPF_FloatRGBA;
	Renderer->SaveConfig();

	// Only what differs from DefaultEngine.ini goes into the saved layer, under the console variables' names.
	const std::string Saved = ReadBytes(TCHAR_TO_UTF8(*GEngineIni));
	EXPECT_EQ(Saved, "[/Script/Engine.RendererSettings]\n"
					 "r.DefaultFeature.MotionBlur=True\n"
					 "r.ReflectionCaptureResolution=512\n"
					 "r.DefaultBackBufferPixelFormat=3\n"
					 "r.CustomDepth=1\n"
					 "r.Deferred.SupportPrimitiveAlphaHoldout=False\n");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
}

TEST_F(SettingsConfigTest, TryUpdateDefaultConfigFileOfTheMapsSettingsWritesTheSection)
{
	UGameMapsSettings::SetGlobalDefaultGameMode(UTF8_TO_TCHAR(GameModePath));
	EXPECT_TRUE(UGameMapsSettings::GetGameMapsSettings()->TryUpdateDefaultConfigFile());
	const std::string Expected =
		InsertAfterLine(OriginalEngine, "EditorStartupMap=/Game/Main.Main\nEditorStartupMap=/Game/Main.Main",
			"LocalMapOptions=\n"
			"TransitionMap=None\n"
			"GameInstanceClass=None\n"
			"GameDefaultMap=None\n"
			"ServerDefaultMap=None\n"
			"GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C\n"
			"GlobalDefaultServerGameMode=None");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}
