// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "CoreTypes.h"
#include "Decoding/OrvaneDatagramRejection.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Misc/Optional.h"
#include "Templates/UniquePtr.h"

namespace UE::OrvaneTracking::Private
{
	class FOpenTrackIOStream;
}

/** What became of one datagram handed to FOrvaneDatagramDecoder. */
struct FOrvaneDatagramResult
{
	/** The protocol the datagram was recognised as; unset when it was neither. */
	TOptional<EOrvaneTrackingProtocol> Protocol;
	/** Samples appended to the caller's array (zero while a segmented payload is incomplete). */
	int32 NumSamples = 0;
	/** Why the datagram was dropped; unset when it was used (decoded, or kept as a segment). */
	TOptional<EOrvaneDatagramRejection> Rejection;
	/** True when the datagram was kept as a segment of a payload that is not complete yet. */
	bool bSegmentPending = false;
	/** Unfinished segmented payloads this datagram made the decoder give up on. */
	int32 NumAbandonedPayloads = 0;
	/** OpenTrackIO sequence numbers skipped between the previous datagram of this sender and this one. */
	uint32 SequenceGap = 0;

	bool WasRejected() const { return Rejection.IsSet(); }
};

/** Running totals of a decoder since it was made or last reset. */
struct ORVANETRACKING_API FOrvaneDatagramCounters
{
	/** Datagrams handed to Decode. */
	uint64 Datagrams = 0;
	/** Samples produced. */
	uint64 Samples = 0;
	/**
	 * Rejections by reason. Each dropped datagram counts once under its reason, except that payloads given
	 * up unfinished count once each under SegmentBookkeeping (or Oversize), whether or not the datagram
	 * that ended them was itself used.
	 */
	uint64 Rejections[uint8(EOrvaneDatagramRejection::Num)] = {};
	/**
	 * OpenTrackIO header sequence numbers skipped when a sender's count jumped ahead (serial-number arithmetic,
	 * so 65535 to 0 is no gap). A datagram that turns up late after such a jump is not taken off again.
	 */
	uint64 SequenceGaps = 0;

	uint64 GetRejections(EOrvaneDatagramRejection Reason) const { return Rejections[uint8(Reason)]; }
	uint64 GetTotalRejections() const;
};

/**
 * Turns received datagrams into tracking samples. Recognises each datagram on its own as FreeD D1 (first
 * byte 0xD1) or OpenTrackIO (starts with "OTrk"), checks it, reassembles segmented OpenTrackIO payloads per
 * sender, drops duplicates, counts sequence gaps and rejections. Anything else is rejected as BadHeader; other
 * FreeD message types as UnknownType.
 *
 * Segments of one payload are matched by their offsets, whether the sender gives all of them the same
 * sequence number or numbers each one; a sender has at most one payload in reassembly at a time, and a
 * payload that cannot be completed (a hole when the next one starts, an overlap, mixed encodings) is given
 * up and counted once. A datagram whose sequence number is up to 32 behind the newest one is late: it is
 * used only if it fills in the payload being reassembled, else dropped as OutOfOrder; further behind, the
 * sender is taken to have restarted its count.
 *
 * Keeps state per sender, so use one decoder per receive thread; it is not thread-safe. Memory is bounded:
 * at most MaxSenders senders are tracked (the least recently heard is forgotten first, and its unfinished
 * payload counted as given up), each holding at most one payload of at most FOrvaneOpenTrackIO::MaxPayloadSize
 * bytes.
 */
class ORVANETRACKING_API FOrvaneDatagramDecoder
{
public:
	/** Senders tracked at once. */
	static constexpr int32 MaxSenders = 16;

	FOrvaneDatagramDecoder();
	~FOrvaneDatagramDecoder();
	FOrvaneDatagramDecoder(const FOrvaneDatagramDecoder&) = delete;
	FOrvaneDatagramDecoder& operator=(const FOrvaneDatagramDecoder&) = delete;

	/** A sender key from an IPv4 address (host byte order) and a UDP port. */
	static uint64 MakeSenderKey(uint32 Address, uint16 Port) { return (uint64(Address) << 16) | Port; }

	/**
	 * Decodes one datagram.
	 * @param SenderKey Identifies the sender (see MakeSenderKey); reassembly and sequence tracking are per key.
	 * @param Datagram The datagram's bytes, up to FOrvaneOpenTrackIO::MaxDatagramSize.
	 * @param OutSamples Decoded samples are appended here.
	 */
	FOrvaneDatagramResult Decode(
		uint64 SenderKey, TArrayView<const uint8> Datagram, TArray<FOrvaneTrackingSample>& OutSamples);

	const FOrvaneDatagramCounters& GetCounters() const { return Counters; }
	uint64 GetSequenceGapCount() const { return Counters.SequenceGaps; }
	uint64 GetDuplicateCount() const { return Counters.GetRejections(EOrvaneDatagramRejection::Duplicate); }

	/** Forgets every sender and zeroes the counters. */
	void Reset();

private:
	using FStream = UE::OrvaneTracking::Private::FOpenTrackIOStream;

	void DecodeFreeD(
		TArrayView<const uint8> Datagram, TArray<FOrvaneTrackingSample>& OutSamples, FOrvaneDatagramResult& Result);
	void DecodeOpenTrackIO(uint64 SenderKey, TArrayView<const uint8> Datagram,
		TArray<FOrvaneTrackingSample>& OutSamples, FOrvaneDatagramResult& Result);
	FStream& FindOrAddStream(uint64 SenderKey, FOrvaneDatagramResult& Result);
	void Reject(FOrvaneDatagramResult& Result, EOrvaneDatagramRejection Reason);

	TArray<TUniquePtr<FStream>> Streams;
	FOrvaneDatagramCounters Counters;
	/** Stamps streams by when they were last heard from, to find the one to forget when full. */
	uint64 UseClock = 0;
};
