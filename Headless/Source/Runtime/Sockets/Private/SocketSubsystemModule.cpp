// Copyright Orvane. All Rights Reserved.

#include "SocketSubsystemModule.h"

#include "Modules/ModuleManager.h"
#include "SocketSubsystem.h"
#include "SocketSubsystemRegistry.h"

void FSocketSubsystemModule::StartupModule()
{
	// Makes the platform subsystem now, so that a failure to start shows at module load.
	SocketSubsystemRegistry::Find(NAME_None);
}

void FSocketSubsystemModule::ShutdownModule()
{
	ISocketSubsystem::ShutdownAllSystems();
}

ISocketSubsystem* FSocketSubsystemModule::GetSocketSubsystem(const FName InSubsystemName)
{
	return SocketSubsystemRegistry::Find(InSubsystemName);
}

void FSocketSubsystemModule::RegisterSocketSubsystem(
	const FName FactoryName, ISocketSubsystem* Factory, bool bMakeDefault)
{
	SocketSubsystemRegistry::Register(FactoryName, Factory, bMakeDefault);
}

void FSocketSubsystemModule::UnregisterSocketSubsystem(const FName FactoryName)
{
	SocketSubsystemRegistry::Unregister(FactoryName);
}

IMPLEMENT_MODULE(FSocketSubsystemModule, Sockets);
