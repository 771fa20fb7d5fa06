// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "EngineTestPrinters.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(StringConvTest, RoundTripsUtf8IncludingCharactersOutsideTheBasicPlane)
{
	// "Grüße 😀": two Latin-1 letters, and one character that needs a surrogate pair in UTF-16.
	const char* Utf8 = "Gr\xC3\xBC\xC3\x9F"
					   "e \xF0\x9F\x98\x80";
	const FString Wide(UTF8_TO_TCHAR(Utf8));
	ASSERT_EQ(Wide.Len(), 8);
	EXPECT_EQ(Wide[2], TCHAR(0xFC));
	EXPECT_EQ(Wide[3], TCHAR(0xDF));
	EXPECT_EQ(Wide[6], TCHAR(0xD83D));
	EXPECT_EQ(Wide[7], TCHAR(0xDE00));
	EXPECT_STREQ(TCHAR_TO_UTF8(*Wide), Utf8);

	const FTCHARToUTF8 Converter(*Wide);
	EXPECT_EQ(Converter.Length(), static_cast<int32>(std::strlen(Utf8)));
	EXPECT_EQ(std::memcmp(Converter.Get(), Utf8, std::strlen(Utf8) + 1), 0);
}

TEST(StringConvTest, NarrowConstructorReadsUtf8)
{
	EXPECT_EQ(FString("\xC3\xA9t\xC3\xA9").Len(), 3);
	EXPECT_EQ(FString("\xC3\xA9t\xC3\xA9")[0], TCHAR(0xE9));
	EXPECT_EQ(ToUtf8(FString(ANSI_TO_TCHAR("plain"))), "plain");
}

TEST(StringConvTest, ReplacesMalformedInputInsteadOfFailing)
{
	// A lone high surrogate, a lone low surrogate, and a reversed pair.
	const TCHAR Broken[] = {TEXT('a'), TCHAR(0xD800), TEXT('b'), TCHAR(0xDC00), TCHAR(0xDC00), TCHAR(0xD800), 0};
	EXPECT_STREQ(TCHAR_TO_UTF8(Broken), "a\xEF\xBF\xBD"
										"b\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");

	// A stray continuation byte, a truncated sequence, an overlong '/', and an encoded surrogate.
	const FString FromBad(UTF8_TO_TCHAR("x\x80y\xE2\x82z\xC0\xAF\xED\xA0\x80"));
	ASSERT_GE(FromBad.Len(), 5);
	EXPECT_EQ(FromBad[0], TEXT('x'));
	EXPECT_EQ(FromBad[1], TCHAR(0xFFFD));
	EXPECT_EQ(FromBad[2], TEXT('y'));
	EXPECT_EQ(FromBad[3], TCHAR(0xFFFD));
	EXPECT_TRUE(FromBad.Contains(TEXT("z")));
	for (const TCHAR Char : FromBad)
	{
		EXPECT_FALSE(Char >= 0xD800 && Char <= 0xDFFF) << "no surrogate may come out of UTF-8 decoding";
	}
}

TEST(StringConvTest, AnsiConversionReplacesWhatAsciiCannotHold)
{
	EXPECT_STREQ(TCHAR_TO_ANSI(TEXT("caf\u00E9")), "caf?");
	const TCHAR Emoji[] = {TCHAR(0xD83D), TCHAR(0xDE00), 0};
	EXPECT_STREQ(TCHAR_TO_ANSI(Emoji), "?");
	EXPECT_STREQ(TCHAR_TO_ANSI(TEXT("ascii")), "ascii");
}

TEST(StringConvTest, NullSourceGivesNullResult)
{
	EXPECT_EQ(FTCHARToUTF8(static_cast<const TCHAR*>(nullptr)).Get(), nullptr);
	EXPECT_EQ(TCHAR_TO_UTF8(static_cast<const TCHAR*>(nullptr)), nullptr);
	EXPECT_STREQ(TCHAR_TO_UTF8(TEXT("")), "");
}

TEST(StringConvTest, StringCastConvertsWithExplicitLength)
{
	const auto Narrow = StringCast<ANSICHAR>(TEXT("abcdef"), 3);
	EXPECT_STREQ(Narrow.Get(), "abc");
	EXPECT_EQ(Narrow.Length(), 3);

	const auto Wide = StringCast<TCHAR>("xyz");
	EXPECT_EQ(ToUtf8(FString(Wide.Get())), "xyz");
	EXPECT_EQ(Wide.Length(), 3);

	const auto Utf32 = StringCast<UTF32CHAR>(*FString(UTF8_TO_TCHAR("\xF0\x9F\x98\x80!")));
	ASSERT_EQ(Utf32.Length(), 2);
	EXPECT_EQ(Utf32.Get()[0], U'\U0001F600');
	EXPECT_EQ(Utf32.Get()[1], U'!');
}

TEST(StringConvTest, LongStringsSpillToTheHeap)
{
	const FString Long = FString::ChrN(1000, TCHAR(0x20AC));
	const FTCHARToUTF8 Converted(*Long);
	ASSERT_EQ(Converted.Length(), 3000);
	EXPECT_EQ(FString(UTF8_TO_TCHAR(reinterpret_cast<const ANSICHAR*>(Converted.Get()))), Long);
}
