// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Texture.h"
#include "UObject/ObjectMacros.h"

#include "Texture2D.generated.h"

/** A two-dimensional texture asset. */
UCLASS(HideCategories = Object, BlueprintType)
class ENGINE_API UTexture2D : public UTexture
{
	GENERATED_BODY()

public:
	UTexture2D(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};
