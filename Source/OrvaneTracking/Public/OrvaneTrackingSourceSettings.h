// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceSettings.h"

#include "OrvaneTrackingSourceSettings.generated.h"

/** How the zoom, focus and spare fields of FreeD packets are read. */
UENUM()
enum class EOrvaneFreeDLensEncoding : uint8
{
	/** Encoder counts in the maker's units; passed on as raw property values only. */
	Raw,
	/** Physical values: zoom is focal length in mm x 100, focus is distance in mm x 10, the low 12 spare bits are
	   f-stop x 100. */
	ScaledPhysical,
};

/**
 * Settings of the network tracking source. The factory and the connection string (the endpoint text) are
 * filled in by the source itself, so a preset that holds these settings re-creates the same source.
 */
UCLASS()
class ORVANETRACKING_API UOrvaneTrackingSourceSettings : public ULiveLinkSourceSettings
{
	GENERATED_BODY()

public:
	/** How FreeD lens fields are read. */
	UPROPERTY(EditAnywhere, Category = "FreeD")
	EOrvaneFreeDLensEncoding FreeDLensEncoding = EOrvaneFreeDLensEncoding::Raw;
};
