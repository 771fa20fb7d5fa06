// Copyright Orvane. All Rights Reserved.

#include "Posix/SocketPosix.h"

#include "Posix/InternetAddrPosix.h"
#include "Posix/SocketErrorsPosix.h"
#include "SocketSubsystem.h"

#include <arpa/inet.h>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <mutex>
#include <netinet/tcp.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{
	/** Records errno as the thread's last socket error and returns false, for the failure paths. */
	bool FailWithErrno()
	{
		SocketErrorsPosix::Record(errno);
		return false;
	}

	/** Records the error of a call made on a socket that is closed or closing. */
	bool FailClosed()
	{
		SocketErrorsPosix::Record(EBADF);
		return false;
	}

	timespec Now()
	{
		timespec Time;
		clock_gettime(CLOCK_MONOTONIC, &Time);
		return Time;
	}

	int64 ToNanoseconds(const timespec& Time)
	{
		return static_cast<int64>(Time.tv_sec) * 1000000000LL + Time.tv_nsec;
	}
} // namespace

FSocketPosix::FUseScope::FUseScope(FSocketPosix& InSocket)
	: Socket(InSocket)
{
	// Once Close has begun no call may take the descriptor again, so Close's exclusive lock is not starved.
	if (Socket.bClosing.load())
	{
		return;
	}
	Socket.DescriptorLock.lock_shared();
	if (Socket.bClosing.load() || Socket.Descriptor < 0)
	{
		Socket.DescriptorLock.unlock_shared();
		return;
	}
	bLocked = true;
}

FSocketPosix::FUseScope::~FUseScope()
{
	if (bLocked)
	{
		Socket.DescriptorLock.unlock_shared();
	}
}

FSocketPosix::FSocketPosix(
	int InDescriptor, ESocketType InSocketType, const FString& InSocketDescription, const FName& InSocketProtocol)
	: FSocket(InSocketType, InSocketDescription, InSocketProtocol)
	, Descriptor(InDescriptor)
{
	WakeDescriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
	if (WakeDescriptor < 0)
	{
		// Without it a Wait still ends at its time limit, and shutdown still ends a blocking read.
		UE_LOG(LogSockets, Warning,
			TEXT("Socket '%s': no wake-up descriptor (errno %d); Close will rely on shutdown alone."),
			*SocketDescription, errno);
	}
}

FSocketPosix::~FSocketPosix()
{
	Close();
	if (WakeDescriptor >= 0)
	{
		close(WakeDescriptor);
	}
}

bool FSocketPosix::Shutdown(ESocketShutdownMode Mode)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const int How =
		Mode == ESocketShutdownMode::Read ? SHUT_RD : (Mode == ESocketShutdownMode::Write ? SHUT_WR : SHUT_RDWR);
	return shutdown(Descriptor, How) == 0 || FailWithErrno();
}

bool FSocketPosix::Close()
{
	if (bClosing.exchange(true))
	{
		return false;
	}
	if (WakeDescriptor >= 0)
	{
		const uint64_t One = 1;
		[[maybe_unused]] const ssize_t Written = write(WakeDescriptor, &One, sizeof(One));
	}
	{
		// Ends blocking reads and accepts; on an unconnected datagram socket it fails with ENOTCONN but
		// still wakes the readers, which is all it is for here.
		std::shared_lock<std::shared_mutex> Peek(DescriptorLock);
		if (Descriptor >= 0)
		{
			shutdown(Descriptor, SHUT_RDWR);
		}
	}
	std::unique_lock<std::shared_mutex> Exclusive(DescriptorLock);
	if (Descriptor < 0)
	{
		return false;
	}
	const int Result = close(Descriptor);
	Descriptor = -1;
	return Result == 0 || FailWithErrno();
}

bool FSocketPosix::ToSockAddrChecked(const FInternetAddr& InAddr, sockaddr_in& OutAddr)
{
	if (!FInternetAddrPosix::ToSockAddr(InAddr, OutAddr))
	{
		SocketErrorsPosix::Record(EINVAL);
		return false;
	}
	return true;
}

bool FSocketPosix::Bind(const FInternetAddr& Addr)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in SockAddr;
	if (!ToSockAddrChecked(Addr, SockAddr))
	{
		return false;
	}
	return bind(Descriptor, reinterpret_cast<const sockaddr*>(&SockAddr), sizeof(SockAddr)) == 0 || FailWithErrno();
}

bool FSocketPosix::Connect(const FInternetAddr& Addr)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in SockAddr;
	if (!ToSockAddrChecked(Addr, SockAddr))
	{
		return false;
	}
	if (connect(Descriptor, reinterpret_cast<const sockaddr*>(&SockAddr), sizeof(SockAddr)) == 0)
	{
		return true;
	}
	// A non-blocking connect that is under way counts as success; Wait(WaitForWrite) tells when it is done.
	const int Error = errno;
	SocketErrorsPosix::Record(Error);
	return Error == EINPROGRESS || Error == EAGAIN;
}

bool FSocketPosix::Listen(int32 MaxBacklog)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	return listen(Descriptor, MaxBacklog) == 0 || FailWithErrno();
}

int32 FSocketPosix::PollFor(short Events, FTimespan WaitTime)
{
	FUseScope Use(*this);
	if (!Use)
	{
		FailClosed();
		return -1;
	}

	pollfd Descriptors[2];
	Descriptors[0] = {Descriptor, Events, 0};
	Descriptors[1] = {WakeDescriptor, POLLIN, 0};
	const nfds_t Count = WakeDescriptor >= 0 ? 2 : 1;

	// Waits of more than a year are treated as unlimited; that also keeps the tick arithmetic in range.
	const int64 Ticks = WaitTime.GetTicks() < 0 ? 0 : WaitTime.GetTicks();
	const bool bUnlimited = Ticks >= ETimespan::TicksPerYear;
	const int64 Deadline = ToNanoseconds(Now()) + (bUnlimited ? 0 : Ticks * ETimespan::NanosecondsPerTick);

	for (;;)
	{
		timespec Timeout;
		if (!bUnlimited)
		{
			const int64 Remaining = Deadline - ToNanoseconds(Now());
			const int64 Clamped = Remaining > 0 ? Remaining : 0;
			Timeout.tv_sec = static_cast<time_t>(Clamped / 1000000000LL);
			Timeout.tv_nsec = static_cast<long>(Clamped % 1000000000LL);
		}
		const int Result = ppoll(Descriptors, Count, bUnlimited ? nullptr : &Timeout, nullptr);
		if (Result < 0)
		{
			if (errno == EINTR)
			{
				continue;
			}
			FailWithErrno();
			return -1;
		}
		if (Count == 2 && Descriptors[1].revents != 0)
		{
			FailClosed();
			return -1;
		}
		if (Result == 0)
		{
			return 0;
		}
		// Errors and hang-ups count as ready: the read or write that follows reports them.
		if ((Descriptors[0].revents & (Events | POLLERR | POLLHUP)) != 0)
		{
			return 1;
		}
		if ((Descriptors[0].revents & POLLNVAL) != 0)
		{
			FailClosed();
			return -1;
		}
	}
}

bool FSocketPosix::Wait(ESocketWaitConditions::Type Condition, FTimespan WaitTime)
{
	short Events = 0;
	switch (Condition)
	{
		case ESocketWaitConditions::WaitForRead:
			Events = POLLIN;
			break;
		case ESocketWaitConditions::WaitForWrite:
			Events = POLLOUT;
			break;
		case ESocketWaitConditions::WaitForReadOrWrite:
			Events = POLLIN | POLLOUT;
			break;
	}
	return PollFor(Events, WaitTime) == 1;
}

bool FSocketPosix::WaitForPendingConnection(bool& bHasPendingConnection, const FTimespan& WaitTime)
{
	const int32 Result = PollFor(POLLIN, WaitTime);
	bHasPendingConnection = Result == 1;
	return Result >= 0;
}

bool FSocketPosix::HasPendingData(uint32& PendingDataSize)
{
	PendingDataSize = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	pollfd Readable = {Descriptor, POLLIN, 0};
	if (poll(&Readable, 1, 0) <= 0 || (Readable.revents & POLLIN) == 0)
	{
		return false;
	}
	// For a datagram socket this is the size of the next datagram, which may be zero bytes long: the
	// caller still has to read it to get past it, so readable means true.
	int Bytes = 0;
	if (ioctl(Descriptor, FIONREAD, &Bytes) != 0)
	{
		return FailWithErrno();
	}
	PendingDataSize = static_cast<uint32>(Bytes);
	return true;
}

FSocket* FSocketPosix::Accept(const FString& InSocketDescription)
{
	FUseScope Use(*this);
	if (!Use)
	{
		FailClosed();
		return nullptr;
	}
	const int NewDescriptor = accept4(Descriptor, nullptr, nullptr, SOCK_CLOEXEC);
	if (NewDescriptor < 0)
	{
		FailWithErrno();
		return nullptr;
	}
	return new FSocketPosix(NewDescriptor, SocketType, InSocketDescription, SocketProtocol);
}

FSocket* FSocketPosix::Accept(FInternetAddr& OutAddr, const FString& InSocketDescription)
{
	FUseScope Use(*this);
	if (!Use)
	{
		FailClosed();
		return nullptr;
	}
	sockaddr_in Remote;
	socklen_t Length = sizeof(Remote);
	const int NewDescriptor = accept4(Descriptor, reinterpret_cast<sockaddr*>(&Remote), &Length, SOCK_CLOEXEC);
	if (NewDescriptor < 0)
	{
		FailWithErrno();
		return nullptr;
	}
	FInternetAddrPosix::FromSockAddr(Remote, OutAddr);
	return new FSocketPosix(NewDescriptor, SocketType, InSocketDescription, SocketProtocol);
}

bool FSocketPosix::SendTo(const uint8* Data, int32 Count, int32& BytesSent, const FInternetAddr& Destination)
{
	BytesSent = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in SockAddr;
	if (!ToSockAddrChecked(Destination, SockAddr))
	{
		return false;
	}
	const ssize_t Sent = sendto(Descriptor, Data, static_cast<size_t>(Count < 0 ? 0 : Count), MSG_NOSIGNAL,
		reinterpret_cast<const sockaddr*>(&SockAddr), sizeof(SockAddr));
	if (Sent < 0)
	{
		return FailWithErrno();
	}
	BytesSent = static_cast<int32>(Sent);
	return true;
}

bool FSocketPosix::Send(const uint8* Data, int32 Count, int32& BytesSent)
{
	BytesSent = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const ssize_t Sent = send(Descriptor, Data, static_cast<size_t>(Count < 0 ? 0 : Count), MSG_NOSIGNAL);
	if (Sent < 0)
	{
		return FailWithErrno();
	}
	BytesSent = static_cast<int32>(Sent);
	return true;
}

int FSocketPosix::ToPlatformFlags(ESocketReceiveFlags::Type Flags)
{
	int PlatformFlags = 0;
	if ((Flags & ESocketReceiveFlags::Peek) != 0)
	{
		PlatformFlags |= MSG_PEEK;
	}
	if ((Flags & ESocketReceiveFlags::WaitAll) != 0)
	{
		PlatformFlags |= MSG_WAITALL;
	}
	return PlatformFlags;
}

bool FSocketPosix::RecvFrom(
	uint8* Data, int32 BufferSize, int32& BytesRead, FInternetAddr& Source, ESocketReceiveFlags::Type Flags)
{
	BytesRead = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in Sender;
	socklen_t SenderLength = sizeof(Sender);
	const ssize_t Received = recvfrom(Descriptor, Data, static_cast<size_t>(BufferSize < 0 ? 0 : BufferSize),
		ToPlatformFlags(Flags), reinterpret_cast<sockaddr*>(&Sender), &SenderLength);
	if (bClosing.load())
	{
		// Close woke the read; whatever it returned is not data.
		return FailClosed();
	}
	if (Received < 0)
	{
		return FailWithErrno();
	}
	if (Received == 0 && SocketType == SOCKTYPE_Streaming && BufferSize > 0)
	{
		// The peer closed the connection.
		SocketErrorsPosix::Record(ENOTCONN);
		return false;
	}
	BytesRead = static_cast<int32>(Received);
	if (SenderLength >= static_cast<socklen_t>(sizeof(sockaddr_in)) && Sender.sin_family == AF_INET)
	{
		FInternetAddrPosix::FromSockAddr(Sender, Source);
	}
	return true;
}

bool FSocketPosix::Recv(uint8* Data, int32 BufferSize, int32& BytesRead, ESocketReceiveFlags::Type Flags)
{
	BytesRead = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const ssize_t Received =
		recv(Descriptor, Data, static_cast<size_t>(BufferSize < 0 ? 0 : BufferSize), ToPlatformFlags(Flags));
	if (bClosing.load())
	{
		return FailClosed();
	}
	if (Received < 0)
	{
		return FailWithErrno();
	}
	if (Received == 0 && SocketType == SOCKTYPE_Streaming && BufferSize > 0)
	{
		SocketErrorsPosix::Record(ENOTCONN);
		return false;
	}
	BytesRead = static_cast<int32>(Received);
	return true;
}

ESocketConnectionState FSocketPosix::GetConnectionState()
{
	FUseScope Use(*this);
	if (!Use)
	{
		return SCS_ConnectionError;
	}
	int PendingError = 0;
	socklen_t Length = sizeof(PendingError);
	if (getsockopt(Descriptor, SOL_SOCKET, SO_ERROR, &PendingError, &Length) == 0 && PendingError != 0)
	{
		SocketErrorsPosix::Record(PendingError);
		return SCS_ConnectionError;
	}
	sockaddr_in Peer;
	socklen_t PeerLength = sizeof(Peer);
	return getpeername(Descriptor, reinterpret_cast<sockaddr*>(&Peer), &PeerLength) == 0 ? SCS_Connected
																						 : SCS_NotConnected;
}

void FSocketPosix::GetAddress(FInternetAddr& OutAddr)
{
	FUseScope Use(*this);
	if (!Use)
	{
		FailClosed();
		return;
	}
	sockaddr_in Local;
	socklen_t Length = sizeof(Local);
	if (getsockname(Descriptor, reinterpret_cast<sockaddr*>(&Local), &Length) != 0)
	{
		FailWithErrno();
		return;
	}
	FInternetAddrPosix::FromSockAddr(Local, OutAddr);
}

bool FSocketPosix::GetPeerAddress(FInternetAddr& OutAddr)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in Peer;
	socklen_t Length = sizeof(Peer);
	if (getpeername(Descriptor, reinterpret_cast<sockaddr*>(&Peer), &Length) != 0)
	{
		return FailWithErrno();
	}
	FInternetAddrPosix::FromSockAddr(Peer, OutAddr);
	return true;
}

bool FSocketPosix::SetNonBlocking(bool bIsNonBlocking)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const int Flags = fcntl(Descriptor, F_GETFL, 0);
	if (Flags < 0)
	{
		return FailWithErrno();
	}
	const int NewFlags = bIsNonBlocking ? (Flags | O_NONBLOCK) : (Flags & ~O_NONBLOCK);
	return fcntl(Descriptor, F_SETFL, NewFlags) == 0 || FailWithErrno();
}

bool FSocketPosix::SetIntOption(int Level, int Option, int Value)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	return setsockopt(Descriptor, Level, Option, &Value, sizeof(Value)) == 0 || FailWithErrno();
}

bool FSocketPosix::SetBroadcast(bool bAllowBroadcast)
{
	return SetIntOption(SOL_SOCKET, SO_BROADCAST, bAllowBroadcast ? 1 : 0);
}

bool FSocketPosix::SetNoDelay(bool bIsNoDelay)
{
	return SetIntOption(IPPROTO_TCP, TCP_NODELAY, bIsNoDelay ? 1 : 0);
}

bool FSocketPosix::ChangeMembership(
	int Option, const FInternetAddr& GroupAddress, const FInternetAddr* InterfaceAddress)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in Group;
	if (!ToSockAddrChecked(GroupAddress, Group))
	{
		return false;
	}
	ip_mreq Request;
	Request.imr_multiaddr = Group.sin_addr;
	Request.imr_interface.s_addr = htonl(INADDR_ANY);
	if (InterfaceAddress != nullptr)
	{
		sockaddr_in Interface;
		if (!ToSockAddrChecked(*InterfaceAddress, Interface))
		{
			return false;
		}
		Request.imr_interface = Interface.sin_addr;
	}
	return setsockopt(Descriptor, IPPROTO_IP, Option, &Request, sizeof(Request)) == 0 || FailWithErrno();
}

bool FSocketPosix::JoinMulticastGroup(const FInternetAddr& GroupAddress)
{
	return ChangeMembership(IP_ADD_MEMBERSHIP, GroupAddress, nullptr);
}

bool FSocketPosix::JoinMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress)
{
	return ChangeMembership(IP_ADD_MEMBERSHIP, GroupAddress, &InterfaceAddress);
}

bool FSocketPosix::LeaveMulticastGroup(const FInternetAddr& GroupAddress)
{
	return ChangeMembership(IP_DROP_MEMBERSHIP, GroupAddress, nullptr);
}

bool FSocketPosix::LeaveMulticastGroup(const FInternetAddr& GroupAddress, const FInternetAddr& InterfaceAddress)
{
	return ChangeMembership(IP_DROP_MEMBERSHIP, GroupAddress, &InterfaceAddress);
}

bool FSocketPosix::SetMulticastLoopback(bool bLoopback)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const unsigned char Value = bLoopback ? 1 : 0;
	return setsockopt(Descriptor, IPPROTO_IP, IP_MULTICAST_LOOP, &Value, sizeof(Value)) == 0 || FailWithErrno();
}

bool FSocketPosix::SetMulticastTtl(uint8 TimeToLive)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const unsigned char Value = TimeToLive;
	return setsockopt(Descriptor, IPPROTO_IP, IP_MULTICAST_TTL, &Value, sizeof(Value)) == 0 || FailWithErrno();
}

bool FSocketPosix::SetMulticastInterface(const FInternetAddr& InterfaceAddress)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	sockaddr_in Interface;
	if (!ToSockAddrChecked(InterfaceAddress, Interface))
	{
		return false;
	}
	return setsockopt(Descriptor, IPPROTO_IP, IP_MULTICAST_IF, &Interface.sin_addr, sizeof(Interface.sin_addr)) == 0 ||
		   FailWithErrno();
}

bool FSocketPosix::SetReuseAddr(bool bAllowReuse)
{
	// On Linux this lets datagram sockets that all ask for it share a port; unicast datagrams then go to
	// one of them (the one bound last), multicast datagrams to each.
	return SetIntOption(SOL_SOCKET, SO_REUSEADDR, bAllowReuse ? 1 : 0);
}

bool FSocketPosix::SetLinger(bool bShouldLinger, int32 Timeout)
{
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	linger Value;
	Value.l_onoff = bShouldLinger ? 1 : 0;
	Value.l_linger = Timeout;
	return setsockopt(Descriptor, SOL_SOCKET, SO_LINGER, &Value, sizeof(Value)) == 0 || FailWithErrno();
}

bool FSocketPosix::SetRecvErr(bool bUseErrorQueue)
{
	return SetIntOption(IPPROTO_IP, IP_RECVERR, bUseErrorQueue ? 1 : 0);
}

bool FSocketPosix::SetSendBufferSize(int32 Size, int32& NewSize)
{
	NewSize = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const bool bSet = setsockopt(Descriptor, SOL_SOCKET, SO_SNDBUF, &Size, sizeof(Size)) == 0 || FailWithErrno();
	socklen_t Length = sizeof(NewSize);
	getsockopt(Descriptor, SOL_SOCKET, SO_SNDBUF, &NewSize, &Length);
	return bSet;
}

bool FSocketPosix::SetReceiveBufferSize(int32 Size, int32& NewSize)
{
	NewSize = 0;
	FUseScope Use(*this);
	if (!Use)
	{
		return FailClosed();
	}
	const bool bSet = setsockopt(Descriptor, SOL_SOCKET, SO_RCVBUF, &Size, sizeof(Size)) == 0 || FailWithErrno();
	socklen_t Length = sizeof(NewSize);
	getsockopt(Descriptor, SOL_SOCKET, SO_RCVBUF, &NewSize, &Length);
	return bSet;
}

int32 FSocketPosix::GetPortNo()
{
	FUseScope Use(*this);
	if (!Use)
	{
		FailClosed();
		return 0;
	}
	sockaddr_in Local;
	socklen_t Length = sizeof(Local);
	if (getsockname(Descriptor, reinterpret_cast<sockaddr*>(&Local), &Length) != 0)
	{
		FailWithErrno();
		return 0;
	}
	return ntohs(Local.sin_port);
}
