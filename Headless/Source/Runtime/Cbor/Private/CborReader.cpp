// Copyright Orvane. All Rights Reserved.

#include "CborReader.h"

#include "HAL/UnrealMemory.h"
#include "Serialization/Archive.h"

#include <bit>
#include <cmath>
#include <limits>

namespace
{
	/** Strings longer than this cannot be held (one byte is kept for the terminator of text). */
	constexpr uint64 MaxStringLength = static_cast<uint64>(std::numeric_limits<int32>::max()) - 1;

	/** When the archive cannot tell its size, strings are read this much at a time, so a lying length fails before it
	 * allocates much. */
	constexpr uint64 StringChunkSize = 64 * 1024;

	/** Decodes an IEEE 754 half-precision float. */
	float HalfToFloat(uint16 Half)
	{
		const int32 Exponent = (Half >> 10) & 0x1F;
		const int32 Mantissa = Half & 0x3FF;
		float Magnitude;
		if (Exponent == 0)
		{
			Magnitude = std::ldexp(static_cast<float>(Mantissa), -24);
		}
		else if (Exponent == 31)
		{
			Magnitude =
				Mantissa == 0 ? std::numeric_limits<float>::infinity() : std::numeric_limits<float>::quiet_NaN();
		}
		else
		{
			Magnitude = std::ldexp(static_cast<float>(Mantissa + 1024), Exponent - 25);
		}
		return (Half & 0x8000) ? -Magnitude : Magnitude;
	}
} // namespace

FCborReader::FCborReader(FArchive* InStream, ECborEndianness InReaderEndianness)
	: Stream(InStream)
	, Endianness(InReaderEndianness)
	, Error(ECborCode::Dummy)
{
	check(Stream != nullptr);
	ContextStack.Emplace();
	ItemCounts.Add(0);
}

FCborReader::~FCborReader() = default;

bool FCborReader::IsError() const
{
	return Error.RawCode() != ECborCode::Dummy;
}

FCborHeader FCborReader::GetError() const
{
	return Error;
}

const FCborContext& FCborReader::GetContext() const
{
	return ContextStack.Last();
}

int64 FCborReader::RemainingBytes()
{
	const int64 Size = Stream->TotalSize();
	if (Size == INDEX_NONE)
	{
		return INDEX_NONE;
	}
	return Size - Stream->Tell();
}

bool FCborReader::Fail(FCborContext& OutContext, ECborCode ErrorCode)
{
	Error.Set(ErrorCode);
	OutContext.Reset();
	OutContext.Header.Set(ErrorCode);
	return false;
}

bool FCborReader::ReadBytes(void* Data, uint64 Count)
{
	if (Count == 0)
	{
		return true;
	}
	const int64 Remaining = RemainingBytes();
	if (Remaining != INDEX_NONE && Count > static_cast<uint64>(Remaining))
	{
		return false;
	}
	Stream->Serialize(Data, static_cast<int64>(Count));
	return !Stream->IsError();
}

bool FCborReader::ReadArgument(ECborCode AdditionalValue, uint64& OutValue)
{
	const uint8 Additional = static_cast<uint8>(AdditionalValue);
	if (Additional < 24)
	{
		OutValue = Additional;
		return true;
	}
	const int32 Size = 1 << (Additional - 24);
	uint8 Bytes[8];
	if (!ReadBytes(Bytes, Size))
	{
		return false;
	}
	uint64 Value = 0;
	for (int32 Index = 0; Index < Size; ++Index)
	{
		const int32 Source = Endianness == ECborEndianness::BigEndian ? Index : Size - 1 - Index;
		Value = (Value << 8) | Bytes[Source];
	}
	OutValue = Value;
	return true;
}

bool FCborReader::ReadStringBytes(FCborContext& OutContext, uint64 Count)
{
	const bool bText = OutContext.MajorType() == ECborCode::TextString;
	const int64 Remaining = RemainingBytes();
	if (Count > MaxStringLength || (Remaining != INDEX_NONE && Count > static_cast<uint64>(Remaining)))
	{
		return Fail(OutContext, ECborCode::ErrorStringLength);
	}
	OutContext.Length = Count;
	TArray<char>& Bytes = OutContext.RawTextValue;
	if (Remaining != INDEX_NONE)
	{
		Bytes.SetNumUninitialized(static_cast<int32>(Count + (bText ? 1 : 0)));
		if (!ReadBytes(Bytes.GetData(), Count))
		{
			return Fail(OutContext, ECborCode::ErrorStreamFailure);
		}
	}
	else
	{
		Bytes.Reset();
		uint64 Done = 0;
		while (Done < Count)
		{
			const uint64 Chunk = Count - Done < StringChunkSize ? Count - Done : StringChunkSize;
			Bytes.AddUninitialized(static_cast<int32>(Chunk));
			if (!ReadBytes(Bytes.GetData() + Done, Chunk))
			{
				return Fail(OutContext, ECborCode::ErrorStreamFailure);
			}
			Done += Chunk;
		}
		if (bText)
		{
			Bytes.AddUninitialized(1);
		}
	}
	if (bText)
	{
		Bytes[static_cast<int32>(Count)] = 0;
	}
	return true;
}

void FCborReader::CountItem()
{
	bTagPending = false;
	++ItemCounts.Last();
}

bool FCborReader::EndContainer(FCborContext& OutContext)
{
	const ECborCode ContainerType = ContextStack.Last().MajorType();
	ContextStack.Pop();
	ItemCounts.Pop();
	OutContext.Reset();
	OutContext.Header.Set(ECborCode::Break);
	OutContext.RawTextValue.Add(static_cast<char>(static_cast<uint8>(ContainerType)));
	return true;
}

bool FCborReader::ReadNext(FCborContext& OutContext)
{
	if (IsError())
	{
		OutContext.Reset();
		OutContext.Header = Error;
		return false;
	}
	OutContext.Reset();

	const FCborContext& Parent = ContextStack.Last();
	const uint64 ParentItems = ItemCounts.Last();
	if (Parent.IsFiniteContainer() && ParentItems >= Parent.Length && !bTagPending)
	{
		// A finite container ends after its last item; report it the way an indefinite one ends.
		return EndContainer(OutContext);
	}

	uint8 HeaderByte = 0;
	if (RemainingBytes() == 0)
	{
		if (ContextStack.Num() > 1 || bTagPending)
		{
			return Fail(OutContext, ECborCode::ErrorStreamFailure);
		}
		OutContext.Header.Set(ECborCode::StreamEnd);
		return false;
	}
	if (!ReadBytes(&HeaderByte, 1))
	{
		if (ContextStack.Num() == 1 && !bTagPending && RemainingBytes() == INDEX_NONE)
		{
			// An archive of unknown size ends where a read fails; between items that is the end of the stream.
			OutContext.Header.Set(ECborCode::StreamEnd);
			return false;
		}
		return Fail(OutContext, ECborCode::ErrorStreamFailure);
	}

	const FCborHeader Header(HeaderByte);
	const ECborCode Major = Header.MajorType();
	const ECborCode Additional = Header.AdditionalValue();

	if (Parent.IsString())
	{
		// Inside an indefinite string only definite chunks of the same kind, and the closing break, may appear.
		if (Header.RawCode() == ECborCode::Break)
		{
			return EndContainer(OutContext);
		}
		if (Major != Parent.MajorType() || Additional == ECborCode::Indefinite)
		{
			return Fail(OutContext, ECborCode::ErrorStringNesting);
		}
	}

	if (Header.RawCode() == ECborCode::Break)
	{
		if (!Parent.IsIndefiniteContainer() || bTagPending)
		{
			return Fail(OutContext, ECborCode::ErrorBreak);
		}
		if (Parent.MajorType() == ECborCode::Map && (ParentItems % 2) != 0)
		{
			return Fail(OutContext, ECborCode::ErrorMapContainer);
		}
		return EndContainer(OutContext);
	}

	if (Additional == ECborCode::Unused_28 || Additional == ECborCode::Unused_29 || Additional == ECborCode::Unused_30)
	{
		return Fail(OutContext, ECborCode::ErrorReservedItem);
	}

	OutContext.Header = Header;
	uint64 Argument = 0;
	if (Additional != ECborCode::Indefinite && Major != ECborCode::Prim)
	{
		if (!ReadArgument(Additional, Argument))
		{
			return Fail(OutContext, ECborCode::ErrorStreamFailure);
		}
	}

	switch (Major)
	{
		case ECborCode::Uint:
		case ECborCode::Int:
			if (Additional == ECborCode::Indefinite)
			{
				return Fail(OutContext, ECborCode::ErrorReservedItem);
			}
			if (Major == ECborCode::Uint)
			{
				OutContext.UIntValue = Argument;
			}
			else
			{
				// The value is -1 - Argument, which in two's complement is the complement of Argument.
				OutContext.IntValue = static_cast<int64>(~Argument);
			}
			CountItem();
			return true;

		case ECborCode::ByteString:
		case ECborCode::TextString:
			if (Additional == ECborCode::Indefinite)
			{
				CountItem();
				ContextStack.Add(OutContext);
				ItemCounts.Add(0);
				return true;
			}
			if (!ReadStringBytes(OutContext, Argument))
			{
				return false;
			}
			CountItem();
			return true;

		case ECborCode::Array:
		case ECborCode::Map:
			if (Additional != ECborCode::Indefinite)
			{
				const bool bMap = Major == ECborCode::Map;
				const int64 Remaining = RemainingBytes();
				if (bMap && Argument > std::numeric_limits<uint64>::max() / 2)
				{
					return Fail(OutContext, ECborCode::ErrorStreamFailure);
				}
				const uint64 Items = bMap ? Argument * 2 : Argument;
				// Every item takes at least one byte: a count the rest of the stream cannot hold is a lie, and
				// callers may size storage by it.
				if (Remaining != INDEX_NONE && Items > static_cast<uint64>(Remaining))
				{
					return Fail(OutContext, ECborCode::ErrorStreamFailure);
				}
				OutContext.Length = Items;
			}
			CountItem();
			ContextStack.Add(OutContext);
			ItemCounts.Add(0);
			return true;

		case ECborCode::Tag:
			if (Additional == ECborCode::Indefinite)
			{
				return Fail(OutContext, ECborCode::ErrorReservedItem);
			}
			// The tag's number is reported; the item it tags is the next one and counts in its container.
			OutContext.UIntValue = Argument;
			bTagPending = true;
			return true;

		case ECborCode::Prim:
		default:
			break;
	}

	const uint8 Simple = static_cast<uint8>(Additional);
	if (Additional == ECborCode::False || Additional == ECborCode::True)
	{
		OutContext.BoolValue = Additional == ECborCode::True;
	}
	else if (Additional == ECborCode::Value_1Byte)
	{
		uint8 Value = 0;
		if (!ReadBytes(&Value, 1))
		{
			return Fail(OutContext, ECborCode::ErrorStreamFailure);
		}
		// Simple values below 32 must use the one-byte form.
		if (Value < 32)
		{
			return Fail(OutContext, ECborCode::ErrorReservedItem);
		}
		OutContext.UIntValue = Value;
	}
	else if (Additional == ECborCode::Value_2Bytes || Additional == ECborCode::Value_4Bytes ||
			 Additional == ECborCode::Value_8Bytes)
	{
		uint64 Bits = 0;
		if (!ReadArgument(Additional, Bits))
		{
			return Fail(OutContext, ECborCode::ErrorStreamFailure);
		}
		if (Additional == ECborCode::Value_2Bytes)
		{
			OutContext.FloatValue = HalfToFloat(static_cast<uint16>(Bits));
		}
		else if (Additional == ECborCode::Value_4Bytes)
		{
			OutContext.FloatValue = std::bit_cast<float>(static_cast<uint32>(Bits));
		}
		else
		{
			OutContext.DoubleValue = std::bit_cast<double>(Bits);
		}
	}
	else if (Simple < 20)
	{
		// An unassigned simple value: reported with its number.
		OutContext.UIntValue = Simple;
	}
	CountItem();
	return true;
}

bool FCborReader::SkipContainer(ECborCode ContainerType)
{
	if (IsError() || ContextStack.Num() < 2 || ContextStack.Last().MajorType() != ContainerType)
	{
		return false;
	}
	const int32 Depth = ContextStack.Num();
	FCborContext Context;
	while (ReadNext(Context))
	{
		if (Context.IsBreak() && ContextStack.Num() < Depth)
		{
			return true;
		}
	}
	return false;
}
