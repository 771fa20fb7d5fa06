// Copyright Orvane. All Rights Reserved.

#include "Templates/Tuple.h"

#include <gtest/gtest.h>

#include <string>

TEST(TupleTest, PairExposesKeyAndValue)
{
	TPair<int32, std::string> Pair(1, "one");
	EXPECT_EQ(Pair.Key, 1);
	EXPECT_EQ(Pair.Value, "one");
	EXPECT_EQ(Pair.Get<0>(), 1);
	EXPECT_EQ(Pair.Get<1>(), "one");
	Pair.Get<1>() = "uno";
	EXPECT_EQ(Pair.Value, "uno");
	auto& [Key, Value] = Pair;
	Key = 2;
	EXPECT_EQ(Pair.Key, 2);
	EXPECT_EQ(Value, "uno");
	TPair<int32, std::string> Other(2, "uno");
	EXPECT_TRUE(Pair == Other);
	Other.Value = "zzz";
	EXPECT_TRUE(Pair < Other);
	EXPECT_EQ((TTupleArity<TPair<int32, float>>::Value), 2u);
}

TEST(TupleTest, TupleGetMakeTupleAndTie)
{
	TTuple<int32, float, std::string> Tuple = MakeTuple(1, 2.5f, std::string("three"));
	EXPECT_EQ(Tuple.Get<0>(), 1);
	EXPECT_FLOAT_EQ(Tuple.Get<1>(), 2.5f);
	EXPECT_EQ(Tuple.Get<2>(), "three");
	EXPECT_EQ(TTupleArity<decltype(Tuple)>::Value, 3u);

	int32 A = 0;
	float B = 0.0f;
	std::string C;
	Tie(A, B, C) = Tuple;
	EXPECT_EQ(A, 1);
	EXPECT_FLOAT_EQ(B, 2.5f);
	EXPECT_EQ(C, "three");

	int32 X = 0;
	int32 Y = 0;
	Tie(X, Y) = MakeTuple(7, 8);
	EXPECT_EQ(X, 7);
	EXPECT_EQ(Y, 8);

	auto [First, Second, Third] = Tuple;
	EXPECT_EQ(First, 1);
	EXPECT_EQ(Third, "three");
	(void)Second;
}

TEST(TupleTest, ApplyPassesElementsInOrder)
{
	const TTuple<int32, int32, int32> Tuple(1, 2, 3);
	EXPECT_EQ(Tuple.ApplyAfter(
				  [](int32 Extra, int32 A, int32 B, int32 C)
				  {
					  return Extra * 1000 + A * 100 + B * 10 + C;
				  },
				  4),
		4123);
	EXPECT_EQ(Tuple.ApplyBefore(
				  [](int32 A, int32 B, int32 C, int32 Extra)
				  {
					  return A * 1000 + B * 100 + C * 10 + Extra;
				  },
				  4),
		1234);
	const TPair<int32, int32> Pair(5, 6);
	EXPECT_EQ(Pair.ApplyAfter(
				  [](int32 K, int32 V)
				  {
					  return K * 10 + V;
				  }),
		56);
}

TEST(TupleTest, EqualTuplesHashEqually)
{
	EXPECT_EQ(GetTypeHash(MakeTuple(1, 2, 3)), GetTypeHash(MakeTuple(1, 2, 3)));
	EXPECT_NE(GetTypeHash(MakeTuple(1, 2, 3)), GetTypeHash(MakeTuple(3, 2, 1)));
	EXPECT_TRUE(MakeTuple(1, 2, 3) == MakeTuple(1, 2, 3));
	EXPECT_TRUE(MakeTuple(1, 2, 3) != MakeTuple(1, 2, 4));
}
