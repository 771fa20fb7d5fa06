// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"

/**
 * The headless engine's package file: a text file with one block per object. It is documented for
 * users in docs/headless-package-format.md; this is the reader and writer of its syntax, with no
 * knowledge of objects.
 */
namespace UE::PackageText
{
	/** The version written by this engine; files of a newer version are refused. */
	inline constexpr int32 CurrentVersion = 1;

	/** The first word of every package file. */
	inline const TCHAR* const FileMagic = TEXT("HeadlessPackage");

	/** One property value line: "Name=Value" or, for an element of a fixed-size array, "Name(Index)=Value". */
	struct FPropertyLine
	{
		FString Name;
		int32 ArrayIndex = 0;
		/** The value in the property's export text form. */
		FString Value;
		/** Where the line is in the file, for messages (1-based). */
		int32 Line = 0;
	};

	/** One object block. */
	struct FObjectBlock
	{
		/** The object's name. */
		FString Name;
		/** The path of the object's class ("/Script/Module.Class" or a Blueprint class path). */
		FString Class;
		/** The outer's path inside the package ("Asset" or "Asset:Sub"); empty for the package itself. */
		FString Outer;
		/** Flag names without their RF_ prefix ("Public", "Standalone"). */
		TArray<FString> Flags;
		TArray<FPropertyLine> Properties;
		int32 Line = 0;
	};

	/** A whole package file. */
	struct FPackageFile
	{
		int32 Version = CurrentVersion;
		/** The package's long name when it was saved. */
		FString PackageName;
		TArray<FObjectBlock> Objects;
	};

	/** Writes a package file's text. */
	FString WritePackageText(const FPackageFile& Package);

	/**
	 * Reads a package file's text. On failure OutError names the line and what is wrong with it, and
	 * OutPackage holds what was read before it.
	 */
	bool ReadPackageText(const FString& Text, FPackageFile& OutPackage, FString& OutError);
} // namespace UE::PackageText
