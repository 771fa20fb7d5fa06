// Copyright Orvane. All Rights Reserved.

#include "CoreGlobals.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformFileManager.h"
#include "HAL/PlatformProcess.h"
#include "Logging/LogMacros.h"
#include "Misc/Paths.h"

namespace FileManagerPrivate
{
	/** Lists the entries of one directory whose names match a wildcard. */
	class FWildcardVisitor : public IPlatformFile::FDirectoryVisitor
	{
	public:
		FWildcardVisitor(
			TArray<FString>& InResult, const FString& InWildcard, bool bInFiles, bool bInDirectories, bool bInFullPaths)
			: Result(InResult)
			, Wildcard(InWildcard)
			, bFiles(bInFiles)
			, bDirectories(bInDirectories)
			, bFullPaths(bInFullPaths)
		{
			// "*.*" means every entry, also those without a dot in their name.
			if (Wildcard.Equals(TEXT("*.*"), ESearchCase::CaseSensitive) || Wildcard.IsEmpty())
			{
				Wildcard = TEXT("*");
			}
		}

		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) override
		{
			if ((bIsDirectory && bDirectories) || (!bIsDirectory && bFiles))
			{
				const FString Name = FPaths::GetCleanFilename(FilenameOrDirectory);
				if (Name.MatchesWildcard(Wildcard))
				{
					Result.Add(bFullPaths ? FString(FilenameOrDirectory) : Name);
				}
			}
			return true;
		}

	private:
		TArray<FString>& Result;
		FString Wildcard;
		bool bFiles;
		bool bDirectories;
		bool bFullPaths;
	};

	/** Collects the subdirectories of one directory. */
	class FSubdirectoryVisitor : public IPlatformFile::FDirectoryVisitor
	{
	public:
		TArray<FString> Directories;

		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) override
		{
			if (bIsDirectory)
			{
				Directories.Add(FilenameOrDirectory);
			}
			return true;
		}
	};

	/** The file manager of the headless engine, on top of the platform file layer. */
	class FFileManagerGeneric : public IFileManager
	{
	public:
		virtual bool Delete(const TCHAR* Filename, bool RequireExists, bool EvenReadOnly, bool Quiet) override
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (!PlatformFile.FileExists(Filename))
			{
				if (RequireExists && !Quiet)
				{
					UE_LOG(LogCore, Warning, TEXT("Could not delete '%s': the file does not exist."), Filename);
				}
				return !RequireExists;
			}
			if (PlatformFile.IsReadOnly(Filename))
			{
				if (!EvenReadOnly)
				{
					if (!Quiet)
					{
						UE_LOG(LogCore, Warning, TEXT("Could not delete '%s': the file is read-only."), Filename);
					}
					return false;
				}
				PlatformFile.SetReadOnly(Filename, false);
			}
			if (!PlatformFile.DeleteFile(Filename))
			{
				if (!Quiet)
				{
					UE_LOG(LogCore, Warning, TEXT("Could not delete '%s'."), Filename);
				}
				return false;
			}
			return true;
		}

		virtual uint32 Copy(const TCHAR* Dest, const TCHAR* Src, bool Replace, bool EvenIfReadOnly, bool Attributes,
			FCopyProgress* Progress, EFileRead ReadFlags, EFileWrite WriteFlags) override
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (!PlatformFile.FileExists(Src))
			{
				return COPY_Fail;
			}
			if (!PrepareDestination(Dest, Replace, EvenIfReadOnly))
			{
				return COPY_Fail;
			}
			if (Progress != nullptr && !Progress->Poll(0.0f))
			{
				return COPY_Canceled;
			}
			if (!PlatformFile.CopyFile(Dest, Src))
			{
				return COPY_Fail;
			}
			if (Attributes)
			{
				PlatformFile.SetReadOnly(Dest, PlatformFile.IsReadOnly(Src));
			}
			if (Progress != nullptr && !Progress->Poll(1.0f))
			{
				return COPY_Canceled;
			}
			return COPY_OK;
		}

		virtual bool Move(const TCHAR* Dest, const TCHAR* Src, bool Replace, bool EvenIfReadOnly, bool Attributes,
			bool bDoNotRetryOrError) override
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (!PlatformFile.FileExists(Src) && !PlatformFile.DirectoryExists(Src))
			{
				if (!bDoNotRetryOrError)
				{
					UE_LOG(
						LogCore, Warning, TEXT("Could not move '%s' to '%s': the source does not exist."), Src, Dest);
				}
				return false;
			}
			if (!PrepareDestination(Dest, Replace, EvenIfReadOnly))
			{
				return false;
			}
			if (!PlatformFile.MoveFile(Dest, Src))
			{
				if (!bDoNotRetryOrError)
				{
					UE_LOG(LogCore, Warning, TEXT("Could not move '%s' to '%s'."), Src, Dest);
				}
				return false;
			}
			return true;
		}

		virtual bool FileExists(const TCHAR* Filename) override { return GetLowLevel().FileExists(Filename); }

		virtual bool DirectoryExists(const TCHAR* InDirectory) override
		{
			return GetLowLevel().DirectoryExists(InDirectory);
		}

		virtual bool IsReadOnly(const TCHAR* Filename) override { return GetLowLevel().IsReadOnly(Filename); }

		virtual bool MakeDirectory(const TCHAR* Path, bool Tree) override
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (PlatformFile.DirectoryExists(Path))
			{
				return true;
			}
			return Tree ? PlatformFile.CreateDirectoryTree(Path) : PlatformFile.CreateDirectory(Path);
		}

		virtual bool DeleteDirectory(const TCHAR* Path, bool RequireExists, bool Tree) override
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (!PlatformFile.DirectoryExists(Path))
			{
				return !RequireExists;
			}
			return Tree ? PlatformFile.DeleteDirectoryRecursively(Path) : PlatformFile.DeleteDirectory(Path);
		}

		virtual void FindFiles(TArray<FString>& FileNames, const TCHAR* Filename, bool Files, bool Directories) override
		{
			const FString Pattern(Filename);
			FString Directory = FPaths::GetPath(Pattern);
			FString Wildcard = FPaths::GetCleanFilename(Pattern);
			if (Directory.IsEmpty() && !Pattern.IsEmpty() && (Pattern[0] == TEXT('/') || Pattern[0] == TEXT('\\')))
			{
				Directory = TEXT("/");
			}
			FWildcardVisitor Visitor(FileNames, Wildcard, Files, Directories, false);
			GetLowLevel().IterateDirectory(*Directory, Visitor);
		}

		virtual void FindFilesRecursive(TArray<FString>& FileNames, const TCHAR* StartDirectory, const TCHAR* Filename,
			bool Files, bool Directories, bool bClearFileNames) override
		{
			if (bClearFileNames)
			{
				FileNames.Reset();
			}
			FWildcardVisitor Visitor(FileNames, FString(Filename), Files, Directories, true);
			GetLowLevel().IterateDirectoryRecursively(StartDirectory, Visitor);
		}

		virtual bool IterateDirectory(const TCHAR* Directory, IPlatformFile::FDirectoryVisitor& Visitor) override
		{
			return GetLowLevel().IterateDirectory(Directory, Visitor);
		}

		virtual bool IterateDirectoryRecursively(
			const TCHAR* Directory, IPlatformFile::FDirectoryVisitor& Visitor) override
		{
			return GetLowLevel().IterateDirectoryRecursively(Directory, Visitor);
		}

		virtual int64 FileSize(const TCHAR* Filename) override { return GetLowLevel().FileSize(Filename); }

		virtual FString ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename) override
		{
			return GetLowLevel().ConvertToAbsolutePathForExternalAppForRead(Filename);
		}

		virtual FString ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename) override
		{
			return GetLowLevel().ConvertToAbsolutePathForExternalAppForWrite(Filename);
		}

		virtual FString ConvertToRelativePath(const TCHAR* Filename) override
		{
			FString Result(Filename);
			FPaths::MakePathRelativeTo(Result, FPlatformProcess::BaseDir());
			return Result;
		}

	private:
		static IPlatformFile& GetLowLevel() { return FPlatformFileManager::Get().GetPlatformFile(); }

		/** Applies the replace and read-only rules to an existing destination and creates its folder. */
		static bool PrepareDestination(const TCHAR* Dest, bool Replace, bool EvenIfReadOnly)
		{
			IPlatformFile& PlatformFile = GetLowLevel();
			if (PlatformFile.FileExists(Dest))
			{
				if (!Replace)
				{
					return false;
				}
				if (PlatformFile.IsReadOnly(Dest))
				{
					if (!EvenIfReadOnly)
					{
						return false;
					}
					PlatformFile.SetReadOnly(Dest, false);
				}
			}
			else if (PlatformFile.DirectoryExists(Dest))
			{
				return false;
			}
			const FString Folder = FPaths::GetPath(FString(Dest));
			return Folder.IsEmpty() || PlatformFile.CreateDirectoryTree(*Folder);
		}
	};
} // namespace FileManagerPrivate

IFileManager& IFileManager::Get()
{
	static FileManagerPrivate::FFileManagerGeneric FileManager;
	return FileManager;
}

void IFileManager::FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension)
{
	if (Directory == nullptr)
	{
		return;
	}
	FString Extension = FileExtension != nullptr ? FString(FileExtension) : FString();
	Extension.RemoveFromStart(TEXT("*"));
	Extension.RemoveFromStart(TEXT("."));
	const FString Wildcard = Extension.IsEmpty() ? FString(TEXT("*")) : FString(TEXT("*.")) + Extension;
	FindFiles(FoundFiles, *FPaths::Combine(Directory, Wildcard), true, false);
}
