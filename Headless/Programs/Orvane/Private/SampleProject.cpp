// Copyright Orvane. All Rights Reserved.

#include "SampleProject.h"

#include "Containers/StringConv.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace
{
	std::filesystem::path ToPath(const FString& Path)
	{
		return std::filesystem::path(TCHAR_TO_UTF8(*Path));
	}

	FString ToFString(const std::filesystem::path& Path)
	{
		return FString(UTF8_TO_TCHAR(Path.string().c_str()));
	}
} // namespace

FSampleProject::FSampleProject(const FString& SourceProjectDir, const FString& PluginDir)
{
	std::string Template = (std::filesystem::temp_directory_path() / "orvane-XXXXXX").string();
	if (mkdtemp(Template.data()) == nullptr)
	{
		Error = TEXT("Could not create a temporary folder for the project copy.");
		return;
	}
	TempRoot = FString(UTF8_TO_TCHAR(Template.c_str()));

	const std::filesystem::path Source = ToPath(SourceProjectDir);
	const std::filesystem::path Destination = ToPath(TempRoot) / Source.filename();
	std::error_code ErrorCode;
	std::filesystem::copy(Source, Destination, std::filesystem::copy_options::recursive, ErrorCode);
	if (!ErrorCode)
	{
		std::filesystem::create_directories(Destination / "Plugins", ErrorCode);
	}
	if (!ErrorCode)
	{
		std::filesystem::create_directory_symlink(ToPath(PluginDir), Destination / "Plugins" / "Orvane", ErrorCode);
	}
	if (ErrorCode)
	{
		Error = FString::Printf(TEXT("Could not copy '%s' to '%s': %s"), *SourceProjectDir, *ToFString(Destination),
			UTF8_TO_TCHAR(ErrorCode.message().c_str()));
		return;
	}
	ProjectDir = ToFString(Destination);
}

FSampleProject::~FSampleProject()
{
	if (!TempRoot.IsEmpty() && !bKeep)
	{
		std::error_code ErrorCode;
		std::filesystem::remove_all(ToPath(TempRoot), ErrorCode);
	}
}
