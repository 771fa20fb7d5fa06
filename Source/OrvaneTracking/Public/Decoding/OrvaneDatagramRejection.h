// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Why a datagram (or an unfinished segmented payload) was dropped instead of becoming a sample. */
enum class EOrvaneDatagramRejection : uint8
{
	/** Too short, too long, or the length in the header disagrees with the datagram. */
	Length,
	/** The checksum does not match the bytes. */
	Checksum,
	/** A known framing carrying a message or encoding we do not use (other FreeD types, vendor encodings). */
	UnknownType,
	/** Neither a FreeD message nor an OTrk header, or a header field that cannot be right. */
	BadHeader,
	/** The payload names another protocol, or a major version we do not speak. */
	UnsupportedVersion,
	/** A segmented payload that could not be completed: hole, overlap, mixed encodings, or a new payload began. */
	SegmentBookkeeping,
	/** A segmented payload larger than the reassembly cap. */
	Oversize,
	/** The payload is not a well-formed sample: bad JSON/CBOR, wrong types, values out of range. */
	MalformedPayload,
	/** The same datagram arrived again; it is processed once. */
	Duplicate,
	/** A datagram older than one already used, that completes nothing. */
	OutOfOrder,

	Num
};

/** A short English name for a rejection reason, for status text and logs. */
ORVANETRACKING_API const TCHAR* LexToString(EOrvaneDatagramRejection Rejection);
