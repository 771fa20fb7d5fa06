// Copyright Orvane. All Rights Reserved.

#include "LogCapture.h"

#include "CoreGlobals.h"
#include "Misc/App.h"
#include "Misc/OutputDeviceRedirector.h"

FLogCapture::FLogCapture()
	: StartTime(FApp::GetCurrentTime())
{
	GLog->AddOutputDevice(this);
}

FLogCapture::~FLogCapture()
{
	GLog->RemoveOutputDevice(this);
}

TArray<FCapturedLogLine> FLogCapture::GetLines() const
{
	std::lock_guard<std::mutex> Lock(Mutex);
	return Lines;
}

void FLogCapture::Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category)
{
	FCapturedLogLine Line;
	Line.Time = FApp::GetCurrentTime() - StartTime;
	Line.Category = Category;
	Line.Verbosity = (ELogVerbosity::Type)(Verbosity & ELogVerbosity::VerbosityMask);
	Line.Message = V;
	std::lock_guard<std::mutex> Lock(Mutex);
	Lines.Add(MoveTemp(Line));
}
