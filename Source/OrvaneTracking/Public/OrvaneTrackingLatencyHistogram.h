// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

#include <atomic>

/**
 * How long datagrams took from the moment the socket returned them to the moment their frames were pushed, in
 * whole microseconds. One writer thread, any number of readers; recording is two relaxed atomic increments.
 */
class ORVANETRACKING_API FOrvaneTrackingLatencyHistogram
{
public:
	/** Latencies at or above this many microseconds share the last bucket. */
	static constexpr int32 MaxMicroseconds = 2000;

	/** Records one latency. */
	void Record(double Seconds);

	/** Number of latencies recorded. */
	uint64 GetCount() const;

	/** The latency, in microseconds, below which the given share (0..1) of the recorded ones lie. */
	double GetPercentileMicroseconds(double Share) const;

	/** Forgets everything recorded. Not to be called while the writer records. */
	void Reset();

private:
	std::atomic<uint64> Buckets[MaxMicroseconds + 1] = {};
	std::atomic<uint64> Count{0};
};
