// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/**
 * Character classification and case mapping for one character type. Wide characters know the ASCII,
 * Latin-1, Greek and Cyrillic letters and the Unicode space and line-break characters; narrow ones
 * are treated as ASCII.
 */
template <typename CharType>
struct TChar
{
	static constexpr bool IsWide = sizeof(CharType) > 1;

	/** The character as an unsigned code point, so narrow bytes above 0x7F never become negative. */
	static constexpr uint32 ToCode(CharType Char)
	{
		if constexpr (IsWide)
		{
			return static_cast<uint32>(Char);
		}
		else
		{
			return static_cast<uint8>(Char);
		}
	}

	static constexpr bool IsUpper(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code >= 'A' && Code <= 'Z')
		{
			return true;
		}
		if constexpr (IsWide)
		{
			return (Code >= 0xC0 && Code <= 0xDE && Code != 0xD7) ||
				   (Code >= 0x391 && Code <= 0x3A9 && Code != 0x3A2) || (Code >= 0x410 && Code <= 0x42F) ||
				   (Code >= 0x400 && Code <= 0x40F);
		}
		return false;
	}

	static constexpr bool IsLower(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code >= 'a' && Code <= 'z')
		{
			return true;
		}
		if constexpr (IsWide)
		{
			return (Code >= 0xDF && Code <= 0xFF && Code != 0xF7) || (Code >= 0x3B1 && Code <= 0x3C9) ||
				   (Code >= 0x430 && Code <= 0x44F) || (Code >= 0x450 && Code <= 0x45F);
		}
		return false;
	}

	static constexpr CharType ToUpper(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code >= 'a' && Code <= 'z')
		{
			return static_cast<CharType>(Code - ('a' - 'A'));
		}
		if constexpr (IsWide)
		{
			// 0xDF (sharp s) and 0xFF (y with diaeresis) have no single upper-case partner in Latin-1.
			if ((Code >= 0xE0 && Code <= 0xFE && Code != 0xF7) || (Code >= 0x3B1 && Code <= 0x3C9 && Code != 0x3C2) ||
				(Code >= 0x430 && Code <= 0x44F))
			{
				return static_cast<CharType>(Code - 0x20);
			}
			if (Code >= 0x450 && Code <= 0x45F)
			{
				return static_cast<CharType>(Code - 0x50);
			}
		}
		return Char;
	}

	static constexpr CharType ToLower(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code >= 'A' && Code <= 'Z')
		{
			return static_cast<CharType>(Code + ('a' - 'A'));
		}
		if constexpr (IsWide)
		{
			if ((Code >= 0xC0 && Code <= 0xDE && Code != 0xD7) || (Code >= 0x391 && Code <= 0x3A9 && Code != 0x3A2) ||
				(Code >= 0x410 && Code <= 0x42F))
			{
				return static_cast<CharType>(Code + 0x20);
			}
			if (Code >= 0x400 && Code <= 0x40F)
			{
				return static_cast<CharType>(Code + 0x50);
			}
		}
		return Char;
	}

	static constexpr bool IsAlpha(CharType Char) { return IsUpper(Char) || IsLower(Char); }

	static constexpr bool IsDigit(CharType Char) { return Char >= '0' && Char <= '9'; }

	static constexpr bool IsAlnum(CharType Char) { return IsAlpha(Char) || IsDigit(Char); }

	static constexpr bool IsOctDigit(CharType Char) { return Char >= '0' && Char <= '7'; }

	static constexpr bool IsHexDigit(CharType Char)
	{
		return IsDigit(Char) || (Char >= 'a' && Char <= 'f') || (Char >= 'A' && Char <= 'F');
	}

	static constexpr bool IsUnderscore(CharType Char) { return Char == '_'; }

	static constexpr bool IsControl(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		return Code < 0x20 || Code == 0x7F;
	}

	static constexpr bool IsPrint(CharType Char) { return !IsControl(Char); }

	static constexpr bool IsGraph(CharType Char) { return IsPrint(Char) && !IsWhitespace(Char); }

	static constexpr bool IsPunct(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		return (Code >= 0x21 && Code <= 0x2F) || (Code >= 0x3A && Code <= 0x40) || (Code >= 0x5B && Code <= 0x60) ||
			   (Code >= 0x7B && Code <= 0x7E);
	}

	static constexpr bool IsWhitespace(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code == ' ' || (Code >= 0x09 && Code <= 0x0D))
		{
			return true;
		}
		if constexpr (IsWide)
		{
			return Code == 0x85 || Code == 0xA0 || Code == 0x1680 || (Code >= 0x2000 && Code <= 0x200A) ||
				   Code == 0x2028 || Code == 0x2029 || Code == 0x202F || Code == 0x205F || Code == 0x3000;
		}
		return false;
	}

	/** Line breaks in the Unicode sense: LF, VT, FF, CR, NEL, line and paragraph separators. */
	static constexpr bool IsLinebreak(CharType Char)
	{
		const uint32 Code = ToCode(Char);
		if (Code >= 0x0A && Code <= 0x0D)
		{
			return true;
		}
		if constexpr (IsWide)
		{
			return Code == 0x85 || Code == 0x2028 || Code == 0x2029;
		}
		return false;
	}

	/** The value of a decimal digit character; callers check IsDigit first. */
	static constexpr int32 ConvertCharDigitToInt(CharType Char) { return static_cast<int32>(Char) - '0'; }
};

typedef TChar<TCHAR> FChar;
typedef TChar<WIDECHAR> FCharWide;
typedef TChar<ANSICHAR> FCharAnsi;
