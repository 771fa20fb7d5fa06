// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"

/** The runtime module that provides the network tracking Live Link source. */
class FOrvaneTrackingModule : public IModuleInterface
{
};

IMPLEMENT_MODULE(FOrvaneTrackingModule, OrvaneTracking)
