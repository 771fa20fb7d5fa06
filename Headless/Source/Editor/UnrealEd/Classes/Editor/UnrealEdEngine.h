// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Editor/EditorEngine.h"
#include "UObject/ObjectMacros.h"

#include "UnrealEdEngine.generated.h"

/** The engine class the editor runs with (GEngine, GEditor and GUnrealEd all point at it). */
UCLASS(config = Engine, transient)
class UNREALED_API UUnrealEdEngine : public UEditorEngine
{
	GENERATED_BODY()

public:
	UUnrealEdEngine(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};
