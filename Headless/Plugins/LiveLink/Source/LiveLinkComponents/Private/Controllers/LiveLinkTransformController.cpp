// Copyright Orvane. All Rights Reserved.

#include "Controllers/LiveLinkTransformController.h"

#include "Components/SceneComponent.h"
#include "GameFramework/Actor.h"
#include "LiveLinkTypes.h"
#include "Roles/LiveLinkTransformRole.h"
#include "Roles/LiveLinkTransformTypes.h"

DEFINE_LOG_CATEGORY_STATIC(LogLiveLinkTransformController, Log, All);

void FLiveLinkTransformControllerData::ApplyTransform(
	USceneComponent* SceneComponent, const FTransform& Transform, const FLiveLinkTransformStaticData& StaticData) const
{
	if (SceneComponent == nullptr)
	{
		return;
	}

	// Start from where the component is, in the space we write to, so that the parts the subject does not
	// provide (or that are switched off here) stay exactly as they are.
	FTransform Target =
		bWorldTransform ? SceneComponent->GetComponentTransform() : SceneComponent->GetRelativeTransform();
	if (bUseLocation && StaticData.bIsLocationSupported)
	{
		Target.SetLocation(Transform.GetLocation());
	}
	if (bUseRotation && StaticData.bIsRotationSupported)
	{
		Target.SetRotation(Transform.GetRotation());
	}
	if (bUseScale && StaticData.bIsScaleSupported)
	{
		Target.SetScale3D(Transform.GetScale3D());
	}

	const ETeleportType Teleport = bTeleport ? ETeleportType::TeleportPhysics : ETeleportType::None;
	if (bWorldTransform)
	{
		SceneComponent->SetWorldTransform(Target, bSweep, nullptr, Teleport);
	}
	else
	{
		SceneComponent->SetRelativeTransform(Target, bSweep, nullptr, Teleport);
	}
}

void FLiveLinkTransformControllerData::CheckForError(FName OwnerName, USceneComponent* SceneComponent) const
{
	if (SceneComponent == nullptr)
	{
		UE_LOG(LogLiveLinkTransformController, Warning,
			TEXT("The Live Link transform controller of '%s' has no scene component to drive."), *OwnerName.ToString());
		return;
	}
	if (!SceneComponent->IsMovable())
	{
		UE_LOG(LogLiveLinkTransformController, Warning,
			TEXT("The Live Link transform controller of '%s' drives '%s', which is not Movable; set its mobility to "
				 "Movable so that it follows the subject."),
			*OwnerName.ToString(), *SceneComponent->GetName());
	}
}

void ULiveLinkTransformController::OnEvaluateRegistered()
{
	const AActor* OuterActor = GetOuterActor();
	TransformData.CheckForError(
		OuterActor ? OuterActor->GetFName() : NAME_None, Cast<USceneComponent>(GetAttachedComponent()));
}

void ULiveLinkTransformController::Tick(float DeltaTime, const FLiveLinkSubjectFrameData& SubjectData)
{
	const FLiveLinkTransformStaticData* StaticData = SubjectData.StaticData.Cast<FLiveLinkTransformStaticData>();
	const FLiveLinkTransformFrameData* FrameData = SubjectData.FrameData.Cast<FLiveLinkTransformFrameData>();
	USceneComponent* SceneComponent = Cast<USceneComponent>(GetAttachedComponent());
	if (StaticData == nullptr || FrameData == nullptr || SceneComponent == nullptr)
	{
		return;
	}
	TransformData.ApplyTransform(SceneComponent, FrameData->Transform, *StaticData);
}

bool ULiveLinkTransformController::IsRoleSupported(const TSubclassOf<ULiveLinkRole>& RoleToSupport)
{
	// Exactly the Transform role: roles derived from it (Camera, ...) have their own controllers, and the
	// component controller gives this one the Transform level of their hierarchy.
	return RoleToSupport.Get() == ULiveLinkTransformRole::StaticClass();
}

TSubclassOf<UActorComponent> ULiveLinkTransformController::GetDesiredComponentClass() const
{
	return USceneComponent::StaticClass();
}

void ULiveLinkTransformController::SetAttachedComponent(UActorComponent* ActorComponent)
{
	Super::SetAttachedComponent(ActorComponent);
	if (ActorComponent != nullptr && !ActorComponent->IsA<USceneComponent>())
	{
		const AActor* OuterActor = GetOuterActor();
		UE_LOG(LogLiveLinkTransformController, Warning,
			TEXT("The Live Link transform controller of '%s' was given '%s', which is not a scene component; it "
				 "will not move it."),
			OuterActor ? *OuterActor->GetName() : TEXT("None"), *ActorComponent->GetName());
	}
}
