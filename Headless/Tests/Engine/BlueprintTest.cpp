// Copyright Orvane. All Rights Reserved.

#include "Engine/Blueprint.h"
#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "EdGraphSchema_K2.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

#include "PackageTestUtils.h"
#include <cstdlib>

#include <gtest/gtest.h>

namespace
{
	using PackageTestUtils::FileOf;
	using PackageTestUtils::Save;
	using PackageTestUtils::Unload;

	using K2 = UEdGraphSchema_K2;

	std::string Str(const FString& Value)
	{
		return ToUtf8(Value);
	}

	FEdGraphPinType PinType(FName Category, UObject* SubCategoryObject = nullptr, FName SubCategory = NAME_None)
	{
		return FEdGraphPinType(
			Category, SubCategory, SubCategoryObject, EPinContainerType::None, false, FEdGraphTerminalType());
	}

	/** A throwaway project under /tmp whose Content folder is "/Game/". */
	class FBlueprintTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			char Template[] = "/tmp/BlueprintTest-XXXXXX";
			ASSERT_NE(::mkdtemp(Template), nullptr);
			TempDir = UTF8_TO_TCHAR(Template);
			const FString ProjectDir = TempDir / TEXT("Proj/");
			ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
			FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));
		}

		void TearDown() override
		{
			for (const TCHAR* Name : {TEXT("/Game/BP_Child"), TEXT("/Game/BP_Test"), TEXT("/Game/Target")})
			{
				Unload(Name);
			}
			FPaths::SetProjectFilePath(FString());
			IFileManager::Get().DeleteDirectory(*TempDir, false, true);
		}

		/**
		 * Saves /Game/BP_Test: a Blueprint of UReflectionTestOwner with a bool, an object reference, an int,
		 * a real, a string, a name, a soft reference, an int64 and an array of strings.
		 */
		UBlueprint* SaveTestBlueprint()
		{
			UPackage* Package = CreatePackage(TEXT("/Game/BP_Test"));
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(
				UReflectionTestOwner::StaticClass(), Package, TEXT("BP_Test"), BPTYPE_Normal);
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(
				Blueprint, TEXT("Set LiveLink Preset"), PinType(K2::PC_Boolean), TEXT("true")));
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(
				Blueprint, TEXT("LiveLinkPreset"), PinType(K2::PC_Object, UReflectionTestBase::StaticClass())));
			EXPECT_TRUE(
				FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Count"), PinType(K2::PC_Int), TEXT("42")));
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(
				Blueprint, TEXT("Focal Length"), PinType(K2::PC_Real, nullptr, K2::PC_Double), TEXT("35.5")));
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(
				Blueprint, TEXT("Subject"), PinType(K2::PC_String), TEXT("Camera \"A\", left")));
			EXPECT_TRUE(
				FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Tag"), PinType(K2::PC_Name), TEXT("Main")));
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Preset Path"),
				PinType(K2::PC_SoftObject, UObject::StaticClass()), TEXT("/Game/Somewhere/Preset.Preset")));
			EXPECT_TRUE(FBlueprintEditorUtils::AddMemberVariable(
				Blueprint, TEXT("Big"), PinType(K2::PC_Int64), TEXT("-6400000000000")));
			FEdGraphPinType Names = PinType(K2::PC_String);
			Names.ContainerType = EPinContainerType::Array;
			EXPECT_TRUE(
				FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Names"), Names, TEXT("(\"a\",\"b c\")")));
			// Names are unique within a Blueprint.
			EXPECT_FALSE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Count"), PinType(K2::PC_Int)));
			FKismetEditorUtilities::CompileBlueprint(Blueprint);
			EXPECT_TRUE(Save(Package, Blueprint));
			return Blueprint;
		}

		FString TempDir;
	};
} // namespace

TEST_F(FBlueprintTest, CreatedBlueprintCompilesIntoItsClass)
{
	UPackage* Package = CreatePackage(TEXT("/Game/BP_Test"));
	UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(
		UReflectionTestOwner::StaticClass(), Package, TEXT("BP_Test"), BPTYPE_Normal);
	ASSERT_NE(Blueprint, nullptr);
	UClass* Class = Blueprint->GeneratedClass.Get();
	ASSERT_NE(Class, nullptr);
	EXPECT_EQ(Str(Class->GetPathName()), "/Game/BP_Test.BP_Test_C");
	EXPECT_TRUE(Class->IsA(UBlueprintGeneratedClass::StaticClass()));
	EXPECT_EQ(Class->GetSuperClass(), UReflectionTestOwner::StaticClass());
	EXPECT_TRUE(Class->HasAnyClassFlags(CLASS_CompiledFromBlueprint));
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(Class), Blueprint);
	EXPECT_EQ(UBlueprint::GetBlueprintFromClass(UReflectionTestOwner::StaticClass()), nullptr);

	// A variable added later needs a compile to reach the class; the old class is moved out of the way.
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Blueprint, TEXT("Flag"), PinType(K2::PC_Boolean)));
	EXPECT_EQ(FindFProperty<FBoolProperty>(Class, TEXT("Flag")), nullptr);
	FKismetEditorUtilities::CompileBlueprint(Blueprint);
	UClass* Recompiled = Blueprint->GeneratedClass.Get();
	ASSERT_NE(Recompiled, Class);
	EXPECT_EQ(Str(Recompiled->GetPathName()), "/Game/BP_Test.BP_Test_C");
	EXPECT_NE(Class->GetOuter(), Package);
	const FBoolProperty* Flag = FindFProperty<FBoolProperty>(Recompiled, TEXT("Flag"));
	ASSERT_NE(Flag, nullptr);
	// The editor gives new variables these flags; the compiler keeps them.
	EXPECT_TRUE(Flag->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance));
	EXPECT_EQ(Blueprint->NewVariables[0].PropertyFlags,
		(uint64)(CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance));
}

TEST_F(FBlueprintTest, SavedBlueprintIsATextPackageOfTheBlueprintOnly)
{
	SaveTestBlueprint();
	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *FileOf(TEXT("/Game/BP_Test"))));
	const std::string File = Str(Text);
	EXPECT_NE(
		File.find("Begin Object Name=BP_Test Class=/Script/Engine.Blueprint Flags=Public|Standalone|Transactional"),
		std::string::npos)
		<< File;
	EXPECT_NE(File.find("ParentClass=/Script/CoreUObject.ReflectionTestOwner\n"), std::string::npos) << File;
	EXPECT_NE(File.find("VarName=\"Set LiveLink Preset\""), std::string::npos) << File;
	EXPECT_NE(File.find("PinCategory=\"bool\""), std::string::npos) << File;
	// The generated class and its default object are rebuilt on load, never saved.
	EXPECT_EQ(File.find("BP_Test_C"), std::string::npos) << File;
	EXPECT_EQ(File.find("GeneratedClass="), std::string::npos) << File;
}

TEST_F(FBlueprintTest, LoadingTheClassPathLoadsAndCompilesTheBlueprint)
{
	SaveTestBlueprint();
	Unload(TEXT("/Game/BP_Test"));
	ASSERT_EQ(FindPackage(nullptr, TEXT("/Game/BP_Test")), nullptr);
	ASSERT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Game/BP_Test.BP_Test_C")), nullptr);

	UClass* Class = LoadClass<UObject>(nullptr, TEXT("/Game/BP_Test.BP_Test_C"));
	ASSERT_NE(Class, nullptr);
	EXPECT_TRUE(Class->IsA(UBlueprintGeneratedClass::StaticClass()));
	EXPECT_EQ(Class->GetSuperClass(), UReflectionTestOwner::StaticClass());
	EXPECT_EQ(StaticLoadObject(UClass::StaticClass(), nullptr, TEXT("/Game/BP_Test.BP_Test_C")), Class);
	EXPECT_EQ(LoadClass<UReflectionTestOwner>(nullptr, TEXT("/Game/BP_Test.BP_Test_C")), Class);

	// The package path and the object path name the same Blueprint, whose class this is.
	UBlueprint* ByPackage = LoadObject<UBlueprint>(nullptr, TEXT("/Game/BP_Test"));
	UBlueprint* ByObject = LoadObject<UBlueprint>(nullptr, TEXT("/Game/BP_Test.BP_Test"));
	ASSERT_NE(ByPackage, nullptr);
	EXPECT_EQ(ByPackage, ByObject);
	EXPECT_EQ(ByPackage->GeneratedClass.Get(), Class);
	EXPECT_EQ(ByPackage->ParentClass.Get(), UReflectionTestOwner::StaticClass());
	ASSERT_EQ(ByPackage->NewVariables.Num(), 9);
	EXPECT_EQ(ByPackage->NewVariables[0].VarName, FName(TEXT("Set LiveLink Preset")));
	EXPECT_EQ(ByPackage->NewVariables[1].VarType.PinSubCategoryObject.Get(), UReflectionTestBase::StaticClass());
	EXPECT_TRUE(ByPackage->NewVariables[8].VarType.IsArray());

	// Every variable is a real property of the class, named exactly, laid out after the parent's memory.
	const int32 NativeSize = UReflectionTestOwner::StaticClass()->GetPropertiesSize();
	const FBoolProperty* Flag = FindFProperty<FBoolProperty>(Class, TEXT("Set LiveLink Preset"));
	const FObjectProperty* Preset = FindFProperty<FObjectProperty>(Class, TEXT("LiveLinkPreset"));
	const FIntProperty* Count = FindFProperty<FIntProperty>(Class, TEXT("Count"));
	const FDoubleProperty* Focal = FindFProperty<FDoubleProperty>(Class, TEXT("Focal Length"));
	const FStrProperty* Subject = FindFProperty<FStrProperty>(Class, TEXT("Subject"));
	const FNameProperty* Tag = FindFProperty<FNameProperty>(Class, TEXT("Tag"));
	const FSoftObjectProperty* PresetPath = FindFProperty<FSoftObjectProperty>(Class, TEXT("Preset Path"));
	const FInt64Property* Big = FindFProperty<FInt64Property>(Class, TEXT("Big"));
	const FArrayProperty* Names = FindFProperty<FArrayProperty>(Class, TEXT("Names"));
	ASSERT_TRUE(Flag && Preset && Count && Focal && Subject && Tag && PresetPath && Big && Names);
	EXPECT_EQ(Preset->PropertyClass, UReflectionTestBase::StaticClass());
	EXPECT_TRUE(CastField<FStrProperty>(Names->Inner) != nullptr);
	for (const FProperty* Property :
		TArray<const FProperty*>{Flag, Preset, Count, Focal, Subject, Tag, PresetPath, Big, Names})
	{
		EXPECT_GE(Property->GetOffset_ForInternal(), NativeSize) << Str(Property->GetName());
		EXPECT_TRUE(Property->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible)) << Str(Property->GetName());
		EXPECT_EQ(Property->GetOwner<UClass>(), Class);
	}
	EXPECT_GT(Class->GetPropertiesSize(), NativeSize);
	// The parent's properties are still found through the class.
	EXPECT_NE(FindFProperty<FObjectProperty>(Class, TEXT("Component")), nullptr);

	// The class default object carries the default values.
	UObject* Default = Class->GetDefaultObject();
	ASSERT_NE(Default, nullptr);
	EXPECT_TRUE(Flag->GetPropertyValue_InContainer(Default));
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Default), 42);
	EXPECT_DOUBLE_EQ(Focal->GetPropertyValue_InContainer(Default), 35.5);
	EXPECT_EQ(Str(Subject->GetPropertyValue_InContainer(Default)), "Camera \"A\", left");
	EXPECT_EQ(Tag->GetPropertyValue_InContainer(Default), FName(TEXT("Main")));
	EXPECT_EQ(Str(PresetPath->GetPathString(PresetPath->ContainerPtrToValuePtr<void>(Default))),
		"/Game/Somewhere/Preset.Preset");
	EXPECT_EQ(Big->GetPropertyValue_InContainer(Default), -6400000000000LL);
	EXPECT_EQ(FScriptArrayHelper(Names, Names->ContainerPtrToValuePtr<void>(Default)).Num(), 2);
	EXPECT_EQ(Preset->GetObjectPropertyValue_InContainer(Default), nullptr);

	// Instances start from the defaults and keep their own values.
	UPackage* Level = CreatePackage(TEXT("/Game/Target"));
	UReflectionTestOwner* First = NewObject<UReflectionTestOwner>(Level, Class, TEXT("First"));
	UReflectionTestOwner* Second = NewObject<UReflectionTestOwner>(Level, Class, TEXT("Second"));
	ASSERT_NE(First->Component.Get(), nullptr);
	EXPECT_TRUE(Flag->GetPropertyValue_InContainer(First));
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Second), 42);
	UReflectionTestBase* Target = NewObject<UReflectionTestBase>(Level, TEXT("PresetObject"));
	Flag->SetPropertyValue_InContainer(First, false);
	Count->SetPropertyValue_InContainer(First, 7);
	Subject->SetPropertyValue_InContainer(First, TEXT("changed"));
	Preset->SetObjectPropertyValue_InContainer(First, Target);
	EXPECT_FALSE(Flag->GetPropertyValue_InContainer(First));
	EXPECT_TRUE(Flag->GetPropertyValue_InContainer(Second));
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Second), 42);
	EXPECT_EQ(Str(Subject->GetPropertyValue_InContainer(Second)), "Camera \"A\", left");
	EXPECT_EQ(Preset->GetObjectPropertyValue_InContainer(First), Target);
	EXPECT_EQ(Preset->GetObjectPropertyValue_InContainer(Second), nullptr);
	EXPECT_TRUE(Flag->GetPropertyValue_InContainer(Default));
}

TEST_F(FBlueprintTest, InstancesOfABlueprintClassSaveAndLoadInOtherPackages)
{
	SaveTestBlueprint();
	UClass* Class = LoadClass<UObject>(nullptr, TEXT("/Game/BP_Test.BP_Test_C"));
	ASSERT_NE(Class, nullptr);
	UPackage* Level = CreatePackage(TEXT("/Game/Target"));
	UObject* Instance = NewObject<UObject>(Level, Class, TEXT("Target"), RF_Public | RF_Standalone);
	FIntProperty* Count = FindFProperty<FIntProperty>(Class, TEXT("Count"));
	ASSERT_NE(Count, nullptr);
	Count->SetPropertyValue_InContainer(Instance, 9);
	ASSERT_TRUE(Save(Level, Instance));

	Unload(TEXT("/Game/Target"));
	Unload(TEXT("/Game/BP_Test"));
	ASSERT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Game/BP_Test.BP_Test_C")), nullptr);

	// Loading the instance loads the Blueprint that makes its class.
	UObject* Loaded = LoadObject<UObject>(nullptr, TEXT("/Game/Target.Target"));
	ASSERT_NE(Loaded, nullptr);
	UClass* LoadedClass = Loaded->GetClass();
	EXPECT_EQ(Str(LoadedClass->GetPathName()), "/Game/BP_Test.BP_Test_C");
	FIntProperty* LoadedCount = FindFProperty<FIntProperty>(LoadedClass, TEXT("Count"));
	ASSERT_NE(LoadedCount, nullptr);
	EXPECT_EQ(LoadedCount->GetPropertyValue_InContainer(Loaded), 9);
	FBoolProperty* Flag = FindFProperty<FBoolProperty>(LoadedClass, TEXT("Set LiveLink Preset"));
	ASSERT_NE(Flag, nullptr);
	EXPECT_TRUE(Flag->GetPropertyValue_InContainer(Loaded));
}

TEST_F(FBlueprintTest, BlueprintOfABlueprintClassExtendsIt)
{
	SaveTestBlueprint();
	UClass* ParentClass = LoadClass<UObject>(nullptr, TEXT("/Game/BP_Test.BP_Test_C"));
	ASSERT_NE(ParentClass, nullptr);
	UPackage* Package = CreatePackage(TEXT("/Game/BP_Child"));
	UBlueprint* Child = FKismetEditorUtilities::CreateBlueprint(ParentClass, Package, TEXT("BP_Child"), BPTYPE_Normal);
	ASSERT_TRUE(FBlueprintEditorUtils::AddMemberVariable(Child, TEXT("Extra"), PinType(K2::PC_Int), TEXT("5")));
	FKismetEditorUtilities::CompileBlueprint(Child);
	ASSERT_TRUE(Save(Package, Child));

	Unload(TEXT("/Game/BP_Child"));
	Unload(TEXT("/Game/BP_Test"));
	ASSERT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Game/BP_Test.BP_Test_C")), nullptr);

	UClass* ChildClass = LoadClass<UObject>(nullptr, TEXT("/Game/BP_Child.BP_Child_C"));
	ASSERT_NE(ChildClass, nullptr);
	UClass* Parent = ChildClass->GetSuperClass();
	ASSERT_NE(Parent, nullptr);
	EXPECT_EQ(Str(Parent->GetPathName()), "/Game/BP_Test.BP_Test_C");
	EXPECT_EQ(Parent->GetSuperClass(), UReflectionTestOwner::StaticClass());
	const FIntProperty* Extra = FindFProperty<FIntProperty>(ChildClass, TEXT("Extra"));
	const FIntProperty* Count = FindFProperty<FIntProperty>(ChildClass, TEXT("Count"));
	ASSERT_TRUE(Extra && Count);
	EXPECT_GE(Extra->GetOffset_ForInternal(), Parent->GetPropertiesSize());
	UObject* Default = ChildClass->GetDefaultObject();
	EXPECT_EQ(Extra->GetPropertyValue_InContainer(Default), 5);
	// The parent Blueprint's defaults reach the child through the parent's default object.
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Default), 42);
	TArray<UBlueprint*> Hierarchy;
	EXPECT_TRUE(UBlueprint::GetBlueprintHierarchyFromClass(ChildClass, Hierarchy));
	ASSERT_EQ(Hierarchy.Num(), 2);
	EXPECT_EQ(Str(Hierarchy[1]->GetPathName()), "/Game/BP_Test.BP_Test");
}

TEST_F(FBlueprintTest, PinCategoriesHaveTheSchemaNames)
{
	// Names compare without case, and keep the spelling first registered ("Object" is a class name).
	EXPECT_TRUE(K2::PC_Boolean.ToString().Equals(TEXT("bool"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Int.ToString().Equals(TEXT("int"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Int64.ToString().Equals(TEXT("int64"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Real.ToString().Equals(TEXT("real"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Double.ToString().Equals(TEXT("double"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Float.ToString().Equals(TEXT("float"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_String.ToString().Equals(TEXT("string"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Name.ToString().Equals(TEXT("name"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Text.ToString().Equals(TEXT("text"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Object.ToString().Equals(TEXT("object"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Class.ToString().Equals(TEXT("class"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_SoftObject.ToString().Equals(TEXT("softobject"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_SoftClass.ToString().Equals(TEXT("softclass"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Struct.ToString().Equals(TEXT("struct"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Byte.ToString().Equals(TEXT("byte"), ESearchCase::IgnoreCase));
	EXPECT_TRUE(K2::PC_Enum.ToString().Equals(TEXT("enum"), ESearchCase::IgnoreCase));
}
