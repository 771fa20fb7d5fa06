// Copyright Orvane. All Rights Reserved.

#include "Common/UdpSocketBuilder.h"
#include "CoreGlobals.h"
#include "EngineTestPrinters.h"
#include "IPAddress.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace
{
	using FClock = std::chrono::steady_clock;

	double MillisecondsBetween(FClock::time_point Start, FClock::time_point End)
	{
		return std::chrono::duration<double, std::milli>(End - Start).count();
	}

	/** Keeps the lines the sockets modules write to the log while it exists. */
	class FSocketLogCapture : public FOutputDevice
	{
	public:
		FSocketLogCapture() { GLog->AddOutputDevice(this); }
		virtual ~FSocketLogCapture() override { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (Category == FName(TEXT("LogSockets")))
			{
				std::lock_guard<std::mutex> Lock(Mutex);
				Lines.push_back(ToUtf8(V));
			}
		}

		virtual bool CanBeUsedOnAnyThread() const override { return true; }
		virtual bool CanBeUsedOnMultipleThreads() const override { return true; }

		std::vector<std::string> Take()
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			return std::move(Lines);
		}

	private:
		std::mutex Mutex;
		std::vector<std::string> Lines;
	};

	ISocketSubsystem& Subsystem()
	{
		return *ISocketSubsystem::Get();
	}

	/** Destroys the socket it holds through the subsystem. */
	struct FSocketHolder
	{
		FSocket* Socket = nullptr;

		explicit FSocketHolder(FSocket* InSocket)
			: Socket(InSocket)
		{
		}
		~FSocketHolder() { Reset(); }
		FSocketHolder(const FSocketHolder&) = delete;
		FSocketHolder& operator=(const FSocketHolder&) = delete;

		void Reset()
		{
			if (Socket != nullptr)
			{
				Subsystem().DestroySocket(Socket);
				Socket = nullptr;
			}
		}
		FSocket* operator->() const { return Socket; }
		explicit operator bool() const { return Socket != nullptr; }
	};

	bool SendBytes(FSocket& Socket, const std::vector<uint8>& Bytes, const FIPv4Endpoint& Destination)
	{
		int32 BytesSent = 0;
		return Socket.SendTo(
				   Bytes.data(), static_cast<int32>(Bytes.size()), BytesSent, *Destination.ToInternetAddr()) &&
			   BytesSent == static_cast<int32>(Bytes.size());
	}

	/** Waits up to Seconds for one datagram and returns it; empty if none came. */
	std::vector<uint8> ReceiveOne(FSocket& Socket, double Seconds, FIPv4Endpoint* OutSender = nullptr)
	{
		std::vector<uint8> Buffer(65536);
		if (!Socket.Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromSeconds(Seconds)))
		{
			return {};
		}
		int32 BytesRead = 0;
		TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
		if (!Socket.RecvFrom(Buffer.data(), static_cast<int32>(Buffer.size()), BytesRead, *Source))
		{
			return {};
		}
		if (OutSender != nullptr)
		{
			*OutSender = FIPv4Endpoint(TSharedPtr<FInternetAddr>(Source));
		}
		Buffer.resize(static_cast<size_t>(BytesRead));
		return Buffer;
	}

	FIPv4Endpoint LocalEndpointOf(FSocket& Socket)
	{
		return FIPv4Endpoint(FIPv4Address::InternalLoopback, static_cast<uint16>(Socket.GetPortNo()));
	}
} // namespace

TEST(UdpSocketBuilder, BuildsANonBlockingBoundSocketByDefault)
{
	FSocketHolder Socket(FUdpSocketBuilder(TEXT("default receiver"))
							 .BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
							 .Build());
	ASSERT_TRUE(Socket);
	EXPECT_EQ(Socket->GetSocketType(), SOCKTYPE_Datagram);
	EXPECT_EQ(Socket->GetDescription(), FString(TEXT("default receiver")));
	EXPECT_NE(Socket->GetPortNo(), 0);

	uint8 Buffer[16];
	int32 BytesRead = 0;
	TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
	EXPECT_FALSE(Socket->RecvFrom(Buffer, sizeof(Buffer), BytesRead, *Source));
	EXPECT_EQ(Subsystem().GetLastErrorCode(), SE_EWOULDBLOCK);
}

TEST(UdpSocketBuilder, BlockingSocketReceivesWithItsSender)
{
	FSocketHolder Receiver(FUdpSocketBuilder(TEXT("receiver"))
							   .AsBlocking()
							   .BoundToAddress(FIPv4Address::InternalLoopback)
							   .BoundToPort(0)
							   .WithReceiveBufferSize(1 << 20)
							   .Build());
	FSocketHolder Sender(FUdpSocketBuilder(TEXT("sender"))
							 .BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
							 .WithSendBufferSize(1 << 18)
							 .Build());
	ASSERT_TRUE(Receiver);
	ASSERT_TRUE(Sender);

	const std::vector<uint8> Payload = {0xD1, 0x01, 0x2D};
	ASSERT_TRUE(SendBytes(*Sender.Socket, Payload, LocalEndpointOf(*Receiver.Socket)));
	FIPv4Endpoint From;
	EXPECT_EQ(ReceiveOne(*Receiver.Socket, 5.0, &From), Payload);
	EXPECT_EQ(From, LocalEndpointOf(*Sender.Socket));
}

TEST(UdpSocketBuilder, PortInUseFailsWithALogLineNamingTheEndpointThenSucceedsOnceFree)
{
	FSocketHolder First(
		FUdpSocketBuilder(TEXT("first")).BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0)).Build());
	ASSERT_TRUE(First);
	const FIPv4Endpoint Taken = LocalEndpointOf(*First.Socket);

	FSocketLogCapture Capture;
	FSocket* Second = FUdpSocketBuilder(TEXT("second")).BoundToEndpoint(Taken).Build();
	EXPECT_EQ(Second, nullptr);
	const std::vector<std::string> Lines = Capture.Take();
	ASSERT_EQ(Lines.size(), 1u);
	EXPECT_NE(Lines[0].find("'second'"), std::string::npos) << Lines[0];
	EXPECT_NE(Lines[0].find(ToUtf8(Taken.ToString())), std::string::npos) << Lines[0];
	EXPECT_NE(Lines[0].find("Address already in use"), std::string::npos) << Lines[0];

	First.Reset();
	FSocketHolder Retried(FUdpSocketBuilder(TEXT("second")).BoundToEndpoint(Taken).Build());
	ASSERT_TRUE(Retried);
	EXPECT_EQ(Retried->GetPortNo(), Taken.Port);
	EXPECT_TRUE(Capture.Take().empty());
}

TEST(UdpSocketBuilder, ReusableSocketsBindTheSamePort)
{
	FSocketHolder First(FUdpSocketBuilder(TEXT("first"))
							.AsReusable()
							.BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
							.Build());
	ASSERT_TRUE(First);
	const FIPv4Endpoint Shared = LocalEndpointOf(*First.Socket);
	FSocketHolder Second(FUdpSocketBuilder(TEXT("second")).AsReusable().BoundToEndpoint(Shared).Build());
	ASSERT_TRUE(Second);
	EXPECT_EQ(Second->GetPortNo(), Shared.Port);

	// A unicast datagram reaches one of the two, whichever the system picks.
	FSocketHolder Sender(FUdpSocketBuilder(TEXT("sender")).Build());
	ASSERT_TRUE(Sender);
	const std::vector<uint8> Payload = {1, 2, 3, 4};
	ASSERT_TRUE(SendBytes(*Sender.Socket, Payload, Shared));
	std::vector<uint8> Got = ReceiveOne(*Second.Socket, 0.5);
	if (Got.empty())
	{
		Got = ReceiveOne(*First.Socket, 0.5);
	}
	EXPECT_EQ(Got, Payload);
}

namespace
{
	/**
	 * Joins 239.135.1.1 on Interface (the wildcard: the system picks one), sends to the group from a
	 * socket with multicast loopback and checks the datagram arrives, then that it stops after leaving.
	 * Skips, saying why, when the machine cannot join the group on that interface.
	 */
	void RunMulticastRoundTrip(const FIPv4Address& Interface)
	{
		const FIPv4Address Group(239, 135, 1, 1);
		ASSERT_TRUE(Group.IsMulticastAddress());

		// A free port first; the group itself is shared with anything else on this host.
		uint16 Port = 0;
		{
			FSocketHolder Probe(FUdpSocketBuilder(TEXT("probe")).BoundToPort(0).Build());
			ASSERT_TRUE(Probe);
			Port = static_cast<uint16>(Probe->GetPortNo());
		}

		FSocketLogCapture Capture;
		FUdpSocketBuilder ReceiverBuilder(TEXT("multicast receiver"));
		ReceiverBuilder.AsReusable().BoundToPort(Port);
		if (Interface == FIPv4Address::Any)
		{
			ReceiverBuilder.JoinedToGroup(Group);
		}
		else
		{
			ReceiverBuilder.JoinedToGroup(Group, Interface);
		}
		FSocketHolder Receiver(ReceiverBuilder.Build());
		if (!Receiver)
		{
			const std::vector<std::string> Lines = Capture.Take();
			ASSERT_EQ(Lines.size(), 1u);
			GTEST_SKIP() << "This machine has no multicast route on interface " << ToUtf8(Interface.ToString()) << ": "
						 << Lines[0];
		}

		FUdpSocketBuilder SenderBuilder(TEXT("multicast sender"));
		SenderBuilder.WithMulticastLoopback().WithMulticastTtl(1);
		if (Interface != FIPv4Address::Any)
		{
			SenderBuilder.WithMulticastInterface(Interface);
		}
		FSocketHolder Sender(SenderBuilder.Build());
		ASSERT_TRUE(Sender);

		const std::vector<uint8> Payload = {'O', 'T', 'r', 'k', 0, 1};
		ASSERT_TRUE(SendBytes(*Sender.Socket, Payload, FIPv4Endpoint(Group, Port)))
			<< ToUtf8(Subsystem().GetSocketError());
		EXPECT_EQ(ReceiveOne(*Receiver.Socket, 5.0), Payload);
		EXPECT_TRUE(Capture.Take().empty());

		// Leaving the group stops the deliveries.
		const TSharedRef<FInternetAddr> GroupAddr = FIPv4Endpoint(Group, 0).ToInternetAddr();
		EXPECT_TRUE(Interface == FIPv4Address::Any
						? Receiver->LeaveMulticastGroup(*GroupAddr)
						: Receiver->LeaveMulticastGroup(*GroupAddr, *FIPv4Endpoint(Interface, 0).ToInternetAddr()));
		ASSERT_TRUE(SendBytes(*Sender.Socket, Payload, FIPv4Endpoint(Group, Port)));
		EXPECT_TRUE(ReceiveOne(*Receiver.Socket, 0.3).empty());
	}
} // namespace

TEST(UdpSocketBuilder, MulticastGroupOnTheDefaultInterfaceDeliversLoopedBackDatagrams)
{
	RunMulticastRoundTrip(FIPv4Address::Any);
}

TEST(UdpSocketBuilder, MulticastGroupOnTheLoopbackInterfaceDeliversLoopedBackDatagrams)
{
	RunMulticastRoundTrip(FIPv4Address::InternalLoopback);
}

TEST(UdpSocketBuilder, ClosingFromAnotherThreadWakesTheReceiveThread)
{
	FSocketHolder Socket(FUdpSocketBuilder(TEXT("tracking"))
							 .AsNonBlocking()
							 .AsReusable()
							 .BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
							 .Build());
	ASSERT_TRUE(Socket);

	// The shape of a tracking source's receive loop: wait, drain, repeat until the socket goes away.
	std::atomic<bool> bLooping = false;
	std::atomic<int32> Received = 0;
	FClock::time_point Ended;
	std::thread Receiver(
		[&]
		{
			bLooping = true;
			std::vector<uint8> Buffer(65536);
			TSharedRef<FInternetAddr> Source = Subsystem().CreateInternetAddr();
			while (Socket->Wait(ESocketWaitConditions::WaitForRead, FTimespan::FromSeconds(30.0)))
			{
				int32 BytesRead = 0;
				while (Socket->RecvFrom(Buffer.data(), static_cast<int32>(Buffer.size()), BytesRead, *Source))
				{
					++Received;
				}
			}
			Ended = FClock::now();
		});
	while (!bLooping)
	{
		std::this_thread::yield();
	}

	FSocketHolder Sender(FUdpSocketBuilder(TEXT("sender")).Build());
	ASSERT_TRUE(SendBytes(*Sender.Socket, {1, 2, 3}, LocalEndpointOf(*Socket.Socket)));
	for (int32 Spin = 0; Spin < 500 && Received.load() == 0; ++Spin)
	{
		std::this_thread::sleep_for(std::chrono::milliseconds(2));
	}
	EXPECT_EQ(Received.load(), 1);
	std::this_thread::sleep_for(std::chrono::milliseconds(30));

	const FClock::time_point Closed = FClock::now();
	EXPECT_TRUE(Socket->Close());
	Receiver.join();
	EXPECT_LT(MillisecondsBetween(Closed, Ended), 100.0);
}
