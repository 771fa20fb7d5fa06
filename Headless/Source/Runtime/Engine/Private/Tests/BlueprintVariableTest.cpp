// Copyright Orvane. All Rights Reserved.

#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/AutomationTest.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#if WITH_DEV_AUTOMATION_TESTS

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FBlueprintVariableWithSpacesTest,
	"System.Engine.Blueprint.VariableWithSpacesIsARealPropertyPerInstance",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FBlueprintVariableWithSpacesTest::RunTest(const FString& Parameters)
{
	UPackage* Package = CreatePackage(TEXT("/Temp/BlueprintVariableTest"));
	UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(
		UObject::StaticClass(), Package, TEXT("BP_VariableTest"), BPTYPE_Normal);
	UTEST_NOT_NULL(TEXT("Blueprint"), Blueprint);
	const FEdGraphPinType BoolType(
		UEdGraphSchema_K2::PC_Boolean, NAME_None, nullptr, EPinContainerType::None, false, FEdGraphTerminalType());
	UTEST_TRUE(TEXT("Variable added"),
		FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Set LiveLink Preset"), BoolType, TEXT("false")));
	FKismetEditorUtilities::CompileBlueprint(Blueprint);

	UClass* GeneratedClass = Blueprint->GeneratedClass;
	UTEST_NOT_NULL(TEXT("Generated class"), GeneratedClass);
	TestEqual(TEXT("Generated class name"), GeneratedClass->GetName(), FString(TEXT("BP_VariableTest_C")));
	FBoolProperty* Property = FindFProperty<FBoolProperty>(GeneratedClass, TEXT("Set LiveLink Preset"));
	UTEST_NOT_NULL(TEXT("The variable named with spaces"), Property);
	TestTrue(TEXT("Laid out after the parent's memory"),
		Property->GetOffset_ForInternal() >= UObject::StaticClass()->GetPropertiesSize());

	UObject* First = NewObject<UObject>(Package, GeneratedClass);
	UObject* Second = NewObject<UObject>(Package, GeneratedClass);
	Property->SetPropertyValue_InContainer(First, true);
	TestTrue(TEXT("Written on the first instance"), Property->GetPropertyValue_InContainer(First));
	TestFalse(TEXT("The second instance keeps its value"), Property->GetPropertyValue_InContainer(Second));

	First->MarkAsGarbage();
	Second->MarkAsGarbage();
	Blueprint->ClearFlags(RF_Standalone);
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS
