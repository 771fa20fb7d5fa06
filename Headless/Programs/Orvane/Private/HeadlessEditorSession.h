// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Templates/UniquePtr.h"

class FSampleProject;

/** Options shared by the commands that boot the headless editor. */
struct FHeadlessEditorOptions
{
	/** A project to open in place; empty means a throwaway copy of the sample project. */
	FString ProjectPath;

	/** Keep the throwaway copy on disk after the run. */
	bool bKeepProject = false;

	/**
	 * Takes the options this struct knows out of the arguments, leaving the rest.
	 * @return false, with an explanation, when an option lacks its value.
	 */
	bool Parse(TArray<FString>& InOutArgs, FString& OutError);
};

/** Boots the headless editor on a project for the lifetime of the object, and shuts it down after. */
class FHeadlessEditorSession
{
public:
	explicit FHeadlessEditorSession(const FHeadlessEditorOptions& Options);
	~FHeadlessEditorSession();

	/** Whether the editor started; if not, GetError() says why. */
	bool IsRunning() const { return bRunning; }
	const FString& GetError() const { return Error; }

	/** The folder of the project the editor runs on. */
	const FString& GetProjectDir() const { return ProjectDir; }

	/**
	 * Shuts the editor down now, so that whatever it writes on the way out is on disk; a throwaway project
	 * copy stays until the session ends.
	 */
	void Shutdown();

private:
	TUniquePtr<FSampleProject> SampleProject;
	FString ProjectDir;
	FString Error;
	bool bRunning = false;
	bool bInitialized = false;
};
