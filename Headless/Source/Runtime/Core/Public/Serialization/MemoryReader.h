// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "CoreTypes.h"
#include "Serialization/MemoryArchive.h"

/**
 * Reads from an array of bytes it does not own. Reading past the end puts the archive in error and yields
 * zeroed bytes.
 */
class CORE_API FMemoryReader : public FMemoryArchive
{
public:
	explicit FMemoryReader(const TArray<uint8>& InBytes, bool bIsPersistent = false);

	virtual FString GetArchiveName() const override { return TEXT("FMemoryReader"); }
	virtual int64 TotalSize() override;
	virtual void Serialize(void* Data, int64 Num) override;

	/** Pretends the array holds only its first InLimitSize bytes. */
	void SetLimitSize(int64 InLimitSize) { LimitSize = InLimitSize; }

private:
	const TArray<uint8>& Bytes;
	int64 LimitSize = INDEX_NONE;
};

/** Reads from a view of bytes it does not own; the memory must outlive the reader. */
class CORE_API FMemoryReaderView : public FMemoryArchive
{
public:
	FMemoryReaderView() = default;
	explicit FMemoryReaderView(TArrayView<const uint8> InBytes, bool bIsPersistent = false);

	virtual FString GetArchiveName() const override { return TEXT("FMemoryReaderView"); }
	virtual int64 TotalSize() override;
	virtual void Serialize(void* Data, int64 Num) override;

	void SetLimitSize(int64 InLimitSize) { LimitSize = InLimitSize; }

private:
	TArrayView<const uint8> Bytes;
	int64 LimitSize = INDEX_NONE;
};
