// Copyright Orvane. All Rights Reserved.

#include "ProjectDescriptor.h"

#include "DescriptorJson.h"

bool FProjectDescriptor::Load(const FString& FileName, FText& OutFailReason)
{
	FString Text;
	return DescriptorJson::LoadFile(FileName, Text, OutFailReason) && Read(Text, OutFailReason);
}

bool FProjectDescriptor::Read(const FString& Text, FText& OutFailReason)
{
	nlohmann::json Object;
	if (!DescriptorJson::ParseObject(Text, Object, OutFailReason))
	{
		return false;
	}
	FProjectDescriptor Result;
	Result.FileVersion = DescriptorJson::GetInt(Object, "FileVersion", 0);
	if (Result.FileVersion < 3)
	{
		OutFailReason =
			FText::FromString(FString::Printf(TEXT("Unsupported project descriptor version %d."), Result.FileVersion));
		return false;
	}
	Result.EngineAssociation = DescriptorJson::GetString(Object, "EngineAssociation");
	Result.Category = DescriptorJson::GetString(Object, "Category");
	Result.Description = DescriptorJson::GetString(Object, "Description");
	Result.AdditionalPluginDirectories = DescriptorJson::GetStringArray(Object, "AdditionalPluginDirectories");
	if (!DescriptorJson::ReadModules(Object, Result.Modules, OutFailReason) ||
		!DescriptorJson::ReadPluginReferences(Object, Result.Plugins, OutFailReason))
	{
		return false;
	}
	*this = MoveTemp(Result);
	return true;
}
