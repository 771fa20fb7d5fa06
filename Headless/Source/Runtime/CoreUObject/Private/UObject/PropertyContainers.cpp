// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "PropertyText.h"
#include "PropertyValueOps.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

#define IMPLEMENT_FIELD(TClass, TName)                                       \
	FFieldClass* TClass::StaticClass()                                       \
	{                                                                        \
		static FFieldClass Class(TEXT(TName), TClass::Super::StaticClass()); \
		return &Class;                                                       \
	}

IMPLEMENT_FIELD(FArrayProperty, "ArrayProperty")
IMPLEMENT_FIELD(FMapProperty, "MapProperty")
IMPLEMENT_FIELD(FSetProperty, "SetProperty")

namespace
{
	/** A value of a property in a temporary buffer, constructed and destroyed with the property. */
	struct FTemporaryValue
	{
		explicit FTemporaryValue(const FProperty* InProperty)
			: Property(InProperty)
		{
			Memory.AddZeroed(FMath::Max(Property->GetSize(), 1) + 16);
			Property->InitializeValue(Get());
		}
		~FTemporaryValue() { Property->DestroyValue(Get()); }

		void* Get()
		{
			// Keep the value aligned as the property needs (up to 16 bytes).
			const UPTRINT Address = (UPTRINT)Memory.GetData();
			const UPTRINT Alignment = (UPTRINT)FMath::Max(Property->GetMinAlignment(), 1);
			return (void*)((Address + Alignment - 1) & ~(Alignment - 1));
		}

		const FProperty* Property;
		TArray<uint8> Memory;
	};

	const TCHAR* SkipSpaces(const TCHAR* Buffer)
	{
		while (*Buffer == TEXT(' ') || *Buffer == TEXT('\t') || *Buffer == TEXT('\r') || *Buffer == TEXT('\n'))
		{
			++Buffer;
		}
		return Buffer;
	}
} // namespace

// ---------------------------------------------------------------------------------------------------
// FScriptArrayHelper

FScriptArrayHelper::FScriptArrayHelper(const FArrayProperty* InProperty, const void* InArray)
	: FScriptArrayHelper(InProperty->Inner, InArray, 0)
{
}

FScriptArrayHelper::FScriptArrayHelper(const FProperty* InInner, const void* InArray, int32 Dummy)
	: Array((FLayout*)InArray)
	, InnerProperty(InInner)
	, ElementSize(InInner->GetSize())
	, ElementAlignment(FMath::Max(InInner->GetMinAlignment(), 1))
{
	static_assert(sizeof(TArray<int32>) == sizeof(FLayout), "FScriptArrayHelper relies on the layout of TArray");
}

FScriptArrayHelper FScriptArrayHelper::CreateHelperFormInnerProperty(
	const FProperty* InInnerProperty, const void* InArray)
{
	return FScriptArrayHelper(InInnerProperty, InArray, 0);
}

int32 FScriptArrayHelper::Num() const
{
	return Array->Num;
}

uint8* FScriptArrayHelper::GetRawPtr(int32 Index)
{
	check(Index >= 0 && Index <= Array->Num);
	return Array->Data + (SIZE_T)Index * ElementSize;
}

void FScriptArrayHelper::Grow(int32 NewMax)
{
	if (NewMax <= Array->Max)
	{
		return;
	}
	// Elements are moved as bytes, as the engine's containers assume of every reflected type.
	uint8* NewData = (uint8*)FMemory::Malloc((SIZE_T)NewMax * ElementSize, ElementAlignment);
	if (Array->Num > 0)
	{
		FMemory::Memcpy(NewData, Array->Data, (SIZE_T)Array->Num * ElementSize);
	}
	FMemory::Free(Array->Data);
	Array->Data = NewData;
	Array->Max = NewMax;
}

void FScriptArrayHelper::Reserve(int32 Count)
{
	Grow(Count);
}

int32 FScriptArrayHelper::AddValue()
{
	return AddValues(1);
}

int32 FScriptArrayHelper::AddValues(int32 Count)
{
	const int32 Index = AddUninitializedValues(Count);
	for (int32 Element = 0; Element < Count; ++Element)
	{
		InnerProperty->InitializeValue(GetRawPtr(Index + Element));
	}
	return Index;
}

int32 FScriptArrayHelper::AddUninitializedValue()
{
	return AddUninitializedValues(1);
}

int32 FScriptArrayHelper::AddUninitializedValues(int32 Count)
{
	check(Count >= 0);
	const int32 Index = Array->Num;
	if (Array->Num + Count > Array->Max)
	{
		Grow(Array->Num + Count + (Array->Num + Count) / 2 + 4);
	}
	Array->Num += Count;
	FMemory::Memzero(GetRawPtr(Index), (SIZE_T)Count * ElementSize);
	return Index;
}

void FScriptArrayHelper::InsertValues(int32 Index, int32 Count)
{
	check(Index >= 0 && Index <= Array->Num && Count >= 0);
	const int32 OldNum = Array->Num;
	AddUninitializedValues(Count);
	FMemory::Memmove(GetRawPtr(Index + Count), GetRawPtr(Index), (SIZE_T)(OldNum - Index) * ElementSize);
	for (int32 Element = 0; Element < Count; ++Element)
	{
		FMemory::Memzero(GetRawPtr(Index + Element), ElementSize);
		InnerProperty->InitializeValue(GetRawPtr(Index + Element));
	}
}

void FScriptArrayHelper::RemoveValues(int32 Index, int32 Count)
{
	check(Index >= 0 && Count >= 0 && Index + Count <= Array->Num);
	for (int32 Element = 0; Element < Count; ++Element)
	{
		InnerProperty->DestroyValue(GetRawPtr(Index + Element));
	}
	FMemory::Memmove(GetRawPtr(Index), GetRawPtr(Index + Count), (SIZE_T)(Array->Num - Index - Count) * ElementSize);
	Array->Num -= Count;
}

void FScriptArrayHelper::EmptyValues(int32 Slack)
{
	RemoveValues(0, Array->Num);
	if (Slack == 0)
	{
		FMemory::Free(Array->Data);
		Array->Data = nullptr;
		Array->Max = 0;
	}
	else
	{
		Grow(Slack);
	}
}

void FScriptArrayHelper::Resize(int32 NewNum)
{
	check(NewNum >= 0);
	if (NewNum > Array->Num)
	{
		AddValues(NewNum - Array->Num);
	}
	else if (NewNum < Array->Num)
	{
		RemoveValues(NewNum, Array->Num - NewNum);
	}
}

void FScriptArrayHelper::SwapValues(int32 A, int32 B)
{
	if (A == B)
	{
		return;
	}
	TArray<uint8> Temp;
	Temp.AddUninitialized(ElementSize);
	FMemory::Memcpy(Temp.GetData(), GetRawPtr(A), ElementSize);
	FMemory::Memcpy(GetRawPtr(A), GetRawPtr(B), ElementSize);
	FMemory::Memcpy(GetRawPtr(B), Temp.GetData(), ElementSize);
}

// ---------------------------------------------------------------------------------------------------
// FArrayProperty

FArrayProperty::FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
	ElementSize = sizeof(TArray<uint8>);
	PropertyFlags |= CPF_ZeroConstructor;
}

FArrayProperty::~FArrayProperty()
{
	delete Inner;
}

void FArrayProperty::AddCppProperty(FProperty* Property)
{
	checkf(!Inner, TEXT("Array property %s already has an inner property"), *GetName());
	Inner = Property;
}

void FArrayProperty::LinkInternal()
{
	checkf(Inner, TEXT("Array property %s has no inner property"), *GetName());
	Inner->Link();
	ElementSize = sizeof(TArray<uint8>);
}

bool FArrayProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptArrayHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptArrayHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		if (!Inner->Identical(HelperA.GetRawPtr(Index), HelperB.GetRawPtr(Index), PortFlags))
		{
			return false;
		}
	}
	return true;
}

FString FArrayProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TArray<%s>"), *Inner->GetCPPType());
}

bool FArrayProperty::ContainsObjectReference() const
{
	return Inner && Inner->ContainsObjectReference();
}

void FArrayProperty::CollectReferences(
	void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	for (int32 ArrayIndex = 0; ArrayIndex < ArrayDim; ++ArrayIndex)
	{
		FScriptArrayHelper Helper(this, (uint8*)Value + ArrayIndex * ElementSize);
		for (int32 Index = 0; Index < Helper.Num(); ++Index)
		{
			Inner->CollectReferences(Helper.GetRawPtr(Index), Collector, ReferencingObject);
		}
	}
}

bool FArrayProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && Inner->SameType(((const FArrayProperty*)Other)->Inner);
}

void FArrayProperty::InitializeValueInternal(void* Dest) const
{
	FMemory::Memzero(Dest, (SIZE_T)ElementSize * ArrayDim);
}

void FArrayProperty::DestroyValueInternal(void* Dest) const
{
	for (int32 ArrayIndex = 0; ArrayIndex < ArrayDim; ++ArrayIndex)
	{
		FScriptArrayHelper Helper(this, (uint8*)Dest + ArrayIndex * ElementSize);
		Helper.EmptyValues();
	}
}

void FArrayProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	for (int32 ArrayIndex = 0; ArrayIndex < Count; ++ArrayIndex)
	{
		FScriptArrayHelper DestHelper(this, (uint8*)Dest + ArrayIndex * ElementSize);
		FScriptArrayHelper SrcHelper(this, (const uint8*)Src + ArrayIndex * ElementSize);
		DestHelper.EmptyValues(SrcHelper.Num());
		if (SrcHelper.Num() == 0)
		{
			continue;
		}
		if (Inner->HasAnyPropertyFlags(CPF_IsPlainOldData))
		{
			DestHelper.AddUninitializedValues(SrcHelper.Num());
			FMemory::Memcpy(DestHelper.GetRawPtr(), SrcHelper.GetRawPtr(), (SIZE_T)SrcHelper.Num() * Inner->GetSize());
		}
		else
		{
			DestHelper.AddValues(SrcHelper.Num());
			for (int32 Index = 0; Index < SrcHelper.Num(); ++Index)
			{
				Inner->CopyCompleteValue(DestHelper.GetRawPtr(Index), SrcHelper.GetRawPtr(Index));
			}
		}
	}
}

void FArrayProperty::ClearValueInternal(void* Data) const
{
	FScriptArrayHelper Helper(this, Data);
	Helper.EmptyValues();
}

void FArrayProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	FScriptArrayHelper Helper(this, PropertyValue);
	ValueStr += TEXT("(");
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (Index > 0)
		{
			ValueStr += TEXT(",");
		}
		Inner->ExportTextItem_Direct(
			ValueStr, Helper.GetRawPtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
	}
	ValueStr += TEXT(")");
}

const TCHAR* FArrayProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	Buffer = SkipSpaces(Buffer);
	if (*Buffer != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing '(' in the value of array %s"), *GetName()));
		return nullptr;
	}
	FScriptArrayHelper Helper(this, Data);
	Helper.EmptyValues();
	Buffer = SkipSpaces(Buffer + 1);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	for (;;)
	{
		const int32 Index = Helper.AddValue();
		Buffer = Inner->ImportText_Direct(
			Buffer, Helper.GetRawPtr(Index), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer);
		if (*Buffer == TEXT(','))
		{
			Buffer = SkipSpaces(Buffer + 1);
			continue;
		}
		if (*Buffer == TEXT(')'))
		{
			return Buffer + 1;
		}
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing ')' in the value of array %s"), *GetName()));
		return nullptr;
	}
}

// ---------------------------------------------------------------------------------------------------
// FMapProperty

FMapProperty::FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FMapProperty::~FMapProperty()
{
	delete KeyProp;
	delete ValueProp;
}

void FMapProperty::AddCppProperty(FProperty* Property)
{
	if (!KeyProp)
	{
		KeyProp = Property;
	}
	else
	{
		checkf(!ValueProp, TEXT("Map property %s already has a key and a value property"), *GetName());
		ValueProp = Property;
	}
}

void FMapProperty::SetMapOps(const FScriptMapOps* InOps)
{
	MapOps = InOps;
	ElementSize = InOps ? InOps->Size : 0;
}

const FScriptMapOps& FMapProperty::Ops() const
{
	checkf(MapOps, TEXT("Map property %s has no map operations (SetMapOps was not called)"), *GetFullName());
	return *MapOps;
}

void FMapProperty::LinkInternal()
{
	checkf(KeyProp && ValueProp, TEXT("Map property %s needs a key and a value property"), *GetName());
	KeyProp->Link();
	ValueProp->Link();
	ElementSize = Ops().Size;
}

int32 FMapProperty::GetMinAlignment() const
{
	return Ops().Alignment;
}

bool FMapProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptMapHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptMapHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		const uint8* OtherValue = HelperB.FindValueFromKey(HelperA.GetKeyPtr(Index));
		if (!OtherValue || !ValueProp->Identical(HelperA.GetValuePtr(Index), OtherValue, PortFlags))
		{
			return false;
		}
	}
	return true;
}

FString FMapProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TMap<%s, %s>"), *KeyProp->GetCPPType(), *ValueProp->GetCPPType());
}

bool FMapProperty::ContainsObjectReference() const
{
	return (KeyProp && KeyProp->ContainsObjectReference()) || (ValueProp && ValueProp->ContainsObjectReference());
}

namespace
{
	/** Keys and set elements must not be changed in place (they are hashed): collect a copy of their references. */
	class FReadOnlyCollector final : public FReferenceCollector
	{
	public:
		explicit FReadOnlyCollector(FReferenceCollector& InInner)
			: Inner(InInner)
		{
		}

		virtual void HandleObjectReference(
			UObject*& InObject, const UObject* InReferencingObject, const FProperty* InReferencingProperty) override
		{
			UObject* Copy = InObject;
			Inner.HandleObjectReference(Copy, InReferencingObject, InReferencingProperty);
		}

	private:
		FReferenceCollector& Inner;
	};
} // namespace

void FMapProperty::CollectReferences(
	void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	FReadOnlyCollector KeyCollector(Collector);
	for (int32 ArrayIndex = 0; ArrayIndex < ArrayDim; ++ArrayIndex)
	{
		FScriptMapHelper Helper(this, (uint8*)Value + ArrayIndex * ElementSize);
		for (int32 Index = 0; Index < Helper.Num(); ++Index)
		{
			if (KeyProp->ContainsObjectReference())
			{
				KeyProp->CollectReferences(Helper.GetKeyPtr(Index), KeyCollector, ReferencingObject);
			}
			if (ValueProp->ContainsObjectReference())
			{
				ValueProp->CollectReferences(Helper.GetValuePtr(Index), Collector, ReferencingObject);
			}
		}
	}
}

void FMapProperty::InitializeValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::ConstructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FMapProperty::DestroyValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::DestructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FMapProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	UE::CoreUObject::Private::CopyValues(Ops(), Dest, Src, Count, ElementSize);
}

void FMapProperty::ClearValueInternal(void* Data) const
{
	Ops().Empty(Data);
}

void FMapProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	FScriptMapHelper Helper(this, PropertyValue);
	ValueStr += TEXT("(");
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (Index > 0)
		{
			ValueStr += TEXT(",");
		}
		ValueStr += TEXT("(");
		KeyProp->ExportTextItem_Direct(
			ValueStr, Helper.GetKeyPtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
		ValueStr += TEXT(", ");
		ValueProp->ExportTextItem_Direct(
			ValueStr, Helper.GetValuePtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
		ValueStr += TEXT(")");
	}
	ValueStr += TEXT(")");
}

const TCHAR* FMapProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	Buffer = SkipSpaces(Buffer);
	if (*Buffer != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing '(' in the value of map %s"), *GetName()));
		return nullptr;
	}
	FScriptMapHelper Helper(this, Data);
	Helper.EmptyValues();
	Buffer = SkipSpaces(Buffer + 1);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	for (;;)
	{
		if (*Buffer != TEXT('('))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Missing '(' before a pair of map %s"), *GetName()));
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer + 1);
		FTemporaryValue Key(KeyProp);
		Buffer = KeyProp->ImportText_Direct(Buffer, Key.Get(), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer);
		if (*Buffer != TEXT(','))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Missing ',' in a pair of map %s"), *GetName()));
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer + 1);
		uint8* Value = Helper.FindOrAdd(Key.Get());
		Buffer = ValueProp->ImportText_Direct(Buffer, Value, OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer);
		if (*Buffer != TEXT(')'))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Missing ')' after a pair of map %s"), *GetName()));
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer + 1);
		if (*Buffer == TEXT(','))
		{
			Buffer = SkipSpaces(Buffer + 1);
			continue;
		}
		if (*Buffer == TEXT(')'))
		{
			return Buffer + 1;
		}
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing ')' in the value of map %s"), *GetName()));
		return nullptr;
	}
}

FScriptMapHelper::FScriptMapHelper(const FMapProperty* InProperty, const void* InMap)
	: Property(InProperty)
	, Map(const_cast<void*>(InMap))
{
	Refresh();
}

void FScriptMapHelper::Refresh()
{
	Pairs.Reset();
	Property->GetMapOps()->GetPairs(Map, Pairs);
}

int32 FScriptMapHelper::Num() const
{
	return Pairs.Num();
}

uint8* FScriptMapHelper::GetKeyPtr(int32 Index)
{
	return (uint8*)Pairs[Index].Key;
}

uint8* FScriptMapHelper::GetValuePtr(int32 Index)
{
	return (uint8*)Pairs[Index].Value;
}

uint8* FScriptMapHelper::FindValueFromKey(const void* KeyPtr) const
{
	return (uint8*)Property->GetMapOps()->FindValue(Map, KeyPtr);
}

uint8* FScriptMapHelper::FindOrAdd(const void* KeyPtr)
{
	uint8* Value = (uint8*)Property->GetMapOps()->FindOrAddValue(Map, KeyPtr);
	Refresh();
	return Value;
}

bool FScriptMapHelper::RemovePair(const void* KeyPtr)
{
	const bool bRemoved = Property->GetMapOps()->Remove(Map, KeyPtr);
	Refresh();
	return bRemoved;
}

void FScriptMapHelper::EmptyValues()
{
	Property->GetMapOps()->Empty(Map);
	Refresh();
}

// ---------------------------------------------------------------------------------------------------
// FSetProperty

FSetProperty::FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
}

FSetProperty::~FSetProperty()
{
	delete ElementProp;
}

void FSetProperty::AddCppProperty(FProperty* Property)
{
	checkf(!ElementProp, TEXT("Set property %s already has an element property"), *GetName());
	ElementProp = Property;
}

void FSetProperty::SetSetOps(const FScriptSetOps* InOps)
{
	SetOps = InOps;
	ElementSize = InOps ? InOps->Size : 0;
}

const FScriptSetOps& FSetProperty::Ops() const
{
	checkf(SetOps, TEXT("Set property %s has no set operations (SetSetOps was not called)"), *GetFullName());
	return *SetOps;
}

void FSetProperty::LinkInternal()
{
	checkf(ElementProp, TEXT("Set property %s has no element property"), *GetName());
	ElementProp->Link();
	ElementSize = Ops().Size;
}

int32 FSetProperty::GetMinAlignment() const
{
	return Ops().Alignment;
}

bool FSetProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	FScriptSetHelper HelperA(this, A);
	if (!B)
	{
		return HelperA.Num() == 0;
	}
	FScriptSetHelper HelperB(this, B);
	if (HelperA.Num() != HelperB.Num())
	{
		return false;
	}
	for (int32 Index = 0; Index < HelperA.Num(); ++Index)
	{
		if (!HelperB.Contains(HelperA.GetElementPtr(Index)))
		{
			return false;
		}
	}
	return true;
}

FString FSetProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return FString::Printf(TEXT("TSet<%s>"), *ElementProp->GetCPPType());
}

bool FSetProperty::ContainsObjectReference() const
{
	return ElementProp && ElementProp->ContainsObjectReference();
}

void FSetProperty::CollectReferences(
	void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	FReadOnlyCollector ElementCollector(Collector);
	for (int32 ArrayIndex = 0; ArrayIndex < ArrayDim; ++ArrayIndex)
	{
		FScriptSetHelper Helper(this, (uint8*)Value + ArrayIndex * ElementSize);
		for (int32 Index = 0; Index < Helper.Num(); ++Index)
		{
			ElementProp->CollectReferences(Helper.GetElementPtr(Index), ElementCollector, ReferencingObject);
		}
	}
}

void FSetProperty::InitializeValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::ConstructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FSetProperty::DestroyValueInternal(void* Dest) const
{
	UE::CoreUObject::Private::DestructValues(Ops(), Dest, ArrayDim, ElementSize);
}

void FSetProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	UE::CoreUObject::Private::CopyValues(Ops(), Dest, Src, Count, ElementSize);
}

void FSetProperty::ClearValueInternal(void* Data) const
{
	Ops().Empty(Data);
}

void FSetProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	FScriptSetHelper Helper(this, PropertyValue);
	ValueStr += TEXT("(");
	for (int32 Index = 0; Index < Helper.Num(); ++Index)
	{
		if (Index > 0)
		{
			ValueStr += TEXT(",");
		}
		ElementProp->ExportTextItem_Direct(
			ValueStr, Helper.GetElementPtr(Index), nullptr, Parent, PortFlags | PPF_Delimited, ExportRootScope);
	}
	ValueStr += TEXT(")");
}

const TCHAR* FSetProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	Buffer = SkipSpaces(Buffer);
	if (*Buffer != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing '(' in the value of set %s"), *GetName()));
		return nullptr;
	}
	FScriptSetHelper Helper(this, Data);
	Helper.EmptyElements();
	Buffer = SkipSpaces(Buffer + 1);
	if (*Buffer == TEXT(')'))
	{
		return Buffer + 1;
	}
	for (;;)
	{
		FTemporaryValue Element(ElementProp);
		Buffer =
			ElementProp->ImportText_Direct(Buffer, Element.Get(), OwnerObject, PortFlags | PPF_Delimited, ErrorText);
		if (!Buffer)
		{
			return nullptr;
		}
		Helper.AddElement(Element.Get());
		Buffer = SkipSpaces(Buffer);
		if (*Buffer == TEXT(','))
		{
			Buffer = SkipSpaces(Buffer + 1);
			continue;
		}
		if (*Buffer == TEXT(')'))
		{
			return Buffer + 1;
		}
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing ')' in the value of set %s"), *GetName()));
		return nullptr;
	}
}

FScriptSetHelper::FScriptSetHelper(const FSetProperty* InProperty, const void* InSet)
	: Property(InProperty)
	, Set(const_cast<void*>(InSet))
{
	Refresh();
}

void FScriptSetHelper::Refresh()
{
	Elements.Reset();
	Property->GetSetOps()->GetElements(Set, Elements);
}

int32 FScriptSetHelper::Num() const
{
	return Elements.Num();
}

uint8* FScriptSetHelper::GetElementPtr(int32 Index)
{
	return (uint8*)Elements[Index];
}

bool FScriptSetHelper::Contains(const void* ElementPtr) const
{
	return Property->GetSetOps()->Find(Set, ElementPtr) != nullptr;
}

void FScriptSetHelper::AddElement(const void* ElementPtr)
{
	Property->GetSetOps()->Add(Set, ElementPtr);
	Refresh();
}

bool FScriptSetHelper::RemoveElement(const void* ElementPtr)
{
	const bool bRemoved = Property->GetSetOps()->Remove(Set, ElementPtr);
	Refresh();
	return bRemoved;
}

void FScriptSetHelper::EmptyElements()
{
	Property->GetSetOps()->Empty(Set);
	Refresh();
}
