// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Components/ActorComponent.h"
#include "CoreMinimal.h"
#include "LiveLinkControllerBase.h"
#include "LiveLinkRole.h"
#include "Templates/SubclassOf.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkComponentController.generated.h"

/** Broadcast after the controllers were given a new frame; the parameter is the tick's delta time. */
DECLARE_MULTICAST_DELEGATE_OneParam(FLiveLinkTickDelegate, float /*DeltaTime*/);

/** Broadcast whenever the controller map was rebuilt or one of its controllers was replaced. */
DECLARE_MULTICAST_DELEGATE(FOnControllerMapUpdatedDelegate);

/**
 * Drives components of its actor from a Live Link subject. It keeps one controller per role of the subject's
 * role hierarchy (a Camera subject gets a Transform controller and a Camera controller), evaluates the subject
 * through the Live Link client every tick and hands the frame to each controller.
 */
UCLASS(ClassGroup = (LiveLink), meta = (DisplayName = "LiveLink Controller", BlueprintSpawnableComponent))
class LIVELINKCOMPONENTS_API ULiveLinkComponentController : public UActorComponent
{
	GENERATED_BODY()

public:
	ULiveLinkComponentController();

	/** The subject and role driving this component; set it through SetSubjectRepresentation. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, BlueprintSetter = SetSubjectRepresentation,
		BlueprintGetter = GetSubjectRepresentation, Category = "LiveLink")
	FLiveLinkSubjectRepresentation SubjectRepresentation;

	/** The controllers, one per role of the subject's role hierarchy. */
	UPROPERTY(EditAnywhere, Instanced, Category = "LiveLink", meta = (ShowOnlyInnerProperties))
	TMap<TSubclassOf<ULiveLinkRole>, TObjectPtr<ULiveLinkControllerBase>> ControllerMap;

	/** Whether the subject is applied in the editor's own world (outside a running game). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bUpdateInEditor;

	/** Broadcast every time new Live Link data was applied, in the editor too. */
	FLiveLinkTickDelegate OnLiveLinkUpdated;

	/** Broadcast every time the controller map changes. */
	FOnControllerMapUpdatedDelegate OnControllerMapUpdatedDelegate;

	/** Skips evaluation while the owner is a spawnable of a Sequencer sequence. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bDisableEvaluateLiveLinkWhenSpawnable = true;

	/** False pauses the component: the subject is not evaluated and nothing is applied. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bEvaluateLiveLink = true;

	/** Whether the subject is also applied in preview worlds (those of the Blueprint editors). */
	UPROPERTY(EditAnywhere, Category = "LiveLink", AdvancedDisplay, meta = (EditCondition = "bUpdateInEditor"))
	bool bUpdateInPreviewEditor = false;

	/** Replaces the controller of a role of the current subject by a new one of DesiredControllerClass. */
	void SetControllerClassForRole(
		TSubclassOf<ULiveLinkRole> RoleClass, TSubclassOf<ULiveLinkControllerBase> DesiredControllerClass);

	/** The class of the controller of a role; null if the role has no controller. */
	TSubclassOf<ULiveLinkControllerBase> GetControllerClassForRoleClass(
		const TSubclassOf<ULiveLinkRole> RoleClass) const;

	/** Sets the subject and role driving this component and rebuilds the controller map for that role. */
	UFUNCTION(BlueprintSetter)
	void SetSubjectRepresentation(FLiveLinkSubjectRepresentation InSubjectRepresentation);

	/** The subject and role driving this component. */
	UFUNCTION(BlueprintGetter)
	FLiveLinkSubjectRepresentation GetSubjectRepresentation() const { return SubjectRepresentation; }

	/** Sets the component driven by the controller of a role; does nothing if the role has no controller. */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	void SetControlledComponent(TSubclassOf<ULiveLinkRole> InRoleClass, UActorComponent* InComponent);

	/** The component driven by the controller of a role; null if there is no controller for that role. */
	UFUNCTION(BlueprintPure, Category = "LiveLink")
	UActorComponent* GetControlledComponent(TSubclassOf<ULiveLinkRole> InRoleClass) const;

	/** True if the controller map does not match the current subject role (it was changed directly). */
	bool IsControllerMapOutdated() const;

	/** Rebuilds the controller map after the subject's role was changed directly. */
	void OnSubjectRoleChanged();

	virtual void OnRegister() override;
	virtual void TickComponent(
		float DeltaTime, enum ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction) override;
	virtual void DestroyComponent(bool bPromoteChildren = false) override;

protected:
	/** Set when the component was registered or its controllers changed: they are prepared on the next tick. */
	bool bIsDirty;

private:
	/** The roles a subject of Role drives, from Role itself up to (not including) the abstract base role. */
	static TArray<TSubclassOf<ULiveLinkRole>> GetRoleHierarchy(TSubclassOf<ULiveLinkRole> Role);

	/** Makes a controller of ControllerClass for Role, pointed at the subject and at its default component. */
	ULiveLinkControllerBase* CreateController(
		TSubclassOf<ULiveLinkRole> Role, TSubclassOf<ULiveLinkControllerBase> ControllerClass);

	/** The component of the owner a new controller drives: the root if it is of the desired class, else the first one.
	 */
	UActorComponent* FindDefaultComponentToControl(const ULiveLinkControllerBase* Controller) const;

	/** Whether this tick should evaluate the subject, given the world this component lives in. */
	bool ShouldEvaluateInCurrentWorld() const;

	/** Removes every controller, letting each undo what it did first. */
	void CleanupControllers();
};
