// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <type_traits>

template <int IndexSize>
class TSizedDefaultAllocator;
using FDefaultAllocator = TSizedDefaultAllocator<32>;
using FDefaultAllocator64 = TSizedDefaultAllocator<64>;

template <typename ElementAllocator>
class TSparseArrayAllocator;
template <typename InSparseArrayAllocator, typename InHashAllocator>
class TSetAllocator;
template <uint32 NumInlineElements, typename SecondaryAllocator>
class TInlineAllocator;

class FDefaultBitArrayAllocator;
template <typename ElementType, bool bInAllowDuplicateKeys = false>
struct DefaultKeyFuncs;

template <typename T, typename Allocator = FDefaultAllocator>
class TArray;
template <typename T>
using TArray64 = TArray<T, FDefaultAllocator64>;
template <typename T, typename SizeType = int32>
class TArrayView;
template <typename T, typename SizeType = int32>
using TConstArrayView = TArrayView<const T, SizeType>;

template <typename InElementType, typename KeyFuncs = DefaultKeyFuncs<InElementType>,
	typename Allocator =
		TSetAllocator<TSparseArrayAllocator<FDefaultAllocator>, TInlineAllocator<1, FDefaultAllocator>>>
class TSet;

template <typename KeyType, typename ValueType, bool bInAllowDuplicateKeys>
struct TDefaultMapHashableKeyFuncs;

template <typename InKeyType, typename InValueType,
	typename SetAllocator =
		TSetAllocator<TSparseArrayAllocator<FDefaultAllocator>, TInlineAllocator<1, FDefaultAllocator>>,
	typename KeyFuncs = TDefaultMapHashableKeyFuncs<InKeyType, InValueType, false>>
class TMap;

template <typename KeyType, typename ValueType,
	typename SetAllocator =
		TSetAllocator<TSparseArrayAllocator<FDefaultAllocator>, TInlineAllocator<1, FDefaultAllocator>>,
	typename KeyFuncs = TDefaultMapHashableKeyFuncs<KeyType, ValueType, true>>
class TMultiMap;

class FString;
