// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/EnumClassFlags.h"

enum class EPlatformFileRead : uint8
{
	None = 0x0,
	AllowWrite = 0x01,
};
ENUM_CLASS_FLAGS(EPlatformFileRead);

enum class EPlatformFileWrite : uint8
{
	None = 0x0,
	AllowRead = 0x01,
};
ENUM_CLASS_FLAGS(EPlatformFileWrite);

/** An open file. Deleting the handle closes the file. */
class IFileHandle
{
public:
	virtual ~IFileHandle() = default;

	/** The current read/write position in bytes. */
	virtual int64 Tell() = 0;

	/** Moves to an absolute position. */
	virtual bool Seek(int64 NewPosition) = 0;

	/** Moves relative to the end; NewPositionRelativeToEnd is zero or negative. */
	virtual bool SeekFromEnd(int64 NewPositionRelativeToEnd = 0) = 0;

	/** Reads exactly BytesToRead bytes; false if fewer were available. */
	virtual bool Read(uint8* Destination, int64 BytesToRead) = 0;

	/** Writes all BytesToWrite bytes; false on any failure (a full disk, for example). */
	virtual bool Write(const uint8* Source, int64 BytesToWrite) = 0;

	/** Pushes buffered data to the operating system; with bFullFlush, to the disk. */
	virtual bool Flush(const bool bFullFlush = false) = 0;

	/** Shortens or extends the file to NewSize bytes. */
	virtual bool Truncate(int64 NewSize) = 0;

	/** The file size in bytes. */
	virtual int64 Size() = 0;
};

/**
 * Access to the file system below the file manager. Read-only means the owner's write permission is
 * missing; the headless engine enforces it for writes and moves even when the process could override it.
 */
class CORE_API IPlatformFile
{
public:
	/** Receives each entry of a directory listing; returning false stops the listing. */
	class FDirectoryVisitor
	{
	public:
		virtual ~FDirectoryVisitor() = default;

		/** Called with the full path of each file or directory. */
		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) = 0;
	};

	virtual ~IPlatformFile() = default;

	/** The name of this layer. */
	virtual const TCHAR* GetName() const = 0;

	/** Whether a regular file exists (directories do not count). */
	virtual bool FileExists(const TCHAR* Filename) = 0;

	/** The file size in bytes, or -1 when the file does not exist. */
	virtual int64 FileSize(const TCHAR* Filename) = 0;

	/** Deletes a file; false if it is missing or cannot be removed. */
	virtual bool DeleteFile(const TCHAR* Filename) = 0;

	/** Whether the file exists and lacks write permission. */
	virtual bool IsReadOnly(const TCHAR* Filename) = 0;

	/** Renames a file or directory, replacing a file at To; falls back to copy and delete across devices. */
	virtual bool MoveFile(const TCHAR* To, const TCHAR* From) = 0;

	/** Removes (true) or restores (false) the write permission. */
	virtual bool SetReadOnly(const TCHAR* Filename, bool bNewReadOnlyValue) = 0;

	/** Whether a directory exists. */
	virtual bool DirectoryExists(const TCHAR* Directory) = 0;

	/** Creates one directory; true if it exists afterwards. Fails when the parent is missing. */
	virtual bool CreateDirectory(const TCHAR* Directory) = 0;

	/** Deletes an empty directory. */
	virtual bool DeleteDirectory(const TCHAR* Directory) = 0;

	/** Opens a file for reading; null if it cannot be opened. */
	virtual IFileHandle* OpenRead(const TCHAR* Filename, bool bAllowWrite = false) = 0;

	/** Opens (creating or truncating, or appending) a file for writing; null for a read-only file. */
	virtual IFileHandle* OpenWrite(const TCHAR* Filename, bool bAppend = false, bool bAllowRead = false) = 0;

	/** Visits each entry directly inside Directory; false if the directory cannot be read or the visitor stopped. */
	virtual bool IterateDirectory(const TCHAR* Directory, FDirectoryVisitor& Visitor) = 0;

	/** Visits every entry below Directory, parents before their contents. */
	virtual bool IterateDirectoryRecursively(const TCHAR* Directory, FDirectoryVisitor& Visitor);

	/** Creates a directory and any missing parents. */
	virtual bool CreateDirectoryTree(const TCHAR* Directory);

	/** Deletes a directory and everything in it. */
	virtual bool DeleteDirectoryRecursively(const TCHAR* Directory);

	/** Copies a file's bytes, replacing To. */
	virtual bool CopyFile(const TCHAR* To, const TCHAR* From, EPlatformFileRead ReadFlags = EPlatformFileRead::None,
		EPlatformFileWrite WriteFlags = EPlatformFileWrite::None);

	/** Full paths of the files directly inside Directory, optionally only those with FileExtension (".ext" or "ext").
	 */
	virtual void FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension);

	/** As FindFiles, through every subdirectory. */
	virtual void FindFilesRecursively(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension);

	/** The absolute path another program would use to read the file. */
	virtual FString ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename);

	/** The absolute path another program would use to write the file. */
	virtual FString ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename);
};
