// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "TimerHandle.generated.h"

/** Identifies a timer of a timer manager. A default-constructed handle is invalid. */
USTRUCT(BlueprintType)
struct ENGINE_API FTimerHandle
{
	GENERATED_BODY()

	friend class FTimerManager;

	FTimerHandle() = default;

	/** True once the handle was given a timer (even if that timer has since finished). */
	bool IsValid() const { return Handle != 0; }

	/** Makes the handle invalid; the timer it named is not affected. */
	void Invalidate() { Handle = 0; }

	bool operator==(const FTimerHandle& Other) const { return Handle == Other.Handle; }
	bool operator!=(const FTimerHandle& Other) const { return Handle != Other.Handle; }

	FString ToString() const;

	friend uint32 GetTypeHash(const FTimerHandle& InHandle) { return GetTypeHash(InHandle.Handle); }

private:
	UPROPERTY(Transient)
	uint64 Handle = 0;
};
