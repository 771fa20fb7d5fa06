// Copyright Orvane. All Rights Reserved.

#include "EngineUtils.h"

#include "ActorClassIndex.h"
#include "Engine/Level.h"

FActorIteratorState::FActorIteratorState(
	const UWorld* InWorld, const TSubclassOf<AActor> InClass, EActorIteratorFlags InFlags)
	: CurrentWorld(InWorld)
	, DesiredClass(InClass.Get())
	, Flags(InFlags)
{
	check(IsInGameThread());
	if (!CurrentWorld || !DesiredClass)
	{
		return;
	}
	if (EnumHasAnyFlags(Flags, EActorIteratorFlags::OnlySelectedActors))
	{
		// There is no actor selection in the headless editor.
		UE_HEADLESS_UNIMPLEMENTED();
	}
	for (ULevel* Level : CurrentWorld->GetLevels())
	{
		if (!Level)
		{
			continue;
		}
		if (EnumHasAnyFlags(Flags, EActorIteratorFlags::OnlyActiveLevels) && !Level->bIsVisible)
		{
			continue;
		}
		Level->GetActorClassIndex().Gather(DesiredClass, ObjectArray);
	}
	// Actors spawned while the iteration runs are visited after the ones that were there when it started.
	ActorSpawnedDelegateHandle = CurrentWorld->AddOnActorSpawnedHandler(
		FOnActorSpawned::FDelegate::CreateRaw(this, &FActorIteratorState::OnActorSpawned));
}

FActorIteratorState::~FActorIteratorState()
{
	if (CurrentWorld && ActorSpawnedDelegateHandle.IsValid())
	{
		CurrentWorld->RemoveOnActorSpawnedHandler(ActorSpawnedDelegateHandle);
	}
}

void FActorIteratorState::OnActorSpawned(AActor* InActor)
{
	if (InActor && InActor->IsA(DesiredClass))
	{
		SpawnedActorArray.AddUnique(InActor);
	}
}

bool FActorIteratorState::IsActorSuitable(const AActor* Actor) const
{
	if (!Actor)
	{
		return false;
	}
	if (EnumHasAnyFlags(Flags, EActorIteratorFlags::SkipPendingKill) && Actor->IsPendingKillPending())
	{
		return false;
	}
	if (EnumHasAnyFlags(Flags, EActorIteratorFlags::OnlyActiveLevels))
	{
		const ULevel* Level = Actor->GetLevel();
		if (!Level || !Level->bIsVisible || !CurrentWorld->ContainsLevel(const_cast<ULevel*>(Level)))
		{
			return false;
		}
	}
	return true;
}

bool FActorIteratorState::Advance()
{
	CurrentActor = nullptr;
	const int32 NumGathered = ObjectArray.Num();
	while (++Index < NumGathered + SpawnedActorArray.Num())
	{
		AActor* Candidate = Index < NumGathered ? ObjectArray[Index] : SpawnedActorArray[Index - NumGathered];
		if (IsActorSuitable(Candidate))
		{
			CurrentActor = Candidate;
			return true;
		}
	}
	return false;
}
