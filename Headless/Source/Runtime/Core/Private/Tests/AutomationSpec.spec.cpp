// Copyright Orvane. All Rights Reserved.

#include "Containers/Ticker.h"
#include "Misc/App.h"
#include "Misc/AutomationTest.h"
#include "Tests/AutomationTestFixtures.h"

#include <atomic>
#include <thread>

#if WITH_DEV_AUTOMATION_TESTS

using namespace UE::Automation::Tests;

namespace
{
	/** How often the registered spec below has run Define. */
	int32 GSelfSpecDefineCount = 0;
} // namespace

BEGIN_DEFINE_SPEC(FAutomationSelfSpec, "System.Core.Automation.Spec",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FString RunOrder;
	std::thread::id GameThreadId;
END_DEFINE_SPEC(FAutomationSelfSpec)

void FAutomationSelfSpec::Define()
{
	++GSelfSpecDefineCount;

	Describe("Define",
		[this]()
		{
			It("has run once although the framework asked for the cases many times",
				[this]()
				{
					TestEqual(TEXT("Define calls"), GSelfSpecDefineCount, 1);
				});
		});

	Describe("Ordering",
		[this]()
		{
			BeforeEach(
				[this]()
				{
					RunOrder = TEXT("A");
				});

			Describe("Inner",
				[this]()
				{
					It("runs the outer BeforeEach first, even when the inner one is declared after the It",
						[this]()
						{
							TestEqual(TEXT("Run order"), RunOrder, TEXT("AB"));
						});

					BeforeEach(
						[this]()
						{
							RunOrder += TEXT("B");
						});
				});
		});

	Describe("Latent",
		[this]()
		{
			LatentIt("completes when Done is executed, frames later on the application clock",
				[this](const FDoneDelegate& Done)
				{
					const double StartTime = FApp::GetCurrentTime();
					TSharedRef<int32> Ticks = MakeShared<int32>(0);
					FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
						[this, Done, Ticks, StartTime](float)
						{
							if (++*Ticks < 10)
							{
								return true;
							}
							TestTrue(TEXT("The application clock advanced while the block waited"),
								FApp::GetCurrentTime() - StartTime > 0.0);
							Done.Execute();
							return false;
						}));
				});

			BeforeEach(
				[this]()
				{
					GameThreadId = std::this_thread::get_id();
				});

			It("runs a block given EAsyncExecution::Thread on a thread of its own", EAsyncExecution::Thread,
				[this]()
				{
					TestTrue(TEXT("Not the game thread"), std::this_thread::get_id() != GameThreadId);
				});

			It("runs a block without EAsyncExecution on the game thread",
				[this]()
				{
					TestTrue(TEXT("The game thread"), std::this_thread::get_id() == GameThreadId);
				});
		});

	Describe("Names",
		[this]()
		{
			It("uses an explicit id when the description ends with one [ExplicitId]",
				[this]()
				{
					TestEqual(TEXT("Parameter of this case"), GetTestContext(), TEXT("ExplicitId"));
				});

			It("uses the texts joined with spaces as the id otherwise",
				[this]()
				{
					TestEqual(TEXT("Parameter of this case"), GetTestContext(),
						TEXT("Names uses the texts joined with spaces as the id otherwise"));
				});
		});

	xDescribe("A disabled scope",
		[this]()
		{
			It("is never listed",
				[this]()
				{
					AddError(TEXT("A case of an xDescribe ran."));
				});
		});

	xIt("A disabled It is never listed",
		[this]()
		{
			AddError(TEXT("An xIt ran."));
		});
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationSpecStructureTest, "System.Core.Automation.SpecRunner.Structure",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationSpecStructureTest::RunTest(const FString& Parameters)
{
	FString RunOrder;
	FSpecFixture Spec(TEXT("FAutomationOrderFixture"),
		[&RunOrder](FSpecFixture& Self)
		{
			Self.Describe(TEXT("Outer"),
				[&]()
				{
					Self.AfterEach(
						[&]()
						{
							RunOrder += TEXT("Z");
						});
					Self.BeforeEach(
						[&]()
						{
							RunOrder += TEXT("A");
						});
					Self.BeforeEach(
						[&]()
						{
							RunOrder += TEXT("B");
						});
					Self.Describe(TEXT("Inner"),
						[&]()
						{
							Self.It(TEXT("runs in order"),
								[&]()
								{
									RunOrder += TEXT("I");
								});
							Self.AfterEach(
								[&]()
								{
									RunOrder += TEXT("X");
								});
							Self.AfterEach(
								[&]()
								{
									RunOrder += TEXT("Y");
								});
							Self.BeforeEach(
								[&]()
								{
									RunOrder += TEXT("C");
								});
							Self.LatentBeforeEach(
								[&](const FDoneDelegate& Done)
								{
									RunOrder += TEXT("D");
									Done.Execute();
								});
						});
					Self.It(TEXT("second case [Second]"),
						[&]()
						{
							RunOrder += TEXT("2");
						});
				});
		});

	TestEqual(TEXT("Define has not run before the cases are asked for"), Spec.DefineCount, 0);
	TArray<FAutomationTestInfo> Infos;
	Spec.GenerateTestNames(Infos);
	TestEqual(TEXT("Define ran once"), Spec.DefineCount, 1);
	Spec.GenerateTestNames(Infos);
	TestEqual(TEXT("Define still ran once"), Spec.DefineCount, 1);

	UTEST_EQUAL(TEXT("Cases listed twice"), Infos.Num(), 4);
	const FAutomationTestInfo* First = Infos.FindByPredicate(
		[](const FAutomationTestInfo& Info)
		{
			return Info.GetTestParameter() == TEXT("Outer Inner runs in order");
		});
	UTEST_NOT_NULL(TEXT("The first case's id is its texts joined with spaces"), First);
	TestEqual(TEXT("Its full path joins the texts with dots"), First->GetFullTestPath(),
		TEXT("Fixture.FAutomationOrderFixture.Outer.Inner.runs in order"));
	TestTrue(TEXT("Its source file is the file of the It"),
		First->GetSourceFile().EndsWith(TEXT("AutomationSpec.spec.cpp")));
	const FAutomationTestInfo* Second = Infos.FindByPredicate(
		[](const FAutomationTestInfo& Info)
		{
			return Info.GetTestParameter() == TEXT("Second");
		});
	UTEST_NOT_NULL(TEXT("An explicit [Id] is the second case's id"), Second);
	TestEqual(TEXT("The id is not part of the name"), Second->GetFullTestPath(),
		TEXT("Fixture.FAutomationOrderFixture.Outer.second case"));

	const FNestedRun Run = RunNested(Spec.GetTestName(), First->GetTestParameter());
	TestTrue(TEXT("The case passed"), Run.bPassed);
	TestEqual(TEXT("BeforeEach outer to inner, the It, AfterEach inner to outer"), RunOrder, TEXT("ABCDIXYZ"));

	RunOrder.Empty();
	TestTrue(TEXT("The second case passed"), RunNested(Spec.GetTestName(), TEXT("Second")).bPassed);
	TestEqual(TEXT("Only the blocks of the outer scope surround the second case"), RunOrder, TEXT("AB2Z"));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationSpecTimeoutTest, "System.Core.Automation.SpecRunner.LatentTimeout",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationSpecTimeoutTest::RunTest(const FString& Parameters)
{
	bool bAfterEachRan = false;
	FSpecFixture Spec(TEXT("FAutomationTimeoutFixture"),
		[&bAfterEachRan](FSpecFixture& Self)
		{
			Self.AfterEach(
				[&]()
				{
					bAfterEachRan = true;
				});
			Self.LatentIt(TEXT("never finishes"), FTimespan::FromSeconds(1), [](const FDoneDelegate&) {});
		});
	const FNestedRun Run = RunNestedSpec(Spec);
	TestFalse(TEXT("A latent block that never calls Done fails"), Run.bPassed);
	TestTrue(TEXT("The failure says the block timed out"),
		Run.HasError(TEXT("Latent block It 'never finishes' timed out after 1 seconds.")));
	TestTrue(TEXT("It timed out once a second of application time had passed (60 frames)"),
		Run.Frames >= 59 && Run.Frames <= 62);
	TestTrue(TEXT("AfterEach still ran"), bAfterEachRan);

	FSpecFixture DefaultSpec(TEXT("FAutomationDefaultTimeoutFixture"),
		[](FSpecFixture& Self)
		{
			Self.DefaultTimeout = FTimespan::FromSeconds(2);
			Self.LatentIt(TEXT("uses the default timeout"), [](const FDoneDelegate&) {});
		});
	const FNestedRun DefaultRun = RunNestedSpec(DefaultSpec);
	TestTrue(TEXT("DefaultTimeout applies to blocks without a timeout"),
		DefaultRun.HasError(TEXT("timed out after 2 seconds.")) && DefaultRun.Frames >= 119 &&
			DefaultRun.Frames <= 122);

	FSpecFixture LateDone(TEXT("FAutomationLateDoneFixture"),
		[](FSpecFixture& Self)
		{
			Self.LatentIt(TEXT("finishes on another thread"), EAsyncExecution::Thread,
				[](const FDoneDelegate& Done)
				{
					Done.Execute();
				});
		});
	TestTrue(
		TEXT("A latent block on another thread finishes when Done is executed there"), RunNestedSpec(LateDone).bPassed);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationSpecSkipTest, "System.Core.Automation.SpecRunner.SkipAfterError",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationSpecSkipTest::RunTest(const FString& Parameters)
{
	FString RunOrder;
	auto DefineFailing = [&RunOrder](bool bSkip)
	{
		return [&RunOrder, bSkip](FSpecFixture& Self)
		{
			Self.bEnableSkipIfError = bSkip;
			Self.BeforeEach(
				[&RunOrder, &Self]()
				{
					RunOrder += TEXT("A");
					Self.AddError(TEXT("Set-up failed."));
				});
			Self.BeforeEach(
				[&RunOrder]()
				{
					RunOrder += TEXT("B");
				});
			Self.It(TEXT("fails in set-up"),
				[&RunOrder]()
				{
					RunOrder += TEXT("I");
				});
			Self.AfterEach(
				[&RunOrder]()
				{
					RunOrder += TEXT("Z");
				});
		};
	};

	FSpecFixture Skipping(TEXT("FAutomationSkipFixture"), DefineFailing(true));
	const FNestedRun Skipped = RunNestedSpec(Skipping);
	TestFalse(TEXT("The case failed"), Skipped.bPassed);
	TestTrue(TEXT("The error is reported"), Skipped.HasError(TEXT("Set-up failed.")));
	TestEqual(TEXT("After the error, BeforeEach and It are skipped, AfterEach runs"), RunOrder, TEXT("AZ"));

	RunOrder.Empty();
	FSpecFixture NotSkipping(TEXT("FAutomationNoSkipFixture"), DefineFailing(false));
	TestFalse(TEXT("The case failed"), RunNestedSpec(NotSkipping).bPassed);
	TestEqual(TEXT("Without bEnableSkipIfError every block runs"), RunOrder, TEXT("ABIZ"));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationLatentCommandTest, "System.Core.Automation.Framework.LatentCommands",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationLatentCommandTest::RunTest(const FString& Parameters)
{
	double CalledAfter = -1.0;
	int32 Polls = 0;
	bool bTimedOut = false;
	FSimpleTestFixture Fixture(TEXT("FAutomationLatentCommandFixture"),
		[&](FSimpleTestFixture& Test)
		{
			const double StartTime = FApp::GetCurrentTime();
			ADD_LATENT_AUTOMATION_COMMAND(FDelayedFunctionLatentCommand(
				[&, StartTime]()
				{
					CalledAfter = FApp::GetCurrentTime() - StartTime;
				},
				0.25f));
			ADD_LATENT_AUTOMATION_COMMAND(FFunctionLatentCommand(
				[&]()
				{
					return ++Polls == 3;
				}));
			ADD_LATENT_AUTOMATION_COMMAND(FUntilCommand(
				[]()
				{
					return false;
				},
				[&]()
				{
					bTimedOut = true;
					return true;
				},
				0.5f));
			return true;
		});
	const FNestedRun Run = RunNested(Fixture.GetTestName());
	TestTrue(TEXT("The commands finished"), Run.bPassed);
	TestTrue(TEXT("The delayed function waited a quarter second of application time"),
		CalledAfter >= 0.25 && CalledAfter < 0.25 + 2.0 / 60.0);
	TestEqual(TEXT("A function command is polled until it returns true"), Polls, 3);
	TestTrue(TEXT("An until command calls its timeout function"), bTimedOut);
	TestTrue(TEXT("The commands ran one after another (15 + 2 + 30 frames)"), Run.Frames >= 46 && Run.Frames <= 49);
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS
