// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Components/ActorComponent.h"
#include "CoreMinimal.h"
#include "Engine/EngineTypes.h"
#include "UObject/ObjectMacros.h"

#include "SceneComponent.generated.h"

/** What UpdateComponentToWorld does besides recomputing the transform. */
enum class EUpdateTransformFlags : int32
{
	None = 0x0,
	/** Do not update the physics state (there is none in the headless editor). */
	SkipPhysicsUpdate = 0x1,
	/** The update comes from the parent. */
	PropagateFromParent = 0x2,
	/** Only update children attached to a socket. */
	OnlyUpdateIfUsingSocket = 0x4,
};
ENUM_CLASS_FLAGS(EUpdateTransformFlags);

/**
 * A component with a transform. Its transform is relative to the component it is attached to (or to the
 * world when it has no parent); the world transform is kept up to date for the whole attachment tree
 * whenever a transform along it changes.
 */
UCLASS(BlueprintType, meta = (BlueprintSpawnableComponent))
class ENGINE_API USceneComponent : public UActorComponent
{
	GENERATED_BODY()

public:
	USceneComponent(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** Whether the component may move: static components cannot be attached to movable ones. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = Mobility)
	TEnumAsByte<EComponentMobility::Type> Mobility = EComponentMobility::Movable;

	// Relative transform.

	FVector GetRelativeLocation() const { return RelativeLocation; }
	FRotator GetRelativeRotation() const { return RelativeRotation; }
	FVector GetRelativeScale3D() const { return RelativeScale3D; }

	/** The transform relative to the parent. */
	FTransform GetRelativeTransform() const;

	void SetRelativeLocation(FVector NewLocation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetRelativeRotation(FRotator NewRotation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetRelativeRotation(const FQuat& NewRotation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetRelativeLocationAndRotation(FVector NewLocation, FRotator NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void SetRelativeLocationAndRotation(FVector NewLocation, const FQuat& NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void SetRelativeScale3D(FVector NewScale3D);
	void SetRelativeTransform(const FTransform& NewTransform, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);

	/** Resets the relative transform to the identity. */
	void ResetRelativeTransform();

	void AddRelativeLocation(FVector DeltaLocation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void AddRelativeRotation(FRotator DeltaRotation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);

	// World transform.

	/** The world transform of the component. */
	const FTransform& GetComponentTransform() const { return ComponentToWorld; }
	const FTransform& GetComponentToWorld() const { return ComponentToWorld; }
	FVector GetComponentLocation() const { return ComponentToWorld.GetLocation(); }
	FRotator GetComponentRotation() const { return ComponentToWorld.Rotator(); }
	FQuat GetComponentQuat() const { return ComponentToWorld.GetRotation(); }
	FVector GetComponentScale() const { return ComponentToWorld.GetScale3D(); }
	FVector GetForwardVector() const { return ComponentToWorld.GetRotation().GetForwardVector(); }
	FVector GetRightVector() const { return ComponentToWorld.GetRotation().GetRightVector(); }
	FVector GetUpVector() const { return ComponentToWorld.GetRotation().GetUpVector(); }

	void SetWorldLocation(FVector NewLocation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetWorldRotation(FRotator NewRotation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetWorldRotation(const FQuat& NewRotation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetWorldScale3D(FVector NewScale);
	void SetWorldTransform(const FTransform& NewTransform, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);
	void SetWorldLocationAndRotation(FVector NewLocation, FRotator NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void SetWorldLocationAndRotation(FVector NewLocation, const FQuat& NewRotation, bool bSweep = false,
		FHitResult* OutSweepHitResult = nullptr, ETeleportType Teleport = ETeleportType::None);
	void AddWorldOffset(FVector DeltaLocation, bool bSweep = false, FHitResult* OutSweepHitResult = nullptr,
		ETeleportType Teleport = ETeleportType::None);

	/** Makes location, rotation and scale absolute (relative to the world) or relative to the parent. */
	void SetAbsolute(
		bool bNewAbsoluteLocation = false, bool bNewAbsoluteRotation = false, bool bNewAbsoluteScale = false);
	bool IsUsingAbsoluteLocation() const { return bAbsoluteLocation; }
	bool IsUsingAbsoluteRotation() const { return bAbsoluteRotation; }
	bool IsUsingAbsoluteScale() const { return bAbsoluteScale; }

	/** Recomputes the world transform from the parent's and propagates it to the children. */
	void UpdateComponentToWorld(EUpdateTransformFlags UpdateTransformFlags = EUpdateTransformFlags::None,
		ETeleportType Teleport = ETeleportType::None);

	// Attachment.

	/**
	 * Attaches the component to a parent. False (nothing changes) if the parent is null or this component,
	 * if the attachment would make a cycle, or if a static component would go under a movable one.
	 */
	bool AttachToComponent(
		USceneComponent* InParent, const FAttachmentTransformRules& AttachmentRules, FName InSocketName = NAME_None);

	/** Sets the parent the component attaches to when it is registered; for constructors. */
	void SetupAttachment(USceneComponent* InParent, FName InSocketName = NAME_None);

	/** Detaches the component from its parent. */
	void DetachFromComponent(const FDetachmentTransformRules& DetachmentRules);

	USceneComponent* GetAttachParent() const { return AttachParent; }
	FName GetAttachSocketName() const { return AttachSocketName; }

	/** The components attached to this one. */
	const TArray<TObjectPtr<USceneComponent>>& GetAttachChildren() const { return AttachChildren; }
	int32 GetNumChildrenComponents() const { return AttachChildren.Num(); }
	USceneComponent* GetChildComponent(int32 ChildIndex) const;

	/** The children, and with bIncludeAllDescendants their children, depth first. */
	void GetChildrenComponents(bool bIncludeAllDescendants, TArray<USceneComponent*>& Children) const;

	/** The parents from the direct one up to the root. */
	void GetParentComponents(TArray<USceneComponent*>& Parents) const;

	/** True if TestComp is a (direct or indirect) parent of this component. */
	bool IsAttachedTo(const USceneComponent* TestComp) const;

	/** The top of the attachment tree this component is in. */
	USceneComponent* GetAttachmentRoot() const;

	/** The owner of the top of the attachment tree. */
	AActor* GetAttachmentRootActor() const;

	/** The headless editor has no sockets: true only for NAME_None. */
	bool DoesSocketExist(FName InSocketName) const { return false; }

	// Mobility and visibility.

	void SetMobility(EComponentMobility::Type NewMobility);
	bool IsMovable() const { return Mobility == EComponentMobility::Movable; }

	void SetVisibility(bool bNewVisibility, bool bPropagateToChildren = false);
	void ToggleVisibility(bool bPropagateToChildren = false);
	bool IsVisible() const { return bVisible; }
	void SetHiddenInGame(bool NewHidden, bool bPropagateToChildren = false);
	bool bHiddenInGame = false;

	virtual void DestroyComponent(bool bPromoteChildren = false) override;

protected:
	virtual void OnRegister() override;

private:
	/** Applies a new relative transform and updates the world transforms. */
	void ApplyRelativeTransform(const FVector& NewLocation, const FRotator& NewRotation, const FVector& NewScale);

	/** The relative transform that puts the component at NewWorld under its current parent. */
	FTransform WorldToRelative(const FTransform& NewWorld) const;

	/** The world transform of the parent, or the identity. */
	FTransform GetParentTransform() const;

	FVector RelativeLocation = FVector::ZeroVector;
	FRotator RelativeRotation = FRotator::ZeroRotator;
	FVector RelativeScale3D = FVector::OneVector;

	bool bAbsoluteLocation = false;
	bool bAbsoluteRotation = false;
	bool bAbsoluteScale = false;
	bool bVisible = true;

	FTransform ComponentToWorld;

	/** The component this one is attached to. */
	UPROPERTY()
	TObjectPtr<USceneComponent> AttachParent;

	/** The socket of the parent this component is attached to. */
	UPROPERTY()
	FName AttachSocketName;

	/** The components attached to this one. */
	UPROPERTY()
	TArray<TObjectPtr<USceneComponent>> AttachChildren;
};
