// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Script.h"

class UFunction;
class UObject;
class FField;

/**
 * One call of a reflected function. Locals points at the parameter block: each parameter lives at the
 * offset of its property in the function, the return value at the function's ReturnValueOffset.
 */
struct FFrame
{
	UFunction* Node = nullptr;
	UObject* Object = nullptr;
	uint8* Code = nullptr;
	uint8* Locals = nullptr;
	FFrame* PreviousFrame = nullptr;

	FFrame(UObject* InObject, UFunction* InNode, void* InLocals, FFrame* InPreviousFrame = nullptr,
		FField* InPropertyChainForCompiledIn = nullptr)
		: Node(InNode)
		, Object(InObject)
		, Locals(static_cast<uint8*>(InLocals))
		, PreviousFrame(InPreviousFrame)
	{
	}
};
