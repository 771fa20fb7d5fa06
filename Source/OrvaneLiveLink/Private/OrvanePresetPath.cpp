// Copyright Orvane. All Rights Reserved.

#include "OrvanePresetPath.h"

#include "Misc/PackageName.h"

const TCHAR* FOrvanePresetPath::Folder = TEXT("/Game/Orvane/");

bool FOrvanePresetPath::Make(const FString& PresetName, FOrvanePresetPath& OutPath, FString& OutError)
{
	if (PresetName.IsEmpty())
	{
		OutError = TEXT("The Live Link preset name is empty.");
		return false;
	}
	if (PresetName.StartsWith(TEXT("/")) || PresetName.EndsWith(TEXT("/")) || PresetName.Contains(TEXT("//")))
	{
		OutError = FString::Printf(
			TEXT("Invalid Live Link preset name '%s': it is a name under %s, not a path."), *PresetName, Folder);
		return false;
	}

	const FString PackageName = FString(Folder) + PresetName;
	FText Reason;
	if (!FPackageName::IsValidLongPackageName(PackageName, false, &Reason))
	{
		OutError = FString::Printf(TEXT("Invalid Live Link preset name '%s': %s"), *PresetName, *Reason.ToString());
		return false;
	}

	OutPath.PackageName = PackageName;
	OutPath.AssetName = FPackageName::GetShortName(PackageName);
	OutError.Reset();
	return true;
}
