// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/UObjectGlobals.h"

/**
 * A non-UObject that holds references to objects: while it exists, the garbage collector asks it for
 * the objects it references and keeps them alive.
 */
class COREUOBJECT_API FGCObject
{
public:
	FGCObject();
	FGCObject(const FGCObject& Other);
	FGCObject(FGCObject&& Other);
	virtual ~FGCObject();

	FGCObject& operator=(const FGCObject&) { return *this; }
	FGCObject& operator=(FGCObject&&) { return *this; }

	/** Reports every object this holder references. */
	virtual void AddReferencedObjects(FReferenceCollector& Collector) = 0;

	/** A name for this holder in reference reports. */
	virtual FString GetReferencerName() const = 0;

	/** Calls Callback for every live holder (used by the garbage collector). */
	static void ForEachReferencer(TFunctionRef<void(FGCObject&)> Callback);
};
