// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/Set.h"
#include "CoreMinimal.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/TopLevelAssetPath.h"

/**
 * A filter of asset registry queries. Each component's entries are alternatives (any may match); the
 * components that are set must all match. An empty filter matches every asset.
 */
struct FARFilter
{
	/** The filter component for package names. */
	TArray<FName> PackageNames;

	/** The filter component for package paths ("/Game/Dir", without a trailing '/'). */
	TArray<FName> PackagePaths;

	/** The filter component containing specific object paths. */
	TArray<FSoftObjectPath> SoftObjectPaths;

	/**
	 * The filter component for class path names. Instances of the specified classes, but not
	 * subclasses (by default), will be included.
	 */
	TArray<FTopLevelAssetPath> ClassPaths;

	/** Only if bRecursiveClasses is true, the results will exclude classes (and subclasses) in this list. */
	TSet<FTopLevelAssetPath> RecursiveClassPathsExclusionSet;

	/** If true, PackagePath components will be recursive. */
	bool bRecursivePaths = false;

	/** If true, subclasses of ClassPaths will also be included and RecursiveClassPathsExclusionSet will be excluded. */
	bool bRecursiveClasses = false;

	/** If true, only on-disk assets will be returned. */
	bool bIncludeOnlyOnDiskAssets = false;

	/** Appends the entries of another filter. */
	void Append(const FARFilter& Other)
	{
		PackageNames.Append(Other.PackageNames);
		PackagePaths.Append(Other.PackagePaths);
		SoftObjectPaths.Append(Other.SoftObjectPaths);
		ClassPaths.Append(Other.ClassPaths);
		for (const FTopLevelAssetPath& Path : Other.RecursiveClassPathsExclusionSet)
		{
			RecursiveClassPathsExclusionSet.Add(Path);
		}
		bRecursivePaths |= Other.bRecursivePaths;
		bRecursiveClasses |= Other.bRecursiveClasses;
		bIncludeOnlyOnDiskAssets |= Other.bIncludeOnlyOnDiskAssets;
	}

	/** Whether the filter has no component set (the flags do not count). */
	bool IsEmpty() const
	{
		return PackageNames.Num() + PackagePaths.Num() + SoftObjectPaths.Num() + ClassPaths.Num() == 0;
	}

	void Clear() { *this = FARFilter(); }
};
