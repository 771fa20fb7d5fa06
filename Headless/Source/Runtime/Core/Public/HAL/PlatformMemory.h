// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Memory figures of the running platform. */
struct FPlatformMemory
{
	/** Size of a virtual memory page, in bytes. */
	static CORE_API SIZE_T GetPageSize();
};
