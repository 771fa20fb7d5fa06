// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** Where a Live Link preset of a given name lives: the package /Game/Orvane/<Name> and its asset. */
struct FOrvanePresetPath
{
	/** The content folder of presets. */
	static const TCHAR* Folder;

	/** Long package name, such as "/Game/Orvane/Orvane_LiveLink_Preset". */
	FString PackageName;

	/** Asset (object) name: the last part of the preset name. */
	FString AssetName;

	/**
	 * Builds the path for PresetName. A name may hold sub-folders ("Stage/Main"); it may not be empty, start
	 * or end with a slash, or contain what a package name cannot. On failure OutError says why.
	 */
	static bool Make(const FString& PresetName, FOrvanePresetPath& OutPath, FString& OutError);
};
