// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/OutputDevice.h"

#include <mutex>
#include <vector>

/**
 * The output device behind GLog: it hands every message to each attached device. It may be used from
 * any thread; messages are delivered one at a time, in the order they arrive.
 */
class CORE_API FOutputDeviceRedirector final : public FOutputDevice
{
public:
	FOutputDeviceRedirector();
	~FOutputDeviceRedirector() override;

	/** The process's redirector, the one GLog points to. */
	static FOutputDeviceRedirector* Get();

	/** Attaches a device; attaching one that is already attached does nothing. Null is ignored. */
	void AddOutputDevice(FOutputDevice* OutputDevice);

	/** Detaches a device. Once this returns, the device receives nothing more from this redirector. */
	void RemoveOutputDevice(FOutputDevice* OutputDevice);

	/** True if the device is attached. */
	bool IsRedirectingTo(FOutputDevice* OutputDevice);

	/** Messages are delivered as they arrive, so there is nothing queued; kept for the engine's callers. */
	void FlushThreadedLogs();

	/** Same as FlushThreadedLogs; kept for the engine's callers. */
	void PanicFlushThreadedLogs();

	/** Starts or stops keeping a copy of every message, so devices attached later can be given the earlier ones. */
	void EnableBacklog(bool bEnable);

	/** Writes the kept messages to one device. */
	void SerializeBacklog(FOutputDevice* OutputDevice);

	/** Marks the calling thread as the one that owns the log; delivery does not depend on it here. */
	void SetCurrentThreadAsPrimaryThread();

	void Serialize(const TCHAR* Data, ELogVerbosity::Type Verbosity, const FName& Category, const double Time) override;
	void Serialize(const TCHAR* Data, ELogVerbosity::Type Verbosity, const FName& Category) override;
	void Flush() override;
	void TearDown() override;

	bool CanBeUsedOnAnyThread() const override { return true; }

	bool CanBeUsedOnMultipleThreads() const override { return true; }

private:
	struct FBacklogLine
	{
		FString Data;
		ELogVerbosity::Type Verbosity;
		FName Category;
		double Time;
	};

	// Recursive because a device may itself log while it is handed a message.
	std::recursive_mutex Mutex;
	std::vector<FOutputDevice*> OutputDevices;
	std::vector<FBacklogLine> Backlog;
	bool bBacklogEnabled = false;
};
