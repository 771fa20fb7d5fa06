// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "Misc/FrameRate.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkSubjectSettings.generated.h"

/** The settings of one subject the client keeps. */
UCLASS()
class LIVELINKINTERFACE_API ULiveLinkSubjectSettings : public UObject
{
	GENERATED_BODY()

public:
	/** The role the subject was created with. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLink")
	TSubclassOf<ULiveLinkRole> Role;

	/** The frame rate of the subject's timecode, as last seen. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLink")
	FFrameRate FrameRate;
};
