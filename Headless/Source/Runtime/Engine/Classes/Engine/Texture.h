// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "Texture.generated.h"

/**
 * The base of texture assets. The headless engine keeps no pixels or GPU resources: a texture is an asset with
 * its settings, which lets content refer to textures and tell them apart from other assets.
 */
UCLASS(Abstract, BlueprintType)
class ENGINE_API UTexture : public UObject
{
	GENERATED_BODY()

public:
	UTexture(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** Whether the texture's colors are stored in sRGB space; cleared for textures whose channels are data. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = Texture, AssetRegistrySearchable)
	uint8 SRGB : 1;
};
