// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/ConfigTypes.h"
#include "Templates/Tuple.h"

/** The text side of config files: lines, how they parse, and how they merge into sections. */
namespace UE::ConfigText
{
	using FSectionList = TArray<TPair<FString, FConfigSection>>;

	/** What an entry line does to its key. */
	enum class ECommand : uint8
	{
		Set,
		AddUnique,
		Add,
		Remove,
		Clear,
	};

	/** A "Key=Value" line inside a section. */
	struct FEntry
	{
		int32 LineIndex = INDEX_NONE;
		FString Section;
		FString KeyText;
		ECommand Command = ECommand::Set;
		FString Value;
	};

	/** A "[Name]" header and the last entry line under it (the header itself when it has none). */
	struct FSectionSpan
	{
		FString Name;
		int32 HeaderLine = INDEX_NONE;
		int32 LastEntryLine = INDEX_NONE;
	};

	struct FParsedText
	{
		TArray<FEntry> Entries;
		TArray<FSectionSpan> Sections;
	};

	/** Splits text into lines, keeping each line break (LF, CR LF or CR) as it was. */
	void SplitLines(const FString& Text, TArray<FLine>& OutLines);

	FString JoinLines(const TArray<FLine>& Lines);

	FParsedText Parse(const TArray<FLine>& Lines);

	/** Removes quotes that wrap the whole value, resolving \" and \\ inside them. */
	FString UnquoteValue(const FString& RawValue);

	/** The value as it must appear in a file to read back unchanged. */
	FString QuoteValueIfNeeded(const FString& Value);

	FConfigSection* FindSection(FSectionList& Sections, const FString& Name);
	const FConfigSection* FindSection(const FSectionList& Sections, const FString& Name);
	FConfigSection& FindOrAddSection(FSectionList& Sections, const FString& Name);

	/** Applies one entry to the sections, the way a read does. */
	void ApplyEntry(FSectionList& Sections, const FEntry& Entry);

	/** Base overlaid by the text's sections and entries. */
	FSectionList Evaluate(const FSectionList& Base, const TArray<FLine>& Lines);

	/**
	 * Edits Lines as little as possible so that, read on top of Base, Key of Section has exactly Desired
	 * (saved values, in order). DefaultEol ends new lines.
	 */
	void RewriteKey(TArray<FLine>& Lines, const FSectionList& Base, const FString& Section, FName Key,
		const TArray<FString>& Desired, const FString& DefaultEol);

	/** The saved values of Key, in order. */
	TArray<FString> SavedValues(const FSectionList& Sections, const FString& Section, FName Key);
} // namespace UE::ConfigText
