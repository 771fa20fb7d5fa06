// Copyright Orvane. All Rights Reserved.

#include "AutomationTestCommand.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "Misc/AutomationTest.h"
#include "ProgramOutput.h"

#include <fstream>

namespace
{
	/** Tests run on a simulated clock: every frame advances the application clock by this much. */
	constexpr double FrameSeconds = 1.0 / 60.0;

	/** A test that is still busy after ten minutes of simulated time is stopped and fails. */
	constexpr int32 MaxFramesPerTest = 10 * 60 * 60;

	struct FTestCommandOptions
	{
		FString Filter;
		FString JUnitPath;
	};

	struct FTestOutcome
	{
		FAutomationTestInfo Info;
		FAutomationTestExecutionInfo Execution;
		bool bPassed = false;
	};

	bool ParseOptions(const TArray<FString>& Args, FTestCommandOptions& OutOptions, FString& OutError)
	{
		bool bHasFilter = false;
		for (int32 Index = 0; Index < Args.Num(); ++Index)
		{
			const FString& Arg = Args[Index];
			if (Arg == TEXT("--junit"))
			{
				if (Index + 1 >= Args.Num())
				{
					OutError = TEXT("--junit needs a file name.");
					return false;
				}
				OutOptions.JUnitPath = Args[++Index];
			}
			else if (Arg.StartsWith(TEXT("--")))
			{
				OutError = FString::Printf(TEXT("Unknown option '%s' for 'test'."), *Arg);
				return false;
			}
			else if (bHasFilter)
			{
				OutError =
					FString::Printf(TEXT("'test' takes one filter, but got '%s' and '%s'."), *OutOptions.Filter, *Arg);
				return false;
			}
			else
			{
				OutOptions.Filter = Arg;
				bHasFilter = true;
			}
		}
		return true;
	}

	/** The tests the filter selects, by full name. */
	TArray<FAutomationTestInfo> FindTests(const FString& Filter)
	{
		TArray<FAutomationTestInfo> AllTests;
		FAutomationTestFramework::Get().GetValidTestNames(AllTests);
		TArray<FAutomationTestInfo> Selected;
		for (const FAutomationTestInfo& Info : AllTests)
		{
			if (Filter.IsEmpty() || Info.GetFullTestPath().StartsWith(Filter, ESearchCase::IgnoreCase))
			{
				Selected.Add(Info);
			}
		}
		Selected.Sort(
			[](const FAutomationTestInfo& A, const FAutomationTestInfo& B)
			{
				return A.GetFullTestPath().Compare(B.GetFullTestPath(), ESearchCase::CaseSensitive) < 0;
			});
		return Selected;
	}

	/** Runs one test to completion, a frame at a time. */
	FTestOutcome RunOneTest(const FAutomationTestInfo& Info)
	{
		FAutomationTestFramework& Framework = FAutomationTestFramework::Get();
		FTestOutcome Outcome;
		Outcome.Info = Info;

		GIsAutomationTesting = true;
		const FString Command = Info.GetTestParameter().IsEmpty()
									? Info.GetTestName()
									: Info.GetTestName() + TEXT(" ") + Info.GetTestParameter();
		Framework.StartTestByName(Command, 0, Info.GetFullTestPath());
		bool bFinished = false;
		for (int32 Frame = 0; Frame < MaxFramesPerTest && !bFinished; ++Frame)
		{
			GEngineLoop.Tick();
			bFinished = Framework.ExecuteLatentCommands();
		}
		Outcome.bPassed = Framework.StopTest(Outcome.Execution);
		GIsAutomationTesting = false;

		if (!bFinished)
		{
			Outcome.Execution.AddError(
				FString::Printf(TEXT("The test did not finish within %d frames (%d seconds of application time)."),
					MaxFramesPerTest, (int32)(MaxFramesPerTest * FrameSeconds)));
			Outcome.bPassed = false;
		}
		return Outcome;
	}

	void PrintOutcome(const FTestOutcome& Outcome)
	{
		ProgramOutput::Line(FString::Printf(
			TEXT("[%s] %s"), Outcome.bPassed ? TEXT("PASS") : TEXT("FAIL"), *Outcome.Info.GetFullTestPath()));
		if (Outcome.bPassed)
		{
			return;
		}
		for (const FAutomationExecutionEntry& Entry : Outcome.Execution.GetEntries())
		{
			if (Entry.Event.Type == EAutomationEventType::Error)
			{
				ProgramOutput::Line(TEXT("    ") + Entry.ToString());
			}
		}
	}

	FString EscapeXml(const FString& Text)
	{
		FString Result;
		for (const TCHAR Char : Text)
		{
			switch (Char)
			{
				case TEXT('&'):
					Result += TEXT("&amp;");
					break;
				case TEXT('<'):
					Result += TEXT("&lt;");
					break;
				case TEXT('>'):
					Result += TEXT("&gt;");
					break;
				case TEXT('"'):
					Result += TEXT("&quot;");
					break;
				case TEXT('\''):
					Result += TEXT("&apos;");
					break;
				default:
					// XML 1.0 cannot carry other control characters at all.
					if (Char >= 0x20 || Char == TEXT('\t') || Char == TEXT('\n') || Char == TEXT('\r'))
					{
						Result.AppendChar(Char);
					}
					break;
			}
		}
		return Result;
	}

	FString FormatSeconds(double Seconds)
	{
		return FString::Printf(TEXT("%.3f"), Seconds);
	}

	/** Writes the outcomes as one JUnit test suite; each test's class is its name without the last part. */
	bool WriteJUnit(const FString& Path, const FString& SuiteName, const TArray<FTestOutcome>& Outcomes)
	{
		int32 Failures = 0;
		double TotalSeconds = 0.0;
		for (const FTestOutcome& Outcome : Outcomes)
		{
			Failures += Outcome.bPassed ? 0 : 1;
			TotalSeconds += Outcome.Execution.Duration;
		}

		FString Xml = TEXT("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
		Xml += FString::Printf(TEXT("<testsuites tests=\"%d\" failures=\"%d\" time=\"%s\">\n"), Outcomes.Num(),
			Failures, *FormatSeconds(TotalSeconds));
		Xml += FString::Printf(
			TEXT("  <testsuite name=\"%s\" tests=\"%d\" failures=\"%d\" errors=\"0\" skipped=\"0\" time=\"%s\">\n"),
			*EscapeXml(SuiteName), Outcomes.Num(), Failures, *FormatSeconds(TotalSeconds));
		for (const FTestOutcome& Outcome : Outcomes)
		{
			const FString& FullPath = Outcome.Info.GetFullTestPath();
			FString ClassName;
			FString Name = FullPath;
			int32 LastDot = INDEX_NONE;
			if (FullPath.FindLastChar(TEXT('.'), LastDot))
			{
				ClassName = FullPath.Left(LastDot);
				Name = FullPath.Mid(LastDot + 1);
			}
			Xml += FString::Printf(TEXT("    <testcase classname=\"%s\" name=\"%s\" time=\"%s\""),
				*EscapeXml(ClassName), *EscapeXml(Name), *FormatSeconds(Outcome.Execution.Duration));
			if (Outcome.bPassed)
			{
				Xml += TEXT("/>\n");
				continue;
			}
			TArray<FString> Errors;
			for (const FAutomationExecutionEntry& Entry : Outcome.Execution.GetEntries())
			{
				if (Entry.Event.Type == EAutomationEventType::Error)
				{
					Errors.Add(Entry.ToString());
				}
			}
			const FString Summary = Errors.Num() > 0 ? Errors[0] : FString(TEXT("The test failed."));
			Xml += TEXT(">\n");
			Xml += FString::Printf(TEXT("      <failure message=\"%s\">%s</failure>\n"), *EscapeXml(Summary),
				*EscapeXml(FString::Join(Errors, TEXT("\n"))));
			Xml += TEXT("    </testcase>\n");
		}
		Xml += TEXT("  </testsuite>\n</testsuites>\n");

		std::ofstream File(TCHAR_TO_UTF8(*Path), std::ios::binary | std::ios::trunc);
		if (!File)
		{
			return false;
		}
		File << TCHAR_TO_UTF8(*Xml);
		return static_cast<bool>(File.flush());
	}
} // namespace

int32 RunAutomationTestCommand(const TArray<FString>& Args)
{
	FTestCommandOptions Options;
	FString Error;
	if (!ParseOptions(Args, Options, Error))
	{
		ProgramOutput::Error(Error);
		return 2;
	}

	const TArray<FAutomationTestInfo> Tests = FindTests(Options.Filter);
	if (Tests.Num() == 0)
	{
		ProgramOutput::Error(
			Options.Filter.IsEmpty()
				? FString(TEXT("No automation test is registered."))
				: FString::Printf(TEXT("No automation test's full name starts with '%s'."), *Options.Filter));
		return 1;
	}

	FApp::SetUseFixedTimeStep(true);
	FApp::SetFixedDeltaTime(FrameSeconds);

	TArray<FTestOutcome> Outcomes;
	int32 Passed = 0;
	for (const FAutomationTestInfo& Info : Tests)
	{
		const FTestOutcome& Outcome = Outcomes[Outcomes.Add(RunOneTest(Info))];
		PrintOutcome(Outcome);
		Passed += Outcome.bPassed ? 1 : 0;
	}
	const int32 Failed = Outcomes.Num() - Passed;
	ProgramOutput::Line(FString::Printf(TEXT("%d passed, %d failed"), Passed, Failed));

	if (!Options.JUnitPath.IsEmpty())
	{
		const FString SuiteName = Options.Filter.IsEmpty() ? FString(TEXT("All")) : Options.Filter;
		if (!WriteJUnit(Options.JUnitPath, SuiteName, Outcomes))
		{
			ProgramOutput::Error(
				FString::Printf(TEXT("Could not write the JUnit report to '%s'."), *Options.JUnitPath));
			return 1;
		}
	}
	return Failed > 0 ? 1 : 0;
}
