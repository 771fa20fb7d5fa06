// Copyright Orvane. All Rights Reserved.

#include "ProjectManager.h"

DEFINE_LOG_CATEGORY_STATIC(LogProjectManager, Log, All);

IProjectManager& IProjectManager::Get()
{
	static FProjectManager ProjectManager;
	return ProjectManager;
}

bool FProjectManager::LoadProjectFile(const FString& ProjectFile)
{
	FProjectDescriptor Descriptor;
	FText FailReason;
	if (!Descriptor.Load(ProjectFile, FailReason))
	{
		UE_LOG(LogProjectManager, Error, TEXT("Project file '%s' could not be read: %s"), *ProjectFile,
			*FailReason.ToString());
		return false;
	}
	CurrentProject = MoveTemp(Descriptor);
	return true;
}

const FProjectDescriptor* FProjectManager::GetCurrentProject() const
{
	return CurrentProject.IsSet() ? &CurrentProject.GetValue() : nullptr;
}
