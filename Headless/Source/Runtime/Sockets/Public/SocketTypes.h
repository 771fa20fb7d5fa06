// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Net/Common/Sockets/SocketErrors.h"
#include "UObject/NameTypes.h"

/** The socket type names ISocketSubsystem::CreateSocket understands: datagram (UDP) and stream (TCP). */
SOCKETS_API extern const FName NAME_DGram;
SOCKETS_API extern const FName NAME_Stream;

/** Indicates the type of socket being used (streaming or datagram). */
enum ESocketType
{
	/** Not bound to a protocol yet. */
	SOCKTYPE_Unknown,
	/** A UDP type socket. */
	SOCKTYPE_Datagram,
	/** A TCP type socket. */
	SOCKTYPE_Streaming
};

/** The state of a socket's connection. */
enum ESocketConnectionState
{
	SCS_NotConnected,
	SCS_Connected,
	/** Indicates that the end point refused the connection or couldn't be reached. */
	SCS_ConnectionError
};

/** Which directions FSocket::Shutdown closes. */
enum class ESocketShutdownMode
{
	Read,
	Write,
	ReadWrite
};

/** The address families a socket or an address can use. */
enum class ESocketProtocolFamily : uint8
{
	None,
	IPv4,
	IPv6
};

/** The protocol names of the address families, as passed to CreateSocket and CreateInternetAddr. */
class SOCKETS_API FNetworkProtocolTypes
{
public:
	static const FName IPv4;
	static const FName IPv6;
};

/** Flags that change how FSocket::Recv and FSocket::RecvFrom read. */
namespace ESocketReceiveFlags
{
	enum Type
	{
		/** Return as much data as is currently available in the input queue, up to the buffer size. */
		None = 0,
		/** Copy the data into the buffer but leave it in the input queue for the next read. */
		Peek = 2,
		/** Block until the buffer is full or the connection closes (stream sockets). */
		WaitAll = 0x100,
	};
} // namespace ESocketReceiveFlags

/** The conditions FSocket::Wait waits for. */
namespace ESocketWaitConditions
{
	enum Type
	{
		/** Wait until data is available for reading. */
		WaitForRead,
		/** Wait until data can be written. */
		WaitForWrite,
		/** Wait until data is available for reading or can be written. */
		WaitForReadOrWrite,
	};
} // namespace ESocketWaitConditions
