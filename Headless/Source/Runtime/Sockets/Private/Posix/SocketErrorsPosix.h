// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "SocketTypes.h"

/** The calling thread's last socket error, kept apart from errno so that logging cannot overwrite it. */
namespace SocketErrorsPosix
{
	/** Records an errno value as the calling thread's last socket error. */
	void Record(int32 ErrnoValue);

	/** The errno value last recorded on the calling thread (0 if none). */
	int32 GetRecorded();

	/** Translates an errno value into the engine's socket error. */
	ESocketErrors Translate(int32 ErrnoValue);
} // namespace SocketErrorsPosix
