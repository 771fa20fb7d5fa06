// Copyright Orvane. All Rights Reserved.

#pragma once

#include "UObject/NameTypes.h"

class ISocketSubsystem;

/** The socket subsystems by name, shared by ISocketSubsystem::Get and the Sockets module. Thread-safe. */
namespace SocketSubsystemRegistry
{
	/** The subsystem of the name (NAME_None: the default one); makes the platform's own on first use. */
	ISocketSubsystem* Find(const FName& SubsystemName);

	/** Registers a subsystem the caller keeps ownership of. */
	void Register(const FName& Name, ISocketSubsystem* Subsystem, bool bMakeDefault);

	/** Removes a subsystem; the platform's own becomes the default again if it was. */
	void Unregister(const FName& Name);

	/** Shuts every subsystem down and forgets them; the platform's own is made again on next use. */
	void ShutdownAll();
} // namespace SocketSubsystemRegistry
