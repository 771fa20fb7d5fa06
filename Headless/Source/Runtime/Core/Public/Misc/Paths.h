// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"

/**
 * Where the engine and the project keep their files, and string operations on paths. Directory
 * functions return absolute paths ending with '/'. Relative paths are relative to the process base
 * directory (the folder of the executable). Separators are '/'; '\\' is accepted on input.
 */
class FPaths
{
public:
	/** The engine's folder: the parent of Binaries/Linux, where the executable lives. */
	static CORE_API FString EngineDir();
	static CORE_API FString EngineContentDir();
	static CORE_API FString EngineConfigDir();
	static CORE_API FString EngineIntermediateDir();
	static CORE_API FString EngineSavedDir();
	static CORE_API FString EnginePluginsDir();
	static CORE_API FString EngineSourceDir();
	static CORE_API FString EngineUserDir();

	/** The folder above the engine's folder. */
	static CORE_API FString RootDir();

	/** The working directory when the process started. */
	static CORE_API FString LaunchDir();

	/**
	 * The project's folder: the folder of the project file. Without a project file, a folder named after
	 * the program under EngineDir()/Programs/.
	 */
	static CORE_API FString ProjectDir();
	static CORE_API FString ProjectUserDir();
	static CORE_API FString ProjectContentDir();
	static CORE_API FString ProjectConfigDir();
	static CORE_API FString SourceConfigDir();
	static CORE_API FString GeneratedConfigDir();
	static CORE_API FString ProjectSavedDir();
	static CORE_API FString ProjectIntermediateDir();
	static CORE_API FString ProjectPluginsDir();
	static CORE_API FString ProjectModsDir();
	static CORE_API FString ProjectLogDir();
	static CORE_API FString GameSourceDir();
	static CORE_API FString AutomationDir();
	static CORE_API FString AutomationTransientDir();
	static CORE_API FString AutomationLogDir();
	static CORE_API FString ProfilingDir();
	static CORE_API FString DiffDir();

	/** The full path of the project file, or empty before one is set. */
	static CORE_API const FString& GetProjectFilePath();

	/** Sets the project file; relative paths are made absolute. An empty path clears it. */
	static CORE_API void SetProjectFilePath(const FString& NewGameProjectFilePath);

	/** Whether a project file has been set. */
	static CORE_API bool IsProjectFilePathSet();

	/** The extension after the last '.' of the file name: "b" for "a/x.b" (".b" with bIncludeDot); empty if none. */
	static CORE_API FString GetExtension(const FString& InPath, bool bIncludeDot = false);

	/** The part after the last separator: "b.txt" for "a/b.txt". */
	static CORE_API FString GetCleanFilename(const FString& InPath);

	/** The file name without its extension; with bRemovePath false, the directory part is kept. */
	static CORE_API FString GetBaseFilename(const FString& InPath, bool bRemovePath = true);

	/** The part before the last separator, without a trailing '/'; empty if there is no separator. */
	static CORE_API FString GetPath(const FString& InPath);

	/** The last element of a path, ignoring a trailing separator: "c" for "a/b/c/". */
	static CORE_API FString GetPathLeaf(const FString& InPath);

	/** Replaces the extension; a path without one is returned unchanged. An empty extension removes it. */
	static CORE_API FString ChangeExtension(const FString& InPath, const FString& InNewExtension);

	/** Replaces the extension, or adds it when the path has none. */
	static CORE_API FString SetExtension(const FString& InPath, const FString& InNewExtension);

	/** Whether a regular file exists at the path (false for directories). */
	static CORE_API bool FileExists(const FString& InPath);

	/** Whether a directory exists at the path. */
	static CORE_API bool DirectoryExists(const FString& InPath);

	/** Linux has no drive letters: always false. */
	static CORE_API bool IsDrive(const FString& InPath);

	/** Whether the path does not start at a root ('/', '\\' or a drive such as "C:"). */
	static CORE_API bool IsRelative(const FString& InPath);

	/** Turns '\\' into '/'. */
	static CORE_API void NormalizeFilename(FString& InPath);

	/** As NormalizeFilename, and removes a trailing '/' (but keeps a lone "/"). */
	static CORE_API void NormalizeDirectoryName(FString& InPath);

	/** Whether two paths name the same file once made absolute and normalized. */
	static CORE_API bool IsSamePath(const FString& PathA, const FString& PathB);

	/** Whether InPath is InDirectory or lies below it. */
	static CORE_API bool IsUnderDirectory(const FString& InPath, const FString& InDirectory);

	/**
	 * Removes "." elements and folds "dir/.." pairs. Returns false, leaving the path unchanged, when a
	 * ".." would climb above the start of the path.
	 */
	static CORE_API bool CollapseRelativeDirectories(FString& InPath);

	/** Folds runs of '/' into one. */
	static CORE_API void RemoveDuplicateSlashes(FString& InPath);

	/**
	 * Rewrites InPath relative to InRelativeTo. InRelativeTo is a directory when it ends with '/',
	 * otherwise a file whose directory is used. Both are made absolute first.
	 */
	static CORE_API bool MakePathRelativeTo(FString& InPath, const TCHAR* InRelativeTo);

	/** The absolute, normalized form of a path relative to the process base directory. */
	static CORE_API FString ConvertRelativePathToFull(const FString& InPath);

	/** The absolute, normalized form of a path relative to BasePath. */
	static CORE_API FString ConvertRelativePathToFull(const FString& BasePath, const FString& InPath);

	/** A file name in Path that does not exist yet: Prefix, random hex digits, then Extension. */
	static CORE_API FString CreateTempFilename(
		const TCHAR* Path, const TCHAR* Prefix = TEXT(""), const TCHAR* Extension = TEXT(".tmp"));

	/** The characters that may not appear in a file name. */
	static CORE_API FString GetInvalidFileSystemChars();

	/** Removes (or, when InReplacementChar is not 0, replaces) the characters GetInvalidFileSystemChars lists. */
	static CORE_API FString MakeValidFileName(const FString& InString, const TCHAR InReplacementChar = 0);

	/** Splits a path into its directory, base file name and extension (without the dot). */
	static CORE_API void Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart);

	/**
	 * Joins path parts with '/', skipping empty parts and never doubling a separator where two parts meet:
	 * Combine("A/", "/B", "C") is "A/B/C".
	 */
	template <typename... PathTypes>
	static FString Combine(PathTypes&&... InPaths)
	{
		const TCHAR* Paths[] = {GetTCharPtr(InPaths)...};
		return CombineInternal(Paths, (int32)sizeof...(InPaths));
	}

private:
	static const TCHAR* GetTCharPtr(const TCHAR* Ptr) { return Ptr; }
	static const TCHAR* GetTCharPtr(const FString& Str) { return *Str; }

	static CORE_API FString CombineInternal(const TCHAR* const* Paths, int32 NumPaths);
};
