// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/AllowShrinking.h"
#include "Containers/Array.h"
#include "Containers/StringFwd.h"
#include "Containers/StringView.h"
#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Misc/CString.h"

#include <type_traits>

namespace UE::Core::Private
{
	/** One argument of a printf-style call, reduced to the few kinds the formatter distinguishes. */
	struct FPrintfArg
	{
		enum class EKind : uint8
		{
			Signed,
			Unsigned,
			Double,
			String,
			AnsiString,
			Pointer,
			Unsupported,
		};

		EKind Kind = EKind::Unsupported;
		int64 Signed = 0;
		uint64 Unsigned = 0;
		double Double = 0.0;
		const void* Pointer = nullptr;

		/** Names the argument's type in error messages when it does not fit its specifier. */
		const ANSICHAR* TypeName = "";
	};

	template <typename T>
	FPrintfArg MakePrintfArg(const T& Arg)
	{
		using Type = std::remove_cv_t<T>;
		FPrintfArg Result;
		if constexpr (std::is_same_v<Type, const TCHAR*> || std::is_same_v<Type, TCHAR*>)
		{
			Result.Kind = FPrintfArg::EKind::String;
			Result.Pointer = Arg;
			Result.TypeName = "const TCHAR*";
		}
		else if constexpr (std::is_same_v<Type, const ANSICHAR*> || std::is_same_v<Type, ANSICHAR*> ||
						   std::is_same_v<Type, const UTF8CHAR*> || std::is_same_v<Type, UTF8CHAR*>)
		{
			Result.Kind = FPrintfArg::EKind::AnsiString;
			Result.Pointer = Arg;
			Result.TypeName = "const ANSICHAR*";
		}
		else if constexpr (std::is_null_pointer_v<Type>)
		{
			Result.Kind = FPrintfArg::EKind::Pointer;
			Result.TypeName = "nullptr";
		}
		else if constexpr (std::is_pointer_v<Type>)
		{
			Result.Kind = FPrintfArg::EKind::Pointer;
			Result.Pointer = reinterpret_cast<const void*>(Arg);
			Result.TypeName = "a pointer";
		}
		else if constexpr (std::is_enum_v<Type>)
		{
			Result.Kind = FPrintfArg::EKind::Signed;
			Result.Signed = static_cast<int64>(Arg);
			Result.Unsigned = static_cast<uint64>(Result.Signed);
			Result.TypeName = "an enum";
		}
		else if constexpr (std::is_integral_v<Type>)
		{
			if constexpr (std::is_signed_v<Type>)
			{
				Result.Kind = FPrintfArg::EKind::Signed;
				Result.Signed = static_cast<int64>(Arg);
				Result.Unsigned = static_cast<uint64>(Result.Signed);
			}
			else
			{
				Result.Kind = FPrintfArg::EKind::Unsigned;
				Result.Unsigned = static_cast<uint64>(Arg);
				Result.Signed = static_cast<int64>(Result.Unsigned);
			}
			Result.TypeName = "an integer";
		}
		else if constexpr (std::is_floating_point_v<Type>)
		{
			Result.Kind = FPrintfArg::EKind::Double;
			Result.Double = static_cast<double>(Arg);
			Result.TypeName = "a floating-point number";
		}
		else if constexpr (std::is_same_v<Type, FString>)
		{
			Result.TypeName = "FString (pass *String)";
		}
		else
		{
			Result.TypeName = "an unsupported type";
		}
		return Result;
	}

	/** The format is a TCHAR array or pointer, never a narrow literal: the engine rejects those at compile time. */
	template <typename FmtType>
	constexpr bool IsValidPrintfFormat = std::is_same_v<std::remove_cvref_t<std::decay_t<FmtType>>, const TCHAR*> ||
										 std::is_same_v<std::remove_cvref_t<std::decay_t<FmtType>>, TCHAR*>;
} // namespace UE::Core::Private

class FString;

// Declared before FString so that views can be made from strings inside FString's own members.
inline const TCHAR* GetData(const FString& String);
inline int32 GetNum(const FString& String);

/** A dynamically sized string of TCHAR, stored with its terminating null character. */
class CORE_API FString
{
public:
	using ElementType = TCHAR;

	FString() = default;
	FString(const FString&) = default;
	FString(FString&&) = default;
	FString& operator=(const FString&) = default;
	FString& operator=(FString&&) = default;

	/** Copies a null-terminated string; narrow strings are read as UTF-8. A null pointer gives an empty string. */
	FString(const WIDECHAR* Str);
	FString(const ANSICHAR* Str);
	FString(const UTF8CHAR* Str);

	/** Copies the first InCount characters of InSrc. */
	explicit FString(int32 InCount, const WIDECHAR* InSrc);
	explicit FString(int32 InCount, const ANSICHAR* InSrc);
	explicit FString(int32 InCount, const UTF8CHAR* InSrc);

	/** Copies a view; narrow views are read as UTF-8. */
	explicit FString(FWideStringView View);
	explicit FString(FAnsiStringView View);
	explicit FString(FUtf8StringView View);

	/** Copies another string and reserves room for ExtraSlack more characters. */
	explicit FString(const FString& Other, int32 ExtraSlack);
	explicit FString(FString&& Other, int32 ExtraSlack);

	FString& operator=(const TCHAR* Other);

	/** The characters; never null (an empty string gives TEXT("")). */
	const TCHAR* operator*() const { return Data.Num() ? Data.GetData() : TEXT(""); }

	/** The storage, including the terminating null character when not empty. */
	TArray<TCHAR>& GetCharArray() { return Data; }
	const TArray<TCHAR>& GetCharArray() const { return Data; }

	int32 Len() const { return Data.Num() ? Data.Num() - 1 : 0; }
	bool IsEmpty() const { return Data.Num() <= 1; }
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Len(); }

	TCHAR& operator[](int32 Index)
	{
		checkf(IsValidIndex(Index), TEXT("String index out of bounds: Index %i from a string with a length of %i"),
			Index, Len());
		return Data.GetData()[Index];
	}

	const TCHAR& operator[](int32 Index) const
	{
		checkf(IsValidIndex(Index), TEXT("String index out of bounds: Index %i from a string with a length of %i"),
			Index, Len());
		return Data.GetData()[Index];
	}

	TCHAR* begin() { return Data.GetData(); }
	const TCHAR* begin() const { return Data.GetData(); }
	TCHAR* end() { return Data.GetData() + Len(); }
	const TCHAR* end() const { return Data.GetData() + Len(); }

	/** Clears the string, keeping room for Slack characters. */
	void Empty(int32 Slack = 0);

	/** Clears the string, keeping its allocation if it holds at least NewReservedSize characters. */
	void Reset(int32 NewReservedSize = 0);

	void Shrink();
	void Reserve(int32 CharacterCount);

	FString& AppendChar(TCHAR InChar);
	FString& AppendChars(const TCHAR* Str, int32 Count);
	FString& AppendChars(const ANSICHAR* Str, int32 Count);
	FString& AppendChars(const UTF8CHAR* Str, int32 Count);
	FString& Append(const TCHAR* Text, int32 Count) { return AppendChars(Text, Count); }
	FString& Append(const TCHAR* Text);
	FString& Append(const FString& Text) { return AppendChars(*Text, Text.Len()); }
	FString& Append(FStringView Text) { return AppendChars(Text.GetData(), Text.Len()); }

	FString& operator+=(const TCHAR* Str) { return Append(Str); }
	FString& operator+=(const FString& Str) { return Append(Str); }
	FString& operator+=(FStringView Str) { return Append(Str); }
	FString& operator+=(TCHAR InChar) { return AppendChar(InChar); }

	/** Appends Str as a path component, with exactly one separator between the parts (see PathAppend). */
	FString& operator/=(const TCHAR* Str);
	FString& operator/=(const FString& Str);
	FString& operator/=(FStringView Str);

	/**
	 * Appends a path component: a '/' is added first unless this string is empty or already ends in a
	 * separator, or Str starts with '/'. An empty Str still adds the trailing '/'.
	 */
	void PathAppend(const TCHAR* Str, int32 StrLength);

	/** Compares the characters; case-sensitive unless told otherwise. */
	bool Equals(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;
	int32 Compare(const FString& Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const;

	/**
	 * The index of SubStr, or INDEX_NONE. From the start, the search begins at StartPosition; from the end,
	 * a match must end at or before StartPosition.
	 */
	int32 Find(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const;
	int32 Find(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const;
	int32 Find(const TCHAR* SubStr, int32 InSubStrLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart, int32 StartPosition = INDEX_NONE) const;

	bool Contains(const TCHAR* SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}

	bool Contains(const FString& SubStr, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const
	{
		return Find(SubStr, SearchCase, SearchDir) != INDEX_NONE;
	}

	bool FindChar(TCHAR InChar, int32& Index) const;
	bool FindLastChar(TCHAR InChar, int32& Index) const;

	/** The index of the last of the first Count characters that satisfies Pred, or INDEX_NONE. */
	template <typename Predicate>
	int32 FindLastCharByPredicate(Predicate Pred, int32 Count) const
	{
		check(Count >= 0 && Count <= Len());
		for (int32 Index = Count - 1; Index >= 0; --Index)
		{
			if (Pred(Data.GetData()[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	template <typename Predicate>
	int32 FindLastCharByPredicate(Predicate Pred) const
	{
		return FindLastCharByPredicate(Pred, Len());
	}

	bool StartsWith(const TCHAR* InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool StartsWith(const FString& InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool EndsWith(const TCHAR* InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool EndsWith(const FString& InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	/** True when the whole string matches Wildcard, where '*' matches any run and '?' any one character. */
	bool MatchesWildcard(const TCHAR* Wildcard, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;
	bool MatchesWildcard(const FString& Wildcard, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return MatchesWildcard(*Wildcard, SearchCase);
	}

	// Sub-strings. Counts and positions are clamped to the string.
	[[nodiscard]] FString Left(int32 Count) const;
	[[nodiscard]] FString LeftChop(int32 Count) const;
	[[nodiscard]] FString Right(int32 Count) const;
	[[nodiscard]] FString RightChop(int32 Count) const;
	[[nodiscard]] FString Mid(int32 Start, int32 Count = MAX_int32) const;
	void LeftInline(int32 Count, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);
	void LeftChopInline(int32 Count, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);
	void RightInline(int32 Count, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);
	void RightChopInline(int32 Count, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);
	void MidInline(int32 Start, int32 Count = MAX_int32, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);

	/** Removes InPrefix if the string starts with it; an empty prefix is never removed. */
	bool RemoveFromStart(const TCHAR* InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromStart(const FString& InPrefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromStart(
		const TCHAR* InPrefix, int32 InPrefixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(const TCHAR* InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(const FString& InSuffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);
	bool RemoveFromEnd(
		const TCHAR* InSuffix, int32 InSuffixLen, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	// Trimming of whitespace as FChar::IsWhitespace defines it.
	[[nodiscard]] FString TrimStart() const;
	[[nodiscard]] FString TrimEnd() const;
	[[nodiscard]] FString TrimStartAndEnd() const;
	void TrimStartInline();
	void TrimEndInline();
	void TrimStartAndEndInline();

	/** Removes one leading and one trailing double quote, each if present. */
	[[nodiscard]] FString TrimQuotes(bool* bQuotesRemoved = nullptr) const;
	void TrimQuotesInline(bool* bQuotesRemoved = nullptr);

	/** Removes one leading and one trailing CharacterToTrim, each if present. */
	[[nodiscard]] FString TrimChar(TCHAR CharacterToTrim, bool* bCharRemoved = nullptr) const;
	void TrimCharInline(TCHAR CharacterToTrim, bool* bCharRemoved = nullptr);

	/**
	 * Splits the string at the first (or last) occurrence of InS. Returns false, leaving the outputs alone,
	 * when InS does not occur.
	 */
	bool Split(const FString& InS, FString* LeftS, FString* RightS,
		ESearchCase::Type SearchCase = ESearchCase::IgnoreCase,
		ESearchDir::Type SearchDir = ESearchDir::FromStart) const;

	/** Breaks the string at every (case-sensitive) occurrence of the delimiter; returns the number of parts. */
	int32 ParseIntoArray(TArray<FString>& OutArray, const TCHAR* pchDelim, bool InCullEmpty = true) const;

	/** Breaks the string at any of the delimiters, earlier entries winning when several match at one place. */
	int32 ParseIntoArray(
		TArray<FString>& OutArray, const TCHAR* const* DelimArray, int32 NumDelims, bool InCullEmpty = true) const;

	/** Breaks the string at whitespace (space, tab, CR, LF) and at the optional extra delimiter. */
	int32 ParseIntoArrayWS(
		TArray<FString>& OutArray, const TCHAR* pchExtraDelim = nullptr, bool InCullEmpty = true) const;

	/** Breaks the string into lines at CR LF, CR or LF. */
	int32 ParseIntoArrayLines(TArray<FString>& OutArray, bool InCullEmpty = true) const;

	/** A copy with every occurrence of From replaced by To; an empty From changes nothing. */
	[[nodiscard]] FString Replace(
		const TCHAR* From, const TCHAR* To, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const;

	/** Replaces every occurrence of SearchText and returns how many were replaced. */
	int32 ReplaceInline(
		const TCHAR* SearchText, const TCHAR* ReplacementText, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	void ReplaceCharInline(
		TCHAR SearchChar, TCHAR ReplacementChar, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase);

	[[nodiscard]] FString ToUpper() const;
	[[nodiscard]] FString ToLower() const;
	void ToUpperInline();
	void ToLowerInline();

	[[nodiscard]] FString LeftPad(int32 ChCount) const;
	[[nodiscard]] FString RightPad(int32 ChCount) const;
	[[nodiscard]] FString ConvertTabsToSpaces(int32 InSpacesPerTab) const;

	/** True when the string is a decimal number with an optional sign and at most one '.'; empty is not numeric. */
	bool IsNumeric() const;

	/** Reads the string as a boolean the way FCString::ToBool does. */
	bool ToBool() const { return FCString::ToBool(**this); }

	[[nodiscard]] FString Reverse() const;
	void ReverseString();

	void InsertAt(int32 Index, TCHAR Character);
	void InsertAt(int32 Index, const FString& Characters);
	void RemoveAt(int32 Index, int32 Count = 1, EAllowShrinking AllowShrinking = EAllowShrinking::Yes);

	/** Formats like printf. Fmt must be a TCHAR string; %s takes a const TCHAR* (use *String). */
	template <typename FmtType, typename... Types>
	[[nodiscard]] static FString Printf(const FmtType& Fmt, Types... Args)
	{
		static_assert(UE::Core::Private::IsValidPrintfFormat<FmtType>, "Formatting string must be a TCHAR array.");
		const UE::Core::Private::FPrintfArg PackedArgs[sizeof...(Args) + 1] = {
			UE::Core::Private::MakePrintfArg(Args)...};
		return PrintfImpl(static_cast<const TCHAR*>(Fmt), PackedArgs, static_cast<int32>(sizeof...(Args)));
	}

	/** Appends printf-style formatted text. */
	template <typename FmtType, typename... Types>
	FString& Appendf(const FmtType& Fmt, Types... Args)
	{
		return Append(Printf(Fmt, Args...));
	}

	/** Joins the elements of a range, putting Separator between them. */
	template <typename RangeType>
	[[nodiscard]] static FString Join(const RangeType& Range, const TCHAR* Separator)
	{
		FString Result;
		bool bFirst = true;
		for (const auto& Element : Range)
		{
			if (!bFirst)
			{
				Result += Separator;
			}
			Result += Element;
			bFirst = false;
		}
		return Result;
	}

	[[nodiscard]] static FString FromInt(int32 Num);

	/**
	 * Formats a number with the digits it needs and at least InMinFractionalDigits after the point:
	 * 1.0 gives "1.0", 0.5 gives "0.5", 1.25 gives "1.25".
	 */
	[[nodiscard]] static FString SanitizeFloat(double InFloat, const int32 InMinFractionalDigits = 1);

	[[nodiscard]] static FString Chr(TCHAR Ch);
	[[nodiscard]] static FString ChrN(int32 NumCharacters, TCHAR Char);

	/** Formats already type-checked arguments; Printf is the entry point. */
	static FString PrintfImpl(const TCHAR* Fmt, const UE::Core::Private::FPrintfArg* Args, int32 NumArgs);

private:
	/** Makes room for Count more characters after the current text and returns where they go. */
	TCHAR* AddUninitializedChars(int32 Count);

	/** Truncates the text to NewLen characters. */
	void SetLength(int32 NewLen, EAllowShrinking AllowShrinking);

	/** Holds the characters and the terminating null; empty when the string is empty. */
	TArray<TCHAR> Data;
};

// Concatenation.
CORE_API FString operator+(const FString& Lhs, const FString& Rhs);
CORE_API FString operator+(FString&& Lhs, const FString& Rhs);
CORE_API FString operator+(const FString& Lhs, FString&& Rhs);
CORE_API FString operator+(FString&& Lhs, FString&& Rhs);
CORE_API FString operator+(const TCHAR* Lhs, const FString& Rhs);
CORE_API FString operator+(const TCHAR* Lhs, FString&& Rhs);
CORE_API FString operator+(const FString& Lhs, const TCHAR* Rhs);
CORE_API FString operator+(FString&& Lhs, const TCHAR* Rhs);
CORE_API FString operator+(TCHAR Lhs, const FString& Rhs);
CORE_API FString operator+(const FString& Lhs, TCHAR Rhs);
CORE_API FString operator+(FString&& Lhs, TCHAR Rhs);

// Path concatenation.
CORE_API FString operator/(const FString& Lhs, const TCHAR* Rhs);
CORE_API FString operator/(FString&& Lhs, const TCHAR* Rhs);
CORE_API FString operator/(const FString& Lhs, const FString& Rhs);
CORE_API FString operator/(FString&& Lhs, const FString& Rhs);
CORE_API FString operator/(const TCHAR* Lhs, const FString& Rhs);

// Comparison; all of these ignore case.
CORE_API bool operator==(const FString& Lhs, const FString& Rhs);
CORE_API bool operator==(const FString& Lhs, const TCHAR* Rhs);
CORE_API bool operator==(const TCHAR* Lhs, const FString& Rhs);
CORE_API bool operator!=(const FString& Lhs, const FString& Rhs);
CORE_API bool operator!=(const FString& Lhs, const TCHAR* Rhs);
CORE_API bool operator!=(const TCHAR* Lhs, const FString& Rhs);
CORE_API bool operator<(const FString& Lhs, const FString& Rhs);
CORE_API bool operator<(const FString& Lhs, const TCHAR* Rhs);
CORE_API bool operator<(const TCHAR* Lhs, const FString& Rhs);
CORE_API bool operator<=(const FString& Lhs, const FString& Rhs);
CORE_API bool operator>(const FString& Lhs, const FString& Rhs);
CORE_API bool operator>=(const FString& Lhs, const FString& Rhs);

/** Hashes without regard to case, matching operator==, so strings can key maps and sets. */
CORE_API uint32 GetTypeHash(const FString& S);

inline const TCHAR* GetData(const FString& String)
{
	return *String;
}

inline int32 GetNum(const FString& String)
{
	return String.Len();
}

inline const TCHAR* ToCStr(const FString& Str)
{
	return *Str;
}

inline const TCHAR* ToCStr(const TCHAR* Str)
{
	return Str;
}

// Conversion of values to text and back.
CORE_API FString LexToString(int8 Value);
CORE_API FString LexToString(uint8 Value);
CORE_API FString LexToString(int16 Value);
CORE_API FString LexToString(uint16 Value);
CORE_API FString LexToString(int32 Value);
CORE_API FString LexToString(uint32 Value);
CORE_API FString LexToString(int64 Value);
CORE_API FString LexToString(uint64 Value);
CORE_API FString LexToString(long long Value);
CORE_API FString LexToString(unsigned long long Value);
CORE_API FString LexToString(float Value);
CORE_API FString LexToString(double Value);
CORE_API FString LexToString(bool Value);
CORE_API FString LexToString(const TCHAR* Value);
CORE_API FString LexToString(const FString& Value);
CORE_API FString LexToString(FString&& Value);

CORE_API void LexFromString(int8& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(uint8& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(int16& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(uint16& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(int32& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(uint32& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(int64& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(uint64& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(float& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(double& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(bool& OutValue, const TCHAR* Buffer);
CORE_API void LexFromString(FString& OutValue, const TCHAR* Buffer);

/** Parses Buffer into OutValue when the whole text is a valid number; returns whether it was. */
CORE_API bool LexTryParseString(int32& OutValue, const TCHAR* Buffer);
CORE_API bool LexTryParseString(int64& OutValue, const TCHAR* Buffer);
CORE_API bool LexTryParseString(float& OutValue, const TCHAR* Buffer);
CORE_API bool LexTryParseString(double& OutValue, const TCHAR* Buffer);
CORE_API bool LexTryParseString(bool& OutValue, const TCHAR* Buffer);
