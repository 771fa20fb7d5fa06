// Copyright Orvane. All Rights Reserved.

#include "OrvaneLogCapture.h"

#include "Misc/AutomationTest.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/ScopeLock.h"

#if WITH_DEV_AUTOMATION_TESTS

FOrvaneLogCapture::FOrvaneLogCapture(FName InCategory)
	: Category(InCategory)
{
	GLog->AddOutputDevice(this);
}

FOrvaneLogCapture::~FOrvaneLogCapture()
{
	GLog->RemoveOutputDevice(this);
}

void FOrvaneLogCapture::Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& InCategory)
{
	if (InCategory != Category)
	{
		return;
	}
	FScopeLock Lock(&Mutex);
	Lines.Add(FOrvaneLogLine{static_cast<ELogVerbosity::Type>(Verbosity & ELogVerbosity::VerbosityMask), V});
}

TArray<FOrvaneLogLine> FOrvaneLogCapture::GetLines() const
{
	FScopeLock Lock(&Mutex);
	return Lines;
}

void FOrvaneLogCapture::Reset()
{
	FScopeLock Lock(&Mutex);
	Lines.Reset();
}

void FOrvaneLogCapture::ExpectLines(FAutomationTestBase& Test, const TArray<FOrvaneLogLine>& Expected)
{
	TMap<FString, int32> Occurrences;
	for (const FOrvaneLogLine& Line : Expected)
	{
		if (Line.Verbosity <= ELogVerbosity::Warning)
		{
			++Occurrences.FindOrAdd(Line.Text);
		}
	}
	for (const TPair<FString, int32>& Pair : Occurrences)
	{
		Test.AddExpectedErrorPlain(Pair.Key, EAutomationExpectedErrorFlags::Exact, Pair.Value);
	}
}

bool FOrvaneLogCapture::TestLines(
	FAutomationTestBase& Test, const FString& What, const TArray<FOrvaneLogLine>& Expected) const
{
	const TArray<FOrvaneLogLine> Recorded = GetLines();
	const auto Describe = [](const TArray<FOrvaneLogLine>& InLines)
	{
		TArray<FString> Texts;
		for (const FOrvaneLogLine& Line : InLines)
		{
			Texts.Add(FString::Printf(TEXT("%s: %s"), ToString(Line.Verbosity), *Line.Text));
		}
		return FString::Join(Texts, TEXT(" | "));
	};
	if (Recorded == Expected)
	{
		return true;
	}
	Test.AddError(FString::Printf(
		TEXT("%s: expected the lines [%s] but the log holds [%s]"), *What, *Describe(Expected), *Describe(Recorded)));
	return false;
}

#endif
