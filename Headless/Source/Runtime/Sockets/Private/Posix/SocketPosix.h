// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Sockets.h"

#include <atomic>
#include <shared_mutex>

#include <poll.h>

/**
 * A socket over the operating system's POSIX socket calls.
 *
 * Closing while another thread waits: each call holds the descriptor through a shared lock for its
 * duration, and a wake-up eventfd is polled together with the socket. Close sets the closing flag,
 * signals the eventfd (which ends any poll at once) and shuts the socket down (which ends a blocking
 * recv, recvfrom or accept), then takes the lock exclusively, so the descriptor is released only when no
 * call still uses it and its number cannot be reused under a waiting thread.
 */
class FSocketPosix final : public FSocket
{
public:
	/** Takes ownership of an open descriptor. */
	FSocketPosix(
		int InDescriptor, ESocketType InSocketType, const FString& InSocketDescription, const FName& InSocketProtocol);
	virtual ~FSocketPosix() override;

	virtual bool Shutdown(ESocketShutdownMode Mode) override;
	virtual bool Close() override;
	virtual bool Bind(const FInternetAddr& Addr) override;
	virtual bool Connect(const FInternetAddr& Addr) override;
	virtual bool Listen(int32 MaxBacklog) override;
	virtual bool WaitForPendingConnection(bool& bHasPendingConnection, const FTimespan& WaitTime) override;
	virtual bool HasPendingData(uint32& PendingDataSize) override;
	virtual FSocket* Accept(const FString& InSocketDescription) override;
	virtual FSocket* Accept(FInternetAddr& OutAddr, const FString& InSocketDescription) override;
	virtual bool SendTo(const uint8* Data, int32 Count, int32& BytesSent, const FInternetAddr& Destination) override;
	virtual bool Send(const uint8* Data, int32 Count, int32& BytesSent) override;
	virtual bool RecvFrom(uint8* Data, int32 BufferSize, int32& BytesRead, FInternetAddr& Source,
		ESocketReceiveFlags::Type Flags = ESocketReceiveFlags::None) override;
	virtual bool Recv(uint8* Data, int32 BufferSize, int32& BytesRead,
		ESocketReceiveFlags::Type Flags = ESocketReceiveFlags::None) override;
	virtual bool Wait(ESocketWaitConditions::Type Condition, FTimespan WaitTime) override;
	virtual ESocketConnectionState GetConnectionState() override;
	virtual void GetAddress(FInternetAddr& OutAddr) override;
	virtual bool GetPeerAddress(FInternetAddr& OutAddr) override;
	virtual bool SetNonBlocking(bool bIsNonBlocking = true) override;
	virtual bool SetBroadcast(bool bAllowBroadcast = true) override;
	virtual bool SetNoDelay(bool bIsNoDelay = true) override;
	virtual bool JoinMulticastGroup(const FInternetAddr& GroupAddress) override;
	virtual bool JoinMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress) override;
	virtual bool LeaveMulticastGroup(const FInternetAddr& GroupAddress) override;
	virtual bool LeaveMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress) override;
	virtual bool SetMulticastLoopback(bool bLoopback) override;
	virtual bool SetMulticastTtl(uint8 TimeToLive) override;
	virtual bool SetMulticastInterface(const FInternetAddr& InterfaceAddress) override;
	virtual bool SetReuseAddr(bool bAllowReuse = true) override;
	virtual bool SetLinger(bool bShouldLinger = true, int32 Timeout = 0) override;
	virtual bool SetRecvErr(bool bUseErrorQueue = true) override;
	virtual bool SetSendBufferSize(int32 Size, int32& NewSize) override;
	virtual bool SetReceiveBufferSize(int32 Size, int32& NewSize) override;
	virtual int32 GetPortNo() override;

private:
	/** Keeps the descriptor open for the duration of one call; empty once the socket is closing. */
	class FUseScope
	{
	public:
		explicit FUseScope(FSocketPosix& InSocket);
		~FUseScope();
		FUseScope(const FUseScope&) = delete;
		FUseScope& operator=(const FUseScope&) = delete;

		explicit operator bool() const { return bLocked; }

	private:
		FSocketPosix& Socket;
		bool bLocked = false;
	};

	/**
	 * Polls the socket for Events until it is ready, the time is up or the socket is closed.
	 * @return 1 if ready, 0 if the time ran out, -1 on error or when the socket was closed.
	 */
	int32 PollFor(short Events, FTimespan WaitTime);

	/** Sets an integer socket option; records the error when the call fails. */
	bool SetIntOption(int Level, int Option, int Value);

	/** Joins or leaves a multicast group on an interface (the wildcard address lets the system choose). */
	bool ChangeMembership(int Option, const FInternetAddr& GroupAddress, const FInternetAddr* InterfaceAddress);

	/** Converts an address for a call; records SE_EINVAL when it holds no IPv4 address. */
	static bool ToSockAddrChecked(const FInternetAddr& InAddr, struct sockaddr_in& OutAddr);

	/** Translates the receive flags to the operating system's. */
	static int ToPlatformFlags(ESocketReceiveFlags::Type Flags);

	int Descriptor = -1;
	int WakeDescriptor = -1;
	std::atomic<bool> bClosing = false;
	std::shared_mutex DescriptorLock;
};
