// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Decoding/OrvaneDatagramRejection.h"
#include "Misc/Optional.h"

class FJsonValue;
struct FOrvaneTrackingSample;

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	class FPayloadTree;

	/**
	 * Reads an OpenTrackIO sample, already parsed into a tree, into the engine's units and axes. Every field
	 * is optional, as the protocol says; a field that is present must have the type and range the protocol
	 * gives it, or the whole sample is rejected. Both overloads apply the same rules, so a sample decodes to
	 * the same values from JSON and from CBOR.
	 * @return unset on success (OutSample replaced), else why the sample was rejected (OutSample untouched)
	 */
	TOptional<EOrvaneDatagramRejection> MapSample(const FJsonValue& Root, FOrvaneTrackingSample& OutSample);
	TOptional<EOrvaneDatagramRejection> MapSample(const FPayloadTree& Tree, FOrvaneTrackingSample& OutSample);
} // namespace UE::OrvaneTracking::OpenTrackIO::Private
