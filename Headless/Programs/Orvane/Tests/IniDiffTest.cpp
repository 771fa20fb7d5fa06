// Copyright Orvane. All Rights Reserved.

#include "IniDiff.h"
#include "EngineTestPrinters.h"

#include <gtest/gtest.h>

#include <random>

namespace
{
	/** Applies an edit script to Old; a correct script gives back New. */
	TArray<IniDiff::FLine> Apply(const TArray<IniDiff::FLine>& Old, const TArray<IniDiff::FLine>& New,
		const TArray<IniDiff::FEdit>& Edits, int32& OutChanges)
	{
		TArray<IniDiff::FLine> Result;
		OutChanges = 0;
		int32 NextOld = 0;
		for (const IniDiff::FEdit& Edit : Edits)
		{
			switch (Edit.Kind)
			{
				case IniDiff::EEditKind::Keep:
					EXPECT_EQ(Edit.OldIndex, NextOld);
					EXPECT_TRUE(Old[Edit.OldIndex] == New[Edit.NewIndex]);
					Result.Add(Old[NextOld++]);
					break;
				case IniDiff::EEditKind::Remove:
					EXPECT_EQ(Edit.OldIndex, NextOld);
					++NextOld;
					++OutChanges;
					break;
				case IniDiff::EEditKind::Add:
					Result.Add(New[Edit.NewIndex]);
					++OutChanges;
					break;
			}
		}
		EXPECT_EQ(NextOld, Old.Num());
		return Result;
	}

	/** The length of the longest common subsequence, by the textbook table. */
	int32 CommonLength(const TArray<IniDiff::FLine>& Old, const TArray<IniDiff::FLine>& New)
	{
		TArray<int32> Table;
		Table.Init(0, (Old.Num() + 1) * (New.Num() + 1));
		const int32 Width = New.Num() + 1;
		for (int32 I = Old.Num() - 1; I >= 0; --I)
		{
			for (int32 J = New.Num() - 1; J >= 0; --J)
			{
				Table[I * Width + J] = Old[I] == New[J]
										   ? Table[(I + 1) * Width + J + 1] + 1
										   : FMath::Max(Table[(I + 1) * Width + J], Table[I * Width + J + 1]);
			}
		}
		return Table[0];
	}

	bool SameLines(const TArray<IniDiff::FLine>& A, const TArray<IniDiff::FLine>& B)
	{
		if (A.Num() != B.Num())
		{
			return false;
		}
		for (int32 Index = 0; Index < A.Num(); ++Index)
		{
			if (!(A[Index] == B[Index]))
			{
				return false;
			}
		}
		return true;
	}

	FString NumberedLines(int32 First, int32 Last)
	{
		FString Text;
		for (int32 Line = First; Line <= Last; ++Line)
		{
			Text += FString::Printf(TEXT("line%d\n"), Line);
		}
		return Text;
	}
} // namespace

TEST(IniDiffTest, SplitLinesKeepsCarriageReturnsAndMarksAMissingFinalNewline)
{
	const TArray<IniDiff::FLine> Lines = IniDiff::SplitLines(TEXT("a\r\n\nb"));
	ASSERT_EQ(Lines.Num(), 3);
	EXPECT_EQ(Lines[0].Text, FString(TEXT("a\r")));
	EXPECT_TRUE(Lines[0].bHasNewline);
	EXPECT_EQ(Lines[1].Text, FString());
	EXPECT_EQ(Lines[2].Text, FString(TEXT("b")));
	EXPECT_FALSE(Lines[2].bHasNewline);
	EXPECT_EQ(IniDiff::SplitLines(FString()).Num(), 0);
	EXPECT_EQ(IniDiff::SplitLines(TEXT("\n")).Num(), 1);
}

TEST(IniDiffTest, EqualTextsGiveNoDiff)
{
	const FString Text = TEXT("[Section]\nKey=Value\n; comment\n");
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), Text, Text), FString());
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), FString(), FString()), FString());
}

TEST(IniDiffTest, OneChangedLineIsShownWithThreeLinesOfContext)
{
	const FString Old = NumberedLines(1, 10);
	FString New = Old;
	New.ReplaceInline(TEXT("line5\n"), TEXT("line5 changed\n"));
	EXPECT_EQ(IniDiff::Unified(TEXT("a/x.ini"), TEXT("b/x.ini"), Old, New), FString(TEXT("--- a/x.ini\n"
																						 "+++ b/x.ini\n"
																						 "@@ -2,7 +2,7 @@\n"
																						 " line2\n"
																						 " line3\n"
																						 " line4\n"
																						 "-line5\n"
																						 "+line5 changed\n"
																						 " line6\n"
																						 " line7\n"
																						 " line8")));
}

TEST(IniDiffTest, AKeyAddedToASectionAtTheStartOfTheFile)
{
	const FString Old =
		TEXT("[/Script/EngineSettings.GameMapsSettings]\nEditorStartupMap=/Game/Main.Main\n\n[Other]\n");
	const FString New = TEXT("[/Script/EngineSettings.GameMapsSettings]\nEditorStartupMap=/Game/Main.Main\n"
							 "GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C\n\n[Other]\n");
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), Old, New),
		FString(TEXT("--- a\n"
					 "+++ b\n"
					 "@@ -1,4 +1,5 @@\n"
					 " [/Script/EngineSettings.GameMapsSettings]\n"
					 " EditorStartupMap=/Game/Main.Main\n"
					 "+GlobalDefaultGameMode=/Orvane/Orvane_GM.Orvane_GM_C\n"
					 " \n"
					 " [Other]")));
}

TEST(IniDiffTest, DistantChangesMakeTwoHunksAndNearOnesOne)
{
	const FString Old = NumberedLines(1, 20);
	FString Far = Old;
	Far.ReplaceInline(TEXT("line2\n"), TEXT("two\n"));
	Far.ReplaceInline(TEXT("line18\n"), TEXT("eighteen\n"));
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), Old, Far),
		FString(TEXT("--- a\n+++ b\n"
					 "@@ -1,5 +1,5 @@\n line1\n-line2\n+two\n line3\n line4\n line5\n"
					 "@@ -15,6 +15,6 @@\n line15\n line16\n line17\n-line18\n+eighteen\n line19\n line20")));

	// Six unchanged lines between two changes are covered by the context of both: one hunk.
	FString Near = Old;
	Near.ReplaceInline(TEXT("line5\n"), TEXT("five\n"));
	Near.ReplaceInline(TEXT("line12\n"), TEXT("twelve\n"));
	const FString NearDiff = IniDiff::Unified(TEXT("a"), TEXT("b"), Old, Near);
	EXPECT_TRUE(NearDiff.Contains(TEXT("@@ -2,14 +2,14 @@\n"))) << ToUtf8(NearDiff);
	int32 Hunks = 0;
	for (int32 From = NearDiff.Find(TEXT("@@ -")); From != INDEX_NONE;
		 From = NearDiff.Find(TEXT("@@ -"), ESearchCase::CaseSensitive, ESearchDir::FromStart, From + 1))
	{
		++Hunks;
	}
	EXPECT_EQ(Hunks, 1);
}

TEST(IniDiffTest, NewAndEmptiedFilesUseEmptyRanges)
{
	EXPECT_EQ(IniDiff::Unified(TEXT("/dev/null"), TEXT("b/new.ini"), FString(), TEXT("[A]\nK=V\n")),
		FString(TEXT("--- /dev/null\n+++ b/new.ini\n@@ -0,0 +1,2 @@\n+[A]\n+K=V")));
	EXPECT_EQ(IniDiff::Unified(TEXT("a/old.ini"), TEXT("/dev/null"), TEXT("[A]\n"), FString()),
		FString(TEXT("--- a/old.ini\n+++ /dev/null\n@@ -1 +0,0 @@\n-[A]")));
}

TEST(IniDiffTest, AFinalLineThatGainsItsNewlineIsAChange)
{
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), TEXT("K=V"), TEXT("K=V\n")),
		FString(TEXT("--- a\n+++ b\n@@ -1 +1 @@\n-K=V\n\\ No newline at end of file\n+K=V")));
}

TEST(IniDiffTest, LineEndingsAreCompared)
{
	const FString Diff = IniDiff::Unified(TEXT("a"), TEXT("b"), TEXT("A=1\nB=2\n"), TEXT("A=1\r\nB=2\n"));
	EXPECT_EQ(Diff, FString(TEXT("--- a\n+++ b\n@@ -1,2 +1,2 @@\n-A=1\n+A=1\r\n B=2")));
}

TEST(IniDiffTest, RemovalsComeBeforeAdditionsInEachChangedRun)
{
	const FString Diff =
		IniDiff::Unified(TEXT("a"), TEXT("b"), TEXT("keep\nx1\nx2\nkeep2\n"), TEXT("keep\ny1\ny2\nkeep2\n"));
	EXPECT_EQ(Diff, FString(TEXT("--- a\n+++ b\n@@ -1,4 +1,4 @@\n keep\n-x1\n-x2\n+y1\n+y2\n keep2")));
}

TEST(IniDiffTest, DuplicateKeysKeepTheirPlace)
{
	// Real configuration files repeat lines; a key added after a repeated line must not move the repeats.
	const FString Old = TEXT("[S]\nA=1\nA=1\nB=2\nA=1\n");
	const FString New = TEXT("[S]\nA=1\nA=1\nC=3\nB=2\nA=1\n");
	EXPECT_EQ(IniDiff::Unified(TEXT("a"), TEXT("b"), Old, New, 1),
		FString(TEXT("--- a\n+++ b\n@@ -3,2 +3,3 @@\n A=1\n+C=3\n B=2")));
}

TEST(IniDiffTest, EditScriptsAreShortestOnRandomTexts)
{
	std::mt19937 Random(20261121);
	std::uniform_int_distribution<int32> LengthOf(0, 24);
	std::uniform_int_distribution<int32> LineOf(0, 4);
	std::bernoulli_distribution NewlineMissing(0.1);
	for (int32 Round = 0; Round < 500; ++Round)
	{
		auto MakeLines = [&]()
		{
			TArray<IniDiff::FLine> Lines;
			const int32 Count = LengthOf(Random);
			for (int32 Index = 0; Index < Count; ++Index)
			{
				Lines.Add({FString::Printf(TEXT("K%d"), LineOf(Random)), true});
			}
			if (Lines.Num() > 0 && NewlineMissing(Random))
			{
				Lines.Last().bHasNewline = false;
			}
			return Lines;
		};
		const TArray<IniDiff::FLine> Old = MakeLines();
		const TArray<IniDiff::FLine> New = MakeLines();
		const TArray<IniDiff::FEdit> Edits = IniDiff::ComputeEdits(Old, New);
		int32 Changes = 0;
		const TArray<IniDiff::FLine> Rebuilt = Apply(Old, New, Edits, Changes);
		ASSERT_TRUE(SameLines(Rebuilt, New)) << "round " << Round;
		ASSERT_EQ(Changes, Old.Num() + New.Num() - 2 * CommonLength(Old, New)) << "round " << Round;
	}
}

TEST(IniDiffTest, TextsTooDifferentToSearchAreStillDiffedCorrectly)
{
	// Past the search's limit the changed middle is replaced whole; the script must still rebuild the text.
	FString OldText;
	FString NewText;
	for (int32 Index = 0; Index < 1500; ++Index)
	{
		OldText += FString::Printf(TEXT("old%d\n"), Index);
		NewText += FString::Printf(TEXT("new%d\n"), Index);
	}
	OldText = TEXT("same\n") + OldText + TEXT("end\n");
	NewText = TEXT("same\n") + NewText + TEXT("end\n");
	const TArray<IniDiff::FLine> Old = IniDiff::SplitLines(OldText);
	const TArray<IniDiff::FLine> New = IniDiff::SplitLines(NewText);
	int32 Changes = 0;
	const TArray<IniDiff::FLine> Rebuilt = Apply(Old, New, IniDiff::ComputeEdits(Old, New), Changes);
	EXPECT_TRUE(SameLines(Rebuilt, New));
	EXPECT_EQ(Changes, 3000);
	const FString Diff = IniDiff::Unified(TEXT("a"), TEXT("b"), OldText, NewText);
	EXPECT_TRUE(Diff.StartsWith(TEXT("--- a\n+++ b\n@@ -1,1502 +1,1502 @@\n same\n-old0\n")));
}
