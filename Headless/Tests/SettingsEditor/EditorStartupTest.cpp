// Copyright Orvane. All Rights Reserved.

#include "Editor.h"
#include "EngineTestPrinters.h"
#include "HeadlessSettingsEditor.h"
#include "ISettingsEditorModule.h"
#include "LaunchEngineLoop.h"
#include "Modules/ModuleManager.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

#include <gtest/gtest.h>

namespace
{
	namespace fs = std::filesystem;

	/** A throwaway project with no plug-ins, opened by the engine loop. */
	fs::path MakeProject()
	{
		const fs::path Dir = fs::temp_directory_path() / ("OrvaneSettingsEditorStartup-" + std::to_string(::getpid()));
		fs::create_directories(Dir / "Config");
		std::ofstream(Dir / "StartupTest.uproject")
			<< "{\n\t\"FileVersion\": 3,\n\t\"EngineAssociation\": \"5.5\"\n}\n";
		return Dir;
	}
} // namespace

TEST(SettingsEditorStartupTest, TheEditorLoadsTheSettingsEditorAtStartUp)
{
	const fs::path Project = MakeProject();
	// Linked into this program, but not loaded until someone asks for it.
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("SettingsEditor")));

	const FString CommandLine = FString::Printf(TEXT("\"%s\""), UTF8_TO_TCHAR(Project.string().c_str()));
	ASSERT_EQ(GEngineLoop.PreInit(*CommandLine), 0);
	ASSERT_EQ(GEngineLoop.Init(), 0);

	ASSERT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("SettingsEditor")));
	UE::SettingsEditor::Headless::ResetApplicationRestartRequests();
	FModuleManager::GetModuleChecked<ISettingsEditorModule>(TEXT("SettingsEditor")).OnApplicationRestartRequired();
	EXPECT_EQ(UE::SettingsEditor::Headless::GetApplicationRestartRequestCount(), 1);
	UE::SettingsEditor::Headless::ResetApplicationRestartRequests();

	GEngineLoop.Exit();
	fs::remove_all(Project);
}
