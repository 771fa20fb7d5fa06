// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/TypeHash.h"

/** Implements an IPv4 address. */
struct NETWORKING_API FIPv4Address
{
	union
	{
		/** The address's four parts; A is the first one written ("A.B.C.D"). */
		struct
		{
#if PLATFORM_LITTLE_ENDIAN
			uint8 D;
			uint8 C;
			uint8 B;
			uint8 A;
#else
			uint8 A;
			uint8 B;
			uint8 C;
			uint8 D;
#endif
		};

		/** The IP address value in host byte order. */
		uint32 Value;
	};

	/** Default constructor: the address 0.0.0.0. */
	FIPv4Address()
		: Value(0)
	{
	}

	/** Creates and initializes a new IPv4 address with the specified components ("InA.InB.InC.InD"). */
	FIPv4Address(uint8 InA, uint8 InB, uint8 InC, uint8 InD)
		: Value((uint32(InA) << 24) | (uint32(InB) << 16) | (uint32(InC) << 8) | uint32(InD))
	{
	}

	/** Creates and initializes a new IPv4 address with the specified value (host byte order). */
	explicit FIPv4Address(uint32 InValue)
		: Value(InValue)
	{
	}

	bool operator==(const FIPv4Address& Other) const
	{
		return Value == Other.Value;
	}
	bool operator!=(const FIPv4Address& Other) const
	{
		return Value != Other.Value;
	}

	FIPv4Address operator|(const FIPv4Address& Other) const
	{
		return FIPv4Address(Value | Other.Value);
	}
	FIPv4Address operator&(const FIPv4Address& Other) const
	{
		return FIPv4Address(Value & Other.Value);
	}
	FIPv4Address operator~() const
	{
		return FIPv4Address(~Value);
	}

	/** Checks whether this IP address is a global multicast address (224.0.1.0 to 238.255.255.255). */
	bool IsGlobalMulticast() const
	{
		return (A >= 224 && A <= 238) && !(A == 224 && B == 0 && C == 0);
	}

	/** Checks whether this IP address is link local (169.254.x.x). */
	bool IsLinkLocal() const
	{
		return A == 169 && B == 254;
	}

	/** Checks whether this IP address is a link local multicast address (224.0.0.x). */
	bool IsLinkLocalMulticast() const
	{
		return A == 224 && B == 0 && C == 0;
	}

	/** Checks whether this IP address is a loopback address. Loopback addresses have the form 127.x.x.x. */
	bool IsLoopbackAddress() const
	{
		return A == 127;
	}

	/** Checks whether this IP address is a multicast address (224.0.0.0 to 239.255.255.255). */
	bool IsMulticastAddress() const
	{
		return A >= 224 && A <= 239;
	}

	/** Checks whether this IP address is an organization local multicast address (239.192.x.x to 239.195.x.x). */
	bool IsOrganizationLocalMulticast() const
	{
		return A == 239 && B >= 192 && B <= 195;
	}

	/** Checks whether this IP address is the multicast address the session frontend uses, 230.0.0.1. */
	bool IsSessionFrontendMulticast() const
	{
		return A == 230 && B == 0 && C == 0 && D == 1;
	}

	/** Checks whether this IP address is a site local address (10.x.x.x, 172.16-31.x.x, 192.168.x.x). */
	bool IsSiteLocalAddress() const
	{
		return A == 10 || (A == 172 && B >= 16 && B <= 31) || (A == 192 && B == 168);
	}

	/** Checks whether this IP address is a site local multicast address (239.255.x.x). */
	bool IsSiteLocalMulticast() const
	{
		return A == 239 && B == 255;
	}

	/** The address as "A.B.C.D". */
	FString ToString() const;

	/**
	 * Converts a string to an IPv4 address. Accepts exactly four decimal numbers from 0 to 255 of one to
	 * three digits, separated by dots; nothing else, not even spaces around them.
	 * @return true if the string was converted; OutAddress is unchanged otherwise.
	 */
	static bool Parse(const FString& AddressString, FIPv4Address& OutAddress);

	friend uint32 GetTypeHash(const FIPv4Address& Address)
	{
		return Address.Value;
	}

	/** Defines the wild card address, which is 0.0.0.0. */
	static const FIPv4Address Any;

	/** Defines the internal loopback address, which is 127.0.0.1. */
	static const FIPv4Address InternalLoopback;

	/** Defines the broadcast address for the 'zero network' (i.e. LAN), which is 255.255.255.255. */
	static const FIPv4Address LanBroadcast;
};
