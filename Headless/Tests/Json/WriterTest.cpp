// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EngineTestPrinters.h"
#include "JsonTestUtils.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "Policies/PrettyJsonPrintPolicy.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "Serialization/MemoryWriter.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using JsonTestUtils::ReadDataFile;

namespace
{
	using FCondensedWriter = TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;
	using FCondensedWriterFactory = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;

	FString Condensed(const TSharedRef<FJsonObject>& Object)
	{
		FString Out;
		const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&Out);
		EXPECT_TRUE(FJsonSerializer::Serialize(Object, Writer));
		return Out;
	}

	FString CondensedValue(const TSharedPtr<FJsonValue>& Value)
	{
		FString Out;
		const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&Out);
		EXPECT_TRUE(FJsonSerializer::Serialize(Value, FString(), Writer));
		return Out;
	}

	TSharedPtr<FJsonValue> Parse(const FString& Text)
	{
		TSharedPtr<FJsonValue> Value;
		const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(Text);
		EXPECT_TRUE(FJsonSerializer::Deserialize(Reader, Value)) << JsonTestUtils::ToUtf8(Reader->GetErrorMessage());
		return Value;
	}
} // namespace

TEST(JsonWriter, WritesCondensedText)
{
	FString Out;
	const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&Out);
	Writer->WriteObjectStart();
	Writer->WriteValue(TEXT("s"), TEXT("x"));
	Writer->WriteValue(TEXT("i"), 42);
	Writer->WriteValue(TEXT("neg"), static_cast<int64>(-9007199254740993LL));
	Writer->WriteValue(TEXT("u"), static_cast<uint64>(18446744073709551615ULL));
	Writer->WriteValue(TEXT("d"), 0.1);
	Writer->WriteValue(TEXT("f"), 0.1f);
	Writer->WriteValue(TEXT("b"), false);
	Writer->WriteNull(TEXT("n"));
	Writer->WriteArrayStart(TEXT("a"));
	Writer->WriteValue(1);
	Writer->WriteObjectStart();
	Writer->WriteObjectEnd();
	Writer->WriteArrayStart();
	Writer->WriteArrayEnd();
	Writer->WriteRawJSONValue(TEXT("[true]"));
	Writer->WriteArrayEnd();
	Writer->WriteObjectStart(TEXT("o"));
	Writer->WriteValue(TEXT("k"), FString(TEXT("v")));
	Writer->WriteObjectEnd();
	Writer->WriteObjectEnd();
	EXPECT_TRUE(Writer->Close());
	EXPECT_EQ(Out,
		TEXT("{\"s\":\"x\",\"i\":42,\"neg\":-9007199254740993,\"u\":18446744073709551615,\"d\":0.1,\"f\":0.1,")
			TEXT("\"b\":false,\"n\":null,\"a\":[1,{},[],[true]],\"o\":{\"k\":\"v\"}}"));
}

TEST(JsonWriter, WritesPrettyTextWithTabsAndNewlines)
{
	FString Out;
	const TSharedRef<TJsonWriter<>> Writer = TJsonWriterFactory<>::Create(&Out);
	Writer->WriteObjectStart();
	Writer->WriteValue(TEXT("a"), 1);
	Writer->WriteArrayStart(TEXT("list"));
	Writer->WriteValue(TEXT("x"));
	Writer->WriteValue(true);
	Writer->WriteArrayEnd();
	Writer->WriteObjectStart(TEXT("empty"));
	Writer->WriteObjectEnd();
	Writer->WriteObjectEnd();
	EXPECT_TRUE(Writer->Close());
	EXPECT_EQ(Out, TEXT("{\n\t\"a\": 1,\n\t\"list\": [\n\t\t\"x\",\n\t\ttrue\n\t],\n\t\"empty\": {}\n}"));
}

TEST(JsonWriter, EscapesWhatJsonRequires)
{
	const TSharedRef<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetStringField(TEXT("s"), FString(TEXT("q\"b\\n\nt\tc\x01 \u00e9")));
	EXPECT_EQ(Condensed(Object), FString(TEXT("{\"s\":\"q\\\"b\\\\n\\nt\\tc\\u0001 \u00e9\"}")));

	const TSharedPtr<FJsonValue> Back = Parse(Condensed(Object));
	EXPECT_EQ(Back->AsObject()->GetStringField(TEXT("s")), Object->GetStringField(TEXT("s")));
}

TEST(JsonWriter, WritesNumbersSoTheyReadBackExactly)
{
	const double Samples[] = {0.0, -0.0, 1.0, -17.0, 0.1, 24.305, 1e300, -2.5e-308, 4.9e-324, 9007199254740993.0,
		1.7976931348623157e308, 1.0 / 3.0};
	for (const double Sample : Samples)
	{
		const FString Text = CondensedValue(MakeShared<FJsonValueNumber>(Sample));
		const TSharedPtr<FJsonValue> Back = Parse(Text);
		ASSERT_TRUE(Back.IsValid()) << JsonTestUtils::ToUtf8(Text);
		EXPECT_EQ(Back->AsNumber(), Sample) << JsonTestUtils::ToUtf8(Text);
		EXPECT_EQ(std::signbit(Back->AsNumber()), std::signbit(Sample)) << JsonTestUtils::ToUtf8(Text);
	}
	EXPECT_EQ(CondensedValue(MakeShared<FJsonValueNumber>(12.0)), TEXT("12"));
	EXPECT_EQ(CondensedValue(MakeShared<FJsonValueNumber>(1e300)), TEXT("1e+300"));
	EXPECT_EQ(CondensedValue(MakeShared<FJsonValueNumberString>(TEXT("123456789012345678901234567890"))),
		TEXT("123456789012345678901234567890"));
}

TEST(JsonWriter, WritesNonFiniteNumbersAsNullWithAWarning)
{
	JsonTestUtils::FLogCapture Log;
	EXPECT_EQ(CondensedValue(MakeShared<FJsonValueNumber>(std::numeric_limits<double>::infinity())), TEXT("null"));
	EXPECT_EQ(CondensedValue(MakeShared<FJsonValueNumber>(std::numeric_limits<double>::quiet_NaN())), TEXT("null"));
	EXPECT_EQ(Log.Warnings.Num(), 2);
}

TEST(JsonWriter, ExamplesSurviveARoundTrip)
{
	for (const char* Name : {"RecommendedDynamic.json", "RecommendedStatic.json", "CompleteStatic.json"})
	{
		const std::string Bytes = ReadDataFile(Name);
		const TSharedPtr<FJsonValue> Original =
			Parse(FString(static_cast<int32>(Bytes.size()), reinterpret_cast<const UTF8CHAR*>(Bytes.data())));
		ASSERT_TRUE(Original.IsValid()) << Name;

		FString Pretty;
		ASSERT_TRUE(
			FJsonSerializer::Serialize(Original->AsObject().ToSharedRef(), TJsonWriterFactory<>::Create(&Pretty)));
		const TSharedPtr<FJsonValue> FromPretty = Parse(Pretty);
		ASSERT_TRUE(FromPretty.IsValid()) << Name;
		EXPECT_TRUE(*FromPretty == *Original) << Name;

		const FString Compact = Condensed(Original->AsObject().ToSharedRef());
		EXPECT_LT(Compact.Len(), Pretty.Len());
		const TSharedPtr<FJsonValue> FromCompact = Parse(Compact);
		ASSERT_TRUE(FromCompact.IsValid()) << Name;
		EXPECT_TRUE(*FromCompact == *Original) << Name;
		// Writing what was read gives the same text again.
		EXPECT_EQ(Condensed(FromCompact->AsObject().ToSharedRef()), Compact) << Name;
	}
}

TEST(JsonWriter, SerializesArraysAndIdentifiedValues)
{
	TArray<TSharedPtr<FJsonValue>> Array;
	Array.Add(MakeShared<FJsonValueNumber>(1));
	Array.Add(MakeShared<FJsonValueNull>());
	Array.Add(nullptr);
	FString Out;
	ASSERT_TRUE(FJsonSerializer::Serialize(Array, FCondensedWriterFactory::Create(&Out)));
	EXPECT_EQ(Out, TEXT("[1,null,null]"));

	FString Fields;
	const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&Fields);
	Writer->WriteObjectStart();
	ASSERT_TRUE(FJsonSerializer::Serialize(MakeShared<FJsonValueString>(TEXT("v")), TEXT("k"), Writer, false));
	Writer->WriteObjectEnd();
	ASSERT_TRUE(Writer->Close());
	EXPECT_EQ(Fields, TEXT("{\"k\":\"v\"}"));
}

TEST(JsonWriter, WritesUtf8IntoAnArchive)
{
	TArray<uint8> Bytes;
	FMemoryWriter Archive(Bytes);
	const TSharedRef<TJsonWriter<UTF8CHAR, TCondensedJsonPrintPolicy<UTF8CHAR>>> Writer =
		TJsonWriterFactory<UTF8CHAR, TCondensedJsonPrintPolicy<UTF8CHAR>>::Create(&Archive);
	Writer->WriteObjectStart();
	Writer->WriteValue(TEXT("caf\u00e9"), 2.5);
	Writer->WriteObjectEnd();
	ASSERT_TRUE(Writer->Close());
	const std::string Text(reinterpret_cast<const char*>(Bytes.GetData()), static_cast<size_t>(Bytes.Num()));
	EXPECT_EQ(Text, "{\"caf\xC3\xA9\":2.5}");
}

TEST(JsonWriter, CloseReportsContainersLeftOpen)
{
	FString Out;
	const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&Out);
	Writer->WriteArrayStart();
	Writer->WriteValue(1);
	EXPECT_FALSE(Writer->Close());
	EXPECT_EQ(Out, TEXT("[1"));
}
