// Copyright Orvane. All Rights Reserved.

#include "EdGraph/EdGraphPin.h"

bool FEdGraphTerminalType::operator==(const FEdGraphTerminalType& Other) const
{
	return TerminalCategory == Other.TerminalCategory && TerminalSubCategory == Other.TerminalSubCategory &&
		   TerminalSubCategoryObject == Other.TerminalSubCategoryObject && bTerminalIsConst == Other.bTerminalIsConst &&
		   bTerminalIsWeakPointer == Other.bTerminalIsWeakPointer &&
		   bTerminalIsUObjectWrapper == Other.bTerminalIsUObjectWrapper;
}

FEdGraphPinType::FEdGraphPinType(FName InPinCategory, FName InPinSubCategory, UObject* InPinSubCategoryObject,
	EPinContainerType InPinContainerType, bool bInIsReference, const FEdGraphTerminalType& InValueTerminalType)
	: PinCategory(InPinCategory)
	, PinSubCategory(InPinSubCategory)
	, PinSubCategoryObject(InPinSubCategoryObject)
	, PinValueType(InValueTerminalType)
	, ContainerType(InPinContainerType)
	, bIsReference(bInIsReference)
	, bIsConst(false)
	, bIsWeakPointer(false)
	, bIsUObjectWrapper(false)
{
}

bool FEdGraphPinType::operator==(const FEdGraphPinType& Other) const
{
	return PinCategory == Other.PinCategory && PinSubCategory == Other.PinSubCategory &&
		   PinSubCategoryObject == Other.PinSubCategoryObject && PinValueType == Other.PinValueType &&
		   ContainerType == Other.ContainerType && bIsReference == Other.bIsReference && bIsConst == Other.bIsConst &&
		   bIsWeakPointer == Other.bIsWeakPointer && bIsUObjectWrapper == Other.bIsUObjectWrapper;
}
