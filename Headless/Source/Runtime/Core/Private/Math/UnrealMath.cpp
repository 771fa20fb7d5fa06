// Copyright Orvane. All Rights Reserved.

#include "Math/UnrealMathUtility.h"

#include <random>

namespace MathPrivate
{
	/** The generator behind FMath's random functions; RandInit reseeds it so sequences can be replayed. */
	std::mt19937& GetRandomEngine()
	{
		static std::mt19937 Engine(0u);
		return Engine;
	}
} // namespace MathPrivate

void FMath::RandInit(int32 Seed)
{
	MathPrivate::GetRandomEngine().seed((uint32)Seed);
}

float FMath::FRand()
{
	// 24 random bits give every float in [0, 1) with the same spacing, and never 1.0 itself.
	const uint32 Bits = MathPrivate::GetRandomEngine()() >> 8;
	return (float)Bits / 16777216.0f;
}

int32 FMath::RandHelper(int32 A)
{
	if (A <= 0)
	{
		return 0;
	}
	std::uniform_int_distribution<int32> Distribution(0, A - 1);
	return Distribution(MathPrivate::GetRandomEngine());
}

int32 FMath::RandRange(int32 Min, int32 Max)
{
	if (Max <= Min)
	{
		return Min;
	}
	std::uniform_int_distribution<int32> Distribution(Min, Max);
	return Distribution(MathPrivate::GetRandomEngine());
}

int64 FMath::RandRange(int64 Min, int64 Max)
{
	if (Max <= Min)
	{
		return Min;
	}
	std::uniform_int_distribution<int64> Distribution(Min, Max);
	return Distribution(MathPrivate::GetRandomEngine());
}

float FMath::FRandRange(float InMin, float InMax)
{
	return InMin + (InMax - InMin) * FRand();
}

double FMath::FRandRange(double InMin, double InMax)
{
	return InMin + (InMax - InMin) * (double)FRand();
}
