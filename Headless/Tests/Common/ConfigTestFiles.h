// Copyright Orvane. All Rights Reserved.

#pragma once

// Files of the config suites: where the shared test data is, whole-file reads and writes, and expected texts built
// from an original by changing single lines.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "EngineTestPrinters.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/Paths.h"
#include "UObject/NameTypes.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace ConfigTestFiles
{
	namespace fs = std::filesystem;

	/** The shared test data: $ORVANE_SHARED_DIR, else "shared" beside the repository, else /work/shared. */
	inline fs::path SharedDir()
	{
		if (const char* FromEnvironment = std::getenv("ORVANE_SHARED_DIR"); FromEnvironment && *FromEnvironment)
		{
			return fs::path(FromEnvironment);
		}
		const fs::path BesideRepository =
			fs::path(__FILE__).parent_path().parent_path().parent_path().parent_path().parent_path() / "shared";
		if (fs::exists(BesideRepository / "testdata"))
		{
			return BesideRepository;
		}
		return fs::path("/work/shared");
	}

	/** The config files of a real project made from the virtual production template. */
	inline fs::path TemplateDir()
	{
		return SharedDir() / "testdata" / "config" / "vp-template";
	}

	inline std::string ReadBytes(const fs::path& Path)
	{
		std::ifstream Stream(Path, std::ios::binary);
		std::ostringstream Buffer;
		Buffer << Stream.rdbuf();
		return Buffer.str();
	}

	inline void WriteBytes(const fs::path& Path, const std::string& Bytes)
	{
		fs::create_directories(Path.parent_path());
		std::ofstream Stream(Path, std::ios::binary | std::ios::trunc);
		Stream << Bytes;
	}

	inline FString ToFString(const fs::path& Path)
	{
		return FString(UTF8_TO_TCHAR(Path.string().c_str()));
	}

	/**
	 * Text with its one line Old (whole lines, LF-terminated) replaced by New lines; fails the test if Old is not
	 * there exactly once.
	 */
	inline std::string ReplaceOnlyLine(const std::string& Text, const std::string& Old, const std::string& New)
	{
		const std::string Needle = "\n" + Old + "\n";
		const size_t First = Text.find(Needle);
		EXPECT_NE(First, std::string::npos) << "line not found: " << Old;
		EXPECT_EQ(Text.find(Needle, First + 1), std::string::npos) << "line found twice: " << Old;
		if (First == std::string::npos)
		{
			return Text;
		}
		return Text.substr(0, First + 1) + New + (New.empty() ? "" : "\n") + Text.substr(First + Needle.size());
	}

	/** Inserts New (LF-terminated lines) right after the one line After. */
	inline std::string InsertAfterLine(const std::string& Text, const std::string& After, const std::string& New)
	{
		return ReplaceOnlyLine(Text, After, After + "\n" + New);
	}

	/** Keeps the warnings and errors logged while it is attached. */
	class FWarningCapture : public FOutputDevice
	{
	public:
		void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (Verbosity <= ELogVerbosity::Warning)
			{
				Messages.push_back(::ToUtf8(Category.ToString()) + ": " + ::ToUtf8(V));
			}
		}

		std::vector<std::string> Messages;
	};

	/**
	 * A throwaway project, made the current one, whose Config folder holds copies of the template's
	 * DefaultEngine.ini and DefaultGame.ini; warnings logged meanwhile are captured.
	 */
	class FTemplateProjectTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			ASSERT_TRUE(fs::exists(TemplateDir() / "DefaultEngine.ini")) << "test data missing under " << TemplateDir();
			char Template[] = "/tmp/TemplateProject-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			Root = fs::path(Template);
			ProjectDir = Root / "VpProject";
			ConfigDir = ProjectDir / "Config";
			fs::create_directories(ConfigDir);
			WriteBytes(ProjectDir / "VpProject.uproject", "{}\n");
			OriginalEngine = ReadBytes(TemplateDir() / "DefaultEngine.ini");
			OriginalGame = ReadBytes(TemplateDir() / "DefaultGame.ini");
			WriteBytes(ConfigDir / "DefaultEngine.ini", OriginalEngine);
			WriteBytes(ConfigDir / "DefaultGame.ini", OriginalGame);
			PreviousProject = FPaths::GetProjectFilePath();
			FPaths::SetProjectFilePath(ToFString(ProjectDir / "VpProject.uproject"));
			GLog->AddOutputDevice(&Warnings);
		}

		void TearDown() override
		{
			GLog->RemoveOutputDevice(&Warnings);
			delete GConfig;
			GConfig = nullptr;
			FPaths::SetProjectFilePath(PreviousProject);
			std::error_code Ignored;
			// Tests may leave a file read-only; make it writable so the folder can be removed.
			fs::permissions(ConfigDir / "DefaultEngine.ini", fs::perms::owner_write, fs::perm_options::add, Ignored);
			fs::remove_all(Root, Ignored);
		}

		fs::path Root;
		fs::path ProjectDir;
		fs::path ConfigDir;
		std::string OriginalEngine;
		std::string OriginalGame;
		FString PreviousProject;
		FWarningCapture Warnings;
	};
} // namespace ConfigTestFiles
