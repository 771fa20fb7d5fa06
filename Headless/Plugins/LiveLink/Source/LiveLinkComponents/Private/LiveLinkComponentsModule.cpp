// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"

IMPLEMENT_MODULE(FDefaultModuleImpl, LiveLinkComponents)
