// Copyright Orvane. All Rights Reserved.
//
// Feeds arbitrary datagrams through one datagram decoder, so that reassembly, duplicate and sequence state is
// exercised along with the header and payload decoders, and feeds the whole input to the payload decoder its
// first byte suggests.
//
// An input is cut into datagrams at every "OTrk" it contains (the recorded wire files, whose datagrams follow
// one another, split into their datagrams that way). The reserved header byte, which the decoder ignores,
// steers the harness: its low two bits pick one of four senders; unless bit 7 is set the checksum is
// repaired, and unless bit 6 is set the payload length is too, so that mutated payloads get past the header
// checks instead of dying at them.

#include "Decoding/OrvaneDatagramDecoder.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneTrackingSample.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{
	void Require(bool bCondition, const char* What)
	{
		if (!bCondition)
		{
			std::fprintf(stderr, "OpenTrackIO fuzz check failed: %s\n", What);
			std::abort();
		}
	}

	bool IsPositive(const TOptional<float>& Value)
	{
		return !Value || (*Value > 0.0f && FMath::IsFinite(*Value));
	}

	bool IsUnit(const TOptional<float>& Value)
	{
		return !Value || (*Value >= 0.0f && *Value <= 1.0f);
	}

	/** What every sample the decoders hand out must satisfy, whatever the input. */
	void CheckSample(const FOrvaneTrackingSample& Sample)
	{
		Require(Sample.Protocol == EOrvaneTrackingProtocol::OpenTrackIO ||
					Sample.Protocol == EOrvaneTrackingProtocol::FreeD,
			"unknown protocol");
		Require(!Sample.bHasTransform || !Sample.Transform.ContainsNaN(), "a transform that is not finite");
		Require(IsPositive(Sample.FocalLength) && IsPositive(Sample.Aperture) && IsPositive(Sample.FocusDistance),
			"a lens value that is not positive");
		Require(IsUnit(Sample.NormalizedFocus) && IsUnit(Sample.NormalizedIris) && IsUnit(Sample.NormalizedZoom),
			"a normalized encoder outside 0..1");
		if (Sample.Timecode)
		{
			const FOrvaneTrackingTimecode& Timecode = *Sample.Timecode;
			Require(Timecode.Hours >= 0 && Timecode.Hours <= 23 && Timecode.Minutes >= 0 && Timecode.Minutes <= 59 &&
						Timecode.Seconds >= 0 && Timecode.Seconds <= 59 && Timecode.Frames >= 0 &&
						Timecode.Frames <= 119,
				"a timecode field out of range");
			Require(Timecode.Rate.Numerator > 0 && Timecode.Rate.Denominator > 0, "a timecode without a rate");
		}
		if (Sample.SampleRate)
		{
			Require(Sample.SampleRate->Numerator > 0 && Sample.SampleRate->Denominator > 0, "a zero sample rate");
		}
	}

	/** Repairs what the reserved byte asks for in a datagram that starts with the magic. */
	void Steer(std::vector<uint8>& Datagram)
	{
		if (Datagram.size() < size_t(FOrvaneOpenTrackIO::HeaderSize))
		{
			return;
		}
		const uint8 Control = Datagram[4];
		const size_t PayloadLength = Datagram.size() - FOrvaneOpenTrackIO::HeaderSize;
		if (!(Control & 0x40) && PayloadLength <= size_t(FOrvaneOpenTrackIO::MaxSegmentPayload))
		{
			Datagram[12] = uint8((Datagram[12] & 0x80) | (PayloadLength >> 8));
			Datagram[13] = uint8(PayloadLength);
		}
		if (!(Control & 0x80))
		{
			const uint16 Checksum = FOrvaneOpenTrackIO::Fletcher16(TArrayView<const uint8>(Datagram.data(), 14),
				TArrayView<const uint8>(Datagram.data() + FOrvaneOpenTrackIO::HeaderSize, int32(PayloadLength)));
			Datagram[14] = uint8(Checksum >> 8);
			Datagram[15] = uint8(Checksum);
		}
	}

	/** The input cut before every occurrence of the magic. */
	std::vector<std::vector<uint8>> SplitDatagrams(const uint8* Data, size_t Size)
	{
		std::vector<std::vector<uint8>> Datagrams;
		size_t Start = 0;
		for (size_t Index = 1; Index + 4 <= Size; ++Index)
		{
			if (std::memcmp(Data + Index, "OTrk", 4) == 0)
			{
				Datagrams.emplace_back(Data + Start, Data + Index);
				Start = Index;
			}
		}
		Datagrams.emplace_back(Data + Start, Data + Size);
		return Datagrams;
	}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
	if (Size > size_t(4 * FOrvaneOpenTrackIO::MaxDatagramSize))
	{
		return 0;
	}

	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	uint64 Fed = 0;
	for (std::vector<uint8>& Datagram : SplitDatagrams(Data, Size))
	{
		uint64 Sender = 0;
		if (Datagram.size() >= 4 && std::memcmp(Datagram.data(), "OTrk", 4) == 0)
		{
			Steer(Datagram);
			Sender = Datagram.size() > 4 ? (Datagram[4] & 3u) : 0;
		}
		const int32 Before = Samples.Num();
		const FOrvaneDatagramResult Result =
			Decoder.Decode(FOrvaneDatagramDecoder::MakeSenderKey(0x0A000000u + uint32(Sender), 55555),
				TArrayView<const uint8>(Datagram.data(), int32(Datagram.size())), Samples);
		++Fed;
		Require(Result.NumSamples == Samples.Num() - Before, "the result miscounts its samples");
		Require(Result.NumSamples <= 1, "more than one sample from one datagram");
		Require(!(Result.WasRejected() && Result.NumSamples > 0), "a rejected datagram gave a sample");
		Require(!(Result.bSegmentPending && (Result.WasRejected() || Result.NumSamples > 0)),
			"a pending segment was also rejected or decoded");
	}
	for (const FOrvaneTrackingSample& Sample : Samples)
	{
		CheckSample(Sample);
	}
	const FOrvaneDatagramCounters& Counters = Decoder.GetCounters();
	Require(Counters.Datagrams == Fed, "datagrams miscounted");
	Require(Counters.Samples == uint64(Samples.Num()), "samples miscounted");

	// The whole input as a payload, when it starts like one: a JSON object, or a CBOR map.
	const TArrayView<const uint8> Payload(Data, int32(Size));
	FOrvaneTrackingSample Sample;
	size_t First = 0;
	while (First < Size && (Data[First] == ' ' || Data[First] == '\t' || Data[First] == '\r' || Data[First] == '\n'))
	{
		++First;
	}
	if (First < Size && Data[First] == '{' && !FOrvaneOpenTrackIO::DecodeJsonPayload(Payload, Sample).IsSet())
	{
		CheckSample(Sample);
	}
	if (Size > 0 && (Data[0] & 0xE0) == 0xA0 && !FOrvaneOpenTrackIO::DecodeCborPayload(Payload, Sample).IsSet())
	{
		CheckSample(Sample);
	}
	return 0;
}
