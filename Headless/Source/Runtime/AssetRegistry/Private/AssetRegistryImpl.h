// Copyright Orvane. All Rights Reserved.

#pragma once

#include "AssetRegistry/IAssetRegistry.h"
#include "Containers/Map.h"
#include "CoreMinimal.h"
#include "Delegates/IDelegateInstance.h"

/**
 * The registry of the headless engine. Saved assets come from the package files of the mounted
 * content folders, read through their summaries and cached by file time and size; assets in memory
 * are the public objects directly inside loaded or created packages, looked at on every query.
 */
class FAssetRegistryImpl final : public IAssetRegistry
{
public:
	FAssetRegistryImpl();
	virtual ~FAssetRegistryImpl() override;

	virtual bool HasAssets(const FName PackagePath, const bool bRecursive = false) const override;
	virtual bool GetAssetsByPackageName(FName PackageName, TArray<FAssetData>& OutAssetData,
		bool bIncludeOnlyOnDiskAssets = false, bool bSkipARFilteredAssets = true) const override;
	virtual bool GetAssetsByPath(FName PackagePath, TArray<FAssetData>& OutAssetData, bool bRecursive = false,
		bool bIncludeOnlyOnDiskAssets = false) const override;
	virtual bool GetAssetsByPaths(TArray<FName> PackagePaths, TArray<FAssetData>& OutAssetData, bool bRecursive = false,
		bool bIncludeOnlyOnDiskAssets = false) const override;
	virtual bool GetAssetsByClass(FTopLevelAssetPath ClassPathName, TArray<FAssetData>& OutAssetData,
		bool bSearchSubClasses = false) const override;
	virtual bool GetAssets(
		const FARFilter& Filter, TArray<FAssetData>& OutAssetData, bool bSkipARFilteredAssets = true) const override;
	virtual FAssetData GetAssetByObjectPath(const FSoftObjectPath& ObjectPath, bool bIncludeOnlyOnDiskAssets = false,
		bool bSkipARFilteredAssets = true) const override;
	virtual bool GetAllAssets(TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets = false) const override;
	virtual void GetSubPaths(const FString& InBasePath, TArray<FString>& OutPathList, bool bInRecurse) const override;
	virtual bool IsLoadingAssets() const override { return false; }
	virtual void WaitForCompletion() override {}
	virtual void SearchAllAssets(bool bSynchronousSearch) override;
	virtual void ScanPathsSynchronous(
		const TArray<FString>& InPaths, bool bForceRescan = false, bool bIgnoreDenyListScanFilters = false) override;
	virtual void ScanFilesSynchronous(const TArray<FString>& InFilePaths, bool bForceRescan = false) override;
	virtual void AssetCreated(UObject* NewAsset) override;
	virtual void AssetDeleted(UObject* DeletedAsset) override;
	virtual FAssetAddedEvent& OnAssetAdded() override { return AssetAddedEvent; }
	virtual FAssetRemovedEvent& OnAssetRemoved() override { return AssetRemovedEvent; }
	virtual FFilesLoadedEvent& OnFilesLoaded() override { return FilesLoadedEvent; }

private:
	/** What was read from one package file, and the file's state when it was read. */
	struct FCachedPackage
	{
		int64 ModificationTime = 0;
		int64 Size = -1;
		/** The package the file was read as (a file changes package when mount points change). */
		FString PackageName;
		TArray<FAssetData> Assets;
	};

	/** A folder of the content to look at, or a single package. */
	struct FScanRequest
	{
		/** A long package path ("/Game/Dir") or package name. */
		FString Path;
		bool bRecursive = true;
		/** Only the package of that name, not the folder. */
		bool bPackageOnly = false;
	};

	/**
	 * Brings the cache of the package files the requests cover up to date (reading new or changed files),
	 * and adds the files that exist there to OutFiles if given.
	 */
	void ScanRequests(const TArray<FScanRequest>& Requests, bool bForceRescan, TSet<FString>* OutFiles = nullptr) const;

	/** Reads one package file into the cache if it is new or changed. */
	void ScanFile(const FString& Filename, const FString& PackageName, bool bForceRescan) const;

	/** Removes one package file from the cache, if it is there. */
	void ForgetFile(const FString& Filename) const;

	/** Removes the cached packages of the folder whose files are gone. */
	void ForgetMissingFiles(const FString& Folder, bool bRecursive, const TSet<FString>& SeenFiles) const;

	/** The folders and packages a filter needs looked at. */
	TArray<FScanRequest> RequestsFor(const FARFilter& Filter) const;

	/** Runs a filter over the saved and (unless excluded) in-memory assets, after scanning what it covers. */
	void RunQuery(const FARFilter& Filter, TArray<FAssetData>& OutAssetData) const;

	bool Matches(const FARFilter& Filter, const FAssetData& Asset) const;

	void OnContentPathMounted(const FString& AssetPath, const FString& ContentPath);
	void OnContentPathDismounted(const FString& AssetPath, const FString& ContentPath);

	/** Package file name -> what it holds. Filled lazily by queries, hence mutable. */
	mutable TMap<FString, FCachedPackage> CachedPackages;

	mutable FAssetAddedEvent AssetAddedEvent;
	mutable FAssetRemovedEvent AssetRemovedEvent;
	FFilesLoadedEvent FilesLoadedEvent;

	FDelegateHandle MountedHandle;
	FDelegateHandle DismountedHandle;
};
