// Copyright Orvane. All Rights Reserved.

#include "AutomationTestCommand.h"
#include "Containers/StringConv.h"
#include "CoreMinimal.h"
#include "EditorCommand.h"
#include "HeadlessEditorSession.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/OutputDeviceStdOutput.h"
#include "MonitorCommand.h"
#include "ProgramOutput.h"
#include "ReplayCommand.h"

namespace
{
	const TCHAR* const UsageText = TEXT(
		"Usage: orvane <command> [options]\n"
		"\n"
		"Commands:\n"
		"  editor               Boot the headless editor on a project and report the plug-in modules it loaded.\n"
		"       --setup complete|camera-only\n"
		"                       Then do what the setup dialog's \"Full Setup\" or \"Create Camera Only\" button\n"
		"                       does, advance time and report the call's result, the log, on-screen messages,\n"
		"                       restart requests, the camera, the Live Link sources, the configuration written\n"
		"                       and the preset asset. Exit code 0 when the call returned true, else 1.\n"
		"       --endpoint A.B.C.D:PORT  Live Link endpoint of the complete setup (default 0.0.0.0:9001).\n"
		"       --preset NAME   Name of the Live Link preset asset (default Orvane_LiveLink_Preset).\n"
		"       --render-alpha | --no-render-alpha\n"
		"                       Whether the complete setup prepares alpha output (default: it does).\n"
		"       --advance S     Application seconds to run after the call, in frames of 1/60 s (default 2).\n"
		"  test [Filter]        Run the automation tests whose full name starts with Filter (all when omitted).\n"
		"       --junit FILE    Also write the results as JUnit XML.\n"
		"  monitor ENDPOINT     Listen on ENDPOINT (A.B.C.D:PORT) as the tracking source does and show, live, each\n"
		"                       camera's pose and lens, rate, jitter, loss and rejected datagrams by reason.\n"
		"       --duration S    Stop after S seconds (default: until Ctrl-C).\n"
		"       --json          Print one JSON object per second instead of the table, for scripts.\n"
		"  replay FILE ENDPOINT Send the datagrams of a tracking recording (.orvrec) to ENDPOINT (A.B.C.D:PORT)\n"
		"                       at their recorded times, then print what was sent.\n"
		"       --speed X       Play X times as fast (X > 0).\n"
		"       --loop          Start over after the last datagram until Ctrl-C.\n"
		"\n"
		"Options of editor and test:\n"
		"  --project PATH       Open this project (folder or .uproject) in place instead of a throwaway copy\n"
		"                       of the sample project.\n"
		"  --keep               Keep the throwaway copy on disk after the run.");

	int32 RunTestCommand(const TArray<FString>& Args)
	{
		TArray<FString> Remaining = Args;
		FHeadlessEditorOptions Options;
		FString Error;
		if (!Options.Parse(Remaining, Error))
		{
			ProgramOutput::Error(Error);
			return 2;
		}
		FHeadlessEditorSession Session(Options);
		if (!Session.IsRunning())
		{
			ProgramOutput::Error(Session.GetError());
			return 1;
		}
		return RunAutomationTestCommand(Remaining);
	}
} // namespace

int main(int ArgC, char* ArgV[])
{
	FOutputDeviceStdOutput Console;
	GLog->AddOutputDevice(&Console);

	TArray<FString> Args;
	for (int32 Index = 1; Index < ArgC; ++Index)
	{
		Args.Add(FString(UTF8_TO_TCHAR(ArgV[Index])));
	}
	if (Args.Num() == 0 || Args[0] == TEXT("--help") || Args[0] == TEXT("-h") || Args[0] == TEXT("help"))
	{
		ProgramOutput::Line(UsageText);
		return Args.Num() == 0 ? 2 : 0;
	}

	const FString Command = Args[0];
	Args.RemoveAt(0);
	int32 ExitCode = 2;
	if (Command == TEXT("editor"))
	{
		ExitCode = RunEditorCommand(Args);
	}
	else if (Command == TEXT("test"))
	{
		ExitCode = RunTestCommand(Args);
	}
	else if (Command == TEXT("monitor"))
	{
		ExitCode = RunMonitorCommand(Args);
	}
	else if (Command == TEXT("replay"))
	{
		ExitCode = RunReplayCommand(Args);
	}
	else
	{
		ProgramOutput::Error(FString::Printf(TEXT("Unknown command '%s'. Run 'orvane --help'."), *Command));
	}
	GLog->RemoveOutputDevice(&Console);
	return ExitCode;
}
