// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "Misc/OutputDevice.h"
#include "UObject/NameTypes.h"

/** Formatting shared by the output devices. */
struct FOutputDeviceHelper
{
	/**
	 * Builds a log line without its terminator: "Category: Verbosity: Message". The verbosity is left
	 * out for Log messages and the category for messages without one. Time stamps other than None
	 * put "[seconds]" (or the date) in front.
	 */
	static CORE_API FString FormatLogLine(ELogVerbosity::Type Verbosity, const FName& Category,
		const TCHAR* Message = nullptr, ELogTimes::Type LogTime = ELogTimes::None, const double Time = -1.0);
};
