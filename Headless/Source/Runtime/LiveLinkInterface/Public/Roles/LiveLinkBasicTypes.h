// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkTypes.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkBasicTypes.generated.h"

/** The data of the basic role as handed to Blueprints. */
USTRUCT(BlueprintType)
struct FLiveLinkBasicBlueprintData : public FLiveLinkBaseBlueprintData
{
	GENERATED_BODY()

	/** The subject's static data. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkBaseStaticData StaticData;

	/** The evaluated frame. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkBaseFrameData FrameData;
};
