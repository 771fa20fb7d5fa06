// Copyright Orvane. All Rights Reserved.

#include "Serialization/BufferReader.h"

#include "HAL/UnrealMemory.h"

FBufferReaderBase::FBufferReaderBase(void* Data, int64 InSize, bool bInFreeOnClose, bool bIsPersistent)
	: ReaderData(Data)
	, Size(InSize)
	, bFreeOnClose(bInFreeOnClose)
{
	SetIsLoading(true);
	SetIsPersistent(bIsPersistent);
}

FBufferReaderBase::~FBufferReaderBase()
{
	Close();
}

bool FBufferReaderBase::Close()
{
	if (bFreeOnClose && ReaderData)
	{
		FMemory::Free(ReaderData);
	}
	ReaderData = nullptr;
	bFreeOnClose = false;
	return !IsError();
}

void FBufferReaderBase::Serialize(void* Data, int64 Num)
{
	if (Num <= 0)
	{
		return;
	}
	if (IsError() || ReaderData == nullptr || Pos < 0 || Pos > Size || Num > Size - Pos)
	{
		if (!IsError())
		{
			UE_LOG(LogSerialization, Error, TEXT("%s: reading %lld bytes at %lld goes past the end of %lld bytes."),
				*GetArchiveName(), Num, Pos, Size);
		}
		FMemory::Memzero(Data, static_cast<SIZE_T>(Num));
		SetError();
		return;
	}
	FMemory::Memcpy(Data, static_cast<const uint8*>(ReaderData) + Pos, static_cast<SIZE_T>(Num));
	Pos += Num;
}

void FBufferReaderBase::Seek(int64 InPos)
{
	if (InPos < 0 || InPos > Size)
	{
		UE_LOG(LogSerialization, Error, TEXT("%s: cannot seek to %lld in %lld bytes."), *GetArchiveName(), InPos, Size);
		SetError();
		return;
	}
	Pos = InPos;
}
