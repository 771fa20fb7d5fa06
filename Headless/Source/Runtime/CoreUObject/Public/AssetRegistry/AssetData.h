// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/TopLevelAssetPath.h"

class UClass;
class UObject;
class UPackage;

/**
 * Whether FAssetData::GetClass may load the class when it is not in memory (which may load other
 * assets, such as the packages a Blueprint class needs).
 */
enum class EResolveClass : uint8
{
	No,
	Yes
};

/** What the asset registry knows about one asset, whether or not it is loaded. */
struct COREUOBJECT_API FAssetData
{
	/** The long package name of the asset's package ("/Game/Orvane/Ndisplay/Config"). */
	FName PackageName;
	/** The folder of the package ("/Game/Orvane/Ndisplay"). */
	FName PackagePath;
	/** The asset's name ("Config"). */
	FName AssetName;
	/** The path of the asset's class ("/Script/Engine.Blueprint"). */
	FTopLevelAssetPath AssetClassPath;

#if WITH_EDITORONLY_DATA
	/** The short name of the asset's class; kept in step with AssetClassPath. */
	UE_DEPRECATED(5.1, "Short asset class name must be converted to full asset pathname. Use AssetClassPath instead.")
	FName AssetClass;

	/** The object path "/Game/Dir/Package.Asset"; kept in step with the other fields. */
	UE_DEPRECATED(5.1,
		"FName asset paths have been deprecated. Use GetSoftObjectPath to get the path this asset will use in "
		"memory when loaded or GetObjectPathString() if you were just doing ObjectPath.ToString()")
	FName ObjectPath;
#endif

	FAssetData();
	~FAssetData();
	FAssetData(const FAssetData& Other);
	FAssetData(FAssetData&& Other);
	FAssetData& operator=(const FAssetData& Other);
	FAssetData& operator=(FAssetData&& Other);

	/** An asset of a package: InAssetName in the package InPackageName, of the class InAssetClassPathName. */
	FAssetData(FName InPackageName, FName InPackagePath, FName InAssetName, FTopLevelAssetPath InAssetClassPathName);

	/** As above, with the package path taken from the package name. */
	FAssetData(const FString& InLongPackageName, const FString& InObjectPath, FTopLevelAssetPath InAssetClassPathName);

	/** The data of an object in memory; an invalid FAssetData for null or for objects that are not assets. */
	FAssetData(const UObject* InAsset, bool bAllowBlueprintClass = false);

	bool operator==(const FAssetData& Other) const;
	bool operator!=(const FAssetData& Other) const
	{
		return !(*this == Other);
	}

	/** Whether this names an asset (it has an asset name). */
	bool IsValid() const
	{
		return !AssetName.IsNone();
	}

	/** Whether the asset is the main asset of its package (its name is the package's short name). */
	bool IsUAsset() const;

	/** Whether the asset is in memory. */
	bool IsAssetLoaded() const;

	/** The asset, loaded if needed; null if it cannot be loaded or this is invalid. */
	UObject* GetAsset() const;

	/** The asset's class if it is in memory; with EResolveClass::Yes it is loaded if it is not. */
	UClass* GetClass(EResolveClass ResolveClass = EResolveClass::No) const;

	/** Whether the asset's class is BaseClass or a child of it; false if the class is not available. */
	bool IsInstanceOf(const UClass* BaseClass, EResolveClass ResolveClass = EResolveClass::No) const;

	/** The package if it is in memory. */
	UPackage* GetPackage() const;

	/** The path of the asset ("/Game/Dir/Package.Asset"). */
	FSoftObjectPath GetSoftObjectPath() const;
	FString GetObjectPathString() const;
	void AppendObjectPath(FString& OutString) const;

	/** "<Class path> <Object path>". */
	FString GetFullName() const;
	void GetFullName(FString& OutFullName) const;

	/** "<Class path>'<Object path>'", as references are exported. */
	FString GetExportTextName() const;

	/** The asset's name, path and class, for logs. */
	void PrintAssetData() const;

private:
	/** Brings the deprecated fields in step with the others. */
	void UpdateDeprecatedFields();
};

inline uint32 GetTypeHash(const FAssetData& AssetData)
{
	return HashCombine(GetTypeHash(AssetData.PackageName), GetTypeHash(AssetData.AssetName));
}
