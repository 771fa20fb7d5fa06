// Copyright Orvane. All Rights Reserved.

#include "Engine/BlueprintGeneratedClass.h"

#include "Engine/Blueprint.h"
#include "UObject/UnrealType.h"

namespace UE::Engine::Private
{
	/** Reports the type objects one run-time property names (and those of its inner properties). */
	void CollectPropertyTypeReferences(
		const FProperty* Property, FReferenceCollector& Collector, const UObject* ReferencingObject)
	{
		auto Report = [&](auto* Object)
		{
			UObject* AsObject = Object;
			Collector.AddReferencedObject(AsObject, ReferencingObject);
		};
		if (const FObjectPropertyBase* ObjectProperty = CastField<FObjectPropertyBase>(Property))
		{
			Report(ObjectProperty->PropertyClass);
		}
		if (const FClassProperty* ClassProperty = CastField<FClassProperty>(Property))
		{
			Report(ClassProperty->MetaClass);
		}
		if (const FSoftClassProperty* SoftClassProperty = CastField<FSoftClassProperty>(Property))
		{
			Report(SoftClassProperty->MetaClass);
		}
		if (const FStructProperty* StructProperty = CastField<FStructProperty>(Property))
		{
			Report(StructProperty->Struct);
		}
		if (const FByteProperty* ByteProperty = CastField<FByteProperty>(Property))
		{
			Report(ByteProperty->Enum);
		}
		if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
		{
			CollectPropertyTypeReferences(ArrayProperty->Inner, Collector, ReferencingObject);
		}
	}
} // namespace UE::Engine::Private

bool UBlueprintGeneratedClass::GetGeneratedClassesHierarchy(
	const UClass* InClass, TArray<const UBlueprintGeneratedClass*>& OutBPGClasses)
{
	OutBPGClasses.Empty();
	bool bNoErrors = true;
	for (const UClass* Class = InClass; Class; Class = Class->GetSuperClass())
	{
		if (const UBlueprintGeneratedClass* Generated = Cast<UBlueprintGeneratedClass>(Class))
		{
			OutBPGClasses.Add(Generated);
			bNoErrors &= Generated->GetGeneratingBlueprint() != nullptr;
		}
	}
	return bNoErrors;
}

void UBlueprintGeneratedClass::AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector)
{
	UClass::AddReferencedObjects(InThis, Collector);
	UBlueprintGeneratedClass* This = static_cast<UBlueprintGeneratedClass*>(InThis);
	UObject* Blueprint = This->GeneratingBlueprint;
	Collector.AddReferencedObject(Blueprint, This);
	This->GeneratingBlueprint = static_cast<UBlueprint*>(Blueprint);
	for (FField* Field = This->ChildProperties; Field; Field = Field->Next)
	{
		if (const FProperty* Property = CastField<FProperty>(Field))
		{
			UE::Engine::Private::CollectPropertyTypeReferences(Property, Collector, This);
		}
	}
}
