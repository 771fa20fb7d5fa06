// Copyright Orvane. All Rights Reserved.

#include "Camera/CameraActor.h"

#include "Camera/CameraComponent.h"

ACameraActor::ACameraActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	CameraComponent = CreateDefaultSubobject<UCameraComponent>(TEXT("CameraComponent"));
	SceneComponent = CreateDefaultSubobject<USceneComponent>(TEXT("SceneComponent"));
	RootComponent = SceneComponent;
	CameraComponent->SetupAttachment(SceneComponent);
}
