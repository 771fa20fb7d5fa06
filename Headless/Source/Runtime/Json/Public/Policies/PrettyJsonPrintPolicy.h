// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Policies/JsonPrintPolicy.h"

/** Prints Json for people to read: one entry per line, indented with tabs, a space after each colon. */
template <class CharType>
struct TPrettyJsonPrintPolicy : public TJsonPrintPolicy<CharType>
{
	static void WriteLineTerminator(FArchive* Stream) { TJsonPrintPolicy<CharType>::WriteChar(Stream, CharType('\n')); }

	static void WriteTabs(FArchive* Stream, int32 Count)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			TJsonPrintPolicy<CharType>::WriteChar(Stream, CharType('\t'));
		}
	}

	static void WriteSpace(FArchive* Stream) { TJsonPrintPolicy<CharType>::WriteChar(Stream, CharType(' ')); }
};
