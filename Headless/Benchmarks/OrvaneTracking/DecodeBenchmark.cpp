// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Decoding/OrvaneDatagramDecoder.h"
#include "Decoding/OrvaneFreeD.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneTrackingSample.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{
	/** A file of the plug-in's recorded tracking data, found from this source file's place in the repository. */
	TArray<uint8> LoadTrackingData(const char* RelativePath)
	{
		const std::filesystem::path Path =
			std::filesystem::path(__FILE__).parent_path().parent_path().parent_path().parent_path() / "Resources" /
			"TestData" / "Tracking" / RelativePath;
		std::ifstream Stream(Path, std::ios::binary);
		const std::vector<char> Bytes((std::istreambuf_iterator<char>(Stream)), std::istreambuf_iterator<char>());
		if (Bytes.empty())
		{
			std::fprintf(stderr, "Cannot read %s\n", Path.c_str());
			std::exit(1);
		}
		return TArray<uint8>(reinterpret_cast<const uint8*>(Bytes.data()), int32(Bytes.size()));
	}

	TArray<uint8> PayloadOf(const TArray<uint8>& Datagram)
	{
		return TArray<uint8>(
			Datagram.GetData() + FOrvaneOpenTrackIO::HeaderSize, Datagram.Num() - FOrvaneOpenTrackIO::HeaderSize);
	}

	const TArray<uint8>& FreeDVector()
	{
		static const TArray<uint8> Bytes = LoadTrackingData("FreeD/freed_d1_vector1.bin");
		return Bytes;
	}

	const TArray<uint8>& DynamicJsonDatagram()
	{
		static const TArray<uint8> Bytes = LoadTrackingData("OpenTrackIO/wire/otio_recommended_dynamic_json_seq0.bin");
		return Bytes;
	}

	const TArray<uint8>& DynamicCborDatagram()
	{
		static const TArray<uint8> Bytes = LoadTrackingData("OpenTrackIO/wire/otio_recommended_dynamic_cbor_seq1.bin");
		return Bytes;
	}

	/**
	 * Copies of a datagram under successive sequence numbers, so that a decoder fed them in turn sees a
	 * live stream rather than one duplicate after another.
	 */
	TArray<TArray<uint8>> Renumbered(const TArray<uint8>& Datagram, int32 Count)
	{
		FOrvaneOpenTrackIOHeader Header;
		if (FOrvaneOpenTrackIO::ParseHeader(Datagram, Header).IsSet())
		{
			std::fprintf(stderr, "The recorded datagram does not parse.\n");
			std::exit(1);
		}
		const TArray<uint8> Payload = PayloadOf(Datagram);
		TArray<TArray<uint8>> Result;
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Header.SequenceNumber = uint16(Index);
			FOrvaneOpenTrackIO::WriteDatagram(Header, Payload, Result.AddDefaulted_GetRef());
		}
		return Result;
	}

	void CheckAccepted(benchmark::State& State, const TOptional<EOrvaneDatagramRejection>& Rejection)
	{
		if (Rejection)
		{
			State.SkipWithError(TCHAR_TO_UTF8(LexToString(*Rejection)));
		}
	}

	void FreeDDecode(benchmark::State& State)
	{
		const TArray<uint8>& Datagram = FreeDVector();
		FOrvaneTrackingSample Sample;
		for (auto _ : State)
		{
			const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneFreeD::Decode(Datagram, Sample);
			benchmark::DoNotOptimize(Rejection);
			benchmark::DoNotOptimize(Sample.Transform);
		}
		CheckAccepted(State, FOrvaneFreeD::Decode(Datagram, Sample));
	}
	BENCHMARK(FreeDDecode);

	void OpenTrackIOJsonPayload(benchmark::State& State)
	{
		const TArray<uint8> Payload = PayloadOf(DynamicJsonDatagram());
		FOrvaneTrackingSample Sample;
		for (auto _ : State)
		{
			const TOptional<EOrvaneDatagramRejection> Rejection =
				FOrvaneOpenTrackIO::DecodeJsonPayload(Payload, Sample);
			benchmark::DoNotOptimize(Rejection);
			benchmark::DoNotOptimize(Sample.Transform);
		}
		CheckAccepted(State, FOrvaneOpenTrackIO::DecodeJsonPayload(Payload, Sample));
		State.SetBytesProcessed(int64(State.iterations()) * Payload.Num());
	}
	BENCHMARK(OpenTrackIOJsonPayload);

	void OpenTrackIOCborPayload(benchmark::State& State)
	{
		const TArray<uint8> Payload = PayloadOf(DynamicCborDatagram());
		FOrvaneTrackingSample Sample;
		for (auto _ : State)
		{
			const TOptional<EOrvaneDatagramRejection> Rejection =
				FOrvaneOpenTrackIO::DecodeCborPayload(Payload, Sample);
			benchmark::DoNotOptimize(Rejection);
			benchmark::DoNotOptimize(Sample.Transform);
		}
		CheckAccepted(State, FOrvaneOpenTrackIO::DecodeCborPayload(Payload, Sample));
		State.SetBytesProcessed(int64(State.iterations()) * Payload.Num());
	}
	BENCHMARK(OpenTrackIOCborPayload);

	/** One datagram through the stateful decoder: recognition, header, checksum, sequence tracking, decode. */
	void DecodeDatagrams(benchmark::State& State, const TArray<TArray<uint8>>& Datagrams)
	{
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const uint64 Sender = FOrvaneDatagramDecoder::MakeSenderKey(0x0A000001, 55555);
		int32 Next = 0;
		for (auto _ : State)
		{
			Samples.Reset();
			const FOrvaneDatagramResult Result = Decoder.Decode(Sender, Datagrams[Next], Samples);
			benchmark::DoNotOptimize(Result);
			Next = (Next + 1) % Datagrams.Num();
		}
		const FOrvaneDatagramCounters& Counters = Decoder.GetCounters();
		if (Counters.Samples != Counters.Datagrams)
		{
			State.SkipWithError("Some datagrams gave no sample.");
		}
	}

	void DatagramFreeD(benchmark::State& State)
	{
		DecodeDatagrams(State, {FreeDVector()});
	}
	BENCHMARK(DatagramFreeD);

	void DatagramOpenTrackIOJson(benchmark::State& State)
	{
		// More numbers than the decoder remembers for duplicate detection, so none is taken for a duplicate.
		DecodeDatagrams(State, Renumbered(DynamicJsonDatagram(), 64));
	}
	BENCHMARK(DatagramOpenTrackIOJson);

	void DatagramOpenTrackIOCbor(benchmark::State& State)
	{
		DecodeDatagrams(State, Renumbered(DynamicCborDatagram(), 64));
	}
	BENCHMARK(DatagramOpenTrackIOCbor);

	/** The complete static sample in two segments: each iteration reassembles and decodes one payload. */
	void DatagramOpenTrackIOSegmented(benchmark::State& State)
	{
		const TArray<uint8> File = LoadTrackingData("OpenTrackIO/wire/otio_complete_static_json_segmented_sameseq.bin");
		const TArray<uint8> First(File.GetData(), 1500);
		const TArray<uint8> Last(File.GetData() + 1500, File.Num() - 1500);
		TArray<TArray<uint8>> Datagrams;
		// More payloads than fall within the decoder's reordering window, so the cycle reads as a restart.
		for (int32 Index = 0; Index < 64; ++Index)
		{
			for (const TArray<uint8>* Segment : {&First, &Last})
			{
				FOrvaneOpenTrackIOHeader Header;
				FOrvaneOpenTrackIO::ParseHeader(*Segment, Header);
				Header.SequenceNumber = uint16(Index);
				FOrvaneOpenTrackIO::WriteDatagram(Header, PayloadOf(*Segment), Datagrams.AddDefaulted_GetRef());
			}
		}
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const uint64 Sender = FOrvaneDatagramDecoder::MakeSenderKey(0x0A000001, 55555);
		int32 Next = 0;
		for (auto _ : State)
		{
			Samples.Reset();
			Decoder.Decode(Sender, Datagrams[Next], Samples);
			Decoder.Decode(Sender, Datagrams[Next + 1], Samples);
			benchmark::DoNotOptimize(Samples.Num());
			Next = (Next + 2) % Datagrams.Num();
		}
		if (Decoder.GetCounters().Samples * 2 != Decoder.GetCounters().Datagrams)
		{
			State.SkipWithError("Some payloads gave no sample.");
		}
	}
	BENCHMARK(DatagramOpenTrackIOSegmented);
} // namespace

BENCHMARK_MAIN();
