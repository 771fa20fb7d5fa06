// Copyright Orvane. All Rights Reserved.

#include "ConfigText.h"

#include "Misc/ConfigCacheIni.h"

namespace UE::ConfigText
{
	namespace
	{
		bool IsBlank(TCHAR Char)
		{
			return Char == TEXT(' ') || Char == TEXT('\t');
		}

		/** Values compare exactly here: a change of case is a change the file must receive. */
		bool SameValues(const TArray<FString>& A, const TArray<FString>& B)
		{
			if (A.Num() != B.Num())
			{
				return false;
			}
			for (int32 Index = 0; Index < A.Num(); ++Index)
			{
				if (!A[Index].Equals(B[Index], ESearchCase::CaseSensitive))
				{
					return false;
				}
			}
			return true;
		}

		bool IsPrefixOf(const TArray<FString>& Prefix, const TArray<FString>& Values)
		{
			if (Prefix.Num() > Values.Num())
			{
				return false;
			}
			for (int32 Index = 0; Index < Prefix.Num(); ++Index)
			{
				if (!Prefix[Index].Equals(Values[Index], ESearchCase::CaseSensitive))
				{
					return false;
				}
			}
			return true;
		}

		bool ContainsExactly(const TArray<FString>& Values, const FString& Value)
		{
			for (const FString& Existing : Values)
			{
				if (Existing.Equals(Value, ESearchCase::CaseSensitive))
				{
					return true;
				}
			}
			return false;
		}

		bool ContainsIgnoringCase(const TArray<FString>& Values, const FString& Value)
		{
			for (const FString& Existing : Values)
			{
				if (Existing == Value)
				{
					return true;
				}
			}
			return false;
		}

		const TCHAR* CommandPrefix(ECommand Command)
		{
			switch (Command)
			{
				case ECommand::AddUnique:
					return TEXT("+");
				case ECommand::Add:
					return TEXT(".");
				case ECommand::Remove:
					return TEXT("-");
				case ECommand::Clear:
					return TEXT("!");
				case ECommand::Set:
				default:
					return TEXT("");
			}
		}

		FString MakeEntryLine(ECommand Command, const FString& KeyText, const FString& Value)
		{
			return FString(CommandPrefix(Command)) + KeyText + TEXT("=") + QuoteValueIfNeeded(Value);
		}

		/** The line with its value replaced; the key, the '=' and the blanks after it stay as they were. */
		FString ReplaceValueInLine(const FString& LineText, const FString& NewValue)
		{
			int32 EqualsIndex = INDEX_NONE;
			LineText.FindChar(TEXT('='), EqualsIndex);
			check(EqualsIndex != INDEX_NONE);
			int32 ValueStart = EqualsIndex + 1;
			while (ValueStart < LineText.Len() && IsBlank(LineText[ValueStart]))
			{
				++ValueStart;
			}
			return LineText.Left(ValueStart) + QuoteValueIfNeeded(NewValue);
		}

		/**
		 * Inserts lines for Section: after AfterLine when given, otherwise after the last entry of the
		 * section's last header, or in a new section at the end of the file.
		 */
		void InsertLines(TArray<FLine>& Lines, const FString& Section, int32 AfterLine, const TArray<FString>& NewTexts,
			const FString& DefaultEol)
		{
			if (NewTexts.Num() == 0)
			{
				return;
			}

			TArray<FString> Texts = NewTexts;
			int32 InsertAt = INDEX_NONE;
			if (AfterLine != INDEX_NONE)
			{
				InsertAt = AfterLine + 1;
			}
			else
			{
				const FParsedText Parsed = Parse(Lines);
				for (const FSectionSpan& Span : Parsed.Sections)
				{
					if (Span.Name == Section)
					{
						InsertAt = Span.LastEntryLine + 1;
					}
				}
				if (InsertAt == INDEX_NONE)
				{
					// A new section goes at the end, set apart from what comes before by one blank line.
					InsertAt = Lines.Num();
					TArray<FString> SectionTexts;
					if (Lines.Num() > 0 && !Lines.Last().Text.TrimStartAndEnd().IsEmpty())
					{
						SectionTexts.Add(FString());
					}
					SectionTexts.Add(FString(TEXT("[")) + Section + TEXT("]"));
					SectionTexts.Append(Texts);
					Texts = MoveTemp(SectionTexts);
				}
			}

			// The line before the new ones may be a last line without a line break; it needs one now.
			if (InsertAt > 0 && Lines[InsertAt - 1].Eol.IsEmpty())
			{
				Lines[InsertAt - 1].Eol = DefaultEol;
			}
			for (int32 Index = 0; Index < Texts.Num(); ++Index)
			{
				Lines.Insert(FLine{Texts[Index], DefaultEol}, InsertAt + Index);
			}
		}

		bool ProducesDesired(const TArray<FLine>& Lines, const FSectionList& Base, const FString& Section, FName Key,
			const TArray<FString>& Desired)
		{
			return SameValues(SavedValues(Evaluate(Base, Lines), Section, Key), Desired);
		}
	} // namespace

	void SplitLines(const FString& Text, TArray<FLine>& OutLines)
	{
		OutLines.Reset();
		const int32 Length = Text.Len();
		int32 Start = 0;
		int32 Index = 0;
		while (Index < Length)
		{
			const TCHAR Char = Text[Index];
			if (Char == TEXT('\n') || Char == TEXT('\r'))
			{
				const int32 EolLength =
					(Char == TEXT('\r') && Index + 1 < Length && Text[Index + 1] == TEXT('\n')) ? 2 : 1;
				OutLines.Add(FLine{Text.Mid(Start, Index - Start), Text.Mid(Index, EolLength)});
				Index += EolLength;
				Start = Index;
			}
			else
			{
				++Index;
			}
		}
		if (Start < Length)
		{
			OutLines.Add(FLine{Text.Mid(Start, Length - Start), FString()});
		}
	}

	FString JoinLines(const TArray<FLine>& Lines)
	{
		FString Result;
		for (const FLine& Line : Lines)
		{
			Result += Line.Text;
			Result += Line.Eol;
		}
		return Result;
	}

	FParsedText Parse(const TArray<FLine>& Lines)
	{
		FParsedText Parsed;
		int32 CurrentSpan = INDEX_NONE;
		for (int32 LineIndex = 0; LineIndex < Lines.Num(); ++LineIndex)
		{
			const FString Trimmed = Lines[LineIndex].Text.TrimStartAndEnd();
			if (Trimmed.IsEmpty() || Trimmed[0] == TEXT(';') || Trimmed[0] == TEXT('#'))
			{
				continue;
			}
			if (Trimmed[0] == TEXT('[') && Trimmed[Trimmed.Len() - 1] == TEXT(']'))
			{
				FSectionSpan Span;
				Span.Name = Trimmed.Mid(1, Trimmed.Len() - 2);
				Span.HeaderLine = LineIndex;
				Span.LastEntryLine = LineIndex;
				CurrentSpan = Parsed.Sections.Add(Span);
				continue;
			}

			// Lines outside any section and lines without '=' mean nothing to the config; they are kept as text.
			int32 EqualsIndex = INDEX_NONE;
			if (CurrentSpan == INDEX_NONE || !Trimmed.FindChar(TEXT('='), EqualsIndex))
			{
				continue;
			}

			FEntry Entry;
			Entry.LineIndex = LineIndex;
			Entry.Section = Parsed.Sections[CurrentSpan].Name;
			FString KeyPart = Trimmed.Left(EqualsIndex).TrimEnd();
			if (KeyPart.Len() > 1)
			{
				switch (KeyPart[0])
				{
					case TEXT('+'):
						Entry.Command = ECommand::AddUnique;
						break;
					case TEXT('.'):
						Entry.Command = ECommand::Add;
						break;
					case TEXT('-'):
						Entry.Command = ECommand::Remove;
						break;
					case TEXT('!'):
						Entry.Command = ECommand::Clear;
						break;
					default:
						break;
				}
				if (Entry.Command != ECommand::Set)
				{
					KeyPart = KeyPart.Mid(1).TrimStart();
				}
			}
			if (KeyPart.IsEmpty())
			{
				continue;
			}
			Entry.KeyText = KeyPart;
			Entry.Value = UnquoteValue(Trimmed.Mid(EqualsIndex + 1).TrimStart());
			Parsed.Sections[CurrentSpan].LastEntryLine = LineIndex;
			Parsed.Entries.Add(MoveTemp(Entry));
		}
		return Parsed;
	}

	FString UnquoteValue(const FString& RawValue)
	{
		const int32 Length = RawValue.Len();
		if (Length < 2 || RawValue[0] != TEXT('"') || RawValue[Length - 1] != TEXT('"'))
		{
			return RawValue;
		}
		FString Result;
		for (int32 Index = 1; Index < Length - 1; ++Index)
		{
			const TCHAR Char = RawValue[Index];
			if (Char == TEXT('\\') && Index + 1 < Length - 1 &&
				(RawValue[Index + 1] == TEXT('"') || RawValue[Index + 1] == TEXT('\\')))
			{
				Result.AppendChar(RawValue[Index + 1]);
				++Index;
			}
			else if (Char == TEXT('"'))
			{
				// A quote in the middle: the value is not one quoted string, so it stays as written.
				return RawValue;
			}
			else
			{
				Result.AppendChar(Char);
			}
		}
		return Result;
	}

	FString QuoteValueIfNeeded(const FString& Value)
	{
		int32 BreakIndex = INDEX_NONE;
		if (Value.FindChar(TEXT('\n'), BreakIndex) || Value.FindChar(TEXT('\r'), BreakIndex))
		{
			// One line holds one entry; a line break would turn the rest of the value into lines of their own.
			UE_LOG(LogConfig, Error, TEXT("A config value cannot hold a line break; it is written as one line: %s"),
				*Value);
			FString OneLine = Value;
			OneLine.ReplaceCharInline(TEXT('\r'), TEXT(' '), ESearchCase::CaseSensitive);
			OneLine.ReplaceCharInline(TEXT('\n'), TEXT(' '), ESearchCase::CaseSensitive);
			return QuoteValueIfNeeded(OneLine);
		}
		const int32 Length = Value.Len();
		const bool bEdgeBlanks = Length > 0 && (IsBlank(Value[0]) || IsBlank(Value[Length - 1]));
		const bool bLooksQuoted = Length >= 2 && Value[0] == TEXT('"') && Value[Length - 1] == TEXT('"');
		if (!bEdgeBlanks && !bLooksQuoted)
		{
			return Value;
		}
		FString Result(TEXT("\""));
		for (const TCHAR Char : Value)
		{
			if (Char == TEXT('"') || Char == TEXT('\\'))
			{
				Result.AppendChar(TEXT('\\'));
			}
			Result.AppendChar(Char);
		}
		Result.AppendChar(TEXT('"'));
		return Result;
	}

	FConfigSection* FindSection(FSectionList& Sections, const FString& Name)
	{
		for (TPair<FString, FConfigSection>& Pair : Sections)
		{
			if (Pair.Key == Name)
			{
				return &Pair.Value;
			}
		}
		return nullptr;
	}

	const FConfigSection* FindSection(const FSectionList& Sections, const FString& Name)
	{
		for (const TPair<FString, FConfigSection>& Pair : Sections)
		{
			if (Pair.Key == Name)
			{
				return &Pair.Value;
			}
		}
		return nullptr;
	}

	FConfigSection& FindOrAddSection(FSectionList& Sections, const FString& Name)
	{
		if (FConfigSection* Found = FindSection(Sections, Name))
		{
			return *Found;
		}
		Sections.Add(TPair<FString, FConfigSection>(Name, FConfigSection()));
		return Sections.Last().Value;
	}

	void ApplyEntry(FSectionList& Sections, const FEntry& Entry)
	{
		FConfigSection& Section = FindOrAddSection(Sections, Entry.Section);
		const FName Key(*Entry.KeyText);
		switch (Entry.Command)
		{
			case ECommand::Set:
				// A plain line replaces the value a read would see, so a key given twice keeps the later value.
				if (FConfigValue* Existing = Section.Find(Key))
				{
					*Existing = FConfigValue(Entry.Value);
				}
				else
				{
					Section.Add(Key, FConfigValue(Entry.Value));
				}
				break;
			case ECommand::AddUnique:
				Section.AddUnique(Key, FConfigValue(Entry.Value));
				break;
			case ECommand::Add:
				Section.Add(Key, FConfigValue(Entry.Value));
				break;
			case ECommand::Remove:
				Section.RemoveSingle(Key, FConfigValue(Entry.Value));
				break;
			case ECommand::Clear:
				Section.Remove(Key);
				break;
		}
	}

	FSectionList Evaluate(const FSectionList& Base, const TArray<FLine>& Lines)
	{
		FSectionList Result = Base;
		const FParsedText Parsed = Parse(Lines);
		int32 NextEntry = 0;
		for (const FSectionSpan& Span : Parsed.Sections)
		{
			// Sections exist from their header on, even without entries; entries follow in file order.
			FindOrAddSection(Result, Span.Name);
			while (NextEntry < Parsed.Entries.Num() && Parsed.Entries[NextEntry].LineIndex <= Span.LastEntryLine)
			{
				ApplyEntry(Result, Parsed.Entries[NextEntry]);
				++NextEntry;
			}
		}
		return Result;
	}

	TArray<FString> SavedValues(const FSectionList& Sections, const FString& Section, FName Key)
	{
		TArray<FString> Result;
		if (const FConfigSection* Found = FindSection(Sections, Section))
		{
			for (const FConfigSection::ElementType& Pair : *Found)
			{
				if (Pair.Key == Key)
				{
					Result.Add(Pair.Value.GetSavedValue());
				}
			}
		}
		return Result;
	}

	void RewriteKey(TArray<FLine>& Lines, const FSectionList& Base, const FString& Section, FName Key,
		const TArray<FString>& Desired, const FString& DefaultEol)
	{
		const TArray<FString> Current = SavedValues(Evaluate(Base, Lines), Section, Key);
		if (SameValues(Current, Desired))
		{
			return;
		}

		const FParsedText Parsed = Parse(Lines);
		TArray<const FEntry*> OwnEntries;
		for (const FEntry& Entry : Parsed.Entries)
		{
			if (Entry.Section == Section && FName(*Entry.KeyText) == Key)
			{
				OwnEntries.Add(&Entry);
			}
		}
		const FString KeyText = OwnEntries.Num() > 0 ? OwnEntries[0]->KeyText : Key.ToString();

		// Back to what the lower layers say: this file need not mention the key any more.
		const TArray<FString> BaseValues = SavedValues(Base, Section, Key);
		if (OwnEntries.Num() > 0 && SameValues(Desired, BaseValues))
		{
			TArray<FLine> Candidate = Lines;
			for (int32 Index = OwnEntries.Num() - 1; Index >= 0; --Index)
			{
				Candidate.RemoveAt(OwnEntries[Index]->LineIndex);
			}
			if (ProducesDesired(Candidate, Base, Section, Key, Desired))
			{
				Lines = MoveTemp(Candidate);
				return;
			}
		}

		// One value: change the line a read takes it from, where it stands.
		if (Desired.Num() == 1)
		{
			for (int32 Index = OwnEntries.Num() - 1; Index >= 0; --Index)
			{
				if (OwnEntries[Index]->Command == ECommand::Set)
				{
					TArray<FLine> Candidate = Lines;
					FLine& Line = Candidate[OwnEntries[Index]->LineIndex];
					Line.Text = ReplaceValueInLine(Line.Text, Desired[0]);
					if (ProducesDesired(Candidate, Base, Section, Key, Desired))
					{
						Lines = MoveTemp(Candidate);
						return;
					}
					break;
				}
			}
		}

		// Values added at the end: new lines after the key's last line, in the file's array style.
		if (Current.Num() < Desired.Num() && IsPrefixOf(Current, Desired))
		{
			TArray<FString> NewTexts;
			TArray<FString> Accumulated = Current;
			const bool bPlainSingle = OwnEntries.Num() == 0 && Current.Num() == 0 && Desired.Num() == 1;
			for (int32 Index = Current.Num(); Index < Desired.Num(); ++Index)
			{
				const FString& Value = Desired[Index];
				const ECommand Command = bPlainSingle                               ? ECommand::Set
										 : ContainsIgnoringCase(Accumulated, Value) ? ECommand::Add
																					: ECommand::AddUnique;
				NewTexts.Add(MakeEntryLine(Command, KeyText, Value));
				Accumulated.Add(Value);
			}
			TArray<FLine> Candidate = Lines;
			InsertLines(Candidate, Section, OwnEntries.Num() > 0 ? OwnEntries.Last()->LineIndex : INDEX_NONE, NewTexts,
				DefaultEol);
			if (ProducesDesired(Candidate, Base, Section, Key, Desired))
			{
				Lines = MoveTemp(Candidate);
				return;
			}
		}

		// Values dropped: remove the lines that added them.
		{
			TArray<FLine> Candidate = Lines;
			bool bRemovedAny = false;
			for (int32 Index = OwnEntries.Num() - 1; Index >= 0; --Index)
			{
				const FEntry& Entry = *OwnEntries[Index];
				const bool bAdds = Entry.Command == ECommand::Set || Entry.Command == ECommand::Add ||
								   Entry.Command == ECommand::AddUnique;
				if (bAdds && !ContainsExactly(Desired, Entry.Value))
				{
					Candidate.RemoveAt(Entry.LineIndex);
					bRemovedAny = true;
				}
			}
			if (bRemovedAny && ProducesDesired(Candidate, Base, Section, Key, Desired))
			{
				Lines = MoveTemp(Candidate);
				return;
			}
		}

		// Anything else: the key's lines are replaced by new ones where the first of them stood.
		TArray<FLine> Candidate = Lines;
		for (int32 Index = OwnEntries.Num() - 1; Index >= 0; --Index)
		{
			Candidate.RemoveAt(OwnEntries[Index]->LineIndex);
		}
		TArray<FString> NewTexts;
		if (!SameValues(Desired, BaseValues))
		{
			if (Desired.Num() == 0)
			{
				NewTexts.Add(MakeEntryLine(ECommand::Clear, KeyText, TEXT("ClearArray")));
			}
			else if (Desired.Num() == 1 && BaseValues.Num() <= 1)
			{
				NewTexts.Add(MakeEntryLine(ECommand::Set, KeyText, Desired[0]));
			}
			else
			{
				if (BaseValues.Num() > 0)
				{
					NewTexts.Add(MakeEntryLine(ECommand::Clear, KeyText, TEXT("ClearArray")));
				}
				TArray<FString> Accumulated;
				for (const FString& Value : Desired)
				{
					NewTexts.Add(
						MakeEntryLine(ContainsIgnoringCase(Accumulated, Value) ? ECommand::Add : ECommand::AddUnique,
							KeyText, Value));
					Accumulated.Add(Value);
				}
			}
		}
		// An entry always follows its section's header, so the line before the key's first line exists.
		InsertLines(
			Candidate, Section, OwnEntries.Num() > 0 ? OwnEntries[0]->LineIndex - 1 : INDEX_NONE, NewTexts, DefaultEol);
		if (!ProducesDesired(Candidate, Base, Section, Key, Desired))
		{
			UE_LOG(LogConfig, Error, TEXT("Config key [%s] %s could not be written so that it reads back as set."),
				*Section, *KeyText);
		}
		Lines = MoveTemp(Candidate);
	}
} // namespace UE::ConfigText
