// Copyright Orvane. All Rights Reserved.

#include "Serialization/MemoryReader.h"

#include "HAL/UnrealMemory.h"

namespace
{
	/** Copies Num bytes at Offset out of a block of Available bytes, or fails the archive when they are not all there.
	 */
	void ReadFromBlock(FArchive& Ar, int64& Offset, const uint8* Block, int64 Available, void* Data, int64 Num)
	{
		if (Num <= 0 || Ar.IsError())
		{
			if (Num > 0)
			{
				FMemory::Memzero(Data, static_cast<SIZE_T>(Num));
			}
			return;
		}
		if (Offset >= 0 && Offset <= Available && Num <= Available - Offset)
		{
			FMemory::Memcpy(Data, Block + Offset, static_cast<SIZE_T>(Num));
			Offset += Num;
			return;
		}
		UE_LOG(LogSerialization, Error,
			TEXT("%s: reading %lld bytes at offset %lld goes past the end of the %lld bytes it holds."),
			*Ar.GetArchiveName(), Num, Offset, Available);
		FMemory::Memzero(Data, static_cast<SIZE_T>(Num));
		Ar.SetError();
	}
} // namespace

FMemoryReader::FMemoryReader(const TArray<uint8>& InBytes, bool bIsPersistent)
	: Bytes(InBytes)
{
	SetIsLoading(true);
	SetIsPersistent(bIsPersistent);
}

int64 FMemoryReader::TotalSize()
{
	const int64 Size = Bytes.Num();
	return LimitSize != INDEX_NONE && LimitSize < Size ? LimitSize : Size;
}

void FMemoryReader::Serialize(void* Data, int64 Num)
{
	ReadFromBlock(*this, Offset, Bytes.GetData(), TotalSize(), Data, Num);
}

FMemoryReaderView::FMemoryReaderView(TArrayView<const uint8> InBytes, bool bIsPersistent)
	: Bytes(InBytes)
{
	SetIsLoading(true);
	SetIsPersistent(bIsPersistent);
}

int64 FMemoryReaderView::TotalSize()
{
	const int64 Size = Bytes.Num();
	return LimitSize != INDEX_NONE && LimitSize < Size ? LimitSize : Size;
}

void FMemoryReaderView::Serialize(void* Data, int64 Num)
{
	ReadFromBlock(*this, Offset, Bytes.GetData(), TotalSize(), Data, Num);
}
