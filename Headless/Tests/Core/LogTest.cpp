// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "Logging/LogMacros.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceHelper.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/OutputDeviceStdOutput.h"

#include <gtest/gtest.h>

#include <mutex>
#include <string>
#include <thread>
#include <vector>

DEFINE_LOG_CATEGORY_STATIC(LogTestQuiet, Warning, All);
DEFINE_LOG_CATEGORY_STATIC(LogTestCompiledOut, Log, Warning);

/** A class with its own log category. */
class FClassWithCategory
{
public:
	DECLARE_LOG_CATEGORY_CLASS(LogClassScoped, Display, All);

	static void Report(int32 Value)
	{
		UE_LOG(LogClassScoped, Display, TEXT("value %d"), Value);
		UE_LOG(LogClassScoped, Log, TEXT("too detailed"));
	}
};
DEFINE_LOG_CATEGORY_CLASS(FClassWithCategory, LogClassScoped);

namespace
{
	std::string ToUtf8(const TCHAR* Text)
	{
		return std::string(TCHAR_TO_UTF8(Text));
	}

	std::string ToUtf8(const FString& Text)
	{
		return ToUtf8(*Text);
	}

	struct FCapturedLine
	{
		std::string Category;
		ELogVerbosity::Type Verbosity;
		std::string Message;
	};

	/** Keeps every message it is handed. */
	class FCaptureDevice : public FOutputDevice
	{
	public:
		void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			std::lock_guard<std::mutex> Lock(Mutex);
			Lines.push_back(FCapturedLine{ToUtf8(Category.ToString()), Verbosity, ToUtf8(V)});
		}

		std::vector<FCapturedLine> Lines;
		std::mutex Mutex;
	};

	class LogTest : public ::testing::Test
	{
	protected:
		void SetUp() override { GLog->AddOutputDevice(&Capture); }

		void TearDown() override
		{
			GLog->RemoveOutputDevice(&Capture);
			LogTemp.ResetToDefault();
			LogTestQuiet.ResetToDefault();
			LogTestCompiledOut.ResetToDefault();
		}

		FCaptureDevice Capture;
	};

	int32 CountEvaluations = 0;

	bool CountedCondition(bool bResult)
	{
		++CountEvaluations;
		return bResult;
	}
} // namespace

TEST(LogVerbosityTest, HasTheEngineValues)
{
	EXPECT_EQ(ELogVerbosity::NoLogging, 0);
	EXPECT_EQ(ELogVerbosity::Fatal, 1);
	EXPECT_EQ(ELogVerbosity::Error, 2);
	EXPECT_EQ(ELogVerbosity::Warning, 3);
	EXPECT_EQ(ELogVerbosity::Display, 4);
	EXPECT_EQ(ELogVerbosity::Log, 5);
	EXPECT_EQ(ELogVerbosity::Verbose, 6);
	EXPECT_EQ(ELogVerbosity::VeryVerbose, 7);
	EXPECT_EQ(ELogVerbosity::All, 7);
	EXPECT_EQ(ELogVerbosity::NumVerbosity, 8);
	EXPECT_EQ(ELogVerbosity::VerbosityMask, 0xf);
	EXPECT_EQ(ELogVerbosity::SetColor, 0x40);
	EXPECT_EQ(ELogVerbosity::BreakOnLog, 0x80);
}

TEST(LogVerbosityTest, ToStringNamesEachVerbosity)
{
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::NoLogging)), "NoLogging");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Fatal)), "Fatal");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Error)), "Error");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Warning)), "Warning");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Display)), "Display");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Log)), "Log");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::Verbose)), "Verbose");
	EXPECT_EQ(ToUtf8(ToString(ELogVerbosity::VeryVerbose)), "VeryVerbose");
	EXPECT_EQ(ToUtf8(ToString((ELogVerbosity::Type)9)), "Unknown");
}

TEST(LogVerbosityTest, ParsesNamesIgnoringCase)
{
	EXPECT_EQ(ParseLogVerbosityFromString(TEXT("warning")), ELogVerbosity::Warning);
	EXPECT_EQ(ParseLogVerbosityFromString(TEXT("VeryVerbose")), ELogVerbosity::VeryVerbose);
	EXPECT_EQ(ParseLogVerbosityFromString(TEXT("All")), ELogVerbosity::VeryVerbose);
	EXPECT_EQ(ParseLogVerbosityFromString(TEXT("Loud")), ELogVerbosity::NoLogging);
}

TEST_F(LogTest, DeliversCategoryVerbosityAndFormattedText)
{
	const FString Name(TEXT("Camera"));
	UE_LOG(LogTemp, Warning, TEXT("x %s %d"), *Name, 42);

	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogTemp");
	EXPECT_EQ(Capture.Lines[0].Verbosity, ELogVerbosity::Warning);
	EXPECT_EQ(Capture.Lines[0].Message, "x Camera 42");
}

TEST_F(LogTest, LogTempLetsThroughUpToLog)
{
	EXPECT_EQ(LogTemp.GetVerbosity(), ELogVerbosity::Log);
	UE_LOG(LogTemp, Error, TEXT("e"));
	UE_LOG(LogTemp, Warning, TEXT("w"));
	UE_LOG(LogTemp, Display, TEXT("d"));
	UE_LOG(LogTemp, Log, TEXT("l"));
	UE_LOG(LogTemp, Verbose, TEXT("v"));
	UE_LOG(LogTemp, VeryVerbose, TEXT("vv"));

	ASSERT_EQ(Capture.Lines.size(), 4u);
	EXPECT_EQ(Capture.Lines[0].Message, "e");
	EXPECT_EQ(Capture.Lines[1].Message, "w");
	EXPECT_EQ(Capture.Lines[2].Message, "d");
	EXPECT_EQ(Capture.Lines[3].Message, "l");
	EXPECT_EQ(Capture.Lines[3].Verbosity, ELogVerbosity::Log);
}

TEST_F(LogTest, CategoryDefaultVerbosityDropsMoreDetailedMessages)
{
	EXPECT_EQ(LogTestQuiet.GetVerbosity(), ELogVerbosity::Warning);
	UE_LOG(LogTestQuiet, Log, TEXT("dropped"));
	UE_LOG(LogTestQuiet, Display, TEXT("dropped"));
	UE_LOG(LogTestQuiet, Warning, TEXT("kept warning"));
	UE_LOG(LogTestQuiet, Error, TEXT("kept error"));

	ASSERT_EQ(Capture.Lines.size(), 2u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogTestQuiet");
	EXPECT_EQ(Capture.Lines[0].Message, "kept warning");
	EXPECT_EQ(Capture.Lines[1].Message, "kept error");
}

TEST_F(LogTest, SetVerbosityChangesFilteringAtRunTime)
{
	UE_SET_LOG_VERBOSITY(LogTemp, Error);
	EXPECT_EQ(UE_GET_LOG_VERBOSITY(LogTemp), ELogVerbosity::Error);
	EXPECT_FALSE(UE_LOG_ACTIVE(LogTemp, Warning));
	EXPECT_TRUE(UE_LOG_ACTIVE(LogTemp, Error));
	UE_LOG(LogTemp, Warning, TEXT("dropped"));
	UE_LOG(LogTemp, Error, TEXT("kept"));

	UE_SET_LOG_VERBOSITY(LogTemp, VeryVerbose);
	UE_LOG(LogTemp, VeryVerbose, TEXT("very verbose"));

	ASSERT_EQ(Capture.Lines.size(), 2u);
	EXPECT_EQ(Capture.Lines[0].Message, "kept");
	EXPECT_EQ(Capture.Lines[1].Message, "very verbose");
	EXPECT_EQ(Capture.Lines[1].Verbosity, ELogVerbosity::VeryVerbose);

	LogTemp.ResetToDefault();
	EXPECT_EQ(LogTemp.GetVerbosity(), ELogVerbosity::Log);
}

TEST_F(LogTest, CompileTimeVerbosityCapsTheRunTimeVerbosity)
{
	// Declared with default Log but compiled only up to Warning: the default is clamped too.
	EXPECT_EQ(LogTestCompiledOut.GetVerbosity(), ELogVerbosity::Warning);
	LogTestCompiledOut.SetVerbosity(ELogVerbosity::VeryVerbose);
	EXPECT_EQ(LogTestCompiledOut.GetVerbosity(), ELogVerbosity::Warning);
	EXPECT_FALSE(UE_LOG_ACTIVE(LogTestCompiledOut, Log));

	UE_LOG(LogTestCompiledOut, Log, TEXT("compiled out"));
	UE_LOG(LogTestCompiledOut, Warning, TEXT("compiled in"));
	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Message, "compiled in");
}

TEST_F(LogTest, IsSuppressedComparesAgainstTheCategoryVerbosity)
{
	EXPECT_FALSE(LogTestQuiet.IsSuppressed(ELogVerbosity::Error));
	EXPECT_FALSE(LogTestQuiet.IsSuppressed(ELogVerbosity::Warning));
	EXPECT_TRUE(LogTestQuiet.IsSuppressed(ELogVerbosity::Display));
	EXPECT_EQ(ToUtf8(LogTestQuiet.GetCategoryName().ToString()), "LogTestQuiet");
}

TEST_F(LogTest, ConditionalLogEvaluatesItsConditionOnlyWhenTheMessageWouldBeLogged)
{
	CountEvaluations = 0;
	UE_CLOG(CountedCondition(true), LogTemp, Warning, TEXT("yes"));
	UE_CLOG(CountedCondition(false), LogTemp, Warning, TEXT("no"));
	UE_CLOG(CountedCondition(true), LogTemp, Verbose, TEXT("suppressed"));

	EXPECT_EQ(CountEvaluations, 2);
	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Message, "yes");
}

TEST_F(LogTest, SuppressedMessagesAreNotFormatted)
{
	CountEvaluations = 0;
	UE_LOG(LogTemp, Verbose, TEXT("%d"), (CountedCondition(true) ? 1 : 0));
	EXPECT_EQ(CountEvaluations, 0);
	EXPECT_TRUE(Capture.Lines.empty());
}

TEST_F(LogTest, ClassScopedCategoryFiltersByItsOwnVerbosity)
{
	FClassWithCategory::Report(12);
	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogClassScoped");
	EXPECT_EQ(Capture.Lines[0].Verbosity, ELogVerbosity::Display);
	EXPECT_EQ(Capture.Lines[0].Message, "value 12");
}

TEST_F(LogTest, OutputDeviceLogHelpersReachSerialize)
{
	FCaptureDevice Direct;
	Direct.Log(TEXT("plain"));
	Direct.Log(ELogVerbosity::Warning, TEXT("warned"));
	Direct.Log(FName(TEXT("LogThing")), ELogVerbosity::Error, FString(TEXT("failed")));
	Direct.Logf(TEXT("n=%d"), 3);

	ASSERT_EQ(Direct.Lines.size(), 4u);
	EXPECT_EQ(Direct.Lines[0].Category, "None");
	EXPECT_EQ(Direct.Lines[0].Verbosity, ELogVerbosity::Log);
	EXPECT_EQ(Direct.Lines[0].Message, "plain");
	EXPECT_EQ(Direct.Lines[1].Verbosity, ELogVerbosity::Warning);
	EXPECT_EQ(Direct.Lines[2].Category, "LogThing");
	EXPECT_EQ(Direct.Lines[2].Message, "failed");
	EXPECT_EQ(Direct.Lines[3].Message, "n=3");
}

TEST_F(LogTest, RemovedDeviceReceivesNothingMore)
{
	FCaptureDevice Second;
	GLog->AddOutputDevice(&Second);
	GLog->AddOutputDevice(&Second);
	EXPECT_TRUE(GLog->IsRedirectingTo(&Second));
	UE_LOG(LogTemp, Display, TEXT("both"));
	GLog->RemoveOutputDevice(&Second);
	EXPECT_FALSE(GLog->IsRedirectingTo(&Second));
	UE_LOG(LogTemp, Display, TEXT("first only"));

	// Adding a device twice does not deliver twice.
	ASSERT_EQ(Second.Lines.size(), 1u);
	EXPECT_EQ(Second.Lines[0].Message, "both");
	ASSERT_EQ(Capture.Lines.size(), 2u);
}

TEST_F(LogTest, DeviceMayDetachItselfWhileHandedAMessage)
{
	class FOneShotDevice : public FOutputDevice
	{
	public:
		void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			++Count;
			GLog->RemoveOutputDevice(this);
		}
		int32 Count = 0;
	};

	FOneShotDevice OneShot;
	GLog->AddOutputDevice(&OneShot);
	UE_LOG(LogTemp, Log, TEXT("one"));
	UE_LOG(LogTemp, Log, TEXT("two"));
	EXPECT_EQ(OneShot.Count, 1);
	EXPECT_EQ(Capture.Lines.size(), 2u);
}

TEST_F(LogTest, BacklogIsReplayedToALateDevice)
{
	GLog->EnableBacklog(true);
	UE_LOG(LogTemp, Warning, TEXT("early"));
	FCaptureDevice Late;
	GLog->SerializeBacklog(&Late);
	GLog->EnableBacklog(false);

	ASSERT_EQ(Late.Lines.size(), 1u);
	EXPECT_EQ(Late.Lines[0].Message, "early");
	EXPECT_EQ(Late.Lines[0].Verbosity, ELogVerbosity::Warning);
}

TEST_F(LogTest, MessagesFromManyThreadsAllArrive)
{
	constexpr int32 NumThreads = 4;
	constexpr int32 PerThread = 250;
	std::vector<std::thread> Threads;
	for (int32 ThreadIndex = 0; ThreadIndex < NumThreads; ++ThreadIndex)
	{
		Threads.emplace_back(
			[ThreadIndex]
			{
				for (int32 Index = 0; Index < PerThread; ++Index)
				{
					UE_LOG(LogTemp, Log, TEXT("%d:%d"), ThreadIndex, Index);
				}
			});
	}
	for (std::thread& Thread : Threads)
	{
		Thread.join();
	}
	EXPECT_EQ(Capture.Lines.size(), (size_t)(NumThreads * PerThread));
}

TEST(LogFormatTest, FormatsLinesLikeTheEngine)
{
	const FName Category(TEXT("LogTemp"));
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Warning, Category, TEXT("text"))),
		"LogTemp: Warning: text");
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Error, Category, TEXT("text"))),
		"LogTemp: Error: text");
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Display, Category, TEXT("text"))),
		"LogTemp: Display: text");
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Log, Category, TEXT("text"))), "LogTemp: text");
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Verbose, Category, TEXT("text"))),
		"LogTemp: Verbose: text");
	EXPECT_EQ(
		ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Warning, FName(), TEXT("text"))), "Warning: text");
	EXPECT_EQ(ToUtf8(FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Log, FName(), TEXT("text"))), "text");
}

TEST(LogFormatTest, StdOutputDevicePrintsOneLinePerMessage)
{
	FOutputDeviceStdOutput Console;
	GLog->AddOutputDevice(&Console);
	testing::internal::CaptureStdout();
	UE_LOG(LogTemp, Warning, TEXT("Preset %s applied"), TEXT("Studio"));
	UE_LOG(LogTemp, Log, TEXT("plain"));
	UE_LOG(LogTemp, Display, TEXT("shown"));
	const std::string Output = testing::internal::GetCapturedStdout();
	GLog->RemoveOutputDevice(&Console);

	EXPECT_EQ(Output, "LogTemp: Warning: Preset Studio applied\nLogTemp: plain\nLogTemp: Display: shown\n");
}

TEST(LogFormatTest, StdOutputDeviceHonoursItsAllowedVerbosity)
{
	FOutputDeviceStdOutput Console(ELogVerbosity::Display);
	testing::internal::CaptureStdout();
	Console.Serialize(TEXT("hidden"), ELogVerbosity::Log, FName(TEXT("LogTemp")));
	Console.Serialize(TEXT("seen"), ELogVerbosity::Display, FName(TEXT("LogTemp")));
	EXPECT_EQ(testing::internal::GetCapturedStdout(), "LogTemp: Display: seen\n");
}

TEST(LogDeathTest, FatalLogsThenTerminates)
{
	EXPECT_DEATH(UE_LOG(LogTemp, Fatal, TEXT("boom %d"), 7), "LogTemp: Fatal: boom 7");
}

TEST(LogDeathTest, FatalIsLoggedEvenWhenTheCategoryIsSilenced)
{
	EXPECT_DEATH(
		{
			LogTemp.SetVerbosity(ELogVerbosity::NoLogging);
			UE_LOG(LogTemp, Fatal, TEXT("still fatal"));
		},
		"LogTemp: Fatal: still fatal");
}

TEST(CoreGlobalsTest, EditorFlagsAndGameThread)
{
	EXPECT_TRUE(GIsEditor);
	EXPECT_EQ(GConfig, nullptr);
	EXPECT_TRUE(IsInGameThread());
	bool bOtherThreadIsGameThread = true;
	std::thread Other(
		[&]
		{
			bOtherThreadIsGameThread = IsInGameThread();
		});
	Other.join();
	EXPECT_FALSE(bOtherThreadIsGameThread);
}

TEST(CoreGlobalsTest, EngineExitRequestIsRecordedAndLogged)
{
	FCaptureDevice Capture;
	GLog->AddOutputDevice(&Capture);
	ResetEngineExitRequest();
	EXPECT_FALSE(IsEngineExitRequested());
	RequestEngineExit(TEXT("test done"));
	EXPECT_TRUE(IsEngineExitRequested());
	GLog->RemoveOutputDevice(&Capture);
	ResetEngineExitRequest();

	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogCore");
	EXPECT_EQ(Capture.Lines[0].Message, "Engine exit requested (reason: test done)");
}
