// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** A reference to another plug-in from a descriptor's "Plugins" list. */
struct PROJECTS_API FPluginReferenceDescriptor
{
	/** Name of the referenced plug-in. */
	FString Name;

	/** Whether the reference enables the plug-in. */
	bool bEnabled = true;

	/** Whether the referencing plug-in can do without it. */
	bool bOptional = false;
};
