// Copyright Orvane. All Rights Reserved.

#include "Misc/Paths.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformProcess.h"
#include "Misc/FileHelper.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace
{
	/** A fresh folder under /tmp, deleted with everything in it at the end of the test. */
	class FPathsTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/PathsTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
		}

		void TearDown() override
		{
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		FString TempDir;
	};

	std::string CollapsedOrFailure(const TCHAR* Path)
	{
		FString Result(Path);
		return FPaths::CollapseRelativeDirectories(Result) ? ToUtf8(Result) : "<failed: " + ToUtf8(Result) + ">";
	}
} // namespace

TEST_F(FPathsTest, CombineJoinsWithOneSlashAndSkipsEmptyParts)
{
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A"), TEXT("B"))), "A/B");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A/"), TEXT("B"))), "A/B");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A"), TEXT("/B"))), "A/B");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A/"), TEXT("/B"))), "A/B");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT(""), TEXT("B"))), "B");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A"), TEXT(""))), "A");
	EXPECT_EQ(ToUtf8(FPaths::Combine(TEXT("A"), TEXT(""), TEXT("C"))), "A/C");
	EXPECT_EQ(ToUtf8(FPaths::Combine(FString(TEXT("/root")), TEXT("Content"), FString(TEXT("Orvane/X.uasset")))),
		"/root/Content/Orvane/X.uasset");
}

TEST_F(FPathsTest, FilenamePartsFollowTheLastSeparatorAndTheLastDot)
{
	EXPECT_EQ(ToUtf8(FPaths::GetBaseFilename(TEXT("C:/a/b.orvs"))), "b");
	EXPECT_EQ(ToUtf8(FPaths::GetBaseFilename(TEXT("/a/b.tar.gz"))), "b.tar");
	EXPECT_EQ(ToUtf8(FPaths::GetBaseFilename(TEXT("/a/b.orvs"), false)), "/a/b");
	EXPECT_EQ(ToUtf8(FPaths::GetBaseFilename(TEXT("/a.b/c"))), "c");
	EXPECT_EQ(ToUtf8(FPaths::GetBaseFilename(TEXT("C:\\a\\b.txt"))), "b");

	EXPECT_EQ(ToUtf8(FPaths::GetCleanFilename(TEXT("C:/a/b.orvs"))), "b.orvs");
	EXPECT_EQ(ToUtf8(FPaths::GetCleanFilename(TEXT("C:\\a\\b.txt"))), "b.txt");
	EXPECT_EQ(ToUtf8(FPaths::GetCleanFilename(TEXT("/a/b/"))), "");

	EXPECT_EQ(ToUtf8(FPaths::GetExtension(TEXT("/a/b.orvs"))), "orvs");
	EXPECT_EQ(ToUtf8(FPaths::GetExtension(TEXT("/a/b.orvs"), true)), ".orvs");
	EXPECT_EQ(ToUtf8(FPaths::GetExtension(TEXT("/a.b/c"))), "");

	EXPECT_EQ(ToUtf8(FPaths::GetPath(TEXT("/a/b/c.txt"))), "/a/b");
	EXPECT_EQ(ToUtf8(FPaths::GetPath(TEXT("/a/b/"))), "/a/b");
	EXPECT_EQ(ToUtf8(FPaths::GetPath(TEXT("c.txt"))), "");
	EXPECT_EQ(ToUtf8(FPaths::GetPathLeaf(TEXT("/a/b/c/"))), "c");
	EXPECT_EQ(ToUtf8(FPaths::GetPathLeaf(TEXT("/a/b/c"))), "c");

	FString PathPart;
	FString FilenamePart;
	FString ExtensionPart;
	FPaths::Split(TEXT("/a/b/c.txt"), PathPart, FilenamePart, ExtensionPart);
	EXPECT_EQ(ToUtf8(PathPart), "/a/b");
	EXPECT_EQ(ToUtf8(FilenamePart), "c");
	EXPECT_EQ(ToUtf8(ExtensionPart), "txt");
}

TEST_F(FPathsTest, ChangeExtensionNeedsAnExtensionButSetExtensionAddsOne)
{
	EXPECT_EQ(ToUtf8(FPaths::ChangeExtension(TEXT("/a/b.txt"), TEXT("ini"))), "/a/b.ini");
	EXPECT_EQ(ToUtf8(FPaths::ChangeExtension(TEXT("/a/b.txt"), TEXT(".ini"))), "/a/b.ini");
	EXPECT_EQ(ToUtf8(FPaths::ChangeExtension(TEXT("/a/b"), TEXT("ini"))), "/a/b");
	EXPECT_EQ(ToUtf8(FPaths::ChangeExtension(TEXT("/a/b.txt"), TEXT(""))), "/a/b");
	EXPECT_EQ(ToUtf8(FPaths::SetExtension(TEXT("/a/b"), TEXT("ini"))), "/a/b.ini");
	EXPECT_EQ(ToUtf8(FPaths::SetExtension(TEXT("/a.d/b.txt"), TEXT(".ini"))), "/a.d/b.ini");
}

TEST_F(FPathsTest, ConvertRelativePathToFullCollapsesDotsAndNormalizesSeparators)
{
	EXPECT_EQ(ToUtf8(FPaths::ConvertRelativePathToFull(TEXT("/base/dir"), TEXT("../x/./y.txt"))), "/base/x/y.txt");
	EXPECT_EQ(
		ToUtf8(FPaths::ConvertRelativePathToFull(TEXT("/base/dir/"), TEXT("sub\\file.txt"))), "/base/dir/sub/file.txt");
	EXPECT_EQ(ToUtf8(FPaths::ConvertRelativePathToFull(TEXT("/base"), TEXT("/abs/../z"))), "/z");
	EXPECT_EQ(ToUtf8(FPaths::ConvertRelativePathToFull(TEXT("/base//dir"), TEXT("a//b/"))), "/base/dir/a/b/");
	EXPECT_EQ(ToUtf8(FPaths::ConvertRelativePathToFull(TEXT("rel/../file.txt"))),
		ToUtf8(FString(FPlatformProcess::BaseDir()) + TEXT("file.txt")));
}

TEST_F(FPathsTest, CollapseRelativeDirectoriesRefusesToClimbAboveTheStart)
{
	EXPECT_EQ(CollapsedOrFailure(TEXT("a/b/../c")), "a/c");
	EXPECT_EQ(CollapsedOrFailure(TEXT("/a/./b/")), "/a/b/");
	EXPECT_EQ(CollapsedOrFailure(TEXT("/a/..")), "/");
	EXPECT_EQ(CollapsedOrFailure(TEXT("../a")), "<failed: ../a>");
	EXPECT_EQ(CollapsedOrFailure(TEXT("/a/../../b")), "<failed: /a/../../b>");
}

TEST_F(FPathsTest, SmallPathHelpers)
{
	EXPECT_TRUE(FPaths::IsRelative(TEXT("a/b")));
	EXPECT_TRUE(FPaths::IsRelative(TEXT("")));
	EXPECT_FALSE(FPaths::IsRelative(TEXT("/a")));
	EXPECT_FALSE(FPaths::IsRelative(TEXT("C:/a")));
	EXPECT_FALSE(FPaths::IsDrive(TEXT("C:")));

	FString Duplicates(TEXT("a//b///c"));
	FPaths::RemoveDuplicateSlashes(Duplicates);
	EXPECT_EQ(ToUtf8(Duplicates), "a/b/c");

	FString Directory(TEXT("a\\b\\"));
	FPaths::NormalizeDirectoryName(Directory);
	EXPECT_EQ(ToUtf8(Directory), "a/b");
	FString Root(TEXT("/"));
	FPaths::NormalizeDirectoryName(Root);
	EXPECT_EQ(ToUtf8(Root), "/");

	EXPECT_TRUE(FPaths::IsSamePath(TEXT("/a/b/"), TEXT("/a/./b")));
	EXPECT_FALSE(FPaths::IsSamePath(TEXT("/a/B"), TEXT("/a/b")));
	EXPECT_TRUE(FPaths::IsUnderDirectory(TEXT("/a/b/c.txt"), TEXT("/a/b")));
	EXPECT_FALSE(FPaths::IsUnderDirectory(TEXT("/a/bc/d.txt"), TEXT("/a/b")));

	FString Relative(TEXT("/a/b/c/d.txt"));
	EXPECT_TRUE(FPaths::MakePathRelativeTo(Relative, TEXT("/a/b/x/")));
	EXPECT_EQ(ToUtf8(Relative), "../c/d.txt");

	EXPECT_EQ(ToUtf8(FPaths::MakeValidFileName(TEXT("a:b?c d"), TEXT('_'))), "a_b_c_d");
	EXPECT_EQ(ToUtf8(FPaths::MakeValidFileName(TEXT("a:b?c"))), "abc");
}

TEST_F(FPathsTest, FileExistsIsFalseForADirectory)
{
	const FString File = TempDir / TEXT("file.txt");
	ASSERT_TRUE(FFileHelper::SaveStringToFile(FStringView(TEXT("x")), *File));

	EXPECT_TRUE(FPaths::FileExists(File));
	EXPECT_FALSE(FPaths::DirectoryExists(File));
	EXPECT_FALSE(FPaths::FileExists(TempDir));
	EXPECT_TRUE(FPaths::DirectoryExists(TempDir));
	EXPECT_FALSE(FPaths::FileExists(TempDir / TEXT("missing.txt")));
}

TEST_F(FPathsTest, ProjectDirectoriesComeFromTheProjectFile)
{
	const FString ProjectFile = TempDir / TEXT("Proj/Proj.uproject");
	FPaths::SetProjectFilePath(ProjectFile);

	ASSERT_TRUE(FPaths::IsProjectFilePathSet());
	EXPECT_EQ(ToUtf8(FPaths::GetProjectFilePath()), ToUtf8(ProjectFile));
	const std::string ProjectDir = ToUtf8(TempDir) + "/Proj/";
	EXPECT_EQ(ToUtf8(FPaths::ProjectDir()), ProjectDir);
	EXPECT_EQ(ToUtf8(FPaths::ProjectContentDir()), ProjectDir + "Content/");
	EXPECT_EQ(ToUtf8(FPaths::ProjectConfigDir()), ProjectDir + "Config/");
	EXPECT_EQ(ToUtf8(FPaths::ProjectSavedDir()), ProjectDir + "Saved/");
	EXPECT_EQ(ToUtf8(FPaths::ProjectLogDir()), ProjectDir + "Saved/Logs/");
	EXPECT_EQ(ToUtf8(FPaths::ProjectIntermediateDir()), ProjectDir + "Intermediate/");
	EXPECT_EQ(ToUtf8(FPaths::ProjectPluginsDir()), ProjectDir + "Plugins/");

	FPaths::SetProjectFilePath(FString());
	EXPECT_FALSE(FPaths::IsProjectFilePathSet());
}

TEST_F(FPathsTest, ARelativeProjectFileIsMadeAbsolute)
{
	FPaths::SetProjectFilePath(TEXT("Some/Game.uproject"));
	EXPECT_EQ(ToUtf8(FPaths::ProjectDir()), ToUtf8(FString(FPlatformProcess::BaseDir()) + TEXT("Some/")));
}

TEST_F(FPathsTest, EngineDirIsTheHeadlessEngineAndItsUserDirSitsAboveTheBinaries)
{
	const FString EngineDir = FPaths::EngineDir();
	EXPECT_TRUE(FPaths::FileExists(EngineDir + TEXT("Source/Runtime/Core/Public/CoreMinimal.h"))) << ToUtf8(EngineDir);
	EXPECT_EQ(ToUtf8(FPaths::EngineUserDir()),
		ToUtf8(FPaths::ConvertRelativePathToFull(FString(FPlatformProcess::BaseDir()) + TEXT("../../"))));
	EXPECT_TRUE(EngineDir.EndsWith(TEXT("/")));
	EXPECT_EQ(ToUtf8(FPaths::EnginePluginsDir()), ToUtf8(EngineDir + TEXT("Plugins/")));
	EXPECT_EQ(ToUtf8(FPaths::EngineContentDir()), ToUtf8(EngineDir + TEXT("Content/")));
}

TEST_F(FPathsTest, CreateTempFilenameGivesAnUnusedNameInTheFolder)
{
	const FString First = FPaths::CreateTempFilename(*TempDir, TEXT("Pre"), TEXT(".tmp"));
	const FString Second = FPaths::CreateTempFilename(*TempDir, TEXT("Pre"), TEXT(".tmp"));

	EXPECT_EQ(ToUtf8(FPaths::GetPath(First)), ToUtf8(TempDir));
	EXPECT_TRUE(FPaths::GetCleanFilename(First).StartsWith(TEXT("Pre"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(First.EndsWith(TEXT(".tmp"), ESearchCase::CaseSensitive));
	EXPECT_FALSE(FPaths::FileExists(First));
	EXPECT_NE(ToUtf8(First), ToUtf8(Second));
}
