// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "PropertyText.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

namespace UE::CoreUObject::Private
{
	void ExportEnumValue(FString& ValueStr, const UEnum* Enum, int64 Value);
	const TCHAR* ImportEnumValue(const TCHAR* Buffer, const UEnum* Enum, int64& OutValue, FOutputDevice* ErrorText);
} // namespace UE::CoreUObject::Private

#define IMPLEMENT_FIELD(TClass, TName)                                       \
	FFieldClass* TClass::StaticClass()                                       \
	{                                                                        \
		static FFieldClass Class(TEXT(TName), TClass::Super::StaticClass()); \
		return &Class;                                                       \
	}

IMPLEMENT_FIELD(FStructProperty, "StructProperty")
IMPLEMENT_FIELD(FEnumProperty, "EnumProperty")

// ---------------------------------------------------------------------------------------------------
// FStructProperty

FStructProperty::FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FStructProperty::FStructProperty(
	FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UScriptStruct* InStruct)
	: FProperty(InOwner, InName, InObjectFlags)
	, Struct(InStruct)
{
	LinkInternal();
}

void FStructProperty::LinkInternal()
{
	checkf(Struct, TEXT("Struct property %s has no struct"), *GetName());
	ElementSize = Struct->GetStructureSize();
	PropertyFlags &= ~(CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash);
	if (UScriptStruct::ICppStructOps* Ops = Struct->GetCppStructOps())
	{
		if (Ops->IsPlainOldData())
		{
			PropertyFlags |= CPF_IsPlainOldData;
		}
		if (!Ops->HasDestructor())
		{
			PropertyFlags |= CPF_NoDestructor;
		}
		if (Ops->HasGetTypeHash())
		{
			PropertyFlags |= CPF_HasGetValueTypeHash;
		}
	}
}

int32 FStructProperty::GetMinAlignment() const
{
	return Struct->GetMinAlignment();
}

bool FStructProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	if (!B)
	{
		TArray<uint8> Default;
		Default.AddZeroed(Struct->GetStructureSize());
		Struct->InitializeStruct(Default.GetData());
		const bool bResult = Struct->CompareScriptStruct(A, Default.GetData(), PortFlags);
		Struct->DestroyStruct(Default.GetData());
		return bResult;
	}
	return Struct->CompareScriptStruct(A, B, PortFlags);
}

FString FStructProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return TEXT("F") + Struct->GetName();
}

bool FStructProperty::ContainsObjectReference() const
{
	return Struct && Struct->HasObjectReferences();
}

void FStructProperty::CollectReferences(
	void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		Struct->CollectReferences((uint8*)Value + Index * ElementSize, Collector, ReferencingObject);
	}
}

bool FStructProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && ((const FStructProperty*)Other)->Struct == Struct;
}

void FStructProperty::InitializeValueInternal(void* Dest) const
{
	Struct->InitializeStruct(Dest, ArrayDim);
}

void FStructProperty::DestroyValueInternal(void* Dest) const
{
	Struct->DestroyStruct(Dest, ArrayDim);
}

void FStructProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	Struct->CopyScriptStruct(Dest, Src, Count);
}

void FStructProperty::ClearValueInternal(void* Data) const
{
	Struct->ClearScriptStruct(Data, 1);
}

uint32 FStructProperty::GetValueTypeHashInternal(const void* Src) const
{
	return Struct->GetStructTypeHash(Src);
}

void FStructProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	// Structs with their own text form (soft paths, GUIDs...) are written as the engine writes them, not as fields.
	UScriptStruct::ICppStructOps* Ops = Struct->GetCppStructOps();
	if (Ops && Ops->HasExportTextItem() &&
		Ops->ExportTextItem(ValueStr, PropertyValue, DefaultValue, Parent, PortFlags, ExportRootScope))
	{
		return;
	}
	Struct->ExportText(ValueStr, PropertyValue, DefaultValue, Parent, PortFlags, ExportRootScope);
}

const TCHAR* FStructProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	UScriptStruct::ICppStructOps* Ops = Struct->GetCppStructOps();
	if (Ops && Ops->HasImportTextItem())
	{
		const TCHAR* Cursor = Buffer;
		return Ops->ImportTextItem(Cursor, Data, PortFlags, OwnerObject, ErrorText) ? Cursor : nullptr;
	}
	return Struct->ImportText(Buffer, Data, OwnerObject, PortFlags, ErrorText, Struct->GetName());
}

// ---------------------------------------------------------------------------------------------------
// FEnumProperty

FEnumProperty::FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FEnumProperty::FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UEnum* InEnum)
	: FProperty(InOwner, InName, InObjectFlags)
	, Enum(InEnum)
{
}

FEnumProperty::~FEnumProperty()
{
	delete UnderlyingProp;
}

void FEnumProperty::AddCppProperty(FProperty* Inner)
{
	checkf(!UnderlyingProp, TEXT("Enum property %s already has an underlying property"), *GetName());
	UnderlyingProp = CastFieldChecked<FNumericProperty>(Inner);
	checkf(UnderlyingProp->IsInteger(), TEXT("The underlying property of an enum must be an integer"));
	LinkInternal();
}

void FEnumProperty::LinkInternal()
{
	checkf(UnderlyingProp, TEXT("Enum property %s has no underlying property"), *GetName());
	UnderlyingProp->Link();
	ElementSize = UnderlyingProp->ElementSize;
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

int32 FEnumProperty::GetMinAlignment() const
{
	return UnderlyingProp->GetMinAlignment();
}

bool FEnumProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const int64 ValueA = UnderlyingProp->GetSignedIntPropertyValue(A);
	const int64 ValueB = B ? UnderlyingProp->GetSignedIntPropertyValue(B) : 0;
	return ValueA == ValueB;
}

FString FEnumProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return Enum ? Enum->GetName() : FString(TEXT("uint8"));
}

bool FEnumProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && ((const FEnumProperty*)Other)->Enum == Enum;
}

void FEnumProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	FMemory::Memcpy(Dest, Src, (SIZE_T)ElementSize * Count);
}

void FEnumProperty::ClearValueInternal(void* Data) const
{
	FMemory::Memzero(Data, ElementSize);
}

uint32 FEnumProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetTypeHash(UnderlyingProp->GetSignedIntPropertyValue(Src));
}

void FEnumProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const int64 Value = UnderlyingProp->GetSignedIntPropertyValue(PropertyValue);
	if (Enum)
	{
		ExportEnumValue(ValueStr, Enum, Value);
	}
	else
	{
		ValueStr += LexToString(Value);
	}
}

const TCHAR* FEnumProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	int64 Value = 0;
	const TCHAR* End = Enum ? ImportEnumValue(Buffer, Enum, Value, ErrorText) : nullptr;
	if (End)
	{
		UnderlyingProp->SetIntPropertyValue(Data, Value);
	}
	return End;
}
