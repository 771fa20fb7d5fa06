// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "HAL/UnrealMemory.h"
#include "Serialization/BufferReader.h"
#include "Serialization/MemoryReader.h"
#include "Serialization/MemoryWriter.h"

#include <gtest/gtest.h>

// The CBOR reader and writer work on these archives, so their suite checks them too.

TEST(CborArchive, MemoryWriterAndReaderRoundTripValues)
{
	TArray<uint8> Bytes;
	FMemoryWriter Writer(Bytes);
	EXPECT_TRUE(Writer.IsSaving());
	uint8 U8 = 0xAB;
	int32 I32 = -123456;
	uint64 U64 = 0x0102030405060708ull;
	double D = 24.305;
	float F = -1.5f;
	bool bFlag = true;
	FString Narrow(TEXT("plain text"));
	FString Wide(TEXT("caf\u00e9 \u6c34"));
	FString Empty;
	Writer << U8 << I32 << U64 << D << F << bFlag << Narrow << Wide << Empty;
	EXPECT_FALSE(Writer.IsError());
	EXPECT_EQ(Writer.Tell(), Bytes.Num());

	FMemoryReader Reader(Bytes);
	EXPECT_TRUE(Reader.IsLoading());
	uint8 U8Back = 0;
	int32 I32Back = 0;
	uint64 U64Back = 0;
	double DBack = 0;
	float FBack = 0;
	bool bFlagBack = false;
	FString NarrowBack;
	FString WideBack;
	FString EmptyBack(TEXT("x"));
	Reader << U8Back << I32Back << U64Back << DBack << FBack << bFlagBack << NarrowBack << WideBack << EmptyBack;
	EXPECT_FALSE(Reader.IsError());
	EXPECT_TRUE(Reader.AtEnd());
	EXPECT_EQ(U8Back, U8);
	EXPECT_EQ(I32Back, I32);
	EXPECT_EQ(U64Back, U64);
	EXPECT_EQ(DBack, D);
	EXPECT_EQ(FBack, F);
	EXPECT_EQ(bFlagBack, bFlag);
	EXPECT_EQ(NarrowBack, Narrow);
	EXPECT_EQ(WideBack, Wide);
	EXPECT_TRUE(EmptyBack.IsEmpty());
}

TEST(CborArchive, ByteSwappingReversesMultiByteValues)
{
	TArray<uint8> Bytes;
	FMemoryWriter Writer(Bytes);
	Writer.SetByteSwapping(true);
	uint32 Value = 0x01020304;
	Writer << Value;
	EXPECT_EQ(Value, 0x01020304u);
	ASSERT_EQ(Bytes.Num(), 4);
	EXPECT_EQ(Bytes[0], 0x01);
	EXPECT_EQ(Bytes[3], 0x04);

	FMemoryReader Reader(Bytes);
	Reader.SetByteSwapping(true);
	uint32 Back = 0;
	Reader << Back;
	EXPECT_EQ(Back, 0x01020304u);
}

TEST(CborArchive, ReadingPastTheEndFailsTheArchive)
{
	TArray<uint8> Bytes;
	Bytes.Add(1);
	Bytes.Add(2);
	FMemoryReader Reader(Bytes);
	uint32 Value = 0xFFFFFFFF;
	Reader << Value;
	EXPECT_TRUE(Reader.IsError());
	EXPECT_EQ(Value, 0u);
	EXPECT_EQ(Reader.Tell(), 0);

	// A string whose count runs past the data fails without allocating for the count.
	TArray<uint8> Lie;
	FMemoryWriter LieWriter(Lie);
	int32 Count = -0x7FFFFFFF;
	LieWriter << Count;
	FMemoryReader LieReader(Lie);
	FString Text;
	LieReader << Text;
	EXPECT_TRUE(LieReader.IsError());
	EXPECT_TRUE(Text.IsEmpty());
}

TEST(CborArchive, ReaderViewAndLimitSize)
{
	const uint8 Data[] = {10, 20, 30, 40};
	FMemoryReaderView View(TArrayView<const uint8>(Data, 4));
	View.SetLimitSize(3);
	EXPECT_EQ(View.TotalSize(), 3);
	uint8 Bytes[3] = {};
	View.Serialize(Bytes, 3);
	EXPECT_EQ(Bytes[2], 30);
	EXPECT_TRUE(View.AtEnd());
	uint8 More = 0;
	View << More;
	EXPECT_TRUE(View.IsError());
}

TEST(CborArchive, MemoryWriterCanAppendAndSeek)
{
	TArray<uint8> Bytes;
	Bytes.Add(7);
	FMemoryWriter Appender(Bytes, false, true);
	uint8 Value = 8;
	Appender << Value;
	ASSERT_EQ(Bytes.Num(), 2);
	EXPECT_EQ(Bytes[0], 7);
	EXPECT_EQ(Bytes[1], 8);
	Appender.Seek(0);
	uint8 Replacement = 9;
	Appender << Replacement;
	EXPECT_EQ(Bytes[0], 9);
	EXPECT_EQ(Bytes.Num(), 2);
}

TEST(CborArchive, BufferReaderFreesWhatItOwns)
{
	uint8* Data = static_cast<uint8*>(FMemory::Malloc(4));
	Data[0] = 1;
	Data[1] = 2;
	Data[2] = 3;
	Data[3] = 4;
	FBufferReader Reader(Data, 4, true);
	uint16 First = 0;
	Reader << First;
	EXPECT_EQ(First, 0x0201);
	Reader.Seek(3);
	uint8 Last = 0;
	Reader << Last;
	EXPECT_EQ(Last, 4);
	EXPECT_TRUE(Reader.AtEnd());
	Reader << Last;
	EXPECT_TRUE(Reader.IsError());
	EXPECT_FALSE(Reader.Close());
}
