// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IProjectManager.h"
#include "ProjectDescriptor.h"

/** Keeps the descriptor of the current project. */
class FProjectManager final : public IProjectManager
{
public:
	//~ Begin IProjectManager interface
	virtual bool LoadProjectFile(const FString& ProjectFile) override;
	virtual const FProjectDescriptor* GetCurrentProject() const override;
	//~ End IProjectManager interface

private:
	TOptional<FProjectDescriptor> CurrentProject;
};
