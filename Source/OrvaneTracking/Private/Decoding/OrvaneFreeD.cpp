// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneFreeD.h"

#include "Decoding/OrvaneTrackingSample.h"

namespace UE::OrvaneTracking::FreeD::Private
{
	/** 1/32768 degree per least significant bit of an angle. */
	constexpr double DegreesPerUnit = 1.0 / 32768.0;
	/** 1/64 millimetre per least significant bit of a position. */
	constexpr double MillimetresPerUnit = 1.0 / 64.0;

	uint32 ReadUnsigned24(const uint8* Bytes)
	{
		return (uint32(Bytes[0]) << 16) | (uint32(Bytes[1]) << 8) | uint32(Bytes[2]);
	}

	/** Two's complement over 24 bits: a set bit 23 means the value is 2^24 below its unsigned reading. */
	int32 ReadSigned24(const uint8* Bytes)
	{
		const uint32 Unsigned = ReadUnsigned24(Bytes);
		return (Unsigned & 0x800000u) ? int32(Unsigned) - 0x1000000 : int32(Unsigned);
	}
} // namespace UE::OrvaneTracking::FreeD::Private

double FOrvaneFreeDMessage::GetPanDegrees() const
{
	return RawPan * UE::OrvaneTracking::FreeD::Private::DegreesPerUnit;
}

double FOrvaneFreeDMessage::GetTiltDegrees() const
{
	return RawTilt * UE::OrvaneTracking::FreeD::Private::DegreesPerUnit;
}

double FOrvaneFreeDMessage::GetRollDegrees() const
{
	return RawRoll * UE::OrvaneTracking::FreeD::Private::DegreesPerUnit;
}

double FOrvaneFreeDMessage::GetXMillimetres() const
{
	return RawX * UE::OrvaneTracking::FreeD::Private::MillimetresPerUnit;
}

double FOrvaneFreeDMessage::GetYMillimetres() const
{
	return RawY * UE::OrvaneTracking::FreeD::Private::MillimetresPerUnit;
}

double FOrvaneFreeDMessage::GetZMillimetres() const
{
	return RawZ * UE::OrvaneTracking::FreeD::Private::MillimetresPerUnit;
}

bool FOrvaneFreeD::IsFreeDType(uint8 FirstByte)
{
	return FirstByte >= 0xD0 && FirstByte <= 0xDB;
}

uint8 FOrvaneFreeD::ComputeChecksum(TArrayView<const uint8> BytesBeforeChecksum)
{
	uint32 Sum = 0;
	for (const uint8 Byte : BytesBeforeChecksum)
	{
		Sum += Byte;
	}
	return uint8((0x40u - Sum) & 0xFFu);
}

TOptional<EOrvaneDatagramRejection> FOrvaneFreeD::Parse(
	TArrayView<const uint8> Datagram, FOrvaneFreeDMessage& OutMessage)
{
	using namespace UE::OrvaneTracking::FreeD::Private;

	if (Datagram.Num() == 0)
	{
		return EOrvaneDatagramRejection::Length;
	}
	if (Datagram[0] != PositionMessageType)
	{
		return IsFreeDType(Datagram[0]) ? EOrvaneDatagramRejection::UnknownType : EOrvaneDatagramRejection::BadHeader;
	}
	// Senders put one message in each datagram. Anything longer would need stream framing to split,
	// and guessing at it could read a second message's bytes as the first's.
	if (Datagram.Num() != MessageSize)
	{
		return EOrvaneDatagramRejection::Length;
	}
	if (ComputeChecksum(Datagram.Left(MessageSize - 1)) != Datagram[MessageSize - 1])
	{
		return EOrvaneDatagramRejection::Checksum;
	}

	const uint8* Bytes = Datagram.GetData();
	OutMessage.CameraId = Bytes[1];
	OutMessage.RawPan = ReadSigned24(Bytes + 2);
	OutMessage.RawTilt = ReadSigned24(Bytes + 5);
	OutMessage.RawRoll = ReadSigned24(Bytes + 8);
	OutMessage.RawX = ReadSigned24(Bytes + 11);
	OutMessage.RawY = ReadSigned24(Bytes + 14);
	OutMessage.RawZ = ReadSigned24(Bytes + 17);
	OutMessage.Zoom = ReadUnsigned24(Bytes + 20);
	OutMessage.Focus = ReadUnsigned24(Bytes + 23);
	OutMessage.Spare = uint16((uint16(Bytes[26]) << 8) | Bytes[27]);
	return {};
}

void FOrvaneFreeD::ToSample(const FOrvaneFreeDMessage& Message, FOrvaneTrackingSample& OutSample)
{
	OutSample = FOrvaneTrackingSample();
	OutSample.Protocol = EOrvaneTrackingProtocol::FreeD;
	OutSample.SourceNumber = Message.CameraId;

	// FreeD is right-handed with +Y forward and +X right; the engine is left-handed with +X forward
	// and +Y right, so the horizontal axes swap. Pan already turns clockwise seen from above, as yaw does.
	const FVector Location(
		Message.GetYMillimetres() / 10.0, Message.GetXMillimetres() / 10.0, Message.GetZMillimetres() / 10.0);
	const FRotator Rotation(Message.GetTiltDegrees(), Message.GetPanDegrees(), Message.GetRollDegrees());
	OutSample.Transform = FTransform(Rotation, Location);
	OutSample.bHasTransform = true;

	OutSample.RawZoomEncoder = Message.Zoom;
	OutSample.RawFocusEncoder = Message.Focus;
	OutSample.UserData = Message.Spare;
}

TOptional<EOrvaneDatagramRejection> FOrvaneFreeD::Decode(
	TArrayView<const uint8> Datagram, FOrvaneTrackingSample& OutSample)
{
	FOrvaneFreeDMessage Message;
	if (TOptional<EOrvaneDatagramRejection> Rejection = Parse(Datagram, Message))
	{
		return Rejection;
	}
	ToSample(Message, OutSample);
	return {};
}
