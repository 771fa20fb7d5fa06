// Copyright Orvane. All Rights Reserved.

#pragma once

// Actors and components used by the engine's own tests (GoogleTest suites, benchmarks and automation tests).

#include "Components/SceneComponent.h"
#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "UObject/ObjectMacros.h"

#include "EngineTestTypes.generated.h"

/** A scene component that records the ticks it receives. */
UCLASS()
class ENGINE_API UEngineTestTickComponent : public USceneComponent
{
	GENERATED_BODY()

public:
	UEngineTestTickComponent(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	virtual void TickComponent(
		float DeltaTime, enum ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction) override;
	virtual void OnRegister() override;
	virtual void OnUnregister() override;

	int32 TickCount = 0;
	double TotalDeltaTime = 0.0;
	TArray<float> DeltaTimes;
	TArray<ELevelTick> TickTypes;
	int32 RegisterCount = 0;
	int32 UnregisterCount = 0;

	/** Called from TickComponent, for tests that act during a tick. */
	TFunction<void(UEngineTestTickComponent*)> OnTicked;
};

/** An actor with a scene component root that counts its constructions. */
UCLASS()
class ENGINE_API AEngineTestActor : public AActor
{
	GENERATED_BODY()

public:
	AEngineTestActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	virtual void OnConstruction(const FTransform& Transform) override;
	virtual void Destroyed() override;

	/** A value that spawning with a template copies. */
	UPROPERTY(EditAnywhere, Category = Test)
	int32 Value = 0;

	int32 ConstructionCount = 0;
	FTransform LastConstructionTransform;
	int32 DestroyedCount = 0;

	/** Called from OnConstruction, for tests that act during construction. */
	TFunction<void(AEngineTestActor*)> OnConstructed;
};

/** A subclass of the test actor, for class filters that include subclasses. */
UCLASS()
class ENGINE_API AEngineTestDerivedActor : public AEngineTestActor
{
	GENERATED_BODY()

public:
	AEngineTestDerivedActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};

/** An actor of an unrelated class, in bulk around the actors a test looks for. */
UCLASS()
class ENGINE_API AEngineTestOtherActor : public AActor
{
	GENERATED_BODY()

public:
	AEngineTestOtherActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};

/** An actor without components. */
UCLASS()
class ENGINE_API AEngineTestRootlessActor : public AActor
{
	GENERATED_BODY()

public:
	AEngineTestRootlessActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};

/** An abstract actor class, which cannot be spawned. */
UCLASS(Abstract)
class ENGINE_API AEngineTestAbstractActor : public AActor
{
	GENERATED_BODY()

public:
	AEngineTestAbstractActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};

/** An actor whose root records ticks, and which ticks itself (in the editor too, when asked). */
UCLASS()
class ENGINE_API AEngineTestTickActor : public AActor
{
	GENERATED_BODY()

public:
	AEngineTestTickActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	virtual void Tick(float DeltaSeconds) override;
	virtual bool ShouldTickIfViewportsOnly() const override { return bTickInEditorViewports; }

	/** The root, a ticking component that ticks in the editor. */
	UPROPERTY()
	TObjectPtr<UEngineTestTickComponent> EditorTicking;

	/** A ticking component that does not tick in the editor. */
	UPROPERTY()
	TObjectPtr<UEngineTestTickComponent> GameOnlyTicking;

	bool bTickInEditorViewports = false;
	int32 ActorTickCount = 0;
};
