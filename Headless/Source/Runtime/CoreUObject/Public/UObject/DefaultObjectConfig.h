// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

namespace UE::CoreUObject
{
	/**
	 * Loads the config values of every config class's default object that already exists. Default objects
	 * created after the config system started load theirs when they are created; the engine loop calls this
	 * right after FConfigCacheIni::InitializeConfigSystem() for the ones created before (or during an earlier
	 * session of another project).
	 */
	COREUOBJECT_API void LoadConfigForExistingDefaultObjects();
} // namespace UE::CoreUObject
