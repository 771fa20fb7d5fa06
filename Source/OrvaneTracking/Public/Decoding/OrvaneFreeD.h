// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/ArrayView.h"
#include "CoreTypes.h"
#include "Decoding/OrvaneDatagramRejection.h"
#include "Misc/Optional.h"

struct FOrvaneTrackingSample;

/** The fields of a FreeD D1 message as sent, before any mapping to the engine's axes. */
struct ORVANETRACKING_API FOrvaneFreeDMessage
{
	uint8 CameraId = 0;
	/** Angles in 1/32768 degree, sign-extended from 24 bits. */
	int32 RawPan = 0;
	int32 RawTilt = 0;
	int32 RawRoll = 0;
	/** Positions in 1/64 millimetre, sign-extended from 24 bits. */
	int32 RawX = 0;
	int32 RawY = 0;
	int32 RawZ = 0;
	/** Lens encoders, unsigned 24-bit in the manufacturer's units. */
	uint32 Zoom = 0;
	uint32 Focus = 0;
	/** The two spare bytes, big-endian. */
	uint16 Spare = 0;

	double GetPanDegrees() const;
	double GetTiltDegrees() const;
	double GetRollDegrees() const;
	double GetXMillimetres() const;
	double GetYMillimetres() const;
	double GetZMillimetres() const;
};

/** Decoder of FreeD D1 messages, one message per datagram. */
class ORVANETRACKING_API FOrvaneFreeD
{
public:
	/** Size of a D1 message, checksum included. */
	static constexpr int32 MessageSize = 29;
	/** Type byte of the position/orientation message. */
	static constexpr uint8 PositionMessageType = 0xD1;

	/** True if the first byte is one of the FreeD message types (0xD0..0xDB). */
	static bool IsFreeDType(uint8 FirstByte);

	/** The checksum byte a message should carry: 0x40 minus the sum of every byte before it, modulo 256. */
	static uint8 ComputeChecksum(TArrayView<const uint8> BytesBeforeChecksum);

	/**
	 * Checks and splits a D1 datagram into its fields. A datagram holding anything but exactly one D1
	 * message (two messages back to back included) is rejected, never partly read.
	 * @return unset on success, else why the datagram was rejected
	 */
	static TOptional<EOrvaneDatagramRejection> Parse(TArrayView<const uint8> Datagram, FOrvaneFreeDMessage& OutMessage);

	/** Maps parsed fields to a sample in the engine's units and axes. */
	static void ToSample(const FOrvaneFreeDMessage& Message, FOrvaneTrackingSample& OutSample);

	/**
	 * Parse followed by ToSample. On success OutSample is replaced by the decoded sample; on rejection
	 * it is left as it was.
	 * @return unset on success, else why the datagram was rejected
	 */
	static TOptional<EOrvaneDatagramRejection> Decode(
		TArrayView<const uint8> Datagram, FOrvaneTrackingSample& OutSample);
};
