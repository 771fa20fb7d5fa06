// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ContainerHelpers.h"
#include "Containers/ContainersFwd.h"
#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"

#include <initializer_list>
#include <type_traits>

/** A non-owning view of a contiguous run of elements: a pointer and a count. */
template <typename InElementType, typename InSizeType>
class TArrayView
{
public:
	using ElementType = InElementType;
	using SizeType = InSizeType;

	TArrayView() = default;

	TArrayView(ElementType* InData, SizeType InCount)
		: DataPtr(InData)
		, ArrayNum(InCount)
	{
		check(ArrayNum >= 0);
	}

	/** Views an array; the view must not outlive it or any reallocation of it. */
	template <typename OtherElementType, typename OtherAllocator>
	requires(std::is_convertible_v<OtherElementType (*)[], ElementType (*)[]>)
		TArrayView(TArray<OtherElementType, OtherAllocator>& Other)
		: DataPtr(Other.GetData())
		, ArrayNum(static_cast<SizeType>(Other.Num()))
	{
	}

	template <typename OtherElementType, typename OtherAllocator>
	requires(std::is_convertible_v<const OtherElementType (*)[], ElementType (*)[]>)
		TArrayView(const TArray<OtherElementType, OtherAllocator>& Other)
		: DataPtr(Other.GetData())
		, ArrayNum(static_cast<SizeType>(Other.Num()))
	{
	}

	template <typename OtherElementType>
	requires(std::is_convertible_v<OtherElementType (*)[], ElementType (*)[]> &&
			 !std::is_same_v<OtherElementType, ElementType>)
		TArrayView(const TArrayView<OtherElementType, SizeType>& Other)
		: DataPtr(Other.GetData())
		, ArrayNum(Other.Num())
	{
	}

	template <size_t N>
	TArrayView(ElementType (&Array)[N])
		: DataPtr(Array)
		, ArrayNum(static_cast<SizeType>(N))
	{
	}

	/** Views an initializer list; only valid within the full expression that created the list. */
	TArrayView(std::initializer_list<std::remove_const_t<ElementType>> List) requires(std::is_const_v<ElementType>)
		: DataPtr(List.begin())
		, ArrayNum(static_cast<SizeType>(List.size()))
	{
	}

	ElementType* GetData() const { return DataPtr; }
	SizeType Num() const { return ArrayNum; }
	bool IsEmpty() const { return ArrayNum == 0; }
	bool IsValidIndex(SizeType Index) const { return Index >= 0 && Index < ArrayNum; }
	static constexpr size_t GetTypeSize() { return sizeof(ElementType); }

	ElementType& operator[](SizeType Index) const
	{
		RangeCheck(Index);
		return DataPtr[Index];
	}
	ElementType& Last(SizeType IndexFromTheEnd = 0) const
	{
		RangeCheck(ArrayNum - IndexFromTheEnd - 1);
		return DataPtr[ArrayNum - IndexFromTheEnd - 1];
	}

	void RangeCheck(SizeType Index) const
	{
		if (UNLIKELY(Index < 0 || Index >= ArrayNum))
		{
			UE::Core::Private::OnInvalidIndex(Index, ArrayNum, __FILE__, __LINE__);
		}
	}

	/** A view of Count elements starting at Index. */
	TArrayView Slice(SizeType Index, SizeType Count) const
	{
		check(Index >= 0 && Count >= 0 && Index + Count <= ArrayNum);
		return TArrayView(DataPtr + Index, Count);
	}
	TArrayView Left(SizeType Count) const { return Slice(0, Count < ArrayNum ? (Count < 0 ? 0 : Count) : ArrayNum); }
	TArrayView Right(SizeType Count) const
	{
		const SizeType Clamped = Count < ArrayNum ? (Count < 0 ? 0 : Count) : ArrayNum;
		return Slice(ArrayNum - Clamped, Clamped);
	}
	TArrayView Mid(SizeType Index, SizeType Count = MAX_int32) const
	{
		const SizeType Start = Index < 0 ? 0 : (Index > ArrayNum ? ArrayNum : Index);
		const SizeType Available = ArrayNum - Start;
		return Slice(Start, Count < 0 ? 0 : (Count > Available ? Available : Count));
	}

	template <typename KeyType>
	SizeType Find(const KeyType& Item) const
	{
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (DataPtr[Index] == Item)
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}
	template <typename KeyType>
	bool Contains(const KeyType& Item) const
	{
		return Find(Item) != INDEX_NONE;
	}
	template <typename PredicateType>
	ElementType* FindByPredicate(PredicateType Pred) const
	{
		for (SizeType Index = 0; Index < ArrayNum; ++Index)
		{
			if (Pred(DataPtr[Index]))
			{
				return DataPtr + Index;
			}
		}
		return nullptr;
	}
	template <typename PredicateType>
	bool ContainsByPredicate(PredicateType Pred) const
	{
		return FindByPredicate(Pred) != nullptr;
	}

	ElementType* begin() const { return DataPtr; }
	ElementType* end() const { return DataPtr + ArrayNum; }

private:
	ElementType* DataPtr = nullptr;
	SizeType ArrayNum = 0;
};

template <typename ElementType, typename SizeType>
struct TIsContiguousContainer<TArrayView<ElementType, SizeType>>
{
	static constexpr bool Value = true;
};

template <typename ElementType, typename SizeType>
ElementType* GetData(TArrayView<ElementType, SizeType> View)
{
	return View.GetData();
}
template <typename ElementType, typename SizeType>
SizeType GetNum(TArrayView<ElementType, SizeType> View)
{
	return View.Num();
}

template <typename ElementType>
TArrayView<ElementType> MakeArrayView(ElementType* Pointer, int32 Size)
{
	return TArrayView<ElementType>(Pointer, Size);
}
template <typename ElementType, typename Allocator>
TArrayView<ElementType> MakeArrayView(TArray<ElementType, Allocator>& Array)
{
	return TArrayView<ElementType>(Array);
}
template <typename ElementType, typename Allocator>
TArrayView<const ElementType> MakeArrayView(const TArray<ElementType, Allocator>& Array)
{
	return TArrayView<const ElementType>(Array);
}
template <typename ElementType, size_t N>
TArrayView<ElementType> MakeArrayView(ElementType (&Array)[N])
{
	return TArrayView<ElementType>(Array);
}
template <typename ElementType>
TArrayView<const ElementType> MakeArrayView(std::initializer_list<ElementType> List)
{
	return TArrayView<const ElementType>(List.begin(), static_cast<int32>(List.size()));
}
