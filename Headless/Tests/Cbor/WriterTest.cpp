// Copyright Orvane. All Rights Reserved.

#include "CborReader.h"
#include "CborTestUtils.h"
#include "CborTypes.h"
#include "CborWriter.h"
#include "EngineTestPrinters.h"
#include "Serialization/MemoryReader.h"
#include "Serialization/MemoryWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

using CborTestUtils::ToHex;

namespace
{
	/** The bytes written by Write, in the standard byte order unless told otherwise. */
	std::string Encode(
		const std::function<void(FCborWriter&)>& Write, ECborEndianness Endianness = ECborEndianness::StandardCompliant)
	{
		TArray<uint8> Bytes;
		FMemoryWriter Archive(Bytes);
		FCborWriter Writer(&Archive, Endianness);
		Write(Writer);
		return ToHex(Bytes);
	}
} // namespace

TEST(CborWriter, EncodesIntegersInTheirShortestForm)
{
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(0));
				  }),
		"00");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(23));
				  }),
		"17");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(24));
				  }),
		"1818");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(255));
				  }),
		"18ff");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(256));
				  }),
		"190100");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(1000));
				  }),
		"1903e8");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(65536));
				  }),
		"1a00010000");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(1000000000000));
				  }),
		"1b000000e8d4a51000");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(std::numeric_limits<uint64>::max());
				  }),
		"1bffffffffffffffff");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(int64(10));
				  }),
		"0a");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(int64(-1));
				  }),
		"20");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(int64(-100));
				  }),
		"3863");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(int64(-1000));
				  }),
		"3903e7");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(std::numeric_limits<int64>::min());
				  }),
		"3b7fffffffffffffff");
}

TEST(CborWriter, EncodesFloatsStringsAndSimpleValues)
{
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(1.1);
				  }),
		"fb3ff199999999999a");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(100000.0f);
				  }),
		"fa47c35000");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(-4.1);
				  }),
		"fbc010666666666666");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(true);
				  }),
		"f5");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(false);
				  }),
		"f4");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteNull();
				  }),
		"f6");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteUndefined();
				  }),
		"f7");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(FString(TEXT("IETF")));
				  }),
		"6449455446");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(FString(TEXT("\u00fc")));
				  }),
		"62c3bc");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(FStringView(TEXT("\xD800\xDD51"), 2));
				  }),
		"64f0908591");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue("abc", 3);
				  }),
		"63616263");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  const uint8 Bytes[] = {1, 2, 3, 4};
					  W.WriteValue(Bytes, 4);
				  }),
		"4401020304");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(FString());
				  }),
		"60");
}

TEST(CborWriter, EncodesContainers)
{
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteContainerStart(ECborCode::Array, 3);
					  W.WriteValue(uint64(1));
					  W.WriteContainerStart(ECborCode::Array, 2);
					  W.WriteValue(uint64(2));
					  W.WriteValue(uint64(3));
					  W.WriteContainerStart(ECborCode::Array, -1);
					  W.WriteValue(uint64(4));
					  W.WriteValue(uint64(5));
					  W.WriteContainerEnd();
				  }),
		"83018202039f0405ff");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteContainerStart(ECborCode::Map, -1);
					  W.WriteValue("a", 1);
					  W.WriteValue(uint64(1));
					  W.WriteValue("b", 1);
					  W.WriteContainerStart(ECborCode::Array, -1);
					  W.WriteValue(uint64(2));
					  W.WriteValue(uint64(3));
					  W.WriteContainerEnd();
					  W.WriteContainerEnd();
				  }),
		"bf61610161629f0203ffff");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteContainerStart(ECborCode::Array, -1);
					  W.WriteContainerStart(ECborCode::Map, 0);
					  W.WriteContainerStart(ECborCode::Map, 1);
					  W.WriteValue(uint64(1));
					  W.WriteContainerStart(ECborCode::Array, 1);
					  W.WriteContainerStart(ECborCode::Array, 0);
					  W.WriteContainerEnd();
				  }),
		"9fa0a1018180ff");
}

TEST(CborWriter, WritesTheRequestedByteOrder)
{
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(1000));
				  },
				  ECborEndianness::LittleEndian),
		"19e803");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(uint64(1000));
				  },
				  ECborEndianness::Platform),
		"19e803");
	EXPECT_EQ(Encode(
				  [](FCborWriter& W)
				  {
					  W.WriteValue(1.1);
				  },
				  ECborEndianness::LittleEndian),
		"fb9a9999999999f13f");
}

TEST(CborWriter, EveryKindOfValueSurvivesARoundTripInEitherByteOrder)
{
	for (const ECborEndianness Endianness :
		{ECborEndianness::StandardCompliant, ECborEndianness::LittleEndian, ECborEndianness::Platform})
	{
		const uint64 Unsigned[] = {
			0, 1, 23, 24, 255, 256, 65535, 65536, 0xFFFFFFFFull, 0x100000000ull, std::numeric_limits<uint64>::max()};
		const int64 Signed[] = {
			-1, -24, -25, -256, -257, -65537, std::numeric_limits<int64>::min(), std::numeric_limits<int64>::max()};
		const float Floats[] = {
			0.0f, -0.0f, 1.5f, -3.25e-20f, std::numeric_limits<float>::max(), std::numeric_limits<float>::infinity()};
		const double Doubles[] = {0.1, -0.0, 24.305, 1e300, 4.9e-324, -std::numeric_limits<double>::infinity()};
		const FString Text(TEXT("caf\u00e9 \xD83D\xDE00 \u6c34"));
		const uint8 Blob[] = {0, 255, 1, 254};

		TArray<uint8> Bytes;
		FMemoryWriter Archive(Bytes);
		FCborWriter Writer(&Archive, Endianness);
		Writer.WriteContainerStart(ECborCode::Map, -1);
		Writer.WriteValue(FString(TEXT("unsigned")));
		Writer.WriteContainerStart(ECborCode::Array, UE_ARRAY_COUNT(Unsigned));
		for (const uint64 Value : Unsigned)
		{
			Writer.WriteValue(Value);
		}
		Writer.WriteValue(FString(TEXT("signed")));
		Writer.WriteContainerStart(ECborCode::Array, -1);
		for (const int64 Value : Signed)
		{
			Writer.WriteValue(Value);
		}
		Writer.WriteContainerEnd();
		Writer.WriteValue(FString(TEXT("floats")));
		Writer.WriteContainerStart(ECborCode::Array, UE_ARRAY_COUNT(Floats) + UE_ARRAY_COUNT(Doubles));
		for (const float Value : Floats)
		{
			Writer.WriteValue(Value);
		}
		for (const double Value : Doubles)
		{
			Writer.WriteValue(Value);
		}
		Writer.WriteValue(FString(TEXT("misc")));
		Writer.WriteContainerStart(ECborCode::Map, 4);
		Writer.WriteValue(FStringView(TEXT("text")));
		Writer.WriteValue(Text);
		Writer.WriteValue("bytes", 5);
		Writer.WriteValue(Blob, sizeof(Blob));
		Writer.WriteValue(uint64(1));
		Writer.WriteValue(true);
		Writer.WriteNull();
		Writer.WriteUndefined();
		Writer.WriteContainerEnd();
		ASSERT_FALSE(Archive.IsError());

		FMemoryReader Input(Bytes);
		FCborReader Reader(&Input, Endianness);
		FCborContext Context;
		auto Next = [&Reader, &Context]()
		{
			EXPECT_TRUE(Reader.ReadNext(Context));
			return Context.MajorType();
		};
		ASSERT_TRUE(Reader.ReadNext(Context));
		ASSERT_TRUE(Context.IsIndefiniteContainer());
		ASSERT_EQ(Next(), ECborCode::TextString);
		EXPECT_EQ(Context.AsString(), TEXT("unsigned"));
		ASSERT_EQ(Next(), ECborCode::Array);
		EXPECT_EQ(Context.AsLength(), UE_ARRAY_COUNT(Unsigned));
		for (const uint64 Value : Unsigned)
		{
			ASSERT_EQ(Next(), ECborCode::Uint);
			EXPECT_EQ(Context.AsUInt(), Value);
		}
		ASSERT_TRUE(Reader.ReadNext(Context));
		ASSERT_TRUE(Context.IsBreak());
		ASSERT_EQ(Next(), ECborCode::TextString);
		ASSERT_EQ(Next(), ECborCode::Array);
		for (const int64 Value : Signed)
		{
			Next();
			EXPECT_EQ(Context.AsInt(), Value);
			EXPECT_EQ(Context.MajorType(), Value < 0 ? ECborCode::Int : ECborCode::Uint);
		}
		ASSERT_TRUE(Reader.ReadNext(Context));
		ASSERT_TRUE(Context.IsBreak());
		ASSERT_EQ(Next(), ECborCode::TextString);
		ASSERT_EQ(Next(), ECborCode::Array);
		for (const float Value : Floats)
		{
			Next();
			ASSERT_EQ(Context.AdditionalValue(), ECborCode::Value_4Bytes);
			EXPECT_EQ(Context.AsFloat(), Value);
			EXPECT_EQ(std::signbit(Context.AsFloat()), std::signbit(Value));
		}
		for (const double Value : Doubles)
		{
			Next();
			ASSERT_EQ(Context.AdditionalValue(), ECborCode::Value_8Bytes);
			EXPECT_EQ(Context.AsDouble(), Value);
			EXPECT_EQ(std::signbit(Context.AsDouble()), std::signbit(Value));
		}
		ASSERT_TRUE(Reader.ReadNext(Context));
		ASSERT_TRUE(Context.IsBreak());
		ASSERT_EQ(Next(), ECborCode::TextString);
		EXPECT_STREQ(Context.AsCString(), "misc");
		ASSERT_EQ(Next(), ECborCode::Map);
		EXPECT_EQ(Context.AsLength(), 8u);
		Next();
		EXPECT_EQ(Context.AsString(), TEXT("text"));
		Next();
		EXPECT_EQ(Context.AsString(), Text);
		Next();
		EXPECT_EQ(Context.AsString(), TEXT("bytes"));
		ASSERT_EQ(Next(), ECborCode::ByteString);
		ASSERT_EQ(Context.AsByteArray().Num(), 4);
		EXPECT_EQ(Context.AsByteArray()[1], 255);
		EXPECT_EQ(Context.AsByteArray()[3], 254);
		Next();
		EXPECT_EQ(Context.AsUInt(), 1u);
		Next();
		EXPECT_TRUE(Context.AsBool());
		Next();
		EXPECT_EQ(Context.RawCode(), ECborCode::Prim | ECborCode::Null);
		Next();
		EXPECT_EQ(Context.RawCode(), ECborCode::Prim | ECborCode::Undefined);
		ASSERT_TRUE(Reader.ReadNext(Context));
		EXPECT_EQ(Context.AsBreak(), ECborCode::Map);
		ASSERT_TRUE(Reader.ReadNext(Context));
		EXPECT_EQ(Context.AsBreak(), ECborCode::Map);
		EXPECT_FALSE(Reader.ReadNext(Context));
		EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
	}
}

TEST(CborWriter, ScopedEndiannessSwapsOnlyForBigEndian)
{
	TArray<uint8> Bytes;
	FMemoryWriter Archive(Bytes);
	{
		ScopedCborArchiveEndianness Scope(Archive, ECborEndianness::StandardCompliant);
		EXPECT_TRUE(Archive.IsByteSwapping());
		uint16 Value = 0x0102;
		Archive << Value;
	}
	EXPECT_FALSE(Archive.IsByteSwapping());
	{
		ScopedCborArchiveEndianness Scope(Archive, ECborEndianness::LittleEndian);
		EXPECT_FALSE(Archive.IsByteSwapping());
		uint16 Value = 0x0102;
		Archive << Value;
	}
	EXPECT_EQ(ToHex(Bytes), "01020201");
}
