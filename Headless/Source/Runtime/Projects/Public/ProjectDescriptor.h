// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"
#include "PluginReferenceDescriptor.h"

/** The contents of a .uproject file. */
struct PROJECTS_API FProjectDescriptor
{
	int32 FileVersion = 3;
	FString EngineAssociation;
	FString Category;
	FString Description;
	TArray<FModuleDescriptor> Modules;
	TArray<FPluginReferenceDescriptor> Plugins;

	/** Extra folders searched for plug-ins, as written (relative to the project folder or absolute). */
	TArray<FString> AdditionalPluginDirectories;

	/** Reads the descriptor from a file; on failure leaves this unchanged and explains why. */
	bool Load(const FString& FileName, FText& OutFailReason);

	/** Reads the descriptor from JSON text; on failure leaves this unchanged and explains why. */
	bool Read(const FString& Text, FText& OutFailReason);
};
