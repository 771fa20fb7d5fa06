// Copyright Orvane. All Rights Reserved.

#include "EngineTestTypes.h"

UEngineTestTickComponent::UEngineTestTickComponent(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	PrimaryComponentTick.bCanEverTick = true;
	bTickInEditor = true;
}

void UEngineTestTickComponent::TickComponent(
	float DeltaTime, ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction)
{
	Super::TickComponent(DeltaTime, TickType, ThisTickFunction);
	++TickCount;
	TotalDeltaTime += DeltaTime;
	DeltaTimes.Add(DeltaTime);
	TickTypes.Add(TickType);
	if (OnTicked)
	{
		OnTicked(this);
	}
}

void UEngineTestTickComponent::OnRegister()
{
	Super::OnRegister();
	++RegisterCount;
}

void UEngineTestTickComponent::OnUnregister()
{
	++UnregisterCount;
	Super::OnUnregister();
}

AEngineTestActor::AEngineTestActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	RootComponent = CreateDefaultSubobject<USceneComponent>(TEXT("Root"));
}

void AEngineTestActor::OnConstruction(const FTransform& Transform)
{
	Super::OnConstruction(Transform);
	++ConstructionCount;
	LastConstructionTransform = Transform;
	if (OnConstructed)
	{
		OnConstructed(this);
	}
}

void AEngineTestActor::Destroyed()
{
	++DestroyedCount;
	Super::Destroyed();
}

AEngineTestDerivedActor::AEngineTestDerivedActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

AEngineTestOtherActor::AEngineTestOtherActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	RootComponent = CreateDefaultSubobject<USceneComponent>(TEXT("Root"));
}

AEngineTestRootlessActor::AEngineTestRootlessActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

AEngineTestAbstractActor::AEngineTestAbstractActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

AEngineTestTickActor::AEngineTestTickActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	PrimaryActorTick.bCanEverTick = true;
	EditorTicking = CreateDefaultSubobject<UEngineTestTickComponent>(TEXT("EditorTicking"));
	RootComponent = EditorTicking;
	GameOnlyTicking = CreateDefaultSubobject<UEngineTestTickComponent>(TEXT("GameOnlyTicking"));
	GameOnlyTicking->bTickInEditor = false;
	GameOnlyTicking->SetupAttachment(EditorTicking);
}

void AEngineTestTickActor::Tick(float DeltaSeconds)
{
	Super::Tick(DeltaSeconds);
	++ActorTickCount;
}
