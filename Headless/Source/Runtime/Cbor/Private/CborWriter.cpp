// Copyright Orvane. All Rights Reserved.

#include "CborWriter.h"

#include "Containers/StringConv.h"
#include "Containers/StringView.h"
#include "Serialization/Archive.h"

#include <bit>

FCborWriter::FCborWriter(FArchive* InStream, ECborEndianness InWriterEndianness)
	: Stream(InStream)
	, Endianness(InWriterEndianness)
{
	check(Stream != nullptr);
	ContextStack.Emplace();
	ItemCounts.Add(0);
}

FCborWriter::~FCborWriter() = default;

void FCborWriter::WriteBytes(const void* Data, int64 Count)
{
	if (Count > 0)
	{
		Stream->Serialize(const_cast<void*>(Data), Count);
	}
}

void FCborWriter::WriteOrdered(const void* Data, int32 Count)
{
	// Values are held in the platform's (little-endian) order; big-endian output reverses them.
	const uint8* Bytes = static_cast<const uint8*>(Data);
	uint8 Ordered[8];
	for (int32 Index = 0; Index < Count; ++Index)
	{
		Ordered[Index] = Endianness == ECborEndianness::BigEndian ? Bytes[Count - 1 - Index] : Bytes[Index];
	}
	WriteBytes(Ordered, Count);
}

void FCborWriter::WriteHeader(ECborCode MajorType, uint64 Argument)
{
	const uint8 Major = static_cast<uint8>(MajorType);
	if (Argument < 24)
	{
		const uint8 Byte = static_cast<uint8>(Major | Argument);
		WriteBytes(&Byte, 1);
		return;
	}
	uint8 Additional;
	int32 Size;
	if (Argument <= 0xFF)
	{
		Additional = static_cast<uint8>(ECborCode::Value_1Byte);
		Size = 1;
	}
	else if (Argument <= 0xFFFF)
	{
		Additional = static_cast<uint8>(ECborCode::Value_2Bytes);
		Size = 2;
	}
	else if (Argument <= 0xFFFFFFFFull)
	{
		Additional = static_cast<uint8>(ECborCode::Value_4Bytes);
		Size = 4;
	}
	else
	{
		Additional = static_cast<uint8>(ECborCode::Value_8Bytes);
		Size = 8;
	}
	const uint8 Byte = static_cast<uint8>(Major | Additional);
	WriteBytes(&Byte, 1);
	WriteOrdered(&Argument, Size);
}

void FCborWriter::CountItem()
{
	++ItemCounts.Last();
	// Finite containers close by themselves once they hold the items they announced. Each container was counted
	// by its parent when it started, so closing one counts nothing more.
	while (ContextStack.Num() > 1 && ContextStack.Last().IsFiniteContainer() &&
		   ItemCounts.Last() >= ContextStack.Last().Length)
	{
		ContextStack.Pop();
		ItemCounts.Pop();
	}
}

void FCborWriter::PushContainer(ECborCode Code, uint64 Items)
{
	FCborContext Container(Code);
	Container.Length = Items;
	ContextStack.Add(MoveTemp(Container));
	ItemCounts.Add(0);
}

void FCborWriter::WriteContainerStart(ECborCode ContainerType, int64 NbItem)
{
	checkf(ContainerType == ECborCode::Array || ContainerType == ECborCode::Map,
		TEXT("Only arrays and maps are containers a writer can start."));
	if (NbItem < 0)
	{
		const uint8 Byte = static_cast<uint8>(ContainerType | ECborCode::Indefinite);
		WriteBytes(&Byte, 1);
		CountItem();
		PushContainer(ContainerType | ECborCode::Indefinite, 0);
		return;
	}
	WriteHeader(ContainerType, static_cast<uint64>(NbItem));
	CountItem();
	const uint64 Items = ContainerType == ECborCode::Map ? static_cast<uint64>(NbItem) * 2 : NbItem;
	if (Items > 0)
	{
		// Any additional value below Indefinite marks the context as finite; the count is in Length.
		PushContainer(ContainerType | ECborCode::Value_8Bytes, Items);
	}
}

void FCborWriter::WriteContainerEnd()
{
	checkf(ContextStack.Num() > 1 && ContextStack.Last().IsIndefiniteContainer(),
		TEXT("Only an indefinite container is closed with a break code."));
	if (ContextStack.Last().MajorType() == ECborCode::Map)
	{
		checkf(ItemCounts.Last() % 2 == 0, TEXT("A map cannot end between a key and its value."));
	}
	const uint8 Byte = static_cast<uint8>(ECborCode::Break);
	WriteBytes(&Byte, 1);
	ContextStack.Pop();
	ItemCounts.Pop();
}

void FCborWriter::WriteNull()
{
	const uint8 Byte = static_cast<uint8>(ECborCode::Prim | ECborCode::Null);
	WriteBytes(&Byte, 1);
	CountItem();
}

void FCborWriter::WriteUndefined()
{
	const uint8 Byte = static_cast<uint8>(ECborCode::Prim | ECborCode::Undefined);
	WriteBytes(&Byte, 1);
	CountItem();
}

void FCborWriter::WriteValue(uint64 Value)
{
	WriteHeader(ECborCode::Uint, Value);
	CountItem();
}

void FCborWriter::WriteValue(int64 Value)
{
	if (Value >= 0)
	{
		WriteHeader(ECborCode::Uint, static_cast<uint64>(Value));
	}
	else
	{
		// A negative integer is written as -1 - Value, the complement of its two's complement bits.
		WriteHeader(ECborCode::Int, ~static_cast<uint64>(Value));
	}
	CountItem();
}

void FCborWriter::WriteValue(bool Value)
{
	const uint8 Byte = static_cast<uint8>(ECborCode::Prim | (Value ? ECborCode::True : ECborCode::False));
	WriteBytes(&Byte, 1);
	CountItem();
}

void FCborWriter::WriteValue(float Value)
{
	const uint8 Byte = static_cast<uint8>(ECborCode::Prim | ECborCode::Value_4Bytes);
	WriteBytes(&Byte, 1);
	const uint32 Bits = std::bit_cast<uint32>(Value);
	WriteOrdered(&Bits, 4);
	CountItem();
}

void FCborWriter::WriteValue(double Value)
{
	const uint8 Byte = static_cast<uint8>(ECborCode::Prim | ECborCode::Value_8Bytes);
	WriteBytes(&Byte, 1);
	const uint64 Bits = std::bit_cast<uint64>(Value);
	WriteOrdered(&Bits, 8);
	CountItem();
}

void FCborWriter::WriteValue(const FString& Value)
{
	WriteValue(FStringView(Value));
}

void FCborWriter::WriteValue(const FStringView& Value)
{
	const FTCHARToUTF8 Utf8(Value.GetData(), Value.Len());
	WriteValue(reinterpret_cast<const char*>(Utf8.Get()), static_cast<uint64>(Utf8.Length()));
}

void FCborWriter::WriteValue(const char* CString, uint64 Length)
{
	WriteHeader(ECborCode::TextString, Length);
	WriteBytes(CString, static_cast<int64>(Length));
	CountItem();
}

void FCborWriter::WriteValue(const uint8* Bytes, uint64 Length)
{
	WriteHeader(ECborCode::ByteString, Length);
	WriteBytes(Bytes, static_cast<int64>(Length));
	CountItem();
}
