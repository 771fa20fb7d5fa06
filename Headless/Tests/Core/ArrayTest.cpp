// Copyright Orvane. All Rights Reserved.

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "Containers/UnrealString.h"
#include "EngineTestPrinters.h"
#include "Templates/Greater.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
	/** Counts live instances so tests can prove every constructed element is destroyed exactly once. */
	struct FCounted
	{
		static inline int32 Live = 0;
		int32 Value = 0;

		FCounted() { ++Live; }
		FCounted(int32 InValue)
			: Value(InValue)
		{
			++Live;
		}
		FCounted(const FCounted& Other)
			: Value(Other.Value)
		{
			++Live;
		}
		FCounted(FCounted&& Other)
			: Value(Other.Value)
		{
			Other.Value = -1;
			++Live;
		}
		FCounted& operator=(const FCounted&) = default;
		FCounted& operator=(FCounted&&) = default;
		~FCounted() { --Live; }
		bool operator==(const FCounted& Other) const { return Value == Other.Value; }
		bool operator<(const FCounted& Other) const { return Value < Other.Value; }
	};

	struct FKeyed
	{
		int32 Key;
		int32 Order;
	};

	TArray<int32> Values(std::initializer_list<int32> List)
	{
		return TArray<int32>(List);
	}

	TArray<int32> ValuesOf(const TArray<FCounted>& Array)
	{
		TArray<int32> Result;
		for (const FCounted& Element : Array)
		{
			Result.Add(Element.Value);
		}
		return Result;
	}

	class ArrayTest : public ::testing::Test
	{
	protected:
		void SetUp() override { FCounted::Live = 0; }
		void TearDown() override
		{
			EXPECT_EQ(FCounted::Live, 0) << "every element constructed by the test must have been destroyed";
		}
	};
} // namespace

TEST_F(ArrayTest, AddKeepsInsertionOrderAndReturnsIndices)
{
	TArray<int32> Array;
	EXPECT_TRUE(Array.IsEmpty());
	EXPECT_EQ(Array.Num(), 0);
	EXPECT_EQ(Array.Add(10), 0);
	EXPECT_EQ(Array.Add(20), 1);
	EXPECT_EQ(Array.Emplace(30), 2);
	Array.Push(40);
	EXPECT_EQ(Array.Num(), 4);
	EXPECT_FALSE(Array.IsEmpty());
	EXPECT_EQ(Array, Values({10, 20, 30, 40}));
	EXPECT_EQ(Array.Top(), 40);
	EXPECT_EQ(Array.Last(), 40);
	EXPECT_EQ(Array.Last(1), 30);
	EXPECT_EQ(Array.GetTypeSize(), 4u);
	EXPECT_TRUE(Array.IsValidIndex(3));
	EXPECT_FALSE(Array.IsValidIndex(4));
	EXPECT_FALSE(Array.IsValidIndex(-1));
	EXPECT_GE(Array.Max(), 4);
	EXPECT_EQ(Array.GetData()[2], 30);
}

TEST_F(ArrayTest, ConstructorsCopyAndMove)
{
	const int32 Raw[] = {1, 2, 3};
	TArray<int32> FromPointer(Raw, 3);
	EXPECT_EQ(FromPointer, Values({1, 2, 3}));

	TArray<int32> Copy(FromPointer);
	Copy[0] = 9;
	EXPECT_EQ(FromPointer[0], 1);
	EXPECT_EQ(Copy, Values({9, 2, 3}));

	TArray<int32> Moved(MoveTemp(Copy));
	EXPECT_EQ(Moved, Values({9, 2, 3}));
	EXPECT_EQ(Copy.Num(), 0);

	TArray<int32> Assigned;
	Assigned = Moved;
	EXPECT_EQ(Assigned, Moved);
	Assigned = {7};
	EXPECT_EQ(Assigned, Values({7}));
	EXPECT_NE(Assigned, Moved);
}

TEST_F(ArrayTest, AddUniqueReturnsExistingIndex)
{
	TArray<int32> Array = {5, 6};
	EXPECT_EQ(Array.AddUnique(6), 1);
	EXPECT_EQ(Array.AddUnique(7), 2);
	EXPECT_EQ(Array, Values({5, 6, 7}));
}

TEST_F(ArrayTest, AddDefaultedZeroedAndUninitialized)
{
	TArray<int32> Array = {1};
	EXPECT_EQ(Array.AddDefaulted(2), 1);
	EXPECT_EQ(Array, Values({1, 0, 0}));
	EXPECT_EQ(Array.AddZeroed(), 3);
	EXPECT_EQ(Array[3], 0);
	const int32 Index = Array.AddUninitialized(2);
	EXPECT_EQ(Index, 4);
	EXPECT_EQ(Array.Num(), 6);
	Array[4] = 8;
	Array[5] = 9;
	EXPECT_EQ(Array, Values({1, 0, 0, 0, 8, 9}));
}

TEST_F(ArrayTest, AddOfOwnElementSurvivesReallocation)
{
	TArray<std::string> Array;
	Array.Add("first element, long enough to live on the heap");
	Array.Shrink();
	ASSERT_EQ(Array.Max(), 1);
	Array.Add(Array[0]);
	EXPECT_EQ(Array.Num(), 2);
	EXPECT_EQ(Array[1], "first element, long enough to live on the heap");
	EXPECT_EQ(Array[0], Array[1]);
}

TEST_F(ArrayTest, InsertAndAppend)
{
	TArray<int32> Array = {1, 4};
	EXPECT_EQ(Array.Insert(2, 1), 1);
	Array.Insert({3}, 2);
	EXPECT_EQ(Array, Values({1, 2, 3, 4}));
	Array.Insert(Values({-1, 0}), 0);
	EXPECT_EQ(Array, Values({-1, 0, 1, 2, 3, 4}));
	Array.InsertDefaulted(6);
	EXPECT_EQ(Array.Last(), 0);
	Array.EmplaceAt(0, -2);
	EXPECT_EQ(Array[0], -2);

	TArray<int32> Tail = {5, 6};
	TArray<int32> Target = {1};
	Target.Append(Tail);
	Target += {7};
	const int32 More[] = {8, 9};
	Target.Append(More, 2);
	Target += Values({10});
	EXPECT_EQ(Target, Values({1, 5, 6, 7, 8, 9, 10}));

	TArray<int32> Source = {11, 12};
	Target.Append(MoveTemp(Source));
	EXPECT_EQ(Source.Num(), 0);
	EXPECT_EQ(Target.Num(), 9);
	EXPECT_EQ(Target.Last(), 12);
}

TEST_F(ArrayTest, RemoveFamily)
{
	TArray<int32> Array = {1, 2, 3, 2, 4, 2};
	EXPECT_EQ(Array.Remove(2), 3);
	EXPECT_EQ(Array, Values({1, 3, 4}));
	EXPECT_EQ(Array.Remove(42), 0);

	Array = {1, 2, 3, 2};
	EXPECT_EQ(Array.RemoveSingle(2), 1);
	EXPECT_EQ(Array, Values({1, 3, 2}));
	EXPECT_EQ(Array.RemoveSingle(9), 0);

	Array = {0, 1, 2, 3, 4, 5};
	Array.RemoveAt(1);
	EXPECT_EQ(Array, Values({0, 2, 3, 4, 5}));
	Array.RemoveAt(1, 2);
	EXPECT_EQ(Array, Values({0, 4, 5}));
	Array.RemoveAt(0, 1, EAllowShrinking::No);
	EXPECT_EQ(Array, Values({4, 5}));

	Array = {0, 1, 2, 3, 4};
	Array.RemoveAtSwap(1);
	EXPECT_EQ(Array, Values({0, 4, 2, 3}));
	Array = {0, 1, 2, 3, 4, 5};
	Array.RemoveAtSwap(0, 2);
	EXPECT_EQ(Array, Values({4, 5, 2, 3}));

	Array = {1, 2, 3, 4, 5, 6};
	EXPECT_EQ(Array.RemoveAll(
				  [](int32 Value)
				  {
					  return Value % 2 == 0;
				  }),
		3);
	EXPECT_EQ(Array, Values({1, 3, 5}));

	Array = {7, 1, 7, 2};
	EXPECT_EQ(Array.RemoveSwap(7), 2);
	EXPECT_EQ(Array.Num(), 2);
	EXPECT_TRUE(Array.Contains(1));
	EXPECT_TRUE(Array.Contains(2));

	Array = {1, 2, 3};
	EXPECT_EQ(Array.Pop(), 3);
	EXPECT_EQ(Array, Values({1, 2}));
}

TEST_F(ArrayTest, ResetEmptyReserveShrink)
{
	TArray<int32> Array = {1, 2, 3};
	Array.Reset();
	EXPECT_EQ(Array.Num(), 0);
	EXPECT_GE(Array.Max(), 3);
	Array.Reset(100);
	EXPECT_GE(Array.Max(), 100);

	Array.Empty(10);
	EXPECT_EQ(Array.Num(), 0);
	EXPECT_EQ(Array.Max(), 10);
	Array.Empty();
	EXPECT_EQ(Array.Max(), 0);

	Array.Reserve(50);
	EXPECT_EQ(Array.Max(), 50);
	Array.Add(1);
	Array.Shrink();
	EXPECT_EQ(Array.Max(), 1);
	EXPECT_EQ(Array.GetSlack(), 0);
}

TEST_F(ArrayTest, SetNumVariants)
{
	TArray<int32> Array = {5};
	Array.SetNum(3);
	EXPECT_EQ(Array, Values({5, 0, 0}));
	Array.SetNum(1);
	EXPECT_EQ(Array, Values({5}));
	Array.SetNumZeroed(2);
	EXPECT_EQ(Array, Values({5, 0}));
	Array.SetNumUninitialized(4);
	EXPECT_EQ(Array.Num(), 4);
	Array.SetNum(0, EAllowShrinking::No);
	EXPECT_TRUE(Array.IsEmpty());

	TArray<int32> Filled;
	Filled.Init(7, 3);
	EXPECT_EQ(Filled, Values({7, 7, 7}));
}

TEST_F(ArrayTest, Searching)
{
	const TArray<int32> Array = {4, 8, 15, 16, 23, 8};
	EXPECT_EQ(Array.Find(8), 1);
	EXPECT_EQ(Array.Find(99), INDEX_NONE);
	int32 Index = -5;
	EXPECT_TRUE(Array.Find(15, Index));
	EXPECT_EQ(Index, 2);
	EXPECT_FALSE(Array.Find(99, Index));
	EXPECT_EQ(Index, INDEX_NONE);
	EXPECT_EQ(Array.FindLast(8), 5);
	EXPECT_EQ(Array.IndexOfByKey(16), 3);
	EXPECT_EQ(Array.IndexOfByPredicate(
				  [](int32 V)
				  {
					  return V > 15;
				  }),
		3);
	EXPECT_EQ(Array.FindLastByPredicate(
				  [](int32 V)
				  {
					  return V < 10;
				  }),
		5);
	const int32* Found = Array.FindByPredicate(
		[](int32 V)
		{
			return V > 20;
		});
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(*Found, 23);
	EXPECT_EQ(Array.FindByPredicate(
				  [](int32 V)
				  {
					  return V > 100;
				  }),
		nullptr);
	EXPECT_TRUE(Array.Contains(23));
	EXPECT_FALSE(Array.Contains(24));
	EXPECT_TRUE(Array.ContainsByPredicate(
		[](int32 V)
		{
			return V == 4;
		}));
	EXPECT_EQ(Array.FilterByPredicate(
				  [](int32 V)
				  {
					  return V % 2 == 0;
				  }),
		Values({4, 8, 16, 8}));
}

TEST_F(ArrayTest, SortingAndSwap)
{
	TArray<int32> Array = {5, 3, 9, 1};
	Array.Sort();
	EXPECT_EQ(Array, Values({1, 3, 5, 9}));
	Array.Sort(TGreater<int32>());
	EXPECT_EQ(Array, Values({9, 5, 3, 1}));
	Array.Swap(0, 3);
	EXPECT_EQ(Array, Values({1, 5, 3, 9}));

	TArray<FKeyed> Keyed = {{2, 0}, {1, 1}, {2, 2}, {1, 3}, {2, 4}};
	Keyed.StableSort(
		[](const FKeyed& A, const FKeyed& B)
		{
			return A.Key < B.Key;
		});
	const int32 ExpectedOrder[] = {1, 3, 0, 2, 4};
	for (int32 I = 0; I < 5; ++I)
	{
		EXPECT_EQ(Keyed[I].Order, ExpectedOrder[I]);
	}
}

TEST_F(ArrayTest, SortOfPointersComparesPointees)
{
	int32 A = 30;
	int32 B = 10;
	int32 C = 20;
	TArray<int32*> Pointers = {&A, &B, &C};
	Pointers.Sort();
	EXPECT_EQ(Pointers[0], &B);
	EXPECT_EQ(Pointers[1], &C);
	EXPECT_EQ(Pointers[2], &A);
}

TEST_F(ArrayTest, IteratorsAndRemoveCurrent)
{
	TArray<int32> Array = {1, 2, 3, 4, 5};
	int32 Sum = 0;
	for (int32 Value : Array)
	{
		Sum += Value;
	}
	EXPECT_EQ(Sum, 15);

	for (auto It = Array.CreateIterator(); It; ++It)
	{
		if (*It % 2 == 0)
		{
			It.RemoveCurrent();
		}
	}
	EXPECT_EQ(Array, Values({1, 3, 5}));

	TArray<int32> Indices;
	for (auto It = Array.CreateConstIterator(); It; ++It)
	{
		Indices.Add(It.GetIndex());
	}
	EXPECT_EQ(Indices, Values({0, 1, 2}));
}

TEST_F(ArrayTest, BoolArrayIsAPlainArray)
{
	TArray<bool> Flags = {true, false};
	bool& First = Flags[0];
	First = false;
	bool* Data = Flags.GetData();
	EXPECT_FALSE(Data[0]);
	EXPECT_EQ(Flags.GetTypeSize(), sizeof(bool));
	Flags.Add(true);
	EXPECT_TRUE(Flags[2]);
}

TEST_F(ArrayTest, NonTrivialElementsAreConstructedAndDestroyedExactlyOnce)
{
	{
		TArray<FCounted> Array;
		for (int32 I = 0; I < 100; ++I)
		{
			Array.Emplace(I);
		}
		EXPECT_EQ(FCounted::Live, 100);
		Array.RemoveAt(10, 20);
		EXPECT_EQ(FCounted::Live, 80);
		EXPECT_EQ(Array[10].Value, 30);
		Array.Insert(FCounted(-1), 0);
		EXPECT_EQ(FCounted::Live, 81);
		Array.RemoveAtSwap(0);
		EXPECT_EQ(FCounted::Live, 80);
		EXPECT_EQ(Array.RemoveAll(
					  [](const FCounted& C)
					  {
						  return C.Value >= 50;
					  }),
			50);
		EXPECT_EQ(FCounted::Live, 30);
		TArray<FCounted> Copy = Array;
		EXPECT_EQ(FCounted::Live, 60);
		Copy.Reset();
		EXPECT_EQ(FCounted::Live, 30);
		Array.SetNum(35);
		EXPECT_EQ(FCounted::Live, 35);
		Array.Sort();
		EXPECT_EQ(FCounted::Live, 35);
		EXPECT_EQ(Array[0].Value, 0);
		Array.Empty();
		EXPECT_EQ(FCounted::Live, 0);
		Array.Add(FCounted(1));
		Array.Add(FCounted(2));
		EXPECT_EQ(ValuesOf(Array), Values({1, 2}));
	}
	EXPECT_EQ(FCounted::Live, 0);
}

TEST_F(ArrayTest, ArrayViewSeesTheArray)
{
	TArray<int32> Array = {1, 2, 3, 4};
	TArrayView<int32> View = Array;
	View[0] = 10;
	EXPECT_EQ(Array[0], 10);
	TConstArrayView<int32> Const = MakeArrayView(Array);
	EXPECT_EQ(Const.Num(), 4);
	EXPECT_EQ(Const.Slice(1, 2).Num(), 2);
	EXPECT_EQ(Const.Slice(1, 2)[0], 2);
	EXPECT_EQ(Const.Find(3), 2);
	EXPECT_TRUE(Const.Contains(4));
	TArray<int32> Copy(Const);
	EXPECT_EQ(Copy, Array);
}

TEST(ArrayDeathTest, OutOfRangeIndexIsACheckFailure)
{
	TArray<int32> Array = {1, 2, 3};
	EXPECT_DEATH((void)Array[5], "Array index out of bounds: 5 into an array of size 3");
	EXPECT_DEATH((void)Array[-1], "Array index out of bounds: -1 into an array of size 3");
	TArray<int32> Empty;
	EXPECT_DEATH((void)Empty.Pop(), "Array index out of bounds");
	EXPECT_DEATH(Array.RemoveAt(3), "Array index out of bounds");
}

TEST(ArrayDeathTest, ChangingSizeDuringRangedForIsACheckFailure)
{
	TArray<int32> Array = {1, 2, 3};
	EXPECT_DEATH(
		{
			for (int32 Value : Array)
			{
				Array.Add(Value);
			}
		},
		"changed during ranged-for iteration");
}

TEST(Array, GetRefAddersReturnTheNewElementEvenWhenTheArrayGrows)
{
	TArray<FString> Values;
	for (int32 Index = 0; Index < 100; ++Index)
	{
		FString& Added = Values.Add_GetRef(FString::Printf(TEXT("Value%d"), Index));
		EXPECT_EQ(&Added, &Values.Last());
		Added += TEXT("!");
		FString& Emplaced = Values.Emplace_GetRef(TEXT("E"));
		EXPECT_EQ(&Emplaced, &Values.Last());
		FString& Defaulted = Values.AddDefaulted_GetRef();
		EXPECT_EQ(&Defaulted, &Values.Last());
		EXPECT_TRUE(Defaulted.IsEmpty());
	}
	EXPECT_EQ(Values.Num(), 300);
	EXPECT_EQ(Values[3], FString(TEXT("Value1!")));
	FString& Inserted = Values.Insert_GetRef(FString(TEXT("First")), 0);
	EXPECT_EQ(&Inserted, &Values[0]);
	EXPECT_EQ(Values[0], FString(TEXT("First")));
}
