// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/DateTime.h"
#include "Templates/UnrealTemplate.h"

/** The kind of an event reported by an automation test. */
enum class EAutomationEventType : uint8
{
	Info,
	Warning,
	Error
};

/** Returns "Info", "Warning" or "Error". */
CORE_API const TCHAR* LexToString(EAutomationEventType Type);

/** One thing a test reported: an assertion that failed, a captured log line, a note. */
struct FAutomationEvent
{
	FAutomationEvent(EAutomationEventType InType, const FString& InMessage)
		: Type(InType)
		, Message(InMessage)
	{
	}

	FAutomationEvent(EAutomationEventType InType, const FString& InMessage, const FString& InContext)
		: Type(InType)
		, Message(InMessage)
		, Context(InContext)
	{
	}

	EAutomationEventType Type;
	FString Message;

	/** Where in the test the event happened, e.g. the spec block that was running. */
	FString Context;
};

/** An event together with the source location that reported it and the time it was reported at. */
struct FAutomationExecutionEntry
{
	FAutomationExecutionEntry(FAutomationEvent InEvent)
		: Event(MoveTemp(InEvent))
		, LineNumber(0)
		, Timestamp(FDateTime::UtcNow())
	{
	}

	FAutomationExecutionEntry(FAutomationEvent InEvent, FString InFilename, int32 InLineNumber)
		: Event(MoveTemp(InEvent))
		, Filename(MoveTemp(InFilename))
		, LineNumber(InLineNumber)
		, Timestamp(FDateTime::UtcNow())
	{
	}

	/** "<file>(<line>): <message>", or the message alone when no source location is known. */
	CORE_API FString ToString() const;

	FAutomationEvent Event;
	FString Filename;
	int32 LineNumber;
	FDateTime Timestamp;
};
