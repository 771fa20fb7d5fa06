// Copyright Orvane. All Rights Reserved.

#include "Containers/Map.h"
#include "Templates/Greater.h"

#include <gtest/gtest.h>

namespace
{
	/** Counts live instances so tests can prove map values are destroyed exactly once. */
	struct FTracked
	{
		static inline int32 Live = 0;
		int32 Value = 0;

		FTracked() { ++Live; }
		FTracked(int32 InValue)
			: Value(InValue)
		{
			++Live;
		}
		FTracked(const FTracked& Other)
			: Value(Other.Value)
		{
			++Live;
		}
		FTracked(FTracked&& Other)
			: Value(Other.Value)
		{
			++Live;
		}
		FTracked& operator=(const FTracked&) = default;
		FTracked& operator=(FTracked&&) = default;
		~FTracked() { --Live; }
		bool operator==(const FTracked& Other) const { return Value == Other.Value; }
	};

	TArray<int32> Values(std::initializer_list<int32> List)
	{
		return TArray<int32>(List);
	}

	TArray<int32> KeysOf(const TMap<int32, int32>& Map)
	{
		TArray<int32> Keys;
		Map.GenerateKeyArray(Keys);
		return Keys;
	}
} // namespace

TEST(MapTest, AddReplacesTheValueOfAnExistingKey)
{
	TMap<int32, int32> Map;
	EXPECT_TRUE(Map.IsEmpty());
	EXPECT_EQ(Map.Add(1, 10), 10);
	Map.Add(2, 20);
	int32& Replaced = Map.Add(1, 11);
	EXPECT_EQ(Replaced, 11);
	EXPECT_EQ(Map.Num(), 2);
	EXPECT_EQ(Map[1], 11);
	EXPECT_EQ(KeysOf(Map), Values({1, 2})) << "replacing a value keeps the key's position";
	Map.Add(3);
	EXPECT_EQ(Map[3], 0);
	EXPECT_EQ(Map.Emplace(4, 40), 40);
	EXPECT_EQ(Map.Num(), 4);
}

TEST(MapTest, FindVariants)
{
	TMap<int32, int32> Map = {{1, 10}, {2, 20}};
	ASSERT_NE(Map.Find(1), nullptr);
	EXPECT_EQ(*Map.Find(1), 10);
	EXPECT_EQ(Map.Find(3), nullptr);
	*Map.Find(2) = 21;
	EXPECT_EQ(Map.FindRef(2), 21);
	EXPECT_EQ(Map.FindRef(3), 0);
	EXPECT_EQ(Map.FindRef(3, -1), -1);
	EXPECT_EQ(Map.FindChecked(1), 10);
	ASSERT_NE(Map.FindKey(21), nullptr);
	EXPECT_EQ(*Map.FindKey(21), 2);
	EXPECT_EQ(Map.FindKey(99), nullptr);
	EXPECT_TRUE(Map.Contains(1));
	EXPECT_FALSE(Map.Contains(5));

	int32& Added = Map.FindOrAdd(5);
	EXPECT_EQ(Added, 0);
	Added = 50;
	EXPECT_EQ(Map.FindOrAdd(5), 50);
	EXPECT_EQ(Map.FindOrAdd(6, 60), 60);
	EXPECT_EQ(Map.FindOrAdd(6, 61), 60);
	EXPECT_EQ(Map.Num(), 4);
}

TEST(MapTest, RemoveVariants)
{
	TMap<int32, int32> Map = {{1, 10}, {2, 20}, {3, 30}};
	EXPECT_EQ(Map.Remove(2), 1);
	EXPECT_EQ(Map.Remove(2), 0);
	int32 Removed = 0;
	EXPECT_TRUE(Map.RemoveAndCopyValue(3, Removed));
	EXPECT_EQ(Removed, 30);
	EXPECT_FALSE(Map.RemoveAndCopyValue(3, Removed));
	EXPECT_EQ(Map.FindAndRemoveChecked(1), 10);
	EXPECT_TRUE(Map.IsEmpty());
}

TEST(MapTest, OrderFollowsInsertionAndReusesRemovedSlots)
{
	TMap<int32, int32> Map;
	for (int32 Key : {30, 10, 20, 40})
	{
		Map.Add(Key, Key * 2);
	}
	EXPECT_EQ(KeysOf(Map), Values({30, 10, 20, 40}));
	Map.Remove(10);
	Map.Add(50, 100);
	EXPECT_EQ(KeysOf(Map), Values({30, 50, 20, 40}));
	TArray<int32> MapValues;
	Map.GenerateValueArray(MapValues);
	EXPECT_EQ(MapValues, Values({60, 100, 40, 80}));
	TArray<int32> Keys;
	EXPECT_EQ(Map.GetKeys(Keys), 4);
	EXPECT_EQ(Keys, Values({30, 50, 20, 40}));
}

TEST(MapTest, IterationYieldsPairsAndSupportsStructuredBindings)
{
	TMap<int32, int32> Map = {{1, 10}, {2, 20}, {3, 30}};
	int32 KeySum = 0;
	int32 ValueSum = 0;
	for (const TPair<int32, int32>& Pair : Map)
	{
		KeySum += Pair.Key;
		ValueSum += Pair.Value;
	}
	EXPECT_EQ(KeySum, 6);
	EXPECT_EQ(ValueSum, 60);
	for (auto& [Key, Value] : Map)
	{
		Value += Key;
	}
	EXPECT_EQ(Map[3], 33);

	for (auto It = Map.CreateIterator(); It; ++It)
	{
		if (It.Key() == 2)
		{
			It.RemoveCurrent();
		}
		else
		{
			It.Value() = 0;
		}
	}
	EXPECT_EQ(KeysOf(Map), Values({1, 3}));
	EXPECT_EQ(Map[1], 0);
	int32 Visited = 0;
	for (auto It = Map.CreateConstIterator(); It; ++It)
	{
		EXPECT_EQ(It->Value, 0);
		++Visited;
	}
	EXPECT_EQ(Visited, 2);
}

TEST(MapTest, KeySortAndValueSort)
{
	TMap<int32, int32> Map = {{3, 1}, {1, 3}, {2, 2}};
	Map.KeySort(TLess<int32>());
	EXPECT_EQ(KeysOf(Map), Values({1, 2, 3}));
	Map.ValueSort(TLess<int32>());
	EXPECT_EQ(KeysOf(Map), Values({3, 2, 1}));
	Map.KeySort(TGreater<int32>());
	EXPECT_EQ(KeysOf(Map), Values({3, 2, 1}));
	EXPECT_EQ(Map.FindRef(1), 3) << "lookups still work after sorting";
}

TEST(MapTest, AppendEmptyReset)
{
	TMap<int32, int32> Map = {{1, 1}};
	TMap<int32, int32> Other = {{1, 100}, {2, 200}};
	Map.Append(Other);
	EXPECT_EQ(Map.Num(), 2);
	EXPECT_EQ(Map[1], 100);
	Map.Reset();
	EXPECT_EQ(Map.Num(), 0);
	EXPECT_FALSE(Map.Contains(1));
	Map.Add(7, 7);
	Map.Empty();
	EXPECT_TRUE(Map.IsEmpty());
	EXPECT_TRUE(Other.OrderIndependentCompareEqual(TMap<int32, int32>{{2, 200}, {1, 100}}));
}

TEST(MapTest, ValuesAreDestroyedExactlyOnce)
{
	FTracked::Live = 0;
	{
		TMap<int32, FTracked> Map;
		for (int32 I = 0; I < 50; ++I)
		{
			Map.Add(I, FTracked(I));
		}
		EXPECT_EQ(FTracked::Live, 50);
		Map.Add(3, FTracked(333));
		EXPECT_EQ(FTracked::Live, 50);
		EXPECT_EQ(Map[3].Value, 333);
		for (int32 I = 0; I < 50; I += 2)
		{
			Map.Remove(I);
		}
		EXPECT_EQ(FTracked::Live, 25);
		TMap<int32, FTracked> Copy = Map;
		EXPECT_EQ(FTracked::Live, 50);
		Copy.Empty();
		EXPECT_EQ(FTracked::Live, 25);
	}
	EXPECT_EQ(FTracked::Live, 0);
}

TEST(MapTest, MultiMapKeepsEveryValue)
{
	TMultiMap<int32, int32> Map;
	Map.Add(1, 10);
	Map.Add(1, 11);
	Map.Add(2, 20);
	Map.Add(1, 12);
	EXPECT_EQ(Map.Num(), 4);
	EXPECT_EQ(Map.Num(1), 3);
	TArray<int32> Found;
	Map.MultiFind(1, Found, true);
	EXPECT_EQ(Found, Values({10, 11, 12}));
	EXPECT_EQ(Map.RemoveSingle(1, 11), 1);
	EXPECT_EQ(Map.Num(1), 2);
	EXPECT_EQ(Map.Remove(1), 2);
	EXPECT_EQ(Map.Num(), 1);
	EXPECT_EQ(*Map.Find(2), 20);
}

TEST(MapDeathTest, MissingKeyIsACheckFailure)
{
	TMap<int32, int32> Map = {{1, 1}};
	EXPECT_DEATH((void)Map[2], "Assertion failed");
	EXPECT_DEATH((void)Map.FindChecked(2), "Assertion failed");
	EXPECT_DEATH((void)Map.FindAndRemoveChecked(2), "Assertion failed");
}
