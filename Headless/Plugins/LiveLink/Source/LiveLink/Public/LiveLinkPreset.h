// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkPreset.generated.h"

/**
 * A saved set of Live Link sources and subjects that can be applied to the Live Link client.
 *
 * The headless engine has no Live Link client yet: the calls that talk to it report themselves as
 * unimplemented instead of pretending to succeed.
 */
UCLASS(BlueprintType)
class LIVELINK_API ULiveLinkPreset : public UObject
{
	GENERATED_BODY()

public:
	/** Removes every source and subject from the client and adds this preset's; true if all were created. */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	bool ApplyToClient() const;

	/** Adds this preset's sources and subjects to the client, keeping the others; true if all were created. */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	bool AddToClient(const bool bRecreatePresets = true) const;

	/** Replaces the preset's contents with the client's current sources and subjects. */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	void BuildFromClient();
};
