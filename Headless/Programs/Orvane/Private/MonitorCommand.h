// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * Runs `orvane monitor ENDPOINT [--duration SECONDS] [--json]`: listens on ENDPOINT as the tracking source
 * does and shows, refreshed live, each camera's pose and lens, its rate and jitter, the loss and the
 * datagrams rejected by reason. With --json it prints one JSON object per line instead, for scripts.
 * @return 0 after a clean run; 1 if the endpoint cannot be listened on; 2 for a usage error.
 */
int32 RunMonitorCommand(const TArray<FString>& Args);
