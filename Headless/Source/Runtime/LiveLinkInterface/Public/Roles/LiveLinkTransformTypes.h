// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkTypes.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkTransformTypes.generated.h"

/** The static data of the transform role: which parts of the transform the source sends. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkTransformStaticData : public FLiveLinkBaseStaticData
{
	GENERATED_BODY()

	/** The frames' location is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bIsLocationSupported = true;

	/** The frames' rotation is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bIsRotationSupported = true;

	/** The frames' scale is meaningful. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	bool bIsScaleSupported = false;
};

/** A frame of the transform role. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkTransformFrameData : public FLiveLinkBaseFrameData
{
	GENERATED_BODY()

	/** The transform, in centimetres and the engine's axes. */
	FTransform Transform;
};

/** The data of the transform role as handed to Blueprints. */
USTRUCT(BlueprintType)
struct FLiveLinkTransformBlueprintData : public FLiveLinkBaseBlueprintData
{
	GENERATED_BODY()

	/** The subject's static data. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkTransformStaticData StaticData;

	/** The evaluated frame. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkTransformFrameData FrameData;
};
