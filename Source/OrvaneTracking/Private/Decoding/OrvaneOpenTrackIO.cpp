// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneOpenTrackIO.h"

#include "Decoding/OrvaneTrackingSample.h"
#include "HAL/UnrealMemory.h"

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	constexpr uint8 Magic[4] = {'O', 'T', 'r', 'k'};
	/** Header bytes covered by the checksum: everything before the checksum itself. */
	constexpr int32 ChecksummedHeaderSize = 14;
	constexpr uint16 LastSegmentFlag = 0x8000;

	uint16 ReadUInt16(const uint8* Bytes)
	{
		return uint16((uint16(Bytes[0]) << 8) | Bytes[1]);
	}

	uint32 ReadUInt32(const uint8* Bytes)
	{
		return (uint32(Bytes[0]) << 24) | (uint32(Bytes[1]) << 16) | (uint32(Bytes[2]) << 8) | uint32(Bytes[3]);
	}

	void WriteUInt16(uint8* Bytes, uint16 Value)
	{
		Bytes[0] = uint8(Value >> 8);
		Bytes[1] = uint8(Value);
	}

	void WriteUInt32(uint8* Bytes, uint32 Value)
	{
		Bytes[0] = uint8(Value >> 24);
		Bytes[1] = uint8(Value >> 16);
		Bytes[2] = uint8(Value >> 8);
		Bytes[3] = uint8(Value);
	}

	/** Adds bytes to running Fletcher sums. Both sums are kept modulo 256 by their 8-bit type. */
	void AccumulateFletcher(TArrayView<const uint8> Bytes, uint8& Sum1, uint8& Sum2)
	{
		for (const uint8 Byte : Bytes)
		{
			Sum1 = uint8(Sum1 + Byte);
			Sum2 = uint8(Sum2 + Sum1);
		}
	}
} // namespace UE::OrvaneTracking::OpenTrackIO::Private

bool FOrvaneOpenTrackIO::HasMagic(TArrayView<const uint8> Datagram)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;
	return Datagram.Num() >= 4 && Datagram[0] == Magic[0] && Datagram[1] == Magic[1] && Datagram[2] == Magic[2] &&
		   Datagram[3] == Magic[3];
}

uint16 FOrvaneOpenTrackIO::Fletcher16(TArrayView<const uint8> HeaderBytes, TArrayView<const uint8> Payload)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;
	uint8 Sum1 = 0;
	uint8 Sum2 = 0;
	AccumulateFletcher(HeaderBytes, Sum1, Sum2);
	AccumulateFletcher(Payload, Sum1, Sum2);
	return uint16((uint16(Sum2) << 8) | Sum1);
}

TOptional<EOrvaneDatagramRejection> FOrvaneOpenTrackIO::ParseHeader(
	TArrayView<const uint8> Datagram, FOrvaneOpenTrackIOHeader& OutHeader)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;

	if (!HasMagic(Datagram))
	{
		return Datagram.Num() < 4 ? EOrvaneDatagramRejection::Length : EOrvaneDatagramRejection::BadHeader;
	}
	if (Datagram.Num() < HeaderSize)
	{
		return EOrvaneDatagramRejection::Length;
	}

	const uint8* Bytes = Datagram.GetData();
	const uint16 LengthWord = ReadUInt16(Bytes + 12);
	const int32 PayloadLength = LengthWord & ~LastSegmentFlag;
	// An empty segment carries nothing and cannot advance a payload, so it is as wrong as a length
	// that disagrees with the datagram.
	if (PayloadLength == 0 || PayloadLength != Datagram.Num() - HeaderSize)
	{
		return EOrvaneDatagramRejection::Length;
	}

	const TArrayView<const uint8> Payload = Datagram.Slice(HeaderSize, PayloadLength);
	const uint16 Checksum = ReadUInt16(Bytes + 14);
	if (Fletcher16(Datagram.Left(ChecksummedHeaderSize), Payload) != Checksum)
	{
		return EOrvaneDatagramRejection::Checksum;
	}

	// Byte 4 is reserved and ignored. 0x80 and up are vendor encodings: well-formed, but not ours.
	const uint8 Encoding = Bytes[5];
	if (Encoding != uint8(EOrvaneOpenTrackIOEncoding::Json) && Encoding != uint8(EOrvaneOpenTrackIOEncoding::Cbor))
	{
		return EOrvaneDatagramRejection::UnknownType;
	}

	OutHeader.Encoding = EOrvaneOpenTrackIOEncoding(Encoding);
	OutHeader.SequenceNumber = ReadUInt16(Bytes + 6);
	OutHeader.SegmentOffset = ReadUInt32(Bytes + 8);
	OutHeader.bLastSegment = (LengthWord & LastSegmentFlag) != 0;
	OutHeader.PayloadLength = uint16(PayloadLength);
	OutHeader.Checksum = Checksum;
	return {};
}

void FOrvaneOpenTrackIO::WriteDatagram(
	const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> Payload, TArray<uint8>& OutDatagram)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;
	check(Payload.Num() > 0 && Payload.Num() <= MaxSegmentPayload);

	OutDatagram.SetNumUninitialized(HeaderSize + Payload.Num());
	uint8* Bytes = OutDatagram.GetData();
	Bytes[0] = Magic[0];
	Bytes[1] = Magic[1];
	Bytes[2] = Magic[2];
	Bytes[3] = Magic[3];
	Bytes[4] = 0;
	Bytes[5] = uint8(Header.Encoding);
	WriteUInt16(Bytes + 6, Header.SequenceNumber);
	WriteUInt32(Bytes + 8, Header.SegmentOffset);
	WriteUInt16(Bytes + 12, uint16((Header.bLastSegment ? LastSegmentFlag : 0) | uint16(Payload.Num())));
	FMemory::Memcpy(Bytes + HeaderSize, Payload.GetData(), Payload.Num());
	WriteUInt16(Bytes + 14,
		Fletcher16(TArrayView<const uint8>(Bytes, ChecksummedHeaderSize), TArrayView<const uint8>(Payload)));
}

TOptional<EOrvaneDatagramRejection> FOrvaneOpenTrackIO::DecodePayload(
	EOrvaneOpenTrackIOEncoding Encoding, TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample)
{
	switch (Encoding)
	{
		case EOrvaneOpenTrackIOEncoding::Json:
			return DecodeJsonPayload(Payload, OutSample);
		case EOrvaneOpenTrackIOEncoding::Cbor:
			return DecodeCborPayload(Payload, OutSample);
	}
	return EOrvaneDatagramRejection::UnknownType;
}
