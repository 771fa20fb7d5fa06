// Copyright Orvane. All Rights Reserved.

#include "Misc/Paths.h"

#include "Containers/StringConv.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformProcess.h"
#include "Misc/App.h"
#include "Misc/Char.h"

#include <random>
#include <unistd.h>

namespace PathsPrivate
{
	bool IsSlashOrBackslash(TCHAR Char)
	{
		return Char == TEXT('/') || Char == TEXT('\\');
	}

	/** Index of the last separator, or INDEX_NONE. */
	int32 FindLastSeparator(const FString& InPath)
	{
		return InPath.FindLastCharByPredicate(IsSlashOrBackslash);
	}

	/** Index of the dot that starts the extension of the file name, or INDEX_NONE. */
	int32 FindExtensionDot(const FString& InPath)
	{
		int32 DotIndex = INDEX_NONE;
		if (!InPath.FindLastChar(TEXT('.'), DotIndex))
		{
			return INDEX_NONE;
		}
		return DotIndex > FindLastSeparator(InPath) ? DotIndex : INDEX_NONE;
	}

	FString WithTrailingSlash(FString Path)
	{
		if (!Path.IsEmpty() && !Path.EndsWith(TEXT("/")))
		{
			Path += TEXT("/");
		}
		return Path;
	}

	/** The current directory with a trailing '/'. */
	FString GetCurrentDirectory()
	{
		ANSICHAR Buffer[4096];
		if (::getcwd(Buffer, sizeof(Buffer)) == nullptr)
		{
			return FString();
		}
		return WithTrailingSlash(FString(UTF8_TO_TCHAR(Buffer)));
	}

	struct FState
	{
		FString ProjectFilePath;
		FString LaunchDir = GetCurrentDirectory();
	};

	FState& GetState()
	{
		static FState State;
		return State;
	}

	/** Taken while the library loads, before anything can change the working directory. */
	const bool bLaunchDirCaptured = !GetState().LaunchDir.IsEmpty();
} // namespace PathsPrivate

FString FPaths::EngineDir()
{
#ifdef UE_HEADLESS_ENGINE_DIR
	// The headless engine's sources, content and plug-ins live in the repository, not beside the binaries.
	return PathsPrivate::WithTrailingSlash(ConvertRelativePathToFull(FString(UTF8_TO_TCHAR(UE_HEADLESS_ENGINE_DIR))));
#else
	return ConvertRelativePathToFull(FString(FPlatformProcess::BaseDir()) + TEXT("../../"));
#endif
}

FString FPaths::EngineContentDir()
{
	return EngineDir() + TEXT("Content/");
}

FString FPaths::EngineConfigDir()
{
	return EngineDir() + TEXT("Config/");
}

FString FPaths::EngineIntermediateDir()
{
	return EngineDir() + TEXT("Intermediate/");
}

FString FPaths::EngineSavedDir()
{
	return EngineUserDir() + TEXT("Saved/");
}

FString FPaths::EnginePluginsDir()
{
	return EngineDir() + TEXT("Plugins/");
}

FString FPaths::EngineSourceDir()
{
	return EngineDir() + TEXT("Source/");
}

FString FPaths::EngineUserDir()
{
	// What the engine writes for the user goes to the build folder, never into the engine's sources.
	return ConvertRelativePathToFull(FString(FPlatformProcess::BaseDir()) + TEXT("../../"));
}

FString FPaths::RootDir()
{
	return PathsPrivate::WithTrailingSlash(ConvertRelativePathToFull(EngineDir() + TEXT("../")));
}

FString FPaths::LaunchDir()
{
	return PathsPrivate::GetState().LaunchDir;
}

FString FPaths::ProjectDir()
{
	const FString& ProjectFilePath = PathsPrivate::GetState().ProjectFilePath;
	if (!ProjectFilePath.IsEmpty())
	{
		return PathsPrivate::WithTrailingSlash(GetPath(ProjectFilePath));
	}
	return EngineDir() + TEXT("Programs/") + FApp::GetName() + TEXT("/");
}

FString FPaths::ProjectUserDir()
{
	return ProjectDir();
}

FString FPaths::ProjectContentDir()
{
	return ProjectDir() + TEXT("Content/");
}

FString FPaths::ProjectConfigDir()
{
	return ProjectDir() + TEXT("Config/");
}

FString FPaths::SourceConfigDir()
{
	return ProjectConfigDir();
}

FString FPaths::GeneratedConfigDir()
{
	return ProjectSavedDir() + TEXT("Config/");
}

FString FPaths::ProjectSavedDir()
{
	return ProjectUserDir() + TEXT("Saved/");
}

FString FPaths::ProjectIntermediateDir()
{
	return ProjectUserDir() + TEXT("Intermediate/");
}

FString FPaths::ProjectPluginsDir()
{
	return ProjectDir() + TEXT("Plugins/");
}

FString FPaths::ProjectModsDir()
{
	return ProjectDir() + TEXT("Mods/");
}

FString FPaths::ProjectLogDir()
{
	return ProjectSavedDir() + TEXT("Logs/");
}

FString FPaths::GameSourceDir()
{
	return ProjectDir() + TEXT("Source/");
}

FString FPaths::AutomationDir()
{
	return ProjectSavedDir() + TEXT("Automation/");
}

FString FPaths::AutomationTransientDir()
{
	return AutomationDir() + TEXT("Tmp/");
}

FString FPaths::AutomationLogDir()
{
	return AutomationDir() + TEXT("Logs/");
}

FString FPaths::ProfilingDir()
{
	return ProjectSavedDir() + TEXT("Profiling/");
}

FString FPaths::DiffDir()
{
	return ProjectSavedDir() + TEXT("Diff/");
}

const FString& FPaths::GetProjectFilePath()
{
	return PathsPrivate::GetState().ProjectFilePath;
}

void FPaths::SetProjectFilePath(const FString& NewGameProjectFilePath)
{
	PathsPrivate::GetState().ProjectFilePath =
		NewGameProjectFilePath.IsEmpty() ? FString() : ConvertRelativePathToFull(NewGameProjectFilePath);
}

bool FPaths::IsProjectFilePathSet()
{
	return !PathsPrivate::GetState().ProjectFilePath.IsEmpty();
}

FString FPaths::GetExtension(const FString& InPath, bool bIncludeDot)
{
	const int32 DotIndex = PathsPrivate::FindExtensionDot(InPath);
	if (DotIndex == INDEX_NONE)
	{
		return FString();
	}
	return InPath.Mid(bIncludeDot ? DotIndex : DotIndex + 1);
}

FString FPaths::GetCleanFilename(const FString& InPath)
{
	const int32 SeparatorIndex = PathsPrivate::FindLastSeparator(InPath);
	return SeparatorIndex == INDEX_NONE ? InPath : InPath.Mid(SeparatorIndex + 1);
}

FString FPaths::GetBaseFilename(const FString& InPath, bool bRemovePath)
{
	FString Result = bRemovePath ? GetCleanFilename(InPath) : InPath;
	const int32 DotIndex = PathsPrivate::FindExtensionDot(Result);
	if (DotIndex != INDEX_NONE)
	{
		Result.LeftInline(DotIndex);
	}
	return Result;
}

FString FPaths::GetPath(const FString& InPath)
{
	const int32 SeparatorIndex = PathsPrivate::FindLastSeparator(InPath);
	return SeparatorIndex == INDEX_NONE ? FString() : InPath.Left(SeparatorIndex);
}

FString FPaths::GetPathLeaf(const FString& InPath)
{
	if (!InPath.IsEmpty() && PathsPrivate::IsSlashOrBackslash(InPath[InPath.Len() - 1]))
	{
		return GetCleanFilename(InPath.LeftChop(1));
	}
	return GetCleanFilename(InPath);
}

FString FPaths::ChangeExtension(const FString& InPath, const FString& InNewExtension)
{
	if (PathsPrivate::FindExtensionDot(InPath) == INDEX_NONE)
	{
		return InPath;
	}
	return SetExtension(InPath, InNewExtension);
}

FString FPaths::SetExtension(const FString& InPath, const FString& InNewExtension)
{
	const int32 DotIndex = PathsPrivate::FindExtensionDot(InPath);
	FString Result = DotIndex == INDEX_NONE ? InPath : InPath.Left(DotIndex);
	if (!InNewExtension.IsEmpty() && InNewExtension[0] != TEXT('.'))
	{
		Result += TEXT(".");
	}
	Result += InNewExtension;
	return Result;
}

bool FPaths::FileExists(const FString& InPath)
{
	return IFileManager::Get().FileExists(*InPath);
}

bool FPaths::DirectoryExists(const FString& InPath)
{
	return IFileManager::Get().DirectoryExists(*InPath);
}

bool FPaths::IsDrive(const FString& InPath)
{
	return false;
}

bool FPaths::IsRelative(const FString& InPath)
{
	if (InPath.IsEmpty())
	{
		return true;
	}
	const bool bRooted = PathsPrivate::IsSlashOrBackslash(InPath[0]) ||
						 (InPath.Len() >= 2 && FChar::IsAlpha(InPath[0]) && InPath[1] == TEXT(':'));
	return !bRooted;
}

void FPaths::NormalizeFilename(FString& InPath)
{
	InPath.ReplaceCharInline(TEXT('\\'), TEXT('/'), ESearchCase::CaseSensitive);
}

void FPaths::NormalizeDirectoryName(FString& InPath)
{
	NormalizeFilename(InPath);
	if (InPath.Len() > 1 && InPath.EndsWith(TEXT("/")) && !InPath.EndsWith(TEXT("//")) && !InPath.EndsWith(TEXT(":/")))
	{
		InPath.LeftChopInline(1);
	}
}

bool FPaths::IsSamePath(const FString& PathA, const FString& PathB)
{
	FString FullA = ConvertRelativePathToFull(PathA);
	FString FullB = ConvertRelativePathToFull(PathB);
	NormalizeDirectoryName(FullA);
	NormalizeDirectoryName(FullB);
	// Linux file names are case-sensitive.
	return FullA.Equals(FullB, ESearchCase::CaseSensitive);
}

bool FPaths::IsUnderDirectory(const FString& InPath, const FString& InDirectory)
{
	FString Path = ConvertRelativePathToFull(InPath);
	FString Directory = ConvertRelativePathToFull(InDirectory);
	NormalizeDirectoryName(Path);
	NormalizeDirectoryName(Directory);
	if (!Path.StartsWith(Directory, ESearchCase::CaseSensitive))
	{
		return false;
	}
	return Path.Len() == Directory.Len() || Directory.EndsWith(TEXT("/")) || Path[Directory.Len()] == TEXT('/');
}

bool FPaths::CollapseRelativeDirectories(FString& InPath)
{
	const bool bRooted = InPath.StartsWith(TEXT("/"));
	const bool bTrailingSlash = InPath.Len() > 1 && InPath.EndsWith(TEXT("/"));

	// Split by hand so the empty parts of a doubled slash survive: folding those is not this function's job.
	TArray<FString> Kept;
	const int32 Start = bRooted ? 1 : 0;
	const int32 Stop = bTrailingSlash ? InPath.Len() - 1 : InPath.Len();
	int32 PartStart = Start;
	for (int32 Index = Start; Index <= Stop; ++Index)
	{
		if (Index < Stop && InPath[Index] != TEXT('/'))
		{
			continue;
		}
		const FString Part = InPath.Mid(PartStart, Index - PartStart);
		PartStart = Index + 1;
		if (Part.Equals(TEXT("."), ESearchCase::CaseSensitive) || (Part.IsEmpty() && Stop == Start))
		{
			continue;
		}
		if (Part.Equals(TEXT(".."), ESearchCase::CaseSensitive))
		{
			// Only a directory name can absorb a "..": a leading ".." (or one above the root) cannot be collapsed.
			if (Kept.Num() == 0 || Kept.Last().Equals(TEXT(".."), ESearchCase::CaseSensitive))
			{
				return false;
			}
			Kept.Pop();
			continue;
		}
		Kept.Add(Part);
	}

	FString Result = bRooted ? FString(TEXT("/")) : FString();
	Result += FString::Join(Kept, TEXT("/"));
	if (bTrailingSlash && Kept.Num() > 0)
	{
		Result += TEXT("/");
	}
	InPath = MoveTemp(Result);
	return true;
}

void FPaths::RemoveDuplicateSlashes(FString& InPath)
{
	while (InPath.ReplaceInline(TEXT("//"), TEXT("/"), ESearchCase::CaseSensitive) > 0)
	{
	}
}

bool FPaths::MakePathRelativeTo(FString& InPath, const TCHAR* InRelativeTo)
{
	const FString Target = ConvertRelativePathToFull(InPath);
	const FString Source = GetPath(ConvertRelativePathToFull(FString(InRelativeTo)));

	TArray<FString> TargetParts;
	TArray<FString> SourceParts;
	Target.ParseIntoArray(TargetParts, TEXT("/"), true);
	Source.ParseIntoArray(SourceParts, TEXT("/"), true);

	int32 Common = 0;
	while (Common < TargetParts.Num() && Common < SourceParts.Num() &&
		   TargetParts[Common].Equals(SourceParts[Common], ESearchCase::CaseSensitive))
	{
		++Common;
	}

	FString Result;
	for (int32 Index = Common; Index < SourceParts.Num(); ++Index)
	{
		Result += TEXT("../");
	}
	for (int32 Index = Common; Index < TargetParts.Num(); ++Index)
	{
		Result += TargetParts[Index];
		if (Index + 1 < TargetParts.Num())
		{
			Result += TEXT("/");
		}
	}
	InPath = MoveTemp(Result);
	return true;
}

FString FPaths::ConvertRelativePathToFull(const FString& InPath)
{
	return ConvertRelativePathToFull(FString(FPlatformProcess::BaseDir()), InPath);
}

FString FPaths::ConvertRelativePathToFull(const FString& BasePath, const FString& InPath)
{
	FString FullyPathed;
	if (IsRelative(InPath))
	{
		FullyPathed = Combine(BasePath, InPath);
		if (InPath.IsEmpty())
		{
			FullyPathed = PathsPrivate::WithTrailingSlash(FullyPathed);
		}
	}
	else
	{
		FullyPathed = InPath;
	}
	NormalizeFilename(FullyPathed);
	RemoveDuplicateSlashes(FullyPathed);
	CollapseRelativeDirectories(FullyPathed);
	if (FullyPathed.IsEmpty())
	{
		FullyPathed = TEXT("/");
	}
	return FullyPathed;
}

FString FPaths::CreateTempFilename(const TCHAR* Path, const TCHAR* Prefix, const TCHAR* Extension)
{
	static std::mt19937_64 Generator(std::random_device{}());
	for (;;)
	{
		const uint64 High = Generator();
		const uint64 Low = Generator();
		const FString Name = FString::Printf(TEXT("%s%08X%08X%08X%08X%s"), Prefix, (uint32)(High >> 32), (uint32)High,
			(uint32)(Low >> 32), (uint32)Low, Extension);
		const FString Candidate = Combine(Path, Name);
		if (!FileExists(Candidate) && !DirectoryExists(Candidate))
		{
			return Candidate;
		}
	}
}

FString FPaths::GetInvalidFileSystemChars()
{
	return FString(TEXT("/?:&\\*\"<>|%#@^ "));
}

FString FPaths::MakeValidFileName(const FString& InString, const TCHAR InReplacementChar)
{
	const FString Invalid = GetInvalidFileSystemChars();
	FString Result;
	Result.Reserve(InString.Len());
	for (const TCHAR Char : InString)
	{
		int32 Unused = INDEX_NONE;
		if (!Invalid.FindChar(Char, Unused))
		{
			Result.AppendChar(Char);
		}
		else if (InReplacementChar != 0)
		{
			Result.AppendChar(InReplacementChar);
		}
	}
	return Result;
}

void FPaths::Split(const FString& InPath, FString& PathPart, FString& FilenamePart, FString& ExtensionPart)
{
	PathPart = GetPath(InPath);
	FilenamePart = GetBaseFilename(InPath);
	ExtensionPart = GetExtension(InPath);
}

FString FPaths::CombineInternal(const TCHAR* const* Paths, int32 NumPaths)
{
	FString Result;
	for (int32 Index = 0; Index < NumPaths; ++Index)
	{
		const TCHAR* Part = Paths[Index];
		if (Part == nullptr || *Part == 0)
		{
			continue;
		}
		if (!Result.IsEmpty())
		{
			const bool bEndsWithSeparator = PathsPrivate::IsSlashOrBackslash(Result[Result.Len() - 1]);
			const bool bStartsWithSeparator = PathsPrivate::IsSlashOrBackslash(*Part);
			if (bEndsWithSeparator && bStartsWithSeparator)
			{
				++Part;
			}
			else if (!bEndsWithSeparator && !bStartsWithSeparator)
			{
				Result += TEXT("/");
			}
		}
		Result += Part;
	}
	return Result;
}
