// Copyright Orvane. All Rights Reserved.

#include "GenericPlatform/GenericPlatformFile.h"

#include "Misc/Paths.h"

namespace GenericPlatformFilePrivate
{
	/** Collects full paths of files, optionally filtered by extension. */
	class FFindFilesVisitor : public IPlatformFile::FDirectoryVisitor
	{
	public:
		FFindFilesVisitor(TArray<FString>& InFoundFiles, const TCHAR* FileExtension)
			: FoundFiles(InFoundFiles)
		{
			if (FileExtension != nullptr && *FileExtension != 0)
			{
				Extension = FileExtension;
				Extension.RemoveFromStart(TEXT("*"));
				Extension.RemoveFromStart(TEXT("."));
			}
		}

		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) override
		{
			if (!bIsDirectory &&
				(Extension.IsEmpty() ||
					FPaths::GetExtension(FilenameOrDirectory).Equals(Extension, ESearchCase::IgnoreCase)))
			{
				FoundFiles.Add(FilenameOrDirectory);
			}
			return true;
		}

	private:
		TArray<FString>& FoundFiles;
		FString Extension;
	};

	/** Visits every entry below a directory, descending into each subdirectory after visiting it. */
	class FRecursiveVisitor : public IPlatformFile::FDirectoryVisitor
	{
	public:
		FRecursiveVisitor(IPlatformFile& InPlatformFile, IPlatformFile::FDirectoryVisitor& InVisitor)
			: PlatformFile(InPlatformFile)
			, Visitor(InVisitor)
		{
		}

		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) override
		{
			if (!Visitor.Visit(FilenameOrDirectory, bIsDirectory))
			{
				return false;
			}
			return !bIsDirectory || PlatformFile.IterateDirectory(FilenameOrDirectory, *this);
		}

	private:
		IPlatformFile& PlatformFile;
		IPlatformFile::FDirectoryVisitor& Visitor;
	};

	/** Collects the entries of one directory so they can be deleted after the listing is closed. */
	class FCollectVisitor : public IPlatformFile::FDirectoryVisitor
	{
	public:
		TArray<FString> Files;
		TArray<FString> Directories;

		virtual bool Visit(const TCHAR* FilenameOrDirectory, bool bIsDirectory) override
		{
			(bIsDirectory ? Directories : Files).Add(FilenameOrDirectory);
			return true;
		}
	};
} // namespace GenericPlatformFilePrivate

bool IPlatformFile::IterateDirectoryRecursively(const TCHAR* Directory, FDirectoryVisitor& Visitor)
{
	GenericPlatformFilePrivate::FRecursiveVisitor Recursive(*this, Visitor);
	return IterateDirectory(Directory, Recursive);
}

bool IPlatformFile::CreateDirectoryTree(const TCHAR* Directory)
{
	FString Path = FPaths::ConvertRelativePathToFull(Directory);
	FPaths::NormalizeDirectoryName(Path);
	if (Path.IsEmpty() || DirectoryExists(*Path))
	{
		return true;
	}
	const FString Parent = FPaths::GetPath(Path);
	if (!Parent.IsEmpty() && !DirectoryExists(*Parent) && !CreateDirectoryTree(*Parent))
	{
		return false;
	}
	return CreateDirectory(*Path);
}

bool IPlatformFile::DeleteDirectoryRecursively(const TCHAR* Directory)
{
	GenericPlatformFilePrivate::FCollectVisitor Entries;
	IterateDirectory(Directory, Entries);
	for (const FString& Subdirectory : Entries.Directories)
	{
		DeleteDirectoryRecursively(*Subdirectory);
	}
	for (const FString& File : Entries.Files)
	{
		// Files inside are removed whatever their read-only state, as the operating system would.
		SetReadOnly(*File, false);
		DeleteFile(*File);
	}
	return DeleteDirectory(Directory) && !DirectoryExists(Directory);
}

bool IPlatformFile::CopyFile(
	const TCHAR* To, const TCHAR* From, EPlatformFileRead ReadFlags, EPlatformFileWrite WriteFlags)
{
	IFileHandle* Source = OpenRead(From, EnumHasAnyFlags(ReadFlags, EPlatformFileRead::AllowWrite));
	if (Source == nullptr)
	{
		return false;
	}
	IFileHandle* Destination = OpenWrite(To, false, EnumHasAnyFlags(WriteFlags, EPlatformFileWrite::AllowRead));
	if (Destination == nullptr)
	{
		delete Source;
		return false;
	}

	bool bSuccess = true;
	TArray<uint8> Buffer;
	Buffer.SetNumUninitialized(64 * 1024);
	int64 Remaining = Source->Size();
	while (bSuccess && Remaining > 0)
	{
		const int64 Chunk = Remaining < Buffer.Num() ? Remaining : Buffer.Num();
		bSuccess = Source->Read(Buffer.GetData(), Chunk) && Destination->Write(Buffer.GetData(), Chunk);
		Remaining -= Chunk;
	}
	bSuccess = Destination->Flush() && bSuccess;
	delete Source;
	delete Destination;
	return bSuccess;
}

void IPlatformFile::FindFiles(TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension)
{
	GenericPlatformFilePrivate::FFindFilesVisitor Visitor(FoundFiles, FileExtension);
	IterateDirectory(Directory, Visitor);
}

void IPlatformFile::FindFilesRecursively(
	TArray<FString>& FoundFiles, const TCHAR* Directory, const TCHAR* FileExtension)
{
	GenericPlatformFilePrivate::FFindFilesVisitor Visitor(FoundFiles, FileExtension);
	IterateDirectoryRecursively(Directory, Visitor);
}

FString IPlatformFile::ConvertToAbsolutePathForExternalAppForRead(const TCHAR* Filename)
{
	return FPaths::ConvertRelativePathToFull(Filename);
}

FString IPlatformFile::ConvertToAbsolutePathForExternalAppForWrite(const TCHAR* Filename)
{
	return FPaths::ConvertRelativePathToFull(Filename);
}
