// Copyright Orvane. All Rights Reserved.

#include "Misc/Optional.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
	struct FLifetime
	{
		static inline int32 Live = 0;
		int32 Value;

		explicit FLifetime(int32 InValue)
			: Value(InValue)
		{
			++Live;
		}
		FLifetime(const FLifetime& Other)
			: Value(Other.Value)
		{
			++Live;
		}
		~FLifetime() { --Live; }
		bool operator==(const FLifetime& Other) const { return Value == Other.Value; }
	};
} // namespace

TEST(OptionalTest, UnsetByDefaultAndFromNullOpt)
{
	TOptional<int32> Unset;
	EXPECT_FALSE(Unset.IsSet());
	EXPECT_FALSE(static_cast<bool>(Unset));
	EXPECT_EQ(Unset.Get(5), 5);
	EXPECT_EQ(Unset.GetPtrOrNull(), nullptr);
	TOptional<int32> FromNull = NullOpt;
	EXPECT_FALSE(FromNull.IsSet());
	EXPECT_TRUE(Unset == FromNull);
}

TEST(OptionalTest, HoldsAndReplacesValues)
{
	TOptional<std::string> Value = std::string("first");
	ASSERT_TRUE(Value.IsSet());
	EXPECT_EQ(Value.GetValue(), "first");
	EXPECT_EQ(*Value, "first");
	EXPECT_EQ(Value->size(), 5u);
	EXPECT_EQ(Value.Get("fallback"), "first");
	Value = std::string("second");
	EXPECT_EQ(*Value, "second");
	Value.Emplace(3, 'x');
	EXPECT_EQ(*Value, "xxx");
	Value.Reset();
	EXPECT_FALSE(Value.IsSet());
	Value = std::string("again");
	Value = NullOpt;
	EXPECT_FALSE(Value.IsSet());
}

TEST(OptionalTest, ComparesByStateAndValue)
{
	TOptional<int32> A = 3;
	TOptional<int32> B = 3;
	TOptional<int32> C = 4;
	TOptional<int32> Unset;
	EXPECT_TRUE(A == B);
	EXPECT_FALSE(A == C);
	EXPECT_TRUE(A != Unset);
	EXPECT_EQ(GetTypeHash(A), GetTypeHash(B));
	EXPECT_EQ(*MakeOptional(9), 9);
}

TEST(OptionalTest, ValueLifetimeIsManaged)
{
	FLifetime::Live = 0;
	{
		TOptional<FLifetime> Value;
		EXPECT_EQ(FLifetime::Live, 0);
		Value.Emplace(1);
		EXPECT_EQ(FLifetime::Live, 1);
		TOptional<FLifetime> Copy = Value;
		EXPECT_EQ(FLifetime::Live, 2);
		Value.Emplace(2);
		EXPECT_EQ(FLifetime::Live, 2);
		Copy.Reset();
		EXPECT_EQ(FLifetime::Live, 1);
		Copy = Value;
		EXPECT_EQ(Copy->Value, 2);
		EXPECT_EQ(FLifetime::Live, 2);
	}
	EXPECT_EQ(FLifetime::Live, 0);
}

TEST(OptionalDeathTest, GetValueOfUnsetIsACheckFailure)
{
	TOptional<int32> Unset;
	EXPECT_DEATH((void)Unset.GetValue(), "It is an error to call GetValue\\(\\) on an unset TOptional");
	EXPECT_DEATH((void)*Unset, "unset TOptional");
}
