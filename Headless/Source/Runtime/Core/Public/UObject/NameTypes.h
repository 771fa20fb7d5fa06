// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringFwd.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "UObject/UnrealNames.h"

/** How an FName constructor treats text that is not in the name table yet. */
enum EFindName
{
	/** Find a name; return NAME_None if it doesn't exist. */
	FNAME_Find,

	/** Find a name or add it if it doesn't exist. */
	FNAME_Add,

	/** Find a name and replace its stored spelling with this one; not thread-safe. */
	FNAME_Replace_Not_Safe_For_Threading,
};

/** Whether name comparisons consider case. */
enum class ENameCase : uint8
{
	CaseSensitive,
	IgnoreCase,
};

/** An opaque index into the global name table. */
struct FNameEntryId
{
	FNameEntryId() = default;

	bool IsNone() const { return Value == 0; }

	/** The index as an integer; stable only for the lifetime of the process. */
	uint32 ToUnstableInt() const { return Value; }

	static FNameEntryId FromUnstableInt(uint32 UnstableInt)
	{
		FNameEntryId Id;
		Id.Value = UnstableInt;
		return Id;
	}

	static FNameEntryId FromEName(EName Ename) { return FromUnstableInt(static_cast<uint32>(Ename)); }

	friend bool operator==(FNameEntryId A, FNameEntryId B) { return A.Value == B.Value; }
	friend bool operator!=(FNameEntryId A, FNameEntryId B) { return A.Value != B.Value; }
	friend bool operator<(FNameEntryId A, FNameEntryId B) { return A.Value < B.Value; }
	friend uint32 GetTypeHash(FNameEntryId Id) { return Id.Value; }

private:
	uint32 Value = 0;
};

/**
 * A case-insensitive, interned string with an optional number suffix. Names are cheap to copy and
 * compare; the text lives once in a global, thread-safe table that keeps the first spelling it saw.
 */
class CORE_API FName
{
public:
	FName() = default;

	/** The hard-coded name for Ename, such as NAME_None. */
	FName(EName Ename);

	FName(EName Ename, int32 InNumber);

	/** Looks the text up (or adds it), splitting a trailing "_<number>" into the number. */
	FName(const WIDECHAR* Name, EFindName FindType = FNAME_Add);
	FName(const ANSICHAR* Name, EFindName FindType = FNAME_Add);
	FName(const UTF8CHAR* Name, EFindName FindType = FNAME_Add);
	FName(int32 Len, const WIDECHAR* Name, EFindName FindType = FNAME_Add);
	FName(int32 Len, const ANSICHAR* Name, EFindName FindType = FNAME_Add);
	explicit FName(FWideStringView Name, EFindName FindType = FNAME_Add);
	explicit FName(FAnsiStringView Name, EFindName FindType = FNAME_Add);

	/** Uses the text as it is, with InNumber as the stored number (NAME_EXTERNAL_TO_INTERNAL of the shown one). */
	FName(const WIDECHAR* Name, int32 InNumber);
	FName(const ANSICHAR* Name, int32 InNumber);
	FName(const WIDECHAR* Name, int32 InNumber, EFindName FindType);

	/** A name with the same text as Other and a different number. */
	FName(FName Other, int32 InNumber);

	/** The text with its number suffix; "None" for NAME_None. */
	FString ToString() const;
	void ToString(FString& Out) const;

	/** Appends the text with its number suffix to Out. */
	void AppendString(FString& Out) const;

	/** The text without its number suffix. */
	FString GetPlainNameString() const;

	bool IsNone() const { return ComparisonIndex.IsNone() && Number == NAME_NO_NUMBER_INTERNAL; }
	bool IsValid() const;

	int32 GetNumber() const { return static_cast<int32>(Number); }
	void SetNumber(int32 NewNumber) { Number = static_cast<uint32>(NewNumber); }

	FNameEntryId GetComparisonIndex() const { return ComparisonIndex; }
	FNameEntryId GetDisplayIndex() const { return ComparisonIndex; }

	bool operator==(FName Other) const { return ComparisonIndex == Other.ComparisonIndex && Number == Other.Number; }
	bool operator!=(FName Other) const { return !(*this == Other); }
	bool operator==(EName Other) const { return *this == FName(Other); }

	/** Compares with text, ignoring case, as if the text had been made into a name. */
	bool operator==(const TCHAR* Other) const;
	bool operator==(const ANSICHAR* Other) const;

	bool IsEqual(const FName& Other, const ENameCase CompareMethod = ENameCase::IgnoreCase,
		const bool bCompareNumber = true) const;

	/** Orders by table index: fast, but not alphabetical and not stable between runs. */
	bool FastLess(const FName& Other) const;

	/** Orders alphabetically (ignoring case), then by number. */
	bool LexicalLess(const FName& Other) const;

	/** Alphabetical comparison ignoring case, then by number: negative when this name sorts first. */
	int32 Compare(const FName& Other) const;

	friend uint32 GetTypeHash(FName Name) { return Name.ComparisonIndex.ToUnstableInt() * 31u + Name.Number; }

private:
	void Init(const TCHAR* Name, int32 Len, int32 InNumber, EFindName FindType, bool bSplitNumber);

	FNameEntryId ComparisonIndex;
	uint32 Number = NAME_NO_NUMBER_INTERNAL;
};

/** Sorts names alphabetically; use with TArray::Sort. */
struct FNameLexicalLess
{
	bool operator()(const FName& A, const FName& B) const { return A.LexicalLess(B); }
};

/** Sorts names by table index; fast, not alphabetical. */
struct FNameFastLess
{
	bool operator()(const FName& A, const FName& B) const { return A.FastLess(B); }
};

CORE_API FString LexToString(const FName& Name);
CORE_API void LexFromString(FName& Name, const TCHAR* Str);
