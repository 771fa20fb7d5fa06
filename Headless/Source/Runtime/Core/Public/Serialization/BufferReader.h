// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Serialization/Archive.h"

/** Reads from a raw block of memory, optionally freeing it (with FMemory::Free) when closed or destroyed. */
class CORE_API FBufferReaderBase : public FArchive
{
public:
	FBufferReaderBase(void* Data, int64 Size, bool bInFreeOnClose, bool bIsPersistent = false);
	virtual ~FBufferReaderBase();

	virtual bool Close() override;
	virtual void Serialize(void* Data, int64 Num) override;
	virtual int64 Tell() override { return Pos; }
	virtual int64 TotalSize() override { return Size; }
	virtual void Seek(int64 InPos) override;
	virtual bool AtEnd() override { return Pos >= Size; }
	virtual FString GetArchiveName() const override { return TEXT("FBufferReaderBase"); }

protected:
	void* ReaderData = nullptr;
	int64 Pos = 0;
	int64 Size = 0;
	bool bFreeOnClose = false;
};

/** A buffer reader that is also a loading archive of the engine's usual kind. */
class CORE_API FBufferReader : public FBufferReaderBase
{
public:
	FBufferReader(void* Data, int64 Size, bool bInFreeOnClose, bool bIsPersistent = false)
		: FBufferReaderBase(Data, Size, bInFreeOnClose, bIsPersistent)
	{
	}

	virtual FString GetArchiveName() const override { return TEXT("FBufferReader"); }
};
