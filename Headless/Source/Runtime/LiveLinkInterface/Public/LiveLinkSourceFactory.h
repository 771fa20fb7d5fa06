// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkSourceFactory.generated.h"

class ILiveLinkSource;
class SWidget;

/**
 * Creates one kind of Live Link source. The client asks a source's factory (named by the source's settings) to
 * create it again from its connection string when a preset is applied; the Live Link panel lists factories
 * to let users add sources.
 */
UCLASS(Abstract)
class LIVELINKINTERFACE_API ULiveLinkSourceFactory : public UObject
{
	GENERATED_BODY()

public:
	/** How the factory appears in the Live Link panel's "add source" menu. */
	enum class EMenuType
	{
		/** A sub-menu with the panel BuildCreationPanel builds. */
		SubPanel,
		/** A plain menu entry. */
		MenuEntry,
		/** Not listed. */
		Disabled
	};

	/** Called with the created source and its connection string when the creation panel made one. */
	DECLARE_DELEGATE_TwoParams(FOnLiveLinkSourceCreated, TSharedPtr<ILiveLinkSource>, FString);

	/** The name of the source kind in the menu. Every concrete factory overrides this. */
	virtual FText GetSourceDisplayName() const;

	/** The tool tip of the source kind in the menu. Every concrete factory overrides this. */
	virtual FText GetSourceTooltip() const;

	/** How the factory is listed; not at all unless it says otherwise. */
	virtual EMenuType GetMenuType() const { return EMenuType::Disabled; }

	/** True if the factory can create sources at the moment. */
	virtual bool IsEnabled() const { return true; }

	/** The panel of a SubPanel factory, which calls OnLiveLinkSourceCreated when the user made a source. */
	virtual TSharedPtr<SWidget> BuildCreationPanel(FOnLiveLinkSourceCreated OnLiveLinkSourceCreated) const;

	/** A new source from a connection string. Every concrete factory overrides this. */
	virtual TSharedPtr<ILiveLinkSource> CreateSource(const FString& ConnectionString) const;
};
