// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkTransformRole.generated.h"

/** The role of subjects that carry one transform. */
UCLASS(BlueprintType, meta = (DisplayName = "Transform Role"))
class LIVELINKINTERFACE_API ULiveLinkTransformRole : public ULiveLinkRole
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
