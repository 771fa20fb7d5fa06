// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

ORVANETRACKING_API DECLARE_LOG_CATEGORY_EXTERN(LogOrvaneTracking, Log, All);
