// Copyright Orvane. All Rights Reserved.

#include "Logging/LogMacros.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "HAL/PlatformTime.h"
#include "Misc/OutputDeviceHelper.h"
#include "Misc/OutputDeviceRedirector.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>

void FMsg::LogMessage(const ANSICHAR* File, int32 Line, const FLogCategoryName& Category, ELogVerbosity::Type Verbosity,
	const TCHAR* Message)
{
	if ((Verbosity & ELogVerbosity::VerbosityMask) == ELogVerbosity::Fatal)
	{
		LogFatal(File, Line, Category, Message);
	}
	FOutputDeviceRedirector::Get()->Serialize(Message, Verbosity, Category, FPlatformTime::Seconds() - GStartTime);
}

void FMsg::LogFatal(const ANSICHAR* File, int32 Line, const FLogCategoryName& Category, const TCHAR* Message)
{
	static std::atomic<bool> bHandlingFatal{false};
	const FString LogLine = FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Fatal, Category, Message);

	// Standard error gets the line first: it is what a crashed process leaves behind, whatever devices are attached.
	std::fprintf(stderr, "%s\n", TCHAR_TO_UTF8(*LogLine));
	std::fflush(stderr);

	// A device that fails while the fatal message is delivered must not start the delivery again.
	if (!bHandlingFatal.exchange(true))
	{
		FOutputDeviceRedirector* Redirector = FOutputDeviceRedirector::Get();
		Redirector->Serialize(Message, ELogVerbosity::Fatal, Category, FPlatformTime::Seconds() - GStartTime);
		Redirector->Flush();
	}
	std::fflush(stdout);
	std::abort();
}
