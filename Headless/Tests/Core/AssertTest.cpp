// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "Misc/AssertionMacros.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{
	struct FCapturedLine
	{
		std::string Category;
		ELogVerbosity::Type Verbosity;
		std::string Message;
	};

	class FCaptureDevice : public FOutputDevice
	{
	public:
		void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			Lines.push_back(FCapturedLine{
				std::string(TCHAR_TO_UTF8(*Category.ToString())), Verbosity, std::string(TCHAR_TO_UTF8(V))});
		}

		std::vector<FCapturedLine> Lines;
	};

	class AssertTest : public ::testing::Test
	{
	protected:
		void SetUp() override { GLog->AddOutputDevice(&Capture); }

		void TearDown() override { GLog->RemoveOutputDevice(&Capture); }

		int32 CountLinesStartingWith(const std::string& Prefix) const
		{
			int32 Count = 0;
			for (const FCapturedLine& Line : Capture.Lines)
			{
				if (Line.Message.rfind(Prefix, 0) == 0)
				{
					++Count;
				}
			}
			return Count;
		}

		FCaptureDevice Capture;
	};

	/** One ensure call site, reached as often as the test likes. */
	bool EnsureAtOneSite(bool bCondition)
	{
		return ensure(bCondition);
	}

	bool EnsureAtAnotherSite(bool bCondition)
	{
		return ensure(bCondition);
	}

	bool EnsureAlwaysAtOneSite(bool bCondition)
	{
		return ensureAlways(bCondition);
	}

	void CallsAnUnimplementedFunction()
	{
		UE_HEADLESS_UNIMPLEMENTED();
	}
} // namespace

TEST(AssertDeathTest, FailedCheckReportsExpressionFileAndLine)
{
	EXPECT_DEATH(check(1 + 1 == 3), "Assertion failed: 1 \\+ 1 == 3 \\[File:.*AssertTest\\.cpp\\] \\[Line: [0-9]+\\]");
}

TEST(AssertDeathTest, FailedCheckfReportsItsMessage)
{
	const int32 Value = 5;
	EXPECT_DEATH(checkf(Value == 4, TEXT("Value was %d"), Value), "Assertion failed: Value == 4.*\n.*Value was 5");
}

TEST(AssertDeathTest, CheckNoEntryAndUnimplementedAreFatal)
{
	EXPECT_DEATH(checkNoEntry(), "Assertion failed: Enclosing block should never be called");
	EXPECT_DEATH(unimplemented(), "Assertion failed: Unimplemented function called");
}

TEST(CheckTest, PassingCheckDoesNothingAndVerifyEvaluatesOnce)
{
	int32 Evaluations = 0;
	check(++Evaluations == 1);
	verify(++Evaluations == 2);
	EXPECT_EQ(Evaluations, 2);
}

TEST_F(AssertTest, PassingEnsureReturnsTrueSilently)
{
	EXPECT_TRUE(ensure(2 > 1));
	EXPECT_TRUE(ensureAlways(true));
	EXPECT_TRUE(ensureMsgf(true, TEXT("never %d"), 1));
	EXPECT_TRUE(Capture.Lines.empty());
}

TEST_F(AssertTest, FailedEnsureReturnsFalseAndReportsAnError)
{
	const bool bResult = ensure(1 == 2);
	EXPECT_FALSE(bResult);
	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogOutputDevice");
	EXPECT_EQ(Capture.Lines[0].Verbosity, ELogVerbosity::Error);
	EXPECT_EQ(Capture.Lines[0].Message.rfind("Ensure condition failed: 1 == 2 [File:", 0), 0u)
		<< Capture.Lines[0].Message;
	EXPECT_NE(Capture.Lines[0].Message.find("AssertTest.cpp] [Line: "), std::string::npos) << Capture.Lines[0].Message;
}

TEST_F(AssertTest, EnsureReportsOncePerCallSite)
{
	EXPECT_FALSE(EnsureAtOneSite(false));
	EXPECT_FALSE(EnsureAtOneSite(false));
	EXPECT_FALSE(EnsureAtOneSite(false));
	EXPECT_EQ(CountLinesStartingWith("Ensure condition failed: bCondition"), 1);

	// A different call site has its own record.
	EXPECT_FALSE(EnsureAtAnotherSite(false));
	EXPECT_EQ(CountLinesStartingWith("Ensure condition failed: bCondition"), 2);
	EXPECT_TRUE(EnsureAtAnotherSite(true));
	EXPECT_EQ(CountLinesStartingWith("Ensure condition failed: bCondition"), 2);
}

TEST_F(AssertTest, EnsureAlwaysReportsEveryTime)
{
	EXPECT_FALSE(EnsureAlwaysAtOneSite(false));
	EXPECT_FALSE(EnsureAlwaysAtOneSite(false));
	EXPECT_FALSE(EnsureAlwaysAtOneSite(false));
	EXPECT_EQ(CountLinesStartingWith("Ensure condition failed: bCondition"), 3);
}

TEST_F(AssertTest, EnsureMsgfReportsItsMessage)
{
	const int32 Count = 3;
	EXPECT_FALSE(ensureMsgf(Count == 0, TEXT("Expected no presets, found %d"), Count));
	ASSERT_EQ(Capture.Lines.size(), 2u);
	EXPECT_EQ(Capture.Lines[0].Message.rfind("Ensure condition failed: Count == 0 [File:", 0), 0u);
	EXPECT_EQ(Capture.Lines[1].Message, "Expected no presets, found 3");
	EXPECT_EQ(Capture.Lines[1].Verbosity, ELogVerbosity::Error);
}

TEST_F(AssertTest, UnimplementedCallsReportThemselvesAsErrors)
{
	CallsAnUnimplementedFunction();
	ASSERT_EQ(Capture.Lines.size(), 1u);
	EXPECT_EQ(Capture.Lines[0].Category, "LogCore");
	EXPECT_EQ(Capture.Lines[0].Verbosity, ELogVerbosity::Error);
	EXPECT_NE(Capture.Lines[0].Message.find("CallsAnUnimplementedFunction"), std::string::npos)
		<< Capture.Lines[0].Message;
	EXPECT_NE(Capture.Lines[0].Message.find(" is not implemented by the headless engine ("), std::string::npos)
		<< Capture.Lines[0].Message;
	EXPECT_NE(Capture.Lines[0].Message.find("AssertTest.cpp:"), std::string::npos) << Capture.Lines[0].Message;
}
