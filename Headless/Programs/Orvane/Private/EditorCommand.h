// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * `orvane editor`: boots the headless editor on a project and reports what it loaded; with --setup, also runs
 * one of the setup dialog's actions, advances time for its deferred steps and reports what it changed.
 * @return 0 on success (the setup call returned true), 1 when the editor or the setup failed, 2 for bad arguments.
 */
int32 RunEditorCommand(const TArray<FString>& Args);
