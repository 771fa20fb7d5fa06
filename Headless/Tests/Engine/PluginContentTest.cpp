// Copyright Orvane. All Rights Reserved.

// The plug-in's own content in Headless/Content/Orvane/, mounted at /Orvane/ as the engine loop mounts it: the
// game mode Blueprint and the stencil mask material and its instance.

#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "EngineTestWorld.h"
#include "GameFramework/GameModeBase.h"
#include "HAL/FileManager.h"
#include "MaterialDomain.h"
#include "Materials/Material.h"
#include "Materials/MaterialInstanceConstant.h"
#include "Materials/MaterialInterface.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"

#include "PackageTestUtils.h"
#include <cstdlib>

#include <gtest/gtest.h>

using EngineTestWorld::FLogRecorder;

namespace
{
	const TCHAR* const GameModePackage = TEXT("/Orvane/Orvane_GM");
	const TCHAR* const MaterialPackage = TEXT("/Orvane/Materials/Orvane_M_MaskStencil");
	const TCHAR* const InstancePackage = TEXT("/Orvane/Materials/Orvane_MI_MaskStencil");

	class FPluginContentTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			ContentDir = FPaths::EngineContentDir() / TEXT("Orvane/");
			ASSERT_TRUE(FPaths::DirectoryExists(ContentDir)) << ToUtf8(ContentDir);
			FPackageName::RegisterMountPoint(TEXT("/Orvane/"), ContentDir);
		}

		void TearDown() override
		{
			for (const TCHAR* Name : {GameModePackage, InstancePackage, MaterialPackage})
			{
				PackageTestUtils::Unload(Name);
			}
			FPackageName::UnRegisterMountPoint(TEXT("/Orvane/"), ContentDir);
			if (!TempDir.IsEmpty())
			{
				IFileManager::Get().DeleteDirectory(*TempDir, false, true);
			}
		}

		/** Saves a loaded package to a scratch file and returns the text written. */
		FString Resave(const TCHAR* PackageName)
		{
			if (TempDir.IsEmpty())
			{
				char Template[] = "/tmp/PluginContentTest-XXXXXX";
				EXPECT_NE(::mkdtemp(Template), nullptr);
				TempDir = UTF8_TO_TCHAR(Template);
			}
			UPackage* Package = FindPackage(nullptr, PackageName);
			EXPECT_NE(Package, nullptr) << ToUtf8(PackageName);
			if (!Package)
			{
				return FString();
			}
			UObject* Asset = FindObject<UObject>(Package, *FPackageName::GetShortName(PackageName));
			const FString File = TempDir / FPackageName::GetShortName(PackageName) + TEXT(".uasset");
			FSavePackageArgs Args;
			Args.TopLevelFlags = RF_Public | RF_Standalone;
			EXPECT_TRUE(UPackage::SavePackage(Package, Asset, *File, Args));
			FString Text;
			EXPECT_TRUE(FFileHelper::LoadFileToString(Text, *File));
			return Text;
		}

		/** The committed file of a package. */
		static FString Committed(const TCHAR* PackageName)
		{
			FString Text;
			EXPECT_TRUE(FFileHelper::LoadFileToString(Text, *PackageTestUtils::FileOf(PackageName)));
			return Text;
		}

		FString ContentDir;
		FString TempDir;
	};
} // namespace

TEST_F(FPluginContentTest, TheFilesLieWhereTheMountPutsTheirPackages)
{
	for (const TCHAR* Name : {GameModePackage, MaterialPackage, InstancePackage})
	{
		EXPECT_TRUE(FPackageName::DoesPackageExist(Name)) << ToUtf8(Name);
		EXPECT_TRUE(FPaths::FileExists(PackageTestUtils::FileOf(Name))) << ToUtf8(Name);
	}
	EXPECT_EQ(ToUtf8(PackageTestUtils::FileOf(InstancePackage)),
		ToUtf8(ContentDir / TEXT("Materials/Orvane_MI_MaskStencil.uasset")));
}

TEST_F(FPluginContentTest, TheMaskMaterialLoadsByPackagePathAsAPostProcessMaterialInstance)
{
	FLogRecorder Log;
	UMaterialInterface* Material = LoadObject<UMaterialInterface>(nullptr, InstancePackage);
	ASSERT_NE(Material, nullptr);
	EXPECT_EQ(ToUtf8(Material->GetPathName()), "/Orvane/Materials/Orvane_MI_MaskStencil.Orvane_MI_MaskStencil");
	EXPECT_TRUE(Material->IsA<UMaterialInstanceConstant>());
	EXPECT_TRUE(Material->HasAllFlags(RF_Public | RF_Standalone | RF_WasLoaded | RF_LoadCompleted));

	// Its parent is the base material, in a package of its own that loaded with it.
	UMaterial* Base =
		FindObject<UMaterial>(nullptr, TEXT("/Orvane/Materials/Orvane_M_MaskStencil.Orvane_M_MaskStencil"));
	ASSERT_NE(Base, nullptr);
	EXPECT_EQ(CastChecked<UMaterialInstanceConstant>(Material)->Parent.Get(), Base);
	EXPECT_EQ(Material->GetMaterial(), Base);
	EXPECT_EQ(Base->MaterialDomain, MD_PostProcess);
	EXPECT_EQ(LoadObject<UMaterialInterface>(nullptr, MaterialPackage), Base);
	EXPECT_TRUE(Log.Lines.empty()) << Log.Lines.front();
}

TEST_F(FPluginContentTest, TheGameModeBlueprintLoadsAsAGameModeClass)
{
	FLogRecorder Log;
	UClass* Class = LoadObject<UClass>(nullptr, TEXT("/Orvane/Orvane_GM.Orvane_GM_C"));
	ASSERT_NE(Class, nullptr);
	EXPECT_TRUE(Class->IsA<UBlueprintGeneratedClass>());
	EXPECT_TRUE(Class->IsChildOf(AGameModeBase::StaticClass()));
	EXPECT_EQ(Class->GetSuperClass(), AGameModeBase::StaticClass());

	UBlueprint* Blueprint = LoadObject<UBlueprint>(nullptr, GameModePackage);
	ASSERT_NE(Blueprint, nullptr);
	EXPECT_EQ(Blueprint->GeneratedClass.Get(), Class);
	EXPECT_EQ(Blueprint->ParentClass.Get(), AGameModeBase::StaticClass());
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(Class), Blueprint);
	EXPECT_TRUE(Log.Lines.empty()) << Log.Lines.front();
}

TEST_F(FPluginContentTest, SavingTheLoadedAssetsWritesTheCommittedFilesAgain)
{
	// The files are exactly what the editor would write for these assets: nothing missing, nothing extra.
	ASSERT_NE(LoadObject<UMaterialInterface>(nullptr, InstancePackage), nullptr);
	ASSERT_NE(LoadObject<UClass>(nullptr, TEXT("/Orvane/Orvane_GM.Orvane_GM_C")), nullptr);
	for (const TCHAR* Name : {GameModePackage, MaterialPackage, InstancePackage})
	{
		const FString Expected = Committed(Name);
		ASSERT_FALSE(Expected.IsEmpty()) << ToUtf8(Name);
		EXPECT_EQ(ToUtf8(Resave(Name)), ToUtf8(Expected)) << ToUtf8(Name);
	}
}
