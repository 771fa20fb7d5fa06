// Copyright Orvane. All Rights Reserved.

#include "HAL/UnrealMemory.h"

#include "HAL/PlatformMemory.h"
#include "Misc/AssertionMacros.h"

#include <cstdlib>
#include <malloc.h>
#include <unistd.h>

namespace
{
	// malloc already guarantees 16-byte alignment on 64-bit Linux; larger requests go through aligned_alloc.
	constexpr uint32 NaturalAlignment = 16;

	uint32 EffectiveAlignment(SIZE_T Count, uint32 Alignment)
	{
		if (Alignment == DEFAULT_ALIGNMENT)
		{
			return NaturalAlignment;
		}
		check((Alignment & (Alignment - 1)) == 0);
		return Alignment;
	}

	void* AllocateAligned(SIZE_T Count, uint32 Alignment)
	{
		// A zero-byte request still returns a unique block so callers can Free it like any other.
		const SIZE_T Size = Count ? Count : 1;
		void* Result = nullptr;
		if (Alignment <= NaturalAlignment)
		{
			Result = std::malloc(Size);
		}
		else if (posix_memalign(&Result, Alignment, Size) != 0)
		{
			Result = nullptr;
		}
		if (Result == nullptr)
		{
			FDebug::AssertFailed("Out of memory", __FILE__, __LINE__);
		}
		return Result;
	}
} // namespace

void* FMemory::Malloc(SIZE_T Count, uint32 Alignment)
{
	return AllocateAligned(Count, EffectiveAlignment(Count, Alignment));
}

void* FMemory::Realloc(void* Original, SIZE_T Count, uint32 Alignment)
{
	const uint32 Align = EffectiveAlignment(Count, Alignment);
	if (Original == nullptr)
	{
		return AllocateAligned(Count, Align);
	}
	if (Count == 0)
	{
		std::free(Original);
		return nullptr;
	}
	if (Align <= NaturalAlignment)
	{
		void* Result = std::realloc(Original, Count);
		if (Result == nullptr)
		{
			FDebug::AssertFailed("Out of memory", __FILE__, __LINE__);
		}
		return Result;
	}
	// realloc does not keep over-alignment, so move the contents into a fresh aligned block.
	void* Result = AllocateAligned(Count, Align);
	const SIZE_T OldSize = malloc_usable_size(Original);
	Memcpy(Result, Original, OldSize < Count ? OldSize : Count);
	std::free(Original);
	return Result;
}

void FMemory::Free(void* Original)
{
	std::free(Original);
}

void* FMemory::MallocZeroed(SIZE_T Count, uint32 Alignment)
{
	void* Result = Malloc(Count, Alignment);
	Memzero(Result, Count);
	return Result;
}

SIZE_T FMemory::GetAllocSize(void* Original)
{
	return Original ? malloc_usable_size(Original) : 0;
}

void FMemory::Memswap(void* Ptr1, void* Ptr2, SIZE_T Size)
{
	uint8* A = static_cast<uint8*>(Ptr1);
	uint8* B = static_cast<uint8*>(Ptr2);
	for (SIZE_T Index = 0; Index < Size; ++Index)
	{
		const uint8 Temp = A[Index];
		A[Index] = B[Index];
		B[Index] = Temp;
	}
}

SIZE_T FPlatformMemory::GetPageSize()
{
	return static_cast<SIZE_T>(sysconf(_SC_PAGESIZE));
}
