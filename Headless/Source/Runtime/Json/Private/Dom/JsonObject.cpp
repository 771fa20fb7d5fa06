// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonObject.h"

#include "Containers/StringConv.h"
#include "JsonGlobals.h"

namespace
{
	/**
	 * The field name as an FString key. Lookups come with views, and the map is keyed by FString: a per-thread
	 * scratch string spares an allocation on every lookup.
	 */
	const FString& ScratchKey(FStringView FieldName)
	{
		thread_local FString Key;
		Key.Reset(FieldName.Len());
		Key.AppendChars(FieldName.GetData(), FieldName.Len());
		return Key;
	}

	const FString& ScratchKey(FAnsiStringView FieldName)
	{
		thread_local FString Key;
		Key.Reset(FieldName.Len());
		Key.AppendChars(FieldName.GetData(), FieldName.Len());
		return Key;
	}

	/** An ANSI field name widened into a per-thread scratch string, for the overloads that forward to the wide ones. */
	FStringView WidenFieldName(FAnsiStringView FieldName)
	{
		thread_local FString Wide;
		Wide.Reset(FieldName.Len());
		Wide.AppendChars(FieldName.GetData(), FieldName.Len());
		return Wide;
	}

	TSharedPtr<FJsonValue> GetFieldImpl(const TSharedPtr<FJsonValue>* Field, FStringView FieldName, EJson JsonType)
	{
		if (Field == nullptr || !Field->IsValid())
		{
			UE_LOG(LogJson, Error, TEXT("Field %s was not found."), *FString(FieldName));
		}
		else if (JsonType != EJson::None && (*Field)->Type != JsonType)
		{
			UE_LOG(LogJson, Error, TEXT("Field %s is of the wrong type."), *FString(FieldName));
		}
		else
		{
			return *Field;
		}
		return MakeShared<FJsonValueNull>();
	}
} // namespace

const TSharedPtr<FJsonValue>* FJsonObject::FindField(FStringView FieldName) const
{
	return Values.Find(ScratchKey(FieldName));
}

const TSharedPtr<FJsonValue>* FJsonObject::FindField(FAnsiStringView FieldName) const
{
	return Values.Find(ScratchKey(FieldName));
}

TSharedPtr<FJsonValue> FJsonObject::GetField(FStringView FieldName, EJson JsonType) const
{
	return GetFieldImpl(FindField(FieldName), FieldName, JsonType);
}

TSharedPtr<FJsonValue> FJsonObject::TryGetField(FStringView FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field ? *Field : TSharedPtr<FJsonValue>();
}

bool FJsonObject::HasField(FStringView FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid();
}

bool FJsonObject::HasTypedField(FStringView FieldName, EJson JsonType) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->Type == JsonType;
}

void FJsonObject::RemoveField(FStringView FieldName)
{
	Values.Remove(ScratchKey(FieldName));
}

double FJsonObject::GetNumberField(FStringView FieldName) const
{
	return GetField(FieldName, EJson::None)->AsNumber();
}

int32 FJsonObject::GetIntegerField(FStringView FieldName) const
{
	const TSharedPtr<FJsonValue> Field = GetField(FieldName, EJson::None);
	int32 Number = 0;
	if (!Field->TryGetNumber(Number))
	{
		UE_LOG(LogJson, Error, TEXT("Field %s is not a number within int32 range."), *FString(FieldName));
	}
	return Number;
}

FString FJsonObject::GetStringField(FStringView FieldName) const
{
	return GetField(FieldName, EJson::None)->AsString();
}

bool FJsonObject::TryGetStringField(FStringView FieldName, FString& OutString) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetString(OutString);
}

bool FJsonObject::TryGetStringArrayField(FStringView FieldName, TArray<FString>& OutArray) const
{
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	if (!TryGetArrayField(FieldName, Array))
	{
		return false;
	}
	TArray<FString> Strings;
	Strings.Reserve(Array->Num());
	for (const TSharedPtr<FJsonValue>& Element : *Array)
	{
		FString String;
		if (!Element.IsValid() || !Element->TryGetString(String))
		{
			return false;
		}
		Strings.Add(MoveTemp(String));
	}
	OutArray = MoveTemp(Strings);
	return true;
}

bool FJsonObject::GetBoolField(FStringView FieldName) const
{
	return GetField(FieldName, EJson::None)->AsBool();
}

bool FJsonObject::TryGetBoolField(FStringView FieldName, bool& OutBool) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetBool(OutBool);
}

const TArray<TSharedPtr<FJsonValue>>& FJsonObject::GetArrayField(FStringView FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	if (Field && Field->IsValid() && (*Field)->Type == EJson::Array)
	{
		return (*Field)->AsArray();
	}
	// Reports the missing or mistyped field, then the failed conversion; the empty array is static.
	return GetField(FieldName, EJson::Array)->AsArray();
}

bool FJsonObject::TryGetArrayField(FStringView FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetArray(OutArray);
}

const TSharedPtr<FJsonObject>& FJsonObject::GetObjectField(FStringView FieldName) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	if (Field && Field->IsValid() && (*Field)->Type == EJson::Object)
	{
		return (*Field)->AsObject();
	}
	return GetField(FieldName, EJson::Object)->AsObject();
}

bool FJsonObject::TryGetObjectField(FStringView FieldName, const TSharedPtr<FJsonObject>*& OutObject) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetObject(OutObject);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, float& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, double& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, int8& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, int16& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, int32& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, int64& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, uint8& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, uint16& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, uint32& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(FStringView FieldName, uint64& OutNumber) const
{
	const TSharedPtr<FJsonValue>* Field = FindField(FieldName);
	return Field && Field->IsValid() && (*Field)->TryGetNumber(OutNumber);
}

TSharedPtr<FJsonValue> FJsonObject::GetField(FAnsiStringView FieldName, EJson JsonType) const
{
	return GetField(WidenFieldName(FieldName), JsonType);
}

TSharedPtr<FJsonValue> FJsonObject::TryGetField(FAnsiStringView FieldName) const
{
	return TryGetField(WidenFieldName(FieldName));
}

bool FJsonObject::HasField(FAnsiStringView FieldName) const
{
	return HasField(WidenFieldName(FieldName));
}

bool FJsonObject::HasTypedField(FAnsiStringView FieldName, EJson JsonType) const
{
	return HasTypedField(WidenFieldName(FieldName), JsonType);
}

void FJsonObject::RemoveField(FAnsiStringView FieldName)
{
	RemoveField(WidenFieldName(FieldName));
}

double FJsonObject::GetNumberField(FAnsiStringView FieldName) const
{
	return GetNumberField(WidenFieldName(FieldName));
}

int32 FJsonObject::GetIntegerField(FAnsiStringView FieldName) const
{
	return GetIntegerField(WidenFieldName(FieldName));
}

FString FJsonObject::GetStringField(FAnsiStringView FieldName) const
{
	return GetStringField(WidenFieldName(FieldName));
}

bool FJsonObject::TryGetStringField(FAnsiStringView FieldName, FString& OutString) const
{
	return TryGetStringField(WidenFieldName(FieldName), OutString);
}

bool FJsonObject::TryGetStringArrayField(FAnsiStringView FieldName, TArray<FString>& OutArray) const
{
	return TryGetStringArrayField(WidenFieldName(FieldName), OutArray);
}

bool FJsonObject::GetBoolField(FAnsiStringView FieldName) const
{
	return GetBoolField(WidenFieldName(FieldName));
}

bool FJsonObject::TryGetBoolField(FAnsiStringView FieldName, bool& OutBool) const
{
	return TryGetBoolField(WidenFieldName(FieldName), OutBool);
}

const TArray<TSharedPtr<FJsonValue>>& FJsonObject::GetArrayField(FAnsiStringView FieldName) const
{
	return GetArrayField(WidenFieldName(FieldName));
}

bool FJsonObject::TryGetArrayField(FAnsiStringView FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
	return TryGetArrayField(WidenFieldName(FieldName), OutArray);
}

const TSharedPtr<FJsonObject>& FJsonObject::GetObjectField(FAnsiStringView FieldName) const
{
	return GetObjectField(WidenFieldName(FieldName));
}

bool FJsonObject::TryGetObjectField(FAnsiStringView FieldName, const TSharedPtr<FJsonObject>*& OutObject) const
{
	return TryGetObjectField(WidenFieldName(FieldName), OutObject);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, float& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, double& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, int8& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, int16& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, int32& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, int64& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, uint8& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, uint16& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, uint32& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

bool FJsonObject::TryGetNumberField(FAnsiStringView FieldName, uint64& OutNumber) const
{
	return TryGetNumberField(WidenFieldName(FieldName), OutNumber);
}

void FJsonObject::SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value)
{
	Values.Add(FieldName, Value);
}

void FJsonObject::SetField(FString&& FieldName, const TSharedPtr<FJsonValue>& Value)
{
	Values.Add(MoveTemp(FieldName), Value);
}

void FJsonObject::SetNumberField(const FString& FieldName, double Number)
{
	Values.Add(FieldName, MakeShared<FJsonValueNumber>(Number));
}

void FJsonObject::SetNumberField(FString&& FieldName, double Number)
{
	Values.Add(MoveTemp(FieldName), MakeShared<FJsonValueNumber>(Number));
}

void FJsonObject::SetStringField(const FString& FieldName, const FString& StringValue)
{
	Values.Add(FieldName, MakeShared<FJsonValueString>(StringValue));
}

void FJsonObject::SetStringField(FString&& FieldName, FString&& StringValue)
{
	Values.Add(MoveTemp(FieldName), MakeShared<FJsonValueString>(MoveTemp(StringValue)));
}

void FJsonObject::SetBoolField(const FString& FieldName, bool InValue)
{
	Values.Add(FieldName, MakeShared<FJsonValueBoolean>(InValue));
}

void FJsonObject::SetBoolField(FString&& FieldName, bool InValue)
{
	Values.Add(MoveTemp(FieldName), MakeShared<FJsonValueBoolean>(InValue));
}

void FJsonObject::SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array)
{
	Values.Add(FieldName, MakeShared<FJsonValueArray>(Array));
}

void FJsonObject::SetArrayField(const FString& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array)
{
	Values.Add(FieldName, MakeShared<FJsonValueArray>(MoveTemp(Array)));
}

void FJsonObject::SetArrayField(FString&& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array)
{
	Values.Add(MoveTemp(FieldName), MakeShared<FJsonValueArray>(Array));
}

void FJsonObject::SetArrayField(FString&& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array)
{
	Values.Add(MoveTemp(FieldName), MakeShared<FJsonValueArray>(MoveTemp(Array)));
}

void FJsonObject::SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& JsonObject)
{
	if (JsonObject.IsValid())
	{
		Values.Add(FieldName, MakeShared<FJsonValueObject>(JsonObject));
	}
	else
	{
		Values.Add(FieldName, MakeShared<FJsonValueNull>());
	}
}

void FJsonObject::SetObjectField(FString&& FieldName, const TSharedPtr<FJsonObject>& JsonObject)
{
	SetObjectField(static_cast<const FString&>(FieldName), JsonObject);
}

void FJsonObject::Duplicate(const TSharedPtr<FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest)
{
	Duplicate(TSharedPtr<const FJsonObject>(Source), Dest);
}

void FJsonObject::Duplicate(const TSharedPtr<const FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest)
{
	if (!Source.IsValid() || !Dest.IsValid())
	{
		return;
	}
	for (const auto& Pair : Source->Values)
	{
		Dest->Values.Add(Pair.Key, FJsonValue::Duplicate(Pair.Value));
	}
}

bool operator==(const FJsonObject& Lhs, const FJsonObject& Rhs)
{
	if (Lhs.Values.Num() != Rhs.Values.Num())
	{
		return false;
	}
	for (const auto& Pair : Lhs.Values)
	{
		const TSharedPtr<FJsonValue>* Other = Rhs.Values.Find(Pair.Key);
		if (Other == nullptr || Pair.Value.IsValid() != Other->IsValid())
		{
			return false;
		}
		if (Pair.Value.IsValid() && !FJsonValue::CompareEqual(*Pair.Value, **Other))
		{
			return false;
		}
	}
	return true;
}
