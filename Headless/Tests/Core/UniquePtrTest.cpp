// Copyright Orvane. All Rights Reserved.

#include "Templates/UniquePtr.h"

#include <gtest/gtest.h>

namespace
{
	struct FOwned
	{
		static inline int32 Live = 0;
		int32 Value;

		explicit FOwned(int32 InValue)
			: Value(InValue)
		{
			++Live;
		}
		virtual ~FOwned() { --Live; }
	};

	struct FOwnedChild : FOwned
	{
		FOwnedChild()
			: FOwned(99)
		{
		}
	};
} // namespace

TEST(UniquePtrTest, OwnsAndDestroys)
{
	FOwned::Live = 0;
	{
		TUniquePtr<FOwned> Ptr = MakeUnique<FOwned>(3);
		EXPECT_TRUE(Ptr.IsValid());
		EXPECT_TRUE(static_cast<bool>(Ptr));
		EXPECT_EQ(Ptr->Value, 3);
		EXPECT_EQ((*Ptr).Value, 3);
		EXPECT_EQ(FOwned::Live, 1);
		Ptr.Reset(new FOwned(4));
		EXPECT_EQ(FOwned::Live, 1);
		EXPECT_EQ(Ptr.Get()->Value, 4);
		TUniquePtr<FOwned> Moved = MoveTemp(Ptr);
		EXPECT_FALSE(Ptr.IsValid());
		EXPECT_TRUE(Ptr == nullptr);
		EXPECT_EQ(Moved->Value, 4);
		TUniquePtr<FOwned> FromChild = MakeUnique<FOwnedChild>();
		EXPECT_EQ(FromChild->Value, 99);
		EXPECT_EQ(FOwned::Live, 2);
	}
	EXPECT_EQ(FOwned::Live, 0);
}

TEST(UniquePtrTest, ReleaseGivesUpOwnership)
{
	FOwned::Live = 0;
	TUniquePtr<FOwned> Ptr = MakeUnique<FOwned>(1);
	FOwned* Raw = Ptr.Release();
	EXPECT_FALSE(Ptr.IsValid());
	EXPECT_EQ(FOwned::Live, 1);
	delete Raw;
	EXPECT_EQ(FOwned::Live, 0);
	Ptr.Reset();
	EXPECT_EQ(Ptr.Get(), nullptr);
}

TEST(UniquePtrTest, ArrayForm)
{
	TUniquePtr<int32[]> Array = MakeUnique<int32[]>(4);
	EXPECT_EQ(Array[0], 0) << "MakeUnique of an array value-initialises it";
	EXPECT_EQ(Array[3], 0);
	Array[2] = 5;
	EXPECT_EQ(Array.Get()[2], 5);
}
