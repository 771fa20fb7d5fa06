// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "ModuleDescriptor.h"
#include "PluginDescriptor.h"
#include "ProjectDescriptor.h"

#include <gtest/gtest.h>

namespace
{
	const TCHAR* const ValidPlugin = TEXT(R"({
		"FileVersion": 3,
		"VersionName": "0.1.0",
		"FriendlyName": "Sample",
		"Category": "Virtual Production",
		"CanContainContent": true,
		"Modules": [
			{ "Name": "SampleRuntime", "Type": "Runtime", "LoadingPhase": "PreDefault" },
			{ "Name": "SampleEditor", "Type": "Editor" }
		],
		"Plugins": [ { "Name": "LiveLink", "Enabled": true }, { "Name": "Extra", "Optional": true } ]
	})");
} // namespace

TEST(PluginDescriptor, ReadsModulesInOrderWithTypeAndPhase)
{
	FPluginDescriptor Descriptor;
	FText FailReason;
	ASSERT_TRUE(Descriptor.Read(ValidPlugin, FailReason)) << TCHAR_TO_UTF8(*FailReason.ToString());

	EXPECT_EQ(Descriptor.VersionName, FString(TEXT("0.1.0")));
	EXPECT_EQ(Descriptor.Category, FString(TEXT("Virtual Production")));
	EXPECT_TRUE(Descriptor.bCanContainContent);
	ASSERT_EQ(Descriptor.Modules.Num(), 2);
	EXPECT_EQ(Descriptor.Modules[0].Name, FName(TEXT("SampleRuntime")));
	EXPECT_EQ(Descriptor.Modules[0].Type, EHostType::Runtime);
	EXPECT_EQ(Descriptor.Modules[0].LoadingPhase, ELoadingPhase::PreDefault);
	EXPECT_EQ(Descriptor.Modules[1].Type, EHostType::Editor);
	EXPECT_EQ(Descriptor.Modules[1].LoadingPhase, ELoadingPhase::Default);
	ASSERT_EQ(Descriptor.Plugins.Num(), 2);
	EXPECT_FALSE(Descriptor.Plugins[0].bOptional);
	EXPECT_TRUE(Descriptor.Plugins[1].bOptional);
	EXPECT_EQ(Descriptor.EnabledByDefault, EPluginEnabledByDefault::Unspecified);
}

TEST(PluginDescriptor, RejectsAnUnknownModuleTypeAndKeepsItsState)
{
	FPluginDescriptor Descriptor;
	Descriptor.FriendlyName = TEXT("Before");
	FText FailReason;
	EXPECT_FALSE(Descriptor.Read(
		TEXT(R"({ "FileVersion": 3, "FriendlyName": "After", "Modules": [ { "Name": "M", "Type": "Editorr" } ] })"),
		FailReason));
	EXPECT_EQ(FailReason.ToString(), FString(TEXT("Module 'M' has an unknown type 'Editorr'.")));
	EXPECT_EQ(Descriptor.FriendlyName, FString(TEXT("Before")));
}

TEST(PluginDescriptor, RejectsTextThatIsNotJson)
{
	FPluginDescriptor Descriptor;
	FText FailReason;
	EXPECT_FALSE(Descriptor.Read(TEXT("{ \"FileVersion\": 3, "), FailReason));
	EXPECT_EQ(FailReason.ToString(), FString(TEXT("The descriptor is not valid JSON.")));
}

TEST(PluginDescriptor, RejectsOldFileVersions)
{
	FPluginDescriptor Descriptor;
	FText FailReason;
	EXPECT_FALSE(Descriptor.Read(TEXT(R"({ "FileVersion": 2 })"), FailReason));
	EXPECT_EQ(FailReason.ToString(), FString(TEXT("Unsupported plug-in descriptor version 2.")));
}

TEST(PluginDescriptor, ReadsExplicitEnabledByDefault)
{
	FPluginDescriptor Descriptor;
	FText FailReason;
	ASSERT_TRUE(Descriptor.Read(TEXT(R"({ "FileVersion": 3, "EnabledByDefault": false })"), FailReason));
	EXPECT_EQ(Descriptor.EnabledByDefault, EPluginEnabledByDefault::Disabled);
}

TEST(ModuleDescriptor, ParsesNamesCaseInsensitivelyAndRejectsUnknownOnes)
{
	EXPECT_EQ(EHostType::FromString(TEXT("editor")), EHostType::Editor);
	EXPECT_EQ(EHostType::FromString(TEXT("Nope")), EHostType::Max);
	EXPECT_EQ(ELoadingPhase::FromString(TEXT("PostEngineInit")), ELoadingPhase::PostEngineInit);
	EXPECT_EQ(FString(EHostType::ToString(EHostType::RuntimeNoCommandlet)), FString(TEXT("RuntimeNoCommandlet")));
}

TEST(ModuleDescriptor, EditorLoadsRuntimeAndEditorModulesButNotPrograms)
{
	FModuleDescriptor Module;
	Module.Type = EHostType::Editor;
	EXPECT_TRUE(Module.IsLoadedInEditor());
	Module.Type = EHostType::Runtime;
	EXPECT_TRUE(Module.IsLoadedInEditor());
	Module.Type = EHostType::Program;
	EXPECT_FALSE(Module.IsLoadedInEditor());
	Module.Type = EHostType::CookedOnly;
	EXPECT_FALSE(Module.IsLoadedInEditor());
}

TEST(ProjectDescriptor, ReadsPluginReferencesAndAdditionalDirectories)
{
	FProjectDescriptor Descriptor;
	FText FailReason;
	ASSERT_TRUE(Descriptor.Read(TEXT(R"({ "FileVersion": 3, "EngineAssociation": "5.5",
		"Plugins": [ { "Name": "Orvane", "Enabled": true }, { "Name": "Old", "Enabled": false } ],
		"AdditionalPluginDirectories": [ "../Shared" ] })"),
		FailReason));
	EXPECT_EQ(Descriptor.EngineAssociation, FString(TEXT("5.5")));
	ASSERT_EQ(Descriptor.Plugins.Num(), 2);
	EXPECT_TRUE(Descriptor.Plugins[0].bEnabled);
	EXPECT_FALSE(Descriptor.Plugins[1].bEnabled);
	ASSERT_EQ(Descriptor.AdditionalPluginDirectories.Num(), 1);
	EXPECT_EQ(Descriptor.AdditionalPluginDirectories[0], FString(TEXT("../Shared")));
}
