// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Whether a removal may give back the container's unused memory. */
enum class EAllowShrinking : uint8
{
	No,
	Yes,
	Default = Yes
};
