// Copyright Orvane. All Rights Reserved.

#include "EditorCommand.h"

#include "HeadlessEditorSession.h"
#include "Interfaces/IPluginManager.h"
#include "LaunchEngineLoop.h"
#include "PluginDescriptor.h"
#include "ProgramOutput.h"

namespace
{
	void PrintPluginReport()
	{
		const TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindEnabledPlugin(TEXT("Orvane"));
		if (!Plugin.IsValid())
		{
			ProgramOutput::Line(TEXT("Plug-in: Orvane is not enabled in this project."));
			return;
		}
		ProgramOutput::Line(FString::Printf(TEXT("Plug-in: %s %s (%s)"), *Plugin->GetName(),
			*Plugin->GetDescriptor().VersionName, *Plugin->GetBaseDir()));

		const TArray<FName>& Modules = GEngineLoop.GetLoadedPluginModules();
		ProgramOutput::Line(FString::Printf(TEXT("Loaded plug-in modules (%d):"), Modules.Num()));
		for (const FName& Module : Modules)
		{
			ProgramOutput::Line(FString::Printf(TEXT("  %s"), *Module.ToString()));
		}
	}
} // namespace

int32 RunEditorCommand(const TArray<FString>& Args)
{
	TArray<FString> Remaining = Args;
	FHeadlessEditorOptions Options;
	FString Error;
	if (!Options.Parse(Remaining, Error) || Remaining.Num() > 0)
	{
		ProgramOutput::Error(Error.IsEmpty() ? FString::Printf(TEXT("Unknown argument '%s'."), *Remaining[0]) : Error);
		return 2;
	}

	FHeadlessEditorSession Session(Options);
	if (!Session.IsRunning())
	{
		ProgramOutput::Error(Session.GetError());
		return 1;
	}
	ProgramOutput::Line(FString::Printf(TEXT("Project: %s"), *Session.GetProjectDir()));
	PrintPluginReport();
	return 0;
}
