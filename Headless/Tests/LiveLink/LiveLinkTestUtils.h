// Copyright Orvane. All Rights Reserved.

#pragma once

// Helpers shared by the Live Link suites: log capture and frames with chosen values and times.

#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "LiveLinkTypes.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/ScopeLock.h"
#include "Roles/LiveLinkCameraTypes.h"

namespace LiveLinkTestUtils
{
	/** Records what is logged while it is alive, from any thread. */
	class FLogCapture : public FOutputDevice
	{
	public:
		FLogCapture() { GLog->AddOutputDevice(this); }
		~FLogCapture() { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			FScopeLock Lock(&LinesLock);
			Lines.Add(FString(V));
			if (Verbosity <= ELogVerbosity::Warning)
			{
				Problems.Add(FString(V));
			}
		}

		/** How many lines contain Text. */
		int32 Count(const TCHAR* Text) const
		{
			FScopeLock Lock(&LinesLock);
			int32 Found = 0;
			for (const FString& Line : Lines)
			{
				Found += Line.Contains(Text, ESearchCase::CaseSensitive) ? 1 : 0;
			}
			return Found;
		}

		/** The warnings and errors, one per line. */
		FString ProblemsText() const
		{
			FScopeLock Lock(&LinesLock);
			return FString::Join(Problems, TEXT("\n"));
		}

		int32 NumProblems() const
		{
			FScopeLock Lock(&LinesLock);
			return Problems.Num();
		}

	private:
		mutable FCriticalSection LinesLock;
		TArray<FString> Lines;
		TArray<FString> Problems;
	};

	/** Camera static data that says which lens values its frames carry. */
	inline FLiveLinkStaticDataStruct MakeCameraStatic()
	{
		FLiveLinkStaticDataStruct Static(FLiveLinkCameraStaticData::StaticStruct());
		FLiveLinkCameraStaticData* Camera = Static.Cast<FLiveLinkCameraStaticData>();
		Camera->bIsFocalLengthSupported = true;
		Camera->bIsFocusDistanceSupported = true;
		return Static;
	}

	/** A camera frame with a focal length and an x location, stamped now on the platform clock. */
	inline FLiveLinkFrameDataStruct MakeCameraFrame(float FocalLength, double X = 0.0)
	{
		FLiveLinkFrameDataStruct Frame(FLiveLinkCameraFrameData::StaticStruct());
		FLiveLinkCameraFrameData* Camera = Frame.Cast<FLiveLinkCameraFrameData>();
		Camera->FocalLength = FocalLength;
		Camera->Transform.SetLocation(FVector(X, 0, 0));
		return Frame;
	}

	/** As above, stamped at a chosen platform time. */
	inline FLiveLinkFrameDataStruct MakeCameraFrameAt(double WorldTime, float FocalLength, double X = 0.0)
	{
		FLiveLinkFrameDataStruct Frame = MakeCameraFrame(FocalLength, X);
		Frame.GetBaseData()->WorldTime = FLiveLinkWorldTime(WorldTime, 0.0);
		return Frame;
	}

	inline float FocalLengthOf(const FLiveLinkSubjectFrameData& Frame)
	{
		const FLiveLinkCameraFrameData* Camera = Frame.FrameData.Cast<FLiveLinkCameraFrameData>();
		return Camera ? Camera->FocalLength : -1.f;
	}
} // namespace LiveLinkTestUtils
