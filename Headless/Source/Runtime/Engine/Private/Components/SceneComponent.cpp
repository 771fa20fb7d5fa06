// Copyright Orvane. All Rights Reserved.

#include "Components/SceneComponent.h"

#include "GameFramework/Actor.h"

DEFINE_LOG_CATEGORY_STATIC(LogSceneComponent, Log, All);

namespace UE::Engine::Private
{
	/** Scale divided component-wise by a parent's scale, leaving axes with no parent scale unchanged. */
	FVector DivideScale(const FVector& WorldScale, const FVector& ParentScale)
	{
		auto Divide = [](double Value, double By)
		{
			return FMath::Abs(By) > UE_SMALL_NUMBER ? Value / By : Value;
		};
		return FVector(Divide(WorldScale.X, ParentScale.X), Divide(WorldScale.Y, ParentScale.Y),
			Divide(WorldScale.Z, ParentScale.Z));
	}
} // namespace UE::Engine::Private

USceneComponent::USceneComponent(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

FTransform USceneComponent::GetRelativeTransform() const
{
	return FTransform(RelativeRotation, RelativeLocation, RelativeScale3D);
}

FTransform USceneComponent::GetParentTransform() const
{
	return AttachParent ? AttachParent->GetComponentTransform() : FTransform::Identity;
}

void USceneComponent::UpdateComponentToWorld(EUpdateTransformFlags UpdateTransformFlags, ETeleportType Teleport)
{
	FTransform NewComponentToWorld = GetRelativeTransform();
	if (AttachParent)
	{
		NewComponentToWorld = NewComponentToWorld * GetParentTransform();
		if (bAbsoluteLocation)
		{
			NewComponentToWorld.SetTranslation(RelativeLocation);
		}
		if (bAbsoluteRotation)
		{
			NewComponentToWorld.SetRotation(RelativeRotation.Quaternion());
		}
		if (bAbsoluteScale)
		{
			NewComponentToWorld.SetScale3D(RelativeScale3D);
		}
	}
	ComponentToWorld = NewComponentToWorld;

	for (USceneComponent* Child : AttachChildren)
	{
		if (Child)
		{
			Child->UpdateComponentToWorld(EUpdateTransformFlags::PropagateFromParent, Teleport);
		}
	}
}

void USceneComponent::ApplyRelativeTransform(
	const FVector& NewLocation, const FRotator& NewRotation, const FVector& NewScale)
{
	RelativeLocation = NewLocation;
	RelativeRotation = NewRotation;
	RelativeScale3D = NewScale;
	UpdateComponentToWorld();
}

FTransform USceneComponent::WorldToRelative(const FTransform& NewWorld) const
{
	if (!AttachParent)
	{
		return NewWorld;
	}
	const FTransform ParentToWorld = GetParentTransform();
	FTransform Relative;
	Relative.SetTranslation(bAbsoluteLocation ? NewWorld.GetTranslation()
											  : ParentToWorld.InverseTransformPosition(NewWorld.GetTranslation()));
	Relative.SetRotation(
		bAbsoluteRotation ? NewWorld.GetRotation() : ParentToWorld.GetRotation().Inverse() * NewWorld.GetRotation());
	Relative.SetScale3D(bAbsoluteScale
							? NewWorld.GetScale3D()
							: UE::Engine::Private::DivideScale(NewWorld.GetScale3D(), ParentToWorld.GetScale3D()));
	return Relative;
}

void USceneComponent::SetRelativeLocation(
	FVector NewLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(NewLocation, RelativeRotation, RelativeScale3D);
}

void USceneComponent::SetRelativeRotation(
	FRotator NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(RelativeLocation, NewRotation, RelativeScale3D);
}

void USceneComponent::SetRelativeRotation(
	const FQuat& NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(RelativeLocation, NewRotation.Rotator(), RelativeScale3D);
}

void USceneComponent::SetRelativeLocationAndRotation(
	FVector NewLocation, FRotator NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(NewLocation, NewRotation, RelativeScale3D);
}

void USceneComponent::SetRelativeLocationAndRotation(
	FVector NewLocation, const FQuat& NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(NewLocation, NewRotation.Rotator(), RelativeScale3D);
}

void USceneComponent::SetRelativeScale3D(FVector NewScale3D)
{
	ApplyRelativeTransform(RelativeLocation, RelativeRotation, NewScale3D);
}

void USceneComponent::SetRelativeTransform(
	const FTransform& NewTransform, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	ApplyRelativeTransform(NewTransform.GetTranslation(), NewTransform.Rotator(), NewTransform.GetScale3D());
}

void USceneComponent::ResetRelativeTransform()
{
	ApplyRelativeTransform(FVector::ZeroVector, FRotator::ZeroRotator, FVector::OneVector);
}

void USceneComponent::AddRelativeLocation(
	FVector DeltaLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	SetRelativeLocation(RelativeLocation + DeltaLocation);
}

void USceneComponent::AddRelativeRotation(
	FRotator DeltaRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	SetRelativeRotation(RelativeRotation.Quaternion() * DeltaRotation.Quaternion());
}

void USceneComponent::SetWorldLocation(
	FVector NewLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	FTransform NewWorld = ComponentToWorld;
	NewWorld.SetTranslation(NewLocation);
	SetRelativeLocation(WorldToRelative(NewWorld).GetTranslation());
}

void USceneComponent::SetWorldRotation(
	FRotator NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!AttachParent || bAbsoluteRotation)
	{
		// Without a parent the rotation is kept exactly as given, not round-tripped through a quaternion.
		SetRelativeRotation(NewRotation);
		return;
	}
	SetWorldRotation(NewRotation.Quaternion());
}

void USceneComponent::SetWorldRotation(
	const FQuat& NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	FTransform NewWorld = ComponentToWorld;
	NewWorld.SetRotation(NewRotation);
	SetRelativeRotation(WorldToRelative(NewWorld).GetRotation());
}

void USceneComponent::SetWorldScale3D(FVector NewScale)
{
	FTransform NewWorld = ComponentToWorld;
	NewWorld.SetScale3D(NewScale);
	SetRelativeScale3D(WorldToRelative(NewWorld).GetScale3D());
}

void USceneComponent::SetWorldTransform(
	const FTransform& NewTransform, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!AttachParent)
	{
		SetRelativeTransform(NewTransform);
		return;
	}
	SetRelativeTransform(WorldToRelative(NewTransform));
}

void USceneComponent::SetWorldLocationAndRotation(
	FVector NewLocation, FRotator NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	if (!AttachParent)
	{
		SetRelativeLocationAndRotation(NewLocation, NewRotation);
		return;
	}
	SetWorldLocationAndRotation(NewLocation, NewRotation.Quaternion());
}

void USceneComponent::SetWorldLocationAndRotation(
	FVector NewLocation, const FQuat& NewRotation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	FTransform NewWorld = ComponentToWorld;
	NewWorld.SetTranslation(NewLocation);
	NewWorld.SetRotation(NewRotation);
	const FTransform NewRelative = WorldToRelative(NewWorld);
	SetRelativeLocationAndRotation(NewRelative.GetTranslation(), NewRelative.GetRotation());
}

void USceneComponent::AddWorldOffset(
	FVector DeltaLocation, bool bSweep, FHitResult* OutSweepHitResult, ETeleportType Teleport)
{
	SetWorldLocation(GetComponentLocation() + DeltaLocation);
}

void USceneComponent::SetAbsolute(bool bNewAbsoluteLocation, bool bNewAbsoluteRotation, bool bNewAbsoluteScale)
{
	bAbsoluteLocation = bNewAbsoluteLocation;
	bAbsoluteRotation = bNewAbsoluteRotation;
	bAbsoluteScale = bNewAbsoluteScale;
	UpdateComponentToWorld();
}

bool USceneComponent::AttachToComponent(
	USceneComponent* InParent, const FAttachmentTransformRules& AttachmentRules, FName InSocketName)
{
	if (!InParent)
	{
		return false;
	}
	if (InParent == this)
	{
		UE_LOG(
			LogSceneComponent, Warning, TEXT("AttachTo: '%s' cannot be attached to itself. Aborting."), *GetPathName());
		return false;
	}
	if (InParent->IsAttachedTo(this))
	{
		UE_LOG(LogSceneComponent, Warning,
			TEXT("AttachTo: '%s' is already attached to '%s', the attachment would create a cycle. Aborting."),
			*InParent->GetPathName(), *GetPathName());
		return false;
	}
	if (Mobility == EComponentMobility::Static && InParent->Mobility != EComponentMobility::Static)
	{
		UE_LOG(LogSceneComponent, Warning,
			TEXT("AttachTo: '%s' is not static, cannot attach '%s' which is static to it. Aborting."),
			*InParent->GetPathName(), *GetPathName());
		return false;
	}
	if (InParent == AttachParent && InSocketName == AttachSocketName && InParent->AttachChildren.Contains(this))
	{
		return true;
	}

	if (AttachParent && AttachParent->AttachChildren.Contains(this))
	{
		DetachFromComponent(FDetachmentTransformRules(AttachmentRules, true));
	}

	// Work out the new relative transform from the world transform the component has now.
	const FTransform CurrentWorld = ComponentToWorld;
	const FTransform ParentToWorld = InParent->GetComponentTransform();
	FVector NewLocation = RelativeLocation;
	FRotator NewRotation = RelativeRotation;
	FVector NewScale = RelativeScale3D;
	switch (AttachmentRules.LocationRule)
	{
		case EAttachmentRule::KeepRelative:
			break;
		case EAttachmentRule::KeepWorld:
			NewLocation = bAbsoluteLocation ? CurrentWorld.GetTranslation()
											: ParentToWorld.InverseTransformPosition(CurrentWorld.GetTranslation());
			break;
		case EAttachmentRule::SnapToTarget:
			NewLocation = FVector::ZeroVector;
			break;
	}
	switch (AttachmentRules.RotationRule)
	{
		case EAttachmentRule::KeepRelative:
			break;
		case EAttachmentRule::KeepWorld:
			NewRotation = bAbsoluteRotation
							  ? CurrentWorld.Rotator()
							  : (ParentToWorld.GetRotation().Inverse() * CurrentWorld.GetRotation()).Rotator();
			break;
		case EAttachmentRule::SnapToTarget:
			NewRotation = FRotator::ZeroRotator;
			break;
	}
	switch (AttachmentRules.ScaleRule)
	{
		case EAttachmentRule::KeepRelative:
			break;
		case EAttachmentRule::KeepWorld:
			NewScale = bAbsoluteScale
						   ? CurrentWorld.GetScale3D()
						   : UE::Engine::Private::DivideScale(CurrentWorld.GetScale3D(), ParentToWorld.GetScale3D());
			break;
		case EAttachmentRule::SnapToTarget:
			NewScale = FVector::OneVector;
			break;
	}

	AttachParent = InParent;
	AttachSocketName = InSocketName;
	InParent->AttachChildren.AddUnique(this);
	ApplyRelativeTransform(NewLocation, NewRotation, NewScale);
	return true;
}

void USceneComponent::SetupAttachment(USceneComponent* InParent, FName InSocketName)
{
	if (IsRegistered())
	{
		UE_LOG(LogSceneComponent, Error,
			TEXT("SetupAttachment is for constructors; %s is registered, use AttachToComponent instead."),
			*GetPathName());
		return;
	}
	if (InParent == this || (InParent && InParent->IsAttachedTo(this)))
	{
		UE_LOG(LogSceneComponent, Error, TEXT("SetupAttachment of %s to %s would create a cycle."), *GetPathName(),
			*GetPathNameSafe(InParent));
		return;
	}
	AttachParent = InParent;
	AttachSocketName = InSocketName;
}

void USceneComponent::DetachFromComponent(const FDetachmentTransformRules& DetachmentRules)
{
	if (!AttachParent)
	{
		return;
	}
	const FTransform CurrentWorld = ComponentToWorld;
	AttachParent->AttachChildren.Remove(this);
	AttachParent = nullptr;
	AttachSocketName = NAME_None;

	FVector NewLocation =
		DetachmentRules.LocationRule == EDetachmentRule::KeepWorld ? CurrentWorld.GetTranslation() : RelativeLocation;
	FRotator NewRotation =
		DetachmentRules.RotationRule == EDetachmentRule::KeepWorld ? CurrentWorld.Rotator() : RelativeRotation;
	FVector NewScale =
		DetachmentRules.ScaleRule == EDetachmentRule::KeepWorld ? CurrentWorld.GetScale3D() : RelativeScale3D;
	ApplyRelativeTransform(NewLocation, NewRotation, NewScale);
}

USceneComponent* USceneComponent::GetChildComponent(int32 ChildIndex) const
{
	return AttachChildren.IsValidIndex(ChildIndex) ? AttachChildren[ChildIndex].Get() : nullptr;
}

void USceneComponent::GetChildrenComponents(bool bIncludeAllDescendants, TArray<USceneComponent*>& Children) const
{
	Children.Reset();
	TArray<const USceneComponent*> Pending;
	Pending.Add(this);
	// Depth first, children in attachment order.
	while (Pending.Num() > 0)
	{
		const USceneComponent* Current = Pending.Pop();
		TArray<USceneComponent*> Direct;
		for (USceneComponent* Child : Current->AttachChildren)
		{
			if (Child)
			{
				Direct.Add(Child);
			}
		}
		for (USceneComponent* Child : Direct)
		{
			Children.Add(Child);
		}
		if (!bIncludeAllDescendants)
		{
			break;
		}
		for (int32 Index = Direct.Num() - 1; Index >= 0; --Index)
		{
			Pending.Add(Direct[Index]);
		}
	}
}

void USceneComponent::GetParentComponents(TArray<USceneComponent*>& Parents) const
{
	Parents.Reset();
	for (USceneComponent* Parent = AttachParent; Parent; Parent = Parent->AttachParent)
	{
		Parents.Add(Parent);
	}
}

bool USceneComponent::IsAttachedTo(const USceneComponent* TestComp) const
{
	if (!TestComp)
	{
		return false;
	}
	for (const USceneComponent* Parent = AttachParent; Parent; Parent = Parent->AttachParent)
	{
		if (Parent == TestComp)
		{
			return true;
		}
	}
	return false;
}

USceneComponent* USceneComponent::GetAttachmentRoot() const
{
	const USceneComponent* Top = this;
	while (Top->AttachParent)
	{
		Top = Top->AttachParent;
	}
	return const_cast<USceneComponent*>(Top);
}

AActor* USceneComponent::GetAttachmentRootActor() const
{
	return GetAttachmentRoot()->GetOwner();
}

void USceneComponent::SetMobility(EComponentMobility::Type NewMobility)
{
	Mobility = NewMobility;
}

void USceneComponent::SetVisibility(bool bNewVisibility, bool bPropagateToChildren)
{
	bVisible = bNewVisibility;
	if (bPropagateToChildren)
	{
		for (USceneComponent* Child : AttachChildren)
		{
			if (Child)
			{
				Child->SetVisibility(bNewVisibility, true);
			}
		}
	}
}

void USceneComponent::ToggleVisibility(bool bPropagateToChildren)
{
	SetVisibility(!bVisible, bPropagateToChildren);
}

void USceneComponent::SetHiddenInGame(bool NewHidden, bool bPropagateToChildren)
{
	bHiddenInGame = NewHidden;
	if (bPropagateToChildren)
	{
		for (USceneComponent* Child : AttachChildren)
		{
			if (Child)
			{
				Child->SetHiddenInGame(NewHidden, true);
			}
		}
	}
}

void USceneComponent::OnRegister()
{
	Super::OnRegister();
	// SetupAttachment only chose the parent; registering makes the attachment real.
	if (AttachParent && !AttachParent->AttachChildren.Contains(this))
	{
		USceneComponent* const Parent = AttachParent;
		const FName Socket = AttachSocketName;
		AttachParent = nullptr;
		AttachSocketName = NAME_None;
		if (!AttachToComponent(Parent, FAttachmentTransformRules::KeepRelativeTransform, Socket))
		{
			UE_LOG(LogSceneComponent, Warning, TEXT("%s could not be attached to %s when it was registered."),
				*GetPathName(), *Parent->GetPathName());
		}
	}
	else
	{
		UpdateComponentToWorld();
	}
}

void USceneComponent::DestroyComponent(bool bPromoteChildren)
{
	if (!IsValid(this))
	{
		return;
	}
	USceneComponent* const Parent = AttachParent;
	TArray<USceneComponent*> Children;
	for (USceneComponent* Child : AttachChildren)
	{
		if (Child)
		{
			Children.Add(Child);
		}
	}
	for (USceneComponent* Child : Children)
	{
		Child->DetachFromComponent(FDetachmentTransformRules::KeepWorldTransform);
		if (bPromoteChildren && Parent)
		{
			Child->AttachToComponent(Parent, FAttachmentTransformRules::KeepWorldTransform);
		}
	}
	DetachFromComponent(FDetachmentTransformRules::KeepWorldTransform);

	AActor* const Owner = GetOwner();
	if (Owner && Owner->GetRootComponent() == this)
	{
		USceneComponent* NewRoot = bPromoteChildren && !Parent && Children.Num() > 0 ? Children[0] : nullptr;
		if (NewRoot)
		{
			for (int32 Index = 1; Index < Children.Num(); ++Index)
			{
				Children[Index]->AttachToComponent(NewRoot, FAttachmentTransformRules::KeepWorldTransform);
			}
		}
		Owner->SetRootComponent(NewRoot);
	}
	Super::DestroyComponent(bPromoteChildren);
}
