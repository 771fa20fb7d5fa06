// Copyright Orvane. All Rights Reserved.

#include "Containers/Map.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "EngineTestPrinters.h"
#include "Misc/CString.h"

#include <gtest/gtest.h>

namespace
{
	TArray<FString> Parse(const FString& Source, const TCHAR* Delimiter, bool bCullEmpty)
	{
		TArray<FString> Parts;
		Source.ParseIntoArray(Parts, Delimiter, bCullEmpty);
		return Parts;
	}

	FString JoinParts(const TArray<FString>& Parts)
	{
		return FString::Join(Parts, TEXT("|"));
	}
} // namespace

TEST(StringTest, EmptyStringHasNoAllocationAndANonNullPointer)
{
	FString Empty;
	EXPECT_EQ(Empty.GetCharArray().Num(), 0);
	ASSERT_NE(*Empty, nullptr);
	EXPECT_EQ((*Empty)[0], TEXT('\0'));
	EXPECT_EQ(Empty.Len(), 0);
	EXPECT_TRUE(Empty.IsEmpty());

	FString One(TEXT("x"));
	EXPECT_EQ(One.GetCharArray().Num(), 2);
	EXPECT_EQ(One.GetCharArray()[1], TEXT('\0'));
	EXPECT_EQ(One.Len(), 1);
}

TEST(StringTest, ConstructsFromEveryCharacterType)
{
	EXPECT_EQ(ToUtf8(FString(TEXT("wide"))), "wide");
	EXPECT_EQ(ToUtf8(FString("narrow")), "narrow");
	EXPECT_EQ(ToUtf8(FString(u8"utf8")), "utf8");
	EXPECT_EQ(ToUtf8(FString(3, TEXT("abcdef"))), "abc");
	EXPECT_EQ(ToUtf8(FString(FStringView(TEXT("view"), 2))), "vi");
	EXPECT_TRUE(FString(static_cast<const TCHAR*>(nullptr)).IsEmpty());
}

TEST(StringTest, PrintfFormatsStrings)
{
	const FString Name(TEXT("World"));
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("Hello %s!"), *Name)), "Hello World!");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%6s]"), TEXT("ab"))), "[    ab]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%-6s]"), TEXT("ab"))), "[ab    ]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%.2s]"), TEXT("abcd"))), "[ab]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%s"), static_cast<const TCHAR*>(nullptr))), "(null)");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%c%c"), TEXT('O'), TEXT('K'))), "OK");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("100%%"))), "100%");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("no arguments"))), "no arguments");
}

TEST(StringTest, PrintfFormatsIntegers)
{
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%d"), 42)), "42");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%i"), -7)), "-7");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%5d]"), 42)), "[   42]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%-5d]"), 42)), "[42   ]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%05d"), 42)), "00042");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%+d"), 42)), "+42");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%*d"), 4, 7)), "   7");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%.3d"), 7)), "007");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%u"), 4000000000u)), "4000000000");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%lld"), MAX_int64)), "9223372036854775807");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%lld"), MIN_int64)), "-9223372036854775808");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%llu"), MAX_uint64)), "18446744073709551615");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%x %X %08X %o"), 255, 255, 0xBEEF, 8)), "ff FF 0000BEEF 10");
	// Without a length modifier the value is read as 32 bits, as a C varargs call would.
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%d"), int64(0x100000002))), "2");
	const TArray<int32> Numbers = {1, 2, 3};
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%d items"), Numbers.Num())), "3 items");
}

TEST(StringTest, PrintfFormatsFloatingPointAndPointers)
{
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%f"), 3.14159)), "3.141590");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%.2f"), 3.14159)), "3.14");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("[%8.3f]"), 3.14159)), "[   3.142]");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%.1f"), 2.5f)), "2.5");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%e"), 12345.678)), "1.234568e+04");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%g %g"), 0.0001, 1e-5)), "0.0001 1e-05");
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("%p"), reinterpret_cast<void*>(0x1234))), "0x1234");
}

TEST(StringTest, PrintfKeepsCharactersOutsideTheBasicPlane)
{
	const FString Emoji(u8"\U0001F600");
	EXPECT_EQ(Emoji.Len(), 2);
	EXPECT_EQ(ToUtf8(FString::Printf(TEXT("<%s>"), *Emoji)), "<\xF0\x9F\x98\x80>");
}

TEST(StringDeathTest, PrintfRejectsArgumentsThatDoNotFitTheSpecifier)
{
	const FString Str(TEXT("text"));
	EXPECT_DEATH((void)FString::Printf(TEXT("%s"), Str), "'%s' does not accept FString");
	EXPECT_DEATH((void)FString::Printf(TEXT("%s"), "narrow"), "'%s' does not accept const ANSICHAR");
	EXPECT_DEATH((void)FString::Printf(TEXT("%d"), 1.5), "'%d' does not accept a floating-point number");
	EXPECT_DEATH((void)FString::Printf(TEXT("%f"), 1), "'%f' does not accept an integer");
	EXPECT_DEATH((void)FString::Printf(TEXT("%d %d"), 1), "has no argument");
	EXPECT_DEATH((void)FString::Printf(TEXT("%d"), 1, 2), "uses 1 argument");
}

TEST(StringTest, EqualityOperatorIgnoresCaseButEqualsDoesNot)
{
	const FString Lower(TEXT("hello"));
	const FString Upper(TEXT("HELLO"));
	EXPECT_TRUE(Lower == Upper);
	EXPECT_FALSE(Lower != Upper);
	EXPECT_TRUE(Lower == TEXT("HeLLo"));
	EXPECT_TRUE(TEXT("HeLLo") == Lower);
	EXPECT_FALSE(Lower.Equals(Upper));
	EXPECT_TRUE(Lower.Equals(Upper, ESearchCase::IgnoreCase));
	EXPECT_TRUE(Lower.Equals(FString(TEXT("hello"))));
	EXPECT_FALSE(FString(TEXT("apple")) < FString(TEXT("APPLE")));
	EXPECT_TRUE(FString(TEXT("apple")) < FString(TEXT("Banana")));
	EXPECT_GT(FString(TEXT("a")).Compare(FString(TEXT("B"))), 0);
	EXPECT_LT(FString(TEXT("a")).Compare(FString(TEXT("B")), ESearchCase::IgnoreCase), 0);
	EXPECT_EQ(Lower.Compare(Upper, ESearchCase::IgnoreCase), 0);
}

TEST(StringTest, HashIgnoresCaseLikeEquality)
{
	EXPECT_EQ(GetTypeHash(FString(TEXT("Hello"))), GetTypeHash(FString(TEXT("hELLO"))));
	EXPECT_NE(GetTypeHash(FString(TEXT("Hello"))), GetTypeHash(FString(TEXT("Help"))));

	TMap<FString, int32> Map;
	Map.Add(FString(TEXT("Key")), 7);
	const int32* Found = Map.Find(FString(TEXT("KEY")));
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(*Found, 7);
}

TEST(StringTest, TrimsWhitespace)
{
	const FString Padded(TEXT("  \t hi \n"));
	EXPECT_EQ(ToUtf8(Padded.TrimStartAndEnd()), "hi");
	EXPECT_EQ(ToUtf8(Padded.TrimStart()), "hi \n");
	EXPECT_EQ(ToUtf8(Padded.TrimEnd()), "  \t hi");
	EXPECT_EQ(ToUtf8(Padded), "  \t hi \n");

	FString Inline(Padded);
	Inline.TrimStartAndEndInline();
	EXPECT_EQ(ToUtf8(Inline), "hi");

	FString AllSpace(TEXT("   "));
	AllSpace.TrimStartAndEndInline();
	EXPECT_TRUE(AllSpace.IsEmpty());

	bool bRemoved = false;
	EXPECT_EQ(ToUtf8(FString(TEXT("\"quoted\"")).TrimQuotes(&bRemoved)), "quoted");
	EXPECT_TRUE(bRemoved);
	EXPECT_EQ(ToUtf8(FString(TEXT("\"open")).TrimQuotes(&bRemoved)), "open");
	EXPECT_TRUE(bRemoved);
	EXPECT_EQ(ToUtf8(FString(TEXT("none")).TrimQuotes(&bRemoved)), "none");
	EXPECT_FALSE(bRemoved);
	EXPECT_EQ(ToUtf8(FString(TEXT("/path/")).TrimChar(TEXT('/'))), "path");
}

TEST(StringTest, FindHonoursCaseDirectionAndStart)
{
	const FString Text(TEXT("Hello World Hello"));
	EXPECT_EQ(Text.Find(TEXT("hello")), 0);
	EXPECT_EQ(Text.Find(TEXT("hello"), ESearchCase::CaseSensitive), INDEX_NONE);
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromEnd), 12);
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromStart, 1), 12);
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromStart, 13), INDEX_NONE);
	// From the end, a match must end at or before the start position.
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 17), 12);
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 16), 0);
	EXPECT_EQ(Text.Find(TEXT("Hello"), ESearchCase::CaseSensitive, ESearchDir::FromEnd, 4), INDEX_NONE);
	EXPECT_EQ(Text.Find(FString(TEXT("WORLD"))), 6);
	EXPECT_EQ(Text.Find(TEXT("missing")), INDEX_NONE);
	EXPECT_TRUE(Text.Contains(TEXT("world")));
	EXPECT_FALSE(Text.Contains(TEXT("world"), ESearchCase::CaseSensitive));

	int32 Index = 99;
	EXPECT_TRUE(Text.FindChar(TEXT('o'), Index));
	EXPECT_EQ(Index, 4);
	EXPECT_TRUE(Text.FindLastChar(TEXT('o'), Index));
	EXPECT_EQ(Index, 16);
	EXPECT_FALSE(Text.FindLastChar(TEXT('z'), Index));
	EXPECT_EQ(Index, INDEX_NONE);
	EXPECT_EQ(Text.FindLastCharByPredicate(
				  [](TCHAR Char)
				  {
					  return Char == TEXT(' ');
				  }),
		11);
	EXPECT_EQ(Text.FindLastCharByPredicate(
				  [](TCHAR Char)
				  {
					  return Char == TEXT(' ');
				  },
				  11),
		5);
}

TEST(StringTest, StartsWithAndEndsWithIgnoreCaseByDefault)
{
	const FString Text(TEXT("Hello.txt"));
	EXPECT_TRUE(Text.StartsWith(TEXT("hello")));
	EXPECT_FALSE(Text.StartsWith(TEXT("hello"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Text.EndsWith(TEXT(".TXT")));
	EXPECT_FALSE(Text.EndsWith(TEXT(".TXT"), ESearchCase::CaseSensitive));
	EXPECT_FALSE(Text.StartsWith(TEXT("")));
	EXPECT_FALSE(Text.EndsWith(TEXT("longer than the text")));
	EXPECT_TRUE(Text.MatchesWildcard(TEXT("*.TXT")));
	EXPECT_TRUE(Text.MatchesWildcard(TEXT("H?llo.*")));
	EXPECT_FALSE(Text.MatchesWildcard(TEXT("*.png")));
}

TEST(StringTest, SubStringsClampTheirArguments)
{
	const FString Text(TEXT("abcdef"));
	EXPECT_EQ(ToUtf8(Text.Left(2)), "ab");
	EXPECT_EQ(ToUtf8(Text.Left(-1)), "");
	EXPECT_EQ(ToUtf8(Text.Left(100)), "abcdef");
	EXPECT_EQ(ToUtf8(Text.Right(2)), "ef");
	EXPECT_EQ(ToUtf8(Text.Right(100)), "abcdef");
	EXPECT_EQ(ToUtf8(Text.Right(-3)), "");
	EXPECT_EQ(ToUtf8(Text.LeftChop(2)), "abcd");
	EXPECT_EQ(ToUtf8(Text.LeftChop(100)), "");
	EXPECT_EQ(ToUtf8(Text.RightChop(2)), "cdef");
	EXPECT_EQ(ToUtf8(Text.RightChop(100)), "");
	EXPECT_EQ(ToUtf8(Text.Mid(2, 3)), "cde");
	EXPECT_EQ(ToUtf8(Text.Mid(4)), "ef");
	EXPECT_EQ(ToUtf8(Text.Mid(10)), "");
	EXPECT_EQ(ToUtf8(Text.Mid(-2, 5)), "abc");
	EXPECT_EQ(ToUtf8(Text.Mid(2, -1)), "");

	FString Inline(Text);
	Inline.MidInline(1, 3);
	EXPECT_EQ(ToUtf8(Inline), "bcd");
	Inline.LeftInline(2);
	EXPECT_EQ(ToUtf8(Inline), "bc");
	Inline.RightChopInline(1);
	EXPECT_EQ(ToUtf8(Inline), "c");
}

TEST(StringTest, SplitsAtTheFirstOrLastOccurrence)
{
	const FString Text(TEXT("a=b=c"));
	FString Left(TEXT("unchanged"));
	FString Right(TEXT("unchanged"));
	EXPECT_TRUE(Text.Split(TEXT("="), &Left, &Right));
	EXPECT_EQ(ToUtf8(Left), "a");
	EXPECT_EQ(ToUtf8(Right), "b=c");
	EXPECT_TRUE(Text.Split(TEXT("="), &Left, &Right, ESearchCase::IgnoreCase, ESearchDir::FromEnd));
	EXPECT_EQ(ToUtf8(Left), "a=b");
	EXPECT_EQ(ToUtf8(Right), "c");

	Left = TEXT("unchanged");
	EXPECT_FALSE(Text.Split(TEXT(":"), &Left, nullptr));
	EXPECT_EQ(ToUtf8(Left), "unchanged");

	EXPECT_TRUE(FString(TEXT("KeyXvalue")).Split(TEXT("x"), &Left, &Right));
	EXPECT_EQ(ToUtf8(Left), "Key");
	EXPECT_FALSE(FString(TEXT("KeyXvalue")).Split(TEXT("x"), &Left, &Right, ESearchCase::CaseSensitive));
}

TEST(StringTest, ParseIntoArrayCullsEmptyPartsByDefault)
{
	EXPECT_EQ(ToUtf8(JoinParts(Parse(TEXT("a,,b,"), TEXT(","), true))), "a|b");
	EXPECT_EQ(Parse(TEXT("a,,b,"), TEXT(","), true).Num(), 2);
	EXPECT_EQ(Parse(TEXT("a,,b,"), TEXT(","), false).Num(), 4);
	EXPECT_EQ(ToUtf8(JoinParts(Parse(TEXT("a,,b,"), TEXT(","), false))), "a||b|");
	EXPECT_EQ(ToUtf8(JoinParts(Parse(TEXT("one::two"), TEXT("::"), true))), "one|two");
	EXPECT_EQ(Parse(TEXT(""), TEXT(","), false).Num(), 0);
	EXPECT_EQ(Parse(TEXT("solo"), TEXT(","), true).Num(), 1);

	TArray<FString> Parts;
	FString(TEXT("a\r\nb\nc\r")).ParseIntoArrayLines(Parts);
	EXPECT_EQ(ToUtf8(JoinParts(Parts)), "a|b|c");
	FString(TEXT("  a b\tc ")).ParseIntoArrayWS(Parts);
	EXPECT_EQ(ToUtf8(JoinParts(Parts)), "a|b|c");
	FString(TEXT("a b;c")).ParseIntoArrayWS(Parts, TEXT(";"));
	EXPECT_EQ(ToUtf8(JoinParts(Parts)), "a|b|c");
}

TEST(StringTest, PathOperatorJoinsWithOneSeparator)
{
	EXPECT_EQ(ToUtf8(FString(TEXT("a")) / TEXT("b")), "a/b");
	EXPECT_EQ(ToUtf8(FString(TEXT("a/")) / TEXT("b")), "a/b");
	EXPECT_EQ(ToUtf8(FString(TEXT("a")) / TEXT("/b")), "a/b");
	EXPECT_EQ(ToUtf8(FString(TEXT("")) / TEXT("b")), "b");
	EXPECT_EQ(ToUtf8(FString(TEXT("a")) / TEXT("")), "a/");
	EXPECT_EQ(ToUtf8(FString(TEXT("a/")) / TEXT("")), "a/");
	EXPECT_EQ(ToUtf8(FString(TEXT("a/")) / TEXT("/b")), "a//b");
	EXPECT_EQ(ToUtf8(FString(TEXT("a\\")) / TEXT("b")), "a\\b");
	EXPECT_EQ(ToUtf8(FString(TEXT("")) / TEXT("")), "");
	EXPECT_EQ(ToUtf8(TEXT("root") / FString(TEXT("leaf"))), "root/leaf");
	EXPECT_EQ(ToUtf8(FString(TEXT("x")) / FString(TEXT("y")) / TEXT("z")), "x/y/z");

	FString Path(TEXT("Saved"));
	Path /= TEXT("Logs");
	EXPECT_EQ(ToUtf8(Path), "Saved/Logs");
}

TEST(StringTest, ConcatenatesWithCharactersAndStrings)
{
	const FString A(TEXT("ab"));
	EXPECT_EQ(ToUtf8(A + TEXT("cd")), "abcd");
	EXPECT_EQ(ToUtf8(TEXT("<") + A), "<ab");
	EXPECT_EQ(ToUtf8(A + A), "abab");
	EXPECT_EQ(ToUtf8(A + TEXT('!')), "ab!");
	EXPECT_EQ(ToUtf8(TEXT('!') + A), "!ab");
	EXPECT_EQ(ToUtf8(FString(TEXT("x")) + FString(TEXT("y"))), "xy");

	FString Built;
	Built += TEXT("a");
	Built += FString(TEXT("b"));
	Built += TEXT('c');
	Built.AppendChar(TEXT('d')).Append(TEXT("ef"), 1);
	Built.AppendChars(TEXT("xyz"), 2);
	EXPECT_EQ(ToUtf8(Built), "abcdexy");

	FString SelfAppend(TEXT("loop"));
	SelfAppend += SelfAppend;
	EXPECT_EQ(ToUtf8(SelfAppend), "looploop");
	SelfAppend.Appendf(TEXT("%d"), 5);
	EXPECT_EQ(ToUtf8(SelfAppend), "looploop5");
}

TEST(StringTest, RemovesPrefixesAndSuffixes)
{
	FString Text(TEXT("PrefixBodySuffix"));
	EXPECT_FALSE(Text.RemoveFromStart(TEXT("")));
	EXPECT_FALSE(Text.RemoveFromStart(FString()));
	EXPECT_EQ(ToUtf8(Text), "PrefixBodySuffix");
	EXPECT_FALSE(Text.RemoveFromStart(TEXT("prefix"), ESearchCase::CaseSensitive));
	EXPECT_TRUE(Text.RemoveFromStart(TEXT("prefix")));
	EXPECT_EQ(ToUtf8(Text), "BodySuffix");
	EXPECT_FALSE(Text.RemoveFromEnd(TEXT("")));
	EXPECT_TRUE(Text.RemoveFromEnd(TEXT("SUFFIX")));
	EXPECT_EQ(ToUtf8(Text), "Body");
	EXPECT_FALSE(Text.RemoveFromEnd(TEXT("LongerThanBody")));
}

TEST(StringTest, ReplacesTextAndCharacters)
{
	FString Text(TEXT("aXbxc"));
	EXPECT_EQ(ToUtf8(Text.Replace(TEXT("x"), TEXT("--"))), "a--b--c");
	EXPECT_EQ(ToUtf8(Text.Replace(TEXT("x"), TEXT("-"), ESearchCase::CaseSensitive)), "aXb-c");
	EXPECT_EQ(ToUtf8(Text.Replace(TEXT(""), TEXT("-"))), "aXbxc");
	EXPECT_EQ(Text.ReplaceInline(TEXT("X"), TEXT(""), ESearchCase::IgnoreCase), 2);
	EXPECT_EQ(ToUtf8(Text), "abc");
	FString Path(TEXT("C:\\dir\\file"));
	Path.ReplaceCharInline(TEXT('\\'), TEXT('/'));
	EXPECT_EQ(ToUtf8(Path), "C:/dir/file");
	FString Repeated(TEXT("aaaa"));
	EXPECT_EQ(Repeated.ReplaceInline(TEXT("aa"), TEXT("a")), 2);
	EXPECT_EQ(ToUtf8(Repeated), "aa");
}

TEST(StringTest, ChangesCaseReversesAndPads)
{
	const FString Text(TEXT("Hello"));
	EXPECT_EQ(ToUtf8(Text.ToUpper()), "HELLO");
	EXPECT_EQ(ToUtf8(Text.ToLower()), "hello");
	EXPECT_EQ(ToUtf8(Text.Reverse()), "olleH");
	EXPECT_EQ(ToUtf8(FString(TEXT("ab")).LeftPad(5)), "   ab");
	EXPECT_EQ(ToUtf8(FString(TEXT("ab")).RightPad(5)), "ab   ");
	EXPECT_EQ(ToUtf8(FString::ChrN(3, TEXT('x'))), "xxx");
	EXPECT_EQ(ToUtf8(FString::Chr(TEXT('q'))), "q");
	EXPECT_EQ(ToUtf8(FString(TEXT("a\tb")).ConvertTabsToSpaces(4)), "a   b");
}

TEST(StringTest, InsertsAndRemovesCharacters)
{
	FString Text(TEXT("ace"));
	Text.InsertAt(1, TEXT('b'));
	Text.InsertAt(3, FString(TEXT("d")));
	EXPECT_EQ(ToUtf8(Text), "abcde");
	Text.RemoveAt(1, 2);
	EXPECT_EQ(ToUtf8(Text), "ade");
	Text.RemoveAt(0, 3);
	EXPECT_TRUE(Text.IsEmpty());
	EXPECT_EQ(Text.Len(), 0);
}

TEST(StringDeathTest, IndexingOutOfRangeIsFatal)
{
	const FString Text(TEXT("abc"));
	EXPECT_EQ(Text[2], TEXT('c'));
	EXPECT_DEATH((void)Text[3], "out of bounds");
	EXPECT_DEATH((void)Text[-1], "out of bounds");
}

TEST(StringTest, IsNumericAcceptsSignedDecimals)
{
	EXPECT_TRUE(FString(TEXT("123")).IsNumeric());
	EXPECT_TRUE(FString(TEXT("-1.5")).IsNumeric());
	EXPECT_TRUE(FString(TEXT("+5")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("1.2.3")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("")).IsNumeric());
	EXPECT_FALSE(FString(TEXT("12a")).IsNumeric());
	EXPECT_FALSE(FString(TEXT(" 1")).IsNumeric());
}

TEST(StringTest, SanitizeFloatKeepsOneFractionalDigit)
{
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(1.0)), "1.0");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(0.5)), "0.5");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(-2.0)), "-2.0");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(1.25)), "1.25");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(0.0)), "0.0");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(-0.0)), "0.0");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(1.0 / 3.0)), "0.333333");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(3.0, 0)), "3");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(1.5, 3)), "1.500");
	EXPECT_EQ(ToUtf8(FString::SanitizeFloat(1234567.0)), "1234567.0");
}

TEST(StringTest, ConvertsNumbersAndBooleans)
{
	EXPECT_EQ(ToUtf8(FString::FromInt(-12)), "-12");
	EXPECT_EQ(ToUtf8(LexToString(42)), "42");
	EXPECT_EQ(ToUtf8(LexToString(int64(-5000000000))), "-5000000000");
	EXPECT_EQ(ToUtf8(LexToString(uint64(18000000000000000000ull))), "18000000000000000000");
	EXPECT_EQ(ToUtf8(LexToString(uint32(7))), "7");
	EXPECT_EQ(ToUtf8(LexToString(1.5f)), "1.5");
	EXPECT_EQ(ToUtf8(LexToString(2.0)), "2.0");
	EXPECT_EQ(ToUtf8(LexToString(true)), "true");
	EXPECT_EQ(ToUtf8(LexToString(false)), "false");
	EXPECT_EQ(ToUtf8(LexToString(TEXT("same"))), "same");

	int32 Int = 0;
	LexFromString(Int, TEXT("-17"));
	EXPECT_EQ(Int, -17);
	int64 Big = 0;
	LexFromString(Big, TEXT("9000000000"));
	EXPECT_EQ(Big, 9000000000);
	float Float = 0;
	LexFromString(Float, TEXT("2.25"));
	EXPECT_EQ(Float, 2.25f);
	double Double = 0;
	LexFromString(Double, TEXT("-0.125"));
	EXPECT_EQ(Double, -0.125);
	bool bValue = false;
	LexFromString(bValue, TEXT("True"));
	EXPECT_TRUE(bValue);
	LexFromString(bValue, TEXT("off"));
	EXPECT_FALSE(bValue);
	FString Str;
	LexFromString(Str, TEXT("copied"));
	EXPECT_EQ(ToUtf8(Str), "copied");

	EXPECT_TRUE(LexTryParseString(Int, TEXT("123")));
	EXPECT_EQ(Int, 123);
	EXPECT_FALSE(LexTryParseString(Int, TEXT("12x")));
	EXPECT_EQ(Int, 123);
	EXPECT_TRUE(LexTryParseString(Double, TEXT("1e3")));
	EXPECT_EQ(Double, 1000.0);
	EXPECT_TRUE(FString(TEXT("yes")).ToBool());
}

TEST(StringTest, CStringHelpersParseLikeTheCLibrary)
{
	EXPECT_EQ(FCString::Atoi(TEXT("42abc")), 42);
	EXPECT_EQ(FCString::Atoi(TEXT("  -7")), -7);
	EXPECT_EQ(FCString::Atoi(TEXT("abc")), 0);
	EXPECT_EQ(FCString::Atoi64(TEXT("-9000000000")), -9000000000);
	EXPECT_EQ(FCString::Strtoi(TEXT("0x1F"), nullptr, 16), 31);
	EXPECT_EQ(FCString::Strtoi(TEXT("0x1F"), nullptr, 0), 31);
	EXPECT_EQ(FCString::Strtoi(TEXT("017"), nullptr, 0), 15);
	EXPECT_EQ(FCString::Strtoui64(TEXT("18446744073709551615"), nullptr, 10), MAX_uint64);
	TCHAR* End = nullptr;
	const TCHAR* Source = TEXT("12;rest");
	EXPECT_EQ(FCString::Strtoi(Source, &End, 10), 12);
	EXPECT_EQ(End, Source + 2);
	EXPECT_DOUBLE_EQ(FCString::Atod(TEXT("1.5e2")), 150.0);
	EXPECT_FLOAT_EQ(FCString::Atof(TEXT("-0.25")), -0.25f);
	EXPECT_TRUE(FCString::ToBool(TEXT("on")));
	EXPECT_FALSE(FCString::ToBool(TEXT("No")));
	EXPECT_TRUE(FCString::ToBool(TEXT("3")));
	EXPECT_EQ(FCString::Strlen(TEXT("four")), 4);
	EXPECT_EQ(FCString::Stricmp(TEXT("abc"), TEXT("ABC")), 0);
	EXPECT_LT(FCString::Strcmp(TEXT("ABC"), TEXT("abc")), 0);
	EXPECT_EQ(FCString::Strnicmp(TEXT("abcX"), TEXT("ABCY"), 3), 0);
	const TCHAR* Haystack = TEXT("find the Needle");
	EXPECT_EQ(FCString::Stristr(Haystack, TEXT("needle")), Haystack + 9);
	EXPECT_EQ(FCString::Strstr(Haystack, TEXT("needle")), nullptr);
	EXPECT_EQ(FCString::Strrchr(Haystack, TEXT('e')), Haystack + 14);
	EXPECT_TRUE(FChar::IsWhitespace(TEXT('\t')));
	EXPECT_TRUE(FChar::IsWhitespace(TCHAR(0x3000)));
	EXPECT_EQ(FChar::ToUpper(TCHAR(0xE9)), TCHAR(0xC9));
	EXPECT_TRUE(FChar::IsLinebreak(TCHAR(0x2028)));
	EXPECT_EQ(FChar::ConvertCharDigitToInt(TEXT('7')), 7);
}

TEST(StringTest, StringViewsSliceAndCompare)
{
	const FString Owner(TEXT("Hello World"));
	const FStringView View(Owner);
	EXPECT_EQ(View.Len(), 11);
	EXPECT_EQ(View.GetData(), *Owner);
	EXPECT_EQ(ToUtf8(FString(View.Left(5))), "Hello");
	EXPECT_EQ(ToUtf8(FString(View.Right(5))), "World");
	EXPECT_EQ(ToUtf8(FString(View.Mid(6, 100))), "World");
	EXPECT_EQ(ToUtf8(FString(View.LeftChop(6))), "Hello");
	EXPECT_EQ(ToUtf8(FString(View.RightChop(6))), "World");
	EXPECT_TRUE(View.StartsWith(TEXT("hello")));
	EXPECT_TRUE(View.EndsWith(TEXT("WORLD")));
	EXPECT_FALSE(View.Equals(TEXT("hello world")));
	EXPECT_TRUE(View.Equals(TEXT("hello world"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(View == TEXT("hello world"));
	EXPECT_EQ(View.Find(TEXT("o")), 4);
	EXPECT_EQ(View.Find(TEXT("o"), 5), 7);
	EXPECT_EQ(View[1], TEXT('e'));
	EXPECT_TRUE(TEXTVIEW("  padded ").TrimStartAndEnd() == TEXT("padded"));
	EXPECT_TRUE(FStringView().IsEmpty());
}
