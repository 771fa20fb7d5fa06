// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Interfaces/IPv4/IPv4Address.h"
#include "Templates/SharedPointer.h"
#include "Templates/TypeHash.h"

class FInternetAddr;
class ISocketSubsystem;

/**
 * Implements an endpoint for IPv4 networks.
 *
 * An endpoint consists of an IPv4 address and a port number.
 */
struct NETWORKING_API FIPv4Endpoint
{
	/** Holds the endpoint's IP address. */
	FIPv4Address Address;

	/** Holds the endpoint's port number. */
	uint16 Port = 0;

	/** Default constructor: 0.0.0.0:0. */
	FIPv4Endpoint() = default;

	/** Creates and initializes a new IPv4 endpoint with the specified address and port. */
	FIPv4Endpoint(const FIPv4Address& InAddress, uint16 InPort)
		: Address(InAddress)
		, Port(InPort)
	{
	}

	/** Creates and initializes a new IPv4 endpoint from a given FInternetAddr object. */
	explicit FIPv4Endpoint(const TSharedPtr<FInternetAddr>& InternetAddr);

	bool operator==(const FIPv4Endpoint& Other) const { return Address == Other.Address && Port == Other.Port; }
	bool operator!=(const FIPv4Endpoint& Other) const { return !(*this == Other); }

	/** Converts this endpoint to an FInternetAddr object. */
	TSharedRef<FInternetAddr> ToInternetAddr() const;

	/** Converts this endpoint to an FInternetAddr object of the IPv4 family. */
	TSharedRef<FInternetAddr> ToInternetAddrIPV4() const;

	/** The endpoint as "A.B.C.D:Port". */
	FString ToString() const;

	friend uint32 GetTypeHash(const FIPv4Endpoint& Endpoint)
	{
		return HashCombine(GetTypeHash(Endpoint.Address), static_cast<uint32>(Endpoint.Port));
	}

	/** Caches the socket subsystem the conversions to FInternetAddr use. The Networking module calls it. */
	static void Initialize();

	/**
	 * Converts a string to an IPv4 endpoint. Accepts "A.B.C.D:Port" only: an address as
	 * FIPv4Address::Parse takes it, one colon, and a port of one to five decimal digits from 0 to 65535.
	 * Host names, a missing port and spaces are refused; FromHostAndPort resolves host names.
	 * @return true if the string was converted; OutEndpoint is unchanged otherwise.
	 */
	static bool Parse(const FString& EndpointString, FIPv4Endpoint& OutEndpoint);

	/**
	 * Resolves a hostname and port to an IPv4 endpoint: "Host:Port", or "Host" alone for port 0. The host
	 * may be a dotted-quad address or a name the system resolves.
	 * @return true if the host and port were parsed and resolved; OutEndpoint is unchanged otherwise.
	 */
	static bool FromHostAndPort(const FString& HostAndPortString, FIPv4Endpoint& OutEndpoint);

	/** Defines the wild card endpoint, which is 0.0.0.0:0. */
	static const FIPv4Endpoint Any;

	/** ISocketSubsystem::Get() is not thread-safe, so we cache it here. */
	static ISocketSubsystem* CachedSocketSubsystem;
};
