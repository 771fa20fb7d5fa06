// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "Interfaces/IPluginManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace
{
	/** A project folder in a fresh temporary directory, removed afterwards. */
	class FPluginManagerTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			std::string Template = (std::filesystem::temp_directory_path() / "pluginmanager-XXXXXX").string();
			ASSERT_NE(mkdtemp(Template.data()), nullptr);
			Root = FString(UTF8_TO_TCHAR(Template.c_str()));
			ProjectFile = Root / TEXT("Stage/Stage.uproject");
		}

		void TearDown() override { std::filesystem::remove_all(TCHAR_TO_UTF8(*Root)); }

		void Write(const FString& RelativePath, const TCHAR* Text)
		{
			const FString Path = Root / RelativePath;
			IFileManager::Get().MakeDirectory(*FPaths::GetPath(Path), true);
			ASSERT_TRUE(FFileHelper::SaveStringToFile(FString(Text), *Path));
		}

		void OpenProject()
		{
			FPaths::SetProjectFilePath(ProjectFile);
			ASSERT_TRUE(IProjectManager::Get().LoadProjectFile(ProjectFile));
			IPluginManager::Get().RefreshPluginsList();
		}

		FString Root;
		FString ProjectFile;
	};
} // namespace

TEST_F(FPluginManagerTest, FindsProjectPluginsCaseInsensitivelyAndEnablesThemByDefault)
{
	Write(TEXT("Stage/Stage.uproject"), TEXT(R"({ "FileVersion": 3 })"));
	Write(TEXT("Stage/Plugins/Tools/Lens/Lens.uplugin"), TEXT(R"({ "FileVersion": 3, "CanContainContent": true })"));
	OpenProject();

	TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindPlugin(TEXT("lens"));
	ASSERT_TRUE(Plugin.IsValid());
	EXPECT_EQ(Plugin->GetName(), FString(TEXT("Lens")));
	EXPECT_TRUE(Plugin->IsEnabled());
	EXPECT_EQ(Plugin->GetBaseDir(), Root / TEXT("Stage/Plugins/Tools/Lens"));
	EXPECT_EQ(Plugin->GetContentDir(), Root / TEXT("Stage/Plugins/Tools/Lens/Content"));
	EXPECT_EQ(Plugin->GetMountedAssetPath(), FString(TEXT("/Lens/")));
	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("Missing")).IsValid());
}

TEST_F(FPluginManagerTest, DoesNotSearchInsideAPluginFolder)
{
	Write(TEXT("Stage/Stage.uproject"), TEXT(R"({ "FileVersion": 3 })"));
	Write(TEXT("Stage/Plugins/Outer/Outer.uplugin"), TEXT(R"({ "FileVersion": 3 })"));
	Write(TEXT("Stage/Plugins/Outer/Samples/Inner/Inner.uplugin"), TEXT(R"({ "FileVersion": 3 })"));
	OpenProject();

	EXPECT_TRUE(IPluginManager::Get().FindPlugin(TEXT("Outer")).IsValid());
	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("Inner")).IsValid());
}

TEST_F(FPluginManagerTest, ProjectReferencesOverrideTheDefault)
{
	Write(TEXT("Stage/Stage.uproject"), TEXT(R"({ "FileVersion": 3,
		"Plugins": [ { "Name": "Off", "Enabled": false }, { "Name": "Opt", "Enabled": true } ] })"));
	Write(TEXT("Stage/Plugins/Off/Off.uplugin"), TEXT(R"({ "FileVersion": 3 })"));
	Write(TEXT("Stage/Plugins/Opt/Opt.uplugin"), TEXT(R"({ "FileVersion": 3, "EnabledByDefault": false })"));
	Write(TEXT("Stage/Plugins/Idle/Idle.uplugin"), TEXT(R"({ "FileVersion": 3, "EnabledByDefault": false })"));
	OpenProject();

	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("Off"))->IsEnabled());
	EXPECT_TRUE(IPluginManager::Get().FindPlugin(TEXT("Opt"))->IsEnabled());
	EXPECT_FALSE(IPluginManager::Get().FindPlugin(TEXT("Idle"))->IsEnabled());
	EXPECT_FALSE(IPluginManager::Get().FindEnabledPlugin(TEXT("Idle")).IsValid());
}

TEST_F(FPluginManagerTest, EnablesDependenciesBeforeThePluginsThatNeedThem)
{
	Write(
		TEXT("Stage/Stage.uproject"), TEXT(R"({ "FileVersion": 3, "AdditionalPluginDirectories": [ "../Shared" ] })"));
	Write(TEXT("Stage/Plugins/App/App.uplugin"),
		TEXT(R"({ "FileVersion": 3, "Plugins": [ { "Name": "Base", "Enabled": true } ] })"));
	Write(TEXT("Shared/Base/Base.uplugin"), TEXT(R"({ "FileVersion": 3, "EnabledByDefault": false })"));
	OpenProject();

	const TArray<TSharedRef<IPlugin>> Enabled = IPluginManager::Get().GetEnabledPlugins();
	ASSERT_EQ(Enabled.Num(), 2);
	EXPECT_EQ(Enabled[0]->GetName(), FString(TEXT("Base")));
	EXPECT_EQ(Enabled[1]->GetName(), FString(TEXT("App")));
}
