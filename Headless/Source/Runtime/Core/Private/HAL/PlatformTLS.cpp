// Copyright Orvane. All Rights Reserved.

#include "HAL/PlatformTLS.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

uint32 FPlatformTLS::GetCurrentThreadId()
{
	// The kernel's thread id: small, unique among live threads, and what debuggers and /proc show.
	thread_local const uint32 ThreadId = (uint32)syscall(SYS_gettid);
	return ThreadId;
}

uint32 FPlatformTLS::AllocTlsSlot()
{
	pthread_key_t Key;
	if (pthread_key_create(&Key, nullptr) != 0)
	{
		return 0xFFFFFFFF;
	}
	return (uint32)Key;
}

void FPlatformTLS::SetTlsValue(uint32 SlotIndex, void* Value)
{
	pthread_setspecific((pthread_key_t)SlotIndex, Value);
}

void* FPlatformTLS::GetTlsValue(uint32 SlotIndex)
{
	return pthread_getspecific((pthread_key_t)SlotIndex);
}

void FPlatformTLS::FreeTlsSlot(uint32 SlotIndex)
{
	pthread_key_delete((pthread_key_t)SlotIndex);
}
