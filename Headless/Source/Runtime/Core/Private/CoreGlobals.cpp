// Copyright Orvane. All Rights Reserved.

#include "CoreGlobals.h"

#include "Containers/UnrealString.h"
#include "HAL/PlatformTLS.h"
#include "HAL/PlatformTime.h"
#include "Misc/OutputDeviceRedirector.h"

#include <atomic>

DEFINE_LOG_CATEGORY(LogTemp);
DEFINE_LOG_CATEGORY(LogCore);
DEFINE_LOG_CATEGORY(LogInit);
DEFINE_LOG_CATEGORY(LogExit);
DEFINE_LOG_CATEGORY(LogModuleManager);
DEFINE_LOG_CATEGORY(LogOutputDevice);
DEFINE_LOG_CATEGORY(LogStreaming);
DEFINE_LOG_CATEGORY(LogHAL);
DEFINE_LOG_CATEGORY(LogSerialization);
DEFINE_LOG_CATEGORY(LogExec);

FOutputDeviceRedirector* GLog = FOutputDeviceRedirector::Get();
FConfigCacheIni* GConfig = nullptr;
bool GIsEditor = true;
bool GIsRunning = false;
bool GIsAutomationTesting = false;
uint64 GFrameCounter = 0;
double GStartTime = FPlatformTime::InitTiming();

// Core is loaded by the main thread before anything else runs, so that is the game thread until the
// engine loop says otherwise.
uint32 GGameThreadId = FPlatformTLS::GetCurrentThreadId();
bool GIsGameThreadIdInitialized = true;

namespace
{
	std::atomic<bool> GIsEngineExitRequested{false};
}

bool IsInGameThread()
{
	return !GIsGameThreadIdInitialized || FPlatformTLS::GetCurrentThreadId() == GGameThreadId;
}

bool IsEngineExitRequested()
{
	return GIsEngineExitRequested.load();
}

void RequestEngineExit(const TCHAR* ReasonString)
{
	UE_LOG(LogCore, Log, TEXT("Engine exit requested (reason: %s)"), ReasonString ? ReasonString : TEXT(""));
	GIsEngineExitRequested = true;
}

void RequestEngineExit(const FString& ReasonString)
{
	RequestEngineExit(*ReasonString);
}

void ResetEngineExitRequest()
{
	GIsEngineExitRequested = false;
}
