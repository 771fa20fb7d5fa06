// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

#include "Scene.generated.h"

/** A blendable object (a post-process material) and how much it contributes. */
USTRUCT(BlueprintType)
struct ENGINE_API FWeightedBlendable
{
	GENERATED_BODY()

	/** Contribution from 0 to 1; the default -1 makes the editor offer a choice of object type. */
	UPROPERTY(
		EditAnywhere, BlueprintReadWrite, Category = FWeightedBlendable, meta = (ClampMin = "0.0", ClampMax = "1.0"))
	float Weight = -1.f;

	/** The blendable object (a material or material instance); null adds nothing. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = FWeightedBlendable)
	TObjectPtr<UObject> Object;

	FWeightedBlendable() = default;

	FWeightedBlendable(float InWeight, UObject* InObject)
		: Weight(InWeight)
		, Object(InObject)
	{
	}
};

/** The blendables of a post-process setting: post-process materials, in order. */
USTRUCT(BlueprintType)
struct ENGINE_API FWeightedBlendables
{
	GENERATED_BODY()

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = FWeightedBlendables)
	TArray<FWeightedBlendable> Array;

	FWeightedBlendables() = default;

	FWeightedBlendables(const TArray<FWeightedBlendable>& InArray)
		: Array(InArray)
	{
	}
};

/**
 * Post-process settings of a camera or a volume. The headless engine renders nothing, so it keeps the settings
 * the plug-in reads and writes; the rest of the engine's settings are not declared.
 */
USTRUCT(BlueprintType)
struct ENGINE_API FPostProcessSettings
{
	GENERATED_BODY()

	FPostProcessSettings() = default;

	/** Post-process materials and other blendables, in the order they apply. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Rendering Features",
		meta = (Keywords = "PostProcess", DisplayName = "Post Process Materials"))
	FWeightedBlendables WeightedBlendables;
};
