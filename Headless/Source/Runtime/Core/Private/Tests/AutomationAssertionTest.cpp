// Copyright Orvane. All Rights Reserved.

#include "Misc/AutomationTest.h"
#include "Tests/AutomationTestFixtures.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace UE::Automation::Tests;

namespace
{
	/** The pre-5.5 spelling of the context mask must not compile. */
	template <typename FlagsType>
	concept HasNestedContextMask = requires
	{
		FlagsType::ApplicationContextMask;
	};

	static_assert(!HasNestedContextMask<EAutomationTestFlags>);
	static_assert(UE::Automation::Private::HasApplicationContext(
		EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter));
	static_assert(!UE::Automation::Private::HasApplicationContext(EAutomationTestFlags::EngineFilter));
	static_assert(UE::Automation::Private::HasExactlyOneFilter(
		EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter));
	static_assert(!UE::Automation::Private::HasExactlyOneFilter(EAutomationTestFlags::EditorContext));
	static_assert(!UE::Automation::Private::HasExactlyOneFilter(
		EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter | EAutomationTestFlags::SmokeFilter));
	static_assert((uint32)EAutomationTestFlags::EngineFilter == 0x02000000);
	static_assert((uint32)EAutomationTestFlags_ApplicationContextMask == 0x1f);
} // namespace

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationPassingAssertionsTest, "System.Core.Automation.Assertions.Passing",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationPassingAssertionsTest::RunTest(const FString& Parameters)
{
	const int32 Value = 3;
	const FString Text = TEXT("Orvane");
	UTEST_EQUAL(TEXT("int32"), Value, 3);
	UTEST_EQUAL(TEXT("int64"), (int64)1 << 40, (int64)1 << 40);
	UTEST_EQUAL(TEXT("uint32"), 7u, 7u);
	UTEST_EQUAL_TOLERANCE(TEXT("float within tolerance"), 0.1f + 0.2f, 0.3f, 1.e-6f);
	UTEST_EQUAL(TEXT("double"), 0.5, 0.5);
	UTEST_EQUAL(TEXT("FString and literal"), Text, TEXT("Orvane"));
	UTEST_NOT_EQUAL(TEXT("Case matters"), Text, TEXT("orvane"));
	UTEST_EQUAL_INSENSITIVE(TEXT("Case ignored"), *Text, TEXT("ORVANE"));
	UTEST_EQUAL(TEXT("FName ignores case"), FName(TEXT("LiveLink")), FName(TEXT("livelink")));
	UTEST_EQUAL(TEXT("FText"), FText::FromString(Text), FText::FromString(TEXT("Orvane")));
	UTEST_EQUAL(TEXT("Enum"), EAutomationEventType::Error, EAutomationEventType::Error);
	UTEST_TRUE(TEXT("true"), Value > 2);
	UTEST_FALSE(TEXT("false"), Value > 3);
	UTEST_NULL(TEXT("null"), (const int32*)nullptr);
	UTEST_NOT_NULL(TEXT("not null"), &Value);
	UTEST_VALID(TEXT("valid shared pointer"), MakeShared<int32>(1));
	UTEST_INVALID(TEXT("invalid shared pointer"), TSharedPtr<int32>());
	UTEST_SAME(TEXT("same object"), Value, Value);
	UTEST_NOT_SAME(TEXT("different objects"), Text, FString(Text));
	UTEST_LESS(TEXT("less"), 1, 2);
	UTEST_GREATER_EQUAL(TEXT("greater or equal"), 2, 2);
	UTEST_FALSE(TEXT("No error was reported"), HasAnyErrors());
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationFailingAssertionsTest, "System.Core.Automation.Assertions.Failing",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

namespace
{
	/** A fixture whose RunTest is a member, as a UTEST macro needs. */
	class FUtestFixture : public FSimpleTestFixture
	{
	public:
		FUtestFixture()
			: FSimpleTestFixture(TEXT("FAutomationUtestFixture"),
				  [](FSimpleTestFixture&)
				  {
					  return true;
				  })
		{
		}

		int32 UtestLine = 0;
		bool bReachedAfterUtest = false;

	protected:
		virtual bool RunTest(const FString& Parameters) override
		{
			// clang-format off
			UtestLine = __LINE__; UTEST_TRUE(TEXT("Stops here"), false);
			// clang-format on
			bReachedAfterUtest = true;
			return true;
		}
	};
} // namespace

bool FAutomationFailingAssertionsTest::RunTest(const FString& Parameters)
{
	int32 EqualLine = 0;
	FSimpleTestFixture Fixture(TEXT("FAutomationFailingAssertionsFixture"),
		[&](FSimpleTestFixture& Test)
		{
			// clang-format off
		EqualLine = __LINE__; Test.TestEqual(TEXT("Count"), 3, 2);
			// clang-format on
			Test.TestEqual(TEXT("Name"), FString(TEXT("abc")), FString(TEXT("ABC")));
			Test.TestEqual(TEXT("Ratio"), 0.5, 0.25, 0.1);
			Test.TestTrue(TEXT("Flag"), false);
			Test.TestNotNull(TEXT("Pointer"), (const int32*)nullptr);
			Test.TestValid(TEXT("Shared"), TSharedPtr<int32>());
			Test.TestNotEqual(TEXT("Other"), 4, 4);
			return true;
		});
	const FNestedRun Run = RunNested(Fixture.GetTestName());

	TestFalse(TEXT("Failed assertions fail the test"), Run.bPassed);
	TestEqual(TEXT("One error per failed assertion"), Run.Info.GetErrorTotal(), 7);

	const FAutomationExecutionEntry* Count = Run.FindError(TEXT("Expected 'Count' to be 2, but it was 3."));
	if (TestNotNull(TEXT("The integer failure message"), Count))
	{
		TestTrue(TEXT("The failure records this file"), Count->Filename.EndsWith(TEXT("AutomationAssertionTest.cpp")));
		TestEqual(TEXT("The failure records the line of the assertion"), Count->LineNumber, EqualLine);
		TestEqual(TEXT("The report line"), Count->ToString(),
			FString::Printf(TEXT("%s(%d): Expected 'Count' to be 2, but it was 3."), *Count->Filename, EqualLine));
	}
	TestTrue(TEXT("String failure"), Run.HasError(TEXT("Expected 'Name' to be \"ABC\", but it was \"abc\".")));
	TestTrue(
		TEXT("Tolerance failure"), Run.HasError(TEXT("Expected 'Ratio' to be 0.25 (within 0.1), but it was 0.5.")));
	TestTrue(TEXT("TestTrue failure"), Run.HasError(TEXT("Expected 'Flag' to be true.")));
	TestTrue(TEXT("TestNotNull failure"), Run.HasError(TEXT("Expected 'Pointer' to be not null.")));
	TestTrue(TEXT("TestValid failure"), Run.HasError(TEXT("Expected 'Shared' to be valid.")));
	TestTrue(TEXT("TestNotEqual failure"), Run.HasError(TEXT("Expected 'Other' to differ from 4, but it was 4.")));

	FUtestFixture UtestFixture;
	const FNestedRun UtestRun = RunNested(UtestFixture.GetTestName());
	TestFalse(TEXT("A failed UTEST fails the test"), UtestRun.bPassed);
	TestFalse(TEXT("UTEST_TRUE returned from RunTest"), UtestFixture.bReachedAfterUtest);
	TestEqual(TEXT("Only the assertion is reported, not the false return"), UtestRun.Info.GetErrorTotal(), 1);
	const FAutomationExecutionEntry* Stop = UtestRun.FindError(TEXT("Expected 'Stops here' to be true."));
	if (TestNotNull(TEXT("The UTEST failure"), Stop))
	{
		TestEqual(TEXT("UTEST records the line of the macro"), Stop->LineNumber, UtestFixture.UtestLine);
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationRunResultTest, "System.Core.Automation.Framework.RunResult",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationRunResultTest::RunTest(const FString& Parameters)
{
	FSimpleTestFixture ReturnsFalse(TEXT("FAutomationReturnsFalseFixture"),
		[](FSimpleTestFixture&)
		{
			return false;
		});
	const FNestedRun FalseRun = RunNested(ReturnsFalse.GetTestName());
	TestFalse(TEXT("Returning false fails the test"), FalseRun.bPassed);
	TestTrue(TEXT("The failure says why"), FalseRun.HasError(TEXT("RunTest returned false.")));

	const FNestedRun Unknown = RunNested(TEXT("FNoSuchAutomationTest"));
	TestFalse(TEXT("An unknown test fails"), Unknown.bPassed);
	TestTrue(TEXT("The failure names it"),
		Unknown.HasError(TEXT("No automation test is registered as 'FNoSuchAutomationTest'.")));

	FSimpleTestFixture NeverDone(TEXT("FAutomationNeverDoneFixture"),
		[](FSimpleTestFixture& Test)
		{
			Test.AddCommand(new FFunctionLatentCommand(
				[]()
				{
					return false;
				}));
			return true;
		});
	const FNestedRun Pending = RunNested(NeverDone.GetTestName(), FString(), 5);
	TestFalse(TEXT("A test stopped with pending latent commands fails"), Pending.bPassed);
	TestTrue(TEXT("The failure counts them"), Pending.HasError(TEXT("stopped with 1 latent command(s) still queued")));
	TestEqual(TEXT("The run stopped at the frame cap"), Pending.Frames, 5);

	TestEqual(TEXT("The outer test is current again"), FAutomationTestFramework::Get().GetCurrentTest(),
		static_cast<FAutomationTestBase*>(this));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FAutomationRegistryTest, "System.Core.Automation.Framework.Registry",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FAutomationRegistryTest::RunTest(const FString& Parameters)
{
	FAutomationTestFramework& Framework = FAutomationTestFramework::Get();
	UTEST_TRUE(
		TEXT("This test is registered under its class name"), Framework.ContainsTest(TEXT("FAutomationRegistryTest")));
	{
		FSimpleTestFixture Fixture(TEXT("FAutomationRegistryFixture"),
			[](FSimpleTestFixture&)
			{
				return true;
			});
		TestTrue(
			TEXT("A test object registers while it lives"), Framework.ContainsTest(TEXT("FAutomationRegistryFixture")));
	}
	TestFalse(TEXT("and unregisters when destroyed"), Framework.ContainsTest(TEXT("FAutomationRegistryFixture")));

	TArray<FAutomationTestInfo> Infos;
	Framework.GetValidTestNames(Infos);
	const FAutomationTestInfo* Self = Infos.FindByPredicate(
		[](const FAutomationTestInfo& Info)
		{
			return Info.GetTestName() == TEXT("FAutomationRegistryTest");
		});
	if (TestNotNull(TEXT("This test is listed"), Self))
	{
		TestEqual(TEXT("Its full path is its pretty name"), Self->GetFullTestPath(),
			TEXT("System.Core.Automation.Framework.Registry"));
		TestTrue(
			TEXT("Its source file is this file"), Self->GetSourceFile().EndsWith(TEXT("AutomationAssertionTest.cpp")));
		TestTrue(TEXT("Its flags are the ones declared"),
			EnumHasAllFlags(
				Self->GetTestFlags(), EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter));
	}
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS
