// Copyright Orvane. All Rights Reserved.

#include "Misc/AutomationTest.h"

#include <algorithm>
#include <cmath>

namespace
{
	FString FileNameOf(const std::source_location& Location)
	{
		return FString(UTF8_TO_TCHAR(Location.file_name()));
	}

	ELogVerbosity::Type SeverityOf(ELogVerbosity::Type Verbosity)
	{
		return (ELogVerbosity::Type)(Verbosity & ELogVerbosity::VerbosityMask);
	}

	const TCHAR* LabelOf(const FAutomationExpectedMessage& Expectation)
	{
		return Expectation.Verbosity == ELogVerbosity::Warning ? TEXT("error or warning") : TEXT("log message");
	}
} // namespace

FAutomationTestBase::FAutomationTestBase(const FString& InName, const bool bInComplexTask)
	: TestName(InName)
	, bComplexTask(bInComplexTask)
	, bSuccessful(false)
{
	FAutomationTestFramework::Get().RegisterAutomationTest(InName, this);
}

FAutomationTestBase::~FAutomationTestBase()
{
	FAutomationTestFramework::Get().UnregisterAutomationTest(TestName);
}

FString FAutomationTestBase::GetTestSourceFileName() const
{
	return FString();
}

FString FAutomationTestBase::GetTestSourceFileName(const FString& InTestName) const
{
	return GetTestSourceFileName();
}

int32 FAutomationTestBase::GetTestSourceFileLine() const
{
	return 0;
}

int32 FAutomationTestBase::GetTestSourceFileLine(const FString& InTestName) const
{
	return GetTestSourceFileLine();
}

FString FAutomationTestBase::GetTestFullName() const
{
	if (FAutomationTestFramework::Get().GetCurrentTest() == this)
	{
		const FString FullPath = FAutomationTestFramework::Get().GetCurrentTestFullPath();
		if (!FullPath.IsEmpty())
		{
			return FullPath;
		}
	}
	return GetBeautifiedTestName();
}

void FAutomationTestBase::ClearExecutionInfo()
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	ExecutionInfo.Clear();
	ExpectedMessages.Empty();
	TestParameterContext.Empty();
	bSuccessful = true;
}

void FAutomationTestBase::RecordEntry(
	EAutomationEventType Type, const FString& Message, const FString& Filename, int32 LineNumber)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	ExecutionInfo.AddEvent(FAutomationExecutionEntry(FAutomationEvent(Type, Message), Filename, LineNumber));
	if (Type == EAutomationEventType::Error)
	{
		bSuccessful = false;
	}
}

void FAutomationTestBase::RecordEntry(EAutomationEventType Type, const FString& Message, std::source_location Location)
{
	RecordEntry(Type, Message, FileNameOf(Location), (int32)Location.line());
}

void FAutomationTestBase::AddErrorAt(const FString& InError, const FString& Filename, int32 LineNumber)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	if (!ConsumeExpectedMessage(InError, ELogVerbosity::Error))
	{
		RecordEntry(EAutomationEventType::Error, InError, Filename, LineNumber);
	}
}

void FAutomationTestBase::AddError(const FString& InError, int32 StackOffset, std::source_location Location)
{
	AddErrorAt(InError, FileNameOf(Location), (int32)Location.line());
}

bool FAutomationTestBase::AddErrorIfFalse(
	bool bCondition, const FString& InError, int32 StackOffset, std::source_location Location)
{
	if (!bCondition)
	{
		AddError(InError, StackOffset, Location);
	}
	return bCondition;
}

void FAutomationTestBase::AddWarning(const FString& InWarning, int32 StackOffset, std::source_location Location)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	if (!ConsumeExpectedMessage(InWarning, ELogVerbosity::Warning))
	{
		RecordEntry(EAutomationEventType::Warning, InWarning, Location);
	}
}

void FAutomationTestBase::AddInfo(
	const FString& InLogItem, int32 StackOffset, bool bCaptureStack, std::source_location Location)
{
	RecordEntry(EAutomationEventType::Info, InLogItem, Location);
}

void FAutomationTestBase::AddEvent(
	const FAutomationEvent& InEvent, int32 StackOffset, bool bCaptureStack, std::source_location Location)
{
	switch (InEvent.Type)
	{
		case EAutomationEventType::Error:
			AddError(InEvent.Message, StackOffset, Location);
			break;
		case EAutomationEventType::Warning:
			AddWarning(InEvent.Message, StackOffset, Location);
			break;
		case EAutomationEventType::Info:
			AddInfo(InEvent.Message, StackOffset, bCaptureStack, Location);
			break;
	}
}

void FAutomationTestBase::AddAnalyticsItem(const FString& InAnalyticsItem)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	ExecutionInfo.AnalyticsItems.Add(InAnalyticsItem);
}

bool FAutomationTestBase::HasAnyErrors() const
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	return ExecutionInfo.GetErrorTotal() > 0;
}

bool FAutomationTestBase::HasMetExpectedErrors()
{
	return HasMetExpectedMessages(ELogVerbosity::Warning);
}

bool FAutomationTestBase::HasMetExpectedMessages(ELogVerbosity::Type VerbosityType)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	bool bAllMet = true;
	for (const FAutomationExpectedMessage& Expectation : ExpectedMessages)
	{
		if (Expectation.Verbosity > VerbosityType)
		{
			continue;
		}
		const int32 Expected = Expectation.ExpectedNumberOfOccurrences;
		const int32 Actual = Expectation.ActualNumberOfOccurrences;
		if (Expected > 0 && Actual != Expected)
		{
			bAllMet = false;
			RecordEntry(EAutomationEventType::Error,
				FString::Printf(TEXT("Expected %s '%s' to be seen %d time(s), but it was seen %d time(s)."),
					LabelOf(Expectation), *Expectation.MessagePatternString, Expected, Actual),
				FString(), 0);
		}
		else if (Expected == 0 && Actual == 0)
		{
			bAllMet = false;
			RecordEntry(EAutomationEventType::Error,
				FString::Printf(TEXT("Expected %s '%s' to be seen at least once, but it was never seen."),
					LabelOf(Expectation), *Expectation.MessagePatternString),
				FString(), 0);
		}
	}
	return bAllMet;
}

void FAutomationTestBase::SetSuccessState(bool bInSuccessful)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	bSuccessful = bInSuccessful;
}

bool FAutomationTestBase::GetLastExecutionSuccessState()
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	return bSuccessful;
}

void FAutomationTestBase::GetExecutionInfo(FAutomationTestExecutionInfo& OutInfo) const
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	OutInfo = ExecutionInfo;
}

void FAutomationTestBase::AddExpectation(FAutomationExpectedMessage&& Expectation)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	if (!Expectation.IsValid())
	{
		RecordEntry(EAutomationEventType::Error,
			FString::Printf(
				TEXT("'%s' is not a valid regular expression; pass IsRegex = false to match it as plain text."),
				*Expectation.MessagePatternString),
			FString(), 0);
		return;
	}
	for (FAutomationExpectedMessage& Existing : ExpectedMessages)
	{
		// Declaring the same pattern twice adds up the occurrences rather than creating a rival
		// expectation that could never be met.
		if (Existing.MessagePatternString == Expectation.MessagePatternString &&
			Existing.Verbosity == Expectation.Verbosity && Existing.CompareType == Expectation.CompareType &&
			Existing.bIsRegex == Expectation.bIsRegex)
		{
			if (Existing.ExpectedNumberOfOccurrences > 0 && Expectation.ExpectedNumberOfOccurrences > 0)
			{
				Existing.ExpectedNumberOfOccurrences += Expectation.ExpectedNumberOfOccurrences;
			}
			else
			{
				Existing.ExpectedNumberOfOccurrences =
					std::min(Existing.ExpectedNumberOfOccurrences, Expectation.ExpectedNumberOfOccurrences);
			}
			return;
		}
	}
	ExpectedMessages.Add(MoveTemp(Expectation));
}

void FAutomationTestBase::AddExpectedError(FString ExpectedPatternString,
	EAutomationExpectedErrorFlags::MatchType CompareType, int32 Occurrences, bool IsRegex)
{
	AddExpectation(
		FAutomationExpectedMessage(ExpectedPatternString, ELogVerbosity::Warning, CompareType, Occurrences, IsRegex));
}

void FAutomationTestBase::AddExpectedErrorPlain(
	FString ExpectedString, EAutomationExpectedErrorFlags::MatchType CompareType, int32 Occurrences)
{
	AddExpectedError(MoveTemp(ExpectedString), CompareType, Occurrences, false);
}

void FAutomationTestBase::AddExpectedMessage(FString ExpectedPatternString,
	EAutomationExpectedMessageFlags::MatchType CompareType, int32 Occurrences, bool IsRegex)
{
	AddExpectedMessage(MoveTemp(ExpectedPatternString), ELogVerbosity::All, CompareType, Occurrences, IsRegex);
}

void FAutomationTestBase::AddExpectedMessage(FString ExpectedPatternString, ELogVerbosity::Type ExpectedVerbosity,
	EAutomationExpectedMessageFlags::MatchType CompareType, int32 Occurrences, bool IsRegex)
{
	AddExpectation(
		FAutomationExpectedMessage(ExpectedPatternString, ExpectedVerbosity, CompareType, Occurrences, IsRegex));
}

void FAutomationTestBase::AddExpectedMessagePlain(
	FString ExpectedString, EAutomationExpectedMessageFlags::MatchType CompareType, int32 Occurrences)
{
	AddExpectedMessage(MoveTemp(ExpectedString), ELogVerbosity::All, CompareType, Occurrences, false);
}

void FAutomationTestBase::AddExpectedMessagePlain(FString ExpectedString, ELogVerbosity::Type ExpectedVerbosity,
	EAutomationExpectedMessageFlags::MatchType CompareType, int32 Occurrences)
{
	AddExpectedMessage(MoveTemp(ExpectedString), ExpectedVerbosity, CompareType, Occurrences, false);
}

void FAutomationTestBase::GetExpectedMessages(
	TArray<FAutomationExpectedMessage>& OutInfo, ELogVerbosity::Type Verbosity) const
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	OutInfo.Empty();
	for (const FAutomationExpectedMessage& Expectation : ExpectedMessages)
	{
		if (Expectation.Verbosity <= Verbosity)
		{
			OutInfo.Add(Expectation);
		}
	}
}

void FAutomationTestBase::GetExpectedErrors(TArray<FAutomationExpectedMessage>& OutInfo) const
{
	GetExpectedMessages(OutInfo, ELogVerbosity::Warning);
}

bool FAutomationTestBase::ConsumeExpectedMessage(const FString& Message, ELogVerbosity::Type Verbosity)
{
	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	bool bMatched = false;
	for (FAutomationExpectedMessage& Expectation : ExpectedMessages)
	{
		if (Expectation.Matches(Message, Verbosity))
		{
			++Expectation.ActualNumberOfOccurrences;
			bMatched = true;
		}
	}
	return bMatched;
}

void FAutomationTestBase::CaptureLogLine(const TCHAR* Message, ELogVerbosity::Type Verbosity, const FName& Category)
{
	const ELogVerbosity::Type Severity = SeverityOf(Verbosity);
	const FString Text(Message);
	const FString CategoryName = Category.ToString();

	std::lock_guard<std::recursive_mutex> Lock(ReportMutex);
	EAutomationEventType Type = EAutomationEventType::Info;
	if (ConsumeExpectedMessage(Text, Severity))
	{
		// An expected line is noted, never reported as a problem.
	}
	else if (GetSuppressedLogCategories().Contains(CategoryName))
	{
	}
	else if (Severity == ELogVerbosity::Fatal || Severity == ELogVerbosity::Error)
	{
		Type = SuppressLogErrors() ? EAutomationEventType::Info : EAutomationEventType::Error;
	}
	else if (Severity == ELogVerbosity::Warning)
	{
		if (!SuppressLogWarnings())
		{
			Type = ElevateLogWarningsToErrors() ? EAutomationEventType::Error : EAutomationEventType::Warning;
		}
	}
	else if (Severity > ELogVerbosity::Log)
	{
		// Verbose output only counts towards expectations.
		return;
	}

	ExecutionInfo.AddEvent(FAutomationExecutionEntry(FAutomationEvent(Type, Text, CategoryName)));
	if (Type == EAutomationEventType::Error)
	{
		bSuccessful = false;
	}
}

void FAutomationTestBase::GenerateTestNames(TArray<FAutomationTestInfo>& TestInfo) const
{
	TArray<FString> BeautifiedNames;
	TArray<FString> TestCommands;
	GetTests(BeautifiedNames, TestCommands);
	const FString BeautifiedTestName = GetBeautifiedTestName();
	for (int32 Index = 0; Index < BeautifiedNames.Num() && Index < TestCommands.Num(); ++Index)
	{
		// A simple test lists itself under its own name; the cases of other tests hang below it.
		const FString& CaseName = BeautifiedNames[Index];
		const FString FullPath =
			CaseName == BeautifiedTestName ? BeautifiedTestName : BeautifiedTestName + TEXT(".") + CaseName;
		TestInfo.Add(FAutomationTestInfo(CaseName, FullPath, TestName, GetTestFlags(), (int32)GetRequiredDeviceNum(),
			TestCommands[Index], GetTestSourceFileName(TestCommands[Index]),
			GetTestSourceFileLine(TestCommands[Index])));
	}
}

void FAutomationTestBase::AddCommand(IAutomationLatentCommand* NewCommand)
{
	FAutomationTestFramework::Get().EnqueueLatentCommand(TSharedPtr<IAutomationLatentCommand>(NewCommand));
}

// --- Assertions ----------------------------------------------------------------------------------

void FAutomationTestBase::ReportNotEqual(
	const FString& What, const FString& ActualText, const FString& ExpectedText, std::source_location Location)
{
	AddError(FString::Printf(TEXT("Expected '%s' to be %s, but it was %s."), *What, *ExpectedText, *ActualText), 1,
		Location);
}

void FAutomationTestBase::ReportEqual(const FString& What, const FString& ValueText, std::source_location Location)
{
	AddError(FString::Printf(TEXT("Expected '%s' to differ from %s, but it was %s."), *What, *ValueText, *ValueText), 1,
		Location);
}

void FAutomationTestBase::ReportOrdering(const FString& What, const TCHAR* Relation, const FString& ActualText,
	const FString& ExpectedText, std::source_location Location)
{
	AddError(
		FString::Printf(TEXT("Expected '%s' to be %s %s, but it was %s."), *What, Relation, *ExpectedText, *ActualText),
		1, Location);
}

bool FAutomationTestBase::CheckCondition(
	bool bCondition, const FString& What, const TCHAR* Description, std::source_location Location)
{
	if (!bCondition)
	{
		AddError(FString::Printf(TEXT("Expected '%s' to be %s."), *What, Description), 1, Location);
	}
	return bCondition;
}

namespace
{
	template <typename NumberType>
	bool IsWithin(NumberType Actual, NumberType Expected, NumberType Tolerance)
	{
		return std::abs(Actual - Expected) <= Tolerance;
	}

	FString WithTolerance(double Expected, double Tolerance)
	{
		return UE::Automation::Private::FormatDouble(Expected) + TEXT(" (within ") +
			   UE::Automation::Private::FormatDouble(Tolerance) + TEXT(")");
	}
} // namespace

bool FAutomationTestBase::TestEqual(
	const FString& What, const int32 Actual, const int32 Expected, std::source_location Location)
{
	return TestEqual<int32>(What, Actual, Expected, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const int64 Actual, const int64 Expected, std::source_location Location)
{
	return TestEqual<int64>(What, Actual, Expected, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const uint32 Actual, const uint32 Expected, std::source_location Location)
{
	return TestEqual<uint32>(What, Actual, Expected, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const uint64 Actual, const uint64 Expected, std::source_location Location)
{
	return TestEqual<uint64>(What, Actual, Expected, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const float Actual, const float Expected, float Tolerance, std::source_location Location)
{
	if (IsWithin(Actual, Expected, Tolerance))
	{
		return true;
	}
	ReportNotEqual(What, UE::Automation::Private::FormatDouble(Actual), WithTolerance(Expected, Tolerance), Location);
	return false;
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const double Actual, const double Expected, double Tolerance, std::source_location Location)
{
	if (IsWithin(Actual, Expected, Tolerance))
	{
		return true;
	}
	ReportNotEqual(What, UE::Automation::Private::FormatDouble(Actual), WithTolerance(Expected, Tolerance), Location);
	return false;
}

bool FAutomationTestBase::TestNearlyEqual(
	const FString& What, const float Actual, const float Expected, float Tolerance, std::source_location Location)
{
	return TestEqual(What, Actual, Expected, Tolerance, Location);
}

bool FAutomationTestBase::TestNearlyEqual(
	const FString& What, const double Actual, const double Expected, double Tolerance, std::source_location Location)
{
	return TestEqual(What, Actual, Expected, Tolerance, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const FString& Actual, const FString& Expected, std::source_location Location)
{
	if (Actual.Equals(Expected, ESearchCase::CaseSensitive))
	{
		return true;
	}
	ReportNotEqual(
		What, UE::Automation::Private::FormatQuoted(Actual), UE::Automation::Private::FormatQuoted(Expected), Location);
	return false;
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const FString& Actual, const TCHAR* Expected, std::source_location Location)
{
	return TestEqual(What, Actual, FString(Expected), Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const TCHAR* Actual, const FString& Expected, std::source_location Location)
{
	return TestEqual(What, FString(Actual), Expected, Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const TCHAR* Actual, const TCHAR* Expected, std::source_location Location)
{
	return TestEqual(What, FString(Actual), FString(Expected), Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const FText& Actual, const FText& Expected, std::source_location Location)
{
	return TestEqual(What, Actual.ToString(), Expected.ToString(), Location);
}

bool FAutomationTestBase::TestEqual(
	const FString& What, const FName& Actual, const FName& Expected, std::source_location Location)
{
	if (Actual == Expected)
	{
		return true;
	}
	ReportNotEqual(What, UE::Automation::Private::FormatQuoted(Actual.ToString()),
		UE::Automation::Private::FormatQuoted(Expected.ToString()), Location);
	return false;
}

bool FAutomationTestBase::TestEqualInsensitive(
	const FString& What, const FString& Actual, const FString& Expected, std::source_location Location)
{
	if (Actual.Equals(Expected, ESearchCase::IgnoreCase))
	{
		return true;
	}
	ReportNotEqual(What, UE::Automation::Private::FormatQuoted(Actual),
		UE::Automation::Private::FormatQuoted(Expected) + TEXT(" (ignoring case)"), Location);
	return false;
}

bool FAutomationTestBase::TestEqualInsensitive(
	const FString& What, const TCHAR* Actual, const TCHAR* Expected, std::source_location Location)
{
	return TestEqualInsensitive(What, FString(Actual), FString(Expected), Location);
}

bool FAutomationTestBase::TestNotEqual(
	const FString& What, const float Actual, const float Expected, float Tolerance, std::source_location Location)
{
	if (!IsWithin(Actual, Expected, Tolerance))
	{
		return true;
	}
	ReportEqual(What, UE::Automation::Private::FormatDouble(Actual), Location);
	return false;
}

bool FAutomationTestBase::TestNotEqual(
	const FString& What, const double Actual, const double Expected, double Tolerance, std::source_location Location)
{
	if (!IsWithin(Actual, Expected, Tolerance))
	{
		return true;
	}
	ReportEqual(What, UE::Automation::Private::FormatDouble(Actual), Location);
	return false;
}

bool FAutomationTestBase::TestNotEqual(
	const FString& What, const FString& Actual, const FString& Expected, std::source_location Location)
{
	if (!Actual.Equals(Expected, ESearchCase::CaseSensitive))
	{
		return true;
	}
	ReportEqual(What, UE::Automation::Private::FormatQuoted(Actual), Location);
	return false;
}

bool FAutomationTestBase::TestNotEqual(
	const FString& What, const FString& Actual, const TCHAR* Expected, std::source_location Location)
{
	return TestNotEqual(What, Actual, FString(Expected), Location);
}

bool FAutomationTestBase::TestNotEqual(
	const FString& What, const TCHAR* Actual, const TCHAR* Expected, std::source_location Location)
{
	return TestNotEqual(What, FString(Actual), FString(Expected), Location);
}

bool FAutomationTestBase::TestTrue(const FString& What, bool Value, std::source_location Location)
{
	return CheckCondition(Value, What, TEXT("true"), Location);
}

bool FAutomationTestBase::TestFalse(const FString& What, bool Value, std::source_location Location)
{
	return CheckCondition(!Value, What, TEXT("false"), Location);
}
