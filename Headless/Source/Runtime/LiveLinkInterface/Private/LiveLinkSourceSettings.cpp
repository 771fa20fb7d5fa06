// Copyright Orvane. All Rights Reserved.

#include "LiveLinkSourceSettings.h"

#include "UObject/UnrealType.h"

#if WITH_EDITOR
bool ULiveLinkSourceSettings::CanEditChange(const FProperty* InProperty) const
{
	if (!Super::CanEditChange(InProperty) || InProperty == nullptr)
	{
		return false;
	}
	// Each mode reads its own part of the buffer settings; the other parts have no effect, so they are locked.
	const FName Name = InProperty->GetFName();
	const bool bEngineTimeSetting =
		Name == TEXT("ValidEngineTime") || Name == TEXT("EngineTimeOffset") || Name == TEXT("bValidEngineTimeEnabled");
	const bool bTimecodeSetting = Name == TEXT("ValidTimecodeFrame") || Name == TEXT("TimecodeFrameOffset") ||
								  Name == TEXT("bValidTimecodeFrameEnabled") || Name == TEXT("bGenerateSubFrame") ||
								  Name == TEXT("SourceTimecodeFrameRate");
	const bool bLatestSetting = Name == TEXT("LatestOffset");
	if (bEngineTimeSetting)
	{
		return Mode == ELiveLinkSourceMode::EngineTime;
	}
	if (bTimecodeSetting)
	{
		return Mode == ELiveLinkSourceMode::Timecode;
	}
	if (bLatestSetting)
	{
		return Mode == ELiveLinkSourceMode::Latest;
	}
	return true;
}
#endif
