// Copyright Orvane. All Rights Reserved.

#include "Roles/LiveLinkCameraRole.h"

#include "Roles/LiveLinkCameraTypes.h"

UScriptStruct* ULiveLinkCameraRole::GetStaticDataStruct() const
{
	return FLiveLinkCameraStaticData::StaticStruct();
}

UScriptStruct* ULiveLinkCameraRole::GetFrameDataStruct() const
{
	return FLiveLinkCameraFrameData::StaticStruct();
}

UScriptStruct* ULiveLinkCameraRole::GetBlueprintDataStruct() const
{
	return FLiveLinkCameraBlueprintData::StaticStruct();
}

bool ULiveLinkCameraRole::InitializeBlueprintData(
	const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const
{
	FLiveLinkCameraBlueprintData* BlueprintData = OutBlueprintData.Cast<FLiveLinkCameraBlueprintData>();
	const FLiveLinkCameraStaticData* StaticData = InSourceData.StaticData.Cast<FLiveLinkCameraStaticData>();
	const FLiveLinkCameraFrameData* FrameData = InSourceData.FrameData.Cast<FLiveLinkCameraFrameData>();
	if (BlueprintData == nullptr || StaticData == nullptr || FrameData == nullptr)
	{
		return false;
	}
	BlueprintData->StaticData = *StaticData;
	BlueprintData->FrameData = *FrameData;
	return true;
}

FText ULiveLinkCameraRole::GetDisplayName() const
{
	return FText::FromString(TEXT("Camera"));
}
