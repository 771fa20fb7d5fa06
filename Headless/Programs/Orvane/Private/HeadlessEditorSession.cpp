// Copyright Orvane. All Rights Reserved.

#include "HeadlessEditorSession.h"

#include "LaunchEngineLoop.h"
#include "SampleProject.h"

bool FHeadlessEditorOptions::Parse(TArray<FString>& InOutArgs, FString& OutError)
{
	for (int32 Index = 0; Index < InOutArgs.Num();)
	{
		if (InOutArgs[Index] == TEXT("--project"))
		{
			if (Index + 1 >= InOutArgs.Num())
			{
				OutError = TEXT("--project needs a project folder or .uproject file.");
				return false;
			}
			ProjectPath = InOutArgs[Index + 1];
			InOutArgs.RemoveAt(Index, 2);
		}
		else if (InOutArgs[Index] == TEXT("--keep"))
		{
			bKeepProject = true;
			InOutArgs.RemoveAt(Index);
		}
		else
		{
			++Index;
		}
	}
	return true;
}

FHeadlessEditorSession::FHeadlessEditorSession(const FHeadlessEditorOptions& Options)
{
	ProjectDir = Options.ProjectPath;
	if (ProjectDir.IsEmpty())
	{
		SampleProject = MakeUnique<FSampleProject>(TEXT(ORVANE_SAMPLE_PROJECT_DIR), TEXT(ORVANE_PLUGIN_DIR));
		if (!SampleProject->IsValid())
		{
			Error = SampleProject->GetError();
			return;
		}
		if (Options.bKeepProject)
		{
			SampleProject->Keep();
		}
		ProjectDir = SampleProject->GetProjectDir();
	}

	const FString CommandLine = FString::Printf(TEXT("\"%s\""), *ProjectDir);
	if (GEngineLoop.PreInit(*CommandLine) != 0)
	{
		Error = FString::Printf(TEXT("The editor could not open the project '%s'."), *ProjectDir);
		return;
	}
	bInitialized = true;
	if (GEngineLoop.Init() != 0)
	{
		Error = TEXT("The editor started, but a plug-in module failed to load.");
		return;
	}
	bRunning = true;
}

FHeadlessEditorSession::~FHeadlessEditorSession()
{
	Shutdown();
}

void FHeadlessEditorSession::Shutdown()
{
	if (bInitialized)
	{
		GEngineLoop.Exit();
		bInitialized = false;
		bRunning = false;
	}
}
