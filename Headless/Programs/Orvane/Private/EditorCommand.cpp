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
