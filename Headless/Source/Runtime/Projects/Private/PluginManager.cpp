// Copyright Orvane. All Rights Reserved.

#include "PluginManager.h"

#include "HAL/FileManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "Plugin.h"
#include "PluginDescriptor.h"
#include "ProjectDescriptor.h"

DEFINE_LOG_CATEGORY_STATIC(LogPluginManager, Log, All);

IPluginManager& IPluginManager::Get()
{
	static FPluginManager PluginManager;
	return PluginManager;
}

void FPluginManager::RefreshPluginsList()
{
	Plugins.Reset();
	DiscoverPluginsIn(FPaths::EnginePluginsDir(), EPluginLoadedFrom::Engine);
	if (FPaths::IsProjectFilePathSet())
	{
		DiscoverPluginsIn(FPaths::ProjectPluginsDir(), EPluginLoadedFrom::Project);
		if (const FProjectDescriptor* Project = IProjectManager::Get().GetCurrentProject())
		{
			for (const FString& Directory : Project->AdditionalPluginDirectories)
			{
				const FString FullDirectory = FPaths::IsRelative(Directory)
												  ? FPaths::ConvertRelativePathToFull(FPaths::ProjectDir(), Directory)
												  : Directory;
				DiscoverPluginsIn(FullDirectory, EPluginLoadedFrom::Project);
			}
		}
	}
	for (const FString& Directory : ExtraSearchPaths)
	{
		DiscoverPluginsIn(Directory, EPluginLoadedFrom::Project);
	}
	ResolveEnabledPlugins();
}

bool FPluginManager::AddPluginSearchPath(const FString& ExtraDiscoveryPath, bool bRefresh)
{
	const FString FullPath = FPaths::ConvertRelativePathToFull(ExtraDiscoveryPath);
	if (ExtraSearchPaths.Contains(FullPath))
	{
		return false;
	}
	ExtraSearchPaths.Add(FullPath);
	if (bRefresh)
	{
		RefreshPluginsList();
	}
	return true;
}

void FPluginManager::DiscoverPluginsIn(const FString& Directory, EPluginLoadedFrom LoadedFrom)
{
	if (!FPaths::DirectoryExists(Directory))
	{
		return;
	}
	TArray<FString> DescriptorFiles;
	IFileManager::Get().FindFiles(DescriptorFiles, *(Directory / TEXT("*.uplugin")), true, false);
	if (DescriptorFiles.Num() > 0)
	{
		DescriptorFiles.Sort();
		for (const FString& DescriptorFile : DescriptorFiles)
		{
			AddDiscoveredPlugin(FPaths::ConvertRelativePathToFull(Directory / DescriptorFile), LoadedFrom);
		}
		return;
	}
	TArray<FString> SubDirectories;
	IFileManager::Get().FindFiles(SubDirectories, *(Directory / TEXT("*")), false, true);
	SubDirectories.Sort();
	for (const FString& SubDirectory : SubDirectories)
	{
		DiscoverPluginsIn(Directory / SubDirectory, LoadedFrom);
	}
}

void FPluginManager::AddDiscoveredPlugin(const FString& DescriptorFileName, EPluginLoadedFrom LoadedFrom)
{
	FPluginDescriptor Descriptor;
	FText FailReason;
	if (!Descriptor.Load(DescriptorFileName, FailReason))
	{
		UE_LOG(LogPluginManager, Error, TEXT("Plug-in descriptor '%s' could not be read: %s"), *DescriptorFileName,
			*FailReason.ToString());
		return;
	}
	TSharedRef<FPlugin> Plugin = MakeShared<FPlugin>(DescriptorFileName, Descriptor, LoadedFrom);
	if (FindByName(Plugin->GetName()).IsValid())
	{
		UE_LOG(LogPluginManager, Warning, TEXT("Plug-in '%s' was found twice; keeping the first, ignoring '%s'."),
			*Plugin->GetName(), *DescriptorFileName);
		return;
	}
	Plugins.Add(Plugin);
}

void FPluginManager::ResolveEnabledPlugins()
{
	EnabledPlugins.Reset();
	TMap<FString, bool> ProjectChoices;
	if (const FProjectDescriptor* Project = IProjectManager::Get().GetCurrentProject())
	{
		for (const FPluginReferenceDescriptor& Reference : Project->Plugins)
		{
			ProjectChoices.Add(Reference.Name, Reference.bEnabled);
			if (Reference.bEnabled && !Reference.bOptional && !FindByName(Reference.Name).IsValid())
			{
				UE_LOG(LogPluginManager, Warning, TEXT("The project enables plug-in '%s', which was not found."),
					*Reference.Name);
			}
		}
	}
	TSet<FString> Visited;
	for (const TSharedRef<FPlugin>& Plugin : Plugins)
	{
		Plugin->SetEnabled(false);
	}
	for (const TSharedRef<FPlugin>& Plugin : Plugins)
	{
		const bool* Choice = ProjectChoices.Find(Plugin->GetName());
		if (Choice ? *Choice : Plugin->IsEnabledByDefault())
		{
			EnableWithDependencies(*Plugin, Visited);
		}
	}
}

void FPluginManager::EnableWithDependencies(FPlugin& Plugin, TSet<FString>& Visited)
{
	if (Visited.Contains(Plugin.GetName()))
	{
		return;
	}
	Visited.Add(Plugin.GetName());
	for (const FPluginReferenceDescriptor& Reference : Plugin.GetDescriptor().Plugins)
	{
		if (!Reference.bEnabled)
		{
			continue;
		}
		if (TSharedPtr<FPlugin> Dependency = FindByName(Reference.Name))
		{
			EnableWithDependencies(*Dependency, Visited);
		}
		else if (!Reference.bOptional)
		{
			UE_LOG(LogPluginManager, Warning,
				TEXT("Plug-in '%s' depends on plug-in '%s', which the engine does not provide."), *Plugin.GetName(),
				*Reference.Name);
		}
	}
	Plugin.SetEnabled(true);
	EnabledPlugins.Add(StaticCastSharedRef<FPlugin>(FindByName(Plugin.GetName()).ToSharedRef()));
}

TSharedPtr<FPlugin> FPluginManager::FindByName(const FString& Name) const
{
	for (const TSharedRef<FPlugin>& Plugin : Plugins)
	{
		if (Plugin->GetName() == Name)
		{
			return Plugin;
		}
	}
	return nullptr;
}

TSharedPtr<IPlugin> FPluginManager::FindPlugin(const FStringView Name)
{
	return FindByName(FString(Name));
}

TSharedPtr<IPlugin> FPluginManager::FindPlugin(const ANSICHAR* Name)
{
	return FindByName(FString(Name));
}

TSharedPtr<IPlugin> FPluginManager::FindEnabledPlugin(const FStringView Name)
{
	TSharedPtr<FPlugin> Plugin = FindByName(FString(Name));
	return Plugin.IsValid() && Plugin->IsEnabled() ? Plugin : nullptr;
}

TSharedPtr<IPlugin> FPluginManager::FindEnabledPlugin(const ANSICHAR* Name)
{
	return FindEnabledPlugin(FStringView(FString(Name)));
}

TSharedPtr<IPlugin> FPluginManager::FindPluginFromPath(const FString& PluginPath)
{
	const FString FullPath = FPaths::ConvertRelativePathToFull(PluginPath);
	for (const TSharedRef<FPlugin>& Plugin : Plugins)
	{
		if (FPaths::IsSamePath(Plugin->GetDescriptorFileName(), FullPath))
		{
			return Plugin;
		}
	}
	return nullptr;
}

TArray<TSharedRef<IPlugin>> FPluginManager::GetEnabledPlugins()
{
	TArray<TSharedRef<IPlugin>> Result;
	for (const TSharedRef<FPlugin>& Plugin : EnabledPlugins)
	{
		Result.Add(Plugin);
	}
	return Result;
}

TArray<TSharedRef<IPlugin>> FPluginManager::GetDiscoveredPlugins()
{
	TArray<TSharedRef<IPlugin>> Result;
	for (const TSharedRef<FPlugin>& Plugin : Plugins)
	{
		Result.Add(Plugin);
	}
	return Result;
}

bool FPluginManager::LoadModulesForEnabledPlugins(const ELoadingPhase::Type LoadingPhase)
{
	bool bSuccess = true;
	for (const TSharedRef<FPlugin>& Plugin : EnabledPlugins)
	{
		bSuccess &= LoadPluginModules(*Plugin, LoadingPhase);
	}
	return bSuccess;
}

bool FPluginManager::LoadPluginModules(const FPlugin& Plugin, ELoadingPhase::Type LoadingPhase)
{
	bool bSuccess = true;
	for (const FModuleDescriptor& Module : Plugin.GetDescriptor().Modules)
	{
		const bool bAllowedHere =
			Module.PlatformAllowList.Num() == 0 || Module.PlatformAllowList.Contains(TEXT("Linux"));
		if (Module.LoadingPhase != LoadingPhase || !Module.IsLoadedInEditor() || !bAllowedHere)
		{
			continue;
		}
		EModuleLoadResult Result = EModuleLoadResult::Success;
		FModuleManager::Get().LoadModuleWithFailureReason(Module.Name, Result);
		if (Result != EModuleLoadResult::Success)
		{
			UE_LOG(LogPluginManager, Error, TEXT("Plug-in '%s' failed to load its module '%s'."), *Plugin.GetName(),
				*Module.Name.ToString());
			bSuccess = false;
		}
	}
	return bSuccess;
}
