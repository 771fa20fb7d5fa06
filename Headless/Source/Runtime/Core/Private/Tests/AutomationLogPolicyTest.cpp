// Copyright Orvane. All Rights Reserved.

#include "Logging/LogMacros.h"
#include "Misc/AutomationTest.h"
#include "Tests/AutomationTestFixtures.h"

#if WITH_DEV_AUTOMATION_TESTS

DEFINE_LOG_CATEGORY_STATIC(LogAutomationPolicyTest, Log, All);

using namespace UE::Automation::Tests;

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationDeclaredWarningTest,
	"System.Core.Automation.LogPolicy.DeclaredWarningPasses",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationDeclaredWarningTest::RunTest(const FString& Parameters)
{
	// Declared lines are consumed, so this test passes although it logs a warning and an error.
	AddExpectedError(TEXT("declared warning"), EAutomationExpectedErrorFlags::Contains, 1);
	AddExpectedError(TEXT("^Declared error with a count of 2$"), EAutomationExpectedErrorFlags::Exact, 2);
	UE_LOG(LogAutomationPolicyTest, Warning, TEXT("This is a declared warning."));
	UE_LOG(LogAutomationPolicyTest, Error, TEXT("Declared error with a count of 2"));
	UE_LOG(LogAutomationPolicyTest, Error, TEXT("Declared error with a count of 2"));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationUndeclaredLogTest, "System.Core.Automation.LogPolicy.UndeclaredLinesFail",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationUndeclaredLogTest::RunTest(const FString& Parameters)
{
	FSimpleTestFixture WarningFixture(TEXT("FAutomationUndeclaredWarningFixture"),
		[](FSimpleTestFixture& Test)
		{
			UE_LOG(LogAutomationPolicyTest, Warning, TEXT("An undeclared warning."));
			return true;
		});
	const FNestedRun Warning = RunNested(WarningFixture.GetTestName());
	TestFalse(TEXT("An undeclared warning fails the test (warnings are elevated)"), Warning.bPassed);
	TestTrue(TEXT("The warning is reported as an error"), Warning.HasError(TEXT("An undeclared warning.")));

	FSimpleTestFixture ErrorFixture(TEXT("FAutomationUndeclaredErrorFixture"),
		[](FSimpleTestFixture& Test)
		{
			UE_LOG(LogAutomationPolicyTest, Error, TEXT("An undeclared error."));
			return true;
		});
	const FNestedRun Error = RunNested(ErrorFixture.GetTestName());
	TestFalse(TEXT("An undeclared error fails the test"), Error.bPassed);
	TestTrue(TEXT("The error is reported"), Error.HasError(TEXT("An undeclared error.")));
	TestEqual(TEXT("Exactly one error is reported"), Error.Info.GetErrorTotal(), 1);

	FSimpleTestFixture DisplayFixture(TEXT("FAutomationDisplayLineFixture"),
		[](FSimpleTestFixture& Test)
		{
			UE_LOG(LogAutomationPolicyTest, Display, TEXT("A display line."));
			UE_LOG(LogAutomationPolicyTest, Log, TEXT("A log line."));
			return true;
		});
	const FNestedRun Display = RunNested(DisplayFixture.GetTestName());
	TestTrue(TEXT("Display and Log lines do not fail a test"), Display.bPassed);
	TestEqual(TEXT("Both lines are kept as notes"), Display.Info.GetEntries().Num(), 2);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationWarningSettingsTest, "System.Core.Automation.LogPolicy.WarningSettings",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationWarningSettingsTest::RunTest(const FString& Parameters)
{
	auto LogWarning = [](FSimpleTestFixture& Test)
	{
		UE_LOG(LogAutomationPolicyTest, Warning, TEXT("A warning under test settings."));
		return true;
	};

	FSimpleTestFixture Suppressed(TEXT("FAutomationSuppressedWarningFixture"), LogWarning);
	Suppressed.bSuppressLogWarnings = true;
	const FNestedRun SuppressedRun = RunNested(Suppressed.GetTestName());
	TestTrue(TEXT("A suppressed warning does not fail the test"), SuppressedRun.bPassed);
	TestEqual(TEXT("A suppressed warning is not counted as a warning"), SuppressedRun.Info.GetWarningTotal(), 0);

	FSimpleTestFixture NotElevated(TEXT("FAutomationNotElevatedWarningFixture"), LogWarning);
	NotElevated.bElevateLogWarningsToErrors = false;
	const FNestedRun NotElevatedRun = RunNested(NotElevated.GetTestName());
	TestTrue(TEXT("A warning that is not elevated does not fail the test"), NotElevatedRun.bPassed);
	TestEqual(TEXT("It is reported as a warning"), NotElevatedRun.Info.GetWarningTotal(), 1);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationExpectedCountsTest, "System.Core.Automation.LogPolicy.ExpectedCounts",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationExpectedCountsTest::RunTest(const FString& Parameters)
{
	// Runs a fixture that declares Occurrences and then logs the warning Logged times.
	auto RunWithCounts = [](int32 Occurrences, int32 Logged)
	{
		FSimpleTestFixture Fixture(TEXT("FAutomationExpectedCountFixture"),
			[Occurrences, Logged](FSimpleTestFixture& Test)
			{
				Test.AddExpectedError(TEXT("counted warning"), EAutomationExpectedErrorFlags::Contains, Occurrences);
				for (int32 Index = 0; Index < Logged; ++Index)
				{
					UE_LOG(LogAutomationPolicyTest, Warning, TEXT("A counted warning, number %d."), Index);
				}
				return true;
			});
		return RunNested(Fixture.GetTestName());
	};

	TestTrue(TEXT("Exact count met"), RunWithCounts(2, 2).bPassed);
	const FNestedRun TooMany = RunWithCounts(2, 3);
	TestFalse(TEXT("Exact count exceeded"), TooMany.bPassed);
	TestTrue(TEXT("The failure names the pattern and the counts"),
		TooMany.HasError(
			TEXT("Expected error or warning 'counted warning' to be seen 2 time(s), but it was seen 3 time(s).")));
	const FNestedRun TooFew = RunWithCounts(2, 1);
	TestFalse(TEXT("Exact count not reached"), TooFew.bPassed);

	TestTrue(TEXT("Zero means at least once: three lines"), RunWithCounts(0, 3).bPassed);
	const FNestedRun Never = RunWithCounts(0, 0);
	TestFalse(TEXT("Zero means at least once: no line"), Never.bPassed);
	TestTrue(TEXT("The failure says it was never seen"),
		Never.HasError(TEXT("'counted warning' to be seen at least once, but it was never seen.")));

	const FNestedRun Missing = RunWithCounts(1, 0);
	TestFalse(TEXT("A declared line that never came fails the test"), Missing.bPassed);
	TestTrue(TEXT("Any number: none"), RunWithCounts(-1, 0).bPassed);
	TestTrue(TEXT("Any number: five"), RunWithCounts(-1, 5).bPassed);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationExpectedMatchingTest, "System.Core.Automation.LogPolicy.Matching",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationExpectedMatchingTest::RunTest(const FString& Parameters)
{
	const FString Line = TEXT("Preset (Main) bound to 0.0.0.0:9001");
	auto Matches = [&Line](const TCHAR* Pattern, EAutomationExpectedMessageFlags::MatchType Compare, bool bIsRegex)
	{
		return FAutomationExpectedMessage(Pattern, ELogVerbosity::Warning, Compare, 1, bIsRegex)
			.Matches(Line, ELogVerbosity::Warning);
	};
	TestTrue(TEXT("Contains finds a part"), Matches(TEXT("bound to"), EAutomationExpectedMessageFlags::Contains, true));
	TestFalse(
		TEXT("Exact needs the whole line"), Matches(TEXT("bound to"), EAutomationExpectedMessageFlags::Exact, true));
	TestTrue(TEXT("Exact plain whole line"), Matches(*Line, EAutomationExpectedMessageFlags::Exact, false));
	TestTrue(TEXT("Matching ignores case"), Matches(TEXT("PRESET"), EAutomationExpectedMessageFlags::Contains, false));
	TestTrue(TEXT("A regular expression"),
		Matches(TEXT("\\d+\\.\\d+\\.\\d+\\.\\d+:9001$"), EAutomationExpectedMessageFlags::Contains, true));
	TestFalse(TEXT("Plain text is not a regular expression"),
		Matches(TEXT("0.0.0.0:900."), EAutomationExpectedMessageFlags::Contains, false));
	TestTrue(TEXT("Plain text keeps parentheses literal"),
		Matches(TEXT("Preset (Main)"), EAutomationExpectedMessageFlags::Contains, false));

	const FAutomationExpectedMessage AtWarning(
		TEXT("x"), ELogVerbosity::Warning, EAutomationExpectedMessageFlags::Contains, 1, false);
	TestTrue(TEXT("An expectation at Warning accepts errors"), AtWarning.Matches(TEXT("x"), ELogVerbosity::Error));
	TestFalse(
		TEXT("An expectation at Warning ignores Display lines"), AtWarning.Matches(TEXT("x"), ELogVerbosity::Display));
	const FAutomationExpectedMessage AtError(
		TEXT("x"), ELogVerbosity::Error, EAutomationExpectedMessageFlags::Contains, 1, false);
	TestFalse(TEXT("An expectation at Error ignores warnings"), AtError.Matches(TEXT("x"), ELogVerbosity::Warning));

	// A Display line counts towards AddExpectedMessage without a verbosity.
	FSimpleTestFixture Fixture(TEXT("FAutomationExpectedMessageFixture"),
		[](FSimpleTestFixture& Test)
		{
			Test.AddExpectedMessage(TEXT("progress line"), EAutomationExpectedMessageFlags::Contains, 2);
			UE_LOG(LogAutomationPolicyTest, Display, TEXT("A progress line."));
			UE_LOG(LogAutomationPolicyTest, Log, TEXT("Another progress line."));
			return true;
		});
	TestTrue(TEXT("AddExpectedMessage counts lines of any verbosity"), RunNested(Fixture.GetTestName()).bPassed);

	FSimpleTestFixture BadPattern(TEXT("FAutomationBadPatternFixture"),
		[](FSimpleTestFixture& Test)
		{
			Test.AddExpectedError(TEXT("unbalanced ("), EAutomationExpectedErrorFlags::Contains, -1);
			return true;
		});
	const FNestedRun BadPatternRun = RunNested(BadPattern.GetTestName());
	TestFalse(TEXT("An invalid regular expression fails the test"), BadPatternRun.bPassed);
	TestTrue(TEXT("The failure names the pattern"),
		BadPatternRun.HasError(TEXT("'unbalanced (' is not a valid regular expression")));
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS
