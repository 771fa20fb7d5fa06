// Copyright Orvane. All Rights Reserved.

#pragma once

#include <type_traits>

/**
 * Gives a scoped enum used as a bit set the bitwise operators it lacks. Everything is constexpr, so
 * combinations of flags can be checked in static_asserts.
 */
#define ENUM_CLASS_FLAGS(Enum)                                                                      \
	inline constexpr Enum& operator|=(Enum& Lhs, Enum Rhs)                                          \
	{                                                                                               \
		return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs | (std::underlying_type_t<Enum>)Rhs); \
	}                                                                                               \
	inline constexpr Enum& operator&=(Enum& Lhs, Enum Rhs)                                          \
	{                                                                                               \
		return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs & (std::underlying_type_t<Enum>)Rhs); \
	}                                                                                               \
	inline constexpr Enum& operator^=(Enum& Lhs, Enum Rhs)                                          \
	{                                                                                               \
		return Lhs = (Enum)((std::underlying_type_t<Enum>)Lhs ^ (std::underlying_type_t<Enum>)Rhs); \
	}                                                                                               \
	inline constexpr Enum operator|(Enum Lhs, Enum Rhs)                                             \
	{                                                                                               \
		return (Enum)((std::underlying_type_t<Enum>)Lhs | (std::underlying_type_t<Enum>)Rhs);       \
	}                                                                                               \
	inline constexpr Enum operator&(Enum Lhs, Enum Rhs)                                             \
	{                                                                                               \
		return (Enum)((std::underlying_type_t<Enum>)Lhs & (std::underlying_type_t<Enum>)Rhs);       \
	}                                                                                               \
	inline constexpr Enum operator^(Enum Lhs, Enum Rhs)                                             \
	{                                                                                               \
		return (Enum)((std::underlying_type_t<Enum>)Lhs ^ (std::underlying_type_t<Enum>)Rhs);       \
	}                                                                                               \
	inline constexpr bool operator!(Enum E)                                                         \
	{                                                                                               \
		return !(std::underlying_type_t<Enum>)E;                                                    \
	}                                                                                               \
	inline constexpr Enum operator~(Enum E)                                                         \
	{                                                                                               \
		return (Enum) ~(std::underlying_type_t<Enum>)E;                                             \
	}

/** Same as ENUM_CLASS_FLAGS, for an enum declared inside a class: the operators become friends. */
#define FRIEND_ENUM_CLASS_FLAGS(Enum)                       \
	friend constexpr Enum& operator|=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum& operator&=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum& operator^=(Enum& Lhs, Enum Rhs); \
	friend constexpr Enum operator|(Enum Lhs, Enum Rhs);    \
	friend constexpr Enum operator&(Enum Lhs, Enum Rhs);    \
	friend constexpr Enum operator^(Enum Lhs, Enum Rhs);    \
	friend constexpr bool operator!(Enum E);                \
	friend constexpr Enum operator~(Enum E);

/** True if every bit of Contains is set in Flags. */
template <typename Enum>
constexpr bool EnumHasAllFlags(Enum Flags, Enum Contains)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	return ((UnderlyingType)Flags & (UnderlyingType)Contains) == (UnderlyingType)Contains;
}

/** True if at least one bit of Contains is set in Flags. */
template <typename Enum>
constexpr bool EnumHasAnyFlags(Enum Flags, Enum Contains)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	return ((UnderlyingType)Flags & (UnderlyingType)Contains) != 0;
}

/** Sets the bits of FlagsToAdd in Flags. */
template <typename Enum>
constexpr void EnumAddFlags(Enum& Flags, Enum FlagsToAdd)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	Flags = (Enum)((UnderlyingType)Flags | (UnderlyingType)FlagsToAdd);
}

/** Clears the bits of FlagsToRemove in Flags. */
template <typename Enum>
constexpr void EnumRemoveFlags(Enum& Flags, Enum FlagsToRemove)
{
	using UnderlyingType = std::underlying_type_t<Enum>;
	Flags = (Enum)((UnderlyingType)Flags & ~(UnderlyingType)FlagsToRemove);
}
