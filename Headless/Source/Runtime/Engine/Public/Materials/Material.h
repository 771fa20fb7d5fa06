// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/BlendableInterface.h"
#include "MaterialDomain.h"
#include "Materials/MaterialInterface.h"
#include "UObject/ObjectMacros.h"

#include "Material.generated.h"

/**
 * A material asset: the base of material instances. Its domain says where it is used (on surfaces, in a post
 * process pass, in the user interface...); a post process material also says where in the post processing
 * chain it runs.
 */
UCLASS(HideCategories = Object, BlueprintType)
class ENGINE_API UMaterial : public UMaterialInterface
{
	GENERATED_BODY()

public:
	UMaterial(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/**
	 * The domain that the material's attributes will be evaluated in. Certain pieces of material functionality
	 * are only valid in certain domains.
	 */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = Material, AssetRegistrySearchable)
	TEnumAsByte<enum EMaterialDomain> MaterialDomain;

	/** Where in the post processing chain a post process material runs. */
	UPROPERTY(
		EditAnywhere, BlueprintReadOnly, Category = PostProcessMaterial, meta = (DisplayName = "Blendable Location"))
	TEnumAsByte<enum EBlendableLocation> BlendableLocation;

	/** Among the post process materials of one location, lower priorities run first. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = PostProcessMaterial,
		meta = (DisplayName = "Blendable Priority", UIMin = "-10", UIMax = "10"))
	int32 BlendablePriority;

	/** Whether the material's parameters blend with those of volumes the camera is in. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = PostProcessMaterial)
	bool bIsBlendable;

	//~ UMaterialInterface interface
	virtual UMaterial* GetMaterial() override;
	virtual const UMaterial* GetMaterial() const override;
	virtual bool IsDependent(UMaterialInterface* TestDependency) override;
};
