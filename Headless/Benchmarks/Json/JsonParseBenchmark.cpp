// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
	/** The dynamic tracking sample, pretty-printed as stored. */
	const std::string& PrettySample()
	{
		static const std::string Text = []
		{
			const std::filesystem::path Path =
				std::filesystem::path(__FILE__).parent_path().parent_path().parent_path() / "Tests" / "Json" / "Data" /
				"RecommendedDynamic.json";
			std::ifstream Stream(Path, std::ios::binary);
			std::string Bytes((std::istreambuf_iterator<char>(Stream)), std::istreambuf_iterator<char>());
			if (Bytes.empty())
			{
				std::fprintf(stderr, "Cannot read %s\n", Path.c_str());
				std::exit(1);
			}
			return Bytes;
		}();
		return Text;
	}

	TSharedPtr<FJsonObject> Parse(const std::string& Text)
	{
		TSharedPtr<FJsonObject> Object;
		FJsonSerializer::Deserialize(
			TJsonReaderFactory<UTF8CHAR>::CreateFromView(
				FUtf8StringView(reinterpret_cast<const UTF8CHAR*>(Text.data()), static_cast<int32>(Text.size()))),
			Object);
		return Object;
	}

	/** The same sample without whitespace, as it travels in a datagram (about 830 bytes). */
	const std::string& CompactSample()
	{
		static const std::string Text = []
		{
			FString Out;
			FJsonSerializer::Serialize(Parse(PrettySample()).ToSharedRef(),
				TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Out));
			const FTCHARToUTF8 Utf8(*Out);
			return std::string(reinterpret_cast<const char*>(Utf8.Get()), static_cast<size_t>(Utf8.Length()));
		}();
		return Text;
	}

	/** Reads the fields a tracking consumer reads from one sample; returns how many it found. */
	int32 ReadFields(const FJsonObject& Root)
	{
		int32 Found = 0;
		double Number = 0.0;
		FString String;
		bool bFlag = false;
		const TSharedPtr<FJsonObject>* Object = nullptr;
		const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;

		Found += Root.TryGetStringField(TEXT("sampleId"), String);
		Found += Root.TryGetStringField(TEXT("sourceId"), String);
		Found += Root.TryGetNumberField(TEXT("sourceNumber"), Number);
		if (Root.TryGetObjectField(TEXT("tracker"), Object))
		{
			const FJsonObject& Tracker = **Object;
			Found += Tracker.TryGetStringField(TEXT("notes"), String);
			Found += Tracker.TryGetBoolField(TEXT("recording"), bFlag);
			Found += Tracker.TryGetStringField(TEXT("slate"), String);
			Found += Tracker.TryGetStringField(TEXT("status"), String);
		}
		if (Root.TryGetObjectField(TEXT("timing"), Object))
		{
			const FJsonObject& Timing = **Object;
			Found += Timing.TryGetStringField(TEXT("mode"), String);
			if (Timing.TryGetObjectField(TEXT("sampleRate"), Object))
			{
				Found += (*Object)->TryGetNumberField(TEXT("num"), Number);
				Found += (*Object)->TryGetNumberField(TEXT("denom"), Number);
			}
			if (Timing.TryGetObjectField(TEXT("timecode"), Object))
			{
				const FJsonObject& Timecode = **Object;
				int32 Part = 0;
				Found += Timecode.TryGetNumberField(TEXT("hours"), Part);
				Found += Timecode.TryGetNumberField(TEXT("minutes"), Part);
				Found += Timecode.TryGetNumberField(TEXT("seconds"), Part);
				Found += Timecode.TryGetNumberField(TEXT("frames"), Part);
			}
		}
		if (Root.TryGetObjectField(TEXT("lens"), Object))
		{
			const FJsonObject& Lens = **Object;
			Found += Lens.TryGetNumberField(TEXT("entrancePupilOffset"), Number);
			Found += Lens.TryGetNumberField(TEXT("fStop"), Number);
			Found += Lens.TryGetNumberField(TEXT("pinholeFocalLength"), Number);
			Found += Lens.TryGetNumberField(TEXT("focusDistance"), Number);
			if (Lens.TryGetObjectField(TEXT("encoders"), Object))
			{
				Found += (*Object)->TryGetNumberField(TEXT("focus"), Number);
				Found += (*Object)->TryGetNumberField(TEXT("iris"), Number);
				Found += (*Object)->TryGetNumberField(TEXT("zoom"), Number);
			}
			if (Lens.TryGetArrayField(TEXT("distortion"), Array) && Array->Num() > 0)
			{
				const TSharedPtr<FJsonObject>* Distortion = nullptr;
				if ((*Array)[0]->TryGetObject(Distortion))
				{
					const TArray<TSharedPtr<FJsonValue>>* Radial = nullptr;
					if ((*Distortion)->TryGetArrayField(TEXT("radial"), Radial))
					{
						for (const TSharedPtr<FJsonValue>& Coefficient : *Radial)
						{
							Found += Coefficient->TryGetNumber(Number);
						}
					}
				}
			}
		}
		if (Root.TryGetArrayField(TEXT("transforms"), Array) && Array->Num() > 0)
		{
			const TSharedPtr<FJsonObject>* Transform = nullptr;
			if ((*Array)[0]->TryGetObject(Transform))
			{
				if ((*Transform)->TryGetObjectField(TEXT("translation"), Object))
				{
					Found += (*Object)->TryGetNumberField(TEXT("x"), Number);
					Found += (*Object)->TryGetNumberField(TEXT("y"), Number);
					Found += (*Object)->TryGetNumberField(TEXT("z"), Number);
				}
				if ((*Transform)->TryGetObjectField(TEXT("rotation"), Object))
				{
					Found += (*Object)->TryGetNumberField(TEXT("pan"), Number);
					Found += (*Object)->TryGetNumberField(TEXT("tilt"), Number);
					Found += (*Object)->TryGetNumberField(TEXT("roll"), Number);
				}
			}
		}
		return Found;
	}

	void BM_ParseCompactUtf8(benchmark::State& State)
	{
		const std::string& Text = CompactSample();
		for (auto _ : State)
		{
			TSharedPtr<FJsonObject> Object = Parse(Text);
			benchmark::DoNotOptimize(Object);
		}
		State.SetBytesProcessed(static_cast<int64_t>(State.iterations()) * static_cast<int64_t>(Text.size()));
		State.counters["bytes"] = static_cast<double>(Text.size());
	}
	BENCHMARK(BM_ParseCompactUtf8);

	void BM_ParseCompactUtf8AndReadFields(benchmark::State& State)
	{
		const std::string& Text = CompactSample();
		int32 Found = 0;
		for (auto _ : State)
		{
			TSharedPtr<FJsonObject> Object = Parse(Text);
			Found = ReadFields(*Object);
			benchmark::DoNotOptimize(Found);
		}
		State.counters["fields"] = Found;
	}
	BENCHMARK(BM_ParseCompactUtf8AndReadFields);

	void BM_ParsePrettyUtf8(benchmark::State& State)
	{
		const std::string& Text = PrettySample();
		for (auto _ : State)
		{
			TSharedPtr<FJsonObject> Object = Parse(Text);
			benchmark::DoNotOptimize(Object);
		}
		State.counters["bytes"] = static_cast<double>(Text.size());
	}
	BENCHMARK(BM_ParsePrettyUtf8);

	void BM_ParseCompactFromFString(benchmark::State& State)
	{
		const std::string& Text = CompactSample();
		const FString Wide(static_cast<int32>(Text.size()), reinterpret_cast<const UTF8CHAR*>(Text.data()));
		for (auto _ : State)
		{
			TSharedPtr<FJsonObject> Object;
			FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Wide), Object);
			benchmark::DoNotOptimize(Object);
		}
	}
	BENCHMARK(BM_ParseCompactFromFString);
} // namespace

BENCHMARK_MAIN();
