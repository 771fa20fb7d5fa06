// Copyright Orvane. All Rights Reserved.

#pragma once

// Included by Misc/AutomationTest.h, which is the header to include.

/**
 * A behaviour-driven test: Define() describes nested scopes of expectations, and every It becomes
 * its own case. A case runs the BeforeEach blocks of its scopes from the outermost in, then the It,
 * then the AfterEach blocks from the innermost out, each block as a latent command.
 *
 * Latent blocks receive a done delegate and hold the queue until it is executed or their timeout
 * (DefaultTimeout unless given) passes on the application clock, which fails the case. Once a case
 * has an error, its remaining BeforeEach and It blocks are skipped (bEnableSkipIfError) while its
 * AfterEach blocks still run. Blocks given an EAsyncExecution other than TaskGraphMainThread run on
 * a thread of their own; the others run on the game thread.
 */
class CORE_API FAutomationSpecBase : public FAutomationTestBase
{
public:
	FAutomationSpecBase(const FString& InName, const bool bInComplexTask);
	virtual ~FAutomationSpecBase() override;

	virtual uint32 GetRequiredDeviceNum() const override { return 1; }

	using FAutomationTestBase::GetTestSourceFileLine;
	using FAutomationTestBase::GetTestSourceFileName;

	/** The file of the It that declares the case. */
	virtual FString GetTestSourceFileName(const FString& InTestName) const override;

	/** The line of the It that declares the case. */
	virtual int32 GetTestSourceFileLine(const FString& InTestName) const override;

	/** Runs Define() if it has not run yet. */
	void EnsureDefinitions() const;

	/** The ids of the cases, which RunTest takes as its parameter. */
	void GetTestIds(TArray<FString>& OutTestIds) const;

protected:
	virtual void GetTests(TArray<FString>& OutBeautifiedNames, TArray<FString>& OutTestCommands) const override;
	virtual bool RunTest(const FString& InParameters) override;

	/** Describes the spec's scopes and expectations; runs once, the first time the cases are needed. */
	virtual void Define() = 0;

	/** Opens a scope: blocks declared inside the lambda belong to it. */
	void Describe(const FString& InDescription, TFunction<void()> DoWork);

	/** A scope that is left out, with everything in it. */
	void xDescribe(const FString& InDescription, TFunction<void()> DoWork);

	void It(const FString& InDescription, TFunction<void()> DoWork,
		std::source_location Location = std::source_location::current());
	void It(const FString& InDescription, EAsyncExecution Execution, TFunction<void()> DoWork,
		std::source_location Location = std::source_location::current());
	void It(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork,
		std::source_location Location = std::source_location::current());

	void xIt(const FString& InDescription, TFunction<void()> DoWork);
	void xIt(const FString& InDescription, EAsyncExecution Execution, TFunction<void()> DoWork);
	void xIt(
		const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork);

	void LatentIt(const FString& InDescription, TFunction<void(const FDoneDelegate&)> DoWork,
		std::source_location Location = std::source_location::current());
	void LatentIt(const FString& InDescription, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork,
		std::source_location Location = std::source_location::current());
	void LatentIt(const FString& InDescription, EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork,
		std::source_location Location = std::source_location::current());
	void LatentIt(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout,
		TFunction<void(const FDoneDelegate&)> DoWork, std::source_location Location = std::source_location::current());

	void xLatentIt(const FString& InDescription, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentIt(
		const FString& InDescription, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentIt(
		const FString& InDescription, EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentIt(const FString& InDescription, EAsyncExecution Execution, const FTimespan& Timeout,
		TFunction<void(const FDoneDelegate&)> DoWork);

	void BeforeEach(TFunction<void()> DoWork);
	void BeforeEach(EAsyncExecution Execution, TFunction<void()> DoWork);
	void BeforeEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork);

	void xBeforeEach(TFunction<void()> DoWork);
	void xBeforeEach(EAsyncExecution Execution, TFunction<void()> DoWork);
	void xBeforeEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork);

	void LatentBeforeEach(TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentBeforeEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentBeforeEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentBeforeEach(
		EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);

	void xLatentBeforeEach(TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentBeforeEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentBeforeEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentBeforeEach(
		EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);

	void AfterEach(TFunction<void()> DoWork);
	void AfterEach(EAsyncExecution Execution, TFunction<void()> DoWork);
	void AfterEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork);

	void xAfterEach(TFunction<void()> DoWork);
	void xAfterEach(EAsyncExecution Execution, TFunction<void()> DoWork);
	void xAfterEach(EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void()> DoWork);

	void LatentAfterEach(TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentAfterEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentAfterEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork);
	void LatentAfterEach(
		EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);

	void xLatentAfterEach(TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentAfterEach(const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentAfterEach(EAsyncExecution Execution, TFunction<void(const FDoneDelegate&)> DoWork);
	void xLatentAfterEach(
		EAsyncExecution Execution, const FTimespan& Timeout, TFunction<void(const FDoneDelegate&)> DoWork);

	/** How long a latent or asynchronous block may take when no timeout is given: 30 seconds. */
	FTimespan DefaultTimeout;

	/** Whether a case skips its remaining BeforeEach and It blocks once it has an error. */
	bool bEnableSkipIfError;

public:
	// Implementation types, defined where the spec runner is.
	struct FDefinitions;
	struct FBlock;

private:
	void AddBlock(int32 Role, const FString& InDescription, bool bLatent, bool bAsync, EAsyncExecution Execution,
		const FTimespan& Timeout, TFunction<void()> Work, TFunction<void(const FDoneDelegate&)> LatentWork,
		const FString& Filename, int32 LineNumber);

	/** Built lazily by EnsureDefinitions, hence mutable. */
	mutable TUniquePtr<FDefinitions> Definitions;
};

#define BEGIN_DEFINE_SPEC_PRIVATE(TClass, PrettyName, TFlags, FileName, LineNumber)                         \
	class TClass : public FAutomationSpecBase                                                               \
	{                                                                                                       \
	public:                                                                                                 \
		TClass(const FString& InName)                                                                       \
			: FAutomationSpecBase(InName, false)                                                            \
		{                                                                                                   \
		}                                                                                                   \
		UE_AUTOMATION_CHECK_TEST_FLAGS(TFlags)                                                              \
		virtual EAutomationTestFlags GetTestFlags() const override { return TFlags; }                       \
		using FAutomationSpecBase::GetTestSourceFileName;                                                   \
		virtual FString GetTestSourceFileName() const override { return FString(UTF8_TO_TCHAR(FileName)); } \
		using FAutomationSpecBase::GetTestSourceFileLine;                                                   \
		virtual int32 GetTestSourceFileLine() const override { return LineNumber; }                         \
		virtual FString GetBeautifiedTestName() const override { return TEXT(PrettyName); }                 \
                                                                                                            \
	protected:                                                                                              \
		virtual void Define() override;

#if WITH_AUTOMATION_WORKER
#define UE_AUTOMATION_SPEC_INSTANCE(TClass)                   \
	namespace                                                 \
	{                                                         \
		TClass TClass##AutomationSpecInstance(TEXT(#TClass)); \
	}
#else
#define UE_AUTOMATION_SPEC_INSTANCE(TClass)
#endif

/** Opens a spec declaration; member declarations follow, then END_DEFINE_SPEC. */
#define BEGIN_DEFINE_SPEC(TClass, PrettyName, TFlags) \
	BEGIN_DEFINE_SPEC_PRIVATE(TClass, PrettyName, TFlags, __FILE__, __LINE__)

/** Closes a spec declaration; `void TClass::Define()` follows. */
#define END_DEFINE_SPEC(TClass) \
	}                           \
	;                           \
	UE_AUTOMATION_SPEC_INSTANCE(TClass)

/** Declares a spec without members; `void TClass::Define()` follows. */
#define DEFINE_SPEC(TClass, PrettyName, TFlags)   \
	BEGIN_DEFINE_SPEC(TClass, PrettyName, TFlags) \
	END_DEFINE_SPEC(TClass)
