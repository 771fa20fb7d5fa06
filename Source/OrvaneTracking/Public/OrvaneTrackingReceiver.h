// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Decoding/OrvaneDatagramDecoder.h"
#include "HAL/CriticalSection.h"
#include "HAL/Runnable.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "OrvaneTrackingCounters.h"
#include "OrvaneTrackingLatencyHistogram.h"

#include <atomic>

class FRunnableThread;
class FSocket;
struct FOrvaneTrackingSample;

/**
 * Listens on one UDP endpoint and decodes every datagram on its own thread, handing each camera sample to
 * a callback on that same thread, stamped with the time the datagram was read. Nothing waits for the game
 * thread. Stopping closes the socket at once (so another receiver can bind the port in the same frame) and
 * never blocks: the owner polls IsStopped() until the thread has left.
 */
class ORVANETRACKING_API FOrvaneTrackingReceiver : public FRunnable
{
public:
	/** Called on the receive thread for every decoded sample, with the receipt time in FPlatformTime seconds. */
	using FSampleCallback = TFunction<void(const FOrvaneTrackingSample& Sample, double ReceiptSeconds)>;

	FOrvaneTrackingReceiver(const FIPv4Endpoint& InEndpoint, FSampleCallback InOnSample);
	virtual ~FOrvaneTrackingReceiver() override;

	/** Opens and binds the socket and starts the thread. False, with OutError set, when the port cannot be had. */
	bool Start(FString& OutError);

	/** Asks the thread to leave and closes the socket. Returns at once. */
	void RequestStop();

	/** True once the receive thread has left (or never started). */
	bool IsStopped() const;

	/** True while the socket is bound and the thread reads from it. */
	bool IsReceiving() const;

	/** A snapshot of the counters. Safe from any thread. */
	FOrvaneTrackingCounters GetCounters() const;

	/** The most recent rejection or socket error, empty if none. Safe from any thread. */
	FString GetLastError() const;

	/** FPlatformTime seconds of the last datagram read, 0 if none yet. */
	double GetLastReceiptSeconds() const;

	/** Time from a datagram's receipt to the return of the last sample callback it caused. */
	const FOrvaneTrackingLatencyHistogram& GetLatency() const { return Latency; }

	/** The endpoint listened on. */
	const FIPv4Endpoint& GetEndpoint() const { return Endpoint; }

	//~ Begin FRunnable interface
	virtual uint32 Run() override;
	virtual void Stop() override;
	//~ End FRunnable interface

private:
	/** Builds the socket for the endpoint: bound to the address and port, or to the port and joined to a group. */
	FSocket* CreateSocket(FString& OutError) const;

	/** Reads every datagram waiting on the socket. False when the socket failed. */
	bool DrainSocket(TArray<uint8>& Buffer, class FInternetAddr& Sender);

	/** Decodes one datagram and hands its samples on. */
	void HandleDatagram(TArrayView<const uint8> Datagram, uint64 SenderKey, double ReceiptSeconds);

	/** Copies the decoder's totals into the counters other threads read. */
	void PublishCounters(bool bAccepted);

	/** Records the last error text. */
	void SetLastError(const FString& Error);

	/** Releases the thread and the socket once the thread has left. */
	void ReleaseThreadAndSocket();

	const FIPv4Endpoint Endpoint;
	const FSampleCallback OnSample;

	FSocket* Socket = nullptr;
	FRunnableThread* Thread = nullptr;
	std::atomic<bool> bStopRequested{false};
	std::atomic<bool> bThreadRunning{false};

	/** Used by the receive thread only. */
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> DecodedSamples;

	/** The decoder's counters, mirrored after every datagram so other threads can read them. */
	std::atomic<uint64> Received{0};
	std::atomic<uint64> Accepted{0};
	std::atomic<uint64> Samples{0};
	std::atomic<uint64> Rejected[FOrvaneTrackingCounters::NumRejections] = {};
	std::atomic<uint64> SequenceGaps{0};
	std::atomic<double> LastReceiptSeconds{0.0};

	FOrvaneTrackingLatencyHistogram Latency;

	mutable FCriticalSection LastErrorLock;
	FString LastError;
};
