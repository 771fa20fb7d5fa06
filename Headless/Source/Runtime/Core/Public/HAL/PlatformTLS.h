// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Thread ids and thread-local storage slots. */
struct FPlatformTLS
{
	/** The operating system's id of the calling thread. */
	static CORE_API uint32 GetCurrentThreadId();

	/** Allocates a thread-local slot; returns an invalid slot (0xFFFFFFFF) when none is left. */
	static CORE_API uint32 AllocTlsSlot();

	/** True if the slot came from a successful AllocTlsSlot. */
	static FORCEINLINE bool IsValidTlsSlot(uint32 SlotIndex) { return SlotIndex != 0xFFFFFFFF; }

	/** Stores the calling thread's value for a slot. */
	static CORE_API void SetTlsValue(uint32 SlotIndex, void* Value);

	/** The calling thread's value for a slot; null until set. */
	static CORE_API void* GetTlsValue(uint32 SlotIndex);

	/** Releases a slot. */
	static CORE_API void FreeTlsSlot(uint32 SlotIndex);
};
