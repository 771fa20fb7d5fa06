// Copyright Orvane. All Rights Reserved.

#include "HAL/PlatformFileManager.h"

#include "Containers/StringConv.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "Misc/Paths.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace PlatformFilePrivate
{
	/** Relative paths are relative to the process base directory, as everywhere in the engine. */
	FString ToNativePath(const TCHAR* Filename)
	{
		return FPaths::ConvertRelativePathToFull(FString(Filename));
	}

	bool StatPath(const TCHAR* Path, struct stat& OutStat)
	{
		return ::stat(TCHAR_TO_UTF8(*ToNativePath(Path)), &OutStat) == 0;
	}

	/** A file opened with open(2). */
	class FFileHandleLinux : public IFileHandle
	{
	public:
		explicit FFileHandleLinux(int32 InFileDescriptor)
			: FileDescriptor(InFileDescriptor)
		{
		}

		virtual ~FFileHandleLinux() override { ::close(FileDescriptor); }

		virtual int64 Tell() override { return (int64)::lseek(FileDescriptor, 0, SEEK_CUR); }

		virtual bool Seek(int64 NewPosition) override
		{
			return ::lseek(FileDescriptor, (off_t)NewPosition, SEEK_SET) != -1;
		}

		virtual bool SeekFromEnd(int64 NewPositionRelativeToEnd) override
		{
			return ::lseek(FileDescriptor, (off_t)NewPositionRelativeToEnd, SEEK_END) != -1;
		}

		virtual bool Read(uint8* Destination, int64 BytesToRead) override
		{
			while (BytesToRead > 0)
			{
				const ssize_t Count = ::read(FileDescriptor, Destination, (size_t)BytesToRead);
				if (Count < 0 && errno == EINTR)
				{
					continue;
				}
				if (Count <= 0)
				{
					return false;
				}
				Destination += Count;
				BytesToRead -= Count;
			}
			return true;
		}

		virtual bool Write(const uint8* Source, int64 BytesToWrite) override
		{
			while (BytesToWrite > 0)
			{
				const ssize_t Count = ::write(FileDescriptor, Source, (size_t)BytesToWrite);
				if (Count < 0 && errno == EINTR)
				{
					continue;
				}
				if (Count <= 0)
				{
					return false;
				}
				Source += Count;
				BytesToWrite -= Count;
			}
			return true;
		}

		virtual bool Flush(const bool bFullFlush) override { return !bFullFlush || ::fsync(FileDescriptor) == 0; }

		virtual bool Truncate(int64 NewSize) override { return ::ftruncate(FileDescriptor, (off_t)NewSize) == 0; }

		virtual int64 Size() override
		{
			struct stat FileInfo;
			return ::fstat(FileDescriptor, &FileInfo) == 0 ? (int64)FileInfo.st_size : -1;
		}

	private:
		int32 FileDescriptor;
	};

	/** The physical file system of a Linux host. */
	class FLinuxPlatformFile : public IPlatformFile
	{
	public:
		virtual const TCHAR* GetName() const override { return TEXT("LinuxFile"); }

		virtual bool FileExists(const TCHAR* Filename) override
		{
			struct stat FileInfo;
			return StatPath(Filename, FileInfo) && S_ISREG(FileInfo.st_mode);
		}

		virtual int64 FileSize(const TCHAR* Filename) override
		{
			struct stat FileInfo;
			return (StatPath(Filename, FileInfo) && S_ISREG(FileInfo.st_mode)) ? (int64)FileInfo.st_size : -1;
		}

		virtual bool DeleteFile(const TCHAR* Filename) override
		{
			return FileExists(Filename) && ::unlink(TCHAR_TO_UTF8(*ToNativePath(Filename))) == 0;
		}

		virtual bool IsReadOnly(const TCHAR* Filename) override
		{
			// The owner's write bit decides, not access(2): a process running as root may write anywhere,
			// yet a file marked read-only must still behave as read-only.
			struct stat FileInfo;
			return StatPath(Filename, FileInfo) && (FileInfo.st_mode & S_IWUSR) == 0;
		}

		virtual bool MoveFile(const TCHAR* To, const TCHAR* From) override
		{
			const FString NativeTo = ToNativePath(To);
			const FString NativeFrom = ToNativePath(From);
			if (::rename(TCHAR_TO_UTF8(*NativeFrom), TCHAR_TO_UTF8(*NativeTo)) == 0)
			{
				return true;
			}
			if (errno != EXDEV || !FileExists(From))
			{
				return false;
			}
			// Another device: copy, then remove the original.
			return CopyFile(To, From) && DeleteFile(From);
		}

		virtual bool SetReadOnly(const TCHAR* Filename, bool bNewReadOnlyValue) override
		{
			struct stat FileInfo;
			if (!StatPath(Filename, FileInfo))
			{
				return false;
			}
			mode_t Mode = FileInfo.st_mode & 07777;
			Mode = bNewReadOnlyValue ? (Mode & ~(mode_t)(S_IWUSR | S_IWGRP | S_IWOTH)) : (Mode | S_IWUSR);
			return ::chmod(TCHAR_TO_UTF8(*ToNativePath(Filename)), Mode) == 0;
		}

		virtual bool DirectoryExists(const TCHAR* Directory) override
		{
			struct stat FileInfo;
			return StatPath(Directory, FileInfo) && S_ISDIR(FileInfo.st_mode);
		}

		virtual bool CreateDirectory(const TCHAR* Directory) override
		{
			return ::mkdir(TCHAR_TO_UTF8(*ToNativePath(Directory)), 0755) == 0 ||
				   (errno == EEXIST && DirectoryExists(Directory));
		}

		virtual bool DeleteDirectory(const TCHAR* Directory) override
		{
			return ::rmdir(TCHAR_TO_UTF8(*ToNativePath(Directory))) == 0;
		}

		virtual IFileHandle* OpenRead(const TCHAR* Filename, bool bAllowWrite) override
		{
			if (!FileExists(Filename))
			{
				return nullptr;
			}
			const int32 FileDescriptor = ::open(TCHAR_TO_UTF8(*ToNativePath(Filename)), O_RDONLY | O_CLOEXEC);
			return FileDescriptor >= 0 ? new FFileHandleLinux(FileDescriptor) : nullptr;
		}

		virtual IFileHandle* OpenWrite(const TCHAR* Filename, bool bAppend, bool bAllowRead) override
		{
			if (IsReadOnly(Filename) || DirectoryExists(Filename))
			{
				return nullptr;
			}
			const int32 Flags = O_CREAT | O_CLOEXEC | (bAllowRead ? O_RDWR : O_WRONLY) | (bAppend ? O_APPEND : O_TRUNC);
			const int32 FileDescriptor = ::open(TCHAR_TO_UTF8(*ToNativePath(Filename)), Flags, 0644);
			return FileDescriptor >= 0 ? new FFileHandleLinux(FileDescriptor) : nullptr;
		}

		virtual bool IterateDirectory(const TCHAR* Directory, FDirectoryVisitor& Visitor) override
		{
			DIR* Handle = ::opendir(TCHAR_TO_UTF8(*ToNativePath(Directory)));
			if (Handle == nullptr)
			{
				return false;
			}
			// Read the whole listing first, so a visitor may create or delete entries safely.
			TArray<FString> Names;
			while (const dirent* Entry = ::readdir(Handle))
			{
				const ANSICHAR* Name = Entry->d_name;
				if ((Name[0] == '.' && Name[1] == 0) || (Name[0] == '.' && Name[1] == '.' && Name[2] == 0))
				{
					continue;
				}
				Names.Add(FString(UTF8_TO_TCHAR(Name)));
			}
			::closedir(Handle);

			for (const FString& Name : Names)
			{
				const FString Path = FPaths::Combine(Directory, Name);
				if (!Visitor.Visit(*Path, DirectoryExists(*Path)))
				{
					return false;
				}
			}
			return true;
		}
	};
} // namespace PlatformFilePrivate

FPlatformFileManager& FPlatformFileManager::Get()
{
	static FPlatformFileManager Manager;
	return Manager;
}

IPlatformFile& FPlatformFileManager::GetPlatformFile()
{
	static PlatformFilePrivate::FLinuxPlatformFile PhysicalPlatformFile;
	return TopmostPlatformFile != nullptr ? *TopmostPlatformFile : PhysicalPlatformFile;
}

void FPlatformFileManager::SetPlatformFile(IPlatformFile* NewTopmostPlatformFile)
{
	TopmostPlatformFile = NewTopmostPlatformFile;
}
