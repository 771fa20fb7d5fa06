// Copyright Orvane. All Rights Reserved.

#include "Plugin.h"

#include "Misc/Paths.h"

FPlugin::FPlugin(
	const FString& InDescriptorFileName, const FPluginDescriptor& InDescriptor, EPluginLoadedFrom InLoadedFrom)
	: Name(FPaths::GetBaseFilename(InDescriptorFileName))
	, DescriptorFileName(InDescriptorFileName)
	, Descriptor(InDescriptor)
	, LoadedFrom(InLoadedFrom)
{
}

FString FPlugin::GetBaseDir() const
{
	return FPaths::GetPath(DescriptorFileName);
}

FString FPlugin::GetContentDir() const
{
	return GetBaseDir() / TEXT("Content");
}

FString FPlugin::GetMountedAssetPath() const
{
	return FString::Printf(TEXT("/%s/"), *Name);
}

bool FPlugin::IsEnabledByDefault() const
{
	switch (Descriptor.EnabledByDefault)
	{
		case EPluginEnabledByDefault::Enabled:
			return true;
		case EPluginEnabledByDefault::Disabled:
			return false;
		default:
			return LoadedFrom == EPluginLoadedFrom::Project;
	}
}
