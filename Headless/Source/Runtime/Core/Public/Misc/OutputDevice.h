// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Logging/LogVerbosity.h"
#include "UObject/NameTypes.h"

/** How a log line is stamped with the time it was written. */
namespace ELogTimes
{
	enum Type
	{
		/** No time stamp. */
		None,
		/** The coordinated universal time. */
		UTC,
		/** Seconds since the process started. */
		SinceGStartTime,
		/** The local time. */
		Local,
		/** The local time as a time stamp. */
		Timestamp
	};
}

/**
 * A destination for log output: the console, a log file, a test's capture. Devices are attached to
 * GLog, which hands every message to each of them.
 */
class FOutputDevice
{
public:
	FOutputDevice() = default;
	FOutputDevice(FOutputDevice&&) = default;
	FOutputDevice(const FOutputDevice&) = default;
	FOutputDevice& operator=(FOutputDevice&&) = default;
	FOutputDevice& operator=(const FOutputDevice&) = default;
	virtual ~FOutputDevice() = default;

	/** Writes one message. The message carries no line terminator. */
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) = 0;

	/** Writes one message stamped with the time, in seconds since the process started, it was logged at. */
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category, const double Time)
	{
		Serialize(V, Verbosity, Category);
	}

	/** Writes out anything the device buffers. */
	virtual void Flush() {}

	/** Closes the device; it receives nothing afterwards. */
	virtual void TearDown() {}

	/** True if the device keeps output in memory only. */
	virtual bool IsMemoryOnly() const { return false; }

	/** True if Serialize may be called from any thread, one thread at a time. */
	virtual bool CanBeUsedOnAnyThread() const { return false; }

	/** True if Serialize may be called from several threads at once. */
	virtual bool CanBeUsedOnMultipleThreads() const { return false; }

	/** True if the device can still write while the process is crashing. */
	virtual bool CanBeUsedOnPanicThread() const { return false; }

	void SetSuppressEventTag(bool bInSuppressEventTag) { bSuppressEventTag = bInSuppressEventTag; }

	FORCEINLINE bool GetSuppressEventTag() const { return bSuppressEventTag; }

	void SetAutoEmitLineTerminator(bool bInAutoEmitLineTerminator)
	{
		bAutoEmitLineTerminator = bInAutoEmitLineTerminator;
	}

	FORCEINLINE bool GetAutoEmitLineTerminator() const { return bAutoEmitLineTerminator; }

	/** Writes a message with Log verbosity and no category. */
	CORE_API void Log(const TCHAR* S);
	CORE_API void Log(ELogVerbosity::Type Verbosity, const TCHAR* S);
	CORE_API void Log(const FName& Category, ELogVerbosity::Type Verbosity, const TCHAR* Str);
	CORE_API void Log(const FString& S);
	CORE_API void Log(ELogVerbosity::Type Verbosity, const FString& S);
	CORE_API void Log(const FName& Category, ELogVerbosity::Type Verbosity, const FString& S);

	/** Formats like FString::Printf and writes the result with Log verbosity. */
	template <typename FmtType, typename... Types>
	void Logf(const FmtType& Fmt, Types... Args)
	{
		Log(FString::Printf(Fmt, Args...));
	}

	/** Formats like FString::Printf and writes the result with the given verbosity. */
	template <typename FmtType, typename... Types>
	void Logf(ELogVerbosity::Type Verbosity, const FmtType& Fmt, Types... Args)
	{
		Log(Verbosity, FString::Printf(Fmt, Args...));
	}

	/** Formats like FString::Printf and writes the result to the category with the given verbosity. */
	template <typename FmtType, typename... Types>
	void CategorizedLogf(const FName& Category, ELogVerbosity::Type Verbosity, const FmtType& Fmt, Types... Args)
	{
		Log(Category, Verbosity, FString::Printf(Fmt, Args...));
	}

protected:
	/** Whether the device leaves out the "Category: Verbosity: " prefix. */
	bool bSuppressEventTag = false;

	/** Whether the device ends each message with a line terminator. */
	bool bAutoEmitLineTerminator = true;
};
