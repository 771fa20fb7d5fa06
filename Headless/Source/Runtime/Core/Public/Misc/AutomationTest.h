// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Async/AsyncExecution.h"
#include "Containers/Array.h"
#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/Delegate.h"
#include "Internationalization/Text.h"
#include "Logging/LogVerbosity.h"
#include "Misc/AutomationEvent.h"
#include "Misc/AutomationTestFlags.h"
#include "Misc/Timespan.h"
#include "Templates/Function.h"
#include "Templates/SharedPointer.h"
#include "Templates/UniquePtr.h"
#include "UObject/NameTypes.h"

#include <mutex>
#include <source_location>
#include <type_traits>

class FAutomationTestBase;
class FAutomationTestFramework;
struct FAutomationMessagePattern;

/** The results of one run of an automation test: whether it passed, and everything it reported. */
class CORE_API FAutomationTestExecutionInfo
{
public:
	FAutomationTestExecutionInfo();

	/** Forgets every result, ready for another run. */
	void Clear();

	/** Removes every entry of one type; returns how many were removed. */
	int32 RemoveAllEvents(EAutomationEventType EventType);

	/** Removes the entries the predicate selects; returns how many were removed. */
	int32 RemoveAllEvents(TFunctionRef<bool(FAutomationEvent&)> FilterPredicate);

	/** Records an event without a source location. */
	void AddEvent(const FAutomationEvent& Event, int StackOffset = 0, bool bCaptureStack = true);

	/** Records an event together with the source location that reported it. */
	void AddEvent(const FAutomationExecutionEntry& Entry);

	void AddWarning(const FString& WarningMessage);
	void AddError(const FString& ErrorMessage);

	/** Every entry, in the order it was reported. */
	const TArray<FAutomationExecutionEntry>& GetEntries() const { return Entries; }

	int32 GetWarningTotal() const { return Warnings; }

	int32 GetErrorTotal() const { return Errors; }

	/** The context pushed last, attached to every event reported until it is popped. */
	const FString& GetContext() const;
	void PushContext(const FString& Context);
	void PopContext();

	/** Whether the test passed. */
	bool bSuccessful;

	/** How long the run took, in seconds of the application clock. */
	double Duration;

	/** Free-form analytics lines the test recorded. */
	TArray<FString> AnalyticsItems;

protected:
	TArray<FAutomationExecutionEntry> Entries;
	TArray<FString> ContextStack;
	int32 Errors;
	int32 Warnings;
};

/** A log line a test declares it expects, and how often it was seen. */
struct CORE_API FAutomationExpectedMessage
{
	FAutomationExpectedMessage(const FString& InMessagePattern, ELogVerbosity::Type InVerbosity,
		EAutomationExpectedMessageFlags::MatchType InCompareType, int32 InExpectedNumberOfOccurrences, bool bInIsRegex);

	/** True if a line of this verbosity and text satisfies the declaration. */
	bool Matches(const FString& Message, ELogVerbosity::Type MessageVerbosity) const;

	/** True if the pattern could be used; an invalid regular expression matches nothing. */
	bool IsValid() const;

	/** The pattern as the test wrote it. */
	FString MessagePatternString;

	/** The least severe verbosity that matches: Warning matches warnings, errors and fatal errors. */
	ELogVerbosity::Type Verbosity;

	EAutomationExpectedMessageFlags::MatchType CompareType;

	/** More than zero: exactly this many; zero: at least once; less than zero: any number. */
	int32 ExpectedNumberOfOccurrences;

	int32 ActualNumberOfOccurrences;

	bool bIsRegex;

private:
	TSharedPtr<const FAutomationMessagePattern> Pattern;
};

/** What the framework knows about one runnable test: the names it is shown and run by. */
class CORE_API FAutomationTestInfo
{
public:
	FAutomationTestInfo() = default;
	FAutomationTestInfo(const FString& InDisplayName, const FString& InFullTestPath, const FString& InTestName,
		EAutomationTestFlags InTestFlags, int32 InNumParticipantsRequired, const FString& InTestParameter,
		const FString& InSourceFile, int32 InSourceFileLine);

	/** The name of the case as the test lists it. */
	const FString& GetDisplayName() const { return DisplayName; }

	/** The dotted name a filter matches, e.g. "System.Core.Automation.Spec.Ordering". */
	const FString& GetFullTestPath() const { return FullTestPath; }

	/** The registered name of the test object that runs it. */
	const FString& GetTestName() const { return TestName; }

	/** The parameter the test object is run with (empty for a simple test). */
	const FString& GetTestParameter() const { return TestParameter; }

	EAutomationTestFlags GetTestFlags() const { return TestFlags; }

	int32 GetNumParticipantsRequired() const { return NumParticipantsRequired; }

	const FString& GetSourceFile() const { return SourceFile; }

	int32 GetSourceFileLine() const { return SourceFileLine; }

private:
	FString DisplayName;
	FString FullTestPath;
	FString TestName;
	EAutomationTestFlags TestFlags = EAutomationTestFlags::None;
	int32 NumParticipantsRequired = 1;
	FString TestParameter;
	FString SourceFile;
	int32 SourceFileLine = 0;
};

/**
 * A step of a test that may take several frames. The framework updates the oldest queued command
 * once per frame until it reports that it has finished.
 */
class CORE_API IAutomationLatentCommand
{
public:
	virtual ~IAutomationLatentCommand() = default;

	/** Does one frame's worth of work; returns true once the command has finished. */
	virtual bool Update() = 0;

protected:
	IAutomationLatentCommand() = default;

	/** Seconds of the application clock since the command was first updated. */
	double GetCurrentRunTime() const;

	/** The application clock when the command was first updated. */
	double StartTime = 0.0;

private:
	friend class FAutomationTestFramework;

	/** Records the start time on the first call, then updates the command. */
	bool InternalUpdate();

	bool bHasStarted = false;
};

/** Runs a function every frame until it returns true. */
class CORE_API FFunctionLatentCommand : public IAutomationLatentCommand
{
public:
	FFunctionLatentCommand(TFunction<bool()> InLatentPredicate)
		: LatentPredicate(MoveTemp(InLatentPredicate))
	{
	}

	virtual bool Update() override;

private:
	TFunction<bool()> LatentPredicate;
};

/** Runs a function once, after a delay measured on the application clock. */
class CORE_API FDelayedFunctionLatentCommand : public IAutomationLatentCommand
{
public:
	FDelayedFunctionLatentCommand(TFunction<void()> InCallback, float InDelay = 0.1f)
		: Callback(MoveTemp(InCallback))
		, Delay(InDelay)
	{
	}

	virtual bool Update() override;

private:
	TFunction<void()> Callback;
	float Delay;
};

/**
 * Runs a function every frame until it returns true; if that takes longer than the timeout
 * (application clock), runs the timeout function instead and finishes.
 */
class CORE_API FUntilCommand : public IAutomationLatentCommand
{
public:
	FUntilCommand(TFunction<bool()> InCallback, TFunction<bool()> InTimeoutCallback, float InTimeout = 5.0f)
		: Callback(MoveTemp(InCallback))
		, TimeoutCallback(MoveTemp(InTimeoutCallback))
		, Timeout(InTimeout)
	{
	}

	virtual bool Update() override;

private:
	TFunction<bool()> Callback;
	TFunction<bool()> TimeoutCallback;
	float Timeout;
};

namespace UE::Automation::Private
{
	CORE_API FString FormatSigned(int64 Value);
	CORE_API FString FormatUnsigned(uint64 Value);
	CORE_API FString FormatDouble(double Value);
	CORE_API FString FormatPointer(const void* Value);
	CORE_API FString FormatQuoted(const FString& Value);

	/** Turns a value into the text an assertion's failure message shows. */
	template <typename ValueType>
	FString ToDisplayString(const ValueType& Value)
	{
		if constexpr (std::is_same_v<ValueType, bool>)
		{
			return Value ? FString(TEXT("true")) : FString(TEXT("false"));
		}
		else if constexpr (std::is_enum_v<ValueType>)
		{
			return ToDisplayString(static_cast<std::underlying_type_t<ValueType>>(Value));
		}
		else if constexpr (std::is_integral_v<ValueType> && std::is_signed_v<ValueType>)
		{
			return FormatSigned(static_cast<int64>(Value));
		}
		else if constexpr (std::is_integral_v<ValueType>)
		{
			return FormatUnsigned(static_cast<uint64>(Value));
		}
		else if constexpr (std::is_floating_point_v<ValueType>)
		{
			return FormatDouble(static_cast<double>(Value));
		}
		else if constexpr (std::is_pointer_v<ValueType> || std::is_null_pointer_v<ValueType>)
		{
			return FormatPointer(static_cast<const void*>(Value));
		}
		else if constexpr (std::is_same_v<ValueType, FString>)
		{
			return FormatQuoted(Value);
		}
		else if constexpr (requires { LexToString(Value); })
		{
			return FString(LexToString(Value));
		}
		else if constexpr (requires { Value.ToString(); })
		{
			return FormatQuoted(FString(Value.ToString()));
		}
		else
		{
			return FString(TEXT("<value>"));
		}
	}
} // namespace UE::Automation::Private

/**
 * The base of every automation test. A test object registers itself with the framework when it is
 * constructed (the test-declaring macros create one static instance per test) and unregisters when
 * it is destroyed, for example when its module is unloaded.
 *
 * A run fails if RunTest returns false, if any error was reported (a failed assertion, AddError, an
 * Error log line, or a Warning log line unless warnings are suppressed), or if an expected log
 * message was not seen as often as declared. Failed assertions record the file and line of the call.
 */
class CORE_API FAutomationTestBase
{
public:
	FAutomationTestBase(const FString& InName, const bool bInComplexTask);
	virtual ~FAutomationTestBase();

	FAutomationTestBase(const FAutomationTestBase&) = delete;
	FAutomationTestBase& operator=(const FAutomationTestBase&) = delete;

	/** The test's flags: application contexts, filter, priority. */
	virtual EAutomationTestFlags GetTestFlags() const = 0;

	/** How many participants the test needs; always one here. */
	virtual uint32 GetRequiredDeviceNum() const = 0;

	/** The dotted name shown for the test, e.g. "System.Core.Automation.LogPolicy". */
	virtual FString GetBeautifiedTestName() const = 0;

	/** The source file that declares the test. */
	virtual FString GetTestSourceFileName() const;

	/** The source file that declares one of the test's cases; the test's own file by default. */
	virtual FString GetTestSourceFileName(const FString& InTestName) const;

	/** The line that declares the test. */
	virtual int32 GetTestSourceFileLine() const;

	/** The line that declares one of the test's cases; the test's own line by default. */
	virtual int32 GetTestSourceFileLine(const FString& InTestName) const;

	virtual bool IsStressTest() const { return false; }

	/** The name the test object was registered under. */
	const FString& GetTestName() const { return TestName; }

	/** The parameter of the current run, e.g. which case of a complex test runs. */
	const FString& GetTestContext() const { return TestParameterContext; }

	/** The full dotted name of the current run. */
	FString GetTestFullName() const;

	bool IsComplexTask() const { return bComplexTask; }

	/** Forgets the results and expectations of the previous run. */
	void ClearExecutionInfo();

	/** Reports an error: the test fails. Ignored if it matches an expected error. */
	virtual void AddError(
		const FString& InError, int32 StackOffset = 0, std::source_location Location = std::source_location::current());

	/** Reports an error if the condition is false; returns the condition. */
	virtual bool AddErrorIfFalse(bool bCondition, const FString& InError, int32 StackOffset = 0,
		std::source_location Location = std::source_location::current());

	/** Reports a warning: noted in the results, does not fail the test by itself. */
	virtual void AddWarning(const FString& InWarning, int32 StackOffset = 0,
		std::source_location Location = std::source_location::current());

	/** Records a note in the results. */
	virtual void AddInfo(const FString& InLogItem, int32 StackOffset = 0, bool bCaptureStack = false,
		std::source_location Location = std::source_location::current());

	/** Records an event of any type. */
	virtual void AddEvent(const FAutomationEvent& InEvent, int32 StackOffset = 0, bool bCaptureStack = false,
		std::source_location Location = std::source_location::current());

	virtual void AddAnalyticsItem(const FString& InAnalyticsItem);

	/** True if an error was reported during the current run. */
	bool HasAnyErrors() const;

	/** Reports, as errors, the expected errors that were not seen as often as declared; true if none. */
	bool HasMetExpectedErrors();

	/** Same check for the expected messages of the given verbosity or more severe; All checks every one. */
	bool HasMetExpectedMessages(ELogVerbosity::Type VerbosityType = ELogVerbosity::All);

	/** Forces the result of the current run. */
	void SetSuccessState(bool bSuccessful);

	/** Whether the last run passed. */
	bool GetLastExecutionSuccessState();

	/** A copy of the results of the current or last run. */
	void GetExecutionInfo(FAutomationTestExecutionInfo& OutInfo) const;

	/**
	 * Declares an error or warning log line the test expects. A matching line no longer fails the
	 * test; a declaration whose count is not met does. Occurrences > 0: exactly that many; 0: at least
	 * once; < 0: any number. Matching ignores case.
	 */
	void AddExpectedError(FString ExpectedPatternString,
		EAutomationExpectedErrorFlags::MatchType CompareType = EAutomationExpectedErrorFlags::Contains,
		int32 Occurrences = 1, bool IsRegex = true);

	/** AddExpectedError with a plain string instead of a regular expression. */
	void AddExpectedErrorPlain(FString ExpectedString,
		EAutomationExpectedErrorFlags::MatchType CompareType = EAutomationExpectedErrorFlags::Contains,
		int32 Occurrences = 1);

	/** Declares a log line of any verbosity the test expects. */
	void AddExpectedMessage(FString ExpectedPatternString,
		EAutomationExpectedMessageFlags::MatchType CompareType = EAutomationExpectedMessageFlags::Contains,
		int32 Occurrences = 1, bool IsRegex = true);

	/** Declares a log line of the given verbosity, or a more severe one, the test expects. */
	void AddExpectedMessage(FString ExpectedPatternString, ELogVerbosity::Type ExpectedVerbosity,
		EAutomationExpectedMessageFlags::MatchType CompareType = EAutomationExpectedMessageFlags::Contains,
		int32 Occurrences = 1, bool IsRegex = true);

	/** AddExpectedMessage with a plain string instead of a regular expression. */
	void AddExpectedMessagePlain(FString ExpectedString,
		EAutomationExpectedMessageFlags::MatchType CompareType = EAutomationExpectedMessageFlags::Contains,
		int32 Occurrences = 1);

	void AddExpectedMessagePlain(FString ExpectedString, ELogVerbosity::Type ExpectedVerbosity,
		EAutomationExpectedMessageFlags::MatchType CompareType = EAutomationExpectedMessageFlags::Contains,
		int32 Occurrences = 1);

	/** The declarations of the current run whose verbosity is the given one or more severe. */
	void GetExpectedMessages(
		TArray<FAutomationExpectedMessage>& OutInfo, ELogVerbosity::Type Verbosity = ELogVerbosity::All) const;

	/** The declarations of the current run made with AddExpectedError. */
	void GetExpectedErrors(TArray<FAutomationExpectedMessage>& OutInfo) const;

	/** Describes every case of the test for the framework's list. */
	void GenerateTestNames(TArray<FAutomationTestInfo>& TestInfo) const;

	/** Enqueues a latent command; the framework owns and deletes it. */
	void AddCommand(IAutomationLatentCommand* NewCommand);

	/** When true, Error log lines are noted instead of failing the test. */
	virtual bool SuppressLogErrors() { return false; }

	/** When true, Warning log lines are noted instead of being reported. */
	virtual bool SuppressLogWarnings() { return false; }

	/** When true (the editor's default), an unexpected Warning log line fails the test like an error. */
	virtual bool ElevateLogWarningsToErrors() { return true; }

	/** Log categories whose lines are noted instead of being reported. */
	virtual TArray<FString> GetSuppressedLogCategories() { return TArray<FString>(); }

	// Assertions. Each reports a failure as an error at the caller's file and line and returns
	// whether the check held, so a test can stop early.

	bool TestEqual(const FString& What, const int32 Actual, const int32 Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const int64 Actual, const int64 Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const uint32 Actual, const uint32 Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const uint64 Actual, const uint64 Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const float Actual, const float Expected, float Tolerance = 1.e-8f,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const double Actual, const double Expected, double Tolerance = 1.e-8,
		std::source_location Location = std::source_location::current());

	/** String comparisons are case-sensitive; see TestEqualInsensitive. */
	bool TestEqual(const FString& What, const FString& Actual, const FString& Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const FString& Actual, const TCHAR* Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const TCHAR* Actual, const FString& Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const TCHAR* Actual, const TCHAR* Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const FText& Actual, const FText& Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqual(const FString& What, const FName& Actual, const FName& Expected,
		std::source_location Location = std::source_location::current());

	/** Compares any two values of one type with operator==. */
	template <typename ValueType>
	bool TestEqual(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		if (Actual == Expected)
		{
			return true;
		}
		ReportNotEqual(What, UE::Automation::Private::ToDisplayString(Actual),
			UE::Automation::Private::ToDisplayString(Expected), Location);
		return false;
	}

	bool TestEqualInsensitive(const FString& What, const TCHAR* Actual, const TCHAR* Expected,
		std::source_location Location = std::source_location::current());
	bool TestEqualInsensitive(const FString& What, const FString& Actual, const FString& Expected,
		std::source_location Location = std::source_location::current());

	bool TestNearlyEqual(const FString& What, const float Actual, const float Expected, float Tolerance = 1.e-4f,
		std::source_location Location = std::source_location::current());
	bool TestNearlyEqual(const FString& What, const double Actual, const double Expected, double Tolerance = 1.e-4,
		std::source_location Location = std::source_location::current());

	bool TestNotEqual(const FString& What, const float Actual, const float Expected, float Tolerance = 1.e-8f,
		std::source_location Location = std::source_location::current());
	bool TestNotEqual(const FString& What, const double Actual, const double Expected, double Tolerance = 1.e-8,
		std::source_location Location = std::source_location::current());
	bool TestNotEqual(const FString& What, const FString& Actual, const FString& Expected,
		std::source_location Location = std::source_location::current());
	bool TestNotEqual(const FString& What, const FString& Actual, const TCHAR* Expected,
		std::source_location Location = std::source_location::current());
	bool TestNotEqual(const FString& What, const TCHAR* Actual, const TCHAR* Expected,
		std::source_location Location = std::source_location::current());

	template <typename ValueType>
	bool TestNotEqual(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		if (!(Actual == Expected))
		{
			return true;
		}
		ReportEqual(What, UE::Automation::Private::ToDisplayString(Actual), Location);
		return false;
	}

	template <typename ValueType>
	bool TestLessThan(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return TestOrdering(What, Actual < Expected, TEXT("less than"), Actual, Expected, Location);
	}

	template <typename ValueType>
	bool TestLessEqual(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return TestOrdering(What, !(Expected < Actual), TEXT("less than or equal to"), Actual, Expected, Location);
	}

	template <typename ValueType>
	bool TestGreaterThan(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return TestOrdering(What, Expected < Actual, TEXT("greater than"), Actual, Expected, Location);
	}

	template <typename ValueType>
	bool TestGreaterEqual(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return TestOrdering(What, !(Actual < Expected), TEXT("greater than or equal to"), Actual, Expected, Location);
	}

	bool TestTrue(const FString& What, bool Value, std::source_location Location = std::source_location::current());
	bool TestFalse(const FString& What, bool Value, std::source_location Location = std::source_location::current());

	template <typename ValueType>
	bool TestNull(
		const FString& What, const ValueType* Pointer, std::source_location Location = std::source_location::current())
	{
		return CheckCondition(Pointer == nullptr, What, TEXT("null"), Location);
	}

	bool TestNull(const FString& What, std::nullptr_t, std::source_location Location = std::source_location::current())
	{
		return true;
	}

	template <typename ValueType>
	bool TestNotNull(
		const FString& What, const ValueType* Pointer, std::source_location Location = std::source_location::current())
	{
		return CheckCondition(Pointer != nullptr, What, TEXT("not null"), Location);
	}

	bool TestNotNull(
		const FString& What, std::nullptr_t, std::source_location Location = std::source_location::current())
	{
		return CheckCondition(false, What, TEXT("not null"), Location);
	}

	/** Checks a smart pointer, handle or anything else with IsValid(). */
	template <typename ValueType>
	bool TestValid(
		const FString& What, const ValueType& Value, std::source_location Location = std::source_location::current())
	{
		return CheckCondition(Value.IsValid(), What, TEXT("valid"), Location);
	}

	template <typename ValueType>
	bool TestInvalid(
		const FString& What, const ValueType& Value, std::source_location Location = std::source_location::current())
	{
		return CheckCondition(!Value.IsValid(), What, TEXT("invalid"), Location);
	}

	/** Checks that two references name the same object. */
	template <typename ValueType>
	bool TestSame(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return CheckCondition(&Actual == &Expected, What, TEXT("the same object"), Location);
	}

	template <typename ValueType>
	bool TestNotSame(const FString& What, const ValueType& Actual, const ValueType& Expected,
		std::source_location Location = std::source_location::current())
	{
		return CheckCondition(&Actual != &Expected, What, TEXT("a different object"), Location);
	}

protected:
	/** Lists the cases of the test: the names they are shown by and the parameter each is run with. */
	virtual void GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const = 0;

	/** Runs one case of the test; returns false if it failed. Latent commands it enqueues run afterwards. */
	virtual bool RunTest(const FString& Parameters) = 0;

	/** Sets the parameter of the current run. */
	void SetTestContext(const FString& Context) { TestParameterContext = Context; }

	/** Reports "Expected 'What' to be <Expected>, but it was <Actual>." */
	void ReportNotEqual(
		const FString& What, const FString& ActualText, const FString& ExpectedText, std::source_location Location);

	/** Reports "Expected 'What' to differ from <Value>, but it was <Value>." */
	void ReportEqual(const FString& What, const FString& ValueText, std::source_location Location);

	/** Reports "Expected 'What' to be <Description>." when the condition does not hold; returns it. */
	bool CheckCondition(bool bCondition, const FString& What, const TCHAR* Description, std::source_location Location);

	template <typename ValueType>
	bool TestOrdering(const FString& What, bool bHolds, const TCHAR* Relation, const ValueType& Actual,
		const ValueType& Expected, std::source_location Location)
	{
		if (!bHolds)
		{
			ReportOrdering(What, Relation, UE::Automation::Private::ToDisplayString(Actual),
				UE::Automation::Private::ToDisplayString(Expected), Location);
		}
		return bHolds;
	}

	void ReportOrdering(const FString& What, const TCHAR* Relation, const FString& ActualText,
		const FString& ExpectedText, std::source_location Location);

	/** The name the test object was registered under. */
	FString TestName;

	/** The parameter of the current run. */
	FString TestParameterContext;

	/** Whether the test has several cases (GetTests lists them). */
	bool bComplexTask;

	/** Whether the current run has passed so far. */
	bool bSuccessful;

	/** The results of the current run. */
	FAutomationTestExecutionInfo ExecutionInfo;

	/** The log lines the current run expects. */
	TArray<FAutomationExpectedMessage> ExpectedMessages;

private:
	friend class FAutomationTestFramework;
	friend class FAutomationSpecBase;

	/** Applies the log policy to one line logged while the test runs. */
	void CaptureLogLine(const TCHAR* Message, ELogVerbosity::Type Verbosity, const FName& Category);

	/** Counts the line against every matching expectation; true if any matched. */
	bool ConsumeExpectedMessage(const FString& Message, ELogVerbosity::Type Verbosity);

	/** Records an entry; thread-safe, since spec blocks may report from other threads. */
	void RecordEntry(EAutomationEventType Type, const FString& Message, const FString& Filename, int32 LineNumber);
	void RecordEntry(EAutomationEventType Type, const FString& Message, std::source_location Location);

	/** AddError at a location given by file and line. */
	void AddErrorAt(const FString& InError, const FString& Filename, int32 LineNumber);

	/** Adds an expectation after checking its pattern. */
	void AddExpectation(FAutomationExpectedMessage&& Expectation);

	/** Guards the results and expectations, which other threads may report into. */
	mutable std::recursive_mutex ReportMutex;
};

/**
 * The registry of automation tests and the runner of the current one. A run is
 * StartTestByName, then ExecuteLatentCommands once per frame until it returns true, then StopTest.
 * A test may start another test while it runs (the framework's own tests do, to watch a test fail);
 * the inner run is the current one until it is stopped.
 */
class CORE_API FAutomationTestFramework
{
public:
	static FAutomationTestFramework& Get();

	/** Adds a test; false if a test is already registered under the name. */
	bool RegisterAutomationTest(const FString& InTestNameToRegister, FAutomationTestBase* InTestToRegister);

	/** Removes a test; false if none is registered under the name. */
	bool UnregisterAutomationTest(const FString& InTestNameToUnregister);

	/** True if a test is registered under the name. */
	bool ContainsTest(const FString& InTestName) const;

	/** The registered test object of that name, or null. */
	FAutomationTestBase* GetRegisteredTest(const FString& InTestName) const;

	/**
	 * Every case of every registered test that may run in the editor and is not disabled, in no
	 * particular order.
	 */
	void GetValidTestNames(TArray<FAutomationTestInfo>& TestInfo) const;

	/**
	 * Starts a test: InTestToRun is the registered name, optionally followed by a space and the
	 * parameter of the case to run. RunTest runs at once; its latent commands run in the frames after.
	 */
	void StartTestByName(
		const FString& InTestToRun, const int32 InRoleIndex, const FString& InFullTestPath = FString());

	/**
	 * Finishes the current test: checks its expected messages, reports latent commands left pending,
	 * and hands back its results. Returns whether it passed.
	 */
	bool StopTest(FAutomationTestExecutionInfo& OutExecutionInfo);

	/** Updates the current test's queued latent commands, oldest first; true once none is left. */
	bool ExecuteLatentCommands();

	/** Queues a latent command for the current test. */
	void EnqueueLatentCommand(TSharedPtr<IAutomationLatentCommand> NewCommand);

	/** The test being run, or null. */
	FAutomationTestBase* GetCurrentTest() const;

	/** The full path the current test was started with. */
	FString GetCurrentTestFullPath() const;

	/** How many latent commands the current test has queued. */
	int32 GetNumLatentCommands() const;

	~FAutomationTestFramework();

private:
	FAutomationTestFramework();

	struct FImpl;
	TUniquePtr<FImpl> Impl;
};

/** Signals that a latent spec block has finished. */
DECLARE_DELEGATE(FDoneDelegate);

#include "Misc/AutomationSpecBase.h"

// Test-declaring macros. Each declares the test class and, where automation is compiled in, one
// static instance that registers it. RunTest (or Define, for a spec) is written after the macro.

#define UE_AUTOMATION_TEST_CLASS_BODY(TClass, TBaseClass, PrettyName, TFlags, bIsComplex, FileName, LineNumber) \
public:                                                                                                         \
	TClass(const FString& InName)                                                                               \
		: TBaseClass(InName, bIsComplex)                                                                        \
	{                                                                                                           \
	}                                                                                                           \
	UE_AUTOMATION_CHECK_TEST_FLAGS(TFlags)                                                                      \
	virtual EAutomationTestFlags GetTestFlags() const override                                                  \
	{                                                                                                           \
		return TFlags;                                                                                          \
	}                                                                                                           \
	virtual uint32 GetRequiredDeviceNum() const override                                                        \
	{                                                                                                           \
		return 1;                                                                                               \
	}                                                                                                           \
	using FAutomationTestBase::GetTestSourceFileName;                                                           \
	virtual FString GetTestSourceFileName() const override                                                      \
	{                                                                                                           \
		return FString(UTF8_TO_TCHAR(FileName));                                                                \
	}                                                                                                           \
	using FAutomationTestBase::GetTestSourceFileLine;                                                           \
	virtual int32 GetTestSourceFileLine() const override                                                        \
	{                                                                                                           \
		return LineNumber;                                                                                      \
	}                                                                                                           \
	virtual FString GetBeautifiedTestName() const override                                                      \
	{                                                                                                           \
		return TEXT(PrettyName);                                                                                \
	}                                                                                                           \
                                                                                                                \
protected:                                                                                                      \
	virtual bool RunTest(const FString& Parameters) override;

#define IMPLEMENT_SIMPLE_AUTOMATION_TEST_PRIVATE(TClass, TBaseClass, PrettyName, TFlags, FileName, LineNumber)      \
	class TClass : public TBaseClass                                                                                \
	{                                                                                                               \
		UE_AUTOMATION_TEST_CLASS_BODY(TClass, TBaseClass, PrettyName, TFlags, false, FileName, LineNumber)          \
		virtual void GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const override \
		{                                                                                                           \
			OutBeautifiedNames.Add(GetBeautifiedTestName());                                                        \
			OutTestCommands.Add(FString());                                                                         \
		}                                                                                                           \
	};

#define IMPLEMENT_COMPLEX_AUTOMATION_TEST_PRIVATE(TClass, TBaseClass, PrettyName, TFlags, FileName, LineNumber)      \
	class TClass : public TBaseClass                                                                                 \
	{                                                                                                                \
		UE_AUTOMATION_TEST_CLASS_BODY(TClass, TBaseClass, PrettyName, TFlags, true, FileName, LineNumber)            \
		virtual void GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const override; \
	};

#if WITH_AUTOMATION_WORKER
#define UE_AUTOMATION_TEST_INSTANCE(TClass)                   \
	namespace                                                 \
	{                                                         \
		TClass TClass##AutomationTestInstance(TEXT(#TClass)); \
	}
#else
#define UE_AUTOMATION_TEST_INSTANCE(TClass)
#endif

/** Declares a test with one case; write `bool TClass::RunTest(const FString& Parameters)` after it. */
#define IMPLEMENT_SIMPLE_AUTOMATION_TEST(TClass, PrettyName, TFlags)                                              \
	IMPLEMENT_SIMPLE_AUTOMATION_TEST_PRIVATE(TClass, FAutomationTestBase, PrettyName, TFlags, __FILE__, __LINE__) \
	UE_AUTOMATION_TEST_INSTANCE(TClass)

/** A simple test deriving from a custom base class (which derives from FAutomationTestBase). */
#define IMPLEMENT_CUSTOM_SIMPLE_AUTOMATION_TEST(TClass, TBaseClass, PrettyName, TFlags)                  \
	IMPLEMENT_SIMPLE_AUTOMATION_TEST_PRIVATE(TClass, TBaseClass, PrettyName, TFlags, __FILE__, __LINE__) \
	UE_AUTOMATION_TEST_INSTANCE(TClass)

/** Declares a test with several cases; write GetTests and RunTest after it. */
#define IMPLEMENT_COMPLEX_AUTOMATION_TEST(TClass, PrettyName, TFlags)                                              \
	IMPLEMENT_COMPLEX_AUTOMATION_TEST_PRIVATE(TClass, FAutomationTestBase, PrettyName, TFlags, __FILE__, __LINE__) \
	UE_AUTOMATION_TEST_INSTANCE(TClass)

#define IMPLEMENT_CUSTOM_COMPLEX_AUTOMATION_TEST(TClass, TBaseClass, PrettyName, TFlags)                  \
	IMPLEMENT_COMPLEX_AUTOMATION_TEST_PRIVATE(TClass, TBaseClass, PrettyName, TFlags, __FILE__, __LINE__) \
	UE_AUTOMATION_TEST_INSTANCE(TClass)

// Latent command declarations: the macro declares the class, `bool CommandName::Update()` follows.

#define DEFINE_LATENT_AUTOMATION_COMMAND(CommandName)   \
	class CommandName : public IAutomationLatentCommand \
	{                                                   \
	public:                                             \
		virtual ~CommandName() {}                       \
		virtual bool Update() override;                 \
	}

#define DEFINE_LATENT_AUTOMATION_COMMAND_ONE_PARAMETER(CommandName, ParamType, ParamName) \
	class CommandName : public IAutomationLatentCommand                                   \
	{                                                                                     \
	public:                                                                               \
		CommandName(ParamType InputParam)                                                 \
			: ParamName(InputParam)                                                       \
		{                                                                                 \
		}                                                                                 \
		virtual ~CommandName() {}                                                         \
		virtual bool Update() override;                                                   \
                                                                                          \
	private:                                                                              \
		ParamType ParamName;                                                              \
	}

#define DEFINE_LATENT_AUTOMATION_COMMAND_TWO_PARAMETER(CommandName, ParamType0, ParamName0, ParamType1, ParamName1) \
	class CommandName : public IAutomationLatentCommand                                                             \
	{                                                                                                               \
	public:                                                                                                         \
		CommandName(ParamType0 InputParam0, ParamType1 InputParam1)                                                 \
			: ParamName0(InputParam0)                                                                               \
			, ParamName1(InputParam1)                                                                               \
		{                                                                                                           \
		}                                                                                                           \
		virtual ~CommandName() {}                                                                                   \
		virtual bool Update() override;                                                                             \
                                                                                                                    \
	private:                                                                                                        \
		ParamType0 ParamName0;                                                                                      \
		ParamType1 ParamName1;                                                                                      \
	}

#define DEFINE_LATENT_AUTOMATION_COMMAND_THREE_PARAMETER(                                   \
	CommandName, ParamType0, ParamName0, ParamType1, ParamName1, ParamType2, ParamName2)    \
	class CommandName : public IAutomationLatentCommand                                     \
	{                                                                                       \
	public:                                                                                 \
		CommandName(ParamType0 InputParam0, ParamType1 InputParam1, ParamType2 InputParam2) \
			: ParamName0(InputParam0)                                                       \
			, ParamName1(InputParam1)                                                       \
			, ParamName2(InputParam2)                                                       \
		{                                                                                   \
		}                                                                                   \
		virtual ~CommandName() {}                                                           \
		virtual bool Update() override;                                                     \
                                                                                            \
	private:                                                                                \
		ParamType0 ParamName0;                                                              \
		ParamType1 ParamName1;                                                              \
		ParamType2 ParamName2;                                                              \
	}

/** Queues a latent command for the running test: ADD_LATENT_AUTOMATION_COMMAND(FMyCommand(Arg)). */
#define ADD_LATENT_AUTOMATION_COMMAND(ClassDeclaration) \
	FAutomationTestFramework::Get().EnqueueLatentCommand(TSharedPtr<IAutomationLatentCommand>(new ClassDeclaration));

// Assertions that end RunTest with false when they fail.

#define UTEST_EQUAL(What, Actual, Expected) \
	if (!TestEqual(What, Actual, Expected)) \
	{                                       \
		return false;                       \
	}

#define UTEST_EQUAL_TOLERANCE(What, Actual, Expected, Tolerance) \
	if (!TestEqual(What, Actual, Expected, Tolerance))           \
	{                                                            \
		return false;                                            \
	}

#define UTEST_EQUAL_INSENSITIVE(What, Actual, Expected) \
	if (!TestEqualInsensitive(What, Actual, Expected))  \
	{                                                   \
		return false;                                   \
	}

#define UTEST_NEARLY_EQUAL(What, Actual, Expected, Tolerance) \
	if (!TestNearlyEqual(What, Actual, Expected, Tolerance))  \
	{                                                         \
		return false;                                         \
	}

#define UTEST_NOT_EQUAL(What, Actual, Expected) \
	if (!TestNotEqual(What, Actual, Expected))  \
	{                                           \
		return false;                           \
	}

#define UTEST_LESS(What, Actual, Expected)     \
	if (!TestLessThan(What, Actual, Expected)) \
	{                                          \
		return false;                          \
	}

#define UTEST_LESS_EQUAL(What, Actual, Expected) \
	if (!TestLessEqual(What, Actual, Expected))  \
	{                                            \
		return false;                            \
	}

#define UTEST_GREATER(What, Actual, Expected)     \
	if (!TestGreaterThan(What, Actual, Expected)) \
	{                                             \
		return false;                             \
	}

#define UTEST_GREATER_EQUAL(What, Actual, Expected) \
	if (!TestGreaterEqual(What, Actual, Expected))  \
	{                                               \
		return false;                               \
	}

#define UTEST_TRUE(What, Value) \
	if (!TestTrue(What, Value)) \
	{                           \
		return false;           \
	}

#define UTEST_FALSE(What, Value) \
	if (!TestFalse(What, Value)) \
	{                            \
		return false;            \
	}

#define UTEST_TRUE_EXPR(Expression) UTEST_TRUE(TEXT(#Expression), Expression)
#define UTEST_FALSE_EXPR(Expression) UTEST_FALSE(TEXT(#Expression), Expression)

#define UTEST_NULL(What, Pointer) \
	if (!TestNull(What, Pointer)) \
	{                             \
		return false;             \
	}

#define UTEST_NOT_NULL(What, Pointer) \
	if (!TestNotNull(What, Pointer))  \
	{                                 \
		return false;                 \
	}

#define UTEST_VALID(What, Value) \
	if (!TestValid(What, Value)) \
	{                            \
		return false;            \
	}

#define UTEST_INVALID(What, Value) \
	if (!TestInvalid(What, Value)) \
	{                              \
		return false;              \
	}

#define UTEST_SAME(What, Actual, Expected) \
	if (!TestSame(What, Actual, Expected)) \
	{                                      \
		return false;                      \
	}

#define UTEST_NOT_SAME(What, Actual, Expected) \
	if (!TestNotSame(What, Actual, Expected))  \
	{                                          \
		return false;                          \
	}
