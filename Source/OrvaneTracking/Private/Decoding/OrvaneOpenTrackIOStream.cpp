// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneOpenTrackIOStream.h"

#include "HAL/UnrealMemory.h"
#include "Math/UnrealMathUtility.h"

namespace UE::OrvaneTracking::Private
{
	namespace
	{
		/**
		 * The distance from From to To in serial-number arithmetic (RFC 1982) on 16 bits: positive when To is
		 * ahead, negative when it is behind, correct across the wrap from 65535 to 0.
		 */
		int32 SerialDistance(uint16 From, uint16 To)
		{
			return int32(int16(uint16(To - From)));
		}
	} // namespace

	FOpenTrackIOStream::FOpenTrackIOStream(uint64 InSenderKey)
		: SenderKey(InSenderKey)
	{
	}

	FOpenTrackIOSegmentResult FOpenTrackIOStream::Accept(
		const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> SegmentBytes)
	{
		FOpenTrackIOSegmentResult Result;
		Result.Encoding = Header.Encoding;
		Buffer.Reset();

		const FSignature Signature{
			Header.SegmentOffset, Header.SequenceNumber, Header.PayloadLength, Header.Checksum, Header.bLastSegment};
		if (IsRecent(Signature))
		{
			Result.Outcome = EOpenTrackIOSegmentOutcome::Duplicate;
			return Result;
		}

		bool bBehind = false;
		if (!NewestSequence)
		{
			NewestSequence = Header.SequenceNumber;
		}
		else
		{
			const int32 Distance = SerialDistance(*NewestSequence, Header.SequenceNumber);
			if (Distance > 0)
			{
				Result.SequenceGap = uint32(Distance - 1);
				NewestSequence = Header.SequenceNumber;
			}
			else if (Distance < 0 && -Distance <= ReorderWindow)
			{
				bBehind = true;
			}
			else if (Distance < 0)
			{
				// Too far back to be reordering: the sender restarted its count.
				NewestSequence = Header.SequenceNumber;
			}
		}

		ENumbering JoinedNumbering = Numbering;
		if (bBehind)
		{
			// A late datagram is still welcome if it fills in the payload being reassembled; anything else
			// it could give is older than what was already used.
			if (!bPending || !CanJoin(Header, JoinedNumbering))
			{
				Result.Outcome = EOpenTrackIOSegmentOutcome::OutOfOrder;
				return Result;
			}
			Result.bLate = true;
		}

		if (Header.SegmentOffset == 0 && Header.bLastSegment)
		{
			if (bPending)
			{
				ClearPayload();
				++Result.NumAbandonedPayloads;
			}
			Remember(Signature);
			Result.Outcome = EOpenTrackIOSegmentOutcome::Complete;
			Result.Payload = SegmentBytes;
			return Result;
		}

		if (bPending && !bBehind && !CanJoin(Header, JoinedNumbering))
		{
			ClearPayload();
			++Result.NumAbandonedPayloads;
		}
		if (!bPending)
		{
			StartPayload(Header.Encoding);
			JoinedNumbering = ENumbering::Unknown;
		}
		const uint64 End = uint64(Header.SegmentOffset) + Header.PayloadLength;
		if (End > uint64(FOrvaneOpenTrackIO::MaxPayloadSize) || Segments.Num() >= MaxSegments)
		{
			ClearPayload();
			Result.Outcome = EOpenTrackIOSegmentOutcome::Oversize;
			return Result;
		}

		Numbering = JoinedNumbering;
		AddSegment(Header, SegmentBytes);
		Remember(Signature);
		if (!IsPayloadComplete())
		{
			Result.Outcome = EOpenTrackIOSegmentOutcome::Pending;
			return Result;
		}

		AssemblePayload();
		ClearPayload();
		Result.Outcome = EOpenTrackIOSegmentOutcome::Complete;
		Result.Payload = Buffer;
		return Result;
	}

	bool FOpenTrackIOStream::IsRecent(const FSignature& Signature) const
	{
		for (int32 Index = 0; Index < NumRecent; ++Index)
		{
			if (Recent[Index] == Signature)
			{
				return true;
			}
		}
		return false;
	}

	void FOpenTrackIOStream::Remember(const FSignature& Signature)
	{
		Recent[NextRecent] = Signature;
		NextRecent = (NextRecent + 1) % RecentCapacity;
		NumRecent = FMath::Min(NumRecent + 1, RecentCapacity);
	}

	int32 FOpenTrackIOStream::FindInsertIndex(uint32 Offset) const
	{
		int32 Low = 0;
		int32 High = Segments.Num();
		while (Low < High)
		{
			const int32 Middle = Low + (High - Low) / 2;
			if (Segments[Middle].Offset <= Offset)
			{
				Low = Middle + 1;
			}
			else
			{
				High = Middle;
			}
		}
		return Low;
	}

	bool FOpenTrackIOStream::CanJoin(const FOrvaneOpenTrackIOHeader& Header, ENumbering& OutNumbering) const
	{
		if (!bPending || Header.Encoding != PendingEncoding)
		{
			return false;
		}
		const uint64 End = uint64(Header.SegmentOffset) + Header.PayloadLength;
		// A second last segment, or bytes past the known end, contradict what the payload already said.
		if (TotalLength && (Header.bLastSegment || End > *TotalLength))
		{
			return false;
		}

		const int32 Index = FindInsertIndex(Header.SegmentOffset);
		const FSegment* Previous = Index > 0 ? &Segments[Index - 1] : nullptr;
		const FSegment* Next = Index < Segments.Num() ? &Segments[Index] : nullptr;
		if ((Previous && Previous->GetEnd() > Header.SegmentOffset) || (Next && End > Next->Offset))
		{
			return false;
		}
		if (Header.bLastSegment && Next)
		{
			return false;
		}

		const FSegment Candidate{Header.SegmentOffset, Header.PayloadLength, Header.SequenceNumber};
		ENumbering Joined = Numbering;
		if ((Previous && !IsNumberingConsistent(*Previous, Candidate, Joined)) ||
			(Next && !IsNumberingConsistent(*Next, Candidate, Joined)))
		{
			return false;
		}
		OutNumbering = Joined;
		return true;
	}

	bool FOpenTrackIOStream::IsNumberingConsistent(
		const FSegment& Neighbour, const FSegment& Candidate, ENumbering& InOutNumbering) const
	{
		const bool bCandidateAfter = Candidate.Offset > Neighbour.Offset;
		const int32 Distance = SerialDistance(Neighbour.SequenceNumber, Candidate.SequenceNumber);
		const int32 Steps = bCandidateAfter ? Distance : -Distance;
		const bool bAdjacent =
			bCandidateAfter ? Neighbour.GetEnd() == Candidate.Offset : Candidate.GetEnd() == Neighbour.Offset;
		const bool bRepeated = Distance == 0;
		// Segments in between that have not arrived yet each took a number of their own.
		const bool bConsecutive = bAdjacent ? Steps == 1 : (Steps >= 2 && Steps <= MaxSegments);

		switch (InOutNumbering)
		{
			case ENumbering::Repeated:
				return bRepeated;
			case ENumbering::Consecutive:
				return bConsecutive;
			case ENumbering::Unknown:
				break;
		}
		if (bRepeated)
		{
			InOutNumbering = ENumbering::Repeated;
			return true;
		}
		if (bConsecutive)
		{
			InOutNumbering = ENumbering::Consecutive;
			return true;
		}
		return false;
	}

	void FOpenTrackIOStream::StartPayload(EOrvaneOpenTrackIOEncoding Encoding)
	{
		ClearPayload();
		bPending = true;
		PendingEncoding = Encoding;
	}

	void FOpenTrackIOStream::AddSegment(const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> SegmentBytes)
	{
		const FSegment Segment{Header.SegmentOffset, Header.PayloadLength, Header.SequenceNumber, Received.Num()};
		Segments.Insert(Segment, FindInsertIndex(Header.SegmentOffset));
		Received.Append(SegmentBytes.GetData(), SegmentBytes.Num());
		if (Header.bLastSegment)
		{
			TotalLength = Segment.GetEnd();
		}
	}

	bool FOpenTrackIOStream::IsPayloadComplete() const
	{
		// Segments never overlap and all lie before the end, so the byte count tells whether they cover it.
		return TotalLength && uint32(Received.Num()) == *TotalLength;
	}

	void FOpenTrackIOStream::AssemblePayload()
	{
		Buffer.SetNumUninitialized(int32(*TotalLength));
		for (const FSegment& Segment : Segments)
		{
			FMemory::Memcpy(
				Buffer.GetData() + Segment.Offset, Received.GetData() + Segment.ReceivedStart, Segment.Length);
		}
	}

	void FOpenTrackIOStream::ClearPayload()
	{
		bPending = false;
		Numbering = ENumbering::Unknown;
		Segments.Reset();
		TotalLength.Reset();
		ReleaseBuffers();
	}

	void FOpenTrackIOStream::ReleaseBuffers()
	{
		if (Received.Max() > RetainedBufferBytes)
		{
			Received.Empty();
		}
		else
		{
			Received.Reset();
		}
		// Buffer is emptied when the next datagram arrives; only its memory is given back here.
		if (Buffer.Num() == 0 && Buffer.Max() > RetainedBufferBytes)
		{
			Buffer.Empty();
		}
	}
} // namespace UE::OrvaneTracking::Private
