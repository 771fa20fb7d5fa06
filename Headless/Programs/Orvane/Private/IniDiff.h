// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * A line diff of two texts in the unified format, so a run can show exactly which lines of a
 * configuration file it changed. Lines are compared byte for byte, line terminators included: a file
 * that gains or loses the newline after its last line, or CRLF endings, shows up as a change.
 */
namespace IniDiff
{
	/** One line of a text; a text's last line may lack its terminating newline. */
	struct FLine
	{
		FString Text;
		bool bHasNewline = true;

		bool operator==(const FLine& Other) const
		{
			return bHasNewline == Other.bHasNewline && Text.Equals(Other.Text, ESearchCase::CaseSensitive);
		}
	};

	/** What a line of the diff does. */
	enum class EEditKind : uint8
	{
		Keep,
		Remove,
		Add
	};

	/** One line of the edit script that turns the old lines into the new ones. */
	struct FEdit
	{
		EEditKind Kind = EEditKind::Keep;
		/** Index of the line in the old text (Keep, Remove) or in the new text (Add). */
		int32 OldIndex = INDEX_NONE;
		int32 NewIndex = INDEX_NONE;
	};

	/** Splits a text into lines at '\n'; a carriage return stays part of its line. */
	TArray<FLine> SplitLines(const FString& Text);

	/** A shortest edit script from Old to New: removals before additions within each changed run. */
	TArray<FEdit> ComputeEdits(const TArray<FLine>& Old, const TArray<FLine>& New);

	/**
	 * The unified diff of two texts with ContextLines of unchanged lines around each change: the two
	 * "---"/"+++" header lines with the given labels, then the hunks. Empty when the texts are equal.
	 */
	FString Unified(const FString& OldLabel, const FString& NewLabel, const FString& OldText, const FString& NewText,
		int32 ContextLines = 3);
} // namespace IniDiff
