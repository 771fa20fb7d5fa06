// Copyright Orvane. All Rights Reserved.

#include "Interfaces/IPv4/IPv4Endpoint.h"

#include "Containers/StringConv.h"
#include "IPAddress.h"
#include "IPv4/IPv4Parsing.h"
#include "SocketSubsystem.h"

const FIPv4Endpoint FIPv4Endpoint::Any(FIPv4Address(0, 0, 0, 0), 0);
ISocketSubsystem* FIPv4Endpoint::CachedSocketSubsystem = nullptr;

namespace
{
	ISocketSubsystem* GetSocketSubsystem()
	{
		return FIPv4Endpoint::CachedSocketSubsystem != nullptr ? FIPv4Endpoint::CachedSocketSubsystem
															   : ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM);
	}
} // namespace

FIPv4Endpoint::FIPv4Endpoint(const TSharedPtr<FInternetAddr>& InternetAddr)
{
	if (InternetAddr.IsValid())
	{
		uint32 Ip = 0;
		InternetAddr->GetIp(Ip);
		Address = FIPv4Address(Ip);
		Port = static_cast<uint16>(InternetAddr->GetPort());
	}
}

TSharedRef<FInternetAddr> FIPv4Endpoint::ToInternetAddr() const
{
	TSharedRef<FInternetAddr> InternetAddr = GetSocketSubsystem()->CreateInternetAddr();
	InternetAddr->SetIp(Address.Value);
	InternetAddr->SetPort(Port);
	return InternetAddr;
}

TSharedRef<FInternetAddr> FIPv4Endpoint::ToInternetAddrIPV4() const
{
	TSharedRef<FInternetAddr> InternetAddr = GetSocketSubsystem()->CreateInternetAddr(FNetworkProtocolTypes::IPv4);
	InternetAddr->SetIp(Address.Value);
	InternetAddr->SetPort(Port);
	return InternetAddr;
}

FString FIPv4Endpoint::ToString() const
{
	return FString::Printf(TEXT("%s:%u"), *Address.ToString(), uint32(Port));
}

void FIPv4Endpoint::Initialize()
{
	CachedSocketSubsystem = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM);
}

bool FIPv4Endpoint::Parse(const FString& EndpointString, FIPv4Endpoint& OutEndpoint)
{
	int32 Colon = INDEX_NONE;
	if (!EndpointString.FindChar(TEXT(':'), Colon))
	{
		return false;
	}
	const TCHAR* Text = *EndpointString;
	uint32 Ip = 0;
	uint16 ParsedPort = 0;
	// The port reader refuses a second colon, so "A.B.C.D:1:2" fails there.
	if (!IPv4Parsing::ReadAddress(Text, Colon, Ip) ||
		!IPv4Parsing::ReadPort(Text + Colon + 1, EndpointString.Len() - Colon - 1, ParsedPort))
	{
		return false;
	}
	OutEndpoint = FIPv4Endpoint(FIPv4Address(Ip), ParsedPort);
	return true;
}

bool FIPv4Endpoint::FromHostAndPort(const FString& HostAndPortString, FIPv4Endpoint& OutEndpoint)
{
	FString Host = HostAndPortString;
	uint16 ParsedPort = 0;
	int32 Colon = INDEX_NONE;
	if (HostAndPortString.FindLastChar(TEXT(':'), Colon))
	{
		Host = HostAndPortString.Left(Colon);
		const FString PortText = HostAndPortString.Mid(Colon + 1);
		if (!IPv4Parsing::ReadPort(*PortText, PortText.Len(), ParsedPort))
		{
			return false;
		}
	}
	if (Host.IsEmpty())
	{
		return false;
	}

	FIPv4Address HostAddress;
	if (!FIPv4Address::Parse(Host, HostAddress))
	{
		ISocketSubsystem* Subsystem = GetSocketSubsystem();
		TSharedRef<FInternetAddr> Resolved = Subsystem->CreateInternetAddr();
		if (Subsystem->GetHostByName(TCHAR_TO_UTF8(*Host), *Resolved) != SE_NO_ERROR)
		{
			return false;
		}
		uint32 Ip = 0;
		Resolved->GetIp(Ip);
		HostAddress = FIPv4Address(Ip);
	}
	OutEndpoint = FIPv4Endpoint(HostAddress, ParsedPort);
	return true;
}
