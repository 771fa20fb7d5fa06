// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

struct FProjectDescriptor;

/** Holds the descriptor of the project the engine runs. */
class IProjectManager
{
public:
	virtual ~IProjectManager() = default;

	static PROJECTS_API IProjectManager& Get();

	/** Reads the project file and makes it the current project; explains a failure in the log. */
	virtual bool LoadProjectFile(const FString& ProjectFile) = 0;

	/** The current project, or null before one is loaded. */
	virtual const FProjectDescriptor* GetCurrentProject() const = 0;
};
