// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "Templates/UniquePtr.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "Level.generated.h"

class UWorld;

namespace UE::Engine::Private
{
	class FActorClassIndex;
}

/**
 * A collection of actors in a world: the persistent level, or a streamed level. The level's package is marked
 * dirty when actors are added to it or destroyed in it. Each level keeps its actors indexed by class, so that
 * actor iteration visits only the actors of the classes asked for.
 */
UCLASS()
class ENGINE_API ULevel : public UObject
{
	GENERATED_BODY()

public:
	ULevel(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
	virtual ~ULevel() override;

	/** The actors of the level, in the order they were added. */
	UPROPERTY()
	TArray<TObjectPtr<AActor>> Actors;

	/** The world the level belongs to (its outer, or the world it was added to). */
	TObjectPtr<UWorld> OwningWorld;

	/** Whether the level is visible (shown, ticked and iterated); the persistent level always is. */
	uint8 bIsVisible : 1;

	virtual UWorld* GetWorld() const override;

	/** True for the world's persistent level. */
	bool IsPersistentLevel() const;

	/** True for the level new actors are spawned into. */
	bool IsCurrentLevel() const;

	virtual void BeginDestroy() override;

	/** The class index of the actors (used by actor iteration). */
	const UE::Engine::Private::FActorClassIndex& GetActorClassIndex() const { return *ActorClassIndex; }

private:
	friend class UWorld;
	friend class AActor;

	/** Adds an actor to Actors and to the class index. */
	void AddLevelActor(AActor* Actor);

	/** Removes an actor from Actors and from the class index. */
	void RemoveLevelActor(AActor* Actor);

	TUniquePtr<UE::Engine::Private::FActorClassIndex> ActorClassIndex;
};
