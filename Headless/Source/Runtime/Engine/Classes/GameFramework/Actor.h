// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Components/SceneComponent.h"
#include "CoreMinimal.h"
#include "Engine/EngineBaseTypes.h"
#include "Engine/EngineTypes.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "Actor.generated.h"

class FComponentInstanceDataCache;
class ULevel;
class UWorld;
struct FRotationConversionCache;

namespace UE::Engine::Private
{
	class FActorClassIndex;
}

/**
 * An object that can be placed or spawned in a level. An actor lives in a level (its outer); its transform is
 * the transform of its root component, and the components it owns are registered with its world.
 */
UCLASS(BlueprintType, Blueprintable, config = Engine)
class ENGINE_API AActor : public UObject
{
	GENERATED_BODY()

public:
	AActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The actor's tick function; set bCanEverTick in the constructor to have Tick called. */
	FActorTickFunction PrimaryActorTick;

	/** Tags for finding the actor. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = Actor)
	TArray<FName> Tags;

	// Components.

	/** The component that gives the actor its transform; may be null. */
	USceneComponent* GetRootComponent() const { return RootComponent; }

	/** Makes a component owned by this actor its root; false if the component belongs to another actor. */
	bool SetRootComponent(USceneComponent* NewRootComponent);

	/** The component other actors attach to. */
	virtual USceneComponent* GetDefaultAttachComponent() const { return GetRootComponent(); }

	/** The components the actor owns. */
	const TSet<UActorComponent*>& GetComponents() const { return OwnedComponents; }

	/** The owned components of class T (or a subclass). */
	template <class T, class AllocatorType>
	void GetComponents(TArray<T*, AllocatorType>& OutComponents, bool bIncludeFromChildActors = false) const
	{
		OutComponents.Reset();
		for (UActorComponent* Component : OwnedComponents)
		{
			if (T* Typed = Cast<T>(Component))
			{
				OutComponents.Add(Typed);
			}
		}
	}

	/** The owned components of ComponentClass (or a subclass). */
	void GetComponents(TSubclassOf<UActorComponent> ComponentClass, TArray<UActorComponent*>& OutComponents,
		bool bIncludeFromChildActors = false) const;

	/** The first owned component of the class (or a subclass); null if none. */
	UActorComponent* FindComponentByClass(const TSubclassOf<UActorComponent> ComponentClass) const;

	template <class T>
	T* FindComponentByClass() const
	{
		return static_cast<T*>(FindComponentByClass(T::StaticClass()));
	}

	/** Same as FindComponentByClass. */
	UActorComponent* GetComponentByClass(TSubclassOf<UActorComponent> ComponentClass) const;

	template <class T>
	T* GetComponentByClass() const
	{
		return FindComponentByClass<T>();
	}

	/** Called by a component made inside this actor: the actor now owns it. */
	void AddOwnedComponent(UActorComponent* Component);

	/** Called when a component stops belonging to this actor. */
	void RemoveOwnedComponent(UActorComponent* Component);

	/** Records a component added to this one instance (not by the class). */
	void AddInstanceComponent(UActorComponent* Component);
	void RemoveInstanceComponent(UActorComponent* Component);
	const TArray<UActorComponent*>& GetInstanceComponents() const;

	/** Registers every owned component that registers automatically, root first. */
	virtual void RegisterAllComponents();

	/** Unregisters every owned component. */
	virtual void UnregisterAllComponents(bool bForReregister = false);

	/** True once RegisterAllComponents has run (and UnregisterAllComponents has not since). */
	bool HasActorRegisteredAllComponents() const { return bHasRegisteredAllComponents; }

	// Transform.

	/** The world transform of the root component, or the identity without one. */
	const FTransform& GetActorTransform() const;
	FVector GetActorLocation() const;
	FRotator GetActorRotation() const;
	FQuat GetActorQuat() const;
	FVector GetActorScale3D() const;
	FVector GetActorForwardVector() const;
	FVector GetActorRightVector() const;
	FVector GetActorUpVector() const;

	/** Moves the root component; false without one. */
	bool SetActorLocation(const FVector& NewLocation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	bool SetActorRotation(FRotator NewRotation, ETeleportType Teleport = ETeleportType::None);
	bool SetActorRotation(const FQuat& NewRotation, ETeleportType Teleport = ETeleportType::None);
	bool SetActorLocationAndRotation(FVector NewLocation, FRotator NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	bool SetActorLocationAndRotation(FVector NewLocation, const FQuat& NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	bool SetActorTransform(const FTransform& NewTransform, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetActorScale3D(FVector NewScale3D);

	/** Sets the root component's transform relative to its parent. */
	void SetActorRelativeTransform(const FTransform& NewRelativeTransform, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void SetActorRelativeLocation(FVector NewRelativeLocation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void SetActorRelativeRotation(FRotator NewRelativeRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);

	// Attachment.

	/**
	 * Attaches the root component to the parent's default attach component. False if either has no root
	 * component, or the component attachment fails.
	 */
	bool AttachToActor(
		AActor* ParentActor, const FAttachmentTransformRules& AttachmentRules, FName SocketName = NAME_None);

	/** Attaches the root component to a component. */
	bool AttachToComponent(
		USceneComponent* Parent, const FAttachmentTransformRules& AttachmentRules, FName SocketName = NAME_None);

	/** Detaches the root component from its parent. */
	void DetachFromActor(const FDetachmentTransformRules& DetachmentRules);

	/** The actor the root component is attached to; null if none. */
	AActor* GetAttachParentActor() const;
	FName GetAttachParentSocketName() const;

	/** The actors whose root components are attached to this actor's components. */
	void GetAttachedActors(
		TArray<AActor*>& OutActors, bool bResetArray = true, bool bRecursivelyIncludeAttachedActors = false) const;

	// Construction.

	/** Called when the actor is spawned or placed, and each time its construction is run again in the editor. */
	virtual void OnConstruction(const FTransform& Transform) {}

	/** The construction script of a Blueprint class: its generated class implements it. */
	UFUNCTION(
		BlueprintImplementableEvent, meta = (BlueprintInternalUseOnly = "true", DisplayName = "Construction Script"))
	void UserConstructionScript();

	/** Runs the Blueprint construction script of the class, if it has one. */
	void ProcessUserConstructionScript();

	/** True while the Blueprint construction script runs. */
	bool IsRunningUserConstructionScript() const { return bRunningUserConstructionScript; }

	/**
	 * Runs the actor's construction: the Blueprint construction script, then OnConstruction. False if the class
	 * hierarchy has a Blueprint class whose Blueprint is gone.
	 */
	bool ExecuteConstruction(const FTransform& Transform, const FRotationConversionCache* TransformRotationCache,
		const FComponentInstanceDataCache* InstanceDataCache, bool bIsDefaultTransform = false,
		ESpawnActorScaleMethod TransformScaleMethod = ESpawnActorScaleMethod::OverrideRootScale);

	/** Finishes an actor spawned with deferred construction: places it and runs its construction. */
	void FinishSpawning(const FTransform& Transform, bool bIsDefaultTransform = false,
		const FComponentInstanceDataCache* InstanceDataCache = nullptr,
		ESpawnActorScaleMethod TransformScaleMethod = ESpawnActorScaleMethod::OverrideRootScale);

	/** True once construction has run. */
	bool IsActorInitialized() const { return bActorInitialized; }

#if WITH_EDITOR
	/**
	 * Runs the construction again with the current property values: components the Blueprint construction
	 * script made are destroyed first, then the script and OnConstruction run.
	 */
	virtual void RerunConstructionScripts();
#endif

	/** Called before the components are initialized. */
	virtual void PreInitializeComponents() {}

	/** Called after the components are initialized. */
	virtual void PostInitializeComponents();

	/** Called when the actor was spawned (not loaded), before its components are registered. */
	virtual void PostActorCreated() {}

	// Ticking.

	/** Called every frame while the tick function is registered and enabled. */
	virtual void Tick(float DeltaSeconds);

	/** Whether the actor ticks in the editor's own world. */
	virtual bool ShouldTickIfViewportsOnly() const
	{
		return false;
	}

	/** Called by the tick function: ticks the actor unless the tick type excludes it. */
	virtual void TickActor(float DeltaTime, enum ELevelTick TickType, FActorTickFunction& ThisTickFunction);

	void SetActorTickEnabled(bool bEnabled);
	bool IsActorTickEnabled() const;
	void SetActorTickInterval(float TickInterval);
	float GetActorTickInterval() const;

	// World and lifetime.

	virtual UWorld* GetWorld() const override;

	/** The level the actor lives in. */
	ULevel* GetLevel() const;

	/** The actor that owns this one (not the outer). */
	AActor* GetOwner() const
	{
		return Owner;
	}
	virtual void SetOwner(AActor* NewOwner);

	/** Destroys the actor through its world; true if it is now being destroyed. */
	bool Destroy(bool bNetForce = false, bool bShouldModifyLevel = true);

	/** Called when the actor is being destroyed. */
	virtual void Destroyed();

	/** True once destruction has begun or the actor is garbage. */
	bool IsPendingKillPending() const;

	/** True while the world destroys the actor. */
	bool IsActorBeingDestroyed() const
	{
		return bActorIsBeingDestroyed;
	}

	/** Whether the actor is hidden in a running game. */
	bool IsHidden() const
	{
		return bHidden;
	}
	void SetActorHiddenInGame(bool bNewHidden);

#if WITH_EDITOR
	/**
	 * The label shown in the editor. With bCreateIfNone an actor without a label gets the default one: the class
	 * name (without a Blueprint class's "_C"), followed by the number of the object name unless it is 0.
	 */
	const FString& GetActorLabel(bool bCreateIfNone = true) const;

	/** Changes the label; the object name stays as it is. */
	void SetActorLabel(const FString& NewActorLabel, bool bMarkDirty = true);

	/** The label without its number: the class name without "_C". */
	virtual FString GetDefaultActorLabel() const;

	/** Whether the label may be edited. */
	virtual bool IsActorLabelEditable() const
	{
		return true;
	}

	/** The folder of the outliner the actor is listed in. */
	FName GetFolderPath() const
	{
		return FolderPath;
	}
	void SetFolderPath(const FName& NewFolderPath);
#endif

	/** The label in the editor, the object name elsewhere. */
	FString GetActorNameOrLabel() const;

	virtual void PostInitProperties() override;
	virtual void BeginDestroy() override;
	virtual void PostRename(UObject* OldOuter, const FName OldName) override;

protected:
	/** The component that gives the actor its transform. */
	UPROPERTY()
	TObjectPtr<USceneComponent> RootComponent;

private:
	friend class UWorld;
	friend class ULevel;
	friend class UE::Engine::Private::FActorClassIndex;

	/** Places the root component, registers the components and (unless deferred) runs construction. */
	void PostSpawnInitialize(const FTransform& SpawnTransform, AActor* InOwner, bool bRemoteOwned, bool bNoFail,
		bool bDeferConstruction, ESpawnActorScaleMethod TransformScaleMethod);

	/** Initializes the components and calls PostInitializeComponents, once construction has run. */
	void PostActorConstruction();

	/** Destroys the components the Blueprint construction script made. */
	void DestroyConstructedComponents();

	/** Marks the actor's components as garbage, with the actor. */
	void MarkComponentsAsGarbage();

	/** The actor that owns this one. */
	UPROPERTY()
	TObjectPtr<AActor> Owner;

	/** Every component that belongs to the actor (each component adds itself when it is made). */
	UPROPERTY(Transient, DuplicateTransient, NonTransactional)
	TSet<UActorComponent*> OwnedComponents;

	/** Components added to this one instance. */
	UPROPERTY(Transient)
	TArray<UActorComponent*> InstanceComponents;

#if WITH_EDITORONLY_DATA
	/** The editor label; empty until one is made or set. */
	UPROPERTY()
	FString ActorLabel;

	/** The outliner folder. */
	UPROPERTY()
	FName FolderPath;
#endif

	UPROPERTY()
	bool bHidden = false;

	bool bActorIsBeingDestroyed = false;
	bool bActorInitialized = false;
	bool bHasRegisteredAllComponents = false;
	bool bRunningUserConstructionScript = false;

	/** The root component's own transform when the actor was spawned, and the transform it was spawned with. */
	FTransform TemplateRootTransform;
	FTransform OriginalSpawnTransform;
	ESpawnActorScaleMethod SpawnScaleMethod = ESpawnActorScaleMethod::MultiplyWithRoot;

	/** The transform the root gets for a spawn transform: combined with the template's root transform or not. */
	FTransform ComputeSpawnRootTransform(const FTransform& UserTransform, ESpawnActorScaleMethod ScaleMethod) const;

	/** Where the actor sits in its level's class index (see UE::Engine::Private::FActorClassIndex). */
	uint64 ClassIndexSequence = 0;
	int32 ClassIndexSlot = INDEX_NONE;
	ULevel* IndexedLevel = nullptr;
};
