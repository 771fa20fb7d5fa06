// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "EdGraph/EdGraphSchema.h"
#include "UObject/ObjectMacros.h"

#include "EdGraphSchema_K2.generated.h"

/** The schema of Blueprint graphs; its pin categories name the types of Blueprint variables. */
UCLASS()
class ENGINE_API UEdGraphSchema_K2 : public UEdGraphSchema
{
	GENERATED_BODY()

public:
	UEdGraphSchema_K2() = default;

	// Pin categories (FEdGraphPinType::PinCategory).
	static const FName PC_Exec;
	static const FName PC_Boolean;
	static const FName PC_Byte;
	static const FName PC_Class;
	static const FName PC_SoftClass;
	static const FName PC_Int;
	static const FName PC_Int64;
	static const FName PC_Float;
	static const FName PC_Double;
	static const FName PC_Real;
	static const FName PC_Name;
	static const FName PC_Delegate;
	static const FName PC_MCDelegate;
	static const FName PC_Object;
	static const FName PC_Interface;
	static const FName PC_SoftObject;
	static const FName PC_String;
	static const FName PC_Text;
	static const FName PC_Struct;
	static const FName PC_Wildcard;
	static const FName PC_FieldPath;
	static const FName PC_Enum;

	// Common sub-categories (FEdGraphPinType::PinSubCategory).
	static const FName PSC_Self;
	static const FName PSC_Index;
	static const FName PSC_Bitmask;
};
