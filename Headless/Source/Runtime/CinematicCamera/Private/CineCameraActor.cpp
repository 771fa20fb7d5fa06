// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"

ACineCameraActor::ACineCameraActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer.SetDefaultSubobjectClass<UCineCameraComponent>(TEXT("CameraComponent")))
{
}

UCineCameraComponent* ACineCameraActor::GetCineCameraComponent() const
{
	return Cast<UCineCameraComponent>(GetCameraComponent());
}
