// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"
#include "Modules/ModuleManager.h"

/**
 * The LiveLink module. It owns the Live Link client, which it registers as the ILiveLinkClient modular feature,
 * and applies the project's default preset once the engine has started.
 */
class ILiveLinkModule : public IModuleInterface
{
public:
	/** The module, loaded if it was not. */
	static ILiveLinkModule& Get() { return FModuleManager::LoadModuleChecked<ILiveLinkModule>(TEXT("LiveLink")); }

	/** True once the module is loaded. */
	static bool IsAvailable() { return FModuleManager::Get().IsModuleLoaded(TEXT("LiveLink")); }
};
