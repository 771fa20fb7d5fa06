// Copyright Orvane. All Rights Reserved.

#include "AssetRegistry/AssetRegistryModule.h"

#include "AssetRegistryImpl.h"
#include "Modules/ModuleManager.h"

namespace UE::AssetRegistry::Private
{
	/** The registry of the loaded module; null while the module is not loaded. */
	IAssetRegistry* GRegistrySingleton = nullptr;
} // namespace UE::AssetRegistry::Private

IAssetRegistry* IAssetRegistry::Get()
{
	return UE::AssetRegistry::Private::GRegistrySingleton;
}

IAssetRegistry& IAssetRegistry::GetChecked()
{
	IAssetRegistry* Registry = Get();
	checkf(Registry, TEXT("The asset registry is used before the AssetRegistry module is loaded."));
	return *Registry;
}

void FAssetRegistryModule::StartupModule()
{
	Registry = MakeUnique<FAssetRegistryImpl>();
	UE::AssetRegistry::Private::GRegistrySingleton = Registry.Get();
}

void FAssetRegistryModule::ShutdownModule()
{
	UE::AssetRegistry::Private::GRegistrySingleton = nullptr;
	Registry.Reset();
}

IAssetRegistry& FAssetRegistryModule::Get() const
{
	check(Registry);
	return *Registry;
}

IAssetRegistry& FAssetRegistryModule::GetRegistry()
{
	return FModuleManager::LoadModuleChecked<FAssetRegistryModule>(AssetRegistryConstants::ModuleName).Get();
}

void FAssetRegistryModule::AssetCreated(UObject* NewAsset)
{
	GetRegistry().AssetCreated(NewAsset);
}

void FAssetRegistryModule::AssetDeleted(UObject* DeletedAsset)
{
	GetRegistry().AssetDeleted(DeletedAsset);
}

IMPLEMENT_MODULE(FAssetRegistryModule, AssetRegistry)
