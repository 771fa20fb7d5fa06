// Copyright Orvane. All Rights Reserved.

#pragma once

#include "HAL/Platform.h"
#include "Misc/Build.h"
#include "Misc/CoreMiscDefines.h"
