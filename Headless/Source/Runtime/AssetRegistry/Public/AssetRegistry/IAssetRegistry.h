// Copyright Orvane. All Rights Reserved.

#pragma once

#include "AssetRegistry/ARFilter.h"
#include "AssetRegistry/AssetData.h"
#include "CoreMinimal.h"
#include "Delegates/DelegateCombinations.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/TopLevelAssetPath.h"

class UObject;

/**
 * The asset registry: what assets exist, on disk in the mounted content folders and in memory,
 * without loading them.
 *
 * Queries append to their output array and return true when they ran (not whether they found
 * anything). Paths are content folders without a trailing '/' ("/Game/Orvane"). Unless
 * bIncludeOnlyOnDiskAssets is set, assets in memory are merged in, and win over the saved data of the
 * same object path. Searches are synchronous: every query looks at the folders it covers, so packages
 * saved or deleted since the last query are seen.
 */
class ASSETREGISTRY_API IAssetRegistry
{
public:
	virtual ~IAssetRegistry() = default;

	/** The registry, or null when the AssetRegistry module is not loaded. */
	static IAssetRegistry* Get();

	/** The registry; fatal when the AssetRegistry module is not loaded. */
	static IAssetRegistry& GetChecked();

	/** Whether any asset lies in the folder (or below it, when recursive). */
	virtual bool HasAssets(const FName PackagePath, const bool bRecursive = false) const = 0;

	/** The assets of one package. */
	virtual bool GetAssetsByPackageName(FName PackageName, TArray<FAssetData>& OutAssetData,
		bool bIncludeOnlyOnDiskAssets = false, bool bSkipARFilteredAssets = true) const = 0;

	/** The assets of a folder; with bRecursive those of its sub-folders too. */
	virtual bool GetAssetsByPath(FName PackagePath, TArray<FAssetData>& OutAssetData, bool bRecursive = false,
		bool bIncludeOnlyOnDiskAssets = false) const = 0;

	/** The assets of several folders. */
	virtual bool GetAssetsByPaths(TArray<FName> PackagePaths, TArray<FAssetData>& OutAssetData, bool bRecursive = false,
		bool bIncludeOnlyOnDiskAssets = false) const = 0;

	/** The assets of a class; with bSearchSubClasses those of its child classes too. */
	virtual bool GetAssetsByClass(
		FTopLevelAssetPath ClassPathName, TArray<FAssetData>& OutAssetData, bool bSearchSubClasses = false) const = 0;

	/** The assets the filter matches. */
	virtual bool GetAssets(
		const FARFilter& Filter, TArray<FAssetData>& OutAssetData, bool bSkipARFilteredAssets = true) const = 0;

	/** The asset of an object path; an invalid FAssetData if there is none. */
	virtual FAssetData GetAssetByObjectPath(const FSoftObjectPath& ObjectPath, bool bIncludeOnlyOnDiskAssets = false,
		bool bSkipARFilteredAssets = true) const = 0;

	/** Every asset. */
	virtual bool GetAllAssets(TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets = false) const = 0;

	/** The folders below InBasePath that hold packages (all levels with bInRecurse). */
	virtual void GetSubPaths(const FString& InBasePath, TArray<FString>& OutPathList, bool bInRecurse) const = 0;

	/** Whether a search is still running; the headless registry always searches synchronously. */
	virtual bool IsLoadingAssets() const = 0;

	/** Waits for the running search; nothing ever runs in the background here. */
	virtual void WaitForCompletion() = 0;

	/** Searches every mounted content folder. */
	virtual void SearchAllAssets(bool bSynchronousSearch) = 0;

	/** Searches the given folders or packages ("/Game/Dir", "/Game/Dir/Package") now. */
	virtual void ScanPathsSynchronous(
		const TArray<FString>& InPaths, bool bForceRescan = false, bool bIgnoreDenyListScanFilters = false) = 0;

	/** Reads the given package files now. */
	virtual void ScanFilesSynchronous(const TArray<FString>& InFilePaths, bool bForceRescan = false) = 0;

	/** Tells the registry that an asset was created in memory. */
	virtual void AssetCreated(UObject* NewAsset) = 0;

	/** Tells the registry that an asset was deleted. */
	virtual void AssetDeleted(UObject* DeletedAsset) = 0;

	/** Broadcast when the registry learns of an asset. */
	DECLARE_EVENT_OneParam(IAssetRegistry, FAssetAddedEvent, const FAssetData&);
	virtual FAssetAddedEvent& OnAssetAdded() = 0;

	/** Broadcast when an asset the registry knew is gone. */
	DECLARE_EVENT_OneParam(IAssetRegistry, FAssetRemovedEvent, const FAssetData&);
	virtual FAssetRemovedEvent& OnAssetRemoved() = 0;

	/** Broadcast when a search of every content folder has finished. */
	DECLARE_EVENT(IAssetRegistry, FFilesLoadedEvent);
	virtual FFilesLoadedEvent& OnFilesLoaded() = 0;
};
