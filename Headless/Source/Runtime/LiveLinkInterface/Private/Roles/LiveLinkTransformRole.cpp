// Copyright Orvane. All Rights Reserved.

#include "Roles/LiveLinkTransformRole.h"

#include "Roles/LiveLinkTransformTypes.h"

UScriptStruct* ULiveLinkTransformRole::GetStaticDataStruct() const
{
	return FLiveLinkTransformStaticData::StaticStruct();
}

UScriptStruct* ULiveLinkTransformRole::GetFrameDataStruct() const
{
	return FLiveLinkTransformFrameData::StaticStruct();
}

UScriptStruct* ULiveLinkTransformRole::GetBlueprintDataStruct() const
{
	return FLiveLinkTransformBlueprintData::StaticStruct();
}

bool ULiveLinkTransformRole::InitializeBlueprintData(
	const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const
{
	FLiveLinkTransformBlueprintData* BlueprintData = OutBlueprintData.Cast<FLiveLinkTransformBlueprintData>();
	const FLiveLinkTransformStaticData* StaticData = InSourceData.StaticData.Cast<FLiveLinkTransformStaticData>();
	const FLiveLinkTransformFrameData* FrameData = InSourceData.FrameData.Cast<FLiveLinkTransformFrameData>();
	if (BlueprintData == nullptr || StaticData == nullptr || FrameData == nullptr)
	{
		return false;
	}
	BlueprintData->StaticData = *StaticData;
	BlueprintData->FrameData = *FrameData;
	return true;
}

FText ULiveLinkTransformRole::GetDisplayName() const
{
	return FText::FromString(TEXT("Transform"));
}
