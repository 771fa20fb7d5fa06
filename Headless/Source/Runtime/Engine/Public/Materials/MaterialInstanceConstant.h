// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Materials/MaterialInstance.h"
#include "UObject/ObjectMacros.h"

#include "MaterialInstanceConstant.generated.h"

/** A material instance asset whose parameters are set in the editor and saved with it. */
UCLASS(HideCategories = Object, CollapseCategories, BlueprintType)
class ENGINE_API UMaterialInstanceConstant : public UMaterialInstance
{
	GENERATED_BODY()

public:
	UMaterialInstanceConstant(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

#if WITH_EDITOR
	/**
	 * Sets the parent of this material instance. Only the editor may call this; a parent that would make the
	 * chain circular is refused with an error and the parent stays as it was.
	 * @param NewParent The new parent for this material instance.
	 * @param RecacheShader Will recache required shaders (the headless engine has none to recache).
	 */
	void SetParentEditorOnly(UMaterialInterface* NewParent, bool RecacheShader = true);
#endif
};
