// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ContainersFwd.h"
#include "Containers/Set.h"
#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/Tuple.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"
#include "Templates/UnrealTypeTraits.h"

#include <initializer_list>

/** Key functions for maps: the key of a pair is its Key member. */
template <typename KeyType, typename ValueType, bool bInAllowDuplicateKeys>
struct TDefaultMapKeyFuncs : BaseKeyFuncs<TPair<KeyType, ValueType>, KeyType, bInAllowDuplicateKeys>
{
	typedef typename TCallTraits<KeyType>::ParamType KeyInitType;
	typedef const TPair<KeyType, ValueType>& ElementInitType;

	static FORCEINLINE KeyInitType GetSetKey(ElementInitType Element) { return Element.Key; }
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

template <typename KeyType, typename ValueType, bool bInAllowDuplicateKeys>
struct TDefaultMapHashableKeyFuncs : TDefaultMapKeyFuncs<KeyType, ValueType, bInAllowDuplicateKeys>
{
};

/** Shared part of TMap and TMultiMap: a set of key-value pairs found by the key. */
template <typename KeyType, typename ValueType, typename SetAllocator, typename KeyFuncs>
class TMapBase
{
public:
	typedef TPair<KeyType, ValueType> ElementType;
	typedef typename KeyFuncs::KeyInitType KeyConstPointerType;
	typedef typename KeyFuncs::KeyInitType KeyInitType;
	typedef typename TCallTraits<ValueType>::ParamType ValueInitType;
	typedef TSet<ElementType, KeyFuncs, SetAllocator> ElementSetType;

	int32 Num() const { return Pairs.Num(); }
	bool IsEmpty() const { return Pairs.IsEmpty(); }
	void Empty(int32 ExpectedNumElements = 0) { Pairs.Empty(ExpectedNumElements); }
	void Reset() { Pairs.Reset(); }
	void Shrink() { Pairs.Shrink(); }
	void Compact() { Pairs.Compact(); }
	void CompactStable() { Pairs.CompactStable(); }
	void Reserve(int32 Number) { Pairs.Reserve(Number); }
	SIZE_T GetAllocatedSize() const { return Pairs.GetAllocatedSize(); }

	/** Pointer to the value of the (first) pair with this key, or null. */
	ValueType* Find(KeyConstPointerType Key)
	{
		ElementType* Pair = Pairs.Find(Key);
		return Pair ? &Pair->Value : nullptr;
	}
	const ValueType* Find(KeyConstPointerType Key) const { return const_cast<TMapBase*>(this)->Find(Key); }
	template <typename ComparableKey>
	ValueType* FindByHash(uint32 KeyHash, const ComparableKey& Key)
	{
		ElementType* Pair = Pairs.FindByHash(KeyHash, Key);
		return Pair ? &Pair->Value : nullptr;
	}

	/** A copy of the value for this key, or a default-constructed value when absent. */
	ValueType FindRef(KeyConstPointerType Key) const
	{
		const ElementType* Pair = Pairs.Find(Key);
		return Pair ? Pair->Value : ValueType();
	}
	ValueType FindRef(KeyConstPointerType Key, ValueType DefaultValue) const
	{
		const ElementType* Pair = Pairs.Find(Key);
		return Pair ? Pair->Value : DefaultValue;
	}

	/** Pointer to the key of the first pair whose value equals Value (a linear search), or null. */
	const KeyType* FindKey(ValueInitType Value) const
	{
		for (const ElementType& Pair : Pairs)
		{
			if (Pair.Value == Value)
			{
				return &Pair.Key;
			}
		}
		return nullptr;
	}

	bool Contains(KeyConstPointerType Key) const { return Pairs.Contains(Key); }

	/** Fills OutKeys with the distinct keys; returns how many there are. */
	template <typename Allocator>
	int32 GetKeys(TArray<KeyType, Allocator>& OutKeys) const
	{
		OutKeys.Reset();
		TSet<KeyType> Seen;
		for (const ElementType& Pair : Pairs)
		{
			bool bAlreadyInSet = false;
			Seen.Add(Pair.Key, &bAlreadyInSet);
			if (!bAlreadyInSet)
			{
				OutKeys.Add(Pair.Key);
			}
		}
		return OutKeys.Num();
	}
	int32 GetKeys(TSet<KeyType>& OutKeys) const
	{
		OutKeys.Reset();
		for (const ElementType& Pair : Pairs)
		{
			OutKeys.Add(Pair.Key);
		}
		return OutKeys.Num();
	}

	/** Replaces the array's contents with every key, in iteration order. */
	template <typename Allocator>
	void GenerateKeyArray(TArray<KeyType, Allocator>& OutArray) const
	{
		OutArray.Empty(Pairs.Num());
		for (const ElementType& Pair : Pairs)
		{
			OutArray.Add(Pair.Key);
		}
	}

	/** Replaces the array's contents with every value, in iteration order. */
	template <typename Allocator>
	void GenerateValueArray(TArray<ValueType, Allocator>& OutArray) const
	{
		OutArray.Empty(Pairs.Num());
		for (const ElementType& Pair : Pairs)
		{
			OutArray.Add(Pair.Value);
		}
	}

	/** Sorts by key; iteration follows the sorted order afterwards. */
	template <typename PredicateType>
	void KeySort(const PredicateType& Predicate)
	{
		Pairs.Sort(
			[&Predicate](const ElementType& A, const ElementType& B)
			{
				return Predicate(A.Key, B.Key);
			});
	}
	template <typename PredicateType>
	void KeyStableSort(const PredicateType& Predicate)
	{
		Pairs.StableSort(
			[&Predicate](const ElementType& A, const ElementType& B)
			{
				return Predicate(A.Key, B.Key);
			});
	}
	template <typename PredicateType>
	void ValueSort(const PredicateType& Predicate)
	{
		Pairs.Sort(
			[&Predicate](const ElementType& A, const ElementType& B)
			{
				return Predicate(A.Value, B.Value);
			});
	}
	template <typename PredicateType>
	void ValueStableSort(const PredicateType& Predicate)
	{
		Pairs.StableSort(
			[&Predicate](const ElementType& A, const ElementType& B)
			{
				return Predicate(A.Value, B.Value);
			});
	}

	/** True when both maps hold the same pairs, whatever the order. */
	bool OrderIndependentCompareEqual(const TMapBase& Other) const
	{
		if (Num() != Other.Num())
		{
			return false;
		}
		for (const ElementType& Pair : Pairs)
		{
			const ValueType* OtherValue = Other.Find(Pair.Key);
			if (OtherValue == nullptr || !(*OtherValue == Pair.Value))
			{
				return false;
			}
		}
		return true;
	}

	/** Iterator over the pairs, with Key(), Value() and RemoveCurrent(). */
	template <bool bConst>
	class TBaseIterator
	{
		using SetIteratorType =
			std::conditional_t<bConst, typename ElementSetType::TConstIterator, typename ElementSetType::TIterator>;
		using ItElementType = std::conditional_t<bConst, const ElementType, ElementType>;
		using ItKeyType = std::conditional_t<bConst, const KeyType, KeyType>;
		using ItValueType = std::conditional_t<bConst, const ValueType, ValueType>;

	public:
		explicit TBaseIterator(const SetIteratorType& InIt)
			: It(InIt)
		{
		}
		TBaseIterator& operator++()
		{
			++It;
			return *this;
		}
		explicit operator bool() const { return static_cast<bool>(It); }
		bool operator!() const { return !static_cast<bool>(It); }
		ItElementType& operator*() const { return *It; }
		ItElementType* operator->() const { return &*It; }
		ItKeyType& Key() const { return It->Key; }
		ItValueType& Value() const { return It->Value; }
		FSetElementId GetId() const { return It.GetId(); }
		void RemoveCurrent() requires(!bConst) { It.RemoveCurrent(); }

	private:
		SetIteratorType It;
	};

	using TIterator = TBaseIterator<false>;
	using TConstIterator = TBaseIterator<true>;

	TIterator CreateIterator() { return TIterator(Pairs.CreateIterator()); }
	TConstIterator CreateConstIterator() const { return TConstIterator(Pairs.CreateConstIterator()); }

	auto begin() { return Pairs.begin(); }
	auto end() { return Pairs.end(); }
	auto begin() const { return Pairs.begin(); }
	auto end() const { return Pairs.end(); }

protected:
	TMapBase() = default;

	template <typename InitKeyType, typename InitValueType>
	ValueType& EmplaceImpl(InitKeyType&& InKey, InitValueType&& InValue)
	{
		const FSetElementId Id =
			Pairs.Emplace(ElementType(Forward<InitKeyType>(InKey), Forward<InitValueType>(InValue)));
		return Pairs[Id].Value;
	}

	ElementSetType Pairs;
};

/** Maps unique keys to values. Adding an existing key replaces its value; order follows TSet's rules. */
template <typename InKeyType, typename InValueType, typename SetAllocator, typename KeyFuncs>
class TMap : public TMapBase<InKeyType, InValueType, SetAllocator, KeyFuncs>
{
	static_assert(
		!KeyFuncs::bAllowDuplicateKeys, "TMap cannot be instantiated with a KeyFuncs which allows duplicate keys");
	typedef TMapBase<InKeyType, InValueType, SetAllocator, KeyFuncs> Super;

public:
	typedef InKeyType KeyType;
	typedef InValueType ValueType;
	typedef typename Super::ElementType ElementType;
	typedef typename Super::KeyConstPointerType KeyConstPointerType;
	typedef typename Super::KeyInitType KeyInitType;

	TMap() = default;
	TMap(const TMap&) = default;
	TMap(TMap&&) = default;
	TMap& operator=(const TMap&) = default;
	TMap& operator=(TMap&&) = default;

	TMap(std::initializer_list<TPair<KeyType, ValueType>> InitList)
	{
		this->Reserve(static_cast<int32>(InitList.size()));
		for (const TPair<KeyType, ValueType>& Element : InitList)
		{
			Add(Element.Key, Element.Value);
		}
	}

	/** Sets the value for a key, replacing any existing value; returns the stored value. */
	ValueType& Add(const KeyType& InKey, const ValueType& InValue) { return this->EmplaceImpl(InKey, InValue); }
	ValueType& Add(const KeyType& InKey, ValueType&& InValue)
	{
		return this->EmplaceImpl(InKey, MoveTempIfPossible(InValue));
	}
	ValueType& Add(KeyType&& InKey, const ValueType& InValue)
	{
		return this->EmplaceImpl(MoveTempIfPossible(InKey), InValue);
	}
	ValueType& Add(KeyType&& InKey, ValueType&& InValue)
	{
		return this->EmplaceImpl(MoveTempIfPossible(InKey), MoveTempIfPossible(InValue));
	}
	/** Sets a default-constructed value for the key. */
	ValueType& Add(const KeyType& InKey) { return this->EmplaceImpl(InKey, ValueType()); }
	ValueType& Add(KeyType&& InKey) { return this->EmplaceImpl(MoveTempIfPossible(InKey), ValueType()); }
	ValueType& Add(const TPair<KeyType, ValueType>& InPair) { return this->EmplaceImpl(InPair.Key, InPair.Value); }
	ValueType& Add(TPair<KeyType, ValueType>&& InPair)
	{
		return this->EmplaceImpl(MoveTempIfPossible(InPair.Key), MoveTempIfPossible(InPair.Value));
	}

	template <typename InitKeyType = KeyType, typename InitValueType = ValueType>
	ValueType& Emplace(InitKeyType&& InKey, InitValueType&& InValue)
	{
		return this->EmplaceImpl(Forward<InitKeyType>(InKey), Forward<InitValueType>(InValue));
	}
	template <typename InitKeyType = KeyType>
	ValueType& Emplace(InitKeyType&& InKey)
	{
		return this->EmplaceImpl(Forward<InitKeyType>(InKey), ValueType());
	}

	/** The value for the key, adding a default-constructed one first if the key is missing. */
	ValueType& FindOrAdd(const KeyType& Key)
	{
		if (ValueType* Found = this->Find(Key))
		{
			return *Found;
		}
		return Add(Key);
	}
	ValueType& FindOrAdd(KeyType&& Key)
	{
		if (ValueType* Found = this->Find(Key))
		{
			return *Found;
		}
		return Add(MoveTempIfPossible(Key));
	}
	template <typename InitValueType>
	ValueType& FindOrAdd(const KeyType& Key, InitValueType&& Value)
	{
		if (ValueType* Found = this->Find(Key))
		{
			return *Found;
		}
		return this->EmplaceImpl(Key, Forward<InitValueType>(Value));
	}

	/** Reference to the value for the key; the key must be present. */
	ValueType& FindChecked(KeyConstPointerType Key)
	{
		ValueType* Found = this->Find(Key);
		check(Found != nullptr);
		return *Found;
	}
	const ValueType& FindChecked(KeyConstPointerType Key) const { return const_cast<TMap*>(this)->FindChecked(Key); }

	ValueType& operator[](KeyConstPointerType Key) { return FindChecked(Key); }
	const ValueType& operator[](KeyConstPointerType Key) const { return FindChecked(Key); }

	/** Removes the pair with this key; returns how many were removed (0 or 1). */
	int32 Remove(KeyConstPointerType Key) { return this->Pairs.Remove(Key); }

	/** Removes the pair with this key, moving its value out; false if the key was absent. */
	bool RemoveAndCopyValue(KeyInitType Key, ValueType& OutRemovedValue)
	{
		const FSetElementId Id = this->Pairs.FindId(Key);
		if (!Id.IsValidId())
		{
			return false;
		}
		OutRemovedValue = MoveTempIfPossible(this->Pairs[Id].Value);
		this->Pairs.Remove(Id);
		return true;
	}

	/** Removes the pair with this key and returns its value; the key must be present. */
	ValueType FindAndRemoveChecked(KeyConstPointerType Key)
	{
		const FSetElementId Id = this->Pairs.FindId(Key);
		check(Id.IsValidId());
		ValueType Result = MoveTempIfPossible(this->Pairs[Id].Value);
		this->Pairs.Remove(Id);
		return Result;
	}

	/** Adds every pair of Other, replacing values of keys already present. */
	template <typename OtherSetAllocator>
	void Append(const TMap<KeyType, ValueType, OtherSetAllocator, KeyFuncs>& Other)
	{
		this->Reserve(this->Num() + Other.Num());
		for (const ElementType& Pair : Other)
		{
			Add(Pair.Key, Pair.Value);
		}
	}
	template <typename OtherSetAllocator>
	void Append(TMap<KeyType, ValueType, OtherSetAllocator, KeyFuncs>&& Other)
	{
		this->Reserve(this->Num() + Other.Num());
		for (ElementType& Pair : Other)
		{
			Add(MoveTempIfPossible(Pair.Key), MoveTempIfPossible(Pair.Value));
		}
		Other.Reset();
	}

	/** A new map with the pairs matching the predicate. */
	template <typename PredicateType>
	TMap FilterByPredicate(PredicateType Pred) const
	{
		TMap Result;
		for (const ElementType& Pair : *this)
		{
			if (Pred(Pair))
			{
				Result.Add(Pair.Key, Pair.Value);
			}
		}
		return Result;
	}

	/** Maps compare equal when they hold the same pairs in the same iteration order. */
	friend bool LegacyCompareEqual(const TMap& A, const TMap& B) { return A.Pairs.Array() == B.Pairs.Array(); }
};

/** Maps keys to any number of values. */
template <typename KeyType, typename ValueType, typename SetAllocator, typename KeyFuncs>
class TMultiMap : public TMapBase<KeyType, ValueType, SetAllocator, KeyFuncs>
{
	static_assert(KeyFuncs::bAllowDuplicateKeys,
		"TMultiMap cannot be instantiated with a KeyFuncs which disallows duplicate keys");
	typedef TMapBase<KeyType, ValueType, SetAllocator, KeyFuncs> Super;

public:
	typedef typename Super::ElementType ElementType;
	typedef typename Super::KeyConstPointerType KeyConstPointerType;
	typedef typename Super::KeyInitType KeyInitType;
	typedef typename Super::ValueInitType ValueInitType;

	/** Adds a pair; existing pairs with the same key stay. */
	ValueType& Add(const KeyType& InKey, const ValueType& InValue) { return this->EmplaceImpl(InKey, InValue); }
	ValueType& Add(const KeyType& InKey, ValueType&& InValue)
	{
		return this->EmplaceImpl(InKey, MoveTempIfPossible(InValue));
	}
	ValueType& Add(KeyType&& InKey, const ValueType& InValue)
	{
		return this->EmplaceImpl(MoveTempIfPossible(InKey), InValue);
	}
	ValueType& Add(KeyType&& InKey, ValueType&& InValue)
	{
		return this->EmplaceImpl(MoveTempIfPossible(InKey), MoveTempIfPossible(InValue));
	}
	template <typename InitKeyType, typename InitValueType>
	ValueType& Emplace(InitKeyType&& InKey, InitValueType&& InValue)
	{
		return this->EmplaceImpl(Forward<InitKeyType>(InKey), Forward<InitValueType>(InValue));
	}

	/** Adds the pair unless this exact key-value pair exists; returns the stored value. */
	ValueType& AddUnique(const KeyType& InKey, const ValueType& InValue)
	{
		if (ValueType* Found = FindPair(InKey, InValue))
		{
			return *Found;
		}
		return Add(InKey, InValue);
	}

	/** Collects the values for the key; with bMaintainOrder they come in the order they were added. */
	template <typename Allocator>
	void MultiFind(KeyInitType Key, TArray<ValueType, Allocator>& OutValues, bool bMaintainOrder = false) const
	{
		TArray<const ElementType*> Found;
		for (typename Super::ElementSetType::TConstKeyIterator It(this->Pairs, Key); It; ++It)
		{
			Found.Add(&*It);
		}
		if (bMaintainOrder)
		{
			Found.Sort(
				[](const ElementType& A, const ElementType& B)
				{
					return &A < &B;
				});
		}
		for (const ElementType* Pair : Found)
		{
			OutValues.Add(Pair->Value);
		}
	}

	/** Collects pointers to the values for the key. */
	template <typename Allocator>
	void MultiFindPointer(KeyInitType Key, TArray<ValueType*, Allocator>& OutValues, bool bMaintainOrder = false)
	{
		TArray<ElementType*> Found;
		for (typename Super::ElementSetType::TKeyIterator It(this->Pairs, Key); It; ++It)
		{
			Found.Add(&*It);
		}
		if (bMaintainOrder)
		{
			Found.Sort(
				[](const ElementType& A, const ElementType& B)
				{
					return &A < &B;
				});
		}
		for (ElementType* Pair : Found)
		{
			OutValues.Add(&Pair->Value);
		}
	}

	/** Pointer to the value of the pair with this key and value, or null. */
	ValueType* FindPair(KeyInitType Key, ValueInitType Value)
	{
		for (typename Super::ElementSetType::TKeyIterator It(this->Pairs, Key); It; ++It)
		{
			if (It->Value == Value)
			{
				return &It->Value;
			}
		}
		return nullptr;
	}

	/** Number of values stored for the key. */
	int32 Num(KeyInitType Key) const
	{
		int32 Count = 0;
		for (typename Super::ElementSetType::TConstKeyIterator It(this->Pairs, Key); It; ++It)
		{
			++Count;
		}
		return Count;
	}
	int32 Num() const { return Super::Num(); }

	/** Removes every pair with the key; returns how many were removed. */
	int32 Remove(KeyInitType Key) { return this->Pairs.Remove(Key); }

	/** Removes every pair with this key and value; returns how many were removed. */
	int32 Remove(KeyInitType Key, ValueInitType Value)
	{
		int32 NumRemoved = 0;
		for (typename Super::ElementSetType::TKeyIterator It(this->Pairs, Key); It; ++It)
		{
			if (It->Value == Value)
			{
				It.RemoveCurrent();
				++NumRemoved;
			}
		}
		return NumRemoved;
	}

	/** Removes one pair with this key and value; returns 1 or 0. */
	int32 RemoveSingle(KeyInitType Key, ValueInitType Value)
	{
		for (typename Super::ElementSetType::TKeyIterator It(this->Pairs, Key); It; ++It)
		{
			if (It->Value == Value)
			{
				It.RemoveCurrent();
				return 1;
			}
		}
		return 0;
	}
};

template <typename KeyType, typename ValueType, typename SetAllocator, typename KeyFuncs>
struct TIsZeroConstructType<TMap<KeyType, ValueType, SetAllocator, KeyFuncs>>
{
	static constexpr bool Value = true;
};
