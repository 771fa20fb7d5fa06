// Copyright Orvane. All Rights Reserved.

#include "Engine/Level.h"

#include "ActorClassIndex.h"
#include "Engine/World.h"
#include "GameFramework/Actor.h"

ULevel::ULevel(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, bIsVisible(true)
	, ActorClassIndex(MakeUnique<UE::Engine::Private::FActorClassIndex>())
{
}

ULevel::~ULevel() = default;

UWorld* ULevel::GetWorld() const
{
	return OwningWorld;
}

bool ULevel::IsPersistentLevel() const
{
	return OwningWorld && OwningWorld->PersistentLevel == this;
}

bool ULevel::IsCurrentLevel() const
{
	return OwningWorld && OwningWorld->GetCurrentLevel() == this;
}

void ULevel::AddLevelActor(AActor* Actor)
{
	Actors.Add(Actor);
	ActorClassIndex->Add(Actor);
	Actor->IndexedLevel = this;
}

void ULevel::RemoveLevelActor(AActor* Actor)
{
	// Search from the end: the actors removed most often are the ones added last.
	for (int32 Index = Actors.Num() - 1; Index >= 0; --Index)
	{
		if (Actors[Index] == Actor)
		{
			Actors.RemoveAt(Index);
			break;
		}
	}
	ActorClassIndex->Remove(Actor);
	if (Actor->IndexedLevel == this)
	{
		Actor->IndexedLevel = nullptr;
	}
}

void ULevel::BeginDestroy()
{
	// The actors may be collected with the level: none of them may point back at it any more.
	for (AActor* Actor : Actors)
	{
		if (Actor && Actor->IndexedLevel == this)
		{
			ActorClassIndex->Remove(Actor);
			Actor->IndexedLevel = nullptr;
		}
	}
	Super::BeginDestroy();
}
