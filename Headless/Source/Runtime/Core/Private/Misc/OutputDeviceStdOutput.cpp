// Copyright Orvane. All Rights Reserved.

#include "Misc/OutputDeviceStdOutput.h"

#include "Containers/StringConv.h"
#include "Misc/OutputDeviceHelper.h"

#include <cstdio>

FOutputDeviceStdOutput::FOutputDeviceStdOutput(ELogVerbosity::Type InAllowedLogVerbosity)
	: AllowedLogVerbosity(InAllowedLogVerbosity)
{
}

void FOutputDeviceStdOutput::Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category)
{
	if ((Verbosity & ELogVerbosity::VerbosityMask) > AllowedLogVerbosity)
	{
		return;
	}
	const FString Line = bSuppressEventTag ? FString(V) : FOutputDeviceHelper::FormatLogLine(Verbosity, Category, V);
	std::fputs(TCHAR_TO_UTF8(*Line), stdout);
	if (bAutoEmitLineTerminator)
	{
		std::fputc('\n', stdout);
	}
	// Each line is pushed out at once so it interleaves correctly with standard error and other processes.
	std::fflush(stdout);
}

void FOutputDeviceStdOutput::Flush()
{
	std::fflush(stdout);
}
