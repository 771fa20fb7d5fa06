// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** `orvane editor`: boots the headless editor on a project and reports what it loaded. */
int32 RunEditorCommand(const TArray<FString>& Args);
