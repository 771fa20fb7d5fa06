// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "HAL/CriticalSection.h"

/** What the monitor shows of one camera stream over the last report period. */
struct FTrackingMonitorSubject
{
	FString Name;
	double RateHz = 0.0;
	/** Standard deviation of the time between two datagrams, in milliseconds. */
	double JitterMs = 0.0;
	uint64 TotalSamples = 0;
	FOrvaneTrackingSample Last;
};

/**
 * Collects the samples a receiver hands over (on its thread) and turns them, once per report period, into
 * per-subject rates, jitter and the latest pose and lens values.
 */
class FTrackingMonitor
{
public:
	/** Records one sample; called on the receive thread. */
	void AddSample(const FOrvaneTrackingSample& Sample, double ReceiptSeconds);

	/** The subjects seen so far, with rate and jitter measured since the previous call, sorted by name. */
	TArray<FTrackingMonitorSubject> TakeReport(double NowSeconds);

private:
	struct FStream
	{
		FTrackingMonitorSubject Subject;
		double LastReceiptSeconds = 0.0;
		/** Arrival intervals of the current period: count, mean and sum of squared deviations (Welford). */
		uint64 Intervals = 0;
		double IntervalMean = 0.0;
		double IntervalM2 = 0.0;
		uint64 PeriodSamples = 0;
	};

	FCriticalSection Lock;
	TMap<FString, FStream> Streams;
	double PeriodStartSeconds = -1.0;
};
