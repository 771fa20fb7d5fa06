// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "Containers/ContainerAllocationPolicies.h"
#include "Containers/ContainerHelpers.h"
#include "Containers/ContainersFwd.h"
#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"
#include "Templates/UnrealTypeTraits.h"

#include <initializer_list>
#include <new>
#include <type_traits>

/** Identifies an element of a set (its slot); stays valid until that element is removed. */
class FSetElementId
{
public:
	FSetElementId() = default;

	bool IsValidId() const { return Index != INDEX_NONE; }
	int32 AsInteger() const { return Index; }
	static FSetElementId FromInteger(int32 Integer)
	{
		FSetElementId Id;
		Id.Index = Integer;
		return Id;
	}
	bool operator==(const FSetElementId& Other) const { return Index == Other.Index; }
	bool operator!=(const FSetElementId& Other) const { return Index != Other.Index; }
	friend uint32 GetTypeHash(const FSetElementId& Id) { return static_cast<uint32>(Id.Index); }

private:
	int32 Index = INDEX_NONE;
};

/** Base of key functions: names the key type and whether equal keys may coexist. */
template <typename ElementType, typename InKeyType, bool bInAllowDuplicateKeys = false>
struct BaseKeyFuncs
{
	typedef InKeyType KeyType;
	typedef typename TCallTraits<InKeyType>::ParamType KeyInitType;
	typedef typename TCallTraits<ElementType>::ParamType ElementInitType;

	enum
	{
		bAllowDuplicateKeys = bInAllowDuplicateKeys
	};
};

/** Key functions for sets whose elements are their own keys: compared with ==, hashed with GetTypeHash. */
template <typename ElementType, bool bInAllowDuplicateKeys>
struct DefaultKeyFuncs : BaseKeyFuncs<ElementType, ElementType, bInAllowDuplicateKeys>
{
	typedef typename TCallTraits<ElementType>::ParamType KeyInitType;
	typedef typename TCallTraits<ElementType>::ParamType ElementInitType;

	static FORCEINLINE KeyInitType GetSetKey(ElementInitType Element) { return Element; }
	static FORCEINLINE bool Matches(KeyInitType A, KeyInitType B) { return A == B; }
	template <typename ComparableKey>
	static FORCEINLINE bool Matches(KeyInitType A, const ComparableKey& B)
	{
		return A == B;
	}
	static FORCEINLINE uint32 GetKeyHash(KeyInitType Key) { return GetTypeHash(Key); }
	template <typename ComparableKey>
	static FORCEINLINE uint32 GetKeyHash(const ComparableKey& Key)
	{
		return GetTypeHash(Key);
	}
};

/**
 * An unordered collection of unique elements (unless KeyFuncs allows duplicates), found by hash.
 * Elements live in numbered slots: iteration walks the slots in order, so it follows insertion
 * order until something is removed; a removed slot is reused by the next addition.
 */
template <typename InElementType, typename KeyFuncs, typename Allocator>
class TSet
{
	template <typename, typename, typename>
	friend class TSet;

public:
	typedef InElementType ElementType;
	typedef typename KeyFuncs::KeyInitType KeyInitType;
	typedef typename KeyFuncs::ElementInitType ElementInitType;
	typedef int32 SizeType;

private:
	/** One slot: either an element linked into its hash bucket, or a link in the free list. */
	struct FSlot
	{
		alignas(ElementType) unsigned char Storage[sizeof(ElementType)];
		int32 HashNextId = INDEX_NONE;
		int32 NextFree = INDEX_NONE;
		bool bAllocated = false;

		FSlot() = default;
		FSlot(const FSlot& Other)
			: HashNextId(Other.HashNextId)
			, NextFree(Other.NextFree)
			, bAllocated(Other.bAllocated)
		{
			if (bAllocated)
			{
				::new (static_cast<void*>(Storage)) ElementType(Other.Get());
			}
		}
		FSlot(FSlot&& Other)
			: HashNextId(Other.HashNextId)
			, NextFree(Other.NextFree)
			, bAllocated(Other.bAllocated)
		{
			if (bAllocated)
			{
				::new (static_cast<void*>(Storage)) ElementType(MoveTemp(Other.Get()));
			}
		}
		FSlot& operator=(const FSlot&) = delete;
		~FSlot()
		{
			if (bAllocated)
			{
				Get().~ElementType();
			}
		}
		ElementType& Get() { return *std::launder(reinterpret_cast<ElementType*>(Storage)); }
		const ElementType& Get() const { return *std::launder(reinterpret_cast<const ElementType*>(Storage)); }
	};

public:
	TSet() = default;
	TSet(const TSet&) = default;
	TSet(TSet&& Other) noexcept { *this = MoveTemp(Other); }
	TSet& operator=(const TSet&) = default;
	TSet& operator=(TSet&& Other) noexcept
	{
		if (this != &Other)
		{
			Slots = MoveTemp(Other.Slots);
			Buckets = MoveTemp(Other.Buckets);
			FirstFree = Other.FirstFree;
			NumFree = Other.NumFree;
			Other.FirstFree = INDEX_NONE;
			Other.NumFree = 0;
		}
		return *this;
	}

	TSet(std::initializer_list<ElementType> InitList)
	{
		Reserve(static_cast<int32>(InitList.size()));
		for (const ElementType& Element : InitList)
		{
			Add(Element);
		}
	}

	explicit TSet(TArrayView<const ElementType> InArrayView) { Append(InArrayView); }

	explicit TSet(const TArray<ElementType>& InArray) { Append(InArray); }

	// Size

	int32 Num() const { return Slots.Num() - NumFree; }
	bool IsEmpty() const { return Num() == 0; }
	int32 Max() const { return Slots.Max(); }
	SIZE_T GetAllocatedSize() const { return Slots.GetAllocatedSize() + Buckets.GetAllocatedSize(); }
	bool IsValidId(FSetElementId Id) const
	{
		const int32 Index = Id.AsInteger();
		return Index >= 0 && Index < Slots.Num() && Slots[Index].bAllocated;
	}

	/** Removes all elements and keeps room for ExpectedNumElements. */
	void Empty(int32 ExpectedNumElements = 0)
	{
		Slots.Empty(ExpectedNumElements);
		Buckets.Empty();
		FirstFree = INDEX_NONE;
		NumFree = 0;
		if (ExpectedNumElements > 0)
		{
			Rehash(ExpectedNumElements);
		}
	}

	/** Removes all elements, keeping the memory. */
	void Reset()
	{
		Slots.Reset();
		for (int32& Bucket : Buckets)
		{
			Bucket = INDEX_NONE;
		}
		FirstFree = INDEX_NONE;
		NumFree = 0;
	}

	void Reserve(int32 Number)
	{
		if (Number > Slots.Max())
		{
			Slots.Reserve(Number);
		}
		if (Number > Buckets.Num())
		{
			Rehash(Number);
		}
	}

	/** Drops free slots at the end of the slot list. */
	void Shrink()
	{
		while (Slots.Num() > 0 && !Slots.Last().bAllocated)
		{
			Slots.Pop(EAllowShrinking::No);
		}
		RebuildFreeList();
		Slots.Shrink();
	}

	/** Moves all elements to the front, closing the holes left by removals. Keeps their relative order. */
	void CompactStable()
	{
		if (NumFree == 0)
		{
			return;
		}
		TArray<FSlot> Compacted;
		Compacted.Reserve(Num());
		for (FSlot& Slot : Slots)
		{
			if (Slot.bAllocated)
			{
				Compacted.Emplace(MoveTemp(Slot));
			}
		}
		Slots = MoveTemp(Compacted);
		FirstFree = INDEX_NONE;
		NumFree = 0;
		Rehash(Buckets.Num());
	}
	void Compact() { CompactStable(); }

	// Adding

	/** Adds an element, replacing an equal one if duplicates are not allowed. */
	FSetElementId Add(const ElementType& InElement, bool* bIsAlreadyInSetPtr = nullptr)
	{
		return Emplace(InElement, bIsAlreadyInSetPtr);
	}
	FSetElementId Add(ElementType&& InElement, bool* bIsAlreadyInSetPtr = nullptr)
	{
		return Emplace(MoveTempIfPossible(InElement), bIsAlreadyInSetPtr);
	}

	/** Constructs an element from Arg, replacing an equal one if duplicates are not allowed. */
	template <typename ArgType>
	FSetElementId Emplace(ArgType&& Arg, bool* bIsAlreadyInSetPtr = nullptr)
	{
		ElementType NewElement(Forward<ArgType>(Arg));
		return AddElement(
			MoveTemp(NewElement), KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(NewElement)), bIsAlreadyInSetPtr);
	}

	/** Like Emplace, with the key's hash computed by the caller. */
	template <typename ArgType>
	FSetElementId EmplaceByHash(uint32 KeyHash, ArgType&& Arg, bool* bIsAlreadyInSetPtr = nullptr)
	{
		ElementType NewElement(Forward<ArgType>(Arg));
		return AddElement(MoveTemp(NewElement), KeyHash, bIsAlreadyInSetPtr);
	}

	template <typename ArrayElementType, typename ArrayAllocator>
	void Append(const TArray<ArrayElementType, ArrayAllocator>& InElements)
	{
		Reserve(Num() + InElements.Num());
		for (const ArrayElementType& Element : InElements)
		{
			Add(Element);
		}
	}
	void Append(TArrayView<const ElementType> InElements)
	{
		Reserve(Num() + InElements.Num());
		for (const ElementType& Element : InElements)
		{
			Add(Element);
		}
	}
	template <typename OtherKeyFuncs, typename OtherAllocator>
	void Append(const TSet<ElementType, OtherKeyFuncs, OtherAllocator>& OtherSet)
	{
		Reserve(Num() + OtherSet.Num());
		for (const ElementType& Element : OtherSet)
		{
			Add(Element);
		}
	}
	void Append(std::initializer_list<ElementType> InitList)
	{
		for (const ElementType& Element : InitList)
		{
			Add(Element);
		}
	}

	// Finding

	FSetElementId FindId(KeyInitType Key) const
	{
		return FSetElementId::FromInteger(FindIndex(Key, KeyFuncs::GetKeyHash(Key)));
	}
	template <typename ComparableKey>
	FSetElementId FindIdByHash(uint32 KeyHash, const ComparableKey& Key) const
	{
		return FSetElementId::FromInteger(FindIndex(Key, KeyHash));
	}

	/** Pointer to the element with this key, or null. */
	ElementType* Find(KeyInitType Key)
	{
		const int32 Index = FindIndex(Key, KeyFuncs::GetKeyHash(Key));
		return Index != INDEX_NONE ? &Slots[Index].Get() : nullptr;
	}
	const ElementType* Find(KeyInitType Key) const { return const_cast<TSet*>(this)->Find(Key); }
	template <typename ComparableKey>
	ElementType* FindByHash(uint32 KeyHash, const ComparableKey& Key)
	{
		const int32 Index = FindIndex(Key, KeyHash);
		return Index != INDEX_NONE ? &Slots[Index].Get() : nullptr;
	}
	template <typename ComparableKey>
	const ElementType* FindByHash(uint32 KeyHash, const ComparableKey& Key) const
	{
		return const_cast<TSet*>(this)->FindByHash(KeyHash, Key);
	}

	/** Reference to the element with this key; the key must be present. */
	ElementType& FindChecked(KeyInitType Key)
	{
		ElementType* Found = Find(Key);
		check(Found != nullptr);
		return *Found;
	}
	const ElementType& FindChecked(KeyInitType Key) const { return const_cast<TSet*>(this)->FindChecked(Key); }

	/** The element with this key, adding it first if missing. */
	ElementType& FindOrAdd(const ElementType& InElement, bool* bIsAlreadyInSetPtr = nullptr)
	{
		const uint32 KeyHash = KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(InElement));
		const int32 Index = FindIndex(KeyFuncs::GetSetKey(InElement), KeyHash);
		if (bIsAlreadyInSetPtr)
		{
			*bIsAlreadyInSetPtr = Index != INDEX_NONE;
		}
		if (Index != INDEX_NONE)
		{
			return Slots[Index].Get();
		}
		return Slots[AddElement(ElementType(InElement), KeyHash, nullptr).AsInteger()].Get();
	}

	bool Contains(KeyInitType Key) const { return FindIndex(Key, KeyFuncs::GetKeyHash(Key)) != INDEX_NONE; }
	template <typename ComparableKey>
	bool ContainsByHash(uint32 KeyHash, const ComparableKey& Key) const
	{
		return FindIndex(Key, KeyHash) != INDEX_NONE;
	}

	ElementType& operator[](FSetElementId Id)
	{
		CheckId(Id);
		return Slots[Id.AsInteger()].Get();
	}
	const ElementType& operator[](FSetElementId Id) const
	{
		CheckId(Id);
		return Slots[Id.AsInteger()].Get();
	}
	ElementType& Get(FSetElementId Id) { return (*this)[Id]; }
	const ElementType& Get(FSetElementId Id) const { return (*this)[Id]; }

	// Removing

	/** Removes the element with this id. */
	void Remove(FSetElementId Id)
	{
		CheckId(Id);
		RemoveIndex(Id.AsInteger());
	}

	/** Removes every element with this key; returns how many were removed. */
	int32 Remove(KeyInitType Key) { return RemoveByHash(KeyFuncs::GetKeyHash(Key), Key); }

	template <typename ComparableKey>
	int32 RemoveByHash(uint32 KeyHash, const ComparableKey& Key)
	{
		int32 NumRemoved = 0;
		for (;;)
		{
			const int32 Index = FindIndex(Key, KeyHash);
			if (Index == INDEX_NONE)
			{
				break;
			}
			RemoveIndex(Index);
			++NumRemoved;
			if (!KeyFuncs::bAllowDuplicateKeys)
			{
				break;
			}
		}
		return NumRemoved;
	}

	// Set operations

	/** Elements present in both sets. */
	TSet Intersect(const TSet& OtherSet) const
	{
		TSet Result;
		for (const ElementType& Element : *this)
		{
			if (OtherSet.Contains(KeyFuncs::GetSetKey(Element)))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	/** Elements present in either set. */
	TSet Union(const TSet& OtherSet) const
	{
		TSet Result;
		Result.Reserve(Num() + OtherSet.Num());
		for (const ElementType& Element : *this)
		{
			Result.Add(Element);
		}
		for (const ElementType& Element : OtherSet)
		{
			Result.Add(Element);
		}
		return Result;
	}

	/** Elements of this set that are not in OtherSet. */
	TSet Difference(const TSet& OtherSet) const
	{
		TSet Result;
		for (const ElementType& Element : *this)
		{
			if (!OtherSet.Contains(KeyFuncs::GetSetKey(Element)))
			{
				Result.Add(Element);
			}
		}
		return Result;
	}

	/** True if every element of OtherSet is in this set. */
	bool Includes(const TSet& OtherSet) const
	{
		for (const ElementType& Element : OtherSet)
		{
			if (!Contains(KeyFuncs::GetSetKey(Element)))
			{
				return false;
			}
		}
		return true;
	}

	/** The elements in iteration order. */
	TArray<ElementType> Array() const
	{
		TArray<ElementType> Result;
		Result.Reserve(Num());
		for (const ElementType& Element : *this)
		{
			Result.Add(Element);
		}
		return Result;
	}

	/** Sorts the elements in place; iteration then follows the sorted order. */
	template <typename PredicateType>
	void Sort(const PredicateType& Predicate)
	{
		TArray<ElementType> Elements;
		Elements.Reserve(Num());
		for (ElementType& Element : *this)
		{
			Elements.Add(MoveTemp(Element));
		}
		Elements.Sort(Predicate);
		Empty(Elements.Num());
		for (ElementType& Element : Elements)
		{
			AddElement(MoveTemp(Element), KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(Element)), nullptr);
		}
	}
	template <typename PredicateType>
	void StableSort(const PredicateType& Predicate)
	{
		TArray<ElementType> Elements;
		Elements.Reserve(Num());
		for (ElementType& Element : *this)
		{
			Elements.Add(MoveTemp(Element));
		}
		Elements.StableSort(Predicate);
		Empty(Elements.Num());
		for (ElementType& Element : Elements)
		{
			AddElement(MoveTemp(Element), KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(Element)), nullptr);
		}
	}

	/** Equal when both hold the same keys, whatever the order. */
	friend bool LegacyCompareEqual(const TSet& A, const TSet& B) { return A.Num() == B.Num() && A.Includes(B); }

	// Iteration

	/** Iterator over the elements; RemoveCurrent removes the element it points at and stays valid. */
	template <bool bConst>
	class TBaseIterator
	{
	public:
		using SetType = std::conditional_t<bConst, const TSet, TSet>;
		using ItElementType = std::conditional_t<bConst, const ElementType, ElementType>;

		explicit TBaseIterator(SetType& InSet, int32 StartIndex = 0)
			: Set(&InSet)
			, Index(StartIndex)
		{
			SkipFree();
		}

		TBaseIterator& operator++()
		{
			++Index;
			SkipFree();
			return *this;
		}
		explicit operator bool() const { return Index < Set->Slots.Num(); }
		bool operator!() const { return !static_cast<bool>(*this); }
		ItElementType& operator*() const { return Set->Slots[Index].Get(); }
		ItElementType* operator->() const { return &Set->Slots[Index].Get(); }
		FSetElementId GetId() const { return FSetElementId::FromInteger(Index); }
		bool operator==(const TBaseIterator& Other) const { return Set == Other.Set && Index == Other.Index; }
		bool operator!=(const TBaseIterator& Other) const { return !(*this == Other); }

		/** Removes the current element; the next increment moves to the following one. */
		void RemoveCurrent() requires(!bConst) { Set->RemoveIndex(Index); }

	protected:
		void SkipFree()
		{
			while (Index < Set->Slots.Num() && !Set->Slots[Index].bAllocated)
			{
				++Index;
			}
		}

		SetType* Set;
		int32 Index;
	};

	using TIterator = TBaseIterator<false>;
	using TConstIterator = TBaseIterator<true>;

	/** Range-for iterator: fails if the set gains or loses elements while the loop runs. */
	template <bool bConst>
	class TRangedForIterator : public TBaseIterator<bConst>
	{
		using Super = TBaseIterator<bConst>;

	public:
		TRangedForIterator(typename Super::SetType& InSet, int32 StartIndex)
			: Super(InSet, StartIndex)
			, InitialNum(InSet.Num())
		{
		}
		bool operator!=(const TRangedForIterator& Other) const
		{
			if (this->Set->Num() != InitialNum)
			{
				UE::Core::Private::OnContainerChangedDuringIteration(__FILE__, __LINE__);
			}
			return this->Index != Other.Index;
		}

	private:
		int32 InitialNum;
	};

	/** Iterator over the elements whose key matches; RemoveCurrent is allowed. */
	template <bool bConst>
	class TBaseKeyIterator
	{
		using SetType = std::conditional_t<bConst, const TSet, TSet>;
		using ItElementType = std::conditional_t<bConst, const ElementType, ElementType>;

	public:
		TBaseKeyIterator(SetType& InSet, KeyInitType InKey)
			: Set(&InSet)
			, Key(InKey)
			, Index(INDEX_NONE)
			, NextIndex(InSet.Buckets.Num() ? InSet.Buckets[InSet.BucketFor(KeyFuncs::GetKeyHash(InKey))] : INDEX_NONE)
		{
			++(*this);
		}

		TBaseKeyIterator& operator++()
		{
			Index = NextIndex;
			while (Index != INDEX_NONE)
			{
				// Read the link now: the caller may remove the current element before the next step.
				NextIndex = Set->Slots[Index].HashNextId;
				if (KeyFuncs::Matches(KeyFuncs::GetSetKey(Set->Slots[Index].Get()), Key))
				{
					break;
				}
				Index = NextIndex;
			}
			return *this;
		}
		explicit operator bool() const { return Index != INDEX_NONE; }
		ItElementType& operator*() const { return Set->Slots[Index].Get(); }
		ItElementType* operator->() const { return &Set->Slots[Index].Get(); }
		FSetElementId GetId() const { return FSetElementId::FromInteger(Index); }
		void RemoveCurrent() requires(!bConst) { Set->RemoveIndex(Index); }

	private:
		SetType* Set;
		typename KeyFuncs::KeyType Key;
		int32 Index;
		int32 NextIndex;
	};

	using TKeyIterator = TBaseKeyIterator<false>;
	using TConstKeyIterator = TBaseKeyIterator<true>;

	TIterator CreateIterator() { return TIterator(*this); }
	TConstIterator CreateConstIterator() const { return TConstIterator(*this); }

	TRangedForIterator<false> begin() { return TRangedForIterator<false>(*this, 0); }
	TRangedForIterator<false> end() { return TRangedForIterator<false>(*this, Slots.Num()); }
	TRangedForIterator<true> begin() const { return TRangedForIterator<true>(*this, 0); }
	TRangedForIterator<true> end() const { return TRangedForIterator<true>(*this, Slots.Num()); }

private:
	void CheckId(FSetElementId Id) const
	{
		if (UNLIKELY(!IsValidId(Id)))
		{
			UE::Core::Private::OnInvalidIndex(Id.AsInteger(), Slots.Num(), __FILE__, __LINE__);
		}
	}

	int32 BucketFor(uint32 KeyHash) const
	{
		return static_cast<int32>(KeyHash & static_cast<uint32>(Buckets.Num() - 1));
	}

	template <typename ComparableKey>
	int32 FindIndex(const ComparableKey& Key, uint32 KeyHash) const
	{
		if (Buckets.Num() == 0)
		{
			return INDEX_NONE;
		}
		for (int32 Index = Buckets[BucketFor(KeyHash)]; Index != INDEX_NONE; Index = Slots[Index].HashNextId)
		{
			if (KeyFuncs::Matches(KeyFuncs::GetSetKey(Slots[Index].Get()), Key))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	FSetElementId AddElement(ElementType&& NewElement, uint32 KeyHash, bool* bIsAlreadyInSetPtr)
	{
		if (!KeyFuncs::bAllowDuplicateKeys)
		{
			const int32 Existing = FindIndex(KeyFuncs::GetSetKey(NewElement), KeyHash);
			if (bIsAlreadyInSetPtr)
			{
				*bIsAlreadyInSetPtr = Existing != INDEX_NONE;
			}
			if (Existing != INDEX_NONE)
			{
				// The new element replaces the old one in the same slot, so the id and order are kept.
				ElementType& Old = Slots[Existing].Get();
				Old.~ElementType();
				::new (static_cast<void*>(&Old)) ElementType(MoveTemp(NewElement));
				return FSetElementId::FromInteger(Existing);
			}
		}
		else if (bIsAlreadyInSetPtr)
		{
			*bIsAlreadyInSetPtr = false;
		}

		int32 Index;
		if (FirstFree != INDEX_NONE)
		{
			Index = FirstFree;
			FirstFree = Slots[Index].NextFree;
			--NumFree;
		}
		else
		{
			Index = Slots.Emplace();
		}
		FSlot& Slot = Slots[Index];
		::new (static_cast<void*>(Slot.Storage)) ElementType(MoveTemp(NewElement));
		Slot.bAllocated = true;
		Slot.NextFree = INDEX_NONE;

		if (Num() > Buckets.Num())
		{
			Rehash(Num());
		}
		else
		{
			LinkIntoBucket(Index, KeyHash);
		}
		return FSetElementId::FromInteger(Index);
	}

	void LinkIntoBucket(int32 Index, uint32 KeyHash)
	{
		int32& Head = Buckets[BucketFor(KeyHash)];
		Slots[Index].HashNextId = Head;
		Head = Index;
	}

	void RemoveIndex(int32 Index)
	{
		FSlot& Slot = Slots[Index];
		const uint32 KeyHash = KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(Slot.Get()));
		for (int32* Link = &Buckets[BucketFor(KeyHash)]; *Link != INDEX_NONE; Link = &Slots[*Link].HashNextId)
		{
			if (*Link == Index)
			{
				*Link = Slot.HashNextId;
				break;
			}
		}
		Slot.Get().~ElementType();
		Slot.bAllocated = false;
		Slot.HashNextId = INDEX_NONE;
		// Freed slots are reused last-in first-out, so the next addition takes this one.
		Slot.NextFree = FirstFree;
		FirstFree = Index;
		++NumFree;
	}

	void RebuildFreeList()
	{
		FirstFree = INDEX_NONE;
		NumFree = 0;
		for (int32 Index = 0; Index < Slots.Num(); ++Index)
		{
			if (!Slots[Index].bAllocated)
			{
				Slots[Index].NextFree = FirstFree;
				FirstFree = Index;
				++NumFree;
			}
		}
	}

	/** Rebuilds the buckets, sized to the next power of two that holds NumElements. */
	void Rehash(int32 NumElements)
	{
		int32 NumBuckets = 8;
		while (NumBuckets < NumElements)
		{
			NumBuckets *= 2;
		}
		Buckets.Reset();
		Buckets.Init(INDEX_NONE, NumBuckets);
		for (int32 Index = 0; Index < Slots.Num(); ++Index)
		{
			if (Slots[Index].bAllocated)
			{
				LinkIntoBucket(Index, KeyFuncs::GetKeyHash(KeyFuncs::GetSetKey(Slots[Index].Get())));
			}
		}
	}

	TArray<FSlot> Slots;
	TArray<int32> Buckets;
	int32 FirstFree = INDEX_NONE;
	int32 NumFree = 0;
};

template <typename ElementType, typename KeyFuncs, typename Allocator>
struct TIsZeroConstructType<TSet<ElementType, KeyFuncs, Allocator>>
{
	static constexpr bool Value = true;
};
