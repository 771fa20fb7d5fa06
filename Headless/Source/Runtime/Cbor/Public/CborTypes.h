// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/EnumClassFlags.h"

class FArchive;

/** The byte order of the multi-byte values in a CBOR stream. The standard says big endian; Unreal data uses both. */
enum class ECborEndianness : uint8
{
	/** The byte order of the running platform (little endian here): fast, but only for data that stays in Unreal. */
	Platform,
	/** Big endian, as RFC 8949 requires. */
	BigEndian,
	/** Little endian: fine for Unreal's own data, unreadable by standard tools. */
	LittleEndian,
	/** The byte order standard CBOR tools read and write. */
	StandardCompliant = BigEndian,
};

/**
 * The codes of a CBOR header byte: a major type in the top three bits, an additional value in the low five.
 * The codes a stream never contains (additional values 28 to 30) report the reader's state and errors.
 */
enum class ECborCode : uint8
{
	None = 0,

	// Major types.
	Uint = 0 << 5,
	Int = 1 << 5,
	ByteString = 2 << 5,
	TextString = 3 << 5,
	Array = 4 << 5,
	Map = 5 << 5,
	Tag = 6 << 5,
	Prim = 7 << 5,

	// Additional values: where the argument of the header is.
	Value_1Byte = 0x18,
	Value_2Bytes = 0x19,
	Value_4Bytes = 0x1A,
	Value_8Bytes = 0x1B,
	Unused_28 = 0x1C,
	Unused_29 = 0x1D,
	Unused_30 = 0x1E,
	Indefinite = 0x1F,

	// Simple values of the Prim major type.
	False = 0x14,
	True = 0x15,
	Null = 0x16,
	Undefined = 0x17,

	/** Ends an indefinite container or string. */
	Break = 0xFF,

	// Reader states, built on the additional values no stream may use.
	Dummy = 0x1C,
	StreamEnd = 0x3C,

	// Errors.
	ErrorReservedItem = 0x1D,
	ErrorStreamFailure = 0x1E,
	ErrorBreak = 0x3D,
	ErrorMapContainer = 0x3E,
	ErrorContext = 0x5E,
	ErrorStringNesting = 0x7D,
	ErrorStringLength = 0x7E,
};
ENUM_CLASS_FLAGS(ECborCode)

/** Makes an archive swap byte order while it lives, as the requested CBOR endianness needs. */
class CBOR_API ScopedCborArchiveEndianness
{
public:
	ScopedCborArchiveEndianness(FArchive& InArchive, ECborEndianness Endianness);
	~ScopedCborArchiveEndianness();

	ScopedCborArchiveEndianness(const ScopedCborArchiveEndianness&) = delete;
	ScopedCborArchiveEndianness& operator=(const ScopedCborArchiveEndianness&) = delete;

protected:
	FArchive& Archive;
	bool bOldByteSwappingState;
};

/** One CBOR header byte. */
class FCborHeader
{
public:
	FCborHeader(uint8 InHeader = 0)
		: Header(InHeader)
	{
	}

	FCborHeader(ECborCode InHeader)
		: Header(static_cast<uint8>(InHeader))
	{
	}

	void Set(uint8 InHeader) { Header = InHeader; }
	void Set(ECborCode InHeader) { Header = static_cast<uint8>(InHeader); }

	uint8 Raw() const { return Header; }
	ECborCode RawCode() const { return static_cast<ECborCode>(Header); }
	ECborCode MajorType() const { return static_cast<ECborCode>(Header & 0xE0); }
	ECborCode AdditionalValue() const { return static_cast<ECborCode>(Header & 0x1F); }

private:
	uint8 Header;
};

/**
 * One item read from (or a container being written to) a CBOR stream: its header and its value.
 *
 * Which accessor applies depends on the header: AsUInt for Uint (and the number of a Tag), AsInt for Uint and Int,
 * AsBool for the False and True simple values, AsFloat for half and single floats (Prim with Value_2Bytes or
 * Value_4Bytes), AsDouble for double floats (Prim with Value_8Bytes), AsString and AsCString for text strings,
 * AsByteArray for byte strings, AsLength for strings and containers, AsBreak for break contexts. Calling one that
 * does not apply is a programming error and asserts.
 */
struct CBOR_API FCborContext
{
	FCborContext();
	explicit FCborContext(ECborCode Code);

	/** Makes the context a dummy again, dropping any text it held. */
	void Reset();

	ECborCode RawCode() const { return Header.RawCode(); }
	ECborCode MajorType() const { return Header.MajorType(); }
	ECborCode AdditionalValue() const { return Header.AdditionalValue(); }

	/** True for the placeholder context of a reader that is not inside any container. */
	bool IsDummy() const { return Header.RawCode() == ECborCode::Dummy; }

	/** True when the context reports an error (its additional value is 29 or 30, which no stream may use). */
	bool IsError() const;

	/** True when the context ends a container or an indefinite string. */
	bool IsBreak() const { return Header.RawCode() == ECborCode::Break; }

	/** True for arrays, maps and indefinite strings. */
	bool IsContainer() const;

	/** True for a container whose end is a break code rather than a count. */
	bool IsIndefiniteContainer() const;

	/** True for a container that announced how many items it holds. */
	bool IsFiniteContainer() const;

	/** True for text and byte strings. */
	bool IsString() const;

	/**
	 * The number of bytes of a string, or the number of items of a finite container. A map counts its keys and its
	 * values, so its length is twice its number of pairs. Indefinite containers report 0.
	 */
	uint64 AsLength() const;

	uint64 AsUInt() const;
	int64 AsInt() const;
	bool AsBool() const;
	float AsFloat() const;
	double AsDouble() const;

	/** The text of a text string, decoded from UTF-8. */
	FString AsString() const;

	/** The text of a text string as null-terminated UTF-8; valid while the context lives. */
	const char* AsCString() const;

	/** The bytes of a byte string; valid while the context lives. */
	TArrayView<const uint8> AsByteArray() const;

	/** The container code (Array, Map, ByteString or TextString) a break context closes. */
	ECborCode AsBreak() const;

	union
	{
		bool BoolValue;
		uint64 UIntValue;
		int64 IntValue;
		uint64 Length;
		float FloatValue;
		double DoubleValue;
	};

protected:
	friend class FCborReader;
	friend class FCborWriter;

	/** The header of the item. */
	FCborHeader Header;

	/**
	 * The bytes of a string, with a terminating zero after text; for a break, the code of the container it
	 * closes.
	 */
	TArray<char> RawTextValue;
};
