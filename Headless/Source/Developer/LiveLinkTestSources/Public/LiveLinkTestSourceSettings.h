// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceSettings.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkTestSourceSettings.generated.h"

/** The settings class of the test source: a settings class of its own, with a value of its own. */
UCLASS()
class LIVELINKTESTSOURCES_API ULiveLinkTestSourceSettings : public ULiveLinkSourceSettings
{
	GENERATED_BODY()

public:
	/** A value only this settings class has, to see it survive copies and packages. */
	UPROPERTY(EditAnywhere, Category = "Test")
	FString Label;
};
