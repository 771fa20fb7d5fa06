// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

/** The name type of a log category. */
typedef FName FLogCategoryName;

/**
 * The run-time state of one log category: its name and the most detailed verbosity it currently lets
 * through. Categories are declared with the DECLARE_LOG_CATEGORY_* macros in "Logging/LogMacros.h".
 */
struct FLogCategoryBase
{
	/**
	 * @param InCategoryName Name of the category, as printed in front of its messages.
	 * @param InDefaultVerbosity The verbosity the category starts with.
	 * @param InCompileTimeVerbosity Messages more detailed than this are compiled out; the run-time
	 *        verbosity can never exceed it.
	 */
	CORE_API FLogCategoryBase(const FLogCategoryName& InCategoryName, ELogVerbosity::Type InDefaultVerbosity,
		ELogVerbosity::Type InCompileTimeVerbosity);
	CORE_API ~FLogCategoryBase();

	FLogCategoryBase(const FLogCategoryBase&) = delete;
	FLogCategoryBase& operator=(const FLogCategoryBase&) = delete;

	/** True when a message of this verbosity would be dropped. */
	FORCEINLINE bool IsSuppressed(ELogVerbosity::Type VerbosityLevel) const
	{
		return !((VerbosityLevel & ELogVerbosity::VerbosityMask) <= Verbosity);
	}

	/** The category's name. */
	FORCEINLINE const FLogCategoryName& GetCategoryName() const { return CategoryName; }

	/** The most detailed verbosity the category currently lets through. */
	FORCEINLINE ELogVerbosity::Type GetVerbosity() const { return (ELogVerbosity::Type)Verbosity; }

	/** The verbosity above which messages of this category are compiled out. */
	FORCEINLINE ELogVerbosity::Type GetCompileTimeVerbosity() const { return CompileTimeVerbosityLevel; }

	/** Changes the run-time verbosity, clamped to the compile-time verbosity. */
	CORE_API void SetVerbosity(ELogVerbosity::Type Verbosity);

	/** Restores the verbosity the category was declared with. */
	CORE_API void ResetToDefault();

private:
	ELogVerbosity::Type Verbosity;
	bool DebugBreakOnLog;
	ELogVerbosity::Type DefaultVerbosity;
	ELogVerbosity::Type CompileTimeVerbosityLevel;
	FLogCategoryName CategoryName;
};

/** A log category with its default and compile-time verbosities in its type, so UE_LOG can test them at compile time.
 */
template <ELogVerbosity::Type InDefaultVerbosity, ELogVerbosity::Type InCompileTimeVerbosity>
struct FLogCategory : public FLogCategoryBase
{
	static_assert((InDefaultVerbosity & ELogVerbosity::VerbosityMask) < ELogVerbosity::NumVerbosity,
		"Invalid default verbosity.");
	static_assert(InCompileTimeVerbosity < ELogVerbosity::NumVerbosity, "Invalid compile-time verbosity.");

	static constexpr ELogVerbosity::Type CompileTimeVerbosity = InCompileTimeVerbosity;

	FORCEINLINE FLogCategory(const FLogCategoryName& InCategoryName)
		: FLogCategoryBase(InCategoryName, InDefaultVerbosity, InCompileTimeVerbosity)
	{
	}
};

template <ELogVerbosity::Type InDefaultVerbosity, ELogVerbosity::Type InCompileTimeVerbosity>
using TLogCategory = FLogCategory<InDefaultVerbosity, InCompileTimeVerbosity>;
