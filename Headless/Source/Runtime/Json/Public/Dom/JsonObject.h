// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/Map.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonTypes.h"
#include "Templates/SharedPointer.h"

/**
 * A Json object: an unordered set of name/value pairs, written between curly braces. Field names are FStrings
 * and, like every FString key, match without regard to case.
 *
 * The Get functions expect the field to be there with a usable type and log an error otherwise; the TryGet
 * functions return false instead.
 */
class JSON_API FJsonObject
{
public:
	TMap<FString, TSharedPtr<FJsonValue>> Values;

	FJsonObject() = default;

	/** The field named FieldName when it exists and is of JsonType (any type for EJson::None); otherwise logs an error
	 * and returns a null value. */
	template <EJson JsonType>
	TSharedPtr<FJsonValue> GetField(FStringView FieldName) const
	{
		return GetField(FieldName, JsonType);
	}

	template <EJson JsonType>
	TSharedPtr<FJsonValue> GetField(FAnsiStringView FieldName) const
	{
		return GetField(FieldName, JsonType);
	}

	TSharedPtr<FJsonValue> GetField(FStringView FieldName, EJson JsonType) const;
	TSharedPtr<FJsonValue> GetField(FAnsiStringView FieldName, EJson JsonType) const;

	/** The field named FieldName, or a null pointer when there is none. */
	TSharedPtr<FJsonValue> TryGetField(FStringView FieldName) const;
	TSharedPtr<FJsonValue> TryGetField(FAnsiStringView FieldName) const;

	/** True when a field named FieldName exists, whatever its type. */
	bool HasField(FStringView FieldName) const;
	bool HasField(FAnsiStringView FieldName) const;

	/** True when a field named FieldName exists and is of JsonType. */
	template <EJson JsonType>
	bool HasTypedField(FStringView FieldName) const
	{
		return HasTypedField(FieldName, JsonType);
	}

	template <EJson JsonType>
	bool HasTypedField(FAnsiStringView FieldName) const
	{
		return HasTypedField(FieldName, JsonType);
	}

	bool HasTypedField(FStringView FieldName, EJson JsonType) const;
	bool HasTypedField(FAnsiStringView FieldName, EJson JsonType) const;

	/** Adds the field, or replaces the field of that name. */
	void SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value);
	void SetField(FString&& FieldName, const TSharedPtr<FJsonValue>& Value);

	/** Removes the field named FieldName, if there is one. */
	void RemoveField(FStringView FieldName);
	void RemoveField(FAnsiStringView FieldName);

	/** Gets the field with the specified name as a number; logs an error and returns 0 when it cannot. */
	double GetNumberField(FStringView FieldName) const;
	double GetNumberField(FAnsiStringView FieldName) const;

	/** Gets a numeric field and casts to an int32. */
	int32 GetIntegerField(FStringView FieldName) const;
	int32 GetIntegerField(FAnsiStringView FieldName) const;

	/**
	 * Gets the field named FieldName as a number. Returns false if it doesn't exist, cannot be converted or (for an
	 * integer type) lies outside the type's range.
	 */
	bool TryGetNumberField(FStringView FieldName, float& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, double& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, int8& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, int16& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, int32& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, int64& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, uint8& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, uint16& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, uint32& OutNumber) const;
	bool TryGetNumberField(FStringView FieldName, uint64& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, float& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, double& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, int8& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, int16& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, int32& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, int64& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, uint8& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, uint16& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, uint32& OutNumber) const;
	bool TryGetNumberField(FAnsiStringView FieldName, uint64& OutNumber) const;

	void SetNumberField(const FString& FieldName, double Number);
	void SetNumberField(FString&& FieldName, double Number);

	/** Get the field named FieldName as a string; logs an error and returns an empty string when it cannot. */
	FString GetStringField(FStringView FieldName) const;
	FString GetStringField(FAnsiStringView FieldName) const;

	/** Get the field named FieldName as a string; false if it doesn't exist or cannot be converted. */
	bool TryGetStringField(FStringView FieldName, FString& OutString) const;
	bool TryGetStringField(FAnsiStringView FieldName, FString& OutString) const;

	/** Get the field named FieldName as an array of strings; false unless it is an array whose every element converts
	 * to a string. */
	bool TryGetStringArrayField(FStringView FieldName, TArray<FString>& OutArray) const;
	bool TryGetStringArrayField(FAnsiStringView FieldName, TArray<FString>& OutArray) const;

	void SetStringField(const FString& FieldName, const FString& StringValue);
	void SetStringField(FString&& FieldName, FString&& StringValue);

	/** Gets the field with the specified name as a boolean; logs an error and returns false when it cannot. */
	bool GetBoolField(FStringView FieldName) const;
	bool GetBoolField(FAnsiStringView FieldName) const;

	bool TryGetBoolField(FStringView FieldName, bool& OutBool) const;
	bool TryGetBoolField(FAnsiStringView FieldName, bool& OutBool) const;

	void SetBoolField(const FString& FieldName, bool InValue);
	void SetBoolField(FString&& FieldName, bool InValue);

	/** Get the field named FieldName as an array; logs an error and returns an empty array when it cannot. */
	const TArray<TSharedPtr<FJsonValue>>& GetArrayField(FStringView FieldName) const;
	const TArray<TSharedPtr<FJsonValue>>& GetArrayField(FAnsiStringView FieldName) const;

	/** Try to get the field named FieldName as an array, or return false if it's another type. */
	bool TryGetArrayField(FStringView FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;
	bool TryGetArrayField(FAnsiStringView FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;

	void SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array);
	void SetArrayField(const FString& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array);
	void SetArrayField(FString&& FieldName, const TArray<TSharedPtr<FJsonValue>>& Array);
	void SetArrayField(FString&& FieldName, TArray<TSharedPtr<FJsonValue>>&& Array);

	/** Gets the field with the specified name as a Json object; logs an error and returns a null pointer when it
	 * cannot. */
	const TSharedPtr<FJsonObject>& GetObjectField(FStringView FieldName) const;
	const TSharedPtr<FJsonObject>& GetObjectField(FAnsiStringView FieldName) const;

	/** Try to get the field named FieldName as an object, or return false if it's another type. */
	bool TryGetObjectField(FStringView FieldName, const TSharedPtr<FJsonObject>*& OutObject) const;
	bool TryGetObjectField(FAnsiStringView FieldName, const TSharedPtr<FJsonObject>*& OutObject) const;

	void SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& JsonObject);
	void SetObjectField(FString&& FieldName, const TSharedPtr<FJsonObject>& JsonObject);

	/** Copies every field of Source into Dest, deeply. */
	static void Duplicate(const TSharedPtr<const FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest);
	static void Duplicate(const TSharedPtr<FJsonObject>& Source, const TSharedPtr<FJsonObject>& Dest);

	/** True when both objects hold the same field names with deeply equal values. */
	friend JSON_API bool operator==(const FJsonObject& Lhs, const FJsonObject& Rhs);
	friend bool operator!=(const FJsonObject& Lhs, const FJsonObject& Rhs) { return !(Lhs == Rhs); }

private:
	const TSharedPtr<FJsonValue>* FindField(FStringView FieldName) const;
	const TSharedPtr<FJsonValue>* FindField(FAnsiStringView FieldName) const;
};
