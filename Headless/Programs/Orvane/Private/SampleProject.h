// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * A throwaway copy of a project, with the plug-in installed into its Plugins folder the way a user
 * installs it. The copy lives in a fresh temporary folder so runs never change the repository's
 * sample.
 */
class FSampleProject
{
public:
	/** Copies the project folder and links the plug-in into it; check IsValid() afterwards. */
	FSampleProject(const FString& SourceProjectDir, const FString& PluginDir);

	/** Removes the copy unless asked to keep it. */
	~FSampleProject();

	bool IsValid() const { return !ProjectDir.IsEmpty(); }

	/** The copy's folder. */
	const FString& GetProjectDir() const { return ProjectDir; }

	/** Why the copy could not be made. */
	const FString& GetError() const { return Error; }

	/** Leaves the copy on disk after the run, so it can be inspected. */
	void Keep() { bKeep = true; }

private:
	FString TempRoot;
	FString ProjectDir;
	FString Error;
	bool bKeep = false;
};
