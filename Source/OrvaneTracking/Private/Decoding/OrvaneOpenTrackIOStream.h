// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "CoreTypes.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Misc/Optional.h"

namespace UE::OrvaneTracking::Private
{
	/** What a stream made of one datagram. */
	enum class EOpenTrackIOSegmentOutcome : uint8
	{
		/** The datagram completed a payload; it is in FOpenTrackIOSegmentResult::Payload. */
		Complete,
		/** The datagram was kept as a segment of a payload still missing bytes. */
		Pending,
		/** The same datagram was already seen. */
		Duplicate,
		/** The datagram is older than ones already used and belongs to no payload in reassembly. */
		OutOfOrder,
		/** The datagram would make its payload larger than the reassembly cap; that payload is dropped. */
		Oversize,
	};

	struct FOpenTrackIOSegmentResult
	{
		EOpenTrackIOSegmentOutcome Outcome = EOpenTrackIOSegmentOutcome::Pending;
		/** The complete payload; valid until the stream is next used. */
		TArrayView<const uint8> Payload;
		EOrvaneOpenTrackIOEncoding Encoding = EOrvaneOpenTrackIOEncoding::Json;
		/** Unfinished payloads given up because this datagram could not belong to them. */
		int32 NumAbandonedPayloads = 0;
		/** Sequence numbers skipped since the newest datagram before this one. */
		uint32 SequenceGap = 0;
		/** True when the datagram was older than the newest one seen but still fitted a payload. */
		bool bLate = false;
	};

	/**
	 * The OpenTrackIO datagrams of one sender: sequence tracking, duplicate detection and reassembly of
	 * segmented payloads.
	 *
	 * Segments are placed by their offsets. Senders differ in how they number the segments of one payload:
	 * some repeat the payload's sequence number on every segment, others number each datagram. Both are
	 * accepted: a segment joins the payload in reassembly when its number equals its neighbours' or runs in
	 * step with its offset, and when it neither overlaps them nor contradicts the known end. Anything else
	 * starts a new payload and the unfinished one is given up.
	 */
	class FOpenTrackIOStream
	{
	public:
		/** Segments one payload may have; with typical 1484-byte segments this is far beyond the size cap. */
		static constexpr int32 MaxSegments = 2048;
		/** How far behind the newest sequence number a datagram may be and still count as reordered; older ones mean
		 * the sender restarted its count. */
		static constexpr int32 ReorderWindow = 32;
		/** Datagrams remembered to recognise duplicates. */
		static constexpr int32 RecentCapacity = 32;
		/** Reassembly memory kept between payloads; larger buffers are freed. */
		static constexpr int32 RetainedBufferBytes = 64 * 1024;

		explicit FOpenTrackIOStream(uint64 InSenderKey);

		uint64 GetSenderKey() const { return SenderKey; }
		bool HasPendingPayload() const { return bPending; }

		/** Takes one datagram whose header and checksum were already checked. */
		FOpenTrackIOSegmentResult Accept(const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> SegmentBytes);

		/** Stamp of the last use, for the owner's choice of the stream to forget. */
		uint64 LastUse = 0;

	private:
		/** The header fields that identify a datagram. */
		struct FSignature
		{
			uint32 SegmentOffset = 0;
			uint16 SequenceNumber = 0;
			uint16 PayloadLength = 0;
			uint16 Checksum = 0;
			bool bLastSegment = false;

			bool operator==(const FSignature& Other) const = default;
		};

		struct FSegment
		{
			uint32 Offset = 0;
			uint32 Length = 0;
			uint16 SequenceNumber = 0;
			/** Where the segment's bytes were put in Received. */
			int32 ReceivedStart = 0;

			uint32 GetEnd() const { return Offset + Length; }
		};

		enum class ENumbering : uint8
		{
			Unknown,
			/** Every segment repeats the payload's sequence number. */
			Repeated,
			/** Each segment takes the next sequence number. */
			Consecutive,
		};

		bool IsRecent(const FSignature& Signature) const;
		void Remember(const FSignature& Signature);

		/** Where a segment at Offset goes in Segments, which is sorted by offset. */
		int32 FindInsertIndex(uint32 Offset) const;
		/** True if the segment can be part of the payload in reassembly; sets OutNumbering to what joining implies. */
		bool CanJoin(const FOrvaneOpenTrackIOHeader& Header, ENumbering& OutNumbering) const;
		bool IsNumberingConsistent(
			const FSegment& Neighbour, const FSegment& Candidate, ENumbering& InOutNumbering) const;
		void StartPayload(EOrvaneOpenTrackIOEncoding Encoding);
		void AddSegment(const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> SegmentBytes);
		bool IsPayloadComplete() const;
		/** Puts the received segments in order in Buffer; the payload is complete. */
		void AssemblePayload();
		/** Forgets the payload in reassembly. */
		void ClearPayload();
		/** Empties the buffers, and frees those that grew large. */
		void ReleaseBuffers();

		uint64 SenderKey = 0;

		TOptional<uint16> NewestSequence;
		FSignature Recent[RecentCapacity];
		int32 NumRecent = 0;
		int32 NextRecent = 0;

		bool bPending = false;
		EOrvaneOpenTrackIOEncoding PendingEncoding = EOrvaneOpenTrackIOEncoding::Json;
		ENumbering Numbering = ENumbering::Unknown;
		TArray<FSegment> Segments;
		TOptional<uint32> TotalLength;
		/**
		 * Segment bytes in arrival order. Memory follows what was received, not what offsets claim, so a
		 * lone datagram claiming a far offset costs only its own bytes.
		 */
		TArray<uint8> Received;
		/** The assembled payload most recently handed out, which must stay readable until the next datagram. */
		TArray<uint8> Buffer;
	};
} // namespace UE::OrvaneTracking::Private
