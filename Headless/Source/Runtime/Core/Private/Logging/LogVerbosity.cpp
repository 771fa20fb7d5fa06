// Copyright Orvane. All Rights Reserved.

#include "Logging/LogVerbosity.h"

#include "Misc/CString.h"

const TCHAR* ToString(ELogVerbosity::Type Verbosity)
{
	switch (Verbosity & ELogVerbosity::VerbosityMask)
	{
		case ELogVerbosity::NoLogging:
			return TEXT("NoLogging");
		case ELogVerbosity::Fatal:
			return TEXT("Fatal");
		case ELogVerbosity::Error:
			return TEXT("Error");
		case ELogVerbosity::Warning:
			return TEXT("Warning");
		case ELogVerbosity::Display:
			return TEXT("Display");
		case ELogVerbosity::Log:
			return TEXT("Log");
		case ELogVerbosity::Verbose:
			return TEXT("Verbose");
		case ELogVerbosity::VeryVerbose:
			return TEXT("VeryVerbose");
		default:
			return TEXT("Unknown");
	}
}

ELogVerbosity::Type ParseLogVerbosityFromString(const TCHAR* VerbosityString)
{
	if (VerbosityString)
	{
		for (uint8 Verbosity = ELogVerbosity::Fatal; Verbosity < ELogVerbosity::NumVerbosity; ++Verbosity)
		{
			if (FCString::Stricmp(VerbosityString, ToString((ELogVerbosity::Type)Verbosity)) == 0)
			{
				return (ELogVerbosity::Type)Verbosity;
			}
		}
		if (FCString::Stricmp(VerbosityString, TEXT("All")) == 0)
		{
			return ELogVerbosity::All;
		}
	}
	return ELogVerbosity::NoLogging;
}
