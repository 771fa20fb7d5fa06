// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Blueprint.h"
#include "Templates/SubclassOf.h"

class FCompilerResultsLog;
class UBlueprintGeneratedClass;

/** How CompileBlueprint runs. */
enum class EBlueprintCompileOptions
{
	None = 0x0,
	/** Skips the garbage collection after compiling (the headless compiler never collects). */
	SkipGarbageCollection = 0x1,
	/** Compiles without saving (the headless compiler never saves). */
	SkipSave = 0x40,
	/** Part of a batch of compilations (each is complete on its own here). */
	BatchCompile = 0x10,
};
ENUM_CLASS_FLAGS(EBlueprintCompileOptions);

/**
 * Creating and compiling Blueprints. The headless engine keeps these with the Blueprint classes in
 * the Engine module, since it has no editor module; the include path is the editor's.
 */
class ENGINE_API FKismetEditorUtilities
{
public:
	/** Creates a new Blueprint of ParentClass named NewBPName in Outer, and compiles it. */
	static UBlueprint* CreateBlueprint(UClass* ParentClass, UObject* Outer, const FName NewBPName,
		enum EBlueprintType BlueprintType, TSubclassOf<UBlueprint> BlueprintClassType,
		TSubclassOf<UBlueprintGeneratedClass> BlueprintGeneratedClassType, FName CallingContext = NAME_None);

	/** As above, with the default Blueprint and generated class types. */
	static UBlueprint* CreateBlueprint(UClass* ParentClass, UObject* Outer, const FName NewBPName,
		enum EBlueprintType BlueprintType, FName CallingContext = NAME_None);

	/**
	 * Compiles the Blueprint into its generated class "<Name>_C" in the Blueprint's package: one
	 * property per variable, laid out after the parent class's memory, and a class default object
	 * holding the variables' default values. A class compiled before is moved to the transient package
	 * (objects made from it keep it) and replaced.
	 */
	static void CompileBlueprint(UBlueprint* BlueprintObj,
		EBlueprintCompileOptions CompileFlags = EBlueprintCompileOptions::None,
		FCompilerResultsLog* pResults = nullptr);
};
