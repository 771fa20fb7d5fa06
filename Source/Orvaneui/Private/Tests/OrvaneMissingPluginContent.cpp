// Copyright Orvane. All Rights Reserved.

#include "OrvaneMissingPluginContent.h"

#include "HAL/FileManager.h"
#include "Misc/Guid.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "UObject/Object.h"
#include "UObject/UObjectGlobals.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace
{
	const TCHAR* const PluginRoot = TEXT("/Orvane/");
}

FOrvaneMissingPluginContent::FOrvaneMissingPluginContent()
{
	FPackageName::TryConvertLongPackageNameToFilename(PluginRoot, ContentDir);
	EmptyDir =
		FPaths::Combine(FPaths::ProjectSavedDir(), TEXT("Orvane"), TEXT("EmptyContent"), FGuid::NewGuid().ToString()) +
		TEXT("/");
	IFileManager::Get().MakeDirectory(*EmptyDir, true);

	FPackageName::UnRegisterMountPoint(PluginRoot, ContentDir);
	FPackageName::RegisterMountPoint(PluginRoot, EmptyDir);
	// What was loaded from the plug-in's content goes, so that loading it again has to find its file.
	CollectGarbage(RF_NoFlags, true);
}

FOrvaneMissingPluginContent::~FOrvaneMissingPluginContent()
{
	FPackageName::UnRegisterMountPoint(PluginRoot, EmptyDir);
	FPackageName::RegisterMountPoint(PluginRoot, ContentDir);
	IFileManager::Get().DeleteDirectory(*EmptyDir, false, true);
}

bool FOrvaneMissingPluginContent::IsContentMissing() const
{
	return !ContentDir.IsEmpty() &&
		   StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C")) ==
			   nullptr &&
		   !FPackageName::DoesPackageExist(TEXT("/Orvane/Orvane_VP_Camera"));
}

#endif
