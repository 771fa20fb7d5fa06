// Copyright Orvane. All Rights Reserved.

#include "CborReader.h"
#include "CborTypes.h"
#include "Containers/ArrayView.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/MemoryReader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace
{
	/** The datagram header before the payload: magic, encoding, sequence, offset, length and checksum. */
	constexpr int32 HeaderSize = 16;

	std::string ReadDataFile(const char* Name)
	{
		const std::filesystem::path Path = std::filesystem::path(__FILE__).parent_path() / "Data" / Name;
		std::ifstream Stream(Path, std::ios::binary);
		return std::string(std::istreambuf_iterator<char>(Stream), std::istreambuf_iterator<char>());
	}

	/** Turns the CBOR item Context starts into the Json value it stands for (numbers become doubles). */
	TSharedPtr<FJsonValue> ToJson(FCborReader& Reader, const FCborContext& Context)
	{
		if (Context.IsContainer())
		{
			const bool bMap = Context.MajorType() == ECborCode::Map;
			TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
			TArray<TSharedPtr<FJsonValue>> Array;
			FString Key;
			bool bExpectKey = true;
			FCborContext Item;
			while (Reader.ReadNext(Item))
			{
				if (Item.IsBreak())
				{
					return bMap ? TSharedPtr<FJsonValue>(MakeShared<FJsonValueObject>(Object))
								: TSharedPtr<FJsonValue>(MakeShared<FJsonValueArray>(Array));
				}
				if (bMap && bExpectKey)
				{
					if (Item.MajorType() != ECborCode::TextString)
					{
						return nullptr;
					}
					Key = Item.AsString();
					bExpectKey = false;
					continue;
				}
				TSharedPtr<FJsonValue> Value = ToJson(Reader, Item);
				if (!Value.IsValid())
				{
					return nullptr;
				}
				if (bMap)
				{
					Object->SetField(Key, Value);
					bExpectKey = true;
				}
				else
				{
					Array.Add(Value);
				}
			}
			return nullptr;
		}
		switch (Context.MajorType())
		{
			case ECborCode::Uint:
				return MakeShared<FJsonValueNumber>(static_cast<double>(Context.AsUInt()));
			case ECborCode::Int:
				return MakeShared<FJsonValueNumber>(static_cast<double>(Context.AsInt()));
			case ECborCode::TextString:
				return MakeShared<FJsonValueString>(Context.AsString());
			default:
				break;
		}
		if (Context.MajorType() != ECborCode::Prim)
		{
			return nullptr;
		}
		switch (Context.AdditionalValue())
		{
			case ECborCode::True:
			case ECborCode::False:
				return MakeShared<FJsonValueBoolean>(Context.AsBool());
			case ECborCode::Null:
				return MakeShared<FJsonValueNull>();
			case ECborCode::Value_2Bytes:
			case ECborCode::Value_4Bytes:
				return MakeShared<FJsonValueNumber>(Context.AsFloat());
			case ECborCode::Value_8Bytes:
				return MakeShared<FJsonValueNumber>(Context.AsDouble());
			default:
				return nullptr;
		}
	}
} // namespace

TEST(CborPayload, DecodesTheSampleDatagramToTheSameValuesAsItsJson)
{
	const std::string Datagram = ReadDataFile("RecommendedDynamic.cbor.bin");
	ASSERT_EQ(Datagram.size(), 794u);
	const uint8* Bytes = reinterpret_cast<const uint8*>(Datagram.data());
	// The header says CBOR (2) and how long the payload is.
	ASSERT_EQ(Bytes[5], 2);
	const int32 PayloadLength = ((Bytes[12] & 0x7F) << 8) | Bytes[13];
	ASSERT_EQ(PayloadLength, 778);
	ASSERT_EQ(HeaderSize + PayloadLength, static_cast<int32>(Datagram.size()));

	FMemoryReaderView Archive(TArrayView<const uint8>(Bytes + HeaderSize, PayloadLength));
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Root;
	ASSERT_TRUE(Reader.ReadNext(Root));
	ASSERT_EQ(Root.MajorType(), ECborCode::Map);
	EXPECT_EQ(Root.AsLength(), 16u);
	const TSharedPtr<FJsonValue> Decoded = ToJson(Reader, Root);
	ASSERT_TRUE(Decoded.IsValid()) << "error " << static_cast<int32>(Reader.GetError().Raw());
	FCborContext End;
	EXPECT_FALSE(Reader.ReadNext(End));
	EXPECT_EQ(End.RawCode(), ECborCode::StreamEnd);

	const std::string Json = ReadDataFile("RecommendedDynamic.json");
	TSharedPtr<FJsonValue> Expected;
	ASSERT_TRUE(FJsonSerializer::Deserialize(
		TJsonReaderFactory<UTF8CHAR>::CreateFromView(
			FUtf8StringView(reinterpret_cast<const UTF8CHAR*>(Json.data()), static_cast<int32>(Json.size()))),
		Expected));
	EXPECT_TRUE(*Decoded == *Expected);

	const TSharedPtr<FJsonObject>& Object = Decoded->AsObject();
	EXPECT_EQ(Object->GetObjectField(TEXT("lens"))->GetNumberField(TEXT("fStop")), 4.0);
	EXPECT_EQ(Object->GetObjectField(TEXT("lens"))->GetNumberField(TEXT("entrancePupilOffset")), 0.123);
	EXPECT_EQ(
		Object->GetObjectField(TEXT("timing"))->GetObjectField(TEXT("timecode"))->GetNumberField(TEXT("frames")), 4.0);
	EXPECT_EQ(Object->GetStringField(TEXT("sourceId")), TEXT("urn:uuid:ea87f22f-985a-4a98-91ef-6cccfbda3815"));
	EXPECT_EQ(Object->GetArrayField(TEXT("transforms"))[0]->AsObject()->GetStringField(TEXT("id")), TEXT("Camera"));
}

TEST(CborPayload, EveryTruncationOfTheSamplePayloadFailsCleanly)
{
	const std::string Datagram = ReadDataFile("RecommendedDynamic.cbor.bin");
	ASSERT_EQ(Datagram.size(), 794u);
	const uint8* Payload = reinterpret_cast<const uint8*>(Datagram.data()) + HeaderSize;
	const int32 Length = static_cast<int32>(Datagram.size()) - HeaderSize;
	for (int32 Cut = 0; Cut < Length; ++Cut)
	{
		FMemoryReaderView Archive(TArrayView<const uint8>(Payload, Cut));
		FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
		FCborContext Context;
		int32 Steps = 0;
		while (Reader.ReadNext(Context) && ++Steps < 10000)
		{
		}
		if (Cut == 0)
		{
			EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
		}
		else
		{
			EXPECT_TRUE(Context.IsError()) << "cut at " << Cut;
		}
		EXPECT_FALSE(Archive.IsError());
	}
}
