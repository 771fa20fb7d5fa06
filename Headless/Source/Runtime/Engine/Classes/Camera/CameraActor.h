// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Camera/CameraComponent.h"
#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "UObject/ObjectMacros.h"

#include "CameraActor.generated.h"

/** An actor that is a camera: its root is a scene component and its camera component is attached to it. */
UCLASS(Blueprintable)
class ENGINE_API ACameraActor : public AActor
{
	GENERATED_BODY()

public:
	ACameraActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The camera component; never null for an actor made from the class. */
	UCameraComponent* GetCameraComponent() const { return CameraComponent; }

protected:
	/** The root the camera component hangs from. */
	UPROPERTY()
	TObjectPtr<USceneComponent> SceneComponent;

private:
	/** The camera component. */
	UPROPERTY(Category = CameraActor, VisibleAnywhere, BlueprintReadOnly,
		meta = (ExposeFunctionCategories = "CameraSettings", AllowPrivateAccess = "true"))
	TObjectPtr<UCameraComponent> CameraComponent;
};
