// Copyright Orvane. All Rights Reserved.

#include "GameFramework/Actor.h"

#include "ActorClassIndex.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/Level.h"
#include "Engine/World.h"

DEFINE_LOG_CATEGORY_STATIC(LogActor, Log, All);

AActor::AActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	PrimaryActorTick.TickGroup = TG_PrePhysics;
	PrimaryActorTick.bCanEverTick = false;
	PrimaryActorTick.bStartWithTickEnabled = true;
}

void AActor::PostInitProperties()
{
	Super::PostInitProperties();
}

// ---------------------------------------------------------------------------------------------------
// Components

bool AActor::SetRootComponent(USceneComponent* NewRootComponent)
{
	if (NewRootComponent && NewRootComponent->GetOwner() != this)
	{
		UE_LOG(LogActor, Warning, TEXT("%s cannot be the root component of %s: it belongs to %s."),
			*NewRootComponent->GetName(), *GetName(), *GetNameSafe(NewRootComponent->GetOwner()));
		return false;
	}
	RootComponent = NewRootComponent;
	return true;
}

void AActor::GetComponents(TSubclassOf<UActorComponent> ComponentClass, TArray<UActorComponent*>& OutComponents,
	bool bIncludeFromChildActors) const
{
	OutComponents.Reset();
	UClass* const Class = ComponentClass.Get();
	if (!Class)
	{
		return;
	}
	for (UActorComponent* Component : OwnedComponents)
	{
		if (Component && Component->IsA(Class))
		{
			OutComponents.Add(Component);
		}
	}
}

UActorComponent* AActor::FindComponentByClass(const TSubclassOf<UActorComponent> ComponentClass) const
{
	UClass* const Class = ComponentClass.Get();
	if (!Class)
	{
		return nullptr;
	}
	for (UActorComponent* Component : OwnedComponents)
	{
		if (Component && Component->IsA(Class))
		{
			return Component;
		}
	}
	return nullptr;
}

UActorComponent* AActor::GetComponentByClass(TSubclassOf<UActorComponent> ComponentClass) const
{
	return FindComponentByClass(ComponentClass);
}

void AActor::AddOwnedComponent(UActorComponent* Component)
{
	if (Component)
	{
		OwnedComponents.Add(Component);
	}
}

void AActor::RemoveOwnedComponent(UActorComponent* Component)
{
	OwnedComponents.Remove(Component);
}

void AActor::AddInstanceComponent(UActorComponent* Component)
{
	if (Component)
	{
		Component->CreationMethod = EComponentCreationMethod::Instance;
		InstanceComponents.AddUnique(Component);
	}
}

void AActor::RemoveInstanceComponent(UActorComponent* Component)
{
	InstanceComponents.Remove(Component);
}

const TArray<UActorComponent*>& AActor::GetInstanceComponents() const
{
	return InstanceComponents;
}

void AActor::RegisterAllComponents()
{
	UWorld* const World = GetWorld();
	if (!World)
	{
		UE_LOG(LogActor, Warning, TEXT("%s cannot register its components: it is not in a world."), *GetName());
		return;
	}
	// The root goes first so that its children attach to a registered parent.
	if (RootComponent && RootComponent->bAutoRegister && !RootComponent->IsRegistered())
	{
		RootComponent->RegisterComponentWithWorld(World);
	}
	TArray<UActorComponent*> Components = OwnedComponents.Array();
	for (UActorComponent* Component : Components)
	{
		if (IsValid(Component) && Component->bAutoRegister && !Component->IsRegistered())
		{
			Component->RegisterComponentWithWorld(World);
		}
	}
	bHasRegisteredAllComponents = true;
	if (PrimaryActorTick.bCanEverTick && !IsTemplate())
	{
		PrimaryActorTick.Target = this;
		PrimaryActorTick.SetTickFunctionEnable(
			PrimaryActorTick.bStartWithTickEnabled || PrimaryActorTick.IsTickFunctionEnabled());
		PrimaryActorTick.RegisterTickFunction(GetLevel());
	}
}

void AActor::UnregisterAllComponents(bool bForReregister)
{
	PrimaryActorTick.UnRegisterTickFunction();
	TArray<UActorComponent*> Components = OwnedComponents.Array();
	for (UActorComponent* Component : Components)
	{
		if (Component && Component->IsRegistered())
		{
			Component->UnregisterComponent();
		}
	}
	bHasRegisteredAllComponents = false;
}

// ---------------------------------------------------------------------------------------------------
// Transform

const FTransform& AActor::GetActorTransform() const
{
	return RootComponent ? RootComponent->GetComponentTransform() : FTransform::Identity;
}

FVector AActor::GetActorLocation() const
{
	return GetActorTransform().GetTranslation();
}

FRotator AActor::GetActorRotation() const
{
	return RootComponent ? RootComponent->GetComponentRotation() : FRotator::ZeroRotator;
}

FQuat AActor::GetActorQuat() const
{
	return GetActorTransform().GetRotation();
}

FVector AActor::GetActorScale3D() const
{
	return GetActorTransform().GetScale3D();
}

FVector AActor::GetActorForwardVector() const
{
	return GetActorQuat().GetForwardVector();
}

FVector AActor::GetActorRightVector() const
{
	return GetActorQuat().GetRightVector();
}

FVector AActor::GetActorUpVector() const
{
	return GetActorQuat().GetUpVector();
}

bool AActor::SetActorLocation(
	const FVector& NewLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldLocation(NewLocation);
	return true;
}

bool AActor::SetActorRotation(FRotator NewRotation, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldRotation(NewRotation);
	return true;
}

bool AActor::SetActorRotation(const FQuat& NewRotation, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldRotation(NewRotation);
	return true;
}

bool AActor::SetActorLocationAndRotation(
	FVector NewLocation, FRotator NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldLocationAndRotation(NewLocation, NewRotation);
	return true;
}

bool AActor::SetActorLocationAndRotation(
	FVector NewLocation, const FQuat& NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldLocationAndRotation(NewLocation, NewRotation);
	return true;
}

bool AActor::SetActorTransform(
	const FTransform& NewTransform, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!RootComponent)
	{
		return false;
	}
	RootComponent->SetWorldTransform(NewTransform);
	return true;
}

void AActor::SetActorScale3D(FVector NewScale3D)
{
	if (RootComponent)
	{
		RootComponent->SetWorldScale3D(NewScale3D);
	}
}

void AActor::SetActorRelativeTransform(
	const FTransform& NewRelativeTransform, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (RootComponent)
	{
		RootComponent->SetRelativeTransform(NewRelativeTransform);
	}
}

void AActor::SetActorRelativeLocation(
	FVector NewRelativeLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (RootComponent)
	{
		RootComponent->SetRelativeLocation(NewRelativeLocation);
	}
}

void AActor::SetActorRelativeRotation(
	FRotator NewRelativeRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (RootComponent)
	{
		RootComponent->SetRelativeRotation(NewRelativeRotation);
	}
}

// ---------------------------------------------------------------------------------------------------
// Attachment

bool AActor::AttachToActor(AActor* ParentActor, const FAttachmentTransformRules& AttachmentRules, FName SocketName)
{
	if (!RootComponent || !ParentActor)
	{
		return false;
	}
	USceneComponent* const ParentComponent = ParentActor->GetDefaultAttachComponent();
	if (!ParentComponent)
	{
		return false;
	}
	return RootComponent->AttachToComponent(ParentComponent, AttachmentRules, SocketName);
}

bool AActor::AttachToComponent(
	USceneComponent* Parent, const FAttachmentTransformRules& AttachmentRules, FName SocketName)
{
	return RootComponent && Parent && RootComponent->AttachToComponent(Parent, AttachmentRules, SocketName);
}

void AActor::DetachFromActor(const FDetachmentTransformRules& DetachmentRules)
{
	if (RootComponent)
	{
		RootComponent->DetachFromComponent(DetachmentRules);
	}
}

AActor* AActor::GetAttachParentActor() const
{
	USceneComponent* const Parent = RootComponent ? RootComponent->GetAttachParent() : nullptr;
	return Parent ? Parent->GetOwner() : nullptr;
}

FName AActor::GetAttachParentSocketName() const
{
	return RootComponent ? RootComponent->GetAttachSocketName() : NAME_None;
}

void AActor::GetAttachedActors(
	TArray<AActor*>& OutActors, bool bResetArray, bool bRecursivelyIncludeAttachedActors) const
{
	if (bResetArray)
	{
		OutActors.Reset();
	}
	for (UActorComponent* Component : OwnedComponents)
	{
		const USceneComponent* SceneComponent = Cast<USceneComponent>(Component);
		if (!SceneComponent)
		{
			continue;
		}
		for (USceneComponent* Child : SceneComponent->GetAttachChildren())
		{
			AActor* const ChildOwner = Child ? Child->GetOwner() : nullptr;
			if (ChildOwner && ChildOwner != this && !OutActors.Contains(ChildOwner))
			{
				OutActors.Add(ChildOwner);
				if (bRecursivelyIncludeAttachedActors)
				{
					ChildOwner->GetAttachedActors(OutActors, false, true);
				}
			}
		}
	}
}

// ---------------------------------------------------------------------------------------------------
// Construction

void AActor::ProcessUserConstructionScript()
{
	UWorld* const World = GetWorld();
	const bool bWorldWasRunningScript = World && World->bIsRunningConstructionScript;
	if (World)
	{
		World->bIsRunningConstructionScript = true;
	}
	bRunningUserConstructionScript = true;
	const TSet<UActorComponent*> ComponentsBefore = OwnedComponents;

	UserConstructionScript();

	bRunningUserConstructionScript = false;
	if (World)
	{
		World->bIsRunningConstructionScript = bWorldWasRunningScript;
	}

	// What the script made is its own: rerunning the construction rebuilds it. It is registered once the script
	// has finished, so the script sees its components before anything else does.
	TArray<UActorComponent*> Created;
	for (UActorComponent* Component : OwnedComponents)
	{
		if (Component && !ComponentsBefore.Contains(Component) && !Component->HasAnyFlags(RF_DefaultSubObject))
		{
			Created.Add(Component);
		}
	}
	for (UActorComponent* Component : Created)
	{
		Component->CreationMethod = EComponentCreationMethod::UserConstructionScript;
		if (World && bHasRegisteredAllComponents && Component->bAutoRegister && !Component->IsRegistered())
		{
			Component->RegisterComponentWithWorld(World);
		}
	}
}

bool AActor::ExecuteConstruction(const FTransform& Transform, const FRotationConversionCache* TransformRotationCache,
	const FComponentInstanceDataCache* InstanceDataCache, bool bIsDefaultTransform,
	ESpawnActorScaleMethod TransformScaleMethod)
{
	TArray<const UBlueprintGeneratedClass*> GeneratedClasses;
	const bool bErrorFree = UBlueprintGeneratedClass::GetGeneratedClassesHierarchy(GetClass(), GeneratedClasses);
	if (bErrorFree)
	{
		ProcessUserConstructionScript();
	}
	else
	{
		UE_LOG(LogActor, Warning,
			TEXT("%s: a Blueprint class of its hierarchy has lost its Blueprint; its construction script was skipped."),
			*GetName());
	}
	OnConstruction(Transform);
	return bErrorFree;
}

FTransform AActor::ComputeSpawnRootTransform(const FTransform& UserTransform, ESpawnActorScaleMethod ScaleMethod) const
{
	if (ScaleMethod == ESpawnActorScaleMethod::OverrideRootScale)
	{
		return UserTransform;
	}
	// The root keeps the transform its class gave it, relative to the spawn transform.
	return TemplateRootTransform * UserTransform;
}

void AActor::PostSpawnInitialize(const FTransform& UserSpawnTransform, AActor* InOwner, bool bRemoteOwned, bool bNoFail,
	bool bDeferConstruction, ESpawnActorScaleMethod TransformScaleMethod)
{
	SetOwner(InOwner);
	PostActorCreated();
	OriginalSpawnTransform = UserSpawnTransform;
	SpawnScaleMethod = TransformScaleMethod;
	if (RootComponent)
	{
		TemplateRootTransform = RootComponent->GetRelativeTransform();
		RootComponent->SetWorldTransform(ComputeSpawnRootTransform(UserSpawnTransform, TransformScaleMethod));
	}
	RegisterAllComponents();
	if (!bDeferConstruction && IsValid(this))
	{
		FinishSpawning(UserSpawnTransform, true, nullptr, TransformScaleMethod);
	}
}

void AActor::FinishSpawning(const FTransform& UserTransform, bool bIsDefaultTransform,
	const FComponentInstanceDataCache* InstanceDataCache, ESpawnActorScaleMethod TransformScaleMethod)
{
	if (bActorInitialized)
	{
		return;
	}
	FTransform FinalTransform = RootComponent ? RootComponent->GetComponentTransform() : UserTransform;
	if (RootComponent && !bIsDefaultTransform && !UserTransform.Equals(OriginalSpawnTransform))
	{
		// A deferred spawn finished at another transform than it started with.
		FinalTransform = ComputeSpawnRootTransform(UserTransform, TransformScaleMethod);
		RootComponent->SetWorldTransform(FinalTransform);
	}
	ExecuteConstruction(FinalTransform, nullptr, InstanceDataCache, bIsDefaultTransform, TransformScaleMethod);
	PostActorConstruction();
}

void AActor::PostActorConstruction()
{
	bActorInitialized = true;
	PreInitializeComponents();
	PostInitializeComponents();
}

void AActor::PostInitializeComponents() {}

#if WITH_EDITOR
void AActor::RerunConstructionScripts()
{
	if (HasAnyFlags(RF_ClassDefaultObject | RF_ArchetypeObject) || IsPendingKillPending() || !GetWorld())
	{
		return;
	}
	DestroyConstructedComponents();
	ExecuteConstruction(GetActorTransform(), nullptr, nullptr, false);
}
#endif

void AActor::DestroyConstructedComponents()
{
	TArray<UActorComponent*> Constructed;
	for (UActorComponent* Component : OwnedComponents)
	{
		if (Component && Component->CreationMethod == EComponentCreationMethod::UserConstructionScript)
		{
			Constructed.Add(Component);
		}
	}
	for (UActorComponent* Component : Constructed)
	{
		Component->DestroyComponent();
	}
}

// ---------------------------------------------------------------------------------------------------
// Ticking

void AActor::Tick(float DeltaSeconds) {}

void AActor::TickActor(float DeltaTime, ELevelTick TickType, FActorTickFunction& ThisTickFunction)
{
	if (IsPendingKillPending())
	{
		return;
	}
	if (TickType != LEVELTICK_ViewportsOnly || ShouldTickIfViewportsOnly())
	{
		Tick(DeltaTime);
	}
}

void AActor::SetActorTickEnabled(bool bEnabled)
{
	if (PrimaryActorTick.bCanEverTick && !IsTemplate())
	{
		PrimaryActorTick.SetTickFunctionEnable(bEnabled);
	}
}

bool AActor::IsActorTickEnabled() const
{
	return PrimaryActorTick.IsTickFunctionEnabled();
}

void AActor::SetActorTickInterval(float TickInterval)
{
	PrimaryActorTick.UpdateTickIntervalAndCoolDown(TickInterval);
}

float AActor::GetActorTickInterval() const
{
	return PrimaryActorTick.TickInterval;
}

// ---------------------------------------------------------------------------------------------------
// World and lifetime

UWorld* AActor::GetWorld() const
{
	if (HasAnyFlags(RF_ClassDefaultObject))
	{
		return nullptr;
	}
	ULevel* const Level = GetLevel();
	return Level ? Level->OwningWorld.Get() : nullptr;
}

ULevel* AActor::GetLevel() const
{
	return GetTypedOuter<ULevel>();
}

void AActor::SetOwner(AActor* NewOwner)
{
	if (NewOwner == this)
	{
		UE_LOG(LogActor, Warning, TEXT("%s cannot be its own owner."), *GetName());
		return;
	}
	Owner = NewOwner;
}

bool AActor::Destroy(bool bNetForce, bool bShouldModifyLevel)
{
	if (!IsPendingKillPending())
	{
		if (UWorld* const World = GetWorld())
		{
			World->DestroyActor(this, bNetForce, bShouldModifyLevel);
		}
		else
		{
			UE_LOG(LogActor, Warning, TEXT("Destroying %s, which is not in a world."), *GetName());
			MarkComponentsAsGarbage();
			MarkAsGarbage();
		}
	}
	return IsPendingKillPending();
}

void AActor::Destroyed() {}

bool AActor::IsPendingKillPending() const
{
	return bActorIsBeingDestroyed || !IsValid(this);
}

void AActor::MarkComponentsAsGarbage()
{
	for (UActorComponent* Component : OwnedComponents)
	{
		if (IsValid(Component))
		{
			Component->MarkAsGarbage();
		}
	}
}

void AActor::SetActorHiddenInGame(bool bNewHidden)
{
	bHidden = bNewHidden;
}

#if WITH_EDITOR
const FString& AActor::GetActorLabel(bool bCreateIfNone) const
{
	if (bCreateIfNone && ActorLabel.IsEmpty())
	{
		FString DefaultLabel = GetDefaultActorLabel();
		// The number of the object name tells actors of the same class apart; the first one gets none.
		const int32 NameNumber = NAME_INTERNAL_TO_EXTERNAL(GetFName().GetNumber());
		if (NameNumber > 0)
		{
			DefaultLabel += FString::FromInt(NameNumber);
		}
		const_cast<AActor*>(this)->ActorLabel = DefaultLabel;
	}
	return ActorLabel;
}

void AActor::SetActorLabel(const FString& NewActorLabel, bool bMarkDirty)
{
	const FString Trimmed = NewActorLabel.TrimStartAndEnd();
	const FString NewLabel = Trimmed.IsEmpty() ? GetDefaultActorLabel() : Trimmed;
	if (NewLabel.Equals(ActorLabel, ESearchCase::CaseSensitive))
	{
		return;
	}
	Modify(bMarkDirty);
	ActorLabel = NewLabel;
}

FString AActor::GetDefaultActorLabel() const
{
	FString Label = GetClass()->GetName();
	if (GetClass()->HasAnyClassFlags(CLASS_CompiledFromBlueprint) || Cast<UBlueprintGeneratedClass>(GetClass()))
	{
		Label.RemoveFromEnd(TEXT("_C"), ESearchCase::CaseSensitive);
	}
	return Label;
}

void AActor::SetFolderPath(const FName& NewFolderPath)
{
	if (NewFolderPath != FolderPath)
	{
		Modify();
		FolderPath = NewFolderPath;
	}
}
#endif

FString AActor::GetActorNameOrLabel() const
{
#if WITH_EDITOR
	return GetActorLabel();
#else
	return GetName();
#endif
}

void AActor::BeginDestroy()
{
	PrimaryActorTick.UnRegisterTickFunction();
	// An actor collected without DestroyActor (its level went away) leaves the class index here.
	if (IndexedLevel)
	{
		IndexedLevel->RemoveLevelActor(this);
	}
	Super::BeginDestroy();
}

void AActor::PostRename(UObject* OldOuter, const FName OldName)
{
	Super::PostRename(OldOuter, OldName);
	ULevel* const NewLevel = GetLevel();
	if (IndexedLevel && NewLevel != IndexedLevel)
	{
		// Moving to another level moves the actor's entries with it, and its components to that level's world.
		IndexedLevel->RemoveLevelActor(this);
		if (NewLevel)
		{
			NewLevel->AddLevelActor(this);
		}
		UWorld* const NewWorld = GetWorld();
		if (bHasRegisteredAllComponents)
		{
			UnregisterAllComponents();
			if (NewWorld)
			{
				RegisterAllComponents();
			}
		}
	}
}
