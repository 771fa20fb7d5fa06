// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"
#include "OrvaneTrackingLog.h"

DEFINE_LOG_CATEGORY(LogOrvaneTracking);

/** The runtime module that provides the network tracking Live Link source, its settings and its factory. */
class FOrvaneTrackingModule : public IModuleInterface
{
};

IMPLEMENT_MODULE(FOrvaneTrackingModule, OrvaneTracking)
