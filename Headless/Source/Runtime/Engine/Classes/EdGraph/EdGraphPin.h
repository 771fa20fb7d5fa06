// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphNode.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

#include "EdGraphPin.generated.h"

/** The type of the values of a map pin (its key type is the pin type itself). */
USTRUCT()
struct ENGINE_API FEdGraphTerminalType
{
	GENERATED_BODY()

	FEdGraphTerminalType() = default;

	UPROPERTY()
	FName TerminalCategory;

	UPROPERTY()
	FName TerminalSubCategory;

	UPROPERTY()
	TObjectPtr<UObject> TerminalSubCategoryObject;

	UPROPERTY()
	bool bTerminalIsConst = false;

	UPROPERTY()
	bool bTerminalIsWeakPointer = false;

	UPROPERTY()
	bool bTerminalIsUObjectWrapper = false;

	bool operator==(const FEdGraphTerminalType& Other) const;
	bool operator!=(const FEdGraphTerminalType& Other) const { return !(*this == Other); }
};

/**
 * The type of the values a pin carries, which is also the type of a Blueprint variable: a category
 * from the K2 schema ("bool", "object", ...), a sub-category and, for objects, classes, structs and
 * enums, the type object.
 *
 * The type object is held as a hard reference (the engine holds a weak one) so that a saved variable
 * type names its class by path and loading the variable's Blueprint loads the package of that class.
 */
USTRUCT(BlueprintType)
struct ENGINE_API FEdGraphPinType
{
	GENERATED_BODY()

	FEdGraphPinType()
		: bIsReference(false)
		, bIsConst(false)
		, bIsWeakPointer(false)
		, bIsUObjectWrapper(false)
	{
	}

	FEdGraphPinType(FName InPinCategory, FName InPinSubCategory, UObject* InPinSubCategoryObject,
		EPinContainerType InPinContainerType, bool bInIsReference, const FEdGraphTerminalType& InValueTerminalType);

	/** Category of pin type. */
	UPROPERTY()
	FName PinCategory;

	/** Sub-category of pin type. */
	UPROPERTY()
	FName PinSubCategory;

	/** The class, struct or enum of the values, for the categories that have one. */
	UPROPERTY()
	TObjectPtr<UObject> PinSubCategoryObject;

	/** The type of the values of a map. */
	UPROPERTY()
	FEdGraphTerminalType PinValueType;

	UPROPERTY()
	EPinContainerType ContainerType = EPinContainerType::None;

	UPROPERTY()
	uint8 bIsReference : 1;

	UPROPERTY()
	uint8 bIsConst : 1;

	UPROPERTY()
	uint8 bIsWeakPointer : 1;

	UPROPERTY()
	uint8 bIsUObjectWrapper : 1;

	bool IsContainer() const { return ContainerType != EPinContainerType::None; }
	bool IsArray() const { return ContainerType == EPinContainerType::Array; }
	bool IsSet() const { return ContainerType == EPinContainerType::Set; }
	bool IsMap() const { return ContainerType == EPinContainerType::Map; }

	void ResetToDefaults() { *this = FEdGraphPinType(); }

	bool operator==(const FEdGraphPinType& Other) const;
	bool operator!=(const FEdGraphPinType& Other) const { return !(*this == Other); }
};
