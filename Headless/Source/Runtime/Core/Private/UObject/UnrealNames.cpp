// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Misc/AssertionMacros.h"
#include "UObject/NameTypes.h"

#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace
{
	/** The global name table: one entry per case-insensitive text, holding the spelling to show. */
	class FNameTable
	{
	public:
		static FNameTable& Get()
		{
			// Never destroyed: names may still be used by other objects' static destructors.
			static FNameTable* const Table = new FNameTable();
			return *Table;
		}

		/** Returns the entry for Text, adding it unless FindType is FNAME_Find. Index 0 means not found. */
		uint32 FindOrAdd(const TCHAR* Text, int32 Len, EFindName FindType)
		{
			const std::u16string Key = MakeKey(Text, Len);
			std::lock_guard<std::mutex> Lock(Mutex);
			const auto Found = Index.find(Key);
			if (Found != Index.end())
			{
				if (FindType == FNAME_Replace_Not_Safe_For_Threading)
				{
					Entries[Found->second] = FString(Len, Text);
				}
				return Found->second;
			}
			if (FindType == FNAME_Find)
			{
				return 0;
			}
			return AddLocked(Key, FString(Len, Text));
		}

		FString GetText(uint32 EntryIndex)
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			check(EntryIndex < Entries.size());
			return Entries[EntryIndex];
		}

		bool IsValidIndex(uint32 EntryIndex)
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			return EntryIndex < Entries.size();
		}

	private:
		FNameTable()
		{
			static const TCHAR* const HardcodedNames[] = {TEXT("None"), TEXT("ByteProperty"), TEXT("IntProperty"),
				TEXT("BoolProperty"), TEXT("FloatProperty"), TEXT("ObjectProperty"), TEXT("NameProperty"),
				TEXT("StrProperty"), TEXT("StructProperty"), TEXT("ArrayProperty"), TEXT("TextProperty"), TEXT("Core"),
				TEXT("Engine"), TEXT("Editor"), TEXT("Object"), TEXT("Class"), TEXT("Package"), TEXT("Actor"),
				TEXT("Default"), TEXT("Game"), TEXT("Name"), TEXT("Vector"), TEXT("Rotator"), TEXT("Color"),
				TEXT("Transform")};
			static_assert(UE_ARRAY_COUNT(HardcodedNames) == static_cast<SIZE_T>(EName::MaxHardcodedNameIndex),
				"Every EName needs its text, in enum order.");
			for (const TCHAR* Name : HardcodedNames)
			{
				const int32 Len = FCString::Strlen(Name);
				AddLocked(MakeKey(Name, Len), FString(Len, Name));
			}
		}

		static std::u16string MakeKey(const TCHAR* Text, int32 Len)
		{
			std::u16string Key(static_cast<size_t>(Len), u'\0');
			for (int32 CharIndex = 0; CharIndex < Len; ++CharIndex)
			{
				Key[CharIndex] = FChar::ToUpper(Text[CharIndex]);
			}
			return Key;
		}

		uint32 AddLocked(const std::u16string& Key, FString&& Text)
		{
			const uint32 NewIndex = static_cast<uint32>(Entries.size());
			Entries.push_back(MoveTemp(Text));
			Index.emplace(Key, NewIndex);
			return NewIndex;
		}

		std::mutex Mutex;
		std::vector<FString> Entries;
		std::unordered_map<std::u16string, uint32> Index;
	};

	/**
	 * Finds a trailing "_<digits>" number suffix and returns the stored number, shortening InOutLen to the
	 * plain part. A suffix with a leading zero ("_03") or too large for int32 stays part of the text.
	 */
	uint32 SplitNumber(const TCHAR* Name, int32& InOutLen)
	{
		const int32 Len = InOutLen;
		int32 Digits = 0;
		while (Digits < Len && FChar::IsDigit(Name[Len - 1 - Digits]))
		{
			++Digits;
		}
		const int32 UnderscoreIndex = Len - Digits - 1;
		// The plain part must keep at least one character; "_3" is a name of its own.
		if (Digits == 0 || Digits > 10 || UnderscoreIndex < 1 || Name[UnderscoreIndex] != TEXT('_'))
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		if (Digits > 1 && Name[UnderscoreIndex + 1] == TEXT('0'))
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		int64 Value = 0;
		for (int32 DigitIndex = UnderscoreIndex + 1; DigitIndex < Len; ++DigitIndex)
		{
			Value = Value * 10 + FChar::ConvertCharDigitToInt(Name[DigitIndex]);
		}
		if (Value >= MAX_int32)
		{
			return NAME_NO_NUMBER_INTERNAL;
		}
		InOutLen = UnderscoreIndex;
		return static_cast<uint32>(NAME_EXTERNAL_TO_INTERNAL(Value));
	}
} // namespace

FName::FName(EName Ename)
	: ComparisonIndex(FNameEntryId::FromEName(Ename))
{
}

FName::FName(EName Ename, int32 InNumber)
	: ComparisonIndex(FNameEntryId::FromEName(Ename))
	, Number(static_cast<uint32>(InNumber))
{
}

FName::FName(const WIDECHAR* Name, EFindName FindType)
{
	Init(Name, FCString::Strlen(Name), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(const ANSICHAR* Name, EFindName FindType)
{
	const FUTF8ToTCHAR Converted(Name);
	Init(Converted.Get(), Converted.Length(), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(const UTF8CHAR* Name, EFindName FindType)
{
	const FUTF8ToTCHAR Converted(Name);
	Init(Converted.Get(), Converted.Length(), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(int32 Len, const WIDECHAR* Name, EFindName FindType)
{
	Init(Name, Len, NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(int32 Len, const ANSICHAR* Name, EFindName FindType)
{
	const FUTF8ToTCHAR Converted(Name, Len);
	Init(Converted.Get(), Converted.Length(), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(FWideStringView Name, EFindName FindType)
{
	Init(Name.GetData(), Name.Len(), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(FAnsiStringView Name, EFindName FindType)
{
	const FUTF8ToTCHAR Converted(Name.GetData(), Name.Len());
	Init(Converted.Get(), Converted.Length(), NAME_NO_NUMBER_INTERNAL, FindType, true);
}

FName::FName(const WIDECHAR* Name, int32 InNumber)
{
	Init(Name, FCString::Strlen(Name), InNumber, FNAME_Add, false);
}

FName::FName(const ANSICHAR* Name, int32 InNumber)
{
	const FUTF8ToTCHAR Converted(Name);
	Init(Converted.Get(), Converted.Length(), InNumber, FNAME_Add, false);
}

FName::FName(const WIDECHAR* Name, int32 InNumber, EFindName FindType)
{
	Init(Name, FCString::Strlen(Name), InNumber, FindType, false);
}

FName::FName(FName Other, int32 InNumber)
	: ComparisonIndex(Other.ComparisonIndex)
	, Number(static_cast<uint32>(InNumber))
{
}

void FName::Init(const TCHAR* Name, int32 Len, int32 InNumber, EFindName FindType, bool bSplitNumber)
{
	ComparisonIndex = FNameEntryId();
	Number = NAME_NO_NUMBER_INTERNAL;
	if (Name == nullptr || Len <= 0)
	{
		return;
	}
	if (!ensureMsgf(Len < NAME_SIZE, TEXT("FName is too long (%i characters; the limit is %i); using None."), Len,
			NAME_SIZE - 1))
	{
		return;
	}
	uint32 NewNumber = static_cast<uint32>(InNumber);
	if (bSplitNumber)
	{
		NewNumber = SplitNumber(Name, Len);
	}
	const uint32 EntryIndex = FNameTable::Get().FindOrAdd(Name, Len, FindType);
	if (EntryIndex == 0 && FindType == FNAME_Find && !(Len == 4 && FCString::Strnicmp(Name, TEXT("None"), 4) == 0))
	{
		// Unknown text is not added, and the result is plain None without a number.
		return;
	}
	ComparisonIndex = FNameEntryId::FromUnstableInt(EntryIndex);
	Number = NewNumber;
}

FString FName::ToString() const
{
	FString Out;
	AppendString(Out);
	return Out;
}

void FName::ToString(FString& Out) const
{
	Out.Reset();
	AppendString(Out);
}

void FName::AppendString(FString& Out) const
{
	Out += FNameTable::Get().GetText(ComparisonIndex.ToUnstableInt());
	if (Number != NAME_NO_NUMBER_INTERNAL)
	{
		Out.Appendf(TEXT("_%d"), NAME_INTERNAL_TO_EXTERNAL(static_cast<int32>(Number)));
	}
}

FString FName::GetPlainNameString() const
{
	return FNameTable::Get().GetText(ComparisonIndex.ToUnstableInt());
}

bool FName::IsValid() const
{
	return FNameTable::Get().IsValidIndex(ComparisonIndex.ToUnstableInt());
}

bool FName::operator==(const TCHAR* Other) const
{
	if (Other == nullptr || *Other == 0)
	{
		return IsNone();
	}
	return ToString().Equals(FString(Other), ESearchCase::IgnoreCase);
}

bool FName::operator==(const ANSICHAR* Other) const
{
	return *this == *FString(Other);
}

bool FName::IsEqual(const FName& Other, const ENameCase CompareMethod, const bool bCompareNumber) const
{
	if (bCompareNumber && Number != Other.Number)
	{
		return false;
	}
	if (CompareMethod == ENameCase::IgnoreCase)
	{
		return ComparisonIndex == Other.ComparisonIndex;
	}
	return ComparisonIndex == Other.ComparisonIndex && GetPlainNameString().Equals(Other.GetPlainNameString());
}

bool FName::FastLess(const FName& Other) const
{
	if (ComparisonIndex != Other.ComparisonIndex)
	{
		return ComparisonIndex < Other.ComparisonIndex;
	}
	return Number < Other.Number;
}

bool FName::LexicalLess(const FName& Other) const
{
	return Compare(Other) < 0;
}

int32 FName::Compare(const FName& Other) const
{
	if (ComparisonIndex != Other.ComparisonIndex)
	{
		return GetPlainNameString().Compare(Other.GetPlainNameString(), ESearchCase::IgnoreCase);
	}
	return static_cast<int32>(Number) - static_cast<int32>(Other.Number);
}

FString LexToString(const FName& Name)
{
	return Name.ToString();
}

void LexFromString(FName& Name, const TCHAR* Str)
{
	Name = FName(Str);
}
