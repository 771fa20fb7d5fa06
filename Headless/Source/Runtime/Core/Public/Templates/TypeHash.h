// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <bit>
#include <type_traits>

/** Mixes three 32-bit values into one; every input bit affects every output bit. */
FORCEINLINE constexpr uint32 MurmurFinalize32(uint32 Hash)
{
	Hash ^= Hash >> 16;
	Hash *= 0x85ebca6bu;
	Hash ^= Hash >> 13;
	Hash *= 0xc2b2ae35u;
	Hash ^= Hash >> 16;
	return Hash;
}

/** Combines two hash values to get a third; the order of the arguments matters. */
FORCEINLINE constexpr uint32 HashCombine(uint32 A, uint32 C)
{
	uint32 B = 0x9e3779b9u;
	A += B;
	A -= B;
	A -= C;
	A ^= (C >> 13);
	B -= C;
	B -= A;
	B ^= (A << 8);
	C -= A;
	C -= B;
	C ^= (B >> 13);
	A -= B;
	A -= C;
	A ^= (C >> 12);
	B -= C;
	B -= A;
	B ^= (A << 16);
	C -= A;
	C -= B;
	C ^= (B >> 5);
	A -= B;
	A -= C;
	A ^= (C >> 3);
	B -= C;
	B -= A;
	B ^= (A << 10);
	C -= A;
	C -= B;
	C ^= (B >> 15);
	return C;
}

/**
 * Combines two hash values quickly; the order of the arguments matters. The result may change between
 * versions, so it must not be stored.
 */
FORCEINLINE constexpr uint32 HashCombineFast(uint32 A, uint32 B)
{
	return A ^ (B + 0x9e3779b9u + (A << 6) + (A >> 2));
}

/** Hashes a pointer by its address. */
FORCEINLINE uint32 PointerHash(const void* Key)
{
	const UPTRINT Address = reinterpret_cast<UPTRINT>(Key);
	// The low bits of an address are mostly alignment zeroes; fold the high half in and mix.
	return MurmurFinalize32(
		static_cast<uint32>(Address >> 4) ^ static_cast<uint32>(static_cast<uint64>(Address) >> 32));
}

FORCEINLINE uint32 PointerHash(const void* Key, uint32 C)
{
	return HashCombine(PointerHash(Key), C);
}

/** Integers of up to 32 bits hash to their own value; wider ones fold their halves together. */
template <typename ScalarType>
requires(std::is_integral_v<ScalarType> || std::is_enum_v<ScalarType>) FORCEINLINE constexpr uint32
	GetTypeHash(ScalarType Value)
{
	if constexpr (std::is_enum_v<ScalarType>)
	{
		return GetTypeHash(static_cast<std::underlying_type_t<ScalarType>>(Value));
	}
	else if constexpr (sizeof(ScalarType) <= 4)
	{
		return static_cast<uint32>(Value);
	}
	else
	{
		const uint64 Wide = static_cast<uint64>(Value);
		return static_cast<uint32>(Wide) + static_cast<uint32>(Wide >> 32) * 23u;
	}
}

FORCEINLINE uint32 GetTypeHash(float Value)
{
	// +0 and -0 compare equal, so they must hash the same.
	return Value == 0.0f ? 0u : std::bit_cast<uint32>(Value);
}

FORCEINLINE uint32 GetTypeHash(double Value)
{
	return Value == 0.0 ? 0u : GetTypeHash(std::bit_cast<uint64>(Value));
}

template <typename T>
FORCEINLINE uint32 GetTypeHash(T* Value)
{
	return PointerHash(Value);
}

FORCEINLINE uint32 GetTypeHash(std::nullptr_t)
{
	return PointerHash(nullptr);
}
