// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/CString.h"

#include <type_traits>

namespace UE::Core::Private
{
	/**
	 * Converts SourceLen code units and writes the result to Dest, which must hold at least
	 * GetConvertedLengthBound(SourceLen) units. Returns the number of units written (no terminator is added).
	 * Malformed input (lone surrogates, invalid UTF-8) becomes U+FFFD; characters ANSI cannot hold become '?'.
	 */
	CORE_API int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, UTF8CHAR* Dest);
	CORE_API int32 ConvertString(const UTF8CHAR* Source, int32 SourceLen, UTF16CHAR* Dest);
	CORE_API int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, ANSICHAR* Dest);
	CORE_API int32 ConvertString(const ANSICHAR* Source, int32 SourceLen, UTF16CHAR* Dest);
	CORE_API int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, UTF32CHAR* Dest);
	CORE_API int32 ConvertString(const UTF32CHAR* Source, int32 SourceLen, UTF16CHAR* Dest);

	/** An upper bound of the converted length of SourceLen units of FromType. */
	template <typename FromType, typename ToType>
	constexpr int32 GetConvertedLengthBound(int32 SourceLen)
	{
		if constexpr (sizeof(ToType) == 1 && sizeof(FromType) == 2)
		{
			// A UTF-16 unit is at most 3 UTF-8 bytes; a surrogate pair (2 units) is 4.
			return SourceLen * 3;
		}
		else if constexpr (sizeof(ToType) == 1 && sizeof(FromType) == 4)
		{
			return SourceLen * 4;
		}
		else
		{
			// Decoding never produces more units than it consumes; UTF-32 to UTF-16 may double.
			return sizeof(FromType) == 4 && sizeof(ToType) == 2 ? SourceLen * 2 : SourceLen;
		}
	}

	template <typename FromType, typename ToType>
	int32 ConvertBetween(const FromType* Source, int32 SourceLen, ToType* Dest)
	{
		constexpr bool bSameEncoding =
			std::is_same_v<FromType, ToType> ||
			(sizeof(FromType) == 1 && sizeof(ToType) == 1 && std::is_same_v<ToType, UTF8CHAR>) ||
			(std::is_same_v<FromType, UTF8CHAR> && std::is_same_v<ToType, ANSICHAR>);
		if constexpr (bSameEncoding)
		{
			// ANSI text is taken to be UTF-8, so moving bytes between the two is a copy.
			for (int32 Index = 0; Index < SourceLen; ++Index)
			{
				Dest[Index] = static_cast<ToType>(Source[Index]);
			}
			return SourceLen;
		}
		else if constexpr (sizeof(FromType) == 1 && sizeof(ToType) == 4)
		{
			static_assert(sizeof(FromType) == 0, "Convert through TCHAR.");
			return 0;
		}
		else if constexpr (sizeof(FromType) == 4 && sizeof(ToType) == 1)
		{
			static_assert(sizeof(FromType) == 0, "Convert through TCHAR.");
			return 0;
		}
		else
		{
			using SourceUnit =
				std::conditional_t<std::is_same_v<FromType, ANSICHAR> || std::is_same_v<FromType, UTF8CHAR>, FromType,
					std::conditional_t<sizeof(FromType) == 2, UTF16CHAR, UTF32CHAR>>;
			using DestUnit = std::conditional_t<std::is_same_v<ToType, ANSICHAR> || std::is_same_v<ToType, UTF8CHAR>,
				ToType, std::conditional_t<sizeof(ToType) == 2, UTF16CHAR, UTF32CHAR>>;
			return ConvertString(
				reinterpret_cast<const SourceUnit*>(Source), SourceLen, reinterpret_cast<DestUnit*>(Dest));
		}
	}
} // namespace UE::Core::Private

/**
 * Holds a converted copy of a string for as long as the object lives: short strings stay inline, longer
 * ones go to the heap. A null source gives a null Get(), as in the engine.
 */
template <typename FromType, typename ToType>
class TStringConversion
{
public:
	using FromCharType = FromType;
	using ToCharType = ToType;

	explicit TStringConversion(const FromType* Source)
		: TStringConversion(Source, Source ? TCString<FromType>::Strlen(Source) : 0)
	{
	}

	/** Lets UTF-8 conversions take the plain char strings the operating system uses. */
	template <typename OtherType>
	requires(std::is_same_v<FromType, UTF8CHAR>&& std::is_same_v<OtherType, ANSICHAR>) explicit TStringConversion(
		const OtherType* Source)
		: TStringConversion(reinterpret_cast<const UTF8CHAR*>(Source))
	{
	}

	template <typename OtherType>
	requires(std::is_same_v<FromType, UTF8CHAR>&& std::is_same_v<OtherType, ANSICHAR>)
		TStringConversion(const OtherType* Source, int32 SourceLen)
		: TStringConversion(reinterpret_cast<const UTF8CHAR*>(Source), SourceLen)
	{
	}

	TStringConversion(const FromType* Source, int32 SourceLen)
	{
		if (Source == nullptr)
		{
			return;
		}
		const int32 Bound = UE::Core::Private::GetConvertedLengthBound<FromType, ToType>(SourceLen);
		Buffer = Bound < InlineSize ? Inline : new ToType[Bound + 1];
		ConvertedLength = UE::Core::Private::ConvertBetween(Source, SourceLen, Buffer);
		Buffer[ConvertedLength] = 0;
	}

	~TStringConversion()
	{
		if (Buffer != Inline)
		{
			delete[] Buffer;
		}
	}

	TStringConversion(const TStringConversion&) = delete;
	TStringConversion& operator=(const TStringConversion&) = delete;

	/** The converted, null-terminated string; valid while this object lives. */
	const ToType* Get() const { return Buffer; }

	/** The length of the converted string in code units, excluding the terminator. */
	int32 Length() const { return ConvertedLength; }

private:
	static constexpr int32 InlineSize = 128;

	ToType Inline[InlineSize];
	ToType* Buffer = nullptr;
	int32 ConvertedLength = 0;
};

using FTCHARToUTF8 = TStringConversion<TCHAR, UTF8CHAR>;
using FUTF8ToTCHAR = TStringConversion<UTF8CHAR, TCHAR>;
using FTCHARToUTF16 = TStringConversion<TCHAR, UTF16CHAR>;
using FUTF16ToTCHAR = TStringConversion<UTF16CHAR, TCHAR>;
using FTCHARToUTF32 = TStringConversion<TCHAR, UTF32CHAR>;
using FUTF32ToTCHAR = TStringConversion<UTF32CHAR, TCHAR>;

/** Converts a string to another character type: StringCast<ANSICHAR>(TEXT("x")).Get(). */
template <typename ToType, typename FromType>
requires(!std::is_same_v<FromType, void>) TStringConversion<FromType, ToType> StringCast(const FromType* Str)
{
	return TStringConversion<FromType, ToType>(Str);
}

template <typename ToType, typename FromType>
TStringConversion<FromType, ToType> StringCast(const FromType* Str, int32 Len)
{
	return TStringConversion<FromType, ToType>(Str, Len);
}

#define TCHAR_TO_ANSI(str) (ANSICHAR*)StringCast<ANSICHAR>(static_cast<const TCHAR*>(str)).Get()
#define ANSI_TO_TCHAR(str) (TCHAR*)StringCast<TCHAR>(static_cast<const ANSICHAR*>(str)).Get()
#define TCHAR_TO_UTF8(str) (ANSICHAR*)FTCHARToUTF8((const TCHAR*)str).Get()
#define UTF8_TO_TCHAR(str) (TCHAR*)FUTF8ToTCHAR((const ANSICHAR*)str).Get()
#define TCHAR_TO_UTF16(str) (UTF16CHAR*)FTCHARToUTF16((const TCHAR*)str).Get()
#define UTF16_TO_TCHAR(str) (TCHAR*)FUTF16ToTCHAR((const UTF16CHAR*)str).Get()
