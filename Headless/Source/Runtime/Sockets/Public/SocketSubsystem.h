// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogMacros.h"
#include "SocketTypes.h"
#include "Templates/SharedPointer.h"
#include "Templates/UniquePtr.h"
#include "UObject/NameTypes.h"

class FInternetAddr;
class FOutputDevice;
class FSocket;

SOCKETS_API DECLARE_LOG_CATEGORY_EXTERN(LogSockets, Log, All);

/** The name of the platform's own socket subsystem, the one ISocketSubsystem::Get returns by default. */
#ifndef PLATFORM_SOCKETSUBSYSTEM
#define PLATFORM_SOCKETSUBSYSTEM FName(TEXT("UNIX"))
#endif

/** Destroys a socket through the subsystem that made it; the deleter of FUniqueSocket. */
class SOCKETS_API FSocketDeleter
{
public:
	FSocketDeleter() = default;
	explicit FSocketDeleter(class ISocketSubsystem* InSubsystem)
		: Subsystem(InSubsystem)
	{
	}

	void operator()(FSocket* Socket) const;

private:
	class ISocketSubsystem* Subsystem = nullptr;
};

/** A socket that is destroyed through its subsystem when the pointer goes away. */
using FUniqueSocket = TUniquePtr<FSocket, FSocketDeleter>;

/** Makes sockets and addresses of one network stack and translates its errors. */
class SOCKETS_API ISocketSubsystem
{
public:
	/**
	 * The socket subsystem of the given name; NAME_None and PLATFORM_SOCKETSUBSYSTEM mean the platform's
	 * own. Returns null (and logs a warning) for a name no subsystem is registered under.
	 */
	static ISocketSubsystem* Get(const FName& SubsystemName = NAME_None);

	/** Shuts down every registered socket subsystem; sockets made by them must be destroyed first. */
	static void ShutdownAllSystems();

	virtual ~ISocketSubsystem() = default;

	/** Prepares the subsystem for use. Returns false with a reason in Error when it cannot. */
	virtual bool Init(FString& Error) = 0;

	/** Releases what Init acquired. */
	virtual void Shutdown() = 0;

	/**
	 * Creates a socket.
	 * @param SocketType NAME_DGram or NAME_Stream.
	 * @param SocketDescription Debug description.
	 * @param bForceUDP Overrides any platform specific protocol with UDP instead.
	 * @return The new socket, or null if it could not be created.
	 */
	virtual FSocket* CreateSocket(const FName& SocketType, const FString& SocketDescription, bool bForceUDP = false);

	/**
	 * Creates a socket using the given protocol name (FNetworkProtocolTypes::IPv4; NAME_None means the
	 * platform's default).
	 */
	virtual FSocket* CreateSocket(
		const FName& SocketType, const FString& SocketDescription, const FName& ProtocolName) = 0;

	/** Creates a socket that is destroyed through this subsystem when the pointer goes away. */
	FUniqueSocket CreateUniqueSocket(const FName& SocketType, const FString& SocketDescription, bool bForceUDP = false);

	/** Creates a socket using the given protocol name, destroyed through this subsystem when the pointer goes away. */
	FUniqueSocket CreateUniqueSocket(
		const FName& SocketType, const FString& SocketDescription, const FName& ProtocolName);

	/** Closes and frees a socket this subsystem made. */
	virtual void DestroySocket(FSocket* Socket) = 0;

	/**
	 * Resolves a host name or dotted-quad text to an IPv4 address (the port of OutAddr is left as it was).
	 * Returns SE_NO_ERROR on success, SE_HOST_NOT_FOUND when the name does not resolve.
	 */
	virtual ESocketErrors GetHostByName(const ANSICHAR* HostName, FInternetAddr& OutAddr) = 0;

	/** An address parsed from a numeric IP address ("A.B.C.D"), or null if the text is not one. */
	virtual TSharedPtr<FInternetAddr> GetAddressFromString(const FString& InAddress) = 0;

	/** Whether chat data must travel separately from game data; never on this platform. */
	virtual bool RequiresChatDataBeSeparate() = 0;

	/** Whether packets must be encrypted; never on this platform. */
	virtual bool RequiresEncryptedPackets() = 0;

	/** The machine's host name. */
	virtual bool GetHostName(FString& HostName) = 0;

	/** A new address of the default family, not yet holding an IP address (IsValid is false). */
	virtual TSharedRef<FInternetAddr> CreateInternetAddr() = 0;

	/** A new address of the named protocol family (FNetworkProtocolTypes::IPv4). */
	virtual TSharedRef<FInternetAddr> CreateInternetAddr(const FName ProtocolType);

	/** Whether the machine has a network device other than loopback. */
	virtual bool HasNetworkDevice() = 0;

	/** The name of the socket API, for the log. */
	virtual const TCHAR* GetSocketAPIName() const = 0;

	/** The calling thread's last socket error. */
	virtual ESocketErrors GetLastErrorCode() = 0;

	/** Translates a platform error code (errno) into the engine's error value. */
	virtual ESocketErrors TranslateErrorCode(int32 Code) = 0;

	/** The text of an error; SE_GET_LAST_ERROR_CODE means the calling thread's last error. */
	virtual const TCHAR* GetSocketError(ESocketErrors Code = SE_GET_LAST_ERROR_CODE);

	/**
	 * The address of this machine that other machines see; bCanBindAll tells whether sockets may bind to
	 * the wildcard address. Problems are written to Out.
	 */
	virtual TSharedRef<FInternetAddr> GetLocalHostAddr(FOutputDevice& Out, bool& bCanBindAll) = 0;

	/** The address sockets should bind to: the wildcard address when binding to all is allowed. */
	virtual TSharedRef<FInternetAddr> GetLocalBindAddr(FOutputDevice& Out);

	/** Whether FSocket::Wait is supported by this socket subsystem. */
	virtual bool IsSocketWaitSupported() const = 0;
};
