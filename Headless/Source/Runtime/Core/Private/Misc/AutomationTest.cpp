// Copyright Orvane. All Rights Reserved.

#include "Misc/AutomationTest.h"

#include "Misc/App.h"

#include <cstdio>
#include <cwctype>
#include <regex>
#include <string>

/** A compiled expected-message pattern. Matching works on UTF-32 text so that std::wregex can be used. */
struct FAutomationMessagePattern
{
	std::wregex Regex;
	std::wstring LowerPlain;
	bool bIsRegex = false;
	bool bIsValid = true;
};

namespace
{
	/** Decodes UTF-16 into UTF-32 (wchar_t is 32 bits on Linux), lower-casing ASCII letters if asked. */
	std::wstring ToWide(const FString& Text, bool bLowerCase)
	{
		std::wstring Result;
		const TCHAR* Chars = *Text;
		const int32 Length = Text.Len();
		Result.reserve(Length);
		for (int32 Index = 0; Index < Length; ++Index)
		{
			uint32 CodePoint = (uint32)Chars[Index];
			if (CodePoint >= 0xD800 && CodePoint <= 0xDBFF && Index + 1 < Length)
			{
				const uint32 Low = (uint32)Chars[Index + 1];
				if (Low >= 0xDC00 && Low <= 0xDFFF)
				{
					CodePoint = 0x10000 + ((CodePoint - 0xD800) << 10) + (Low - 0xDC00);
					++Index;
				}
			}
			Result.push_back(bLowerCase ? (wchar_t)std::towlower((wint_t)CodePoint) : (wchar_t)CodePoint);
		}
		return Result;
	}

	FString FromAscii(const std::string& Text)
	{
		return FString(UTF8_TO_TCHAR(Text.c_str()));
	}

	/** The severity a log line is judged by, without the colour and break flags. */
	ELogVerbosity::Type SeverityOf(ELogVerbosity::Type Verbosity)
	{
		return (ELogVerbosity::Type)(Verbosity & ELogVerbosity::VerbosityMask);
	}
} // namespace

// --- Events ------------------------------------------------------------------------------------

const TCHAR* LexToString(EAutomationEventType Type)
{
	switch (Type)
	{
		case EAutomationEventType::Info:
			return TEXT("Info");
		case EAutomationEventType::Warning:
			return TEXT("Warning");
		case EAutomationEventType::Error:
			return TEXT("Error");
	}
	return TEXT("Unknown");
}

FString FAutomationExecutionEntry::ToString() const
{
	if (!Filename.IsEmpty())
	{
		return FString::Printf(TEXT("%s(%d): %s"), *Filename, LineNumber, *Event.Message);
	}
	if (!Event.Context.IsEmpty())
	{
		return FString::Printf(TEXT("%s: %s"), *Event.Context, *Event.Message);
	}
	return Event.Message;
}

// --- FAutomationTestExecutionInfo ----------------------------------------------------------------

FAutomationTestExecutionInfo::FAutomationTestExecutionInfo()
	: bSuccessful(false)
	, Duration(0.0)
	, Errors(0)
	, Warnings(0)
{
}

void FAutomationTestExecutionInfo::Clear()
{
	bSuccessful = false;
	Duration = 0.0;
	AnalyticsItems.Empty();
	Entries.Empty();
	ContextStack.Empty();
	Errors = 0;
	Warnings = 0;
}

int32 FAutomationTestExecutionInfo::RemoveAllEvents(EAutomationEventType EventType)
{
	return RemoveAllEvents(
		[EventType](FAutomationEvent& Event)
		{
			return Event.Type == EventType;
		});
}

int32 FAutomationTestExecutionInfo::RemoveAllEvents(TFunctionRef<bool(FAutomationEvent&)> FilterPredicate)
{
	TArray<FAutomationExecutionEntry> Kept;
	int32 Removed = 0;
	for (FAutomationExecutionEntry& Entry : Entries)
	{
		if (FilterPredicate(Entry.Event))
		{
			++Removed;
			if (Entry.Event.Type == EAutomationEventType::Error)
			{
				--Errors;
			}
			else if (Entry.Event.Type == EAutomationEventType::Warning)
			{
				--Warnings;
			}
		}
		else
		{
			Kept.Add(Entry);
		}
	}
	Entries = MoveTemp(Kept);
	return Removed;
}

void FAutomationTestExecutionInfo::AddEvent(const FAutomationEvent& Event, int StackOffset, bool bCaptureStack)
{
	AddEvent(FAutomationExecutionEntry(Event));
}

void FAutomationTestExecutionInfo::AddEvent(const FAutomationExecutionEntry& Entry)
{
	FAutomationExecutionEntry& Added = Entries[Entries.Add(Entry)];
	if (Added.Event.Context.IsEmpty())
	{
		Added.Event.Context = GetContext();
	}
	if (Added.Event.Type == EAutomationEventType::Error)
	{
		++Errors;
	}
	else if (Added.Event.Type == EAutomationEventType::Warning)
	{
		++Warnings;
	}
}

void FAutomationTestExecutionInfo::AddWarning(const FString& WarningMessage)
{
	AddEvent(FAutomationEvent(EAutomationEventType::Warning, WarningMessage));
}

void FAutomationTestExecutionInfo::AddError(const FString& ErrorMessage)
{
	AddEvent(FAutomationEvent(EAutomationEventType::Error, ErrorMessage));
}

const FString& FAutomationTestExecutionInfo::GetContext() const
{
	static const FString NoContext;
	return ContextStack.Num() > 0 ? ContextStack.Last() : NoContext;
}

void FAutomationTestExecutionInfo::PushContext(const FString& Context)
{
	ContextStack.Add(Context);
}

void FAutomationTestExecutionInfo::PopContext()
{
	if (ContextStack.Num() > 0)
	{
		ContextStack.Pop();
	}
}

// --- FAutomationExpectedMessage ------------------------------------------------------------------

FAutomationExpectedMessage::FAutomationExpectedMessage(const FString& InMessagePattern, ELogVerbosity::Type InVerbosity,
	EAutomationExpectedMessageFlags::MatchType InCompareType, int32 InExpectedNumberOfOccurrences, bool bInIsRegex)
	: MessagePatternString(InMessagePattern)
	, Verbosity(InVerbosity)
	, CompareType(InCompareType)
	, ExpectedNumberOfOccurrences(InExpectedNumberOfOccurrences)
	, ActualNumberOfOccurrences(0)
	, bIsRegex(bInIsRegex)
{
	TSharedPtr<FAutomationMessagePattern> Compiled = MakeShared<FAutomationMessagePattern>();
	Compiled->bIsRegex = bInIsRegex;
	if (bInIsRegex)
	{
		try
		{
			Compiled->Regex = std::wregex(ToWide(InMessagePattern, false),
				std::regex_constants::ECMAScript | std::regex_constants::icase | std::regex_constants::optimize);
		}
		catch (const std::regex_error&)
		{
			Compiled->bIsValid = false;
		}
	}
	else
	{
		Compiled->LowerPlain = ToWide(InMessagePattern, true);
	}
	Pattern = Compiled;
}

bool FAutomationExpectedMessage::IsValid() const
{
	return Pattern.IsValid() && Pattern->bIsValid;
}

bool FAutomationExpectedMessage::Matches(const FString& Message, ELogVerbosity::Type MessageVerbosity) const
{
	// Lower values are more severe: an expectation at Warning also accepts errors.
	if (!IsValid() || SeverityOf(MessageVerbosity) > Verbosity)
	{
		return false;
	}
	if (Pattern->bIsRegex)
	{
		const std::wstring Text = ToWide(Message, false);
		return CompareType == EAutomationExpectedMessageFlags::Exact ? std::regex_match(Text, Pattern->Regex)
																	 : std::regex_search(Text, Pattern->Regex);
	}
	const std::wstring Text = ToWide(Message, true);
	return CompareType == EAutomationExpectedMessageFlags::Exact ? Text == Pattern->LowerPlain
																 : Text.find(Pattern->LowerPlain) != std::wstring::npos;
}

// --- FAutomationTestInfo -------------------------------------------------------------------------

FAutomationTestInfo::FAutomationTestInfo(const FString& InDisplayName, const FString& InFullTestPath,
	const FString& InTestName, EAutomationTestFlags InTestFlags, int32 InNumParticipantsRequired,
	const FString& InTestParameter, const FString& InSourceFile, int32 InSourceFileLine)
	: DisplayName(InDisplayName)
	, FullTestPath(InFullTestPath)
	, TestName(InTestName)
	, TestFlags(InTestFlags)
	, NumParticipantsRequired(InNumParticipantsRequired)
	, TestParameter(InTestParameter)
	, SourceFile(InSourceFile)
	, SourceFileLine(InSourceFileLine)
{
}

// --- Latent commands -----------------------------------------------------------------------------

double IAutomationLatentCommand::GetCurrentRunTime() const
{
	return bHasStarted ? FApp::GetCurrentTime() - StartTime : 0.0;
}

bool IAutomationLatentCommand::InternalUpdate()
{
	if (!bHasStarted)
	{
		bHasStarted = true;
		StartTime = FApp::GetCurrentTime();
	}
	return Update();
}

bool FFunctionLatentCommand::Update()
{
	return LatentPredicate();
}

bool FDelayedFunctionLatentCommand::Update()
{
	if (GetCurrentRunTime() < Delay)
	{
		return false;
	}
	Callback();
	return true;
}

bool FUntilCommand::Update()
{
	if (Callback())
	{
		return true;
	}
	if (GetCurrentRunTime() >= Timeout)
	{
		TimeoutCallback();
		return true;
	}
	return false;
}

// --- Value formatting for assertion messages -----------------------------------------------------

namespace UE::Automation::Private
{
	FString FormatSigned(int64 Value)
	{
		return FromAscii(std::to_string(Value));
	}

	FString FormatUnsigned(uint64 Value)
	{
		return FromAscii(std::to_string(Value));
	}

	FString FormatDouble(double Value)
	{
		char Buffer[64];
		std::snprintf(Buffer, sizeof(Buffer), "%.9g", Value);
		return FromAscii(Buffer);
	}

	FString FormatPointer(const void* Value)
	{
		if (Value == nullptr)
		{
			return FString(TEXT("nullptr"));
		}
		char Buffer[32];
		std::snprintf(Buffer, sizeof(Buffer), "%p", Value);
		return FromAscii(Buffer);
	}

	FString FormatQuoted(const FString& Value)
	{
		return FString(TEXT("\"")) + Value + TEXT("\"");
	}
} // namespace UE::Automation::Private
