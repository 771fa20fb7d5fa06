// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkPreset.h"
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
	/** The preset applied to the Live Link client when the editor starts. */
	UPROPERTY(config, EditAnywhere, Category = "LiveLink")
	TSoftObjectPtr<ULiveLinkPreset> DefaultLiveLinkPreset;
};
