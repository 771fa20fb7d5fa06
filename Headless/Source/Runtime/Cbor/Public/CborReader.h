// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CborTypes.h"
#include "Containers/Array.h"
#include "CoreTypes.h"

class FArchive;

/**
 * Reads a CBOR (RFC 8949) stream one item at a time.
 *
 * Every ReadNext gives one item: a scalar, a string, the start of a container (array, map or indefinite string),
 * a tag (its number; the tagged item is the next one read), or a break when a container ends. A break comes at the
 * end of every container: after the break code of an indefinite one, and after the last item of a finite one, so
 * the two read alike. Malformed or truncated input gives an error context and stops the reader; nothing it reads
 * is trusted to size an allocation beyond what the archive still holds.
 */
class CBOR_API FCborReader
{
public:
	/**
	 * @param InStream The stream holding the CBOR data; it must outlive the reader.
	 * @param InReaderEndianness The byte order of the data. Standard CBOR (from other tools) is
	 *        ECborEndianness::StandardCompliant; the default, the platform's order, only suits Unreal's own data.
	 */
	FCborReader(FArchive* InStream, ECborEndianness InReaderEndianness = ECborEndianness::Platform);
	~FCborReader();

	/** The archive being read. */
	const FArchive* GetArchive() const { return Stream; }

	/** True once the reader met an error; it reads nothing more. */
	bool IsError() const;

	/** The header of the error the reader met, or a dummy header when there was none. */
	FCborHeader GetError() const;

	/**
	 * The innermost container being read, or a dummy context at the top level. Do not hold on to the reference
	 * across ReadNext.
	 */
	const FCborContext& GetContext() const;

	/**
	 * Reads the next item into OutContext.
	 * @return true when an item was read; false at the end of the stream (OutContext is StreamEnd) or on an error
	 *         (OutContext.IsError()).
	 */
	bool ReadNext(FCborContext& OutContext);

	/**
	 * Skips what is left of the container being read, up to and including its end.
	 * @return false when the innermost container is not of ContainerType, or on an error.
	 */
	bool SkipContainer(ECborCode ContainerType);

protected:
	/** The archive we are reading from. */
	FArchive* Stream;

	/** Read the CBOR data using the specified endianness. */
	ECborEndianness Endianness;

	/** The containers being read, innermost last; the first entry is the top-level dummy. */
	TArray<FCborContext> ContextStack;

private:
	bool ReadArgument(ECborCode AdditionalValue, uint64& OutValue);
	bool ReadBytes(void* Data, uint64 Count);
	bool ReadStringBytes(FCborContext& OutContext, uint64 Count);
	bool Fail(FCborContext& OutContext, ECborCode ErrorCode);
	bool EndContainer(FCborContext& OutContext);
	void CountItem();
	int64 RemainingBytes();

	/** How many items each container of ContextStack has delivered so far. */
	TArray<uint64> ItemCounts;

	/** The error that stopped the reader; a dummy header while there was none. */
	FCborHeader Error;

	/** A tag was read and the item it tags has not been yet. */
	bool bTagPending = false;
};
