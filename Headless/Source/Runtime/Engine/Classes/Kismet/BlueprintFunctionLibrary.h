// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "BlueprintFunctionLibrary.generated.h"

/** Base class of classes that only hold static functions exposed to Blueprints. Never instantiated. */
UCLASS(Abstract, MinimalAPI)
class UBlueprintFunctionLibrary : public UObject
{
	GENERATED_BODY()
};
