// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkSourceSettings.h"
#include "LiveLinkTypes.h"
#include "Templates/SubclassOf.h"
#include "UObject/ObjectMacros.h"

#include "ILiveLinkSource.generated.h"

class ILiveLinkClient;
struct FPropertyChangedEvent;

/**
 * A provider of Live Link data: it pushes its subjects' static data and frames to the client it was given. The
 * client owns it and calls everything here on the game thread; the source may push from any thread.
 */
class ILiveLinkSource
{
public:
	virtual ~ILiveLinkSource() = default;

	/** Called once the client registered the source; InSourceGuid is the source's identity in every subject key. */
	virtual void ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid) = 0;

	/** Called after ReceiveClient with the settings object the client made from GetSettingsClass(). */
	virtual void InitializeSettings(ULiveLinkSourceSettings* Settings) {}

	/** Called once per client tick on the game thread; return quickly. */
	virtual void Update() {}

	/** True if the source may appear in the user interface (and in presets with its type). */
	virtual bool CanBeDisplayedInUI() const { return true; }

	/** True while the source is connected to its provider and can push valid data. */
	virtual bool IsSourceStillValid() const = 0;

	/** Asks the source to stop; called until it returns true, after which the source is destroyed. */
	virtual bool RequestSourceShutdown() = 0;

	/** The kind of source, for the user interface and presets. */
	virtual FText GetSourceType() const = 0;

	/** Where the data comes from (a machine, an address). */
	virtual FText GetSourceMachineName() const = 0;

	/** A short status ("Active", "Not responding"). */
	virtual FText GetSourceStatus() const = 0;

	/** The class of the settings object the client makes for the source. */
	virtual TSubclassOf<ULiveLinkSourceSettings> GetSettingsClass() const
	{
		return ULiveLinkSourceSettings::StaticClass();
	}

	UE_DEPRECATED(4.24, "GetCustomSettingsClass is deprecated. Please use GetSettingsClass instead.")
	virtual UClass* GetCustomSettingsClass() const { return GetSettingsClass().Get(); }

	/** Called on the game thread when the user changed a property of the source's settings. */
	virtual void OnSettingsChanged(ULiveLinkSourceSettings* Settings, const FPropertyChangedEvent& PropertyChangedEvent)
	{
	}
};

/** Carries a source through Blueprints. */
USTRUCT(BlueprintType)
struct FLiveLinkSourceHandle
{
	GENERATED_BODY()

	void SetSourcePointer(TSharedPtr<ILiveLinkSource> InSourcePointer) { SourcePointer = InSourcePointer; }

	/** The source. */
	TSharedPtr<ILiveLinkSource> SourcePointer;
};
