// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CborTypes.h"
#include "Containers/Array.h"
#include "Containers/StringFwd.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"

class FArchive;

/**
 * Writes a CBOR (RFC 8949) stream. Integers take their shortest encoding, floats keep the width they are given,
 * strings are written as UTF-8 text.
 */
class CBOR_API FCborWriter
{
public:
	/**
	 * @param InStream The stream to write to; it must outlive the writer.
	 * @param InWriterEndianness The byte order to write. Use ECborEndianness::StandardCompliant for data other tools
	 *        will read; the default, the platform's order, only suits Unreal's own data.
	 */
	FCborWriter(FArchive* InStream, ECborEndianness InWriterEndianness = ECborEndianness::Platform);
	~FCborWriter();

	/** The archive being written. */
	const FArchive* GetArchive() const { return Stream; }

	/**
	 * Starts a container.
	 * @param ContainerType ECborCode::Array or ECborCode::Map.
	 * @param NbItem The number of items of an array, or of key/value pairs of a map; negative for an indefinite
	 *        container, which WriteContainerEnd closes.
	 */
	void WriteContainerStart(ECborCode ContainerType, int64 NbItem);

	/** Closes the innermost container, which must be indefinite, with a break code. */
	void WriteContainerEnd();

	void WriteNull();
	void WriteUndefined();

	void WriteValue(uint64 Value);
	void WriteValue(int64 Value);
	void WriteValue(bool Value);

	/** Writes a single-precision float. */
	void WriteValue(float Value);

	/** Writes a double-precision float. */
	void WriteValue(double Value);

	/** Writes a text string. */
	void WriteValue(const FString& Value);
	void WriteValue(const FStringView& Value);

	/** Writes Length bytes of UTF-8 as a text string. */
	void WriteValue(const char* CString, uint64 Length);

	/** Writes Length bytes as a byte string. */
	void WriteValue(const uint8* Bytes, uint64 Length);

protected:
	/** The archive being written to. */
	FArchive* Stream;

	/** Write the CBOR data using the specified endianness. */
	ECborEndianness Endianness;

	/** The containers being written, innermost last; the first entry is the top-level dummy. */
	TArray<FCborContext> ContextStack;

private:
	void WriteHeader(ECborCode MajorType, uint64 Argument);
	void WriteBytes(const void* Data, int64 Count);
	void WriteOrdered(const void* Data, int32 Count);
	void CountItem();
	void PushContainer(ECborCode Code, uint64 Items);

	/** How many items each container of ContextStack has received so far. */
	TArray<uint64> ItemCounts;
};
