// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "UObject/NameTypes.h"

class FArchive;
class FOutputDevice;
class UObject;

/**
 * The path of a top-level object: a package name and the name of an object directly inside it
 * ("/Game/Dir/Asset" + "Asset", written "/Game/Dir/Asset.Asset"). A package on its own has no asset
 * name and is written as the package name.
 */
struct FTopLevelAssetPath
{
	FTopLevelAssetPath() = default;
	FTopLevelAssetPath(decltype(nullptr)) {}

	/** From a package name and an asset name; empty if the package name is None. */
	FTopLevelAssetPath(FName InPackageName, FName InAssetName) { TrySetPath(InPackageName, InAssetName); }

	/** From the path of a package or of an object directly inside one; empty otherwise. */
	explicit FTopLevelAssetPath(const UObject* InObject) { TrySetPath(InObject); }

	/** From a string path; empty if it is not a top-level asset path. */
	explicit FTopLevelAssetPath(FWideStringView Path) { TrySetPath(Path); }
	explicit FTopLevelAssetPath(FAnsiStringView Path) { TrySetPath(Path); }
	explicit FTopLevelAssetPath(const WIDECHAR* Path) { TrySetPath(FWideStringView(Path)); }
	explicit FTopLevelAssetPath(const ANSICHAR* Path) { TrySetPath(FAnsiStringView(Path)); }
	explicit FTopLevelAssetPath(const FString& Path) { TrySetPath(FWideStringView(Path)); }

	/** Sets the path from its parts. Resets it and returns false if the package name is None. */
	COREUOBJECT_API bool TrySetPath(FName InPackageName, FName InAssetName);

	/**
	 * Sets the path of an object in memory. Resets it and returns false unless the object is a package
	 * or lies directly inside one.
	 */
	COREUOBJECT_API bool TrySetPath(const UObject* InObject);

	/**
	 * Parses "/Pkg/Path.Asset" or "/Pkg/Path". Resets the path and returns false when the text is
	 * empty or is not a top-level asset path (no leading '/', a sub-object part, an empty name).
	 */
	COREUOBJECT_API bool TrySetPath(FWideStringView Path);
	COREUOBJECT_API bool TrySetPath(FAnsiStringView Path);
	bool TrySetPath(const FString& Path) { return TrySetPath(FWideStringView(Path)); }
	bool TrySetPath(const WIDECHAR* Path) { return TrySetPath(FWideStringView(Path)); }
	bool TrySetPath(const ANSICHAR* Path) { return TrySetPath(FAnsiStringView(Path)); }

	FName GetPackageName() const { return PackageName; }
	FName GetAssetName() const { return AssetName; }

	/** "/Pkg/Path.Asset" ("/Pkg/Path" for a package); empty when null. */
	COREUOBJECT_API FString ToString() const;
	COREUOBJECT_API void ToString(FString& OutString) const;

	/** Appends ToString() to OutString. */
	COREUOBJECT_API void AppendString(FString& OutString) const;

	/** The path as a name. */
	COREUOBJECT_API FName ToFName() const;

	bool IsValid() const { return !PackageName.IsNone(); }
	bool IsNull() const { return PackageName.IsNone(); }

	void Reset()
	{
		PackageName = FName();
		AssetName = FName();
	}

	/** Case-insensitive comparison, like names. */
	bool operator==(const FTopLevelAssetPath& Other) const
	{
		return PackageName == Other.PackageName && AssetName == Other.AssetName;
	}

	bool operator!=(const FTopLevelAssetPath& Other) const { return !(*this == Other); }

	/** Orders paths by their text, ignoring case. */
	COREUOBJECT_API int32 Compare(const FTopLevelAssetPath& Other) const;

	/** Writes the path for a property value ("None" when null; quoted with PPF_Delimited). */
	COREUOBJECT_API bool ExportTextItem(FString& ValueStr, FTopLevelAssetPath const& DefaultValue, UObject* Parent,
		int32 PortFlags, UObject* ExportRootScope) const;

	/** Reads a path written by ExportTextItem, advancing Buffer past it. */
	COREUOBJECT_API bool ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent,
		FOutputDevice* ErrorText, FArchive* InSerializingArchive = nullptr);

	friend uint32 GetTypeHash(const FTopLevelAssetPath& Path)
	{
		return HashCombine(GetTypeHash(Path.PackageName), GetTypeHash(Path.AssetName));
	}

private:
	FName PackageName;
	FName AssetName;
};
