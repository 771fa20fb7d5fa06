// Copyright Orvane. All Rights Reserved.

#include "LiveLinkTypes.h"

bool FLiveLinkBaseStaticData::FindPropertyValue(
	const FLiveLinkBaseFrameData& FrameData, const FName PropertyName, float& OutValue) const
{
	const int32 PropertyIndex = PropertyNames.IndexOfByKey(PropertyName);
	if (PropertyIndex == INDEX_NONE || !FrameData.PropertyValues.IsValidIndex(PropertyIndex))
	{
		return false;
	}
	OutValue = FrameData.PropertyValues[PropertyIndex];
	return true;
}
