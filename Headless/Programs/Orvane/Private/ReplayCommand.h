// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * Runs `orvane replay FILE ENDPOINT [--loop] [--speed X]`: sends the datagrams of a tracking recording
 * (docs/tracking-recording-format.md) over UDP to ENDPOINT, each when its recorded time has come, and
 * prints a closing line with the datagrams and bytes sent, the time taken and the rate.
 * With --loop it plays the recording over and over until Ctrl-C.
 * @return 0 when every datagram was sent (or a --loop run was interrupted); 1 if the recording could not
 *         be read or a datagram could not be sent; 2 for a usage error such as an invalid endpoint; 130
 *         when Ctrl-C stopped a run without --loop.
 */
int32 RunReplayCommand(const TArray<FString>& Args);
