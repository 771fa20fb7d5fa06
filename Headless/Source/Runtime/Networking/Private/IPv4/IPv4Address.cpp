// Copyright Orvane. All Rights Reserved.

#include "Interfaces/IPv4/IPv4Address.h"

#include "IPv4/IPv4Parsing.h"

const FIPv4Address FIPv4Address::Any(0, 0, 0, 0);
const FIPv4Address FIPv4Address::InternalLoopback(127, 0, 0, 1);
const FIPv4Address FIPv4Address::LanBroadcast(255, 255, 255, 255);

FString FIPv4Address::ToString() const
{
	return FString::Printf(TEXT("%u.%u.%u.%u"), uint32(A), uint32(B), uint32(C), uint32(D));
}

bool FIPv4Address::Parse(const FString& AddressString, FIPv4Address& OutAddress)
{
	uint32 Parsed = 0;
	if (!IPv4Parsing::ReadAddress(*AddressString, AddressString.Len(), Parsed))
	{
		return false;
	}
	OutAddress.Value = Parsed;
	return true;
}
