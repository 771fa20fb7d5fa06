// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingLatencyHistogram.h"

void FOrvaneTrackingLatencyHistogram::Record(double Seconds)
{
	const int32 Microseconds = FMath::Clamp(static_cast<int32>(Seconds * 1e6), 0, MaxMicroseconds);
	Buckets[Microseconds].fetch_add(1, std::memory_order_relaxed);
	Count.fetch_add(1, std::memory_order_relaxed);
}

uint64 FOrvaneTrackingLatencyHistogram::GetCount() const
{
	return Count.load(std::memory_order_relaxed);
}

double FOrvaneTrackingLatencyHistogram::GetPercentileMicroseconds(double Share) const
{
	const uint64 Total = GetCount();
	if (Total == 0)
	{
		return 0.0;
	}
	const uint64 Wanted =
		FMath::Max<uint64>(1, static_cast<uint64>(FMath::CeilToDouble(Share * static_cast<double>(Total))));
	uint64 Seen = 0;
	for (int32 Microseconds = 0; Microseconds <= MaxMicroseconds; ++Microseconds)
	{
		Seen += Buckets[Microseconds].load(std::memory_order_relaxed);
		if (Seen >= Wanted)
		{
			// The bucket holds latencies from Microseconds up to the next whole microsecond.
			return static_cast<double>(Microseconds + 1);
		}
	}
	return static_cast<double>(MaxMicroseconds);
}

void FOrvaneTrackingLatencyHistogram::Reset()
{
	for (std::atomic<uint64>& Bucket : Buckets)
	{
		Bucket.store(0, std::memory_order_relaxed);
	}
	Count.store(0, std::memory_order_relaxed);
}
