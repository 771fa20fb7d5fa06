// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/Tuple.h"
#include "UObject/NameTypes.h"

/**
 * One value of a config key. The saved value is the text as the file holds it (without surrounding
 * quotes); the value is that text with %GAME%-style variables expanded.
 */
class FConfigValue
{
public:
	FConfigValue() = default;
	CORE_API FConfigValue(const TCHAR* InValue);
	CORE_API FConfigValue(const FString& InValue);
	CORE_API FConfigValue(FString&& InValue);

	/** The value with variables expanded; what readers use. */
	const FString& GetValue() const { return ExpandedValue; }

	/** The value as stored in the file. */
	const FString& GetSavedValue() const { return SavedValue; }

	/** The text written back to the file. */
	const FString& GetValueForWriting() const { return SavedValue; }

	/** Values compare by their saved text, ignoring case, like the keys of the file do. */
	bool operator==(const FConfigValue& Other) const { return SavedValue == Other.SavedValue; }
	bool operator!=(const FConfigValue& Other) const { return !(*this == Other); }

	/** Expands %GAME%, %GAMEDIR%, %ENGINEDIR% and %GAMESAVEDDIR%; true when something was replaced. */
	static CORE_API bool ExpandValue(const FString& InCollapsedValue, FString& OutExpandedValue);
	static CORE_API FString ExpandValue(const FString& InCollapsedValue);

private:
	void UpdateExpandedValue();

	FString SavedValue;
	FString ExpandedValue;
};

/**
 * One section of a config file: keys mapped to any number of values, in the order the file gave
 * them. Keys compare without case, as names do.
 */
class FConfigSection
{
public:
	using ElementType = TPair<FName, FConfigValue>;

	/** The value of the key; with several, the last one added, which is the one a plain read sees. */
	CORE_API const FConfigValue* Find(FName Key) const;
	CORE_API FConfigValue* Find(FName Key);

	/** A copy of Find's value, or an empty value. */
	CORE_API FConfigValue FindRef(FName Key) const;

	/** The stored value of the key that equals Value (ignoring case), or null. */
	CORE_API const FConfigValue* FindPair(FName Key, const FConfigValue& Value) const;
	CORE_API FConfigValue* FindPair(FName Key, const FConfigValue& Value);

	/**
	 * Appends every value of the key to OutValues. They always come in the order they were added, so
	 * bMaintainOrder only documents what the caller relies on.
	 */
	CORE_API void MultiFind(FName Key, TArray<FConfigValue>& OutValues, bool bMaintainOrder = false) const;

	CORE_API bool Contains(FName Key) const;

	/** Adds a value; values already there for the key stay. */
	CORE_API FConfigValue& Add(FName Key, const FConfigValue& Value);

	/** Adds the value unless the key already has an equal one. */
	CORE_API FConfigValue& AddUnique(FName Key, const FConfigValue& Value);

	/** Removes every value of the key; returns how many were removed. */
	CORE_API int32 Remove(FName Key);

	/** Removes every value of the key equal to Value; returns how many were removed. */
	CORE_API int32 Remove(FName Key, const FConfigValue& Value);

	/** Removes the first value of the key equal to Value; returns how many were removed (0 or 1). */
	CORE_API int32 RemoveSingle(FName Key, const FConfigValue& Value);

	/** The distinct keys, in the order they first appear. */
	CORE_API void GetKeys(TArray<FName>& OutKeys) const;

	int32 Num() const { return Pairs.Num(); }
	bool IsEmpty() const { return Pairs.Num() == 0; }
	void Empty() { Pairs.Empty(); }

	ElementType* begin() { return Pairs.GetData(); }
	ElementType* end() { return Pairs.GetData() + Pairs.Num(); }
	const ElementType* begin() const { return Pairs.GetData(); }
	const ElementType* end() const { return Pairs.GetData() + Pairs.Num(); }

	/** Sections are equal when they hold the same keys and saved values in the same order. */
	CORE_API bool operator==(const FConfigSection& Other) const;
	bool operator!=(const FConfigSection& Other) const { return !(*this == Other); }

private:
	TArray<ElementType> Pairs;
};

namespace UE::ConfigText
{
	/** One line of a config file's text and its line break ("" for a last line without one). */
	struct FLine
	{
		FString Text;
		FString Eol;
	};
} // namespace UE::ConfigText
