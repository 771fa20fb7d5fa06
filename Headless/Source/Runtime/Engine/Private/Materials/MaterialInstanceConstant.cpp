// Copyright Orvane. All Rights Reserved.

#include "Materials/MaterialInstanceConstant.h"

#include "CoreGlobals.h"

UMaterialInstanceConstant::UMaterialInstanceConstant(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

#if WITH_EDITOR
void UMaterialInstanceConstant::SetParentEditorOnly(UMaterialInterface* NewParent, bool RecacheShader)
{
	checkf(GIsEditor, TEXT("UMaterialInstanceConstant::SetParentEditorOnly may only be called in the editor."));
	SetParentInternal(NewParent, RecacheShader);
}
#endif
