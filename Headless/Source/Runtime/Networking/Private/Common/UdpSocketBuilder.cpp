// Copyright Orvane. All Rights Reserved.

#include "Common/UdpSocketBuilder.h"

#include "IPAddress.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

namespace
{
	/**
	 * Logs why a step of building failed, with the system's reason, and frees the half-built socket. The caller
	 * learns of the failure from the null result and decides how loud it is (a busy port retried every frame is
	 * not an error), so the line itself is informational.
	 */
	FSocket* FailBuild(ISocketSubsystem& Subsystem, FSocket* Socket, const FString& Description, const FString& Step)
	{
		// Read the error before anything else can replace it.
		const ESocketErrors Error = Subsystem.GetLastErrorCode();
		UE_LOG(LogSockets, Log, TEXT("UDP socket '%s': %s failed: %s"), *Description, *Step,
			Subsystem.GetSocketError(Error));
		Subsystem.DestroySocket(Socket);
		return nullptr;
	}
} // namespace

FUdpSocketBuilder::FUdpSocketBuilder(const FString& InDescription)
	: Description(InDescription)
{
}

FSocket* FUdpSocketBuilder::Build() const
{
	ISocketSubsystem* Subsystem = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM);
	if (Subsystem == nullptr)
	{
		UE_LOG(LogSockets, Error, TEXT("UDP socket '%s': there is no socket subsystem."), *Description);
		return nullptr;
	}

	FSocket* Socket = Subsystem->CreateSocket(NAME_DGram, Description, FNetworkProtocolTypes::IPv4);
	if (Socket == nullptr)
	{
		UE_LOG(LogSockets, Error, TEXT("UDP socket '%s' could not be created: %s"), *Description,
			Subsystem->GetSocketError(Subsystem->GetLastErrorCode()));
		return nullptr;
	}

	if (!Socket->SetNonBlocking(!Blocking))
	{
		return FailBuild(*Subsystem, Socket, Description,
			Blocking ? FString(TEXT("making it blocking")) : FString(TEXT("making it non-blocking")));
	}
	if (!Socket->SetReuseAddr(Reusable))
	{
		return FailBuild(*Subsystem, Socket, Description, TEXT("setting address reuse"));
	}
	if (Bound && !Socket->Bind(*BoundEndpoint.ToInternetAddr()))
	{
		return FailBuild(
			*Subsystem, Socket, Description, FString::Printf(TEXT("binding to %s"), *BoundEndpoint.ToString()));
	}
	if (!Socket->SetBroadcast(AllowBroadcast))
	{
		return FailBuild(*Subsystem, Socket, Description, TEXT("setting broadcast"));
	}

	for (const FMulticastGroup& Group : JoinedGroups)
	{
		const TSharedRef<FInternetAddr> GroupAddr = FIPv4Endpoint(Group.GroupAddress, 0).ToInternetAddr();
		// The wildcard interface lets the system choose one, as the single-argument join does.
		const bool bJoined =
			Group.InterfaceAddress == FIPv4Address::Any
				? Socket->JoinMulticastGroup(*GroupAddr)
				: Socket->JoinMulticastGroup(*GroupAddr, *FIPv4Endpoint(Group.InterfaceAddress, 0).ToInternetAddr());
		if (!bJoined)
		{
			return FailBuild(*Subsystem, Socket, Description,
				FString::Printf(TEXT("joining multicast group %s on interface %s"), *Group.GroupAddress.ToString(),
					*Group.InterfaceAddress.ToString()));
		}
	}

	if (!Socket->SetMulticastLoopback(MulticastLoopback))
	{
		return FailBuild(*Subsystem, Socket, Description, TEXT("setting multicast loopback"));
	}
	if (!Socket->SetMulticastTtl(MulticastTtl))
	{
		return FailBuild(*Subsystem, Socket, Description, TEXT("setting the multicast time-to-live"));
	}
	if (MulticastInterface != FIPv4Address::Any &&
		!Socket->SetMulticastInterface(*FIPv4Endpoint(MulticastInterface, 0).ToInternetAddr()))
	{
		return FailBuild(*Subsystem, Socket, Description,
			FString::Printf(TEXT("choosing multicast interface %s"), *MulticastInterface.ToString()));
	}

	// The system may grant less (or, on Linux, twice as much for its bookkeeping); that is not a failure.
	int32 NewSize = 0;
	if (ReceiveBufferSize > 0 && !Socket->SetReceiveBufferSize(ReceiveBufferSize, NewSize))
	{
		return FailBuild(*Subsystem, Socket, Description,
			FString::Printf(TEXT("setting the receive buffer to %d bytes"), ReceiveBufferSize));
	}
	if (SendBufferSize > 0 && !Socket->SetSendBufferSize(SendBufferSize, NewSize))
	{
		return FailBuild(*Subsystem, Socket, Description,
			FString::Printf(TEXT("setting the send buffer to %d bytes"), SendBufferSize));
	}
	return Socket;
}
