// Copyright Orvane. All Rights Reserved.

#pragma once

/** Where asynchronously executed work runs. */
enum class EAsyncExecution
{
	/** A task-graph task: short work on a worker thread. */
	TaskGraph,

	/** A task-graph task on the game thread. */
	TaskGraphMainThread,

	/** A thread of its own: long-running work. */
	Thread,

	/** A thread of its own, or the calling thread where the process must not start threads. */
	ThreadIfForkSafe,

	/** A thread of the global pool. */
	ThreadPool,

#if WITH_EDITOR
	/** A thread of the editor's large pool. */
	LargeThreadPool
#endif
};
