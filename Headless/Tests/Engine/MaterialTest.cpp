// Copyright Orvane. All Rights Reserved.

#include "Materials/Material.h"
#include "Engine/BlendableInterface.h"
#include "Engine/Texture.h"
#include "Engine/Texture2D.h"
#include "EngineTestWorld.h"
#include "HAL/FileManager.h"
#include "MaterialDomain.h"
#include "Materials/MaterialInstance.h"
#include "Materials/MaterialInstanceConstant.h"
#include "Materials/MaterialInterface.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include "PackageTestUtils.h"
#include <cstdlib>

#include <gtest/gtest.h>

using EngineTestWorld::FLogRecorder;

namespace
{
	using PackageTestUtils::FileOf;
	using PackageTestUtils::Save;
	using PackageTestUtils::Unload;

	const EObjectFlags AssetFlags = RF_Public | RF_Standalone | RF_Transactional;

	/** A throwaway project under /tmp whose Content folder is "/Game/". */
	class FMaterialTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/MaterialTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
			const FString ProjectDir = TempDir / TEXT("Proj/");
			ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
			FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));
		}

		void TearDown() override
		{
			for (const TCHAR* Name : {TEXT("/Game/M_Base"), TEXT("/Game/MI_First"), TEXT("/Game/MI_Second"),
					 TEXT("/Game/M_Other"), TEXT("/Game/T_Texture")})
			{
				Unload(Name);
			}
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		/** A new material asset in a package of its own name. */
		static UMaterial* MakeMaterial(const TCHAR* Name)
		{
			UPackage* Package = CreatePackage(*(FString(TEXT("/Game/")) + Name));
			return NewObject<UMaterial>(Package, Name, AssetFlags);
		}

		/** A new material instance asset in a package of its own name, with a parent. */
		static UMaterialInstanceConstant* MakeInstance(const TCHAR* Name, UMaterialInterface* Parent)
		{
			UPackage* Package = CreatePackage(*(FString(TEXT("/Game/")) + Name));
			UMaterialInstanceConstant* Instance = NewObject<UMaterialInstanceConstant>(Package, Name, AssetFlags);
			Instance->SetParentEditorOnly(Parent);
			return Instance;
		}

		FString TempDir;
	};
} // namespace

TEST_F(FMaterialTest, MaterialsAndInstancesAreMaterialInterfacesAndTexturesAreNot)
{
	UMaterial* Material = MakeMaterial(TEXT("M_Base"));
	UMaterialInstanceConstant* Instance = MakeInstance(TEXT("MI_First"), Material);
	UPackage* TexturePackage = CreatePackage(TEXT("/Game/T_Texture"));
	UTexture2D* Texture = NewObject<UTexture2D>(TexturePackage, TEXT("T_Texture"), AssetFlags);
	ASSERT_TRUE(Material && Instance && Texture);

	EXPECT_TRUE(Material->IsA(UMaterialInterface::StaticClass()));
	EXPECT_TRUE(Instance->IsA(UMaterialInterface::StaticClass()));
	EXPECT_TRUE(Instance->IsA<UMaterialInstance>());
	EXPECT_FALSE(Instance->IsA<UMaterial>());
	EXPECT_FALSE(Material->IsA<UMaterialInstance>());
	EXPECT_FALSE(Texture->IsA(UMaterialInterface::StaticClass()));
	EXPECT_TRUE(Texture->IsA<UTexture>());
	EXPECT_EQ(Cast<UMaterialInterface>(Texture), nullptr);
	EXPECT_EQ(Cast<UMaterialInterface>(Instance), Instance);

	// The engine's class paths, and the abstract bases cannot be instanced.
	EXPECT_EQ(ToUtf8(UMaterialInterface::StaticClass()->GetPathName()), "/Script/Engine.MaterialInterface");
	EXPECT_EQ(ToUtf8(UMaterial::StaticClass()->GetPathName()), "/Script/Engine.Material");
	EXPECT_EQ(ToUtf8(UMaterialInstance::StaticClass()->GetPathName()), "/Script/Engine.MaterialInstance");
	EXPECT_EQ(
		ToUtf8(UMaterialInstanceConstant::StaticClass()->GetPathName()), "/Script/Engine.MaterialInstanceConstant");
	EXPECT_EQ(ToUtf8(UTexture2D::StaticClass()->GetPathName()), "/Script/Engine.Texture2D");
	EXPECT_TRUE(UMaterialInterface::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_TRUE(UMaterialInstance::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_TRUE(UTexture::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_FALSE(UMaterial::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_FALSE(UMaterialInstanceConstant::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_FALSE(UTexture2D::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
}

TEST_F(FMaterialTest, ANewMaterialIsASurfaceMaterialAfterTonemapping)
{
	const UMaterial* Material = MakeMaterial(TEXT("M_Base"));
	EXPECT_EQ(Material->MaterialDomain, MD_Surface);
	EXPECT_EQ(Material->BlendableLocation, BL_SceneColorAfterTonemapping);
	EXPECT_EQ(Material->BlendablePriority, 0);
	EXPECT_TRUE(Material->bIsBlendable);
	EXPECT_EQ(Material->GetMaterial(), Material);
	EXPECT_EQ(ToUtf8(MaterialDomainString(MD_PostProcess)), "MD_PostProcess");
	EXPECT_EQ(ToUtf8(MaterialDomainString(MD_RuntimeVirtualTexture)), "MD_RuntimeVirtualTexture");
}

TEST_F(FMaterialTest, AnInstanceFindsItsBaseMaterialThroughItsParents)
{
	UMaterial* Material = MakeMaterial(TEXT("M_Base"));
	UMaterialInstanceConstant* First = MakeInstance(TEXT("MI_First"), Material);
	UMaterialInstanceConstant* Second = MakeInstance(TEXT("MI_Second"), First);

	EXPECT_EQ(First->Parent.Get(), Material);
	EXPECT_EQ(Second->Parent.Get(), First);
	EXPECT_EQ(First->GetMaterial(), Material);
	EXPECT_EQ(Second->GetMaterial(), Material);
	EXPECT_EQ(Second->GetBaseMaterial(), Material);
	const UMaterialInterface* ConstSecond = Second;
	EXPECT_EQ(ConstSecond->GetMaterial(), Material);

	// Through the base class, as callers that load a UMaterialInterface see it.
	UMaterialInterface* AsInterface = Second;
	EXPECT_EQ(AsInterface->GetMaterial(), Material);

	EXPECT_TRUE(Second->IsDependent(First));
	EXPECT_TRUE(Second->IsDependent(Material));
	EXPECT_TRUE(Second->IsDependent(Second));
	EXPECT_FALSE(First->IsDependent(Second));
	EXPECT_FALSE(Material->IsDependent(First));
	EXPECT_FALSE(Second->IsDependent(nullptr));

	// Changing a parent in the middle of the chain changes what the children resolve to.
	UMaterial* Other = MakeMaterial(TEXT("M_Other"));
	First->SetParentEditorOnly(Other);
	EXPECT_EQ(Second->GetMaterial(), Other);
	EXPECT_FALSE(Second->IsDependent(Material));
}

TEST_F(FMaterialTest, AnInstanceWithoutAParentHasNoBaseMaterial)
{
	UMaterialInstanceConstant* Orphan = MakeInstance(TEXT("MI_First"), nullptr);
	EXPECT_EQ(Orphan->Parent.Get(), nullptr);
	EXPECT_EQ(Orphan->GetMaterial(), nullptr);
}

TEST_F(FMaterialTest, SetParentRefusesACircularChainAndKeepsTheOldParent)
{
	UMaterial* Material = MakeMaterial(TEXT("M_Base"));
	UMaterialInstanceConstant* First = MakeInstance(TEXT("MI_First"), Material);
	UMaterialInstanceConstant* Second = MakeInstance(TEXT("MI_Second"), First);

	FLogRecorder Log;
	First->SetParentEditorOnly(Second);
	EXPECT_EQ(First->Parent.Get(), Material);
	First->SetParentEditorOnly(First);
	EXPECT_EQ(First->Parent.Get(), Material);
	ASSERT_EQ(Log.Lines.size(), 2u);
	EXPECT_TRUE(Log.Contains("/Game/MI_First.MI_First cannot take /Game/MI_Second.MI_Second as its parent"));
	EXPECT_TRUE(Log.Contains("the chain of parents would be circular"));
	EXPECT_EQ(Second->GetMaterial(), Material);
}

TEST_F(FMaterialTest, ACircularChainEndsWithAnErrorInsteadOfLooping)
{
	UMaterialInstanceConstant* First = MakeInstance(TEXT("MI_First"), nullptr);
	UMaterialInstanceConstant* Second = MakeInstance(TEXT("MI_Second"), First);
	// Assigned directly, as an old or hand-edited file can: the setter would refuse it.
	First->Parent = Second;

	FLogRecorder Log;
	EXPECT_EQ(First->GetMaterial(), nullptr);
	EXPECT_EQ(static_cast<const UMaterialInterface*>(Second)->GetMaterial(), nullptr);
	EXPECT_FALSE(First->IsDependent(MakeMaterial(TEXT("M_Base"))));
	EXPECT_TRUE(First->IsDependent(Second));
	ASSERT_EQ(Log.Lines.size(), 2u);
	EXPECT_TRUE(Log.Contains("/Game/MI_First.MI_First: the chain of parents is circular"));
	EXPECT_TRUE(Log.Contains("/Game/MI_Second.MI_Second: the chain of parents is circular"));

	First->Parent = First;
	EXPECT_EQ(First->GetMaterial(), nullptr);
}

TEST_F(FMaterialTest, InstanceAndMaterialSaveAndLoadWithTheirParentReference)
{
	UMaterial* Material = MakeMaterial(TEXT("M_Base"));
	Material->MaterialDomain = MD_PostProcess;
	Material->BlendableLocation = BL_SceneColorBeforeBloom;
	Material->BlendablePriority = 3;
	UMaterialInstanceConstant* Instance = MakeInstance(TEXT("MI_First"), Material);
	ASSERT_TRUE(Save(Material->GetPackage(), Material));
	ASSERT_TRUE(Save(Instance->GetPackage(), Instance));

	FString MaterialText;
	ASSERT_TRUE(FFileHelper::LoadFileToString(MaterialText, *FileOf(TEXT("/Game/M_Base"))));
	EXPECT_NE(ToUtf8(MaterialText).find("\tMaterialDomain=MD_PostProcess\n"), std::string::npos)
		<< ToUtf8(MaterialText);
	EXPECT_NE(ToUtf8(MaterialText).find("\tBlendableLocation=BL_SceneColorBeforeBloom\n"), std::string::npos);
	FString InstanceText;
	ASSERT_TRUE(FFileHelper::LoadFileToString(InstanceText, *FileOf(TEXT("/Game/MI_First"))));
	EXPECT_NE(ToUtf8(InstanceText).find("Class=/Script/Engine.MaterialInstanceConstant"), std::string::npos);
	EXPECT_NE(ToUtf8(InstanceText).find("\tParent=/Game/M_Base.M_Base"), std::string::npos) << ToUtf8(InstanceText);

	Unload(TEXT("/Game/MI_First"));
	Unload(TEXT("/Game/M_Base"));
	ASSERT_EQ(FindPackage(nullptr, TEXT("/Game/M_Base")), nullptr);

	// Loading the instance by its package path loads the parent's package too.
	UMaterialInterface* Loaded = LoadObject<UMaterialInterface>(nullptr, TEXT("/Game/MI_First"));
	ASSERT_NE(Loaded, nullptr);
	UMaterialInstanceConstant* LoadedInstance = Cast<UMaterialInstanceConstant>(Loaded);
	ASSERT_NE(LoadedInstance, nullptr);
	ASSERT_NE(FindPackage(nullptr, TEXT("/Game/M_Base")), nullptr);
	UMaterial* LoadedMaterial = LoadObject<UMaterial>(nullptr, TEXT("/Game/M_Base.M_Base"));
	ASSERT_NE(LoadedMaterial, nullptr);
	EXPECT_EQ(LoadedInstance->Parent.Get(), LoadedMaterial);
	EXPECT_EQ(Loaded->GetMaterial(), LoadedMaterial);
	EXPECT_EQ(LoadedMaterial->MaterialDomain, MD_PostProcess);
	EXPECT_EQ(LoadedMaterial->BlendableLocation, BL_SceneColorBeforeBloom);
	EXPECT_EQ(LoadedMaterial->BlendablePriority, 3);
}

TEST_F(FMaterialTest, ATextureSavesAndLoadsAsATexture)
{
	UPackage* Package = CreatePackage(TEXT("/Game/T_Texture"));
	UTexture2D* Texture = NewObject<UTexture2D>(Package, TEXT("T_Texture"), AssetFlags);
	EXPECT_TRUE(Texture->SRGB);
	Texture->SRGB = false;
	ASSERT_TRUE(Save(Package, Texture));
	Unload(TEXT("/Game/T_Texture"));

	UObject* Loaded = LoadObject<UObject>(nullptr, TEXT("/Game/T_Texture"));
	ASSERT_NE(Loaded, nullptr);
	EXPECT_TRUE(Loaded->IsA<UTexture2D>());
	EXPECT_FALSE(Loaded->IsA<UMaterialInterface>());
	EXPECT_FALSE(CastChecked<UTexture2D>(Loaded)->SRGB);
	// Asked for as a material, a texture is not one.
	EXPECT_EQ(LoadObject<UMaterialInterface>(nullptr, TEXT("/Game/T_Texture")), nullptr);
}
