// Copyright Orvane. All Rights Reserved.

#include "Serialization/MemoryWriter.h"

#include "HAL/UnrealMemory.h"

#include <limits>

FMemoryWriter::FMemoryWriter(TArray<uint8>& InBytes, bool bIsPersistent, bool bSetOffset, const FName InArchiveName)
	: Bytes(InBytes)
	, ArchiveName(InArchiveName)
{
	SetIsSaving(true);
	SetIsPersistent(bIsPersistent);
	if (bSetOffset)
	{
		Offset = InBytes.Num();
	}
}

FString FMemoryWriter::GetArchiveName() const
{
	return ArchiveName.IsNone() ? FString(TEXT("FMemoryWriter")) : ArchiveName.ToString();
}

void FMemoryWriter::Serialize(void* Data, int64 Num)
{
	if (Num <= 0 || IsError())
	{
		return;
	}
	const int64 End = Offset + Num;
	if (Offset < 0 || End > std::numeric_limits<int32>::max())
	{
		UE_LOG(LogSerialization, Error, TEXT("%s: writing %lld bytes at offset %lld exceeds what an array can hold."),
			*GetArchiveName(), Num, Offset);
		SetError();
		return;
	}
	if (End > Bytes.Num())
	{
		Bytes.AddUninitialized(static_cast<int32>(End - Bytes.Num()));
	}
	FMemory::Memcpy(Bytes.GetData() + Offset, Data, static_cast<SIZE_T>(Num));
	Offset = End;
}
