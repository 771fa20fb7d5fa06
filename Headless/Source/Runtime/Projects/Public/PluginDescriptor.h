// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"
#include "PluginReferenceDescriptor.h"

/** Whether a plug-in is enabled when no project or plug-in reference says otherwise. */
enum class EPluginEnabledByDefault : uint8
{
	/** Project plug-ins are enabled, engine plug-ins are not. */
	Unspecified,
	Enabled,
	Disabled
};

/** The contents of a .uplugin file. */
struct PROJECTS_API FPluginDescriptor
{
	int32 FileVersion = 3;
	int32 Version = 1;
	FString VersionName;
	FString FriendlyName;
	FString Description;
	FString Category;
	FString CreatedBy;
	FString EngineVersion;
	bool bCanContainContent = false;
	bool bIsBetaVersion = false;
	EPluginEnabledByDefault EnabledByDefault = EPluginEnabledByDefault::Unspecified;
	TArray<FModuleDescriptor> Modules;
	TArray<FPluginReferenceDescriptor> Plugins;

	/** Reads the descriptor from a file; on failure leaves this unchanged and explains why. */
	bool Load(const FString& FileName, FText& OutFailReason);

	/** Reads the descriptor from JSON text; on failure leaves this unchanged and explains why. */
	bool Read(const FString& Text, FText& OutFailReason);
};
