// Copyright Orvane. All Rights Reserved.

#include "AssetRegistryImpl.h"

#include "HAL/FileManager.h"
#include "Logging/LogMacros.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/PackageSummary.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectIterator.h"

#include <filesystem>
#include <system_error>

DEFINE_LOG_CATEGORY_STATIC(LogAssetRegistry, Log, All);

namespace UE::AssetRegistry::Private
{
	/** "/Game/Dir/" and "/Game/Dir" name the same folder; the registry keeps the form without the slash. */
	FString NormalizePackagePath(const FString& Path)
	{
		FString Result = Path;
		while (Result.Len() > 1 && Result.EndsWith(TEXT("/")))
		{
			Result.LeftChopInline(1);
		}
		return Result;
	}

	/** Whether Folder is Parent or, when recursive, lies below it. */
	bool IsInFolder(const FString& Folder, const FString& Parent, bool bRecursive)
	{
		if (Folder.Equals(Parent, ESearchCase::IgnoreCase))
		{
			return true;
		}
		return bRecursive && Folder.StartsWith(Parent / TEXT(""), ESearchCase::IgnoreCase);
	}

	/** The file's modification time (in the file system's ticks) and size; false if it does not exist. */
	bool GetFileState(const FString& Filename, int64& OutModificationTime, int64& OutSize)
	{
		std::error_code Error;
		const std::filesystem::path Path(TCHAR_TO_UTF8(*Filename));
		const auto Time = std::filesystem::last_write_time(Path, Error);
		if (Error)
		{
			return false;
		}
		const auto Size = std::filesystem::file_size(Path, Error);
		if (Error)
		{
			return false;
		}
		OutModificationTime = (int64)Time.time_since_epoch().count();
		OutSize = (int64)Size;
		return true;
	}

	/** The assets a package summary lists: the public objects directly inside the package. */
	TArray<FAssetData> AssetsOfSummary(const FString& PackageName, const FPackageSummary& Summary)
	{
		TArray<FAssetData> Assets;
		const FName PackageFName(*PackageName);
		const FName PackagePath(*FPackageName::GetLongPackagePath(PackageName));
		for (const FPackageSummaryObject& Object : Summary.Objects)
		{
			if (!Object.Outer.IsEmpty() || (Object.Flags & RF_Public) == 0)
			{
				continue;
			}
			Assets.Add(
				FAssetData(PackageFName, PackagePath, FName(*Object.Name), FTopLevelAssetPath(Object.ClassPath)));
		}
		return Assets;
	}

	/** Whether the class at ClassPath is Base or a child of it; only classes in memory know their parents. */
	bool IsChildOfClassPath(const FTopLevelAssetPath& ClassPath, const FTopLevelAssetPath& Base)
	{
		if (ClassPath == Base)
		{
			return true;
		}
		const UClass* Class =
			static_cast<const UClass*>(StaticFindObject(UClass::StaticClass(), nullptr, *ClassPath.ToString()));
		for (const UClass* Super = Class ? Class->GetSuperClass() : nullptr; Super; Super = Super->GetSuperClass())
		{
			if (FTopLevelAssetPath(Super) == Base)
			{
				return true;
			}
		}
		return false;
	}

	/** Whether the package's objects are assets the registry lists from memory. */
	bool IsListedPackage(const UPackage* Package)
	{
		if (!IsValid(Package) || Package == GetTransientPackage() || Package->HasAnyFlags(RF_Transient) ||
			Package->HasAnyPackageFlags(PKG_CompiledIn))
		{
			return false;
		}
		const FString Name = Package->GetName();
		return !FPackageName::IsScriptPackage(Name) && FPackageName::IsValidTextForLongPackageName(Name);
	}
} // namespace UE::AssetRegistry::Private

using namespace UE::AssetRegistry::Private;

FAssetRegistryImpl::FAssetRegistryImpl()
{
	MountedHandle = FPackageName::OnContentPathMounted().AddRaw(this, &FAssetRegistryImpl::OnContentPathMounted);
	DismountedHandle =
		FPackageName::OnContentPathDismounted().AddRaw(this, &FAssetRegistryImpl::OnContentPathDismounted);
}

FAssetRegistryImpl::~FAssetRegistryImpl()
{
	FPackageName::OnContentPathMounted().Remove(MountedHandle);
	FPackageName::OnContentPathDismounted().Remove(DismountedHandle);
}

void FAssetRegistryImpl::OnContentPathMounted(const FString& AssetPath, const FString& ContentPath)
{
	// New content is searched right away, so OnAssetAdded reports it.
	ScanRequests({FScanRequest{NormalizePackagePath(AssetPath), true}}, false);
}

void FAssetRegistryImpl::OnContentPathDismounted(const FString& AssetPath, const FString& ContentPath)
{
	const FString Folder = NormalizePackagePath(FPaths::ConvertRelativePathToFull(ContentPath));
	ForgetMissingFiles(Folder, true, TSet<FString>());
}

void FAssetRegistryImpl::ScanFile(const FString& Filename, const FString& PackageName, bool bForceRescan) const
{
	int64 Time = 0;
	int64 Size = -1;
	if (!GetFileState(Filename, Time, Size))
	{
		return;
	}
	FCachedPackage* Cached = CachedPackages.Find(Filename);
	if (Cached && !bForceRescan && Cached->ModificationTime == Time && Cached->Size == Size &&
		Cached->PackageName == PackageName)
	{
		return;
	}
	TArray<FAssetData> Previous = Cached ? Cached->Assets : TArray<FAssetData>();
	FPackageSummary Summary;
	FString Error;
	FCachedPackage Entry;
	Entry.ModificationTime = Time;
	Entry.Size = Size;
	Entry.PackageName = PackageName;
	if (ReadPackageSummary(Filename, Summary, &Error))
	{
		Entry.Assets = AssetsOfSummary(PackageName, Summary);
	}
	else
	{
		UE_LOG(LogAssetRegistry, Warning, TEXT("The package '%s' is skipped: %s"), *PackageName, *Error);
	}
	CachedPackages.Add(Filename, Entry);
	for (const FAssetData& Asset : Previous)
	{
		if (!Entry.Assets.Contains(Asset))
		{
			AssetRemovedEvent.Broadcast(Asset);
		}
	}
	for (const FAssetData& Asset : Entry.Assets)
	{
		if (!Previous.Contains(Asset))
		{
			AssetAddedEvent.Broadcast(Asset);
		}
	}
}

void FAssetRegistryImpl::ForgetMissingFiles(
	const FString& Folder, bool bRecursive, const TSet<FString>& SeenFiles) const
{
	TArray<FString> Gone;
	for (const TPair<FString, FCachedPackage>& Pair : CachedPackages)
	{
		if (!SeenFiles.Contains(Pair.Key) && IsInFolder(FPaths::GetPath(Pair.Key), Folder, bRecursive))
		{
			Gone.Add(Pair.Key);
		}
	}
	for (const FString& Filename : Gone)
	{
		ForgetFile(Filename);
	}
}

void FAssetRegistryImpl::ForgetFile(const FString& Filename) const
{
	const FCachedPackage* Cached = CachedPackages.Find(Filename);
	if (!Cached)
	{
		return;
	}
	const TArray<FAssetData> Assets = Cached->Assets;
	CachedPackages.Remove(Filename);
	for (const FAssetData& Asset : Assets)
	{
		AssetRemovedEvent.Broadcast(Asset);
	}
}

void FAssetRegistryImpl::ScanRequests(
	const TArray<FScanRequest>& Requests, bool bForceRescan, TSet<FString>* OutFiles) const
{
	IFileManager& FileManager = IFileManager::Get();
	for (const FScanRequest& Request : Requests)
	{
		const FString Path = NormalizePackagePath(Request.Path);

		// The path may name a package...
		FString PackageFile;
		if (Path != TEXT("/") && FPackageName::DoesPackageExist(Path, &PackageFile))
		{
			const FString Full = FPaths::ConvertRelativePathToFull(PackageFile);
			ScanFile(Full, Path, bForceRescan);
			if (OutFiles)
			{
				OutFiles->Add(Full);
			}
		}
		else if (FPackageName::IsValidLongPackageName(Path, false))
		{
			FString Expected;
			if (FPackageName::TryConvertLongPackageNameToFilename(
					Path, Expected, FPackageName::GetAssetPackageExtension()))
			{
				// ...that was deleted since it was read.
				const FString Full = FPaths::ConvertRelativePathToFull(Expected);
				ForgetFile(Full);
			}
		}
		if (Request.bPackageOnly)
		{
			continue;
		}

		// ...and a folder.
		FString Folder;
		if (!FPackageName::TryConvertLongPackageNameToFilename(Path / TEXT(""), Folder))
		{
			continue;
		}
		Folder = NormalizePackagePath(FPaths::ConvertRelativePathToFull(Folder));
		TSet<FString> Seen;
		if (FileManager.DirectoryExists(*Folder))
		{
			TArray<FString> Files;
			if (Request.bRecursive)
			{
				FileManager.FindFilesRecursive(Files, *Folder, TEXT("*"), true, false);
			}
			else
			{
				TArray<FString> Names;
				FileManager.FindFiles(Names, *(Folder / TEXT("*")), true, false);
				for (const FString& Name : Names)
				{
					Files.Add(Folder / Name);
				}
			}
			for (const FString& File : Files)
			{
				if (!FPackageName::IsPackageFilename(File))
				{
					continue;
				}
				FString PackageName;
				if (!FPackageName::TryConvertFilenameToLongPackageName(File, PackageName))
				{
					continue;
				}
				const FString Full = FPaths::ConvertRelativePathToFull(File);
				Seen.Add(Full);
				ScanFile(Full, PackageName, bForceRescan);
			}
		}
		ForgetMissingFiles(Folder, Request.bRecursive, Seen);
		if (OutFiles)
		{
			OutFiles->Append(Seen);
		}
	}
}

TArray<FAssetRegistryImpl::FScanRequest> FAssetRegistryImpl::RequestsFor(const FARFilter& Filter) const
{
	TArray<FScanRequest> Requests;
	if (!Filter.PackageNames.IsEmpty())
	{
		for (FName PackageName : Filter.PackageNames)
		{
			Requests.Add(FScanRequest{PackageName.ToString(), false, true});
		}
	}
	else if (!Filter.SoftObjectPaths.IsEmpty())
	{
		for (const FSoftObjectPath& ObjectPath : Filter.SoftObjectPaths)
		{
			Requests.Add(FScanRequest{ObjectPath.GetLongPackageName(), false, true});
		}
	}
	else if (!Filter.PackagePaths.IsEmpty())
	{
		for (FName PackagePath : Filter.PackagePaths)
		{
			Requests.Add(FScanRequest{PackagePath.ToString(), Filter.bRecursivePaths, false});
		}
	}
	else
	{
		TArray<FString> Roots;
		FPackageName::QueryRootContentPaths(Roots);
		for (const FString& Root : Roots)
		{
			Requests.Add(FScanRequest{Root, true, false});
		}
	}
	return Requests;
}

bool FAssetRegistryImpl::Matches(const FARFilter& Filter, const FAssetData& Asset) const
{
	if (!Filter.PackageNames.IsEmpty() && !Filter.PackageNames.Contains(Asset.PackageName))
	{
		return false;
	}
	if (!Filter.PackagePaths.IsEmpty())
	{
		const FString AssetPath = Asset.PackagePath.ToString();
		bool bAny = false;
		for (FName PackagePath : Filter.PackagePaths)
		{
			bAny |= IsInFolder(AssetPath, NormalizePackagePath(PackagePath.ToString()), Filter.bRecursivePaths);
		}
		if (!bAny)
		{
			return false;
		}
	}
	if (!Filter.SoftObjectPaths.IsEmpty())
	{
		const FSoftObjectPath AssetPath = Asset.GetSoftObjectPath();
		if (!Filter.SoftObjectPaths.Contains(AssetPath))
		{
			return false;
		}
	}
	if (!Filter.ClassPaths.IsEmpty())
	{
		bool bAny = false;
		for (const FTopLevelAssetPath& ClassPath : Filter.ClassPaths)
		{
			bAny |= Filter.bRecursiveClasses ? IsChildOfClassPath(Asset.AssetClassPath, ClassPath)
											 : Asset.AssetClassPath == ClassPath;
		}
		if (!bAny)
		{
			return false;
		}
		if (Filter.bRecursiveClasses)
		{
			for (const FTopLevelAssetPath& Excluded : Filter.RecursiveClassPathsExclusionSet)
			{
				if (IsChildOfClassPath(Asset.AssetClassPath, Excluded))
				{
					return false;
				}
			}
		}
	}
	return true;
}

void FAssetRegistryImpl::RunQuery(const FARFilter& Filter, TArray<FAssetData>& OutAssetData) const
{
	// Only the files that are now where the filter looks are answers: the cache may also hold files of
	// folders that are no longer mounted or of packages that moved.
	TSet<FString> Files;
	ScanRequests(RequestsFor(Filter), false, &Files);

	// Objects in memory say more recent things than their saved packages.
	TSet<FSoftObjectPath> InMemory;
	if (!Filter.bIncludeOnlyOnDiskAssets)
	{
		for (TObjectIterator<UPackage> It; It; ++It)
		{
			UPackage* Package = *It;
			if (!IsListedPackage(Package))
			{
				continue;
			}
			TArray<UObject*> Objects;
			GetObjectsWithOuter(Package, Objects, false);
			for (UObject* Object : Objects)
			{
				if (!IsValid(Object) || !Object->IsAsset() || Object->HasAnyFlags(RF_ClassDefaultObject))
				{
					continue;
				}
				const FAssetData Asset(Object);
				if (!Asset.IsValid())
				{
					continue;
				}
				InMemory.Add(Asset.GetSoftObjectPath());
				if (Matches(Filter, Asset))
				{
					OutAssetData.Add(Asset);
				}
			}
		}
	}
	TSet<FSoftObjectPath> OnDisk;
	for (const FString& File : Files)
	{
		const FCachedPackage* Cached = CachedPackages.Find(File);
		if (!Cached)
		{
			continue;
		}
		for (const FAssetData& Asset : Cached->Assets)
		{
			const FSoftObjectPath Path = Asset.GetSoftObjectPath();
			// A package saved with both extensions is listed once.
			if (!InMemory.Contains(Path) && !OnDisk.Contains(Path) && Matches(Filter, Asset))
			{
				OnDisk.Add(Path);
				OutAssetData.Add(Asset);
			}
		}
	}
}

bool FAssetRegistryImpl::HasAssets(const FName PackagePath, const bool bRecursive) const
{
	TArray<FAssetData> Assets;
	GetAssetsByPath(PackagePath, Assets, bRecursive);
	return !Assets.IsEmpty();
}

bool FAssetRegistryImpl::GetAssetsByPackageName(FName PackageName, TArray<FAssetData>& OutAssetData,
	bool bIncludeOnlyOnDiskAssets, bool bSkipARFilteredAssets) const
{
	FARFilter Filter;
	Filter.PackageNames.Add(PackageName);
	Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
	return GetAssets(Filter, OutAssetData, bSkipARFilteredAssets);
}

bool FAssetRegistryImpl::GetAssetsByPath(
	FName PackagePath, TArray<FAssetData>& OutAssetData, bool bRecursive, bool bIncludeOnlyOnDiskAssets) const
{
	return GetAssetsByPaths({PackagePath}, OutAssetData, bRecursive, bIncludeOnlyOnDiskAssets);
}

bool FAssetRegistryImpl::GetAssetsByPaths(
	TArray<FName> PackagePaths, TArray<FAssetData>& OutAssetData, bool bRecursive, bool bIncludeOnlyOnDiskAssets) const
{
	FARFilter Filter;
	Filter.PackagePaths = MoveTemp(PackagePaths);
	Filter.bRecursivePaths = bRecursive;
	Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
	return GetAssets(Filter, OutAssetData);
}

bool FAssetRegistryImpl::GetAssetsByClass(
	FTopLevelAssetPath ClassPathName, TArray<FAssetData>& OutAssetData, bool bSearchSubClasses) const
{
	FARFilter Filter;
	Filter.ClassPaths.Add(ClassPathName);
	Filter.bRecursiveClasses = bSearchSubClasses;
	return GetAssets(Filter, OutAssetData);
}

bool FAssetRegistryImpl::GetAssets(
	const FARFilter& Filter, TArray<FAssetData>& OutAssetData, bool bSkipARFilteredAssets) const
{
	// The headless editor filters no assets out of the registry, so bSkipARFilteredAssets changes nothing.
	RunQuery(Filter, OutAssetData);
	return true;
}

FAssetData FAssetRegistryImpl::GetAssetByObjectPath(
	const FSoftObjectPath& ObjectPath, bool bIncludeOnlyOnDiskAssets, bool bSkipARFilteredAssets) const
{
	if (!ObjectPath.IsAsset())
	{
		return FAssetData();
	}
	FARFilter Filter;
	Filter.SoftObjectPaths.Add(ObjectPath);
	Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
	TArray<FAssetData> Found;
	GetAssets(Filter, Found, bSkipARFilteredAssets);
	return Found.IsEmpty() ? FAssetData() : Found[0];
}

bool FAssetRegistryImpl::GetAllAssets(TArray<FAssetData>& OutAssetData, bool bIncludeOnlyOnDiskAssets) const
{
	FARFilter Filter;
	Filter.bIncludeOnlyOnDiskAssets = bIncludeOnlyOnDiskAssets;
	return GetAssets(Filter, OutAssetData);
}

void FAssetRegistryImpl::GetSubPaths(const FString& InBasePath, TArray<FString>& OutPathList, bool bInRecurse) const
{
	const FString Base = NormalizePackagePath(InBasePath);
	FString Folder;
	if (!FPackageName::TryConvertLongPackageNameToFilename(Base / TEXT(""), Folder))
	{
		return;
	}
	Folder = NormalizePackagePath(FPaths::ConvertRelativePathToFull(Folder));
	TArray<FString> Directories;
	if (bInRecurse)
	{
		IFileManager::Get().FindFilesRecursive(Directories, *Folder, TEXT("*"), false, true);
	}
	else
	{
		TArray<FString> Names;
		IFileManager::Get().FindFiles(Names, *(Folder / TEXT("*")), false, true);
		for (const FString& Name : Names)
		{
			Directories.Add(Folder / Name);
		}
	}
	for (const FString& Directory : Directories)
	{
		const FString Relative = NormalizePackagePath(Directory).RightChop(Folder.Len());
		OutPathList.AddUnique(Base + Relative);
	}
}

void FAssetRegistryImpl::SearchAllAssets(bool bSynchronousSearch)
{
	// Every search is synchronous here, so an asynchronous one is also complete when this returns.
	ScanRequests(RequestsFor(FARFilter()), false);
	FilesLoadedEvent.Broadcast();
}

void FAssetRegistryImpl::ScanPathsSynchronous(
	const TArray<FString>& InPaths, bool bForceRescan, bool bIgnoreDenyListScanFilters)
{
	TArray<FScanRequest> Requests;
	for (const FString& Path : InPaths)
	{
		Requests.Add(FScanRequest{Path, true, false});
	}
	ScanRequests(Requests, bForceRescan);
}

void FAssetRegistryImpl::ScanFilesSynchronous(const TArray<FString>& InFilePaths, bool bForceRescan)
{
	for (const FString& File : InFilePaths)
	{
		FString PackageName;
		if (!FPackageName::TryConvertFilenameToLongPackageName(File, PackageName))
		{
			UE_LOG(LogAssetRegistry, Warning, TEXT("ScanFilesSynchronous: '%s' lies under no mounted content folder."),
				*File);
			continue;
		}
		const FString Full = FPaths::ConvertRelativePathToFull(File);
		if (!FPaths::FileExists(Full))
		{
			ForgetFile(Full);
			continue;
		}
		ScanFile(Full, PackageName, bForceRescan);
	}
}

void FAssetRegistryImpl::AssetCreated(UObject* NewAsset)
{
	const FAssetData Asset(NewAsset);
	if (Asset.IsValid())
	{
		AssetAddedEvent.Broadcast(Asset);
	}
}

void FAssetRegistryImpl::AssetDeleted(UObject* DeletedAsset)
{
	const FAssetData Asset(DeletedAsset);
	if (Asset.IsValid())
	{
		AssetRemovedEvent.Broadcast(Asset);
	}
}
