// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"

namespace
{
	constexpr uint32 ReplacementCharacter = 0xFFFD;

	bool IsHighSurrogate(uint32 Unit)
	{
		return Unit >= 0xD800 && Unit <= 0xDBFF;
	}
	bool IsLowSurrogate(uint32 Unit)
	{
		return Unit >= 0xDC00 && Unit <= 0xDFFF;
	}

	/** Reads one code point from UTF-16; a lone surrogate reads as U+FFFD. */
	uint32 DecodeUtf16(const UTF16CHAR* Source, int32 SourceLen, int32& InOutIndex)
	{
		const uint32 Unit = Source[InOutIndex++];
		if (IsHighSurrogate(Unit))
		{
			if (InOutIndex < SourceLen && IsLowSurrogate(Source[InOutIndex]))
			{
				const uint32 Low = Source[InOutIndex++];
				return 0x10000 + ((Unit - 0xD800) << 10) + (Low - 0xDC00);
			}
			return ReplacementCharacter;
		}
		return IsLowSurrogate(Unit) ? ReplacementCharacter : Unit;
	}

	/**
	 * Reads one code point from UTF-8. Overlong forms, surrogates, values above U+10FFFF and truncated
	 * sequences read as U+FFFD, consuming one byte so that the next valid character is not lost.
	 */
	uint32 DecodeUtf8(const uint8* Source, int32 SourceLen, int32& InOutIndex)
	{
		const uint32 Lead = Source[InOutIndex++];
		if (Lead < 0x80)
		{
			return Lead;
		}
		int32 Trail = 0;
		uint32 CodePoint = 0;
		uint32 Minimum = 0;
		if ((Lead & 0xE0) == 0xC0)
		{
			Trail = 1;
			CodePoint = Lead & 0x1F;
			Minimum = 0x80;
		}
		else if ((Lead & 0xF0) == 0xE0)
		{
			Trail = 2;
			CodePoint = Lead & 0x0F;
			Minimum = 0x800;
		}
		else if ((Lead & 0xF8) == 0xF0)
		{
			Trail = 3;
			CodePoint = Lead & 0x07;
			Minimum = 0x10000;
		}
		else
		{
			return ReplacementCharacter;
		}
		if (InOutIndex + Trail > SourceLen)
		{
			return ReplacementCharacter;
		}
		for (int32 Offset = 0; Offset < Trail; ++Offset)
		{
			const uint32 Byte = Source[InOutIndex + Offset];
			if ((Byte & 0xC0) != 0x80)
			{
				return ReplacementCharacter;
			}
			CodePoint = (CodePoint << 6) | (Byte & 0x3F);
		}
		if (CodePoint < Minimum || CodePoint > 0x10FFFF || (CodePoint >= 0xD800 && CodePoint <= 0xDFFF))
		{
			return ReplacementCharacter;
		}
		InOutIndex += Trail;
		return CodePoint;
	}

	template <typename UnitType>
	int32 EncodeUtf8(uint32 CodePoint, UnitType* Dest)
	{
		if (CodePoint < 0x80)
		{
			Dest[0] = static_cast<UnitType>(CodePoint);
			return 1;
		}
		if (CodePoint < 0x800)
		{
			Dest[0] = static_cast<UnitType>(0xC0 | (CodePoint >> 6));
			Dest[1] = static_cast<UnitType>(0x80 | (CodePoint & 0x3F));
			return 2;
		}
		if (CodePoint < 0x10000)
		{
			Dest[0] = static_cast<UnitType>(0xE0 | (CodePoint >> 12));
			Dest[1] = static_cast<UnitType>(0x80 | ((CodePoint >> 6) & 0x3F));
			Dest[2] = static_cast<UnitType>(0x80 | (CodePoint & 0x3F));
			return 3;
		}
		Dest[0] = static_cast<UnitType>(0xF0 | (CodePoint >> 18));
		Dest[1] = static_cast<UnitType>(0x80 | ((CodePoint >> 12) & 0x3F));
		Dest[2] = static_cast<UnitType>(0x80 | ((CodePoint >> 6) & 0x3F));
		Dest[3] = static_cast<UnitType>(0x80 | (CodePoint & 0x3F));
		return 4;
	}

	int32 EncodeUtf16(uint32 CodePoint, UTF16CHAR* Dest)
	{
		if (CodePoint < 0x10000)
		{
			Dest[0] = static_cast<UTF16CHAR>(CodePoint);
			return 1;
		}
		CodePoint -= 0x10000;
		Dest[0] = static_cast<UTF16CHAR>(0xD800 + (CodePoint >> 10));
		Dest[1] = static_cast<UTF16CHAR>(0xDC00 + (CodePoint & 0x3FF));
		return 2;
	}

	int32 Utf8ToUtf16(const uint8* Source, int32 SourceLen, UTF16CHAR* Dest)
	{
		int32 Written = 0;
		for (int32 Index = 0; Index < SourceLen;)
		{
			Written += EncodeUtf16(DecodeUtf8(Source, SourceLen, Index), Dest + Written);
		}
		return Written;
	}
} // namespace

namespace UE::Core::Private
{
	int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, UTF8CHAR* Dest)
	{
		int32 Written = 0;
		for (int32 Index = 0; Index < SourceLen;)
		{
			Written += EncodeUtf8(DecodeUtf16(Source, SourceLen, Index), Dest + Written);
		}
		return Written;
	}

	int32 ConvertString(const UTF8CHAR* Source, int32 SourceLen, UTF16CHAR* Dest)
	{
		return Utf8ToUtf16(reinterpret_cast<const uint8*>(Source), SourceLen, Dest);
	}

	int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, ANSICHAR* Dest)
	{
		int32 Written = 0;
		for (int32 Index = 0; Index < SourceLen;)
		{
			const uint32 CodePoint = DecodeUtf16(Source, SourceLen, Index);
			Dest[Written++] = CodePoint < 0x80 ? static_cast<ANSICHAR>(CodePoint) : '?';
		}
		return Written;
	}

	int32 ConvertString(const ANSICHAR* Source, int32 SourceLen, UTF16CHAR* Dest)
	{
		// ANSI text is read as UTF-8, which leaves plain ASCII unchanged and keeps anything else readable.
		return Utf8ToUtf16(reinterpret_cast<const uint8*>(Source), SourceLen, Dest);
	}

	int32 ConvertString(const UTF16CHAR* Source, int32 SourceLen, UTF32CHAR* Dest)
	{
		int32 Written = 0;
		for (int32 Index = 0; Index < SourceLen;)
		{
			Dest[Written++] = DecodeUtf16(Source, SourceLen, Index);
		}
		return Written;
	}

	int32 ConvertString(const UTF32CHAR* Source, int32 SourceLen, UTF16CHAR* Dest)
	{
		int32 Written = 0;
		for (int32 Index = 0; Index < SourceLen; ++Index)
		{
			uint32 CodePoint = Source[Index];
			if (CodePoint > 0x10FFFF || (CodePoint >= 0xD800 && CodePoint <= 0xDFFF))
			{
				CodePoint = ReplacementCharacter;
			}
			Written += EncodeUtf16(CodePoint, Dest + Written);
		}
		return Written;
	}
} // namespace UE::Core::Private
