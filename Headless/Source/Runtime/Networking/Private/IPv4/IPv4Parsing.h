// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Strict readers of the decimal numbers in address and endpoint text. */
namespace IPv4Parsing
{
	/**
	 * Reads a decimal number of 1 to MaxDigits digits from Text[Index] on, no greater than MaxValue.
	 * Advances Index past the digits. Returns false if there are no digits, too many, or the value is too big.
	 */
	inline bool ReadDecimal(
		const TCHAR* Text, int32 Len, int32& Index, int32 MaxDigits, uint32 MaxValue, uint32& OutValue)
	{
		uint32 Value = 0;
		int32 Digits = 0;
		while (Index < Len && Text[Index] >= TEXT('0') && Text[Index] <= TEXT('9'))
		{
			if (++Digits > MaxDigits)
			{
				return false;
			}
			Value = Value * 10 + static_cast<uint32>(Text[Index] - TEXT('0'));
			++Index;
		}
		if (Digits == 0 || Value > MaxValue)
		{
			return false;
		}
		OutValue = Value;
		return true;
	}

	/** Reads exactly "A.B.C.D" (each number 0 to 255, one to three digits) spanning all of Text. */
	inline bool ReadAddress(const TCHAR* Text, int32 Len, uint32& OutValue)
	{
		uint32 Value = 0;
		int32 Index = 0;
		for (int32 Part = 0; Part < 4; ++Part)
		{
			if (Part > 0)
			{
				if (Index >= Len || Text[Index] != TEXT('.'))
				{
					return false;
				}
				++Index;
			}
			uint32 Octet = 0;
			if (!ReadDecimal(Text, Len, Index, 3, 255, Octet))
			{
				return false;
			}
			Value = (Value << 8) | Octet;
		}
		if (Index != Len)
		{
			return false;
		}
		OutValue = Value;
		return true;
	}

	/** Reads a port (0 to 65535, one to five digits) spanning all of Text. */
	inline bool ReadPort(const TCHAR* Text, int32 Len, uint16& OutPort)
	{
		int32 Index = 0;
		uint32 Value = 0;
		if (!ReadDecimal(Text, Len, Index, 5, 65535, Value) || Index != Len)
		{
			return false;
		}
		OutPort = static_cast<uint16>(Value);
		return true;
	}
} // namespace IPv4Parsing
