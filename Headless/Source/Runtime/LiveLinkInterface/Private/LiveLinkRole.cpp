// Copyright Orvane. All Rights Reserved.

#include "LiveLinkRole.h"

namespace
{
	/** The role's functions that every concrete role must override end here, as a call to a pure virtual would. */
	void ReportMissingOverride(const ULiveLinkRole* Role, const TCHAR* Function)
	{
		checkf(false, TEXT("%s does not override ULiveLinkRole::%s"), *Role->GetClass()->GetName(), Function);
	}
} // namespace

UScriptStruct* ULiveLinkRole::GetStaticDataStruct() const
{
	ReportMissingOverride(this, TEXT("GetStaticDataStruct"));
	return nullptr;
}

UScriptStruct* ULiveLinkRole::GetFrameDataStruct() const
{
	ReportMissingOverride(this, TEXT("GetFrameDataStruct"));
	return nullptr;
}

UScriptStruct* ULiveLinkRole::GetBlueprintDataStruct() const
{
	ReportMissingOverride(this, TEXT("GetBlueprintDataStruct"));
	return nullptr;
}

bool ULiveLinkRole::InitializeBlueprintData(
	const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const
{
	ReportMissingOverride(this, TEXT("InitializeBlueprintData"));
	return false;
}

FText ULiveLinkRole::GetDisplayName() const
{
	ReportMissingOverride(this, TEXT("GetDisplayName"));
	return FText::GetEmpty();
}

bool ULiveLinkRole::IsStaticDataValid(const FLiveLinkStaticDataStruct& InStaticData, bool& bOutShouldLogWarning) const
{
	bOutShouldLogWarning = true;
	const UScriptStruct* Expected = GetStaticDataStruct();
	return InStaticData.IsValid() && Expected != nullptr && InStaticData.GetStruct()->IsChildOf(Expected);
}

bool ULiveLinkRole::IsFrameDataValid(const FLiveLinkStaticDataStruct& InStaticData,
	const FLiveLinkFrameDataStruct& InFrameData, bool& bOutShouldLogWarning) const
{
	bOutShouldLogWarning = true;
	const UScriptStruct* Expected = GetFrameDataStruct();
	if (!InFrameData.IsValid() || Expected == nullptr || !InFrameData.GetStruct()->IsChildOf(Expected))
	{
		return false;
	}
	// The free-form values line up with the names the static data gave them.
	const FLiveLinkBaseStaticData* StaticData = InStaticData.GetBaseData();
	return StaticData == nullptr || InFrameData.GetBaseData()->PropertyValues.Num() == StaticData->PropertyNames.Num();
}
