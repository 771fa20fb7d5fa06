// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Interfaces/IPv4/IPv4Address.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"

class FSocket;

/**
 * Implements a fluent builder for UDP sockets.
 *
 * Unless told otherwise the socket is non-blocking, not bound, not reusable, without broadcast, with
 * multicast loopback off and a multicast time-to-live of 1, and keeps the system's buffer sizes.
 */
class NETWORKING_API FUdpSocketBuilder
{
public:
	/**
	 * Creates and initializes a new instance.
	 * @param InDescription Debug description for the socket.
	 */
	explicit FUdpSocketBuilder(const FString& InDescription);

	/** Sets socket operations to be blocking. */
	FUdpSocketBuilder& AsBlocking()
	{
		Blocking = true;
		return *this;
	}

	/** Sets socket operations to be non-blocking. */
	FUdpSocketBuilder& AsNonBlocking()
	{
		Blocking = false;
		return *this;
	}

	/** Makes the bound address reusable by other sockets. */
	FUdpSocketBuilder& AsReusable()
	{
		Reusable = true;
		return *this;
	}

	/** Sets the local address to bind the socket to (the port stays as it was, 0 by default). */
	FUdpSocketBuilder& BoundToAddress(const FIPv4Address& Address)
	{
		BoundEndpoint = FIPv4Endpoint(Address, BoundEndpoint.Port);
		Bound = true;
		return *this;
	}

	/** Sets the local endpoint to bind the socket to. */
	FUdpSocketBuilder& BoundToEndpoint(const FIPv4Endpoint& Endpoint)
	{
		BoundEndpoint = Endpoint;
		Bound = true;
		return *this;
	}

	/** Sets the local port to bind the socket to (the address stays as it was, the wildcard by default). */
	FUdpSocketBuilder& BoundToPort(uint16 Port)
	{
		BoundEndpoint = FIPv4Endpoint(BoundEndpoint.Address, Port);
		Bound = true;
		return *this;
	}

	/** Joins the socket to the specified multicast group, on the interface the system chooses. */
	FUdpSocketBuilder& JoinedToGroup(const FIPv4Address& GroupAddress)
	{
		JoinedGroups.Add({GroupAddress, FIPv4Address::Any});
		return *this;
	}

	/** Joins the socket to the specified multicast group on the interface that has InterfaceAddress. */
	FUdpSocketBuilder& JoinedToGroup(const FIPv4Address& GroupAddress, const FIPv4Address& InterfaceAddress)
	{
		JoinedGroups.Add({GroupAddress, InterfaceAddress});
		return *this;
	}

	/** Enables broadcasting. */
	FUdpSocketBuilder& WithBroadcast()
	{
		AllowBroadcast = true;
		return *this;
	}

	/** Enables multicast loopback: multicast datagrams the socket sends reach listeners on this host too. */
	FUdpSocketBuilder& WithMulticastLoopback()
	{
		MulticastLoopback = true;
		return *this;
	}

	/** Sets the multicast time-to-live. */
	FUdpSocketBuilder& WithMulticastTtl(uint8 TimeToLive)
	{
		MulticastTtl = TimeToLive;
		return *this;
	}

	/** Sets the interface the socket sends multicast datagrams through. */
	FUdpSocketBuilder& WithMulticastInterface(const FIPv4Address& InterfaceAddress)
	{
		MulticastInterface = InterfaceAddress;
		return *this;
	}

	/** Specifies the desired size of the receive buffer in bytes (0 = use default). */
	FUdpSocketBuilder& WithReceiveBufferSize(int32 SizeInBytes)
	{
		ReceiveBufferSize = SizeInBytes;
		return *this;
	}

	/** Specifies the desired size of the send buffer in bytes (0 = use default). */
	FUdpSocketBuilder& WithSendBufferSize(int32 SizeInBytes)
	{
		SendBufferSize = SizeInBytes;
		return *this;
	}

	/** Implicit conversion operator that builds the socket as configured. */
	operator FSocket*() const { return Build(); }

	/**
	 * Builds the socket as configured. Returns null, after logging an Error that names the socket, the
	 * step that failed (for binding: the endpoint) and the system's reason, when a step fails.
	 */
	FSocket* Build() const;

protected:
	/** Holds the list of joined multicast groups. */
	struct FMulticastGroup
	{
		FIPv4Address GroupAddress;
		FIPv4Address InterfaceAddress;
	};

	/** Holds a flag indicating whether broadcasts will be enabled. */
	bool AllowBroadcast = false;

	/** Holds a flag indicating whether socket operations are blocking. */
	bool Blocking = false;

	/** Holds a flag indicating whether the socket should be bound. */
	bool Bound = false;

	/** Holds the IP address (and port) that the socket will be bound to. */
	FIPv4Endpoint BoundEndpoint;

	/** Holds the socket's debug description text. */
	FString Description;

	/** Holds the multicast groups to join. */
	TArray<FMulticastGroup> JoinedGroups;

	/** Holds the IP address of the interface to use for outgoing multicast datagrams. */
	FIPv4Address MulticastInterface;

	/** Holds a flag indicating whether multicast loopback will be enabled. */
	bool MulticastLoopback = false;

	/** Holds the multicast time to live. */
	uint8 MulticastTtl = 1;

	/** The desired size of the receive buffer in bytes (0 = default). */
	int32 ReceiveBufferSize = 0;

	/** Holds a flag indicating whether the bound address can be reused by other sockets. */
	bool Reusable = false;

	/** The desired size of the send buffer in bytes (0 = default). */
	int32 SendBufferSize = 0;
};
