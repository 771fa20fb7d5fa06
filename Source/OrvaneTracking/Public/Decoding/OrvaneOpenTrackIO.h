// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "CoreTypes.h"
#include "Decoding/OrvaneDatagramRejection.h"
#include "Misc/Optional.h"

struct FOrvaneTrackingSample;

/** How an OpenTrackIO payload is encoded (byte 5 of the header). */
enum class EOrvaneOpenTrackIOEncoding : uint8
{
	Json = 0x01,
	Cbor = 0x02,
};

/** The fields of the 16-byte header in front of every OpenTrackIO datagram. */
struct FOrvaneOpenTrackIOHeader
{
	EOrvaneOpenTrackIOEncoding Encoding = EOrvaneOpenTrackIOEncoding::Json;
	/** Sender's datagram counter; wraps from 65535 to 0. */
	uint16 SequenceNumber = 0;
	/** Where this datagram's payload bytes start within the whole payload. */
	uint32 SegmentOffset = 0;
	/** Set on the only or the last segment of a payload. */
	bool bLastSegment = true;
	/** Payload bytes in this datagram (at most 32767). */
	uint16 PayloadLength = 0;
	/** Fletcher-16 over header bytes 0-13 and the payload, (Sum2 << 8) | Sum1. */
	uint16 Checksum = 0;
};

/** Framing and payload decoding of OpenTrackIO 1.x datagrams. */
class ORVANETRACKING_API FOrvaneOpenTrackIO
{
public:
	/** Size of the header in front of each datagram's payload. */
	static constexpr int32 HeaderSize = 16;
	/** Largest payload length the header can state. */
	static constexpr int32 MaxSegmentPayload = 0x7FFF;
	/** Largest IPv4 UDP payload; receivers should read datagrams this large. */
	static constexpr int32 MaxDatagramSize = 65507;
	/**
	 * Largest reassembled payload accepted. Samples with a full static block are about 5 KB, so 1 MiB
	 * leaves generous room while bounding what one sender can make us hold.
	 */
	static constexpr int32 MaxPayloadSize = 1 << 20;
	/** Deepest nesting of objects and arrays accepted in a payload; samples nest five levels deep. */
	static constexpr int32 MaxNestingDepth = 32;

	/** True if the datagram starts with the ASCII identifier "OTrk". */
	static bool HasMagic(TArrayView<const uint8> Datagram);

	/** Fletcher-16 with modulus 256 over the header's first 14 bytes followed by the payload. */
	static uint16 Fletcher16(TArrayView<const uint8> HeaderBytes, TArrayView<const uint8> Payload);

	/**
	 * Checks a datagram's header and checksum and reads its fields. The payload is the datagram's bytes
	 * after the first HeaderSize. Rejects as Length a datagram shorter than the header, or whose payload
	 * length field is zero or disagrees with its size; as BadHeader one without the identifier; as Checksum
	 * one whose checksum is wrong; as UnknownType one with an encoding other than JSON or CBOR (vendor
	 * encodings included). The reserved byte is ignored.
	 * @return unset on success, else why the datagram was rejected
	 */
	static TOptional<EOrvaneDatagramRejection> ParseHeader(
		TArrayView<const uint8> Datagram, FOrvaneOpenTrackIOHeader& OutHeader);

	/**
	 * Builds a datagram: the header (with PayloadLength and Checksum computed from Payload) followed
	 * by Payload. Used to send or replay samples.
	 */
	static void WriteDatagram(
		const FOrvaneOpenTrackIOHeader& Header, TArrayView<const uint8> Payload, TArray<uint8>& OutDatagram);

	/**
	 * Decodes a complete JSON payload (UTF-8) into a sample. Every field is optional, as the protocol says;
	 * a sample without a protocol block is accepted. One that names another protocol, or a major version
	 * other than 1, is UnsupportedVersion; a field of the wrong type or out of its range, text that is not
	 * one JSON object, or nesting deeper than MaxNestingDepth is MalformedPayload. On success OutSample is
	 * replaced; on rejection it is left as it was.
	 * @return unset on success, else why the payload was rejected
	 */
	static TOptional<EOrvaneDatagramRejection> DecodeJsonPayload(
		TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample);

	/**
	 * Decodes a complete CBOR payload into a sample, by the same rules as DecodeJsonPayload: a CBOR sample
	 * gives the same values as the same sample in JSON.
	 * @return unset on success, else why the payload was rejected
	 */
	static TOptional<EOrvaneDatagramRejection> DecodeCborPayload(
		TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample);

	/** DecodeJsonPayload or DecodeCborPayload, by encoding. */
	static TOptional<EOrvaneDatagramRejection> DecodePayload(
		EOrvaneOpenTrackIOEncoding Encoding, TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample);
};
