// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/WeakObjectPtrTemplates.h"

#include "LiveLinkControllerBase.generated.h"

class AActor;
class UActorComponent;
struct FLiveLinkSubjectFrameData;

/**
 * Applies the frames of a Live Link subject of one role to one component of an actor. A
 * ULiveLinkComponentController owns one controller per role of its subject's role hierarchy and hands each of
 * them the subject's evaluated frame every tick.
 */
UCLASS(Abstract, ClassGroup = (LiveLink), EditInlineNew)
class LIVELINKCOMPONENTS_API ULiveLinkControllerBase : public UObject
{
	GENERATED_BODY()

public:
	/** Prepares the controller on the first evaluation after its owning component was registered. */
	virtual void OnEvaluateRegistered() {}

	/** Applies one evaluated frame of the subject to the controlled component. */
	virtual void Tick(float DeltaTime, const FLiveLinkSubjectFrameData& SubjectData) {}

	/** Whether the controller can drive a subject of this role. Asked of the class default object. */
	virtual bool IsRoleSupported(const TSubclassOf<ULiveLinkRole>& RoleToSupport) { return false; }

	/** The class of component this controller knows how to drive. */
	virtual TSubclassOf<UActorComponent> GetDesiredComponentClass() const { return nullptr; }

	/** Sets the component this controller drives. */
	virtual void SetAttachedComponent(UActorComponent* ActorComponent);

	/** The component this controller drives; null if none is set or it was destroyed. */
	UActorComponent* GetAttachedComponent() const;

	/** Sets the subject whose frames this controller receives. */
	virtual void SetSelectedSubject(FLiveLinkSubjectRepresentation LiveLinkSubject);

	/** The subject whose frames this controller receives. */
	virtual FLiveLinkSubjectRepresentation GetSelectedSubject() const { return SelectedSubject; }

	/** Undoes what the controller did to its component before the controller is removed. */
	virtual void Cleanup() {}

	/** Called when the controller is created by an editor action rather than loaded. */
	virtual void InitializeInEditor() {}

	/** The actor the controller belongs to (through its owning component). */
	AActor* GetOuterActor() const;

	/**
	 * Every loaded controller class that supports the role: concrete, non-deprecated classes derived from
	 * ULiveLinkControllerBase whose default object answers IsRoleSupported, in class registration order.
	 */
	static TArray<TSubclassOf<ULiveLinkControllerBase>> GetControllersForRole(
		const TSubclassOf<ULiveLinkRole>& RoleToSupport);

	/** The controller class used for a role: the first class GetControllersForRole finds; null if none. */
	static TSubclassOf<ULiveLinkControllerBase> GetControllerForRole(const TSubclassOf<ULiveLinkRole>& RoleToSupport);

protected:
	/** The component driven by this controller; weak, because the actor may destroy it at any time. */
	TWeakObjectPtr<UActorComponent> AttachedComponent;

	/** The subject whose frames this controller receives. */
	UPROPERTY()
	FLiveLinkSubjectRepresentation SelectedSubject;
};
