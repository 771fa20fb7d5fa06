// Copyright Orvane. All Rights Reserved.

#include "Misc/OutputDevice.h"

void FOutputDevice::Log(const TCHAR* S)
{
	Serialize(S, ELogVerbosity::Log, FName());
}

void FOutputDevice::Log(ELogVerbosity::Type Verbosity, const TCHAR* S)
{
	Serialize(S, Verbosity, FName());
}

void FOutputDevice::Log(const FName& Category, ELogVerbosity::Type Verbosity, const TCHAR* Str)
{
	Serialize(Str, Verbosity, Category);
}

void FOutputDevice::Log(const FString& S)
{
	Serialize(*S, ELogVerbosity::Log, FName());
}

void FOutputDevice::Log(ELogVerbosity::Type Verbosity, const FString& S)
{
	Serialize(*S, Verbosity, FName());
}

void FOutputDevice::Log(const FName& Category, ELogVerbosity::Type Verbosity, const FString& S)
{
	Serialize(*S, Verbosity, Category);
}
