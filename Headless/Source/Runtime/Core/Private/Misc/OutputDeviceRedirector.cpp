// Copyright Orvane. All Rights Reserved.

#include "Misc/OutputDeviceRedirector.h"

#include "CoreGlobals.h"
#include "HAL/PlatformTime.h"

#include <algorithm>

FOutputDeviceRedirector::FOutputDeviceRedirector() = default;

FOutputDeviceRedirector::~FOutputDeviceRedirector() = default;

FOutputDeviceRedirector* FOutputDeviceRedirector::Get()
{
	// Never destroyed, so code that logs while the process exits still finds it.
	static FOutputDeviceRedirector* const Singleton = new FOutputDeviceRedirector();
	return Singleton;
}

void FOutputDeviceRedirector::AddOutputDevice(FOutputDevice* OutputDevice)
{
	if (!OutputDevice)
	{
		return;
	}
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	if (std::find(OutputDevices.begin(), OutputDevices.end(), OutputDevice) == OutputDevices.end())
	{
		OutputDevices.push_back(OutputDevice);
	}
}

void FOutputDeviceRedirector::RemoveOutputDevice(FOutputDevice* OutputDevice)
{
	// Taking the lock waits for a delivery in progress on another thread, so the device is not used afterwards.
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	std::erase(OutputDevices, OutputDevice);
}

bool FOutputDeviceRedirector::IsRedirectingTo(FOutputDevice* OutputDevice)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	return std::find(OutputDevices.begin(), OutputDevices.end(), OutputDevice) != OutputDevices.end();
}

void FOutputDeviceRedirector::FlushThreadedLogs() {}

void FOutputDeviceRedirector::PanicFlushThreadedLogs()
{
	Flush();
}

void FOutputDeviceRedirector::EnableBacklog(bool bEnable)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	bBacklogEnabled = bEnable;
	if (!bEnable)
	{
		Backlog.clear();
	}
}

void FOutputDeviceRedirector::SerializeBacklog(FOutputDevice* OutputDevice)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	const std::vector<FBacklogLine> Lines = Backlog;
	for (const FBacklogLine& Line : Lines)
	{
		OutputDevice->Serialize(*Line.Data, Line.Verbosity, Line.Category, Line.Time);
	}
}

void FOutputDeviceRedirector::SetCurrentThreadAsPrimaryThread() {}

void FOutputDeviceRedirector::Serialize(
	const TCHAR* Data, ELogVerbosity::Type Verbosity, const FName& Category, const double Time)
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	if (bBacklogEnabled)
	{
		Backlog.push_back(FBacklogLine{FString(Data), Verbosity, Category, Time});
	}
	// A device may attach or detach devices while it is handed the message: walk a copy, and skip
	// devices detached meanwhile.
	const std::vector<FOutputDevice*> Devices = OutputDevices;
	for (FOutputDevice* Device : Devices)
	{
		if (std::find(OutputDevices.begin(), OutputDevices.end(), Device) != OutputDevices.end())
		{
			Device->Serialize(Data, Verbosity, Category, Time);
		}
	}
}

void FOutputDeviceRedirector::Serialize(const TCHAR* Data, ELogVerbosity::Type Verbosity, const FName& Category)
{
	Serialize(Data, Verbosity, Category, FPlatformTime::Seconds() - GStartTime);
}

void FOutputDeviceRedirector::Flush()
{
	std::lock_guard<std::recursive_mutex> Lock(Mutex);
	const std::vector<FOutputDevice*> Devices = OutputDevices;
	for (FOutputDevice* Device : Devices)
	{
		Device->Flush();
	}
}

void FOutputDeviceRedirector::TearDown()
{
	std::vector<FOutputDevice*> Devices;
	{
		std::lock_guard<std::recursive_mutex> Lock(Mutex);
		Devices.swap(OutputDevices);
		Backlog.clear();
		bBacklogEnabled = false;
	}
	for (FOutputDevice* Device : Devices)
	{
		Device->Flush();
		Device->TearDown();
	}
}
