// Copyright Orvane. All Rights Reserved.

#include "ConfigSnapshot.h"

#include "Containers/StringConv.h"
#include "IniDiff.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

FConfigSnapshot FConfigSnapshot::Take(const FString& ProjectDir)
{
	FConfigSnapshot Snapshot;
	const std::filesystem::path Root(TCHAR_TO_UTF8(*ProjectDir));
	std::error_code ErrorCode;
	if (!std::filesystem::is_directory(Root / "Config", ErrorCode))
	{
		return Snapshot;
	}
	for (std::filesystem::recursive_directory_iterator It(Root / "Config", ErrorCode), End; !ErrorCode && It != End;
		 It.increment(ErrorCode))
	{
		const std::filesystem::path& Path = It->path();
		if (Path.extension() != ".ini" || !It->is_regular_file(ErrorCode))
		{
			continue;
		}
		const FString Relative(UTF8_TO_TCHAR(Path.lexically_relative(Root).generic_string().c_str()));
		std::ifstream File(Path, std::ios::binary);
		std::string Bytes;
		if (File.is_open())
		{
			Bytes.assign(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
		}
		if (!File.is_open() || File.bad())
		{
			Snapshot.Problems.Add(FString::Printf(TEXT("%s could not be read."), *Relative));
			continue;
		}
		Snapshot.Files.Add(Relative, FString(UTF8_TO_TCHAR(Bytes.c_str())));
	}
	if (ErrorCode)
	{
		Snapshot.Problems.Add(FString::Printf(
			TEXT("Config/ could not be listed completely: %s"), UTF8_TO_TCHAR(ErrorCode.message().c_str())));
	}
	return Snapshot;
}

FString FConfigSnapshot::Diff(const FConfigSnapshot& Before, const FConfigSnapshot& After)
{
	TArray<FString> Paths;
	Before.Files.GetKeys(Paths);
	for (const TPair<FString, FString>& File : After.Files)
	{
		Paths.AddUnique(File.Key);
	}
	Paths.Sort();

	TArray<FString> Diffs;
	for (const FString& Path : Paths)
	{
		const FString* Old = Before.Files.Find(Path);
		const FString* New = After.Files.Find(Path);
		const FString Unified = IniDiff::Unified(Old ? TEXT("a/") + Path : FString(TEXT("/dev/null")),
			New ? TEXT("b/") + Path : FString(TEXT("/dev/null")), Old ? *Old : FString(), New ? *New : FString());
		if (!Unified.IsEmpty())
		{
			Diffs.Add(Unified);
		}
		else if ((Old == nullptr) != (New == nullptr))
		{
			// An empty file that appeared or went away has no lines to show.
			Diffs.Add(FString::Printf(TEXT("%s %s (empty)"), Old ? TEXT("Removed") : TEXT("Created"), *Path));
		}
	}
	return FString::Join(Diffs, TEXT("\n"));
}
