// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IPluginManager.h"

class FPlugin;

/**
 * Discovers plug-ins in the engine's plug-in folder, the project's plug-in folder, the project's
 * additional plug-in folders and any added search path. A folder holding a .uplugin file is not
 * searched further.
 */
class FPluginManager final : public IPluginManager
{
public:
	//~ Begin IPluginManager interface
	virtual void RefreshPluginsList() override;
	virtual bool AddPluginSearchPath(const FString& ExtraDiscoveryPath, bool bRefresh = true) override;
	virtual TSharedPtr<IPlugin> FindPlugin(const FStringView Name) override;
	virtual TSharedPtr<IPlugin> FindPlugin(const ANSICHAR* Name) override;
	virtual TSharedPtr<IPlugin> FindEnabledPlugin(const FStringView Name) override;
	virtual TSharedPtr<IPlugin> FindEnabledPlugin(const ANSICHAR* Name) override;
	virtual TSharedPtr<IPlugin> FindPluginFromPath(const FString& PluginPath) override;
	virtual TArray<TSharedRef<IPlugin>> GetEnabledPlugins() override;
	virtual TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() override;
	virtual bool LoadModulesForEnabledPlugins(const ELoadingPhase::Type LoadingPhase) override;
	//~ End IPluginManager interface

private:
	void DiscoverPluginsIn(const FString& Directory, EPluginLoadedFrom LoadedFrom);
	void AddDiscoveredPlugin(const FString& DescriptorFileName, EPluginLoadedFrom LoadedFrom);
	void ResolveEnabledPlugins();
	void EnableWithDependencies(FPlugin& Plugin, TSet<FString>& Visited);
	TSharedPtr<FPlugin> FindByName(const FString& Name) const;
	bool LoadPluginModules(const FPlugin& Plugin, ELoadingPhase::Type LoadingPhase);

	/** Plug-ins in discovery order. */
	TArray<TSharedRef<FPlugin>> Plugins;

	/** Enabled plug-ins, each after the plug-ins it depends on. */
	TArray<TSharedRef<FPlugin>> EnabledPlugins;

	TArray<FString> ExtraSearchPaths;
};
