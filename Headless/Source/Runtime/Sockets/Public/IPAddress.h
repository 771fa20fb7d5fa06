// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "SocketTypes.h"
#include "Templates/SharedPointer.h"
#include "UObject/NameTypes.h"

/**
 * Represents an internet address: an IP address and a port. Addresses are made by
 * ISocketSubsystem::CreateInternetAddr; the values passed in and out are in host byte order.
 */
class SOCKETS_API FInternetAddr
{
protected:
	/** Addresses come from the socket subsystem, which knows the platform's representation. */
	FInternetAddr() = default;

public:
	virtual ~FInternetAddr() = default;

	/** Compares the logical endpoints (address family, IP and port) rather than the stored bytes. */
	virtual bool CompareEndpoints(const FInternetAddr& InAddr) const { return *this == InAddr; }

	/** Sets the IP address from its bytes in network byte order (4 bytes for IPv4). */
	virtual void SetRawIp(const TArray<uint8>& RawAddr) = 0;

	/** The IP address as bytes in network byte order. */
	virtual TArray<uint8> GetRawIp() const = 0;

	/** Sets the IP address from a host byte order value. */
	virtual void SetIp(uint32 InAddr) = 0;

	/**
	 * Sets the IP address from a dotted-quad string ("A.B.C.D"). bIsValid tells whether the text was an
	 * address; the stored address does not change when it was not.
	 */
	virtual void SetIp(const TCHAR* InAddr, bool& bIsValid) = 0;

	/** Copies the IP address into a host byte order value. */
	virtual void GetIp(uint32& OutAddr) const = 0;

	/** Sets the port number from a host byte order value. */
	virtual void SetPort(int32 InPort) = 0;

	/** Copies the port number into a host byte order value. */
	virtual void GetPort(int32& OutPort) const { OutPort = GetPort(); }

	/** The port number in host byte order. */
	virtual int32 GetPort() const = 0;

	/** Sets the port as the platform stores it; the same as SetPort on this platform. */
	virtual void SetPlatformPort(int32 InPort) { SetPort(InPort); }

	/** The port as the platform stores it; the same as GetPort on this platform. */
	virtual int32 GetPlatformPort() const { return GetPort(); }

	/** Sets the address to the wildcard address (0.0.0.0 for IPv4). */
	virtual void SetAnyAddress() = 0;

	/** Sets the address to the broadcast address (255.255.255.255 for IPv4). */
	virtual void SetBroadcastAddress() = 0;

	/** Sets the address to the loopback address (127.0.0.1 for IPv4). */
	virtual void SetLoopbackAddress() = 0;

	/** The address as text: "A.B.C.D", or "A.B.C.D:Port" when bAppendPort is true. */
	virtual FString ToString(bool bAppendPort) const = 0;

	/** True if both hold the same address family, IP and port. */
	virtual bool operator==(const FInternetAddr& Other) const
	{
		return GetProtocolType() == Other.GetProtocolType() && GetRawIp() == Other.GetRawIp() &&
			   GetPort() == Other.GetPort();
	}

	bool operator!=(const FInternetAddr& Other) const { return !(*this == Other); }

	/** Hash for use in maps. */
	virtual uint32 GetTypeHash() const = 0;

	/** True once the address holds an IP address of a known family (set by any of the setters). */
	virtual bool IsValid() const = 0;

	/** A new address with the same data. */
	virtual TSharedRef<FInternetAddr> Clone() const = 0;

	/** The protocol name of the address family stored (FNetworkProtocolTypes::IPv4 here). */
	virtual FName GetProtocolType() const { return FNetworkProtocolTypes::IPv4; }

	/** Writes the address to the log, for debugging. */
	virtual void DumpAddrData() const {}
};
