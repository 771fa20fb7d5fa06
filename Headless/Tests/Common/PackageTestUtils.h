// Copyright Orvane. All Rights Reserved.

#pragma once

// Saving and unloading packages the way the editor does, for tests that round-trip assets.

#include "CoreMinimal.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

namespace PackageTestUtils
{
	/** The .uasset file of a long package name under its mount point. */
	inline FString FileOf(const FString& PackageName)
	{
		return FPackageName::LongPackageNameToFilename(PackageName, FPackageName::GetAssetPackageExtension());
	}

	/** Saves the package with its asset the way the editor saves assets. */
	inline bool Save(UPackage* Package, UObject* Asset, FOutputDevice* Error = nullptr, uint32 SaveFlags = SAVE_None)
	{
		FSavePackageArgs Args;
		Args.TopLevelFlags = RF_Public | RF_Standalone;
		Args.Error = Error;
		Args.SaveFlags = SaveFlags;
		return UPackage::SavePackage(Package, Asset, *FileOf(Package->GetName()), Args);
	}

	/** Removes the package and everything in it from memory, as the editor does when it unloads a package. */
	inline void Unload(const TCHAR* PackageName)
	{
		UPackage* Package = FindPackage(nullptr, PackageName);
		if (!Package)
		{
			return;
		}
		TArray<UObject*> Objects;
		GetObjectsWithOuter(Package, Objects, true);
		for (UObject* Object : Objects)
		{
			Object->ClearFlags(RF_Standalone);
			Object->MarkAsGarbage();
		}
		Package->MarkAsGarbage();
		CollectGarbage(RF_NoFlags);
	}
} // namespace PackageTestUtils
