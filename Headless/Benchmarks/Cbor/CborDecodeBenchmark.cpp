// Copyright Orvane. All Rights Reserved.

#include "CborReader.h"
#include "CborTypes.h"
#include "Containers/ArrayView.h"
#include "Serialization/MemoryReader.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
	/** The dynamic tracking sample as a CBOR datagram; the payload follows a 16-byte header. */
	const std::string& Datagram()
	{
		static const std::string Bytes = []
		{
			const std::filesystem::path Path =
				std::filesystem::path(__FILE__).parent_path().parent_path().parent_path() / "Tests" / "Cbor" / "Data" /
				"RecommendedDynamic.cbor.bin";
			std::ifstream Stream(Path, std::ios::binary);
			std::string Data((std::istreambuf_iterator<char>(Stream)), std::istreambuf_iterator<char>());
			if (Data.size() <= 16)
			{
				std::fprintf(stderr, "Cannot read %s\n", Path.c_str());
				std::exit(1);
			}
			return Data;
		}();
		return Bytes;
	}

	void BM_WalkPayload(benchmark::State& State)
	{
		const std::string& Data = Datagram();
		const TArrayView<const uint8> Payload(
			reinterpret_cast<const uint8*>(Data.data()) + 16, static_cast<int32>(Data.size()) - 16);
		int32 Items = 0;
		for (auto _ : State)
		{
			FMemoryReaderView Archive(Payload);
			FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
			FCborContext Context;
			Items = 0;
			while (Reader.ReadNext(Context))
			{
				++Items;
			}
			benchmark::DoNotOptimize(Items);
		}
		State.counters["items"] = Items;
		State.counters["bytes"] = static_cast<double>(Payload.Num());
	}
	BENCHMARK(BM_WalkPayload);
} // namespace

BENCHMARK_MAIN();
