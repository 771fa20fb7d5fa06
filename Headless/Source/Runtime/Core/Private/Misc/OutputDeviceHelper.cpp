// Copyright Orvane. All Rights Reserved.

#include "Misc/OutputDeviceHelper.h"

#include <ctime>

FString FOutputDeviceHelper::FormatLogLine(ELogVerbosity::Type Verbosity, const FName& Category, const TCHAR* Message,
	ELogTimes::Type LogTime, const double Time)
{
	FString Line;
	switch (LogTime)
	{
		case ELogTimes::SinceGStartTime:
			Line += FString::Printf(TEXT("[%07.2f] "), Time >= 0.0 ? Time : 0.0);
			break;
		case ELogTimes::UTC:
		case ELogTimes::Local:
		case ELogTimes::Timestamp:
		{
			const std::time_t Now = std::time(nullptr);
			std::tm Parts{};
			if (LogTime == ELogTimes::UTC)
			{
				gmtime_r(&Now, &Parts);
			}
			else
			{
				localtime_r(&Now, &Parts);
			}
			Line += FString::Printf(TEXT("[%04d.%02d.%02d-%02d.%02d.%02d] "), Parts.tm_year + 1900, Parts.tm_mon + 1,
				Parts.tm_mday, Parts.tm_hour, Parts.tm_min, Parts.tm_sec);
			break;
		}
		case ELogTimes::None:
			break;
	}

	if (!Category.IsNone())
	{
		Line += Category.ToString();
		Line += TEXT(": ");
	}
	// Log is the ordinary verbosity, so it is the one left unnamed.
	const uint8 PlainVerbosity = Verbosity & ELogVerbosity::VerbosityMask;
	if (PlainVerbosity != ELogVerbosity::Log && PlainVerbosity != ELogVerbosity::NoLogging)
	{
		Line += ToString((ELogVerbosity::Type)PlainVerbosity);
		Line += TEXT(": ");
	}
	if (Message)
	{
		Line += Message;
	}
	return Line;
}
