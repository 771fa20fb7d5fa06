// Copyright Orvane. All Rights Reserved.

#include "Misc/CommandLine.h"

#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "Logging/LogMacros.h"

namespace CommandLinePrivate
{
	struct FState
	{
		FString Current;
		FString Original;
		bool bInitialized = false;
	};

	FState& GetState()
	{
		static FState State;
		return State;
	}

	/** Cuts Text to the engine's buffer size, warning once per cut so a lost switch never goes unnoticed. */
	bool ClampToMaxSize(FString& Text)
	{
		const int32 MaxChars = (int32)FCommandLine::MaxCommandLineSize - 1;
		if (Text.Len() <= MaxChars)
		{
			return true;
		}
		UE_LOG(LogInit, Warning, TEXT("The command line is longer than %d characters; the rest is ignored."), MaxChars);
		Text.LeftInline(MaxChars);
		return false;
	}
} // namespace CommandLinePrivate

bool FCommandLine::Set(const TCHAR* NewCommandLine)
{
	CommandLinePrivate::FState& State = CommandLinePrivate::GetState();
	FString Text(NewCommandLine != nullptr ? NewCommandLine : TEXT(""));
	const bool bFits = CommandLinePrivate::ClampToMaxSize(Text);
	if (!State.bInitialized)
	{
		State.Original = Text;
	}
	State.Current = MoveTemp(Text);
	State.bInitialized = true;
	return bFits;
}

const TCHAR* FCommandLine::Get()
{
	return *CommandLinePrivate::GetState().Current;
}

const TCHAR* FCommandLine::GetOriginal()
{
	return *CommandLinePrivate::GetState().Original;
}

void FCommandLine::Append(const TCHAR* AppendString)
{
	CommandLinePrivate::FState& State = CommandLinePrivate::GetState();
	State.Current += AppendString;
	CommandLinePrivate::ClampToMaxSize(State.Current);
}

bool FCommandLine::IsInitialized()
{
	return CommandLinePrivate::GetState().bInitialized;
}

void FCommandLine::Reset()
{
	CommandLinePrivate::GetState() = CommandLinePrivate::FState();
}
