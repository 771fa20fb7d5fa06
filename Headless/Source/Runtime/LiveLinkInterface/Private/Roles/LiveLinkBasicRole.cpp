// Copyright Orvane. All Rights Reserved.

#include "Roles/LiveLinkBasicRole.h"

#include "Roles/LiveLinkBasicTypes.h"

UScriptStruct* ULiveLinkBasicRole::GetStaticDataStruct() const
{
	return FLiveLinkBaseStaticData::StaticStruct();
}

UScriptStruct* ULiveLinkBasicRole::GetFrameDataStruct() const
{
	return FLiveLinkBaseFrameData::StaticStruct();
}

UScriptStruct* ULiveLinkBasicRole::GetBlueprintDataStruct() const
{
	return FLiveLinkBasicBlueprintData::StaticStruct();
}

bool ULiveLinkBasicRole::InitializeBlueprintData(
	const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const
{
	FLiveLinkBasicBlueprintData* BlueprintData = OutBlueprintData.Cast<FLiveLinkBasicBlueprintData>();
	const FLiveLinkBaseStaticData* StaticData = InSourceData.StaticData.Cast<FLiveLinkBaseStaticData>();
	const FLiveLinkBaseFrameData* FrameData = InSourceData.FrameData.Cast<FLiveLinkBaseFrameData>();
	if (BlueprintData == nullptr || StaticData == nullptr || FrameData == nullptr)
	{
		return false;
	}
	BlueprintData->StaticData = *StaticData;
	BlueprintData->FrameData = *FrameData;
	return true;
}

FText ULiveLinkBasicRole::GetDisplayName() const
{
	return FText::FromString(TEXT("Basic"));
}
