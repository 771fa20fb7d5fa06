// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/Timespan.h"
#include "SocketTypes.h"
#include "UObject/NameTypes.h"

class FInternetAddr;

/**
 * A socket of the platform, made by ISocketSubsystem::CreateSocket and destroyed with
 * ISocketSubsystem::DestroySocket. Addresses and ports are passed in host byte order.
 *
 * One thread may receive or wait on a socket while another sends on it, changes its options or
 * closes it: Close wakes a thread blocked in Wait, WaitForPendingConnection, Recv or RecvFrom at once.
 */
class SOCKETS_API FSocket
{
public:
	FSocket() = default;

	/** Specifies the type of socket being created and a description for the log. */
	FSocket(ESocketType InSocketType, const FString& InSocketDescription);

	/** Specifies the type of socket being created, a description for the log and its protocol name. */
	FSocket(ESocketType InSocketType, const FString& InSocketDescription, const FName& InSocketProtocol);

	virtual ~FSocket() = default;

	FSocket(const FSocket&) = delete;
	FSocket& operator=(const FSocket&) = delete;

	/** Closes one or both directions of the socket. Returns false if the platform refused. */
	virtual bool Shutdown(ESocketShutdownMode Mode) = 0;

	/** Closes the socket. Returns false if it was already closed. */
	virtual bool Close() = 0;

	/** Binds the socket to a local address and port. */
	virtual bool Bind(const FInternetAddr& Addr) = 0;

	/** Connects the socket to a remote address (for datagram sockets: sets the default destination). */
	virtual bool Connect(const FInternetAddr& Addr) = 0;

	/** Places a stream socket into listening mode. */
	virtual bool Listen(int32 MaxBacklog) = 0;

	/**
	 * Waits for a pending connection on a listening socket.
	 * @param bHasPendingConnection Will tell whether a connection is pending.
	 * @param WaitTime The longest time to wait; zero returns at once.
	 * @return true unless an error occurred or the socket was closed.
	 */
	virtual bool WaitForPendingConnection(bool& bHasPendingConnection, const FTimespan& WaitTime) = 0;

	/**
	 * Tells, without waiting, whether data can be read. PendingDataSize is the size of the next datagram
	 * (datagram sockets) or of the data queued (stream sockets).
	 */
	virtual bool HasPendingData(uint32& PendingDataSize) = 0;

	/** Accepts a pending connection; the new socket is heap-allocated, or null on failure. */
	virtual FSocket* Accept(const FString& InSocketDescription) = 0;

	/** Accepts a pending connection and reports the remote address. */
	virtual FSocket* Accept(FInternetAddr& OutAddr, const FString& InSocketDescription) = 0;

	/** Sends a datagram (or data on a stream socket) to Destination. BytesSent is what was sent. */
	virtual bool SendTo(const uint8* Data, int32 Count, int32& BytesSent, const FInternetAddr& Destination);

	/** Sends data on a connected socket. */
	virtual bool Send(const uint8* Data, int32 Count, int32& BytesSent);

	/**
	 * Reads one datagram (or the data available on a stream socket) and its sender's address. A datagram
	 * longer than BufferSize is cut to BufferSize bytes. On a non-blocking socket with nothing to read it
	 * returns false and the last error is SE_EWOULDBLOCK.
	 */
	virtual bool RecvFrom(uint8* Data, int32 BufferSize, int32& BytesRead, FInternetAddr& Source,
		ESocketReceiveFlags::Type Flags = ESocketReceiveFlags::None);

	/** Reads data from a connected socket. */
	virtual bool Recv(
		uint8* Data, int32 BufferSize, int32& BytesRead, ESocketReceiveFlags::Type Flags = ESocketReceiveFlags::None);

	/**
	 * Blocks until the condition is met. Returns true if it was met; false if the time limit expired, an
	 * error occurred or the socket was closed while waiting.
	 */
	virtual bool Wait(ESocketWaitConditions::Type Condition, FTimespan WaitTime) = 0;

	/** The connection state of the socket. */
	virtual ESocketConnectionState GetConnectionState() = 0;

	/** The local address the socket is bound to. */
	virtual void GetAddress(FInternetAddr& OutAddr) = 0;

	/** The address of the connected peer; false if the socket is not connected. */
	virtual bool GetPeerAddress(FInternetAddr& OutAddr) = 0;

	/** Makes reads and writes return at once instead of blocking. */
	virtual bool SetNonBlocking(bool bIsNonBlocking = true) = 0;

	/** Allows sending to broadcast addresses. */
	virtual bool SetBroadcast(bool bAllowBroadcast = true) = 0;

	/** Disables Nagle's algorithm on a stream socket. */
	virtual bool SetNoDelay(bool bIsNoDelay = true) = 0;

	/** Joins a multicast group on the interface the system chooses. */
	virtual bool JoinMulticastGroup(const FInternetAddr& GroupAddress) = 0;

	/** Joins a multicast group on the interface that has InterfaceAddress. */
	virtual bool JoinMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress) = 0;

	/** Leaves a multicast group joined on the interface the system chose. */
	virtual bool LeaveMulticastGroup(const FInternetAddr& GroupAddress) = 0;

	/** Leaves a multicast group joined on the interface that has InterfaceAddress. */
	virtual bool LeaveMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress) = 0;

	/**
	 * Enables or disables multicast loopback (UDP only): whether multicast datagrams this socket sends
	 * are also delivered to listeners on this host.
	 */
	virtual bool SetMulticastLoopback(bool bLoopback) = 0;

	/** Sets the time-to-live of the multicast datagrams this socket sends. */
	virtual bool SetMulticastTtl(uint8 TimeToLive) = 0;

	/** Sends multicast datagrams through the interface that has InterfaceAddress. */
	virtual bool SetMulticastInterface(const FInternetAddr& InterfaceAddress) = 0;

	/** Allows binding to an address and port that another socket uses. */
	virtual bool SetReuseAddr(bool bAllowReuse = true) = 0;

	/** Sets whether closing waits up to Timeout seconds for unsent data. */
	virtual bool SetLinger(bool bShouldLinger = true, int32 Timeout = 0) = 0;

	/** Queues extended error information (ICMP errors) for the socket. */
	virtual bool SetRecvErr(bool bUseErrorQueue = true) = 0;

	/** Sets the send buffer size; NewSize is the size the platform actually uses. */
	virtual bool SetSendBufferSize(int32 Size, int32& NewSize) = 0;

	/** Sets the receive buffer size; NewSize is the size the platform actually uses. */
	virtual bool SetReceiveBufferSize(int32 Size, int32& NewSize) = 0;

	/** The local port the socket is bound to, in host byte order; 0 if it is not bound. */
	virtual int32 GetPortNo() = 0;

	/** The type of the socket. */
	ESocketType GetSocketType() const { return SocketType; }

	/** The description given when the socket was created. */
	FString GetDescription() const { return SocketDescription; }

	/** The protocol name the socket was created with. */
	FName GetProtocol() const { return SocketProtocol; }

protected:
	/** Indicates the type of socket this is. */
	const ESocketType SocketType = SOCKTYPE_Unknown;

	/** Debug description of socket usage. */
	FString SocketDescription;

	/** Protocol used in creation of the socket. */
	FName SocketProtocol;
};
