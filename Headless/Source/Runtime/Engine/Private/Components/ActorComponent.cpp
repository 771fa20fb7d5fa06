// Copyright Orvane. All Rights Reserved.

#include "Components/ActorComponent.h"

#include "Engine/Level.h"
#include "Engine/World.h"
#include "GameFramework/Actor.h"

DEFINE_LOG_CATEGORY_STATIC(LogActorComponent, Log, All);

UActorComponent::UActorComponent(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, bAutoRegister(true)
	, bTickInEditor(false)
	, bAutoActivate(false)
{
	PrimaryComponentTick.TickGroup = TG_DuringPhysics;
	PrimaryComponentTick.bStartWithTickEnabled = true;
	PrimaryComponentTick.bCanEverTick = false;
}

void UActorComponent::PostInitProperties()
{
	Super::PostInitProperties();
	// A component made inside an actor belongs to it from the start, whether the actor's constructor made it
	// or it was created later with NewObject.
	OwnerPrivate = GetTypedOuter<AActor>();
	if (OwnerPrivate && !HasAnyFlags(RF_ClassDefaultObject))
	{
		OwnerPrivate->AddOwnedComponent(this);
	}
}

AActor* UActorComponent::GetOwner() const
{
	return OwnerPrivate;
}

UWorld* UActorComponent::GetWorld() const
{
	if (WorldPrivate)
	{
		return WorldPrivate;
	}
	return OwnerPrivate ? OwnerPrivate->GetWorld() : Super::GetWorld();
}

ULevel* UActorComponent::GetComponentLevel() const
{
	return OwnerPrivate ? OwnerPrivate->GetLevel() : GetTypedOuter<ULevel>();
}

void UActorComponent::RegisterComponent()
{
	if (bRegistered)
	{
		return;
	}
	UWorld* World = OwnerPrivate ? OwnerPrivate->GetWorld() : nullptr;
	if (!World)
	{
		UE_LOG(
			LogActorComponent, Warning, TEXT("%s cannot be registered: its owner is not in a world."), *GetFullName());
		return;
	}
	RegisterComponentWithWorld(World);
}

void UActorComponent::RegisterComponentWithWorld(UWorld* InWorld)
{
	if (bRegistered || !InWorld)
	{
		return;
	}
	if (!IsValid(this) || HasAnyFlags(RF_ClassDefaultObject | RF_ArchetypeObject))
	{
		UE_LOG(
			LogActorComponent, Warning, TEXT("%s cannot be registered: it is a template or garbage."), *GetFullName());
		return;
	}
	if (OwnerPrivate && OwnerPrivate->GetWorld() != InWorld)
	{
		UE_LOG(LogActorComponent, Error, TEXT("%s cannot be registered with %s: its owner is in another world."),
			*GetFullName(), *InWorld->GetName());
		return;
	}
	WorldPrivate = InWorld;
	bRegistered = true;
	OnRegister();
	RegisterComponentTickFunctions(true);
	if (bAutoActivate && !bIsActive)
	{
		Activate(true);
	}
}

void UActorComponent::UnregisterComponent()
{
	if (!bRegistered)
	{
		return;
	}
	RegisterComponentTickFunctions(false);
	OnUnregister();
	bRegistered = false;
	WorldPrivate = nullptr;
}

void UActorComponent::ReregisterComponent()
{
	if (!bRegistered)
	{
		return;
	}
	UWorld* World = WorldPrivate;
	UnregisterComponent();
	RegisterComponentWithWorld(World);
}

void UActorComponent::DestroyComponent(bool bPromoteChildren)
{
	if (!IsValid(this))
	{
		return;
	}
	UnregisterComponent();
	if (OwnerPrivate)
	{
		OwnerPrivate->RemoveOwnedComponent(this);
		OwnerPrivate->RemoveInstanceComponent(this);
	}
	MarkAsGarbage();
}

void UActorComponent::OnRegister() {}

void UActorComponent::OnUnregister() {}

void UActorComponent::RegisterComponentTickFunctions(bool bRegister)
{
	if (bRegister)
	{
		if (PrimaryComponentTick.bCanEverTick && !IsTemplate())
		{
			PrimaryComponentTick.Target = this;
			PrimaryComponentTick.SetTickFunctionEnable(
				PrimaryComponentTick.bStartWithTickEnabled || PrimaryComponentTick.IsTickFunctionEnabled());
			PrimaryComponentTick.RegisterTickFunction(GetComponentLevel());
		}
	}
	else
	{
		PrimaryComponentTick.UnRegisterTickFunction();
	}
}

void UActorComponent::TickComponent(float DeltaTime, ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction)
{
}

void UActorComponent::SetComponentTickEnabled(bool bEnabled)
{
	if (PrimaryComponentTick.bCanEverTick && !IsTemplate())
	{
		PrimaryComponentTick.SetTickFunctionEnable(bEnabled);
	}
}

bool UActorComponent::IsComponentTickEnabled() const
{
	return PrimaryComponentTick.IsTickFunctionEnabled();
}

void UActorComponent::SetComponentTickInterval(float TickInterval)
{
	PrimaryComponentTick.UpdateTickIntervalAndCoolDown(TickInterval);
}

float UActorComponent::GetComponentTickInterval() const
{
	return PrimaryComponentTick.TickInterval;
}

void UActorComponent::Activate(bool bReset)
{
	if (bReset || !bIsActive)
	{
		bIsActive = true;
		SetComponentTickEnabled(true);
	}
}

void UActorComponent::Deactivate()
{
	if (bIsActive)
	{
		bIsActive = false;
		SetComponentTickEnabled(false);
	}
}

void UActorComponent::SetActive(bool bNewActive, bool bReset)
{
	if (bNewActive)
	{
		Activate(bReset);
	}
	else
	{
		Deactivate();
	}
}

bool UActorComponent::ComponentHasTag(FName Tag) const
{
	return Tag != NAME_None && ComponentTags.Contains(Tag);
}

void UActorComponent::BeginDestroy()
{
	// The world may already be going too: only the tick list entry is given back here.
	PrimaryComponentTick.UnRegisterTickFunction();
	bRegistered = false;
	WorldPrivate = nullptr;
	Super::BeginDestroy();
}

bool UActorComponent::Rename(const TCHAR* NewName, UObject* NewOuter, ERenameFlags Flags)
{
	AActor* const OldOwner = OwnerPrivate;
	if (!Super::Rename(NewName, NewOuter, Flags))
	{
		return false;
	}
	if (Flags & REN_Test)
	{
		return true;
	}
	AActor* const NewOwner = GetTypedOuter<AActor>();
	if (NewOwner != OldOwner)
	{
		UnregisterComponent();
		if (OldOwner)
		{
			OldOwner->RemoveOwnedComponent(this);
		}
		OwnerPrivate = NewOwner;
		if (NewOwner)
		{
			NewOwner->AddOwnedComponent(this);
		}
	}
	return true;
}
