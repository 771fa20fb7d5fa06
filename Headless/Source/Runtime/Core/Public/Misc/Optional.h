// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Misc/OptionalFwd.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <new>
#include <type_traits>
#include <utility>

/** Tag for an unset optional: `TOptional<int32> Value = NullOpt;`. */
struct FNullOpt
{
	explicit constexpr FNullOpt(int) {}
};

inline constexpr FNullOpt NullOpt{0};

/** Holds a value or nothing. Reading the value of an unset optional is a check failure. */
template <typename OptionalType>
struct TOptional
{
	using ElementType = OptionalType;

	TOptional() = default;

	TOptional(FNullOpt) {}

	TOptional(const OptionalType& InValue) { Emplace(InValue); }

	TOptional(OptionalType&& InValue) { Emplace(std::move(InValue)); }

	template <typename... ArgTypes>
	explicit TOptional(EInPlace, ArgTypes&&... Args)
	{
		Emplace(std::forward<ArgTypes>(Args)...);
	}

	TOptional(const TOptional& Other)
	{
		if (Other.bIsSet)
		{
			Emplace(*Other.GetPtr());
		}
	}

	TOptional(TOptional&& Other)
	{
		if (Other.bIsSet)
		{
			Emplace(std::move(*Other.GetPtr()));
		}
	}

	~TOptional() { Reset(); }

	TOptional& operator=(const TOptional& Other)
	{
		if (this != &Other)
		{
			if (Other.bIsSet)
			{
				Emplace(*Other.GetPtr());
			}
			else
			{
				Reset();
			}
		}
		return *this;
	}

	TOptional& operator=(TOptional&& Other)
	{
		if (this != &Other)
		{
			if (Other.bIsSet)
			{
				Emplace(std::move(*Other.GetPtr()));
			}
			else
			{
				Reset();
			}
		}
		return *this;
	}

	TOptional& operator=(const OptionalType& InValue)
	{
		if (!bIsSet || &InValue != GetPtr())
		{
			Emplace(InValue);
		}
		return *this;
	}

	TOptional& operator=(OptionalType&& InValue)
	{
		if (!bIsSet || &InValue != GetPtr())
		{
			Emplace(std::move(InValue));
		}
		return *this;
	}

	TOptional& operator=(FNullOpt)
	{
		Reset();
		return *this;
	}

	/** Destroys any current value and constructs a new one in place. */
	template <typename... ArgTypes>
	OptionalType& Emplace(ArgTypes&&... Args)
	{
		Reset();
		OptionalType* Result = ::new (static_cast<void*>(Storage)) OptionalType(std::forward<ArgTypes>(Args)...);
		bIsSet = true;
		return *Result;
	}

	void Reset()
	{
		if (bIsSet)
		{
			bIsSet = false;
			GetPtr()->~OptionalType();
		}
	}

	bool IsSet() const { return bIsSet; }
	explicit operator bool() const { return bIsSet; }

	OptionalType& GetValue()
	{
		checkValue();
		return *GetPtr();
	}
	const OptionalType& GetValue() const
	{
		checkValue();
		return *GetPtr();
	}

	/** The value if set, otherwise DefaultValue. */
	const OptionalType& Get(const OptionalType& DefaultValue) const { return bIsSet ? *GetPtr() : DefaultValue; }

	OptionalType* GetPtrOrNull() { return bIsSet ? GetPtr() : nullptr; }
	const OptionalType* GetPtrOrNull() const { return bIsSet ? GetPtr() : nullptr; }

	OptionalType& operator*() { return GetValue(); }
	const OptionalType& operator*() const { return GetValue(); }
	OptionalType* operator->() { return &GetValue(); }
	const OptionalType* operator->() const { return &GetValue(); }

	friend bool operator==(const TOptional& Lhs, const TOptional& Rhs)
	{
		if (Lhs.bIsSet != Rhs.bIsSet)
		{
			return false;
		}
		return !Lhs.bIsSet || *Lhs.GetPtr() == *Rhs.GetPtr();
	}
	friend bool operator!=(const TOptional& Lhs, const TOptional& Rhs) { return !(Lhs == Rhs); }

private:
	void checkValue() const
	{
		if (UNLIKELY(!bIsSet))
		{
			FDebug::AssertFailed("IsSet()", __FILE__, __LINE__,
				TEXT("It is an error to call GetValue() on an unset TOptional. Please either check IsSet() or use "
					 "Get(DefaultValue) instead."));
		}
	}

	OptionalType* GetPtr() { return std::launder(reinterpret_cast<OptionalType*>(Storage)); }
	const OptionalType* GetPtr() const { return std::launder(reinterpret_cast<const OptionalType*>(Storage)); }

	alignas(OptionalType) unsigned char Storage[sizeof(OptionalType)];
	bool bIsSet = false;
};

template <typename OptionalType>
uint32 GetTypeHash(const TOptional<OptionalType>& Optional)
{
	return Optional.IsSet() ? GetTypeHash(*Optional) : 0;
}

/** Makes an optional holding a copy of the value. */
template <typename T>
TOptional<std::decay_t<T>> MakeOptional(T&& Value)
{
	return TOptional<std::decay_t<T>>(std::forward<T>(Value));
}
