// Copyright Orvane. All Rights Reserved.

#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "Modules/ModuleManager.h"

/** The Networking module: prepares the endpoint conversions when it starts. */
class FNetworkingModule : public IModuleInterface
{
public:
	virtual void StartupModule() override { FIPv4Endpoint::Initialize(); }
	virtual void ShutdownModule() override { FIPv4Endpoint::CachedSocketSubsystem = nullptr; }
};

IMPLEMENT_MODULE(FNetworkingModule, Networking);
