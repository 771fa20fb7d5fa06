// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Editor/EditorEngine.h"

/** The editor's engine; null outside the editor (a game or a commandlet) and before the engine starts. */
extern UNREALED_API class UEditorEngine* GEditor;
