// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "BlendableInterface.generated.h"

/** Where to place a post process material in the post processing chain. */
UENUM(BlueprintType)
enum EBlendableLocation : int
{
	/** After the tone mapper: scene color in display color space. */
	BL_SceneColorAfterTonemapping UMETA(DisplayName = "Scene Color After Tonemapping"),
	/** Between depth of field and the translucency drawn after it. */
	BL_SceneColorAfterDOF UMETA(DisplayName = "Scene Color After DOF"),
	/** Between translucency distortion and depth of field. */
	BL_SceneColorBeforeDOF UMETA(DisplayName = "Scene Color Before DOF"),
	/** In place of the tone mapper. */
	BL_ReplacingTonemapper UMETA(DisplayName = "Replacing the Tonemapper"),
	/** Composes a backplate into the screen space reflections' input. */
	BL_SSRInput UMETA(DisplayName = "SSR Input"),
	/** On the translucency drawn after depth of field, before it joins the scene color. */
	BL_TranslucencyAfterDOF UMETA(DisplayName = "Translucency After DOF"),
	/** Before bloom. */
	BL_SceneColorBeforeBloom UMETA(DisplayName = "Scene Color Before Bloom"),

	BL_MAX
};
