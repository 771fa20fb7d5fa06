// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"

struct FPluginDescriptor;

/** Where a plug-in was found. */
enum class EPluginLoadedFrom
{
	Engine,
	Project
};

/** A plug-in the plug-in manager discovered. */
class IPlugin
{
public:
	virtual ~IPlugin() = default;

	/** The plug-in's name: the .uplugin file's base name. */
	virtual const FString& GetName() const = 0;

	/** The full path of the .uplugin file. */
	virtual const FString& GetDescriptorFileName() const = 0;

	/** The folder holding the .uplugin file, without a trailing '/'. */
	virtual FString GetBaseDir() const = 0;

	/** GetBaseDir() / "Content". */
	virtual FString GetContentDir() const = 0;

	/** The root of the plug-in's content in the asset tree, such as "/Orvane/". */
	virtual FString GetMountedAssetPath() const = 0;

	virtual bool IsEnabled() const = 0;
	virtual bool CanContainContent() const = 0;
	virtual EPluginLoadedFrom GetLoadedFrom() const = 0;
	virtual const FPluginDescriptor& GetDescriptor() const = 0;
};

/** Finds plug-ins in the engine's and the project's folders and loads their modules by phase. */
class IPluginManager
{
public:
	virtual ~IPluginManager() = default;

	static PROJECTS_API IPluginManager& Get();

	/** Rescans every search folder for .uplugin files. */
	virtual void RefreshPluginsList() = 0;

	/** Adds a folder to search for plug-ins; returns false if it was already known. */
	virtual bool AddPluginSearchPath(const FString& ExtraDiscoveryPath, bool bRefresh = true) = 0;

	/** Any discovered plug-in, enabled or not; null if none has that name (case-insensitive). */
	virtual TSharedPtr<IPlugin> FindPlugin(const FStringView Name) = 0;
	virtual TSharedPtr<IPlugin> FindPlugin(const ANSICHAR* Name) = 0;

	/** An enabled plug-in; null if none of that name is enabled. */
	virtual TSharedPtr<IPlugin> FindEnabledPlugin(const FStringView Name) = 0;
	virtual TSharedPtr<IPlugin> FindEnabledPlugin(const ANSICHAR* Name) = 0;

	/** The plug-in whose descriptor file is the given path. */
	virtual TSharedPtr<IPlugin> FindPluginFromPath(const FString& PluginPath) = 0;

	virtual TArray<TSharedRef<IPlugin>> GetEnabledPlugins() = 0;
	virtual TArray<TSharedRef<IPlugin>> GetDiscoveredPlugins() = 0;

	/** Loads, in descriptor order, every module of every enabled plug-in that belongs to the phase. */
	virtual bool LoadModulesForEnabledPlugins(const ELoadingPhase::Type LoadingPhase) = 0;
};
