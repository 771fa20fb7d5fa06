// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Internationalization/Internationalization.h"
#include "Misc/Optional.h"
#include "UObject/NameTypes.h"

#include <memory>
#include <type_traits>
#include <utility>

class FText;
class FTextFormat;
class FFormatArgumentValue;

namespace ETextComparisonLevel
{
	enum Type
	{
		/** The locale's default comparison; for this culture, like Tertiary. */
		Default,
		/** Base characters only: ignores case and accents. */
		Primary,
		/** Also accents. */
		Secondary,
		/** Also case. */
		Tertiary,
		Quaternary,
		Quinary,
	};
}

/** How IdenticalTo compares texts beyond sharing the same data. */
enum class ETextIdenticalModeFlags : uint8
{
	None = 0,
	DeepCompare = 1 << 0,
	LexicalCompareInvariants = 1 << 1,
};

/** How numbers are rounded and grouped when they become text. */
struct FNumberFormattingOptions
{
	bool AlwaysSign = false;
	bool UseGrouping = true;
	int32 MinimumIntegralDigits = 1;
	int32 MaximumIntegralDigits = 324;
	int32 MinimumFractionalDigits = 0;
	int32 MaximumFractionalDigits = 3;

	FNumberFormattingOptions& SetAlwaysSign(bool InValue)
	{
		AlwaysSign = InValue;
		return *this;
	}
	FNumberFormattingOptions& SetUseGrouping(bool InValue)
	{
		UseGrouping = InValue;
		return *this;
	}
	FNumberFormattingOptions& SetMinimumIntegralDigits(int32 InValue)
	{
		MinimumIntegralDigits = InValue;
		return *this;
	}
	FNumberFormattingOptions& SetMaximumIntegralDigits(int32 InValue)
	{
		MaximumIntegralDigits = InValue;
		return *this;
	}
	FNumberFormattingOptions& SetMinimumFractionalDigits(int32 InValue)
	{
		MinimumFractionalDigits = InValue;
		return *this;
	}
	FNumberFormattingOptions& SetMaximumFractionalDigits(int32 InValue)
	{
		MaximumFractionalDigits = InValue;
		return *this;
	}

	/** The culture's defaults: grouping on, up to three fractional digits. */
	static const FNumberFormattingOptions& DefaultWithGrouping();
	static const FNumberFormattingOptions& DefaultNoGrouping();
};

using FFormatOrderedArguments = TArray<FFormatArgumentValue>;
using FFormatNamedArguments = TMap<FString, FFormatArgumentValue>;

/**
 * Text shown to the user. A text made by a localisation macro remembers its namespace, key and source
 * string; copies share the same immutable data.
 */
class CORE_API FText
{
public:
	FText();

	static const FText& GetEmpty();

	/** A text showing String; it is not localisable. */
	static FText FromString(const FString& String);
	static FText FromString(FString&& String);
	static FText FromStringView(FStringView String);
	static FText FromName(const FName& Val);

	/** A text showing String that is never localised. */
	static FText AsCultureInvariant(const FString& String);
	static FText AsCultureInvariant(FString&& String);
	static FText AsCultureInvariant(const TCHAR* String);
	static FText AsCultureInvariant(FText Text);

	/** Formats a number for the current culture: grouped thousands and at most three fractional digits. */
	static FText AsNumber(int32 Val, const FNumberFormattingOptions* const Options = nullptr);
	static FText AsNumber(uint32 Val, const FNumberFormattingOptions* const Options = nullptr);
	static FText AsNumber(int64 Val, const FNumberFormattingOptions* const Options = nullptr);
	static FText AsNumber(uint64 Val, const FNumberFormattingOptions* const Options = nullptr);
	static FText AsNumber(float Val, const FNumberFormattingOptions* const Options = nullptr);
	static FText AsNumber(double Val, const FNumberFormattingOptions* const Options = nullptr);

	/** The text as it is shown. */
	const FString& ToString() const;

	bool IsEmpty() const { return ToString().IsEmpty(); }
	bool IsEmptyOrWhitespace() const;
	bool IsCultureInvariant() const;
	bool IsTransient() const { return false; }
	bool IsFromStringTable() const { return false; }

	/** True when this text would be gathered for translation: it came from a localisation macro. */
	bool ShouldGatherForLocalization() const;

	int32 CompareTo(
		const FText& Other, const ETextComparisonLevel::Type ComparisonLevel = ETextComparisonLevel::Default) const;
	int32 CompareToCaseIgnored(const FText& Other) const;
	bool EqualTo(
		const FText& Other, const ETextComparisonLevel::Type ComparisonLevel = ETextComparisonLevel::Default) const;
	bool EqualToCaseIgnored(const FText& Other) const;

	/** True when both texts share the same data, or (with DeepCompare) have the same identity and source. */
	bool IdenticalTo(
		const FText& Other, const ETextIdenticalModeFlags CompareModeFlags = ETextIdenticalModeFlags::None) const;

	FText ToUpper() const;
	FText ToLower() const;
	static FText TrimPreceding(const FText& InText);
	static FText TrimTrailing(const FText& InText);
	static FText TrimPrecedingAndTrailing(const FText& InText);

	/** Joins texts with a delimiter between them. */
	static FText Join(const FText& Delimiter, const TArray<FText>& Args);

	/**
	 * Replaces "{0}"-style (ordered) or "{Name}"-style (named) arguments in Fmt. A backtick escapes the next
	 * character; an argument with no value stays in the output as written.
	 */
	static FText Format(FTextFormat Fmt, const FFormatOrderedArguments& InArguments);
	static FText Format(FTextFormat Fmt, const FFormatNamedArguments& InArguments);

	template <typename... ArgTypes>
	requires(sizeof...(ArgTypes) > 0 && (std::is_constructible_v<FFormatArgumentValue, ArgTypes&&> && ...)) static FText
		Format(FTextFormat Fmt, ArgTypes&&... Args);

	/** Formats with named arguments given inline as name, value, name, value... */
	template <typename... ArgTypes>
	static FText FormatNamed(FTextFormat Fmt, ArgTypes&&... Args);

	/** Formats with ordered arguments given inline. */
	template <typename... ArgTypes>
	static FText FormatOrdered(FTextFormat Fmt, ArgTypes&&... Args);

private:
	friend class FTextInspector;
	friend class FInternationalization;
	friend class FTextFormat;

	/** Everything a text is, shared by its copies. */
	struct FTextData
	{
		FString Display;
		FString Namespace;
		FString Key;
		bool bHasIdentity = false;
		bool bCultureInvariant = false;
	};

	explicit FText(std::shared_ptr<const FTextData> InData);
	static FText MakeText(FString&& Display, bool bCultureInvariant);

	template <typename... ArgTypes>
	static void AddNamed(FFormatNamedArguments& Out);
	template <typename NameType, typename ValueType, typename... ArgTypes>
	static void AddNamed(FFormatNamedArguments& Out, NameType&& Name, ValueType&& Value, ArgTypes&&... Rest);

	std::shared_ptr<const FTextData> Data;
};

/** A value given to FText::Format: a number or a text. */
class CORE_API FFormatArgumentValue
{
public:
	enum class EType : uint8
	{
		Int,
		UInt,
		Float,
		Double,
		Text,
	};

	FFormatArgumentValue()
		: Type(EType::Text)
	{
	}
	FFormatArgumentValue(int32 Value)
		: Type(EType::Int)
		, IntValue(Value)
	{
	}
	FFormatArgumentValue(uint32 Value)
		: Type(EType::UInt)
		, UIntValue(Value)
	{
	}
	FFormatArgumentValue(int64 Value)
		: Type(EType::Int)
		, IntValue(Value)
	{
	}
	FFormatArgumentValue(uint64 Value)
		: Type(EType::UInt)
		, UIntValue(Value)
	{
	}
	FFormatArgumentValue(float Value)
		: Type(EType::Float)
		, DoubleValue(Value)
	{
	}
	FFormatArgumentValue(double Value)
		: Type(EType::Double)
		, DoubleValue(Value)
	{
	}
	FFormatArgumentValue(const FText& Value)
		: Type(EType::Text)
		, TextValue(Value)
	{
	}

	EType GetType() const { return Type; }
	int64 GetIntValue() const { return IntValue; }
	uint64 GetUIntValue() const { return UIntValue; }
	double GetDoubleValue() const { return DoubleValue; }
	const FText& GetTextValue() const { return TextValue; }

	/** The value as it appears in formatted text. */
	FString ToFormattedString() const;

private:
	EType Type;
	int64 IntValue = 0;
	uint64 UIntValue = 0;
	double DoubleValue = 0.0;
	FText TextValue;
};

/** A parsed format pattern for FText::Format. */
class CORE_API FTextFormat
{
public:
	FTextFormat() = default;
	FTextFormat(const FText& InText)
		: SourceText(InText)
	{
	}

	static FTextFormat FromString(const FString& InString) { return FTextFormat(FText::FromString(InString)); }
	static FTextFormat FromString(FString&& InString) { return FTextFormat(FText::FromString(MoveTemp(InString))); }

	const FText& GetSourceText() const { return SourceText; }
	const FString& GetSourceString() const { return SourceText.ToString(); }

	/** Appends the names of the arguments the pattern uses, in order of first use. */
	void GetFormatArgumentNames(TArray<FString>& OutArgumentNames) const;

private:
	FText SourceText;
};

/** Read access to what a text was made from. */
class CORE_API FTextInspector
{
public:
	static TOptional<FString> GetNamespace(const FText& Text);
	static TOptional<FString> GetKey(const FText& Text);

	/** The string the text was made from (for a macro text, the literal); null never. */
	static const FString* GetSourceString(const FText& Text);
	static const FString& GetDisplayString(const FText& Text);
};

CORE_API FString LexToString(const FText& Text);

template <typename... ArgTypes>
requires(sizeof...(ArgTypes) > 0 && (std::is_constructible_v<FFormatArgumentValue, ArgTypes&&> &&
										...)) FText FText::Format(FTextFormat Fmt, ArgTypes&&... Args)
{
	FFormatOrderedArguments Arguments;
	Arguments.Reserve(static_cast<int32>(sizeof...(Args)));
	(Arguments.Add(FFormatArgumentValue(std::forward<ArgTypes>(Args))), ...);
	return Format(MoveTemp(Fmt), static_cast<const FFormatOrderedArguments&>(Arguments));
}

template <typename... ArgTypes>
FText FText::FormatOrdered(FTextFormat Fmt, ArgTypes&&... Args)
{
	return Format(MoveTemp(Fmt), std::forward<ArgTypes>(Args)...);
}

template <typename... ArgTypes>
void FText::AddNamed(FFormatNamedArguments& Out)
{
}

template <typename NameType, typename ValueType, typename... ArgTypes>
void FText::AddNamed(FFormatNamedArguments& Out, NameType&& Name, ValueType&& Value, ArgTypes&&... Rest)
{
	Out.Add(FString(Name), FFormatArgumentValue(std::forward<ValueType>(Value)));
	AddNamed(Out, std::forward<ArgTypes>(Rest)...);
}

template <typename... ArgTypes>
FText FText::FormatNamed(FTextFormat Fmt, ArgTypes&&... Args)
{
	static_assert(sizeof...(Args) % 2 == 0, "FormatNamed takes name/value pairs.");
	FFormatNamedArguments Arguments;
	AddNamed(Arguments, std::forward<ArgTypes>(Args)...);
	return Format(MoveTemp(Fmt), static_cast<const FFormatNamedArguments&>(Arguments));
}
