// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "CoreTypes.h"
#include "Serialization/MemoryArchive.h"
#include "UObject/NameTypes.h"

/** Writes into an array of bytes it does not own, growing it as needed. */
class CORE_API FMemoryWriter : public FMemoryArchive
{
public:
	/**
	 * @param bSetOffset Start writing at the end of what the array already holds instead of at its start.
	 */
	explicit FMemoryWriter(TArray<uint8>& InBytes, bool bIsPersistent = false, bool bSetOffset = false,
		const FName InArchiveName = NAME_None);

	virtual FString GetArchiveName() const override;
	virtual int64 TotalSize() override { return Bytes.Num(); }
	virtual void Serialize(void* Data, int64 Num) override;

private:
	TArray<uint8>& Bytes;
	FName ArchiveName;
};
