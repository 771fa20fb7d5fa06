// Copyright Orvane. All Rights Reserved.

#include "Sockets.h"

#include "Misc/AssertionMacros.h"

FSocket::FSocket(ESocketType InSocketType, const FString& InSocketDescription)
	: SocketType(InSocketType)
	, SocketDescription(InSocketDescription)
{
}

FSocket::FSocket(ESocketType InSocketType, const FString& InSocketDescription, const FName& InSocketProtocol)
	: SocketType(InSocketType)
	, SocketDescription(InSocketDescription)
	, SocketProtocol(InSocketProtocol)
{
}

// The transfers are overridden by every socket the subsystem makes; a socket class of its own that
// does not override them has nothing to send or receive with.

bool FSocket::SendTo(const uint8* Data, int32 Count, int32& BytesSent, const FInternetAddr& Destination)
{
	UE_HEADLESS_UNIMPLEMENTED();
	BytesSent = 0;
	return false;
}

bool FSocket::Send(const uint8* Data, int32 Count, int32& BytesSent)
{
	UE_HEADLESS_UNIMPLEMENTED();
	BytesSent = 0;
	return false;
}

bool FSocket::RecvFrom(
	uint8* Data, int32 BufferSize, int32& BytesRead, FInternetAddr& Source, ESocketReceiveFlags::Type Flags)
{
	UE_HEADLESS_UNIMPLEMENTED();
	BytesRead = 0;
	return false;
}

bool FSocket::Recv(uint8* Data, int32 BufferSize, int32& BytesRead, ESocketReceiveFlags::Type Flags)
{
	UE_HEADLESS_UNIMPLEMENTED();
	BytesRead = 0;
	return false;
}
