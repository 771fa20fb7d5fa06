// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/EngineBaseTypes.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "ActorComponent.generated.h"

class AActor;
class ULevel;
class UWorld;

/** How a component came to be. */
UENUM()
enum class EComponentCreationMethod : uint8
{
	/** A default subobject of a native class. */
	Native,
	/** Made by a Blueprint's component tree. */
	SimpleConstructionScript,
	/** Made by a Blueprint's construction script. */
	UserConstructionScript,
	/** Added to one instance by hand. */
	Instance,
};

/**
 * A reusable piece of behaviour added to an actor. A component is created inside its actor (its outer), is
 * registered with the actor's world when the actor is spawned (or by RegisterComponent), and may tick every
 * frame through PrimaryComponentTick.
 */
UCLASS(Abstract)
class ENGINE_API UActorComponent : public UObject
{
	GENERATED_BODY()

public:
	UActorComponent(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The component's tick function; set bCanEverTick in the constructor to have TickComponent called. */
	FActorComponentTickFunction PrimaryComponentTick;

	/** Tags for finding the component. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = Tags)
	TArray<FName> ComponentTags;

	/** Whether the component is registered when its actor registers its components. */
	UPROPERTY()
	uint8 bAutoRegister : 1;

	/** Whether the component ticks in the editor's own world (not only in a running game). */
	uint8 bTickInEditor : 1;

	/** Whether the component activates itself when it is registered. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = Activation)
	uint8 bAutoActivate : 1;

	/** The actor that owns this component: its outer actor. */
	AActor* GetOwner() const;

	template <class T>
	T* GetOwner() const
	{
		return Cast<T>(GetOwner());
	}

	/** The world of the component (its owner's world). */
	virtual UWorld* GetWorld() const override;

	/** The level of the owner. */
	ULevel* GetComponentLevel() const;

	/** True if the component is registered with a world. */
	bool IsRegistered() const { return bRegistered; }

	/** Registers the component with its owner's world: OnRegister, then its tick function. */
	void RegisterComponent();

	/** Unregisters the component: its tick function goes, then OnUnregister. */
	void UnregisterComponent();

	/** Registers the component with the given world. */
	void RegisterComponentWithWorld(UWorld* InWorld);

	/** Unregisters the component, removes it from its owner and marks it as garbage. */
	virtual void DestroyComponent(bool bPromoteChildren = false);

	/** Unregisters and registers the component again. */
	void ReregisterComponent();

	/** Called every frame while the tick function is registered and enabled. */
	virtual void TickComponent(
		float DeltaTime, enum ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction);

	/** Enables or disables the component's tick function. */
	virtual void SetComponentTickEnabled(bool bEnabled);

	/** True if the component's tick function is enabled. */
	bool IsComponentTickEnabled() const;

	/** Changes the interval between two ticks. */
	void SetComponentTickInterval(float TickInterval);

	/** Seconds between two ticks. */
	float GetComponentTickInterval() const;

	/** Activates the component: it ticks again. */
	virtual void Activate(bool bReset = false);

	/** Deactivates the component: it stops ticking. */
	virtual void Deactivate();

	/** Activates or deactivates the component. */
	virtual void SetActive(bool bNewActive, bool bReset = false);

	/** True while the component is active. */
	bool IsActive() const { return bIsActive; }

	/** True if the component has the tag. */
	bool ComponentHasTag(FName Tag) const;

	/** True while a component created by a Blueprint's construction is being rebuilt. */
	bool IsCreatedByConstructionScript() const
	{
		return CreationMethod == EComponentCreationMethod::UserConstructionScript;
	}

	/** How the component came to be. */
	EComponentCreationMethod CreationMethod = EComponentCreationMethod::Native;

	virtual void PostInitProperties() override;
	virtual void BeginDestroy() override;
	virtual bool Rename(
		const TCHAR* NewName = nullptr, UObject* NewOuter = nullptr, ERenameFlags Flags = REN_None) override;

protected:
	/** Called when the component is registered with a world. */
	virtual void OnRegister();

	/** Called when the component is unregistered from its world. */
	virtual void OnUnregister();

	/** Registers or unregisters the component's tick function with the world. */
	virtual void RegisterComponentTickFunctions(bool bRegister);

private:
	friend class AActor;

	/** The actor this component belongs to; cached from the outer chain. */
	AActor* OwnerPrivate = nullptr;

	/** The world the component is registered with. */
	UWorld* WorldPrivate = nullptr;

	bool bRegistered = false;
	bool bIsActive = false;
};
