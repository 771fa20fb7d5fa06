// Copyright Orvane. All Rights Reserved.

#include "Materials/MaterialInterface.h"

#include "Materials/Material.h"
#include "UObject/Class.h"

DEFINE_LOG_CATEGORY_STATIC(LogMaterialInterface, Log, All);

UMaterialInterface::UMaterialInterface(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

UMaterial* UMaterialInterface::GetMaterial()
{
	// Every concrete material class answers for itself; reaching this means a class forgot to.
	UE_LOG(LogMaterialInterface, Error, TEXT("%s does not override UMaterialInterface::GetMaterial."),
		*GetClass()->GetName());
	return nullptr;
}

const UMaterial* UMaterialInterface::GetMaterial() const
{
	UE_LOG(LogMaterialInterface, Error, TEXT("%s does not override UMaterialInterface::GetMaterial."),
		*GetClass()->GetName());
	return nullptr;
}

UMaterial* UMaterialInterface::GetBaseMaterial()
{
	return GetMaterial();
}

bool UMaterialInterface::IsDependent(UMaterialInterface* TestDependency)
{
	return TestDependency == this;
}
