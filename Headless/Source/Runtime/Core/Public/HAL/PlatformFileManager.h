// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class IPlatformFile;

/** Owns the chain of platform file layers; the headless engine has a single physical layer. */
class FPlatformFileManager
{
public:
	/** The process's file manager. */
	static CORE_API FPlatformFileManager& Get();

	/** The top-most file layer, used by IFileManager. */
	CORE_API IPlatformFile& GetPlatformFile();

	/** Replaces the top-most layer (a test can install its own); null restores the physical layer. */
	CORE_API void SetPlatformFile(IPlatformFile* NewTopmostPlatformFile);

private:
	IPlatformFile* TopmostPlatformFile = nullptr;
};
