// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "PropertyText.h"
#include "PropertyValueOps.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"
#include "UObject/WeakObjectPtr.h"

using namespace UE::CoreUObject::Private;

#define IMPLEMENT_FIELD(TClass, TName)                                       \
	FFieldClass* TClass::StaticClass()                                       \
	{                                                                        \
		static FFieldClass Class(TEXT(TName), TClass::Super::StaticClass()); \
		return &Class;                                                       \
	}

IMPLEMENT_FIELD(FObjectPropertyBase, "ObjectPropertyBase")
IMPLEMENT_FIELD(FObjectProperty, "ObjectProperty")
IMPLEMENT_FIELD(FClassProperty, "ClassProperty")
IMPLEMENT_FIELD(FWeakObjectProperty, "WeakObjectProperty")
IMPLEMENT_FIELD(FSoftObjectProperty, "SoftObjectProperty")
IMPLEMENT_FIELD(FSoftClassProperty, "SoftClassProperty")

// ---------------------------------------------------------------------------------------------------
// FObjectPropertyBase

FObjectPropertyBase::FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

bool FObjectPropertyBase::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && ((const FObjectPropertyBase*)Other)->PropertyClass == PropertyClass;
}

FString FObjectPropertyBase::GetExportPath(
	const UObject* Object, const UObject* Parent, const UObject* ExportRootScope, const uint32 PortFlags)
{
	return Object ? Object->GetPathName() : FString(TEXT("None"));
}

UObject* FObjectPropertyBase::FindImportedObject(const FProperty* Property, UObject* OwnerObject, UClass* ObjectClass,
	UClass* RequiredMetaClass, const TCHAR* Text, uint32 PortFlags)
{
	UObject* Result = nullptr;
	if (Text[0] == TEXT('/'))
	{
		Result = StaticFindObject(ObjectClass, nullptr, Text);
	}
	else
	{
		// A name relative to the owner (a subobject) or to its package.
		for (UObject* Scope = OwnerObject; Scope && !Result; Scope = Scope->GetOuter())
		{
			Result = StaticFindObject(ObjectClass, Scope, Text);
		}
	}
	if (Result && RequiredMetaClass && Result->IsA(UClass::StaticClass()) &&
		!((UClass*)Result)->IsChildOf(RequiredMetaClass))
	{
		return nullptr;
	}
	return Result;
}

const TCHAR* FObjectPropertyBase::ImportObjectText(const TCHAR* Buffer, UObject*& OutObject, int32 PortFlags,
	UObject* OwnerObject, FOutputDevice* ErrorText, UClass* RequiredMetaClass) const
{
	FString Token;
	const TCHAR* End = nullptr;
	if (*Buffer == TEXT('"'))
	{
		End = ReadQuoted(Buffer, Token);
	}
	else
	{
		End = Buffer;
		while (*End && *End != TEXT(',') && *End != TEXT(')') && *End != TEXT('\n') && *End != TEXT('\r'))
		{
			if (*End == TEXT('\''))
			{
				// Class'Path': read to the closing quote.
				const TCHAR* Close = FCString::Strchr(End + 1, TEXT('\''));
				End = Close ? Close + 1 : End + FCString::Strlen(End);
				continue;
			}
			++End;
		}
		Token = FString((int32)(End - Buffer), Buffer);
		Token.TrimEndInline();
	}
	if (!End)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Unterminated object reference for %s"), *GetName()));
		return nullptr;
	}
	if (Token.IsEmpty() || Token == TEXT("None"))
	{
		OutObject = nullptr;
		return End;
	}
	int32 QuoteStart = INDEX_NONE;
	if (Token.FindChar(TEXT('\''), QuoteStart) && Token.EndsWith(TEXT("'")))
	{
		Token = Token.Mid(QuoteStart + 1, Token.Len() - QuoteStart - 2);
	}
	UClass* SearchClass = PropertyClass ? PropertyClass : UObject::StaticClass();
	UObject* Found = FindImportedObject(this, OwnerObject, SearchClass, RequiredMetaClass, *Token, PortFlags);
	if (!Found)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Cannot find the %s '%s' for property %s"),
										 *SearchClass->GetName(), *Token, *GetName()));
		return nullptr;
	}
	OutObject = Found;
	return End;
}

// ---------------------------------------------------------------------------------------------------
// FObjectProperty

FObjectProperty::FObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FObjectPropertyBase(InOwner, InName, InObjectFlags)
{
	ElementSize = sizeof(UObject*);
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

bool FObjectProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	return GetPropertyValue(A) == (B ? GetPropertyValue(B) : nullptr);
}

FString FObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TObjectPtr<U%s>"), PropertyClass ? *PropertyClass->GetName() : TEXT("Object"));
}

void FObjectProperty::CollectReferences(
	void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		UObject*& Reference = *(UObject**)((uint8*)Value + Index * ElementSize);
		Collector.HandleObjectReference(Reference, ReferencingObject, this);
	}
}

void FObjectProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	FMemory::Memcpy(Dest, Src, sizeof(UObject*) * Count);
}

void FObjectProperty::ClearValueInternal(void* Data) const
{
	SetPropertyValue(Data, nullptr);
}

uint32 FObjectProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetTypeHash((const void*)GetPropertyValue(Src));
}

void FObjectProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ValueStr += GetExportPath(GetPropertyValue(PropertyValue), Parent, ExportRootScope, PortFlags);
}

const TCHAR* FObjectProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	UObject* Object = nullptr;
	const TCHAR* End = ImportObjectText(Buffer, Object, PortFlags, OwnerObject, ErrorText, nullptr);
	if (End)
	{
		SetPropertyValue(Data, Object);
	}
	return End;
}

// ---------------------------------------------------------------------------------------------------
// FClassProperty

FClassProperty::FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FObjectProperty(InOwner, InName, InObjectFlags)
{
}

FString FClassProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (PropertyFlags & CPF_UObjectWrapper)
	{
		return FString::Printf(TEXT("TSubclassOf<U%s>"), MetaClass ? *MetaClass->GetName() : TEXT("Object"));
	}
	return TEXT("TObjectPtr<UClass>");
}

bool FClassProperty::SameType(const FProperty* Other) const
{
	return FObjectProperty::SameType(Other) && ((const FClassProperty*)Other)->MetaClass == MetaClass;
}

const TCHAR* FClassProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	UObject* Object = nullptr;
	const TCHAR* End = ImportObjectText(Buffer, Object, PortFlags, OwnerObject, ErrorText, MetaClass);
	if (End)
	{
		if (Object && MetaClass && !((UClass*)Object)->IsChildOf(MetaClass))
		{
			ReportImportError(
				ErrorText, FString::Printf(TEXT("%s is not a child of %s"), *Object->GetName(), *MetaClass->GetName()));
			return nullptr;
		}
		SetPropertyValue(Data, Object);
	}
	return End;
}

// ---------------------------------------------------------------------------------------------------
// FWeakObjectProperty

FWeakObjectProperty::FWeakObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FObjectPropertyBase(InOwner, InName, InObjectFlags)
{
	ElementSize = sizeof(FWeakObjectPtr);
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_HasGetValueTypeHash;
}

UObject* FWeakObjectProperty::GetObjectPropertyValue(const void* PropertyValueAddress) const
{
	return ((const FWeakObjectPtr*)PropertyValueAddress)->Get();
}

void FWeakObjectProperty::SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const
{
	*(FWeakObjectPtr*)PropertyValueAddress = Value;
}

bool FWeakObjectProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const FWeakObjectPtr& WeakA = *(const FWeakObjectPtr*)A;
	return B ? WeakA == *(const FWeakObjectPtr*)B : !WeakA.IsValid();
}

FString FWeakObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TWeakObjectPtr<U%s>"), PropertyClass ? *PropertyClass->GetName() : TEXT("Object"));
}

void FWeakObjectProperty::InitializeValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		::new ((uint8*)Dest + Index * ElementSize) FWeakObjectPtr();
	}
}

void FWeakObjectProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		((FWeakObjectPtr*)Dest)[Index] = ((const FWeakObjectPtr*)Src)[Index];
	}
}

void FWeakObjectProperty::ClearValueInternal(void* Data) const
{
	((FWeakObjectPtr*)Data)->Reset();
}

uint32 FWeakObjectProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetTypeHash(*(const FWeakObjectPtr*)Src);
}

void FWeakObjectProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ValueStr += GetExportPath(GetObjectPropertyValue(PropertyValue), Parent, ExportRootScope, PortFlags);
}

const TCHAR* FWeakObjectProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	UObject* Object = nullptr;
	const TCHAR* End = ImportObjectText(Buffer, Object, PortFlags, OwnerObject, ErrorText, nullptr);
	if (End)
	{
		SetObjectPropertyValue(Data, Object);
	}
	return End;
}

// ---------------------------------------------------------------------------------------------------
// FSoftObjectProperty

FSoftObjectProperty::FSoftObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FObjectPropertyBase(InOwner, InName, InObjectFlags)
{
	PropertyFlags |= CPF_HasGetValueTypeHash;
}

void FSoftObjectProperty::SetValueOps(const FSoftObjectValueOps* InOps)
{
	ValueOps = InOps;
	ElementSize = InOps ? InOps->Size : 0;
}

const FSoftObjectValueOps& FSoftObjectProperty::Ops() const
{
	checkf(ValueOps, TEXT("Soft reference property %s has no value operations (SetValueOps was not called)"),
		*GetFullName());
	return *ValueOps;
}

UObject* FSoftObjectProperty::GetObjectPropertyValue(const void* PropertyValueAddress) const
{
	return Ops().Get(PropertyValueAddress);
}

void FSoftObjectProperty::SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const
{
	Ops().SetObject(PropertyValueAddress, Value);
}

int32 FSoftObjectProperty::GetMinAlignment() const
{
	return Ops().Alignment;
}

bool FSoftObjectProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	if (!B)
	{
		return Ops().ToString(A).IsEmpty();
	}
	return Ops().Identical(A, B);
}

FString FSoftObjectProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TSoftObjectPtr<U%s>"), PropertyClass ? *PropertyClass->GetName() : TEXT("Object"));
}

FString FSoftObjectProperty::GetPathString(const void* PropertyValueAddress) const
{
	return Ops().ToString(PropertyValueAddress);
}

void FSoftObjectProperty::SetPathString(void* PropertyValueAddress, const FString& Path) const
{
	Ops().SetPath(PropertyValueAddress, Path);
}

void FSoftObjectProperty::InitializeValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::ConstructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FSoftObjectProperty::DestroyValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::DestructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FSoftObjectProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	UE::CoreUObject::Private::CopyValues(Ops(), Dest, Src, Count, ElementSize);
}

void FSoftObjectProperty::ClearValueInternal(void* Data) const
{
	Ops().SetPath(Data, FString());
}

uint32 FSoftObjectProperty::GetValueTypeHashInternal(const void* Src) const
{
	return Ops().Hash(Src);
}

void FSoftObjectProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	const FString Path = Ops().ToString(PropertyValue);
	ExportQuotedIfDelimited(ValueStr, Path.IsEmpty() ? FString(TEXT("None")) : Path, PortFlags);
}

const TCHAR* FSoftObjectProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	FString Token;
	const TCHAR* End = ReadToken(Buffer, Token, true);
	if (!End)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Unterminated soft reference for %s"), *GetName()));
		return nullptr;
	}
	if (Token == TEXT("None"))
	{
		Token.Reset();
	}
	int32 QuoteStart = INDEX_NONE;
	if (Token.FindChar(TEXT('\''), QuoteStart) && Token.EndsWith(TEXT("'")))
	{
		Token = Token.Mid(QuoteStart + 1, Token.Len() - QuoteStart - 2);
	}
	Ops().SetPath(Data, Token);
	return End;
}

FSoftClassProperty::FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FSoftObjectProperty(InOwner, InName, InObjectFlags)
{
}

FString FSoftClassProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TSoftClassPtr<U%s>"), MetaClass ? *MetaClass->GetName() : TEXT("Object"));
}
