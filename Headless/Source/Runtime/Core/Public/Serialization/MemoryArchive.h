// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Serialization/Archive.h"

/** Base of the archives that read or write a block of memory: they track an offset into it. */
class CORE_API FMemoryArchive : public FArchive
{
public:
	virtual FString GetArchiveName() const override { return TEXT("FMemoryArchive"); }
	virtual void Seek(int64 InPos) override { Offset = InPos; }
	virtual int64 Tell() override { return Offset; }

protected:
	FMemoryArchive() = default;

	/** The position of the next byte to read or write. */
	int64 Offset = 0;
};
