// Copyright Orvane. All Rights Reserved.

#include "GameFramework/GameModeBase.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "EngineTestWorld.h"
#include "EngineUtils.h"
#include "GameFramework/Info.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "UObject/Package.h"

#include "PackageTestUtils.h"

namespace
{
	class FGameModeBaseTest : public EngineTestWorld::FWorldTest
	{
	protected:
		void TearDown() override
		{
			PackageTestUtils::Unload(TEXT("/Game/BP_GameMode"));
			FWorldTest::TearDown();
		}
	};
} // namespace

TEST_F(FGameModeBaseTest, TheGameModeClassesHaveTheEnginePathsAndFlags)
{
	UClass* GameMode = AGameModeBase::StaticClass();
	EXPECT_EQ(ToUtf8(GameMode->GetPathName()), "/Script/Engine.GameModeBase");
	EXPECT_EQ(ToUtf8(AInfo::StaticClass()->GetPathName()), "/Script/Engine.Info");
	EXPECT_EQ(GameMode->GetSuperClass(), AInfo::StaticClass());
	EXPECT_EQ(AInfo::StaticClass()->GetSuperClass(), AActor::StaticClass());
	EXPECT_TRUE(GameMode->IsChildOf(AActor::StaticClass()));
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/Engine.GameModeBase")), GameMode);

	EXPECT_TRUE(AInfo::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_FALSE(GameMode->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_TRUE(GameMode->HasAllClassFlags(CLASS_NotPlaceable | CLASS_Transient | CLASS_Config));
	EXPECT_EQ(GameMode->ClassConfigName, FName(TEXT("Game")));
	EXPECT_EQ(ToUtf8(GameMode->GetMetaData(TEXT("ShortTooltip"))),
		"Game Mode Base defines the game being played, its rules, scoring, and other facets of the game type.");
	EXPECT_EQ(ToUtf8(GameMode->GetMetaData(TEXT("BlueprintType"))), "true");
	EXPECT_TRUE(GameMode->HasMetaData(TEXT("IsBlueprintBase")));
	EXPECT_EQ(ToUtf8(GameMode->GetMetaData(TEXT("IsBlueprintBase"))), "true");
	EXPECT_EQ(ToUtf8(AInfo::StaticClass()->GetMetaData(TEXT("IsBlueprintBase"))), "false");
}

TEST_F(FGameModeBaseTest, AGameModeInTheWorldIsAHiddenInfoActorThatDoesNotTick)
{
	AGameModeBase* GameMode = Spawn<AGameModeBase>();
	ASSERT_NE(GameMode, nullptr);
	EXPECT_TRUE(GameMode->IsA<AInfo>());
	EXPECT_TRUE(GameMode->IsHidden());
	EXPECT_FALSE(GameMode->PrimaryActorTick.bCanEverTick);
	EXPECT_EQ(GameMode->GetWorld(), World);
	int32 Found = 0;
	for (TActorIterator<AInfo> It(World); It; ++It)
	{
		EXPECT_EQ(*It, GameMode);
		++Found;
	}
	EXPECT_EQ(Found, 1);
}

TEST_F(FGameModeBaseTest, ABlueprintOfTheGameModeCompilesIntoAGameModeClass)
{
	UPackage* Package = CreatePackage(TEXT("/Game/BP_GameMode"));
	UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(
		AGameModeBase::StaticClass(), Package, TEXT("BP_GameMode"), BPTYPE_Normal);
	ASSERT_NE(Blueprint, nullptr);
	UClass* Class = Blueprint->GeneratedClass.Get();
	ASSERT_NE(Class, nullptr);
	EXPECT_EQ(ToUtf8(Class->GetPathName()), "/Game/BP_GameMode.BP_GameMode_C");
	EXPECT_TRUE(Class->IsA<UBlueprintGeneratedClass>());
	EXPECT_TRUE(Class->IsChildOf(AGameModeBase::StaticClass()));
	// The class flags that Blueprint classes inherit from their native parent.
	EXPECT_TRUE(Class->HasAllClassFlags(CLASS_NotPlaceable | CLASS_Transient));

	AGameModeBase* Instance = World->SpawnActor<AGameModeBase>(Class, FVector::ZeroVector, FRotator::ZeroRotator);
	ASSERT_NE(Instance, nullptr);
	EXPECT_EQ(Instance->GetClass(), Class);
	EXPECT_TRUE(Instance->IsHidden());
}
