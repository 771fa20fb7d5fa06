// Copyright Orvane. All Rights Reserved.

#include "Misc/ConfigCacheIni.h"
#include "ConfigTestFiles.h"
#include "EngineTestPrinters.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/PlatformFileManager.h"
#include "Internationalization/Internationalization.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/Paths.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace
{
	using namespace ConfigTestFiles;

	const TCHAR* const RendererSection = TEXT("/Script/Engine.RendererSettings");

	std::string ToCrLf(const std::string& Text)
	{
		std::string Result;
		for (const char Char : Text)
		{
			if (Char == '\n')
			{
				Result += '\r';
			}
			Result += Char;
		}
		return Result;
	}

	std::vector<std::string> ToUtf8(const TArray<FString>& Values)
	{
		std::vector<std::string> Result;
		for (const FString& Value : Values)
		{
			Result.push_back(::ToUtf8(Value));
		}
		return Result;
	}

	/** A throwaway project whose Config folder holds copies of the real project files. */
	class ConfigCacheIniTest : public FTemplateProjectTest
	{
	protected:
		FString EngineIni() const { return ToFString(ConfigDir / "DefaultEngine.ini"); }
		FString GameIni() const { return ToFString(ConfigDir / "DefaultGame.ini"); }

		/** The names in the folder, to see that no temporary file was left behind. */
		std::vector<std::string> ListFolder(const fs::path& Folder) const
		{
			std::vector<std::string> Names;
			for (const fs::directory_entry& Entry : fs::directory_iterator(Folder))
			{
				Names.push_back(Entry.path().filename().string());
			}
			std::sort(Names.begin(), Names.end());
			return Names;
		}

		FConfigCacheIni Cache;
	};
} // namespace

TEST_F(ConfigCacheIniTest, ReadsTheRealEngineFile)
{
	FString Value;
	EXPECT_TRUE(Cache.GetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "4");
	int32 IntValue = 0;
	EXPECT_TRUE(Cache.GetInt(RendererSection, TEXT("r.PostProcessing.PropagateAlpha"), IntValue, EngineIni()));
	EXPECT_EQ(IntValue, 1);
	bool BoolValue = true;
	EXPECT_TRUE(Cache.GetBool(RendererSection, TEXT("r.DefaultFeature.Bloom"), BoolValue, EngineIni()));
	EXPECT_FALSE(BoolValue);
	float FloatValue = 0.0f;
	EXPECT_TRUE(Cache.GetFloat(
		TEXT("/Script/VPUtilitiesEditor.VPUtilitiesEditorSettings"), TEXT("FlightSpeed"), FloatValue, EngineIni()));
	EXPECT_FLOAT_EQ(FloatValue, 0.5f);

	// Keys after a comment and blank lines still belong to the section above them.
	EXPECT_TRUE(Cache.GetInt(TEXT("/Script/VPUtilitiesEditor.VPUtilitiesEditorSettings"),
		TEXT("WebControl.EnableServerOnStartup"), IntValue, EngineIni()));
	EXPECT_EQ(IntValue, 1);
	EXPECT_TRUE(Cache.GetString(RendererSection, TEXT("r.Shadow.Virtual.Enable"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "1");

	// Keys compare without case.
	EXPECT_TRUE(Cache.GetString(RendererSection, TEXT("R.DEFAULTBACKBUFFERPIXELFORMAT"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "4");

	// An empty value is a value; a comment is not a key; a missing key is reported missing.
	Value = TEXT("untouched");
	EXPECT_TRUE(
		Cache.GetString(TEXT("/Script/Concert.ConcertClientConfig"), TEXT("DefaultServerURL"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "");
	EXPECT_FALSE(Cache.GetString(RendererSection, TEXT("; quality settings"), Value, EngineIni()));
	EXPECT_FALSE(Cache.GetString(RendererSection, TEXT("r.NotThere"), Value, EngineIni()));
	EXPECT_FALSE(Cache.GetString(TEXT("/Script/Nope.Nothing"), TEXT("r.Tonemapper.Sharpen"), Value, EngineIni()));

	// Struct values are kept whole, quotes inside them included.
	EXPECT_TRUE(
		Cache.GetString(TEXT("/Script/Concert.ConcertClientConfig"), TEXT("ClientSettings"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value).rfind("(DisplayName=\"\",AvatarColor=(R=1.000000,", 0), 0u);
}

TEST_F(ConfigCacheIniTest, ListsSectionsInFileOrder)
{
	TArray<FString> Names;
	ASSERT_TRUE(Cache.GetSectionNames(EngineIni(), Names));
	const std::vector<std::string> Expected = {"/Script/HardwareTargeting.HardwareTargetingSettings",
		"/Script/Engine.RendererSettings", "/Script/EngineSettings.GameMapsSettings", "/Script/UnrealEd.UnrealEdEngine",
		"/Script/WmfMediaFactory.WmfMediaSettings", "/Script/VPUtilitiesEditor.VPUtilitiesEditorSettings",
		"RemoteSession", "/Script/Concert.ConcertClientConfig",
		"/Script/DisplayClusterEditor.DisplayClusterEditorSettings",
		"/Script/WindowsTargetPlatform.WindowsTargetSettings", "/Script/LinuxTargetPlatform.LinuxTargetSettings",
		"/Script/Engine.Engine", "/Script/AndroidFileServerEditor.AndroidFileServerRuntimeSettings"};
	EXPECT_EQ(ToUtf8(Names), Expected);
	EXPECT_TRUE(Cache.DoesSectionExist(TEXT("RemoteSession"), EngineIni()));
	EXPECT_FALSE(Cache.DoesSectionExist(TEXT("/Script/LiveLink.LiveLinkSettings"), EngineIni()));

	TArray<FString> Section;
	ASSERT_TRUE(Cache.GetSection(TEXT("/Script/HardwareTargeting.HardwareTargetingSettings"), Section, EngineIni()));
	EXPECT_EQ(ToUtf8(Section),
		(std::vector<std::string>{"TargetedHardwareClass=Desktop", "AppliedTargetedHardwareClass=Desktop",
			"DefaultGraphicsPerformance=Maximum", "AppliedDefaultGraphicsPerformance=Maximum"}));
}

TEST_F(ConfigCacheIniTest, DuplicatedPlainKeysKeepTheLastValue)
{
	FString Value;
	EXPECT_TRUE(Cache.GetString(
		RendererSection, TEXT("r.DefaultFeature.LocalExposure.HighlightContrastScale"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "1.0");
	TArray<FString> Values;
	EXPECT_EQ(Cache.GetArray(
				  RendererSection, TEXT("r.DefaultFeature.LocalExposure.HighlightContrastScale"), Values, EngineIni()),
		1);
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"1.0"});
	EXPECT_EQ(
		Cache.GetArray(TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("EditorStartupMap"), Values, EngineIni()),
		1);
	EXPECT_EQ(Cache.GetArray(TEXT("/Script/WindowsTargetPlatform.WindowsTargetSettings"), TEXT("DefaultGraphicsRHI"),
				  Values, EngineIni()),
		1);
}

TEST_F(ConfigCacheIniTest, ArrayPrefixesOfTheRealFile)
{
	TArray<FString> Values;
	EXPECT_EQ(Cache.GetArray(TEXT("RemoteSession"), TEXT("Channels"), Values, EngineIni()), 3);
	EXPECT_EQ(ToUtf8(Values),
		(std::vector<std::string>{"(Name=FRemoteSessionFrameBufferChannel,Mode=Write)",
			"(Name=FRemoteSessionInputChannel,Mode=Read)", "(Name=FRemoteSessionXRTrackingChannel,Mode=Read)"}));

	// "-" of a value that is not there does nothing; "+" then adds.
	const TCHAR* const Windows = TEXT("/Script/WindowsTargetPlatform.WindowsTargetSettings");
	Cache.GetArray(Windows, TEXT("D3D12TargetedShaderFormats"), Values, EngineIni());
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"PCD3D_SM6"});
	Cache.GetArray(Windows, TEXT("D3D11TargetedShaderFormats"), Values, EngineIni());
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"PCD3D_SM5"});

	// A lone "-" line leaves the key without values.
	EXPECT_EQ(
		Cache.GetArray(TEXT("/Script/UnrealEd.UnrealEdEngine"), TEXT("TemplateMapInfos"), Values, EngineIni()), 0);
	EXPECT_EQ(Cache.GetArray(TEXT("/Script/Engine.Engine"), TEXT("ActiveGameNameRedirects"), Values, EngineIni()), 2);
}

TEST_F(ConfigCacheIniTest, ArrayPrefixRules)
{
	WriteBytes(ConfigDir / "Rules.ini", "[S]\n"
										"+A=x\n"
										"+A=x\n"
										".A=x\n"
										"+A=y\n"
										"-A=x\n"
										"+B=1\n"
										"+B=2\n"
										"!B=ClearArray\n"
										"+B=3\n"
										"C=1\n"
										"C=2\n"
										"+D=p\n"
										"D=q\n"
										"-E=gone\n");
	const FString Rules = ToFString(ConfigDir / "Rules.ini");
	TArray<FString> Values;
	Cache.GetArray(TEXT("S"), TEXT("A"), Values, Rules);
	EXPECT_EQ(ToUtf8(Values), (std::vector<std::string>{"x", "y"}));
	Cache.GetArray(TEXT("S"), TEXT("B"), Values, Rules);
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"3"});
	Cache.GetArray(TEXT("S"), TEXT("C"), Values, Rules);
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"2"});
	Cache.GetArray(TEXT("S"), TEXT("D"), Values, Rules);
	EXPECT_EQ(ToUtf8(Values), std::vector<std::string>{"q"});
	EXPECT_EQ(Cache.GetArray(TEXT("S"), TEXT("E"), Values, Rules), 0);
}

TEST_F(ConfigCacheIniTest, QuotedValuesAndSpaces)
{
	WriteBytes(ConfigDir / "Quotes.ini", "; leading comment\n"
										 "[Q]\n"
										 "  Spaced   =   some value   \n"
										 "Quoted=\"a b\"\n"
										 "Padded=\"  padded  \"\n"
										 "Escaped=\"say \\\"hi\\\" \\\\ done\"\n"
										 "Inner=(Map=\"/Game/M\",Name=\"N\")\n"
										 "Mixed=\"a\" and \"b\"\n"
										 "# hash comment=not a key\n"
										 "NoEquals line\n");
	const FString Quotes = ToFString(ConfigDir / "Quotes.ini");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Spaced"), Quotes)), "some value");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Quoted"), Quotes)), "a b");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Padded"), Quotes)), "  padded  ");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Escaped"), Quotes)), "say \"hi\" \\ done");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Inner"), Quotes)), "(Map=\"/Game/M\",Name=\"N\")");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Mixed"), Quotes)), "\"a\" and \"b\"");
	FString Value;
	EXPECT_FALSE(Cache.GetString(TEXT("Q"), TEXT("# hash comment"), Value, Quotes));
	TArray<FString> Section;
	Cache.GetSection(TEXT("Q"), Section, Quotes);
	EXPECT_EQ(Section.Num(), 6);

	// Values that would not read back as written are quoted; the file reads back the same values.
	Cache.SetString(TEXT("Q"), TEXT("NewPadded"), TEXT(" lead"), Quotes);
	Cache.SetString(TEXT("Q"), TEXT("NewQuoted"), TEXT("\"q\""), Quotes);
	Cache.Flush(true, Quotes);
	const std::string Written = ReadBytes(ConfigDir / "Quotes.ini");
	EXPECT_NE(Written.find("\nNewPadded=\" lead\"\n"), std::string::npos) << Written;
	EXPECT_NE(Written.find("\nNewQuoted=\"\\\"q\\\"\"\n"), std::string::npos) << Written;
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("NewPadded"), Quotes)), " lead");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("NewQuoted"), Quotes)), "\"q\"");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("Q"), TEXT("Padded"), Quotes)), "  padded  ");
}

TEST_F(ConfigCacheIniTest, FlushWithoutChangesLeavesTheFileAsItWas)
{
	FConfigFile* File = Cache.Find(EngineIni());
	ASSERT_NE(File, nullptr);
	EXPECT_FALSE(File->Dirty);
	EXPECT_EQ(ToUtf8(File->GenerateText()), OriginalEngine);

	// Setting values they already have changes nothing either.
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("4"), EngineIni());
	Cache.SetInt(RendererSection, TEXT("r.PostProcessing.PropagateAlpha"), 1, EngineIni());
	Cache.SetString(
		RendererSection, TEXT("r.DefaultFeature.AutoExposure.ExtendDefaultLuminanceRange"), TEXT("True"), EngineIni());
	EXPECT_FALSE(File->Dirty);
	Cache.Dirty(EngineIni());
	EXPECT_TRUE(File->Dirty);
	Cache.Flush(false, EngineIni());
	EXPECT_FALSE(File->Dirty);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
}

TEST_F(ConfigCacheIniTest, ChangingOneKeyChangesOneLine)
{
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	EXPECT_TRUE(Cache.Find(EngineIni())->Dirty);
	Cache.Flush(false);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=3"));
	EXPECT_FALSE(Cache.Find(EngineIni())->Dirty);
}

TEST_F(ConfigCacheIniTest, WritesBothRendererKeysWhereTheyStand)
{
	Cache.SetBool(RendererSection, TEXT("r.PostProcessing.PropagateAlpha"), false, EngineIni());
	Cache.SetInt(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), 0, EngineIni());
	Cache.Flush(false, EngineIni());
	std::string Expected =
		ReplaceOnlyLine(OriginalEngine, "r.PostProcessing.PropagateAlpha=1", "r.PostProcessing.PropagateAlpha=False");
	Expected = ReplaceOnlyLine(Expected, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=0");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// A fresh read sees the new values.
	FConfigFile Fresh;
	ASSERT_TRUE(Fresh.Read(EngineIni()));
	int32 Format = -1;
	EXPECT_TRUE(Fresh.GetInt(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), Format));
	EXPECT_EQ(Format, 0);
}

TEST_F(ConfigCacheIniTest, AddsMissingRendererKeysAtTheEndOfTheSection)
{
	std::string WithoutKeys = ReplaceOnlyLine(OriginalEngine, "r.PostProcessing.PropagateAlpha=1", "");
	WithoutKeys = ReplaceOnlyLine(WithoutKeys, "r.DefaultBackBufferPixelFormat=4", "");
	WriteBytes(ConfigDir / "DefaultEngine.ini", WithoutKeys);

	Cache.SetBool(RendererSection, TEXT("bEnableAlphaChannelInPostProcessing"), true, EngineIni());
	Cache.SetString(RendererSection, TEXT("r.PostProcessing.PropagateAlpha"), TEXT("1"), EngineIni());
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("4"), EngineIni());
	Cache.Flush(false);

	// After the section's last entry, before the blank line and the next section.
	const std::string Expected = InsertAfterLine(WithoutKeys, "r.Shadow.Virtual.Enable=1",
		"bEnableAlphaChannelInPostProcessing=True\n"
		"r.PostProcessing.PropagateAlpha=1\n"
		"r.DefaultBackBufferPixelFormat=4");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);
}

TEST_F(ConfigCacheIniTest, AddsAKeyToAnExistingSection)
{
	Cache.SetString(TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("GlobalDefaultGameMode"),
		TEXT("/Orvane/Orvane_GM.Orvane_GM_C"), EngineIni());
	Cache.Flush(false, EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "EditorStartupMap=/Game/Main.Main\nEditorStartupMap=/Game/Main.Main",
			"EditorStartupMap=/Game/Main.Main\nEditorStartupMap=/Game/Main.Main\n"
			"GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C"));
}

TEST_F(ConfigCacheIniTest, AddsASectionAtTheEndOfTheFile)
{
	Cache.SetString(TEXT("/Script/LiveLink.LiveLinkSettings"), TEXT("DefaultLiveLinkPreset"),
		TEXT("/Game/Orvane/Orvane_LiveLink_Preset.Orvane_LiveLink_Preset"), GameIni());
	Cache.Flush(false, GameIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultGame.ini"),
		OriginalGame + "\n[/Script/LiveLink.LiveLinkSettings]\n"
					   "DefaultLiveLinkPreset=/Game/Orvane/Orvane_LiveLink_Preset.Orvane_LiveLink_Preset\n");

	// The engine file ends with a blank line already: no second one is added.
	Cache.SetString(TEXT("/Script/LiveLink.LiveLinkSettings"), TEXT("X"), TEXT("1"), EngineIni());
	Cache.Flush(false, EngineIni());
	EXPECT_EQ(
		ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine + "[/Script/LiveLink.LiveLinkSettings]\nX=1\n");
}

TEST_F(ConfigCacheIniTest, ChangingADuplicatedKeyChangesTheLineReadsUse)
{
	Cache.SetString(
		RendererSection, TEXT("r.DefaultFeature.LocalExposure.HighlightContrastScale"), TEXT("1.5"), EngineIni());
	Cache.Flush(false, EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "r.DefaultFeature.LocalExposure.HighlightContrastScale=1.0",
			"r.DefaultFeature.LocalExposure.HighlightContrastScale=1.5"));
}

TEST_F(ConfigCacheIniTest, RemovingAKeyRemovesOnlyItsLines)
{
	EXPECT_TRUE(
		Cache.RemoveKey(TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("EditorStartupMap"), EngineIni()));
	EXPECT_FALSE(
		Cache.RemoveKey(TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("EditorStartupMap"), EngineIni()));
	Cache.Flush(false, EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "EditorStartupMap=/Game/Main.Main\nEditorStartupMap=/Game/Main.Main", ""));
}

TEST_F(ConfigCacheIniTest, ArrayWritesKeepTheArrayStyle)
{
	TArray<FString> Channels;
	Cache.GetArray(TEXT("RemoteSession"), TEXT("Channels"), Channels, EngineIni());
	Channels.Add(TEXT("(Name=Extra,Mode=Read)"));
	Cache.SetArray(TEXT("RemoteSession"), TEXT("Channels"), Channels, EngineIni());
	Cache.Flush(false, EngineIni());
	std::string Expected = InsertAfterLine(OriginalEngine, "+Channels=(Name=FRemoteSessionXRTrackingChannel,Mode=Read)",
		"+Channels=(Name=Extra,Mode=Read)");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	Channels.RemoveAt(1);
	Cache.SetArray(TEXT("RemoteSession"), TEXT("Channels"), Channels, EngineIni());
	Cache.Flush(false, EngineIni());
	Expected = ReplaceOnlyLine(Expected, "+Channels=(Name=FRemoteSessionInputChannel,Mode=Read)", "");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), Expected);

	// A reordering cannot be said with single lines: the key's lines are rewritten where they stood.
	TArray<FString> Reordered = {Channels[2], Channels[0], Channels[1]};
	Cache.SetArray(TEXT("RemoteSession"), TEXT("Channels"), Reordered, EngineIni());
	Cache.Flush(false, EngineIni());
	FConfigFile Fresh;
	Fresh.Read(EngineIni());
	TArray<FString> ReadBack;
	Fresh.GetArray(TEXT("RemoteSession"), TEXT("Channels"), ReadBack);
	EXPECT_EQ(ToUtf8(ReadBack), ToUtf8(Reordered));
	EXPECT_EQ(
		ReadBytes(ConfigDir / "DefaultEngine.ini"), ReplaceOnlyLine(Expected,
														"+Channels=(Name=FRemoteSessionFrameBufferChannel,Mode=Write)\n"
														"+Channels=(Name=FRemoteSessionXRTrackingChannel,Mode=Read)\n"
														"+Channels=(Name=Extra,Mode=Read)",
														"+Channels=(Name=Extra,Mode=Read)\n"
														"+Channels=(Name=FRemoteSessionFrameBufferChannel,Mode=Write)\n"
														"+Channels=(Name=FRemoteSessionXRTrackingChannel,Mode=Read)"));
}

TEST_F(ConfigCacheIniTest, KeepsWindowsLineEndings)
{
	const std::string CrLfEngine = ToCrLf(OriginalEngine);
	WriteBytes(ConfigDir / "DefaultEngine.ini", CrLfEngine);
	FString Value;
	EXPECT_TRUE(Cache.GetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), Value, EngineIni()));
	EXPECT_EQ(ToUtf8(Value), "4");

	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	Cache.SetString(RendererSection, TEXT("r.NewKey"), TEXT("7"), EngineIni());
	Cache.SetString(TEXT("/Script/Orvane.New"), TEXT("A"), TEXT("B"), EngineIni());
	Cache.Flush(false, EngineIni());
	std::string Expected =
		ReplaceOnlyLine(OriginalEngine, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=3");
	Expected = InsertAfterLine(Expected, "r.Shadow.Virtual.Enable=1", "r.NewKey=7");
	Expected += "[/Script/Orvane.New]\nA=B\n";
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), ToCrLf(Expected));
}

TEST_F(ConfigCacheIniTest, KeepsAByteOrderMarkAndAMissingFinalLineBreak)
{
	WriteBytes(ConfigDir / "Bom.ini", "\xEF\xBB\xBF[S]\nName=Caf\xC3\xA9");
	const FString Bom = ToFString(ConfigDir / "Bom.ini");
	EXPECT_EQ(ToUtf8(Cache.GetStr(TEXT("S"), TEXT("Name"), Bom)), "Caf\xC3\xA9");
	Cache.SetString(TEXT("S"), TEXT("Other"), UTF8_TO_TCHAR("\xE6\x97\xA5"), Bom);
	Cache.Flush(false, Bom);
	EXPECT_EQ(ReadBytes(ConfigDir / "Bom.ini"), "\xEF\xBB\xBF[S]\nName=Caf\xC3\xA9\nOther=\xE6\x97\xA5\n");
}

TEST_F(ConfigCacheIniTest, ReadOnlyFileIsRefusedAndLeftAlone)
{
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*EngineIni(), true));
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	FConfigFile Copy = *Cache.Find(EngineIni());
	EXPECT_FALSE(Copy.Write(EngineIni()));
	Cache.Flush(true, EngineIni());

	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	ASSERT_NE(Cache.FindConfigFile(EngineIni()), nullptr) << "a file that could not be saved stays cached";
	EXPECT_TRUE(Cache.FindConfigFile(EngineIni())->Dirty);
	EXPECT_EQ(ToUtf8(Cache.GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), EngineIni())), "3");
	ASSERT_FALSE(Warnings.Messages.empty());
	EXPECT_NE(Warnings.Messages.back().find("read-only"), std::string::npos) << Warnings.Messages.back();
	EXPECT_EQ(ListFolder(ConfigDir), (std::vector<std::string>{"DefaultEngine.ini", "DefaultGame.ini"}));

	// Once writable, the pending change goes out.
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*EngineIni(), false));
	Warnings.Messages.clear();
	Cache.Flush(false, EngineIni());
	EXPECT_TRUE(Warnings.Messages.empty());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=3"));
}

TEST_F(ConfigCacheIniTest, FlushWithRemoveUnloadsAndLeavesNoTemporaryFiles)
{
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	Cache.GetStr(TEXT("/Script/EngineSettings.GeneralProjectSettings"), TEXT("ProjectID"), GameIni());
	EXPECT_EQ(Cache.GetFilenames().Num(), 2);

	Cache.Flush(true, EngineIni());
	EXPECT_EQ(Cache.FindConfigFile(EngineIni()), nullptr);
	EXPECT_NE(Cache.FindConfigFile(GameIni()), nullptr);
	EXPECT_EQ(ListFolder(ConfigDir), (std::vector<std::string>{"DefaultEngine.ini", "DefaultGame.ini"}));

	Cache.Flush(true);
	EXPECT_EQ(Cache.GetFilenames().Num(), 0);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultGame.ini"), OriginalGame);

	// Loaded again, the cache sees what was written.
	EXPECT_EQ(ToUtf8(Cache.GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), EngineIni())), "3");
}

TEST_F(ConfigCacheIniTest, UnloadFileDropsUnsavedChanges)
{
	Cache.SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	Cache.UnloadFile(EngineIni());
	Cache.Flush(false);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"), OriginalEngine);
	EXPECT_EQ(ToUtf8(Cache.GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), EngineIni())), "4");
}

TEST_F(ConfigCacheIniTest, NewFilesAreCreatedOnFlush)
{
	const FString Fresh = ToFString(ConfigDir / "DefaultInput.ini");
	EXPECT_FALSE(Cache.DoesSectionExist(TEXT("S"), Fresh));
	EXPECT_FALSE(fs::exists(ConfigDir / "DefaultInput.ini")) << "reading must not create the file";
	Cache.SetString(TEXT("S"), TEXT("K"), TEXT("V"), Fresh);
	Cache.SetArray(TEXT("S"), TEXT("L"), {TEXT("1"), TEXT("2"), TEXT("1")}, Fresh);
	Cache.Flush(false, Fresh);
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultInput.ini"), "[S]\nK=V\n+L=1\n+L=2\n.L=1\n");
	FConfigFile Reread;
	Reread.Read(Fresh);
	TArray<FString> Values;
	Reread.GetArray(TEXT("S"), TEXT("L"), Values);
	EXPECT_EQ(ToUtf8(Values), (std::vector<std::string>{"1", "2", "1"}));
}

TEST_F(ConfigCacheIniTest, TypedValuesRoundTrip)
{
	const FString File = ToFString(ConfigDir / "Typed.ini");
	Cache.SetFloat(TEXT("T"), TEXT("F"), 0.5f, File);
	Cache.SetDouble(TEXT("T"), TEXT("D"), 2.25, File);
	Cache.SetInt64(TEXT("T"), TEXT("I"), 1234567890123LL, File);
	Cache.SetBool(TEXT("T"), TEXT("B"), true, File);
	Cache.SetText(TEXT("T"), TEXT("X"), FText::AsCultureInvariant(TEXT("Hello \"you\"")), File);
	Cache.SetText(TEXT("T"), TEXT("Y"), NSLOCTEXT("Orvane", "Greeting", "Hi"), File);
	Cache.Flush(true, File);
	EXPECT_EQ(ReadBytes(ConfigDir / "Typed.ini"),
		"[T]\nF=0.500000\nD=2.250000\nI=1234567890123\nB=True\nX=INVTEXT(\"Hello "
		"\\\"you\\\"\")\nY=NSLOCTEXT(\"Orvane\", \"Greeting\", \"Hi\")\n");
	float F = 0;
	double D = 0;
	int64 I = 0;
	bool B = false;
	FText X;
	FText Y;
	EXPECT_TRUE(Cache.GetFloat(TEXT("T"), TEXT("F"), F, File));
	EXPECT_TRUE(Cache.GetDouble(TEXT("T"), TEXT("D"), D, File));
	EXPECT_TRUE(Cache.GetInt64(TEXT("T"), TEXT("I"), I, File));
	EXPECT_TRUE(Cache.GetBool(TEXT("T"), TEXT("B"), B, File));
	EXPECT_TRUE(Cache.GetText(TEXT("T"), TEXT("X"), X, File));
	EXPECT_TRUE(Cache.GetText(TEXT("T"), TEXT("Y"), Y, File));
	EXPECT_FLOAT_EQ(F, 0.5f);
	EXPECT_DOUBLE_EQ(D, 2.25);
	EXPECT_EQ(I, 1234567890123LL);
	EXPECT_TRUE(B);
	EXPECT_EQ(ToUtf8(X.ToString()), "Hello \"you\"");
	EXPECT_TRUE(X.IsCultureInvariant());
	EXPECT_EQ(ToUtf8(Y.ToString()), "Hi");
	EXPECT_EQ(ToUtf8(FTextInspector::GetNamespace(Y).GetValue()), "Orvane");
	EXPECT_EQ(ToUtf8(FTextInspector::GetKey(Y).GetValue()), "Greeting");

	// A value written by hand, without a text macro, is the text itself.
	WriteBytes(ConfigDir / "Hand.ini", "[T]\nZ=Just words\n");
	FText Z;
	EXPECT_TRUE(Cache.GetText(TEXT("T"), TEXT("Z"), Z, ToFString(ConfigDir / "Hand.ini")));
	EXPECT_EQ(ToUtf8(Z.ToString()), "Just words");
}

TEST_F(ConfigCacheIniTest, EmptySectionKeepsTheHeaderAndComments)
{
	EXPECT_TRUE(Cache.EmptySection(TEXT("/Script/HardwareTargeting.HardwareTargetingSettings"), EngineIni()));
	EXPECT_FALSE(Cache.EmptySection(TEXT("/Script/Nope.Nothing"), EngineIni()));
	Cache.Flush(false, EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine,
			"TargetedHardwareClass=Desktop\nAppliedTargetedHardwareClass=Desktop\n"
			"DefaultGraphicsPerformance=Maximum\nAppliedDefaultGraphicsPerformance=Maximum",
			""));
}

TEST_F(ConfigCacheIniTest, BranchesOverlaySavedValuesOnTheDefaultFiles)
{
	// A saved override from an earlier session.
	const fs::path SavedGame = ProjectDir / "Saved" / "Config" / "LinuxEditor" / "Game.ini";
	WriteBytes(SavedGame, "; kept\n[/Script/EngineSettings.GeneralProjectSettings]\nbUseBorderlessWindow=False\n");

	FConfigCacheIni::InitializeConfigSystem();
	ASSERT_NE(GConfig, nullptr);
	EXPECT_EQ(GGameIni, ToFString(SavedGame));
	EXPECT_EQ(GEngineIni, ToFString(ProjectDir / "Saved" / "Config" / "LinuxEditor" / "Engine.ini"));
	EXPECT_FALSE(GEditorIni.IsEmpty());
	EXPECT_FALSE(GEditorPerProjectIni.IsEmpty());
	EXPECT_FALSE(GInputIni.IsEmpty());

	const TCHAR* const General = TEXT("/Script/EngineSettings.GeneralProjectSettings");
	bool bBorderless = true;
	EXPECT_TRUE(GConfig->GetBool(General, TEXT("bUseBorderlessWindow"), bBorderless, GGameIni));
	EXPECT_FALSE(bBorderless);
	EXPECT_EQ(ToUtf8(GConfig->GetStr(General, TEXT("ProjectID"), GGameIni)), "2CD400264427B42BAA255EB7FFCB4A7F");
	EXPECT_EQ(ToUtf8(GConfig->GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), GEngineIni)), "4");
	EXPECT_EQ(GConfig->Find(TEXT("Engine")), GConfig->Find(GEngineIni));

	// Writing to a branch writes the saved file only, and only what differs from the layers below.
	GConfig->SetString(General, TEXT("ProjectName"), TEXT("Stage"), GGameIni);
	GConfig->SetBool(General, TEXT("bUseBorderlessWindow"), true, GGameIni);
	GConfig->Flush(false);
	EXPECT_EQ(ReadBytes(SavedGame), "; kept\n[/Script/EngineSettings.GeneralProjectSettings]\nProjectName=Stage\n");
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultGame.ini"), OriginalGame);
	EXPECT_FALSE(fs::exists(ProjectDir / "Saved" / "Config" / "LinuxEditor" / "Engine.ini"));

	// Writing a Default file by name edits that file, and the branch above it sees the change.
	GConfig->SetString(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), TEXT("3"), EngineIni());
	EXPECT_EQ(ToUtf8(GConfig->GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), GEngineIni)), "4");
	GConfig->Flush(false, EngineIni());
	EXPECT_EQ(ReadBytes(ConfigDir / "DefaultEngine.ini"),
		ReplaceOnlyLine(OriginalEngine, "r.DefaultBackBufferPixelFormat=4", "r.DefaultBackBufferPixelFormat=3"));
	EXPECT_EQ(ToUtf8(GConfig->GetStr(RendererSection, TEXT("r.DefaultBackBufferPixelFormat"), GEngineIni)), "3");
}

TEST_F(ConfigCacheIniTest, BranchKeepsUnsavedChangesWhenItsDefaultFileChanges)
{
	FConfigCacheIni::InitializeConfigSystem();
	GConfig->SetString(RendererSection, TEXT("r.Tonemapper.Sharpen"), TEXT("5"), GEngineIni);
	GConfig->SetString(RendererSection, TEXT("r.GBufferFormat"), TEXT("1"), EngineIni());
	GConfig->Flush(false, EngineIni());
	EXPECT_EQ(ToUtf8(GConfig->GetStr(RendererSection, TEXT("r.Tonemapper.Sharpen"), GEngineIni)), "5");
	EXPECT_EQ(ToUtf8(GConfig->GetStr(RendererSection, TEXT("r.GBufferFormat"), GEngineIni)), "1");

	GConfig->Flush(false, TEXT("Engine"));
	EXPECT_EQ(ReadBytes(ProjectDir / "Saved" / "Config" / "LinuxEditor" / "Engine.ini"),
		"[/Script/Engine.RendererSettings]\nr.Tonemapper.Sharpen=5\n");
}

TEST_F(ConfigCacheIniTest, LocalLoadsTouchNeitherTheCacheNorTheDisk)
{
	FConfigFile Local;
	EXPECT_TRUE(FConfigCacheIni::LoadLocalIniFile(Local, TEXT("Engine"), true));
	FString Value;
	EXPECT_TRUE(Local.GetString(RendererSection, TEXT("r.PostProcessing.PropagateAlpha"), Value));
	EXPECT_EQ(ToUtf8(Value), "1");
	EXPECT_EQ(GConfig, nullptr);
	EXPECT_EQ(Cache.GetFilenames().Num(), 0);
	EXPECT_FALSE(fs::exists(ProjectDir / "Saved"));
}

TEST_F(ConfigCacheIniTest, WritingToAnUnknownNameWarns)
{
	Cache.SetString(TEXT("S"), TEXT("K"), TEXT("V"), TEXT("NotABranch"));
	ASSERT_EQ(Warnings.Messages.size(), 1u);
	EXPECT_NE(Warnings.Messages[0].find("NotABranch"), std::string::npos);
	EXPECT_EQ(Cache.GetFilenames().Num(), 0);
}

TEST_F(ConfigCacheIniTest, LineBreaksInAValueAreReportedAndNeverSplitTheFile)
{
	const FString File = ToFString(ConfigDir / "Breaks.ini");
	Cache.SetString(TEXT("S"), TEXT("K"), TEXT("one\ntwo=2"), File);
	Cache.Flush(false, File);
	EXPECT_EQ(ReadBytes(ConfigDir / "Breaks.ini"), "[S]\nK=one two=2\n");
	ASSERT_FALSE(Warnings.Messages.empty());
	EXPECT_NE(Warnings.Messages[0].find("line break"), std::string::npos) << Warnings.Messages[0];
}
