// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/Stack.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	std::string Str(const FString& Value)
	{
		return std::string(TCHAR_TO_UTF8(*Value));
	}

	UReflectionTestObject* MakeObject()
	{
		return NewObject<UReflectionTestObject>(GetTransientPackage());
	}

	FProperty* Prop(const TCHAR* Name)
	{
		FProperty* Property = FindFProperty<FProperty>(UReflectionTestObject::StaticClass(), FName(Name));
		EXPECT_NE(Property, nullptr) << TCHAR_TO_UTF8(Name);
		return Property;
	}

	std::string Export(UObject* Object, const TCHAR* Name, int32 PortFlags = PPF_None)
	{
		FString Out;
		Prop(Name)->ExportTextItem_InContainer(Out, Object, nullptr, Object, PortFlags);
		return Str(Out);
	}

	/** Imports Text into the property and returns it exported again. */
	std::string RoundTrip(UObject* Object, const TCHAR* Name, const TCHAR* Text)
	{
		FProperty* Property = Prop(Name);
		const TCHAR* End = Property->ImportText_InContainer(Text, Object, Object, PPF_None);
		EXPECT_NE(End, nullptr) << TCHAR_TO_UTF8(Text);
		return Export(Object, Name);
	}
} // namespace

TEST(ReflectionTest, FieldIterationOrderAndLookup)
{
	TArray<FString> Names;
	for (TFieldIterator<FProperty> It(UReflectionTestObject::StaticClass()); It; ++It)
	{
		Names.Add(It->GetName());
	}
	ASSERT_GE(Names.Num(), 4);
	// The class's own properties in declaration order, then the super class's.
	EXPECT_EQ(Str(Names[0]), "IntValue");
	EXPECT_EQ(Str(Names[1]), "Int8Value");
	EXPECT_EQ(Str(Names[Names.Num() - 2]), "BaseValue");
	EXPECT_EQ(Str(Names[Names.Num() - 1]), "TransientValue");

	int32 OwnOnly = 0;
	for (TFieldIterator<FProperty> It(UReflectionTestObject::StaticClass(), EFieldIteratorFlags::ExcludeSuper); It;
		 ++It)
	{
		++OwnOnly;
		EXPECT_EQ(It->GetOwnerClass(), UReflectionTestObject::StaticClass());
	}
	EXPECT_EQ(OwnOnly, Names.Num() - 2);

	int32 ObjectProperties = 0;
	for (FObjectPropertyBase* Property : TFieldRange<FObjectPropertyBase>(UReflectionTestObject::StaticClass()))
	{
		ObjectProperties += Property != nullptr ? 1 : 0;
	}
	EXPECT_EQ(ObjectProperties, 5); // ObjectRef, RawObjectRef, ClassRef, RawClassRef, WeakRef

	EXPECT_NE(FindFProperty<FIntProperty>(UReflectionTestObject::StaticClass(), TEXT("BaseValue")), nullptr);
	EXPECT_EQ(FindFProperty<FFloatProperty>(UReflectionTestObject::StaticClass(), TEXT("BaseValue")), nullptr);
	EXPECT_EQ(FindFProperty<FProperty>(UReflectionTestObject::StaticClass(), TEXT("Missing")), nullptr);
	EXPECT_NE(FindFProperty<FProperty>(UReflectionTestObject::StaticClass(), TEXT("intvalue")), nullptr);
	EXPECT_EQ(UReflectionTestObject::StaticClass()->FindPropertyByName(TEXT("PrivateValue")),
		FindFProperty<FProperty>(TEXT("/Script/CoreUObject.ReflectionTestObject:PrivateValue")));

	int32 Functions = 0;
	for (TFieldIterator<UFunction> It(UReflectionTestObject::StaticClass()); It; ++It)
	{
		++Functions;
	}
	EXPECT_EQ(Functions, 6);
}

TEST(ReflectionTest, PropertyKindsFlagsAndMetadata)
{
	EXPECT_NE(CastField<FIntProperty>(Prop(TEXT("IntValue"))), nullptr);
	EXPECT_NE(CastField<FInt8Property>(Prop(TEXT("Int8Value"))), nullptr);
	EXPECT_NE(CastField<FInt16Property>(Prop(TEXT("Int16Value"))), nullptr);
	EXPECT_NE(CastField<FInt64Property>(Prop(TEXT("Int64Value"))), nullptr);
	EXPECT_NE(CastField<FByteProperty>(Prop(TEXT("ByteValue"))), nullptr);
	EXPECT_NE(CastField<FUInt16Property>(Prop(TEXT("UInt16Value"))), nullptr);
	EXPECT_NE(CastField<FUInt32Property>(Prop(TEXT("UInt32Value"))), nullptr);
	EXPECT_NE(CastField<FUInt64Property>(Prop(TEXT("UInt64Value"))), nullptr);
	EXPECT_NE(CastField<FFloatProperty>(Prop(TEXT("FloatValue"))), nullptr);
	EXPECT_NE(CastField<FDoubleProperty>(Prop(TEXT("DoubleValue"))), nullptr);
	EXPECT_NE(CastField<FNameProperty>(Prop(TEXT("NameValue"))), nullptr);
	EXPECT_NE(CastField<FStrProperty>(Prop(TEXT("StringValue"))), nullptr);
	EXPECT_NE(CastField<FTextProperty>(Prop(TEXT("TextValue"))), nullptr);
	EXPECT_NE(CastField<FEnumProperty>(Prop(TEXT("Mode"))), nullptr);
	EXPECT_EQ(CastField<FByteProperty>(Prop(TEXT("Legacy")))->Enum, StaticEnum<EReflectionTestLegacy::Type>());
	EXPECT_NE(CastField<FObjectProperty>(Prop(TEXT("ObjectRef"))), nullptr);
	EXPECT_EQ(
		CastField<FObjectProperty>(Prop(TEXT("RawObjectRef")))->PropertyClass, UReflectionTestBase::StaticClass());
	EXPECT_EQ(CastField<FClassProperty>(Prop(TEXT("ClassRef")))->MetaClass, UReflectionTestBase::StaticClass());
	EXPECT_EQ(CastField<FClassProperty>(Prop(TEXT("RawClassRef")))->MetaClass, UObject::StaticClass());
	EXPECT_NE(CastField<FWeakObjectProperty>(Prop(TEXT("WeakRef"))), nullptr);
	EXPECT_EQ(CastField<FStructProperty>(Prop(TEXT("Point")))->Struct, FReflectionTestPoint::StaticStruct());
	EXPECT_NE(CastField<FIntProperty>(CastField<FArrayProperty>(Prop(TEXT("IntArray")))->Inner), nullptr);
	EXPECT_NE(CastField<FStrProperty>(CastField<FMapProperty>(Prop(TEXT("StringToInt")))->KeyProp), nullptr);
	EXPECT_NE(CastField<FNameProperty>(CastField<FSetProperty>(Prop(TEXT("NameSet")))->ElementProp), nullptr);
	EXPECT_EQ(Prop(TEXT("FixedArray"))->ArrayDim, 3);
	EXPECT_EQ(Prop(TEXT("FixedArray"))->ElementSize, 4);
	EXPECT_EQ(CastField<FIntProperty>(Prop(TEXT("Int8Value"))), nullptr);
	EXPECT_TRUE(Prop(TEXT("ClassRef"))->IsA<FObjectPropertyBase>());

	EXPECT_TRUE(Prop(TEXT("IntValue"))->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible));
	EXPECT_FALSE(Prop(TEXT("IntValue"))->HasAnyPropertyFlags(CPF_BlueprintReadOnly | CPF_Config));
	EXPECT_TRUE(
		Prop(TEXT("bNativeBool"))->HasAllPropertyFlags(CPF_Edit | CPF_BlueprintVisible | CPF_BlueprintReadOnly));
	EXPECT_TRUE(Prop(TEXT("bBitC"))->HasAllPropertyFlags(CPF_Edit | CPF_EditConst));
	EXPECT_TRUE(Prop(TEXT("FloatValue"))->HasAnyPropertyFlags(CPF_Config));
	EXPECT_TRUE(Prop(TEXT("DoubleValue"))->HasAllPropertyFlags(CPF_Config | CPF_GlobalConfig));
	EXPECT_TRUE(Prop(TEXT("TransientValue"))->HasAnyPropertyFlags(CPF_Transient));
	EXPECT_TRUE(Prop(TEXT("NameValue"))->HasAnyPropertyFlags(CPF_SaveGame));
	EXPECT_TRUE(Prop(TEXT("PrivateValue"))->HasAnyPropertyFlags(CPF_NativeAccessSpecifierPrivate));
	EXPECT_TRUE(Prop(TEXT("IntValue"))->HasAnyPropertyFlags(CPF_NativeAccessSpecifierPublic));
	EXPECT_TRUE(Prop(TEXT("IntValue"))->HasAnyPropertyFlags(CPF_IsPlainOldData | CPF_ZeroConstructor));

	EXPECT_EQ(Str(Prop(TEXT("IntValue"))->GetMetaData(TEXT("ConsoleVariable"))), "r.Test.Int");
	EXPECT_EQ(Str(Prop(TEXT("IntValue"))->GetMetaData(TEXT("DisplayName"))), "Int Value");
	EXPECT_EQ(Str(Prop(TEXT("IntValue"))->GetMetaData(TEXT("Category"))), "Numbers");
	EXPECT_TRUE(Prop(TEXT("IntValue"))->HasMetaData(TEXT("ConsoleVariable")));
	EXPECT_FALSE(Prop(TEXT("ByteValue"))->HasMetaData(TEXT("ConsoleVariable")));
	EXPECT_EQ(Str(Prop(TEXT("IntValue"))->GetDisplayNameText().ToString()), "Int Value");
	EXPECT_EQ(Str(Prop(TEXT("bNativeBool"))->GetDisplayNameText().ToString()), "Native Bool");
	EXPECT_EQ(Str(Prop(TEXT("IntValue"))->GetCPPType()), "int32");
	EXPECT_EQ(Str(Prop(TEXT("IntArray"))->GetCPPType()), "TArray<int32>");
	EXPECT_EQ(Prop(TEXT("IntValue"))->GetOwnerClass(), UReflectionTestObject::StaticClass());
	EXPECT_EQ(Prop(TEXT("IntValue"))->GetOwnerStruct(), UReflectionTestObject::StaticClass());
}

TEST(ReflectionTest, ContainerPtrToValuePtrReadsAndWritesMembers)
{
	UReflectionTestObject* Object = MakeObject();
	FIntProperty* IntProperty = CastField<FIntProperty>(Prop(TEXT("IntValue")));
	*IntProperty->ContainerPtrToValuePtr<int32>(Object) = 17;
	EXPECT_EQ(Object->IntValue, 17);
	Object->IntValue = 23;
	EXPECT_EQ(IntProperty->GetPropertyValue_InContainer(Object), 23);
	EXPECT_EQ(Object->GetPrivateValue(), *Prop(TEXT("PrivateValue"))->ContainerPtrToValuePtr<int32>(Object));
	FProperty* Fixed = Prop(TEXT("FixedArray"));
	*Fixed->ContainerPtrToValuePtr<int32>(Object, 2) = 9;
	EXPECT_EQ(Object->FixedArray[2], 9);

	UReflectionTestObject* Other = MakeObject();
	Prop(TEXT("StringArray"))->CopyCompleteValue_InContainer(Other, Object);
	Object->StringArray = {TEXT("a"), TEXT("b")};
	Prop(TEXT("StringArray"))->CopyCompleteValue_InContainer(Other, Object);
	ASSERT_EQ(Other->StringArray.Num(), 2);
	EXPECT_EQ(Str(Other->StringArray[1]), "b");
	EXPECT_TRUE(Prop(TEXT("StringArray"))->Identical_InContainer(Object, Other));
	Other->StringArray.Add(TEXT("c"));
	EXPECT_FALSE(Prop(TEXT("StringArray"))->Identical_InContainer(Object, Other));
	Prop(TEXT("StringArray"))->ClearValue_InContainer(Other);
	EXPECT_EQ(Other->StringArray.Num(), 0);
}

TEST(ReflectionTest, BitfieldBools)
{
	UReflectionTestObject* Object = MakeObject();
	FBoolProperty* BitA = CastField<FBoolProperty>(Prop(TEXT("bBitA")));
	FBoolProperty* BitB = CastField<FBoolProperty>(Prop(TEXT("bBitB")));
	FBoolProperty* BitC = CastField<FBoolProperty>(Prop(TEXT("bBitC")));
	FBoolProperty* Native = CastField<FBoolProperty>(Prop(TEXT("bNativeBool")));
	ASSERT_TRUE(BitA && BitB && BitC && Native);
	EXPECT_FALSE(BitA->IsNativeBool());
	EXPECT_TRUE(Native->IsNativeBool());

	BitB->SetPropertyValue_InContainer(Object, true);
	EXPECT_EQ(Object->bBitB, 1u);
	EXPECT_EQ(Object->bBitA, 0u);
	EXPECT_FALSE(BitA->GetPropertyValue_InContainer(Object));
	Object->bBitA = 1;
	EXPECT_TRUE(BitA->GetPropertyValue_InContainer(Object));
	EXPECT_TRUE(BitB->GetPropertyValue_InContainer(Object));
	BitA->SetPropertyValue_InContainer(Object, false);
	EXPECT_EQ(Object->bBitA, 0u);
	EXPECT_EQ(Object->bBitB, 1u);
	BitC->SetPropertyValue_InContainer(Object, true);
	EXPECT_EQ(Object->bBitC, 1u);
	Native->SetPropertyValue_InContainer(Object, true);
	EXPECT_TRUE(Object->bNativeBool);
	EXPECT_EQ(Export(Object, TEXT("bBitB")), "True");
	EXPECT_EQ(Export(Object, TEXT("bBitA")), "False");
	EXPECT_EQ(RoundTrip(Object, TEXT("bBitA"), TEXT("True")), "True");
	EXPECT_EQ(Object->bBitA, 1u);
	EXPECT_EQ(Prop(TEXT("bBitA"))->ImportText_InContainer(TEXT("Maybe"), Object, Object, PPF_None), nullptr);
}

TEST(ReflectionTest, TextFormsOfEveryKind)
{
	UReflectionTestObject* Object = MakeObject();
	EXPECT_EQ(RoundTrip(Object, TEXT("IntValue"), TEXT("-42")), "-42");
	EXPECT_EQ(RoundTrip(Object, TEXT("Int8Value"), TEXT("-8")), "-8");
	EXPECT_EQ(RoundTrip(Object, TEXT("Int16Value"), TEXT("1600")), "1600");
	EXPECT_EQ(RoundTrip(Object, TEXT("Int64Value"), TEXT("9000000000")), "9000000000");
	EXPECT_EQ(RoundTrip(Object, TEXT("ByteValue"), TEXT("200")), "200");
	EXPECT_EQ(RoundTrip(Object, TEXT("UInt16Value"), TEXT("65535")), "65535");
	EXPECT_EQ(RoundTrip(Object, TEXT("UInt32Value"), TEXT("4000000000")), "4000000000");
	EXPECT_EQ(RoundTrip(Object, TEXT("UInt64Value"), TEXT("18000000000000000000")), "18000000000000000000");
	EXPECT_EQ(RoundTrip(Object, TEXT("FloatValue"), TEXT("1.5")), "1.500000");
	EXPECT_EQ(RoundTrip(Object, TEXT("DoubleValue"), TEXT("-0.25")), "-0.250000");
	EXPECT_EQ(RoundTrip(Object, TEXT("NameValue"), TEXT("Some Name")), "Some Name");
	EXPECT_EQ(Export(Object, TEXT("NameValue"), PPF_Delimited), "\"Some Name\"");
	EXPECT_EQ(RoundTrip(Object, TEXT("StringValue"), TEXT("Hello \"World\"")), "Hello \"World\"");
	EXPECT_EQ(Export(Object, TEXT("StringValue"), PPF_Delimited), "\"Hello \\\"World\\\"\"");
	EXPECT_EQ(RoundTrip(Object, TEXT("TextValue"), TEXT("INVTEXT(\"Shown\")")), "INVTEXT(\"Shown\")");
	EXPECT_EQ(Str(Object->TextValue.ToString()), "Shown");
	EXPECT_EQ(RoundTrip(Object, TEXT("Mode"), TEXT("Third")), "Third");
	EXPECT_EQ(Object->Mode, EReflectionTestMode::Third);
	EXPECT_EQ(RoundTrip(Object, TEXT("Mode"), TEXT("EReflectionTestMode::Second")), "Second");
	EXPECT_EQ(RoundTrip(Object, TEXT("Legacy"), TEXT("Beta")), "Beta");
	EXPECT_EQ(Object->Legacy, EReflectionTestLegacy::Beta);
	EXPECT_EQ(Prop(TEXT("Mode"))->ImportText_InContainer(TEXT("Fourth"), Object, Object, PPF_None), nullptr);

	EXPECT_EQ(Export(Object, TEXT("ObjectRef")), "None");
	Object->ObjectRef = UReflectionTestBase::StaticClass();
	EXPECT_EQ(Export(Object, TEXT("ObjectRef")), "/Script/CoreUObject.ReflectionTestBase");
	UPackage* Package = CreatePackage(TEXT("/Game/TextPkg"));
	UReflectionTestBase* Asset = NewObject<UReflectionTestBase>(Package, TEXT("TextPkg"));
	EXPECT_EQ(RoundTrip(Object, TEXT("RawObjectRef"), TEXT("/Game/TextPkg.TextPkg")), "/Game/TextPkg.TextPkg");
	EXPECT_EQ(Object->RawObjectRef, Asset);
	EXPECT_EQ(RoundTrip(Object, TEXT("RawObjectRef"), TEXT("ReflectionTestBase'/Game/TextPkg.TextPkg'")),
		"/Game/TextPkg.TextPkg");
	EXPECT_EQ(RoundTrip(Object, TEXT("RawObjectRef"), TEXT("None")), "None");
	EXPECT_EQ(Object->RawObjectRef, nullptr);
	EXPECT_EQ(
		Prop(TEXT("RawObjectRef"))->ImportText_InContainer(TEXT("/Game/Nope.Nope"), Object, Object, PPF_None), nullptr);
	EXPECT_EQ(RoundTrip(Object, TEXT("ClassRef"), TEXT("/Script/CoreUObject.ReflectionTestObject")),
		"/Script/CoreUObject.ReflectionTestObject");
	EXPECT_EQ(Object->ClassRef.Get(), UReflectionTestObject::StaticClass());
	EXPECT_EQ(
		Prop(TEXT("ClassRef"))->ImportText_InContainer(TEXT("/Script/CoreUObject.Package"), Object, Object, PPF_None),
		nullptr);
	EXPECT_EQ(RoundTrip(Object, TEXT("WeakRef"), TEXT("/Game/TextPkg.TextPkg")), "/Game/TextPkg.TextPkg");
	EXPECT_EQ(Object->WeakRef.Get(), Asset);

	EXPECT_EQ(RoundTrip(Object, TEXT("Point"), TEXT("(X=1.0,Y=2,Label=\"Top Left\")")),
		"(X=1.000000,Y=2.000000,Label=\"Top Left\",Target=None)");
	EXPECT_FLOAT_EQ(Object->Point.Y, 2.0f);
	EXPECT_EQ(RoundTrip(Object, TEXT("IntArray"), TEXT("(1, 2,3)")), "(1,2,3)");
	EXPECT_EQ(RoundTrip(Object, TEXT("IntArray"), TEXT("()")), "()");
	EXPECT_EQ(RoundTrip(Object, TEXT("StringArray"), TEXT("(\"a\",\"b, c\")")), "(\"a\",\"b, c\")");
	EXPECT_EQ(RoundTrip(Object, TEXT("PointArray"), TEXT("((X=1,Y=0),(Y=3))")),
		"((X=1.000000,Y=0.000000,Label=\"\",Target=None),(X=0.000000,Y=3.000000,Label=\"\",Target=None))");
	EXPECT_EQ(
		RoundTrip(Object, TEXT("StringToInt"), TEXT("((\"one\", 1),(\"two\", 2))")), "((\"one\", 1),(\"two\", 2))");
	EXPECT_EQ(Object->StringToInt.FindRef(TEXT("two")), 2);
	EXPECT_EQ(RoundTrip(Object, TEXT("NameSet"), TEXT("(\"A\",\"B\")")), "(\"A\",\"B\")");
	EXPECT_TRUE(Object->NameSet.Contains(FName(TEXT("B"))));

	// Struct text skips values equal to the given defaults.
	FReflectionTestPoint Defaults;
	FString Diff;
	Prop(TEXT("Point"))->ExportTextItem_InContainer(Diff, Object, nullptr, Object, PPF_None);
	FString OnlyChanged;
	FReflectionTestPoint::StaticStruct()->ExportText(
		OnlyChanged, &Object->Point, &Defaults, nullptr, PPF_None, nullptr);
	EXPECT_EQ(Str(OnlyChanged), "(X=1.000000,Y=2.000000,Label=\"Top Left\")");
}

TEST(ReflectionTest, EnumsAndStructs)
{
	UEnum* Enum = StaticEnum<EReflectionTestMode>();
	ASSERT_NE(Enum, nullptr);
	EXPECT_EQ(Str(Enum->GetPathName()), "/Script/CoreUObject.EReflectionTestMode");
	EXPECT_EQ(Enum->NumEnums(), 4);
	EXPECT_EQ(Str(Enum->GetNameByValue(5).ToString()), "EReflectionTestMode::Third");
	EXPECT_EQ(Str(Enum->GetNameStringByValue(5)), "Third");
	EXPECT_EQ(Enum->GetValueByName(TEXT("EReflectionTestMode::Second")), 1);
	EXPECT_EQ(Enum->GetValueByName(TEXT("Second")), 1);
	EXPECT_EQ(Enum->GetValueByName(TEXT("Nope")), INDEX_NONE);
	EXPECT_EQ(Str(Enum->GetNameStringByIndex(3)), "EReflectionTestMode_MAX");
	EXPECT_EQ(Enum->GetValueByIndex(3), 6);
	EXPECT_EQ(Str(Enum->GetDisplayNameTextByValue(1).ToString()), "Second Mode");
	EXPECT_EQ(Str(Enum->GetDisplayNameTextByValue(0).ToString()), "First");
	EXPECT_EQ(Enum->GetCppForm(), UEnum::ECppForm::EnumClass);
	UEnum* Legacy = StaticEnum<EReflectionTestLegacy::Type>();
	EXPECT_EQ(Legacy->GetCppForm(), UEnum::ECppForm::Namespaced);
	EXPECT_EQ(Str(Legacy->GetNameByValue(1).ToString()), "EReflectionTestLegacy::Beta");

	UScriptStruct* Struct = FReflectionTestPoint::StaticStruct();
	EXPECT_EQ(Str(Struct->GetPathName()), "/Script/CoreUObject.ReflectionTestPoint");
	EXPECT_EQ(Struct->GetStructureSize(), (int32)sizeof(FReflectionTestPoint));
	EXPECT_EQ(StaticStruct<FReflectionTestPoint>(), Struct);
	TArray<uint8> Memory;
	Memory.AddUninitialized(Struct->GetStructureSize() * 2);
	Struct->InitializeStruct(Memory.GetData(), 2);
	FReflectionTestPoint* Points = (FReflectionTestPoint*)Memory.GetData();
	Points[0].Label = TEXT("source");
	Points[0].X = 3.0f;
	EXPECT_FALSE(Struct->CompareScriptStruct(&Points[0], &Points[1], 0));
	Struct->CopyScriptStruct(&Points[1], &Points[0]);
	EXPECT_EQ(Str(Points[1].Label), "source");
	EXPECT_TRUE(Struct->CompareScriptStruct(&Points[0], &Points[1], 0));
	Struct->DestroyStruct(Memory.GetData(), 2);
}

TEST(ReflectionTest, ProcessEventCallsNativeFunctions)
{
	UReflectionTestObject* Object = MakeObject();
	UFunction* Add = Object->FindFunctionChecked(TEXT("AddNumbers"));
	EXPECT_TRUE(Add->HasAllFunctionFlags(FUNC_Native | FUNC_BlueprintCallable | FUNC_Public));
	EXPECT_EQ(Add->NumParms, 3);
	EXPECT_EQ(Add->GetReturnProperty()->GetFName(), FName(TEXT("ReturnValue")));
	TArray<uint8> Parms;
	Parms.AddZeroed(Add->ParmsSize);
	Add->InitializeParms(Parms.GetData());
	*CastField<FIntProperty>(Add->FindPropertyByName(TEXT("A")))->ContainerPtrToValuePtr<int32>(Parms.GetData()) = 20;
	*CastField<FIntProperty>(Add->FindPropertyByName(TEXT("B")))->ContainerPtrToValuePtr<int32>(Parms.GetData()) = 22;
	Object->ProcessEvent(Add, Parms.GetData());
	EXPECT_EQ(*(int32*)(Parms.GetData() + Add->ReturnValueOffset), 42);
	EXPECT_EQ(Object->CallCount, 1);
	Add->DestroyParms(Parms.GetData());

	UFunction* Describe = Object->FindFunction(TEXT("Describe"));
	EXPECT_TRUE(Describe->HasAllFunctionFlags(FUNC_BlueprintPure | FUNC_Const));
	TArray<uint8> DescribeParms;
	DescribeParms.AddZeroed(Describe->ParmsSize);
	Describe->InitializeParms(DescribeParms.GetData());
	FStrProperty* Prefix = CastField<FStrProperty>(Describe->FindPropertyByName(TEXT("Prefix")));
	EXPECT_TRUE(Prefix->HasAllPropertyFlags(CPF_Parm | CPF_ConstParm));
	Prefix->SetPropertyValue_InContainer(DescribeParms.GetData(), TEXT("Value"));
	CastField<FBoolProperty>(Describe->FindPropertyByName(TEXT("bLoud")))
		->SetPropertyValue_InContainer(DescribeParms.GetData(), true);
	Object->IntValue = 5;
	Object->ProcessEvent(Describe, DescribeParms.GetData());
	EXPECT_EQ(Str(*(FString*)(DescribeParms.GetData() + Describe->ReturnValueOffset)), "Value!5");
	Describe->DestroyParms(DescribeParms.GetData());

	UFunction* Split = Object->FindFunction(TEXT("SplitValue"));
	EXPECT_TRUE(Split->HasAnyFunctionFlags(FUNC_HasOutParms));
	EXPECT_EQ(Str(Split->GetMetaData(TEXT("CallInEditor"))), "true");
	EXPECT_TRUE(Split->FindPropertyByName(TEXT("OutHalf"))->HasAllPropertyFlags(CPF_Parm | CPF_OutParm));
	TArray<uint8> SplitParms;
	SplitParms.AddZeroed(Split->ParmsSize);
	Split->InitializeParms(SplitParms.GetData());
	*Split->FindPropertyByName(TEXT("Value"))->ContainerPtrToValuePtr<int32>(SplitParms.GetData()) = 9;
	Object->ProcessEvent(Split, SplitParms.GetData());
	EXPECT_EQ(*Split->FindPropertyByName(TEXT("OutHalf"))->ContainerPtrToValuePtr<int32>(SplitParms.GetData()), 4);
	EXPECT_EQ(
		Str(*Split->FindPropertyByName(TEXT("OutText"))->ContainerPtrToValuePtr<FString>(SplitParms.GetData())), "9");
	Split->DestroyParms(SplitParms.GetData());

	UFunction* Twice = Object->FindFunction(TEXT("Twice"));
	EXPECT_TRUE(Twice->HasAnyFunctionFlags(FUNC_Static));
	struct
	{
		int32 Value;
		int32 ReturnValue;
	} TwiceParms{21, 0};
	ASSERT_EQ(Twice->ParmsSize, sizeof(TwiceParms));
	Object->ProcessEvent(Twice, &TwiceParms);
	EXPECT_EQ(TwiceParms.ReturnValue, 42);

	// Events: the C++ call goes through the reflected function.
	EXPECT_EQ(Object->NativeEvent(1), 101);
	Object->ImplementableEvent(3);
	EXPECT_FALSE(Object->FindFunction(TEXT("ImplementableEvent"))->HasAnyFunctionFlags(FUNC_Native));
	EXPECT_EQ(Object->FindFunction(TEXT("Missing")), nullptr);
	EXPECT_EQ(
		UReflectionTestObject::StaticClass()->FindFunctionByName(TEXT("AddNumbers"), EIncludeSuperFlag::ExcludeSuper),
		Add);
}

TEST(ReflectionTest, FunctionsWithRunTimeBodies)
{
	UReflectionTestObject* Object = MakeObject();
	UFunction* Add = Object->FindFunctionChecked(TEXT("AddNumbers"));
	FNativeFuncPtr Original = Add->GetNativeFunc();
	int32 Seen = 0;
	Add->SetNativeCallable(
		[&Seen](UObject* Context, FFrame& Stack, void* Result)
		{
			Seen = *(int32*)Stack.Locals;
			*(int32*)Result = -1;
		});
	struct
	{
		int32 A;
		int32 B;
		int32 ReturnValue;
	} Parms{7, 8, 0};
	Object->ProcessEvent(Add, &Parms);
	EXPECT_EQ(Seen, 7);
	EXPECT_EQ(Parms.ReturnValue, -1);
	Add->SetNativeCallable(nullptr);
	EXPECT_EQ(Add->GetNativeFunc(), Original);
	Object->ProcessEvent(Add, &Parms);
	EXPECT_EQ(Parms.ReturnValue, 15);
}

namespace
{
	/** A stand-in soft pointer type: the property only needs this interface of its value type. */
	struct FTestSoftPath
	{
		FTestSoftPath() = default;
		FTestSoftPath(const FString& InPath)
			: Path(InPath)
		{
		}
		FTestSoftPath(const UObject* Object)
			: Path(Object ? Object->GetPathName() : FString())
		{
		}
		FString Path;
	};

	struct FTestSoftPtr
	{
		FTestSoftPtr() = default;
		explicit FTestSoftPtr(const FTestSoftPath& InPath)
			: Path(InPath)
		{
		}
		FString ToString() const { return Path.Path; }
		const FTestSoftPath& ToSoftObjectPath() const { return Path; }
		void Reset() { Path = FTestSoftPath(); }
		UObject* Get() const { return StaticFindObject(UObject::StaticClass(), nullptr, *Path.Path); }
		FTestSoftPath Path;
	};
} // namespace

TEST(ReflectionTest, RunTimeClassLaysOutPropertiesAfterNativeParent)
{
	UPackage* Package = CreatePackage(TEXT("/Game/Generated"));
	UClass* Class = NewObject<UClass>(Package, TEXT("Generated_C"), RF_Public);
	Class->SetSuperStruct(UReflectionTestOwner::StaticClass());
	Class->ClassFlags |= CLASS_CompiledFromBlueprint;

	// AddCppProperty prepends, so add the last property first.
	FSoftObjectProperty* Soft = new FSoftObjectProperty(Class, TEXT("SoftRef"), RF_Public);
	Soft->PropertyClass = UObject::StaticClass();
	Soft->SetValueOps(&UE::CoreUObject::Private::TSoftObjectValueOps<FTestSoftPtr>::Ops);
	Class->AddCppProperty(Soft);
	FArrayProperty* Names = new FArrayProperty(Class, TEXT("Names"), RF_Public);
	Names->AddCppProperty(new FStrProperty(Names, TEXT("Names"), RF_Public));
	Class->AddCppProperty(Names);
	FObjectProperty* Target = new FObjectProperty(Class, TEXT("Set LiveLink Preset"), RF_Public);
	Target->PropertyClass = UObject::StaticClass();
	Class->AddCppProperty(Target);
	FBoolProperty* Flag = new FBoolProperty(Class, TEXT("Flag"), RF_Public);
	Flag->SetBoolSize(sizeof(bool), true);
	Class->AddCppProperty(Flag);
	FIntProperty* Count = new FIntProperty(Class, TEXT("Count"), RF_Public);
	Count->SetPropertyFlags(CPF_Edit | CPF_BlueprintVisible);
	Class->AddCppProperty(Count);
	Class->Bind();
	Class->StaticLink(true);

	const int32 NativeSize = UReflectionTestOwner::StaticClass()->GetPropertiesSize();
	EXPECT_GE(Count->GetOffset_ForInternal(), NativeSize);
	EXPECT_GT(Class->GetPropertiesSize(), NativeSize);
	EXPECT_EQ(Class->ClassConstructor, UReflectionTestOwner::StaticClass()->ClassConstructor);
	EXPECT_EQ(FindFProperty<FObjectProperty>(Class, TEXT("Set LiveLink Preset")), Target);
	TArray<FString> Order;
	for (TFieldIterator<FProperty> It(Class); It; ++It)
	{
		Order.Add(It->GetName());
	}
	ASSERT_GE(Order.Num(), 5);
	EXPECT_EQ(Str(Order[0]), "Count");
	EXPECT_EQ(Str(Order[4]), "SoftRef");
	EXPECT_EQ(Str(Order[5]), "Component");

	UReflectionTestOwner* First = NewObject<UReflectionTestOwner>(Package, Class, TEXT("First"));
	UReflectionTestOwner* Second = NewObject<UReflectionTestOwner>(Package, Class, TEXT("Second"));
	EXPECT_EQ(First->GetClass(), Class);
	ASSERT_NE(First->Component.Get(), nullptr);
	EXPECT_EQ(First->Component->GetOuter(), First);
	Count->SetPropertyValue_InContainer(First, 5);
	Flag->SetPropertyValue_InContainer(First, true);
	Target->SetObjectPropertyValue_InContainer(First, Package);
	FScriptArrayHelper Helper(Names, Names->ContainerPtrToValuePtr<void>(First));
	Helper.AddValue();
	*(FString*)Helper.GetRawPtr(0) = TEXT("entry");
	EXPECT_EQ(Count->GetPropertyValue_InContainer(First), 5);
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Second), 0);
	EXPECT_FALSE(Flag->GetPropertyValue_InContainer(Second));
	EXPECT_EQ(Target->GetObjectPropertyValue_InContainer(Second), nullptr);
	EXPECT_EQ(FScriptArrayHelper(Names, Names->ContainerPtrToValuePtr<void>(Second)).Num(), 0);

	FString Text;
	Names->ExportTextItem_InContainer(Text, First, nullptr, First, PPF_None);
	EXPECT_EQ(Str(Text), "(\"entry\")");
	Text.Reset();
	Soft->ExportTextItem_InContainer(Text, First, nullptr, First, PPF_None);
	EXPECT_EQ(Str(Text), "None");
	ASSERT_NE(Soft->ImportText_InContainer(TEXT("/Game/Generated"), First, First, PPF_None), nullptr);
	EXPECT_EQ(Str(Soft->GetPathString(Soft->ContainerPtrToValuePtr<void>(First))), "/Game/Generated");
	EXPECT_EQ(Soft->GetObjectPropertyValue_InContainer(First), Package);
	Text.Reset();
	Soft->ExportTextItem_InContainer(Text, First, nullptr, First, PPF_Delimited);
	EXPECT_EQ(Str(Text), "\"/Game/Generated\"");

	// The default object of the generated class gives new instances its values.
	UReflectionTestOwner* Default = Cast<UReflectionTestOwner>(Class->GetDefaultObject());
	ASSERT_NE(Default, nullptr);
	Count->SetPropertyValue_InContainer(Default, 77);
	UReflectionTestOwner* Third = NewObject<UReflectionTestOwner>(Package, Class, TEXT("Third"));
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Third), 77);

	// Duplicates copy the run-time properties too.
	UReflectionTestOwner* Copy = DuplicateObject(First, Package, TEXT("FirstCopy"));
	EXPECT_EQ(Count->GetPropertyValue_InContainer(Copy), 5);
	EXPECT_EQ(FScriptArrayHelper(Names, Names->ContainerPtrToValuePtr<void>(Copy)).Num(), 1);
}
