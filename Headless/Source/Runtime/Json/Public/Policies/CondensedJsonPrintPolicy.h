// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Policies/JsonPrintPolicy.h"

/** Prints Json without any whitespace. */
template <class CharType>
struct TCondensedJsonPrintPolicy : public TJsonPrintPolicy<CharType>
{
	static void WriteLineTerminator(FArchive* Stream) {}
	static void WriteTabs(FArchive* Stream, int32 Count) {}
	static void WriteSpace(FArchive* Stream) {}
};
