// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

namespace ELogVerbosity
{
	/** How important a log message is; lower values are more important. */
	enum Type : uint8
	{
		/** Not used as a message verbosity; as a category verbosity it suppresses everything but Fatal. */
		NoLogging = 0,

		/** Always logged, then the process terminates. */
		Fatal,

		/** Logged in red; fails a running automation test. */
		Error,

		/** Logged in yellow; fails a running automation test unless expected or suppressed. */
		Warning,

		/** Logged to the console and the log file. */
		Display,

		/** Logged to the log file; shown on the console by default in the editor. */
		Log,

		/** Detailed output, off by default. */
		Verbose,

		/** The most detailed output, off by default. */
		VeryVerbose,

		All = VeryVerbose,
		NumVerbosity,
		VerbosityMask = 0xf,
		SetColor = 0x40,
		BreakOnLog = 0x80
	};
} // namespace ELogVerbosity

static_assert(ELogVerbosity::NumVerbosity - 1 < ELogVerbosity::VerbosityMask, "Verbosity values must fit in the mask.");

/** Returns the name of a verbosity ("Error", "Warning", ...), or "Unknown" for a value outside the enum. */
CORE_API const TCHAR* ToString(ELogVerbosity::Type Verbosity);

/** Parses a verbosity name, case-insensitively; returns NoLogging when the name is not a verbosity. */
CORE_API ELogVerbosity::Type ParseLogVerbosityFromString(const TCHAR* VerbosityString);
