// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

ORVANELIVELINK_API DECLARE_LOG_CATEGORY_EXTERN(LogOrvaneLiveLink, Log, All);
