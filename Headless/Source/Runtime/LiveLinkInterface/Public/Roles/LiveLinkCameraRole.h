// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Roles/LiveLinkTransformRole.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkCameraRole.generated.h"

/** The role of subjects that carry a camera: a transform and lens values. */
UCLASS(BlueprintType, meta = (DisplayName = "Camera Role"))
class LIVELINKINTERFACE_API ULiveLinkCameraRole : public ULiveLinkTransformRole
{
	GENERATED_BODY()

public:
	virtual UScriptStruct* GetStaticDataStruct() const override;
	virtual UScriptStruct* GetFrameDataStruct() const override;
	virtual UScriptStruct* GetBlueprintDataStruct() const override;
	virtual bool InitializeBlueprintData(
		const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const override;
	virtual FText GetDisplayName() const override;
};
