// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphPin.h"
#include "Engine/BlueprintCore.h"
#include "Misc/Guid.h"
#include "Templates/SubclassOf.h"
#include "UObject/ObjectMacros.h"

#include "Blueprint.generated.h"

class UBlueprintGeneratedClass;

/** Enumerates types of blueprints. */
UENUM()
enum EBlueprintType
{
	/** Normal blueprint. */
	BPTYPE_Normal,
	/** Blueprint that is const during execution (no state graph and methods cannot modify member variables). */
	BPTYPE_Const,
	/** Blueprint that serves as a container for macros to be used in other blueprints. */
	BPTYPE_MacroLibrary,
	/** Blueprint that serves as an interface to be implemented by other blueprints. */
	BPTYPE_Interface,
	/** Blueprint that handles level scripting. */
	BPTYPE_LevelScript,
	/** Blueprint that serves as a container for functions to be used in other blueprints. */
	BPTYPE_FunctionLibrary,
	BPTYPE_MAX
};

/** One metadata entry of a Blueprint variable. */
USTRUCT()
struct ENGINE_API FBPVariableMetaDataEntry
{
	GENERATED_BODY()

	FBPVariableMetaDataEntry() = default;
	FBPVariableMetaDataEntry(const FName InKey, FString InValue)
		: DataKey(InKey)
		, DataValue(MoveTemp(InValue))
	{
	}

	UPROPERTY(EditAnywhere, Category = BPVariableMetaDataEntry)
	FName DataKey;

	UPROPERTY(EditAnywhere, Category = BPVariableMetaDataEntry)
	FString DataValue;
};

/** Struct indicating a variable in the generated class. */
USTRUCT()
struct ENGINE_API FBPVariableDescription
{
	GENERATED_BODY()

	FBPVariableDescription() = default;

	/** Name of the variable. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	FName VarName;

	/**
	 * A Guid that will remain constant even if the VarName changes. Not saved by the headless engine
	 * until FGuid is a reflected struct.
	 */
	FGuid VarGuid;

	/** Type of the variable. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	FEdGraphPinType VarType;

	/** Friendly name of the variable. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	FString FriendlyName;

	/** Category this variable should be in. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	FText Category;

	/** Property flags for this variable. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	uint64 PropertyFlags = CPF_Edit;

	UPROPERTY(EditAnywhere, Category = BPVariableRepNotify)
	FName RepNotifyFunc;

	/** Metadata information for this variable. */
	UPROPERTY(EditAnywhere, Category = BPVariableDescription)
	TArray<FBPVariableMetaDataEntry> MetaDataArray;

	/** Optional new default value stored as string (the value's text form, as a pin's default value). */
	UPROPERTY(EditAnywhere, Category = BPVariableRepNotify)
	FString DefaultValue;

	/** Sets a metadata value on the variable. */
	void SetMetaData(FName Key, FString Value);

	/** Gets a metadata value on the variable; asserts if the value isn't present. */
	const FString& GetMetaData(FName Key) const;

	/** Clears metadata value on the variable. */
	void RemoveMetaData(FName Key);

	/** Find the index in the array of a metadata entry; INDEX_NONE if absent. */
	int32 FindMetaDataEntryIndexForKey(FName Key) const;

	/** Checks if there is metadata for a key. */
	bool HasMetaData(FName Key) const { return FindMetaDataEntryIndexForKey(Key) != INDEX_NONE; }
};

/**
 * A Blueprint asset: a native parent class, the variables it adds and the class compiled from them
 * ("<Name>_C", in the Blueprint's package).
 */
UCLASS()
class ENGINE_API UBlueprint : public UBlueprintCore
{
	GENERATED_BODY()

public:
	UBlueprint() = default;

	/** Pointer to the parent class that the generated class should derive from. */
	UPROPERTY(AssetRegistrySearchable)
	TSubclassOf<UObject> ParentClass;

	/** The type of this blueprint. */
	UPROPERTY(AssetRegistrySearchable)
	TEnumAsByte<enum EBlueprintType> BlueprintType = BPTYPE_Normal;

	/** Array of new variables to be added to generated class. */
	UPROPERTY()
	TArray<FBPVariableDescription> NewVariables;

	/** The editor compiles a Blueprint when it loads it: so does this, into GeneratedClass. */
	virtual void PostLoad() override;

	/** The class of the classes this Blueprint compiles into. */
	virtual UClass* GetBlueprintClass() const;

	/** The Blueprint a class was compiled from; null for classes that were not. */
	static UBlueprint* GetBlueprintFromClass(const UClass* InClass);

	/** Whether a class (or one of its super classes) was compiled from a Blueprint, and the Blueprints on the way. */
	static bool GetBlueprintHierarchyFromClass(const UClass* InClass, TArray<UBlueprint*>& OutBlueprintParents);
};
