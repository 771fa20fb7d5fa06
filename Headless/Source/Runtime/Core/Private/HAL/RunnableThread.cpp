// Copyright Orvane. All Rights Reserved.

#include "HAL/RunnableThread.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "HAL/Event.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTLS.h"
#include "HAL/Runnable.h"
#include "Misc/AssertionMacros.h"

#include <cstring>
#include <mutex>
#include <pthread.h>

namespace
{
	thread_local FRunnableThread* GCurrentRunnableThread = nullptr;

	/** A runnable thread on a POSIX thread. */
	class FRunnableThreadPosix final : public FRunnableThread
	{
	public:
		~FRunnableThreadPosix() override
		{
			// Destroying the object ends the thread, as the engine documents; it must not be the thread itself.
			checkf(GCurrentRunnableThread != this, TEXT("A runnable thread cannot delete itself."));
			Kill(true);
		}

		bool Start(FRunnable* InRunnable, const TCHAR* InThreadName, uint32 InStackSize, EThreadPriority InThreadPri,
			uint64 InThreadAffinityMask)
		{
			Runnable = InRunnable;
			ThreadName = InThreadName ? InThreadName : TEXT("");
			ThreadPriority = InThreadPri;
			ThreadAffinityMask = InThreadAffinityMask;

			pthread_attr_t Attributes;
			pthread_attr_init(&Attributes);
			if (InStackSize != 0)
			{
				pthread_attr_setstacksize(
					&Attributes, InStackSize < PTHREAD_STACK_MIN ? PTHREAD_STACK_MIN : InStackSize);
			}
			FEvent* InitDone = FPlatformProcess::GetSynchEventFromPool(true);
			InitSyncEvent = InitDone;
			const int Result = pthread_create(&Thread, &Attributes, &FRunnableThreadPosix::ThreadEntry, this);
			pthread_attr_destroy(&Attributes);
			if (Result != 0)
			{
				InitSyncEvent = nullptr;
				Runnable = nullptr;
				FPlatformProcess::ReturnSynchEventToPool(InitDone);
				return false;
			}
			bThreadStarted = true;
			// Create returns only after the runnable's Init ran on the new thread.
			InitDone->Wait();
			FPlatformProcess::ReturnSynchEventToPool(InitDone);
			return true;
		}

		void SetThreadPriority(EThreadPriority NewPriority) override { ThreadPriority = NewPriority; }

		void Suspend(bool bShouldPause) override { UE_HEADLESS_UNIMPLEMENTED(); }

		bool Kill(bool bShouldWait) override
		{
			if (Runnable)
			{
				Runnable->Stop();
			}
			if (bShouldWait)
			{
				WaitForCompletion();
			}
			return true;
		}

		void WaitForCompletion() override
		{
			std::lock_guard<std::mutex> Lock(JoinMutex);
			if (bThreadStarted && !bJoined)
			{
				checkf(GCurrentRunnableThread != this, TEXT("A runnable thread cannot wait for its own completion."));
				pthread_join(Thread, nullptr);
				bJoined = true;
			}
		}

	private:
		static void* ThreadEntry(void* Argument)
		{
			FRunnableThreadPosix* Self = static_cast<FRunnableThreadPosix*>(Argument);
			GCurrentRunnableThread = Self;
			Self->ThreadID = FPlatformTLS::GetCurrentThreadId();

			// The kernel keeps at most 15 bytes of a thread's name.
			char ShortName[16] = {};
			std::strncpy(ShortName, TCHAR_TO_UTF8(*Self->ThreadName), sizeof(ShortName) - 1);
			pthread_setname_np(pthread_self(), ShortName);

			FRunnable* Work = Self->Runnable;
			const bool bInitialized = Work->Init();
			// After this the creating thread may continue; Self stays valid until the thread is joined.
			Self->InitSyncEvent->Trigger();
			if (bInitialized)
			{
				Work->Run();
				Work->Exit();
			}
			GCurrentRunnableThread = nullptr;
			return nullptr;
		}

		pthread_t Thread{};
		FEvent* InitSyncEvent = nullptr;
		std::mutex JoinMutex;
		bool bThreadStarted = false;
		bool bJoined = false;
	};
} // namespace

FRunnableThread::FRunnableThread() = default;

FRunnableThread::~FRunnableThread() = default;

FRunnableThread* FRunnableThread::Create(FRunnable* InRunnable, const TCHAR* ThreadName, uint32 InStackSize,
	EThreadPriority InThreadPri, uint64 InThreadAffinityMask, EThreadCreateFlags InCreateFlags)
{
	checkf(InRunnable, TEXT("FRunnableThread::Create needs a runnable."));
	FRunnableThreadPosix* NewThread = new FRunnableThreadPosix();
	if (!NewThread->Start(InRunnable, ThreadName, InStackSize, InThreadPri, InThreadAffinityMask))
	{
		UE_LOG(LogHAL, Error, TEXT("Could not start thread '%s'."), ThreadName ? ThreadName : TEXT(""));
		delete NewThread;
		return nullptr;
	}
	return NewThread;
}

FRunnableThread* FRunnableThread::GetRunnableThread()
{
	return GCurrentRunnableThread;
}
