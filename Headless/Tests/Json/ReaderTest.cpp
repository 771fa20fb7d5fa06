// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EngineTestPrinters.h"
#include "JsonTestUtils.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/MemoryReader.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

using JsonTestUtils::ReadDataFile;

namespace
{
	TSharedPtr<FJsonObject> ParseObject(const FString& Text)
	{
		TSharedPtr<FJsonObject> Object;
		const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(Text);
		EXPECT_TRUE(FJsonSerializer::Deserialize(Reader, Object)) << JsonTestUtils::ToUtf8(Reader->GetErrorMessage());
		return Object;
	}

	/** Parses UTF-8 bytes the way a network consumer does: straight from the buffer. */
	bool ParseUtf8(const std::string& Bytes, TSharedPtr<FJsonValue>& OutValue, FString* OutError = nullptr,
		FJsonSerializer::EFlags Flags = FJsonSerializer::EFlags::None)
	{
		const TSharedRef<TJsonReader<UTF8CHAR>> Reader = TJsonReaderFactory<UTF8CHAR>::CreateFromView(
			FUtf8StringView(reinterpret_cast<const UTF8CHAR*>(Bytes.data()), static_cast<int32>(Bytes.size())));
		const bool bOk = FJsonSerializer::Deserialize(Reader, OutValue, Flags);
		if (OutError)
		{
			*OutError = Reader->GetErrorMessage();
		}
		return bOk;
	}

	double ParseNumber(const char* Text)
	{
		TSharedPtr<FJsonValue> Value;
		EXPECT_TRUE(ParseUtf8(Text, Value)) << Text;
		return Value.IsValid() ? Value->AsNumber() : std::nan("");
	}

	/** Expects the text to be rejected with a located message, and returns the message. */
	FString ExpectRejected(const std::string& Text)
	{
		TSharedPtr<FJsonValue> Value;
		FString Error;
		EXPECT_FALSE(ParseUtf8(Text, Value, &Error)) << Text;
		EXPECT_FALSE(Error.IsEmpty()) << Text;
		EXPECT_TRUE(Error.Contains(TEXT("line"))) << JsonTestUtils::ToUtf8(Error);
		return Error;
	}
} // namespace

TEST(JsonReader, ParsesEveryKindOfValueFromAString)
{
	const TSharedPtr<FJsonObject> Object =
		ParseObject(TEXT("{\"a\": 1, \"b\": \"x\", \"c\": true, \"d\": null, \"e\": [1, 2], \"f\": {\"g\": 2.5}}"));
	ASSERT_TRUE(Object.IsValid());
	EXPECT_EQ(Object->Values.Num(), 6);
	EXPECT_EQ(Object->GetNumberField(TEXT("a")), 1.0);
	EXPECT_EQ(Object->GetStringField(TEXT("b")), TEXT("x"));
	EXPECT_TRUE(Object->GetBoolField(TEXT("c")));
	EXPECT_TRUE(Object->HasTypedField<EJson::Null>(TEXT("d")));
	ASSERT_EQ(Object->GetArrayField(TEXT("e")).Num(), 2);
	EXPECT_EQ(Object->GetArrayField(TEXT("e"))[1]->AsNumber(), 2.0);
	EXPECT_EQ(Object->GetObjectField(TEXT("f"))->GetNumberField(TEXT("g")), 2.5);
}

TEST(JsonReader, ReadsUtf8BytesWithoutConversion)
{
	const std::string Bytes = "{\"name\": \"caf\xC3\xA9\", \"n\": [1, 2, 3]}";
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8(Bytes, Value));
	const TSharedPtr<FJsonObject>& Object = Value->AsObject();
	ASSERT_TRUE(Object.IsValid());
	const FString Name = Object->GetStringField(TEXT("name"));
	ASSERT_EQ(Name.Len(), 4);
	EXPECT_EQ(Name[3], TCHAR(0xE9));
	EXPECT_EQ(Object->GetArrayField(TEXT("n")).Num(), 3);
}

TEST(JsonReader, ReadsFromArchivesOfEitherCharacterSize)
{
	const std::string Text = "{\"a\": [true, false]}";
	TArray<uint8> Utf8Bytes;
	Utf8Bytes.Append(reinterpret_cast<const uint8*>(Text.data()), static_cast<int32>(Text.size()));
	FMemoryReader Utf8Archive(Utf8Bytes);
	TSharedPtr<FJsonObject> FromUtf8;
	ASSERT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(&Utf8Archive), FromUtf8));
	EXPECT_EQ(FromUtf8->GetArrayField(TEXT("a")).Num(), 2);

	const FString Wide(TEXT("{\"a\": [true, false, null]}"));
	TArray<uint8> WideBytes;
	WideBytes.Append(reinterpret_cast<const uint8*>(*Wide), Wide.Len() * static_cast<int32>(sizeof(TCHAR)));
	FMemoryReader WideArchive(WideBytes);
	TSharedPtr<FJsonObject> FromWide;
	ASSERT_TRUE(FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(&WideArchive), FromWide));
	EXPECT_EQ(FromWide->GetArrayField(TEXT("a")).Num(), 3);
}

TEST(JsonReader, DecodesEscapesAndSurrogatePairs)
{
	const TSharedPtr<FJsonObject> Object = ParseObject(
		TEXT("{\"e\": \"\\u00e9\", \"smile\": \"\\ud83d\\ude00\", \"ctl\": \"\\\"\\\\\\/\\b\\f\\n\\r\\t\", ")
			TEXT("\"raw\": \"\u00e9\u4e2d\"}"));
	ASSERT_TRUE(Object.IsValid());
	const FString E = Object->GetStringField(TEXT("e"));
	ASSERT_EQ(E.Len(), 1);
	EXPECT_EQ(E[0], TCHAR(0xE9));
	const FString Smile = Object->GetStringField(TEXT("smile"));
	ASSERT_EQ(Smile.Len(), 2);
	EXPECT_EQ(Smile[0], TCHAR(0xD83D));
	EXPECT_EQ(Smile[1], TCHAR(0xDE00));
	EXPECT_EQ(Object->GetStringField(TEXT("ctl")), FString(TEXT("\"\\/\b\f\n\r\t")));
	const FString Raw = Object->GetStringField(TEXT("raw"));
	ASSERT_EQ(Raw.Len(), 2);
	EXPECT_EQ(Raw[0], TCHAR(0xE9));
	EXPECT_EQ(Raw[1], TCHAR(0x4E2D));
}

TEST(JsonReader, KeepsNumbersExact)
{
	EXPECT_EQ(ParseNumber("0"), 0.0);
	EXPECT_EQ(ParseNumber("42"), 42.0);
	EXPECT_EQ(ParseNumber("-17"), -17.0);
	EXPECT_EQ(ParseNumber("0.1"), 0.1);
	EXPECT_EQ(ParseNumber("24.305"), 24.305);
	EXPECT_EQ(ParseNumber("1e3"), 1000.0);
	EXPECT_EQ(ParseNumber("2.5E-3"), 0.0025);
	EXPECT_EQ(ParseNumber("1e308"), 1e308);
	EXPECT_EQ(ParseNumber("-1.7976931348623157e308"), -1.7976931348623157e308);
	EXPECT_EQ(ParseNumber("4.9e-324"), 4.9e-324);
	EXPECT_EQ(ParseNumber("18446744073709551615"), 18446744073709551615.0);
	EXPECT_EQ(ParseNumber("-9223372036854775808"), -9223372036854775808.0);
	// Beyond 2^53 a double rounds, as it does for any reader that stores doubles.
	EXPECT_EQ(ParseNumber("9007199254740993"), 9007199254740992.0);

	const double NegativeZero = ParseNumber("-0");
	EXPECT_EQ(NegativeZero, 0.0);
	EXPECT_TRUE(std::signbit(NegativeZero));
	EXPECT_FALSE(std::signbit(ParseNumber("0")));
	EXPECT_TRUE(std::signbit(ParseNumber("-0.0")));
}

TEST(JsonReader, NumbersBeyondTheRangeOfADouble)
{
	// Too large for a double: rejected rather than turned into infinity, which Json cannot hold.
	const FString Error = ExpectRejected("[1e400]");
	EXPECT_TRUE(Error.Contains(TEXT("overflow"))) << JsonTestUtils::ToUtf8(Error);
	ExpectRejected("-1e400");
	// Too small: rounds to zero, as decimal to binary conversion does.
	EXPECT_EQ(ParseNumber("1e-400"), 0.0);
	// Integers past 64 bits become the nearest double, or keep their digits as text when asked.
	EXPECT_EQ(ParseNumber("123456789012345678901234567890"), 1.2345678901234568e+29);
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(
		ParseUtf8("[123456789012345678901234567890]", Value, nullptr, FJsonSerializer::EFlags::StoreNumbersAsStrings));
	EXPECT_EQ(Value->AsArray()[0]->AsString(), TEXT("123456789012345678901234567890"));
	uint64 Unsigned = 0;
	EXPECT_FALSE(Value->AsArray()[0]->TryGetNumber(Unsigned));
}

TEST(JsonReader, NegativeZeroInsideContainersKeepsItsSign)
{
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8("[-0, 0, -0]", Value));
	const TArray<TSharedPtr<FJsonValue>>& Array = Value->AsArray();
	ASSERT_EQ(Array.Num(), 3);
	EXPECT_TRUE(std::signbit(Array[0]->AsNumber()));
	EXPECT_FALSE(std::signbit(Array[1]->AsNumber()));
	EXPECT_TRUE(std::signbit(Array[2]->AsNumber()));
}

TEST(JsonReader, NumbersStoredAsStringsKeepEveryDigit)
{
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8("{\"big\": 9007199254740993, \"max\": 18446744073709551615, \"min\": -9223372036854775808, "
						  "\"f\": 0.30000000000000004, \"z\": -0}",
		Value, nullptr, FJsonSerializer::EFlags::StoreNumbersAsStrings));
	const TSharedPtr<FJsonObject>& Object = Value->AsObject();
	int64 Big = 0;
	ASSERT_TRUE(Object->TryGetNumberField(TEXT("big"), Big));
	EXPECT_EQ(Big, 9007199254740993LL);
	uint64 Max = 0;
	ASSERT_TRUE(Object->TryGetNumberField(TEXT("max"), Max));
	EXPECT_EQ(Max, 18446744073709551615ULL);
	int64 Min = 0;
	ASSERT_TRUE(Object->TryGetNumberField(TEXT("min"), Min));
	EXPECT_EQ(Min, INT64_MIN);
	EXPECT_EQ(Object->GetStringField(TEXT("f")), TEXT("0.30000000000000004"));
	EXPECT_EQ(Object->GetNumberField(TEXT("f")), 0.30000000000000004);
	EXPECT_EQ(Object->GetStringField(TEXT("z")), TEXT("-0"));
	EXPECT_TRUE(Object->HasTypedField<EJson::Number>(TEXT("big")));
}

TEST(JsonReader, AcceptsAnyValueAtTheTopOnlyWhereAsked)
{
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8("  42  ", Value));
	EXPECT_EQ(Value->AsNumber(), 42.0);
	ASSERT_TRUE(ParseUtf8("\"text\"", Value));
	EXPECT_EQ(Value->AsString(), TEXT("text"));
	ASSERT_TRUE(ParseUtf8("null", Value));
	EXPECT_TRUE(Value->IsNull());

	TSharedPtr<FJsonObject> Object;
	const TSharedRef<TJsonReader<>> ArrayReader = TJsonReaderFactory<>::Create(TEXT("[1]"));
	EXPECT_FALSE(FJsonSerializer::Deserialize(ArrayReader, Object));
	EXPECT_TRUE(ArrayReader->GetErrorMessage().Contains(TEXT("expected an object, found an array")));
	EXPECT_FALSE(Object.IsValid());

	TArray<TSharedPtr<FJsonValue>> Array;
	const TSharedRef<TJsonReader<>> ObjectReader = TJsonReaderFactory<>::Create(TEXT("{}"));
	EXPECT_FALSE(FJsonSerializer::Deserialize(ObjectReader, Array));
	EXPECT_TRUE(ObjectReader->GetErrorMessage().Contains(TEXT("expected an array")));

	const TSharedRef<TJsonReader<>> Good = TJsonReaderFactory<>::Create(TEXT("[1, [2], {}]"));
	ASSERT_TRUE(FJsonSerializer::Deserialize(Good, Array));
	EXPECT_EQ(Array.Num(), 3);
}

TEST(JsonReader, SkipsAByteOrderMark)
{
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8("\xEF\xBB\xBF{\"a\": 1}", Value));
	EXPECT_EQ(Value->AsObject()->GetNumberField(TEXT("a")), 1.0);
}

TEST(JsonReader, RejectsMalformedTextWithALocatedMessage)
{
	ExpectRejected("");
	ExpectRejected("   ");
	ExpectRejected("{");
	ExpectRejected("{\"a\": 1");
	ExpectRejected("{\"a\": 1,}");
	ExpectRejected("[1, 2,]");
	ExpectRejected("{\"a\" 1}");
	ExpectRejected("{'a': 1}");
	ExpectRejected("{a: 1}");
	ExpectRejected("[NaN]");
	ExpectRejected("[Infinity]");
	ExpectRejected("[01]");
	ExpectRejected("[1.]");
	ExpectRejected("[.5]");
	ExpectRejected("[+1]");
	ExpectRejected("[\"tab\there\"]");
	ExpectRejected("[\"\\x\"]");
	ExpectRejected("[\"\\u12\"]");
	ExpectRejected("[\"unterminated]");
	ExpectRejected("// comment\n{}");
	ExpectRejected(std::string("{\"a\": 1}\0", 9));
}

TEST(JsonReader, RejectsTrailingContent)
{
	const FString Error = ExpectRejected("{\"a\": 1} x");
	EXPECT_TRUE(Error.Contains(TEXT("character 10"))) << JsonTestUtils::ToUtf8(Error);
	ExpectRejected("{} {}");
	ExpectRejected("1 2");
	ExpectRejected("[]]");
}

TEST(JsonReader, ReportsTheLineAndCharacterOfAnError)
{
	const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(TEXT("{\n  \"a\": 1,\n  \"b\": tru\n}"));
	TSharedPtr<FJsonObject> Object;
	EXPECT_FALSE(FJsonSerializer::Deserialize(Reader, Object));
	EXPECT_EQ(Reader->GetLineNumber(), 3u);
	EXPECT_GE(Reader->GetCharacterNumber(), 8u);
	EXPECT_LE(Reader->GetCharacterNumber(), 11u);
	EXPECT_TRUE(Reader->GetErrorMessage().StartsWith(TEXT("Json error at line 3, character ")))
		<< JsonTestUtils::ToUtf8(Reader->GetErrorMessage());
}

TEST(JsonReader, RejectsInvalidUtf8)
{
	ExpectRejected("[\"\xFF\"]");
	ExpectRejected("[\"\xC3\"]");
	ExpectRejected("[\"\xC0\xAF\"]");
	ExpectRejected("[\"\xED\xA0\x80\"]");
	ExpectRejected("[\"\xF4\x90\x80\x80\"]");
	ExpectRejected("\xFF\xFE{}");
	ExpectRejected("{\"a\xFF\": 1}");
}

TEST(JsonReader, NestingUpToTheLimitParsesAndDeeperFailsCleanly)
{
	const int32 Limit = UE::Json::Private::FJsonParser::MaxDepth;
	ASSERT_GE(Limit, 1000);

	std::string Deep = std::string(static_cast<size_t>(Limit), '[') + std::string(static_cast<size_t>(Limit), ']');
	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8(Deep, Value));
	int32 Depth = 0;
	for (TSharedPtr<FJsonValue> Cursor = Value; Cursor.IsValid();)
	{
		++Depth;
		const TArray<TSharedPtr<FJsonValue>>& Array = Cursor->AsArray();
		Cursor = Array.Num() ? Array[0] : nullptr;
	}
	EXPECT_EQ(Depth, Limit);

	std::string Objects;
	for (int32 Index = 0; Index < 1000; ++Index)
	{
		Objects += "{\"a\":";
	}
	Objects += "1";
	Objects += std::string(1000, '}');
	ASSERT_TRUE(ParseUtf8(Objects, Value));

	const std::string TooDeep =
		std::string(static_cast<size_t>(Limit) + 1, '[') + std::string(static_cast<size_t>(Limit) + 1, ']');
	const FString Error = ExpectRejected(TooDeep);
	EXPECT_TRUE(Error.Contains(TEXT("nest deeper than"))) << JsonTestUtils::ToUtf8(Error);

	// Far past the limit, and never closed: still a clean failure.
	ExpectRejected(std::string(1000000, '['));
	ExpectRejected(std::string(200000, '{').insert(0, "["));
}

TEST(JsonReader, ParsesTheTrackingExamples)
{
	for (const char* Name : {"RecommendedDynamic.json", "RecommendedStatic.json", "CompleteStatic.json"})
	{
		const std::string Bytes = ReadDataFile(Name);
		ASSERT_FALSE(Bytes.empty()) << Name;
		TSharedPtr<FJsonValue> Value;
		FString Error;
		EXPECT_TRUE(ParseUtf8(Bytes, Value, &Error)) << Name << ": " << JsonTestUtils::ToUtf8(Error);
		EXPECT_EQ(Value->Type, EJson::Object) << Name;
	}

	TSharedPtr<FJsonValue> Value;
	ASSERT_TRUE(ParseUtf8(ReadDataFile("RecommendedDynamic.json"), Value));
	const TSharedPtr<FJsonObject>& Root = Value->AsObject();
	EXPECT_EQ(Root->GetObjectField(TEXT("lens"))->GetNumberField(TEXT("fStop")), 4.0);
	EXPECT_EQ(Root->GetObjectField(TEXT("lens"))->GetNumberField(TEXT("pinholeFocalLength")), 24.305);
	EXPECT_EQ(Root->GetObjectField(TEXT("lens"))->GetObjectField(TEXT("encoders"))->GetNumberField(TEXT("zoom")), 0.3);
	const TArray<TSharedPtr<FJsonValue>>& Radial = Root->GetObjectField(TEXT("lens"))
													   ->GetArrayField(TEXT("distortion"))[0]
													   ->AsObject()
													   ->GetArrayField(TEXT("radial"));
	ASSERT_EQ(Radial.Num(), 3);
	EXPECT_EQ(Radial[2]->AsNumber(), 3.0);
	int32 Hours = 0;
	EXPECT_TRUE(Root->GetObjectField(TEXT("timing"))
					->GetObjectField(TEXT("timecode"))
					->TryGetNumberField(TEXT("hours"), Hours));
	EXPECT_EQ(Hours, 1);
	bool bRecording = true;
	EXPECT_TRUE(Root->GetObjectField(TEXT("tracker"))->TryGetBoolField(TEXT("recording"), bRecording));
	EXPECT_FALSE(bRecording);
	EXPECT_EQ(Root->GetStringField(TEXT("sampleId")), TEXT("urn:uuid:873c5392-1fad-4e7d-a7ae-83950051bc2c"));
	const TSharedPtr<FJsonObject>& Rotation =
		Root->GetArrayField(TEXT("transforms"))[0]->AsObject()->GetObjectField(TEXT("rotation"));
	EXPECT_EQ(Rotation->GetNumberField(TEXT("pan")), 180.0);
	EXPECT_EQ(Rotation->GetNumberField(TEXT("roll")), 45.0);
	TArray<FString> VersionParts;
	EXPECT_TRUE(Root->GetObjectField(TEXT("protocol"))->TryGetStringArrayField(TEXT("version"), VersionParts));
	EXPECT_EQ(VersionParts, (TArray<FString>{TEXT("1"), TEXT("0"), TEXT("1")}));
}

TEST(JsonReader, TruncatedTextNeverParses)
{
	const std::string Bytes = ReadDataFile("RecommendedDynamic.json");
	ASSERT_FALSE(Bytes.empty());
	// The last closing brace is the last non-whitespace character: every shorter prefix lacks it.
	const size_t LastBrace = Bytes.rfind('}');
	for (size_t Length = 0; Length <= LastBrace; ++Length)
	{
		TSharedPtr<FJsonValue> Value;
		EXPECT_FALSE(ParseUtf8(Bytes.substr(0, Length), Value)) << "prefix of " << Length << " bytes";
	}
}

TEST(JsonReader, RandomBytesAndMutationsFailCleanly)
{
	std::mt19937 Random(1234);
	const std::string Example = ReadDataFile("CompleteStatic.json");
	ASSERT_FALSE(Example.empty());
	int32 Parsed = 0;
	for (int32 Round = 0; Round < 3000; ++Round)
	{
		std::string Bytes;
		if (Round % 2 == 0)
		{
			const size_t Length = Random() % 64;
			for (size_t Index = 0; Index < Length; ++Index)
			{
				Bytes.push_back(static_cast<char>(Random() & 0xFF));
			}
		}
		else
		{
			Bytes = Example;
			for (int32 Flip = 0; Flip < 4; ++Flip)
			{
				Bytes[Random() % Bytes.size()] = static_cast<char>(Random() & 0xFF);
			}
		}
		TSharedPtr<FJsonValue> Value;
		FString Error;
		if (ParseUtf8(Bytes, Value, &Error))
		{
			++Parsed;
			EXPECT_TRUE(Value.IsValid());
		}
		else
		{
			EXPECT_FALSE(Error.IsEmpty());
		}
	}
	// Some mutations land in string contents or digits and leave valid Json.
	EXPECT_GT(Parsed, 0);
}

TEST(JsonReader, LaterDuplicateKeysWinAndKeysIgnoreCase)
{
	const TSharedPtr<FJsonObject> Object = ParseObject(TEXT("{\"a\": 1, \"a\": 2, \"Key\": 3}"));
	ASSERT_TRUE(Object.IsValid());
	EXPECT_EQ(Object->Values.Num(), 2);
	EXPECT_EQ(Object->GetNumberField(TEXT("a")), 2.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("key")), 3.0);
	EXPECT_EQ(Object->GetNumberField(TEXT("KEY")), 3.0);
}

TEST(JsonReader, WalksNotationsOneByOne)
{
	const TSharedRef<TJsonReader<>> Reader =
		TJsonReaderFactory<>::Create(TEXT("{\"a\": [1.50, \"x\"], \"b\": {\"c\": null}, \"d\": true}"));
	EJsonNotation Notation = EJsonNotation::Error;

	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ObjectStart);
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ArrayStart);
	EXPECT_EQ(Reader->GetIdentifier(), TEXT("a"));
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::Number);
	EXPECT_EQ(Reader->GetValueAsNumber(), 1.5);
	EXPECT_EQ(Reader->GetValueAsNumberString(), TEXT("1.50"));
	EXPECT_TRUE(Reader->GetIdentifier().IsEmpty());
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::String);
	EXPECT_EQ(Reader->GetValueAsString(), TEXT("x"));
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ArrayEnd);
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ObjectStart);
	EXPECT_EQ(Reader->GetIdentifier(), TEXT("b"));
	EXPECT_TRUE(Reader->SkipObject());
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::Boolean);
	EXPECT_EQ(Reader->GetIdentifier(), TEXT("d"));
	EXPECT_TRUE(Reader->GetValueAsBoolean());
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ObjectEnd);
	EXPECT_FALSE(Reader->ReadNext(Notation));
	EXPECT_TRUE(Reader->GetErrorMessage().IsEmpty());
}

TEST(JsonReader, WalkingStopsAtAnErrorAfterTheNotationsBeforeIt)
{
	const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(TEXT("[1, x]"));
	EJsonNotation Notation = EJsonNotation::Null;
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ArrayStart);
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::Number);
	EXPECT_TRUE(Reader->GetErrorMessage().IsEmpty());
	EXPECT_FALSE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::Error);
	EXPECT_TRUE(Reader->GetErrorMessage().Contains(TEXT("line 1")));
}

TEST(JsonReader, SkipArrayAndDeserializeTheRest)
{
	const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(TEXT("[[1, [2]], {\"k\": [3]}]"));
	EJsonNotation Notation = EJsonNotation::Null;
	ASSERT_TRUE(Reader->ReadNext(Notation));
	ASSERT_TRUE(Reader->ReadNext(Notation));
	EXPECT_EQ(Notation, EJsonNotation::ArrayStart);
	EXPECT_TRUE(Reader->SkipArray());
	TSharedPtr<FJsonValue> Rest;
	ASSERT_TRUE(FJsonSerializer::Deserialize(Reader, Rest));
	ASSERT_EQ(Rest->Type, EJson::Object);
	EXPECT_EQ(Rest->AsObject()->GetArrayField(TEXT("k"))[0]->AsNumber(), 3.0);
}

TEST(JsonReader, TheTextIsReadOnce)
{
	const TSharedRef<TJsonReader<>> Reader = TJsonReaderFactory<>::Create(TEXT("{}"));
	TSharedPtr<FJsonObject> Object;
	ASSERT_TRUE(FJsonSerializer::Deserialize(Reader, Object));
	EXPECT_FALSE(FJsonSerializer::Deserialize(Reader, Object));
	EXPECT_FALSE(Reader->GetErrorMessage().IsEmpty());
}
