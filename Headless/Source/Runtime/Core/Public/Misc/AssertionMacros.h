// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/**
 * Failure reporting behind check, verify and ensure. A failed check is fatal; a failed ensure is
 * reported as an error and execution continues.
 */
struct FDebug
{
	/** Reports a failed check or verify and terminates the process. */
	[[noreturn]] static CORE_API void AssertFailed(
		const ANSICHAR* Expr, const ANSICHAR* File, int32 Line, const TCHAR* Message = TEXT(""));

	/** Reports a failed ensure as an error. Always returns false, so ensure evaluates to false. */
	static CORE_API bool EnsureFailed(
		const ANSICHAR* Expr, const ANSICHAR* File, int32 Line, const TCHAR* Message = TEXT(""));

	/** Reports, as an error that fails the running test, a call the headless engine does not implement. */
	static CORE_API void ReportUnimplemented(const ANSICHAR* Function, const ANSICHAR* File, int32 Line);
};

#if DO_CHECK

#define check(Expr)                                          \
	do                                                       \
	{                                                        \
		if (UNLIKELY(!(Expr)))                               \
		{                                                    \
			FDebug::AssertFailed(#Expr, __FILE__, __LINE__); \
		}                                                    \
	} while (false)

/** checkf formats its message only when the check fails; FString must be visible where it is used. */
#define checkf(Expr, Format, ...)                                                                     \
	do                                                                                                \
	{                                                                                                 \
		if (UNLIKELY(!(Expr)))                                                                        \
		{                                                                                             \
			FDebug::AssertFailed(#Expr, __FILE__, __LINE__, *FString::Printf(Format, ##__VA_ARGS__)); \
		}                                                                                             \
	} while (false)

#define verify(Expr) check(Expr)
#define verifyf(Expr, Format, ...) checkf(Expr, Format, ##__VA_ARGS__)
#define checkNoEntry() FDebug::AssertFailed("Enclosing block should never be called", __FILE__, __LINE__)
#define checkNoReentry()                         \
	do                                           \
	{                                            \
		static bool bBeenHere##__LINE__ = false; \
		check(!bBeenHere##__LINE__);             \
		bBeenHere##__LINE__ = true;              \
	} while (false)
#define unimplemented() FDebug::AssertFailed("Unimplemented function called", __FILE__, __LINE__)

#else

#define check(Expr) ((void)0)
#define checkf(Expr, Format, ...) ((void)0)
#define verify(Expr) ((void)(Expr))
#define verifyf(Expr, Format, ...) ((void)(Expr))
#define checkNoEntry() ((void)0)
#define checkNoReentry() ((void)0)
#define unimplemented() ((void)0)

#endif

#if DO_GUARD_SLOW
#define checkSlow(Expr) check(Expr)
#define checkfSlow(Expr, Format, ...) checkf(Expr, Format, ##__VA_ARGS__)
#else
#define checkSlow(Expr) ((void)0)
#define checkfSlow(Expr, Format, ...) ((void)0)
#endif

// An ensure reports only the first failure at its call site; the lambda gives each site its own flag.
#define UE_ENSURE_IMPL(bAlways, Expr, MessageExpr)                                   \
	(LIKELY(!!(Expr)) || [&]() -> bool                                               \
		{                                                                            \
			static bool bExecuted = false;                                           \
			if (bAlways || !bExecuted)                                               \
			{                                                                        \
				bExecuted = true;                                                    \
				return FDebug::EnsureFailed(#Expr, __FILE__, __LINE__, MessageExpr); \
			}                                                                        \
			return false;                                                            \
		}())

#define ensure(Expr) UE_ENSURE_IMPL(false, Expr, TEXT(""))
#define ensureMsgf(Expr, Format, ...) UE_ENSURE_IMPL(false, Expr, *FString::Printf(Format, ##__VA_ARGS__))
#define ensureAlways(Expr) UE_ENSURE_IMPL(true, Expr, TEXT(""))
#define ensureAlwaysMsgf(Expr, Format, ...) UE_ENSURE_IMPL(true, Expr, *FString::Printf(Format, ##__VA_ARGS__))

/** Marks a call the headless engine does not provide yet: it logs an Error naming the function. */
#define UE_HEADLESS_UNIMPLEMENTED() FDebug::ReportUnimplemented(__PRETTY_FUNCTION__, __FILE__, __LINE__)
