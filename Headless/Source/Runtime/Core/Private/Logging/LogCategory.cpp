// Copyright Orvane. All Rights Reserved.

#include "Logging/LogCategory.h"

FLogCategoryBase::FLogCategoryBase(const FLogCategoryName& InCategoryName, ELogVerbosity::Type InDefaultVerbosity,
	ELogVerbosity::Type InCompileTimeVerbosity)
	: Verbosity(ELogVerbosity::NoLogging)
	, DebugBreakOnLog(false)
	, DefaultVerbosity(InDefaultVerbosity)
	, CompileTimeVerbosityLevel(InCompileTimeVerbosity)
	, CategoryName(InCategoryName)
{
	ResetToDefault();
}

FLogCategoryBase::~FLogCategoryBase() = default;

void FLogCategoryBase::SetVerbosity(ELogVerbosity::Type NewVerbosity)
{
	// A category can never let through more than was compiled in.
	const uint8 Requested = NewVerbosity & ELogVerbosity::VerbosityMask;
	Verbosity = (ELogVerbosity::Type)(
		Requested < (uint8)CompileTimeVerbosityLevel ? Requested : (uint8)CompileTimeVerbosityLevel);
	DebugBreakOnLog = (NewVerbosity & ELogVerbosity::BreakOnLog) != 0;
}

void FLogCategoryBase::ResetToDefault()
{
	SetVerbosity(DefaultVerbosity);
}
