// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/ObjectMacros.h"

#include "BlueprintGeneratedClass.generated.h"

class UBlueprint;

/**
 * A class compiled from a Blueprint: the Blueprint's variables are its properties, laid out after the
 * memory of its (native or Blueprint) super class.
 */
UCLASS()
class ENGINE_API UBlueprintGeneratedClass : public UClass
{
	GENERATED_BODY()

public:
	UBlueprintGeneratedClass() = default;

	/** The Blueprint this class was compiled from. */
	UBlueprint* GetGeneratingBlueprint() const { return GeneratingBlueprint; }
	void SetGeneratingBlueprint(UBlueprint* InBlueprint) { GeneratingBlueprint = InBlueprint; }

	/** Whether this class or a super class was compiled from a Blueprint; fills the generated classes from this one up.
	 */
	static bool GetGeneratedClassesHierarchy(
		const UClass* InClass, TArray<const UBlueprintGeneratedClass*>& OutBPGClasses);

	/** Keeps alive what the run-time properties name (their classes, structs, enums) and the Blueprint. */
	static void AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector);

private:
	UBlueprint* GeneratingBlueprint = nullptr;
};
