// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"

class UBlueprint;

/** Editing Blueprints. The headless engine keeps these with the Blueprint classes in the Engine module. */
class ENGINE_API FBlueprintEditorUtils
{
public:
	/**
	 * Adds a member variable to the Blueprint: editable, visible to Blueprints, not editable on
	 * instances, as the editor adds them. False if the name is taken. The Blueprint must be compiled
	 * again for its class to have the variable.
	 */
	static bool AddMemberVariable(UBlueprint* Blueprint, const FName& NewVarName, const FEdGraphPinType& NewVarType,
		const FString& DefaultValue = FString());

	/** The index of the variable in NewVariables; INDEX_NONE if the Blueprint has none of that name. */
	static int32 FindNewVariableIndex(const UBlueprint* Blueprint, const FName& InName);
};
