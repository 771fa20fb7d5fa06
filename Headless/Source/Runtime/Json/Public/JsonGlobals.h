// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Logging/LogMacros.h"

JSON_API DECLARE_LOG_CATEGORY_EXTERN(LogJson, Log, All);
