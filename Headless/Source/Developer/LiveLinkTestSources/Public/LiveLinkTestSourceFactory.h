// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceFactory.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkTestSourceFactory.generated.h"

/**
 * Creates test sources from a connection string. The string "refuse" makes it create nothing, as a factory does
 * when the string is not one it understands.
 */
UCLASS()
class LIVELINKTESTSOURCES_API ULiveLinkTestSourceFactory : public ULiveLinkSourceFactory
{
	GENERATED_BODY()

public:
	virtual FText GetSourceDisplayName() const override;
	virtual FText GetSourceTooltip() const override;
	virtual EMenuType GetMenuType() const override { return EMenuType::MenuEntry; }
	virtual TSharedPtr<ILiveLinkSource> CreateSource(const FString& ConnectionString) const override;
};
