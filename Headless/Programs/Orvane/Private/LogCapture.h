// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Misc/OutputDevice.h"

#include <mutex>

/** One captured log message and the application time it was logged at. */
struct FCapturedLogLine
{
	/** Seconds of application time since the capture started. */
	double Time = 0.0;
	FName Category;
	ELogVerbosity::Type Verbosity = ELogVerbosity::Log;
	FString Message;
};

/**
 * Keeps every log message while it is attached to GLog, each stamped with the application clock
 * (FApp::GetCurrentTime()), so that a run on a simulated clock reports when, in its own time, a deferred
 * step logged.
 */
class FLogCapture final : public FOutputDevice
{
public:
	/** Attaches itself to GLog; the application time now counts as zero. */
	FLogCapture();

	/** Detaches itself from GLog. */
	virtual ~FLogCapture() override;

	FLogCapture(const FLogCapture&) = delete;
	FLogCapture& operator=(const FLogCapture&) = delete;

	/** The messages kept so far, in the order they were logged. */
	TArray<FCapturedLogLine> GetLines() const;

	//~ Begin FOutputDevice interface
	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override;
	virtual bool CanBeUsedOnAnyThread() const override { return true; }
	virtual bool CanBeUsedOnMultipleThreads() const override { return true; }
	//~ End FOutputDevice interface

private:
	double StartTime = 0.0;
	mutable std::mutex Mutex;
	TArray<FCapturedLogLine> Lines;
};
