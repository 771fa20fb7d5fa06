// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"

/** The editor module that adds the Orvane button to the Level Editor's play toolbar. */
class FORV_uiModule : public IModuleInterface
{
public:
	virtual ~FORV_uiModule() override;

	//~ Begin IModuleInterface interface
	virtual void StartupModule() override;
	virtual void ShutdownModule() override;
	//~ End IModuleInterface interface
};
