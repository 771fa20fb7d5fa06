// Copyright Orvane. All Rights Reserved.

#include "Misc/Parse.h"

#include "Misc/CString.h"
#include "Misc/Char.h"
#include "UObject/NameTypes.h"

#include <limits>

namespace ParsePrivate
{
	/**
	 * Finds Find in Str without regard to case, only where it starts a word, optionally skipping text
	 * between double quotes so a value like -Cmd="-Port=1" does not answer for -Port=.
	 */
	const TCHAR* FindWord(const TCHAR* Str, const TCHAR* Find, bool bSkipQuotedChars)
	{
		if (Str == nullptr || Find == nullptr || *Find == 0)
		{
			return nullptr;
		}
		const int32 FindLen = FCString::Strlen(Find);
		bool bInQuotes = false;
		bool bAlnumBefore = false;
		for (const TCHAR* Cursor = Str; *Cursor; ++Cursor)
		{
			if (bSkipQuotedChars && *Cursor == TEXT('"'))
			{
				bInQuotes = !bInQuotes;
				bAlnumBefore = false;
				continue;
			}
			if (!bInQuotes && !bAlnumBefore && FCString::Strnicmp(Cursor, Find, FindLen) == 0)
			{
				return Cursor;
			}
			bAlnumBefore = FChar::IsAlnum(*Cursor);
		}
		return nullptr;
	}

	/** Reads the optionally signed integer at the start of Text; false when there are no digits. */
	template <typename IntType>
	bool ParseInteger(const TCHAR* Text, IntType& OutValue)
	{
		const TCHAR* Cursor = Text;
		bool bNegative = false;
		if (*Cursor == TEXT('+') || *Cursor == TEXT('-'))
		{
			bNegative = (*Cursor == TEXT('-'));
			++Cursor;
		}
		if (!FChar::IsDigit(*Cursor))
		{
			return false;
		}
		if (bNegative && !std::numeric_limits<IntType>::is_signed)
		{
			return false;
		}
		uint64 Magnitude = 0;
		for (; FChar::IsDigit(*Cursor); ++Cursor)
		{
			const uint64 Digit = (uint64)(*Cursor - TEXT('0'));
			if (Magnitude > (MAX_uint64 - Digit) / 10)
			{
				return false;
			}
			Magnitude = Magnitude * 10 + Digit;
		}
		if (bNegative)
		{
			const int64 Signed = -(int64)Magnitude;
			if (Signed < (int64)std::numeric_limits<IntType>::min())
			{
				return false;
			}
			OutValue = (IntType)Signed;
			return true;
		}
		if (Magnitude > (uint64)std::numeric_limits<IntType>::max())
		{
			return false;
		}
		OutValue = (IntType)Magnitude;
		return true;
	}

	/** Whether Text starts like a decimal number: digits, or a sign or point followed by one. */
	bool StartsWithNumber(const TCHAR* Text)
	{
		if (*Text == TEXT('+') || *Text == TEXT('-'))
		{
			++Text;
		}
		if (*Text == TEXT('.'))
		{
			++Text;
		}
		return FChar::IsDigit(*Text);
	}

	template <typename IntType>
	bool IntegerValue(const TCHAR* Stream, const TCHAR* Match, IntType& OutValue)
	{
		FString Text;
		if (!FParse::Value(Stream, Match, Text))
		{
			return false;
		}
		return ParseInteger(*Text, OutValue);
	}

	template <typename FloatType>
	bool FloatValue(const TCHAR* Stream, const TCHAR* Match, FloatType& OutValue)
	{
		FString Text;
		if (!FParse::Value(Stream, Match, Text) || !StartsWithNumber(*Text))
		{
			return false;
		}
		OutValue = (FloatType)FCString::Atod(*Text);
		return true;
	}
} // namespace ParsePrivate

bool FParse::Value(
	const TCHAR* Stream, const TCHAR* Match, FString& Value, bool bShouldStopOnSeparator, const TCHAR** OptStreamGotTo)
{
	const TCHAR* Found = ParsePrivate::FindWord(Stream, Match, true);
	if (Found == nullptr)
	{
		return false;
	}
	const TCHAR* Start = Found + FCString::Strlen(Match);
	const TCHAR* End = Start;
	if (*Start == TEXT('"'))
	{
		++Start;
		End = Start;
		while (*End && *End != TEXT('"'))
		{
			++End;
		}
		Value = FString((int32)(End - Start), Start);
		if (*End == TEXT('"'))
		{
			++End;
		}
	}
	else
	{
		while (
			*End && !FChar::IsWhitespace(*End) && !(bShouldStopOnSeparator && (*End == TEXT(',') || *End == TEXT(')'))))
		{
			++End;
		}
		Value = FString((int32)(End - Start), Start);
	}
	if (OptStreamGotTo != nullptr)
	{
		*OptStreamGotTo = End;
	}
	return true;
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, TCHAR* Value, int32 MaxLen, bool bShouldStopOnSeparator,
	const TCHAR** OptStreamGotTo)
{
	FString Text;
	if (MaxLen <= 0 || !FParse::Value(Stream, Match, Text, bShouldStopOnSeparator, OptStreamGotTo))
	{
		return false;
	}
	FCString::Strncpy(Value, *Text, MaxLen);
	return true;
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, int8& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, uint8& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, int16& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, uint16& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, int32& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, uint32& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, int64& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, uint64& Value)
{
	return ParsePrivate::IntegerValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, float& Value)
{
	return ParsePrivate::FloatValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, double& Value)
{
	return ParsePrivate::FloatValue(Stream, Match, Value);
}

bool FParse::Value(const TCHAR* Stream, const TCHAR* Match, FName& Name)
{
	FString Text;
	if (!FParse::Value(Stream, Match, Text))
	{
		return false;
	}
	Name = FName(*Text);
	return true;
}

bool FParse::Bool(const TCHAR* Stream, const TCHAR* Match, bool& OnOff)
{
	FString Text;
	if (!FParse::Value(Stream, Match, Text))
	{
		return false;
	}
	OnOff = FCString::ToBool(*Text);
	return true;
}

bool FParse::Param(const TCHAR* Stream, const TCHAR* Param)
{
	if (Stream == nullptr || Param == nullptr || *Param == 0)
	{
		return false;
	}
	const int32 ParamLen = FCString::Strlen(Param);
	bool bInQuotes = false;
	for (const TCHAR* Cursor = Stream; *Cursor; ++Cursor)
	{
		if (*Cursor == TEXT('"'))
		{
			bInQuotes = !bInQuotes;
			continue;
		}
		if (bInQuotes || (*Cursor != TEXT('-') && *Cursor != TEXT('/')))
		{
			continue;
		}
		// The switch must be a word of its own: whitespace (or the start) before, whitespace (or the end) after.
		const bool bWordStart = (Cursor == Stream) || FChar::IsWhitespace(Cursor[-1]);
		if (bWordStart && FCString::Strnicmp(Cursor + 1, Param, ParamLen) == 0)
		{
			const TCHAR After = Cursor[1 + ParamLen];
			if (After == 0 || FChar::IsWhitespace(After))
			{
				return true;
			}
		}
	}
	return false;
}

bool FParse::Token(const TCHAR*& Str, FString& Arg, bool UseEscape)
{
	Arg.Reset();
	while (*Str && FChar::IsWhitespace(*Str))
	{
		++Str;
	}

	if (*Str == TEXT('"'))
	{
		++Str;
		while (*Str && *Str != TEXT('"'))
		{
			if (UseEscape && Str[0] == TEXT('\\') && Str[1] == TEXT('"'))
			{
				++Str;
			}
			Arg.AppendChar(*Str++);
		}
		if (*Str == TEXT('"'))
		{
			++Str;
		}
	}
	else
	{
		// An unquoted token may hold quoted parts (-Path="a b"); those keep their quotes and spaces.
		bool bInQuotes = false;
		while (*Str && (bInQuotes || !FChar::IsWhitespace(*Str)))
		{
			if (*Str == TEXT('"'))
			{
				bInQuotes = !bInQuotes;
			}
			else if (UseEscape && bInQuotes && Str[0] == TEXT('\\') && Str[1] == TEXT('"'))
			{
				Arg.AppendChar(*Str++);
			}
			Arg.AppendChar(*Str++);
		}
	}
	return !Arg.IsEmpty();
}

bool FParse::Token(const TCHAR*& Str, TCHAR* Result, int32 MaxLen, bool UseEscape)
{
	FString Arg;
	const bool bFound = Token(Str, Arg, UseEscape);
	if (MaxLen > 0)
	{
		FCString::Strncpy(Result, *Arg, MaxLen);
	}
	return bFound;
}

FString FParse::Token(const TCHAR*& Str, bool UseEscape)
{
	FString Arg;
	Token(Str, Arg, UseEscape);
	return Arg;
}

bool FParse::Command(const TCHAR** Stream, const TCHAR* Match, bool bParseMightTriggerExecution)
{
	const TCHAR* Cursor = *Stream;
	while (*Cursor && FChar::IsWhitespace(*Cursor))
	{
		++Cursor;
	}
	const int32 MatchLen = FCString::Strlen(Match);
	if (MatchLen == 0 || FCString::Strnicmp(Cursor, Match, MatchLen) != 0)
	{
		return false;
	}
	Cursor += MatchLen;
	if (FChar::IsAlnum(*Cursor) || *Cursor == TEXT('_'))
	{
		return false;
	}
	while (*Cursor && FChar::IsWhitespace(*Cursor))
	{
		++Cursor;
	}
	*Stream = Cursor;
	return true;
}

bool FParse::QuotedString(const TCHAR* Buffer, FString& Value, int32* OutNumCharsRead)
{
	if (OutNumCharsRead != nullptr)
	{
		*OutNumCharsRead = 0;
	}
	if (Buffer == nullptr || *Buffer != TEXT('"'))
	{
		return false;
	}
	const TCHAR* Cursor = Buffer + 1;
	FString Result;
	while (*Cursor && *Cursor != TEXT('"'))
	{
		if (*Cursor == TEXT('\\') && Cursor[1] != 0)
		{
			++Cursor;
			switch (*Cursor)
			{
				case TEXT('n'):
					Result.AppendChar(TEXT('\n'));
					break;
				case TEXT('r'):
					Result.AppendChar(TEXT('\r'));
					break;
				case TEXT('t'):
					Result.AppendChar(TEXT('\t'));
					break;
				default:
					// \", \\ and \' stand for the character itself; so does any other escaped character.
					Result.AppendChar(*Cursor);
					break;
			}
			++Cursor;
			continue;
		}
		Result.AppendChar(*Cursor++);
	}
	if (*Cursor != TEXT('"'))
	{
		return false;
	}
	++Cursor;
	Value = MoveTemp(Result);
	if (OutNumCharsRead != nullptr)
	{
		*OutNumCharsRead = (int32)(Cursor - Buffer);
	}
	return true;
}

uint64 FParse::HexNumber64(const TCHAR* HexString)
{
	if (HexString[0] == TEXT('0') && (HexString[1] == TEXT('x') || HexString[1] == TEXT('X')))
	{
		HexString += 2;
	}
	uint64 Result = 0;
	for (; FChar::IsHexDigit(*HexString); ++HexString)
	{
		const TCHAR Char = *HexString;
		const uint64 Digit =
			FChar::IsDigit(Char) ? (uint64)(Char - TEXT('0')) : (uint64)(FChar::ToLower(Char) - TEXT('a') + 10);
		Result = Result * 16 + Digit;
	}
	return Result;
}

uint32 FParse::HexNumber(const TCHAR* HexString)
{
	return (uint32)HexNumber64(HexString);
}
