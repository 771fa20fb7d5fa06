// Copyright Orvane. All Rights Reserved.

#include "LiveLinkTestSourceFactory.h"

#include "LiveLinkTestSource.h"

FText ULiveLinkTestSourceFactory::GetSourceDisplayName() const
{
	return FText::FromString(TEXT("Test Source"));
}

FText ULiveLinkTestSourceFactory::GetSourceTooltip() const
{
	return FText::FromString(TEXT("A source that records what the client does with it."));
}

TSharedPtr<ILiveLinkSource> ULiveLinkTestSourceFactory::CreateSource(const FString& ConnectionString) const
{
	if (ConnectionString == TEXT("refuse"))
	{
		return TSharedPtr<ILiveLinkSource>();
	}
	TSharedPtr<FLiveLinkTestSource> Source = MakeShared<FLiveLinkTestSource>(ConnectionString);
	FLiveLinkTestSource::RecordCreatedByFactory(Source);
	return Source;
}
