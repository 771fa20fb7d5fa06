// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Misc/App.h"
#include "Misc/AutomationTest.h"

#if WITH_DEV_AUTOMATION_TESTS

/**
 * Helpers for the automation framework's own tests. A test that must watch another test fail cannot
 * register that test (the full run must stay green), so it builds a fixture test object, runs it
 * through the framework while it itself runs, and checks the fixture's results.
 */
namespace UE::Automation::Tests
{
	/** Fixtures never show up in a list of tests, whatever the filter. */
	inline constexpr EAutomationTestFlags FixtureFlags =
		EAutomationTestFlags::EditorContext | EAutomationTestFlags::NegativeFilter | EAutomationTestFlags::Disabled;

	/** A simple test whose body is a lambda. It registers under its name for as long as it lives. */
	class FSimpleTestFixture : public FAutomationTestBase
	{
	public:
		FSimpleTestFixture(const FString& InName, TFunction<bool(FSimpleTestFixture&)> InBody)
			: FAutomationTestBase(InName, false)
			, Body(MoveTemp(InBody))
		{
		}

		virtual EAutomationTestFlags GetTestFlags() const override { return FixtureFlags; }

		virtual uint32 GetRequiredDeviceNum() const override { return 1; }

		virtual FString GetBeautifiedTestName() const override { return TEXT("Fixture.") + GetTestName(); }

		virtual bool SuppressLogWarnings() override { return bSuppressLogWarnings; }

		virtual bool ElevateLogWarningsToErrors() override { return bElevateLogWarningsToErrors; }

		bool bSuppressLogWarnings = false;
		bool bElevateLogWarningsToErrors = true;

	protected:
		virtual void GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const override
		{
			OutBeautifiedNames.Add(GetBeautifiedTestName());
			OutTestCommands.Add(FString());
		}

		virtual bool RunTest(const FString& Parameters) override { return Body(*this); }

	private:
		TFunction<bool(FSimpleTestFixture&)> Body;
	};

	/** A spec whose Define is a lambda, with the declaration functions opened up to it. */
	class FSpecFixture : public FAutomationSpecBase
	{
	public:
		FSpecFixture(const FString& InName, TFunction<void(FSpecFixture&)> InDefineBody)
			: FAutomationSpecBase(InName, false)
			, DefineBody(MoveTemp(InDefineBody))
		{
		}

		virtual EAutomationTestFlags GetTestFlags() const override { return FixtureFlags; }

		virtual FString GetBeautifiedTestName() const override { return TEXT("Fixture.") + GetTestName(); }

		using FAutomationSpecBase::AfterEach;
		using FAutomationSpecBase::BeforeEach;
		using FAutomationSpecBase::bEnableSkipIfError;
		using FAutomationSpecBase::DefaultTimeout;
		using FAutomationSpecBase::Describe;
		using FAutomationSpecBase::It;
		using FAutomationSpecBase::LatentAfterEach;
		using FAutomationSpecBase::LatentBeforeEach;
		using FAutomationSpecBase::LatentIt;
		using FAutomationSpecBase::xDescribe;
		using FAutomationSpecBase::xIt;

		int32 DefineCount = 0;

	protected:
		virtual void Define() override
		{
			++DefineCount;
			DefineBody(*this);
		}

	private:
		TFunction<void(FSpecFixture&)> DefineBody;
	};

	/** What a nested run produced. */
	struct FNestedRun
	{
		bool bPassed = false;
		int32 Frames = 0;
		FAutomationTestExecutionInfo Info;

		/** True if an error entry contains the text. */
		bool HasError(const FString& Text) const { return FindError(Text) != nullptr; }

		const FAutomationExecutionEntry* FindError(const FString& Text) const
		{
			for (const FAutomationExecutionEntry& Entry : Info.GetEntries())
			{
				if (Entry.Event.Type == EAutomationEventType::Error && Entry.Event.Message.Contains(Text))
				{
					return &Entry;
				}
			}
			return nullptr;
		}
	};

	/**
	 * Runs a registered test to completion inside the running test. Between updates of its latent
	 * commands only the application clock advances, by a sixtieth of a second per frame.
	 */
	inline FNestedRun RunNested(const FString& TestName, const FString& Parameters = FString(), int32 MaxFrames = 10000)
	{
		constexpr double FrameSeconds = 1.0 / 60.0;
		FAutomationTestFramework& Framework = FAutomationTestFramework::Get();
		const double PreviousDeltaTime = FApp::GetDeltaTime();
		FNestedRun Result;
		Framework.StartTestByName(Parameters.IsEmpty() ? TestName : TestName + TEXT(" ") + Parameters, 0);
		while (!Framework.ExecuteLatentCommands() && Result.Frames < MaxFrames)
		{
			++Result.Frames;
			FApp::SetDeltaTime(FrameSeconds);
			FApp::SetCurrentTime(FApp::GetCurrentTime() + FrameSeconds);
		}
		Result.bPassed = Framework.StopTest(Result.Info);
		FApp::SetDeltaTime(PreviousDeltaTime);
		return Result;
	}

	/** Runs the only case of a spec fixture. */
	inline FNestedRun RunNestedSpec(FSpecFixture& Spec, int32 MaxFrames = 10000)
	{
		TArray<FString> Ids;
		Spec.GetTestIds(Ids);
		return RunNested(Spec.GetTestName(), Ids.Num() > 0 ? Ids[0] : FString(TEXT("<no case>")), MaxFrames);
	}
} // namespace UE::Automation::Tests

#endif // WITH_DEV_AUTOMATION_TESTS
