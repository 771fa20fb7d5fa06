// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceFactory.h"

#include "OrvaneTrackingSourceFactory.generated.h"

/** Creates the network tracking source from its connection string, the endpoint text "address:port". */
UCLASS()
class ORVANETRACKING_API UOrvaneTrackingSourceFactory : public ULiveLinkSourceFactory
{
	GENERATED_BODY()

public:
	//~ Begin ULiveLinkSourceFactory interface
	virtual FText GetSourceDisplayName() const override;
	virtual FText GetSourceTooltip() const override;
	virtual EMenuType GetMenuType() const override;
	virtual TSharedPtr<ILiveLinkSource> CreateSource(const FString& ConnectionString) const override;
	//~ End ULiveLinkSourceFactory interface
};
