// Copyright Orvane. All Rights Reserved.

#include "Templates/Function.h"
#include "Templates/UniquePtr.h"

#include <gtest/gtest.h>

namespace
{
	int32 AddOne(int32 Value)
	{
		return Value + 1;
	}

	struct FMultiplier
	{
		int32 Factor = 3;

		int32 Apply(int32 Value) const { return Value * Factor; }
	};

	int32 CallTwice(TFunctionRef<int32(int32)> Func, int32 Value)
	{
		return Func(Func(Value));
	}
} // namespace

TEST(FunctionTest, TFunctionHoldsLambdasFunctionsAndMembers)
{
	TFunction<int32(int32)> Empty;
	EXPECT_FALSE(Empty.IsSet());
	EXPECT_FALSE(static_cast<bool>(Empty));
	EXPECT_TRUE(Empty == nullptr);

	int32 Captured = 10;
	TFunction<int32(int32)> Lambda = [Captured](int32 Value)
	{
		return Value + Captured;
	};
	EXPECT_TRUE(Lambda.IsSet());
	EXPECT_EQ(Lambda(5), 15);

	TFunction<int32(int32)> FromFunction = &AddOne;
	EXPECT_EQ(FromFunction(1), 2);

	TFunction<int32(const FMultiplier&, int32)> Member = &FMultiplier::Apply;
	EXPECT_EQ(Member(FMultiplier(), 4), 12);

	TFunction<int32(int32)> Copy = Lambda;
	EXPECT_EQ(Copy(1), 11);
	TFunction<int32(int32)> Moved = MoveTemp(Copy);
	EXPECT_EQ(Moved(2), 12);
	EXPECT_FALSE(Copy.IsSet());

	Moved.Reset();
	EXPECT_FALSE(Moved.IsSet());
	Lambda = nullptr;
	EXPECT_FALSE(Lambda.IsSet());

	int32 (*NullFunction)(int32) = nullptr;
	TFunction<int32(int32)> FromNull = NullFunction;
	EXPECT_FALSE(FromNull.IsSet());
}

TEST(FunctionTest, CopiesOwnIndependentState)
{
	int32 Calls = 0;
	TFunction<int32()> Counter = [Count = 0]() mutable
	{
		return ++Count;
	};
	TFunction<int32()> Copy = Counter;
	EXPECT_EQ(Counter(), 1);
	EXPECT_EQ(Counter(), 2);
	EXPECT_EQ(Copy(), 1);
	TFunction<void()> SideEffect = [&Calls]()
	{
		++Calls;
	};
	SideEffect();
	SideEffect();
	EXPECT_EQ(Calls, 2);
}

TEST(FunctionTest, UniqueFunctionAcceptsMoveOnlyCallables)
{
	TUniquePtr<int32> Owned = MakeUnique<int32>(41);
	TUniqueFunction<int32()> Unique = [Ptr = MoveTemp(Owned)]()
	{
		return *Ptr + 1;
	};
	EXPECT_TRUE(Unique.IsSet());
	EXPECT_EQ(Unique(), 42);
	TUniqueFunction<int32()> Moved = MoveTemp(Unique);
	EXPECT_FALSE(Unique.IsSet());
	EXPECT_EQ(Moved(), 42);
}

TEST(FunctionTest, FunctionRefCallsWithoutOwning)
{
	int32 Offset = 2;
	auto Lambda = [&Offset](int32 Value)
	{
		return Value + Offset;
	};
	EXPECT_EQ(CallTwice(Lambda, 1), 5);
	Offset = 10;
	EXPECT_EQ(CallTwice(Lambda, 1), 21);
	EXPECT_EQ(CallTwice(AddOne, 1), 3);
	TFunction<int32(int32)> Owned = &AddOne;
	EXPECT_EQ(CallTwice(Owned, 5), 7);
}

TEST(FunctionDeathTest, CallingAnUnsetFunctionIsACheckFailure)
{
	TFunction<void()> Empty;
	EXPECT_DEATH(Empty(), "Attempting to call an unbound TFunction!");
	TUniqueFunction<int32()> EmptyUnique;
	EXPECT_DEATH((void)EmptyUnique(), "Attempting to call an unbound TFunction!");
}
