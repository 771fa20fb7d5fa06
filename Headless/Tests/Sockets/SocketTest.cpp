// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "EngineTestPrinters.h"
#include "IPAddress.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace
{
	using FClock = std::chrono::steady_clock;

	double MillisecondsBetween(FClock::time_point Start, FClock::time_point End)
	{
		return std::chrono::duration<double, std::milli>(End - Start).count();
	}

	ISocketSubsystem& Subsystem()
	{
		ISocketSubsystem* Found = ISocketSubsystem::Get();
		EXPECT_NE(Found, nullptr);
		return *Found;
	}

	/** A datagram socket bound to 127.0.0.1 on a port the system picks; destroyed with the fixture. */
	struct FBoundSocket
	{
		FUniqueSocket Socket;
		TSharedRef<FInternetAddr> Address = Subsystem().CreateInternetAddr();

		explicit FBoundSocket(const TCHAR* Description, bool bNonBlocking = false)
			: Socket(Subsystem().CreateUniqueSocket(NAME_DGram, Description, false))
		{
			EXPECT_TRUE(Socket.IsValid());
			Address->SetLoopbackAddress();
			Address->SetPort(0);
			EXPECT_TRUE(Socket->Bind(*Address));
			EXPECT_TRUE(Socket->SetNonBlocking(bNonBlocking));
			Address->SetPort(Socket->GetPortNo());
		}
	};

	std::vector<uint8> MakePattern(int32 Size)
	{
		std::vector<uint8> Bytes(static_cast<size_t>(Size));
		for (int32 Index = 0; Index < Size; ++Index)
		{
			Bytes[static_cast<size_t>(Index)] = static_cast<uint8>((Index * 131 + Size) & 0xFF);
		}
		return Bytes;
	}

	double MillisecondsSince(FClock::time_point Start)
	{
		return std::chrono::duration<double, std::milli>(FClock::now() - Start).count();
	}
} // namespace

TEST(InternetAddr, StartsWithoutAnAddressAndTakesEachKind)
{
	TSharedRef<FInternetAddr> Addr = Subsystem().CreateInternetAddr();
	EXPECT_FALSE(Addr->IsValid());
	EXPECT_EQ(Addr->GetProtocolType(), FNetworkProtocolTypes::IPv4);

	Addr->SetIp(0xC0A80114u);
	Addr->SetPort(9001);
	EXPECT_TRUE(Addr->IsValid());
	EXPECT_EQ(Addr->ToString(false), FString(TEXT("192.168.1.20")));
	EXPECT_EQ(Addr->ToString(true), FString(TEXT("192.168.1.20:9001")));
	uint32 Ip = 0;
	Addr->GetIp(Ip);
	EXPECT_EQ(Ip, 0xC0A80114u);
	EXPECT_EQ(Addr->GetPort(), 9001);
	int32 Port = 0;
	Addr->GetPort(Port);
	EXPECT_EQ(Port, 9001);

	const TArray<uint8> Raw = Addr->GetRawIp();
	ASSERT_EQ(Raw.Num(), 4);
	EXPECT_EQ(Raw[0], 192);
	EXPECT_EQ(Raw[1], 168);
	EXPECT_EQ(Raw[2], 1);
	EXPECT_EQ(Raw[3], 20);

	Addr->SetAnyAddress();
	EXPECT_EQ(Addr->ToString(true), FString(TEXT("0.0.0.0:9001")));
	EXPECT_TRUE(Addr->IsValid());
	Addr->SetBroadcastAddress();
	EXPECT_EQ(Addr->ToString(false), FString(TEXT("255.255.255.255")));
	Addr->SetLoopbackAddress();
	EXPECT_EQ(Addr->ToString(false), FString(TEXT("127.0.0.1")));

	Addr->SetRawIp({10, 0, 0, 7});
	EXPECT_EQ(Addr->ToString(false), FString(TEXT("10.0.0.7")));
}

TEST(InternetAddr, SetIpFromTextAcceptsOnlyDottedQuads)
{
	TSharedRef<FInternetAddr> Addr = Subsystem().CreateInternetAddr();
	bool bIsValid = false;
	Addr->SetIp(TEXT("239.135.1.1"), bIsValid);
	EXPECT_TRUE(bIsValid);
	EXPECT_EQ(Addr->ToString(false), FString(TEXT("239.135.1.1")));

	for (const TCHAR* Bad : {TEXT("256.1.1.1"), TEXT("1.2.3"), TEXT("1.2.3.4.5"), TEXT(" 1.2.3.4"), TEXT("1.2.3.4 "),
			 TEXT("a.b.c.d"), TEXT(""), TEXT("localhost"), TEXT("1.2.3.4:80")})
	{
		bIsValid = true;
		Addr->SetIp(Bad, bIsValid);
		EXPECT_FALSE(bIsValid) << ToUtf8(Bad);
		// A refused text leaves the address as it was.
		EXPECT_EQ(Addr->ToString(false), FString(TEXT("239.135.1.1"))) << ToUtf8(Bad);
	}

	EXPECT_TRUE(Subsystem().GetAddressFromString(TEXT("127.0.0.1")).IsValid());
	EXPECT_FALSE(Subsystem().GetAddressFromString(TEXT("127.0.0.256")).IsValid());
}

TEST(InternetAddr, ComparesByAddressAndPortAndClonesIndependently)
{
	TSharedRef<FInternetAddr> First = Subsystem().CreateInternetAddr();
	First->SetIp(0x7F000001u);
	First->SetPort(5000);
	TSharedRef<FInternetAddr> Copy = First->Clone();
	EXPECT_TRUE(*First == *Copy);
	EXPECT_EQ(First->GetTypeHash(), Copy->GetTypeHash());

	Copy->SetPort(5001);
	EXPECT_TRUE(*First != *Copy);
	EXPECT_EQ(First->GetPort(), 5000);

	Copy->SetPort(5000);
	Copy->SetIp(0x7F000002u);
	EXPECT_FALSE(*First == *Copy);
}

TEST(SocketSubsystem, ResolvesLocalhostAndRefusesUnknownSubsystems)
{
	TSharedRef<FInternetAddr> Addr = Subsystem().CreateInternetAddr();
	ASSERT_EQ(Subsystem().GetHostByName("localhost", *Addr), SE_NO_ERROR);
	uint32 Ip = 0;
	Addr->GetIp(Ip);
	EXPECT_EQ(Ip >> 24, 127u);

	EXPECT_EQ(ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM), ISocketSubsystem::Get());
	EXPECT_EQ(ISocketSubsystem::Get(FName(TEXT("NoSuchSocketSubsystem"))), nullptr);
	EXPECT_TRUE(Subsystem().IsSocketWaitSupported());
	FString HostName;
	EXPECT_TRUE(Subsystem().GetHostName(HostName));
	EXPECT_FALSE(HostName.IsEmpty());
}

TEST(SocketSubsystem, RefusesUnknownSocketTypesAndProtocols)
{
	EXPECT_EQ(Subsystem().CreateSocket(FName(TEXT("Carrier")), TEXT("bad type"), false), nullptr);
	EXPECT_EQ(Subsystem().CreateSocket(NAME_DGram, TEXT("bad protocol"), FNetworkProtocolTypes::IPv6), nullptr);
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EAFNOSUPPORT);
}

TEST(SocketSubsystem, DescribesErrorsInWords)
{
	EXPECT_EQ(
		FString(Subsystem().GetSocketError(SE_EADDRINUSE)), FString(TEXT("Address already in use (SE_EADDRINUSE)")));
	EXPECT_EQ(
		FString(Subsystem().GetSocketError(SE_EWOULDBLOCK)), FString(TEXT("Operation would block (SE_EWOULDBLOCK)")));
}

TEST(Socket, CarriesTypeDescriptionAndProtocol)
{
	FBoundSocket Bound(TEXT("described socket"));
	EXPECT_EQ(Bound.Socket->GetSocketType(), SOCKTYPE_Datagram);
	EXPECT_EQ(Bound.Socket->GetDescription(), FString(TEXT("described socket")));
	EXPECT_EQ(Bound.Socket->GetProtocol(), FNetworkProtocolTypes::IPv4);
	EXPECT_NE(Bound.Socket->GetPortNo(), 0);

	TSharedRef<FInternetAddr> Local = Subsystem().CreateInternetAddr();
	Bound.Socket->GetAddress(*Local);
	EXPECT_EQ(Local->ToString(true), Bound.Address->ToString(true));
}

class FDatagramSizeTest : public ::testing::TestWithParam<int32>
{
};

TEST_P(FDatagramSizeTest, LoopbackDatagramArrivesWholeWithItsSender)
{
	const int32 Size = GetParam();
	FBoundSocket Receiver(TEXT("receiver"));
	FBoundSocket Sender(TEXT("sender"));
	int32 BufferSize = 0;
	// Large datagrams need room in the receive queue; the default is enough on most systems but not all.
	EXPECT_TRUE(Receiver.Socket->SetReceiveBufferSize(1 << 20, BufferSize));
	EXPECT_GE(BufferSize, 65507);

	const std::vector<uint8> Payload = MakePattern(Size);
	int32 BytesSent = 0;
	ASSERT_TRUE(Sender.Socket->SendTo(Payload.data(), Size, BytesSent, *Receiver.Address))
		<< ToUtf8(Subsystem().GetSocketError());
	EXPECT_EQ(BytesSent, Size);

	ASSERT_TRUE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromSeconds(5.0)));
	uint32 Pending = 0;
	ASSERT_TRUE(Receiver.Socket->HasPendingData(Pending));
	EXPECT_EQ(Pending, static_cast<uint32>(Size));

	std::vector<uint8> Received(65536, 0);
	int32 BytesRead = 0;
	TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
	ASSERT_TRUE(Receiver.Socket->RecvFrom(Received.data(), static_cast<int32>(Received.size()), BytesRead, *Source));
	ASSERT_EQ(BytesRead, Size);
	EXPECT_EQ(std::memcmp(Received.data(), Payload.data(), static_cast<size_t>(Size)), 0);
	EXPECT_EQ(Source->ToString(true), Sender.Address->ToString(true));
	EXPECT_TRUE(*Source == *Sender.Address);
}

INSTANTIATE_TEST_SUITE_P(Sizes, FDatagramSizeTest, ::testing::Values(1, 29, 1500, 65507));

TEST(Socket, RefusesADatagramLargerThanUdpAllows)
{
	FBoundSocket Receiver(TEXT("receiver"));
	FBoundSocket Sender(TEXT("sender"));
	const std::vector<uint8> Payload = MakePattern(65508);
	int32 BytesSent = -1;
	EXPECT_FALSE(Sender.Socket->SendTo(Payload.data(), 65508, BytesSent, *Receiver.Address));
	EXPECT_EQ(BytesSent, 0);
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EMSGSIZE);
}

TEST(Socket, NonBlockingReadWithNothingQueuedWouldBlock)
{
	FBoundSocket Receiver(TEXT("idle receiver"), true);
	uint8 Buffer[64];
	int32 BytesRead = -1;
	TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
	EXPECT_FALSE(Receiver.Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source));
	EXPECT_EQ(BytesRead, 0);
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EWOULDBLOCK);

	uint32 Pending = 123;
	EXPECT_FALSE(Receiver.Socket->HasPendingData(Pending));
	EXPECT_EQ(Pending, 0u);
}

TEST(Socket, PeekLeavesTheDatagramQueued)
{
	FBoundSocket Receiver(TEXT("receiver"));
	FBoundSocket Sender(TEXT("sender"));
	const uint8 Payload[3] = {7, 8, 9};
	int32 BytesSent = 0;
	ASSERT_TRUE(Sender.Socket->SendTo(Payload, 3, BytesSent, *Receiver.Address));
	ASSERT_TRUE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromSeconds(5.0)));

	uint8 Buffer[8] = {};
	int32 BytesRead = 0;
	TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
	ASSERT_TRUE(Receiver.Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source, ESocketReceiveFlags::Peek));
	EXPECT_EQ(BytesRead, 3);
	ASSERT_TRUE(Receiver.Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source));
	EXPECT_EQ(BytesRead, 3);
	EXPECT_EQ(Buffer[2], 9);
	ASSERT_TRUE(Receiver.Socket->SetNonBlocking(true));
	EXPECT_FALSE(Receiver.Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source));
}

TEST(Socket, WaitReturnsFalseWhenTheTimeRunsOut)
{
	FBoundSocket Receiver(TEXT("quiet receiver"));
	const FClock::time_point Start = FClock::now();
	EXPECT_FALSE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromMilliseconds(80.0)));
	EXPECT_GE(MillisecondsSince(Start), 80.0);

	// Nothing to read, but a datagram socket can always be written to.
	EXPECT_TRUE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForWrite, FTimespan::FromSeconds(1.0)));
	EXPECT_TRUE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForReadOrWrite, FTimespan::Zero()));
	EXPECT_FALSE(Receiver.Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::Zero()));
}

TEST(Socket, BindingAPortInUseFailsUntilTheFirstSocketCloses)
{
	FBoundSocket First(TEXT("first"));
	FUniqueSocket Second = Subsystem().CreateUniqueSocket(NAME_DGram, TEXT("second"), false);
	ASSERT_TRUE(Second.IsValid());
	EXPECT_FALSE(Second->Bind(*First.Address));
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EADDRINUSE);

	EXPECT_TRUE(First.Socket->Close());
	EXPECT_TRUE(Second->Bind(*First.Address));
	EXPECT_EQ(Second->GetPortNo(), First.Address->GetPort());
}

TEST(Socket, ReusableSocketsShareAPort)
{
	FUniqueSocket First = Subsystem().CreateUniqueSocket(NAME_DGram, TEXT("first"), false);
	FUniqueSocket Second = Subsystem().CreateUniqueSocket(NAME_DGram, TEXT("second"), false);
	ASSERT_TRUE(First->SetReuseAddr());
	ASSERT_TRUE(Second->SetReuseAddr());
	TSharedRef<FInternetAddr> Address = Subsystem().CreateInternetAddr();
	Address->SetLoopbackAddress();
	Address->SetPort(0);
	ASSERT_TRUE(First->Bind(*Address));
	Address->SetPort(First->GetPortNo());
	EXPECT_TRUE(Second->Bind(*Address)) << ToUtf8(Subsystem().GetSocketError());
}

TEST(Socket, CloseIsFinal)
{
	FBoundSocket Bound(TEXT("closing"));
	EXPECT_TRUE(Bound.Socket->Close());
	EXPECT_FALSE(Bound.Socket->Close());

	uint8 Byte = 1;
	int32 BytesSent = -1;
	EXPECT_FALSE(Bound.Socket->SendTo(&Byte, 1, BytesSent, *Bound.Address));
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EBADF);
	EXPECT_FALSE(Bound.Socket->Wait(ESocketWaitConditions::WaitForWrite, FTimespan::FromSeconds(1.0)));
	EXPECT_EQ(Bound.Socket->GetPortNo(), 0);
	EXPECT_EQ(Bound.Socket->GetConnectionState(), SCS_ConnectionError);
}

TEST(Socket, CloseWakesAThreadWaitingToRead)
{
	FBoundSocket Bound(TEXT("waited on"));
	std::atomic<bool> bWaiting = false;
	std::atomic<bool> bWaitResult = true;
	FClock::time_point Returned;
	std::thread Waiter(
		[&]
		{
			bWaiting = true;
			bWaitResult = Bound.Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromSeconds(30.0));
			Returned = FClock::now();
		});
	while (!bWaiting)
	{
		std::this_thread::yield();
	}
	// Give the thread time to enter the wait itself, not just to start.
	std::this_thread::sleep_for(std::chrono::milliseconds(50));

	const FClock::time_point Closed = FClock::now();
	EXPECT_TRUE(Bound.Socket->Close());
	Waiter.join();
	EXPECT_FALSE(bWaitResult);
	EXPECT_LT(MillisecondsBetween(Closed, Returned), 100.0);
}

TEST(Socket, CloseWakesAThreadBlockedInRecvFrom)
{
	FBoundSocket Bound(TEXT("read from"));
	std::atomic<bool> bReading = false;
	std::atomic<bool> bReadResult = true;
	FClock::time_point Returned;
	std::thread Reader(
		[&]
		{
			uint8 Buffer[64];
			int32 BytesRead = 0;
			TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
			bReading = true;
			bReadResult = Bound.Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source);
			Returned = FClock::now();
		});
	while (!bReading)
	{
		std::this_thread::yield();
	}
	std::this_thread::sleep_for(std::chrono::milliseconds(50));

	const FClock::time_point Closed = FClock::now();
	EXPECT_TRUE(Bound.Socket->Close());
	Reader.join();
	EXPECT_FALSE(bReadResult);
	EXPECT_LT(MillisecondsBetween(Closed, Returned), 100.0);
}

TEST(Socket, StreamSocketsConnectAndExchangeData)
{
	FUniqueSocket Listener = Subsystem().CreateUniqueSocket(NAME_Stream, TEXT("listener"), false);
	ASSERT_TRUE(Listener.IsValid());
	EXPECT_EQ(Listener->GetSocketType(), SOCKTYPE_Streaming);
	TSharedRef<FInternetAddr> Address = Subsystem().CreateInternetAddr();
	Address->SetLoopbackAddress();
	Address->SetPort(0);
	ASSERT_TRUE(Listener->Bind(*Address));
	ASSERT_TRUE(Listener->Listen(4));
	Address->SetPort(Listener->GetPortNo());

	bool bPending = true;
	EXPECT_TRUE(Listener->WaitForPendingConnection(bPending, FTimespan::Zero()));
	EXPECT_FALSE(bPending);

	FUniqueSocket Client = Subsystem().CreateUniqueSocket(NAME_Stream, TEXT("client"), false);
	ASSERT_TRUE(Client->Connect(*Address));
	ASSERT_TRUE(Listener->WaitForPendingConnection(bPending, FTimespan::FromSeconds(5.0)));
	ASSERT_TRUE(bPending);
	TSharedRef<FInternetAddr> Remote = Subsystem().CreateInternetAddr();
	FUniqueSocket Server(Listener->Accept(*Remote, TEXT("accepted")), FSocketDeleter(&Subsystem()));
	ASSERT_TRUE(Server.IsValid());
	EXPECT_EQ(Remote->GetPort(), Client->GetPortNo());
	EXPECT_EQ(Client->GetConnectionState(), SCS_Connected);
	EXPECT_TRUE(Client->SetNoDelay(true));

	const uint8 Message[5] = {'h', 'e', 'l', 'l', 'o'};
	int32 BytesSent = 0;
	ASSERT_TRUE(Client->Send(Message, 5, BytesSent));
	EXPECT_EQ(BytesSent, 5);
	uint8 Buffer[5] = {};
	int32 BytesRead = 0;
	ASSERT_TRUE(Server->Recv(Buffer, 5, BytesRead, ESocketReceiveFlags::WaitAll));
	EXPECT_EQ(BytesRead, 5);
	EXPECT_EQ(std::memcmp(Buffer, Message, 5), 0);

	// The peer closing ends the stream: the next read fails rather than reporting zero bytes of data.
	EXPECT_TRUE(Client->Close());
	EXPECT_FALSE(Server->Recv(Buffer, 5, BytesRead));
	EXPECT_EQ(BytesRead, 0);
}
