// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/Char.h"

#include <cstdlib>

#define MAX_SPRINTF 1024

/** Determines case sensitivity options for string comparisons. */
namespace ESearchCase
{
	enum Type
	{
		/** Case sensitive. Upper/lower casing must match for strings to be considered equal. */
		CaseSensitive,

		/** Ignore case. Upper/lower casing does not matter when making a comparison. */
		IgnoreCase,
	};
}

/** Determines search direction for string operations. */
namespace ESearchDir
{
	enum Type
	{
		/** Search from the start, moving forward through the string. */
		FromStart,

		/** Search from the end, moving backward through the string. */
		FromEnd,
	};
}

/** Operations on null-terminated strings of one character type. */
template <typename T>
struct TCString
{
	typedef T CharType;

	static int32 Strlen(const CharType* String)
	{
		if (String == nullptr)
		{
			return 0;
		}
		const CharType* End = String;
		while (*End)
		{
			++End;
		}
		return static_cast<int32>(End - String);
	}

	static int32 Strcmp(const CharType* String1, const CharType* String2)
	{
		return Strncmp(String1, String2, MAX_int32);
	}

	static int32 Strncmp(const CharType* String1, const CharType* String2, SIZE_T Count)
	{
		for (; Count > 0; --Count, ++String1, ++String2)
		{
			const uint32 A = TChar<CharType>::ToCode(*String1);
			const uint32 B = TChar<CharType>::ToCode(*String2);
			if (A != B)
			{
				return A < B ? -1 : 1;
			}
			if (A == 0)
			{
				break;
			}
		}
		return 0;
	}

	static int32 Stricmp(const CharType* String1, const CharType* String2)
	{
		return Strnicmp(String1, String2, MAX_int32);
	}

	/** Compares case-insensitively; characters are folded to upper case, as the engine does. */
	static int32 Strnicmp(const CharType* String1, const CharType* String2, SIZE_T Count)
	{
		for (; Count > 0; --Count, ++String1, ++String2)
		{
			const uint32 A = TChar<CharType>::ToCode(TChar<CharType>::ToUpper(*String1));
			const uint32 B = TChar<CharType>::ToCode(TChar<CharType>::ToUpper(*String2));
			if (A != B)
			{
				return A < B ? -1 : 1;
			}
			if (A == 0)
			{
				break;
			}
		}
		return 0;
	}

	static const CharType* Strchr(const CharType* String, CharType Char)
	{
		for (;; ++String)
		{
			if (*String == Char)
			{
				return String;
			}
			if (*String == 0)
			{
				return nullptr;
			}
		}
	}

	static CharType* Strchr(CharType* String, CharType Char)
	{
		return const_cast<CharType*>(Strchr(const_cast<const CharType*>(String), Char));
	}

	static const CharType* Strrchr(const CharType* String, CharType Char)
	{
		const CharType* Last = nullptr;
		for (;; ++String)
		{
			if (*String == Char)
			{
				Last = String;
			}
			if (*String == 0)
			{
				return Last;
			}
		}
	}

	static CharType* Strrchr(CharType* String, CharType Char)
	{
		return const_cast<CharType*>(Strrchr(const_cast<const CharType*>(String), Char));
	}

	/** Finds Find in String, case-sensitively; an empty Find matches at the start. */
	static const CharType* Strstr(const CharType* String, const CharType* Find)
	{
		const int32 FindLen = Strlen(Find);
		for (; *String; ++String)
		{
			if (Strncmp(String, Find, FindLen) == 0)
			{
				return String;
			}
		}
		return FindLen == 0 ? String : nullptr;
	}

	static CharType* Strstr(CharType* String, const CharType* Find)
	{
		return const_cast<CharType*>(Strstr(const_cast<const CharType*>(String), Find));
	}

	/** Finds Find in String, ignoring case; an empty Find matches at the start. */
	static const CharType* Stristr(const CharType* String, const CharType* Find)
	{
		const int32 FindLen = Strlen(Find);
		for (; *String; ++String)
		{
			if (Strnicmp(String, Find, FindLen) == 0)
			{
				return String;
			}
		}
		return FindLen == 0 ? String : nullptr;
	}

	static CharType* Stristr(CharType* String, const CharType* Find)
	{
		return const_cast<CharType*>(Stristr(const_cast<const CharType*>(String), Find));
	}

	/** Copies at most MaxLen - 1 characters and always terminates the destination. */
	static CharType* Strncpy(CharType* Dest, const CharType* Src, int32 MaxLen)
	{
		if (MaxLen <= 0)
		{
			return Dest;
		}
		int32 Index = 0;
		for (; Index < MaxLen - 1 && Src[Index]; ++Index)
		{
			Dest[Index] = Src[Index];
		}
		Dest[Index] = 0;
		return Dest;
	}

	/** Appends Src to the string in Dest, whose buffer holds DestCount characters; the result is truncated to fit. */
	static CharType* Strncat(CharType* Dest, const CharType* Src, int32 DestCount)
	{
		const int32 DestLen = Strlen(Dest);
		if (DestLen < DestCount)
		{
			Strncpy(Dest + DestLen, Src, DestCount - DestLen);
		}
		return Dest;
	}

	/**
	 * Parses an integer the way strtoll does: leading whitespace, an optional sign, and for base 16 (or base 0)
	 * an optional 0x prefix; base 0 picks 8 for a leading 0. Saturates on overflow.
	 */
	static int64 Strtoi64(const CharType* Start, CharType** End, int32 Base)
	{
		bool bNegative = false;
		const uint64 Magnitude = ParseUnsigned(Start, End, Base, bNegative);
		if (bNegative)
		{
			return Magnitude > static_cast<uint64>(MAX_int64) ? MIN_int64 : -static_cast<int64>(Magnitude);
		}
		return Magnitude > static_cast<uint64>(MAX_int64) ? MAX_int64 : static_cast<int64>(Magnitude);
	}

	static uint64 Strtoui64(const CharType* Start, CharType** End, int32 Base)
	{
		bool bNegative = false;
		const uint64 Magnitude = ParseUnsigned(Start, End, Base, bNegative);
		return bNegative ? static_cast<uint64>(0) - Magnitude : Magnitude;
	}

	static int32 Strtoi(const CharType* Start, CharType** End, int32 Base)
	{
		return SaturateToInt32(Strtoi64(Start, End, Base));
	}

	static int32 Atoi(const CharType* String) { return SaturateToInt32(Strtoi64(String, nullptr, 10)); }

	static int64 Atoi64(const CharType* String) { return Strtoi64(String, nullptr, 10); }

	static float Atof(const CharType* String) { return static_cast<float>(Atod(String)); }

	/** Parses a floating-point number the way strtod does in the C locale; text that is not a number gives 0. */
	static double Atod(const CharType* String)
	{
		if (String == nullptr)
		{
			return 0.0;
		}
		// Numbers are ASCII; anything else ends the number, so a narrow copy of the leading run is enough.
		ANSICHAR Buffer[128];
		int32 Length = 0;
		for (; String[Length] && Length < static_cast<int32>(sizeof(Buffer)) - 1; ++Length)
		{
			const uint32 Code = TChar<CharType>::ToCode(String[Length]);
			Buffer[Length] = Code < 0x80 ? static_cast<ANSICHAR>(Code) : '\0';
			if (Code >= 0x80)
			{
				break;
			}
		}
		Buffer[Length] = '\0';
		return std::strtod(Buffer, nullptr);
	}

	/** True for "True", "Yes" and "On" (any case), false for "False", "No" and "Off"; otherwise Atoi != 0. */
	static bool ToBool(const CharType* String)
	{
		if (String == nullptr)
		{
			return false;
		}
		static constexpr CharType True[] = {'t', 'r', 'u', 'e', 0};
		static constexpr CharType Yes[] = {'y', 'e', 's', 0};
		static constexpr CharType On[] = {'o', 'n', 0};
		static constexpr CharType False[] = {'f', 'a', 'l', 's', 'e', 0};
		static constexpr CharType No[] = {'n', 'o', 0};
		static constexpr CharType Off[] = {'o', 'f', 'f', 0};
		if (Stricmp(String, True) == 0 || Stricmp(String, Yes) == 0 || Stricmp(String, On) == 0)
		{
			return true;
		}
		if (Stricmp(String, False) == 0 || Stricmp(String, No) == 0 || Stricmp(String, Off) == 0)
		{
			return false;
		}
		return Atoi(String) != 0;
	}

	/**
	 * True when the string is an optional sign followed by digits with at most one decimal point. Like the
	 * engine, this does not reject an empty string; FString::IsNumeric does.
	 */
	static bool IsNumeric(const CharType* String)
	{
		if (*String == '-' || *String == '+')
		{
			++String;
		}
		bool bHasDot = false;
		for (; *String; ++String)
		{
			if (*String == '.')
			{
				if (bHasDot)
				{
					return false;
				}
				bHasDot = true;
			}
			else if (!TChar<CharType>::IsDigit(*String))
			{
				return false;
			}
		}
		return true;
	}

	/** Skips leading whitespace. */
	static const CharType* Spc(const CharType* String)
	{
		while (*String && TChar<CharType>::IsWhitespace(*String))
		{
			++String;
		}
		return String;
	}

private:
	static int32 SaturateToInt32(int64 Value)
	{
		return Value > MAX_int32 ? MAX_int32 : (Value < MIN_int32 ? MIN_int32 : static_cast<int32>(Value));
	}

	static int32 DigitValue(CharType Char)
	{
		const uint32 Code = TChar<CharType>::ToCode(Char);
		if (Code >= '0' && Code <= '9')
		{
			return static_cast<int32>(Code - '0');
		}
		if (Code >= 'a' && Code <= 'z')
		{
			return static_cast<int32>(Code - 'a' + 10);
		}
		if (Code >= 'A' && Code <= 'Z')
		{
			return static_cast<int32>(Code - 'A' + 10);
		}
		return 99;
	}

	static uint64 ParseUnsigned(const CharType* Start, CharType** End, int32 Base, bool& bOutNegative)
	{
		bOutNegative = false;
		if (Start == nullptr)
		{
			if (End)
			{
				*End = nullptr;
			}
			return 0;
		}
		const CharType* Cursor = Spc(Start);
		if (*Cursor == '-' || *Cursor == '+')
		{
			bOutNegative = *Cursor == '-';
			++Cursor;
		}
		if ((Base == 0 || Base == 16) && Cursor[0] == '0' && (Cursor[1] == 'x' || Cursor[1] == 'X') &&
			DigitValue(Cursor[2]) < 16)
		{
			Cursor += 2;
			Base = 16;
		}
		else if (Base == 0)
		{
			Base = Cursor[0] == '0' ? 8 : 10;
		}
		uint64 Value = 0;
		bool bOverflow = false;
		const CharType* DigitsStart = Cursor;
		for (int32 Digit = DigitValue(*Cursor); Digit < Base; Digit = DigitValue(*++Cursor))
		{
			if (Value > (MAX_uint64 - static_cast<uint64>(Digit)) / static_cast<uint64>(Base))
			{
				bOverflow = true;
			}
			Value = Value * static_cast<uint64>(Base) + static_cast<uint64>(Digit);
		}
		if (End)
		{
			// No digits means no conversion: strtoll reports the start of the input in that case.
			*End = const_cast<CharType*>(Cursor == DigitsStart ? Start : Cursor);
		}
		return bOverflow ? MAX_uint64 : Value;
	}
};

typedef TCString<TCHAR> FCString;
typedef TCString<ANSICHAR> FCStringAnsi;
typedef TCString<WIDECHAR> FCStringWide;
typedef TCString<UTF8CHAR> FCStringUtf8;
