// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

class UUnrealEdEngine;

/** The editor's engine as the full editor engine class; null outside the editor. */
extern UNREALED_API UUnrealEdEngine* GUnrealEd;
