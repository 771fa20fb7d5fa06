// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Templates/Invoke.h"
#include "Templates/TypeHash.h"

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

/** A fixed-size group of values of possibly different types, read with Get<Index>(). */
template <typename... Types>
struct TTuple
{
	TTuple() = default;

	template <typename... ArgTypes>
	requires(sizeof...(ArgTypes) == sizeof...(Types) && sizeof...(Types) > 0 &&
			 (!std::is_same_v<std::decay_t<ArgTypes>, TTuple> || ...)) TTuple(ArgTypes&&... Args)
		: Storage(std::forward<ArgTypes>(Args)...)
	{
	}

	template <typename... OtherTypes>
	requires(sizeof...(OtherTypes) == sizeof...(Types) && !std::is_same_v<TTuple<OtherTypes...>, TTuple>)
		TTuple(const TTuple<OtherTypes...>& Other)
		: TTuple(Other, std::index_sequence_for<Types...>())
	{
	}

	/** Assigns element by element; lets a tuple of references made by Tie receive values. */
	template <typename... OtherTypes>
	requires(sizeof...(OtherTypes) == sizeof...(Types) && !std::is_same_v<TTuple<OtherTypes...>, TTuple>) TTuple&
	operator=(const TTuple<OtherTypes...>& Other)
	{
		AssignFrom(Other, std::index_sequence_for<Types...>());
		return *this;
	}

	template <size_t Index>
	decltype(auto) Get() &
	{
		return std::get<Index>(Storage);
	}
	template <size_t Index>
	decltype(auto) Get() const&
	{
		return std::get<Index>(Storage);
	}
	template <size_t Index>
	decltype(auto) Get() &&
	{
		return std::get<Index>(std::move(Storage));
	}

	/** Calls Func with the given arguments followed by the tuple's elements. */
	template <typename FuncType, typename... ArgTypes>
	decltype(auto) ApplyAfter(FuncType&& Func, ArgTypes&&... Args) const
	{
		return std::apply(
			[&](const Types&... Elements) -> decltype(auto)
			{
				return ::Invoke(Func, std::forward<ArgTypes>(Args)..., Elements...);
			},
			Storage);
	}

	/** Calls Func with the tuple's elements followed by the given arguments. */
	template <typename FuncType, typename... ArgTypes>
	decltype(auto) ApplyBefore(FuncType&& Func, ArgTypes&&... Args) const
	{
		return std::apply(
			[&](const Types&... Elements) -> decltype(auto)
			{
				return ::Invoke(Func, Elements..., std::forward<ArgTypes>(Args)...);
			},
			Storage);
	}

	bool operator==(const TTuple& Other) const { return Storage == Other.Storage; }
	bool operator!=(const TTuple& Other) const { return !(Storage == Other.Storage); }
	bool operator<(const TTuple& Other) const { return Storage < Other.Storage; }

	static constexpr size_t NumElements = sizeof...(Types);

private:
	template <typename... OtherTypes, size_t... Indices>
	TTuple(const TTuple<OtherTypes...>& Other, std::index_sequence<Indices...>)
		: Storage(Other.template Get<Indices>()...)
	{
	}

	template <typename... OtherTypes, size_t... Indices>
	void AssignFrom(const TTuple<OtherTypes...>& Other, std::index_sequence<Indices...>)
	{
		((std::get<Indices>(Storage) = Other.template Get<Indices>()), ...);
	}

	std::tuple<Types...> Storage;
};

/** A pair exposes its elements as Key and Value, and is what maps store. */
template <typename KeyType, typename ValueType>
struct TTuple<KeyType, ValueType>
{
	KeyType Key;
	ValueType Value;

	TTuple()
		: Key()
		, Value()
	{
	}

	template <typename KeyArg, typename ValueArg>
	TTuple(KeyArg&& InKey, ValueArg&& InValue)
		: Key(std::forward<KeyArg>(InKey))
		, Value(std::forward<ValueArg>(InValue))
	{
	}

	template <typename OtherKey, typename OtherValue>
	requires(!std::is_same_v<TTuple<OtherKey, OtherValue>, TTuple>) TTuple(const TTuple<OtherKey, OtherValue>& Other)
		: Key(Other.Key)
		, Value(Other.Value)
	{
	}

	TTuple(const TTuple&) = default;
	TTuple(TTuple&&) = default;
	TTuple& operator=(const TTuple&) = default;
	TTuple& operator=(TTuple&&) = default;

	/** Assigns both members; lets a pair of references made by Tie receive values. */
	template <typename OtherKey, typename OtherValue>
	requires(!std::is_same_v<TTuple<OtherKey, OtherValue>, TTuple>) TTuple& operator=(
		const TTuple<OtherKey, OtherValue>& Other)
	{
		Key = Other.Key;
		Value = Other.Value;
		return *this;
	}

	template <size_t Index>
	auto& Get() &
	{
		static_assert(Index < 2, "TPair has two elements");
		if constexpr (Index == 0)
		{
			return Key;
		}
		else
		{
			return Value;
		}
	}
	template <size_t Index>
	const auto& Get() const&
	{
		static_assert(Index < 2, "TPair has two elements");
		if constexpr (Index == 0)
		{
			return Key;
		}
		else
		{
			return Value;
		}
	}
	template <size_t Index>
	auto&& Get() &&
	{
		return std::move(Get<Index>());
	}

	template <typename FuncType, typename... ArgTypes>
	decltype(auto) ApplyAfter(FuncType&& Func, ArgTypes&&... Args) const
	{
		return ::Invoke(Func, std::forward<ArgTypes>(Args)..., Key, Value);
	}

	template <typename FuncType, typename... ArgTypes>
	decltype(auto) ApplyBefore(FuncType&& Func, ArgTypes&&... Args) const
	{
		return ::Invoke(Func, Key, Value, std::forward<ArgTypes>(Args)...);
	}

	bool operator==(const TTuple& Other) const { return Key == Other.Key && Value == Other.Value; }
	bool operator!=(const TTuple& Other) const { return !(*this == Other); }
	bool operator<(const TTuple& Other) const
	{
		if (Key < Other.Key)
		{
			return true;
		}
		if (Other.Key < Key)
		{
			return false;
		}
		return Value < Other.Value;
	}

	static constexpr size_t NumElements = 2;
};

template <typename KeyType, typename ValueType>
using TPair = TTuple<KeyType, ValueType>;

/** Number of elements in a tuple type. */
template <typename TupleType>
struct TTupleArity;

template <typename... Types>
struct TTupleArity<TTuple<Types...>>
{
	static constexpr uint32 Value = sizeof...(Types);
};

template <typename... Types>
struct TTupleArity<const TTuple<Types...>> : TTupleArity<TTuple<Types...>>
{
};

/** Makes a tuple of copies of the arguments. */
template <typename... Types>
FORCEINLINE TTuple<std::decay_t<Types>...> MakeTuple(Types&&... Args)
{
	return TTuple<std::decay_t<Types>...>(std::forward<Types>(Args)...);
}

/** Makes a tuple of references, so `Tie(A, B) = SomeTuple;` assigns A and B. */
template <typename... Types>
FORCEINLINE TTuple<Types&...> Tie(Types&... Args)
{
	return TTuple<Types&...>(Args...);
}

/** Hashes the elements in order. */
template <typename... Types>
uint32 GetTypeHash(const TTuple<Types...>& Tuple)
{
	uint32 Hash = 0;
	[&]<size_t... Indices>(std::index_sequence<Indices...>)
	{
		((Hash = HashCombineFast(Hash, GetTypeHash(Tuple.template Get<Indices>()))), ...);
	}
	(std::index_sequence_for<Types...>());
	return Hash;
}

/** Lets structured bindings unpack tuples: `auto& [Key, Value] = Pair;`. */
template <size_t Index, typename... Types>
decltype(auto) get(TTuple<Types...>& Tuple)
{
	return Tuple.template Get<Index>();
}
template <size_t Index, typename... Types>
decltype(auto) get(const TTuple<Types...>& Tuple)
{
	return Tuple.template Get<Index>();
}
template <size_t Index, typename... Types>
decltype(auto) get(TTuple<Types...>&& Tuple)
{
	return std::move(Tuple).template Get<Index>();
}

template <typename... Types>
struct std::tuple_size<TTuple<Types...>> : std::integral_constant<size_t, sizeof...(Types)>
{
};

template <size_t Index, typename... Types>
struct std::tuple_element<Index, TTuple<Types...>>
{
	using type = std::tuple_element_t<Index, std::tuple<Types...>>;
};
