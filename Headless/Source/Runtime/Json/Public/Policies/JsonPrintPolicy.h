// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringConv.h"
#include "Containers/StringView.h"
#include "CoreMinimal.h"
#include "Serialization/Archive.h"

#include <type_traits>

namespace UE::Json::Private
{
	/** Writes the shortest text that reads back as Value ("12", "0.1", "1e+300") to Buffer; returns its length. */
	JSON_API int32 FormatNumber(double Value, ANSICHAR (&Buffer)[32]);
	JSON_API int32 FormatNumber(float Value, ANSICHAR (&Buffer)[32]);
} // namespace UE::Json::Private

/** How a Json writer puts characters and numbers into its archive, as characters of CharType. */
template <class CharType>
struct TJsonPrintPolicy
{
	static void WriteChar(FArchive* Stream, CharType Char) { Stream->Serialize(&Char, sizeof(CharType)); }

	/** Writes the characters as they are (the caller escapes what needs escaping). */
	static void WriteString(FArchive* Stream, FStringView String)
	{
		if constexpr (sizeof(CharType) == sizeof(TCHAR))
		{
			Stream->Serialize(const_cast<TCHAR*>(String.GetData()), String.Len() * static_cast<int64>(sizeof(TCHAR)));
		}
		else
		{
			const TStringConversion<TCHAR, UTF8CHAR> Converted(String.GetData(), String.Len());
			Stream->Serialize(const_cast<UTF8CHAR*>(Converted.Get()), Converted.Length());
		}
	}

	static void WriteAscii(FArchive* Stream, const ANSICHAR* Text, int32 Length)
	{
		for (int32 Index = 0; Index < Length; ++Index)
		{
			WriteChar(Stream, static_cast<CharType>(Text[Index]));
		}
	}

	static void WriteFloat(FArchive* Stream, float Value)
	{
		ANSICHAR Buffer[32];
		WriteAscii(Stream, Buffer, UE::Json::Private::FormatNumber(Value, Buffer));
	}

	static void WriteDouble(FArchive* Stream, double Value)
	{
		ANSICHAR Buffer[32];
		WriteAscii(Stream, Buffer, UE::Json::Private::FormatNumber(Value, Buffer));
	}
};
