// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

class UClass;
class UObject;
class UObjectBase;
class UPackage;

/** Appends every live object of the class (and, by default, its subclasses). CDOs are excluded by default. */
COREUOBJECT_API void GetObjectsOfClass(const UClass* ClassToLookFor, TArray<UObject*>& Results,
	bool bIncludeDerivedClasses = true, EObjectFlags ExcludeFlags = RF_ClassDefaultObject,
	EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** Calls Operation for every live object of the class (and, by default, its subclasses). */
COREUOBJECT_API void ForEachObjectOfClass(const UClass* ClassToLookFor, TFunctionRef<void(UObject*)> Operation,
	bool bIncludeDerivedClasses = true, EObjectFlags ExcludeFlags = RF_ClassDefaultObject,
	EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** Appends the objects whose outer is Outer (and, by default, the objects inside those). */
COREUOBJECT_API void GetObjectsWithOuter(const UObjectBase* Outer, TArray<UObject*>& Results,
	bool bIncludeNestedObjects = true, EObjectFlags ExclusionFlags = RF_NoFlags,
	EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

COREUOBJECT_API void ForEachObjectWithOuter(const UObjectBase* Outer, TFunctionRef<void(UObject*)> Operation,
	bool bIncludeNestedObjects = true, EObjectFlags ExclusionFlags = RF_NoFlags,
	EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** Appends the objects inside a package. */
COREUOBJECT_API void GetObjectsWithPackage(const UPackage* Package, TArray<UObject*>& Results,
	bool bIncludeNestedObjects = true, EObjectFlags ExclusionFlags = RF_NoFlags,
	EInternalObjectFlags ExclusionInternalFlags = EInternalObjectFlags::None);

/** The object directly in Outer of the class and name (either may be left out). */
COREUOBJECT_API UObject* FindObjectWithOuter(
	const UObjectBase* Outer, const UClass* ClassToLookFor = nullptr, FName NameToLookFor = NAME_None);

/** Appends the classes derived from ClassToLookFor (all levels, or direct children only). */
COREUOBJECT_API void GetDerivedClasses(const UClass* ClassToLookFor, TArray<UClass*>& Results, bool bRecursive = true);
