// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Kismet/BlueprintFunctionLibrary.h"

#include "OrvaneLiveLinkHelper.generated.h"

/**
 * The Live Link half of the one-click setup: the network tracking sources of this plug-in and the preset
 * assets under /Game/Orvane/. Every function runs on the game thread, reports through the log and returns
 * whether it did what it was asked.
 */
UCLASS()
class ORVANELIVELINK_API UOrvaneLiveLinkHelper : public UBlueprintFunctionLibrary
{
	GENERATED_BODY()

public:
	/** Removes every tracking source of this plug-in from the Live Link client, and no other source. */
	UFUNCTION(BlueprintCallable, Category = "Orvane|Live Link")
	static bool RemoveAllOrvaneSources();

	/** Removes the preset asset /Game/Orvane/<PresetName> from memory and its package file from disk. True if none is
	 * left. */
	UFUNCTION(BlueprintCallable, Category = "Orvane|Live Link")
	static bool RemoveExistingPreset(const FString& PresetName);

	/** Adds a tracking source that listens on Endpoint ("address:port"). False, before anything is created, if the text
	 * is not an endpoint. */
	UFUNCTION(BlueprintCallable, Category = "Orvane|Live Link")
	static bool CreateOrvaneSource(const FString& Endpoint);

	/** Saves the Live Link client's sources and subjects as the preset asset /Game/Orvane/<PresetName>. */
	UFUNCTION(BlueprintCallable, Category = "Orvane|Live Link")
	static bool SaveLiveLinkPreset(const FString& PresetName);
};
