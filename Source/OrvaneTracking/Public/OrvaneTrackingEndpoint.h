// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"

/**
 * The text form of a tracking endpoint, "address:port": a dotted IPv4 address (0.0.0.0 listens on every
 * interface, a multicast address joins that group) and a port from 1 to 65535. The same text is the
 * connection string a preset stores, so it is parsed strictly: what is accepted here always round-trips.
 */
struct ORVANETRACKING_API FOrvaneTrackingEndpoint
{
	/** The endpoint used when nothing else is given. */
	static const TCHAR* DefaultText;

	/**
	 * Parses Text. On failure returns false and sets OutError to a sentence that quotes the text and says
	 * what is wrong with it.
	 */
	static bool Parse(const FString& Text, FIPv4Endpoint& OutEndpoint, FString& OutError);

	/** True when Text parses. */
	static bool IsValid(const FString& Text);
};
