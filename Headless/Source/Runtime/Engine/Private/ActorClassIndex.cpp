// Copyright Orvane. All Rights Reserved.

#include "ActorClassIndex.h"

#include "EngineUtils.h"
#include "GameFramework/Actor.h"

namespace UE::Engine::Private
{
	namespace
	{
		uint64 GActorIndexEntriesVisited = 0;
	}

	void AddActorIndexEntriesVisited(uint64 Count)
	{
		GActorIndexEntriesVisited += Count;
	}

	uint64 GetNumActorIndexEntriesVisited()
	{
		return GActorIndexEntriesVisited;
	}

	void FActorClassIndex::Add(AActor* Actor)
	{
		check(Actor && Actor->ClassIndexSlot == INDEX_NONE);
		FGroup& Group = Groups.FindOrAdd(Actor->GetClass());
		Actor->ClassIndexSequence = NextSequence++;
		Actor->ClassIndexSlot = Group.Actors.Add(Actor);
		++NumActors;
	}

	void FActorClassIndex::Remove(AActor* Actor)
	{
		if (!Actor || Actor->ClassIndexSlot == INDEX_NONE)
		{
			return;
		}
		FGroup* Group = Groups.Find(Actor->GetClass());
		if (!Group || !Group->Actors.IsValidIndex(Actor->ClassIndexSlot) ||
			Group->Actors[Actor->ClassIndexSlot] != Actor)
		{
			return;
		}
		Group->Actors[Actor->ClassIndexSlot] = nullptr;
		Actor->ClassIndexSlot = INDEX_NONE;
		++Group->NumHoles;
		--NumActors;
		if (Group->NumHoles == Group->Actors.Num())
		{
			// The class has no actors left here; a class that goes away must not stay a key.
			Groups.Remove(Actor->GetClass());
		}
		else if (Group->NumHoles * 2 >= Group->Actors.Num())
		{
			Compact(*Group);
		}
	}

	void FActorClassIndex::Compact(FGroup& Group)
	{
		int32 Write = 0;
		for (int32 Read = 0; Read < Group.Actors.Num(); ++Read)
		{
			if (AActor* Actor = Group.Actors[Read])
			{
				Actor->ClassIndexSlot = Write;
				Group.Actors[Write++] = Actor;
			}
		}
		Group.Actors.SetNum(Write);
		Group.NumHoles = 0;
	}

	void FActorClassIndex::Gather(const UClass* BaseClass, TArray<AActor*>& OutActors) const
	{
		TArray<const FGroup*, TInlineAllocator<8>> Matching;
		for (const TPair<const UClass*, FGroup>& Pair : Groups)
		{
			if (Pair.Key->IsChildOf(BaseClass))
			{
				Matching.Add(&Pair.Value);
			}
		}
		uint64 Visited = 0;
		if (Matching.Num() == 1)
		{
			for (AActor* Actor : Matching[0]->Actors)
			{
				++Visited;
				if (Actor)
				{
					OutActors.Add(Actor);
				}
			}
		}
		else if (Matching.Num() > 1)
		{
			// Merge the groups back into the order the actors were added in.
			TArray<int32, TInlineAllocator<8>> Cursors;
			Cursors.SetNumZeroed(Matching.Num());
			for (;;)
			{
				int32 Best = INDEX_NONE;
				uint64 BestSequence = MAX_uint64;
				for (int32 GroupIndex = 0; GroupIndex < Matching.Num(); ++GroupIndex)
				{
					const TArray<AActor*>& Actors = Matching[GroupIndex]->Actors;
					int32& Cursor = Cursors[GroupIndex];
					while (Cursor < Actors.Num() && !Actors[Cursor])
					{
						++Cursor;
						++Visited;
					}
					if (Cursor < Actors.Num() && Actors[Cursor]->ClassIndexSequence < BestSequence)
					{
						Best = GroupIndex;
						BestSequence = Actors[Cursor]->ClassIndexSequence;
					}
				}
				if (Best == INDEX_NONE)
				{
					break;
				}
				OutActors.Add(Matching[Best]->Actors[Cursors[Best]++]);
				++Visited;
			}
		}
		AddActorIndexEntriesVisited(Visited);
	}
} // namespace UE::Engine::Private
