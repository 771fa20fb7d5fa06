// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "Templates/Casts.h"
#include "Templates/SubclassOf.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectIterator.h"

#include <gtest/gtest.h>

namespace
{
	std::string Str(const FString& Value)
	{
		return std::string(TCHAR_TO_UTF8(*Value));
	}
} // namespace

TEST(ObjectTest, PathAndFullNames)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Dir/NamesPkg"));
	UReflectionTestBase* Asset = NewObject<UReflectionTestBase>(Package, TEXT("Asset"));
	UReflectionTestBase* Sub = NewObject<UReflectionTestBase>(Asset, TEXT("Sub"));
	UReflectionTestBase* SubSub = NewObject<UReflectionTestBase>(Sub, TEXT("Deeper"));

	EXPECT_EQ(Str(Package->GetName()), "/Game/Dir/NamesPkg");
	EXPECT_EQ(Str(Asset->GetName()), "Asset");
	EXPECT_EQ(Str(Asset->GetPathName()), "/Game/Dir/NamesPkg.Asset");
	EXPECT_EQ(Str(Sub->GetPathName()), "/Game/Dir/NamesPkg.Asset:Sub");
	EXPECT_EQ(Str(SubSub->GetPathName()), "/Game/Dir/NamesPkg.Asset:Sub.Deeper");
	EXPECT_EQ(Str(Asset->GetFullName()), "ReflectionTestBase /Game/Dir/NamesPkg.Asset");
	EXPECT_EQ(Str(Asset->GetFullName(nullptr, EObjectFullNameFlags::IncludeClassPackage)),
		"/Script/CoreUObject.ReflectionTestBase /Game/Dir/NamesPkg.Asset");
	EXPECT_EQ(Str(UObject::StaticClass()->GetPathName()), "/Script/CoreUObject.Object");
	EXPECT_EQ(Str(UClass::StaticClass()->GetFullName()), "Class /Script/CoreUObject.Class");
	EXPECT_EQ(Sub->GetPackage(), Package);
	EXPECT_EQ(Sub->GetOutermost(), Package);
	EXPECT_EQ(Package->GetPackage(), Package);
	EXPECT_EQ(Str(GetNameSafe(nullptr)), "None");
	EXPECT_EQ(Str(GetPathNameSafe(nullptr)), "None");
	EXPECT_EQ(Str(Sub->GetPathName(Asset)), "Sub");
	EXPECT_TRUE(Sub->IsIn(Asset));
	EXPECT_TRUE(SubSub->IsIn(Package));
	EXPECT_FALSE(Asset->IsIn(Sub));
}

TEST(ObjectTest, FlagsAreOneWord)
{
	UReflectionTestBase* Object = NewObject<UReflectionTestBase>(GetTransientPackage());
	EXPECT_EQ(Object->GetFlags(), RF_NoFlags);
	Object->SetFlags(RF_Public | RF_Standalone);
	EXPECT_TRUE(Object->HasAnyFlags(RF_Standalone | RF_Transient));
	EXPECT_TRUE(Object->HasAllFlags(RF_Public | RF_Standalone));
	EXPECT_FALSE(Object->HasAllFlags(RF_Public | RF_Transient));
	EXPECT_EQ(Object->GetMaskedFlags(RF_Standalone | RF_Transient), RF_Standalone);
	Object->ClearFlags(RF_Standalone);
	EXPECT_EQ(Object->GetFlags(), RF_Public);
	EXPECT_EQ((uint32)(RF_Public | RF_Standalone), 0x3u);
	EXPECT_EQ((uint32)RF_Transient, 0x40u);
	EXPECT_EQ((uint32)RF_ClassDefaultObject, 0x10u);
	EXPECT_EQ((uint32)RF_MirroredGarbage, 0x40000000u);
	EXPECT_EQ((uint64)CPF_Config, 0x4000u);
	EXPECT_EQ((uint64)CPF_GlobalConfig, 0x40000u);
	EXPECT_EQ((uint32)CLASS_Config, 0x4u);
	EXPECT_EQ((uint32)CLASS_CompiledFromBlueprint, 0x40000u);
	EXPECT_EQ((int32)EInternalObjectFlags::Garbage, 1 << 21);
	EXPECT_EQ((int32)EInternalObjectFlags::RootSet, 1 << 30);
}

TEST(ObjectTest, NewObjectMakesUniqueNamesPerClass)
{
	UPackage* Package = CreatePackage(TEXT("/Game/UniqueNames"));
	UReflectionTestOwner* First = NewObject<UReflectionTestOwner>(Package);
	UReflectionTestOwner* Second = NewObject<UReflectionTestOwner>(Package);
	const FString FirstName = First->GetName();
	const FString SecondName = Second->GetName();
	EXPECT_TRUE(FirstName.StartsWith(TEXT("ReflectionTestOwner_")));
	EXPECT_TRUE(SecondName.StartsWith(TEXT("ReflectionTestOwner_")));
	EXPECT_NE(Str(FirstName), Str(SecondName));
	// The number follows the class's counter: consecutive objects get consecutive numbers.
	const int32 FirstNumber = FCString::Atoi(*FirstName.Mid(20));
	const int32 SecondNumber = FCString::Atoi(*SecondName.Mid(20));
	EXPECT_EQ(SecondNumber, FirstNumber + 1);
	// A name taken in the outer is skipped.
	const FName Taken(*FString::Printf(TEXT("ReflectionTestOwner_%d"), SecondNumber + 1));
	NewObject<UReflectionTestOwner>(Package, Taken);
	UReflectionTestOwner* Third = NewObject<UReflectionTestOwner>(Package);
	EXPECT_EQ(Str(Third->GetName()), Str(FString::Printf(TEXT("ReflectionTestOwner_%d"), SecondNumber + 2)));
}

TEST(ObjectTest, DefaultSubobjects)
{
	UReflectionTestOwner* Owner = NewObject<UReflectionTestOwner>(GetTransientPackage());
	ASSERT_NE(Owner->Component.Get(), nullptr);
	EXPECT_EQ(Owner->Component->GetOuter(), Owner);
	EXPECT_EQ(Str(Owner->Component->GetName()), "Component");
	EXPECT_TRUE(Owner->Component->HasAnyFlags(RF_DefaultSubObject));
	const UReflectionTestOwner* Default = GetDefault<UReflectionTestOwner>();
	ASSERT_NE(Default->Component.Get(), nullptr);
	EXPECT_NE(Default->Component.Get(), Owner->Component.Get());
	EXPECT_TRUE(Default->Component->IsTemplate());
}

TEST(ObjectTest, ClassDefaultObjectIsCreatedOnDemand)
{
	UClass* Class = UReflectionTestBase::StaticClass();
	UObject* Default = Class->GetDefaultObject();
	ASSERT_NE(Default, nullptr);
	EXPECT_TRUE(Default->HasAnyFlags(RF_ClassDefaultObject));
	EXPECT_TRUE(Default->IsTemplate());
	EXPECT_EQ(Str(Default->GetName()), "Default__ReflectionTestBase");
	EXPECT_EQ(Str(Default->GetPathName()), "/Script/CoreUObject.Default__ReflectionTestBase");
	EXPECT_EQ(Class->GetDefaultObject(false), Default);
	EXPECT_EQ(GetDefault<UReflectionTestBase>(), Default);
	EXPECT_EQ(GetMutableDefault<UReflectionTestBase>(), Default);

	// Instances do not take native values from the default object unless they are config properties.
	GetMutableDefault<UReflectionTestObject>()->FloatValue = 2.5f;
	GetMutableDefault<UReflectionTestObject>()->IntValue = 99;
	UReflectionTestObject* Instance = NewObject<UReflectionTestObject>(GetTransientPackage());
	EXPECT_FLOAT_EQ(Instance->FloatValue, 2.5f);
	EXPECT_EQ(Instance->IntValue, 0);
	GetMutableDefault<UReflectionTestObject>()->FloatValue = 0.0f;
	GetMutableDefault<UReflectionTestObject>()->IntValue = 0;

	// An explicit template gives all its values.
	UReflectionTestObject* Template = NewObject<UReflectionTestObject>(GetTransientPackage());
	Template->IntValue = 12;
	Template->StringValue = TEXT("copied");
	UReflectionTestObject* FromTemplate =
		NewObject<UReflectionTestObject>(GetTransientPackage(), NAME_None, RF_NoFlags, Template);
	EXPECT_EQ(FromTemplate->IntValue, 12);
	EXPECT_EQ(Str(FromTemplate->StringValue), "copied");
}

TEST(ObjectTest, ClassFlagsAndConfigNames)
{
	UClass* Class = UReflectionTestObject::StaticClass();
	EXPECT_TRUE(Class->HasAnyClassFlags(CLASS_Native));
	EXPECT_TRUE(Class->HasAnyClassFlags(CLASS_Config));
	EXPECT_EQ(Str(Class->GetConfigName()), Str(GGameIni));
	EXPECT_EQ(Str(Class->ClassConfigName.ToString()), "Game");
	EXPECT_EQ(Str(UObject::StaticClass()->ClassConfigName.ToString()), "Engine");
	EXPECT_FALSE(UObject::StaticClass()->HasAnyClassFlags(CLASS_Config));
	EXPECT_TRUE(UObject::StaticClass()->HasAnyClassFlags(CLASS_Abstract));
	EXPECT_EQ(Class->GetSuperClass(), UReflectionTestBase::StaticClass());
	EXPECT_EQ(UObject::StaticClass()->GetSuperClass(), nullptr);
	EXPECT_TRUE(Class->IsChildOf(UObject::StaticClass()));
	EXPECT_TRUE(Class->IsChildOf<UReflectionTestBase>());
	EXPECT_FALSE(UReflectionTestBase::StaticClass()->IsChildOf(Class));
	EXPECT_FALSE(Class->IsChildOf(nullptr));
	EXPECT_EQ(UClass::StaticClass()->GetClass(), UClass::StaticClass());
	EXPECT_EQ(Class->GetClass(), UClass::StaticClass());
	EXPECT_EQ(Str(Class->GetMetaData(TEXT("ShortTooltip"))), "Test object");
	EXPECT_EQ(Str(Class->GetMetaData(TEXT("ToolTip"))), "A class with one property of every supported kind.");
	EXPECT_EQ(Str(Class->GetMetaData(TEXT("IncludePath"))), "Tests/ReflectionTestTypes.h");
	EXPECT_EQ(UReflectionTestObject::StaticClassFlags & CLASS_Config, CLASS_Config);
}

TEST(ObjectTest, StaticFindObjectNeedsPaths)
{
	// A short name with no outer finds nothing: only top-level objects (packages) are found that way.
	EXPECT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("Object")), nullptr);
	EXPECT_EQ(
		StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/CoreUObject.Object")), UObject::StaticClass());
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("Object")), UObject::StaticClass());
	EXPECT_EQ(FindFirstObject<UClass>(TEXT("ReflectionTestObject")), UReflectionTestObject::StaticClass());
	EXPECT_EQ(FindObject<UClass>(nullptr, TEXT("/Script/CoreUObject.ReflectionTestOwner")),
		UReflectionTestOwner::StaticClass());
	EXPECT_EQ(StaticFindObject(UPackage::StaticClass(), nullptr, TEXT("/Script/CoreUObject")),
		UObject::StaticClass()->GetOuter());
	EXPECT_EQ(StaticFindObject(UClass::StaticClass(), nullptr, TEXT("None")), nullptr);
	// Wrong class filter.
	EXPECT_EQ(StaticFindObject(UPackage::StaticClass(), nullptr, TEXT("/Script/CoreUObject.Object")), nullptr);

	UPackage* Package = CreatePackage(TEXT("/Game/FindPkg"));
	UReflectionTestBase* Asset = NewObject<UReflectionTestBase>(Package, TEXT("FindPkg"));
	UReflectionTestBase* Sub = NewObject<UReflectionTestBase>(Asset, TEXT("Inner"));
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/FindPkg")), Package);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/FindPkg.FindPkg")), Asset);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/FindPkg.FindPkg:Inner")), Sub);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Package, TEXT("FindPkg")), Asset);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Asset, TEXT("Inner")), Sub);
	EXPECT_EQ(StaticFindObjectFast(UReflectionTestBase::StaticClass(), Asset, FName(TEXT("Inner"))), Sub);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/Missing.Missing")), nullptr);
	EXPECT_EQ(FindFirstObject<UReflectionTestBase>(TEXT("Inner")), Sub);
	EXPECT_EQ(
		StaticFindObject(UReflectionTestBase::StaticClass(), nullptr, TEXT("/Game/FindPkg.FindPkg"), true), Asset);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), nullptr, TEXT("/Game/FindPkg.FindPkg"), true), nullptr);
	EXPECT_EQ(FindPackage(nullptr, TEXT("/Game/FindPkg")), Package);
	EXPECT_EQ(CreatePackage(TEXT("/Game/FindPkg")), Package);
}

TEST(ObjectTest, IsValidAndGarbage)
{
	EXPECT_FALSE(IsValid(nullptr));
	UReflectionTestBase* Object = NewObject<UReflectionTestBase>(GetTransientPackage());
	EXPECT_TRUE(IsValid(Object));
	Object->MarkAsGarbage();
	EXPECT_FALSE(IsValid(Object));
	EXPECT_TRUE(Object->HasAnyFlags(RF_MirroredGarbage));
	Object->ClearGarbage();
	EXPECT_TRUE(IsValid(Object));
}

TEST(ObjectTest, CastsAndSubclassOf)
{
	UReflectionTestObject* Object = NewObject<UReflectionTestObject>(GetTransientPackage());
	UObject* AsObject = Object;
	EXPECT_EQ(Cast<UReflectionTestBase>(AsObject), Object);
	EXPECT_EQ(Cast<UReflectionTestOwner>(AsObject), nullptr);
	EXPECT_EQ(Cast<UReflectionTestBase>((UObject*)nullptr), nullptr);
	EXPECT_EQ(CastChecked<UReflectionTestObject>(AsObject), Object);
	EXPECT_EQ(CastChecked<UReflectionTestObject>((UObject*)nullptr, ECastCheckedType::NullAllowed), nullptr);
	EXPECT_EQ(ExactCast<UReflectionTestBase>(AsObject), nullptr);
	EXPECT_EQ(ExactCast<UReflectionTestObject>(AsObject), Object);
	EXPECT_TRUE(Object->IsA<UReflectionTestBase>());
	EXPECT_TRUE(Object->IsA(UObject::StaticClass()));
	EXPECT_FALSE(Object->IsA<UReflectionTestOwner>());
	TObjectPtr<UObject> Ptr = Object;
	EXPECT_EQ(Cast<UReflectionTestObject>(Ptr), Object);
	EXPECT_TRUE(Ptr == Object);
	EXPECT_EQ(Ptr.Get(), AsObject);

	TSubclassOf<UReflectionTestBase> Sub = UReflectionTestObject::StaticClass();
	EXPECT_EQ(Sub.Get(), UReflectionTestObject::StaticClass());
	EXPECT_EQ((UClass*)Sub, UReflectionTestObject::StaticClass());
	EXPECT_EQ(Sub.GetDefaultObject(), GetDefault<UReflectionTestObject>());
	TSubclassOf<UReflectionTestBase> Wrong = UReflectionTestOwner::StaticClass();
	EXPECT_EQ(Wrong.Get(), nullptr);
}

TEST(ObjectTest, IteratorsAndOuterQueries)
{
	UPackage* Package = CreatePackage(TEXT("/Game/IteratorPkg"));
	UReflectionTestOwner* A = NewObject<UReflectionTestOwner>(Package, TEXT("A"));
	UReflectionTestOwner* B = NewObject<UReflectionTestOwner>(Package, TEXT("B"));
	int32 Found = 0;
	bool bSawDefault = false;
	for (TObjectIterator<UReflectionTestOwner> It; It; ++It)
	{
		Found += (*It == A || *It == B) ? 1 : 0;
		bSawDefault |= It->HasAnyFlags(RF_ClassDefaultObject);
	}
	EXPECT_EQ(Found, 2);
	EXPECT_FALSE(bSawDefault);
	TArray<UObject*> Inners;
	GetObjectsWithOuter(Package, Inners, false);
	EXPECT_EQ(Inners.Num(), 2);
	TArray<UObject*> Nested;
	GetObjectsWithOuter(Package, Nested, true);
	EXPECT_EQ(Nested.Num(), 4);
	TArray<UObject*> Owners;
	GetObjectsOfClass(UReflectionTestOwner::StaticClass(), Owners);
	EXPECT_TRUE(Owners.Contains(A));
	EXPECT_TRUE(Owners.Contains(B));
	B->MarkAsGarbage();
	int32 Live = 0;
	for (TObjectIterator<UReflectionTestOwner> It; It; ++It)
	{
		Live += *It == B ? 1 : 0;
	}
	EXPECT_EQ(Live, 0);
	TArray<UClass*> Derived;
	GetDerivedClasses(UReflectionTestBase::StaticClass(), Derived);
	EXPECT_TRUE(Derived.Contains(UReflectionTestObject::StaticClass()));
}

TEST(ObjectTest, RenameAndDuplicate)
{
	UPackage* Package = CreatePackage(TEXT("/Game/DupPkg"));
	UReflectionTestOwner* Source = NewObject<UReflectionTestOwner>(Package, TEXT("Source"));
	Source->Component->BaseValue = 31;
	UReflectionTestBase* Child = NewObject<UReflectionTestBase>(Source, TEXT("Child"));
	Child->BaseValue = 5;
	Source->Children.Add(Child);
	Source->Children.Add(Package);

	UReflectionTestOwner* Copy = DuplicateObject(Source, Package, TEXT("Copy"));
	ASSERT_NE(Copy, nullptr);
	EXPECT_EQ(Str(Copy->GetPathName()), "/Game/DupPkg.Copy");
	ASSERT_NE(Copy->Component.Get(), nullptr);
	EXPECT_NE(Copy->Component.Get(), Source->Component.Get());
	EXPECT_EQ(Copy->Component->GetOuter(), Copy);
	EXPECT_EQ(Copy->Component->BaseValue, 31);
	ASSERT_EQ(Copy->Children.Num(), 2);
	EXPECT_NE(Copy->Children[0].Get(), (UObject*)Child);
	EXPECT_EQ(Copy->Children[0]->GetOuter(), Copy);
	EXPECT_EQ(Cast<UReflectionTestBase>(Copy->Children[0])->BaseValue, 5);
	EXPECT_EQ(Copy->Children[1].Get(), (UObject*)Package);

	EXPECT_TRUE(Copy->Rename(TEXT("Renamed")));
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Package, TEXT("Renamed")), Copy);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Package, TEXT("Copy")), nullptr);
	EXPECT_FALSE(Copy->Rename(TEXT("Source"), nullptr, REN_Test));
}

TEST(ObjectTest, PackagesTrackDirtiness)
{
	UPackage* Package = CreatePackage(TEXT("/Game/DirtyPkg"));
	UReflectionTestBase* Asset = NewObject<UReflectionTestBase>(Package, TEXT("DirtyPkg"));
	EXPECT_FALSE(Package->IsDirty());
	EXPECT_TRUE(Asset->MarkPackageDirty());
	EXPECT_TRUE(Package->IsDirty());
	Package->SetDirtyFlag(false);
	GIsEditorLoadingPackage = true;
	EXPECT_FALSE(Asset->MarkPackageDirty());
	GIsEditorLoadingPackage = false;
	EXPECT_FALSE(Package->IsDirty());
	EXPECT_TRUE(UObject::StaticClass()->GetPackage()->HasAnyPackageFlags(PKG_CompiledIn));
}
