// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Camera/CameraActor.h"
#include "CineCameraComponent.h"
#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "CineCameraActor.generated.h"

/** A camera actor whose camera component is a cine camera component. */
UCLASS(ClassGroup = Common, hideCategories = (Input, Rendering, AutoPlayerActivation),
	showcategories = ("Input|MouseInput", "Input|TouchInput"), Blueprintable)
class CINEMATICCAMERA_API ACineCameraActor : public ACameraActor
{
	GENERATED_BODY()

public:
	ACineCameraActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The camera component, typed as the cine camera component it is. */
	UCineCameraComponent* GetCineCameraComponent() const;
};
