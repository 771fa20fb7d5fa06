// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/CoreUObject/Private/Tests/ConfigTestTypes.h"
#include "ConfigTestFiles.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/PlatformFileManager.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/Paths.h"
#include "UObject/Class.h"
#include "UObject/DefaultObjectConfig.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	using namespace ConfigTestFiles;

	const TCHAR* const Section = TEXT("/Script/CoreUObject.ConfigTestSettings");

	const std::string OriginalEngine = "[/Script/Engine.RendererSettings]\n"
									   "r.DefaultFeature.Bloom=False\n"
									   "\n"
									   "[/Script/CoreUObject.ConfigTestSettings]\n"
									   "; tuned by hand\n"
									   "Count=7\n"
									   "Label=Hello World\n"
									   "t.ConfigTest.Switch=1\n"
									   "t.ConfigTest.Level=2\n"
									   "+SearchPaths=/Game/A\n"
									   "+SearchPaths=/Game/B\n"
									   "Pair=(Count=4,Label=\"four\")\n"
									   "StartupMap=/Game/Maps/Main.Main\n"
									   "Quality=High\n"
									   "Slots[1]=9\n"
									   "\n"
									   "[/Script/Other.Settings]\n"
									   "Untouched=1\n";

	const std::string OriginalGame = "[/Script/CoreUObject.ConfigTestCreatedLate]\n"
									 "Value=42\n"
									 "\n"
									 "[/Script/CoreUObject.ConfigTestCreatedEarly]\n"
									 "Value=43\n";

	FProperty* Prop(UClass* Class, const TCHAR* Name)
	{
		FProperty* Property = FindFProperty<FProperty>(Class, FName(Name));
		EXPECT_NE(Property, nullptr) << ToUtf8(Name);
		return Property;
	}

	/** A throwaway project whose config system is started for each test. */
	class ObjectConfigTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/ObjectConfigTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			Root = fs::path(Template);
			ProjectDir = Root / "ConfigProject";
			ConfigDir = ProjectDir / "Config";
			WriteBytes(ProjectDir / "ConfigProject.uproject", "{}\n");
			WriteBytes(ConfigDir / "DefaultEngine.ini", OriginalEngine);
			WriteBytes(ConfigDir / "DefaultGame.ini", OriginalGame);
			PreviousProject = FPaths::GetProjectFilePath();
			FPaths::SetProjectFilePath(ToFString(ProjectDir / "ConfigProject.uproject"));
			PreviousIsEditor = GIsEditor;
			GIsEditor = true;
			FConfigCacheIni::InitializeConfigSystem();
			GLog->AddOutputDevice(&Warnings);
		}

		void TearDown() override
		{
			GLog->RemoveOutputDevice(&Warnings);
			delete GConfig;
			GConfig = nullptr;
			GIsEditor = PreviousIsEditor;
			FPaths::SetProjectFilePath(PreviousProject);
			std::error_code Ignored;
			fs::permissions(ConfigDir / "DefaultEngine.ini", fs::perms::owner_write, fs::perm_options::add, Ignored);
			fs::remove_all(Root, Ignored);
		}

		FString EngineIni() const { return ToFString(ConfigDir / "DefaultEngine.ini"); }

		/** An instance whose values are all set here, whatever the default object holds. */
		UConfigTestSettings* MakeSettings() const
		{
			UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
			Settings->bFlag = true;
			Settings->Count = 7;
			Settings->Scale = 2.25f;
			Settings->Label = TEXT("Saved Label");
			Settings->Tag = FName(TEXT("Fast"));
			Settings->Quality = EConfigTestQuality::Medium;
			Settings->SearchPaths = {TEXT("/Game/X")};
			Settings->Pair.Count = 5;
			Settings->Pair.Label = TEXT("five");
			Settings->StartupMap = FSoftObjectPath(FString(TEXT("/Game/Maps/Other.Other")));
			Settings->ModeClass = FSoftClassPath(FString(TEXT("/Game/Modes/GM.GM_C")));
			Settings->Asset = TSoftObjectPtr<UObject>(FSoftObjectPath(FString(TEXT("/Game/Assets/Rock.Rock"))));
			Settings->Slots[0] = 1;
			Settings->Slots[1] = 2;
			Settings->bSwitch = false;
			Settings->Level = EConfigTestLevel::All;
			Settings->CVarQuality = EConfigTestQuality::High;
			Settings->NotConfig = 5;
			return Settings;
		}

		fs::path Root;
		fs::path ProjectDir;
		fs::path ConfigDir;
		FString PreviousProject;
		bool PreviousIsEditor = false;
		FWarningCapture Warnings;
	};
} // namespace

TEST_F(ObjectConfigTest, ConfigNameIsTheBranchFile)
{
	EXPECT_EQ(ToUtf8(UConfigTestSettings::StaticClass()->GetConfigName()), ToUtf8(GEngineIni));
	EXPECT_EQ(ToUtf8(UConfigTestCreatedLate::StaticClass()->GetConfigName()), ToUtf8(GGameIni));
	EXPECT_EQ(ToUtf8(GEngineIni), (ProjectDir / "Saved" / "Config" / "LinuxEditor" / "Engine.ini").string());
	UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
	EXPECT_EQ(ToUtf8(Settings->GetDefaultConfigFilename()), (ConfigDir / "DefaultEngine.ini").string());
	EXPECT_EQ(ToUtf8(Settings->GetConfigSectionName()), ToUtf8(Section));
}

TEST_F(ObjectConfigTest, LoadConfigReadsEveryKind)
{
	UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
	Settings->bFlag = true;
	Settings->Scale = 4.0f;
	Settings->bSwitch = false;
	Settings->Slots[0] = 3;
	Settings->LoadConfig();

	EXPECT_EQ(Settings->Count, 7);
	EXPECT_EQ(ToUtf8(Settings->Label), "Hello World");
	EXPECT_TRUE(Settings->bSwitch) << "console variable key read as a bool";
	EXPECT_EQ(Settings->Level, EConfigTestLevel::Most) << "console variable key read as a number";
	ASSERT_EQ(Settings->SearchPaths.Num(), 2);
	EXPECT_EQ(ToUtf8(Settings->SearchPaths[0]), "/Game/A");
	EXPECT_EQ(ToUtf8(Settings->SearchPaths[1]), "/Game/B");
	EXPECT_EQ(Settings->Pair.Count, 4);
	EXPECT_EQ(ToUtf8(Settings->Pair.Label), "four");
	EXPECT_EQ(ToUtf8(Settings->StartupMap.ToString()), "/Game/Maps/Main.Main");
	EXPECT_EQ(Settings->Quality, EConfigTestQuality::High);
	EXPECT_EQ(Settings->Slots[1], 9);
	// Keys the file does not have leave the values alone.
	EXPECT_TRUE(Settings->bFlag);
	EXPECT_EQ(Settings->Scale, 4.0f);
	EXPECT_EQ(Settings->Slots[0], 3);
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(ObjectConfigTest, LoadConfigOfOnePropertyReadsOnlyIt)
{
	UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
	Settings->Count = 1;
	Settings->Label = TEXT("Mine");
	Settings->LoadConfig(nullptr, nullptr, UE::LCPF_None, Prop(UConfigTestSettings::StaticClass(), TEXT("Count")));
	EXPECT_EQ(Settings->Count, 7);
	EXPECT_EQ(ToUtf8(Settings->Label), "Mine");
}

TEST_F(ObjectConfigTest, LoadConfigWarnsAboutValuesItCannotRead)
{
	WriteBytes(ConfigDir / "DefaultEngine.ini", "[/Script/CoreUObject.ConfigTestSettings]\nQuality=Best\nCount=8\n");
	FConfigCacheIni::InitializeConfigSystem();
	UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
	Settings->Quality = EConfigTestQuality::Medium;
	Warnings.Messages.clear();
	Settings->LoadConfig();
	EXPECT_EQ(Settings->Quality, EConfigTestQuality::Medium);
	EXPECT_EQ(Settings->Count, 8);
	ASSERT_EQ(Warnings.Messages.size(), 2u);
	EXPECT_NE(Warnings.Messages.back().find("Quality: 'Best' is not a valid value"), std::string::npos)
		<< Warnings.Messages.back();
}

TEST_F(ObjectConfigTest, SaveConfigWritesWhatDiffersFromTheDefaultFileIntoTheBranch)
{
	UConfigTestSettings* Settings = MakeSettings();
	Settings->SaveConfig();

	// Count equals what DefaultEngine.ini says, so the saved layer does not repeat it; NotConfig is not config.
	// Keys the layer below knows come in its order; new keys and the replaced array follow as they were written.
	const std::string Expected = "[/Script/CoreUObject.ConfigTestSettings]\n"
								 "Label=Saved Label\n"
								 "t.ConfigTest.Switch=False\n"
								 "t.ConfigTest.Level=3\n"
								 "Pair=(Count=5,Label=\"five\")\n"
								 "StartupMap=/Game/Maps/Other.Other\n"
								 "Quality=Medium\n"
								 "Slots[1]=2\n"
								 "bFlag=True\n"
								 "Scale=2.250000\n"
								 "Tag=Fast\n"
								 "!SearchPaths=ClearArray\n"
								 "+SearchPaths=/Game/X\n"
								 "ModeClass=/Game/Modes/GM.GM_C\n"
								 "Asset=/Game/Assets/Rock.Rock\n"
								 "Slots[0]=1\n"
								 "t.ConfigTest.Quality=2\n";
	EXPECT_EQ(ReadBytes(TCHAR_TO_UTF8(*GEngineIni)), Expected);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);

	// The values went to the default object too, as the engine does for instances.
	const UConfigTestSettings* Defaults = GetDefault<UConfigTestSettings>();
	EXPECT_EQ(ToUtf8(Defaults->Label), "Saved Label");
	EXPECT_EQ(Defaults->Level, EConfigTestLevel::All);
	EXPECT_NE(Defaults->NotConfig, 5);
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(ObjectConfigTest, SavedValuesComeBackAfterARestart)
{
	UConfigTestSettings* Saved = MakeSettings();
	Saved->SaveConfig(CPF_Config, nullptr, GConfig, false);
	delete GConfig;
	GConfig = nullptr;
	FConfigCacheIni::InitializeConfigSystem();

	UConfigTestSettings* Loaded = NewObject<UConfigTestSettings>(GetTransientPackage());
	Loaded->bFlag = false;
	Loaded->Scale = 0.0f;
	Loaded->Label.Reset();
	Loaded->SearchPaths.Reset();
	Loaded->ModeClass.Reset();
	Loaded->Asset.Reset();
	Loaded->bSwitch = true;
	Loaded->CVarQuality = EConfigTestQuality::Low;
	Loaded->LoadConfig();
	EXPECT_TRUE(Loaded->bFlag);
	EXPECT_EQ(Loaded->Scale, 2.25f);
	EXPECT_EQ(ToUtf8(Loaded->Label), "Saved Label");
	EXPECT_EQ(Loaded->Tag, FName(TEXT("Fast")));
	EXPECT_EQ(Loaded->Quality, EConfigTestQuality::Medium);
	ASSERT_EQ(Loaded->SearchPaths.Num(), 1);
	EXPECT_EQ(ToUtf8(Loaded->SearchPaths[0]), "/Game/X");
	EXPECT_EQ(Loaded->Pair.Count, 5);
	EXPECT_EQ(ToUtf8(Loaded->StartupMap.ToString()), "/Game/Maps/Other.Other");
	EXPECT_EQ(ToUtf8(Loaded->ModeClass.ToString()), "/Game/Modes/GM.GM_C");
	EXPECT_EQ(ToUtf8(Loaded->Asset.ToString()), "/Game/Assets/Rock.Rock");
	EXPECT_EQ(Loaded->Slots[0], 1);
	EXPECT_EQ(Loaded->Slots[1], 2);
	EXPECT_FALSE(Loaded->bSwitch);
	EXPECT_EQ(Loaded->Level, EConfigTestLevel::All);
	EXPECT_EQ(Loaded->CVarQuality, EConfigTestQuality::High);
}

TEST_F(ObjectConfigTest, UpdateSinglePropertyChangesOnlyItsLine)
{
	UConfigTestSettings* Settings = MakeSettings();
	UClass* Class = UConfigTestSettings::StaticClass();
	Settings->UpdateSinglePropertyInConfigFile(Prop(Class, TEXT("Label")), Settings->GetDefaultConfigFilename());
	std::string Expected = ReplaceOnlyLine(OriginalEngine, "Label=Hello World", "Label=Saved Label");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// Console variable keys are rewritten in place under the variable's name.
	Settings->UpdateSinglePropertyInConfigFile(Prop(Class, TEXT("Level")), Settings->GetDefaultConfigFilename());
	Expected = ReplaceOnlyLine(Expected, "t.ConfigTest.Level=2", "t.ConfigTest.Level=3");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// A key the section lacks goes after the section's last entry.
	Settings->UpdateSinglePropertyInConfigFile(Prop(Class, TEXT("Tag")), Settings->GetDefaultConfigFilename());
	Expected = InsertAfterLine(Expected, "Slots[1]=9", "Tag=Fast");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// The branch sees the new default values without a restart.
	FString Value;
	EXPECT_TRUE(GConfig->GetString(Section, TEXT("Label"), Value, GEngineIni));
	EXPECT_EQ(ToUtf8(Value), "Saved Label");
	EXPECT_TRUE(GConfig->GetString(Section, TEXT("t.ConfigTest.Level"), Value, GEngineIni));
	EXPECT_EQ(ToUtf8(Value), "3");
	EXPECT_FALSE(fs::exists(TCHAR_TO_UTF8(*GEngineIni))) << "the saved branch file was not involved";
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(ObjectConfigTest, UpdateSinglePropertyRefusesAClassWithoutConfig)
{
	UConfigTestPlain* Plain = NewObject<UConfigTestPlain>(GetTransientPackage());
	Plain->Value = 3;
	Plain->UpdateSinglePropertyInConfigFile(Prop(UConfigTestPlain::StaticClass(), TEXT("Value")), EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	ASSERT_EQ(Warnings.Messages.size(), 1u);
	EXPECT_NE(Warnings.Messages[0].find("ConfigTestPlain is not a config class"), std::string::npos)
		<< Warnings.Messages[0];
}

TEST_F(ObjectConfigTest, UpdateSinglePropertyRefusesAPropertyThatIsNotConfig)
{
	UConfigTestSettings* Settings = MakeSettings();
	Settings->UpdateSinglePropertyInConfigFile(
		Prop(UConfigTestSettings::StaticClass(), TEXT("NotConfig")), Settings->GetDefaultConfigFilename());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	ASSERT_EQ(Warnings.Messages.size(), 1u);
	EXPECT_NE(Warnings.Messages[0].find("NotConfig is not a config property"), std::string::npos)
		<< Warnings.Messages[0];
}

TEST_F(ObjectConfigTest, UpdateSinglePropertyReportsAReadOnlyFileAndLeavesIt)
{
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*EngineIni(), true));
	UConfigTestSettings* Settings = MakeSettings();
	Settings->UpdateSinglePropertyInConfigFile(
		Prop(UConfigTestSettings::StaticClass(), TEXT("Label")), Settings->GetDefaultConfigFilename());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	ASSERT_EQ(Warnings.Messages.size(), 1u);
	EXPECT_NE(Warnings.Messages[0].find("the file is read-only"), std::string::npos) << Warnings.Messages[0];
	FString Value;
	EXPECT_TRUE(GConfig->GetString(Section, TEXT("Label"), Value, GEngineIni));
	EXPECT_EQ(ToUtf8(Value), "Hello World");
}

TEST_F(ObjectConfigTest, TryUpdateDefaultConfigFileWritesTheValuesTheFileDoesNotAlreadyGive)
{
	UConfigTestSettings* Settings = NewObject<UConfigTestSettings>(GetTransientPackage());
	Settings->LoadConfig();
	Settings->Label = TEXT("Updated");
	Settings->Level = EConfigTestLevel::Off;
	Settings->bFlag = false;
	Settings->Scale = 1.5f;
	Settings->Tag = NAME_None;
	Settings->ModeClass.Reset();
	Settings->Asset.Reset();
	Settings->Slots[0] = 0;
	Settings->CVarQuality = EConfigTestQuality::Low;
	EXPECT_TRUE(Settings->TryUpdateDefaultConfigFile());

	// Changed keys in place; keys the file lacked (there is no base file below it) after the section's last entry.
	// The switch still means True, so its "1" stays.
	std::string Expected = ReplaceOnlyLine(OriginalEngine, "Label=Hello World", "Label=Updated");
	Expected = ReplaceOnlyLine(Expected, "t.ConfigTest.Level=2", "t.ConfigTest.Level=0");
	Expected = InsertAfterLine(Expected, "Slots[1]=9",
		"bFlag=False\n"
		"Scale=1.500000\n"
		"Tag=None\n"
		"ModeClass=None\n"
		"Asset=None\n"
		"Slots[0]=0\n"
		"t.ConfigTest.Quality=0");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// Nothing differs any more: a second update leaves the file as it is.
	EXPECT_TRUE(Settings->TryUpdateDefaultConfigFile());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);
	FString Value;
	EXPECT_TRUE(GConfig->GetString(Section, TEXT("Label"), Value, GEngineIni));
	EXPECT_EQ(ToUtf8(Value), "Updated");
	EXPECT_TRUE(Warnings.Messages.empty()) << Warnings.Messages.front();
}

TEST_F(ObjectConfigTest, TryUpdateDefaultConfigFileFailsOnAReadOnlyFile)
{
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*EngineIni(), true));
	UConfigTestSettings* Settings = MakeSettings();
	EXPECT_FALSE(Settings->TryUpdateDefaultConfigFile());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	ASSERT_EQ(Warnings.Messages.size(), 1u);
	EXPECT_NE(Warnings.Messages[0].find("the file is read-only"), std::string::npos) << Warnings.Messages[0];

	Warnings.Messages.clear();
	EXPECT_FALSE(Settings->TryUpdateDefaultConfigFile(FString(), false));
	EXPECT_TRUE(Warnings.Messages.empty()) << "bWarnIfFail=false keeps quiet";
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
}

TEST_F(ObjectConfigTest, DefaultObjectLoadsTheConfigWhenCreated)
{
	ASSERT_EQ(UConfigTestCreatedLate::StaticClass()->GetDefaultObject(false), nullptr)
		<< "only this test may create this class's default object";
	EXPECT_EQ(GetDefault<UConfigTestCreatedLate>()->Value, 42);
}

TEST_F(ObjectConfigTest, DefaultObjectCreatedBeforeTheConfigSystemLoadsItsConfigWhenTheSystemStarts)
{
	ASSERT_EQ(UConfigTestCreatedEarly::StaticClass()->GetDefaultObject(false), nullptr)
		<< "only this test may create this class's default object";
	delete GConfig;
	GConfig = nullptr;
	EXPECT_EQ(GetDefault<UConfigTestCreatedEarly>()->Value, 1);

	FConfigCacheIni::InitializeConfigSystem();
	UE::CoreUObject::LoadConfigForExistingDefaultObjects();
	EXPECT_EQ(GetDefault<UConfigTestCreatedEarly>()->Value, 43);
}
