// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ModuleDescriptor.h"
#include "PluginReferenceDescriptor.h"

#include <nlohmann/json.hpp>

/** Helpers shared by the plug-in and project descriptor readers. */
namespace DescriptorJson
{
	/** Parses descriptor text into a JSON object; on failure explains why. */
	bool ParseObject(const FString& Text, nlohmann::json& OutObject, FText& OutFailReason);

	FString GetString(const nlohmann::json& Object, const char* Field, const FString& Default = FString());
	int32 GetInt(const nlohmann::json& Object, const char* Field, int32 Default);
	bool GetBool(const nlohmann::json& Object, const char* Field, bool bDefault);
	TArray<FString> GetStringArray(const nlohmann::json& Object, const char* Field);

	/** Reads the "Modules" list; on failure explains which entry is wrong. */
	bool ReadModules(const nlohmann::json& Object, TArray<FModuleDescriptor>& OutModules, FText& OutFailReason);

	/** Reads the "Plugins" list of references. */
	bool ReadPluginReferences(
		const nlohmann::json& Object, TArray<FPluginReferenceDescriptor>& OutPlugins, FText& OutFailReason);

	/** Loads a whole descriptor file as text; on failure explains why. */
	bool LoadFile(const FString& FileName, FString& OutText, FText& OutFailReason);
} // namespace DescriptorJson
