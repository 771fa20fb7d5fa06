// Copyright Orvane. All Rights Reserved.

#include "Containers/UnrealString.h"

#include <cerrno>
#include <cstdlib>

FString LexToString(int8 Value)
{
	return FString::Printf(TEXT("%d"), Value);
}

FString LexToString(uint8 Value)
{
	return FString::Printf(TEXT("%u"), Value);
}

FString LexToString(int16 Value)
{
	return FString::Printf(TEXT("%d"), Value);
}

FString LexToString(uint16 Value)
{
	return FString::Printf(TEXT("%u"), Value);
}

FString LexToString(int32 Value)
{
	return FString::Printf(TEXT("%d"), Value);
}

FString LexToString(uint32 Value)
{
	return FString::Printf(TEXT("%u"), Value);
}

FString LexToString(int64 Value)
{
	return FString::Printf(TEXT("%lld"), Value);
}

FString LexToString(uint64 Value)
{
	return FString::Printf(TEXT("%llu"), Value);
}

FString LexToString(long long Value)
{
	return FString::Printf(TEXT("%lld"), Value);
}

FString LexToString(unsigned long long Value)
{
	return FString::Printf(TEXT("%llu"), Value);
}

FString LexToString(float Value)
{
	return FString::SanitizeFloat(Value);
}

FString LexToString(double Value)
{
	return FString::SanitizeFloat(Value);
}

FString LexToString(bool Value)
{
	return Value ? FString(TEXT("true")) : FString(TEXT("false"));
}

FString LexToString(const TCHAR* Value)
{
	return FString(Value);
}

FString LexToString(const FString& Value)
{
	return Value;
}

FString LexToString(FString&& Value)
{
	return MoveTemp(Value);
}

void LexFromString(int8& OutValue, const TCHAR* Buffer)
{
	OutValue = static_cast<int8>(FCString::Atoi(Buffer));
}

void LexFromString(uint8& OutValue, const TCHAR* Buffer)
{
	OutValue = static_cast<uint8>(FCString::Atoi(Buffer));
}

void LexFromString(int16& OutValue, const TCHAR* Buffer)
{
	OutValue = static_cast<int16>(FCString::Atoi(Buffer));
}

void LexFromString(uint16& OutValue, const TCHAR* Buffer)
{
	OutValue = static_cast<uint16>(FCString::Atoi(Buffer));
}

void LexFromString(int32& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::Atoi(Buffer);
}

void LexFromString(uint32& OutValue, const TCHAR* Buffer)
{
	OutValue = static_cast<uint32>(FCString::Strtoui64(Buffer, nullptr, 10));
}

void LexFromString(int64& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::Atoi64(Buffer);
}

void LexFromString(uint64& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::Strtoui64(Buffer, nullptr, 10);
}

void LexFromString(float& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::Atof(Buffer);
}

void LexFromString(double& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::Atod(Buffer);
}

void LexFromString(bool& OutValue, const TCHAR* Buffer)
{
	OutValue = FCString::ToBool(Buffer);
}

void LexFromString(FString& OutValue, const TCHAR* Buffer)
{
	OutValue = Buffer;
}

namespace
{
	/** True when Buffer holds exactly one number in the usual decimal or exponent notation. */
	bool ParseWholeDouble(const TCHAR* Buffer, double& OutValue)
	{
		if (Buffer == nullptr || *Buffer == 0)
		{
			return false;
		}
		const FString Trimmed = FString(Buffer).TrimStartAndEnd();
		char Narrow[128];
		int32 Length = 0;
		for (const TCHAR Char : Trimmed)
		{
			if (Char >= 0x80 || Length >= static_cast<int32>(sizeof(Narrow)) - 1)
			{
				return false;
			}
			Narrow[Length++] = static_cast<char>(Char);
		}
		Narrow[Length] = 0;
		if (Length == 0)
		{
			return false;
		}
		char* End = nullptr;
		errno = 0;
		OutValue = std::strtod(Narrow, &End);
		return End == Narrow + Length && errno != ERANGE;
	}

	bool ParseWholeInteger(const TCHAR* Buffer, int64& OutValue)
	{
		if (Buffer == nullptr)
		{
			return false;
		}
		const FString Trimmed = FString(Buffer).TrimStartAndEnd();
		if (Trimmed.IsEmpty())
		{
			return false;
		}
		TCHAR* End = nullptr;
		OutValue = FCString::Strtoi64(*Trimmed, &End, 10);
		return End == *Trimmed + Trimmed.Len();
	}
} // namespace

bool LexTryParseString(int32& OutValue, const TCHAR* Buffer)
{
	int64 Value = 0;
	if (!ParseWholeInteger(Buffer, Value) || Value < MIN_int32 || Value > MAX_int32)
	{
		return false;
	}
	OutValue = static_cast<int32>(Value);
	return true;
}

bool LexTryParseString(int64& OutValue, const TCHAR* Buffer)
{
	int64 Value = 0;
	if (!ParseWholeInteger(Buffer, Value))
	{
		return false;
	}
	OutValue = Value;
	return true;
}

bool LexTryParseString(float& OutValue, const TCHAR* Buffer)
{
	double Value = 0.0;
	if (!ParseWholeDouble(Buffer, Value))
	{
		return false;
	}
	OutValue = static_cast<float>(Value);
	return true;
}

bool LexTryParseString(double& OutValue, const TCHAR* Buffer)
{
	double Value = 0.0;
	if (!ParseWholeDouble(Buffer, Value))
	{
		return false;
	}
	OutValue = Value;
	return true;
}

bool LexTryParseString(bool& OutValue, const TCHAR* Buffer)
{
	if (Buffer == nullptr)
	{
		return false;
	}
	static const TCHAR* const TrueWords[] = {TEXT("true"), TEXT("yes"), TEXT("on"), TEXT("1")};
	static const TCHAR* const FalseWords[] = {TEXT("false"), TEXT("no"), TEXT("off"), TEXT("0")};
	for (const TCHAR* Word : TrueWords)
	{
		if (FCString::Stricmp(Buffer, Word) == 0)
		{
			OutValue = true;
			return true;
		}
	}
	for (const TCHAR* Word : FalseWords)
	{
		if (FCString::Stricmp(Buffer, Word) == 0)
		{
			OutValue = false;
			return true;
		}
	}
	return false;
}
