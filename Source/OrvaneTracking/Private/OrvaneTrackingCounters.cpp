// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingCounters.h"

uint64 FOrvaneTrackingCounters::GetTotalRejected() const
{
	uint64 Total = 0;
	for (const uint64 Count : Rejected)
	{
		Total += Count;
	}
	return Total;
}

double FOrvaneTrackingCounters::GetLossPercent() const
{
	const uint64 Expected = Accepted + SequenceGaps;
	return Expected == 0 ? 0.0 : 100.0 * static_cast<double>(SequenceGaps) / static_cast<double>(Expected);
}

const TCHAR* FOrvaneTrackingCounters::Describe(EOrvaneDatagramRejection Reason)
{
	switch (Reason)
	{
		case EOrvaneDatagramRejection::Length:
			return TEXT("wrong length");
		case EOrvaneDatagramRejection::Checksum:
			return TEXT("bad checksum");
		case EOrvaneDatagramRejection::UnknownType:
			return TEXT("unknown message type");
		case EOrvaneDatagramRejection::BadHeader:
			return TEXT("bad header");
		case EOrvaneDatagramRejection::UnsupportedVersion:
			return TEXT("unsupported version");
		case EOrvaneDatagramRejection::SegmentBookkeeping:
			return TEXT("segments that do not add up");
		case EOrvaneDatagramRejection::Oversize:
			return TEXT("oversize payload");
		case EOrvaneDatagramRejection::MalformedPayload:
			return TEXT("malformed payload");
		case EOrvaneDatagramRejection::Duplicate:
			return TEXT("duplicate");
		case EOrvaneDatagramRejection::OutOfOrder:
			return TEXT("out of order");
		default:
			return TEXT("rejected");
	}
}
