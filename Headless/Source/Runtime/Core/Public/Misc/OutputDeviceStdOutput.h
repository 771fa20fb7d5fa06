// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/OutputDevice.h"

/**
 * Writes log lines to the process's standard output as UTF-8, one line per message, in the engine's
 * format ("LogTemp: Warning: text"). The host program attaches one to GLog.
 */
class CORE_API FOutputDeviceStdOutput : public FOutputDevice
{
public:
	/** @param InAllowedLogVerbosity Messages more detailed than this are not printed. */
	explicit FOutputDeviceStdOutput(ELogVerbosity::Type InAllowedLogVerbosity = ELogVerbosity::All);

	void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override;
	void Flush() override;

	bool CanBeUsedOnAnyThread() const override { return true; }

private:
	ELogVerbosity::Type AllowedLogVerbosity;
};
