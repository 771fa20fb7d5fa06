// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingReceiver.h"

#include "Common/UdpSocketBuilder.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "HAL/PlatformTime.h"
#include "HAL/RunnableThread.h"
#include "IPAddress.h"
#include "Misc/ScopeLock.h"
#include "OrvaneTrackingLog.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

namespace OrvaneTrackingReceiver
{
	/** Largest UDP payload over IPv4, plus one byte so a longer one would show as oversize. */
	constexpr int32 ReadBufferSize = 65507 + 1;

	/** Kernel buffer asked for, so bursts survive a busy frame. */
	constexpr int32 SocketReceiveBufferSize = 4 * 1024 * 1024;

	/** How long the thread sleeps in one wait before it checks whether it should stop. */
	const FTimespan WaitTime = FTimespan::FromMilliseconds(100.0);

	uint64 MakeSenderKey(const FInternetAddr& Sender)
	{
		uint32 Ip = 0;
		Sender.GetIp(Ip);
		return FOrvaneDatagramDecoder::MakeSenderKey(Ip, static_cast<uint16>(Sender.GetPort()));
	}
} // namespace OrvaneTrackingReceiver

FOrvaneTrackingReceiver::FOrvaneTrackingReceiver(const FIPv4Endpoint& InEndpoint, FSampleCallback InOnSample)
	: Endpoint(InEndpoint)
	, OnSample(MoveTemp(InOnSample))
{
}

FOrvaneTrackingReceiver::~FOrvaneTrackingReceiver()
{
	RequestStop();
	if (Thread)
	{
		// Only reached when the owner did not wait for IsStopped(); the socket is closed, so this is short.
		Thread->WaitForCompletion();
	}
	ReleaseThreadAndSocket();
}

bool FOrvaneTrackingReceiver::Start(FString& OutError)
{
	check(!Thread && !Socket);
	Socket = CreateSocket(OutError);
	if (!Socket)
	{
		SetLastError(OutError);
		return false;
	}

	bStopRequested = false;
	bThreadRunning = true;
	Thread = FRunnableThread::Create(this, TEXT("OrvaneTrackingReceiver"), 0, TPri_AboveNormal);
	if (!Thread)
	{
		bThreadRunning = false;
		OutError = FString::Printf(TEXT("Could not start the receive thread for %s"), *Endpoint.ToString());
		SetLastError(OutError);
		ReleaseThreadAndSocket();
		return false;
	}
	return true;
}

FSocket* FOrvaneTrackingReceiver::CreateSocket(FString& OutError) const
{
	FUdpSocketBuilder Builder(TEXT("OrvaneTrackingReceiver"));
	Builder.AsNonBlocking().WithReceiveBufferSize(OrvaneTrackingReceiver::SocketReceiveBufferSize);
	if (Endpoint.Address.IsMulticastAddress())
	{
		// Several listeners may share a group, so the port is shared too.
		Builder.AsReusable()
			.BoundToAddress(FIPv4Address::Any)
			.BoundToPort(Endpoint.Port)
			.JoinedToGroup(Endpoint.Address)
			.WithMulticastLoopback();
	}
	else
	{
		// No address reuse: a second listener on the same port is a real conflict and must show as one.
		Builder.BoundToEndpoint(Endpoint);
	}

	FSocket* NewSocket = Builder.Build();
	if (!NewSocket)
	{
		ISocketSubsystem* Sockets = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM);
		const ESocketErrors Error = Sockets ? Sockets->GetLastErrorCode() : SE_NO_ERROR;
		OutError = Error == SE_EADDRINUSE ? FString::Printf(TEXT("Port %d busy"), Endpoint.Port)
										  : FString::Printf(TEXT("Cannot listen on %s: %s"), *Endpoint.ToString(),
												Sockets ? Sockets->GetSocketError(Error) : TEXT("no socket subsystem"));
	}
	return NewSocket;
}

void FOrvaneTrackingReceiver::RequestStop()
{
	bStopRequested = true;
	if (Socket)
	{
		// Closing wakes the thread out of its wait and frees the port for whoever binds next.
		Socket->Close();
	}
	if (!bThreadRunning)
	{
		ReleaseThreadAndSocket();
	}
}

bool FOrvaneTrackingReceiver::IsStopped() const
{
	return !bThreadRunning;
}

bool FOrvaneTrackingReceiver::IsReceiving() const
{
	return bThreadRunning && !bStopRequested;
}

void FOrvaneTrackingReceiver::ReleaseThreadAndSocket()
{
	check(!bThreadRunning);
	delete Thread;
	Thread = nullptr;
	if (Socket)
	{
		Socket->Close();
		if (ISocketSubsystem* Sockets = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM))
		{
			Sockets->DestroySocket(Socket);
		}
		Socket = nullptr;
	}
}

uint32 FOrvaneTrackingReceiver::Run()
{
	TArray<uint8> Buffer;
	Buffer.SetNumUninitialized(OrvaneTrackingReceiver::ReadBufferSize);
	TSharedRef<FInternetAddr> Sender = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->CreateInternetAddr();

	while (!bStopRequested)
	{
		if (!Socket->Wait(ESocketWaitConditions::WaitForRead, OrvaneTrackingReceiver::WaitTime))
		{
			continue;
		}
		if (!DrainSocket(Buffer, *Sender))
		{
			break;
		}
	}

	bThreadRunning = false;
	return 0;
}

void FOrvaneTrackingReceiver::Stop()
{
	bStopRequested = true;
}

bool FOrvaneTrackingReceiver::DrainSocket(TArray<uint8>& Buffer, FInternetAddr& Sender)
{
	while (!bStopRequested)
	{
		int32 BytesRead = 0;
		if (!Socket->RecvFrom(Buffer.GetData(), Buffer.Num(), BytesRead, Sender))
		{
			ISocketSubsystem* Sockets = ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM);
			const ESocketErrors Error = Sockets->GetLastErrorCode();
			if (Error == SE_EWOULDBLOCK || Error == SE_NO_ERROR)
			{
				return true;
			}
			if (!bStopRequested)
			{
				SetLastError(FString::Printf(
					TEXT("Socket error on %s: %s"), *Endpoint.ToString(), Sockets->GetSocketError(Error)));
			}
			return false;
		}
		const double ReceiptSeconds = FPlatformTime::Seconds();
		LastReceiptSeconds.store(ReceiptSeconds, std::memory_order_relaxed);
		Received.fetch_add(1, std::memory_order_relaxed);
		HandleDatagram(TArrayView<const uint8>(Buffer.GetData(), BytesRead),
			OrvaneTrackingReceiver::MakeSenderKey(Sender), ReceiptSeconds);
	}
	return true;
}

void FOrvaneTrackingReceiver::HandleDatagram(TArrayView<const uint8> Datagram, uint64 SenderKey, double ReceiptSeconds)
{
	DecodedSamples.Reset();
	const FOrvaneDatagramResult Result = Decoder.Decode(SenderKey, Datagram, DecodedSamples);
	PublishCounters(!Result.WasRejected());
	if (Result.WasRejected())
	{
		SetLastError(FOrvaneTrackingCounters::Describe(Result.Rejection.GetValue()));
		return;
	}
	for (const FOrvaneTrackingSample& Sample : DecodedSamples)
	{
		OnSample(Sample, ReceiptSeconds);
	}
	if (DecodedSamples.Num() > 0)
	{
		Latency.Record(FPlatformTime::Seconds() - ReceiptSeconds);
	}
}

void FOrvaneTrackingReceiver::PublishCounters(bool bAccepted)
{
	const FOrvaneDatagramCounters& Totals = Decoder.GetCounters();
	if (bAccepted)
	{
		Accepted.fetch_add(1, std::memory_order_relaxed);
	}
	Samples.store(Totals.Samples, std::memory_order_relaxed);
	SequenceGaps.store(Totals.SequenceGaps, std::memory_order_relaxed);
	for (int32 Index = 0; Index < FOrvaneTrackingCounters::NumRejections; ++Index)
	{
		Rejected[Index].store(Totals.Rejections[Index], std::memory_order_relaxed);
	}
}

FOrvaneTrackingCounters FOrvaneTrackingReceiver::GetCounters() const
{
	FOrvaneTrackingCounters Counters;
	Counters.Received = Received.load(std::memory_order_relaxed);
	Counters.Accepted = Accepted.load(std::memory_order_relaxed);
	Counters.Samples = Samples.load(std::memory_order_relaxed);
	for (int32 Index = 0; Index < FOrvaneTrackingCounters::NumRejections; ++Index)
	{
		Counters.Rejected[Index] = Rejected[Index].load(std::memory_order_relaxed);
	}
	Counters.SequenceGaps = SequenceGaps.load(std::memory_order_relaxed);
	return Counters;
}

FString FOrvaneTrackingReceiver::GetLastError() const
{
	FScopeLock Lock(&LastErrorLock);
	return LastError;
}

double FOrvaneTrackingReceiver::GetLastReceiptSeconds() const
{
	return LastReceiptSeconds.load(std::memory_order_relaxed);
}

void FOrvaneTrackingReceiver::SetLastError(const FString& Error)
{
	FScopeLock Lock(&LastErrorLock);
	LastError = Error;
}
