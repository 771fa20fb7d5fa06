// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <cstring>
#include <type_traits>

/** Default alignment request: the allocator picks the platform's natural alignment for the size. */
enum
{
	DEFAULT_ALIGNMENT = 0,
	MIN_ALIGNMENT = 8
};

/** The engine's memory entry points: raw heap blocks and byte operations. */
struct FMemory
{
	/** Allocates Count bytes aligned to Alignment (0 = natural alignment); running out of memory is fatal. */
	static CORE_API void* Malloc(SIZE_T Count, uint32 Alignment = DEFAULT_ALIGNMENT);

	/** Resizes a block from Malloc, keeping its contents up to the smaller size. A null Original allocates. */
	static CORE_API void* Realloc(void* Original, SIZE_T Count, uint32 Alignment = DEFAULT_ALIGNMENT);

	/** Releases a block from Malloc or Realloc. Null is ignored. */
	static CORE_API void Free(void* Original);

	/** Allocates Count bytes, all set to zero. */
	static CORE_API void* MallocZeroed(SIZE_T Count, uint32 Alignment = DEFAULT_ALIGNMENT);

	/** Returns the usable size of a block from Malloc, or 0 when the allocator cannot tell. */
	static CORE_API SIZE_T GetAllocSize(void* Original);

	static FORCEINLINE void* Memmove(void* Dest, const void* Src, SIZE_T Count)
	{
		return Count ? std::memmove(Dest, Src, Count) : Dest;
	}

	static FORCEINLINE int32 Memcmp(const void* Buf1, const void* Buf2, SIZE_T Count)
	{
		return Count ? std::memcmp(Buf1, Buf2, Count) : 0;
	}

	static FORCEINLINE void* Memset(void* Dest, uint8 Char, SIZE_T Count)
	{
		return Count ? std::memset(Dest, Char, Count) : Dest;
	}

	static FORCEINLINE void* Memzero(void* Dest, SIZE_T Count) { return Count ? std::memset(Dest, 0, Count) : Dest; }

	static FORCEINLINE void* Memcpy(void* Dest, const void* Src, SIZE_T Count)
	{
		return Count ? std::memcpy(Dest, Src, Count) : Dest;
	}

	static FORCEINLINE void* BigBlockMemcpy(void* Dest, const void* Src, SIZE_T Count)
	{
		return Memcpy(Dest, Src, Count);
	}

	template <typename T>
	static FORCEINLINE void Memset(T& Src, uint8 ValueToSet)
	{
		static_assert(!std::is_pointer_v<T>, "For pointers use the three parameters function");
		Memset(&Src, ValueToSet, sizeof(T));
	}

	template <typename T>
	static FORCEINLINE void Memzero(T& Src)
	{
		static_assert(!std::is_pointer_v<T>, "For pointers use the two parameters function");
		Memzero(&Src, sizeof(T));
	}

	template <typename T>
	static FORCEINLINE void Memcpy(T& Dest, const T& Src)
	{
		static_assert(!std::is_pointer_v<T>, "For pointers use the three parameters function");
		Memcpy(&Dest, &Src, sizeof(T));
	}

	/** Swaps two blocks of Size bytes. */
	static CORE_API void Memswap(void* Ptr1, void* Ptr2, SIZE_T Size);
};
