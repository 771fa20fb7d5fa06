// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

class FName;

/**
 * Reads values, switches and tokens out of command lines and "Key=Value" text.
 *
 * A Match such as TEXT("Port=") or TEXT("-Port=") is found without regard to case, only where it starts
 * a word (the character before it is not a letter or digit) and never inside a quoted section.
 */
struct FParse
{
	/**
	 * Reads the text after Match. A value starting with '"' runs to the next '"' and loses its quotes;
	 * otherwise it ends at whitespace and, when bShouldStopOnSeparator is set, at ',' or ')'.
	 * OptStreamGotTo, when given, receives the end of the value within Stream.
	 */
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, FString& Value,
		bool bShouldStopOnSeparator = true, const TCHAR** OptStreamGotTo = nullptr);

	/** As the FString form, into a buffer of MaxLen characters including the terminator. */
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, TCHAR* Value, int32 MaxLen,
		bool bShouldStopOnSeparator = true, const TCHAR** OptStreamGotTo = nullptr);

	// Numbers: true when Match is followed by a number; otherwise Value is left untouched.
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, int8& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, uint8& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, int16& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, uint16& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, int32& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, uint32& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, int64& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, uint64& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, float& Value);
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, double& Value);

	/** Reads the text after Match as a name. */
	static CORE_API bool Value(const TCHAR* Stream, const TCHAR* Match, FName& Name);

	/** Reads the text after Match as a boolean ("true", "yes", "on", "1"... as FCString::ToBool reads them). */
	static CORE_API bool Bool(const TCHAR* Stream, const TCHAR* Match, bool& OnOff);

	/** Whether the switch "-Param" (or "/Param") appears as a whole word in Stream. */
	static CORE_API bool Param(const TCHAR* Stream, const TCHAR* Param);

	/**
	 * Reads the next whitespace-separated token and advances Str past it. A token starting with '"' loses its
	 * quotes; with UseEscape, \" inside it stands for a quote. Returns false when no token is left.
	 */
	static CORE_API bool Token(const TCHAR*& Str, TCHAR* Result, int32 MaxLen, bool UseEscape);
	static CORE_API bool Token(const TCHAR*& Str, FString& Arg, bool UseEscape);

	/** The next token (empty when none is left), advancing Str past it. */
	static CORE_API FString Token(const TCHAR*& Str, bool UseEscape);

	/**
	 * Whether Stream starts (after whitespace) with the word Match; if so, Stream is advanced past it and
	 * the whitespace after it.
	 */
	static CORE_API bool Command(const TCHAR** Stream, const TCHAR* Match, bool bParseMightTriggerExecution = true);

	/**
	 * Reads a quoted string at the start of Buffer, translating the escapes \", \\, \n, \r, \t and \'.
	 * Fails when Buffer does not start with '"' or the closing quote is missing.
	 */
	static CORE_API bool QuotedString(const TCHAR* Buffer, FString& Value, int32* OutNumCharsRead = nullptr);

	/** Reads hexadecimal digits (an optional "0x" first); stops at the first other character. */
	static CORE_API uint32 HexNumber(const TCHAR* HexString);
	static CORE_API uint64 HexNumber64(const TCHAR* HexString);
};
