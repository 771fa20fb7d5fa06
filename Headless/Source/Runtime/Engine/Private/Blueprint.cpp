// Copyright Orvane. All Rights Reserved.

#include "Engine/Blueprint.h"

#include "Engine/BlueprintGeneratedClass.h"
#include "Kismet2/KismetEditorUtilities.h"

void FBPVariableDescription::SetMetaData(FName Key, FString Value)
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	if (Index != INDEX_NONE)
	{
		MetaDataArray[Index].DataValue = MoveTemp(Value);
	}
	else
	{
		MetaDataArray.Add(FBPVariableMetaDataEntry(Key, MoveTemp(Value)));
	}
}

const FString& FBPVariableDescription::GetMetaData(FName Key) const
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	check(Index != INDEX_NONE);
	return MetaDataArray[Index].DataValue;
}

void FBPVariableDescription::RemoveMetaData(FName Key)
{
	const int32 Index = FindMetaDataEntryIndexForKey(Key);
	if (Index != INDEX_NONE)
	{
		MetaDataArray.RemoveAt(Index);
	}
}

int32 FBPVariableDescription::FindMetaDataEntryIndexForKey(FName Key) const
{
	for (int32 Index = 0; Index < MetaDataArray.Num(); ++Index)
	{
		if (MetaDataArray[Index].DataKey == Key)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

void UBlueprint::PostLoad()
{
	Super::PostLoad();
	// The class default object of UBlueprint is never a Blueprint to compile.
	if (!HasAnyFlags(RF_ClassDefaultObject))
	{
		FKismetEditorUtilities::CompileBlueprint(this, EBlueprintCompileOptions::SkipGarbageCollection);
	}
}

UClass* UBlueprint::GetBlueprintClass() const
{
	return UBlueprintGeneratedClass::StaticClass();
}

UBlueprint* UBlueprint::GetBlueprintFromClass(const UClass* InClass)
{
	const UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(InClass);
	return Generated ? Generated->GetGeneratingBlueprint() : nullptr;
}

bool UBlueprint::GetBlueprintHierarchyFromClass(const UClass* InClass, TArray<UBlueprint*>& OutBlueprintParents)
{
	OutBlueprintParents.Empty();
	bool bNoErrors = true;
	for (const UClass* Class = InClass; Class; Class = Class->GetSuperClass())
	{
		if (UBlueprint* Blueprint = GetBlueprintFromClass(Class))
		{
			OutBlueprintParents.Add(Blueprint);
		}
		else if (Class->HasAnyClassFlags(CLASS_CompiledFromBlueprint))
		{
			// A class built from a Blueprint whose Blueprint is gone.
			bNoErrors = false;
		}
	}
	return bNoErrors;
}
