// Copyright Orvane. All Rights Reserved.

#include "JsonNumbers.h"

#include "Policies/JsonPrintPolicy.h"

#include <charconv>
#include <string>

namespace UE::Json::Private
{
	namespace
	{
		/** Number text is ASCII; anything else makes it unreadable. */
		bool ToAscii(FStringView Text, std::string& Out)
		{
			Out.resize(static_cast<size_t>(Text.Len()));
			for (int32 Index = 0; Index < Text.Len(); ++Index)
			{
				const TCHAR Char = Text.GetData()[Index];
				if (Char > 0x7F)
				{
					return false;
				}
				Out[static_cast<size_t>(Index)] = static_cast<char>(Char);
			}
			return !Out.empty();
		}

		template <typename T>
		bool FromChars(FStringView Text, T& OutValue)
		{
			std::string Ascii;
			if (!ToAscii(Text, Ascii))
			{
				return false;
			}
			// from_chars takes no leading '+', which Json does not allow either.
			const char* const End = Ascii.data() + Ascii.size();
			T Value{};
			const std::from_chars_result Result = std::from_chars(Ascii.data(), End, Value);
			if (Result.ec != std::errc() || Result.ptr != End)
			{
				return false;
			}
			OutValue = Value;
			return true;
		}
	} // namespace

	bool ParseNumberText(FStringView Text, double& OutValue)
	{
		return FromChars(Text, OutValue);
	}

	bool ParseNumberText(FStringView Text, float& OutValue)
	{
		return FromChars(Text, OutValue);
	}

	bool ParseIntegerText(FStringView Text, int64& OutValue)
	{
		return FromChars(Text, OutValue);
	}

	bool ParseIntegerText(FStringView Text, uint64& OutValue)
	{
		return FromChars(Text, OutValue);
	}

	FString NumberToString(double Value)
	{
		ANSICHAR Buffer[32];
		const int32 Length = FormatNumber(Value, Buffer);
		return FString(Length, Buffer);
	}

	int32 FormatNumber(double Value, ANSICHAR (&Buffer)[32])
	{
		const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
		return Result.ec == std::errc() ? static_cast<int32>(Result.ptr - Buffer) : 0;
	}

	int32 FormatNumber(float Value, ANSICHAR (&Buffer)[32])
	{
		const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
		return Result.ec == std::errc() ? static_cast<int32>(Result.ptr - Buffer) : 0;
	}
} // namespace UE::Json::Private
