// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceFactory.h"
#include "LiveLinkTypes.h"
#include "Misc/FrameRate.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkSourceSettings.generated.h"

/** How the client picks the frame of a subject it hands out each engine frame. */
UENUM(BlueprintType)
enum class ELiveLinkSourceMode : uint8
{
	/** The newest frame, without interpolation or synchronisation. */
	Latest,
	/** The frame at the engine's time (minus an offset), interpolated between the frames around it. */
	EngineTime,
	/** The frame at the engine's timecode. */
	Timecode,
};

/** How a source's frames are buffered and which of them are read. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkSourceBufferManagementSettings
{
	GENERATED_BODY()

	/** Drop frames older than ValidEngineTime. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	bool bValidEngineTimeEnabled = false;

	/** With bValidEngineTimeEnabled, frames older than this many seconds are dropped. */
	UPROPERTY(EditAnywhere, Category = "Settings", meta = (ClampMin = "0.5", UIMin = "0.5"))
	float ValidEngineTime = 1.0f;

	/** In EngineTime mode, how many seconds behind the engine's time frames are read. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	float EngineTimeOffset = 0.0f;

	/** The measured offset from the source's clock to the engine's, in seconds. */
	UPROPERTY(VisibleAnywhere, Transient, Category = "Settings")
	double EngineTimeClockOffset = 0.0;

	/** The smoothed engine time offset, in seconds. */
	UPROPERTY(VisibleAnywhere, Transient, Category = "Settings")
	double SmoothEngineTimeOffset = 0.0;

	/** In Timecode mode, make sub-frames between whole frames. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	bool bGenerateSubFrame = false;

	/** The frame rate found in the subjects' timecode. */
	UPROPERTY(VisibleAnywhere, Category = "Settings")
	FFrameRate DetectedFrameRate = FFrameRate(24, 1);

	/** In Latest mode, follow the timecode's clock offset to play the newest frames smoothly. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	bool bUseTimecodeSmoothLatest = false;

	/** The frame rate of the source's timecode. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	FFrameRate SourceTimecodeFrameRate = FFrameRate(24, 1);

	/** Drop frames older than ValidTimecodeFrame frames. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	bool bValidTimecodeFrameEnabled = false;

	/** With bValidTimecodeFrameEnabled, frames older than this many frames are dropped. */
	UPROPERTY(EditAnywhere, Category = "Settings", meta = (ClampMin = "1", UIMin = "1"))
	int32 ValidTimecodeFrame = 30;

	/** In Timecode mode, how many frames behind the engine's timecode frames are read. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	float TimecodeFrameOffset = 0.f;

	/** The measured offset from the source's timecode clock to the engine's, in seconds. */
	UPROPERTY(VisibleAnywhere, Transient, Category = "Settings")
	double TimecodeClockOffset = 0.0;

	/** In Latest mode, how many frames back from the newest one are read. */
	UPROPERTY(EditAnywhere, Category = "Settings", meta = (ClampMin = "0", UIMin = "0"))
	int32 LatestOffset = 0;

	/** The most frames kept per subject; older ones are dropped. */
	UPROPERTY(EditAnywhere, Category = "Settings", meta = (ClampMin = "1", UIMin = "1"))
	int32 MaxNumberOfFrameToBuffered = 10;

	/** Never drop a subject's last frame, however old it is. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	bool bKeepAtLeastOneFrame = true;
};

/** The settings of one source: how its frames are read, and what re-creates it from a preset. */
UCLASS()
class LIVELINKINTERFACE_API ULiveLinkSourceSettings : public UObject
{
	GENERATED_BODY()

public:
	/** How the client picks the frame it hands out. */
	UPROPERTY(EditAnywhere, Category = "Mode")
	ELiveLinkSourceMode Mode = ELiveLinkSourceMode::EngineTime;

	/** Buffering and time offsets. */
	UPROPERTY(EditAnywhere, Category = "Buffer - Settings", meta = (ShowOnlyInnerProperties))
	FLiveLinkSourceBufferManagementSettings BufferSettings;

	/** What the factory needs to create the source again from a preset. */
	UPROPERTY(VisibleAnywhere, Category = "Settings", AdvancedDisplay)
	FString ConnectionString;

	/** The factory that creates the source again from a preset. */
	UPROPERTY(VisibleAnywhere, Category = "Settings", AdvancedDisplay)
	TSubclassOf<ULiveLinkSourceFactory> Factory;

	/** A subject whose timing this source's subjects follow. */
	UPROPERTY(EditAnywhere, Category = "Settings")
	FLiveLinkSubjectName ParentSubject;

#if WITH_EDITOR
	virtual bool CanEditChange(const FProperty* InProperty) const override;
#endif
};
