// Copyright Orvane. All Rights Reserved.
//
// Feeds arbitrary datagrams to the FreeD decoder. Whatever it accepts must write back to exactly the bytes it
// came from, and the sample made from it must be finite.

#include "Decoding/OrvaneFreeD.h"
#include "Decoding/OrvaneTrackingSample.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace
{
	void Require(bool bCondition, const char* What)
	{
		if (!bCondition)
		{
			std::fprintf(stderr, "FreeD fuzz check failed: %s\n", What);
			std::abort();
		}
	}

	void WriteSigned24(uint8* Bytes, int32 Value)
	{
		const uint32 Bits = uint32(Value) & 0xFFFFFFu;
		Bytes[0] = uint8(Bits >> 16);
		Bytes[1] = uint8(Bits >> 8);
		Bytes[2] = uint8(Bits);
	}

	/** The D1 message the fields describe, checksum included. */
	void Encode(const FOrvaneFreeDMessage& Message, uint8 (&OutBytes)[FOrvaneFreeD::MessageSize])
	{
		OutBytes[0] = FOrvaneFreeD::PositionMessageType;
		OutBytes[1] = Message.CameraId;
		WriteSigned24(OutBytes + 2, Message.RawPan);
		WriteSigned24(OutBytes + 5, Message.RawTilt);
		WriteSigned24(OutBytes + 8, Message.RawRoll);
		WriteSigned24(OutBytes + 11, Message.RawX);
		WriteSigned24(OutBytes + 14, Message.RawY);
		WriteSigned24(OutBytes + 17, Message.RawZ);
		WriteSigned24(OutBytes + 20, int32(Message.Zoom));
		WriteSigned24(OutBytes + 23, int32(Message.Focus));
		OutBytes[26] = uint8(Message.Spare >> 8);
		OutBytes[27] = uint8(Message.Spare);
		OutBytes[28] = FOrvaneFreeD::ComputeChecksum(TArrayView<const uint8>(OutBytes, FOrvaneFreeD::MessageSize - 1));
	}

	/** Decodes one datagram and checks what comes out. */
	bool DecodeAndCheck(const uint8* Data, int32 Size)
	{
		const TArrayView<const uint8> Datagram(Data, Size);
		FOrvaneFreeDMessage Message;
		if (FOrvaneFreeD::Parse(Datagram, Message).IsSet())
		{
			return false;
		}
		Require(Size == FOrvaneFreeD::MessageSize, "accepted a datagram that is not 29 bytes long");
		for (const int32 Value :
			{Message.RawPan, Message.RawTilt, Message.RawRoll, Message.RawX, Message.RawY, Message.RawZ})
		{
			Require(Value >= -0x800000 && Value <= 0x7FFFFF, "a signed field outside 24 bits");
		}
		Require(Message.Zoom <= 0xFFFFFFu && Message.Focus <= 0xFFFFFFu, "an encoder outside 24 bits");

		uint8 Encoded[FOrvaneFreeD::MessageSize];
		Encode(Message, Encoded);
		Require(
			std::memcmp(Encoded, Data, FOrvaneFreeD::MessageSize) == 0, "the fields do not write back to the datagram");

		FOrvaneTrackingSample Sample;
		Require(!FOrvaneFreeD::Decode(Datagram, Sample).IsSet(), "Decode rejected what Parse accepted");
		Require(Sample.bHasTransform && !Sample.Transform.ContainsNaN(), "the transform is missing or not finite");
		Require(Sample.SourceNumber == Message.CameraId, "the source number is not the camera id");
		return true;
	}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
	const int32 Length = Size > 65536 ? 65536 : int32(Size);
	DecodeAndCheck(Data, Length);

	// Random bytes rarely carry a right checksum, so a 29-byte D1 datagram is also tried with its checksum
	// repaired; that way every field value reaches the decoder.
	if (Length == FOrvaneFreeD::MessageSize && Data[0] == FOrvaneFreeD::PositionMessageType)
	{
		uint8 Repaired[FOrvaneFreeD::MessageSize];
		std::memcpy(Repaired, Data, FOrvaneFreeD::MessageSize);
		Repaired[28] = FOrvaneFreeD::ComputeChecksum(TArrayView<const uint8>(Repaired, FOrvaneFreeD::MessageSize - 1));
		Require(
			DecodeAndCheck(Repaired, FOrvaneFreeD::MessageSize), "a D1 datagram with a right checksum was rejected");
	}
	return 0;
}
