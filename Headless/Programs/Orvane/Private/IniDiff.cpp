// Copyright Orvane. All Rights Reserved.

#include "IniDiff.h"

namespace IniDiff
{
	namespace
	{
		/**
		 * The search keeps one row of furthest reaches per edit distance, which grows with the square of the
		 * distance; beyond this many edits the changed middle is shown as removed and added whole instead.
		 */
		constexpr int32 MaxSearchedEdits = 2000;

		/** The furthest-reaching search for a shortest edit script between two line ranges (no common ends). */
		bool SearchShortestEdits(const TArray<FLine>& Old, int32 OldBegin, int32 OldCount, const TArray<FLine>& New,
			int32 NewBegin, int32 NewCount, TArray<FEdit>& OutEdits)
		{
			const int32 Max = FMath::Min(OldCount + NewCount, MaxSearchedEdits);
			const int32 Offset = Max + 1;
			TArray<int32> Reach;
			Reach.Init(0, 2 * Max + 3);
			// Trace[D] is the reach of every diagonal before step D, on diagonals -D-1..D+1.
			TArray<TArray<int32>> Trace;
			bool bFound = false;
			for (int32 D = 0; D <= Max && !bFound; ++D)
			{
				TArray<int32>& Row = Trace.AddDefaulted_GetRef();
				Row.Append(&Reach[Offset - D - 1], 2 * D + 3);
				for (int32 K = -D; K <= D; K += 2)
				{
					int32 X = (K == -D || (K != D && Reach[Offset + K - 1] < Reach[Offset + K + 1]))
								  ? Reach[Offset + K + 1]
								  : Reach[Offset + K - 1] + 1;
					int32 Y = X - K;
					while (X < OldCount && Y < NewCount && Old[OldBegin + X] == New[NewBegin + Y])
					{
						++X;
						++Y;
					}
					Reach[Offset + K] = X;
					if (X >= OldCount && Y >= NewCount)
					{
						bFound = true;
						break;
					}
				}
			}
			if (!bFound)
			{
				return false;
			}

			// Walk back from the end through the recorded rows, collecting the edits in reverse.
			TArray<FEdit> Reversed;
			int32 X = OldCount;
			int32 Y = NewCount;
			for (int32 D = Trace.Num() - 1; D >= 0; --D)
			{
				const TArray<int32>& Row = Trace[D];
				auto RowReach = [&Row, D](int32 K)
				{
					return Row[K + D + 1];
				};
				const int32 K = X - Y;
				const int32 PreviousK = (K == -D || (K != D && RowReach(K - 1) < RowReach(K + 1))) ? K + 1 : K - 1;
				const int32 PreviousX = D == 0 ? 0 : RowReach(PreviousK);
				const int32 PreviousY = D == 0 ? 0 : PreviousX - PreviousK;
				while (X > PreviousX && Y > PreviousY)
				{
					--X;
					--Y;
					Reversed.Add({EEditKind::Keep, OldBegin + X, NewBegin + Y});
				}
				if (D > 0)
				{
					if (X == PreviousX)
					{
						Reversed.Add({EEditKind::Add, INDEX_NONE, NewBegin + PreviousY});
					}
					else
					{
						Reversed.Add({EEditKind::Remove, OldBegin + PreviousX, INDEX_NONE});
					}
				}
				X = PreviousX;
				Y = PreviousY;
			}
			for (int32 Index = Reversed.Num() - 1; Index >= 0; --Index)
			{
				OutEdits.Add(Reversed[Index]);
			}
			return true;
		}

		/** Within each run of changes, shows the removed lines first, as readers of unified diffs expect. */
		void GroupRemovalsFirst(TArray<FEdit>& Edits)
		{
			int32 RunStart = 0;
			while (RunStart < Edits.Num())
			{
				if (Edits[RunStart].Kind == EEditKind::Keep)
				{
					++RunStart;
					continue;
				}
				int32 RunEnd = RunStart;
				while (RunEnd < Edits.Num() && Edits[RunEnd].Kind != EEditKind::Keep)
				{
					++RunEnd;
				}
				TArray<FEdit> Removals;
				TArray<FEdit> Additions;
				for (int32 Index = RunStart; Index < RunEnd; ++Index)
				{
					(Edits[Index].Kind == EEditKind::Remove ? Removals : Additions).Add(Edits[Index]);
				}
				int32 Write = RunStart;
				for (const FEdit& Edit : Removals)
				{
					Edits[Write++] = Edit;
				}
				for (const FEdit& Edit : Additions)
				{
					Edits[Write++] = Edit;
				}
				RunStart = RunEnd;
			}
		}

		FString FormatRange(int32 Start, int32 Count)
		{
			// A range of one line is written without its count; an empty range names the line before it.
			if (Count == 1)
			{
				return FString::Printf(TEXT("%d"), Start + 1);
			}
			return FString::Printf(TEXT("%d,%d"), Count == 0 ? Start : Start + 1, Count);
		}

		void AppendLine(TArray<FString>& Out, TCHAR Prefix, const FLine& Line)
		{
			FString Text;
			Text.AppendChar(Prefix);
			Text += Line.Text;
			Out.Add(MoveTemp(Text));
			if (!Line.bHasNewline)
			{
				Out.Add(TEXT("\\ No newline at end of file"));
			}
		}
	} // namespace

	TArray<FLine> SplitLines(const FString& Text)
	{
		TArray<FLine> Lines;
		int32 Start = 0;
		const int32 Length = Text.Len();
		for (int32 Index = 0; Index < Length; ++Index)
		{
			if (Text[Index] == TEXT('\n'))
			{
				Lines.Add({Text.Mid(Start, Index - Start), true});
				Start = Index + 1;
			}
		}
		if (Start < Length)
		{
			Lines.Add({Text.Mid(Start), false});
		}
		return Lines;
	}

	TArray<FEdit> ComputeEdits(const TArray<FLine>& Old, const TArray<FLine>& New)
	{
		TArray<FEdit> Edits;
		int32 Prefix = 0;
		while (Prefix < Old.Num() && Prefix < New.Num() && Old[Prefix] == New[Prefix])
		{
			++Prefix;
		}
		int32 Suffix = 0;
		while (Suffix < Old.Num() - Prefix && Suffix < New.Num() - Prefix &&
			   Old[Old.Num() - 1 - Suffix] == New[New.Num() - 1 - Suffix])
		{
			++Suffix;
		}
		for (int32 Index = 0; Index < Prefix; ++Index)
		{
			Edits.Add({EEditKind::Keep, Index, Index});
		}

		const int32 OldCount = Old.Num() - Prefix - Suffix;
		const int32 NewCount = New.Num() - Prefix - Suffix;
		if (!SearchShortestEdits(Old, Prefix, OldCount, New, Prefix, NewCount, Edits))
		{
			for (int32 Index = 0; Index < OldCount; ++Index)
			{
				Edits.Add({EEditKind::Remove, Prefix + Index, INDEX_NONE});
			}
			for (int32 Index = 0; Index < NewCount; ++Index)
			{
				Edits.Add({EEditKind::Add, INDEX_NONE, Prefix + Index});
			}
		}

		for (int32 Index = 0; Index < Suffix; ++Index)
		{
			Edits.Add({EEditKind::Keep, Old.Num() - Suffix + Index, New.Num() - Suffix + Index});
		}
		GroupRemovalsFirst(Edits);
		return Edits;
	}

	FString Unified(const FString& OldLabel, const FString& NewLabel, const FString& OldText, const FString& NewText,
		int32 ContextLines)
	{
		const TArray<FLine> Old = SplitLines(OldText);
		const TArray<FLine> New = SplitLines(NewText);
		const TArray<FEdit> Edits = ComputeEdits(Old, New);

		// The old and new line numbers each edit starts at.
		TArray<int32> OldBefore;
		TArray<int32> NewBefore;
		int32 OldLine = 0;
		int32 NewLine = 0;
		for (const FEdit& Edit : Edits)
		{
			OldBefore.Add(OldLine);
			NewBefore.Add(NewLine);
			OldLine += Edit.Kind != EEditKind::Add ? 1 : 0;
			NewLine += Edit.Kind != EEditKind::Remove ? 1 : 0;
		}

		TArray<FString> Out;
		int32 Index = 0;
		while (Index < Edits.Num())
		{
			if (Edits[Index].Kind == EEditKind::Keep)
			{
				++Index;
				continue;
			}
			// A hunk starts ContextLines before its first change and takes in every later change whose
			// context would touch its own.
			const int32 HunkBegin = FMath::Max(0, Index - ContextLines);
			int32 LastChange = Index;
			int32 Scan = Index + 1;
			while (Scan < Edits.Num())
			{
				if (Edits[Scan].Kind != EEditKind::Keep)
				{
					LastChange = Scan;
				}
				else if (Scan - LastChange > 2 * ContextLines)
				{
					break;
				}
				++Scan;
			}
			const int32 HunkEnd = FMath::Min(Edits.Num(), LastChange + 1 + ContextLines);

			int32 OldCount = 0;
			int32 NewCount = 0;
			for (int32 Edit = HunkBegin; Edit < HunkEnd; ++Edit)
			{
				OldCount += Edits[Edit].Kind != EEditKind::Add ? 1 : 0;
				NewCount += Edits[Edit].Kind != EEditKind::Remove ? 1 : 0;
			}
			if (Out.Num() == 0)
			{
				Out.Add(TEXT("--- ") + OldLabel);
				Out.Add(TEXT("+++ ") + NewLabel);
			}
			Out.Add(FString::Printf(TEXT("@@ -%s +%s @@"), *FormatRange(OldBefore[HunkBegin], OldCount),
				*FormatRange(NewBefore[HunkBegin], NewCount)));
			for (int32 Edit = HunkBegin; Edit < HunkEnd; ++Edit)
			{
				switch (Edits[Edit].Kind)
				{
					case EEditKind::Keep:
						AppendLine(Out, TEXT(' '), Old[Edits[Edit].OldIndex]);
						break;
					case EEditKind::Remove:
						AppendLine(Out, TEXT('-'), Old[Edits[Edit].OldIndex]);
						break;
					case EEditKind::Add:
						AppendLine(Out, TEXT('+'), New[Edits[Edit].NewIndex]);
						break;
				}
			}
			Index = HunkEnd;
		}
		return FString::Join(Out, TEXT("\n"));
	}
} // namespace IniDiff
