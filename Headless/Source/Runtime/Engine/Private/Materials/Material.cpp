// Copyright Orvane. All Rights Reserved.

#include "Materials/Material.h"

#include "UObject/Class.h"

FString MaterialDomainString(EMaterialDomain MaterialDomain)
{
	return StaticEnum<EMaterialDomain>()->GetNameStringByValue(static_cast<int64>(MaterialDomain));
}

UMaterial::UMaterial(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, MaterialDomain(MD_Surface)
	, BlendableLocation(BL_SceneColorAfterTonemapping)
	, BlendablePriority(0)
	, bIsBlendable(true)
{
}

UMaterial* UMaterial::GetMaterial()
{
	return this;
}

const UMaterial* UMaterial::GetMaterial() const
{
	return this;
}

bool UMaterial::IsDependent(UMaterialInterface* TestDependency)
{
	// A material has no parent: it only depends on itself.
	return TestDependency == this;
}
