// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingSubjects.h"

#include "ILiveLinkClient.h"
#include "Misc/QualifiedFrameTime.h"
#include "Misc/Timecode.h"
#include "OrvaneTrackingSource.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"

namespace OrvaneTrackingSubjects
{
	/** Names of the raw FreeD encoder values carried as property values, for lens files or Blueprints. */
	const FName RawZoomName(TEXT("RawZoom"));
	const FName RawFocusName(TEXT("RawFocus"));
	const FName RawUserName(TEXT("RawUser"));

	/**
	 * The position inside the timecode frame. Trackers that sample faster than the timecode count sub-frames;
	 * how many make one frame follows from the two rates.
	 */
	float GetSubframeFraction(const FOrvaneTrackingSample& Sample)
	{
		const FOrvaneTrackingTimecode& Timecode = Sample.Timecode.GetValue();
		if (Timecode.Subframe == 0 || !Sample.SampleRate.IsSet() || Timecode.Rate.Numerator == 0 ||
			Sample.SampleRate->Denominator == 0 || Timecode.Rate.Denominator == 0)
		{
			return 0.0f;
		}
		const double SampleRate = double(Sample.SampleRate->Numerator) / double(Sample.SampleRate->Denominator);
		const double TimecodeRate = double(Timecode.Rate.Numerator) / double(Timecode.Rate.Denominator);
		const double SubframesPerFrame = SampleRate / TimecodeRate;
		return SubframesPerFrame > 1.0
				   ? static_cast<float>(FMath::Clamp(Timecode.Subframe / SubframesPerFrame, 0.0, 0.999))
				   : 0.0f;
	}

	uint64 MakeStreamKey(const FOrvaneTrackingSample& Sample)
	{
		return (static_cast<uint64>(Sample.Protocol) << 32) | Sample.SourceNumber;
	}
} // namespace OrvaneTrackingSubjects

FOrvaneTrackingSubjects::FOrvaneTrackingSubjects(ILiveLinkClient& InClient, const FGuid& InSourceGuid)
	: Client(InClient)
	, SourceGuid(InSourceGuid)
{
}

void FOrvaneTrackingSubjects::SetFreeDLensEncoding(EOrvaneFreeDLensEncoding Encoding)
{
	FreeDLensEncoding.store(Encoding, std::memory_order_relaxed);
}

void FOrvaneTrackingSubjects::Push(const FOrvaneTrackingSample& Sample, double ReceiptSeconds)
{
	FSubject& Subject = FindOrAddSubject(Sample);
	const FLens Lens = ReadLens(Sample);
	const FStaticState Static = MakeStaticState(Sample, Lens, Subject);
	if (!Subject.bStaticPushed || !(Static == Subject.Static))
	{
		Subject.Static = Static;
		Subject.bStaticPushed = true;
		PushStaticData(Subject);
	}
	PushFrameData(Subject, Sample, Lens, ReceiptSeconds);
}

FOrvaneTrackingSubjects::FSubject& FOrvaneTrackingSubjects::FindOrAddSubject(const FOrvaneTrackingSample& Sample)
{
	FSubject& Subject = SubjectsByStream.FindOrAdd(OrvaneTrackingSubjects::MakeStreamKey(Sample));
	if (Subject.Name.IsNone())
	{
		Subject.Name = FOrvaneTrackingSource::MakeSubjectName(Sample);
	}
	return Subject;
}

FOrvaneTrackingSubjects::FLens FOrvaneTrackingSubjects::ReadLens(const FOrvaneTrackingSample& Sample) const
{
	FLens Lens;
	if (Sample.Protocol != EOrvaneTrackingProtocol::FreeD)
	{
		Lens.FocalLength = Sample.FocalLength;
		Lens.Aperture = Sample.Aperture;
		Lens.FocusDistance = Sample.FocusDistance;
		return Lens;
	}

	if (FreeDLensEncoding.load(std::memory_order_relaxed) == EOrvaneFreeDLensEncoding::ScaledPhysical)
	{
		// Zoom in 1/100 mm, focus in 1/10 mm, f-stop x 100 in the low 12 spare bits.
		if (Sample.RawZoomEncoder.IsSet())
		{
			Lens.FocalLength = static_cast<float>(Sample.RawZoomEncoder.GetValue()) / 100.0f;
		}
		if (Sample.RawFocusEncoder.IsSet())
		{
			Lens.FocusDistance = static_cast<float>(Sample.RawFocusEncoder.GetValue()) / 100.0f;
		}
		if (Sample.UserData.IsSet() && (Sample.UserData.GetValue() & 0x0FFF) != 0)
		{
			Lens.Aperture = static_cast<float>(Sample.UserData.GetValue() & 0x0FFF) / 100.0f;
		}
	}
	return Lens;
}

FOrvaneTrackingSubjects::FStaticState FOrvaneTrackingSubjects::MakeStaticState(
	const FOrvaneTrackingSample& Sample, const FLens& Lens, FSubject& Subject) const
{
	if (Sample.FilmbackWidth.IsSet() && Sample.FilmbackHeight.IsSet())
	{
		Subject.FilmBackWidth = Sample.FilmbackWidth.GetValue();
		Subject.FilmBackHeight = Sample.FilmbackHeight.GetValue();
	}

	FStaticState Static;
	Static.bIsLocationSupported = Sample.bHasTransform;
	Static.bIsRotationSupported = Sample.bHasTransform;
	Static.bIsFocalLengthSupported = Lens.FocalLength.IsSet();
	Static.bIsApertureSupported = Lens.Aperture.IsSet();
	Static.bIsFocusDistanceSupported = Lens.FocusDistance.IsSet();
	Static.bHasRawEncoders = Sample.Protocol == EOrvaneTrackingProtocol::FreeD;
	Static.FilmBackWidth = Subject.FilmBackWidth;
	Static.FilmBackHeight = Subject.FilmBackHeight;
	return Static;
}

void FOrvaneTrackingSubjects::PushStaticData(const FSubject& Subject) const
{
	FLiveLinkStaticDataStruct StaticData(FLiveLinkCameraStaticData::StaticStruct());
	FLiveLinkCameraStaticData& Camera = *StaticData.Cast<FLiveLinkCameraStaticData>();
	const FStaticState& Static = Subject.Static;
	Camera.bIsLocationSupported = Static.bIsLocationSupported;
	Camera.bIsRotationSupported = Static.bIsRotationSupported;
	Camera.bIsScaleSupported = false;
	// A cine camera derives its field of view from focal length and filmback; sending both would fight.
	Camera.bIsFieldOfViewSupported = false;
	Camera.bIsAspectRatioSupported = false;
	Camera.bIsProjectionModeSupported = false;
	Camera.bIsFocalLengthSupported = Static.bIsFocalLengthSupported;
	Camera.bIsApertureSupported = Static.bIsApertureSupported;
	Camera.bIsFocusDistanceSupported = Static.bIsFocusDistanceSupported;
	Camera.FilmBackWidth = Static.FilmBackWidth;
	Camera.FilmBackHeight = Static.FilmBackHeight;
	if (Static.bHasRawEncoders)
	{
		Camera.PropertyNames = {OrvaneTrackingSubjects::RawZoomName, OrvaneTrackingSubjects::RawFocusName,
			OrvaneTrackingSubjects::RawUserName};
	}
	Client.PushSubjectStaticData_AnyThread(
		FLiveLinkSubjectKey(SourceGuid, Subject.Name), ULiveLinkCameraRole::StaticClass(), MoveTemp(StaticData));
}

void FOrvaneTrackingSubjects::PushFrameData(
	const FSubject& Subject, const FOrvaneTrackingSample& Sample, const FLens& Lens, double ReceiptSeconds) const
{
	FLiveLinkFrameDataStruct FrameData(FLiveLinkCameraFrameData::StaticStruct());
	FLiveLinkCameraFrameData& Camera = *FrameData.Cast<FLiveLinkCameraFrameData>();
	Camera.WorldTime = FLiveLinkWorldTime(ReceiptSeconds, 0.0);
	if (Sample.bHasTransform)
	{
		Camera.Transform = Sample.Transform;
	}
	if (Lens.FocalLength.IsSet())
	{
		Camera.FocalLength = Lens.FocalLength.GetValue();
	}
	if (Lens.Aperture.IsSet())
	{
		Camera.Aperture = Lens.Aperture.GetValue();
	}
	if (Lens.FocusDistance.IsSet())
	{
		Camera.FocusDistance = Lens.FocusDistance.GetValue();
	}
	if (Sample.Timecode.IsSet())
	{
		const FOrvaneTrackingTimecode& Timecode = Sample.Timecode.GetValue();
		const FFrameRate Rate(Timecode.Rate.Numerator, Timecode.Rate.Denominator);
		FTimecode EngineTimecode(
			Timecode.Hours, Timecode.Minutes, Timecode.Seconds, Timecode.Frames, Timecode.bDropFrame);
		EngineTimecode.Subframe = OrvaneTrackingSubjects::GetSubframeFraction(Sample);
		Camera.MetaData.SceneTime = FQualifiedFrameTime(EngineTimecode, Rate);
	}
	if (Subject.Static.bHasRawEncoders)
	{
		Camera.PropertyValues = {static_cast<float>(Sample.RawZoomEncoder.Get(0)),
			static_cast<float>(Sample.RawFocusEncoder.Get(0)), static_cast<float>(Sample.UserData.Get(0))};
	}
	Client.PushSubjectFrameData_AnyThread(FLiveLinkSubjectKey(SourceGuid, Subject.Name), MoveTemp(FrameData));
}
