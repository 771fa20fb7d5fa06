// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkBasicRole.generated.h"

/** The role of subjects that carry only named float properties. */
UCLASS(BlueprintType, meta = (DisplayName = "Basic Role"))
class LIVELINKINTERFACE_API ULiveLinkBasicRole : public ULiveLinkRole
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
