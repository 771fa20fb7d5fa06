// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkControllerBase.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkTransformController.generated.h"

class USceneComponent;
struct FLiveLinkTransformStaticData;

/** How a transform from Live Link is put on a scene component. */
USTRUCT(BlueprintType)
struct LIVELINKCOMPONENTS_API FLiveLinkTransformControllerData
{
	GENERATED_BODY()

	/** Whether the transform is the component's world transform (else its transform relative to its parent). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bWorldTransform = false;

	/** Whether the subject's location is applied. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bUseLocation = true;

	/** Whether the subject's rotation is applied. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bUseRotation = true;

	/** Whether the subject's scale is applied. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bUseScale = true;

	/** Whether a move sweeps, stopping where collision blocks it (only colliding components are affected). */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bSweep = false;

	/** Whether a move teleports the physics state, so that no velocity is inferred from it. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", AdvancedDisplay)
	bool bTeleport = true;

	/**
	 * Puts the parts of Transform that are both wanted (bUse*) and supported by the subject (StaticData's
	 * bIs*Supported) on the component, in world space or relative to its parent; the other parts keep the
	 * component's current values.
	 */
	void ApplyTransform(USceneComponent* SceneComponent, const FTransform& Transform,
		const FLiveLinkTransformStaticData& StaticData) const;

	/** Warns when the component cannot be driven: there is none, or it is not movable. */
	void CheckForError(FName OwnerName, USceneComponent* SceneComponent) const;
};

/** Drives a scene component's transform from a subject of the Transform role. */
UCLASS(BlueprintType)
class LIVELINKCOMPONENTS_API ULiveLinkTransformController : public ULiveLinkControllerBase
{
	GENERATED_BODY()

public:
	/** How the subject's transform is applied. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink", meta = (ShowOnlyInnerProperties))
	FLiveLinkTransformControllerData TransformData;

	virtual void OnEvaluateRegistered() override;
	virtual void Tick(float DeltaTime, const FLiveLinkSubjectFrameData& SubjectData) override;
	virtual bool IsRoleSupported(const TSubclassOf<ULiveLinkRole>& RoleToSupport) override;
	virtual TSubclassOf<UActorComponent> GetDesiredComponentClass() const override;
	virtual void SetAttachedComponent(UActorComponent* ActorComponent) override;
};
