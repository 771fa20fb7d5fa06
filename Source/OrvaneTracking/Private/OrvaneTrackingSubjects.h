// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "OrvaneTrackingSourceSettings.h"

#include <atomic>

class ILiveLinkClient;

/**
 * Turns decoded samples into camera-role subjects of one source. Used by the receive thread only, except
 * for the lens encoding, which the game thread may change at any time.
 *
 * Each camera stream (protocol and camera number) is one subject, named by FOrvaneTrackingSource::MakeSubjectName.
 * Static data is pushed when a subject is
 * first seen and again only when it changes, because a static push clears the subject's buffered frames.
 */
class FOrvaneTrackingSubjects
{
public:
	FOrvaneTrackingSubjects(ILiveLinkClient& InClient, const FGuid& InSourceGuid);

	/** Pushes the sample as a frame of its subject, and the subject's static data first if it changed. */
	void Push(const FOrvaneTrackingSample& Sample, double ReceiptSeconds);

	/** Sets how FreeD lens fields are read. */
	void SetFreeDLensEncoding(EOrvaneFreeDLensEncoding Encoding);

private:
	/** What a subject's static data says; compared to decide whether to push it again. */
	struct FStaticState
	{
		bool bIsLocationSupported = false;
		bool bIsRotationSupported = false;
		bool bIsFocalLengthSupported = false;
		bool bIsApertureSupported = false;
		bool bIsFocusDistanceSupported = false;
		bool bHasRawEncoders = false;
		float FilmBackWidth = 0.0f;
		float FilmBackHeight = 0.0f;

		bool operator==(const FStaticState& Other) const = default;
	};

	/** One camera stream. */
	struct FSubject
	{
		FName Name;
		bool bStaticPushed = false;
		FStaticState Static;
		/** Filmback from the last static block; OpenTrackIO sends it only every few seconds. */
		float FilmBackWidth = 0.0f;
		float FilmBackHeight = 0.0f;
	};

	/** Lens values of a sample in physical units, after the FreeD lens encoding is applied. */
	struct FLens
	{
		TOptional<float> FocalLength;
		TOptional<float> Aperture;
		TOptional<float> FocusDistance;
	};

	FSubject& FindOrAddSubject(const FOrvaneTrackingSample& Sample);
	FLens ReadLens(const FOrvaneTrackingSample& Sample) const;
	FStaticState MakeStaticState(const FOrvaneTrackingSample& Sample, const FLens& Lens, FSubject& Subject) const;
	void PushStaticData(const FSubject& Subject) const;
	void PushFrameData(
		const FSubject& Subject, const FOrvaneTrackingSample& Sample, const FLens& Lens, double ReceiptSeconds) const;

	ILiveLinkClient& Client;
	const FGuid SourceGuid;
	std::atomic<EOrvaneFreeDLensEncoding> FreeDLensEncoding{EOrvaneFreeDLensEncoding::Raw};
	TMap<uint64, FSubject> SubjectsByStream;
};
