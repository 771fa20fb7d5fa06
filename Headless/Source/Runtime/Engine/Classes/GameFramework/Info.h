// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "UObject/ObjectMacros.h"

#include "Info.generated.h"

/**
 * The base of actors that hold information rather than appear in the world: "manager" classes that carry
 * settings or state about the world or the game. An info actor has no movement or collision and is hidden.
 */
UCLASS(Abstract,
	HideCategories = (Input, Movement, Collision, Rendering, HLOD, WorldPartition, DataLayers, Transformation),
	ShowCategories = ("Input|MouseInput", "Input|TouchInput"), NotBlueprintable)
class ENGINE_API AInfo : public AActor
{
	GENERATED_BODY()

public:
	AInfo(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};
