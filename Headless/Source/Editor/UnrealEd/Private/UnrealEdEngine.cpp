// Copyright Orvane. All Rights Reserved.

#include "Editor/UnrealEdEngine.h"

#include "UnrealEdGlobals.h"

UUnrealEdEngine* GUnrealEd = nullptr;

UUnrealEdEngine::UUnrealEdEngine(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}
