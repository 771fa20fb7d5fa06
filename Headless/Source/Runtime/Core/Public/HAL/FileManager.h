// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "GenericPlatform/GenericPlatformFile.h"

/** Flags for reading files through the file manager. */
enum EFileRead
{
	FILEREAD_None = 0x00,
	FILEREAD_NoFail = 0x01,
	FILEREAD_Silent = 0x02,
	FILEREAD_AllowWrite = 0x04,
};

/** Flags for writing files through the file manager. */
enum EFileWrite
{
	FILEWRITE_None = 0x00,
	FILEWRITE_NoFail = 0x01,
	FILEWRITE_NoReplaceExisting = 0x02,
	FILEWRITE_EvenIfReadOnly = 0x04,
	FILEWRITE_Append = 0x08,
	FILEWRITE_AllowRead = 0x10,
	FILEWRITE_Silent = 0x20,
};

/** Results of IFileManager::Copy. */
enum ECopyResult
{
	COPY_OK = 0x00,
	COPY_Fail = 0x01,
	COPY_Canceled = 0x02,
};

/** Receives copy progress; returning false cancels the copy. */
struct FCopyProgress
{
	virtual ~FCopyProgress() = default;
	virtual bool Poll(float Fraction) = 0;
};

/**
 * The engine's file manager: file and directory operations with the engine's rules for missing and
 * read-only files. Paths may be relative to the process base directory.
 */
class IFileManager
{
public:
	virtual ~IFileManager() = default;

	/** The process's file manager. */
	static CORE_API IFileManager& Get();

	/**
	 * Deletes a file. True if it was deleted, or if it did not exist and RequireExists is false. A
	 * read-only file is deleted only with EvenReadOnly. Unless Quiet, failures are logged as warnings.
	 */
	virtual bool Delete(const TCHAR* Filename, bool RequireExists = 0, bool EvenReadOnly = 0, bool Quiet = 0) = 0;

	/**
	 * Copies Src to Dest, creating Dest's folder. Fails when Dest exists and Replace is false, or Dest is
	 * read-only and EvenIfReadOnly is false. Attributes copies the read-only state too.
	 */
	virtual uint32 Copy(const TCHAR* Dest, const TCHAR* Src, bool Replace = 1, bool EvenIfReadOnly = 0,
		bool Attributes = 0, FCopyProgress* Progress = nullptr, EFileRead ReadFlags = FILEREAD_None,
		EFileWrite WriteFlags = FILEWRITE_None) = 0;

	/**
	 * Moves (renames) Src to Dest, creating Dest's folder. Fails when Src is missing, or Dest exists and
	 * Replace is false, or Dest is read-only and EvenIfReadOnly is false.
	 */
	virtual bool Move(const TCHAR* Dest, const TCHAR* Src, bool Replace = 1, bool EvenIfReadOnly = 0,
		bool Attributes = 0, bool bDoNotRetryOrError = 0) = 0;

	/** Whether a regular file exists (a directory is not a file). */
	virtual bool FileExists(const TCHAR* Filename) = 0;

	/** Whether a directory exists. */
	virtual bool DirectoryExists(const TCHAR* InDirectory) = 0;

	/** Whether the file exists and is read-only. */
	virtual bool IsReadOnly(const TCHAR* Filename) = 0;

	/** Creates a directory (with its missing parents when Tree); true if it exists afterwards. */
	virtual bool MakeDirectory(const TCHAR* Path, bool Tree = 0) = 0;

	/**
	 * Deletes a directory; with Tree, everything in it as well, otherwise it must be empty. A missing
	 * directory counts as success unless RequireExists.
	 */
	virtual bool DeleteDirectory(const TCHAR* Path, bool RequireExists = 0, bool Tree = 0) = 0;

	/**
	 * Names (without paths) of the entries matching Filename: a directory, a '/', then a wildcard for the
	 * names such as "*.uplugin". Files and Directories choose which kinds are listed. Results are appended.
	 */
	virtual void FindFiles(TArray<FString>& FileNames, const TCHAR* Filename, bool Files, bool Directories) = 0;

	/** Names (without paths) of the files in Directory, optionally only those with FileExtension. */
	CORE_API void FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension = nullptr);

	/**
	 * Full paths of the entries below StartDirectory whose names match the wildcard Filename, searching
	 * every subdirectory.
	 */
	virtual void FindFilesRecursive(TArray<FString>& FileNames, const TCHAR* StartDirectory, const TCHAR* Filename,
		bool Files, bool Directories, bool bClearFileNames = true) = 0;

	/** Visits each entry directly inside Directory. */
	virtual bool IterateDirectory(const TCHAR* Directory, IPlatformFile::FDirectoryVisitor& Visitor) = 0;

	/** Visits every entry below Directory. */
	virtual bool IterateDirectoryRecursively(const TCHAR* Directory, IPlatformFile::FDirectoryVisitor& Visitor) = 0;

	/** The file size in bytes, or -1 when the file does not exist. */
	virtual int64 FileSize(const TCHAR* Filename) = 0;

	/** The absolute path another program would use to read the file. */
	virtual FString ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename) = 0;

	/** The absolute path another program would use to write the file. */
	virtual FString ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename) = 0;

	/** The path relative to the process base directory. */
	virtual FString ConvertToRelativePath(const TCHAR* Filename) = 0;
};
