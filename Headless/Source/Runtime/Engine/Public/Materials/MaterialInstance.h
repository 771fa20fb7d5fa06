// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Materials/MaterialInterface.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

#include "MaterialInstance.generated.h"

/**
 * A material that refers to a parent (a material or another instance) and takes everything it does not
 * override from it. The chain of parents ends in the base material.
 */
UCLASS(Abstract, BlueprintType)
class ENGINE_API UMaterialInstance : public UMaterialInterface
{
	GENERATED_BODY()

public:
	UMaterialInstance(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The material this instance takes its parameters from. */
	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = MaterialInstance, AssetRegistrySearchable)
	TObjectPtr<UMaterialInterface> Parent;

	//~ UMaterialInterface interface
	virtual UMaterial* GetMaterial() override;
	virtual const UMaterial* GetMaterial() const override;
	virtual bool IsDependent(UMaterialInterface* TestDependency) override;

protected:
	/**
	 * Makes NewParent the parent unless that would make the chain of parents circular (NewParent is this
	 * instance or one of its children); true if the parent changed.
	 */
	bool SetParentInternal(UMaterialInterface* NewParent, bool RecacheShaders);
};
