// Copyright Orvane. All Rights Reserved.

#include "HAL/FileManager.h"
#include "EngineTestPrinters.h"
#include "HAL/PlatformFileManager.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace
{
	/** A fresh folder under /tmp, deleted with everything in it at the end of the test. */
	class FFileManagerTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/FileManagerTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
		}

		void TearDown() override { IFileManager::Get().DeleteDirectory(*TempDir, false, true); }

		FString WriteFile(const TCHAR* RelativePath, const TCHAR* Text)
		{
			const FString Path = TempDir / RelativePath;
			EXPECT_TRUE(FFileHelper::SaveStringToFile(FStringView(Text), *Path));
			return Path;
		}

		static std::string ReadFile(const FString& Path)
		{
			FString Text;
			return FFileHelper::LoadFileToString(Text, *Path) ? ToUtf8(Text) : "<unreadable>";
		}

		static std::vector<std::string> Sorted(TArray<FString> Names)
		{
			Names.Sort();
			std::vector<std::string> Result;
			for (const FString& Name : Names)
			{
				Result.push_back(ToUtf8(Name));
			}
			return Result;
		}

		FString TempDir;
	};
} // namespace

TEST_F(FFileManagerTest, DeleteOfAMissingFileSucceedsUnlessItMustExist)
{
	const FString Missing = TempDir / TEXT("missing.txt");
	EXPECT_TRUE(IFileManager::Get().Delete(*Missing));
	EXPECT_FALSE(IFileManager::Get().Delete(*Missing, true, false, true));
}

TEST_F(FFileManagerTest, DeleteRemovesAWritableFile)
{
	const FString File = WriteFile(TEXT("a.txt"), TEXT("a"));
	EXPECT_TRUE(IFileManager::Get().Delete(*File, true));
	EXPECT_FALSE(FPaths::FileExists(File));
}

TEST_F(FFileManagerTest, DeleteOfAReadOnlyFileNeedsEvenReadOnly)
{
	const FString File = WriteFile(TEXT("locked.ini"), TEXT("x"));
	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*File, true));
	ASSERT_TRUE(IFileManager::Get().IsReadOnly(*File));

	EXPECT_FALSE(IFileManager::Get().Delete(*File, false, false, true));
	EXPECT_TRUE(FPaths::FileExists(File));

	EXPECT_TRUE(IFileManager::Get().Delete(*File, false, true, true));
	EXPECT_FALSE(FPaths::FileExists(File));
}

TEST_F(FFileManagerTest, ReadOnlyCanBeClearedAgain)
{
	const FString File = WriteFile(TEXT("a.txt"), TEXT("a"));
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	EXPECT_FALSE(PlatformFile.IsReadOnly(*File));
	ASSERT_TRUE(PlatformFile.SetReadOnly(*File, true));
	EXPECT_TRUE(PlatformFile.IsReadOnly(*File));
	ASSERT_TRUE(PlatformFile.SetReadOnly(*File, false));
	EXPECT_FALSE(PlatformFile.IsReadOnly(*File));
	EXPECT_FALSE(PlatformFile.IsReadOnly(*(TempDir / TEXT("missing.txt"))));
}

TEST_F(FFileManagerTest, MakeDirectoryCreatesParentsOnlyAsATree)
{
	const FString Deep = TempDir / TEXT("a/b/c");
	EXPECT_FALSE(IFileManager::Get().MakeDirectory(*Deep));
	EXPECT_FALSE(FPaths::DirectoryExists(Deep));

	EXPECT_TRUE(IFileManager::Get().MakeDirectory(*Deep, true));
	EXPECT_TRUE(FPaths::DirectoryExists(Deep));
	EXPECT_TRUE(IFileManager::Get().MakeDirectory(*Deep));
}

TEST_F(FFileManagerTest, DeleteDirectoryNeedsTreeForContents)
{
	WriteFile(TEXT("d/sub/f.txt"), TEXT("f"));
	const FString Directory = TempDir / TEXT("d");

	EXPECT_FALSE(IFileManager::Get().DeleteDirectory(*Directory));
	EXPECT_TRUE(FPaths::DirectoryExists(Directory));
	EXPECT_TRUE(IFileManager::Get().DeleteDirectory(*Directory, true, true));
	EXPECT_FALSE(FPaths::DirectoryExists(Directory));

	EXPECT_TRUE(IFileManager::Get().DeleteDirectory(*Directory));
	EXPECT_FALSE(IFileManager::Get().DeleteDirectory(*Directory, true));
}

TEST_F(FFileManagerTest, MoveRenamesAndRespectsReplaceAndReadOnly)
{
	const FString Source = WriteFile(TEXT("src.txt"), TEXT("source"));
	const FString Dest = TempDir / TEXT("new/dir/dest.txt");

	ASSERT_TRUE(IFileManager::Get().Move(*Dest, *Source));
	EXPECT_FALSE(FPaths::FileExists(Source));
	EXPECT_EQ(ReadFile(Dest), "source");

	const FString Other = WriteFile(TEXT("other.txt"), TEXT("other"));
	EXPECT_FALSE(IFileManager::Get().Move(*Dest, *Other, false));
	EXPECT_EQ(ReadFile(Dest), "source");

	ASSERT_TRUE(FPlatformFileManager::Get().GetPlatformFile().SetReadOnly(*Dest, true));
	EXPECT_FALSE(IFileManager::Get().Move(*Dest, *Other));
	EXPECT_EQ(ReadFile(Dest), "source");

	EXPECT_TRUE(IFileManager::Get().Move(*Dest, *Other, true, true));
	EXPECT_EQ(ReadFile(Dest), "other");
	EXPECT_FALSE(FPaths::FileExists(Other));

	EXPECT_FALSE(IFileManager::Get().Move(
		*(TempDir / TEXT("x.txt")), *(TempDir / TEXT("missing.txt")), true, false, false, true));
}

TEST_F(FFileManagerTest, CopyReportsOkOrFail)
{
	const FString Source = WriteFile(TEXT("src.txt"), TEXT("copy me"));
	const FString Dest = TempDir / TEXT("out/copy.txt");

	EXPECT_EQ(IFileManager::Get().Copy(*Dest, *Source), (uint32)COPY_OK);
	EXPECT_EQ(ReadFile(Dest), "copy me");
	EXPECT_EQ(ReadFile(Source), "copy me");

	EXPECT_EQ(IFileManager::Get().Copy(*Dest, *Source, false), (uint32)COPY_Fail);
	EXPECT_EQ(IFileManager::Get().Copy(*Dest, *(TempDir / TEXT("missing.txt"))), (uint32)COPY_Fail);
}

TEST_F(FFileManagerTest, FileSizeIsMinusOneForMissingFilesAndDirectories)
{
	const FString File = WriteFile(TEXT("five.txt"), TEXT("12345"));
	EXPECT_EQ(IFileManager::Get().FileSize(*File), 5);
	EXPECT_EQ(IFileManager::Get().FileSize(*(TempDir / TEXT("missing.txt"))), -1);
	EXPECT_EQ(IFileManager::Get().FileSize(*TempDir), -1);
}

TEST_F(FFileManagerTest, FindFilesListsNamesMatchingTheWildcard)
{
	WriteFile(TEXT("One.uplugin"), TEXT("1"));
	WriteFile(TEXT("Two.uplugin"), TEXT("2"));
	WriteFile(TEXT("Notes.txt"), TEXT("n"));
	WriteFile(TEXT("Sub/Inner.uplugin"), TEXT("i"));

	TArray<FString> Plugins;
	IFileManager::Get().FindFiles(Plugins, *(TempDir / TEXT("*.uplugin")), true, false);
	EXPECT_EQ(Sorted(Plugins), (std::vector<std::string>{"One.uplugin", "Two.uplugin"}));

	TArray<FString> Directories;
	IFileManager::Get().FindFiles(Directories, *(TempDir / TEXT("*")), false, true);
	EXPECT_EQ(Sorted(Directories), (std::vector<std::string>{"Sub"}));

	TArray<FString> Everything;
	IFileManager::Get().FindFiles(Everything, *(TempDir / TEXT("*.*")), true, true);
	EXPECT_EQ(Sorted(Everything), (std::vector<std::string>{"Notes.txt", "One.uplugin", "Sub", "Two.uplugin"}));

	TArray<FString> ByExtension;
	IFileManager::Get().FindFiles(ByExtension, *TempDir, TEXT(".txt"));
	EXPECT_EQ(Sorted(ByExtension), (std::vector<std::string>{"Notes.txt"}));
}

TEST_F(FFileManagerTest, FindFilesRecursiveGivesFullPaths)
{
	WriteFile(TEXT("One.uplugin"), TEXT("1"));
	WriteFile(TEXT("Sub/Deeper/Inner.uplugin"), TEXT("i"));
	WriteFile(TEXT("Sub/Notes.txt"), TEXT("n"));

	TArray<FString> Found;
	Found.Add(TEXT("stale entry"));
	IFileManager::Get().FindFilesRecursive(Found, *TempDir, TEXT("*.uplugin"), true, false);
	EXPECT_EQ(Sorted(Found), (std::vector<std::string>{ToUtf8(TempDir / TEXT("One.uplugin")),
								 ToUtf8(TempDir / TEXT("Sub/Deeper/Inner.uplugin"))}));
}
