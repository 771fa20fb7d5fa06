// Copyright Orvane. All Rights Reserved.

#include "Internationalization/Text.h"

#include "Misc/AssertionMacros.h"

#include <cmath>
#include <cstdio>

namespace
{
	const FString& EmptyString()
	{
		static const FString Empty;
		return Empty;
	}

	/** Inserts the culture's thousands separator into a run of integral digits. */
	FString GroupDigits(const FString& Digits)
	{
		FString Result;
		const int32 Length = Digits.Len();
		for (int32 Index = 0; Index < Length; ++Index)
		{
			if (Index > 0 && (Length - Index) % 3 == 0)
			{
				Result.AppendChar(TEXT(','));
			}
			Result.AppendChar(Digits[Index]);
		}
		return Result;
	}

	/** Lays out a sign, integral digits and fractional digits the way the options ask. */
	FString LayOutNumber(
		bool bNegative, FString IntegralDigits, FString FractionalDigits, const FNumberFormattingOptions& Options)
	{
		while (FractionalDigits.Len() > Options.MinimumFractionalDigits && FractionalDigits.EndsWith(TEXT("0")))
		{
			FractionalDigits.LeftChopInline(1);
		}
		while (FractionalDigits.Len() < Options.MinimumFractionalDigits)
		{
			FractionalDigits.AppendChar(TEXT('0'));
		}
		if (IntegralDigits.Len() > Options.MaximumIntegralDigits)
		{
			IntegralDigits.RightInline(Options.MaximumIntegralDigits);
		}
		while (IntegralDigits.Len() < Options.MinimumIntegralDigits)
		{
			IntegralDigits.InsertAt(0, TEXT('0'));
		}
		FString Result;
		if (bNegative)
		{
			Result.AppendChar(TEXT('-'));
		}
		else if (Options.AlwaysSign)
		{
			Result.AppendChar(TEXT('+'));
		}
		Result += Options.UseGrouping ? GroupDigits(IntegralDigits) : IntegralDigits;
		if (!FractionalDigits.IsEmpty())
		{
			Result.AppendChar(TEXT('.'));
			Result += FractionalDigits;
		}
		return Result;
	}

	FString FormatUnsigned(bool bNegative, uint64 Magnitude, const FNumberFormattingOptions& Options)
	{
		return LayOutNumber(bNegative && Magnitude != 0, FString::Printf(TEXT("%llu"), Magnitude), FString(), Options);
	}

	FString FormatSigned(int64 Value, const FNumberFormattingOptions& Options)
	{
		const uint64 Magnitude =
			Value < 0 ? static_cast<uint64>(0) - static_cast<uint64>(Value) : static_cast<uint64>(Value);
		return FormatUnsigned(Value < 0, Magnitude, Options);
	}

	FString FormatDouble(double Value, const FNumberFormattingOptions& Options)
	{
		if (std::isnan(Value))
		{
			return FString(TEXT("NaN"));
		}
		if (std::isinf(Value))
		{
			return FString(Value < 0 ? TEXT("-\u221E") : TEXT("\u221E"));
		}
		const int32 Decimals = Options.MaximumFractionalDigits < 0 ? 0 : Options.MaximumFractionalDigits;
		FString Fixed = FString::Printf(TEXT("%.*f"), Decimals, std::fabs(Value));
		FString Integral = Fixed;
		FString Fractional;
		Fixed.Split(TEXT("."), &Integral, &Fractional);
		const bool bNegative = Value < 0 && (Fixed.Replace(TEXT("0"), TEXT("")).Replace(TEXT("."), TEXT("")).Len() > 0);
		return LayOutNumber(bNegative, Integral, Fractional, Options);
	}

	const FNumberFormattingOptions& ResolveOptions(const FNumberFormattingOptions* Options)
	{
		return Options ? *Options : FNumberFormattingOptions::DefaultWithGrouping();
	}

	/** Walks a format pattern, calling OnLiteral for plain text and OnArgument for each "{Name}". */
	template <typename LiteralFunc, typename ArgumentFunc>
	void WalkPattern(const FString& Pattern, LiteralFunc&& OnLiteral, ArgumentFunc&& OnArgument)
	{
		const TCHAR* Text = *Pattern;
		const int32 Length = Pattern.Len();
		for (int32 Index = 0; Index < Length;)
		{
			const TCHAR Char = Text[Index];
			if (Char == TEXT('`') && Index + 1 < Length &&
				(Text[Index + 1] == TEXT('{') || Text[Index + 1] == TEXT('}') || Text[Index + 1] == TEXT('`')))
			{
				OnLiteral(Text + Index + 1, 1);
				Index += 2;
				continue;
			}
			if (Char == TEXT('{'))
			{
				int32 Close = Index + 1;
				while (Close < Length && Text[Close] != TEXT('}') && Text[Close] != TEXT('{'))
				{
					++Close;
				}
				if (Close < Length && Text[Close] == TEXT('}') && Close > Index + 1)
				{
					if (Close + 1 < Length && Text[Close + 1] == TEXT('|'))
					{
						// Argument modifiers (plural, gender, hpp) are not supported by this formatter.
						UE_HEADLESS_UNIMPLEMENTED();
					}
					OnArgument(FString(Close - Index - 1, Text + Index + 1), Text + Index, Close - Index + 1);
					Index = Close + 1;
					continue;
				}
			}
			OnLiteral(Text + Index, 1);
			++Index;
		}
	}

	template <typename LookupFunc>
	FText FormatWith(const FTextFormat& Fmt, LookupFunc&& Lookup)
	{
		FString Result;
		WalkPattern(
			Fmt.GetSourceString(),
			[&Result](const TCHAR* Literal, int32 Count)
			{
				Result.AppendChars(Literal, Count);
			},
			[&Result, &Lookup](const FString& Name, const TCHAR* Written, int32 WrittenLen)
			{
				if (const FFormatArgumentValue* Value = Lookup(Name))
				{
					Result += Value->ToFormattedString();
				}
				else
				{
					// A missing argument stays visible, so the gap is noticed.
					Result.AppendChars(Written, WrittenLen);
				}
			});
		return FText::FromString(MoveTemp(Result));
	}
} // namespace

const FNumberFormattingOptions& FNumberFormattingOptions::DefaultWithGrouping()
{
	static const FNumberFormattingOptions Options;
	return Options;
}

const FNumberFormattingOptions& FNumberFormattingOptions::DefaultNoGrouping()
{
	static const FNumberFormattingOptions Options = FNumberFormattingOptions().SetUseGrouping(false);
	return Options;
}

FInternationalization& FInternationalization::Get()
{
	static FInternationalization Instance;
	return Instance;
}

FText FInternationalization::ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText(
	const TCHAR* InTextLiteral, const TCHAR* InNamespace, const TCHAR* InKey)
{
	auto Data = std::make_shared<FText::FTextData>();
	Data->Display = InTextLiteral;
	Data->Namespace = InNamespace;
	Data->Key = InKey;
	Data->bHasIdentity = true;
	return FText(MoveTemp(Data));
}

FText::FText() = default;

FText::FText(std::shared_ptr<const FTextData> InData)
	: Data(MoveTemp(InData))
{
}

FText FText::MakeText(FString&& Display, bool bCultureInvariant)
{
	auto NewData = std::make_shared<FTextData>();
	NewData->Display = MoveTemp(Display);
	NewData->bCultureInvariant = bCultureInvariant;
	return FText(MoveTemp(NewData));
}

const FText& FText::GetEmpty()
{
	static const FText Empty;
	return Empty;
}

FText FText::FromString(const FString& String)
{
	return MakeText(FString(String), true);
}

FText FText::FromString(FString&& String)
{
	return MakeText(MoveTemp(String), true);
}

FText FText::FromStringView(FStringView String)
{
	return MakeText(FString(String), true);
}

FText FText::FromName(const FName& Val)
{
	return MakeText(Val.ToString(), true);
}

FText FText::AsCultureInvariant(const FString& String)
{
	return MakeText(FString(String), true);
}

FText FText::AsCultureInvariant(FString&& String)
{
	return MakeText(MoveTemp(String), true);
}

FText FText::AsCultureInvariant(const TCHAR* String)
{
	return MakeText(FString(String), true);
}

FText FText::AsCultureInvariant(FText Text)
{
	return MakeText(FString(Text.ToString()), true);
}

FText FText::AsNumber(int32 Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatSigned(Val, ResolveOptions(Options)), false);
}

FText FText::AsNumber(uint32 Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatUnsigned(false, Val, ResolveOptions(Options)), false);
}

FText FText::AsNumber(int64 Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatSigned(Val, ResolveOptions(Options)), false);
}

FText FText::AsNumber(uint64 Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatUnsigned(false, Val, ResolveOptions(Options)), false);
}

FText FText::AsNumber(float Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatDouble(Val, ResolveOptions(Options)), false);
}

FText FText::AsNumber(double Val, const FNumberFormattingOptions* const Options)
{
	return MakeText(FormatDouble(Val, ResolveOptions(Options)), false);
}

const FString& FText::ToString() const
{
	return Data ? Data->Display : EmptyString();
}

bool FText::IsEmptyOrWhitespace() const
{
	for (const TCHAR Char : ToString())
	{
		if (!FChar::IsWhitespace(Char))
		{
			return false;
		}
	}
	return true;
}

bool FText::IsCultureInvariant() const
{
	return Data && Data->bCultureInvariant;
}

bool FText::ShouldGatherForLocalization() const
{
	return Data && Data->bHasIdentity && !Data->Display.IsEmpty();
}

int32 FText::CompareTo(const FText& Other, const ETextComparisonLevel::Type ComparisonLevel) const
{
	const bool bIgnoreCase =
		ComparisonLevel == ETextComparisonLevel::Primary || ComparisonLevel == ETextComparisonLevel::Secondary;
	return ToString().Compare(Other.ToString(), bIgnoreCase ? ESearchCase::IgnoreCase : ESearchCase::CaseSensitive);
}

int32 FText::CompareToCaseIgnored(const FText& Other) const
{
	return CompareTo(Other, ETextComparisonLevel::Secondary);
}

bool FText::EqualTo(const FText& Other, const ETextComparisonLevel::Type ComparisonLevel) const
{
	return CompareTo(Other, ComparisonLevel) == 0;
}

bool FText::EqualToCaseIgnored(const FText& Other) const
{
	return CompareToCaseIgnored(Other) == 0;
}

bool FText::IdenticalTo(const FText& Other, const ETextIdenticalModeFlags CompareModeFlags) const
{
	if (Data == Other.Data)
	{
		return true;
	}
	const uint8 Flags = static_cast<uint8>(CompareModeFlags);
	if ((Flags & static_cast<uint8>(ETextIdenticalModeFlags::DeepCompare)) && Data && Other.Data &&
		Data->bHasIdentity && Other.Data->bHasIdentity)
	{
		return Data->Namespace.Equals(Other.Data->Namespace) && Data->Key.Equals(Other.Data->Key) &&
			   Data->Display.Equals(Other.Data->Display);
	}
	if ((Flags & static_cast<uint8>(ETextIdenticalModeFlags::LexicalCompareInvariants)) && IsCultureInvariant() &&
		Other.IsCultureInvariant())
	{
		return ToString().Equals(Other.ToString());
	}
	return false;
}

FText FText::ToUpper() const
{
	return MakeText(ToString().ToUpper(), IsCultureInvariant());
}

FText FText::ToLower() const
{
	return MakeText(ToString().ToLower(), IsCultureInvariant());
}

FText FText::TrimPreceding(const FText& InText)
{
	return MakeText(InText.ToString().TrimStart(), InText.IsCultureInvariant());
}

FText FText::TrimTrailing(const FText& InText)
{
	return MakeText(InText.ToString().TrimEnd(), InText.IsCultureInvariant());
}

FText FText::TrimPrecedingAndTrailing(const FText& InText)
{
	return MakeText(InText.ToString().TrimStartAndEnd(), InText.IsCultureInvariant());
}

FText FText::Join(const FText& Delimiter, const TArray<FText>& Args)
{
	FString Result;
	for (int32 Index = 0; Index < Args.Num(); ++Index)
	{
		if (Index > 0)
		{
			Result += Delimiter.ToString();
		}
		Result += Args[Index].ToString();
	}
	return FromString(MoveTemp(Result));
}

FText FText::Format(FTextFormat Fmt, const FFormatOrderedArguments& InArguments)
{
	return FormatWith(Fmt,
		[&InArguments](const FString& Name) -> const FFormatArgumentValue*
		{
			if (Name.IsEmpty() || !Name.IsNumeric() || Name.Contains(TEXT(".")) || Name.Contains(TEXT("-")) ||
				Name.Contains(TEXT("+")))
			{
				return nullptr;
			}
			const int32 Index = FCString::Atoi(*Name);
			return InArguments.IsValidIndex(Index) ? &InArguments[Index] : nullptr;
		});
}

FText FText::Format(FTextFormat Fmt, const FFormatNamedArguments& InArguments)
{
	return FormatWith(Fmt,
		[&InArguments](const FString& Name)
		{
			return InArguments.Find(Name);
		});
}

FString FFormatArgumentValue::ToFormattedString() const
{
	switch (Type)
	{
		case EType::Int:
			return FText::AsNumber(IntValue).ToString();
		case EType::UInt:
			return FText::AsNumber(UIntValue).ToString();
		case EType::Float:
		case EType::Double:
			return FText::AsNumber(DoubleValue).ToString();
		case EType::Text:
		default:
			return TextValue.ToString();
	}
}

void FTextFormat::GetFormatArgumentNames(TArray<FString>& OutArgumentNames) const
{
	WalkPattern(
		GetSourceString(), [](const TCHAR*, int32) {},
		[&OutArgumentNames](const FString& Name, const TCHAR*, int32)
		{
			for (const FString& Existing : OutArgumentNames)
			{
				if (Existing.Equals(Name))
				{
					return;
				}
			}
			OutArgumentNames.Add(Name);
		});
}

TOptional<FString> FTextInspector::GetNamespace(const FText& Text)
{
	if (Text.Data && Text.Data->bHasIdentity)
	{
		return Text.Data->Namespace;
	}
	return TOptional<FString>();
}

TOptional<FString> FTextInspector::GetKey(const FText& Text)
{
	if (Text.Data && Text.Data->bHasIdentity)
	{
		return Text.Data->Key;
	}
	return TOptional<FString>();
}

const FString* FTextInspector::GetSourceString(const FText& Text)
{
	return &Text.ToString();
}

const FString& FTextInspector::GetDisplayString(const FText& Text)
{
	return Text.ToString();
}

FString LexToString(const FText& Text)
{
	return Text.ToString();
}
