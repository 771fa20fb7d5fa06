// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkPresetTypes.h"
#include "Templates/Function.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkPreset.generated.h"

/** A saved set of Live Link sources and subjects that can be applied to the Live Link client. */
UCLASS(BlueprintType)
class LIVELINK_API ULiveLinkPreset : public UObject
{
	GENERATED_BODY()

public:
	virtual void BeginDestroy() override;

	/** The sources the preset creates. */
	const TArray<FLiveLinkSourcePreset>& GetSourcePresets() const { return Sources; }

	/** The subjects the preset creates. */
	const TArray<FLiveLinkSubjectPreset>& GetSubjectPresets() const { return Subjects; }

	/**
	 * Removes every source from the client, ticks it once, then creates this preset's sources and subjects; true
	 * if all were created. Sources that take more than one tick to shut down make it fail: prefer
	 * ApplyToClientLatent.
	 */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	bool ApplyToClient() const;

	/**
	 * Removes every source from the client and, once they are all gone (polled at the end of each frame, for at
	 * most one second), creates this preset's sources and subjects; CompletionCallback gets whether all were
	 * created. Only one preset is applied at a time: a call while another apply runs fails at once.
	 */
	void ApplyToClientLatent(TFunction<void(bool)> CompletionCallback = nullptr);

	/** Stops this preset's ApplyToClientLatent if it is running; its callback gets false. */
	void CancelLatentAction();

	/**
	 * Adds this preset's sources and subjects to the client, keeping the others; with bRecreatePresets, the
	 * client's sources and subjects of the same GUID or key are replaced, otherwise kept. True if all were created.
	 */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	bool AddToClient(const bool bRecreatePresets = true) const;

	/** Replaces the preset's contents with the client's sources and subjects; their settings are copied into it. */
	UFUNCTION(BlueprintCallable, Category = "LiveLink")
	void BuildFromClient();

private:
	/** The sources, each with a copy of its settings inside this preset. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLinkSourcePresets")
	TArray<FLiveLinkSourcePreset> Sources;

	/** The subjects, each with a copy of its settings inside this preset. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLinkSubjectPresets")
	TArray<FLiveLinkSubjectPreset> Subjects;
};
