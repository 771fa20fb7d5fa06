// Copyright Orvane. All Rights Reserved.

#include "Modules/ModuleManager.h"

// Core is a module like any other: LoadModule("Core") finds it already in the process.
IMPLEMENT_MODULE(FDefaultModuleImpl, Core)
