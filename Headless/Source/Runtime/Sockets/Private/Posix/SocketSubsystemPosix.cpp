// Copyright Orvane. All Rights Reserved.

#include "Posix/SocketSubsystemPosix.h"

#include "Containers/StringConv.h"
#include "Misc/OutputDevice.h"
#include "Posix/InternetAddrPosix.h"
#include "Posix/SocketErrorsPosix.h"
#include "Posix/SocketPosix.h"

#include <arpa/inet.h>
#include <cerrno>
#include <ifaddrs.h>
#include <net/if.h>
#include <netdb.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
	/** The first IPv4 address of an interface that is up and is not loopback; false if there is none. */
	bool FindExternalAddress(sockaddr_in& OutAddr)
	{
		ifaddrs* Interfaces = nullptr;
		if (getifaddrs(&Interfaces) != 0)
		{
			return false;
		}
		bool bFound = false;
		for (const ifaddrs* Interface = Interfaces; Interface != nullptr && !bFound; Interface = Interface->ifa_next)
		{
			if (Interface->ifa_addr != nullptr && Interface->ifa_addr->sa_family == AF_INET &&
				(Interface->ifa_flags & IFF_UP) != 0 && (Interface->ifa_flags & IFF_LOOPBACK) == 0)
			{
				OutAddr = *reinterpret_cast<const sockaddr_in*>(Interface->ifa_addr);
				bFound = true;
			}
		}
		freeifaddrs(Interfaces);
		return bFound;
	}
} // namespace

bool FSocketSubsystemPosix::Init(FString& Error)
{
	return true;
}

void FSocketSubsystemPosix::Shutdown() {}

FSocket* FSocketSubsystemPosix::CreateSocket(
	const FName& SocketType, const FString& SocketDescription, const FName& ProtocolName)
{
	if (!ProtocolName.IsNone() && ProtocolName != FNetworkProtocolTypes::IPv4)
	{
		UE_LOG(LogSockets, Error, TEXT("Socket '%s': protocol '%s' is not supported; only IPv4 is."),
			*SocketDescription, *ProtocolName.ToString());
		SocketErrorsPosix::Record(EAFNOSUPPORT);
		return nullptr;
	}

	int Type = 0;
	int Protocol = 0;
	ESocketType EngineType = SOCKTYPE_Unknown;
	if (SocketType == NAME_DGram)
	{
		Type = SOCK_DGRAM;
		Protocol = IPPROTO_UDP;
		EngineType = SOCKTYPE_Datagram;
	}
	else if (SocketType == NAME_Stream)
	{
		Type = SOCK_STREAM;
		Protocol = IPPROTO_TCP;
		EngineType = SOCKTYPE_Streaming;
	}
	else
	{
		UE_LOG(LogSockets, Error, TEXT("Socket '%s': unknown socket type '%s' (expected DGram or Stream)."),
			*SocketDescription, *SocketType.ToString());
		SocketErrorsPosix::Record(ESOCKTNOSUPPORT);
		return nullptr;
	}

	const int Descriptor = socket(AF_INET, Type | SOCK_CLOEXEC, Protocol);
	if (Descriptor < 0)
	{
		const int Error = errno;
		SocketErrorsPosix::Record(Error);
		UE_LOG(LogSockets, Warning, TEXT("Socket '%s' could not be created: %s"), *SocketDescription,
			GetSocketError(TranslateErrorCode(Error)));
		return nullptr;
	}
	return new FSocketPosix(Descriptor, EngineType, SocketDescription, FNetworkProtocolTypes::IPv4);
}

void FSocketSubsystemPosix::DestroySocket(FSocket* Socket)
{
	delete Socket;
}

ESocketErrors FSocketSubsystemPosix::GetHostByName(const ANSICHAR* HostName, FInternetAddr& OutAddr)
{
	if (HostName == nullptr || HostName[0] == '\0')
	{
		return SE_HOST_NOT_FOUND;
	}
	addrinfo Hints = {};
	Hints.ai_family = AF_INET;
	Hints.ai_socktype = SOCK_DGRAM;
	addrinfo* Results = nullptr;
	const int Status = getaddrinfo(HostName, nullptr, &Hints, &Results);
	if (Status != 0)
	{
		switch (Status)
		{
			case EAI_AGAIN:
				return SE_TRY_AGAIN;
			case EAI_FAIL:
				return SE_NO_RECOVERY;
			case EAI_NODATA:
				return SE_NO_DATA;
			case EAI_ADDRFAMILY:
				return SE_ADDRFAMILY;
			case EAI_SYSTEM:
				return SE_SYSTEM;
			default:
				return SE_HOST_NOT_FOUND;
		}
	}
	const sockaddr_in Resolved = *reinterpret_cast<const sockaddr_in*>(Results->ai_addr);
	freeaddrinfo(Results);
	OutAddr.SetIp(ntohl(Resolved.sin_addr.s_addr));
	return SE_NO_ERROR;
}

TSharedPtr<FInternetAddr> FSocketSubsystemPosix::GetAddressFromString(const FString& InAddress)
{
	TSharedRef<FInternetAddr> Addr = CreateInternetAddr();
	bool bIsValid = false;
	Addr->SetIp(*InAddress, bIsValid);
	return bIsValid ? TSharedPtr<FInternetAddr>(Addr) : TSharedPtr<FInternetAddr>();
}

bool FSocketSubsystemPosix::GetHostName(FString& HostName)
{
	char Buffer[256] = {};
	if (gethostname(Buffer, sizeof(Buffer) - 1) != 0)
	{
		SocketErrorsPosix::Record(errno);
		return false;
	}
	HostName = FString(UTF8_TO_TCHAR(Buffer));
	return true;
}

TSharedRef<FInternetAddr> FSocketSubsystemPosix::CreateInternetAddr()
{
	return MakeShared<FInternetAddrPosix>();
}

bool FSocketSubsystemPosix::HasNetworkDevice()
{
	sockaddr_in Unused;
	return FindExternalAddress(Unused);
}

const TCHAR* FSocketSubsystemPosix::GetSocketAPIName() const
{
	return TEXT("POSIX sockets");
}

ESocketErrors FSocketSubsystemPosix::GetLastErrorCode()
{
	return TranslateErrorCode(SocketErrorsPosix::GetRecorded());
}

ESocketErrors FSocketSubsystemPosix::TranslateErrorCode(int32 Code)
{
	return SocketErrorsPosix::Translate(Code);
}

TSharedRef<FInternetAddr> FSocketSubsystemPosix::GetLocalHostAddr(FOutputDevice& Out, bool& bCanBindAll)
{
	bCanBindAll = true;
	TSharedRef<FInternetAddrPosix> Addr = MakeShared<FInternetAddrPosix>();
	sockaddr_in External;
	if (FindExternalAddress(External))
	{
		Addr = MakeShared<FInternetAddrPosix>(External);
		Addr->SetPort(0);
	}
	else
	{
		Out.Log(TEXT("No network interface other than loopback is up; using the loopback address."));
		Addr->SetLoopbackAddress();
	}
	return Addr;
}
