// Copyright Orvane. All Rights Reserved.

#include "Delegates/IDelegateInstance.h"

#include <atomic>

uint64 FDelegateHandle::GenerateNewID()
{
	// Zero is the invalid handle, so ids start at one; 64 bits never wrap in practice.
	static std::atomic<uint64> NextID{1};
	return NextID.fetch_add(1);
}
