// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringFwd.h"
#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Misc/CString.h"

#include <concepts>
#include <type_traits>

namespace UE::Core::Private
{
	/** A contiguous range of characters: something GetData and GetNum can be called on, like FString. */
	template <typename RangeType, typename CharType>
	concept CContiguousCharRange = !std::is_pointer_v<std::decay_t<RangeType>> && requires(const RangeType& Range)
	{
		{
			GetData(Range)
			} -> std::convertible_to<const CharType*>;
		{
			GetNum(Range)
			} -> std::convertible_to<int32>;
		requires std::is_same_v<std::remove_cvref_t<decltype(*GetData(Range))>, CharType>;
	};

	/** Calls GetData through argument-dependent lookup, which a member named GetData would hide. */
	template <typename RangeType>
	constexpr auto GetRangeData(const RangeType& Range)
	{
		return GetData(Range);
	}
} // namespace UE::Core::Private

/**
 * A non-owning view of a range of characters. It is not necessarily null-terminated, and it must not
 * outlive the string it looks at.
 */
template <typename CharType>
class TStringView
{
public:
	using ElementType = CharType;
	using ViewType = TStringView<CharType>;

	constexpr TStringView() = default;

	/** Views a null-terminated string; a null pointer gives an empty view. */
	constexpr TStringView(const CharType* InData)
		: DataPtr(InData)
		, Size(InData ? TCString<CharType>::Strlen(InData) : 0)
	{
	}

	constexpr TStringView(const CharType* InData, int32 InSize)
		: DataPtr(InData)
		, Size(InSize)
	{
	}

	/** Views a contiguous range of characters such as an FString. */
	template <typename RangeType>
	requires(!std::is_same_v<std::remove_cvref_t<RangeType>, TStringView<CharType>> &&
			 UE::Core::Private::CContiguousCharRange<RangeType, CharType>) constexpr TStringView(const RangeType& Range)
		: DataPtr(UE::Core::Private::GetRangeData(Range))
		, Size(static_cast<int32>(GetNum(Range)))
	{
	}

	constexpr const CharType* GetData() const { return DataPtr; }
	constexpr int32 Len() const { return Size; }
	constexpr bool IsEmpty() const { return Size == 0; }
	constexpr bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Size; }

	const CharType& operator[](int32 Index) const
	{
		check(IsValidIndex(Index));
		return DataPtr[Index];
	}

	constexpr const CharType* begin() const { return DataPtr; }
	constexpr const CharType* end() const { return DataPtr + Size; }

	constexpr ViewType Left(int32 CharCount) const { return ViewType(DataPtr, Clamp(CharCount)); }
	constexpr ViewType LeftChop(int32 CharCount) const { return ViewType(DataPtr, Size - Clamp(CharCount)); }
	constexpr ViewType Right(int32 CharCount) const
	{
		const int32 Count = Clamp(CharCount);
		return ViewType(DataPtr + Size - Count, Count);
	}
	constexpr ViewType RightChop(int32 CharCount) const
	{
		const int32 Count = Clamp(CharCount);
		return ViewType(DataPtr + Count, Size - Count);
	}

	/** The characters from Position, at most CharCount of them; both are clamped to the view. */
	constexpr ViewType Mid(int32 Position, int32 CharCount = MAX_int32) const
	{
		if (CharCount < 0)
		{
			return ViewType(DataPtr, 0);
		}
		const int32 Start = Clamp(Position);
		const int64 RequestedEnd = static_cast<int64>(Position) + CharCount;
		const int32 End =
			RequestedEnd < Start ? Start : (RequestedEnd > Size ? Size : static_cast<int32>(RequestedEnd));
		return ViewType(DataPtr + Start, End - Start);
	}

	void LeftInline(int32 CharCount) { *this = Left(CharCount); }
	void LeftChopInline(int32 CharCount) { *this = LeftChop(CharCount); }
	void RightInline(int32 CharCount) { *this = Right(CharCount); }
	void RightChopInline(int32 CharCount) { *this = RightChop(CharCount); }
	void MidInline(int32 Position, int32 CharCount = MAX_int32) { *this = Mid(Position, CharCount); }
	void RemovePrefix(int32 CharCount) { RightChopInline(CharCount); }
	void RemoveSuffix(int32 CharCount) { LeftChopInline(CharCount); }

	ViewType TrimStart() const
	{
		int32 Start = 0;
		while (Start < Size && TChar<CharType>::IsWhitespace(DataPtr[Start]))
		{
			++Start;
		}
		return RightChop(Start);
	}

	ViewType TrimEnd() const
	{
		int32 End = Size;
		while (End > 0 && TChar<CharType>::IsWhitespace(DataPtr[End - 1]))
		{
			--End;
		}
		return Left(End);
	}

	ViewType TrimStartAndEnd() const { return TrimStart().TrimEnd(); }

	/** Compares the characters; a negative result means this view sorts first. */
	int32 Compare(ViewType Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const
	{
		const int32 Common = Size < Other.Size ? Size : Other.Size;
		for (int32 Index = 0; Index < Common; ++Index)
		{
			uint32 A = TChar<CharType>::ToCode(DataPtr[Index]);
			uint32 B = TChar<CharType>::ToCode(Other.DataPtr[Index]);
			if (SearchCase == ESearchCase::IgnoreCase)
			{
				A = TChar<CharType>::ToCode(TChar<CharType>::ToUpper(DataPtr[Index]));
				B = TChar<CharType>::ToCode(TChar<CharType>::ToUpper(Other.DataPtr[Index]));
			}
			if (A != B)
			{
				return A < B ? -1 : 1;
			}
		}
		return Size == Other.Size ? 0 : (Size < Other.Size ? -1 : 1);
	}

	bool Equals(ViewType Other, ESearchCase::Type SearchCase = ESearchCase::CaseSensitive) const
	{
		return Size == Other.Size && Compare(Other, SearchCase) == 0;
	}

	bool StartsWith(ViewType Prefix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return Prefix.Size <= Size && Left(Prefix.Size).Equals(Prefix, SearchCase);
	}

	bool StartsWith(CharType Prefix) const { return Size > 0 && DataPtr[0] == Prefix; }

	bool EndsWith(ViewType Suffix, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return Suffix.Size <= Size && Right(Suffix.Size).Equals(Suffix, SearchCase);
	}

	bool EndsWith(CharType Suffix) const { return Size > 0 && DataPtr[Size - 1] == Suffix; }

	/** The index of the first occurrence of Search at or after StartPosition, or INDEX_NONE. */
	int32 Find(ViewType Search, int32 StartPosition = 0, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		for (int32 Index = StartPosition < 0 ? 0 : StartPosition; Index + Search.Size <= Size; ++Index)
		{
			if (ViewType(DataPtr + Index, Search.Size).Equals(Search, SearchCase))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	bool Contains(ViewType Search, ESearchCase::Type SearchCase = ESearchCase::IgnoreCase) const
	{
		return Find(Search, 0, SearchCase) != INDEX_NONE;
	}

	bool FindChar(CharType Search, int32& OutIndex) const
	{
		for (int32 Index = 0; Index < Size; ++Index)
		{
			if (DataPtr[Index] == Search)
			{
				OutIndex = Index;
				return true;
			}
		}
		OutIndex = INDEX_NONE;
		return false;
	}

	bool FindLastChar(CharType Search, int32& OutIndex) const
	{
		for (int32 Index = Size - 1; Index >= 0; --Index)
		{
			if (DataPtr[Index] == Search)
			{
				OutIndex = Index;
				return true;
			}
		}
		OutIndex = INDEX_NONE;
		return false;
	}

	/** Views compare without regard to case, like FString. */
	friend bool operator==(ViewType Lhs, ViewType Rhs) { return Lhs.Equals(Rhs, ESearchCase::IgnoreCase); }
	friend bool operator==(ViewType Lhs, const CharType* Rhs)
	{
		return Lhs.Equals(ViewType(Rhs), ESearchCase::IgnoreCase);
	}
	friend bool operator<(ViewType Lhs, ViewType Rhs) { return Lhs.Compare(Rhs, ESearchCase::IgnoreCase) < 0; }

private:
	constexpr int32 Clamp(int32 Count) const { return Count < 0 ? 0 : (Count > Size ? Size : Count); }

	const CharType* DataPtr = nullptr;
	int32 Size = 0;
};

template <typename CharType>
constexpr const CharType* GetData(const TStringView<CharType>& View)
{
	return View.GetData();
}

template <typename CharType>
constexpr int32 GetNum(const TStringView<CharType>& View)
{
	return View.Len();
}

#define TEXTVIEW(String) FStringView(TEXT(String), UE_ARRAY_COUNT(TEXT(String)) - 1)
#define ANSITEXTVIEW(String) FAnsiStringView(String, UE_ARRAY_COUNT(String) - 1)
