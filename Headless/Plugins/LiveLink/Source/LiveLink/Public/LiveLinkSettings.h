// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSourceSettings.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPtr.h"

#include "LiveLinkSettings.generated.h"

/** The project's Live Link settings, stored in DefaultGame.ini. */
UCLASS(config = Game, defaultconfig)
class LIVELINK_API ULiveLinkSettings : public UObject
{
	GENERATED_BODY()

public:
	/** The preset applied to the Live Link client when the engine has started. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink")
	TSoftObjectPtr<ULiveLinkPreset> DefaultLiveLinkPreset;

	/** How far the estimated clock offset of a message bus source moves per frame, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	float ClockOffsetCorrectionStep = 100e-6f;

	/** The mode of message bus sources created without a preset. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	ELiveLinkSourceMode DefaultMessageBusSourceMode = ELiveLinkSourceMode::EngineTime;

	/** How often a message bus source is looked for, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	double MessageBusPingRequestFrequency = 1.0;

	/** How often a message bus provider says it is alive, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	double MessageBusHeartbeatFrequency = 1.0;

	/** How long without a heartbeat before a message bus source is considered gone, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	double MessageBusHeartbeatTimeout = 2.0;

	/** How long a message bus source may be gone before it is removed, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	double MessageBusTimeBeforeRemovingInactiveSource = 5.0;

	/** How long a subject may go without a frame before it counts as no longer valid, in seconds. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink", AdvancedDisplay)
	double TimeWithoutFrameToBeConsiderAsInvalid = 0.5;

	double GetTimeWithoutFrameToBeConsiderAsInvalid() const { return TimeWithoutFrameToBeConsiderAsInvalid; }
	double GetMessageBusPingRequestFrequency() const { return MessageBusPingRequestFrequency; }
	double GetMessageBusHeartbeatFrequency() const { return MessageBusHeartbeatFrequency; }
	double GetMessageBusHeartbeatTimeout() const { return MessageBusHeartbeatTimeout; }
	double GetMessageBusTimeBeforeRemovingDeadSource() const { return MessageBusTimeBeforeRemovingInactiveSource; }
};
