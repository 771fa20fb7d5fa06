// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "UObject/ObjectMacros.h"

/**
 * The headless engine's quick look into a package file: the objects it holds, without their values
 * and without loading anything. Not an engine API; the asset registry reads packages through it.
 */

/** One object of a package file. */
struct FPackageSummaryObject
{
	/** The object's name. */
	FString Name;
	/** The path of the object's class ("/Script/Engine.Blueprint", "/Game/BP.BP_C"). */
	FString ClassPath;
	/** The path of the object's outer inside the package; empty for objects directly in the package. */
	FString Outer;
	/** The saved flags of the object (RF_Public, RF_Standalone, ...). */
	EObjectFlags Flags = RF_NoFlags;
};

/** What a package file says about itself. */
struct FPackageSummary
{
	/** The package's long name when it was saved. */
	FString SavedPackageName;
	TArray<FPackageSummaryObject> Objects;
};

/** Reads the objects of the package file Filename; false, with OutError set, if it cannot be read. */
COREUOBJECT_API bool ReadPackageSummary(
	const FString& Filename, FPackageSummary& OutSummary, FString* OutError = nullptr);
