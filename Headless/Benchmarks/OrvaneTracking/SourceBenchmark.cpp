// Copyright Orvane. All Rights Reserved.

// The tracking source end to end on loopback: datagrams sent to its endpoint, decoded on its receive thread and
// pushed into a real Live Link client. Reports the receipt-to-push latency the source measures for every
// datagram, and whether a sustained stream is taken without loss and at what processor cost.

#include "Common/UdpSocketBuilder.h"
#include "CoreMinimal.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"
#include "IPAddress.h"
#include "LiveLinkClient.h"
#include "OrvaneTrackingEndpoint.h"
#include "OrvaneTrackingLatencyHistogram.h"
#include "OrvaneTrackingSource.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

#include <atomic>
#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <thread>
#include <time.h>

namespace
{
	/** FreeD vector 1: a 29-byte D1 message with a valid checksum. */
	const uint8 FreeDPacket[29] = {0xD1, 0x01, 0x2D, 0x00, 0x00, 0xF9, 0xC0, 0x00, 0x00, 0x40, 0x00, 0x01, 0x34, 0xA0,
		0xFE, 0x0B, 0xF0, 0x01, 0x77, 0x00, 0x00, 0x08, 0x00, 0x00, 0xFF, 0xFF, 0x01, 0x18, 0xE3};

	double ThreadCpuSeconds()
	{
		timespec Time;
		clock_gettime(CLOCK_THREAD_CPUTIME_ID, &Time);
		return static_cast<double>(Time.tv_sec) + static_cast<double>(Time.tv_nsec) * 1e-9;
	}

	double ProcessCpuSeconds()
	{
		rusage Usage;
		getrusage(RUSAGE_SELF, &Usage);
		return static_cast<double>(Usage.ru_utime.tv_sec + Usage.ru_stime.tv_sec) +
			   static_cast<double>(Usage.ru_utime.tv_usec + Usage.ru_stime.tv_usec) * 1e-6;
	}

	/** A client with one tracking source bound to a free loopback port, and a socket that sends to it. */
	struct FLoopbackRig
	{
		FLiveLinkClient Client;
		TSharedPtr<FOrvaneTrackingSource> Source;
		FSocket* Sender = nullptr;
		TSharedPtr<FInternetAddr> Destination;

		bool Start()
		{
			FSocket* Probe = FUdpSocketBuilder(TEXT("BenchmarkPortProbe"))
								 .BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
								 .Build();
			if (!Probe)
			{
				return false;
			}
			const uint16 Port = static_cast<uint16>(Probe->GetPortNo());
			Probe->Close();
			ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Probe);

			const FString Text = FString::Printf(TEXT("127.0.0.1:%d"), Port);
			FIPv4Endpoint Endpoint;
			FString Error;
			FOrvaneTrackingEndpoint::Parse(Text, Endpoint, Error);
			Source = MakeShared<FOrvaneTrackingSource>(Text, Endpoint);
			Client.AddSource(Source);
			const double Deadline = FPlatformTime::Seconds() + 2.0;
			while (!Source->IsReceiving() && FPlatformTime::Seconds() < Deadline)
			{
				Client.Tick();
				FPlatformProcess::Sleep(0.001f);
			}
			Sender =
				FUdpSocketBuilder(TEXT("BenchmarkSender")).AsBlocking().WithSendBufferSize(4 * 1024 * 1024).Build();
			Destination = FIPv4Endpoint(FIPv4Address::InternalLoopback, Port).ToInternetAddr();
			return Source->IsReceiving() && Sender != nullptr;
		}

		void Send(const uint8* Data, int32 Size)
		{
			int32 Sent = 0;
			Sender->SendTo(Data, Size, Sent, *Destination);
		}

		/** Ticks the client until the source has produced Samples samples or the time is up. */
		bool WaitForSamples(uint64 Samples, double TimeoutSeconds)
		{
			const double Deadline = FPlatformTime::Seconds() + TimeoutSeconds;
			while (Source->GetCounters().Samples < Samples && FPlatformTime::Seconds() < Deadline)
			{
				Client.Tick();
				FPlatformProcess::Sleep(0.0005f);
			}
			return Source->GetCounters().Samples >= Samples;
		}

		~FLoopbackRig()
		{
			if (Sender)
			{
				Sender->Close();
				ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Sender);
			}
			Client.Shutdown();
		}
	};
} // namespace

/** Sends datagrams one at a time, each after the previous was pushed, and reports receipt-to-push percentiles. */
static void BM_ReceiptToPushLatency(benchmark::State& State)
{
	FLoopbackRig Rig;
	if (!Rig.Start())
	{
		State.SkipWithError("could not bind the tracking source on loopback");
		return;
	}
	uint64 Expected = 0;
	for (auto _ : State)
	{
		Rig.Send(FreeDPacket, sizeof(FreeDPacket));
		++Expected;
		while (Rig.Source->GetCounters().Samples < Expected)
		{
			// Spin: the point is the source's latency, not the sender's sleep granularity.
		}
		if ((Expected & 63) == 0)
		{
			Rig.Client.Tick();
		}
	}
	const FOrvaneTrackingLatencyHistogram* Latency = Rig.Source->GetLatency();
	State.counters["p50_us"] = Latency->GetPercentileMicroseconds(0.50);
	State.counters["p99_us"] = Latency->GetPercentileMicroseconds(0.99);
	State.counters["p999_us"] = Latency->GetPercentileMicroseconds(0.999);
	State.counters["datagrams"] = static_cast<double>(Latency->GetCount());
}
BENCHMARK(BM_ReceiptToPushLatency)->Iterations(20000)->UseRealTime();

/**
 * Sends DatagramsPerSecond for Seconds, paced in 1 ms bursts, while the game thread ticks the client at 60 Hz.
 * Reports loss and the receive thread's processor time as a share of one core (the process's time minus the
 * sender's and the game thread's).
 */
static void BM_SustainedRate(benchmark::State& State)
{
	const int64 DatagramsPerSecond = State.range(0);
	const double Seconds = static_cast<double>(State.range(1));
	for (auto _ : State)
	{
		FLoopbackRig Rig;
		if (!Rig.Start())
		{
			State.SkipWithError("could not bind the tracking source on loopback");
			return;
		}
		const uint64 Total = static_cast<uint64>(DatagramsPerSecond * Seconds);
		std::atomic<double> SenderCpu{0.0};
		const double ProcessCpuBefore = ProcessCpuSeconds();
		const double MainCpuBefore = ThreadCpuSeconds();
		const double Start = FPlatformTime::Seconds();

		std::thread SenderThread(
			[&Rig, &SenderCpu, Total, DatagramsPerSecond, Start]()
			{
				const double CpuBefore = ThreadCpuSeconds();
				uint64 Sent = 0;
				while (Sent < Total)
				{
					const uint64 Due =
						FMath::Min<uint64>(Total, static_cast<uint64>((FPlatformTime::Seconds() - Start) *
																	  static_cast<double>(DatagramsPerSecond)) +
													  1);
					for (; Sent < Due; ++Sent)
					{
						Rig.Send(FreeDPacket, sizeof(FreeDPacket));
					}
					FPlatformProcess::Sleep(0.001f);
				}
				SenderCpu = ThreadCpuSeconds() - CpuBefore;
			});

		double NextTick = Start;
		while (FPlatformTime::Seconds() - Start < Seconds + 0.5 && Rig.Source->GetCounters().Samples < Total)
		{
			NextTick += 1.0 / 60.0;
			Rig.Client.Tick();
			FPlatformProcess::Sleep(static_cast<float>(FMath::Max(0.0, NextTick - FPlatformTime::Seconds())));
		}
		SenderThread.join();
		Rig.WaitForSamples(Total, 1.0);
		const double Elapsed = FPlatformTime::Seconds() - Start;
		const double MainCpu = ThreadCpuSeconds() - MainCpuBefore;
		const double ReceiverCpu = ProcessCpuSeconds() - ProcessCpuBefore - SenderCpu.load() - MainCpu;

		const FOrvaneTrackingCounters Counters = Rig.Source->GetCounters();
		State.counters["sent"] = static_cast<double>(Total);
		State.counters["received"] = static_cast<double>(Counters.Received);
		State.counters["lost"] = static_cast<double>(Total - FMath::Min(Total, Counters.Samples));
		State.counters["receiver_core_percent"] = 100.0 * ReceiverCpu / Elapsed;
		State.counters["p99_us"] = Rig.Source->GetLatency()->GetPercentileMicroseconds(0.99);
		State.SetIterationTime(Elapsed);
	}
}
BENCHMARK(BM_SustainedRate)->Args({10000, 10})->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

BENCHMARK_MAIN();
