// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Misc/Guid.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "BlueprintCore.generated.h"

/** The part of a Blueprint that the generated classes know about: the classes compiled from it. */
UCLASS()
class ENGINE_API UBlueprintCore : public UObject
{
	GENERATED_BODY()

public:
	UBlueprintCore() = default;

	/**
	 * The class used while editing, regenerated whenever a variable or function changes. The headless
	 * engine has no editing session and compiles the full class only, so this stays null.
	 */
	UPROPERTY(nonTransactional, transient)
	TSubclassOf<UObject> SkeletonGeneratedClass;

	/**
	 * The most recently compiled class. The headless engine compiles it whenever the Blueprint is
	 * loaded and never saves it, so the reference is transient here.
	 */
	UPROPERTY(nonTransactional, transient)
	TSubclassOf<UObject> GeneratedClass;

	const FGuid& GetBlueprintGuid() const { return BlueprintGuid; }

	/** Gives the Blueprint a new identifier. */
	void GenerateNewGuid() { BlueprintGuid = FGuid::NewGuid(); }

private:
	/** Identifies the Blueprint across renames; not saved by the headless engine yet. */
	FGuid BlueprintGuid;
};
