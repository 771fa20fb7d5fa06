// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/World.h"
#include "GameFramework/Actor.h"
#include "Templates/SubclassOf.h"
#include "Templates/UniquePtr.h"

/** Which actors an actor iterator visits. */
enum class EActorIteratorFlags
{
	/** Every actor of the class. */
	AllActors = 0x00000000,
	/** Skip actors that are being destroyed or are garbage. */
	SkipPendingKill = 0x00000001,
	/** Only selected actors (the headless editor has no selection). */
	OnlySelectedActors = 0x00000002,
	/** Only actors of visible levels of the world. */
	OnlyActiveLevels = 0x00000004,
};
ENUM_CLASS_FLAGS(EActorIteratorFlags);

/** Makes an iterator that starts at the end. */
enum class EActorIteratorType
{
	End
};

/**
 * The actors an actor iterator walks: those of the class (and its subclasses) found in the class index of each
 * level of the world when the iteration starts, level by level in the order the actors were added, followed by
 * matching actors spawned in the world while the iteration runs.
 */
class ENGINE_API FActorIteratorState
{
public:
	FActorIteratorState(const UWorld* InWorld, const TSubclassOf<AActor> InClass, EActorIteratorFlags InFlags);
	~FActorIteratorState();

	FActorIteratorState(const FActorIteratorState&) = delete;
	FActorIteratorState& operator=(const FActorIteratorState&) = delete;

	/** Moves to the next actor that passes the flags; false at the end. */
	bool Advance();

	/** The current actor; null before the first Advance and at the end. */
	AActor* GetActorChecked() const
	{
		check(CurrentActor);
		return CurrentActor;
	}
	AActor* GetCurrentActor() const { return CurrentActor; }

	const UWorld* GetWorld() const { return CurrentWorld; }

private:
	/** Whether the actor passes the iteration's flags. */
	bool IsActorSuitable(const AActor* Actor) const;

	void OnActorSpawned(AActor* InActor);

	const UWorld* CurrentWorld = nullptr;
	UClass* DesiredClass = nullptr;
	EActorIteratorFlags Flags = EActorIteratorFlags::AllActors;
	TArray<AActor*> ObjectArray;
	TArray<AActor*> SpawnedActorArray;
	int32 Index = -1;
	AActor* CurrentActor = nullptr;
	FDelegateHandle ActorSpawnedDelegateHandle;
};

/** The common part of the actor iterators. */
template <typename Derived>
class TActorIteratorBase
{
public:
	/** True while the iterator is at an actor. */
	explicit operator bool() const { return State && State->GetCurrentActor() != nullptr; }
	bool operator!() const { return !(bool)*this; }

	/** Moves to the next actor. */
	void operator++() { State->Advance(); }

	friend bool operator!=(const TActorIteratorBase& Lhs, const TActorIteratorBase& Rhs)
	{
		return Lhs.GetCurrent() != Rhs.GetCurrent();
	}
	friend bool operator==(const TActorIteratorBase& Lhs, const TActorIteratorBase& Rhs)
	{
		return Lhs.GetCurrent() == Rhs.GetCurrent();
	}

protected:
	explicit TActorIteratorBase(EActorIteratorType) {}

	TActorIteratorBase(const UWorld* InWorld, TSubclassOf<AActor> InClass, const EActorIteratorFlags InFlags)
		: State(MakeUnique<FActorIteratorState>(InWorld, InClass, InFlags))
	{
		State->Advance();
	}

	AActor* GetCurrent() const { return State ? State->GetCurrentActor() : nullptr; }

	TUniquePtr<FActorIteratorState> State;
};

/** Iterates every actor of a world: FActorIterator It(World); It; ++It. */
class FActorIterator : public TActorIteratorBase<FActorIterator>
{
public:
	explicit FActorIterator(
		const UWorld* InWorld, const EActorIteratorFlags InFlags = EActorIteratorFlags::OnlyActiveLevels |
																   EActorIteratorFlags::SkipPendingKill)
		: TActorIteratorBase(InWorld, AActor::StaticClass(), InFlags)
	{
	}

	explicit FActorIterator(const UWorld* InWorld, const TSubclassOf<AActor> InClass,
		const EActorIteratorFlags InFlags = EActorIteratorFlags::OnlyActiveLevels |
											EActorIteratorFlags::SkipPendingKill)
		: TActorIteratorBase(InWorld, InClass, InFlags)
	{
	}

	explicit FActorIterator(EActorIteratorType IteratorType)
		: TActorIteratorBase(IteratorType)
	{
	}

	AActor* operator*() const { return State->GetActorChecked(); }
	AActor* operator->() const { return State->GetActorChecked(); }
};

/** Iterates the actors of a class (ActorType by default, or a subclass given at run time) in a world. */
template <typename ActorType>
class TActorIterator : public TActorIteratorBase<TActorIterator<ActorType>>
{
	using Super = TActorIteratorBase<TActorIterator<ActorType>>;

public:
	explicit TActorIterator(const UWorld* InWorld, TSubclassOf<ActorType> InClass = ActorType::StaticClass(),
		EActorIteratorFlags InFlags = EActorIteratorFlags::OnlyActiveLevels | EActorIteratorFlags::SkipPendingKill)
		: Super(InWorld, InClass.Get(), InFlags)
	{
	}

	explicit TActorIterator(EActorIteratorType IteratorType)
		: Super(IteratorType)
	{
	}

	ActorType* operator*() const { return CastChecked<ActorType>(this->State->GetActorChecked()); }
	ActorType* operator->() const { return CastChecked<ActorType>(this->State->GetActorChecked()); }
};

/** A range over the actors of a class in a world, for range-based for loops. */
template <typename ActorType>
class TActorRange
{
public:
	explicit TActorRange(const UWorld* InWorld, TSubclassOf<ActorType> InClass = ActorType::StaticClass(),
		EActorIteratorFlags InFlags = EActorIteratorFlags::OnlyActiveLevels | EActorIteratorFlags::SkipPendingKill)
		: World(InWorld)
		, Class(InClass)
		, Flags(InFlags)
	{
	}

	TActorIterator<ActorType> begin() const { return TActorIterator<ActorType>(World, Class, Flags); }
	TActorIterator<ActorType> end() const { return TActorIterator<ActorType>(EActorIteratorType::End); }

private:
	const UWorld* World;
	TSubclassOf<ActorType> Class;
	EActorIteratorFlags Flags;
};

namespace UE::Engine::Private
{
	/**
	 * How many entries of the levels' class indexes actor iterators have visited since the process started.
	 * Tests and benchmarks read it to check that iteration cost follows the number of matching actors.
	 */
	ENGINE_API uint64 GetNumActorIndexEntriesVisited();
} // namespace UE::Engine::Private
