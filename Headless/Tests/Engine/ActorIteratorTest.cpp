// Copyright Orvane. All Rights Reserved.

#include "EngineTestWorld.h"
#include "EngineUtils.h"

using UE::Engine::Private::GetNumActorIndexEntriesVisited;

namespace
{
	class FActorIteratorTest : public EngineTestWorld::FWorldTest
	{
	protected:
		template <class T>
		TArray<T*> Collect(
			EActorIteratorFlags Flags = EActorIteratorFlags::OnlyActiveLevels | EActorIteratorFlags::SkipPendingKill)
		{
			TArray<T*> Found;
			for (TActorIterator<T> It(World, T::StaticClass(), Flags); It; ++It)
			{
				Found.Add(*It);
			}
			return Found;
		}

		/** Index entries visited by one full iteration over class T. */
		template <class T>
		uint64 EntriesVisitedIterating()
		{
			const uint64 Before = GetNumActorIndexEntriesVisited();
			int32 Count = 0;
			for (TActorIterator<T> It(World); It; ++It)
			{
				++Count;
			}
			return GetNumActorIndexEntriesVisited() - Before;
		}
	};
} // namespace

TEST_F(FActorIteratorTest, IteratesTheActorsOfAClassAndItsSubclassesInSpawnOrder)
{
	AEngineTestActor* Base = Spawn<AEngineTestActor>();
	AEngineTestOtherActor* Other = Spawn<AEngineTestOtherActor>();
	AEngineTestDerivedActor* Derived = Spawn<AEngineTestDerivedActor>();
	AEngineTestActor* SecondBase = Spawn<AEngineTestActor>();

	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Base, Derived, SecondBase}));
	EXPECT_EQ(Collect<AEngineTestDerivedActor>(), (TArray<AEngineTestDerivedActor*>{Derived}));
	EXPECT_EQ(Collect<AEngineTestOtherActor>(), (TArray<AEngineTestOtherActor*>{Other}));
	EXPECT_EQ(Collect<AActor>(), (TArray<AActor*>{Base, Other, Derived, SecondBase}));
}

TEST_F(FActorIteratorTest, ARunTimeClassNarrowsTheIteration)
{
	Spawn<AEngineTestActor>();
	AEngineTestDerivedActor* Derived = Spawn<AEngineTestDerivedActor>();
	TArray<AEngineTestActor*> Found;
	for (TActorIterator<AEngineTestActor> It(World, AEngineTestDerivedActor::StaticClass()); It; ++It)
	{
		Found.Add(*It);
	}
	EXPECT_EQ(Found, (TArray<AEngineTestActor*>{Derived}));

	TArray<AActor*> FromRange;
	for (AActor* Actor : TActorRange<AActor>(World, AEngineTestDerivedActor::StaticClass()))
	{
		FromRange.Add(Actor);
	}
	EXPECT_EQ(FromRange, (TArray<AActor*>{Derived}));

	int32 All = 0;
	for (FActorIterator It(World); It; ++It)
	{
		++All;
	}
	EXPECT_EQ(All, 2);
}

TEST_F(FActorIteratorTest, DestroyedActorsAreNotIterated)
{
	AEngineTestActor* Kept = Spawn<AEngineTestActor>();
	AEngineTestActor* Destroyed = Spawn<AEngineTestActor>();
	Destroyed->Destroy();
	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Kept}));
	EXPECT_EQ(Collect<AEngineTestActor>(EActorIteratorFlags::AllActors), (TArray<AEngineTestActor*>{Kept}));
}

TEST_F(FActorIteratorTest, ActorsDestroyedDuringTheIterationAreSkipped)
{
	AEngineTestActor* First = Spawn<AEngineTestActor>();
	AEngineTestActor* Second = Spawn<AEngineTestActor>();
	AEngineTestActor* Third = Spawn<AEngineTestActor>();
	TArray<AEngineTestActor*> Visited;
	for (TActorIterator<AEngineTestActor> It(World); It; ++It)
	{
		Visited.Add(*It);
		if (*It == First)
		{
			Second->Destroy();
		}
	}
	EXPECT_EQ(Visited, (TArray<AEngineTestActor*>{First, Third}));
}

TEST_F(FActorIteratorTest, ActorsSpawnedDuringTheIterationAreVisitedAfterTheOthers)
{
	AEngineTestActor* First = Spawn<AEngineTestActor>();
	AEngineTestActor* Second = Spawn<AEngineTestActor>();
	AEngineTestActor* Spawned = nullptr;
	TArray<AEngineTestActor*> Visited;
	for (TActorIterator<AEngineTestActor> It(World); It; ++It)
	{
		Visited.Add(*It);
		if (!Spawned)
		{
			Spawned = Spawn<AEngineTestDerivedActor>();
			Spawn<AEngineTestOtherActor>();
		}
	}
	EXPECT_EQ(Visited, (TArray<AEngineTestActor*>{First, Second, Spawned}));
}

TEST_F(FActorIteratorTest, ActorsOfHiddenLevelsAreIteratedOnlyWhenAskedFor)
{
	ULevel* SubLevel = NewObject<ULevel>(World, TEXT("SubLevel"));
	ASSERT_TRUE(World->AddLevel(SubLevel));
	EXPECT_FALSE(World->AddLevel(SubLevel));
	FActorSpawnParameters InSubLevel;
	InSubLevel.OverrideLevel = SubLevel;
	AEngineTestActor* Persistent = Spawn<AEngineTestActor>();
	AEngineTestActor* Streamed = Spawn<AEngineTestActor>(FVector::ZeroVector, InSubLevel);
	ASSERT_NE(Streamed, nullptr);
	EXPECT_EQ(Streamed->GetLevel(), SubLevel);
	EXPECT_EQ(Streamed->GetWorld(), World);

	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Persistent, Streamed}));
	SubLevel->bIsVisible = false;
	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Persistent}));
	EXPECT_EQ(Collect<AEngineTestActor>(EActorIteratorFlags::SkipPendingKill),
		(TArray<AEngineTestActor*>{Persistent, Streamed}));

	// A level taken out of the world is not iterated any more.
	SubLevel->bIsVisible = true;
	EXPECT_TRUE(World->RemoveLevel(SubLevel));
	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Persistent}));
	EXPECT_FALSE(World->RemoveLevel(World->PersistentLevel));
}

TEST_F(FActorIteratorTest, IterationCostFollowsTheMatchingActorsNotTheOthers)
{
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Spawn<AEngineTestActor>();
	}
	const uint64 FewOthers = EntriesVisitedIterating<AEngineTestActor>();
	EXPECT_EQ(FewOthers, 3u);

	for (int32 Index = 0; Index < 2000; ++Index)
	{
		Spawn<AEngineTestOtherActor>();
	}
	EXPECT_EQ(EntriesVisitedIterating<AEngineTestActor>(), FewOthers);
	EXPECT_EQ(EntriesVisitedIterating<AEngineTestOtherActor>(), 2000u);
	// Everything is visited when everything is asked for.
	EXPECT_EQ(EntriesVisitedIterating<AActor>(), 2003u);
}

TEST_F(FActorIteratorTest, DestroyingManyActorsKeepsTheIndexSmall)
{
	TArray<AEngineTestOtherActor*> Others;
	for (int32 Index = 0; Index < 100; ++Index)
	{
		Others.Add(Spawn<AEngineTestOtherActor>());
	}
	for (int32 Index = 0; Index < 90; ++Index)
	{
		Others[Index]->Destroy();
	}
	// Holes left by removals are closed once they make up half of a class's entries.
	EXPECT_LE(EntriesVisitedIterating<AEngineTestOtherActor>(), 20u);
	EXPECT_EQ(Collect<AEngineTestOtherActor>().Num(), 10);
	EXPECT_EQ(Collect<AEngineTestOtherActor>()[0], Others[90]);
}

TEST_F(FActorIteratorTest, AnActorCollectedWithoutDestroyLeavesTheIndex)
{
	AEngineTestActor* Kept = Spawn<AEngineTestActor>();
	AEngineTestActor* Dropped = Spawn<AEngineTestActor>();
	// Marked as garbage behind the world's back: the collector removes it, and the index must forget it.
	Dropped->MarkAsGarbage();
	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	EXPECT_EQ(Collect<AEngineTestActor>(EActorIteratorFlags::AllActors), (TArray<AEngineTestActor*>{Kept}));
	EXPECT_EQ(EntriesVisitedIterating<AEngineTestActor>(), 1u);
}

TEST_F(FActorIteratorTest, RenamingAnActorIntoAnotherLevelMovesItsIndexEntry)
{
	ULevel* SubLevel = NewObject<ULevel>(World, TEXT("SubLevel"));
	World->AddLevel(SubLevel);
	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	ASSERT_TRUE(Actor->Rename(nullptr, SubLevel));
	EXPECT_EQ(Actor->GetLevel(), SubLevel);
	EXPECT_FALSE(World->PersistentLevel->Actors.Contains(Actor));
	EXPECT_TRUE(SubLevel->Actors.Contains(Actor));
	SubLevel->bIsVisible = false;
	EXPECT_EQ(Collect<AEngineTestActor>().Num(), 0);
	SubLevel->bIsVisible = true;
	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Actor}));
	// Renaming within the level keeps it where it is.
	ASSERT_TRUE(Actor->Rename(TEXT("Renamed")));
	EXPECT_EQ(Collect<AEngineTestActor>(), (TArray<AEngineTestActor*>{Actor}));
	EXPECT_EQ(EntriesVisitedIterating<AEngineTestActor>(), 1u);
}

TEST_F(FActorIteratorTest, AnIteratorOverNoWorldIsEmpty)
{
	TActorIterator<AActor> It(nullptr);
	EXPECT_FALSE(It);
}

TEST_F(FActorIteratorTest, AnActorMovedIntoAnotherWorldIsIteratedAndTickedThere)
{
	UWorld* Other = UWorld::CreateWorld(EWorldType::Editor, false);
	AEngineTestTickActor* Actor = Spawn<AEngineTestTickActor>();
	ASSERT_TRUE(Actor->Rename(nullptr, Other->PersistentLevel));
	EXPECT_EQ(Actor->GetWorld(), Other);
	EXPECT_EQ(Collect<AEngineTestTickActor>().Num(), 0);
	int32 InOther = 0;
	for (TActorIterator<AEngineTestTickActor> It(Other); It; ++It)
	{
		++InOther;
	}
	EXPECT_EQ(InOther, 1);
	World->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_EQ(Actor->EditorTicking->TickCount, 0);
	Other->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_EQ(Actor->EditorTicking->TickCount, 1);
	Other->DestroyWorld(false);
}

TEST_F(FActorIteratorTest, WhatLivesInAHiddenLevelDoesNotTick)
{
	ULevel* SubLevel = NewObject<ULevel>(World, TEXT("SubLevel"));
	World->AddLevel(SubLevel);
	FActorSpawnParameters InSubLevel;
	InSubLevel.OverrideLevel = SubLevel;
	AEngineTestTickActor* Streamed = Spawn<AEngineTestTickActor>(FVector::ZeroVector, InSubLevel);
	AEngineTestTickActor* Persistent = Spawn<AEngineTestTickActor>();
	World->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_EQ(Streamed->EditorTicking->TickCount, 1);
	SubLevel->bIsVisible = false;
	World->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_EQ(Streamed->EditorTicking->TickCount, 1);
	EXPECT_EQ(Persistent->EditorTicking->TickCount, 2);
	// Moved into the persistent level, the actor ticks again.
	ASSERT_TRUE(Streamed->Rename(nullptr, World->PersistentLevel));
	World->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_EQ(Streamed->EditorTicking->TickCount, 2);
}
