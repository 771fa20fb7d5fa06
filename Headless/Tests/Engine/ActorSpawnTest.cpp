// Copyright Orvane. All Rights Reserved.

#include "EngineTestWorld.h"
#include "EngineUtils.h"
#include "UObject/Package.h"
#include "UObject/WeakObjectPtrTemplates.h"

using EngineTestWorld::FLogRecorder;

namespace
{
	class FActorSpawnTest : public EngineTestWorld::FWorldTest
	{
	};
} // namespace

TEST_F(FActorSpawnTest, CreateWorldMakesAPersistentLevelInAnUntitledPackage)
{
	ASSERT_NE(World->PersistentLevel, nullptr);
	EXPECT_EQ(World->GetCurrentLevel(), World->PersistentLevel.Get());
	EXPECT_EQ(World->GetLevels().Num(), 1);
	EXPECT_EQ(World->PersistentLevel->GetOuter(), World);
	EXPECT_EQ(World->PersistentLevel->GetWorld(), World);
	EXPECT_TRUE(World->PersistentLevel->IsPersistentLevel());
	EXPECT_EQ(World->WorldType, EWorldType::Editor);
	EXPECT_TRUE(World->IsEditorWorld());
	EXPECT_FALSE(World->IsGameWorld());
	EXPECT_TRUE(ToUtf8(World->GetOutermost()->GetName()).rfind("/Temp/Untitled_", 0) == 0);
	EXPECT_EQ(World->GetMapName(), FString(World->GetName()));
}

TEST_F(FActorSpawnTest, TwoActorsOfAClassAreNamedWithConsecutiveNumbers)
{
	AEngineTestDerivedActor* First = Spawn<AEngineTestDerivedActor>();
	AEngineTestDerivedActor* Second = Spawn<AEngineTestDerivedActor>();
	ASSERT_NE(First, nullptr);
	ASSERT_NE(Second, nullptr);
	// Names are "<Class>_<N>", N counting the objects of the class made in this process.
	EXPECT_EQ(First->GetFName().GetPlainNameString(), FString(TEXT("EngineTestDerivedActor")));
	EXPECT_EQ(Second->GetFName().GetPlainNameString(), FString(TEXT("EngineTestDerivedActor")));
	EXPECT_EQ(Second->GetFName().GetNumber(), First->GetFName().GetNumber() + 1);
	EXPECT_EQ(First->GetOuter(), World->PersistentLevel.Get());
	EXPECT_EQ(First->GetLevel(), World->PersistentLevel.Get());
	EXPECT_EQ(First->GetWorld(), World);
}

TEST_F(FActorSpawnTest, TheFirstActorOfAFreshClassIsNumberZero)
{
	// No test spawns this class before: its counter starts here.
	AEngineTestRootlessActor* First = Spawn<AEngineTestRootlessActor>();
	AEngineTestRootlessActor* Second = Spawn<AEngineTestRootlessActor>();
	EXPECT_EQ(First->GetName(), FString(TEXT("EngineTestRootlessActor_0")));
	EXPECT_EQ(Second->GetName(), FString(TEXT("EngineTestRootlessActor_1")));
	// The editor label is the class name, with the name's number unless it is 0.
	EXPECT_EQ(First->GetActorLabel(), FString(TEXT("EngineTestRootlessActor")));
	EXPECT_EQ(Second->GetActorLabel(), FString(TEXT("EngineTestRootlessActor1")));
	EXPECT_EQ(First->GetDefaultActorLabel(), FString(TEXT("EngineTestRootlessActor")));
}

TEST_F(FActorSpawnTest, ActorLabelsCanBeChangedWithoutRenaming)
{
	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	const FName Name = Actor->GetFName();
	Actor->SetActorLabel(TEXT("  Stage Camera  "));
	EXPECT_EQ(Actor->GetActorLabel(), FString(TEXT("Stage Camera")));
	EXPECT_EQ(Actor->GetFName(), Name);
	EXPECT_EQ(Actor->GetActorNameOrLabel(), FString(TEXT("Stage Camera")));
	// An empty label falls back to the default one.
	Actor->SetActorLabel(TEXT(""));
	EXPECT_EQ(Actor->GetActorLabel(), FString(TEXT("EngineTestActor")));
}

TEST_F(FActorSpawnTest, AGivenNameIsUsedAndAClashFollowsTheNameMode)
{
	FActorSpawnParameters Parameters;
	Parameters.Name = TEXT("Hero");
	AEngineTestActor* Hero = Spawn<AEngineTestActor>(FVector::ZeroVector, Parameters);
	ASSERT_NE(Hero, nullptr);
	EXPECT_EQ(Hero->GetName(), FString(TEXT("Hero")));

	Parameters.NameMode = FActorSpawnParameters::ESpawnActorNameMode::Required_ReturnNull;
	EXPECT_EQ(Spawn<AEngineTestActor>(FVector::ZeroVector, Parameters), nullptr);

	{
		FLogRecorder Log;
		Parameters.NameMode = FActorSpawnParameters::ESpawnActorNameMode::Required_ErrorAndReturnNull;
		EXPECT_EQ(Spawn<AEngineTestActor>(FVector::ZeroVector, Parameters), nullptr);
		EXPECT_TRUE(Log.Contains("An actor of name 'Hero' already exists"));
	}

	Parameters.NameMode = FActorSpawnParameters::ESpawnActorNameMode::Requested;
	AEngineTestActor* Other = Spawn<AEngineTestActor>(FVector::ZeroVector, Parameters);
	ASSERT_NE(Other, nullptr);
	EXPECT_NE(Other->GetFName(), Hero->GetFName());
	EXPECT_EQ(Other->GetFName().GetPlainNameString(), FString(TEXT("Hero")));

	// A destroyed actor gives its name up at once.
	World->DestroyActor(Hero);
	Parameters.NameMode = FActorSpawnParameters::ESpawnActorNameMode::Required_ReturnNull;
	AEngineTestActor* NewHero = Spawn<AEngineTestActor>(FVector::ZeroVector, Parameters);
	ASSERT_NE(NewHero, nullptr);
	EXPECT_EQ(NewHero->GetName(), FString(TEXT("Hero")));
}

TEST_F(FActorSpawnTest, SpawningPlacesTheRootAndRunsConstructionOnce)
{
	const FVector Location(100.0, 200.0, 300.0);
	const FRotator Rotation(0.0, 90.0, 0.0);
	AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>(Location, Rotation);
	ASSERT_NE(Actor, nullptr);
	EXPECT_TRUE(NearlyEqual(Actor->GetActorLocation(), Location));
	EXPECT_NEAR(Actor->GetActorRotation().Yaw, 90.0, 1e-3);
	EXPECT_EQ(Actor->ConstructionCount, 1);
	EXPECT_TRUE(NearlyEqual(Actor->LastConstructionTransform.GetLocation(), Location));
	EXPECT_TRUE(Actor->IsActorInitialized());
	EXPECT_TRUE(Actor->HasActorRegisteredAllComponents());
	EXPECT_TRUE(Actor->GetRootComponent()->IsRegistered());
	EXPECT_EQ(Actor->GetRootComponent()->GetOwner(), Actor);
	EXPECT_TRUE(Actor->GetComponents().Contains(Actor->GetRootComponent()));
}

TEST_F(FActorSpawnTest, SpawningMarksTheLevelPackageDirtyAndAddsTheActorToTheLevel)
{
	UPackage* Package = World->GetOutermost();
	Package->SetDirtyFlag(false);
	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	EXPECT_TRUE(World->PersistentLevel->Actors.Contains(Actor));
	EXPECT_TRUE(Package->IsDirty());

	Package->SetDirtyFlag(false);
	FActorSpawnParameters Temporary;
	Temporary.bTemporaryEditorActor = true;
	Spawn<AEngineTestActor>(FVector::ZeroVector, Temporary);
	EXPECT_FALSE(Package->IsDirty());
}

TEST_F(FActorSpawnTest, DeferredSpawnRunsConstructionWhenFinished)
{
	const FTransform Start(FRotator::ZeroRotator, FVector(1.0, 2.0, 3.0));
	AEngineTestActor* Actor = World->SpawnActorDeferred<AEngineTestActor>(AEngineTestActor::StaticClass(), Start);
	ASSERT_NE(Actor, nullptr);
	EXPECT_EQ(Actor->ConstructionCount, 0);
	EXPECT_FALSE(Actor->IsActorInitialized());

	const FTransform Final(FRotator::ZeroRotator, FVector(10.0, 20.0, 30.0));
	Actor->FinishSpawning(Final);
	EXPECT_EQ(Actor->ConstructionCount, 1);
	EXPECT_TRUE(NearlyEqual(Actor->GetActorLocation(), FVector(10.0, 20.0, 30.0)));
	Actor->FinishSpawning(Final);
	EXPECT_EQ(Actor->ConstructionCount, 1);
}

TEST_F(FActorSpawnTest, ATemplateGivesItsValuesAndItsComponentsStayTheNewActorsOwn)
{
	AEngineTestActor* Template = Spawn<AEngineTestActor>();
	Template->Value = 42;
	FActorSpawnParameters Parameters;
	Parameters.Template = Template;
	AEngineTestActor* Copy = World->SpawnActor<AEngineTestActor>(AEngineTestActor::StaticClass(), Parameters);
	ASSERT_NE(Copy, nullptr);
	EXPECT_EQ(Copy->Value, 42);
	ASSERT_NE(Copy->GetRootComponent(), nullptr);
	EXPECT_NE(Copy->GetRootComponent(), Template->GetRootComponent());
	EXPECT_EQ(Copy->GetRootComponent()->GetOwner(), Copy);
	EXPECT_EQ(Copy->GetComponents().Num(), 1);
}

TEST_F(FActorSpawnTest, SpawnRefusesWhatCannotBeSpawned)
{
	FLogRecorder Log;
	EXPECT_EQ(World->SpawnActor(nullptr), nullptr);
	EXPECT_TRUE(Log.Contains("no class was specified"));
	EXPECT_EQ(World->SpawnActor(AEngineTestAbstractActor::StaticClass()), nullptr);
	EXPECT_TRUE(Log.Contains("is abstract"));
	EXPECT_EQ(World->SpawnActor(UEngineTestTickComponent::StaticClass()), nullptr);
	EXPECT_TRUE(Log.Contains("is not an actor class"));

	FActorSpawnParameters Parameters;
	Parameters.Template = Spawn<AEngineTestActor>();
	EXPECT_EQ(World->SpawnActor(AEngineTestDerivedActor::StaticClass(), nullptr, nullptr, Parameters), nullptr);
	EXPECT_TRUE(Log.Contains("does not match spawn class"));
}

TEST_F(FActorSpawnTest, SpawningWhileAConstructionScriptRunsIsRefusedUnlessAllowed)
{
	FLogRecorder Log;
	World->bIsRunningConstructionScript = true;
	EXPECT_EQ(Spawn<AEngineTestActor>(), nullptr);
	EXPECT_TRUE(Log.Contains("running a ConstructionScript"));
	FActorSpawnParameters Allowed;
	Allowed.bAllowDuringConstructionScript = true;
	EXPECT_NE(Spawn<AEngineTestActor>(FVector::ZeroVector, Allowed), nullptr);
	World->bIsRunningConstructionScript = false;
}

TEST_F(FActorSpawnTest, DestroyActorMarksTheLevelModifiedRemovesTheActorAndMakesItGarbage)
{
	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	USceneComponent* Root = Actor->GetRootComponent();
	TWeakObjectPtr<AEngineTestActor> Weak(Actor);
	UPackage* Package = World->GetOutermost();
	Package->SetDirtyFlag(false);

	EXPECT_TRUE(World->DestroyActor(Actor));
	EXPECT_TRUE(Package->IsDirty());
	EXPECT_FALSE(World->PersistentLevel->Actors.Contains(Actor));
	EXPECT_FALSE(IsValid(Actor));
	EXPECT_FALSE(IsValid(Root));
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_TRUE(Actor->IsPendingKillPending());
	EXPECT_EQ(Actor->DestroyedCount, 1);
	EXPECT_FALSE(Root->IsRegistered());
	// Destroying it again is allowed and changes nothing.
	EXPECT_TRUE(World->DestroyActor(Actor));
	EXPECT_EQ(Actor->DestroyedCount, 1);
	EXPECT_FALSE(TActorIterator<AEngineTestActor>(World));
}

TEST_F(FActorSpawnTest, DestroyingWithoutModifyingTheLevelLeavesItsPackageClean)
{
	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	UPackage* Package = World->GetOutermost();
	Package->SetDirtyFlag(false);
	EXPECT_TRUE(Actor->Destroy(false, false));
	EXPECT_FALSE(Package->IsDirty());
	EXPECT_FALSE(World->PersistentLevel->Actors.Contains(Actor));
}

TEST_F(FActorSpawnTest, DestroyActorRejectsNullAndActorsOfOtherWorlds)
{
	FLogRecorder Log;
	EXPECT_FALSE(World->DestroyActor(nullptr));
	UWorld* Other = UWorld::CreateWorld(EWorldType::Editor, false);
	AEngineTestActor* Foreign = Other->SpawnActor<AEngineTestActor>();
	EXPECT_FALSE(World->DestroyActor(Foreign));
	EXPECT_TRUE(IsValid(Foreign));
	EXPECT_TRUE(Log.Contains("is not in world"));
	Other->DestroyWorld(false);
}

TEST_F(FActorSpawnTest, GarbageCollectionFreesDestroyedActorsAndTheirComponents)
{
	AEngineTestActor* Kept = Spawn<AEngineTestActor>();
	AEngineTestActor* Destroyed = Spawn<AEngineTestActor>();
	TWeakObjectPtr<USceneComponent> DestroyedRoot(Destroyed->GetRootComponent());
	Destroyed->Destroy();
	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	EXPECT_TRUE(IsValid(Kept));
	EXPECT_TRUE(IsValid(Kept->GetRootComponent()));
	EXPECT_EQ(DestroyedRoot.GetEvenIfUnreachable(), nullptr);
	EXPECT_EQ(World->PersistentLevel->Actors.Num(), 1);
}
