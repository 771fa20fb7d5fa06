// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/TypeHash.h"
#include "UObject/NameTypes.h"
#include "UObject/TopLevelAssetPath.h"

class FArchive;
class FOutputDevice;
class UClass;
class UObject;
struct FUObjectSerializeContext;

/**
 * A string reference to an object that may or may not be in memory: the top-level asset
 * ("/Game/Dir/Asset.Asset") plus an optional sub-object path ("PersistentLevel.Actor"), written
 * "/Game/Dir/Asset.Asset:PersistentLevel.Actor". A package path on its own ("/Game/Dir/Asset") is
 * kept as a package path with no asset name. An empty path is null; its text form is "" from
 * ToString and "None" in exported property text.
 */
struct FSoftObjectPath
{
	FSoftObjectPath() = default;
	FSoftObjectPath(const FSoftObjectPath&) = default;
	FSoftObjectPath(FSoftObjectPath&&) = default;
	FSoftObjectPath& operator=(const FSoftObjectPath&) = default;
	FSoftObjectPath& operator=(FSoftObjectPath&&) = default;

	/** Parses a path string (see SetPath); implicit for the engine's older call sites. */
	FSoftObjectPath(const FString& Path) { SetPath(FWideStringView(Path)); }

	explicit FSoftObjectPath(FTopLevelAssetPath InAssetPath)
		: AssetPath(InAssetPath)
	{
	}

	FSoftObjectPath(FTopLevelAssetPath InAssetPath, FString InSubPathString)
	{
		SetPath(InAssetPath, MoveTemp(InSubPathString));
	}

	FSoftObjectPath(FName InPackageName, FName InAssetName, FString InSubPathString)
	{
		SetPath(FTopLevelAssetPath(InPackageName, InAssetName), MoveTemp(InSubPathString));
	}

	explicit FSoftObjectPath(FWideStringView Path) { SetPath(Path); }
	explicit FSoftObjectPath(FAnsiStringView Path) { SetPath(Path); }
	explicit FSoftObjectPath(const WIDECHAR* Path) { SetPath(FWideStringView(Path)); }
	explicit FSoftObjectPath(const ANSICHAR* Path) { SetPath(FAnsiStringView(Path)); }
	explicit FSoftObjectPath(decltype(nullptr)) {}

	/** The path of an object in memory; empty for null. */
	COREUOBJECT_API FSoftObjectPath(const UObject* InObject);

	FSoftObjectPath& operator=(const FString& Path)
	{
		SetPath(FWideStringView(Path));
		return *this;
	}

	FSoftObjectPath& operator=(FTopLevelAssetPath Path)
	{
		SetPath(Path);
		return *this;
	}

	FSoftObjectPath& operator=(FWideStringView Path)
	{
		SetPath(Path);
		return *this;
	}

	FSoftObjectPath& operator=(FAnsiStringView Path)
	{
		SetPath(Path);
		return *this;
	}

	FSoftObjectPath& operator=(const WIDECHAR* Path)
	{
		SetPath(FWideStringView(Path));
		return *this;
	}

	FSoftObjectPath& operator=(const ANSICHAR* Path)
	{
		SetPath(FAnsiStringView(Path));
		return *this;
	}

	FSoftObjectPath& operator=(decltype(nullptr))
	{
		Reset();
		return *this;
	}

	/** Sets the asset and clears the sub-object path. */
	COREUOBJECT_API void SetPath(const FTopLevelAssetPath& InAssetPath);

	/** Sets the asset and the sub-object path; a sub-object path without an asset is dropped. */
	COREUOBJECT_API void SetPath(const FTopLevelAssetPath& InAssetPath, FString InSubPathString);

	/**
	 * Parses "/Pkg/Path.Asset", "/Pkg/Path.Asset:Sub.Object", the package path "/Pkg/Path", and the
	 * export text form "Class'/Pkg/Path.Asset'". An empty text or "None" clears the path; a text that
	 * does not start with '/' is not a path: it is reported and the path is cleared.
	 */
	COREUOBJECT_API void SetPath(FWideStringView Path);
	COREUOBJECT_API void SetPath(FAnsiStringView Path);
	void SetPath(const WIDECHAR* Path) { SetPath(FWideStringView(Path)); }
	void SetPath(const ANSICHAR* Path) { SetPath(FAnsiStringView(Path)); }
	void SetPath(const FString& Path) { SetPath(FWideStringView(Path)); }

	/** The full path; empty when null. */
	COREUOBJECT_API FString ToString() const;
	COREUOBJECT_API void ToString(FString& OutString) const;

	/** Appends ToString() to OutString. */
	COREUOBJECT_API void AppendString(FString& OutString) const;

	FTopLevelAssetPath GetAssetPath() const { return AssetPath; }

	/** "/Pkg/Path.Asset" without the sub-object path. */
	FString GetAssetPathString() const { return AssetPath.ToString(); }

	FName GetLongPackageFName() const { return AssetPath.GetPackageName(); }
	COREUOBJECT_API FString GetLongPackageName() const;

	FName GetAssetFName() const { return AssetPath.GetAssetName(); }

	/** The asset's name; empty when there is none (null or a package path). */
	COREUOBJECT_API FString GetAssetName() const;

	const FString& GetSubPathString() const { return SubPathString; }
	void SetSubPathString(const FString& InSubPathString) { SubPathString = InSubPathString; }

	/** The path without its sub-object part. */
	FSoftObjectPath GetWithoutSubPath() const { return FSoftObjectPath(AssetPath); }

	/** Whether the path is set (whatever it points at). */
	bool IsValid() const { return AssetPath.IsValid(); }

	/** Whether the path is empty. */
	bool IsNull() const { return !IsValid(); }

	/** Whether the path names a top-level asset: an asset name and no sub-object path. */
	bool IsAsset() const { return !AssetPath.GetAssetName().IsNone() && SubPathString.IsEmpty(); }

	/** Whether the path names a sub-object of an asset. */
	bool IsSubobject() const { return !AssetPath.GetAssetName().IsNone() && !SubPathString.IsEmpty(); }

	void Reset()
	{
		AssetPath.Reset();
		SubPathString.Reset();
	}

	/** The object if it is in memory; never loads. */
	COREUOBJECT_API UObject* ResolveObject() const;

	/** The object, loading its package if it is not in memory; null if it cannot be found or loaded. */
	COREUOBJECT_API UObject* TryLoad(FUObjectSerializeContext* InLoadContext = nullptr) const;

	/** Compares paths ignoring case, as names compare. */
	bool operator==(const FSoftObjectPath& Other) const
	{
		return AssetPath == Other.AssetPath && SubPathString.Equals(Other.SubPathString, ESearchCase::IgnoreCase);
	}

	bool operator!=(const FSoftObjectPath& Other) const { return !(*this == Other); }

	/** Orders paths by their text, ignoring case. */
	bool LexicalLess(const FSoftObjectPath& Other) const
	{
		return ToString().Compare(Other.ToString(), ESearchCase::IgnoreCase) < 0;
	}

	/** Writes the path for a property value: "None" when null, quoted with PPF_Delimited. */
	COREUOBJECT_API bool ExportTextItem(FString& ValueStr, FSoftObjectPath const& DefaultValue, UObject* Parent,
		int32 PortFlags, UObject* ExportRootScope) const;

	/** Reads a path written by ExportTextItem (quoted or not, or "None"), advancing Buffer past it. */
	COREUOBJECT_API bool ImportTextItem(const TCHAR*& Buffer, int32 PortFlags, UObject* Parent,
		FOutputDevice* ErrorText, FArchive* InSerializingArchive = nullptr);

	friend uint32 GetTypeHash(const FSoftObjectPath& Path)
	{
		const uint32 AssetHash = GetTypeHash(Path.AssetPath);
		return Path.SubPathString.IsEmpty() ? AssetHash : HashCombine(AssetHash, GetTypeHash(Path.SubPathString));
	}

private:
	FTopLevelAssetPath AssetPath;
	FString SubPathString;
};

/** A soft path that names a class ("/Script/Engine.Actor", "/Game/BP_Camera.BP_Camera_C"). */
struct FSoftClassPath : public FSoftObjectPath
{
	FSoftClassPath() = default;
	FSoftClassPath(const FSoftClassPath&) = default;
	FSoftClassPath(FSoftClassPath&&) = default;
	FSoftClassPath& operator=(const FSoftClassPath&) = default;
	FSoftClassPath& operator=(FSoftClassPath&&) = default;

	FSoftClassPath(const FString& PathString)
		: FSoftObjectPath(PathString)
	{
	}

	explicit FSoftClassPath(const FSoftObjectPath& Path)
		: FSoftObjectPath(Path)
	{
	}

	explicit FSoftClassPath(const WIDECHAR* Path)
		: FSoftObjectPath(Path)
	{
	}

	explicit FSoftClassPath(decltype(nullptr)) {}

	/** The path of a class in memory; empty for null. */
	COREUOBJECT_API FSoftClassPath(const UClass* InClass);

	/** The class, loading it if needed; null unless it is T or a child of T. */
	template <class T>
	UClass* TryLoadClass() const
	{
		return TryLoadClassOf(T::StaticClass());
	}

	/** The class if it is in memory; never loads. */
	COREUOBJECT_API UClass* ResolveClass() const;

	/** The path of a class, empty for null. */
	static COREUOBJECT_API FSoftClassPath GetOrCreateIDForClass(const UClass* InClass);

private:
	/** Loads the class and checks that it is BaseClass or a child of it. */
	COREUOBJECT_API UClass* TryLoadClassOf(UClass* BaseClass) const;
};

class UScriptStruct;

template <typename T>
UScriptStruct* StaticStruct();

/** The reflection of the soft paths (declared for the header tool in UObject/NoExportTypes.h). */
template <>
COREUOBJECT_API UScriptStruct* StaticStruct<FSoftObjectPath>();
template <>
COREUOBJECT_API UScriptStruct* StaticStruct<FSoftClassPath>();
