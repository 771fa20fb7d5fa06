// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/**
 * Runs `orvane test [Filter] [--junit FILE]` in an editor that is already up: every automation test
 * whose full name starts with Filter (case-insensitive; all tests when omitted), in name order, each
 * on the simulated clock. Prints one line per test and a closing "N passed, N failed" line.
 * @return 0 if every test passed; 1 if one failed or none matched; 2 for a usage error.
 */
int32 RunAutomationTestCommand(const TArray<FString>& Args);
