// Copyright Orvane. All Rights Reserved.

#include "Misc/App.h"
#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"

#include <gtest/gtest.h>

#include <string>
#include <unistd.h>

namespace
{
	std::string ToUtf8(const TCHAR* Text)
	{
		return std::string(TCHAR_TO_UTF8(Text));
	}
} // namespace

TEST(AppTest, ClockStartsWithAThirtiethOfASecondStep)
{
	EXPECT_DOUBLE_EQ(FApp::GetFixedDeltaTime(), 1.0 / 30.0);
	EXPECT_DOUBLE_EQ(FApp::GetDeltaTime(), 1.0 / 30.0);
	EXPECT_FALSE(FApp::UseFixedTimeStep());
	EXPECT_DOUBLE_EQ(FApp::GetCurrentTime(), 0.0);
	EXPECT_DOUBLE_EQ(FApp::GetLastTime(), 0.0);
}

TEST(AppTest, FixedTimeStepFramesAdvanceTheClockByTheStep)
{
	FApp::SetUseFixedTimeStep(true);
	FApp::SetFixedDeltaTime(0.5);
	EXPECT_TRUE(FApp::UseFixedTimeStep());
	EXPECT_DOUBLE_EQ(FApp::GetFixedDeltaTime(), 0.5);

	// A frame as the engine loop runs it: remember the last time, then advance.
	FApp::SetCurrentTime(10.0);
	for (int32 Frame = 0; Frame < 3; ++Frame)
	{
		FApp::UpdateLastTime();
		FApp::SetDeltaTime(FApp::GetFixedDeltaTime());
		FApp::SetCurrentTime(FApp::GetCurrentTime() + FApp::GetDeltaTime());
	}
	EXPECT_DOUBLE_EQ(FApp::GetCurrentTime(), 11.5);
	EXPECT_DOUBLE_EQ(FApp::GetLastTime(), 11.0);
	EXPECT_DOUBLE_EQ(FApp::GetDeltaTime(), 0.5);

	FApp::SetUseFixedTimeStep(false);
	FApp::SetFixedDeltaTime(1.0 / 30.0);
	FApp::SetCurrentTime(0.0);
	FApp::UpdateLastTime();
	FApp::SetDeltaTime(1.0 / 30.0);
}

TEST(AppTest, IdleTimesAreStored)
{
	FApp::SetIdleTime(0.25);
	FApp::SetIdleTimeOvershoot(0.125);
	EXPECT_DOUBLE_EQ(FApp::GetIdleTime(), 0.25);
	EXPECT_DOUBLE_EQ(FApp::GetIdleTimeOvershoot(), 0.125);
	FApp::SetIdleTime(0.0);
	FApp::SetIdleTimeOvershoot(0.0);
}

TEST(AppTest, ProjectNameAndApplicationFacts)
{
	EXPECT_FALSE(FApp::HasProjectName());
	EXPECT_EQ(ToUtf8(FApp::GetProjectName()), "");
	EXPECT_EQ(ToUtf8(*FApp::GetName()), "CoreAppTest");
	FApp::SetProjectName(TEXT("OrvaneSample"));
	EXPECT_TRUE(FApp::HasProjectName());
	EXPECT_EQ(ToUtf8(FApp::GetProjectName()), "OrvaneSample");
	EXPECT_EQ(ToUtf8(*FApp::GetName()), "OrvaneSample");
	FApp::SetProjectName(TEXT(""));

	EXPECT_FALSE(FApp::IsGame());
	EXPECT_FALSE(FApp::CanEverRender());
	EXPECT_FALSE(FApp::IsEngineInstalled());
	EXPECT_FALSE(FApp::IsUnattended());
	FApp::SetUnattended(true);
	EXPECT_TRUE(FApp::IsUnattended());
	FApp::SetUnattended(false);
	EXPECT_EQ(ToUtf8(FApp::GetBuildVersion()).rfind("5.5", 0), 0u);
}

TEST(PlatformTimeTest, SecondsIsMonotonicAndMatchesSleep)
{
	const double Start = FPlatformTime::Seconds();
	const uint64 StartCycles = FPlatformTime::Cycles64();
	FPlatformProcess::Sleep(0.05f);
	const double Elapsed = FPlatformTime::Seconds() - Start;
	const double ElapsedFromCycles = FPlatformTime::ToSeconds64(FPlatformTime::Cycles64() - StartCycles);
	EXPECT_GE(Elapsed, 0.05);
	EXPECT_LT(Elapsed, 1.0);
	EXPECT_GE(ElapsedFromCycles, 0.049);
	EXPECT_LT(ElapsedFromCycles, 1.0);
	EXPECT_DOUBLE_EQ(FPlatformTime::GetSecondsPerCycle(), 1.0e-6);
	EXPECT_FLOAT_EQ(FPlatformTime::ToMilliseconds(2500), 2.5f);
}

TEST(PlatformProcessTest, DescribesTheRunningExecutable)
{
	const std::string BaseDir = ToUtf8(FPlatformProcess::BaseDir());
	const std::string Path = ToUtf8(FPlatformProcess::ExecutablePath());
	ASSERT_FALSE(BaseDir.empty());
	EXPECT_EQ(BaseDir.back(), '/');
	EXPECT_EQ(BaseDir.front(), '/');
	EXPECT_EQ(Path, BaseDir + "CoreAppTest");
	EXPECT_EQ(ToUtf8(FPlatformProcess::ExecutableName()), "CoreAppTest");
	EXPECT_EQ(ToUtf8(FPlatformProcess::ExecutableName(false)), "CoreAppTest");
	EXPECT_EQ(FPlatformProcess::GetCurrentProcessId(), (uint32)getpid());

	char Host[256] = {};
	gethostname(Host, sizeof(Host) - 1);
	EXPECT_EQ(ToUtf8(FPlatformProcess::ComputerName()), std::string(Host));
	EXPECT_FALSE(ToUtf8(FPlatformProcess::UserName(false)).empty());
}
