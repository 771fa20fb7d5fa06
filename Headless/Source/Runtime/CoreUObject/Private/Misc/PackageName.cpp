// Copyright Orvane. All Rights Reserved.

#include "Misc/PackageName.h"

#include "HAL/CriticalSection.h"
#include "HAL/FileManager.h"
#include "Internationalization/Text.h"
#include "Logging/LogMacros.h"
#include "Misc/Paths.h"
#include "Misc/ScopeLock.h"

DEFINE_LOG_CATEGORY_STATIC(LogPackageName, Log, All);

namespace UE::PackageName::Private
{
	/** Where a mounted root's packages live on disk. */
	enum class EMountFolder : uint8
	{
		/** ContentPath as registered. */
		Fixed,
		/** The current project's Content folder, so that changing the project file moves "/Game/". */
		ProjectContent,
		/** The engine's Content folder. */
		EngineContent,
		/** The current project's Saved folder. */
		ProjectSaved,
		/** Not on disk ("/Script/", "/Memory/"). */
		None,
	};

	/** One registration of a root on a folder. */
	struct FMountPoint
	{
		FString RootPath;
		FString ContentPath;
		EMountFolder Folder = EMountFolder::Fixed;
		/** Nothing may be saved under the root ("/Script/", "/Temp/", "/Memory/"). */
		bool bReadOnly = false;

		/** The folder, ending with '/', or empty when the root is not on disk. */
		FString GetContentPath() const
		{
			switch (Folder)
			{
				case EMountFolder::Fixed:
					return ContentPath;
				case EMountFolder::ProjectContent:
					return FPaths::ProjectContentDir();
				case EMountFolder::EngineContent:
					return FPaths::EngineContentDir();
				case EMountFolder::ProjectSaved:
					return FPaths::ProjectSavedDir();
				case EMountFolder::None:
					break;
			}
			return FString();
		}
	};

	/** Characters a long package name may not contain; a space has its own error. */
	const TCHAR* const InvalidLongPackageCharacters = TEXT("\\:*?\"<>|',.&!~\n\r\t@#");

	/** The mount table: registration order, latest last. */
	class FMountTable
	{
	public:
		static FMountTable& Get()
		{
			static FMountTable Table;
			return Table;
		}

		FCriticalSection Lock;
		TArray<FMountPoint> MountPoints;

	private:
		FMountTable()
		{
			AddDefault(TEXT("/Engine/"), EMountFolder::EngineContent, false);
			AddDefault(TEXT("/Game/"), EMountFolder::ProjectContent, false);
			AddDefault(TEXT("/Temp/"), EMountFolder::ProjectSaved, true);
			AddDefault(TEXT("/Script/"), EMountFolder::None, true);
			AddDefault(TEXT("/Memory/"), EMountFolder::None, true);
		}

		void AddDefault(const TCHAR* RootPath, EMountFolder Folder, bool bReadOnly)
		{
			FMountPoint& MountPoint = MountPoints.AddDefaulted_GetRef();
			MountPoint.RootPath = RootPath;
			MountPoint.Folder = Folder;
			MountPoint.bReadOnly = bReadOnly;
		}
	};

	/** "/Name/" from "Name", "/Name" or "/Name/". */
	FString NormalizeRootPath(const FString& RootPath)
	{
		FString Result = RootPath;
		Result.ReplaceCharInline(TEXT('\\'), TEXT('/'));
		if (!Result.StartsWith(TEXT("/")))
		{
			Result.InsertAt(0, TEXT('/'));
		}
		if (!Result.EndsWith(TEXT("/")))
		{
			Result.AppendChar(TEXT('/'));
		}
		return Result;
	}

	/** A folder with '/' separators and a trailing '/'. */
	FString NormalizeContentPath(const FString& ContentPath)
	{
		FString Result = ContentPath;
		FPaths::NormalizeFilename(Result);
		if (!Result.IsEmpty() && !Result.EndsWith(TEXT("/")))
		{
			Result.AppendChar(TEXT('/'));
		}
		return Result;
	}

	/** The absolute form of a folder, with a trailing '/', for comparing folders. */
	FString FullContentPath(const FString& ContentPath)
	{
		FString Result = FPaths::ConvertRelativePathToFull(ContentPath);
		if (!Result.EndsWith(TEXT("/")))
		{
			Result.AppendChar(TEXT('/'));
		}
		return Result;
	}

	/**
	 * The mount point whose root starts the name: the longest such root, and among equal roots the
	 * latest registration. The name may be the root without its trailing slash ("/Game").
	 */
	bool FindMountPointForName(FStringView Name, FMountPoint& OutMountPoint)
	{
		const FString NameString(Name);
		FMountTable& Table = FMountTable::Get();
		FScopeLock ScopeLock(&Table.Lock);
		int32 BestIndex = INDEX_NONE;
		for (int32 Index = Table.MountPoints.Num() - 1; Index >= 0; --Index)
		{
			const FString& Root = Table.MountPoints[Index].RootPath;
			const bool bMatches =
				NameString.StartsWith(Root) || NameString.Equals(Root.LeftChop(1), ESearchCase::IgnoreCase);
			if (bMatches && (BestIndex == INDEX_NONE || Root.Len() > Table.MountPoints[BestIndex].RootPath.Len()))
			{
				BestIndex = Index;
			}
		}
		if (BestIndex == INDEX_NONE)
		{
			return false;
		}
		OutMountPoint = Table.MountPoints[BestIndex];
		return true;
	}

	/**
	 * The mount point whose folder contains the absolute file name: the longest such folder, and among
	 * equal folders the latest registration. OutRelative receives the rest of the file name.
	 */
	bool FindMountPointForFile(const FString& FullFilename, FMountPoint& OutMountPoint, FString& OutRelative)
	{
		FMountTable& Table = FMountTable::Get();
		TArray<FMountPoint> MountPoints;
		{
			FScopeLock ScopeLock(&Table.Lock);
			MountPoints = Table.MountPoints;
		}
		int32 BestIndex = INDEX_NONE;
		int32 BestLength = 0;
		for (int32 Index = MountPoints.Num() - 1; Index >= 0; --Index)
		{
			const FString ContentPath = MountPoints[Index].GetContentPath();
			if (ContentPath.IsEmpty())
			{
				continue;
			}
			const FString Folder = FullContentPath(ContentPath);
			const bool bMatches = FullFilename.StartsWith(Folder, ESearchCase::CaseSensitive) ||
								  FullFilename.Equals(Folder.LeftChop(1), ESearchCase::CaseSensitive);
			if (bMatches && Folder.Len() > BestLength)
			{
				BestIndex = Index;
				BestLength = Folder.Len();
			}
		}
		if (BestIndex == INDEX_NONE)
		{
			return false;
		}
		OutMountPoint = MountPoints[BestIndex];
		OutRelative = FullFilename.Len() >= BestLength ? FullFilename.RightChop(BestLength) : FString();
		return true;
	}

	/** The index of the first '.' or ':' that ends the package part of an object path, or INDEX_NONE. */
	int32 FindObjectPathDelimiter(const FString& ObjectPath)
	{
		for (int32 Index = 0; Index < ObjectPath.Len(); ++Index)
		{
			if (ObjectPath[Index] == TEXT('.') || ObjectPath[Index] == TEXT(':'))
			{
				return Index;
			}
		}
		return INDEX_NONE;
	}

	/** The package extensions, preferred first. */
	TArray<FString> GetSearchExtensions(bool bAllowTextFormats)
	{
		TArray<FString> Extensions;
		if (bAllowTextFormats)
		{
			Extensions.Add(FPackageName::GetTextAssetPackageExtension());
			Extensions.Add(FPackageName::GetTextMapPackageExtension());
		}
		Extensions.Add(FPackageName::GetAssetPackageExtension());
		Extensions.Add(FPackageName::GetMapPackageExtension());
		return Extensions;
	}
} // namespace UE::PackageName::Private

using namespace UE::PackageName::Private;

FString FPackageName::FormatErrorAsString(FStringView InPath, EErrorCode ErrorCode)
{
	const FString Path(InPath);
	switch (ErrorCode)
	{
		case EErrorCode::PackageNameEmptyPath:
			return TEXT("Input package name is empty.");
		case EErrorCode::PackageNamePathNotMounted:
			return FString::Printf(TEXT("Path '%s' does not start with a mounted root (such as /Game/)."), *Path);
		case EErrorCode::PackageNamePathIsMemoryOnly:
			return FString::Printf(TEXT("Path '%s' is a memory-only package and cannot be on disk."), *Path);
		case EErrorCode::PackageNameSpacesNotAllowed:
			return FString::Printf(TEXT("Path '%s' contains a space; package names may not contain spaces."), *Path);
		case EErrorCode::PackageNameContainsInvalidCharacters:
			return FString::Printf(TEXT("Path '%s' contains characters that are invalid in a package name."), *Path);
		case EErrorCode::LongPackageNames_PathTooShort:
			return FString::Printf(TEXT("Path '%s' is too short to be a long package name."), *Path);
		case EErrorCode::LongPackageNames_PathWithNoStartingSlash:
			return FString::Printf(TEXT("Path '%s' should start with a '/'."), *Path);
		case EErrorCode::LongPackageNames_PathWithTrailingSlash:
			return FString::Printf(TEXT("Path '%s' should not end with a '/'."), *Path);
		case EErrorCode::LongPackageNames_PathWithDoubleSlash:
			return FString::Printf(TEXT("Path '%s' contains a double '/'."), *Path);
		case EErrorCode::PackageNameUnknown:
			break;
	}
	return FString::Printf(TEXT("Path '%s' is not a valid package name."), *Path);
}

FText FPackageName::FormatErrorAsText(FStringView InPath, EErrorCode ErrorCode)
{
	return FText::FromString(FormatErrorAsString(InPath, ErrorCode));
}

void FPackageName::RegisterMountPoint(const FString& RootPath, const FString& ContentPath)
{
	FMountPoint MountPoint;
	MountPoint.RootPath = NormalizeRootPath(RootPath);
	MountPoint.ContentPath = NormalizeContentPath(ContentPath);
	MountPoint.Folder = EMountFolder::Fixed;
	{
		FMountTable& Table = FMountTable::Get();
		FScopeLock ScopeLock(&Table.Lock);
		Table.MountPoints.Add(MountPoint);
	}
	UE_LOG(LogPackageName, Verbose, TEXT("Mounted '%s' on '%s'."), *MountPoint.RootPath, *MountPoint.ContentPath);
	OnContentPathMounted().Broadcast(MountPoint.RootPath, MountPoint.ContentPath);
}

void FPackageName::UnRegisterMountPoint(const FString& RootPath, const FString& ContentPath)
{
	const FString Root = NormalizeRootPath(RootPath);
	const FString Folder = FullContentPath(NormalizeContentPath(ContentPath));
	FString RemovedContentPath;
	bool bRemoved = false;
	{
		FMountTable& Table = FMountTable::Get();
		FScopeLock ScopeLock(&Table.Lock);
		for (int32 Index = Table.MountPoints.Num() - 1; Index >= 0; --Index)
		{
			const FMountPoint& MountPoint = Table.MountPoints[Index];
			const FString MountFolder = MountPoint.GetContentPath();
			if (MountPoint.RootPath.Equals(Root, ESearchCase::IgnoreCase) && !MountFolder.IsEmpty() &&
				FullContentPath(MountFolder) == Folder)
			{
				RemovedContentPath = MountFolder;
				Table.MountPoints.RemoveAt(Index);
				bRemoved = true;
				break;
			}
		}
	}
	if (!bRemoved)
	{
		UE_LOG(LogPackageName, Display, TEXT("Unable to remove mount point '%s' on '%s': it is not mounted."), *Root,
			*ContentPath);
		return;
	}
	OnContentPathDismounted().Broadcast(Root, RemovedContentPath);
}

bool FPackageName::MountPointExists(FStringView RootPath)
{
	const FString Root = NormalizeRootPath(FString(RootPath));
	FMountTable& Table = FMountTable::Get();
	FScopeLock ScopeLock(&Table.Lock);
	for (const FMountPoint& MountPoint : Table.MountPoints)
	{
		if (MountPoint.RootPath.Equals(Root, ESearchCase::IgnoreCase))
		{
			return true;
		}
	}
	return false;
}

bool FPackageName::MountPointExists(const FString& RootPath)
{
	return MountPointExists(FStringView(RootPath));
}

bool FPackageName::MountPointExists(const TCHAR* RootPath)
{
	return MountPointExists(FStringView(RootPath));
}

FName FPackageName::GetPackageMountPoint(const FString& InPackagePath, bool InWithoutSlashes)
{
	FMountPoint MountPoint;
	if (!FindMountPointForName(InPackagePath, MountPoint))
	{
		return NAME_None;
	}
	const FString Root =
		InWithoutSlashes ? MountPoint.RootPath.Mid(1, MountPoint.RootPath.Len() - 2) : MountPoint.RootPath;
	return FName(*Root);
}

void FPackageName::QueryRootContentPaths(TArray<FString>& OutRootContentPaths, bool bIncludeReadOnlyRoots,
	bool bWithoutLeadingSlashes, bool bWithoutTrailingSlashes)
{
	OutRootContentPaths.Reset();
	FMountTable& Table = FMountTable::Get();
	FScopeLock ScopeLock(&Table.Lock);
	for (const FMountPoint& MountPoint : Table.MountPoints)
	{
		if (MountPoint.bReadOnly && !bIncludeReadOnlyRoots)
		{
			continue;
		}
		FString Root = MountPoint.RootPath;
		if (bWithoutLeadingSlashes)
		{
			Root.RightChopInline(1);
		}
		if (bWithoutTrailingSlashes)
		{
			Root.LeftChopInline(1);
		}
		OutRootContentPaths.AddUnique(Root);
	}
}

FPackageName::FOnContentPathMountedEvent& FPackageName::OnContentPathMounted()
{
	static FOnContentPathMountedEvent Event;
	return Event;
}

FPackageName::FOnContentPathDismountedEvent& FPackageName::OnContentPathDismounted()
{
	static FOnContentPathDismountedEvent Event;
	return Event;
}

bool FPackageName::TryConvertFilenameToLongPackageName(
	const FString& InFilename, FString& OutPackageName, FString* OutFailureReason)
{
	FString Filename = InFilename;
	FPaths::NormalizeFilename(Filename);

	// A text that already names a package under a mounted root only loses its extension or object part.
	FMountPoint MountPoint;
	if (Filename.StartsWith(TEXT("/")) && FindMountPointForName(Filename, MountPoint) &&
		!FPaths::FileExists(Filename) && !FPaths::DirectoryExists(Filename))
	{
		if (IsPackageFilename(Filename))
		{
			Filename = FPaths::GetBaseFilename(Filename, false);
		}
		const int32 Delimiter = FindObjectPathDelimiter(Filename);
		if (Delimiter != INDEX_NONE)
		{
			UE_LOG(LogPackageName, Warning,
				TEXT("TryConvertFilenameToLongPackageName was passed an object path (%s) rather than a package name "
					 "or file path; it is converted to the package name."),
				*InFilename);
			Filename.LeftInline(Delimiter);
		}
		OutPackageName = Filename;
		return true;
	}

	const bool bIsFolder = Filename.EndsWith(TEXT("/"));
	const FString FullFilename = FPaths::ConvertRelativePathToFull(Filename);
	FString Relative;
	if (!FindMountPointForFile(FullFilename, MountPoint, Relative))
	{
		if (OutFailureReason)
		{
			*OutFailureReason = FString::Printf(
				TEXT("'%s' is not under the folder of any mounted root (such as /Game/)."), *InFilename);
		}
		return false;
	}

	// Only the leaf may carry an extension: folders of a package path never contain a '.'.
	if (!bIsFolder && !Relative.IsEmpty())
	{
		const FString Leaf = FPaths::GetCleanFilename(Relative);
		int32 Dot = INDEX_NONE;
		if (Leaf.FindChar(TEXT('.'), Dot))
		{
			Relative.LeftChopInline(Leaf.Len() - Dot);
		}
	}

	FString Result = MountPoint.RootPath + Relative;
	if (bIsFolder && !Result.EndsWith(TEXT("/")))
	{
		Result.AppendChar(TEXT('/'));
	}
	if (Result.Contains(TEXT("\\")) || Result.Contains(TEXT(":")))
	{
		if (OutFailureReason)
		{
			*OutFailureReason = FString::Printf(
				TEXT("'%s' gives the package name '%s', which contains invalid characters."), *InFilename, *Result);
		}
		return false;
	}
	OutPackageName = Result;
	return true;
}

FString FPackageName::FilenameToLongPackageName(const FString& InFilename)
{
	FString Result;
	FString FailureReason;
	if (!TryConvertFilenameToLongPackageName(InFilename, Result, &FailureReason))
	{
		UE_LOG(LogPackageName, Fatal, TEXT("FilenameToLongPackageName failed to convert '%s': %s"), *InFilename,
			*FailureReason);
	}
	return Result;
}

bool FPackageName::TryConvertLongPackageNameToFilename(
	const FString& InLongPackageName, FString& OutFilename, const FString& InExtension)
{
	FString Name = InLongPackageName;
	Name.ReplaceCharInline(TEXT('\\'), TEXT('/'));
	FMountPoint MountPoint;
	if (!Name.StartsWith(TEXT("/")) || !FindMountPointForName(Name, MountPoint))
	{
		return false;
	}
	const FString ContentPath = MountPoint.GetContentPath();
	if (ContentPath.IsEmpty())
	{
		return false;
	}
	const FString Relative =
		Name.Len() > MountPoint.RootPath.Len() ? Name.RightChop(MountPoint.RootPath.Len()) : FString();
	OutFilename = ContentPath + Relative + InExtension;
	return true;
}

FString FPackageName::LongPackageNameToFilename(const FString& InLongPackageName, const FString& InExtension)
{
	FString Result;
	if (!TryConvertLongPackageNameToFilename(InLongPackageName, Result, InExtension))
	{
		UE_LOG(LogPackageName, Fatal,
			TEXT("LongPackageNameToFilename failed to convert '%s': the path does not map to any mounted folder."),
			*InLongPackageName);
	}
	return Result;
}

bool FPackageName::DoesPackageExist(const FString& LongPackageName, FString* OutFilename, bool InAllowTextFormats)
{
	if (!IsValidLongPackageName(LongPackageName, true) || IsScriptPackage(LongPackageName) ||
		IsMemoryPackage(LongPackageName))
	{
		return false;
	}
	FString BaseFilename;
	if (!TryConvertLongPackageNameToFilename(LongPackageName, BaseFilename))
	{
		return false;
	}
	for (const FString& Extension : GetSearchExtensions(InAllowTextFormats))
	{
		const FString Candidate = BaseFilename + Extension;
		if (IFileManager::Get().FileExists(*Candidate))
		{
			if (OutFilename)
			{
				*OutFilename = Candidate;
			}
			return true;
		}
	}
	return false;
}

bool FPackageName::FindPackageFileWithoutExtension(const FString& InPackageFilename, FString& OutFilename)
{
	for (const FString& Extension : GetSearchExtensions(true))
	{
		const FString Candidate = InPackageFilename + Extension;
		if (IFileManager::Get().FileExists(*Candidate))
		{
			OutFilename = Candidate;
			return true;
		}
	}
	return false;
}

const FString& FPackageName::GetAssetPackageExtension()
{
	static const FString Extension(TEXT(".uasset"));
	return Extension;
}

const FString& FPackageName::GetMapPackageExtension()
{
	static const FString Extension(TEXT(".umap"));
	return Extension;
}

const FString& FPackageName::GetTextAssetPackageExtension()
{
	static const FString Extension(TEXT(".utxt"));
	return Extension;
}

const FString& FPackageName::GetTextMapPackageExtension()
{
	static const FString Extension(TEXT(".utxtmap"));
	return Extension;
}

bool FPackageName::IsPackageExtension(const TCHAR* Ext)
{
	if (!Ext)
	{
		return false;
	}
	FString Extension(Ext);
	if (!Extension.StartsWith(TEXT(".")))
	{
		Extension.InsertAt(0, TEXT('.'));
	}
	for (const FString& Known : GetSearchExtensions(true))
	{
		if (Extension.Equals(Known, ESearchCase::IgnoreCase))
		{
			return true;
		}
	}
	return false;
}

bool FPackageName::IsPackageFilename(FStringView Filename)
{
	const FString Name(Filename);
	for (const FString& Known : GetSearchExtensions(true))
	{
		if (Name.EndsWith(Known, ESearchCase::IgnoreCase))
		{
			return true;
		}
	}
	return false;
}

bool FPackageName::IsValidTextForLongPackageName(FStringView InLongPackageName, EErrorCode* OutReason)
{
	const FString Name(InLongPackageName);
	auto Fail = [OutReason](EErrorCode Code)
	{
		if (OutReason)
		{
			*OutReason = Code;
		}
		return false;
	};
	if (Name.IsEmpty())
	{
		return Fail(EErrorCode::PackageNameEmptyPath);
	}
	if (!Name.StartsWith(TEXT("/")))
	{
		return Fail(EErrorCode::LongPackageNames_PathWithNoStartingSlash);
	}
	if (Name.Len() < 2)
	{
		return Fail(EErrorCode::LongPackageNames_PathTooShort);
	}
	if (Name.EndsWith(TEXT("/")))
	{
		return Fail(EErrorCode::LongPackageNames_PathWithTrailingSlash);
	}
	if (Name.Contains(TEXT("//")))
	{
		return Fail(EErrorCode::LongPackageNames_PathWithDoubleSlash);
	}
	if (Name.Contains(TEXT(" ")))
	{
		return Fail(EErrorCode::PackageNameSpacesNotAllowed);
	}
	for (const TCHAR Char : Name)
	{
		for (const TCHAR* Invalid = InvalidLongPackageCharacters; *Invalid; ++Invalid)
		{
			if (Char == *Invalid)
			{
				return Fail(EErrorCode::PackageNameContainsInvalidCharacters);
			}
		}
	}
	return true;
}

bool FPackageName::IsValidTextForLongPackageName(FStringView InLongPackageName, FText* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	const bool bValid = IsValidTextForLongPackageName(InLongPackageName, &Reason);
	if (!bValid && OutReason)
	{
		*OutReason = FormatErrorAsText(InLongPackageName, Reason);
	}
	return bValid;
}

bool FPackageName::IsValidLongPackageName(
	FStringView InLongPackageName, bool bIncludeReadOnlyRoots, EErrorCode* OutReason)
{
	if (!IsValidTextForLongPackageName(InLongPackageName, OutReason))
	{
		return false;
	}
	FMountPoint MountPoint;
	const FString Name(InLongPackageName);
	// The name must continue after the root: the root alone ("/Game") is a path, not a package.
	if (!FindMountPointForName(Name, MountPoint) || Name.Len() <= MountPoint.RootPath.Len())
	{
		if (OutReason)
		{
			*OutReason = EErrorCode::PackageNamePathNotMounted;
		}
		return false;
	}
	if (MountPoint.bReadOnly && !bIncludeReadOnlyRoots)
	{
		if (OutReason)
		{
			*OutReason =
				IsMemoryPackage(Name) ? EErrorCode::PackageNamePathIsMemoryOnly : EErrorCode::PackageNamePathNotMounted;
		}
		return false;
	}
	return true;
}

bool FPackageName::IsValidLongPackageName(FStringView InLongPackageName, bool bIncludeReadOnlyRoots, FText* OutReason)
{
	EErrorCode Reason = EErrorCode::PackageNameUnknown;
	const bool bValid = IsValidLongPackageName(InLongPackageName, bIncludeReadOnlyRoots, &Reason);
	if (!bValid && OutReason)
	{
		*OutReason = FormatErrorAsText(InLongPackageName, Reason);
	}
	return bValid;
}

bool FPackageName::IsValidObjectPath(const FString& InObjectPath, FText* OutReason)
{
	const int32 Delimiter = FindObjectPathDelimiter(InObjectPath);
	if (Delimiter == INDEX_NONE || InObjectPath[Delimiter] != TEXT('.'))
	{
		if (OutReason)
		{
			*OutReason = FText::FromString(FString::Printf(
				TEXT("Object path '%s' should be of the form '/Root/Path/Package.Object'."), *InObjectPath));
		}
		return false;
	}
	const FString ObjectPart = InObjectPath.RightChop(Delimiter + 1);
	if (ObjectPart.IsEmpty() || ObjectPart.EndsWith(TEXT(".")) || ObjectPart.EndsWith(TEXT(":")) ||
		ObjectPart.Contains(TEXT("/")) || ObjectPart.Contains(TEXT(" ")))
	{
		if (OutReason)
		{
			*OutReason =
				FText::FromString(FString::Printf(TEXT("Object path '%s' has an invalid object name."), *InObjectPath));
		}
		return false;
	}
	return IsValidLongPackageName(InObjectPath.Left(Delimiter), true, OutReason);
}

bool FPackageName::IsValidPath(const FString& InPath)
{
	FMountPoint MountPoint;
	return InPath.StartsWith(TEXT("/")) && FindMountPointForName(InPath, MountPoint);
}

bool FPackageName::IsShortPackageName(FStringView PossiblyLongName)
{
	for (int32 Index = 0; Index < PossiblyLongName.Len(); ++Index)
	{
		if (PossiblyLongName.GetData()[Index] == TEXT('/'))
		{
			return false;
		}
	}
	return true;
}

bool FPackageName::IsShortPackageName(const FString& PossiblyLongName)
{
	return IsShortPackageName(FStringView(PossiblyLongName));
}

bool FPackageName::IsShortPackageName(const FName PossiblyLongName)
{
	return IsShortPackageName(PossiblyLongName.ToString());
}

bool FPackageName::IsScriptPackage(FStringView InPackageName)
{
	return FString(InPackageName).StartsWith(TEXT("/Script/"));
}

bool FPackageName::IsMemoryPackage(FStringView InPackageName)
{
	return FString(InPackageName).StartsWith(TEXT("/Memory/"));
}

bool FPackageName::IsTempPackage(FStringView InPackageName)
{
	return FString(InPackageName).StartsWith(TEXT("/Temp/"));
}

FString FPackageName::ConvertToLongScriptPackageName(const TCHAR* InShortName)
{
	if (IsShortPackageName(FStringView(InShortName)))
	{
		return FString(TEXT("/Script/")) + InShortName;
	}
	return FString(InShortName);
}

FString FPackageName::GetShortName(const FString& LongName)
{
	int32 Slash = INDEX_NONE;
	return LongName.FindLastChar(TEXT('/'), Slash) ? LongName.RightChop(Slash + 1) : LongName;
}

FString FPackageName::GetShortName(const FName& LongName)
{
	return GetShortName(LongName.ToString());
}

FString FPackageName::GetShortName(const TCHAR* LongName)
{
	return GetShortName(FString(LongName));
}

FName FPackageName::GetShortFName(const FString& LongName)
{
	return FName(*GetShortName(LongName));
}

FName FPackageName::GetShortFName(const FName& LongName)
{
	return GetShortFName(LongName.ToString());
}

FString FPackageName::GetLongPackageAssetName(const FString& InLongPackageName)
{
	return GetShortName(InLongPackageName);
}

FString FPackageName::GetLongPackagePath(const FString& InLongPackageName)
{
	int32 Slash = INDEX_NONE;
	return InLongPackageName.FindLastChar(TEXT('/'), Slash) ? InLongPackageName.Left(Slash) : InLongPackageName;
}

bool FPackageName::SplitLongPackageName(const FString& InLongPackageName, FString& OutPackageRoot,
	FString& OutPackagePath, FString& OutPackageName, const bool bStripRootLeadingSlash)
{
	FMountPoint MountPoint;
	if (!InLongPackageName.StartsWith(TEXT("/")) || !FindMountPointForName(InLongPackageName, MountPoint) ||
		InLongPackageName.Len() < MountPoint.RootPath.Len())
	{
		OutPackageRoot.Empty();
		OutPackagePath.Empty();
		OutPackageName.Empty();
		return false;
	}
	OutPackageRoot = bStripRootLeadingSlash ? MountPoint.RootPath.RightChop(1) : MountPoint.RootPath;
	const FString Rest = InLongPackageName.RightChop(MountPoint.RootPath.Len());
	int32 Slash = INDEX_NONE;
	if (Rest.FindLastChar(TEXT('/'), Slash))
	{
		OutPackagePath = Rest.Left(Slash + 1);
		OutPackageName = Rest.RightChop(Slash + 1);
	}
	else
	{
		OutPackagePath.Empty();
		OutPackageName = Rest;
	}
	return true;
}

FString FPackageName::ObjectPathToPackageName(const FString& InObjectPath)
{
	const int32 Delimiter = FindObjectPathDelimiter(InObjectPath);
	return Delimiter == INDEX_NONE ? InObjectPath : InObjectPath.Left(Delimiter);
}

FString FPackageName::ObjectPathToObjectName(const FString& InObjectPath)
{
	const int32 Last = InObjectPath.FindLastCharByPredicate(
		[](TCHAR Char)
		{
			return Char == TEXT('.') || Char == TEXT(':');
		});
	return Last == INDEX_NONE ? InObjectPath : InObjectPath.RightChop(Last + 1);
}

FString FPackageName::ObjectPathToPathWithinPackage(const FString& InObjectPath)
{
	const int32 Delimiter = FindObjectPathDelimiter(InObjectPath);
	return Delimiter == INDEX_NONE ? FString() : InObjectPath.RightChop(Delimiter + 1);
}

bool FPackageName::ParseExportTextPath(const FString& InExportTextPath, FString* OutClassName, FString* OutObjectPath)
{
	int32 Quote = INDEX_NONE;
	if (!InExportTextPath.FindChar(TEXT('\''), Quote) || Quote == 0 || InExportTextPath.Len() < Quote + 2 ||
		!InExportTextPath.EndsWith(TEXT("'")))
	{
		return false;
	}
	if (OutClassName)
	{
		*OutClassName = InExportTextPath.Left(Quote);
	}
	if (OutObjectPath)
	{
		*OutObjectPath = InExportTextPath.Mid(Quote + 1, InExportTextPath.Len() - Quote - 2);
	}
	return true;
}

FString FPackageName::ExportTextPathToObjectPath(const FString& InExportTextPath)
{
	FString ObjectPath;
	return ParseExportTextPath(InExportTextPath, nullptr, &ObjectPath) ? ObjectPath : InExportTextPath;
}

FString FPackageName::ExportTextPathToObjectPath(const TCHAR* InExportTextPath)
{
	return ExportTextPathToObjectPath(FString(InExportTextPath));
}
