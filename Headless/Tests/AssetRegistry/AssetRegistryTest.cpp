// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "AssetRegistry/ARFilter.h"
#include "AssetRegistry/AssetData.h"
#include "AssetRegistry/AssetRegistryModule.h"
#include "AssetRegistry/IAssetRegistry.h"
#include "Engine/Blueprint.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#include "PackageTestUtils.h"
#include <algorithm>
#include <cstdlib>

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{
	using PackageTestUtils::FileOf;
	using PackageTestUtils::Unload;

	std::string Str(const FString& Value)
	{
		return ToUtf8(Value);
	}

	std::string Str(FName Value)
	{
		return ToUtf8(Value.ToString());
	}

	/** The object paths of the assets, sorted, for comparing results whose order is unspecified. */
	/** The object paths of the assets, sorted, leaving out the engine's own content (which the registry also scans). */
	std::vector<std::string> Paths(const TArray<FAssetData>& Assets)
	{
		std::vector<std::string> Result;
		for (const FAssetData& Asset : Assets)
		{
			const std::string Path = Str(Asset.GetObjectPathString());
			if (Path.rfind("/Engine/", 0) != 0)
			{
				Result.push_back(Path);
			}
		}
		std::sort(Result.begin(), Result.end());
		return Result;
	}

	using FPathList = std::vector<std::string>;

	/** A throwaway project under /tmp whose Content folder is "/Game/", and the registry. */
	class FAssetRegistryTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/AssetRegistryTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
			const FString ProjectDir = TempDir / TEXT("Proj/");
			ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
			FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));
			Registry = &FModuleManager::LoadModuleChecked<FAssetRegistryModule>(TEXT("AssetRegistry")).Get();
		}

		void TearDown() override
		{
			for (const FString& Name : Created)
			{
				Unload(*Name);
			}
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		/** A test object asset in memory, not saved. */
		UReflectionTestObject* NewAsset(const FString& PackageName)
		{
			Created.Add(PackageName);
			UPackage* Package = CreatePackage(*PackageName);
			return NewObject<UReflectionTestObject>(
				Package, FName(*FPackageName::GetShortName(PackageName)), RF_Public | RF_Standalone);
		}

		/** Saves a test object asset and removes it from memory, so that only its file is left. */
		void SaveAsset(const FString& PackageName)
		{
			UReflectionTestObject* Asset = NewAsset(PackageName);
			SaveAndUnload(Asset);
		}

		/** Saves a Blueprint asset and removes it from memory. */
		void SaveBlueprint(const FString& PackageName)
		{
			Created.Add(PackageName);
			UPackage* Package = CreatePackage(*PackageName);
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(UReflectionTestOwner::StaticClass(),
				Package, FName(*FPackageName::GetShortName(PackageName)), BPTYPE_Normal);
			SaveAndUnload(Blueprint);
		}

		void SaveAndUnload(UObject* Asset)
		{
			UPackage* Package = Asset->GetPackage();
			FSavePackageArgs Args;
			Args.TopLevelFlags = RF_Public | RF_Standalone;
			ASSERT_TRUE(UPackage::SavePackage(Package, Asset, *FileOf(Package->GetName()), Args));
			const FString Name = Package->GetName();
			Unload(*Name);
			ASSERT_EQ(FindPackage(nullptr, *Name), nullptr);
		}

		IAssetRegistry* Registry = nullptr;
		TArray<FString> Created;
		FString TempDir;
	};
} // namespace

TEST_F(FAssetRegistryTest, ModuleAndStaticAccessGiveTheSameRegistry)
{
	EXPECT_EQ(IAssetRegistry::Get(), Registry);
	EXPECT_EQ(&IAssetRegistry::GetChecked(), Registry);
	EXPECT_EQ(&FAssetRegistryModule::GetRegistry(), Registry);
	EXPECT_EQ(AssetRegistryConstants::ModuleName, FName(TEXT("AssetRegistry")));
	EXPECT_FALSE(Registry->IsLoadingAssets());
}

TEST_F(FAssetRegistryTest, PathQueriesAreRecursiveOnlyWhenAsked)
{
	SaveAsset(TEXT("/Game/Orvane/Stage"));
	SaveBlueprint(TEXT("/Game/Orvane/Ndisplay/Config"));
	SaveAsset(TEXT("/Game/Other/Elsewhere"));

	TArray<FAssetData> Flat;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), Flat));
	EXPECT_EQ(Paths(Flat), (FPathList{"/Game/Orvane/Stage.Stage"}));

	TArray<FAssetData> Deep;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), Deep, true));
	EXPECT_EQ(Paths(Deep), (FPathList{"/Game/Orvane/Ndisplay/Config.Config", "/Game/Orvane/Stage.Stage"}));

	TArray<FAssetData> Sub;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane/Ndisplay"), Sub));
	EXPECT_EQ(Paths(Sub), (FPathList{"/Game/Orvane/Ndisplay/Config.Config"}));

	// A folder whose name only starts like another's is not inside it.
	TArray<FAssetData> Prefix;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orv"), Prefix, true));
	EXPECT_TRUE(Prefix.IsEmpty());

	// Results are appended; an empty answer still reports that the query ran.
	TArray<FAssetData> Appended = Sub;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), Appended));
	EXPECT_EQ(Paths(Appended), (FPathList{"/Game/Orvane/Ndisplay/Config.Config", "/Game/Orvane/Stage.Stage"}));
	TArray<FAssetData> None;
	EXPECT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Nothing/Here"), None, true));
	EXPECT_TRUE(None.IsEmpty());

	TArray<FAssetData> Both;
	EXPECT_TRUE(Registry->GetAssetsByPaths({TEXT("/Game/Orvane/Ndisplay"), TEXT("/Game/Other")}, Both));
	EXPECT_EQ(Paths(Both), (FPathList{"/Game/Orvane/Ndisplay/Config.Config", "/Game/Other/Elsewhere.Elsewhere"}));

	EXPECT_TRUE(Registry->HasAssets(TEXT("/Game/Orvane/Ndisplay")));
	EXPECT_FALSE(Registry->HasAssets(TEXT("/Game/Nothing")));
	TArray<FString> SubPaths;
	Registry->GetSubPaths(TEXT("/Game"), SubPaths, true);
	SubPaths.Sort();
	ASSERT_EQ(SubPaths.Num(), 3);
	EXPECT_EQ(Str(SubPaths[0]), "/Game/Orvane");
	EXPECT_EQ(Str(SubPaths[1]), "/Game/Orvane/Ndisplay");
	EXPECT_EQ(Str(SubPaths[2]), "/Game/Other");
}

TEST_F(FAssetRegistryTest, AssetDataOfASavedBlueprintNamesItsPackageAndClass)
{
	SaveBlueprint(TEXT("/Game/Orvane/Ndisplay/Config"));
	TArray<FAssetData> Assets;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane/Ndisplay"), Assets));
	ASSERT_EQ(Assets.Num(), 1);
	const FAssetData& Asset = Assets[0];
	EXPECT_TRUE(Asset.IsValid());
	EXPECT_TRUE(Asset.IsUAsset());
	EXPECT_EQ(Str(Asset.PackageName), "/Game/Orvane/Ndisplay/Config");
	EXPECT_EQ(Str(Asset.PackagePath), "/Game/Orvane/Ndisplay");
	EXPECT_EQ(Str(Asset.AssetName), "Config");
	EXPECT_EQ(Str(Asset.AssetClassPath.ToString()), "/Script/Engine.Blueprint");
	EXPECT_EQ(Str(Asset.AssetClassPath.GetAssetName()), "Blueprint");
	EXPECT_EQ(Str(Asset.GetObjectPathString()), "/Game/Orvane/Ndisplay/Config.Config");
	EXPECT_EQ(Str(Asset.GetSoftObjectPath().ToString()), "/Game/Orvane/Ndisplay/Config.Config");
	EXPECT_EQ(Str(Asset.GetFullName()), "/Script/Engine.Blueprint /Game/Orvane/Ndisplay/Config.Config");
	EXPECT_EQ(Str(Asset.GetExportTextName()), "/Script/Engine.Blueprint'/Game/Orvane/Ndisplay/Config.Config'");
	EXPECT_EQ(Asset.GetClass(), UBlueprint::StaticClass());
	EXPECT_TRUE(Asset.IsInstanceOf(UObject::StaticClass()));

	// Listing does not load; GetAsset does, and the Blueprint compiles its class as it loads.
	EXPECT_FALSE(Asset.IsAssetLoaded());
	EXPECT_EQ(Asset.GetPackage(), nullptr);
	UObject* Loaded = Asset.GetAsset();
	ASSERT_NE(Loaded, nullptr);
	EXPECT_TRUE(Asset.IsAssetLoaded());
	EXPECT_EQ(Asset.GetPackage(), Loaded->GetPackage());
	EXPECT_EQ(Str(Loaded->GetPathName()), "/Game/Orvane/Ndisplay/Config.Config");
	UBlueprint* Blueprint = Cast<UBlueprint>(Loaded);
	ASSERT_NE(Blueprint, nullptr);
	ASSERT_NE(Blueprint->GeneratedClass.Get(), nullptr);
	EXPECT_EQ(Str(Blueprint->GeneratedClass->GetPathName()), "/Game/Orvane/Ndisplay/Config.Config_C");

	// Loaded, it is listed once, from memory, and its generated class is not an asset.
	TArray<FAssetData> Again;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane/Ndisplay"), Again));
	EXPECT_EQ(Paths(Again), (FPathList{"/Game/Orvane/Ndisplay/Config.Config"}));
	EXPECT_EQ(Again[0], Asset);
}

TEST_F(FAssetRegistryTest, InMemoryAssetsAreListedUnlessOnlyDiskIsAsked)
{
	SaveAsset(TEXT("/Game/Orvane/Saved"));
	UReflectionTestObject* Unsaved = NewAsset(TEXT("/Game/Orvane/Unsaved"));
	// Neither transient objects, objects inside assets nor private objects are assets.
	NewObject<UReflectionTestBase>(Unsaved->GetPackage(), TEXT("Scratch"), RF_Transient | RF_Public);
	NewObject<UReflectionTestBase>(Unsaved, TEXT("Inner"), RF_Public);
	NewObject<UReflectionTestBase>(Unsaved->GetPackage(), TEXT("Private"), RF_NoFlags);

	TArray<FAssetData> All;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), All));
	EXPECT_EQ(Paths(All), (FPathList{"/Game/Orvane/Saved.Saved", "/Game/Orvane/Unsaved.Unsaved"}));
	TArray<FAssetData> DiskOnly;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), DiskOnly, false, true));
	EXPECT_EQ(Paths(DiskOnly), (FPathList{"/Game/Orvane/Saved.Saved"}));

	const FAssetData Data = Registry->GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Orvane/Unsaved.Unsaved")));
	ASSERT_TRUE(Data.IsValid());
	EXPECT_TRUE(Data.IsAssetLoaded());
	EXPECT_EQ(Data.GetAsset(), Unsaved);
	EXPECT_EQ(Str(Data.AssetClassPath.ToString()), "/Script/CoreUObject.ReflectionTestObject");
	EXPECT_FALSE(Registry->GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Orvane/Unsaved.Unsaved")), true).IsValid());
	EXPECT_FALSE(Registry->GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Orvane/Missing.Missing"))).IsValid());
	EXPECT_TRUE(Registry->GetAssetByObjectPath(FSoftObjectPath(TEXT("/Game/Orvane/Saved.Saved")), true).IsValid());

	// FAssetData of an object in memory.
	const FAssetData FromObject(Unsaved);
	EXPECT_EQ(Str(FromObject.PackagePath), "/Game/Orvane");
	EXPECT_EQ(FromObject, Data);
	EXPECT_FALSE(FAssetData(static_cast<UObject*>(nullptr)).IsValid());
	EXPECT_EQ(FAssetData().GetAsset(), nullptr);
}

TEST_F(FAssetRegistryTest, PackagesSavedOrDeletedAfterAQueryAreSeen)
{
	SaveAsset(TEXT("/Game/Orvane/First"));
	TArray<FString> Added;
	TArray<FString> Removed;
	const FDelegateHandle AddedHandle = Registry->OnAssetAdded().AddLambda(
		[&Added](const FAssetData& Asset)
		{
			Added.Add(Asset.GetObjectPathString());
		});
	const FDelegateHandle RemovedHandle = Registry->OnAssetRemoved().AddLambda(
		[&Removed](const FAssetData& Asset)
		{
			Removed.Add(Asset.GetObjectPathString());
		});

	TArray<FAssetData> Before;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), Before, false, true));
	EXPECT_EQ(Paths(Before), (FPathList{"/Game/Orvane/First.First"}));

	SaveAsset(TEXT("/Game/Orvane/Second"));
	TArray<FAssetData> After;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), After, false, true));
	EXPECT_EQ(Paths(After), (FPathList{"/Game/Orvane/First.First", "/Game/Orvane/Second.Second"}));
	EXPECT_TRUE(Added.Contains(TEXT("/Game/Orvane/Second.Second")));

	ASSERT_TRUE(IFileManager::Get().Delete(*FileOf(TEXT("/Game/Orvane/First"))));
	TArray<FAssetData> Deleted;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane"), Deleted, false, true));
	EXPECT_EQ(Paths(Deleted), (FPathList{"/Game/Orvane/Second.Second"}));
	EXPECT_TRUE(Removed.Contains(TEXT("/Game/Orvane/First.First")));

	Registry->OnAssetAdded().Remove(AddedHandle);
	Registry->OnAssetRemoved().Remove(RemovedHandle);
}

TEST_F(FAssetRegistryTest, ClassAndFilterQueries)
{
	SaveBlueprint(TEXT("/Game/Orvane/Ndisplay/Config"));
	SaveAsset(TEXT("/Game/Orvane/Stage"));
	NewAsset(TEXT("/Game/Orvane/Memory"));

	const FTopLevelAssetPath BlueprintClass(TEXT("/Script/Engine.Blueprint"));
	TArray<FAssetData> Blueprints;
	ASSERT_TRUE(Registry->GetAssetsByClass(BlueprintClass, Blueprints));
	EXPECT_EQ(Paths(Blueprints), (FPathList{"/Game/Orvane/Ndisplay/Config.Config"}));

	// Test objects derive from the test base: found through it only with sub-classes.
	const FTopLevelAssetPath BaseClass(UReflectionTestBase::StaticClass());
	TArray<FAssetData> Exact;
	ASSERT_TRUE(Registry->GetAssetsByClass(BaseClass, Exact));
	EXPECT_TRUE(Exact.IsEmpty());
	TArray<FAssetData> Derived;
	ASSERT_TRUE(Registry->GetAssetsByClass(BaseClass, Derived, true));
	EXPECT_EQ(Paths(Derived), (FPathList{"/Game/Orvane/Memory.Memory", "/Game/Orvane/Stage.Stage"}));

	FARFilter Filter;
	Filter.PackagePaths.Add(TEXT("/Game/Orvane"));
	Filter.bRecursivePaths = true;
	Filter.ClassPaths.Add(FTopLevelAssetPath(UReflectionTestObject::StaticClass()));
	Filter.bIncludeOnlyOnDiskAssets = true;
	TArray<FAssetData> Filtered;
	ASSERT_TRUE(Registry->GetAssets(Filter, Filtered));
	EXPECT_EQ(Paths(Filtered), (FPathList{"/Game/Orvane/Stage.Stage"}));

	FARFilter Excluding;
	Excluding.ClassPaths.Add(FTopLevelAssetPath(UObject::StaticClass()));
	Excluding.bRecursiveClasses = true;
	Excluding.RecursiveClassPathsExclusionSet.Add(BaseClass);
	Excluding.PackagePaths.Add(TEXT("/Game/Orvane"));
	Excluding.bRecursivePaths = true;
	TArray<FAssetData> WithoutBase;
	ASSERT_TRUE(Registry->GetAssets(Excluding, WithoutBase));
	EXPECT_EQ(Paths(WithoutBase), (FPathList{"/Game/Orvane/Ndisplay/Config.Config"}));

	FARFilter ByName;
	ByName.PackageNames.Add(TEXT("/Game/Orvane/Stage"));
	ByName.PackageNames.Add(TEXT("/Game/Orvane/Memory"));
	TArray<FAssetData> Named;
	ASSERT_TRUE(Registry->GetAssets(ByName, Named));
	EXPECT_EQ(Paths(Named), (FPathList{"/Game/Orvane/Memory.Memory", "/Game/Orvane/Stage.Stage"}));
	TArray<FAssetData> OnePackage;
	ASSERT_TRUE(Registry->GetAssetsByPackageName(TEXT("/Game/Orvane/Ndisplay/Config"), OnePackage));
	EXPECT_EQ(Paths(OnePackage), (FPathList{"/Game/Orvane/Ndisplay/Config.Config"}));

	TArray<FAssetData> Everything;
	ASSERT_TRUE(Registry->GetAllAssets(Everything));
	EXPECT_EQ(Paths(Everything),
		(FPathList{"/Game/Orvane/Memory.Memory", "/Game/Orvane/Ndisplay/Config.Config", "/Game/Orvane/Stage.Stage"}));
}

TEST_F(FAssetRegistryTest, PackagesOfClassesNotInMemoryAreListedWithoutLoading)
{
	// A configuration Blueprint of a module this process does not have.
	const FString File = FileOf(TEXT("/Game/Orvane/Ndisplay/Wall"));
	ASSERT_TRUE(
		FFileHelper::SaveStringToFile(TEXT("HeadlessPackage 1\n"
										   "Package=/Game/Orvane/Ndisplay/Wall\n"
										   "\n"
										   "Begin Object Name=Wall "
										   "Class=/Script/DisplayClusterConfiguration.DisplayClusterBlueprint "
										   "Flags=Public|Standalone|Transactional\n"
										   "End Object\n"
										   "\n"
										   "Begin Object Name=Part Outer=Wall Class=/Script/CoreUObject.Object\n"
										   "End Object\n"),
			*File));
	TArray<FAssetData> Assets;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/Game/Orvane/Ndisplay"), Assets));
	ASSERT_EQ(Assets.Num(), 1);
	EXPECT_EQ(Str(Assets[0].AssetClassPath.ToString()), "/Script/DisplayClusterConfiguration.DisplayClusterBlueprint");
	EXPECT_EQ(Str(Assets[0].AssetClassPath.GetAssetName()), "DisplayClusterBlueprint");
	EXPECT_EQ(Assets[0].GetClass(), nullptr);
	EXPECT_FALSE(Assets[0].IsAssetLoaded());
	EXPECT_EQ(FindPackage(nullptr, TEXT("/Game/Orvane/Ndisplay/Wall")), nullptr);
}

TEST_F(FAssetRegistryTest, MountedContentIsSearched)
{
	const FString PluginContent = TempDir / TEXT("Plugin/Content/");
	Created.Add(TEXT("/RegistryTestPlugin/Camera"));
	{
		// Written where the mount point will be, before it exists.
		UPackage* Package = CreatePackage(TEXT("/Game/Staging/Camera"));
		UObject* Asset = NewObject<UReflectionTestObject>(Package, TEXT("Camera"), RF_Public | RF_Standalone);
		FSavePackageArgs Args;
		Args.TopLevelFlags = RF_Public | RF_Standalone;
		ASSERT_TRUE(UPackage::SavePackage(Package, Asset, *(PluginContent / TEXT("Camera.uasset")), Args));
		Unload(TEXT("/Game/Staging/Camera"));
	}
	TArray<FString> Added;
	const FDelegateHandle Handle = Registry->OnAssetAdded().AddLambda(
		[&Added](const FAssetData& Asset)
		{
			Added.Add(Asset.GetObjectPathString());
		});
	FPackageName::RegisterMountPoint(TEXT("/RegistryTestPlugin/"), PluginContent);
	Registry->OnAssetAdded().Remove(Handle);
	EXPECT_TRUE(Added.Contains(TEXT("/RegistryTestPlugin/Camera.Camera")));

	TArray<FAssetData> Assets;
	ASSERT_TRUE(Registry->GetAssetsByPath(TEXT("/RegistryTestPlugin"), Assets, true));
	EXPECT_EQ(Paths(Assets), (FPathList{"/RegistryTestPlugin/Camera.Camera"}));
	EXPECT_EQ(Str(Assets[0].PackagePath), "/RegistryTestPlugin");

	FPackageName::UnRegisterMountPoint(TEXT("/RegistryTestPlugin/"), PluginContent);
	TArray<FAssetData> AfterUnmount;
	ASSERT_TRUE(Registry->GetAllAssets(AfterUnmount, true));
	EXPECT_EQ(Paths(AfterUnmount), FPathList{});
}
