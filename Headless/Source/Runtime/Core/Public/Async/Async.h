// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Async/TaskGraphInterfaces.h"
#include "CoreTypes.h"
#include "Templates/Function.h"

/**
 * Runs a function asynchronously on the given thread. Game-thread work is queued and run by the next
 * tick of the core ticker, even when queued from the game thread itself; work for any other thread
 * runs on a new worker thread. Callable from any thread. The render and RHI threads do not exist in
 * the headless engine; asking for them is fatal.
 */
CORE_API void AsyncTask(ENamedThreads::Type Thread, TUniqueFunction<void()> Function);
