// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringView.h"
#include "CoreMinimal.h"

namespace UE::Json::Private
{
	/** Reads Text, which must be a Json number as a whole, as a correctly rounded double. */
	bool ParseNumberText(FStringView Text, double& OutValue);
	bool ParseNumberText(FStringView Text, float& OutValue);

	/** Reads Text as an integer when it is one, digit for digit and within range; false for fractions and exponents. */
	bool ParseIntegerText(FStringView Text, int64& OutValue);
	bool ParseIntegerText(FStringView Text, uint64& OutValue);

	/** The number as the shortest text that reads back as the same value. */
	FString NumberToString(double Value);
} // namespace UE::Json::Private
