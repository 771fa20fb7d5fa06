// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"

#include <cmath>
#include <cstdio>

namespace
{
	bool CharsEqual(TCHAR A, TCHAR B, ESearchCase::Type SearchCase)
	{
		return SearchCase == ESearchCase::CaseSensitive ? A == B : FChar::ToUpper(A) == FChar::ToUpper(B);
	}

	bool RangesEqual(const TCHAR* A, const TCHAR* B, int32 Count, ESearchCase::Type SearchCase)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			if (!CharsEqual(A[Index], B[Index], SearchCase))
			{
				return false;
			}
		}
		return true;
	}

	int32 ClampCount(int32 Count, int32 Length)
	{
		return Count < 0 ? 0 : (Count > Length ? Length : Count);
	}

	template <typename CharType>
	void AssignConverted(FString& Out, const CharType* Src, int32 Count)
	{
		Out.Empty();
		Out.AppendChars(Src, Count);
	}

	/** Matches Wildcard against Text from the given positions, backtracking over '*'. */
	bool MatchWildcardAt(const TCHAR* Text, const TCHAR* Wildcard, ESearchCase::Type SearchCase)
	{
		const TCHAR* StarWildcard = nullptr;
		const TCHAR* StarText = nullptr;
		while (*Text)
		{
			if (*Wildcard == TEXT('*'))
			{
				StarWildcard = ++Wildcard;
				StarText = Text;
			}
			else if (*Wildcard == TEXT('?') || (*Wildcard && CharsEqual(*Wildcard, *Text, SearchCase)))
			{
				++Wildcard;
				++Text;
			}
			else if (StarWildcard)
			{
				Wildcard = StarWildcard;
				Text = ++StarText;
			}
			else
			{
				return false;
			}
		}
		while (*Wildcard == TEXT('*'))
		{
			++Wildcard;
		}
		return *Wildcard == 0;
	}
} // namespace

FString::FString(const WIDECHAR* Str)
{
	if (Str && *Str)
	{
		AppendChars(Str, FCString::Strlen(Str));
	}
}

FString::FString(const ANSICHAR* Str)
{
	if (Str && *Str)
	{
		AppendChars(Str, FCStringAnsi::Strlen(Str));
	}
}

FString::FString(const UTF8CHAR* Str)
{
	if (Str && *Str)
	{
		AppendChars(Str, FCStringUtf8::Strlen(Str));
	}
}

FString::FString(int32 InCount, const WIDECHAR* InSrc)
{
	check(InCount >= 0);
	AppendChars(InSrc, InCount);
}

FString::FString(int32 InCount, const ANSICHAR* InSrc)
{
	check(InCount >= 0);
	AppendChars(InSrc, InCount);
}

FString::FString(int32 InCount, const UTF8CHAR* InSrc)
{
	check(InCount >= 0);
	AppendChars(InSrc, InCount);
}

FString::FString(FWideStringView View)
{
	AppendChars(View.GetData(), View.Len());
}

FString::FString(FAnsiStringView View)
{
	AppendChars(View.GetData(), View.Len());
}

FString::FString(FUtf8StringView View)
{
	AppendChars(View.GetData(), View.Len());
}

FString::FString(const FString& Other, int32 ExtraSlack)
{
	Reserve(Other.Len() + ExtraSlack);
	Append(Other);
}

FString::FString(FString&& Other, int32 ExtraSlack)
	: Data(MoveTemp(Other.Data))
{
	Reserve(Len() + ExtraSlack);
}

FString& FString::operator=(const TCHAR* Other)
{
	if (Other != **this)
	{
		// The source may point into this string, so build the copy before replacing the storage.
		FString Copy(Other);
		Data = MoveTemp(Copy.Data);
	}
	return *this;
}

void FString::Empty(int32 Slack)
{
	Data.Empty(Slack ? Slack + 1 : 0);
}

void FString::Reset(int32 NewReservedSize)
{
	const int32 NewSizeIncludingTerminator = NewReservedSize > 0 ? NewReservedSize + 1 : 0;
	Data.Reset(NewSizeIncludingTerminator);
}

void FString::Shrink()
{
	Data.Shrink();
}

void FString::Reserve(int32 CharacterCount)
{
	checkf(CharacterCount >= 0, TEXT("Reserve called with a negative count: %i"), CharacterCount);
	if (CharacterCount > 0)
	{
		Data.Reserve(CharacterCount + 1);
	}
}

TCHAR* FString::AddUninitializedChars(int32 Count)
{
	check(Count >= 0);
	const int32 OldLen = Len();
	Data.AddUninitialized(Data.Num() ? Count : Count + 1);
	TCHAR* Dest = Data.GetData() + OldLen;
	Dest[Count] = 0;
	return Dest;
}

void FString::SetLength(int32 NewLen, EAllowShrinking AllowShrinking)
{
	if (NewLen <= 0)
	{
		if (AllowShrinking == EAllowShrinking::Yes)
		{
			Data.Empty();
		}
		else
		{
			Data.Reset();
		}
		return;
	}
	if (NewLen < Len())
	{
		Data.RemoveAt(NewLen, Len() - NewLen, AllowShrinking);
		Data.GetData()[NewLen] = 0;
	}
}

FString& FString::AppendChar(TCHAR InChar)
{
	check(InChar != 0);
	*AddUninitializedChars(1) = InChar;
	return *this;
}

FString& FString::AppendChars(const TCHAR* Str, int32 Count)
{
	checkf(Count >= 0, TEXT("AppendChars called with a negative count: %i"), Count);
	if (Count > 0)
	{
		// Str may point into this string; remember its offset across the reallocation.
		const TCHAR* OldData = Data.GetData();
		const bool bAliased = OldData && Str >= OldData && Str < OldData + Data.Num();
		const PTRINT Offset = bAliased ? Str - OldData : 0;
		TCHAR* Dest = AddUninitializedChars(Count);
		const TCHAR* Source = bAliased ? Data.GetData() + Offset : Str;
		FMemory::Memmove(Dest, Source, Count * sizeof(TCHAR));
	}
	return *this;
}

FString& FString::AppendChars(const ANSICHAR* Str, int32 Count)
{
	checkf(Count >= 0, TEXT("AppendChars called with a negative count: %i"), Count);
	if (Count > 0)
	{
		const FUTF8ToTCHAR Converted(Str, Count);
		AppendChars(Converted.Get(), Converted.Length());
	}
	return *this;
}

FString& FString::AppendChars(const UTF8CHAR* Str, int32 Count)
{
	checkf(Count >= 0, TEXT("AppendChars called with a negative count: %i"), Count);
	if (Count > 0)
	{
		const FUTF8ToTCHAR Converted(Str, Count);
		AppendChars(Converted.Get(), Converted.Length());
	}
	return *this;
}

FString& FString::Append(const TCHAR* Text)
{
	return AppendChars(Text, FCString::Strlen(Text));
}

FString& FString::operator/=(const TCHAR* Str)
{
	PathAppend(Str, FCString::Strlen(Str));
	return *this;
}

FString& FString::operator/=(const FString& Str)
{
	PathAppend(*Str, Str.Len());
	return *this;
}

FString& FString::operator/=(FStringView Str)
{
	PathAppend(Str.GetData(), Str.Len());
	return *this;
}

void FString::PathAppend(const TCHAR* Str, int32 StrLength)
{
	const int32 OldLen = Len();
	const bool bEndsInSeparator = OldLen > 0 && ((*this)[OldLen - 1] == TEXT('/') || (*this)[OldLen - 1] == TEXT('\\'));
	if (StrLength == 0)
	{
		if (OldLen > 0 && !bEndsInSeparator)
		{
			AppendChar(TEXT('/'));
		}
		return;
	}
	if (OldLen > 0 && !bEndsInSeparator && Str[0] != TEXT('/'))
	{
		AppendChar(TEXT('/'));
	}
	AppendChars(Str, StrLength);
}

bool FString::Equals(const FString& Other, ESearchCase::Type SearchCase) const
{
	return Len() == Other.Len() && RangesEqual(**this, *Other, Len(), SearchCase);
}

int32 FString::Compare(const FString& Other, ESearchCase::Type SearchCase) const
{
	return SearchCase == ESearchCase::CaseSensitive ? FCString::Strcmp(**this, *Other)
													: FCString::Stricmp(**this, *Other);
}

int32 FString::Find(
	const TCHAR* SubStr, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir, int32 StartPosition) const
{
	if (SubStr == nullptr)
	{
		return INDEX_NONE;
	}
	return Find(SubStr, FCString::Strlen(SubStr), SearchCase, SearchDir, StartPosition);
}

int32 FString::Find(
	const FString& SubStr, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir, int32 StartPosition) const
{
	return Find(*SubStr, SubStr.Len(), SearchCase, SearchDir, StartPosition);
}

int32 FString::Find(const TCHAR* SubStr, int32 InSubStrLen, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir,
	int32 StartPosition) const
{
	const int32 Length = Len();
	const TCHAR* Text = **this;
	if (SearchDir == ESearchDir::FromStart)
	{
		const int32 Start = StartPosition == INDEX_NONE || Length == 0 ? 0 : ClampCount(StartPosition, Length - 1);
		for (int32 Index = Start; Index + InSubStrLen <= Length; ++Index)
		{
			if (RangesEqual(Text + Index, SubStr, InSubStrLen, SearchCase))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	// Searching backwards, a match has to end at or before StartPosition. An empty search string is
	// treated as one character long, so it is found at the last position rather than past the end.
	const int32 SearchLength = InSubStrLen > 1 ? InSubStrLen : 1;
	const int32 End = StartPosition == INDEX_NONE || StartPosition >= Length ? Length : StartPosition;
	for (int32 Index = End - SearchLength; Index >= 0; --Index)
	{
		if (RangesEqual(Text + Index, SubStr, InSubStrLen, SearchCase))
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

bool FString::FindChar(TCHAR InChar, int32& Index) const
{
	for (int32 Position = 0; Position < Len(); ++Position)
	{
		if (Data.GetData()[Position] == InChar)
		{
			Index = Position;
			return true;
		}
	}
	Index = INDEX_NONE;
	return false;
}

bool FString::FindLastChar(TCHAR InChar, int32& Index) const
{
	for (int32 Position = Len() - 1; Position >= 0; --Position)
	{
		if (Data.GetData()[Position] == InChar)
		{
			Index = Position;
			return true;
		}
	}
	Index = INDEX_NONE;
	return false;
}

bool FString::StartsWith(const TCHAR* InPrefix, ESearchCase::Type SearchCase) const
{
	const int32 PrefixLen = FCString::Strlen(InPrefix);
	return PrefixLen > 0 && PrefixLen <= Len() && RangesEqual(**this, InPrefix, PrefixLen, SearchCase);
}

bool FString::StartsWith(const FString& InPrefix, ESearchCase::Type SearchCase) const
{
	return StartsWith(*InPrefix, SearchCase);
}

bool FString::EndsWith(const TCHAR* InSuffix, ESearchCase::Type SearchCase) const
{
	const int32 SuffixLen = FCString::Strlen(InSuffix);
	return SuffixLen > 0 && SuffixLen <= Len() &&
		   RangesEqual(**this + Len() - SuffixLen, InSuffix, SuffixLen, SearchCase);
}

bool FString::EndsWith(const FString& InSuffix, ESearchCase::Type SearchCase) const
{
	return EndsWith(*InSuffix, SearchCase);
}

bool FString::MatchesWildcard(const TCHAR* Wildcard, ESearchCase::Type SearchCase) const
{
	return MatchWildcardAt(**this, Wildcard ? Wildcard : TEXT(""), SearchCase);
}

FString FString::Left(int32 Count) const
{
	return FString(ClampCount(Count, Len()), **this);
}

FString FString::LeftChop(int32 Count) const
{
	return FString(Len() - ClampCount(Count, Len()), **this);
}

FString FString::Right(int32 Count) const
{
	const int32 Kept = ClampCount(Count, Len());
	return FString(Kept, **this + Len() - Kept);
}

FString FString::RightChop(int32 Count) const
{
	const int32 Skipped = ClampCount(Count, Len());
	return FString(Len() - Skipped, **this + Skipped);
}

FString FString::Mid(int32 Start, int32 Count) const
{
	if (Count < 0)
	{
		return FString();
	}
	// The end is measured from the requested start, so a negative start also shortens the result.
	const int32 Length = Len();
	const int32 ClampedStart = ClampCount(Start, Length);
	const int64 RequestedEnd = static_cast<int64>(Start) + Count;
	const int32 End = RequestedEnd < ClampedStart ? ClampedStart
												  : (RequestedEnd > Length ? Length : static_cast<int32>(RequestedEnd));
	return FString(End - ClampedStart, **this + ClampedStart);
}

void FString::LeftInline(int32 Count, EAllowShrinking AllowShrinking)
{
	SetLength(ClampCount(Count, Len()), AllowShrinking);
}

void FString::LeftChopInline(int32 Count, EAllowShrinking AllowShrinking)
{
	SetLength(Len() - ClampCount(Count, Len()), AllowShrinking);
}

void FString::RightInline(int32 Count, EAllowShrinking AllowShrinking)
{
	RemoveAt(0, Len() - ClampCount(Count, Len()), AllowShrinking);
}

void FString::RightChopInline(int32 Count, EAllowShrinking AllowShrinking)
{
	RemoveAt(0, ClampCount(Count, Len()), AllowShrinking);
}

void FString::MidInline(int32 Start, int32 Count, EAllowShrinking AllowShrinking)
{
	*this = Mid(Start, Count);
	if (AllowShrinking == EAllowShrinking::Yes)
	{
		Shrink();
	}
}

bool FString::RemoveFromStart(const TCHAR* InPrefix, ESearchCase::Type SearchCase)
{
	return RemoveFromStart(InPrefix, FCString::Strlen(InPrefix), SearchCase);
}

bool FString::RemoveFromStart(const FString& InPrefix, ESearchCase::Type SearchCase)
{
	return RemoveFromStart(*InPrefix, InPrefix.Len(), SearchCase);
}

bool FString::RemoveFromStart(const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase)
{
	if (InPrefixLen <= 0 || InPrefixLen > Len() || !RangesEqual(**this, InPrefix, InPrefixLen, SearchCase))
	{
		return false;
	}
	RemoveAt(0, InPrefixLen);
	return true;
}

bool FString::RemoveFromEnd(const TCHAR* InSuffix, ESearchCase::Type SearchCase)
{
	return RemoveFromEnd(InSuffix, FCString::Strlen(InSuffix), SearchCase);
}

bool FString::RemoveFromEnd(const FString& InSuffix, ESearchCase::Type SearchCase)
{
	return RemoveFromEnd(*InSuffix, InSuffix.Len(), SearchCase);
}

bool FString::RemoveFromEnd(const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase)
{
	if (InSuffixLen <= 0 || InSuffixLen > Len() ||
		!RangesEqual(**this + Len() - InSuffixLen, InSuffix, InSuffixLen, SearchCase))
	{
		return false;
	}
	SetLength(Len() - InSuffixLen, EAllowShrinking::Yes);
	return true;
}

FString FString::TrimStart() const
{
	FString Result(*this);
	Result.TrimStartInline();
	return Result;
}

FString FString::TrimEnd() const
{
	FString Result(*this);
	Result.TrimEndInline();
	return Result;
}

FString FString::TrimStartAndEnd() const
{
	FString Result(*this);
	Result.TrimStartAndEndInline();
	return Result;
}

void FString::TrimStartInline()
{
	int32 Count = 0;
	while (Count < Len() && FChar::IsWhitespace(Data.GetData()[Count]))
	{
		++Count;
	}
	RemoveAt(0, Count);
}

void FString::TrimEndInline()
{
	int32 End = Len();
	while (End > 0 && FChar::IsWhitespace(Data.GetData()[End - 1]))
	{
		--End;
	}
	SetLength(End, EAllowShrinking::Yes);
}

void FString::TrimStartAndEndInline()
{
	TrimEndInline();
	TrimStartInline();
}

FString FString::TrimQuotes(bool* bQuotesRemoved) const
{
	return TrimChar(TEXT('"'), bQuotesRemoved);
}

void FString::TrimQuotesInline(bool* bQuotesRemoved)
{
	TrimCharInline(TEXT('"'), bQuotesRemoved);
}

FString FString::TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved) const
{
	FString Result(*this);
	Result.TrimCharInline(CharacterToTrim, bCharRemoved);
	return Result;
}

void FString::TrimCharInline(TCHAR CharacterToTrim, bool* bCharRemoved)
{
	bool bRemoved = false;
	if (Len() > 0 && Data.GetData()[Len() - 1] == CharacterToTrim)
	{
		// A string that is just the character loses it once, not twice.
		SetLength(Len() - 1, EAllowShrinking::Yes);
		bRemoved = true;
		if (Len() == 0)
		{
			if (bCharRemoved)
			{
				*bCharRemoved = true;
			}
			return;
		}
	}
	if (Len() > 0 && Data.GetData()[0] == CharacterToTrim)
	{
		RemoveAt(0, 1);
		bRemoved = true;
	}
	if (bCharRemoved)
	{
		*bCharRemoved = bRemoved;
	}
}

bool FString::Split(
	const FString& InS, FString* LeftS, FString* RightS, ESearchCase::Type SearchCase, ESearchDir::Type SearchDir) const
{
	const int32 Position = Find(InS, SearchCase, SearchDir);
	if (Position == INDEX_NONE)
	{
		return false;
	}
	// Compute both parts before writing, in case an output is this string.
	FString LeftPart = Left(Position);
	FString RightPart = Mid(Position + InS.Len());
	if (LeftS)
	{
		*LeftS = MoveTemp(LeftPart);
	}
	if (RightS)
	{
		*RightS = MoveTemp(RightPart);
	}
	return true;
}

int32 FString::ParseIntoArray(TArray<FString>& OutArray, const TCHAR* pchDelim, bool InCullEmpty) const
{
	checkf(pchDelim && *pchDelim, TEXT("ParseIntoArray needs a non-empty delimiter."));
	return ParseIntoArray(OutArray, &pchDelim, 1, InCullEmpty);
}

int32 FString::ParseIntoArray(
	TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool InCullEmpty) const
{
	OutArray.Reset();
	const TCHAR* Text = **this;
	const int32 Length = Len();
	if (Length == 0)
	{
		return 0;
	}
	int32 PartStart = 0;
	for (int32 Index = 0; Index < Length;)
	{
		int32 MatchedLength = 0;
		for (int32 DelimIndex = 0; DelimIndex < NumDelims; ++DelimIndex)
		{
			const int32 DelimLength = FCString::Strlen(DelimArray[DelimIndex]);
			if (DelimLength > 0 && FCString::Strncmp(Text + Index, DelimArray[DelimIndex], DelimLength) == 0)
			{
				MatchedLength = DelimLength;
				break;
			}
		}
		if (MatchedLength == 0)
		{
			++Index;
			continue;
		}
		if (!InCullEmpty || Index > PartStart)
		{
			OutArray.Add(FString(Index - PartStart, Text + PartStart));
		}
		Index += MatchedLength;
		PartStart = Index;
	}
	if (!InCullEmpty || Length > PartStart)
	{
		OutArray.Add(FString(Length - PartStart, Text + PartStart));
	}
	return OutArray.Num();
}

int32 FString::ParseIntoArrayWS(TArray<FString>& OutArray, const TCHAR* pchExtraDelim, bool InCullEmpty) const
{
	const TCHAR* Delims[] = {TEXT(" "), TEXT("\t"), TEXT("\r"), TEXT("\n"), pchExtraDelim};
	const bool bHasExtra = pchExtraDelim && *pchExtraDelim;
	return ParseIntoArray(OutArray, Delims, bHasExtra ? 5 : 4, InCullEmpty);
}

int32 FString::ParseIntoArrayLines(TArray<FString>& OutArray, bool InCullEmpty) const
{
	const TCHAR* Delims[] = {TEXT("\r\n"), TEXT("\r"), TEXT("\n")};
	return ParseIntoArray(OutArray, Delims, 3, InCullEmpty);
}

FString FString::Replace(const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase) const
{
	FString Result(*this);
	Result.ReplaceInline(From, To, SearchCase);
	return Result;
}

int32 FString::ReplaceInline(const TCHAR* SearchText, const TCHAR* ReplacementText, ESearchCase::Type SearchCase)
{
	const int32 SearchLen = FCString::Strlen(SearchText);
	if (SearchLen == 0 || IsEmpty())
	{
		return 0;
	}
	const int32 ReplacementLen = FCString::Strlen(ReplacementText);
	FString Result;
	int32 Count = 0;
	int32 CopyFrom = 0;
	for (int32 Found = Find(SearchText, SearchLen, SearchCase); Found != INDEX_NONE;)
	{
		Result.AppendChars(**this + CopyFrom, Found - CopyFrom);
		Result.AppendChars(ReplacementText, ReplacementLen);
		CopyFrom = Found + SearchLen;
		++Count;
		Found =
			CopyFrom < Len() ? Find(SearchText, SearchLen, SearchCase, ESearchDir::FromStart, CopyFrom) : INDEX_NONE;
	}
	if (Count > 0)
	{
		Result.AppendChars(**this + CopyFrom, Len() - CopyFrom);
		*this = MoveTemp(Result);
	}
	return Count;
}

void FString::ReplaceCharInline(TCHAR SearchChar, TCHAR ReplacementChar, ESearchCase::Type SearchCase)
{
	for (TCHAR& Char : *this)
	{
		if (CharsEqual(Char, SearchChar, SearchCase))
		{
			Char = ReplacementChar;
		}
	}
}

FString FString::ToUpper() const
{
	FString Result(*this);
	Result.ToUpperInline();
	return Result;
}

FString FString::ToLower() const
{
	FString Result(*this);
	Result.ToLowerInline();
	return Result;
}

void FString::ToUpperInline()
{
	for (TCHAR& Char : *this)
	{
		Char = FChar::ToUpper(Char);
	}
}

void FString::ToLowerInline()
{
	for (TCHAR& Char : *this)
	{
		Char = FChar::ToLower(Char);
	}
}

FString FString::LeftPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? ChrN(Pad, TEXT(' ')) + *this : *this;
}

FString FString::RightPad(int32 ChCount) const
{
	const int32 Pad = ChCount - Len();
	return Pad > 0 ? *this + ChrN(Pad, TEXT(' ')) : *this;
}

FString FString::ConvertTabsToSpaces(int32 InSpacesPerTab) const
{
	check(InSpacesPerTab > 0);
	FString Result;
	int32 Column = 0;
	for (const TCHAR Char : *this)
	{
		if (Char == TEXT('\t'))
		{
			const int32 Spaces = InSpacesPerTab - Column % InSpacesPerTab;
			Result += ChrN(Spaces, TEXT(' '));
			Column += Spaces;
		}
		else
		{
			Result.AppendChar(Char);
			Column = Char == TEXT('\n') ? 0 : Column + 1;
		}
	}
	return Result;
}

bool FString::IsNumeric() const
{
	return !IsEmpty() && FCString::IsNumeric(**this);
}

FString FString::Reverse() const
{
	FString Result(*this);
	Result.ReverseString();
	return Result;
}

void FString::ReverseString()
{
	for (int32 Low = 0, High = Len() - 1; Low < High; ++Low, --High)
	{
		const TCHAR Swap = Data.GetData()[Low];
		Data.GetData()[Low] = Data.GetData()[High];
		Data.GetData()[High] = Swap;
	}
}

void FString::InsertAt(int32 Index, TCHAR Character)
{
	InsertAt(Index, Chr(Character));
}

void FString::InsertAt(int32 Index, const FString& Characters)
{
	checkf(Index >= 0 && Index <= Len(), TEXT("InsertAt index %i is outside a string of length %i"), Index, Len());
	if (Characters.IsEmpty())
	{
		return;
	}
	const FString Inserted(Characters);
	const int32 OldLen = Len();
	AddUninitializedChars(Inserted.Len());
	TCHAR* Text = Data.GetData();
	FMemory::Memmove(Text + Index + Inserted.Len(), Text + Index, (OldLen - Index) * sizeof(TCHAR));
	FMemory::Memcpy(Text + Index, *Inserted, Inserted.Len() * sizeof(TCHAR));
}

void FString::RemoveAt(int32 Index, int32 Count, EAllowShrinking AllowShrinking)
{
	checkf(Index >= 0 && Count >= 0 && Index + Count <= Len(),
		TEXT("RemoveAt(%i, %i) is outside a string of length %i"), Index, Count, Len());
	if (Count == 0)
	{
		return;
	}
	if (Count == Len())
	{
		SetLength(0, AllowShrinking);
		return;
	}
	Data.RemoveAt(Index, Count, AllowShrinking);
}

FString FString::FromInt(int32 Num)
{
	return Printf(TEXT("%d"), Num);
}

FString FString::SanitizeFloat(double InFloat, const int32 InMinFractionalDigits)
{
	// Six decimals, as %f gives them, with the trailing zeros beyond the requested minimum dropped.
	if (InFloat == 0.0)
	{
		// Negative zero prints without its sign.
		InFloat = 0.0;
	}
	FString Result = Printf(TEXT("%f"), InFloat);
	int32 DotIndex = INDEX_NONE;
	if (!Result.FindChar(TEXT('.'), DotIndex))
	{
		// Infinity and NaN have no fractional part to tidy.
		return Result;
	}
	const int32 MinDigits = InMinFractionalDigits > 0 ? InMinFractionalDigits : 0;
	int32 NewLen = Result.Len();
	while (NewLen > DotIndex + 1 + MinDigits && Result[NewLen - 1] == TEXT('0'))
	{
		--NewLen;
	}
	if (NewLen == DotIndex + 1)
	{
		// No fractional digits left (only when none were asked for): drop the point too.
		--NewLen;
	}
	Result.LeftInline(NewLen);
	const int32 Fractional = NewLen > DotIndex ? NewLen - DotIndex - 1 : 0;
	if (Fractional < MinDigits)
	{
		Result += ChrN(MinDigits - Fractional, TEXT('0'));
	}
	return Result;
}

FString FString::Chr(TCHAR Ch)
{
	FString Result;
	if (Ch != 0)
	{
		Result.AppendChar(Ch);
	}
	return Result;
}

FString FString::ChrN(int32 NumCharacters, TCHAR Char)
{
	check(NumCharacters >= 0);
	FString Result;
	if (NumCharacters > 0 && Char != 0)
	{
		TCHAR* Dest = Result.AddUninitializedChars(NumCharacters);
		for (int32 Index = 0; Index < NumCharacters; ++Index)
		{
			Dest[Index] = Char;
		}
	}
	return Result;
}

FString operator+(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs, Rhs.Len());
	return MoveTemp(Result.Append(Rhs));
}

FString operator+(FString&& Lhs, const FString& Rhs)
{
	return MoveTemp(Lhs.Append(Rhs));
}

FString operator+(const FString& Lhs, FString&& Rhs)
{
	Rhs.InsertAt(0, Lhs);
	return MoveTemp(Rhs);
}

FString operator+(FString&& Lhs, FString&& Rhs)
{
	return MoveTemp(Lhs.Append(Rhs));
}

FString operator+(const TCHAR* Lhs, const FString& Rhs)
{
	FString Result(Lhs);
	return MoveTemp(Result.Append(Rhs));
}

FString operator+(const TCHAR* Lhs, FString&& Rhs)
{
	Rhs.InsertAt(0, FString(Lhs));
	return MoveTemp(Rhs);
}

FString operator+(const FString& Lhs, const TCHAR* Rhs)
{
	FString Result(Lhs, FCString::Strlen(Rhs));
	return MoveTemp(Result.Append(Rhs));
}

FString operator+(FString&& Lhs, const TCHAR* Rhs)
{
	return MoveTemp(Lhs.Append(Rhs));
}

FString operator+(TCHAR Lhs, const FString& Rhs)
{
	FString Result = FString::Chr(Lhs);
	return MoveTemp(Result.Append(Rhs));
}

FString operator+(const FString& Lhs, TCHAR Rhs)
{
	FString Result(Lhs, 1);
	return MoveTemp(Result.AppendChar(Rhs));
}

FString operator+(FString&& Lhs, TCHAR Rhs)
{
	return MoveTemp(Lhs.AppendChar(Rhs));
}

FString operator/(const FString& Lhs, const TCHAR* Rhs)
{
	FString Result(Lhs);
	Result /= Rhs;
	return Result;
}

FString operator/(FString&& Lhs, const TCHAR* Rhs)
{
	Lhs /= Rhs;
	return MoveTemp(Lhs);
}

FString operator/(const FString& Lhs, const FString& Rhs)
{
	FString Result(Lhs);
	Result /= Rhs;
	return Result;
}

FString operator/(FString&& Lhs, const FString& Rhs)
{
	Lhs /= Rhs;
	return MoveTemp(Lhs);
}

FString operator/(const TCHAR* Lhs, const FString& Rhs)
{
	FString Result(Lhs);
	Result /= Rhs;
	return Result;
}

bool operator==(const FString& Lhs, const FString& Rhs)
{
	return Lhs.Equals(Rhs, ESearchCase::IgnoreCase);
}

bool operator==(const FString& Lhs, const TCHAR* Rhs)
{
	return FCString::Stricmp(*Lhs, Rhs ? Rhs : TEXT("")) == 0;
}

bool operator==(const TCHAR* Lhs, const FString& Rhs)
{
	return Rhs == Lhs;
}

bool operator!=(const FString& Lhs, const FString& Rhs)
{
	return !(Lhs == Rhs);
}

bool operator!=(const FString& Lhs, const TCHAR* Rhs)
{
	return !(Lhs == Rhs);
}

bool operator!=(const TCHAR* Lhs, const FString& Rhs)
{
	return !(Rhs == Lhs);
}

bool operator<(const FString& Lhs, const FString& Rhs)
{
	return FCString::Stricmp(*Lhs, *Rhs) < 0;
}

bool operator<(const FString& Lhs, const TCHAR* Rhs)
{
	return FCString::Stricmp(*Lhs, Rhs ? Rhs : TEXT("")) < 0;
}

bool operator<(const TCHAR* Lhs, const FString& Rhs)
{
	return FCString::Stricmp(Lhs ? Lhs : TEXT(""), *Rhs) < 0;
}

bool operator<=(const FString& Lhs, const FString& Rhs)
{
	return FCString::Stricmp(*Lhs, *Rhs) <= 0;
}

bool operator>(const FString& Lhs, const FString& Rhs)
{
	return FCString::Stricmp(*Lhs, *Rhs) > 0;
}

bool operator>=(const FString& Lhs, const FString& Rhs)
{
	return FCString::Stricmp(*Lhs, *Rhs) >= 0;
}

uint32 GetTypeHash(const FString& S)
{
	// FNV-1a over the upper-cased code units, so strings that compare equal hash equal.
	uint32 Hash = 2166136261u;
	for (const TCHAR Char : S)
	{
		const uint32 Unit = static_cast<uint32>(FChar::ToUpper(Char));
		Hash = (Hash ^ (Unit & 0xFF)) * 16777619u;
		Hash = (Hash ^ (Unit >> 8)) * 16777619u;
	}
	return Hash;
}
