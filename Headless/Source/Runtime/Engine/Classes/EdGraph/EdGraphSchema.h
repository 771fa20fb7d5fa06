// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "EdGraphSchema.generated.h"

/** The rules of a kind of graph: which pin types exist and how pins may connect. */
UCLASS()
class ENGINE_API UEdGraphSchema : public UObject
{
	GENERATED_BODY()

public:
	UEdGraphSchema() = default;
};
