// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

#if WITH_DEV_AUTOMATION_TESTS

/**
 * While it exists, the plug-in's content folder "/Orvane/" is an empty folder and none of its assets is in memory,
 * as in a project whose copy of the plug-in lost its content. Nothing may reference the plug-in's assets when it
 * is created (destroy the cameras first), or they stay in memory.
 */
class FOrvaneMissingPluginContent
{
public:
	FOrvaneMissingPluginContent();
	~FOrvaneMissingPluginContent();

	/** Whether the plug-in's camera class is really out of reach. */
	bool IsContentMissing() const;

private:
	FString ContentDir;
	FString EmptyDir;
};

#endif
