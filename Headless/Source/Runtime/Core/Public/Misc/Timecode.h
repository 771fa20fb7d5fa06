// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Misc/FrameNumber.h"
#include "Misc/FrameRate.h"
#include "Misc/Timespan.h"

/**
 * A SMPTE timecode: hours, minutes, seconds and frames (and a sub-frame) of a frame rate kept elsewhere. With
 * bDropFrameFormat, the 29.97 and 59.94 fps rates skip frame labels (2 or 4 at the start of each minute that is
 * not a multiple of ten) so the label keeps up with the wall clock. A negative timecode has negative fields.
 */
struct FTimecode
{
	FTimecode()
		: Hours(0)
		, Minutes(0)
		, Seconds(0)
		, Frames(0)
		, Subframe(0.f)
		, bDropFrameFormat(false)
	{
	}

	FTimecode(int32 InHours, int32 InMinutes, int32 InSeconds, int32 InFrames, bool bInDropFrame)
		: Hours(InHours)
		, Minutes(InMinutes)
		, Seconds(InSeconds)
		, Frames(InFrames)
		, Subframe(0.f)
		, bDropFrameFormat(bInDropFrame)
	{
	}

	FTimecode(int32 InHours, int32 InMinutes, int32 InSeconds, int32 InFrames, float InSubframe, bool bInDropFrame)
		: Hours(InHours)
		, Minutes(InMinutes)
		, Seconds(InSeconds)
		, Frames(InFrames)
		, Subframe(InSubframe)
		, bDropFrameFormat(bInDropFrame)
	{
	}

	/** The timecode of a time in seconds; with bInRollover the hours wrap at 24. */
	CORE_API explicit FTimecode(double InSeconds, const FFrameRate& InFrameRate, bool bInDropFrame, bool bInRollover);

	/** As above, in drop-frame format when UseDropFormatTimecode(InFrameRate) says so. */
	CORE_API explicit FTimecode(double InSeconds, const FFrameRate& InFrameRate, bool bInRollover);

	friend bool operator==(const FTimecode& A, const FTimecode& B)
	{
		return A.Hours == B.Hours && A.Minutes == B.Minutes && A.Seconds == B.Seconds && A.Frames == B.Frames &&
			   A.Subframe == B.Subframe && A.bDropFrameFormat == B.bDropFrameFormat;
	}
	friend bool operator!=(const FTimecode& A, const FTimecode& B) { return !(A == B); }

	/** The frame this timecode labels on InFrameRate's grid (the sub-frame is not part of it). */
	CORE_API FFrameNumber ToFrameNumber(const FFrameRate& InFrameRate) const;

	/** The timecode labelling a frame; bInDropFrame is honoured only where the rate supports drop frames. */
	static CORE_API FTimecode FromFrameNumber(
		const FFrameNumber& InFrameNumber, const FFrameRate& InFrameRate, bool bInDropFrame);

	/** The timecode labelling a frame, in drop-frame format when UseDropFormatTimecode(InFrameRate) says so. */
	static CORE_API FTimecode FromFrameNumber(const FFrameNumber& InFrameNumber, const FFrameRate& InFrameRate);

	/** The time from zero to this timecode. */
	CORE_API FTimespan ToTimespan(const FFrameRate& InFrameRate) const;

	/** The timecode of a time span; with bInRollover the hours wrap at 24. */
	static CORE_API FTimecode FromTimespan(
		const FTimespan& InTimespan, const FFrameRate& InFrameRate, bool bInDropFrame, bool bInRollover);

	/**
	 * "hh:mm:ss:ff", or "hh:mm:ss;ff" in drop-frame format. The sign is shown for negative timecodes, or always
	 * with bForceSignDisplay; the sub-frame is appended (".ss", hundredths) with bAlwaysDisplaySubframe.
	 */
	CORE_API FString ToString(bool bForceSignDisplay = false, bool bAlwaysDisplaySubframe = false) const;

	/** True for the rates drop-frame timecode exists for: 29.97 and 59.94 fps. */
	static CORE_API bool IsDropFormatTimecodeSupported(const FFrameRate& InFrameRate);

	/** True when a rate's timecodes are shown in drop-frame format by default (wherever it is supported). */
	static CORE_API bool UseDropFormatTimecode(const FFrameRate& InFrameRate);

	/** Whether drop-frame format is the default for the rates that support it. */
	static CORE_API bool UseDropFormatTimecodeByDefaultWhenSupported();

	int32 Hours;
	int32 Minutes;
	int32 Seconds;
	int32 Frames;

	/** The fraction of the next frame, in [0, 1). */
	float Subframe;

	/** True when the frame labels skip as drop-frame timecode does. */
	bool bDropFrameFormat;
};
