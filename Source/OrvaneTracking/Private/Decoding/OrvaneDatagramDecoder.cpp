// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneDatagramDecoder.h"

#include "Decoding/OrvaneFreeD.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneOpenTrackIOStream.h"

const TCHAR* LexToString(EOrvaneDatagramRejection Rejection)
{
	switch (Rejection)
	{
		case EOrvaneDatagramRejection::Length:
			return TEXT("Length");
		case EOrvaneDatagramRejection::Checksum:
			return TEXT("Checksum");
		case EOrvaneDatagramRejection::UnknownType:
			return TEXT("UnknownType");
		case EOrvaneDatagramRejection::BadHeader:
			return TEXT("BadHeader");
		case EOrvaneDatagramRejection::UnsupportedVersion:
			return TEXT("UnsupportedVersion");
		case EOrvaneDatagramRejection::SegmentBookkeeping:
			return TEXT("SegmentBookkeeping");
		case EOrvaneDatagramRejection::Oversize:
			return TEXT("Oversize");
		case EOrvaneDatagramRejection::MalformedPayload:
			return TEXT("MalformedPayload");
		case EOrvaneDatagramRejection::Duplicate:
			return TEXT("Duplicate");
		case EOrvaneDatagramRejection::OutOfOrder:
			return TEXT("OutOfOrder");
		case EOrvaneDatagramRejection::Num:
			break;
	}
	return TEXT("Unknown");
}

uint64 FOrvaneDatagramCounters::GetTotalRejections() const
{
	uint64 Total = 0;
	for (const uint64 Count : Rejections)
	{
		Total += Count;
	}
	return Total;
}

FOrvaneDatagramDecoder::FOrvaneDatagramDecoder() = default;

FOrvaneDatagramDecoder::~FOrvaneDatagramDecoder() = default;

FOrvaneDatagramResult FOrvaneDatagramDecoder::Decode(
	uint64 SenderKey, TArrayView<const uint8> Datagram, TArray<FOrvaneTrackingSample>& OutSamples)
{
	FOrvaneDatagramResult Result;
	++Counters.Datagrams;

	if (Datagram.Num() == 0 || Datagram.Num() > FOrvaneOpenTrackIO::MaxDatagramSize)
	{
		Reject(Result, EOrvaneDatagramRejection::Length);
	}
	else if (FOrvaneOpenTrackIO::HasMagic(Datagram))
	{
		DecodeOpenTrackIO(SenderKey, Datagram, OutSamples, Result);
	}
	else if (FOrvaneFreeD::IsFreeDType(Datagram[0]))
	{
		DecodeFreeD(Datagram, OutSamples, Result);
	}
	else
	{
		Reject(Result, EOrvaneDatagramRejection::BadHeader);
	}
	return Result;
}

void FOrvaneDatagramDecoder::Reset()
{
	Streams.Empty();
	Counters = FOrvaneDatagramCounters();
	UseClock = 0;
}

void FOrvaneDatagramDecoder::DecodeFreeD(
	TArrayView<const uint8> Datagram, TArray<FOrvaneTrackingSample>& OutSamples, FOrvaneDatagramResult& Result)
{
	Result.Protocol = EOrvaneTrackingProtocol::FreeD;
	FOrvaneTrackingSample Sample;
	if (const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneFreeD::Decode(Datagram, Sample))
	{
		Reject(Result, *Rejection);
		return;
	}
	OutSamples.Add(MoveTemp(Sample));
	Result.NumSamples = 1;
	++Counters.Samples;
}

void FOrvaneDatagramDecoder::DecodeOpenTrackIO(uint64 SenderKey, TArrayView<const uint8> Datagram,
	TArray<FOrvaneTrackingSample>& OutSamples, FOrvaneDatagramResult& Result)
{
	using namespace UE::OrvaneTracking::Private;

	Result.Protocol = EOrvaneTrackingProtocol::OpenTrackIO;
	FOrvaneOpenTrackIOHeader Header;
	if (const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneOpenTrackIO::ParseHeader(Datagram, Header))
	{
		Reject(Result, *Rejection);
		return;
	}

	FStream& Stream = FindOrAddStream(SenderKey, Result);
	const FOpenTrackIOSegmentResult Segment =
		Stream.Accept(Header, Datagram.Slice(FOrvaneOpenTrackIO::HeaderSize, Header.PayloadLength));
	Result.SequenceGap = Segment.SequenceGap;
	Counters.SequenceGaps += Segment.SequenceGap;
	Result.NumAbandonedPayloads += Segment.NumAbandonedPayloads;
	Counters.Rejections[uint8(EOrvaneDatagramRejection::SegmentBookkeeping)] += Segment.NumAbandonedPayloads;

	switch (Segment.Outcome)
	{
		case EOpenTrackIOSegmentOutcome::Duplicate:
			Reject(Result, EOrvaneDatagramRejection::Duplicate);
			return;
		case EOpenTrackIOSegmentOutcome::OutOfOrder:
			Reject(Result, EOrvaneDatagramRejection::OutOfOrder);
			return;
		case EOpenTrackIOSegmentOutcome::Oversize:
			Reject(Result, EOrvaneDatagramRejection::Oversize);
			return;
		case EOpenTrackIOSegmentOutcome::Pending:
			Result.bSegmentPending = true;
			return;
		case EOpenTrackIOSegmentOutcome::Complete:
			break;
	}

	FOrvaneTrackingSample Sample;
	if (const TOptional<EOrvaneDatagramRejection> Rejection =
			FOrvaneOpenTrackIO::DecodePayload(Segment.Encoding, Segment.Payload, Sample))
	{
		Reject(Result, *Rejection);
		return;
	}
	OutSamples.Add(MoveTemp(Sample));
	Result.NumSamples = 1;
	++Counters.Samples;
}

FOrvaneDatagramDecoder::FStream& FOrvaneDatagramDecoder::FindOrAddStream(
	uint64 SenderKey, FOrvaneDatagramResult& Result)
{
	++UseClock;
	for (const TUniquePtr<FStream>& Stream : Streams)
	{
		if (Stream->GetSenderKey() == SenderKey)
		{
			Stream->LastUse = UseClock;
			return *Stream;
		}
	}

	if (Streams.Num() >= MaxSenders)
	{
		int32 Oldest = 0;
		for (int32 Index = 1; Index < Streams.Num(); ++Index)
		{
			if (Streams[Index]->LastUse < Streams[Oldest]->LastUse)
			{
				Oldest = Index;
			}
		}
		if (Streams[Oldest]->HasPendingPayload())
		{
			++Result.NumAbandonedPayloads;
			++Counters.Rejections[uint8(EOrvaneDatagramRejection::SegmentBookkeeping)];
		}
		Streams.RemoveAtSwap(Oldest);
	}

	FStream& Stream = *Streams.Add_GetRef(MakeUnique<FStream>(SenderKey));
	Stream.LastUse = UseClock;
	return Stream;
}

void FOrvaneDatagramDecoder::Reject(FOrvaneDatagramResult& Result, EOrvaneDatagramRejection Reason)
{
	Result.Rejection = Reason;
	++Counters.Rejections[uint8(Reason)];
}
