// Copyright Orvane. All Rights Reserved.

#include "LiveLinkSourceFactory.h"

#include "ILiveLinkSource.h"

namespace
{
	/** The factory's functions that every concrete factory must override end here, as a pure virtual call would. */
	void ReportMissingOverride(const ULiveLinkSourceFactory* Factory, const TCHAR* Function)
	{
		checkf(
			false, TEXT("%s does not override ULiveLinkSourceFactory::%s"), *Factory->GetClass()->GetName(), Function);
	}
} // namespace

FText ULiveLinkSourceFactory::GetSourceDisplayName() const
{
	ReportMissingOverride(this, TEXT("GetSourceDisplayName"));
	return FText::GetEmpty();
}

FText ULiveLinkSourceFactory::GetSourceTooltip() const
{
	ReportMissingOverride(this, TEXT("GetSourceTooltip"));
	return FText::GetEmpty();
}

TSharedPtr<SWidget> ULiveLinkSourceFactory::BuildCreationPanel(FOnLiveLinkSourceCreated OnLiveLinkSourceCreated) const
{
	// Only factories listed as a sub-panel build one.
	return TSharedPtr<SWidget>();
}

TSharedPtr<ILiveLinkSource> ULiveLinkSourceFactory::CreateSource(const FString& ConnectionString) const
{
	ReportMissingOverride(this, TEXT("CreateSource"));
	return TSharedPtr<ILiveLinkSource>();
}
