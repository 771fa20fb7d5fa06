// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "HAL/CriticalSection.h"
#include "Misc/OutputDevice.h"

#if WITH_DEV_AUTOMATION_TESTS

class FAutomationTestBase;

/** One line of the log as a test expects it: verbosity and text. */
struct FOrvaneLogLine
{
	ELogVerbosity::Type Verbosity = ELogVerbosity::Warning;
	FString Text;

	bool operator==(const FOrvaneLogLine& Other) const
	{
		return Verbosity == Other.Verbosity && Text.Equals(Other.Text, ESearchCase::CaseSensitive);
	}
};

/**
 * Records the lines of one log category while it exists, so a test can compare them, in order and with their
 * verbosity, with the lines it expects.
 */
class FOrvaneLogCapture : public FOutputDevice
{
public:
	explicit FOrvaneLogCapture(FName InCategory = FName(TEXT("LogTemp")));
	virtual ~FOrvaneLogCapture() override;

	//~ Begin FOutputDevice interface
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override;
	virtual bool CanBeUsedOnAnyThread() const override { return true; }
	virtual bool CanBeUsedOnMultipleThreads() const override { return true; }
	//~ End FOutputDevice interface

	/** The lines recorded so far. */
	TArray<FOrvaneLogLine> GetLines() const;

	/** Forgets the lines recorded so far. */
	void Reset();

	/**
	 * Declares each expected Warning and Error line to the test (with its exact number of occurrences), so the test
	 * accepts them and fails if one is missing.
	 */
	static void ExpectLines(FAutomationTestBase& Test, const TArray<FOrvaneLogLine>& Lines);

	/** Checks that the recorded lines are exactly the expected ones, in order. */
	bool TestLines(FAutomationTestBase& Test, const FString& What, const TArray<FOrvaneLogLine>& Expected) const;

private:
	FName Category;
	mutable FCriticalSection Mutex;
	TArray<FOrvaneLogLine> Lines;
};

/** A Warning line of the setup. */
inline FOrvaneLogLine LogWarning(const FString& Text)
{
	return FOrvaneLogLine{ELogVerbosity::Warning, Text};
}

/** An Error line of the setup. */
inline FOrvaneLogLine LogError(const FString& Text)
{
	return FOrvaneLogLine{ELogVerbosity::Error, Text};
}

#endif
