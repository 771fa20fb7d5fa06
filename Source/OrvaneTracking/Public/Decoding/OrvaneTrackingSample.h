// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/Transform.h"
#include "Misc/Optional.h"

/** The wire format a tracking sample arrived in. */
enum class EOrvaneTrackingProtocol : uint8
{
	/** A 29-byte FreeD D1 position/orientation message. */
	FreeD,
	/** An OpenTrackIO 1.x sample, JSON or CBOR, behind the 16-byte OTrk header. */
	OpenTrackIO,
};

/** A rate or duration given as an exact fraction, as trackers send it (e.g. 24000/1001). */
struct FOrvaneTrackingRational
{
	uint32 Numerator = 0;
	uint32 Denominator = 1;

	bool operator==(const FOrvaneTrackingRational& Other) const = default;
};

/** A timecode as the tracker stamped it; kept apart from the engine's timecode types so decoding stays plain. */
struct FOrvaneTrackingTimecode
{
	int32 Hours = 0;
	int32 Minutes = 0;
	int32 Seconds = 0;
	int32 Frames = 0;
	/** Sub-frame index within the frame, when the tracker samples faster than the timecode rate. */
	uint32 Subframe = 0;
	bool bDropFrame = false;
	/** The timecode's own frame rate, which may differ from the sample rate. */
	FOrvaneTrackingRational Rate;

	bool operator==(const FOrvaneTrackingTimecode& Other) const = default;
};

/** A PTP instant: whole seconds since the PTP epoch and the nanoseconds past them. */
struct FOrvaneTrackingTimestamp
{
	uint64 Seconds = 0;
	uint32 Nanoseconds = 0;

	bool operator==(const FOrvaneTrackingTimestamp& Other) const = default;
};

/**
 * One decoded tracking sample, already in the engine's units and axes: centimetres, degrees,
 * left-handed X forward, Y right, Z up. Every optional member is set only when the wire carried it.
 */
struct FOrvaneTrackingSample
{
	EOrvaneTrackingProtocol Protocol = EOrvaneTrackingProtocol::FreeD;

	/** FreeD camera id, or OpenTrackIO sourceNumber. */
	uint32 SourceNumber = 0;
	/** OpenTrackIO sourceId (a urn:uuid string); empty for FreeD. */
	FString SourceId;
	/** OpenTrackIO sampleId (a urn:uuid string); empty for FreeD. */
	FString SampleId;

	/** Camera pose relative to the stage origin. Meaningful only when bHasTransform is true. */
	FTransform Transform = FTransform::Identity;
	bool bHasTransform = false;

	/** Focal length in millimetres. */
	TOptional<float> FocalLength;
	/** Aperture as an f-stop. */
	TOptional<float> Aperture;
	/** Focus distance in centimetres. */
	TOptional<float> FocusDistance;
	/** Sensor width in millimetres. */
	TOptional<float> FilmbackWidth;
	/** Sensor height in millimetres. */
	TOptional<float> FilmbackHeight;
	/** Entrance pupil offset in centimetres along the optical axis; already applied to Transform. */
	TOptional<float> EntrancePupilOffset;

	/** Raw zoom encoder value (FreeD: unsigned 24-bit; OpenTrackIO: rawEncoders.zoom). */
	TOptional<uint32> RawZoomEncoder;
	/** Raw focus encoder value (FreeD: unsigned 24-bit; OpenTrackIO: rawEncoders.focus). */
	TOptional<uint32> RawFocusEncoder;
	/** Raw iris encoder value (OpenTrackIO: rawEncoders.iris). */
	TOptional<uint32> RawIrisEncoder;
	/** FreeD's 16 spare bits, whose meaning depends on the vendor (often iris). */
	TOptional<uint16> UserData;
	/** Normalized zoom encoder, 0 wide to 1 tele. */
	TOptional<float> NormalizedZoom;
	/** Normalized focus encoder, 0 infinity to 1 closest. */
	TOptional<float> NormalizedFocus;
	/** Normalized iris encoder, 0 open to 1 closed. */
	TOptional<float> NormalizedIris;

	/** Timecode of the sample. */
	TOptional<FOrvaneTrackingTimecode> Timecode;
	/** The tracker's own sample counter (OpenTrackIO timing.sequenceNumber). */
	TOptional<uint32> SampleSequenceNumber;
	/** Samples per second as a fraction. */
	TOptional<FOrvaneTrackingRational> SampleRate;
	/** PTP instant at which the sample was captured. */
	TOptional<FOrvaneTrackingTimestamp> SampleTimestamp;
	/** Tracker status text, e.g. "Optical Good". */
	FString TrackerStatus;

	/** True when the sample carried a static block; the identity strings below come from it. */
	bool bHasStatic = false;
	FString CameraMake;
	FString CameraModel;
	FString CameraLabel;
	FString CameraSerialNumber;
	FString LensMake;
	FString LensModel;
	/** Capture frame rate of the camera, from the static block. */
	TOptional<FOrvaneTrackingRational> CaptureFrameRate;
};
