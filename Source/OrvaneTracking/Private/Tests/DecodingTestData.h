// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/SharedPointer.h"

#if WITH_DEV_AUTOMATION_TESTS

class FAutomationTestBase;
class FJsonObject;
struct FOrvaneTrackingSample;

namespace UE::OrvaneTracking::Tests
{
	/** The folder of the recorded tracking data the decoding tests read, inside the plug-in. */
	FString GetTrackingTestDataDir();

	/** Loads a file below the tracking test data folder; reports an error on the test when it cannot. */
	bool LoadTestBytes(FAutomationTestBase& Test, const FString& RelativePath, TArray<uint8>& OutBytes);

	/** Loads and parses a JSON file below the tracking test data folder; null (with an error) when it cannot. */
	TSharedPtr<FJsonObject> LoadTestJson(FAutomationTestBase& Test, const FString& RelativePath);

	/** Bytes from text like "D1 01 2D"; whitespace between bytes is ignored. */
	TArray<uint8> ParseHex(const FString& Hex);

	/** The JSON text without the whitespace between tokens (whitespace inside strings is kept). */
	TArray<uint8> StripJsonWhitespace(const TArray<uint8>& Text);

	/** The bytes of an ASCII or UTF-8 string. */
	TArray<uint8> ToUtf8Bytes(const FString& Text);

	/**
	 * Reports on the test every field in which two samples differ, naming them with Context.
	 * @return true when they agree (transforms within Tolerance)
	 */
	bool TestSamplesEqual(FAutomationTestBase& Test, const FString& Context, const FOrvaneTrackingSample& Actual,
		const FOrvaneTrackingSample& Expected, double Tolerance = 1.e-9);
} // namespace UE::OrvaneTracking::Tests

#endif // WITH_DEV_AUTOMATION_TESTS
