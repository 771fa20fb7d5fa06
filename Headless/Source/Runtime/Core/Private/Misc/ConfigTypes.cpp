// Copyright Orvane. All Rights Reserved.

#include "Misc/ConfigTypes.h"

#include "Misc/App.h"
#include "Misc/Paths.h"

FConfigValue::FConfigValue(const TCHAR* InValue)
	: SavedValue(InValue)
{
	UpdateExpandedValue();
}

FConfigValue::FConfigValue(const FString& InValue)
	: SavedValue(InValue)
{
	UpdateExpandedValue();
}

FConfigValue::FConfigValue(FString&& InValue)
	: SavedValue(MoveTemp(InValue))
{
	UpdateExpandedValue();
}

void FConfigValue::UpdateExpandedValue()
{
	ExpandValue(SavedValue, ExpandedValue);
}

bool FConfigValue::ExpandValue(const FString& InCollapsedValue, FString& OutExpandedValue)
{
	OutExpandedValue = InCollapsedValue;
	int32 PercentIndex = INDEX_NONE;
	if (!InCollapsedValue.FindChar(TEXT('%'), PercentIndex))
	{
		return false;
	}
	// Directories come without their trailing '/', since values write "%GAMEDIR%/Folder".
	FString ProjectDir = FPaths::ProjectDir();
	FString EngineDir = FPaths::EngineDir();
	FString SavedDir = FPaths::ProjectSavedDir();
	FPaths::NormalizeDirectoryName(ProjectDir);
	FPaths::NormalizeDirectoryName(EngineDir);
	FPaths::NormalizeDirectoryName(SavedDir);
	int32 Replaced = 0;
	Replaced += OutExpandedValue.ReplaceInline(TEXT("%GAMEDIR%"), *ProjectDir, ESearchCase::CaseSensitive);
	Replaced += OutExpandedValue.ReplaceInline(TEXT("%GAMESAVEDDIR%"), *SavedDir, ESearchCase::CaseSensitive);
	Replaced += OutExpandedValue.ReplaceInline(TEXT("%ENGINEDIR%"), *EngineDir, ESearchCase::CaseSensitive);
	Replaced += OutExpandedValue.ReplaceInline(TEXT("%GAME%"), FApp::GetProjectName(), ESearchCase::CaseSensitive);
	return Replaced > 0;
}

FString FConfigValue::ExpandValue(const FString& InCollapsedValue)
{
	FString Result;
	ExpandValue(InCollapsedValue, Result);
	return Result;
}

const FConfigValue* FConfigSection::Find(FName Key) const
{
	for (int32 Index = Pairs.Num() - 1; Index >= 0; --Index)
	{
		if (Pairs[Index].Key == Key)
		{
			return &Pairs[Index].Value;
		}
	}
	return nullptr;
}

FConfigValue* FConfigSection::Find(FName Key)
{
	return const_cast<FConfigValue*>(static_cast<const FConfigSection*>(this)->Find(Key));
}

FConfigValue FConfigSection::FindRef(FName Key) const
{
	const FConfigValue* Found = Find(Key);
	return Found ? *Found : FConfigValue();
}

const FConfigValue* FConfigSection::FindPair(FName Key, const FConfigValue& Value) const
{
	for (const ElementType& Pair : Pairs)
	{
		if (Pair.Key == Key && Pair.Value == Value)
		{
			return &Pair.Value;
		}
	}
	return nullptr;
}

FConfigValue* FConfigSection::FindPair(FName Key, const FConfigValue& Value)
{
	return const_cast<FConfigValue*>(static_cast<const FConfigSection*>(this)->FindPair(Key, Value));
}

void FConfigSection::MultiFind(FName Key, TArray<FConfigValue>& OutValues, bool /*bMaintainOrder*/) const
{
	for (const ElementType& Pair : Pairs)
	{
		if (Pair.Key == Key)
		{
			OutValues.Add(Pair.Value);
		}
	}
}

bool FConfigSection::Contains(FName Key) const
{
	return Find(Key) != nullptr;
}

FConfigValue& FConfigSection::Add(FName Key, const FConfigValue& Value)
{
	Pairs.Add(ElementType(Key, Value));
	return Pairs.Last().Value;
}

FConfigValue& FConfigSection::AddUnique(FName Key, const FConfigValue& Value)
{
	if (FConfigValue* Existing = FindPair(Key, Value))
	{
		return *Existing;
	}
	return Add(Key, Value);
}

int32 FConfigSection::Remove(FName Key)
{
	return Pairs.RemoveAll(
		[Key](const ElementType& Pair)
		{
			return Pair.Key == Key;
		});
}

int32 FConfigSection::Remove(FName Key, const FConfigValue& Value)
{
	return Pairs.RemoveAll(
		[Key, &Value](const ElementType& Pair)
		{
			return Pair.Key == Key && Pair.Value == Value;
		});
}

int32 FConfigSection::RemoveSingle(FName Key, const FConfigValue& Value)
{
	for (int32 Index = 0; Index < Pairs.Num(); ++Index)
	{
		if (Pairs[Index].Key == Key && Pairs[Index].Value == Value)
		{
			Pairs.RemoveAt(Index);
			return 1;
		}
	}
	return 0;
}

void FConfigSection::GetKeys(TArray<FName>& OutKeys) const
{
	for (const ElementType& Pair : Pairs)
	{
		OutKeys.AddUnique(Pair.Key);
	}
}

bool FConfigSection::operator==(const FConfigSection& Other) const
{
	if (Pairs.Num() != Other.Pairs.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < Pairs.Num(); ++Index)
	{
		if (Pairs[Index].Key != Other.Pairs[Index].Key ||
			!Pairs[Index].Value.GetSavedValue().Equals(
				Other.Pairs[Index].Value.GetSavedValue(), ESearchCase::CaseSensitive))
		{
			return false;
		}
	}
	return true;
}
