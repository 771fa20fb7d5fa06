// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Decoding/OrvaneDatagramRejection.h"

/** What a tracking receiver has seen: datagrams read, used and turned away by reason. A plain snapshot. */
struct ORVANETRACKING_API FOrvaneTrackingCounters
{
	/** Number of rejection reasons. */
	static constexpr int32 NumRejections = static_cast<int32>(EOrvaneDatagramRejection::Num);

	/** Datagrams read from the socket. */
	uint64 Received = 0;

	/** Datagrams that were used: decoded, or kept as a segment of a payload. */
	uint64 Accepted = 0;

	/** Camera samples handed on (a reassembled payload is one sample). */
	uint64 Samples = 0;

	/** Rejections, indexed by EOrvaneDatagramRejection. */
	uint64 Rejected[NumRejections] = {};

	/** Sequence numbers that never arrived. */
	uint64 SequenceGaps = 0;

	/** Rejections of one reason. */
	uint64 GetRejected(EOrvaneDatagramRejection Reason) const { return Rejected[static_cast<int32>(Reason)]; }

	/** Sum of all rejections. */
	uint64 GetTotalRejected() const;

	/** Share of the expected datagrams that were lost, from sequence gaps, in percent. */
	double GetLossPercent() const;

	/** How a rejection reason reads in a status line: "bad checksum", "wrong length", ... */
	static const TCHAR* Describe(EOrvaneDatagramRejection Reason);
};
