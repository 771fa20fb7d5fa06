// Copyright Orvane. All Rights Reserved.

#include "Camera/CameraComponent.h"

UCameraComponent::UCameraComponent(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, bConstrainAspectRatio(false)
	, bUsePawnControlRotation(false)
{
}

void UCameraComponent::AddOrUpdateBlendable(UObject* InBlendableObject, float InWeight)
{
	if (!InBlendableObject)
	{
		return;
	}
	// An object already in the list gets the new weight; a new one goes at the end.
	for (FWeightedBlendable& Blendable : PostProcessSettings.WeightedBlendables.Array)
	{
		if (Blendable.Object == InBlendableObject)
		{
			Blendable.Weight = InWeight;
			return;
		}
	}
	PostProcessSettings.WeightedBlendables.Array.Add(FWeightedBlendable(InWeight, InBlendableObject));
}

void UCameraComponent::RemoveBlendable(UObject* InBlendableObject)
{
	PostProcessSettings.WeightedBlendables.Array.RemoveAll(
		[InBlendableObject](const FWeightedBlendable& Blendable)
		{
			return Blendable.Object == InBlendableObject;
		});
}
