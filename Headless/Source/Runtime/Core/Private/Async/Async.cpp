// Copyright Orvane. All Rights Reserved.

#include "Async/Async.h"

#include "Containers/Ticker.h"
#include "Misc/AssertionMacros.h"

#include <thread>

void AsyncTask(ENamedThreads::Type Thread, TUniqueFunction<void()> Function)
{
	checkf(Function, TEXT("AsyncTask needs a function."));
	switch (ENamedThreads::GetThreadIndex(Thread))
	{
		case ENamedThreads::GameThread:
			FTSTicker::GetCoreTicker().AddTicker(TEXT("AsyncTask"), 0.0f,
				[Task = MoveTemp(Function)](float) mutable
				{
					Task();
					return false;
				});
			break;
		case ENamedThreads::AnyThread:
			std::thread(
				[Task = MoveTemp(Function)]() mutable
				{
					Task();
				})
				.detach();
			break;
		default:
			checkf(false, TEXT("AsyncTask: thread %d does not exist in the headless engine."), (int32)Thread);
	}
}
