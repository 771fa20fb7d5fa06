// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogCategory.h"
#include "Logging/LogVerbosity.h"

#include <type_traits>

/** Messages more detailed than this are compiled out in every category. */
#ifndef COMPILED_IN_MINIMUM_VERBOSITY
#define COMPILED_IN_MINIMUM_VERBOSITY VeryVerbose
#endif

/** Entry points of the logging macros. */
struct FMsg
{
	/**
	 * Sends a finished message to GLog. A Fatal message also goes to standard error, the log is
	 * flushed and the process terminates.
	 */
	static CORE_API void LogMessage(const ANSICHAR* File, int32 Line, const FLogCategoryName& Category,
		ELogVerbosity::Type Verbosity, const TCHAR* Message);

	/** Ends the process after a Fatal message; never returns. */
	[[noreturn]] static CORE_API void LogFatal(
		const ANSICHAR* File, int32 Line, const FLogCategoryName& Category, const TCHAR* Message);

	/** Formats like FString::Printf and sends the result to GLog. */
	template <typename FmtType, typename... Types>
	static void Logf(const ANSICHAR* File, int32 Line, const FLogCategoryName& Category, ELogVerbosity::Type Verbosity,
		const FmtType& Fmt, Types... Args)
	{
		LogMessage(File, Line, Category, Verbosity, *FString::Printf(Fmt, Args...));
	}
};

/** True when the verbosity is compiled in for the category's type. */
#define UE_LOG_VERBOSITY_COMPILED_IN(CategoryName, Verbosity)                                                     \
	((ELogVerbosity::Verbosity & ELogVerbosity::VerbosityMask) <= ELogVerbosity::COMPILED_IN_MINIMUM_VERBOSITY && \
		(ELogVerbosity::Verbosity & ELogVerbosity::VerbosityMask) <=                                              \
			std::remove_cvref_t<decltype(CategoryName)>::CompileTimeVerbosity)

/**
 * Logs a formatted message: UE_LOG(LogTemp, Warning, TEXT("Loaded %s"), *Name). The message is only
 * formatted when the category lets the verbosity through. Fatal always logs and terminates.
 */
#define UE_LOG(CategoryName, Verbosity, Format, ...)                                                             \
	do                                                                                                           \
	{                                                                                                            \
		if constexpr (ELogVerbosity::Verbosity == ELogVerbosity::Fatal)                                          \
		{                                                                                                        \
			FMsg::LogFatal(                                                                                      \
				__FILE__, __LINE__, (CategoryName).GetCategoryName(), *FString::Printf(Format, ##__VA_ARGS__));  \
		}                                                                                                        \
		else if constexpr (UE_LOG_VERBOSITY_COMPILED_IN(CategoryName, Verbosity))                                \
		{                                                                                                        \
			if (!(CategoryName).IsSuppressed(ELogVerbosity::Verbosity))                                          \
			{                                                                                                    \
				FMsg::LogMessage(__FILE__, __LINE__, (CategoryName).GetCategoryName(), ELogVerbosity::Verbosity, \
					*FString::Printf(Format, ##__VA_ARGS__));                                                    \
			}                                                                                                    \
		}                                                                                                        \
	} while (false)

/** Logs like UE_LOG when Condition holds; the condition is only evaluated when the message would be logged. */
#define UE_CLOG(Condition, CategoryName, Verbosity, Format, ...)                                                    \
	do                                                                                                              \
	{                                                                                                               \
		if constexpr (ELogVerbosity::Verbosity == ELogVerbosity::Fatal)                                             \
		{                                                                                                           \
			if (Condition)                                                                                          \
			{                                                                                                       \
				FMsg::LogFatal(                                                                                     \
					__FILE__, __LINE__, (CategoryName).GetCategoryName(), *FString::Printf(Format, ##__VA_ARGS__)); \
			}                                                                                                       \
		}                                                                                                           \
		else if constexpr (UE_LOG_VERBOSITY_COMPILED_IN(CategoryName, Verbosity))                                   \
		{                                                                                                           \
			if (!(CategoryName).IsSuppressed(ELogVerbosity::Verbosity) && (Condition))                              \
			{                                                                                                       \
				FMsg::LogMessage(__FILE__, __LINE__, (CategoryName).GetCategoryName(), ELogVerbosity::Verbosity,    \
					*FString::Printf(Format, ##__VA_ARGS__));                                                       \
			}                                                                                                       \
		}                                                                                                           \
	} while (false)

/** True when a message of this verbosity would currently be logged to the category. */
#define UE_LOG_ACTIVE(CategoryName, Verbosity) \
	(UE_LOG_VERBOSITY_COMPILED_IN(CategoryName, Verbosity) && !(CategoryName).IsSuppressed(ELogVerbosity::Verbosity))

/** The category's current run-time verbosity. */
#define UE_GET_LOG_VERBOSITY(CategoryName) (CategoryName).GetVerbosity()

/** Changes the category's run-time verbosity (clamped to its compile-time verbosity). */
#define UE_SET_LOG_VERBOSITY(CategoryName, Verbosity) (CategoryName).SetVerbosity(ELogVerbosity::Verbosity)

/** Declares a log category in a header; define it in one .cpp with DEFINE_LOG_CATEGORY. */
#define DECLARE_LOG_CATEGORY_EXTERN(CategoryName, DefaultVerbosity, CompileTimeVerbosity)           \
	extern struct FLogCategory##CategoryName                                                        \
		: public FLogCategory<ELogVerbosity::DefaultVerbosity, ELogVerbosity::CompileTimeVerbosity> \
	{                                                                                               \
		FORCEINLINE FLogCategory##CategoryName()                                                    \
			: FLogCategory(TEXT(#CategoryName))                                                     \
		{                                                                                           \
		}                                                                                           \
	} CategoryName;

/** Defines a log category declared with DECLARE_LOG_CATEGORY_EXTERN. */
#define DEFINE_LOG_CATEGORY(CategoryName) FLogCategory##CategoryName CategoryName;

/** Declares and defines a log category visible in one .cpp only. */
#define DEFINE_LOG_CATEGORY_STATIC(CategoryName, DefaultVerbosity, CompileTimeVerbosity)            \
	static struct FLogCategory##CategoryName                                                        \
		: public FLogCategory<ELogVerbosity::DefaultVerbosity, ELogVerbosity::CompileTimeVerbosity> \
	{                                                                                               \
		FORCEINLINE FLogCategory##CategoryName()                                                    \
			: FLogCategory(TEXT(#CategoryName))                                                     \
		{                                                                                           \
		}                                                                                           \
	} CategoryName;

/** Declares and defines a log category as a static member of a class (or file-local outside a class). */
#define DECLARE_LOG_CATEGORY_CLASS(CategoryName, DefaultVerbosity, CompileTimeVerbosity)            \
	static inline struct FLogCategory##CategoryName                                                 \
		: public FLogCategory<ELogVerbosity::DefaultVerbosity, ELogVerbosity::CompileTimeVerbosity> \
	{                                                                                               \
		FORCEINLINE FLogCategory##CategoryName()                                                    \
			: FLogCategory(TEXT(#CategoryName))                                                     \
		{                                                                                           \
		}                                                                                           \
	} CategoryName;

/** Nothing to define: DECLARE_LOG_CATEGORY_CLASS already defines the category. */
#define DEFINE_LOG_CATEGORY_CLASS(Class, CategoryName)
