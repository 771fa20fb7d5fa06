// Copyright Orvane. All Rights Reserved.

#include "Containers/Map.h"
#include "CoreGlobals.h"
#include "Misc/App.h"
#include "Misc/AutomationTest.h"
#include "Misc/OutputDeviceRedirector.h"

namespace
{
	/** One test being run: the outermost is the one the runner started, inner ones were started by tests. */
	struct FRunningTest
	{
		FAutomationTestBase* Test = nullptr;
		FString FullTestPath;
		TArray<TSharedPtr<IAutomationLatentCommand>> LatentCommands;
		double StartTime = 0.0;
		bool bRunTestResult = false;

		/** Why the test could not be started, if it could not. */
		FString StartError;
	};

	/** Hands every log line to the current test, which applies the log policy to it. */
	class FAutomationTestLogCapture final : public FOutputDevice
	{
	public:
		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (FAutomationTestBase* Test = FAutomationTestFramework::Get().GetCurrentTest())
			{
				CaptureLine(*Test, V, Verbosity, Category);
			}
		}

		virtual bool CanBeUsedOnAnyThread() const override { return true; }

		virtual bool CanBeUsedOnMultipleThreads() const override { return true; }

		/** Set by the framework, which alone may reach into a test's log policy. */
		void (*CaptureLine)(FAutomationTestBase&, const TCHAR*, ELogVerbosity::Type, const FName&) = nullptr;
	};
} // namespace

struct FAutomationTestFramework::FImpl
{
	TMap<FString, FAutomationTestBase*> Tests;
	TArray<TUniquePtr<FRunningTest>> RunStack;
	FAutomationTestLogCapture LogCapture;
	bool bLogCaptureAttached = false;

	// Log lines arrive from any thread; the run stack they are routed by changes on the game thread.
	mutable std::recursive_mutex Mutex;

	FRunningTest* GetCurrentRun() const { return RunStack.Num() > 0 ? RunStack.Last().Get() : nullptr; }
};

FAutomationTestFramework& FAutomationTestFramework::Get()
{
	// Never destroyed: test objects of modules unloaded at exit unregister after static destruction began.
	static FAutomationTestFramework* Framework = new FAutomationTestFramework();
	return *Framework;
}

FAutomationTestFramework::FAutomationTestFramework()
	: Impl(MakeUnique<FImpl>())
{
	Impl->LogCapture.CaptureLine =
		[](FAutomationTestBase& Test, const TCHAR* Message, ELogVerbosity::Type Verbosity, const FName& Category)
	{
		Test.CaptureLogLine(Message, Verbosity, Category);
	};
}

FAutomationTestFramework::~FAutomationTestFramework() = default;

bool FAutomationTestFramework::RegisterAutomationTest(
	const FString& InTestNameToRegister, FAutomationTestBase* InTestToRegister)
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	if (Impl->Tests.Contains(InTestNameToRegister))
	{
		return false;
	}
	Impl->Tests.Add(InTestNameToRegister, InTestToRegister);
	return true;
}

bool FAutomationTestFramework::UnregisterAutomationTest(const FString& InTestNameToUnregister)
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	return Impl->Tests.Remove(InTestNameToUnregister) > 0;
}

bool FAutomationTestFramework::ContainsTest(const FString& InTestName) const
{
	return GetRegisteredTest(InTestName) != nullptr;
}

FAutomationTestBase* FAutomationTestFramework::GetRegisteredTest(const FString& InTestName) const
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	FAutomationTestBase* const* Found = Impl->Tests.Find(InTestName);
	return Found ? *Found : nullptr;
}

void FAutomationTestFramework::GetValidTestNames(TArray<FAutomationTestInfo>& TestInfo) const
{
	TArray<FAutomationTestBase*> Candidates;
	{
		std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
		for (const TPair<FString, FAutomationTestBase*>& Pair : Impl->Tests)
		{
			Candidates.Add(Pair.Value);
		}
	}
	for (FAutomationTestBase* Test : Candidates)
	{
		// The headless engine is an editor: it lists what may run in the editor, never a disabled test.
		const EAutomationTestFlags Flags = Test->GetTestFlags();
		if (EnumHasAnyFlags(Flags, EAutomationTestFlags::EditorContext) &&
			!EnumHasAnyFlags(Flags, EAutomationTestFlags::Disabled))
		{
			Test->GenerateTestNames(TestInfo);
		}
	}
}

void FAutomationTestFramework::StartTestByName(
	const FString& InTestToRun, const int32 InRoleIndex, const FString& InFullTestPath)
{
	FString Name = InTestToRun;
	FString Parameters;
	int32 SpaceIndex = INDEX_NONE;
	if (InTestToRun.FindChar(TEXT(' '), SpaceIndex))
	{
		Name = InTestToRun.Left(SpaceIndex);
		Parameters = InTestToRun.Mid(SpaceIndex + 1);
	}

	TUniquePtr<FRunningTest> Run = MakeUnique<FRunningTest>();
	Run->FullTestPath = InFullTestPath;
	Run->StartTime = FApp::GetCurrentTime();
	FRunningTest* RunPtr = Run.Get();
	{
		std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
		FAutomationTestBase* const* Found = Impl->Tests.Find(Name);
		if (!Found)
		{
			Run->StartError = FString::Printf(TEXT("No automation test is registered as '%s'."), *Name);
		}
		else
		{
			for (const TUniquePtr<FRunningTest>& Running : Impl->RunStack)
			{
				if (Running->Test == *Found)
				{
					Run->StartError = FString::Printf(TEXT("Test '%s' is already running."), *Name);
				}
			}
			if (Run->StartError.IsEmpty())
			{
				Run->Test = *Found;
			}
		}
		if (Run->Test)
		{
			Run->Test->ClearExecutionInfo();
			Run->Test->SetTestContext(Parameters);
		}
		Impl->RunStack.Add(MoveTemp(Run));
		if (!Impl->bLogCaptureAttached && GLog)
		{
			GLog->AddOutputDevice(&Impl->LogCapture);
			Impl->bLogCaptureAttached = true;
		}
	}

	if (RunPtr->Test)
	{
		RunPtr->bRunTestResult = RunPtr->Test->RunTest(Parameters);
	}
}

bool FAutomationTestFramework::ExecuteLatentCommands()
{
	FRunningTest* Run = nullptr;
	{
		std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
		Run = Impl->GetCurrentRun();
	}
	if (!Run)
	{
		return true;
	}
	// Commands run oldest first; a finished command lets the next one start in the same frame. The
	// lock is not held while a command runs, so that other threads can log meanwhile.
	for (;;)
	{
		TSharedPtr<IAutomationLatentCommand> Command;
		{
			std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
			if (Run->LatentCommands.Num() == 0)
			{
				return true;
			}
			Command = Run->LatentCommands[0];
		}
		if (!Command->InternalUpdate())
		{
			return false;
		}
		std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
		Run->LatentCommands.RemoveAt(0);
	}
}

bool FAutomationTestFramework::StopTest(FAutomationTestExecutionInfo& OutExecutionInfo)
{
	TUniquePtr<FRunningTest> Run;
	{
		std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
		if (Impl->RunStack.Num() > 0)
		{
			Run = MoveTemp(Impl->RunStack.Last());
			Impl->RunStack.Pop();
		}
		if (Impl->RunStack.Num() == 0 && Impl->bLogCaptureAttached && GLog)
		{
			GLog->RemoveOutputDevice(&Impl->LogCapture);
			Impl->bLogCaptureAttached = false;
		}
	}

	OutExecutionInfo.Clear();
	if (!Run || !Run->Test)
	{
		OutExecutionInfo.AddError(Run ? Run->StartError : FString(TEXT("No automation test is running.")));
		OutExecutionInfo.bSuccessful = false;
		return false;
	}

	FAutomationTestBase& Test = *Run->Test;
	if (Run->LatentCommands.Num() > 0)
	{
		Test.RecordEntry(EAutomationEventType::Error,
			FString::Printf(
				TEXT("The test stopped with %d latent command(s) still queued."), Run->LatentCommands.Num()),
			Test.GetTestSourceFileName(Test.GetTestContext()), Test.GetTestSourceFileLine(Test.GetTestContext()));
	}
	Test.HasMetExpectedMessages(ELogVerbosity::All);
	if (!Run->bRunTestResult && !Test.HasAnyErrors())
	{
		Test.RecordEntry(EAutomationEventType::Error, TEXT("RunTest returned false."),
			Test.GetTestSourceFileName(Test.GetTestContext()), Test.GetTestSourceFileLine(Test.GetTestContext()));
	}

	const bool bSuccessful = Run->bRunTestResult && !Test.HasAnyErrors();
	{
		std::lock_guard<std::recursive_mutex> Lock(Test.ReportMutex);
		Test.bSuccessful = bSuccessful;
		Test.ExecutionInfo.bSuccessful = bSuccessful;
		Test.ExecutionInfo.Duration = FApp::GetCurrentTime() - Run->StartTime;
		OutExecutionInfo = Test.ExecutionInfo;
	}
	return bSuccessful;
}

void FAutomationTestFramework::EnqueueLatentCommand(TSharedPtr<IAutomationLatentCommand> NewCommand)
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	FRunningTest* Run = Impl->GetCurrentRun();
	if (!ensureMsgf(Run && Run->Test, TEXT("A latent command was queued while no automation test was running.")))
	{
		return;
	}
	Run->LatentCommands.Add(MoveTemp(NewCommand));
}

FAutomationTestBase* FAutomationTestFramework::GetCurrentTest() const
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	FRunningTest* Run = Impl->GetCurrentRun();
	return Run ? Run->Test : nullptr;
}

FString FAutomationTestFramework::GetCurrentTestFullPath() const
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	FRunningTest* Run = Impl->GetCurrentRun();
	return Run ? Run->FullTestPath : FString();
}

int32 FAutomationTestFramework::GetNumLatentCommands() const
{
	std::lock_guard<std::recursive_mutex> Lock(Impl->Mutex);
	FRunningTest* Run = Impl->GetCurrentRun();
	return Run ? Run->LatentCommands.Num() : 0;
}
