// Copyright Orvane. All Rights Reserved.

#include "Containers/Set.h"

#include <gtest/gtest.h>

namespace
{
	/** A key whose hash collides on purpose, to exercise bucket chains. */
	struct FCollidingKey
	{
		int32 Id = 0;

		bool operator==(const FCollidingKey& Other) const { return Id == Other.Id; }
		friend uint32 GetTypeHash(const FCollidingKey&) { return 7; }
	};

	/** A key type matched by a custom KeyFuncs: only the Id counts, the payload does not. */
	struct FRecord
	{
		int32 Id = 0;
		int32 Payload = 0;
	};

	struct FRecordKeyFuncs : BaseKeyFuncs<FRecord, int32>
	{
		static int32 GetSetKey(const FRecord& Element) { return Element.Id; }
		static bool Matches(int32 A, int32 B) { return A == B; }
		static uint32 GetKeyHash(int32 Key) { return GetTypeHash(Key); }
	};

	TArray<int32> Ordered(const TSet<int32>& Set)
	{
		TArray<int32> Result;
		for (int32 Value : Set)
		{
			Result.Add(Value);
		}
		return Result;
	}

	TArray<int32> Values(std::initializer_list<int32> List)
	{
		return TArray<int32>(List);
	}
} // namespace

TEST(SetTest, AddFindAndContains)
{
	TSet<int32> Set;
	EXPECT_TRUE(Set.IsEmpty());
	bool bAlreadyInSet = true;
	const FSetElementId First = Set.Add(10, &bAlreadyInSet);
	EXPECT_FALSE(bAlreadyInSet);
	EXPECT_TRUE(First.IsValidId());
	Set.Add(20);
	const FSetElementId Again = Set.Add(10, &bAlreadyInSet);
	EXPECT_TRUE(bAlreadyInSet);
	EXPECT_EQ(Again, First);
	EXPECT_EQ(Set.Num(), 2);
	EXPECT_TRUE(Set.Contains(20));
	EXPECT_FALSE(Set.Contains(30));
	ASSERT_NE(Set.Find(20), nullptr);
	EXPECT_EQ(*Set.Find(20), 20);
	EXPECT_EQ(Set.Find(30), nullptr);
	EXPECT_EQ(Set[First], 10);
	EXPECT_EQ(Set.FindId(20).AsInteger(), 1);
	EXPECT_FALSE(Set.FindId(99).IsValidId());
	EXPECT_EQ(Set.Emplace(30).AsInteger(), 2);
}

TEST(SetTest, IterationFollowsInsertionOrderAndReusesRemovedSlots)
{
	TSet<int32> Set = {5, 1, 4, 2, 3};
	EXPECT_EQ(Ordered(Set), Values({5, 1, 4, 2, 3}));
	EXPECT_EQ(Set.Remove(4), 1);
	EXPECT_EQ(Set.Remove(4), 0);
	EXPECT_EQ(Ordered(Set), Values({5, 1, 2, 3}));
	// The next addition takes the slot that 4 left.
	Set.Add(9);
	EXPECT_EQ(Ordered(Set), Values({5, 1, 9, 2, 3}));
	EXPECT_EQ(Set.Array(), Values({5, 1, 9, 2, 3}));
}

TEST(SetTest, ManyElementsSurviveRehashing)
{
	TSet<int32> Set;
	for (int32 I = 0; I < 1000; ++I)
	{
		Set.Add(I * 7);
	}
	EXPECT_EQ(Set.Num(), 1000);
	for (int32 I = 0; I < 1000; ++I)
	{
		ASSERT_TRUE(Set.Contains(I * 7)) << I;
		ASSERT_FALSE(Set.Contains(I * 7 + 1)) << I;
	}
	for (int32 I = 0; I < 1000; I += 2)
	{
		Set.Remove(I * 7);
	}
	EXPECT_EQ(Set.Num(), 500);
	EXPECT_FALSE(Set.Contains(0));
	EXPECT_TRUE(Set.Contains(7));
}

TEST(SetTest, CollidingHashesStayDistinct)
{
	TSet<FCollidingKey> Set;
	for (int32 I = 0; I < 20; ++I)
	{
		Set.Add(FCollidingKey{I});
	}
	EXPECT_EQ(Set.Num(), 20);
	EXPECT_EQ(Set.Remove(FCollidingKey{7}), 1);
	EXPECT_FALSE(Set.Contains(FCollidingKey{7}));
	EXPECT_TRUE(Set.Contains(FCollidingKey{8}));
	EXPECT_TRUE(Set.Contains(FCollidingKey{19}));
	EXPECT_EQ(Set.Num(), 19);
}

TEST(SetTest, SetAlgebra)
{
	const TSet<int32> A = {1, 2, 3, 4};
	const TSet<int32> B = {3, 4, 5};
	EXPECT_EQ(A.Union(B).Array(), Values({1, 2, 3, 4, 5}));
	EXPECT_EQ(A.Intersect(B).Array(), Values({3, 4}));
	EXPECT_EQ(A.Difference(B).Array(), Values({1, 2}));
	EXPECT_TRUE(A.Includes(TSet<int32>{2, 3}));
	EXPECT_FALSE(A.Includes(B));
}

TEST(SetTest, IteratorRemoveCurrent)
{
	TSet<int32> Set = {1, 2, 3, 4, 5, 6};
	for (auto It = Set.CreateIterator(); It; ++It)
	{
		if (*It % 2 == 0)
		{
			It.RemoveCurrent();
		}
	}
	EXPECT_EQ(Ordered(Set), Values({1, 3, 5}));
	EXPECT_EQ(Set.Num(), 3);
	int32 Count = 0;
	for (auto It = Set.CreateConstIterator(); It; ++It)
	{
		++Count;
	}
	EXPECT_EQ(Count, 3);
}

TEST(SetTest, EmptyResetReserveAndAppend)
{
	TSet<int32> Set = {1, 2, 3};
	Set.Reset();
	EXPECT_EQ(Set.Num(), 0);
	EXPECT_FALSE(Set.Contains(1));
	Set.Add(4);
	EXPECT_EQ(Ordered(Set), Values({4}));
	Set.Empty();
	EXPECT_TRUE(Set.IsEmpty());
	Set.Reserve(100);
	Set.Append(Values({7, 8, 7}));
	EXPECT_EQ(Ordered(Set), Values({7, 8}));
	TSet<int32> Other = {9};
	Set.Append(Other);
	EXPECT_EQ(Ordered(Set), Values({7, 8, 9}));
}

TEST(SetTest, CustomKeyFuncsReplaceElementWithSameKey)
{
	TSet<FRecord, FRecordKeyFuncs> Records;
	Records.Add(FRecord{1, 100});
	Records.Add(FRecord{2, 200});
	bool bAlreadyInSet = false;
	Records.Add(FRecord{1, 111}, &bAlreadyInSet);
	EXPECT_TRUE(bAlreadyInSet);
	EXPECT_EQ(Records.Num(), 2);
	const FRecord* Found = Records.Find(1);
	ASSERT_NE(Found, nullptr);
	EXPECT_EQ(Found->Payload, 111);
	EXPECT_EQ(Records.Remove(2), 1);
	EXPECT_FALSE(Records.Contains(2));
}

TEST(SetTest, CopyAndMove)
{
	TSet<int32> Set = {1, 2};
	TSet<int32> Copy = Set;
	Copy.Add(3);
	EXPECT_EQ(Set.Num(), 2);
	EXPECT_EQ(Copy.Num(), 3);
	TSet<int32> Moved = MoveTemp(Copy);
	EXPECT_EQ(Moved.Num(), 3);
	EXPECT_TRUE(Moved.Contains(3));
}

TEST(SetDeathTest, InvalidIdIsACheckFailure)
{
	TSet<int32> Set = {1};
	EXPECT_DEATH((void)Set[FSetElementId::FromInteger(5)], "Array index out of bounds");
}
