// Copyright Orvane. All Rights Reserved.

#include "Misc/Guid.h"

#include "Misc/AssertionMacros.h"

#include <random>

namespace
{
	const char Base64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";

	/** The GUID's 16 bytes in memory order (each component little-endian), as the short form encodes them. */
	void ToBytes(const FGuid& Guid, uint8 Bytes[16])
	{
		const uint32 Parts[4] = {Guid.A, Guid.B, Guid.C, Guid.D};
		for (int32 Part = 0; Part < 4; ++Part)
		{
			for (int32 Byte = 0; Byte < 4; ++Byte)
			{
				Bytes[Part * 4 + Byte] = static_cast<uint8>(Parts[Part] >> (8 * Byte));
			}
		}
	}

	FString EncodeShort(const FGuid& Guid)
	{
		uint8 Bytes[18] = {};
		ToBytes(Guid, Bytes);
		FString Result;
		for (int32 Index = 0; Index < 16; Index += 3)
		{
			const uint32 Triple = (uint32(Bytes[Index]) << 16) | (uint32(Bytes[Index + 1]) << 8) | Bytes[Index + 2];
			const int32 Chars = Index + 3 <= 16 ? 4 : 2;
			for (int32 Char = 0; Char < Chars; ++Char)
			{
				Result.AppendChar(static_cast<TCHAR>(Base64Alphabet[(Triple >> (18 - 6 * Char)) & 0x3F]));
			}
		}
		return Result;
	}

	bool DecodeShort(const FString& Text, FGuid& OutGuid)
	{
		if (Text.Len() != 22)
		{
			return false;
		}
		uint8 Bytes[18] = {};
		int32 BitCount = 0;
		uint32 Accumulator = 0;
		int32 Written = 0;
		for (const TCHAR Char : Text)
		{
			const ANSICHAR* Found =
				Char < 0x80 ? FCStringAnsi::Strchr(Base64Alphabet, static_cast<ANSICHAR>(Char)) : nullptr;
			if (Found == nullptr || Char == 0)
			{
				return false;
			}
			Accumulator = (Accumulator << 6) | static_cast<uint32>(Found - Base64Alphabet);
			BitCount += 6;
			if (BitCount >= 8)
			{
				BitCount -= 8;
				Bytes[Written++] = static_cast<uint8>(Accumulator >> BitCount);
			}
		}
		uint32 Parts[4] = {};
		for (int32 Part = 0; Part < 4; ++Part)
		{
			for (int32 Byte = 0; Byte < 4; ++Byte)
			{
				Parts[Part] |= uint32(Bytes[Part * 4 + Byte]) << (8 * Byte);
			}
		}
		OutGuid = FGuid(Parts[0], Parts[1], Parts[2], Parts[3]);
		return true;
	}

	/** Reads Count hexadecimal digits at Text[Start]; fails on anything else. */
	bool ReadHex(const FString& Text, int32 Start, int32 Count, uint32& OutValue)
	{
		if (Start + Count > Text.Len())
		{
			return false;
		}
		uint32 Value = 0;
		for (int32 Index = Start; Index < Start + Count; ++Index)
		{
			const TCHAR Char = Text[Index];
			if (!FChar::IsHexDigit(Char))
			{
				return false;
			}
			const uint32 Digit = FChar::IsDigit(Char) ? uint32(Char - '0') : uint32(FChar::ToUpper(Char) - 'A' + 10);
			Value = (Value << 4) | Digit;
		}
		OutValue = Value;
		return true;
	}

	/** Checks that Text has the given separators at the given positions. */
	bool HasChars(const FString& Text, std::initializer_list<std::pair<int32, TCHAR>> Expected)
	{
		for (const auto& [Index, Char] : Expected)
		{
			if (Index >= Text.Len() || Text[Index] != Char)
			{
				return false;
			}
		}
		return true;
	}

	bool ParseHyphenated(const FString& Text, int32 Offset, FGuid& OutGuid)
	{
		uint32 A = 0, B1 = 0, B2 = 0, C1 = 0, C2 = 0, D = 0;
		if (!HasChars(Text, {{Offset + 8, '-'}, {Offset + 13, '-'}, {Offset + 18, '-'}, {Offset + 23, '-'}}) ||
			!ReadHex(Text, Offset, 8, A) || !ReadHex(Text, Offset + 9, 4, B1) || !ReadHex(Text, Offset + 14, 4, B2) ||
			!ReadHex(Text, Offset + 19, 4, C1) || !ReadHex(Text, Offset + 24, 4, C2) ||
			!ReadHex(Text, Offset + 28, 8, D))
		{
			return false;
		}
		OutGuid = FGuid(A, (B1 << 16) | B2, (C1 << 16) | C2, D);
		return true;
	}

	bool ParseHexValues(const FString& Text, FGuid& OutGuid)
	{
		// {0xAAAAAAAA,0xBBBB,0xBBBB,{0xCC,0xCC,0xCC,0xCC,0xDD,0xDD,0xDD,0xDD}}
		if (Text.Len() != 68 || !Text.StartsWith(TEXT("{0x"), ESearchCase::CaseSensitive) || !Text.EndsWith(TEXT("}}")))
		{
			return false;
		}
		uint32 A = 0, B1 = 0, B2 = 0;
		if (!ReadHex(Text, 3, 8, A) ||
			!HasChars(Text, {{11, ','}, {12, '0'}, {13, 'x'}, {18, ','}, {19, '0'}, {20, 'x'}, {25, ','}, {26, '{'}}) ||
			!ReadHex(Text, 14, 4, B1) || !ReadHex(Text, 21, 4, B2))
		{
			return false;
		}
		uint32 Bytes[8] = {};
		for (int32 Index = 0; Index < 8; ++Index)
		{
			const int32 Start = 27 + Index * 5;
			const TCHAR Separator = Index < 7 ? TCHAR(',') : TCHAR('}');
			if (!HasChars(Text, {{Start, '0'}, {Start + 1, 'x'}, {Start + 4, Separator}}) ||
				!ReadHex(Text, Start + 2, 2, Bytes[Index]))
			{
				return false;
			}
		}
		OutGuid = FGuid(A, (B1 << 16) | B2, (Bytes[0] << 24) | (Bytes[1] << 16) | (Bytes[2] << 8) | Bytes[3],
			(Bytes[4] << 24) | (Bytes[5] << 16) | (Bytes[6] << 8) | Bytes[7]);
		return true;
	}
} // namespace

FGuid::FGuid(const FString& InGuidStr)
{
	if (!Parse(InGuidStr, *this))
	{
		Invalidate();
	}
}

FGuid FGuid::NewGuid()
{
	thread_local std::mt19937_64 Generator(
		(static_cast<uint64>(std::random_device()()) << 32) ^ static_cast<uint64>(std::random_device()()));
	const uint64 High = Generator();
	const uint64 Low = Generator();
	FGuid Guid(static_cast<uint32>(High >> 32), static_cast<uint32>(High), static_cast<uint32>(Low >> 32),
		static_cast<uint32>(Low));
	// Version 4 (random) in the third group, RFC 4122 variant in the fourth.
	Guid.B = (Guid.B & 0xFFFF0FFFu) | 0x00004000u;
	Guid.C = (Guid.C & 0x3FFFFFFFu) | 0x80000000u;
	return Guid;
}

FString FGuid::ToString(EGuidFormats Format) const
{
	FString Result;
	AppendString(Result, Format);
	return Result;
}

void FGuid::AppendString(FString& Out, EGuidFormats Format) const
{
	switch (Format)
	{
		case EGuidFormats::Digits:
			Out += FString::Printf(TEXT("%08X%08X%08X%08X"), A, B, C, D);
			break;
		case EGuidFormats::DigitsLower:
			Out += FString::Printf(TEXT("%08x%08x%08x%08x"), A, B, C, D);
			break;
		case EGuidFormats::DigitsWithHyphens:
			Out +=
				FString::Printf(TEXT("%08X-%04X-%04X-%04X-%04X%08X"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
			break;
		case EGuidFormats::DigitsWithHyphensLower:
			Out +=
				FString::Printf(TEXT("%08x-%04x-%04x-%04x-%04x%08x"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
			break;
		case EGuidFormats::DigitsWithHyphensInBraces:
			Out +=
				FString::Printf(TEXT("{%08X-%04X-%04X-%04X-%04X%08X}"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
			break;
		case EGuidFormats::DigitsWithHyphensInParentheses:
			Out +=
				FString::Printf(TEXT("(%08X-%04X-%04X-%04X-%04X%08X)"), A, B >> 16, B & 0xFFFF, C >> 16, C & 0xFFFF, D);
			break;
		case EGuidFormats::HexValuesInBraces:
			Out += FString::Printf(
				TEXT("{0x%08X,0x%04X,0x%04X,{0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X,0x%02X}}"), A, B >> 16,
				B & 0xFFFF, C >> 24, (C >> 16) & 0xFF, (C >> 8) & 0xFF, C & 0xFF, D >> 24, (D >> 16) & 0xFF,
				(D >> 8) & 0xFF, D & 0xFF);
			break;
		case EGuidFormats::UniqueObjectGuid:
			Out += FString::Printf(TEXT("%08X-%08X-%08X-%08X"), A, B, C, D);
			break;
		case EGuidFormats::Short:
			Out += EncodeShort(*this);
			break;
		case EGuidFormats::Base36Encoded:
		default:
			UE_HEADLESS_UNIMPLEMENTED();
			break;
	}
}

bool FGuid::Parse(const FString& GuidString, FGuid& OutGuid)
{
	switch (GuidString.Len())
	{
		case 32:
			return ParseExact(GuidString, EGuidFormats::Digits, OutGuid);
		case 36:
			return ParseExact(GuidString, EGuidFormats::DigitsWithHyphens, OutGuid);
		case 38:
			return ParseExact(GuidString,
				GuidString.StartsWith(TEXT("{")) ? EGuidFormats::DigitsWithHyphensInBraces
												 : EGuidFormats::DigitsWithHyphensInParentheses,
				OutGuid);
		case 68:
			return ParseExact(GuidString, EGuidFormats::HexValuesInBraces, OutGuid);
		case 35:
			return ParseExact(GuidString, EGuidFormats::UniqueObjectGuid, OutGuid);
		case 22:
			return ParseExact(GuidString, EGuidFormats::Short, OutGuid);
		default:
			return false;
	}
}

bool FGuid::ParseExact(const FString& GuidString, EGuidFormats Format, FGuid& OutGuid)
{
	uint32 Parts[4] = {};
	switch (Format)
	{
		case EGuidFormats::Digits:
		case EGuidFormats::DigitsLower:
			if (GuidString.Len() != 32 || !ReadHex(GuidString, 0, 8, Parts[0]) ||
				!ReadHex(GuidString, 8, 8, Parts[1]) || !ReadHex(GuidString, 16, 8, Parts[2]) ||
				!ReadHex(GuidString, 24, 8, Parts[3]))
			{
				return false;
			}
			OutGuid = FGuid(Parts[0], Parts[1], Parts[2], Parts[3]);
			return true;
		case EGuidFormats::DigitsWithHyphens:
		case EGuidFormats::DigitsWithHyphensLower:
			return GuidString.Len() == 36 && ParseHyphenated(GuidString, 0, OutGuid);
		case EGuidFormats::DigitsWithHyphensInBraces:
			return GuidString.Len() == 38 && HasChars(GuidString, {{0, '{'}, {37, '}'}}) &&
				   ParseHyphenated(GuidString, 1, OutGuid);
		case EGuidFormats::DigitsWithHyphensInParentheses:
			return GuidString.Len() == 38 && HasChars(GuidString, {{0, '('}, {37, ')'}}) &&
				   ParseHyphenated(GuidString, 1, OutGuid);
		case EGuidFormats::HexValuesInBraces:
			return ParseHexValues(GuidString, OutGuid);
		case EGuidFormats::UniqueObjectGuid:
			if (GuidString.Len() != 35 || !HasChars(GuidString, {{8, '-'}, {17, '-'}, {26, '-'}}) ||
				!ReadHex(GuidString, 0, 8, Parts[0]) || !ReadHex(GuidString, 9, 8, Parts[1]) ||
				!ReadHex(GuidString, 18, 8, Parts[2]) || !ReadHex(GuidString, 27, 8, Parts[3]))
			{
				return false;
			}
			OutGuid = FGuid(Parts[0], Parts[1], Parts[2], Parts[3]);
			return true;
		case EGuidFormats::Short:
			return DecodeShort(GuidString, OutGuid);
		case EGuidFormats::Base36Encoded:
		default:
			UE_HEADLESS_UNIMPLEMENTED();
			return false;
	}
}

uint32& FGuid::operator[](int32 Index)
{
	checkf(Index >= 0 && Index < 4, TEXT("FGuid component index %i is out of range"), Index);
	return Index == 0 ? A : (Index == 1 ? B : (Index == 2 ? C : D));
}

const uint32& FGuid::operator[](int32 Index) const
{
	checkf(Index >= 0 && Index < 4, TEXT("FGuid component index %i is out of range"), Index);
	return Index == 0 ? A : (Index == 1 ? B : (Index == 2 ? C : D));
}

FString LexToString(const FGuid& Value)
{
	return Value.ToString();
}

void LexFromString(FGuid& Result, const TCHAR* String)
{
	FGuid::Parse(FString(String), Result);
}
