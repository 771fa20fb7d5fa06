// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonValue.h"

#include "Dom/JsonObject.h"
#include "JsonGlobals.h"
#include "JsonNumbers.h"

#include <cmath>
#include <limits>

namespace
{
	/**
	 * Converts a double to an integer type: rounded half away from zero, and only when the result fits. The upper
	 * bound is compared as the power of two past the maximum, which a double holds exactly.
	 */
	template <typename T>
	bool ConvertNumber(double Number, T& OutNumber)
	{
		if (!std::isfinite(Number))
		{
			return false;
		}
		const double Rounded = std::round(Number);
		constexpr double UpperBound = static_cast<double>(std::numeric_limits<T>::max() / 2 + 1) * 2.0;
		if (Rounded < static_cast<double>(std::numeric_limits<T>::min()) || Rounded >= UpperBound)
		{
			return false;
		}
		OutNumber = static_cast<T>(Rounded);
		return true;
	}

	template <typename T>
	bool ConvertFromInt64(const FJsonValue& Value, T& OutNumber)
	{
		int64 Wide = 0;
		if (!Value.TryGetNumber(Wide) || Wide < static_cast<int64>(std::numeric_limits<T>::min()) ||
			Wide > static_cast<int64>(std::numeric_limits<T>::max()))
		{
			return false;
		}
		OutNumber = static_cast<T>(Wide);
		return true;
	}

	/** An integer read from text, digit for digit, or from the double the text stands for. */
	template <typename T>
	bool IntegerFromText(const FString& Text, const FJsonValue& Value, T& OutNumber)
	{
		if (UE::Json::Private::ParseIntegerText(Text, OutNumber))
		{
			return true;
		}
		double Number = 0.0;
		return Value.TryGetNumber(Number) && ConvertNumber(Number, OutNumber);
	}
} // namespace

double FJsonValue::AsNumber() const
{
	double Number = 0.0;
	if (!TryGetNumber(Number))
	{
		ErrorMessage(TEXT("Number"));
	}
	return Number;
}

FString FJsonValue::AsString() const
{
	FString String;
	if (!TryGetString(String))
	{
		ErrorMessage(TEXT("String"));
	}
	return String;
}

bool FJsonValue::AsBool() const
{
	bool bValue = false;
	if (!TryGetBool(bValue))
	{
		ErrorMessage(TEXT("Boolean"));
	}
	return bValue;
}

const TArray<TSharedPtr<FJsonValue>>& FJsonValue::AsArray() const
{
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	if (!TryGetArray(Array))
	{
		static const TArray<TSharedPtr<FJsonValue>> EmptyArray;
		ErrorMessage(TEXT("Array"));
		return EmptyArray;
	}
	return *Array;
}

const TSharedPtr<FJsonObject>& FJsonValue::AsObject() const
{
	const TSharedPtr<FJsonObject>* Object = nullptr;
	if (!TryGetObject(Object))
	{
		static const TSharedPtr<FJsonObject> EmptyObject;
		ErrorMessage(TEXT("Object"));
		return EmptyObject;
	}
	return *Object;
}

bool FJsonValue::TryGetNumber(float& OutNumber) const
{
	double Number = 0.0;
	if (!TryGetNumber(Number) ||
		(std::isfinite(Number) && std::fabs(Number) > static_cast<double>(std::numeric_limits<float>::max())))
	{
		return false;
	}
	OutNumber = static_cast<float>(Number);
	return true;
}

bool FJsonValue::TryGetNumber(int8& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(int16& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(int32& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(int64& OutNumber) const
{
	double Number = 0.0;
	return TryGetNumber(Number) && ConvertNumber(Number, OutNumber);
}

bool FJsonValue::TryGetNumber(uint8& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(uint16& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(uint32& OutNumber) const
{
	return ConvertFromInt64(*this, OutNumber);
}

bool FJsonValue::TryGetNumber(uint64& OutNumber) const
{
	double Number = 0.0;
	return TryGetNumber(Number) && ConvertNumber(Number, OutNumber);
}

void FJsonValue::ErrorMessage(const FString& InType) const
{
	UE_LOG(LogJson, Error, TEXT("Json Value of type '%s' used as a '%s'."), *GetType(), *InType);
}

TSharedPtr<FJsonValue> FJsonValue::Duplicate(const TSharedPtr<FJsonValue>& Src)
{
	return Duplicate(TSharedPtr<const FJsonValue>(Src));
}

TSharedPtr<FJsonValue> FJsonValue::Duplicate(const TSharedPtr<const FJsonValue>& Src)
{
	if (!Src.IsValid())
	{
		return nullptr;
	}
	switch (Src->Type)
	{
		case EJson::String:
			return MakeShared<FJsonValueString>(Src->AsString());
		case EJson::Number:
		{
			FString Text;
			if (dynamic_cast<const FJsonValueNumberString*>(Src.Get()) && Src->TryGetString(Text))
			{
				return MakeShared<FJsonValueNumberString>(MoveTemp(Text));
			}
			return MakeShared<FJsonValueNumber>(Src->AsNumber());
		}
		case EJson::Boolean:
			return MakeShared<FJsonValueBoolean>(Src->AsBool());
		case EJson::Array:
		{
			TArray<TSharedPtr<FJsonValue>> Copy;
			const TArray<TSharedPtr<FJsonValue>>& Elements = Src->AsArray();
			Copy.Reserve(Elements.Num());
			for (const TSharedPtr<FJsonValue>& Element : Elements)
			{
				Copy.Add(Duplicate(Element));
			}
			return MakeShared<FJsonValueArray>(MoveTemp(Copy));
		}
		case EJson::Object:
		{
			const TSharedPtr<FJsonObject>& Source = Src->AsObject();
			if (!Source.IsValid())
			{
				return MakeShared<FJsonValueObject>(nullptr);
			}
			TSharedPtr<FJsonObject> Copy = MakeShared<FJsonObject>();
			FJsonObject::Duplicate(Source, Copy);
			return MakeShared<FJsonValueObject>(MoveTemp(Copy));
		}
		case EJson::Null:
		case EJson::None:
		default:
			return MakeShared<FJsonValueNull>();
	}
}

bool FJsonValue::CompareEqual(const FJsonValue& Lhs, const FJsonValue& Rhs)
{
	if (Lhs.Type != Rhs.Type)
	{
		return false;
	}
	switch (Lhs.Type)
	{
		case EJson::None:
		case EJson::Null:
			return true;
		case EJson::String:
			return Lhs.AsString().Equals(Rhs.AsString(), ESearchCase::CaseSensitive);
		case EJson::Number:
			return Lhs.AsNumber() == Rhs.AsNumber();
		case EJson::Boolean:
			return Lhs.AsBool() == Rhs.AsBool();
		case EJson::Array:
		{
			const TArray<TSharedPtr<FJsonValue>>& LhsArray = Lhs.AsArray();
			const TArray<TSharedPtr<FJsonValue>>& RhsArray = Rhs.AsArray();
			if (LhsArray.Num() != RhsArray.Num())
			{
				return false;
			}
			for (int32 Index = 0; Index < LhsArray.Num(); ++Index)
			{
				const TSharedPtr<FJsonValue>& A = LhsArray[Index];
				const TSharedPtr<FJsonValue>& B = RhsArray[Index];
				if (A.IsValid() != B.IsValid() || (A.IsValid() && !CompareEqual(*A, *B)))
				{
					return false;
				}
			}
			return true;
		}
		case EJson::Object:
		{
			const TSharedPtr<FJsonObject>& A = Lhs.AsObject();
			const TSharedPtr<FJsonObject>& B = Rhs.AsObject();
			return A.IsValid() == B.IsValid() && (!A.IsValid() || *A == *B);
		}
		default:
			return false;
	}
}

bool FJsonValueString::TryGetNumber(double& OutDouble) const
{
	if (!Value.IsNumeric())
	{
		return false;
	}
	return LexTryParseString(OutDouble, *Value);
}

bool FJsonValueString::TryGetNumber(int64& OutNumber) const
{
	return Value.IsNumeric() && IntegerFromText(Value, *this, OutNumber);
}

bool FJsonValueString::TryGetNumber(uint64& OutNumber) const
{
	return Value.IsNumeric() && IntegerFromText(Value, *this, OutNumber);
}

bool FJsonValueString::TryGetBool(bool& OutBool) const
{
	if (Value.Equals(TEXT("true"), ESearchCase::IgnoreCase))
	{
		OutBool = true;
		return true;
	}
	if (Value.Equals(TEXT("false"), ESearchCase::IgnoreCase))
	{
		OutBool = false;
		return true;
	}
	return false;
}

bool FJsonValueNumber::TryGetString(FString& OutString) const
{
	OutString = UE::Json::Private::NumberToString(Value);
	return true;
}

bool FJsonValueNumberString::TryGetNumber(double& OutNumber) const
{
	return UE::Json::Private::ParseNumberText(Value, OutNumber);
}

bool FJsonValueNumberString::TryGetNumber(float& OutNumber) const
{
	return UE::Json::Private::ParseNumberText(Value, OutNumber);
}

bool FJsonValueNumberString::TryGetNumber(int64& OutNumber) const
{
	return IntegerFromText(Value, *this, OutNumber);
}

bool FJsonValueNumberString::TryGetNumber(uint64& OutNumber) const
{
	return IntegerFromText(Value, *this, OutNumber);
}

bool FJsonValueNumberString::TryGetBool(bool& OutBool) const
{
	double Number = 0.0;
	if (!TryGetNumber(Number))
	{
		return false;
	}
	OutBool = Number != 0.0;
	return true;
}
