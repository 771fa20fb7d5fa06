// Copyright Orvane. All Rights Reserved.

#include "HAL/PlatformTime.h"
#include "Misc/App.h"
#include "Misc/AutomationTest.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>

namespace
{
	enum class EBlockRole : int32
	{
		BeforeEach,
		It,
		AfterEach
	};
} // namespace

/** One block of a spec, as Define declared it. */
struct FAutomationSpecBase::FBlock
{
	EBlockRole Role = EBlockRole::It;
	FString Description;
	bool bLatent = false;
	bool bAsync = false;
	EAsyncExecution Execution = EAsyncExecution::TaskGraphMainThread;
	FTimespan Timeout;
	TFunction<void()> Work;
	TFunction<void(const FDoneDelegate&)> LatentWork;
	FString Filename;
	int32 LineNumber = 0;
};

namespace
{
	/** A Describe scope: its own blocks and the scopes nested in it. */
	struct FSpecScope
	{
		FString Description;
		FSpecScope* Parent = nullptr;
		TArray<FAutomationSpecBase::FBlock*> BeforeEach;
		TArray<FAutomationSpecBase::FBlock*> Its;
		TArray<FAutomationSpecBase::FBlock*> AfterEach;
		TArray<FSpecScope*> Children;
	};

	/** One case of a spec: an It with the blocks that surround it. */
	struct FSpecCase
	{
		FString Id;
		FString BeautifiedName;
		FString Filename;
		int32 LineNumber = 0;
		TArray<const FAutomationSpecBase::FBlock*> Blocks;
	};

	/** What a block run on another thread shares with the command that waits for it. */
	struct FBlockCompletion
	{
		std::mutex Mutex;
		std::condition_variable Condition;
		bool bDone = false;

		void MarkDone()
		{
			{
				std::lock_guard<std::mutex> Lock(Mutex);
				bDone = true;
			}
			Condition.notify_all();
		}

		bool IsDone()
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			return bDone;
		}

		/** Waits for completion at most the given number of seconds; true once done. */
		bool WaitFor(double Seconds)
		{
			std::unique_lock<std::mutex> Lock(Mutex);
			return Condition.wait_for(Lock, std::chrono::duration<double>(Seconds),
				[this]()
				{
					return bDone;
				});
		}
	};

	const TCHAR* RoleName(EBlockRole Role)
	{
		switch (Role)
		{
			case EBlockRole::BeforeEach:
				return TEXT("BeforeEach");
			case EBlockRole::It:
				return TEXT("It");
			case EBlockRole::AfterEach:
				return TEXT("AfterEach");
		}
		return TEXT("Block");
	}

	/** Splits "text [Id]" into the text and the explicit id. */
	void SplitExplicitId(const FString& InDescription, FString& OutDescription, FString& OutId)
	{
		OutDescription = InDescription;
		OutId.Empty();
		int32 OpenIndex = INDEX_NONE;
		if (InDescription.EndsWith(TEXT("]")) && InDescription.FindLastChar(TEXT('['), OpenIndex))
		{
			OutId = InDescription.Mid(OpenIndex + 1, InDescription.Len() - OpenIndex - 2).TrimStartAndEnd();
			OutDescription = InDescription.Left(OpenIndex).TrimStartAndEnd();
		}
	}
} // namespace

/** Runs one block of a case as a latent command. */
class FSpecBlockCommand final : public IAutomationLatentCommand
{
public:
	FSpecBlockCommand(const FAutomationSpecBase::FBlock& InBlock, bool bInSkipIfErrored, TFunction<bool()> InHasErrors,
		TFunction<void(const FString&, const FString&, int32)> InReportError)
		: Block(InBlock)
		, bSkipIfErrored(bInSkipIfErrored)
		, HasErrors(MoveTemp(InHasErrors))
		, ReportError(MoveTemp(InReportError))
	{
	}

	virtual bool Update() override
	{
		if (!bStarted)
		{
			bStarted = true;
			if (bSkipIfErrored && HasErrors())
			{
				return true;
			}
			Start();
		}
		if (Completion->IsDone())
		{
			return true;
		}
		if (bRunsOnOtherThread)
		{
			// Pace the frames to the work: each frame waits up to its own length, so the application
			// clock and the real time the work takes advance together.
			if (Completion->WaitFor(std::clamp(FApp::GetDeltaTime(), 0.0, 0.1)))
			{
				return true;
			}
		}
		const double TimeoutSeconds = Block.Timeout.GetTotalSeconds();
		const bool bAppClockPassed = FApp::GetCurrentTime() - StartAppTime >= TimeoutSeconds;
		const bool bRealTimePassed = FPlatformTime::Seconds() - StartRealTime >= TimeoutSeconds;
		if (bAppClockPassed && (!bRunsOnOtherThread || bRealTimePassed))
		{
			const FString What = Block.Description.IsEmpty()
									 ? FString(RoleName(Block.Role))
									 : FString::Printf(TEXT("%s '%s'"), RoleName(Block.Role), *Block.Description);
			ReportError(FString::Printf(TEXT("Latent block %s timed out after %s seconds."), *What,
							*UE::Automation::Private::FormatDouble(TimeoutSeconds)),
				Block.Filename, Block.LineNumber);
			return true;
		}
		return false;
	}

private:
	void Start()
	{
		StartAppTime = FApp::GetCurrentTime();
		StartRealTime = FPlatformTime::Seconds();
		Completion = std::make_shared<FBlockCompletion>();
		bRunsOnOtherThread = Block.bAsync && Block.Execution != EAsyncExecution::TaskGraphMainThread;

		std::shared_ptr<FBlockCompletion> SharedCompletion = Completion;
		FDoneDelegate Done = FDoneDelegate::CreateLambda(
			[SharedCompletion]()
			{
				SharedCompletion->MarkDone();
			});
		if (!bRunsOnOtherThread)
		{
			if (Block.bLatent)
			{
				Block.LatentWork(Done);
			}
			else
			{
				Block.Work();
				Completion->MarkDone();
			}
			return;
		}

		// Every execution other than the game thread gets a thread of its own. It is detached: a block
		// that times out is abandoned, not joined, so a hung block cannot hang the run.
		if (Block.bLatent)
		{
			TFunction<void(const FDoneDelegate&)> Work = Block.LatentWork;
			std::thread(
				[Work, Done]()
				{
					Work(Done);
				})
				.detach();
		}
		else
		{
			TFunction<void()> Work = Block.Work;
			std::thread(
				[Work, SharedCompletion]()
				{
					Work();
					SharedCompletion->MarkDone();
				})
				.detach();
		}
	}

	FAutomationSpecBase::FBlock Block;
	bool bSkipIfErrored;
	TFunction<bool()> HasErrors;
	TFunction<void(const FString&, const FString&, int32)> ReportError;
	bool bStarted = false;
	bool bRunsOnOtherThread = false;
	double StartAppTime = 0.0;
	double StartRealTime = 0.0;
	std::shared_ptr<FBlockCompletion> Completion;
};

struct FAutomationSpecBase::FDefinitions
{
	bool bDefined = false;
	bool bDefining = false;
	TArray<TUniquePtr<FSpecScope>> Scopes;
	TArray<TUniquePtr<FBlock>> Blocks;
	FSpecScope* CurrentScope = nullptr;
	TArray<FSpecCase> Cases;

	/** Mistakes in Define (blocks outside it, duplicate ids); every case of the spec reports them. */
	TArray<FString> Errors;

	FSpecScope* NewScope(const FString& Description, FSpecScope* Parent)
	{
		TUniquePtr<FSpecScope> Scope = MakeUnique<FSpecScope>();
		Scope->Description = Description;
		Scope->Parent = Parent;
		FSpecScope* Result = Scope.Get();
		Scopes.Add(MoveTemp(Scope));
		if (Parent)
		{
			Parent->Children.Add(Result);
		}
		return Result;
	}

	/** Turns the scope tree into cases: outer-to-inner BeforeEach, the It, inner-to-outer AfterEach. */
	void Flatten(FSpecScope& Scope)
	{
		TArray<FSpecScope*> Chain;
		for (FSpecScope* Link = &Scope; Link; Link = Link->Parent)
		{
			Chain.Insert(Link, 0);
		}
		for (const FBlock* It : Scope.Its)
		{
			FSpecCase Case;
			FString Description;
			FString ExplicitId;
			SplitExplicitId(It->Description, Description, ExplicitId);
			TArray<FString> Path;
			for (const FSpecScope* Link : Chain)
			{
				if (!Link->Description.IsEmpty())
				{
					Path.Add(Link->Description.TrimStartAndEnd());
				}
			}
			Path.Add(Description);
			Case.BeautifiedName = FString::Join(Path, TEXT("."));
			Case.Id = ExplicitId.IsEmpty() ? FString::Join(Path, TEXT(" ")) : ExplicitId;
			Case.Filename = It->Filename;
			Case.LineNumber = It->LineNumber;
			for (const FSpecScope* Link : Chain)
			{
				Case.Blocks.Append(Link->BeforeEach);
			}
			Case.Blocks.Add(It);
			for (int32 Index = Chain.Num() - 1; Index >= 0; --Index)
			{
				Case.Blocks.Append(Chain[Index]->AfterEach);
			}
			for (const FSpecCase& Existing : Cases)
			{
				if (Existing.Id == Case.Id)
				{
					Errors.Add(FString::Printf(TEXT("Two cases of this spec have the id '%s'; give one of them a "
													"distinct description or [Id]."),
						*Case.Id));
				}
			}
			Cases.Add(MoveTemp(Case));
		}
		for (FSpecScope* Child : Scope.Children)
		{
			Flatten(*Child);
		}
	}

	const FSpecCase* FindCase(const FString& Id) const
	{
		for (const FSpecCase& Case : Cases)
		{
			if (Case.Id == Id)
			{
				return &Case;
			}
		}
		return nullptr;
	}
};

FAutomationSpecBase::FAutomationSpecBase(const FString& InName, const bool bInComplexTask)
	: FAutomationTestBase(InName, bInComplexTask)
	, DefaultTimeout(FTimespan::FromSeconds(30))
	, bEnableSkipIfError(true)
	, Definitions(MakeUnique<FDefinitions>())
{
}

FAutomationSpecBase::~FAutomationSpecBase() = default;

void FAutomationSpecBase::EnsureDefinitions() const
{
	if (Definitions->bDefined)
	{
		return;
	}
	Definitions->bDefined = true;
	Definitions->bDefining = true;
	FSpecScope* Root = Definitions->NewScope(FString(), nullptr);
	Definitions->CurrentScope = Root;
	const_cast<FAutomationSpecBase*>(this)->Define();
	Definitions->CurrentScope = nullptr;
	Definitions->bDefining = false;
	Definitions->Flatten(*Root);
}

void FAutomationSpecBase::GetTestIds(TArray<FString>& OutTestIds) const
{
	EnsureDefinitions();
	for (const FSpecCase& Case : Definitions->Cases)
	{
		OutTestIds.Add(Case.Id);
	}
}

void FAutomationSpecBase::GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const
{
	EnsureDefinitions();
	for (const FSpecCase& Case : Definitions->Cases)
	{
		OutBeautifiedNames.Add(Case.BeautifiedName);
		OutTestCommands.Add(Case.Id);
	}
}

FString FAutomationSpecBase::GetTestSourceFileName(const FString& InTestName) const
{
	EnsureDefinitions();
	const FSpecCase* Case = Definitions->FindCase(InTestName);
	return Case ? Case->Filename : GetTestSourceFileName();
}

int32 FAutomationSpecBase::GetTestSourceFileLine(const FString& InTestName) const
{
	EnsureDefinitions();
	const FSpecCase* Case = Definitions->FindCase(InTestName);
	return Case ? Case->LineNumber : GetTestSourceFileLine();
}

bool FAutomationSpecBase::RunTest(const FString& InParameters)
{
	EnsureDefinitions();
	for (const FString& Error : Definitions->Errors)
	{
		AddErrorAt(Error, GetTestSourceFileName(), GetTestSourceFileLine());
	}
	const FSpecCase* Case = Definitions->FindCase(InParameters);
	if (!Case)
	{
		AddErrorAt(FString::Printf(TEXT("This spec has no case with the id '%s'."), *InParameters),
			GetTestSourceFileName(), GetTestSourceFileLine());
		return false;
	}
	for (const FBlock* Block : Case->Blocks)
	{
		// BeforeEach and It blocks are skipped once the case has an error; AfterEach blocks always run,
		// so that what BeforeEach set up is torn down.
		const bool bSkipIfErrored = Block->Role != EBlockRole::AfterEach;
		FAutomationTestFramework::Get().EnqueueLatentCommand(MakeShareable(new FSpecBlockCommand(
			*Block, bSkipIfErrored,
			[this]()
			{
				return bEnableSkipIfError && HasAnyErrors();
			},
			[this](const FString& Error, const FString& Filename, int32 LineNumber)
			{
				AddErrorAt(Error, Filename, LineNumber);
			})));
	}
	return true;
}

void FAutomationSpecBase::AddBlock(int32 Role, const FString& InDescription, bool bLatent, bool bAsync,
	EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> Work,
	TFunction<void(const FDoneDelegate&)> LatentWork, const FString& Filename, int32 LineNumber)
{
	if (!Definitions->bDefining || !Definitions->CurrentScope)
	{
		Definitions->Errors.Add(FString::Printf(
			TEXT("%s '%s' was declared outside Define(); blocks can only be declared while the spec is defined."),
			RoleName((EBlockRole)Role), *InDescription));
		return;
	}
	TUniquePtr<FBlock> Block = MakeUnique<FBlock>();
	Block->Role = (EBlockRole)Role;
	Block->Description = InDescription;
	Block->bLatent = bLatent;
	Block->bAsync = bAsync;
	Block->Execution = Execution;
	Block->Timeout = Timeout;
	Block->Work = MoveTemp(Work);
	Block->LatentWork = MoveTemp(LatentWork);
	Block->Filename = Filename;
	Block->LineNumber = LineNumber;

	FSpecScope& Scope = *Definitions->CurrentScope;
	switch (Block->Role)
	{
		case EBlockRole::BeforeEach:
			Scope.BeforeEach.Add(Block.Get());
			break;
		case EBlockRole::It:
			Scope.Its.Add(Block.Get());
			break;
		case EBlockRole::AfterEach:
			Scope.AfterEach.Add(Block.Get());
			break;
	}
	Definitions->Blocks.Add(MoveTemp(Block));
}

// --- Declarations --------------------------------------------------------------------------------

void FAutomationSpecBase::Describe(const FString& InDescription, TFunction<void()> DoWork)
{
	if (!Definitions->bDefining || !Definitions->CurrentScope)
	{
		Definitions->Errors.Add(FString::Printf(TEXT("Describe '%s' was called outside Define()."), *InDescription));
		return;
	}
	FSpecScope* Parent = Definitions->CurrentScope;
	Definitions->CurrentScope = Definitions->NewScope(InDescription, Parent);
	DoWork();
	Definitions->CurrentScope = Parent;
}

void FAutomationSpecBase::xDescribe(const FString& InDescription, TFunction<void()> DoWork) {}

void FAutomationSpecBase::It(const FString& InDescription, TFunction<void()> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, false, false, EAsyncExecution::TaskGraphMainThread, DefaultTimeout,
		MoveTemp(DoWork), TFunction<void(const FDoneDelegate&)>(), FString(UTF8_TO_TCHAR(Location.file_name())),
		(int32)Location.line());
}

void FAutomationSpecBase::It(
	const FString& InDescription, EAsyncExecution Execution, TFunction<void()> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, false, true, Execution, DefaultTimeout, MoveTemp(DoWork),
		TFunction<void(const FDoneDelegate&)>(), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::It(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout,
	TFunction<void()> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, false, true, Execution, Timeout, MoveTemp(DoWork),
		TFunction<void(const FDoneDelegate&)>(), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::xIt(const FString& InDescription, TFunction<void()> DoWork) {}

void FAutomationSpecBase::xIt(const FString& InDescription, EAsyncExecution Execution, TFunction<void()> DoWork) {}

void FAutomationSpecBase::xIt(
	const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork)
{
}

void FAutomationSpecBase::LatentIt(
	const FString& InDescription, TFunction<void(const FDoneDelegate&)> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, true, false, EAsyncExecution::TaskGraphMainThread, DefaultTimeout,
		TFunction<void()>(), MoveTemp(DoWork), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::LatentIt(const FString& InDescription, const FTimespan& Timeout,
	TFunction<void(const FDoneDelegate&)> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, true, false, EAsyncExecution::TaskGraphMainThread, Timeout, nullptr,
		MoveTemp(DoWork), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::LatentIt(const FString& InDescription, EAsyncExecution Execution,
	TFunction<void(const FDoneDelegate&)> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, true, true, Execution, DefaultTimeout, TFunction<void()>(),
		MoveTemp(DoWork), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::LatentIt(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout,
	TFunction<void(const FDoneDelegate&)> DoWork, std::source_location Location)
{
	AddBlock((int32)EBlockRole::It, InDescription, true, true, Execution, Timeout, TFunction<void()>(),
		MoveTemp(DoWork), FString(UTF8_TO_TCHAR(Location.file_name())), (int32)Location.line());
}

void FAutomationSpecBase::xLatentIt(const FString& InDescription, TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentIt(
	const FString& InDescription, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
}

void FAutomationSpecBase::xLatentIt(
	const FString& InDescription, EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork)
{
}

void FAutomationSpecBase::xLatentIt(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout,
	TFunction<void(const FDoneDelegate&)> DoWork)
{
}

void FAutomationSpecBase::BeforeEach(TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), false, false, EAsyncExecution::TaskGraphMainThread,
		DefaultTimeout, MoveTemp(DoWork), TFunction<void(const FDoneDelegate&)>(), GetTestSourceFileName(),
		GetTestSourceFileLine());
}

void FAutomationSpecBase::BeforeEach(EAsyncExecution Execution, TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), false, true, Execution, DefaultTimeout, MoveTemp(DoWork),
		nullptr, GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::BeforeEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), false, true, Execution, Timeout, MoveTemp(DoWork),
		TFunction<void(const FDoneDelegate&)>(), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::xBeforeEach(TFunction<void()> DoWork) {}

void FAutomationSpecBase::xBeforeEach(EAsyncExecution Execution, TFunction<void()> DoWork) {}

void FAutomationSpecBase::xBeforeEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork) {}

void FAutomationSpecBase::LatentBeforeEach(TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), true, false, EAsyncExecution::TaskGraphMainThread,
		DefaultTimeout, TFunction<void()>(), MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentBeforeEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), true, false, EAsyncExecution::TaskGraphMainThread, Timeout,
		TFunction<void()>(), MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentBeforeEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), true, true, Execution, DefaultTimeout, TFunction<void()>(),
		MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentBeforeEach(
	EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::BeforeEach, FString(), true, true, Execution, Timeout, TFunction<void()>(),
		MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::xLatentBeforeEach(TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentBeforeEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentBeforeEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentBeforeEach(
	EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
}

void FAutomationSpecBase::AfterEach(TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), false, false, EAsyncExecution::TaskGraphMainThread,
		DefaultTimeout, MoveTemp(DoWork), TFunction<void(const FDoneDelegate&)>(), GetTestSourceFileName(),
		GetTestSourceFileLine());
}

void FAutomationSpecBase::AfterEach(EAsyncExecution Execution, TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), false, true, Execution, DefaultTimeout, MoveTemp(DoWork),
		TFunction<void(const FDoneDelegate&)>(), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::AfterEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), false, true, Execution, Timeout, MoveTemp(DoWork),
		TFunction<void(const FDoneDelegate&)>(), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::xAfterEach(TFunction<void()> DoWork) {}

void FAutomationSpecBase::xAfterEach(EAsyncExecution Execution, TFunction<void()> DoWork) {}

void FAutomationSpecBase::xAfterEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork) {}

void FAutomationSpecBase::LatentAfterEach(TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), true, false, EAsyncExecution::TaskGraphMainThread, DefaultTimeout,
		TFunction<void()>(), MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentAfterEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), true, false, EAsyncExecution::TaskGraphMainThread, Timeout,
		TFunction<void()>(), MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentAfterEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), true, true, Execution, DefaultTimeout, TFunction<void()>(),
		MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::LatentAfterEach(
	EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
	AddBlock((int32)EBlockRole::AfterEach, FString(), true, true, Execution, Timeout, TFunction<void()>(),
		MoveTemp(DoWork), GetTestSourceFileName(), GetTestSourceFileLine());
}

void FAutomationSpecBase::xLatentAfterEach(TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentAfterEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentAfterEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork) {}

void FAutomationSpecBase::xLatentAfterEach(
	EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork)
{
}
