// Copyright Orvane. All Rights Reserved.

#include "UObject/Class.h"

#include "ObjectInternals.h"
#include "PropertyText.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

namespace
{
	int32 AlignValue(int32 Value, int32 Alignment)
	{
		return Alignment > 1 ? (Value + Alignment - 1) & ~(Alignment - 1) : Value;
	}
} // namespace

// ---------------------------------------------------------------------------------------------------
// UField

UClass* UField::GetOwnerClass() const
{
	for (const UObject* Object = this; Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UClass::StaticClass()))
		{
			return (UClass*)Object;
		}
	}
	return nullptr;
}

UStruct* UField::GetOwnerStruct() const
{
	for (const UObject* Object = this; Object; Object = Object->GetOuter())
	{
		if (Object->IsA(UStruct::StaticClass()))
		{
			return (UStruct*)Object;
		}
	}
	return nullptr;
}

#if WITH_EDITOR
FText UField::GetDisplayNameText() const
{
	if (const FString* DisplayName = MetaDataMap.Find(TEXT("DisplayName")))
	{
		return FText::FromString(*DisplayName);
	}
	return FText::FromString(NameToDisplayString(GetName(), false));
}

FText UField::GetToolTipText(bool bShortTooltip) const
{
	if (const FString* ToolTip = MetaDataMap.Find(TEXT("ToolTip")))
	{
		return FText::FromString(*ToolTip);
	}
	return GetDisplayNameText();
}

const FString& UField::GetMetaData(const FName& Key) const
{
	static const FString Empty;
	const FString* Value = MetaDataMap.Find(Key);
	return Value ? *Value : Empty;
}

bool UField::HasMetaData(const FName& Key) const
{
	return MetaDataMap.Contains(Key);
}

void UField::SetMetaData(const FName& Key, const TCHAR* InValue)
{
	MetaDataMap.Add(Key, FString(InValue));
}

void UField::RemoveMetaData(const FName& Key)
{
	MetaDataMap.Remove(Key);
}

bool UField::GetBoolMetaData(const FName& Key) const
{
	return GetMetaData(Key).ToBool();
}

int32 UField::GetIntMetaData(const FName& Key) const
{
	int32 Value = 0;
	LexFromString(Value, *GetMetaData(Key));
	return Value;
}
#endif

// ---------------------------------------------------------------------------------------------------
// UStruct

UStruct::~UStruct()
{
	FField* Field = ChildProperties;
	while (Field)
	{
		FField* Next = Field->Next;
		delete Field;
		Field = Next;
	}
	ChildProperties = nullptr;
}

void UStruct::SetSuperStruct(UStruct* NewSuperStruct)
{
	SuperStruct = NewSuperStruct;
}

bool UStruct::IsChildOf(const UStruct* SomeBase) const
{
	if (!SomeBase)
	{
		return false;
	}
	for (const UStruct* Struct = this; Struct; Struct = Struct->GetSuperStruct())
	{
		if (Struct == SomeBase)
		{
			return true;
		}
	}
	return false;
}

FProperty* UStruct::FindPropertyByName(FName InName) const
{
	for (const UStruct* Struct = this; Struct; Struct = Struct->GetSuperStruct())
	{
		for (FField* Field = Struct->ChildProperties; Field; Field = Field->Next)
		{
			if (Field->GetFName() == InName && Field->IsA<FProperty>())
			{
				return (FProperty*)Field;
			}
		}
	}
	return nullptr;
}

int32 UStruct::GetStructureSize() const
{
	return AlignValue(PropertiesSize, MinAlignment);
}

void UStruct::AddCppProperty(FProperty* Property)
{
	Property->Next = ChildProperties;
	ChildProperties = Property;
}

bool UStruct::ContainsProperty(const FProperty* Property) const
{
	for (FProperty* It = PropertyLink; It; It = It->PropertyLinkNext)
	{
		if (It == Property)
		{
			return true;
		}
	}
	return false;
}

void UStruct::Link(bool bRelinkExistingProperties)
{
	const bool bNative = IsNativeLayout();
	int32 Size = SuperStruct ? SuperStruct->GetPropertiesSize() : 0;
	int32 Alignment = SuperStruct ? SuperStruct->GetMinAlignment() : 1;
	if (bNative)
	{
		Alignment = FMath::Max(Alignment, MinAlignment);
	}

	TArray<FProperty*> Own;
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			Own.Add(Property);
		}
	}
	for (FProperty* Property : Own)
	{
		Property->Link();
		const int32 PropertyAlignment = FMath::Max(Property->GetMinAlignment(), 1);
		Alignment = FMath::Max(Alignment, PropertyAlignment);
		if (!bNative)
		{
			// Properties added at run time go after everything the super struct owns.
			const int32 Offset = AlignValue(Size, PropertyAlignment);
			Property->SetOffset_Internal(Offset);
			Size = Offset + Property->GetSize();
		}
	}
	MinAlignment = Alignment;
	if (!bNative)
	{
		PropertiesSize = Size;
	}

	// Own properties first, then the super struct's chains.
	auto BuildChain = [&Own](FProperty* FProperty::*NextMember, auto&& Filter, FProperty* Tail) -> FProperty*
	{
		FProperty* Head = Tail;
		for (int32 Index = Own.Num() - 1; Index >= 0; --Index)
		{
			if (Filter(Own[Index]))
			{
				Own[Index]->*NextMember = Head;
				Head = Own[Index];
			}
		}
		return Head;
	};
	PropertyLink = BuildChain(
		&FProperty::PropertyLinkNext,
		[](FProperty*)
		{
			return true;
		},
		SuperStruct ? SuperStruct->PropertyLink : nullptr);
	RefLink = BuildChain(
		&FProperty::NextRef,
		[](FProperty* Property)
		{
			return Property->ContainsObjectReference();
		},
		SuperStruct ? SuperStruct->RefLink : nullptr);
	DestructorLink = BuildChain(
		&FProperty::DestructorLinkNext,
		[](FProperty* Property)
		{
			return !Property->HasAnyPropertyFlags(CPF_NoDestructor);
		},
		nullptr);
	PostConstructLink = BuildChain(
		&FProperty::PostConstructLinkNext,
		[bNative](FProperty* Property)
		{
			return !bNative || Property->HasAnyPropertyFlags(CPF_Config);
		},
		SuperStruct ? SuperStruct->PostConstructLink : nullptr);
}

void UStruct::InitializeStructProperties(void* Dest) const
{
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			Property->InitializeValue_InContainer(Dest);
		}
	}
}

void UStruct::DestroyStructProperties(void* Dest) const
{
	for (FProperty* Property = DestructorLink; Property; Property = Property->DestructorLinkNext)
	{
		Property->DestroyValue_InContainer(Dest);
	}
}

void UStruct::CollectReferences(void* Instance, FReferenceCollector& Collector, const UObject* ReferencingObject) const
{
	for (FProperty* Property = RefLink; Property; Property = Property->NextRef)
	{
		Property->CollectReferences(Property->ContainerPtrToValuePtr<void>(Instance), Collector, ReferencingObject);
	}
}

void FReferenceCollector::AddPropertyReferences(const UStruct* Struct, void* Instance, const UObject* ReferencingObject)
{
	Struct->CollectReferences(Instance, *this, ReferencingObject);
}

void UStruct::ExportText(FString& ValueStr, const void* Value, const void* Defaults, UObject* OwnerObject,
	int32 PortFlags, UObject* ExportRootScope) const
{
	ValueStr += TEXT("(");
	bool bFirst = true;
	for (TFieldIterator<FProperty> It(this); It; ++It)
	{
		FProperty* Property = *It;
		for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
		{
			const void* PropertyValue = Property->ContainerPtrToValuePtr<void>(Value, Index);
			const void* DefaultValue = Defaults ? Property->ContainerPtrToValuePtr<void>(Defaults, Index) : nullptr;
			if (DefaultValue && Property->Identical(PropertyValue, DefaultValue, PortFlags))
			{
				continue;
			}
			if (!bFirst)
			{
				ValueStr += TEXT(",");
			}
			bFirst = false;
			ValueStr += Property->GetName();
			if (Property->ArrayDim > 1)
			{
				ValueStr += FString::Printf(TEXT("(%d)"), Index);
			}
			ValueStr += TEXT("=");
			Property->ExportTextItem_Direct(
				ValueStr, PropertyValue, DefaultValue, OwnerObject, PortFlags | PPF_Delimited, ExportRootScope);
		}
	}
	ValueStr += TEXT(")");
}

const TCHAR* UStruct::ImportText(const TCHAR* Buffer, void* Value, UObject* OwnerObject, int32 PortFlags,
	FOutputDevice* ErrorText, const FString& StructName) const
{
	auto SkipSpaces = [](const TCHAR* Cursor)
	{
		while (*Cursor == TEXT(' ') || *Cursor == TEXT('\t') || *Cursor == TEXT('\r') || *Cursor == TEXT('\n'))
		{
			++Cursor;
		}
		return Cursor;
	};
	Buffer = SkipSpaces(Buffer);
	if (*Buffer != TEXT('('))
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Missing '(' in the value of struct %s"), *StructName));
		return nullptr;
	}
	Buffer = SkipSpaces(Buffer + 1);
	while (*Buffer != TEXT(')'))
	{
		FString Name;
		while (*Buffer && *Buffer != TEXT('=') && *Buffer != TEXT('(') && *Buffer != TEXT(',') && *Buffer != TEXT(')'))
		{
			Name += *Buffer++;
		}
		Name.TrimStartAndEndInline();
		int32 ArrayIndex = 0;
		if (*Buffer == TEXT('('))
		{
			++Buffer;
			FString IndexText;
			while (*Buffer && *Buffer != TEXT(')'))
			{
				IndexText += *Buffer++;
			}
			if (*Buffer != TEXT(')'))
			{
				ReportImportError(ErrorText, FString::Printf(TEXT("Bad index of %s in struct %s"), *Name, *StructName));
				return nullptr;
			}
			++Buffer;
			LexFromString(ArrayIndex, *IndexText);
		}
		Buffer = SkipSpaces(Buffer);
		if (*Buffer != TEXT('='))
		{
			ReportImportError(
				ErrorText, FString::Printf(TEXT("Missing '=' after %s in struct %s"), *Name, *StructName));
			return nullptr;
		}
		Buffer = SkipSpaces(Buffer + 1);
		FProperty* Property = FindPropertyByName(FName(*Name));
		if (!Property || ArrayIndex < 0 || ArrayIndex >= Property->ArrayDim)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Unknown member %s in struct %s"), *Name, *StructName));
			Buffer = SkipDelimitedValue(Buffer);
			if (!Buffer)
			{
				return nullptr;
			}
		}
		else
		{
			Buffer = Property->ImportText_Direct(Buffer, Property->ContainerPtrToValuePtr<void>(Value, ArrayIndex),
				OwnerObject, PortFlags | PPF_Delimited, ErrorText);
			if (!Buffer)
			{
				return nullptr;
			}
		}
		Buffer = SkipSpaces(Buffer);
		if (*Buffer == TEXT(','))
		{
			Buffer = SkipSpaces(Buffer + 1);
		}
		else if (*Buffer != TEXT(')'))
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Missing ')' in the value of struct %s"), *StructName));
			return nullptr;
		}
	}
	return Buffer + 1;
}

// ---------------------------------------------------------------------------------------------------
// UScriptStruct

UScriptStruct::~UScriptStruct() = default;

void UScriptStruct::Link(bool bRelinkExistingProperties)
{
	UStruct::Link(bRelinkExistingProperties);
}

void UScriptStruct::InitializeStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Element = (uint8*)Dest + Index * Stride;
		if (CppStructOps)
		{
			CppStructOps->Construct(Element);
		}
		else
		{
			FMemory::Memzero(Element, Stride);
			if (UScriptStruct* Super = (UScriptStruct*)GetSuperStruct())
			{
				Super->InitializeStruct(Element, 1);
			}
			InitializeStructProperties(Element);
		}
	}
}

void UScriptStruct::DestroyStruct(void* Dest, int32 ArrayDim) const
{
	const int32 Stride = GetStructureSize();
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		uint8* Element = (uint8*)Dest + Index * Stride;
		if (CppStructOps)
		{
			if (CppStructOps->HasDestructor())
			{
				CppStructOps->Destruct(Element);
			}
		}
		else
		{
			DestroyStructProperties(Element);
			if (UScriptStruct* Super = (UScriptStruct*)GetSuperStruct())
			{
				Super->DestroyStruct(Element, 1);
			}
		}
	}
}

void UScriptStruct::CopyScriptStruct(void* Dest, void const* Src, int32 ArrayDim) const
{
	if (CppStructOps && CppStructOps->Copy(Dest, Src, ArrayDim))
	{
		return;
	}
	const int32 Stride = GetStructureSize();
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			Property->CopyCompleteValue_InContainer((uint8*)Dest + Index * Stride, (const uint8*)Src + Index * Stride);
		}
	}
}

void UScriptStruct::ClearScriptStruct(void* Dest, int32 ArrayDim) const
{
	DestroyStruct(Dest, ArrayDim);
	FMemory::Memzero(Dest, (SIZE_T)GetStructureSize() * ArrayDim);
	InitializeStruct(Dest, ArrayDim);
}

bool UScriptStruct::CompareScriptStruct(const void* A, const void* B, uint32 PortFlags) const
{
	if (CppStructOps)
	{
		bool bResult = false;
		if (CppStructOps->Identical(A, B, PortFlags, bResult))
		{
			return bResult;
		}
	}
	for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
		{
			if (!Property->Identical_InContainer(A, B, Index, PortFlags))
			{
				return false;
			}
		}
	}
	return true;
}

uint32 UScriptStruct::GetStructTypeHash(const void* Src) const
{
	if (CppStructOps && CppStructOps->HasGetTypeHash())
	{
		return CppStructOps->GetStructTypeHash(Src);
	}
	uint32 Hash = 0;
	for (FProperty* Property = PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		Hash = Hash * 31u + Property->GetValueTypeHash(Property->ContainerPtrToValuePtr<void>(Src));
	}
	return Hash;
}

// ---------------------------------------------------------------------------------------------------
// UFunction

void UFunction::SetNativeCallable(TFunction<void(UObject*, FFrame&, void*)> InCallable)
{
	NativeCallable = MoveTemp(InCallable);
}

void UFunction::Invoke(UObject* Obj, FFrame& Stack, RESULT_DECL)
{
	if (NativeCallable)
	{
		NativeCallable(Obj, Stack, RESULT_PARAM);
		return;
	}
	if (Func)
	{
		Func(Obj, Stack, RESULT_PARAM);
	}
}

FProperty* UFunction::GetReturnProperty() const
{
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			if (Property->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				return Property;
			}
		}
	}
	return nullptr;
}

UClass* UFunction::GetOuterUClass() const
{
	UObject* Outer = GetOuter();
	return Outer && Outer->IsA(UClass::StaticClass()) ? (UClass*)Outer : nullptr;
}

void UFunction::Link(bool bRelinkExistingProperties)
{
	// Parameters are laid out from the start of the parameter block, whatever the overridden function has.
	UStruct* SavedSuper = SuperStruct;
	SuperStruct = nullptr;
	const int32 NativeSize = PropertiesSize;
	UStruct::Link(bRelinkExistingProperties);
	SuperStruct = SavedSuper;
	if (bNativeLayout)
	{
		PropertiesSize = NativeSize;
	}
	NumParms = 0;
	ReturnValueOffset = MAX_uint16;
	for (FField* Field = ChildProperties; Field; Field = Field->Next)
	{
		if (FProperty* Property = CastField<FProperty>(Field))
		{
			if (Property->HasAnyPropertyFlags(CPF_Parm))
			{
				++NumParms;
			}
			if (Property->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				ReturnValueOffset = (uint16)Property->GetOffset_ForInternal();
			}
			if (Property->HasAnyPropertyFlags(CPF_OutParm) && !Property->HasAnyPropertyFlags(CPF_ReturnParm))
			{
				FunctionFlags |= FUNC_HasOutParms;
			}
		}
	}
	ParmsSize = (uint16)GetStructureSize();
}

// ---------------------------------------------------------------------------------------------------
// UClass

UObject* UClass::GetDefaultObject(bool bCreateIfNeeded) const
{
	if (!ClassDefaultObject && bCreateIfNeeded)
	{
		const_cast<UClass*>(this)->CreateDefaultObject();
	}
	return ClassDefaultObject;
}

FName UClass::GetDefaultObjectName() const
{
	return FName(*(FString(TEXT("Default__")) + GetName()));
}

UObject* UClass::CreateDefaultObject()
{
	if (ClassDefaultObject)
	{
		return ClassDefaultObject;
	}
	checkf(ClassConstructor, TEXT("Class %s has no constructor; cannot create its default object"), *GetPathName());
	UClass* SuperClass = GetSuperClass();
	UObject* SuperDefault = SuperClass ? SuperClass->GetDefaultObject() : nullptr;
	if (ClassDefaultObject)
	{
		// Creating the super class's default object created this one too.
		return ClassDefaultObject;
	}
	FStaticConstructObjectParameters Params(this);
	Params.Outer = GetOuter();
	Params.Name = GetDefaultObjectName();
	Params.SetFlags = RF_Public | RF_ClassDefaultObject | RF_ArchetypeObject;
	Params.Template = SuperDefault;
	ClassDefaultObject = StaticConstructObject_Internal(Params);
	return ClassDefaultObject;
}

UFunction* UClass::FindFunctionByName(FName InName, EIncludeSuperFlag::Type IncludeSuper) const
{
	for (const UClass* Class = this; Class; Class = Class->GetSuperClass())
	{
		if (UFunction* const* Found = Class->FuncMap.Find(InName))
		{
			return *Found;
		}
		if (IncludeSuper == EIncludeSuperFlag::ExcludeSuper)
		{
			break;
		}
	}
	return nullptr;
}

void UClass::AddFunctionToFunctionMap(UFunction* Function, FName FuncName)
{
	FuncMap.Add(FuncName, Function);
}

void UClass::RemoveFunctionFromFunctionMap(UFunction* Function)
{
	FuncMap.Remove(Function->GetFName());
}

void UClass::Bind()
{
	UClass* SuperClass = GetSuperClass();
	if (!SuperClass)
	{
		return;
	}
	if (!ClassConstructor)
	{
		ClassConstructor = SuperClass->ClassConstructor;
	}
	if (!ClassAddReferencedObjects)
	{
		ClassAddReferencedObjects = SuperClass->ClassAddReferencedObjects;
	}
	ClassFlags |= SuperClass->ClassFlags & CLASS_Inherit;
	if (ClassConfigName.IsNone())
	{
		ClassConfigName = SuperClass->ClassConfigName;
	}
	if (!ClassWithin)
	{
		ClassWithin = SuperClass->ClassWithin;
	}
}

void UClass::Link(bool bRelinkExistingProperties)
{
	UStruct::Link(bRelinkExistingProperties);
}

void UClass::SetSuperStruct(UStruct* NewSuperStruct)
{
	UStruct::SetSuperStruct(NewSuperStruct);
}

// ---------------------------------------------------------------------------------------------------
// UEnum

FString UEnum::GenerateFullEnumName(const TCHAR* InEnumName) const
{
	if (CppForm == ECppForm::Regular)
	{
		return InEnumName;
	}
	return GetName() + TEXT("::") + InEnumName;
}

bool UEnum::SetEnums(
	TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm, EEnumFlags InFlags, bool bAddMaxKeyIfMissing)
{
	Names = InNames;
	CppForm = InCppForm;
	EnumFlags = InFlags;
	if (bAddMaxKeyIfMissing)
	{
		const FString MaxName = GenerateFullEnumName(*(GetName() + TEXT("_MAX")));
		bool bHasMax = false;
		int64 MaxValue = -1;
		for (const TPair<FName, int64>& Pair : Names)
		{
			bHasMax |= Pair.Key == FName(*MaxName);
			MaxValue = FMath::Max(MaxValue, Pair.Value);
		}
		if (!bHasMax)
		{
			Names.Add(TPair<FName, int64>(FName(*MaxName), MaxValue + 1));
		}
	}
	return true;
}

FString UEnum::GetNameStringWithoutPrefix(FName FullName) const
{
	FString Name = FullName.ToString();
	int32 Separator = Name.Find(TEXT("::"), ESearchCase::CaseSensitive);
	if (Separator != INDEX_NONE)
	{
		return Name.Mid(Separator + 2);
	}
	return Name;
}

int32 UEnum::GetIndexByName(FName InName) const
{
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		if (Names[Index].Key == InName)
		{
			return Index;
		}
	}
	// A short name of an enum class or namespaced enum.
	if (CppForm != ECppForm::Regular && InName.ToString().Find(TEXT("::")) == INDEX_NONE)
	{
		const FName FullName(*GenerateFullEnumName(*InName.ToString()));
		for (int32 Index = 0; Index < Names.Num(); ++Index)
		{
			if (Names[Index].Key == FullName)
			{
				return Index;
			}
		}
	}
	return INDEX_NONE;
}

int32 UEnum::GetIndexByNameString(const FString& SearchString) const
{
	return SearchString.IsEmpty() ? INDEX_NONE : GetIndexByName(FName(*SearchString));
}

int32 UEnum::GetIndexByValue(int64 Value) const
{
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		if (Names[Index].Value == Value)
		{
			return Index;
		}
	}
	return INDEX_NONE;
}

FName UEnum::GetNameByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Key : NAME_None;
}

FString UEnum::GetNameStringByIndex(int32 InIndex) const
{
	return Names.IsValidIndex(InIndex) ? GetNameStringWithoutPrefix(Names[InIndex].Key) : FString();
}

int64 UEnum::GetValueByIndex(int32 Index) const
{
	return Names.IsValidIndex(Index) ? Names[Index].Value : (int64)INDEX_NONE;
}

FName UEnum::GetNameByValue(int64 InValue) const
{
	return GetNameByIndex(GetIndexByValue(InValue));
}

FString UEnum::GetNameStringByValue(int64 InValue) const
{
	return GetNameStringByIndex(GetIndexByValue(InValue));
}

int64 UEnum::GetValueByName(FName InName) const
{
	return GetValueByIndex(GetIndexByName(InName));
}

int64 UEnum::GetValueByNameString(const FString& SearchString) const
{
	return GetValueByIndex(GetIndexByNameString(SearchString));
}

int64 UEnum::GetMaxEnumValue() const
{
	int64 MaxValue = 0;
	for (const TPair<FName, int64>& Pair : Names)
	{
		MaxValue = FMath::Max(MaxValue, Pair.Value);
	}
	return MaxValue;
}

bool UEnum::IsValidEnumValue(int64 InValue) const
{
	return GetIndexByValue(InValue) != INDEX_NONE;
}

#if WITH_EDITOR
FText UEnum::GetDisplayNameTextByIndex(int32 InIndex) const
{
	if (HasMetaData(TEXT("DisplayName"), InIndex))
	{
		return FText::FromString(GetMetaData(TEXT("DisplayName"), InIndex));
	}
	return FText::FromString(GetNameStringByIndex(InIndex));
}

FText UEnum::GetDisplayNameTextByValue(int64 InValue) const
{
	return GetDisplayNameTextByIndex(GetIndexByValue(InValue));
}

static FName EnumMetaDataKey(const UEnum* Enum, const TCHAR* Key, int32 NameIndex)
{
	if (NameIndex == INDEX_NONE)
	{
		return FName(Key);
	}
	return FName(*(Enum->GetNameStringByIndex(NameIndex) + TEXT(".") + Key));
}

FString UEnum::GetMetaData(const TCHAR* Key, int32 NameIndex) const
{
	return UField::GetMetaData(EnumMetaDataKey(this, Key, NameIndex));
}

bool UEnum::HasMetaData(const TCHAR* Key, int32 NameIndex) const
{
	return UField::HasMetaData(EnumMetaDataKey(this, Key, NameIndex));
}

void UEnum::SetMetaData(const TCHAR* Key, const TCHAR* InValue, int32 NameIndex)
{
	UField::SetMetaData(EnumMetaDataKey(this, Key, NameIndex), InValue);
}

void UEnum::RemoveMetaData(const TCHAR* Key, int32 NameIndex)
{
	UField::RemoveMetaData(EnumMetaDataKey(this, Key, NameIndex));
}
#endif

FField* FindFPropertyByPath(const TCHAR* InFieldPath)
{
	const FString Path(InFieldPath);
	int32 Separator = INDEX_NONE;
	if (!Path.FindLastChar(TEXT(':'), Separator))
	{
		return nullptr;
	}
	UStruct* Owner = Cast<UStruct>(StaticFindObject(UStruct::StaticClass(), nullptr, *Path.Left(Separator)));
	return Owner ? Owner->FindPropertyByName(FName(*Path.Mid(Separator + 1))) : nullptr;
}
