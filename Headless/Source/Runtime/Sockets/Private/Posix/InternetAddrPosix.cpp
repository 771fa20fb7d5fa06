// Copyright Orvane. All Rights Reserved.

#include "Posix/InternetAddrPosix.h"

#include "Containers/StringConv.h"
#include "SocketSubsystem.h"
#include "Templates/TypeHash.h"

#include <arpa/inet.h>
#include <cstring>

FInternetAddrPosix::FInternetAddrPosix()
{
	// AF_UNSPEC until an address is set: a fresh address is not a valid one.
	std::memset(&Addr, 0, sizeof(Addr));
	Addr.sin_family = AF_UNSPEC;
}

FInternetAddrPosix::FInternetAddrPosix(const sockaddr_in& InAddr)
	: Addr(InAddr)
{
}

void FInternetAddrPosix::SetRawIp(const TArray<uint8>& RawAddr)
{
	if (RawAddr.Num() != 4)
	{
		UE_LOG(LogSockets, Warning, TEXT("SetRawIp: %d bytes are not an IPv4 address; the address is unchanged."),
			RawAddr.Num());
		return;
	}
	std::memcpy(&Addr.sin_addr.s_addr, RawAddr.GetData(), 4);
	Addr.sin_family = AF_INET;
}

TArray<uint8> FInternetAddrPosix::GetRawIp() const
{
	TArray<uint8> Raw;
	if (Addr.sin_family == AF_INET)
	{
		const uint8* Bytes = reinterpret_cast<const uint8*>(&Addr.sin_addr.s_addr);
		Raw.Append(Bytes, 4);
	}
	return Raw;
}

void FInternetAddrPosix::SetIp(uint32 InAddr)
{
	Addr.sin_family = AF_INET;
	Addr.sin_addr.s_addr = htonl(InAddr);
}

void FInternetAddrPosix::SetIp(const TCHAR* InAddr, bool& bIsValid)
{
	// inet_pton takes exactly four decimal parts without leading zeros: no octal or shortened forms.
	in_addr Parsed;
	bIsValid = InAddr != nullptr && inet_pton(AF_INET, TCHAR_TO_UTF8(InAddr), &Parsed) == 1;
	if (bIsValid)
	{
		Addr.sin_family = AF_INET;
		Addr.sin_addr = Parsed;
	}
}

void FInternetAddrPosix::GetIp(uint32& OutAddr) const
{
	OutAddr = ntohl(Addr.sin_addr.s_addr);
}

void FInternetAddrPosix::SetPort(int32 InPort)
{
	Addr.sin_port = htons(static_cast<uint16>(InPort));
}

int32 FInternetAddrPosix::GetPort() const
{
	return ntohs(Addr.sin_port);
}

void FInternetAddrPosix::SetAnyAddress()
{
	SetIp(INADDR_ANY);
}

void FInternetAddrPosix::SetBroadcastAddress()
{
	SetIp(INADDR_BROADCAST);
}

void FInternetAddrPosix::SetLoopbackAddress()
{
	SetIp(INADDR_LOOPBACK);
}

FString FInternetAddrPosix::ToString(bool bAppendPort) const
{
	const uint32 Ip = ntohl(Addr.sin_addr.s_addr);
	FString Text =
		FString::Printf(TEXT("%u.%u.%u.%u"), (Ip >> 24) & 0xFF, (Ip >> 16) & 0xFF, (Ip >> 8) & 0xFF, Ip & 0xFF);
	if (bAppendPort)
	{
		Text += FString::Printf(TEXT(":%d"), GetPort());
	}
	return Text;
}

bool FInternetAddrPosix::operator==(const FInternetAddr& Other) const
{
	sockaddr_in OtherAddr;
	const bool bOtherValid = ToSockAddr(Other, OtherAddr);
	if (!IsValid() || !bOtherValid)
	{
		return IsValid() == bOtherValid && GetPort() == Other.GetPort();
	}
	return Addr.sin_addr.s_addr == OtherAddr.sin_addr.s_addr && Addr.sin_port == OtherAddr.sin_port;
}

uint32 FInternetAddrPosix::GetTypeHash() const
{
	return HashCombine(static_cast<uint32>(ntohl(Addr.sin_addr.s_addr)), static_cast<uint32>(GetPort()));
}

bool FInternetAddrPosix::IsValid() const
{
	return Addr.sin_family == AF_INET;
}

TSharedRef<FInternetAddr> FInternetAddrPosix::Clone() const
{
	return MakeShared<FInternetAddrPosix>(Addr);
}

void FInternetAddrPosix::DumpAddrData() const
{
	UE_LOG(LogSockets, Display, TEXT("Address: %s (%s)"), *ToString(true), IsValid() ? TEXT("IPv4") : TEXT("unset"));
}

bool FInternetAddrPosix::ToSockAddr(const FInternetAddr& InAddr, sockaddr_in& OutAddr)
{
	std::memset(&OutAddr, 0, sizeof(OutAddr));
	if (!InAddr.IsValid() || InAddr.GetProtocolType() != FNetworkProtocolTypes::IPv4)
	{
		return false;
	}
	uint32 Ip = 0;
	InAddr.GetIp(Ip);
	OutAddr.sin_family = AF_INET;
	OutAddr.sin_addr.s_addr = htonl(Ip);
	OutAddr.sin_port = htons(static_cast<uint16>(InAddr.GetPort()));
	return true;
}

void FInternetAddrPosix::FromSockAddr(const sockaddr_in& InAddr, FInternetAddr& OutAddr)
{
	OutAddr.SetIp(ntohl(InAddr.sin_addr.s_addr));
	OutAddr.SetPort(ntohs(InAddr.sin_port));
}
