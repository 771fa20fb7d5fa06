// Copyright Orvane. All Rights Reserved.

#include "Misc/App.h"

#include "Containers/UnrealString.h"
#include "HAL/PlatformProcess.h"

namespace
{
	/** The application's state; game-thread only, like the engine's. */
	struct FAppState
	{
		FString ProjectName;
		bool bIsUnattended = false;
		bool bIsBenchmarking = false;
		double CurrentTime = 0.0;
		double LastTime = 0.0;
		double DeltaTime = 1.0 / 30.0;
		double IdleTime = 0.0;
		double IdleTimeOvershoot = 0.0;
		bool bUseFixedTimeStep = false;
		double FixedDeltaTime = 1.0 / 30.0;

		static FAppState& Get()
		{
			static FAppState State;
			return State;
		}
	};
} // namespace

const TCHAR* FApp::GetProjectName()
{
	return *FAppState::Get().ProjectName;
}

void FApp::SetProjectName(const TCHAR* InProjectName)
{
	FAppState::Get().ProjectName = InProjectName ? InProjectName : TEXT("");
}

bool FApp::HasProjectName()
{
	return !FAppState::Get().ProjectName.IsEmpty();
}

FString FApp::GetName()
{
	return HasProjectName() ? FAppState::Get().ProjectName : FString(FPlatformProcess::ExecutableName());
}

const TCHAR* FApp::GetBuildVersion()
{
	return TEXT("5.5.0");
}

const TCHAR* FApp::GetBranchName()
{
	return TEXT("UE5");
}

const TCHAR* FApp::GetBuildConfigurationName()
{
	return TEXT("Development");
}

const TCHAR* FApp::GetBuildTargetTypeName()
{
	return TEXT("Editor");
}

bool FApp::IsUnattended()
{
	return FAppState::Get().bIsUnattended;
}

void FApp::SetUnattended(bool bInUnattended)
{
	FAppState::Get().bIsUnattended = bInUnattended;
}

bool FApp::IsBenchmarking()
{
	return FAppState::Get().bIsBenchmarking;
}

void FApp::SetBenchmarking(bool bVal)
{
	FAppState::Get().bIsBenchmarking = bVal;
}

double FApp::GetCurrentTime()
{
	return FAppState::Get().CurrentTime;
}

void FApp::SetCurrentTime(double Seconds)
{
	FAppState::Get().CurrentTime = Seconds;
}

double FApp::GetLastTime()
{
	return FAppState::Get().LastTime;
}

void FApp::UpdateLastTime()
{
	FAppState& State = FAppState::Get();
	State.LastTime = State.CurrentTime;
}

double FApp::GetDeltaTime()
{
	return FAppState::Get().DeltaTime;
}

void FApp::SetDeltaTime(double Seconds)
{
	FAppState::Get().DeltaTime = Seconds;
}

double FApp::GetIdleTime()
{
	return FAppState::Get().IdleTime;
}

void FApp::SetIdleTime(double Seconds)
{
	FAppState::Get().IdleTime = Seconds;
}

double FApp::GetIdleTimeOvershoot()
{
	return FAppState::Get().IdleTimeOvershoot;
}

void FApp::SetIdleTimeOvershoot(double Seconds)
{
	FAppState::Get().IdleTimeOvershoot = Seconds;
}

bool FApp::UseFixedTimeStep()
{
	return FAppState::Get().bUseFixedTimeStep;
}

void FApp::SetUseFixedTimeStep(bool bVal)
{
	FAppState::Get().bUseFixedTimeStep = bVal;
}

double FApp::GetFixedDeltaTime()
{
	return FAppState::Get().FixedDeltaTime;
}

void FApp::SetFixedDeltaTime(double Seconds)
{
	FAppState::Get().FixedDeltaTime = Seconds;
}
