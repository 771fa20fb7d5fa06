// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <type_traits>

/**
 * Allocation policies name how a container gets its memory. In this runtime every policy allocates
 * from the heap; the inline and fixed policies keep their engine names and size parameters so code
 * that chooses them compiles and behaves the same, only without the small-buffer optimisation.
 */
template <int IndexSize>
class TSizedHeapAllocator
{
public:
	using SizeType = std::conditional_t<IndexSize == 64, int64, int32>;
};

template <int IndexSize>
class TSizedDefaultAllocator : public TSizedHeapAllocator<IndexSize>
{
};

using FHeapAllocator = TSizedHeapAllocator<32>;
using FDefaultAllocator = TSizedDefaultAllocator<32>;
using FDefaultAllocator64 = TSizedDefaultAllocator<64>;

/** An allocator that keeps the memory of removed elements instead of shrinking. */
class FNonshrinkingAllocator : public TSizedHeapAllocator<32>
{
};

template <uint32 NumInlineElements, typename SecondaryAllocator = FDefaultAllocator>
class TInlineAllocator : public TSizedHeapAllocator<32>
{
};

template <uint32 NumInlineElements>
class TFixedAllocator : public TSizedHeapAllocator<32>
{
};

template <typename ElementAllocator = FDefaultAllocator>
class TSparseArrayAllocator
{
public:
	using ElementAllocatorType = ElementAllocator;
};

using FDefaultSparseArrayAllocator = TSparseArrayAllocator<>;

template <typename InSparseArrayAllocator = FDefaultSparseArrayAllocator,
	typename InHashAllocator = TInlineAllocator<1>>
class TSetAllocator
{
public:
	using SparseArrayAllocator = InSparseArrayAllocator;
	using HashAllocator = InHashAllocator;
};

using FDefaultSetAllocator = TSetAllocator<>;

template <uint32 NumInlineElements>
class TInlineSetAllocator : public TSetAllocator<>
{
};

/** True when the allocator gives memory back on removals unless told otherwise. */
template <typename AllocatorType>
struct TAllocatorTraits
{
	static constexpr bool IsZeroConstruct = false;
	static constexpr bool SupportsSlackTracking = false;
	static constexpr bool ShrinkByDefault = true;
};

template <>
struct TAllocatorTraits<FNonshrinkingAllocator>
{
	static constexpr bool IsZeroConstruct = false;
	static constexpr bool SupportsSlackTracking = false;
	static constexpr bool ShrinkByDefault = false;
};
