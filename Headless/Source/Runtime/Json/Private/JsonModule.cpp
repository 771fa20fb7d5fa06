// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "JsonGlobals.h"
#include "Modules/ModuleManager.h"

DEFINE_LOG_CATEGORY(LogJson);

IMPLEMENT_MODULE(FDefaultModuleImpl, Json)
