// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "MaterialInterface.generated.h"

class UMaterial;

/**
 * The base of everything that can be used as a material: a material itself, or an instance that refers to a
 * parent. The headless engine renders nothing, so it keeps what materials say about themselves and how they
 * relate, never shaders.
 */
UCLASS(Abstract, BlueprintType, HideCategories = (Thumbnail))
class ENGINE_API UMaterialInterface : public UObject
{
	GENERATED_BODY()

public:
	UMaterialInterface(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/**
	 * The material which this one is, or instances: walks up the parent chain to the base material. Null if the
	 * chain does not end in a material (no parent, or a circular chain).
	 */
	virtual UMaterial* GetMaterial();
	virtual const UMaterial* GetMaterial() const;

	/** Walks up the parent chain and finds the base material that this is an instance of. */
	UMaterial* GetBaseMaterial();

	/** True if this material depends on the given one: it is that one, or one of its parents is. */
	virtual bool IsDependent(UMaterialInterface* TestDependency);
};
