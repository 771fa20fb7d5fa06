// Copyright Orvane. All Rights Reserved.

#include "Serialization/Archive.h"

#include "Containers/StringConv.h"
#include "HAL/UnrealMemory.h"

#include <algorithm>

bool FArchiveState::AtEnd()
{
	const int64 Size = TotalSize();
	return Size != INDEX_NONE && Tell() >= Size;
}

void FArchive::SerializeBits(void* V, int64 LengthBits)
{
	Serialize(V, (LengthBits + 7) / 8);
	if (IsLoading() && (LengthBits % 8) != 0)
	{
		// Clear the bits past the end so that a partial byte reads the same whatever followed it in the stream.
		static_cast<uint8*>(V)[LengthBits / 8] &= static_cast<uint8>((1 << (LengthBits & 7)) - 1);
	}
}

void FArchive::ByteOrderSerialize(void* V, int32 Length)
{
	if (!IsByteSwapping())
	{
		Serialize(V, Length);
		return;
	}
	uint8* const Bytes = static_cast<uint8*>(V);
	if (IsSaving())
	{
		// Write a reversed copy: the caller's value must stay as it is.
		uint8 Swapped[16];
		check(Length <= static_cast<int32>(sizeof(Swapped)));
		std::reverse_copy(Bytes, Bytes + Length, Swapped);
		Serialize(Swapped, Length);
	}
	else
	{
		Serialize(V, Length);
		std::reverse(Bytes, Bytes + Length);
	}
}

FArchive& operator<<(FArchive& Ar, bool& Value)
{
	uint32 Word = Value ? 1 : 0;
	Ar << Word;
	if (Ar.IsLoading())
	{
		if (Word > 1)
		{
			UE_LOG(
				LogSerialization, Error, TEXT("Invalid boolean %u read from archive %s."), Word, *Ar.GetArchiveName());
			Ar.SetError();
		}
		Value = Word != 0;
	}
	return Ar;
}

FArchive& operator<<(FArchive& Ar, FString& Value)
{
	if (Ar.IsLoading())
	{
		int32 SaveNum = 0;
		Ar << SaveNum;
		Value.Empty();
		if (Ar.IsError() || SaveNum == 0)
		{
			return Ar;
		}
		const bool bWide = SaveNum < 0;
		const int64 Count = bWide ? -static_cast<int64>(SaveNum) : SaveNum;
		const int64 Bytes = Count * (bWide ? 2 : 1);
		const int64 Size = Ar.TotalSize();
		// A corrupt count must not turn into a huge allocation: it cannot exceed what the archive still holds.
		if (Size != INDEX_NONE && Bytes > Size - Ar.Tell())
		{
			UE_LOG(LogSerialization, Error, TEXT("String of %lld characters runs past the end of archive %s."), Count,
				*Ar.GetArchiveName());
			Ar.SetError();
			return Ar;
		}
		if (bWide)
		{
			TArray<TCHAR> Chars;
			Chars.SetNumUninitialized(static_cast<int32>(Count));
			for (TCHAR& Char : Chars)
			{
				Ar << Char;
			}
			if (!Ar.IsError())
			{
				Value = FString(static_cast<int32>(Count - 1), Chars.GetData());
			}
		}
		else
		{
			TArray<ANSICHAR> Chars;
			Chars.SetNumUninitialized(static_cast<int32>(Count));
			Ar.Serialize(Chars.GetData(), Count);
			if (!Ar.IsError())
			{
				// One byte per character means Latin-1, which maps one to one onto the first code points.
				Value.Reserve(static_cast<int32>(Count - 1));
				for (int64 Index = 0; Index + 1 < Count; ++Index)
				{
					Value.AppendChar(static_cast<TCHAR>(static_cast<uint8>(Chars[static_cast<int32>(Index)])));
				}
			}
		}
		return Ar;
	}

	const int32 Length = Value.Len();
	if (Length == 0)
	{
		int32 SaveNum = 0;
		Ar << SaveNum;
		return Ar;
	}
	bool bNarrow = true;
	for (const TCHAR Char : Value)
	{
		if (Char > 0xFF)
		{
			bNarrow = false;
			break;
		}
	}
	int32 SaveNum = bNarrow ? Length + 1 : -(Length + 1);
	Ar << SaveNum;
	if (bNarrow)
	{
		TArray<ANSICHAR> Chars;
		Chars.Reserve(Length + 1);
		for (const TCHAR Char : Value)
		{
			Chars.Add(static_cast<ANSICHAR>(Char));
		}
		Chars.Add(0);
		Ar.Serialize(Chars.GetData(), Chars.Num());
	}
	else
	{
		for (TCHAR Char : Value)
		{
			Ar << Char;
		}
		TCHAR Terminator = 0;
		Ar << Terminator;
	}
	return Ar;
}
