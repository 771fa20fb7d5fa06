// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/AllowShrinking.h"
#include "Containers/ContainerAllocationPolicies.h"
#include "Containers/ContainerHelpers.h"
#include "Containers/ContainersFwd.h"
#include "CoreTypes.h"
#include "HAL/UnrealMemory.h"
#include "Misc/AssertionMacros.h"
#include "Templates/Less.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"
#include "Templates/UnrealTypeTraits.h"

#include <algorithm>
#include <initializer_list>
#include <limits>
#include <new>
#include <type_traits>

/** Index-based iterator over an indexed container, able to remove the element it points at. */
template <typename ContainerType, typename ElementType, typename SizeType>
class TIndexedContainerIterator
{
public:
	TIndexedContainerIterator(ContainerType& InContainer, SizeType StartIndex = 0)
		: Container(InContainer)
		, Index(StartIndex)
	{
	}

	TIndexedContainerIterator& operator++()
	{
		++Index;
		return *this;
	}
	TIndexedContainerIterator operator++(int)
	{
		TIndexedContainerIterator Tmp(*this);
		++Index;
		return Tmp;
	}
	TIndexedContainerIterator& operator--()
	{
		--Index;
		return *this;
	}
	TIndexedContainerIterator operator--(int)
	{
		TIndexedContainerIterator Tmp(*this);
		--Index;
		return Tmp;
	}
	TIndexedContainerIterator& operator+=(SizeType Offset)
	{
		Index += Offset;
		return *this;
	}
	TIndexedContainerIterator& operator-=(SizeType Offset)
	{
		Index -= Offset;
		return *this;
	}

	ElementType& operator*() const { return Container[Index]; }
	ElementType* operator->() const { return &Container[Index]; }

	/** True while the iterator points at an element. */
	explicit operator bool() const { return Container.IsValidIndex(Index); }

	SizeType GetIndex() const { return Index; }

	void Reset() { Index = 0; }

	void SetToEnd() { Index = Container.Num(); }

	/** Removes the current element, keeping the order; the next increment lands on the element that followed it. */
	void RemoveCurrent()
	{
		Container.RemoveAt(Index);
		--Index;
	}

	/** Removes the current element by swapping the last one in; that element is visited next. */
	void RemoveCurrentSwap()
	{
		Container.RemoveAtSwap(Index);
		--Index;
	}

	bool operator==(const TIndexedContainerIterator& Rhs) const
	{
		return &Container == &Rhs.Container && Index == Rhs.Index;
	}

private:
	ContainerType& Container;
	SizeType Index;
};

/** Pointer iterator for range-for that fails if the container's size changes while iterating. */
template <typename ElementType, typename SizeType>
class TCheckedPointerIterator
{
public:
	TCheckedPointerIterator(const SizeType& InNum, ElementType* InPtr)
		: Ptr(InPtr)
		, CurrentNum(&InNum)
		, InitialNum(InNum)
	{
	}

	ElementType& operator*() const { return *Ptr; }
	ElementType* operator->() const { return Ptr; }
	TCheckedPointerIterator& operator++()
	{
		++Ptr;
		return *this;
	}
	TCheckedPointerIterator& operator--()
	{
		--Ptr;
		return *this;
	}

	bool operator!=(const TCheckedPointerIterator& Rhs) const
	{
		if (*CurrentNum != InitialNum)
		{
			UE::Core::Private::OnContainerChangedDuringIteration(__FILE__, __LINE__);
		}
		return Ptr != Rhs.Ptr;
	}
	bool operator==(const TCheckedPointerIterator& Rhs) const { return !(*this != Rhs); }

private:
	ElementType* Ptr;
	const SizeType* CurrentNum;
	SizeType InitialNum;
};

/**
 * A dynamically sized array of elements stored contiguously. Elements are constructed and destroyed
 * properly; relocation on growth moves them.
 */
template <typename InElementType, typename InAllocatorType>
class TArray
{
	template <typename OtherElementType, typename OtherAllocatorType>
	friend class TArray;

public:
	typedef typename InAllocatorType::SizeType SizeType;
	typedef InElementType ElementType;
	typedef InAllocatorType AllocatorType;

	typedef TIndexedContainerIterator<TArray, ElementType, SizeType> TIterator;
	typedef TIndexedContainerIterator<const TArray, const ElementType, SizeType> TConstIterator;
	typedef TCheckedPointerIterator<ElementType, SizeType> RangedForIteratorType;
	typedef TCheckedPointerIterator<const ElementType, SizeType> RangedForConstIteratorType;

	TArray() = default;

	TArray(std::initializer_list<ElementType> InitList)
	{
		CopyToEmpty(InitList.begin(), static_cast<SizeType>(InitList.size()), 0);
	}

	TArray(const ElementType* Ptr, SizeType Count)
	{
		check(Ptr != nullptr || Count == 0);
		CopyToEmpty(Ptr, Count, 0);
	}

	TArray(const TArray& Other) { CopyToEmpty(Other.GetData(), Other.Num(), 0); }

	TArray(const TArray& Other, SizeType ExtraSlack) { CopyToEmpty(Other.GetData(), Other.Num(), ExtraSlack); }

	TArray(TArray&& Other) noexcept
		: AllocatorData(Other.AllocatorData)
		, ArrayNum(Other.ArrayNum)
		, ArrayMax(Other.ArrayMax)
	{
		Other.AllocatorData = nullptr;
		Other.ArrayNum = 0;
		Other.ArrayMax = 0;
	}

	/** Copies from an array of another element type or allocator; elements convert one by one. */
	template <typename OtherElementType, typename OtherAllocator>
	requires(!std::is_same_v<TArray, TArray<OtherElementType, OtherAllocator>>) explicit TArray(
		const TArray<OtherElementType, OtherAllocator>& Other)
	{
		CopyToEmpty(Other.GetData(), static_cast<SizeType>(Other.Num()), 0);
	}

	/** Copies from any contiguous range that has GetData() and Num(), such as an array view. */
	template <typename RangeType>
	requires(!TIsTArray<std::decay_t<RangeType>>::Value && requires(const RangeType& R) {
		R.GetData();
		R.Num();
	}) explicit TArray(const RangeType& Range)
	{
		CopyToEmpty(Range.GetData(), static_cast<SizeType>(Range.Num()), 0);
	}

	~TArray()
	{
		DestructItems(AllocatorData, ArrayNum);
		FMemory::Free(AllocatorData);
	}

	TArray& operator=(std::initializer_list<ElementType> InitList)
	{
		DestructItems(AllocatorData, ArrayNum);
		ArrayNum = 0;
		CopyToEmpty(InitList.begin(), static_cast<SizeType>(InitList.size()), 0);
		return *this;
	}

	TArray& operator=(const TArray& Other)
	{
		if (this != &Other)
		{
			DestructItems(AllocatorData, ArrayNum);
			ArrayNum = 0;
			CopyToEmpty(Other.GetData(), Other.Num(), 0);
		}
		return *this;
	}

	TArray& operator=(TArray&& Other) noexcept
	{
		if (this != &Other)
		{
			DestructItems(AllocatorData, ArrayNum);
			FMemory::Free(AllocatorData);
			AllocatorData = Other.AllocatorData;
			ArrayNum = Other.ArrayNum;
			ArrayMax = Other.ArrayMax;
			Other.AllocatorData = nullptr;
			Other.ArrayNum = 0;
			Other.ArrayMax = 0;
		}
		return *this;
	}

	template <typename OtherElementType, typename OtherAllocator>
	requires(!std::is_same_v<TArray, TArray<OtherElementType, OtherAllocator>>) TArray& operator=(
		const TArray<OtherElementType, OtherAllocator>& Other)
	{
		DestructItems(AllocatorData, ArrayNum);
		ArrayNum = 0;
		CopyToEmpty(Other.GetData(), static_cast<SizeType>(Other.Num()), 0);
		return *this;
	}

	// Size and storage

	FORCEINLINE ElementType* GetData() { return AllocatorData; }
	FORCEINLINE const ElementType* GetData() const { return AllocatorData; }
	static constexpr uint32 GetTypeSize() { return sizeof(ElementType); }
	SIZE_T GetAllocatedSize() const { return static_cast<SIZE_T>(ArrayMax) * sizeof(ElementType); }
	SizeType GetSlack() const { return ArrayMax - ArrayNum; }
	FORCEINLINE SizeType Num() const { return ArrayNum; }
	FORCEINLINE SizeType Max() const { return ArrayMax; }
	FORCEINLINE bool IsEmpty() const { return ArrayNum == 0; }
	FORCEINLINE bool IsValidIndex(SizeType Index) const { return Index >= 0 && Index < ArrayNum; }
	FORCEINLINE void CheckInvariants() const { check((ArrayNum >= 0) & (ArrayMax >= ArrayNum)); }
	FORCEINLINE void RangeCheck(SizeType Index) const
	{
		if (UNLIKELY(Index < 0 || Index >= ArrayNum))
		{
			UE::Core::Private::OnInvalidIndex(Index, ArrayNum, __FILE__, __LINE__);
		}
	}
	FORCEINLINE void RangeCheck(SizeType Index, SizeType Count) const
	{
		check(Count >= 0 && Index >= 0 && Index + Count <= ArrayNum);
	}

	// Element access

	FORCEINLINE ElementType& operator[](SizeType Index)
	{
		RangeCheck(Index);
		return AllocatorData[Index];
	}
	FORCEINLINE const ElementType& operator[](SizeType Index) const
	{
		RangeCheck(Index);
		return AllocatorData[Index];
	}

	ElementType& Last(SizeType IndexFromTheEnd = 0)
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return AllocatorData[ArrayNum - IndexFromTheEnd - 1];
	}
	const ElementType& Last(SizeType IndexFromTheEnd = 0) const
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return AllocatorData[ArrayNum - IndexFromTheEnd - 1];
	}
	ElementType& Top() { return Last(); }
	const ElementType& Top() const { return Last(); }

	/** Removes the last element and returns it. */
	ElementType Pop(EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		RangeCheck(0);
		ElementType Result = MoveTempIfPossible(AllocatorData[ArrayNum - 1]);
		RemoveAt(ArrayNum - 1, 1, AllowShrinking);
		return Result;
	}
	ElementType Pop(bool bAllowShrinking) { return Pop(bAllowShrinking ? EAllowShrinking::Yes : EAllowShrinking::No); }

	// Searching

	/** Index of the first element equal to Item, or INDEX_NONE. */
	SizeType Find(const ElementType& Item) const
	{
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (AllocatorData[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	bool Find(const ElementType& Item, SizeType& Index) const
	{
		Index = Find(Item);
		return Index != INDEX_NONE;
	}
	SizeType FindLast(const ElementType& Item) const
	{
		for (SizeType Index = ArrayNum - 1; Index >= 0; --Index)
		{
			if (AllocatorData[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	bool FindLast(const ElementType& Item, SizeType& Index) const
	{
		Index = FindLast(Item);
		return Index != INDEX_NONE;
	}
	template <typename PredicateType>
	SizeType FindLastByPredicate(PredicateType Pred, SizeType Count) const
	{
		check(Count >= 0 && Count <= ArrayNum);
		for (SizeType Index = Count - 1; Index >= 0; --Index)
		{
			if (Pred(AllocatorData[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	template <typename PredicateType>
	SizeType FindLastByPredicate(PredicateType Pred) const
	{
		return FindLastByPredicate(Pred, ArrayNum);
	}
	template <typename KeyType>
	SizeType IndexOfByKey(const KeyType& Key) const
	{
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (AllocatorData[Index] == Key)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	template <typename PredicateType>
	SizeType IndexOfByPredicate(PredicateType Pred) const
	{
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (Pred(AllocatorData[Index]))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	template <typename KeyType>
	ElementType* FindByKey(const KeyType& Key)
	{
		const SizeType Index = IndexOfByKey(Key);
		return Index == INDEX_NONE ? nullptr : AllocatorData + Index;
	}
	template <typename KeyType>
	const ElementType* FindByKey(const KeyType& Key) const
	{
		return const_cast<TArray*>(this)->FindByKey(Key);
	}
	/** Pointer to the first element matching the predicate, or null. */
	template <typename PredicateType>
	ElementType* FindByPredicate(PredicateType Pred)
	{
		const SizeType Index = IndexOfByPredicate(Pred);
		return Index == INDEX_NONE ? nullptr : AllocatorData + Index;
	}
	template <typename PredicateType>
	const ElementType* FindByPredicate(PredicateType Pred) const
	{
		return const_cast<TArray*>(this)->FindByPredicate(Pred);
	}
	/** Copies of all elements matching the predicate, in order. */
	template <typename PredicateType>
	TArray FilterByPredicate(PredicateType Pred) const
	{
		TArray Result;
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (Pred(AllocatorData[Index]))
			{
				Result.Add(AllocatorData[Index]);
			}
		}
		return Result;
	}
	template <typename ComparisonType>
	bool Contains(const ComparisonType& Item) const
	{
		return IndexOfByKey(Item) != INDEX_NONE;
	}
	template <typename PredicateType>
	bool ContainsByPredicate(PredicateType Pred) const
	{
		return IndexOfByPredicate(Pred) != INDEX_NONE;
	}

	bool operator==(const TArray& Other) const
	{
		if (ArrayNum != Other.ArrayNum)
		{
			return false;
		}
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (!(AllocatorData[Index] == Other.AllocatorData[Index]))
			{
				return false;
			}
		}
		return true;
	}
	bool operator!=(const TArray& Other) const { return !(*this == Other); }

	// Adding

	/** Adds Count elements with no constructor run; returns the index of the first. */
	SizeType AddUninitialized(SizeType Count = 1)
	{
		CheckCount(Count);
		const SizeType OldNum = ArrayNum;
		EnsureCapacity(ArrayNum + Count);
		ArrayNum += Count;
		return OldNum;
	}

	template <typename... ArgsType>
	SizeType Emplace(ArgsType&&... Args)
	{
		const SizeType Index = ArrayNum;
		if (ArrayNum < ArrayMax)
		{
			::new (static_cast<void*>(AllocatorData + Index)) ElementType(Forward<ArgsType>(Args)...);
		}
		else
		{
			// Build the new element in the new block before moving the old ones, so an argument that refers
			// into this array is still alive when it is read.
			const SizeType NewMax = CalculateGrow(ArrayNum + 1);
			ElementType* NewData = Allocate(NewMax);
			::new (static_cast<void*>(NewData + Index)) ElementType(Forward<ArgsType>(Args)...);
			RelocateItems(NewData, AllocatorData, ArrayNum);
			FMemory::Free(AllocatorData);
			AllocatorData = NewData;
			ArrayMax = NewMax;
		}
		++ArrayNum;
		return Index;
	}
	template <typename... ArgsType>
	ElementType& Emplace_GetRef(ArgsType&&... Args)
	{
		// The index is taken first: the subscript's base is read before its index, and Emplace may reallocate.
		const SizeType Index = Emplace(Forward<ArgsType>(Args)...);
		return AllocatorData[Index];
	}

	FORCEINLINE SizeType Add(const ElementType& Item) { return Emplace(Item); }
	FORCEINLINE SizeType Add(ElementType&& Item) { return Emplace(MoveTempIfPossible(Item)); }
	ElementType& Add_GetRef(const ElementType& Item) { return Emplace_GetRef(Item); }
	ElementType& Add_GetRef(ElementType&& Item) { return Emplace_GetRef(MoveTempIfPossible(Item)); }
	void Push(const ElementType& Item) { Emplace(Item); }
	void Push(ElementType&& Item) { Emplace(MoveTempIfPossible(Item)); }

	/** Adds Item unless an equal element exists; returns the index of the element either way. */
	SizeType AddUnique(const ElementType& Item)
	{
		const SizeType Index = Find(Item);
		return Index != INDEX_NONE ? Index : Add(Item);
	}
	SizeType AddUnique(ElementType&& Item)
	{
		const SizeType Index = Find(Item);
		return Index != INDEX_NONE ? Index : Add(MoveTempIfPossible(Item));
	}

	/** Adds Count value-initialised elements; returns the index of the first. */
	SizeType AddDefaulted(SizeType Count = 1)
	{
		const SizeType Index = AddUninitialized(Count);
		for (SizeType I = Index; I < ArrayNum; ++I)
		{
			::new (static_cast<void*>(AllocatorData + I)) ElementType();
		}
		return Index;
	}
	ElementType& AddDefaulted_GetRef()
	{
		const SizeType Index = AddDefaulted();
		return AllocatorData[Index];
	}

	/** Adds Count elements whose memory is zero-filled; returns the index of the first. */
	SizeType AddZeroed(SizeType Count = 1)
	{
		const SizeType Index = AddUninitialized(Count);
		FMemory::Memzero(static_cast<void*>(AllocatorData + Index), sizeof(ElementType) * Count);
		return Index;
	}
	ElementType& AddZeroed_GetRef()
	{
		const SizeType Index = AddZeroed();
		return AllocatorData[Index];
	}

	template <typename OtherElementType, typename OtherAllocator>
	void Append(const TArray<OtherElementType, OtherAllocator>& Source)
	{
		AppendCopies(Source.GetData(), static_cast<SizeType>(Source.Num()));
	}

	/** Moves the elements of Source to the end of this array; Source is left empty. */
	template <typename OtherAllocator>
	void Append(TArray<ElementType, OtherAllocator>&& Source)
	{
		check(static_cast<const void*>(this) != static_cast<const void*>(&Source));
		const SizeType Count = static_cast<SizeType>(Source.Num());
		EnsureCapacity(ArrayNum + Count);
		RelocateItems(AllocatorData + ArrayNum, Source.GetData(), Count);
		ArrayNum += Count;
		Source.ArrayNum = 0;
	}

	void Append(const ElementType* Ptr, SizeType Count)
	{
		check(Ptr != nullptr || Count == 0);
		AppendCopies(Ptr, Count);
	}

	void Append(std::initializer_list<ElementType> InitList)
	{
		AppendCopies(InitList.begin(), static_cast<SizeType>(InitList.size()));
	}

	/** Appends copies of the elements of any contiguous range with GetData() and Num(), such as an array view. */
	template <typename RangeType>
	requires(!TIsTArray<std::decay_t<RangeType>>::Value && requires(const RangeType& R) {
		R.GetData();
		R.Num();
	}) void Append(const RangeType& Range)
	{
		AppendCopies(Range.GetData(), static_cast<SizeType>(Range.Num()));
	}

	template <typename OtherAllocator>
	TArray& operator+=(const TArray<ElementType, OtherAllocator>& Other)
	{
		Append(Other);
		return *this;
	}
	TArray& operator+=(TArray&& Other)
	{
		Append(MoveTemp(Other));
		return *this;
	}
	TArray& operator+=(std::initializer_list<ElementType> InitList)
	{
		Append(InitList);
		return *this;
	}

	// Inserting

	/** Opens a gap of Count uninitialised elements at Index. */
	void InsertUninitialized(SizeType Index, SizeType Count = 1)
	{
		CheckCount(Count);
		check(Index >= 0 && Index <= ArrayNum);
		EnsureCapacity(ArrayNum + Count);
		const SizeType NumToMove = ArrayNum - Index;
		if constexpr (std::is_trivially_copyable_v<ElementType>)
		{
			FMemory::Memmove(static_cast<void*>(AllocatorData + Index + Count),
				static_cast<const void*>(AllocatorData + Index), sizeof(ElementType) * NumToMove);
		}
		else
		{
			for (SizeType Src = ArrayNum - 1; Src >= Index; --Src)
			{
				::new (static_cast<void*>(AllocatorData + Src + Count)) ElementType(MoveTemp(AllocatorData[Src]));
				AllocatorData[Src].~ElementType();
			}
		}
		ArrayNum += Count;
	}

	void InsertDefaulted(SizeType Index, SizeType Count = 1)
	{
		InsertUninitialized(Index, Count);
		for (SizeType I = Index; I < Index + Count; ++I)
		{
			::new (static_cast<void*>(AllocatorData + I)) ElementType();
		}
	}
	ElementType& InsertDefaulted_GetRef(SizeType Index)
	{
		InsertDefaulted(Index, 1);
		return AllocatorData[Index];
	}

	void InsertZeroed(SizeType Index, SizeType Count = 1)
	{
		InsertUninitialized(Index, Count);
		FMemory::Memzero(static_cast<void*>(AllocatorData + Index), sizeof(ElementType) * Count);
	}

	template <typename... ArgsType>
	void EmplaceAt(SizeType Index, ArgsType&&... Args)
	{
		// Arguments are materialised first: they may refer to elements that the gap is about to move.
		ElementType Temp(Forward<ArgsType>(Args)...);
		InsertUninitialized(Index, 1);
		::new (static_cast<void*>(AllocatorData + Index)) ElementType(MoveTemp(Temp));
	}

	SizeType Insert(const ElementType& Item, SizeType Index)
	{
		CheckAddress(&Item);
		InsertUninitialized(Index, 1);
		::new (static_cast<void*>(AllocatorData + Index)) ElementType(Item);
		return Index;
	}
	SizeType Insert(ElementType&& Item, SizeType Index)
	{
		CheckAddress(&Item);
		InsertUninitialized(Index, 1);
		::new (static_cast<void*>(AllocatorData + Index)) ElementType(MoveTempIfPossible(Item));
		return Index;
	}
	ElementType& Insert_GetRef(const ElementType& Item, SizeType Index)
	{
		Insert(Item, Index);
		return AllocatorData[Index];
	}
	SizeType Insert(const ElementType* Ptr, SizeType Count, SizeType Index)
	{
		check(Ptr != nullptr || Count == 0);
		CheckAddress(Ptr);
		InsertUninitialized(Index, Count);
		ConstructItems(AllocatorData + Index, Ptr, Count);
		return Index;
	}
	SizeType Insert(std::initializer_list<ElementType> InitList, SizeType Index)
	{
		return Insert(InitList.begin(), static_cast<SizeType>(InitList.size()), Index);
	}
	template <typename OtherAllocator>
	SizeType Insert(const TArray<ElementType, OtherAllocator>& Items, SizeType Index)
	{
		check(static_cast<const void*>(this) != static_cast<const void*>(&Items));
		return Insert(Items.GetData(), static_cast<SizeType>(Items.Num()), Index);
	}
	SizeType Insert(TArray&& Items, SizeType Index)
	{
		check(this != &Items);
		const SizeType Count = Items.Num();
		InsertUninitialized(Index, Count);
		RelocateItems(AllocatorData + Index, Items.GetData(), Count);
		Items.ArrayNum = 0;
		return Index;
	}

	// Removing

	void RemoveAt(SizeType Index, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		RemoveAtImpl(Index, 1, AllowShrinking);
	}
	template <typename CountType>
	requires(std::is_integral_v<CountType> && !std::is_same_v<CountType, bool>) void RemoveAt(
		SizeType Index, CountType Count, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		RemoveAtImpl(Index, static_cast<SizeType>(Count), AllowShrinking);
	}
	void RemoveAt(SizeType Index, SizeType Count, bool bAllowShrinking)
	{
		RemoveAtImpl(Index, Count, bAllowShrinking ? EAllowShrinking::Yes : EAllowShrinking::No);
	}

	/** Removes elements by moving the last ones into the hole: fast, but the order changes. */
	void RemoveAtSwap(SizeType Index, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		RemoveAtSwapImpl(Index, 1, AllowShrinking);
	}
	template <typename CountType>
	requires(std::is_integral_v<CountType> && !std::is_same_v<CountType, bool>) void RemoveAtSwap(
		SizeType Index, CountType Count, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		RemoveAtSwapImpl(Index, static_cast<SizeType>(Count), AllowShrinking);
	}
	void RemoveAtSwap(SizeType Index, SizeType Count, bool bAllowShrinking)
	{
		RemoveAtSwapImpl(Index, Count, bAllowShrinking ? EAllowShrinking::Yes : EAllowShrinking::No);
	}

	/** Removes every element equal to Item, keeping order; returns how many were removed. */
	SizeType Remove(const ElementType& Item)
	{
		CheckAddress(&Item);
		return RemoveAll(
			[&Item](const ElementType& Element)
			{
				return Element == Item;
			});
	}

	/** Removes the first element equal to Item, keeping order; returns 1 or 0. */
	SizeType RemoveSingle(const ElementType& Item)
	{
		const SizeType Index = Find(Item);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveAt(Index, 1, EAllowShrinking::No);
		return 1;
	}

	SizeType RemoveSingleSwap(const ElementType& Item, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		const SizeType Index = Find(Item);
		if (Index == INDEX_NONE)
		{
			return 0;
		}
		RemoveAtSwap(Index, 1, AllowShrinking);
		return 1;
	}

	/** Removes every element matching the predicate, keeping order; returns how many were removed. */
	template <typename PredicateType>
	SizeType RemoveAll(const PredicateType& Predicate)
	{
		SizeType Write = 0;
		for (SizeType Read = 0; Read < ArrayNum; ++Read)
		{
			if (Predicate(AllocatorData[Read]))
			{
				continue;
			}
			if (Write != Read)
			{
				AllocatorData[Write] = MoveTemp(AllocatorData[Read]);
			}
			++Write;
		}
		const SizeType Removed = ArrayNum - Write;
		DestructItems(AllocatorData + Write, Removed);
		ArrayNum = Write;
		return Removed;
	}

	/** Removes every element equal to Item, not keeping order; returns how many were removed. */
	SizeType RemoveSwap(const ElementType& Item, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		CheckAddress(&Item);
		return RemoveAllSwap(
			[&Item](const ElementType& Element)
			{
				return Element == Item;
			},
			AllowShrinking);
	}

	template <typename PredicateType>
	SizeType RemoveAllSwap(const PredicateType& Predicate, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		const SizeType OldNum = ArrayNum;
		for (SizeType Index = 0; Index < ArrayNum;)
		{
			if (Predicate(AllocatorData[Index]))
			{
				RemoveAtSwap(Index, 1, EAllowShrinking::No);
			}
			else
			{
				++Index;
			}
		}
		if (AllowShrinking == EAllowShrinking::Yes)
		{
			ShrinkIfSlackIsLarge();
		}
		return OldNum - ArrayNum;
	}

	/** Replaces the contents with Number copies of Element. */
	void Init(const ElementType& Element, SizeType Number)
	{
		CheckAddress(&Element);
		Empty(Number);
		for (SizeType Index = 0; Index < Number; ++Index)
		{
			::new (static_cast<void*>(AllocatorData + Index)) ElementType(Element);
		}
		ArrayNum = Number;
	}

	/** Destroys all elements; keeps the allocation unless NewSize needs more. */
	void Reset(SizeType NewSize = 0)
	{
		DestructItems(AllocatorData, ArrayNum);
		ArrayNum = 0;
		if (NewSize > ArrayMax)
		{
			ResizeAllocation(NewSize);
		}
	}

	/** Destroys all elements and sizes the allocation to exactly Slack elements. */
	void Empty(SizeType Slack = 0)
	{
		CheckCount(Slack);
		DestructItems(AllocatorData, ArrayNum);
		ArrayNum = 0;
		if (ArrayMax != Slack)
		{
			ResizeAllocation(Slack);
		}
	}

	void Reserve(SizeType Number)
	{
		CheckCount(Number);
		if (Number > ArrayMax)
		{
			ResizeAllocation(Number);
		}
	}

	/** Resizes to NewNum elements; added elements are value-initialised. */
	void SetNum(SizeType NewNum, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		CheckCount(NewNum);
		if (NewNum > ArrayNum)
		{
			AddDefaulted(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, AllowShrinking);
		}
	}
	void SetNum(SizeType NewNum, bool bAllowShrinking)
	{
		SetNum(NewNum, bAllowShrinking ? EAllowShrinking::Yes : EAllowShrinking::No);
	}
	void SetNumZeroed(SizeType NewNum, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		CheckCount(NewNum);
		if (NewNum > ArrayNum)
		{
			AddZeroed(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, AllowShrinking);
		}
	}
	void SetNumUninitialized(SizeType NewNum, EAllowShrinking AllowShrinking = EAllowShrinking::Default)
	{
		CheckCount(NewNum);
		if (NewNum > ArrayNum)
		{
			AddUninitialized(NewNum - ArrayNum);
		}
		else if (NewNum < ArrayNum)
		{
			RemoveAt(NewNum, ArrayNum - NewNum, AllowShrinking);
		}
	}

	/** Gives back all unused memory. */
	void Shrink()
	{
		if (ArrayMax != ArrayNum)
		{
			ResizeAllocation(ArrayNum);
		}
	}

	/** Swaps two elements by index. */
	void Swap(SizeType FirstIndexToSwap, SizeType SecondIndexToSwap)
	{
		RangeCheck(FirstIndexToSwap);
		RangeCheck(SecondIndexToSwap);
		if (FirstIndexToSwap != SecondIndexToSwap)
		{
			::Swap(AllocatorData[FirstIndexToSwap], AllocatorData[SecondIndexToSwap]);
		}
	}
	void SwapMemory(SizeType FirstIndexToSwap, SizeType SecondIndexToSwap)
	{
		Swap(FirstIndexToSwap, SecondIndexToSwap);
	}

	// Sorting

	/** Sorts with operator<; arrays of pointers are sorted by the pointed-to values. Not stable. */
	void Sort() { Sort(TLess<>()); }
	template <typename PredicateType>
	void Sort(const PredicateType& Predicate)
	{
		TDereferenceWrapper<ElementType, PredicateType> Wrapper(Predicate);
		std::sort(AllocatorData, AllocatorData + ArrayNum,
			[&Wrapper](const ElementType& A, const ElementType& B)
			{
				return Wrapper(A, B);
			});
	}
	/** Sorts keeping equal elements in their original order. */
	void StableSort() { StableSort(TLess<>()); }
	template <typename PredicateType>
	void StableSort(const PredicateType& Predicate)
	{
		TDereferenceWrapper<ElementType, PredicateType> Wrapper(Predicate);
		std::stable_sort(AllocatorData, AllocatorData + ArrayNum,
			[&Wrapper](const ElementType& A, const ElementType& B)
			{
				return Wrapper(A, B);
			});
	}

	// Iteration

	TIterator CreateIterator() { return TIterator(*this); }
	TConstIterator CreateConstIterator() const { return TConstIterator(*this); }

	FORCEINLINE RangedForIteratorType begin() { return RangedForIteratorType(ArrayNum, AllocatorData); }
	FORCEINLINE RangedForConstIteratorType begin() const { return RangedForConstIteratorType(ArrayNum, AllocatorData); }
	FORCEINLINE RangedForIteratorType end() { return RangedForIteratorType(ArrayNum, AllocatorData + ArrayNum); }
	FORCEINLINE RangedForConstIteratorType end() const
	{
		return RangedForConstIteratorType(ArrayNum, AllocatorData + ArrayNum);
	}

private:
	static ElementType* Allocate(SizeType Count)
	{
		if (Count == 0)
		{
			return nullptr;
		}
		return static_cast<ElementType*>(
			FMemory::Malloc(static_cast<SIZE_T>(Count) * sizeof(ElementType), alignof(ElementType)));
	}

	static void DestructItems(ElementType* Items, SizeType Count)
	{
		if constexpr (!std::is_trivially_destructible_v<ElementType>)
		{
			for (SizeType Index = 0; Index < Count; ++Index)
			{
				Items[Index].~ElementType();
			}
		}
	}

	template <typename SourceType>
	static void ConstructItems(ElementType* Dest, const SourceType* Source, SizeType Count)
	{
		if constexpr (std::is_same_v<std::remove_cv_t<SourceType>, ElementType> &&
					  std::is_trivially_copyable_v<ElementType>)
		{
			FMemory::Memcpy(static_cast<void*>(Dest), static_cast<const void*>(Source), sizeof(ElementType) * Count);
		}
		else
		{
			for (SizeType Index = 0; Index < Count; ++Index)
			{
				::new (static_cast<void*>(Dest + Index)) ElementType(Source[Index]);
			}
		}
	}

	/** Moves Count elements into raw memory at Dest and destroys the originals. */
	static void RelocateItems(ElementType* Dest, ElementType* Source, SizeType Count)
	{
		if constexpr (std::is_trivially_copyable_v<ElementType>)
		{
			FMemory::Memmove(static_cast<void*>(Dest), static_cast<const void*>(Source), sizeof(ElementType) * Count);
		}
		else
		{
			for (SizeType Index = 0; Index < Count; ++Index)
			{
				::new (static_cast<void*>(Dest + Index)) ElementType(MoveTemp(Source[Index]));
				Source[Index].~ElementType();
			}
		}
	}

	static void CheckCount(SizeType Count)
	{
		if (UNLIKELY(Count < 0))
		{
			UE::Core::Private::OnInvalidArrayNum(Count, __FILE__, __LINE__);
		}
	}

	/** Inserting or removing an element by reference must not pass one of this array's own elements. */
	void CheckAddress(const ElementType* Addr) const
	{
		check(Addr < AllocatorData || Addr >= AllocatorData + ArrayMax);
	}

	static SizeType CalculateGrow(SizeType NeededNum)
	{
		// Grow geometrically so repeated Adds stay amortised O(1); start small for tiny arrays.
		const int64 Grown = static_cast<int64>(NeededNum) + static_cast<int64>(NeededNum) / 2 + 4;
		const int64 Limit = static_cast<int64>(std::numeric_limits<SizeType>::max());
		return static_cast<SizeType>(Grown > Limit ? Limit : Grown);
	}

	void ResizeAllocation(SizeType NewMax)
	{
		check(NewMax >= ArrayNum);
		ElementType* NewData = Allocate(NewMax);
		if (NewData != nullptr && ArrayNum > 0)
		{
			RelocateItems(NewData, AllocatorData, ArrayNum);
		}
		FMemory::Free(AllocatorData);
		AllocatorData = NewData;
		ArrayMax = NewMax;
	}

	void EnsureCapacity(SizeType NeededNum)
	{
		if (NeededNum < ArrayNum)
		{
			UE::Core::Private::OnInvalidArrayNum(NeededNum, __FILE__, __LINE__);
		}
		if (NeededNum > ArrayMax)
		{
			ResizeAllocation(CalculateGrow(NeededNum));
		}
	}

	/** Gives memory back after removals once a large share of the allocation is unused. */
	void ShrinkIfSlackIsLarge()
	{
		const SizeType Slack = ArrayMax - ArrayNum;
		if (ArrayNum == 0 || (Slack > 64 && 3 * ArrayNum < 2 * ArrayMax))
		{
			if (ArrayMax != ArrayNum)
			{
				ResizeAllocation(ArrayNum);
			}
		}
	}

	template <typename SourceType>
	void CopyToEmpty(const SourceType* Source, SizeType Count, SizeType ExtraSlack)
	{
		CheckCount(Count);
		CheckCount(ExtraSlack);
		if (Count + ExtraSlack > ArrayMax)
		{
			ResizeAllocation(Count + ExtraSlack);
		}
		ConstructItems(AllocatorData, Source, Count);
		ArrayNum = Count;
	}

	template <typename SourceType>
	void AppendCopies(const SourceType* Source, SizeType Count)
	{
		CheckCount(Count);
		if (ArrayNum + Count <= ArrayMax)
		{
			ConstructItems(AllocatorData + ArrayNum, Source, Count);
		}
		else
		{
			// Copy before relocating: the source may be this array's own elements.
			const SizeType NewMax = CalculateGrow(ArrayNum + Count);
			ElementType* NewData = Allocate(NewMax);
			ConstructItems(NewData + ArrayNum, Source, Count);
			RelocateItems(NewData, AllocatorData, ArrayNum);
			FMemory::Free(AllocatorData);
			AllocatorData = NewData;
			ArrayMax = NewMax;
		}
		ArrayNum += Count;
	}

	void RemoveAtImpl(SizeType Index, SizeType Count, EAllowShrinking AllowShrinking)
	{
		if (Count == 0)
		{
			return;
		}
		CheckCount(Count);
		if (UNLIKELY(Index < 0 || Index + Count > ArrayNum))
		{
			UE::Core::Private::OnInvalidIndex(Index < 0 ? Index : Index + Count - 1, ArrayNum, __FILE__, __LINE__);
		}
		DestructItems(AllocatorData + Index, Count);
		const SizeType NumToMove = ArrayNum - Index - Count;
		if constexpr (std::is_trivially_copyable_v<ElementType>)
		{
			FMemory::Memmove(static_cast<void*>(AllocatorData + Index),
				static_cast<const void*>(AllocatorData + Index + Count), sizeof(ElementType) * NumToMove);
		}
		else
		{
			for (SizeType I = 0; I < NumToMove; ++I)
			{
				ElementType& Src = AllocatorData[Index + Count + I];
				::new (static_cast<void*>(AllocatorData + Index + I)) ElementType(MoveTemp(Src));
				Src.~ElementType();
			}
		}
		ArrayNum -= Count;
		if (AllowShrinking == EAllowShrinking::Yes)
		{
			ShrinkIfSlackIsLarge();
		}
	}

	void RemoveAtSwapImpl(SizeType Index, SizeType Count, EAllowShrinking AllowShrinking)
	{
		if (Count == 0)
		{
			return;
		}
		CheckCount(Count);
		if (UNLIKELY(Index < 0 || Index + Count > ArrayNum))
		{
			UE::Core::Private::OnInvalidIndex(Index < 0 ? Index : Index + Count - 1, ArrayNum, __FILE__, __LINE__);
		}
		DestructItems(AllocatorData + Index, Count);
		const SizeType NumAfterHole = ArrayNum - Index - Count;
		const SizeType NumToMove = Count < NumAfterHole ? Count : NumAfterHole;
		RelocateItems(AllocatorData + Index, AllocatorData + ArrayNum - NumToMove, NumToMove);
		ArrayNum -= Count;
		if (AllowShrinking == EAllowShrinking::Yes)
		{
			ShrinkIfSlackIsLarge();
		}
	}

	ElementType* AllocatorData = nullptr;
	SizeType ArrayNum = 0;
	SizeType ArrayMax = 0;
};

template <typename InElementType, typename InAllocatorType>
struct TIsContiguousContainer<TArray<InElementType, InAllocatorType>>
{
	static constexpr bool Value = true;
};

template <typename InElementType, typename InAllocatorType>
struct TIsTArray<TArray<InElementType, InAllocatorType>>
{
	static constexpr bool Value = true;
};

template <typename InElementType, typename InAllocatorType>
struct TIsZeroConstructType<TArray<InElementType, InAllocatorType>>
{
	static constexpr bool Value = true;
};

/** Hashes the elements in order. */
template <typename InElementType, typename InAllocatorType>
uint32 GetTypeHash(const TArray<InElementType, InAllocatorType>& Array)
{
	uint32 Hash = 0;
	for (const InElementType& Element : Array)
	{
		Hash = HashCombineFast(Hash, GetTypeHash(Element));
	}
	return Hash;
}

template <typename T, typename AllocatorType>
T* GetData(TArray<T, AllocatorType>& Container)
{
	return Container.GetData();
}
template <typename T, typename AllocatorType>
const T* GetData(const TArray<T, AllocatorType>& Container)
{
	return Container.GetData();
}
template <typename T, typename AllocatorType>
auto GetNum(const TArray<T, AllocatorType>& Container)
{
	return Container.Num();
}

/** `new (Array) FType(...)` constructs a new element at the end of Array. */
template <typename T, typename AllocatorType>
void* operator new(size_t Size, TArray<T, AllocatorType>& Array)
{
	check(Size == sizeof(T));
	const auto Index = Array.AddUninitialized();
	return &Array[Index];
}
template <typename T, typename AllocatorType>
void* operator new(size_t Size, TArray<T, AllocatorType>& Array, typename TArray<T, AllocatorType>::SizeType Index)
{
	check(Size == sizeof(T));
	Array.InsertUninitialized(Index);
	return &Array[Index];
}
template <typename T, typename AllocatorType>
void operator delete(void*, TArray<T, AllocatorType>&)
{
}
template <typename T, typename AllocatorType>
void operator delete(void*, TArray<T, AllocatorType>&, typename TArray<T, AllocatorType>::SizeType)
{
}
