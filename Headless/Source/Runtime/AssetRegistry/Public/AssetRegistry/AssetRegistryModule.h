// Copyright Orvane. All Rights Reserved.

#pragma once

#include "AssetRegistry/IAssetRegistry.h"
#include "CoreMinimal.h"
#include "Modules/ModuleInterface.h"
#include "Templates/UniquePtr.h"

namespace AssetRegistryConstants
{
	/** The name of the module that owns the registry. */
	inline const FName ModuleName(TEXT("AssetRegistry"));
} // namespace AssetRegistryConstants

/** The module of the asset registry: FModuleManager::LoadModuleChecked<FAssetRegistryModule>("AssetRegistry").Get(). */
class ASSETREGISTRY_API FAssetRegistryModule : public IModuleInterface
{
public:
	virtual void StartupModule() override;
	virtual void ShutdownModule() override;

	/** The registry. */
	virtual IAssetRegistry& Get() const;

	/** The registry, loading the module if needed. */
	static IAssetRegistry& GetRegistry();

	/** Tells the registry that an asset was created in memory. */
	static void AssetCreated(UObject* NewAsset);

	/** Tells the registry that an asset was deleted. */
	static void AssetDeleted(UObject* DeletedAsset);

private:
	TUniquePtr<IAssetRegistry> Registry;
};
