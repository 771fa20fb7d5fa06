// Copyright Orvane. All Rights Reserved.

#include "PluginDescriptor.h"

#include "DescriptorJson.h"

bool FPluginDescriptor::Load(const FString& FileName, FText& OutFailReason)
{
	FString Text;
	return DescriptorJson::LoadFile(FileName, Text, OutFailReason) && Read(Text, OutFailReason);
}

bool FPluginDescriptor::Read(const FString& Text, FText& OutFailReason)
{
	nlohmann::json Object;
	if (!DescriptorJson::ParseObject(Text, Object, OutFailReason))
	{
		return false;
	}
	FPluginDescriptor Result;
	Result.FileVersion =
		DescriptorJson::GetInt(Object, "FileVersion", DescriptorJson::GetInt(Object, "PluginFileVersion", 0));
	if (Result.FileVersion < 3)
	{
		OutFailReason =
			FText::FromString(FString::Printf(TEXT("Unsupported plug-in descriptor version %d."), Result.FileVersion));
		return false;
	}
	Result.Version = DescriptorJson::GetInt(Object, "Version", 0);
	Result.VersionName = DescriptorJson::GetString(Object, "VersionName");
	Result.FriendlyName = DescriptorJson::GetString(Object, "FriendlyName");
	Result.Description = DescriptorJson::GetString(Object, "Description");
	Result.Category = DescriptorJson::GetString(Object, "Category");
	Result.CreatedBy = DescriptorJson::GetString(Object, "CreatedBy");
	Result.EngineVersion = DescriptorJson::GetString(Object, "EngineVersion");
	Result.bCanContainContent = DescriptorJson::GetBool(Object, "CanContainContent", false);
	Result.bIsBetaVersion = DescriptorJson::GetBool(Object, "IsBetaVersion", false);
	if (Object.contains("EnabledByDefault"))
	{
		Result.EnabledByDefault = DescriptorJson::GetBool(Object, "EnabledByDefault", false)
									  ? EPluginEnabledByDefault::Enabled
									  : EPluginEnabledByDefault::Disabled;
	}
	if (!DescriptorJson::ReadModules(Object, Result.Modules, OutFailReason) ||
		!DescriptorJson::ReadPluginReferences(Object, Result.Plugins, OutFailReason))
	{
		return false;
	}
	*this = MoveTemp(Result);
	return true;
}
