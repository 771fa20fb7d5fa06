// Copyright Orvane. All Rights Reserved.

#include "Misc/AssertionMacros.h"

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "Logging/LogMacros.h"

void FDebug::AssertFailed(const ANSICHAR* Expr, const ANSICHAR* File, int32 Line, const TCHAR* Message)
{
	FString Report = FString::Printf(
		TEXT("Assertion failed: %s [File:%s] [Line: %d]"), UTF8_TO_TCHAR(Expr), UTF8_TO_TCHAR(File), Line);
	if (Message && *Message)
	{
		Report += TEXT("\n");
		Report += Message;
	}
	FMsg::LogFatal(File, Line, LogOutputDevice.GetCategoryName(), *Report);
}

bool FDebug::EnsureFailed(const ANSICHAR* Expr, const ANSICHAR* File, int32 Line, const TCHAR* Message)
{
	UE_LOG(LogOutputDevice, Error, TEXT("Ensure condition failed: %s [File:%s] [Line: %d]"), UTF8_TO_TCHAR(Expr),
		UTF8_TO_TCHAR(File), Line);
	if (Message && *Message)
	{
		UE_LOG(LogOutputDevice, Error, TEXT("%s"), Message);
	}
	return false;
}

void FDebug::ReportUnimplemented(const ANSICHAR* Function, const ANSICHAR* File, int32 Line)
{
	UE_LOG(LogCore, Error, TEXT("%s is not implemented by the headless engine (%s:%d)"), UTF8_TO_TCHAR(Function),
		UTF8_TO_TCHAR(File), Line);
}
