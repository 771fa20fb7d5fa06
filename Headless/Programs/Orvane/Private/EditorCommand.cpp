// Copyright Orvane. All Rights Reserved.

#include "EditorCommand.h"

#include "ConfigSnapshot.h"
#include "HeadlessEditorSession.h"
#include "Interfaces/IPluginManager.h"
#include "LaunchEngineLoop.h"
#include "Modules/ModuleManager.h"
#include "PluginDescriptor.h"
#include "ProgramOutput.h"
#include "SetupReport.h"
#include "SetupRun.h"

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

		// The engine loop lists the modules of every enabled plug-in in load order; keep Orvane's.
		TArray<FName> Modules;
		for (const FName& Module : GEngineLoop.GetLoadedPluginModules())
		{
			if (Plugin->GetDescriptor().Modules.ContainsByPredicate(
					[&Module](const FModuleDescriptor& Descriptor)
					{
						return Descriptor.Name == Module;
					}))
			{
				Modules.Add(Module);
			}
		}
		ProgramOutput::Line(FString::Printf(TEXT("Loaded plug-in modules (%d):"), Modules.Num()));
		for (const FName& Module : Modules)
		{
			ProgramOutput::Line(FString::Printf(TEXT("  %s"), *Module.ToString()));
		}

		TArray<FString> EnginePlugins;
		for (const TSharedRef<IPlugin>& Enabled : IPluginManager::Get().GetEnabledPlugins())
		{
			if (Enabled->GetLoadedFrom() == EPluginLoadedFrom::Engine)
			{
				EnginePlugins.Add(Enabled->GetName());
			}
		}
		ProgramOutput::Line(FString::Printf(TEXT("Engine plug-ins enabled: %s"),
			EnginePlugins.Num() > 0 ? *FString::Join(EnginePlugins, TEXT(", ")) : TEXT("none")));
	}
} // namespace

int32 RunEditorCommand(const TArray<FString>& Args)
{
	TArray<FString> Remaining = Args;
	FHeadlessEditorOptions Options;
	FSetupRunOptions SetupOptions;
	FString Error;
	if (!Options.Parse(Remaining, Error) || !SetupOptions.Parse(Remaining, Error) || Remaining.Num() > 0)
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
	if (SetupOptions.Mode == ESetupMode::None)
	{
		return 0;
	}
	if (!FModuleManager::Get().IsModuleLoaded(TEXT("Orvaneui")))
	{
		ProgramOutput::Error(TEXT("The setup needs the plug-in's Orvaneui module, which this project did not load."));
		return 1;
	}

	// The configuration is compared as the user's files stood before the setup and after the editor closed.
	const FString ProjectDir = Session.GetProjectDir();
	const FConfigSnapshot Before = FConfigSnapshot::Take(ProjectDir);
	const FSetupRunResult Result = RunSetup(SetupOptions);
	SetupReport::PrintRun(Result);
	SetupReport::PrintCamera();
	SetupReport::PrintLiveLinkSources();
	Session.Shutdown();
	SetupReport::PrintConfigChanges(Before, FConfigSnapshot::Take(ProjectDir));
	SetupReport::PrintPresetAsset(ProjectDir, SetupOptions);
	return Result.bSucceeded ? 0 : 1;
}
