// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

#if WITH_DEV_AUTOMATION_TESTS

class FSocket;
class ILiveLinkClient;

/** What the tracking tests of several modules share: loopback senders, free ports, the client and waiting on it. */
namespace OrvaneTrackingTests
{
	/** The editor's Live Link client, or null when the Live Link plug-in is not loaded. */
	ORVANETRACKING_API ILiveLinkClient* GetClient();

	/** A UDP port on the loopback interface that nothing listens on right now. */
	ORVANETRACKING_API uint16 FindFreeUdpPort();

	/** Sends one datagram from a fresh socket to 127.0.0.1:Port. */
	ORVANETRACKING_API bool SendDatagram(uint16 Port, TArrayView<const uint8> Datagram);

	/**
	 * Ticks the client (so sources update and removals complete) and sleeps briefly until Condition holds or
	 * TimeoutSeconds of real time have passed. Returns whether the condition held.
	 */
	ORVANETRACKING_API bool TickClientUntil(
		ILiveLinkClient& Client, double TimeoutSeconds, TFunctionRef<bool()> Condition);

	/**
	 * Checks Condition once per engine frame, letting a millisecond of real time pass between frames, and calls
	 * OnDone(true) when it holds or OnDone(false) after TimeoutSeconds of real time. For latent tests that need
	 * the engine's frames (deferred preset applies, component ticks) and real sockets at once.
	 */
	ORVANETRACKING_API void WaitForFrames(
		TFunction<bool()> Condition, double TimeoutSeconds, TFunction<void(bool)> OnDone);

	/** Removes every source from the client and waits until they are gone. */
	ORVANETRACKING_API bool RemoveAllSources(ILiveLinkClient& Client);

	/** Reads a file of the plug-in's tracking test data (Resources/TestData/Tracking/<RelativePath>). */
	ORVANETRACKING_API bool LoadTestData(const FString& RelativePath, TArray<uint8>& OutBytes);
} // namespace OrvaneTrackingTests

#endif
