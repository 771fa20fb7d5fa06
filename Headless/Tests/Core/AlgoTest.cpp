// Copyright Orvane. All Rights Reserved.

#include "Algo/AllOf.h"
#include "Algo/AnyOf.h"
#include "Algo/Count.h"
#include "Algo/Find.h"
#include "Algo/NoneOf.h"
#include "Algo/Reverse.h"
#include "Algo/Sort.h"
#include "Algo/Transform.h"
#include "Containers/Array.h"
#include "Templates/Greater.h"

#include <gtest/gtest.h>

namespace
{
	struct FItem
	{
		int32 Id;
		bool bEnabled;
	};

	TArray<int32> Values(std::initializer_list<int32> List)
	{
		return TArray<int32>(List);
	}
} // namespace

TEST(AlgoTest, SortAndReverse)
{
	TArray<int32> Array = {4, 1, 3, 2};
	Algo::Sort(Array);
	EXPECT_EQ(Array, Values({1, 2, 3, 4}));
	Algo::Sort(Array, TGreater<>());
	EXPECT_EQ(Array, Values({4, 3, 2, 1}));
	Algo::Reverse(Array);
	EXPECT_EQ(Array, Values({1, 2, 3, 4}));

	int32 Raw[] = {3, 1, 2};
	Algo::Sort(Raw);
	EXPECT_EQ(Raw[0], 1);
	EXPECT_EQ(Raw[2], 3);

	TArray<FItem> Items = {{3, true}, {1, false}, {2, true}};
	Algo::SortBy(Items, &FItem::Id);
	EXPECT_EQ(Items[0].Id, 1);
	EXPECT_EQ(Items[2].Id, 3);
	Algo::StableSortBy(Items, &FItem::bEnabled);
	EXPECT_EQ(Items[0].Id, 1);
	EXPECT_EQ(Items[1].Id, 2);
	EXPECT_EQ(Items[2].Id, 3);
}

TEST(AlgoTest, FindAndCount)
{
	TArray<int32> Array = {5, 6, 5, 7};
	int32* Found = Algo::Find(Array, 6);
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(Found, &Array[1]);
	EXPECT_EQ(Algo::Find(Array, 9), nullptr);
	EXPECT_EQ(Algo::FindLast(Array, 5), &Array[2]);
	EXPECT_EQ(Algo::FindByPredicate(Array,
				  [](int32 V)
				  {
					  return V > 6;
				  }),
		&Array[3]);
	EXPECT_EQ(Algo::Count(Array, 5), 2u);
	EXPECT_EQ(Algo::CountIf(Array,
				  [](int32 V)
				  {
					  return V >= 6;
				  }),
		2u);

	TArray<FItem> Items = {{1, false}, {2, true}};
	const FItem* ById = Algo::FindBy(Items, 2, &FItem::Id);
	ASSERT_NE(ById, nullptr);
	EXPECT_TRUE(ById->bEnabled);
}

TEST(AlgoTest, PredicatesAndTransform)
{
	TArray<FItem> Items = {{1, false}, {2, true}, {3, true}};
	EXPECT_TRUE(Algo::AnyOf(Items, &FItem::bEnabled));
	EXPECT_FALSE(Algo::AllOf(Items, &FItem::bEnabled));
	EXPECT_FALSE(Algo::NoneOf(Items, &FItem::bEnabled));
	EXPECT_TRUE(Algo::AllOf(TArray<bool>()));
	EXPECT_TRUE(Algo::AnyOf(TArray<bool>{false, true}));
	EXPECT_TRUE(Algo::NoneOf(TArray<bool>{false}));

	TArray<int32> Ids;
	Algo::Transform(Items, Ids, &FItem::Id);
	EXPECT_EQ(Ids, Values({1, 2, 3}));
	TArray<int32> EnabledDoubled;
	Algo::TransformIf(Items, EnabledDoubled, &FItem::bEnabled,
		[](const FItem& Item)
		{
			return Item.Id * 2;
		});
	EXPECT_EQ(EnabledDoubled, Values({4, 6}));
}
