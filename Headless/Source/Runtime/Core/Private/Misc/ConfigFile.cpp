// Copyright Orvane. All Rights Reserved.

#include "ConfigText.h"
#include "HAL/FileManager.h"
#include "Internationalization/Internationalization.h"
#include "Misc/CString.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/FileHelper.h"

using namespace UE::ConfigText;

namespace
{
	/** The (Section, Key) pairs either list holds, each once, in order of appearance. */
	void CollectKeys(const FSectionList& A, const FSectionList& B, TArray<TPair<FString, FName>>& OutKeys)
	{
		for (const FSectionList* List : {&A, &B})
		{
			for (const TPair<FString, FConfigSection>& Section : *List)
			{
				TArray<FName> Keys;
				Section.Value.GetKeys(Keys);
				for (const FName& Key : Keys)
				{
					const bool bKnown = OutKeys.ContainsByPredicate(
						[&Section, &Key](const TPair<FString, FName>& Known)
						{
							return Known.Value == Key && Known.Key == Section.Key;
						});
					if (!bKnown)
					{
						OutKeys.Add(TPair<FString, FName>(Section.Key, Key));
					}
				}
			}
		}
	}

	bool SameSavedValues(const TArray<FString>& A, const TArray<FString>& B)
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

	/** Reads the quoted string starting at Index (at the opening quote); Index ends after the closing quote. */
	bool ReadQuotedArgument(const FString& Text, int32& Index, FString& OutValue)
	{
		if (Index >= Text.Len() || Text[Index] != TEXT('"'))
		{
			return false;
		}
		OutValue.Reset();
		for (++Index; Index < Text.Len(); ++Index)
		{
			if (Text[Index] == TEXT('\\') && Index + 1 < Text.Len())
			{
				OutValue.AppendChar(Text[++Index]);
			}
			else if (Text[Index] == TEXT('"'))
			{
				++Index;
				return true;
			}
			else
			{
				OutValue.AppendChar(Text[Index]);
			}
		}
		return false;
	}

	FString QuoteTextArgument(const FString& Value)
	{
		return FString(TEXT("\"")) + Value.Replace(TEXT("\\"), TEXT("\\\\")).Replace(TEXT("\""), TEXT("\\\"")) +
			   TEXT("\"");
	}

	/** The quoted arguments of a text macro such as NSLOCTEXT("Ns", "Key", "Source"). */
	bool ParseTextMacro(const FString& Value, const TCHAR* Macro, TArray<FString>& OutArguments)
	{
		const FString Prefix = FString(Macro) + TEXT("(");
		if (!Value.StartsWith(Prefix, ESearchCase::CaseSensitive) || !Value.EndsWith(TEXT(")")))
		{
			return false;
		}
		int32 Index = Prefix.Len();
		while (true)
		{
			while (Index < Value.Len() && Value[Index] == TEXT(' '))
			{
				++Index;
			}
			FString Argument;
			if (!ReadQuotedArgument(Value, Index, Argument))
			{
				return false;
			}
			OutArguments.Add(Argument);
			while (Index < Value.Len() && Value[Index] == TEXT(' '))
			{
				++Index;
			}
			if (Index < Value.Len() && Value[Index] == TEXT(','))
			{
				++Index;
				continue;
			}
			return Index == Value.Len() - 1;
		}
	}
} // namespace

FConfigFile::FConfigFile() = default;
FConfigFile::~FConfigFile() = default;
FConfigFile::FConfigFile(const FConfigFile& Other) = default;
FConfigFile& FConfigFile::operator=(const FConfigFile& Other) = default;

bool FConfigFile::Read(const FString& Filename)
{
	Lines.Reset();
	bHasText = false;
	Encoding = EEncoding::Utf8;

	bool bRead = false;
	if (IFileManager::Get().FileExists(*Filename))
	{
		TArray<uint8> Bytes;
		if (FFileHelper::LoadFileToArray(Bytes, *Filename))
		{
			const int32 Size = Bytes.Num();
			const uint8* Data = Bytes.GetData();
			if (Size >= 3 && Data[0] == 0xef && Data[1] == 0xbb && Data[2] == 0xbf)
			{
				Encoding = EEncoding::Utf8WithBom;
			}
			else if (Size >= 2 && ((Data[0] == 0xff && Data[1] == 0xfe) || (Data[0] == 0xfe && Data[1] == 0xff)))
			{
				// Big-endian files are read too, but come back little-endian: the writer knows no other order.
				Encoding = EEncoding::Utf16LittleEndian;
			}
			FString Text;
			FFileHelper::BufferToString(Text, Data, Size);
			SplitLines(Text, Lines);
			bHasText = true;
			bRead = true;
		}
		else
		{
			UE_LOG(LogConfig, Warning, TEXT("Could not read config file '%s'."), *Filename);
		}
	}
	if (Name.IsNone())
	{
		Name = FName(*FPaths::GetBaseFilename(Filename));
	}
	ApplyOwnText();
	Dirty = false;
	return bRead;
}

void FConfigFile::ApplyOwnText()
{
	Sections = Evaluate(BaseSections, Lines);
}

void FConfigFile::Rebase(const TArray<ElementType>& NewBaseSections)
{
	// Keys whose values differ from what the old layers and the text say are changes not written yet.
	const FSectionList OldView = Evaluate(BaseSections, Lines);
	TArray<TPair<FString, FName>> Keys;
	CollectKeys(Sections, OldView, Keys);
	TArray<TPair<TPair<FString, FName>, TArray<FString>>> Pending;
	for (const TPair<FString, FName>& Key : Keys)
	{
		const TArray<FString> Wanted = SavedValues(Sections, Key.Key, Key.Value);
		if (!SameSavedValues(Wanted, SavedValues(OldView, Key.Key, Key.Value)))
		{
			Pending.Add(TPair<TPair<FString, FName>, TArray<FString>>(Key, Wanted));
		}
	}

	BaseSections = NewBaseSections;
	bHasLowerLayers = true;
	ApplyOwnText();
	for (const auto& Change : Pending)
	{
		FConfigSection& Section = FindOrAddSection(Sections, Change.Key.Key);
		Section.Remove(Change.Key.Value);
		for (const FString& Value : Change.Value)
		{
			Section.Add(Change.Key.Value, FConfigValue(Value));
		}
	}
}

FString FConfigFile::GetDefaultEol() const
{
	for (const FLine& Line : Lines)
	{
		if (!Line.Eol.IsEmpty())
		{
			return Line.Eol;
		}
	}
	return TEXT("\n");
}

FString FConfigFile::GenerateText(const FString& PrefixText) const
{
	TArray<FLine> NewLines = Lines;
	const FString Eol = GetDefaultEol();
	if (NewLines.Num() == 0 && !PrefixText.IsEmpty())
	{
		SplitLines(PrefixText, NewLines);
		if (NewLines.Num() > 0 && NewLines.Last().Eol.IsEmpty())
		{
			NewLines.Last().Eol = Eol;
		}
	}

	const FSectionList TextView = Evaluate(BaseSections, NewLines);
	TArray<TPair<FString, FName>> Keys;
	CollectKeys(Sections, TextView, Keys);
	for (const TPair<FString, FName>& Key : Keys)
	{
		const TArray<FString> Wanted = SavedValues(Sections, Key.Key, Key.Value);
		if (!SameSavedValues(Wanted, SavedValues(TextView, Key.Key, Key.Value)))
		{
			RewriteKey(NewLines, BaseSections, Key.Key, Key.Value, Wanted, Eol);
		}
	}
	return JoinLines(NewLines);
}

bool FConfigFile::Write(const FString& Filename, bool /*bDoRemoteWrite*/, const FString& PrefixText)
{
	const FString Text = GenerateText(PrefixText);
	const bool bExists = IFileManager::Get().FileExists(*Filename);
	if (!bExists && Text.IsEmpty())
	{
		// Nothing to say and nothing on disk: no empty file appears.
		Dirty = false;
		return true;
	}

	FFileHelper::EEncodingOptions EncodingOption = FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM;
	if (Encoding == EEncoding::Utf8WithBom)
	{
		EncodingOption = FFileHelper::EEncodingOptions::ForceUTF8;
	}
	else if (Encoding == EEncoding::Utf16LittleEndian)
	{
		EncodingOption = FFileHelper::EEncodingOptions::ForceUnicode;
	}

	if (bExists)
	{
		// An unchanged file is not rewritten, so its date and a read-only flag do not matter.
		FString Existing;
		if (FFileHelper::LoadFileToString(Existing, *Filename) && Existing.Equals(Text, ESearchCase::CaseSensitive))
		{
			SplitLines(Text, Lines);
			bHasText = true;
			Dirty = false;
			return true;
		}
	}

	if (!FFileHelper::SaveStringToFile(Text, *Filename, EncodingOption))
	{
		return false;
	}
	SplitLines(Text, Lines);
	bHasText = true;
	Dirty = false;
	return true;
}

void FConfigFile::Cleanup()
{
	Sections.Empty();
	BaseSections.Empty();
	Lines.Empty();
	bHasLowerLayers = false;
	bHasText = false;
	Dirty = false;
}

const FConfigSection* FConfigFile::FindSection(const FString& SectionName) const
{
	return UE::ConfigText::FindSection(Sections, SectionName);
}

FConfigSection* FConfigFile::FindOrAddConfigSection(const FString& SectionName)
{
	return &FindOrAddSection(Sections, SectionName);
}

bool FConfigFile::DoesSectionExist(const FString& SectionName) const
{
	return FindSection(SectionName) != nullptr;
}

bool FConfigFile::EmptySection(const FString& SectionName)
{
	FConfigSection* Section = UE::ConfigText::FindSection(Sections, SectionName);
	if (!Section)
	{
		return false;
	}
	if (Section->Num() > 0)
	{
		Section->Empty();
		Dirty = true;
	}
	return true;
}

void FConfigFile::GetSectionNames(TArray<FString>& OutSectionNames) const
{
	for (const ElementType& Pair : Sections)
	{
		OutSectionNames.Add(Pair.Key);
	}
}

bool FConfigFile::GetString(const TCHAR* Section, const TCHAR* Key, FString& Value) const
{
	const FConfigSection* Found = FindSection(Section);
	const FConfigValue* FoundValue = Found ? Found->Find(FName(Key)) : nullptr;
	if (!FoundValue)
	{
		return false;
	}
	Value = FoundValue->GetValue();
	return true;
}

bool FConfigFile::GetText(const TCHAR* Section, const TCHAR* Key, FText& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	// Texts are stored as INVTEXT("...") or NSLOCTEXT("Ns", "Key", "Source"); anything else is the text itself.
	TArray<FString> Arguments;
	if (ParseTextMacro(Raw, TEXT("INVTEXT"), Arguments) && Arguments.Num() == 1)
	{
		Value = FText::AsCultureInvariant(Arguments[0]);
	}
	else if (ParseTextMacro(Raw, TEXT("NSLOCTEXT"), Arguments) && Arguments.Num() == 3)
	{
		Value = FInternationalization::ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText(
			*Arguments[2], *Arguments[0], *Arguments[1]);
	}
	else if (ParseTextMacro(Raw, TEXT("LOCTEXT"), Arguments) && Arguments.Num() == 2)
	{
		Value = FInternationalization::ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText(
			*Arguments[1], TEXT(""), *Arguments[0]);
	}
	else
	{
		Value = FText::FromString(Raw);
	}
	return true;
}

bool FConfigFile::GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	Value = FCString::ToBool(*Raw);
	return true;
}

bool FConfigFile::GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	Value = FCString::Atoi(*Raw);
	return true;
}

bool FConfigFile::GetInt64(const TCHAR* Section, const TCHAR* Key, int64& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	Value = FCString::Atoi64(*Raw);
	return true;
}

bool FConfigFile::GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	Value = FCString::Atof(*Raw);
	return true;
}

bool FConfigFile::GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value) const
{
	FString Raw;
	if (!GetString(Section, Key, Raw))
	{
		return false;
	}
	Value = FCString::Atod(*Raw);
	return true;
}

int32 FConfigFile::GetArray(const TCHAR* Section, const TCHAR* Key, TArray<FString>& Value) const
{
	Value.Reset();
	if (const FConfigSection* Found = FindSection(Section))
	{
		TArray<FConfigValue> Values;
		Found->MultiFind(FName(Key), Values, true);
		for (const FConfigValue& Entry : Values)
		{
			Value.Add(Entry.GetValue());
		}
	}
	return Value.Num();
}

void FConfigFile::SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value)
{
	FConfigSection* Found = FindOrAddConfigSection(Section);
	const FName KeyName(Key);
	// Like a plain line in a file, this replaces the value a read sees; other values of the key stay.
	if (FConfigValue* Existing = Found->Find(KeyName))
	{
		if (!Existing->GetSavedValue().Equals(Value, ESearchCase::CaseSensitive))
		{
			*Existing = FConfigValue(Value);
			Dirty = true;
		}
	}
	else
	{
		Found->Add(KeyName, FConfigValue(Value));
		Dirty = true;
	}
}

void FConfigFile::SetText(const TCHAR* Section, const TCHAR* Key, const FText& Value)
{
	const TOptional<FString> Namespace = FTextInspector::GetNamespace(Value);
	const TOptional<FString> TextKey = FTextInspector::GetKey(Value);
	FString Written;
	if (TextKey.IsSet() && !TextKey.GetValue().IsEmpty())
	{
		const FString* Source = FTextInspector::GetSourceString(Value);
		Written = FString(TEXT("NSLOCTEXT(")) +
				  QuoteTextArgument(Namespace.IsSet() ? Namespace.GetValue() : FString()) + TEXT(", ") +
				  QuoteTextArgument(TextKey.GetValue()) + TEXT(", ") +
				  QuoteTextArgument(Source ? *Source : Value.ToString()) + TEXT(")");
	}
	else if (Value.IsCultureInvariant())
	{
		Written = FString(TEXT("INVTEXT(")) + QuoteTextArgument(Value.ToString()) + TEXT(")");
	}
	else
	{
		Written = Value.ToString();
	}
	SetString(Section, Key, *Written);
}

void FConfigFile::SetBool(const TCHAR* Section, const TCHAR* Key, bool Value)
{
	SetString(Section, Key, Value ? TEXT("True") : TEXT("False"));
}

void FConfigFile::SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value)
{
	SetString(Section, Key, *LexToString(Value));
}

void FConfigFile::SetInt64(const TCHAR* Section, const TCHAR* Key, int64 Value)
{
	SetString(Section, Key, *LexToString(Value));
}

void FConfigFile::SetFloat(const TCHAR* Section, const TCHAR* Key, float Value)
{
	SetString(Section, Key, *FormatFloat(Value));
}

void FConfigFile::SetDouble(const TCHAR* Section, const TCHAR* Key, double Value)
{
	SetString(Section, Key, *FormatFloat(Value));
}

void FConfigFile::SetArray(const TCHAR* Section, const TCHAR* Key, const TArray<FString>& Value)
{
	FConfigSection* Found = FindOrAddConfigSection(Section);
	const FName KeyName(Key);
	TArray<FConfigValue> Old;
	Found->MultiFind(KeyName, Old, true);
	bool bSame = Old.Num() == Value.Num();
	for (int32 Index = 0; bSame && Index < Old.Num(); ++Index)
	{
		bSame = Old[Index].GetSavedValue().Equals(Value[Index], ESearchCase::CaseSensitive);
	}
	if (bSame)
	{
		return;
	}
	Found->Remove(KeyName);
	for (const FString& Entry : Value)
	{
		Found->Add(KeyName, FConfigValue(Entry));
	}
	Dirty = true;
}

bool FConfigFile::AddToSection(const TCHAR* Section, FName Key, const FString& Value)
{
	FindOrAddConfigSection(Section)->Add(Key, FConfigValue(Value));
	Dirty = true;
	return true;
}

bool FConfigFile::AddUniqueToSection(const TCHAR* Section, FName Key, const FString& Value)
{
	FConfigSection* Found = FindOrAddConfigSection(Section);
	if (Found->FindPair(Key, FConfigValue(Value)))
	{
		return false;
	}
	Found->Add(Key, FConfigValue(Value));
	Dirty = true;
	return true;
}

bool FConfigFile::RemoveKeyFromSection(const TCHAR* Section, FName Key)
{
	FConfigSection* Found = UE::ConfigText::FindSection(Sections, Section);
	if (!Found || Found->Remove(Key) == 0)
	{
		return false;
	}
	Dirty = true;
	return true;
}

bool FConfigFile::RemoveFromSection(const TCHAR* Section, FName Key, const FString& Value)
{
	FConfigSection* Found = UE::ConfigText::FindSection(Sections, Section);
	if (!Found || Found->Remove(Key, FConfigValue(Value)) == 0)
	{
		return false;
	}
	Dirty = true;
	return true;
}

void FConfigFile::SetLowerLayers(const FConfigFile& Base)
{
	BaseSections = Base.Sections;
	bHasLowerLayers = true;
	ApplyOwnText();
}

FString FConfigFile::FormatFloat(double Value)
{
	return FString::Printf(TEXT("%f"), Value);
}
