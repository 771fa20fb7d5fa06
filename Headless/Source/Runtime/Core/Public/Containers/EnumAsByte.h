// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/TypeHash.h"

#include <type_traits>

/** Stores an old-style (unscoped or namespaced) enum value in one byte. */
template <class InEnumType>
class TEnumAsByte
{
public:
	typedef InEnumType EnumType;

	TEnumAsByte() = default;
	TEnumAsByte(const TEnumAsByte&) = default;
	TEnumAsByte& operator=(const TEnumAsByte&) = default;

	FORCEINLINE TEnumAsByte(EnumType InValue)
		: Value(static_cast<uint8>(InValue))
	{
	}

	explicit FORCEINLINE TEnumAsByte(int32 InValue)
		: Value(static_cast<uint8>(InValue))
	{
	}

	explicit FORCEINLINE TEnumAsByte(uint8 InValue)
		: Value(InValue)
	{
	}

	FORCEINLINE TEnumAsByte& operator=(EnumType InValue)
	{
		Value = static_cast<uint8>(InValue);
		return *this;
	}

	bool operator==(EnumType InValue) const { return static_cast<EnumType>(Value) == InValue; }
	bool operator==(TEnumAsByte InValue) const { return Value == InValue.Value; }

	operator EnumType() const { return static_cast<EnumType>(Value); }

	EnumType GetValue() const { return static_cast<EnumType>(Value); }

	uint8 GetIntValue() const { return Value; }

	friend uint32 GetTypeHash(const TEnumAsByte& Enum) { return GetTypeHash(Enum.Value); }

private:
	uint8 Value = 0;
};

template <class T>
struct TIsTEnumAsByte
{
	static constexpr bool Value = false;
};

template <class T>
struct TIsTEnumAsByte<TEnumAsByte<T>>
{
	static constexpr bool Value = true;
};
