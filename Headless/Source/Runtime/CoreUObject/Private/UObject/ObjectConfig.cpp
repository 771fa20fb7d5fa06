// Copyright Orvane. All Rights Reserved.

#include "Misc/ConfigCacheIni.h"
#include "Misc/Paths.h"
#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/Object.h"

FString UObject::GetConfigSectionName() const
{
	return GetClass()->GetPathName();
}

FString UObject::GetDefaultConfigFilename() const
{
	return FPaths::ProjectConfigDir() + TEXT("Default") + GetClass()->ClassConfigName.ToString() + TEXT(".ini");
}

FString UObject::GetGlobalUserConfigFilename() const
{
	UE_HEADLESS_UNIMPLEMENTED();
	return FString();
}

FString UObject::GetProjectUserConfigFilename() const
{
	return FPaths::ProjectConfigDir() + TEXT("UserDefault") + GetClass()->ClassConfigName.ToString() + TEXT(".ini");
}

void UObject::SaveConfig(uint64 Flags, const TCHAR* Filename, FConfigCacheIni* Config, bool bAllowCopyToDefaultObject)
{
	UE_HEADLESS_UNIMPLEMENTED();
}

bool UObject::TryUpdateDefaultConfigFile(const FString& SpecificFileLocation, bool bWarnIfFail)
{
	UE_HEADLESS_UNIMPLEMENTED();
	return false;
}

void UObject::UpdateDefaultConfigFile(const FString& SpecificFileLocation)
{
	TryUpdateDefaultConfigFile(SpecificFileLocation);
}

void UObject::UpdateGlobalUserConfigFile()
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::UpdateProjectUserConfigFile()
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::UpdateSinglePropertyInConfigFile(const FProperty* InProperty, const FString& InConfigIniName)
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::LoadConfig(UClass* ConfigClass, const TCHAR* Filename, uint32 PropagationFlags, FProperty* PropertyToLoad)
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::ReloadConfig(
	UClass* ConfigClass, const TCHAR* Filename, uint32 PropagationFlags, FProperty* PropertyToLoad)
{
	LoadConfig(ConfigClass, Filename, PropagationFlags | UE::LCPF_ReloadingConfigData, PropertyToLoad);
}
