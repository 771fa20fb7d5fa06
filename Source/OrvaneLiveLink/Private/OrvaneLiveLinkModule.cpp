// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Modules/ModuleManager.h"
#include "OrvaneLiveLinkLog.h"

DEFINE_LOG_CATEGORY(LogOrvaneLiveLink);

/** The editor module that manages Live Link sources and presets and imports stage files into nDisplay. */
class FOrvaneLiveLinkModule : public IModuleInterface
{
};

IMPLEMENT_MODULE(FOrvaneLiveLinkModule, OrvaneLiveLink)
