// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "Serialization/JsonTypes.h"
#include "Templates/SharedPointer.h"

class FJsonObject;

/**
 * A Json value of any kind. Only the derived classes are ever created. The TryGet functions convert where a
 * conversion makes sense (a number to a string, a numeric string to a number) and return false otherwise; the As
 * functions log an error when the value cannot be had and return an empty default.
 */
class JSON_API FJsonValue
{
public:
	virtual ~FJsonValue() = default;

	/** Returns this value as a double, logging an error and returning zero if not possible. */
	double AsNumber() const;

	/** Returns this value as a string, logging an error and returning an empty string if not possible. */
	FString AsString() const;

	/** Returns this value as a boolean, logging an error and returning false if not possible. */
	bool AsBool() const;

	/** Returns this value as an array, logging an error and returning an empty array if not possible. */
	const TArray<TSharedPtr<FJsonValue>>& AsArray() const;

	/** Returns this value as an object, logging an error and returning a null pointer if not possible. */
	const TSharedPtr<FJsonObject>& AsObject() const;

	virtual bool TryGetNumber(double& OutNumber) const { return false; }
	virtual bool TryGetNumber(float& OutNumber) const;

	/**
	 * The number converted to an integer type: false when there is no number or it lies outside the type's
	 * range; a fractional number is rounded half away from zero.
	 */
	virtual bool TryGetNumber(int8& OutNumber) const;
	virtual bool TryGetNumber(int16& OutNumber) const;
	virtual bool TryGetNumber(int32& OutNumber) const;
	virtual bool TryGetNumber(int64& OutNumber) const;
	virtual bool TryGetNumber(uint8& OutNumber) const;
	virtual bool TryGetNumber(uint16& OutNumber) const;
	virtual bool TryGetNumber(uint32& OutNumber) const;
	virtual bool TryGetNumber(uint64& OutNumber) const;

	virtual bool TryGetString(FString& OutString) const { return false; }
	virtual bool TryGetBool(bool& OutBool) const { return false; }
	virtual bool TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const { return false; }
	virtual bool TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray) { return false; }
	virtual bool TryGetObject(const TSharedPtr<FJsonObject>*& Object) const { return false; }
	virtual bool TryGetObject(TSharedPtr<FJsonObject>*& Object) { return false; }

	/** True for null values (and for values of no kind). */
	bool IsNull() const { return Type == EJson::Null || Type == EJson::None; }

	/** Get a field of the same type as the argument. */
	void AsArgumentType(double& Value) { Value = AsNumber(); }
	void AsArgumentType(FString& Value) { Value = AsString(); }
	void AsArgumentType(bool& Value) { Value = AsBool(); }
	void AsArgumentType(TArray<TSharedPtr<FJsonValue>>& Value) { Value = AsArray(); }
	void AsArgumentType(TSharedPtr<FJsonObject>& Value) { Value = AsObject(); }

	/** A deep copy of Src (arrays and objects included); null for a null Src. */
	static TSharedPtr<FJsonValue> Duplicate(const TSharedPtr<const FJsonValue>& Src);
	static TSharedPtr<FJsonValue> Duplicate(const TSharedPtr<FJsonValue>& Src);

	/** True when both values are of the same kind and hold equal contents, compared deeply. */
	static bool CompareEqual(const FJsonValue& Lhs, const FJsonValue& Rhs);

	friend bool operator==(const FJsonValue& Lhs, const FJsonValue& Rhs) { return CompareEqual(Lhs, Rhs); }
	friend bool operator!=(const FJsonValue& Lhs, const FJsonValue& Rhs) { return !CompareEqual(Lhs, Rhs); }

	/** The kind of value. */
	EJson Type = EJson::None;

protected:
	FJsonValue() = default;

	/** The kind of value as a word, for messages. */
	virtual FString GetType() const = 0;

	/** Logs that this value was used as a value of InType. */
	void ErrorMessage(const FString& InType) const;
};

/** A Json string value. */
class JSON_API FJsonValueString : public FJsonValue
{
public:
	FJsonValueString(const FString& InString)
		: Value(InString)
	{
		Type = EJson::String;
	}

	FJsonValueString(FString&& InString)
		: Value(MoveTemp(InString))
	{
		Type = EJson::String;
	}

	virtual bool TryGetString(FString& OutString) const override
	{
		OutString = Value;
		return true;
	}

	/** A string converts to a number when it is a decimal number as a whole. */
	virtual bool TryGetNumber(double& OutDouble) const override;
	virtual bool TryGetNumber(int64& OutNumber) const override;
	virtual bool TryGetNumber(uint64& OutNumber) const override;
	using FJsonValue::TryGetNumber;

	/** "true" and "false", in any case, convert to booleans. */
	virtual bool TryGetBool(bool& OutBool) const override;

protected:
	FString Value;

	virtual FString GetType() const override { return TEXT("String"); }
};

/** A Json number value, held as a double. */
class JSON_API FJsonValueNumber : public FJsonValue
{
public:
	FJsonValueNumber(double InNumber)
		: Value(InNumber)
	{
		Type = EJson::Number;
	}

	virtual bool TryGetNumber(double& OutNumber) const override
	{
		OutNumber = Value;
		return true;
	}
	using FJsonValue::TryGetNumber;

	/** Non-zero numbers are true. */
	virtual bool TryGetBool(bool& OutBool) const override
	{
		OutBool = Value != 0.0;
		return true;
	}

	/** The shortest text that reads back as the same double ("12", "0.1", "1e+300"). */
	virtual bool TryGetString(FString& OutString) const override;

protected:
	double Value;

	virtual FString GetType() const override { return TEXT("Number"); }
};

/** A Json number value, held as the text it was read from so as not to lose precision. */
class JSON_API FJsonValueNumberString : public FJsonValue
{
public:
	FJsonValueNumberString(const FString& InString)
		: Value(InString)
	{
		Type = EJson::Number;
	}

	FJsonValueNumberString(FString&& InString)
		: Value(MoveTemp(InString))
	{
		Type = EJson::Number;
	}

	virtual bool TryGetString(FString& OutString) const override
	{
		OutString = Value;
		return true;
	}

	virtual bool TryGetNumber(double& OutNumber) const override;
	virtual bool TryGetNumber(float& OutNumber) const override;

	/** 64-bit integers are read from the text itself, so every one of them comes back exactly. */
	virtual bool TryGetNumber(int64& OutNumber) const override;
	virtual bool TryGetNumber(uint64& OutNumber) const override;
	using FJsonValue::TryGetNumber;

	/** Non-zero numbers are true. */
	virtual bool TryGetBool(bool& OutBool) const override;

protected:
	FString Value;

	virtual FString GetType() const override { return TEXT("NumberString"); }
};

/** A Json boolean value. */
class JSON_API FJsonValueBoolean : public FJsonValue
{
public:
	FJsonValueBoolean(bool InBool)
		: Value(InBool)
	{
		Type = EJson::Boolean;
	}

	/** True is 1, false is 0. */
	virtual bool TryGetNumber(double& OutNumber) const override
	{
		OutNumber = Value ? 1.0 : 0.0;
		return true;
	}
	using FJsonValue::TryGetNumber;

	virtual bool TryGetBool(bool& OutBool) const override
	{
		OutBool = Value;
		return true;
	}

	/** "true" or "false". */
	virtual bool TryGetString(FString& OutString) const override
	{
		OutString = Value ? TEXT("true") : TEXT("false");
		return true;
	}

protected:
	bool Value;

	virtual FString GetType() const override { return TEXT("Boolean"); }
};

/** A Json array value. */
class JSON_API FJsonValueArray : public FJsonValue
{
public:
	FJsonValueArray(const TArray<TSharedPtr<FJsonValue>>& InArray)
		: Value(InArray)
	{
		Type = EJson::Array;
	}

	FJsonValueArray(TArray<TSharedPtr<FJsonValue>>&& InArray)
		: Value(MoveTemp(InArray))
	{
		Type = EJson::Array;
	}

	virtual bool TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const override
	{
		OutArray = &Value;
		return true;
	}

	virtual bool TryGetArray(TArray<TSharedPtr<FJsonValue>>*& OutArray) override
	{
		OutArray = &Value;
		return true;
	}

protected:
	TArray<TSharedPtr<FJsonValue>> Value;

	virtual FString GetType() const override { return TEXT("Array"); }
};

/** A Json object value. */
class JSON_API FJsonValueObject : public FJsonValue
{
public:
	FJsonValueObject(TSharedPtr<FJsonObject> InObject)
		: Value(MoveTemp(InObject))
	{
		Type = EJson::Object;
	}

	virtual bool TryGetObject(const TSharedPtr<FJsonObject>*& OutObject) const override
	{
		OutObject = &Value;
		return true;
	}

	virtual bool TryGetObject(TSharedPtr<FJsonObject>*& OutObject) override
	{
		OutObject = &Value;
		return true;
	}

protected:
	TSharedPtr<FJsonObject> Value;

	virtual FString GetType() const override { return TEXT("Object"); }
};

/** A Json null value. */
class JSON_API FJsonValueNull : public FJsonValue
{
public:
	FJsonValueNull() { Type = EJson::Null; }

protected:
	virtual FString GetType() const override { return TEXT("Null"); }
};
