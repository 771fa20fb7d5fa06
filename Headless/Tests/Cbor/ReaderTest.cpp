// Copyright Orvane. All Rights Reserved.

#include "CborReader.h"
#include "CborTestUtils.h"
#include "CborTypes.h"
#include "Serialization/MemoryReader.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <random>

using CborTestUtils::Diagnose;
using CborTestUtils::FromHex;

namespace
{
	/** An archive over bytes that, like a network stream, cannot tell its size. */
	class FUnsizedArchive : public FArchive
	{
	public:
		explicit FUnsizedArchive(const TArray<uint8>& InBytes)
			: Bytes(InBytes)
		{
			SetIsLoading(true);
		}

		virtual void Serialize(void* Data, int64 Num) override
		{
			if (Num <= 0)
			{
				return;
			}
			if (IsError() || Num > Bytes.Num() - Offset)
			{
				SetError();
				return;
			}
			FMemory::Memcpy(Data, Bytes.GetData() + Offset, static_cast<SIZE_T>(Num));
			Offset += Num;
			MaxRead = Num > MaxRead ? Num : MaxRead;
		}

		const TArray<uint8>& Bytes;
		int64 Offset = 0;
		int64 MaxRead = 0;
	};

	ECborCode ErrorOf(const char* Hex)
	{
		const TArray<uint8> Bytes = FromHex(Hex);
		FMemoryReader Archive(Bytes);
		FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
		FCborContext Context;
		for (int32 Step = 0; Step < 1000 && Reader.ReadNext(Context); ++Step)
		{
		}
		EXPECT_EQ(Reader.IsError(), Context.IsError()) << Hex;
		return Context.IsError() ? Context.RawCode() : ECborCode::None;
	}
} // namespace

TEST(CborReader, DecodesTheIntegerExamplesOfTheStandard)
{
	EXPECT_EQ(Diagnose("00"), "0");
	EXPECT_EQ(Diagnose("01"), "1");
	EXPECT_EQ(Diagnose("0a"), "10");
	EXPECT_EQ(Diagnose("17"), "23");
	EXPECT_EQ(Diagnose("1818"), "24");
	EXPECT_EQ(Diagnose("1819"), "25");
	EXPECT_EQ(Diagnose("1864"), "100");
	EXPECT_EQ(Diagnose("1903e8"), "1000");
	EXPECT_EQ(Diagnose("1a000f4240"), "1000000");
	EXPECT_EQ(Diagnose("1b000000e8d4a51000"), "1000000000000");
	EXPECT_EQ(Diagnose("1bffffffffffffffff"), "18446744073709551615");
	EXPECT_EQ(Diagnose("20"), "-1");
	EXPECT_EQ(Diagnose("29"), "-10");
	EXPECT_EQ(Diagnose("3863"), "-100");
	EXPECT_EQ(Diagnose("3903e7"), "-1000");
	EXPECT_EQ(Diagnose("3b7fffffffffffffff"), "-9223372036854775808");
}

TEST(CborReader, DecodesTheFloatExamplesOfTheStandard)
{
	EXPECT_EQ(Diagnose("f90000"), "0_1");
	EXPECT_EQ(Diagnose("f98000"), "-0_1");
	EXPECT_EQ(Diagnose("f93c00"), "1_1");
	EXPECT_EQ(Diagnose("fb3ff199999999999a"), "1.1_3");
	EXPECT_EQ(Diagnose("f93e00"), "1.5_1");
	EXPECT_EQ(Diagnose("f97bff"), "65504_1");
	EXPECT_EQ(Diagnose("fa47c35000"), "1e+05_2");
	EXPECT_EQ(Diagnose("fa7f7fffff"), "3.4028234663852886e+38_2");
	EXPECT_EQ(Diagnose("fb7e37e43c8800759c"), "1e+300_3");
	EXPECT_EQ(Diagnose("f90001"), "5.9604644775390625e-08_1");
	EXPECT_EQ(Diagnose("f90400"), "6.103515625e-05_1");
	EXPECT_EQ(Diagnose("f9c400"), "-4_1");
	EXPECT_EQ(Diagnose("fbc010666666666666"), "-4.1_3");
	EXPECT_EQ(Diagnose("f97c00"), "Infinity_1");
	EXPECT_EQ(Diagnose("f97e00"), "NaN_1");
	EXPECT_EQ(Diagnose("f9fc00"), "-Infinity_1");
	EXPECT_EQ(Diagnose("fa7f800000"), "Infinity_2");
	EXPECT_EQ(Diagnose("fa7fc00000"), "NaN_2");
	EXPECT_EQ(Diagnose("faff800000"), "-Infinity_2");
	EXPECT_EQ(Diagnose("fb7ff0000000000000"), "Infinity_3");
	EXPECT_EQ(Diagnose("fb7ff8000000000000"), "NaN_3");
	EXPECT_EQ(Diagnose("fbfff0000000000000"), "-Infinity_3");
}

TEST(CborReader, DecodesSimpleValuesAndTags)
{
	EXPECT_EQ(Diagnose("f4"), "false");
	EXPECT_EQ(Diagnose("f5"), "true");
	EXPECT_EQ(Diagnose("f6"), "null");
	EXPECT_EQ(Diagnose("f7"), "undefined");
	EXPECT_EQ(Diagnose("f0"), "simple(16)");
	EXPECT_EQ(Diagnose("f8ff"), "simple(255)");
	EXPECT_EQ(Diagnose("c074323031332d30332d32315432303a30343a30305a"), "0(\"2013-03-21T20:04:00Z\")");
	EXPECT_EQ(Diagnose("c11a514b67b0"), "1(1363896240)");
	EXPECT_EQ(Diagnose("c1fb41d452d9ec200000"), "1(1363896240.5_3)");
	EXPECT_EQ(Diagnose("d74401020304"), "23(h'01020304')");
	EXPECT_EQ(Diagnose("d818456449455446"), "24(h'6449455446')");
	EXPECT_EQ(Diagnose("d82076687474703a2f2f7777772e6578616d706c652e636f6d"), "32(\"http://www.example.com\")");
}

TEST(CborReader, DecodesStringsOfTheStandard)
{
	EXPECT_EQ(Diagnose("40"), "h''");
	EXPECT_EQ(Diagnose("4401020304"), "h'01020304'");
	EXPECT_EQ(Diagnose("60"), "\"\"");
	EXPECT_EQ(Diagnose("6161"), "\"a\"");
	EXPECT_EQ(Diagnose("6449455446"), "\"IETF\"");
	EXPECT_EQ(Diagnose("62225c"), "\"\"\\\"");
	EXPECT_EQ(Diagnose("62c3bc"), "\"\xC3\xBC\"");
	EXPECT_EQ(Diagnose("63e6b0b4"), "\"\xE6\xB0\xB4\"");
	EXPECT_EQ(Diagnose("64f0908591"), "\"\xF0\x90\x85\x91\"");

	const TArray<uint8> Bytes = FromHex("64f0908591");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Context;
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsString());
	EXPECT_EQ(Context.AsLength(), 4u);
	const FString Text = Context.AsString();
	ASSERT_EQ(Text.Len(), 2);
	EXPECT_EQ(Text[0], TCHAR(0xD800));
	EXPECT_EQ(Text[1], TCHAR(0xDD51));
}

TEST(CborReader, DecodesContainersOfTheStandard)
{
	EXPECT_EQ(Diagnose("80"), "[]");
	EXPECT_EQ(Diagnose("83010203"), "[1, 2, 3]");
	EXPECT_EQ(Diagnose("8301820203820405"), "[1, [2, 3], [4, 5]]");
	EXPECT_EQ(Diagnose("98190102030405060708090a0b0c0d0e0f101112131415161718181819"),
		"[1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25]");
	EXPECT_EQ(Diagnose("a0"), "{}");
	EXPECT_EQ(Diagnose("a201020304"), "{1: 2, 3: 4}");
	EXPECT_EQ(Diagnose("a26161016162820203"), "{\"a\": 1, \"b\": [2, 3]}");
	EXPECT_EQ(Diagnose("826161a161626163"), "[\"a\", {\"b\": \"c\"}]");
	EXPECT_EQ(Diagnose("a56161614161626142616361436164614461656145"),
		"{\"a\": \"A\", \"b\": \"B\", \"c\": \"C\", \"d\": \"D\", \"e\": \"E\"}");
}

TEST(CborReader, DecodesIndefiniteItemsOfTheStandard)
{
	EXPECT_EQ(Diagnose("5f42010243030405ff"), "(_ h'0102', h'030405')");
	EXPECT_EQ(Diagnose("7f657374726561646d696e67ff"), "(_ \"strea\", \"ming\")");
	EXPECT_EQ(Diagnose("9fff"), "[_ ]");
	EXPECT_EQ(Diagnose("9f018202039f0405ffff"), "[_ 1, [2, 3], [_ 4, 5]]");
	EXPECT_EQ(Diagnose("9f01820203820405ff"), "[_ 1, [2, 3], [4, 5]]");
	EXPECT_EQ(Diagnose("83018202039f0405ff"), "[1, [2, 3], [_ 4, 5]]");
	EXPECT_EQ(Diagnose("83019f0203ff820405"), "[1, [_ 2, 3], [4, 5]]");
	EXPECT_EQ(Diagnose("9f0102030405060708090a0b0c0d0e0f101112131415161718181819ff"),
		"[_ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25]");
	EXPECT_EQ(Diagnose("bf61610161629f0203ffff"), "{_ \"a\": 1, \"b\": [_ 2, 3]}");
	EXPECT_EQ(Diagnose("826161bf61626163ff"), "[\"a\", {_ \"b\": \"c\"}]");
	EXPECT_EQ(Diagnose("bf6346756ef563416d7421ff"), "{_ \"Fun\": true, \"Amt\": -2}");
}

TEST(CborReader, ContainerContextsReportTheirLengthAndKind)
{
	const TArray<uint8> Bytes = FromHex("a2 01 02 03 9f ff");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	EXPECT_TRUE(Reader.GetContext().IsDummy());
	FCborContext Context;
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsContainer());
	EXPECT_TRUE(Context.IsFiniteContainer());
	EXPECT_FALSE(Context.IsIndefiniteContainer());
	EXPECT_EQ(Context.MajorType(), ECborCode::Map);
	// A map counts its keys and values.
	EXPECT_EQ(Context.AsLength(), 4u);
	EXPECT_EQ(Reader.GetContext().MajorType(), ECborCode::Map);
	ASSERT_TRUE(Reader.ReadNext(Context));
	ASSERT_TRUE(Reader.ReadNext(Context));
	ASSERT_TRUE(Reader.ReadNext(Context));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsIndefiniteContainer());
	EXPECT_EQ(Context.AsLength(), 0u);
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsBreak());
	EXPECT_EQ(Context.AsBreak(), ECborCode::Array);
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsBreak());
	EXPECT_EQ(Context.AsBreak(), ECborCode::Map);
	EXPECT_TRUE(Reader.GetContext().IsDummy());
	EXPECT_FALSE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
	EXPECT_FALSE(Context.IsError());
	EXPECT_FALSE(Reader.IsError());
}

TEST(CborReader, ReadsASequenceOfItems)
{
	EXPECT_EQ(Diagnose("01 02"), "trailing data");
	const TArray<uint8> Bytes = FromHex("01 6161 f6");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Context;
	int32 Items = 0;
	while (Reader.ReadNext(Context))
	{
		++Items;
	}
	EXPECT_EQ(Items, 3);
	EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
}

TEST(CborReader, SkipsContainers)
{
	const TArray<uint8> Bytes = FromHex("a3 6161 83 01 9f 02 03 ff a1 00 00 6162 bf 01 5f 41 00 ff ff 6163 07");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Context;
	ASSERT_TRUE(Reader.ReadNext(Context));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsString(), TEXT("a"));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_FALSE(Reader.SkipContainer(ECborCode::Map));
	EXPECT_TRUE(Reader.SkipContainer(ECborCode::Array));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsString(), TEXT("b"));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Reader.SkipContainer(ECborCode::Map));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsString(), TEXT("c"));
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsUInt(), 7u);
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsBreak());
	EXPECT_FALSE(Reader.SkipContainer(ECborCode::Map));
}

TEST(CborReader, ReadsLittleEndianData)
{
	const TArray<uint8> Bytes = FromHex("19 e8 03 fb 9a 99 99 99 99 99 f1 3f");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::LittleEndian);
	FCborContext Context;
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsUInt(), 1000u);
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.AsDouble(), 1.1);

	FMemoryReader PlatformArchive(Bytes);
	FCborReader PlatformReader(&PlatformArchive);
	ASSERT_TRUE(PlatformReader.ReadNext(Context));
	EXPECT_EQ(Context.AsUInt(), 1000u);
}

TEST(CborReader, MalformedInputGivesTheMatchingError)
{
	EXPECT_EQ(ErrorOf("19 03"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("fb 3f f1"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("62 61"), ECborCode::ErrorStringLength);
	EXPECT_EQ(ErrorOf("83 01 02"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("9f 01"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("a1 01"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("ff"), ECborCode::ErrorBreak);
	EXPECT_EQ(ErrorOf("82 01 ff"), ECborCode::ErrorBreak);
	EXPECT_EQ(ErrorOf("bf 61 61 ff"), ECborCode::ErrorMapContainer);
	EXPECT_EQ(ErrorOf("1c"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("3d"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("fe"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("1f"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("3f"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("df 00"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("f8 18"), ECborCode::ErrorReservedItem);
	EXPECT_EQ(ErrorOf("5f 61 61 ff"), ECborCode::ErrorStringNesting);
	EXPECT_EQ(ErrorOf("5f 5f ff ff"), ECborCode::ErrorStringNesting);
	EXPECT_EQ(ErrorOf("7f 01 ff"), ECborCode::ErrorStringNesting);
	EXPECT_EQ(ErrorOf("c0"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("9f c0 ff"), ECborCode::ErrorBreak);
	EXPECT_EQ(ErrorOf("00 01 ff"), ECborCode::ErrorBreak);
}

TEST(CborReader, AnErrorStopsTheReader)
{
	const TArray<uint8> Bytes = FromHex("01 ff 02");
	FMemoryReader Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Context;
	ASSERT_TRUE(Reader.ReadNext(Context));
	EXPECT_FALSE(Reader.ReadNext(Context));
	EXPECT_TRUE(Context.IsError());
	EXPECT_TRUE(Reader.IsError());
	EXPECT_EQ(Reader.GetError().RawCode(), ECborCode::ErrorBreak);
	EXPECT_FALSE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.RawCode(), ECborCode::ErrorBreak);
	EXPECT_FALSE(Archive.IsError());
}

TEST(CborReader, LengthsLargerThanTheDataFailFast)
{
	TArray<uint8> Bytes = FromHex("5a ff ff ff ff");
	Bytes.AddZeroed(95);
	const auto Start = std::chrono::steady_clock::now();
	EXPECT_EQ(ErrorOf(CborTestUtils::ToHex(Bytes).c_str()), ECborCode::ErrorStringLength);
	EXPECT_EQ(ErrorOf("7b 00 00 00 01 00 00 00 00 00 00"), ECborCode::ErrorStringLength);
	EXPECT_EQ(ErrorOf("7b ff ff ff ff ff ff ff ff 00"), ECborCode::ErrorStringLength);
	EXPECT_EQ(ErrorOf("9b 00 00 00 00 ff ff ff ff 01 02"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("bb ff ff ff ff ff ff ff ff 01 02"), ECborCode::ErrorStreamFailure);
	EXPECT_EQ(ErrorOf("ba 00 00 00 03 01 02 03 04 05"), ECborCode::ErrorStreamFailure);
	const double Seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
	EXPECT_LT(Seconds, 0.5);
}

TEST(CborReader, UnsizedArchivesReadLongStringsInChunks)
{
	// A 4 GiB length in a stream that cannot tell its size: reading fails at the end of the data, having asked
	// for one chunk at most.
	TArray<uint8> Bytes = FromHex("5a ff ff ff ff");
	Bytes.AddZeroed(100);
	FUnsizedArchive Archive(Bytes);
	FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
	FCborContext Context;
	EXPECT_FALSE(Reader.ReadNext(Context));
	EXPECT_EQ(Context.RawCode(), ECborCode::ErrorStringLength);

	TArray<uint8> Lie = FromHex("5a 00 ff ff ff");
	Lie.AddZeroed(100);
	FUnsizedArchive LieArchive(Lie);
	FCborReader LieReader(&LieArchive, ECborEndianness::StandardCompliant);
	EXPECT_FALSE(LieReader.ReadNext(Context));
	EXPECT_EQ(Context.RawCode(), ECborCode::ErrorStreamFailure);
	EXPECT_LE(LieArchive.MaxRead, 64 * 1024);

	const TArray<uint8> Good = FromHex("83 63 616263 f5 01");
	FUnsizedArchive GoodArchive(Good);
	FCborReader GoodReader(&GoodArchive, ECborEndianness::StandardCompliant);
	std::string Out;
	ASSERT_TRUE(GoodReader.ReadNext(Context));
	ASSERT_TRUE(CborTestUtils::Describe(GoodReader, Context, Out));
	EXPECT_EQ(Out, "[\"abc\", true, 1]");
	EXPECT_FALSE(GoodReader.ReadNext(Context));
	EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
}

TEST(CborReader, RandomBytesNeverCrashOrHang)
{
	std::mt19937 Random(77);
	int32 Errors = 0;
	int32 Ends = 0;
	for (int32 Round = 0; Round < 20000; ++Round)
	{
		TArray<uint8> Bytes;
		const int32 Length = static_cast<int32>(Random() % 48);
		for (int32 Index = 0; Index < Length; ++Index)
		{
			Bytes.Add(static_cast<uint8>(Random()));
		}
		FMemoryReader Archive(Bytes);
		FCborReader Reader(&Archive, Round % 2 ? ECborEndianness::StandardCompliant : ECborEndianness::LittleEndian);
		FCborContext Context;
		int32 Steps = 0;
		while (Reader.ReadNext(Context))
		{
			// Every item consumes at least one byte, and every container closes once: the walk is bounded.
			ASSERT_LT(++Steps, 4 * Length + 4);
			if (Context.IsString())
			{
				EXPECT_LE(Context.AsLength(), static_cast<uint64>(Length));
			}
		}
		if (Context.IsError())
		{
			++Errors;
		}
		else
		{
			EXPECT_EQ(Context.RawCode(), ECborCode::StreamEnd);
			++Ends;
		}
		EXPECT_FALSE(Archive.IsError());
	}
	EXPECT_GT(Errors, 0);
	EXPECT_GT(Ends, 0);
}
