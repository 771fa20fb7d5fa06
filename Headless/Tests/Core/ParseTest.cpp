// Copyright Orvane. All Rights Reserved.

#include "Misc/Parse.h"
#include "EngineTestPrinters.h"
#include "UObject/NameTypes.h"

#include <gtest/gtest.h>

TEST(ParseTest, ValueReadsDashedAndPlainKeys)
{
	const TCHAR* CommandLine = TEXT("Project.uproject -Port=5000 Mode=Fast -Name=Alpha,Beta");
	FString Text;
	EXPECT_TRUE(FParse::Value(CommandLine, TEXT("-Port="), Text));
	EXPECT_EQ(ToUtf8(Text), "5000");
	EXPECT_TRUE(FParse::Value(CommandLine, TEXT("Mode="), Text));
	EXPECT_EQ(ToUtf8(Text), "Fast");
	EXPECT_TRUE(FParse::Value(CommandLine, TEXT("mode="), Text));
	EXPECT_EQ(ToUtf8(Text), "Fast");

	// Values stop at separators unless told otherwise.
	EXPECT_TRUE(FParse::Value(CommandLine, TEXT("Name="), Text));
	EXPECT_EQ(ToUtf8(Text), "Alpha");
	EXPECT_TRUE(FParse::Value(CommandLine, TEXT("Name="), Text, false));
	EXPECT_EQ(ToUtf8(Text), "Alpha,Beta");

	Text = TEXT("untouched");
	EXPECT_FALSE(FParse::Value(CommandLine, TEXT("Missing="), Text));
	EXPECT_EQ(ToUtf8(Text), "untouched");
}

TEST(ParseTest, ValueMatchesOnlyAtTheStartOfAWordAndOutsideQuotes)
{
	const TCHAR* Stream = TEXT("-ProjectName=Game -Cmd=\"-Name=Inner value\" -Name=Outer");
	FString Text;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Name="), Text));
	EXPECT_EQ(ToUtf8(Text), "Outer");
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Cmd="), Text));
	EXPECT_EQ(ToUtf8(Text), "-Name=Inner value");
}

TEST(ParseTest, QuotedValuesKeepSpacesAndLoseTheirQuotes)
{
	FString Path;
	const TCHAR* Stream = TEXT("-Path=\"/a b/c.txt\" -Next=1");
	const TCHAR* GotTo = nullptr;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("-Path="), Path, true, &GotTo));
	EXPECT_EQ(ToUtf8(Path), "/a b/c.txt");
	ASSERT_NE(GotTo, nullptr);
	EXPECT_EQ(ToUtf8(GotTo), " -Next=1");

	TCHAR Buffer[5];
	EXPECT_TRUE(FParse::Value(Stream, TEXT("-Path="), Buffer, 5));
	EXPECT_EQ(ToUtf8(Buffer), "/a b");
}

TEST(ParseTest, NumbersAreParsedOrLeftAlone)
{
	const TCHAR* Stream = TEXT("-Port=5000 -Scale=-1.25 -Bad=abc -Small=300 -Neg=-7 -Big=5000000000");
	int32 Port = 0;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Port="), Port));
	EXPECT_EQ(Port, 5000);
	float Scale = 0.0f;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Scale="), Scale));
	EXPECT_FLOAT_EQ(Scale, -1.25f);
	double ScaleDouble = 0.0;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Scale="), ScaleDouble));
	EXPECT_DOUBLE_EQ(ScaleDouble, -1.25);

	int32 Bad = 42;
	EXPECT_FALSE(FParse::Value(Stream, TEXT("Bad="), Bad));
	EXPECT_EQ(Bad, 42);
	uint8 Small = 9;
	EXPECT_FALSE(FParse::Value(Stream, TEXT("Small="), Small));
	EXPECT_EQ(Small, 9);
	uint32 Unsigned = 3;
	EXPECT_FALSE(FParse::Value(Stream, TEXT("Neg="), Unsigned));
	int16 Negative = 0;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Neg="), Negative));
	EXPECT_EQ(Negative, -7);
	int64 Big = 0;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Big="), Big));
	EXPECT_EQ(Big, 5000000000LL);
	int32 TooBig = 1;
	EXPECT_FALSE(FParse::Value(Stream, TEXT("Big="), TooBig));
	EXPECT_EQ(TooBig, 1);
}

TEST(ParseTest, NamesAndBooleans)
{
	const TCHAR* Stream = TEXT("-Map=Entry -Fast=true -Slow=off -Count=2");
	FName Map;
	EXPECT_TRUE(FParse::Value(Stream, TEXT("Map="), Map));
	EXPECT_EQ(Map, FName(TEXT("Entry")));

	bool bFast = false;
	bool bSlow = true;
	bool bCount = false;
	EXPECT_TRUE(FParse::Bool(Stream, TEXT("Fast="), bFast));
	EXPECT_TRUE(FParse::Bool(Stream, TEXT("Slow="), bSlow));
	EXPECT_TRUE(FParse::Bool(Stream, TEXT("Count="), bCount));
	EXPECT_TRUE(bFast);
	EXPECT_FALSE(bSlow);
	EXPECT_TRUE(bCount);
	bool bMissing = true;
	EXPECT_FALSE(FParse::Bool(Stream, TEXT("Missing="), bMissing));
	EXPECT_TRUE(bMissing);
}

TEST(ParseTest, ParamFindsWholeSwitchesOnly)
{
	const TCHAR* Stream = TEXT("Game.uproject -unattended -NoSplash -LogCmds=\"-Fake\" /Slash");
	EXPECT_TRUE(FParse::Param(Stream, TEXT("Unattended")));
	EXPECT_TRUE(FParse::Param(Stream, TEXT("nosplash")));
	EXPECT_TRUE(FParse::Param(Stream, TEXT("Slash")));
	EXPECT_FALSE(FParse::Param(Stream, TEXT("NoSplas")));
	EXPECT_FALSE(FParse::Param(Stream, TEXT("Splash")));
	EXPECT_FALSE(FParse::Param(Stream, TEXT("Fake")));
	EXPECT_FALSE(FParse::Param(Stream, TEXT("LogCmds")));
	EXPECT_FALSE(FParse::Param(Stream, TEXT("Game.uproject")));
}

TEST(ParseTest, TokensSplitAtWhitespaceAndRespectQuotes)
{
	const TCHAR* Stream = TEXT("  \"/my project/Game.uproject\" -Path=\"a b\" plain \"say \\\"hi\\\"\"");
	EXPECT_EQ(ToUtf8(FParse::Token(Stream, false)), "/my project/Game.uproject");
	EXPECT_EQ(ToUtf8(FParse::Token(Stream, false)), "-Path=\"a b\"");
	FString Plain;
	EXPECT_TRUE(FParse::Token(Stream, Plain, false));
	EXPECT_EQ(ToUtf8(Plain), "plain");
	EXPECT_EQ(ToUtf8(FParse::Token(Stream, true)), "say \"hi\"");
	FString Nothing;
	EXPECT_FALSE(FParse::Token(Stream, Nothing, false));
	EXPECT_TRUE(Nothing.IsEmpty());
}

TEST(ParseTest, CommandQuotedStringAndHex)
{
	const TCHAR* Stream = TEXT("  stat fps");
	EXPECT_FALSE(FParse::Command(&Stream, TEXT("sta")));
	EXPECT_TRUE(FParse::Command(&Stream, TEXT("STAT")));
	EXPECT_EQ(ToUtf8(Stream), "fps");

	FString Quoted;
	int32 NumCharsRead = 0;
	EXPECT_TRUE(FParse::QuotedString(TEXT("\"a\\tb\\\"c\" rest"), Quoted, &NumCharsRead));
	EXPECT_EQ(ToUtf8(Quoted), "a\tb\"c");
	EXPECT_EQ(NumCharsRead, 9);
	EXPECT_FALSE(FParse::QuotedString(TEXT("\"unterminated"), Quoted));
	EXPECT_FALSE(FParse::QuotedString(TEXT("no quote"), Quoted));

	EXPECT_EQ(FParse::HexNumber(TEXT("0x1F")), 31u);
	EXPECT_EQ(FParse::HexNumber(TEXT("ff")), 255u);
	EXPECT_EQ(FParse::HexNumber64(TEXT("100000000")), 0x100000000ull);
}
