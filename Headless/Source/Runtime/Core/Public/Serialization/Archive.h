// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "CoreTypes.h"

/** The state every archive carries: direction, persistence, error and byte order. */
class CORE_API FArchiveState
{
public:
	virtual ~FArchiveState() = default;

	bool IsLoading() const { return ArIsLoading; }
	bool IsSaving() const { return ArIsSaving; }
	bool IsPersistent() const { return ArIsPersistent; }
	bool IsTextFormat() const { return false; }

	/** True once a read or write failed; an archive in error stops moving data. */
	bool IsError() const { return ArIsError; }
	bool GetError() const { return ArIsError; }
	bool IsCriticalError() const { return ArIsCriticalError; }

	/** True when multi-byte values are reversed on their way through ByteOrderSerialize. */
	bool IsByteSwapping() const { return ArForceByteSwapping; }

	void SetIsLoading(bool bInIsLoading) { ArIsLoading = bInIsLoading; }
	void SetIsSaving(bool bInIsSaving) { ArIsSaving = bInIsSaving; }
	void SetIsPersistent(bool bInIsPersistent) { ArIsPersistent = bInIsPersistent; }
	void SetError() { ArIsError = true; }
	void ClearError() { ArIsError = false; }
	void SetCriticalError()
	{
		ArIsError = true;
		ArIsCriticalError = true;
	}
	void SetByteSwapping(bool Enabled) { ArForceByteSwapping = Enabled; }

	/** A name for the archive in messages. */
	virtual FString GetArchiveName() const { return TEXT("FArchive"); }

	/** The current position in bytes, or INDEX_NONE when the archive cannot tell. */
	virtual int64 Tell() { return INDEX_NONE; }

	/** The size in bytes, or INDEX_NONE when the archive cannot tell. */
	virtual int64 TotalSize() { return INDEX_NONE; }

	/** True when a loading archive has nothing more to read. */
	virtual bool AtEnd();

protected:
	bool ArIsLoading = false;
	bool ArIsSaving = false;
	bool ArIsPersistent = false;
	bool ArIsError = false;
	bool ArIsCriticalError = false;
	bool ArForceByteSwapping = false;
};

/**
 * A stream of bytes that serializes values in both directions: loading archives read into the operands
 * of operator<<, saving archives write them out.
 */
class CORE_API FArchive : public FArchiveState
{
public:
	FArchive() = default;
	virtual ~FArchive() = default;

	/** Moves Length bytes between the archive and V. The base archive moves nothing. */
	virtual void Serialize(void* V, int64 Length) {}

	/** Moves LengthBits bits, rounded up to whole bytes. */
	virtual void SerializeBits(void* V, int64 LengthBits);

	/** Moves to an absolute position. The base archive cannot seek. */
	virtual void Seek(int64 InPos) {}

	/** Writes out anything buffered. */
	virtual void Flush() {}

	/** Finishes with the archive; returns false when it is in error. */
	virtual bool Close() { return !ArIsError; }

	/** Moves a value of Length bytes, reversing its bytes when the archive swaps byte order. */
	void ByteOrderSerialize(void* V, int32 Length);

	friend FArchive& operator<<(FArchive& Ar, ANSICHAR& Value)
	{
		Ar.Serialize(&Value, 1);
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, WIDECHAR& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, uint8& Value)
	{
		Ar.Serialize(&Value, 1);
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, int8& Value)
	{
		Ar.Serialize(&Value, 1);
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, uint16& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, int16& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, uint32& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, int32& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, uint64& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, int64& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, float& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}
	friend FArchive& operator<<(FArchive& Ar, double& Value)
	{
		Ar.ByteOrderSerialize(&Value, sizeof(Value));
		return Ar;
	}

	/** Booleans travel as a 32-bit integer; any value other than 0 or 1 read back is an error. */
	CORE_API friend FArchive& operator<<(FArchive& Ar, bool& Value);

	/**
	 * Strings travel as a signed 32-bit count followed by the characters and a terminator: a positive count
	 * means one byte per character, a negative count means UTF-16 code units.
	 */
	CORE_API friend FArchive& operator<<(FArchive& Ar, FString& Value);
};
