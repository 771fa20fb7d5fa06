// Copyright Orvane. All Rights Reserved.

#include "Misc/PackageName.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "Internationalization/Text.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Templates/Tuple.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace
{
	/** A throwaway project under /tmp with a Content folder; the project file is set for the test. */
	class FPackageNameTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/PackageNameTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
			ProjectDir = TempDir / TEXT("Proj/");
			ASSERT_TRUE(IFileManager::Get().MakeDirectory(*(ProjectDir / TEXT("Content")), true));
			ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
			FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));
		}

		void TearDown() override
		{
			for (const TPair<FString, FString>& Mount : Mounted)
			{
				FPackageName::UnRegisterMountPoint(Mount.Key, Mount.Value);
			}
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		/** Mounts a root for this test only. */
		void Mount(const FString& Root, const FString& Folder)
		{
			FPackageName::RegisterMountPoint(Root, Folder);
			Mounted.Add(TPair<FString, FString>(Root, Folder));
		}

		/** Writes a file (and its folders) with some text. */
		void WriteFile(const FString& Filename) { ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("x"), *Filename)); }

		FString TempDir;
		FString ProjectDir;
		TArray<TPair<FString, FString>> Mounted;
	};

	std::string Convert(const TCHAR* PackageName, const TCHAR* Extension = TEXT(""))
	{
		FString Filename;
		return FPackageName::TryConvertLongPackageNameToFilename(PackageName, Filename, Extension)
				   ? ToUtf8(Filename)
				   : std::string("<failed>");
	}

	std::string ToPackage(const FString& Filename)
	{
		FString PackageName;
		FString Reason;
		return FPackageName::TryConvertFilenameToLongPackageName(Filename, PackageName, &Reason)
				   ? ToUtf8(PackageName)
				   : "<failed: " + ToUtf8(Reason) + ">";
	}
} // namespace

TEST_F(FPackageNameTest, DefaultRootsAreMounted)
{
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Game/")));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Engine/")));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Script/")));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Temp/")));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Memory/")));
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Orvane/")));

	TArray<FString> Roots;
	FPackageName::QueryRootContentPaths(Roots);
	EXPECT_TRUE(Roots.Contains(TEXT("/Game/")));
	EXPECT_TRUE(Roots.Contains(TEXT("/Engine/")));
	EXPECT_FALSE(Roots.Contains(TEXT("/Script/")));
	FPackageName::QueryRootContentPaths(Roots, true, true, true);
	EXPECT_TRUE(Roots.Contains(TEXT("Script")));
	EXPECT_TRUE(Roots.Contains(TEXT("Game")));
}

TEST_F(FPackageNameTest, GameFollowsTheProjectContentFolder)
{
	EXPECT_EQ(Convert(TEXT("/Game/Orvane/P"), TEXT(".uasset")), ToUtf8(ProjectDir + TEXT("Content/Orvane/P.uasset")));
	EXPECT_EQ(Convert(TEXT("/Game/Orvane")), ToUtf8(ProjectDir + TEXT("Content/Orvane")));
	EXPECT_EQ(Convert(TEXT("/Engine/X"), TEXT(".umap")), ToUtf8(FPaths::EngineContentDir() + TEXT("X.umap")));
	EXPECT_EQ(ToUtf8(FPackageName::LongPackageNameToFilename(TEXT("/Game/A/B"), TEXT(".uasset"))),
		ToUtf8(ProjectDir + TEXT("Content/A/B.uasset")));

	// Another project moves /Game/ with it.
	const FString OtherProject = TempDir / TEXT("Other/");
	FPaths::SetProjectFilePath(OtherProject / TEXT("Other.uproject"));
	EXPECT_EQ(Convert(TEXT("/Game/A")), ToUtf8(OtherProject + TEXT("Content/A")));
}

TEST_F(FPackageNameTest, RootsWithoutFoldersDoNotConvert)
{
	EXPECT_EQ(Convert(TEXT("/Script/Engine")), "<failed>");
	EXPECT_EQ(Convert(TEXT("/Memory/Thing")), "<failed>");
	EXPECT_EQ(Convert(TEXT("/Unknown/Thing")), "<failed>");
	EXPECT_EQ(Convert(TEXT("Relative/Thing")), "<failed>");
	EXPECT_EQ(Convert(TEXT("/Temp/Thing"), TEXT(".uasset")), ToUtf8(FPaths::ProjectSavedDir() + TEXT("Thing.uasset")));
}

TEST_F(FPackageNameTest, RegisteredMountPointsMapBothWays)
{
	const FString PluginContent = TempDir / TEXT("Plugin/Content/");
	Mount(TEXT("/Orvane/"), PluginContent);
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Orvane/")));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Orvane")));
	EXPECT_EQ(Convert(TEXT("/Orvane/Camera/BP_Camera"), TEXT(".uasset")),
		ToUtf8(PluginContent + TEXT("Camera/BP_Camera.uasset")));
	EXPECT_EQ(ToPackage(PluginContent + TEXT("Camera/BP_Camera.uasset")), "/Orvane/Camera/BP_Camera");
	EXPECT_EQ(ToPackage(PluginContent + TEXT("Camera/")), "/Orvane/Camera/");
	EXPECT_EQ(ToPackage(PluginContent), "/Orvane/");
	EXPECT_EQ(ToUtf8(FPackageName::GetPackageMountPoint(TEXT("/Orvane/Camera/BP_Camera")).ToString()), "Orvane");
	EXPECT_EQ(
		ToUtf8(FPackageName::GetPackageMountPoint(TEXT("/Orvane/Camera/BP_Camera"), false).ToString()), "/Orvane/");
	EXPECT_TRUE(FPackageName::GetPackageMountPoint(TEXT("/Nowhere/X")).IsNone());

	FPackageName::UnRegisterMountPoint(TEXT("/Orvane/"), PluginContent);
	Mounted.Reset();
	EXPECT_FALSE(FPackageName::MountPointExists(TEXT("/Orvane/")));
	EXPECT_EQ(Convert(TEXT("/Orvane/Camera/BP_Camera")), "<failed>");
}

TEST_F(FPackageNameTest, LatestRegistrationOfARootWinsAndCanBeRemapped)
{
	const FString First = TempDir / TEXT("First/");
	const FString Second = TempDir / TEXT("Second/");
	Mount(TEXT("/Orvane/"), First);
	Mount(TEXT("/Orvane/"), Second);
	EXPECT_EQ(Convert(TEXT("/Orvane/X")), ToUtf8(Second + TEXT("X")));
	// Both folders still map back to the root.
	EXPECT_EQ(ToPackage(First + TEXT("X.uasset")), "/Orvane/X");
	EXPECT_EQ(ToPackage(Second + TEXT("X.uasset")), "/Orvane/X");

	FPackageName::UnRegisterMountPoint(TEXT("/Orvane/"), Second);
	EXPECT_EQ(Convert(TEXT("/Orvane/X")), ToUtf8(First + TEXT("X")));
}

TEST_F(FPackageNameTest, LongerRootWinsOverTheRootThatContainsIt)
{
	const FString Weapons = TempDir / TEXT("Weapons/");
	Mount(TEXT("/Game/Weapons/"), Weapons);
	EXPECT_EQ(Convert(TEXT("/Game/Weapons/Rifle")), ToUtf8(Weapons + TEXT("Rifle")));
	EXPECT_EQ(Convert(TEXT("/Game/Other/Rifle")), ToUtf8(ProjectDir + TEXT("Content/Other/Rifle")));
	EXPECT_EQ(ToPackage(Weapons + TEXT("Rifle.uasset")), "/Game/Weapons/Rifle");
}

TEST_F(FPackageNameTest, UnregisteringWhatIsNotMountedChangesNothing)
{
	FPackageName::UnRegisterMountPoint(TEXT("/Game/"), TempDir / TEXT("NotTheContent/"));
	EXPECT_TRUE(FPackageName::MountPointExists(TEXT("/Game/")));
	EXPECT_EQ(Convert(TEXT("/Game/A")), ToUtf8(ProjectDir + TEXT("Content/A")));
}

TEST_F(FPackageNameTest, MountingBroadcastsTheRootAndFolder)
{
	FString SeenRoot;
	FString SeenFolder;
	const FDelegateHandle Handle = FPackageName::OnContentPathMounted().AddLambda(
		[&](const FString& Root, const FString& Folder)
		{
			SeenRoot = Root;
			SeenFolder = Folder;
		});
	Mount(TEXT("Orvane"), TempDir / TEXT("Plugin/Content"));
	FPackageName::OnContentPathMounted().Remove(Handle);
	EXPECT_EQ(ToUtf8(SeenRoot), "/Orvane/");
	EXPECT_EQ(ToUtf8(SeenFolder), ToUtf8(TempDir / TEXT("Plugin/Content/")));
}

TEST_F(FPackageNameTest, FilenamesConvertToPackageNames)
{
	EXPECT_EQ(ToPackage(ProjectDir + TEXT("Content/Orvane/P.uasset")), "/Game/Orvane/P");
	EXPECT_EQ(ToPackage(ProjectDir + TEXT("Content/Maps/Stage.umap")), "/Game/Maps/Stage");
	EXPECT_EQ(ToPackage(ProjectDir + TEXT("Content/Orvane/P")), "/Game/Orvane/P");
	EXPECT_EQ(ToPackage(ProjectDir + TEXT("Content/Orvane/")), "/Game/Orvane/");
	EXPECT_EQ(ToPackage(ProjectDir + TEXT("Content/A/../B/C.uasset")), "/Game/B/C");
	EXPECT_EQ(ToPackage(TEXT("/Game/Orvane/P.uasset")), "/Game/Orvane/P");
	EXPECT_EQ(ToPackage(TEXT("/Game/Orvane/P")), "/Game/Orvane/P");
	EXPECT_EQ(ToUtf8(FPackageName::FilenameToLongPackageName(ProjectDir + TEXT("Content/X.uasset"))), "/Game/X");

	const std::string Outside = ToPackage(TempDir / TEXT("Elsewhere/X.uasset"));
	EXPECT_EQ(Outside.rfind("<failed: ", 0), 0u) << Outside;
	EXPECT_NE(Outside.find("Elsewhere/X.uasset"), std::string::npos) << Outside;
}

TEST_F(FPackageNameTest, DoesPackageExistFindsTheFileAndReportsItsName)
{
	const FString AssetFile = ProjectDir + TEXT("Content/Orvane/P.uasset");
	const FString MapFile = ProjectDir + TEXT("Content/Maps/Stage.umap");
	WriteFile(AssetFile);
	WriteFile(MapFile);

	FString Found = TEXT("untouched");
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/P"), &Found));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(AssetFile));
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/Maps/Stage"), &Found));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(MapFile));
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/P")));

	Found = TEXT("untouched");
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/Missing"), &Found));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/Orvane/P.P"), &Found));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Nowhere/P"), &Found));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Script/Engine"), &Found));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("Orvane/P"), &Found));
	EXPECT_EQ(ToUtf8(Found), "untouched");

	// A folder of the same name is not a package.
	ASSERT_TRUE(IFileManager::Get().MakeDirectory(*(ProjectDir + TEXT("Content/Folder.uasset")), true));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/Folder")));
}

TEST_F(FPackageNameTest, TextFormatsAreRecognisedOnlyWhenAllowedAndArePreferred)
{
	const FString TextFile = ProjectDir + TEXT("Content/T.utxt");
	WriteFile(TextFile);
	FString Found;
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/T"), &Found, true));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(TextFile));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Game/T"), &Found, false));

	WriteFile(ProjectDir + TEXT("Content/T.uasset"));
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/T"), &Found, true));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(TextFile));
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Game/T"), &Found, false));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(ProjectDir + TEXT("Content/T.uasset")));
}

TEST_F(FPackageNameTest, PackagesOfRegisteredMountPointsExist)
{
	const FString PluginContent = TempDir / TEXT("Plugin/Content/");
	WriteFile(PluginContent + TEXT("BP_Camera.uasset"));
	EXPECT_FALSE(FPackageName::DoesPackageExist(TEXT("/Orvane/BP_Camera")));
	Mount(TEXT("/Orvane/"), PluginContent);
	FString Found;
	EXPECT_TRUE(FPackageName::DoesPackageExist(TEXT("/Orvane/BP_Camera"), &Found));
	EXPECT_EQ(ToUtf8(Found), ToUtf8(PluginContent + TEXT("BP_Camera.uasset")));
}

TEST_F(FPackageNameTest, ValidLongPackageNames)
{
	using EErrorCode = FPackageName::EErrorCode;
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/Game/Orvane/P")));
	EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/Engine/X")));

	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT(""), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNameEmptyPath);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("Game/P"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::LongPackageNames_PathWithNoStartingSlash);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game/P/"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::LongPackageNames_PathWithTrailingSlash);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game//P"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::LongPackageNames_PathWithDoubleSlash);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game/My P"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNameSpacesNotAllowed);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game/P.P"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNameContainsInvalidCharacters);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Nowhere/P"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNamePathNotMounted);
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Game"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNamePathNotMounted);

	// Roots nothing may be saved to need the caller's consent.
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Script/Engine")));
	EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/Script/Engine"), true));
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Temp/X")));
	EXPECT_TRUE(FPackageName::IsValidLongPackageName(TEXT("/Temp/X"), true));
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Memory/X"), false, &Reason));
	EXPECT_EQ(Reason, EErrorCode::PackageNamePathIsMemoryOnly);

	FText TextReason;
	EXPECT_FALSE(FPackageName::IsValidLongPackageName(TEXT("/Nowhere/P"), false, &TextReason));
	EXPECT_NE(ToUtf8(TextReason.ToString()).find("/Nowhere/P"), std::string::npos);

	EXPECT_TRUE(FPackageName::IsValidTextForLongPackageName(TEXT("/Nowhere/P")));
	EXPECT_TRUE(FPackageName::IsValidObjectPath(TEXT("/Game/A/B.B")));
	EXPECT_TRUE(FPackageName::IsValidObjectPath(TEXT("/Game/Map.Map:PersistentLevel.Actor")));
	EXPECT_FALSE(FPackageName::IsValidObjectPath(TEXT("/Game/A/B")));
	EXPECT_FALSE(FPackageName::IsValidObjectPath(TEXT("/Game/A/B.")));
	EXPECT_TRUE(FPackageName::IsValidPath(TEXT("/Game/")));
	EXPECT_TRUE(FPackageName::IsValidPath(TEXT("/Game/Dir")));
	EXPECT_FALSE(FPackageName::IsValidPath(TEXT("/Nowhere/Dir")));
}

TEST_F(FPackageNameTest, NameAndPathParts)
{
	EXPECT_EQ(ToUtf8(FPackageName::GetShortName(TEXT("/Game/A/B"))), "B");
	EXPECT_EQ(ToUtf8(FPackageName::GetShortName(TEXT("B"))), "B");
	EXPECT_EQ(ToUtf8(FPackageName::GetShortFName(FString(TEXT("/Game/A/B"))).ToString()), "B");
	EXPECT_EQ(ToUtf8(FPackageName::GetLongPackageAssetName(TEXT("/Game/A/B"))), "B");
	EXPECT_EQ(ToUtf8(FPackageName::GetLongPackagePath(TEXT("/Game/Orvane/X"))), "/Game/Orvane");
	EXPECT_TRUE(FPackageName::IsShortPackageName(FString(TEXT("Asset"))));
	EXPECT_FALSE(FPackageName::IsShortPackageName(FString(TEXT("/Game/Asset"))));
	EXPECT_TRUE(FPackageName::IsScriptPackage(TEXT("/Script/Engine")));
	EXPECT_FALSE(FPackageName::IsScriptPackage(TEXT("/Game/Script")));
	EXPECT_TRUE(FPackageName::IsMemoryPackage(TEXT("/Memory/X")));
	EXPECT_TRUE(FPackageName::IsTempPackage(TEXT("/Temp/X")));
	EXPECT_EQ(ToUtf8(FPackageName::ConvertToLongScriptPackageName(TEXT("Engine"))), "/Script/Engine");

	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToPackageName(TEXT("/Game/A/B.B"))), "/Game/A/B");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToPackageName(TEXT("/Game/Map.Map:PersistentLevel.Actor"))), "/Game/Map");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToPackageName(TEXT("/Game/A/B"))), "/Game/A/B");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToObjectName(TEXT("/Game/A/B.B"))), "B");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToObjectName(TEXT("/Game/Map.Map:PersistentLevel.Actor"))), "Actor");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToObjectName(TEXT("/Game/A/B"))), "/Game/A/B");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToPathWithinPackage(TEXT("/Game/Map.Map:PersistentLevel.Actor"))),
		"Map:PersistentLevel.Actor");
	EXPECT_EQ(ToUtf8(FPackageName::ObjectPathToPathWithinPackage(TEXT("/Game/A"))), "");

	FString Root;
	FString Path;
	FString Leaf;
	EXPECT_TRUE(FPackageName::SplitLongPackageName(TEXT("/Game/Maps/Test/MyMap"), Root, Path, Leaf));
	EXPECT_EQ(ToUtf8(Root), "/Game/");
	EXPECT_EQ(ToUtf8(Path), "Maps/Test/");
	EXPECT_EQ(ToUtf8(Leaf), "MyMap");
	EXPECT_TRUE(FPackageName::SplitLongPackageName(TEXT("/Game/MyMap.umap"), Root, Path, Leaf, true));
	EXPECT_EQ(ToUtf8(Root), "Game/");
	EXPECT_EQ(ToUtf8(Path), "");
	EXPECT_EQ(ToUtf8(Leaf), "MyMap.umap");
	EXPECT_FALSE(FPackageName::SplitLongPackageName(TEXT("/Nowhere/X"), Root, Path, Leaf));
	EXPECT_TRUE(Root.IsEmpty() && Path.IsEmpty() && Leaf.IsEmpty());
}

TEST_F(FPackageNameTest, ExportTextPaths)
{
	FString ClassName;
	FString ObjectPath;
	EXPECT_TRUE(
		FPackageName::ParseExportTextPath(TEXT("/Script/LiveLink.LiveLinkPreset'/Game/P.P'"), &ClassName, &ObjectPath));
	EXPECT_EQ(ToUtf8(ClassName), "/Script/LiveLink.LiveLinkPreset");
	EXPECT_EQ(ToUtf8(ObjectPath), "/Game/P.P");
	EXPECT_EQ(ToUtf8(FPackageName::ExportTextPathToObjectPath(TEXT("Blueprint'/Game/BP.BP'"))), "/Game/BP.BP");
	EXPECT_EQ(ToUtf8(FPackageName::ExportTextPathToObjectPath(TEXT("/Game/BP.BP"))), "/Game/BP.BP");
	EXPECT_FALSE(FPackageName::ParseExportTextPath(TEXT("/Game/BP.BP"), &ClassName, &ObjectPath));
	EXPECT_FALSE(FPackageName::ParseExportTextPath(TEXT("Class'/Game/BP.BP"), &ClassName, &ObjectPath));
}

TEST_F(FPackageNameTest, PackageExtensions)
{
	EXPECT_EQ(ToUtf8(FPackageName::GetAssetPackageExtension()), ".uasset");
	EXPECT_EQ(ToUtf8(FPackageName::GetMapPackageExtension()), ".umap");
	EXPECT_EQ(ToUtf8(FPackageName::GetTextAssetPackageExtension()), ".utxt");
	EXPECT_TRUE(FPackageName::IsPackageExtension(TEXT("uasset")));
	EXPECT_TRUE(FPackageName::IsPackageExtension(TEXT(".umap")));
	EXPECT_FALSE(FPackageName::IsPackageExtension(TEXT(".ini")));
	EXPECT_TRUE(FPackageName::IsPackageFilename(TEXT("/a/b/C.uasset")));
	EXPECT_FALSE(FPackageName::IsPackageFilename(TEXT("/a/b/C.txt")));
}
