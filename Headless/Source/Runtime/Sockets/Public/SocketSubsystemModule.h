// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Modules/ModuleInterface.h"
#include "UObject/NameTypes.h"

class ISocketSubsystem;

/**
 * The Sockets module: keeps the socket subsystems by name. The platform's own subsystem is registered
 * under PLATFORM_SOCKETSUBSYSTEM and is the default.
 */
class SOCKETS_API FSocketSubsystemModule : public IModuleInterface
{
public:
	virtual void StartupModule() override;
	virtual void ShutdownModule() override;

	/** The subsystem registered under the name; NAME_None means the default one. Null if there is none. */
	virtual ISocketSubsystem* GetSocketSubsystem(const FName InSubsystemName = NAME_None);

	/**
	 * Registers a subsystem under a name, for others to find with ISocketSubsystem::Get. The module does
	 * not take ownership.
	 */
	virtual void RegisterSocketSubsystem(const FName FactoryName, ISocketSubsystem* Factory, bool bMakeDefault = false);

	/** Removes a subsystem registered under the name. */
	virtual void UnregisterSocketSubsystem(const FName FactoryName);
};
