// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** The texts of every .ini file under a project's Config/ folder at one moment, to show what a run changed. */
class FConfigSnapshot
{
public:
	/** Reads every .ini file under ProjectDir/Config/, in subfolders too. */
	static FConfigSnapshot Take(const FString& ProjectDir);

	/**
	 * The unified diffs of the files that differ between two snapshots, labelled a/<path> and b/<path>
	 * (/dev/null for a file that did not exist), in path order; empty when nothing changed.
	 */
	static FString Diff(const FConfigSnapshot& Before, const FConfigSnapshot& After);

	/** The files read, by path relative to the project folder ("Config/DefaultEngine.ini"). */
	const TMap<FString, FString>& GetFiles() const { return Files; }

	/** Files that exist but could not be read, with the reason. */
	const TArray<FString>& GetProblems() const { return Problems; }

private:
	TMap<FString, FString> Files;
	TArray<FString> Problems;
};
