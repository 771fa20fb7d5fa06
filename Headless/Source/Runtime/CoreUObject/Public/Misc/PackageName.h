// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/Delegate.h"
#include "Delegates/DelegateCombinations.h"
#include "UObject/NameTypes.h"

class FText;

/**
 * Long package names ("/Game/Dir/Asset"), the mount points that map their roots to folders on disk,
 * and the conversions between package names, object paths and file names.
 *
 * The headless engine mounts "/Game/" on the project's Content folder and "/Engine/" on the engine's,
 * both following the current project file; "/Temp/" on the project's Saved folder; "/Script/" (native
 * classes) and "/Memory/" exist but have no folder. Plug-in content is mounted by whoever enables the
 * plug-in, through RegisterMountPoint. A root may be mounted several times: the latest registration
 * wins, and a longer root wins over a shorter one that contains it.
 */
class FPackageName
{
public:
	/** Why a text is not a valid long package name. */
	enum class EErrorCode : uint8
	{
		PackageNameUnknown,
		PackageNameEmptyPath,
		PackageNamePathNotMounted,
		PackageNamePathIsMemoryOnly,
		PackageNameSpacesNotAllowed,
		PackageNameContainsInvalidCharacters,
		LongPackageNames_PathTooShort,
		LongPackageNames_PathWithNoStartingSlash,
		LongPackageNames_PathWithTrailingSlash,
		LongPackageNames_PathWithDoubleSlash,
	};

	/** Describes an error code for a given path, as a sentence. */
	static COREUOBJECT_API FString FormatErrorAsString(FStringView InPath, EErrorCode ErrorCode);
	static COREUOBJECT_API FText FormatErrorAsText(FStringView InPath, EErrorCode ErrorCode);

	// Mount points.

	/**
	 * Mounts RootPath ("/Name/", slashes added if missing) on the folder ContentPath, at the head of
	 * the search chain, so it can overlap an existing mount point and win.
	 */
	static COREUOBJECT_API void RegisterMountPoint(const FString& RootPath, const FString& ContentPath);

	/** Removes a mount point registered with the same root and folder; logs when there is none. */
	static COREUOBJECT_API void UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath);

	/** Whether RootPath ("/Name/") is mounted, by default or through RegisterMountPoint. */
	static COREUOBJECT_API bool MountPointExists(FStringView RootPath);
	static COREUOBJECT_API bool MountPointExists(const FString& RootPath);
	static COREUOBJECT_API bool MountPointExists(const TCHAR* RootPath);

	/**
	 * The mount point a package path lies under: "Game" for "/Game/Dir/Asset" ("/Game/" when
	 * InWithoutSlashes is false); NAME_None when it lies under none.
	 */
	static COREUOBJECT_API FName GetPackageMountPoint(const FString& InPackagePath, bool InWithoutSlashes = true);

	/** The mounted roots ("/Game/", "/Engine/", ...); read-only roots only when asked for. */
	static COREUOBJECT_API void QueryRootContentPaths(TArray<FString>& OutRootContentPaths,
		bool bIncludeReadOnlyRoots = false, bool bWithoutLeadingSlashes = false, bool bWithoutTrailingSlashes = false);

	/** Broadcast with the root and the folder when a mount point is registered. */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnContentPathMountedEvent, const FString&, const FString&);
	static COREUOBJECT_API FOnContentPathMountedEvent& OnContentPathMounted();

	/** Broadcast with the root and the folder when a mount point is removed. */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnContentPathDismountedEvent, const FString&, const FString&);
	static COREUOBJECT_API FOnContentPathDismountedEvent& OnContentPathDismounted();

	// Conversions between package names and file names.

	/**
	 * Converts a file or folder name, relative or absolute, to the long package name or path of the
	 * mount point whose folder contains it ("<Project>/Content/A/B.uasset" -> "/Game/A/B"); a text that
	 * already starts with a mounted root is returned without its extension. Does not look at the disk.
	 */
	static COREUOBJECT_API bool TryConvertFilenameToLongPackageName(
		const FString& InFilename, FString& OutPackageName, FString* OutFailureReason = nullptr);

	/** As TryConvertFilenameToLongPackageName; a file outside every mount point is a fatal error. */
	static COREUOBJECT_API FString FilenameToLongPackageName(const FString& InFilename);

	/**
	 * Converts a long package name or path to the file name under its mount point's folder, with
	 * InExtension appended ("/Game/A/B", ".uasset" -> "<Project>/Content/A/B.uasset"). False for roots
	 * that have no folder ("/Script/", "/Memory/") and for names under no mount point.
	 */
	static COREUOBJECT_API bool TryConvertLongPackageNameToFilename(
		const FString& InLongPackageName, FString& OutFilename, const FString& InExtension = TEXT(""));

	/** As TryConvertLongPackageNameToFilename; a name that cannot be converted is a fatal error. */
	static COREUOBJECT_API FString LongPackageNameToFilename(
		const FString& InLongPackageName, const FString& InExtension = TEXT(""));

	/**
	 * Whether a package file exists for the long package name: the name's file with the extension
	 * ".uasset" or ".umap" (and, with InAllowTextFormats, ".utxt" or ".utxtmap", which are preferred).
	 * On success OutFilename receives the file's name with its extension; otherwise it is left alone.
	 * Invalid names, object paths and roots without a folder give false.
	 */
	static COREUOBJECT_API bool DoesPackageExist(
		const FString& LongPackageName, FString* OutFilename = nullptr, bool InAllowTextFormats = true);

	/** Finds the package file for a file name given without extension, trying the package extensions. */
	static COREUOBJECT_API bool FindPackageFileWithoutExtension(const FString& InPackageFilename, FString& OutFilename);

	// Extensions.

	static COREUOBJECT_API const FString& GetAssetPackageExtension();
	static COREUOBJECT_API const FString& GetMapPackageExtension();
	static COREUOBJECT_API const FString& GetTextAssetPackageExtension();
	static COREUOBJECT_API const FString& GetTextMapPackageExtension();

	/** Whether Ext (with or without its dot) is one of the package extensions. */
	static COREUOBJECT_API bool IsPackageExtension(const TCHAR* Ext);

	/** Whether the file name ends with one of the package extensions. */
	static COREUOBJECT_API bool IsPackageFilename(FStringView Filename);

	// Validation.

	/** Whether the text has the form of a long package name, whatever is mounted. */
	static COREUOBJECT_API bool IsValidTextForLongPackageName(
		FStringView InLongPackageName, EErrorCode* OutReason = nullptr);
	static COREUOBJECT_API bool IsValidTextForLongPackageName(FStringView InLongPackageName, FText* OutReason);

	/**
	 * Whether the text is a long package name under a mounted root. With bIncludeReadOnlyRoots, also
	 * under the roots nothing may be saved to ("/Script/", "/Temp/", "/Memory/").
	 */
	static COREUOBJECT_API bool IsValidLongPackageName(
		FStringView InLongPackageName, bool bIncludeReadOnlyRoots = false, EErrorCode* OutReason = nullptr);
	static COREUOBJECT_API bool IsValidLongPackageName(
		FStringView InLongPackageName, bool bIncludeReadOnlyRoots, FText* OutReason);

	/** Whether the text is "<long package name>.<object>[(.|:)<subobject>...]" with a valid package part. */
	static COREUOBJECT_API bool IsValidObjectPath(const FString& InObjectPath, FText* OutReason = nullptr);

	/** Whether the text is a folder or package under a mounted root ("/Game/Dir" or "/Game/"). */
	static COREUOBJECT_API bool IsValidPath(const FString& InPath);

	/** Whether the name has no '/' (a short name such as "Asset"). */
	static COREUOBJECT_API bool IsShortPackageName(FStringView PossiblyLongName);
	static COREUOBJECT_API bool IsShortPackageName(const FString& PossiblyLongName);
	static COREUOBJECT_API bool IsShortPackageName(const FName PossiblyLongName);

	/** Whether the package is a native one under "/Script/". */
	static COREUOBJECT_API bool IsScriptPackage(FStringView InPackageName);

	/** Whether the package lives under "/Memory/", which is never on disk. */
	static COREUOBJECT_API bool IsMemoryPackage(FStringView InPackageName);

	/** Whether the package lives under "/Temp/". */
	static COREUOBJECT_API bool IsTempPackage(FStringView InPackageName);

	// Parts of names and paths.

	/** "/Script/" + InShortName, unless it already is a long name. */
	static COREUOBJECT_API FString ConvertToLongScriptPackageName(const TCHAR* InShortName);

	/** The part after the last '/': "B" for "/Game/A/B". */
	static COREUOBJECT_API FString GetShortName(const FString& LongName);
	static COREUOBJECT_API FString GetShortName(const FName& LongName);
	static COREUOBJECT_API FString GetShortName(const TCHAR* LongName);
	static COREUOBJECT_API FName GetShortFName(const FString& LongName);
	static COREUOBJECT_API FName GetShortFName(const FName& LongName);

	/** The asset name a package is expected to hold: its short name. */
	static COREUOBJECT_API FString GetLongPackageAssetName(const FString& InLongPackageName);

	/** The folder that holds the package: "/Game/Maps" for "/Game/Maps/MyMap". */
	static COREUOBJECT_API FString GetLongPackagePath(const FString& InLongPackageName);

	/**
	 * Splits "/Game/Maps/Test/MyMap" into its mount point "/Game/", its path "Maps/Test/" and its leaf
	 * "MyMap" (an extension, if present, stays on the leaf). False, with every output emptied, when the
	 * name lies under no mount point.
	 */
	static COREUOBJECT_API bool SplitLongPackageName(const FString& InLongPackageName, FString& OutPackageRoot,
		FString& OutPackagePath, FString& OutPackageName, const bool bStripRootLeadingSlash = false);

	/** "/Game/A.A:Sub.X", "/Game/A.A" and "/Game/A" all give "/Game/A". */
	static COREUOBJECT_API FString ObjectPathToPackageName(const FString& InObjectPath);

	/** The leaf object's name: "X" for "/Game/A.A:Sub.X", "A" for "/Game/A.A"; a package name is returned as is. */
	static COREUOBJECT_API FString ObjectPathToObjectName(const FString& InObjectPath);

	/** The object path without its package: "A:Sub.X" for "/Game/A.A:Sub.X"; empty for "/Game/A". */
	static COREUOBJECT_API FString ObjectPathToPathWithinPackage(const FString& InObjectPath);

	/**
	 * Splits the export text form "Class'/Game/A.A'" (the class may be a path:
	 * "/Script/Engine.StaticMesh'/Game/A.A'") into its class and object path. False when the text does
	 * not have that form.
	 */
	static COREUOBJECT_API bool ParseExportTextPath(
		const FString& InExportTextPath, FString* OutClassName, FString* OutObjectPath);

	/** The object path of an export text path; a text without quotes is returned as is. */
	static COREUOBJECT_API FString ExportTextPathToObjectPath(const FString& InExportTextPath);
	static COREUOBJECT_API FString ExportTextPathToObjectPath(const TCHAR* InExportTextPath);
};
