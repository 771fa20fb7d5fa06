// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "UObject/GeneratedCppIncludes.h"

using namespace UE::CoreUObject::Private;

namespace
{
	TArray<UObject* (*)()>& PendingRegistrations()
	{
		static TArray<UObject* (*)()> List;
		return List;
	}

	bool GIsRegistering = false;

	/** Creates a reflection object (class, struct, enum, function) without going through NewObject. */
	template <class T>
	T* AllocateIntrinsic(FName Name, UObject* Outer, UClass* Class)
	{
		void* Memory = FMemory::MallocZeroed(sizeof(T), alignof(T));
		FObjectConstructionRecord Record;
		Record.Memory = Memory;
		Record.Class = Class;
		Record.Outer = Outer;
		Record.Name = Name;
		Record.Flags = RF_Public | RF_Standalone | RF_Transient;
		Record.Index = GetObjectArray().AllocateSlot((UObjectBase*)(UObject*)Memory);
		Record.bHash = Outer != nullptr;
		SetPendingConstruction(&Record);
		T* Object = ::new (Memory) T();
		check(FUObjectArrayAccess::GetIndex(Object) == Record.Index);
		Object->SetInternalFlags(EInternalObjectFlags::Native);
		return Object;
	}

	void PlaceInPackage(UObject* Object, const TCHAR* PackageName)
	{
		UPackage* Package = FindOrCreateScriptPackage(PackageName);
		FUObjectArrayAccess::SetOuter(Object, Package);
		GetObjectArray().HashObject(Object);
	}

	template <class FieldType>
	void ApplyMetaData(FieldType* Field, const FMetaDataPairParam* MetaData, int32 NumMetaData)
	{
#if WITH_EDITOR
		for (int32 Index = 0; Index < NumMetaData; ++Index)
		{
			static_cast<UField*>(Field)->SetMetaData(FName(MetaData[Index].Key), MetaData[Index].Value);
		}
#endif
	}

	void AddProperties(
		UStruct* Struct, const FPropertyParams* const* Properties, int32 NumProperties, int32 Size, int32 Alignment)
	{
		// AddCppProperty prepends: add in reverse to keep the declaration order.
		for (int32 Index = NumProperties - 1; Index >= 0; --Index)
		{
			Struct->AddCppProperty(ConstructFProperty(Struct, *Properties[Index], Size, Alignment));
		}
	}
} // namespace

namespace UE::CoreUObject::Private
{
	bool IsRegisteringCompiledInTypes()
	{
		return GIsRegistering;
	}

	void ProcessNewlyLoadedUObjects()
	{
		TArray<UObject* (*)()>& List = PendingRegistrations();
		if (List.Num() == 0 || GIsRegistering)
		{
			return;
		}
		GIsRegistering = true;
		while (List.Num() > 0)
		{
			TArray<UObject* (*)()> Batch = MoveTemp(List);
			List.Reset();
			for (UObject* (*Register)() : Batch)
			{
				Register();
			}
		}
		GIsRegistering = false;
	}

	FRegisterCompiledInInfo::FRegisterCompiledInInfo(UObject* (*InRegister)())
	{
		PendingRegistrations().Add(InRegister);
	}

	UPackage* FindScriptPackage(FName Name)
	{
		if (const TArray<UObjectBase*>* Named = GetObjectArray().FindByName(Name))
		{
			for (UObjectBase* Object : *Named)
			{
				if (Object->GetOuter() == nullptr)
				{
					return (UPackage*)Object;
				}
			}
		}
		return nullptr;
	}

	UPackage* FindOrCreateScriptPackage(const TCHAR* PackageName)
	{
		const FName Name(PackageName);
		// Registering UPackage's own class places it in /Script/CoreUObject, which may create the package
		// asked for here; so the class comes first, then the lookup.
		UClass* PackageClass = UPackage::StaticClass();
		if (UPackage* Existing = FindScriptPackage(Name))
		{
			return Existing;
		}
		// NewObject would otherwise process pending registrations first; those register classes of this
		// very package, create it, and the NewObject below would then replace it under their feet.
		TGuardValue<bool> RegisteringGuard(GIsRegistering, true);
		UPackage* Package = NewObject<UPackage>(nullptr, PackageClass, Name, RF_Public | RF_Standalone);
		Package->SetPackageFlags(PKG_CompiledIn | PKG_ContainsScript);
		Package->SetInternalFlags(EInternalObjectFlags::Native);
		return Package;
	}

	struct FReflectionRegistrar
	{
		static UFunction* RegisterFunction(UClass* Class, const FFunctionParams& Params)
		{
			UFunction* Function = AllocateIntrinsic<UFunction>(FName(Params.Name), Class, UFunction::StaticClass());
			Function->FunctionFlags = Params.FunctionFlags;
			Function->Func = Params.Func;
			Function->bNativeLayout = true;
			Function->PropertiesSize = Params.ParmsSize;
			Function->MinAlignment = Params.ParmsAlignment;
			AddProperties(Function, Params.Properties, Params.NumProperties, Params.ParmsSize, Params.ParmsAlignment);
			if (UClass* SuperClass = Class->GetSuperClass())
			{
				Function->SetSuperStruct(SuperClass->FindFunctionByName(Function->GetFName()));
			}
			Function->Link(false);
			ApplyMetaData(Function, Params.MetaData, Params.NumMetaData);
			return Function;
		}
	};

	UClass* RegisterNativeClass(UClass*& OutClass, const FClassParams& Params)
	{
		if (OutClass)
		{
			return OutClass;
		}
		UClass* Class = AllocateIntrinsic<UClass>(FName(Params.Name), nullptr, nullptr);
		// Set before anything else so classes that refer back to this one find it.
		OutClass = Class;
		Class->ClassConstructor = Params.ClassConstructor;
		Class->ClassAddReferencedObjects = Params.ClassAddReferencedObjects;
		Class->PropertiesSize = Params.PropertiesSize;
		Class->MinAlignment = Params.MinAlignment;
		Class->ClassFlags = Params.ClassFlags | CLASS_Native;
		Class->ClassConfigName = Params.ConfigName ? FName(Params.ConfigName) : NAME_None;
		FUObjectArrayAccess::SetClass(Class, UClass::StaticClass());
		Class->SetSuperStruct(Params.SuperClassFunc ? Params.SuperClassFunc() : nullptr);
		PlaceInPackage(Class, Params.PackageName);
		Class->ClassWithin = Params.WithinClassFunc ? Params.WithinClassFunc() : nullptr;
		Class->Bind();
		if (!Class->ClassWithin)
		{
			Class->ClassWithin = UObject::StaticClass();
		}
		if (!Class->ClassConfigName.IsNone() && !Class->GetSuperClass())
		{
			// The root names the default config file without being a config class itself.
			Class->ClassFlags &= ~CLASS_Config;
		}
		AddProperties(Class, Params.Properties, Params.NumProperties, Params.PropertiesSize, Params.MinAlignment);
		for (int32 Index = Params.NumFunctions - 1; Index >= 0; --Index)
		{
			UFunction* Function = FReflectionRegistrar::RegisterFunction(Class, *Params.Functions[Index]);
			Function->Next = Class->Children;
			Class->Children = Function;
			Class->AddFunctionToFunctionMap(Function, Function->GetFName());
		}
		Class->Link(false);
		ApplyMetaData(Class, Params.MetaData, Params.NumMetaData);
		return Class;
	}

	UScriptStruct* RegisterNativeStruct(UScriptStruct*& OutStruct, const FStructParams& Params)
	{
		if (OutStruct)
		{
			return OutStruct;
		}
		UScriptStruct* Struct =
			AllocateIntrinsic<UScriptStruct>(FName(Params.Name), nullptr, UScriptStruct::StaticClass());
		OutStruct = Struct;
		Struct->StructFlags = Params.StructFlags | STRUCT_Native;
		Struct->PropertiesSize = Params.Size;
		Struct->MinAlignment = Params.Alignment;
		Struct->SetCppStructOps(Params.StructOpsFunc ? Params.StructOpsFunc() : nullptr);
		if (UScriptStruct::ICppStructOps* Ops = Struct->GetCppStructOps())
		{
			if (Ops->IsPlainOldData())
			{
				Struct->StructFlags |= STRUCT_IsPlainOldData;
			}
			if (!Ops->HasDestructor())
			{
				Struct->StructFlags |= STRUCT_NoDestructor;
			}
		}
		PlaceInPackage(Struct, Params.PackageName);
		Struct->SetSuperStruct(Params.SuperStructFunc ? Params.SuperStructFunc() : nullptr);
		AddProperties(Struct, Params.Properties, Params.NumProperties, Params.Size, Params.Alignment);
		Struct->Link(false);
		ApplyMetaData(Struct, Params.MetaData, Params.NumMetaData);
		return Struct;
	}

	UEnum* RegisterNativeEnum(UEnum*& OutEnum, const FEnumParams& Params)
	{
		if (OutEnum)
		{
			return OutEnum;
		}
		UEnum* Enum = AllocateIntrinsic<UEnum>(FName(Params.Name), nullptr, UEnum::StaticClass());
		OutEnum = Enum;
		PlaceInPackage(Enum, Params.PackageName);
		TArray<TPair<FName, int64>> Names;
		for (int32 Index = 0; Index < Params.NumEnumerators; ++Index)
		{
			Names.Add(TPair<FName, int64>(FName(Params.Enumerators[Index].Name), Params.Enumerators[Index].Value));
		}
		Enum->SetEnums(Names, Params.CppForm);
		ApplyMetaData(Enum, Params.MetaData, Params.NumMetaData);
#if WITH_EDITOR
		for (int32 Index = 0; Index < Params.NumEnumerators; ++Index)
		{
			const FEnumeratorParams& Enumerator = Params.Enumerators[Index];
			for (int32 MetaIndex = 0; MetaIndex < Enumerator.NumMetaData; ++MetaIndex)
			{
				Enum->SetMetaData(Enumerator.MetaData[MetaIndex].Key, Enumerator.MetaData[MetaIndex].Value, Index);
			}
		}
#endif
		return Enum;
	}

	FProperty* ConstructFProperty(
		FFieldVariant Owner, const FPropertyParams& Params, int32 ContainerSize, int32 ContainerAlignment)
	{
		const FName Name(Params.Name);
		const EObjectFlags Flags = RF_Public | RF_Transient | RF_MarkAsNative;
		FProperty* Property = nullptr;
		switch (Params.Kind)
		{
			case EPropertyGenKind::Bool:
			{
				FBoolProperty* Bool = new FBoolProperty(Owner, Name, Flags);
				if (Params.SetBitFunc)
				{
					// Find the byte and bit the compiler gave the bitfield by setting it in a blank container.
					uint8* Buffer = (uint8*)FMemory::MallocZeroed(ContainerSize, FMath::Max(ContainerAlignment, 1));
					Params.SetBitFunc(Buffer);
					int32 ByteIndex = INDEX_NONE;
					for (int32 Index = 0; Index < ContainerSize; ++Index)
					{
						if (Buffer[Index] != 0)
						{
							checkf(ByteIndex == INDEX_NONE, TEXT("Bitfield %s sets more than one byte"), Params.Name);
							ByteIndex = Index;
						}
					}
					checkf(ByteIndex != INDEX_NONE, TEXT("Bitfield %s sets no bit"), Params.Name);
					Bool->SetBitfield(0, Buffer[ByteIndex], 1);
					Bool->SetOffset_Internal(ByteIndex);
					FMemory::Free(Buffer);
				}
				else
				{
					Bool->SetBoolSize(Params.ElementSize > 0 ? Params.ElementSize : 1, true);
				}
				Property = Bool;
				break;
			}
			case EPropertyGenKind::Int8:
				Property = new FInt8Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Int16:
				Property = new FInt16Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Int:
				Property = new FIntProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Int64:
				Property = new FInt64Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Byte:
			{
				FByteProperty* Byte = new FByteProperty(Owner, Name, Flags);
				Byte->Enum = Params.EnumFunc ? Params.EnumFunc() : nullptr;
				Property = Byte;
				break;
			}
			case EPropertyGenKind::UInt16:
				Property = new FUInt16Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::UInt32:
				Property = new FUInt32Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::UInt64:
				Property = new FUInt64Property(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Float:
				Property = new FFloatProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Double:
				Property = new FDoubleProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Name:
				Property = new FNameProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Str:
				Property = new FStrProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Text:
				Property = new FTextProperty(Owner, Name, Flags);
				break;
			case EPropertyGenKind::Object:
			{
				FObjectProperty* Object = new FObjectProperty(Owner, Name, Flags);
				Object->PropertyClass = Params.ClassFunc();
				Property = Object;
				break;
			}
			case EPropertyGenKind::Class:
			{
				FClassProperty* Class = new FClassProperty(Owner, Name, Flags);
				Class->PropertyClass = Params.ClassFunc ? Params.ClassFunc() : UClass::StaticClass();
				Class->MetaClass = Params.MetaClassFunc ? Params.MetaClassFunc() : UObject::StaticClass();
				Property = Class;
				break;
			}
			case EPropertyGenKind::WeakObject:
			{
				FWeakObjectProperty* Weak = new FWeakObjectProperty(Owner, Name, Flags);
				Weak->PropertyClass = Params.ClassFunc();
				Property = Weak;
				break;
			}
			case EPropertyGenKind::SoftObject:
			{
				FSoftObjectProperty* Soft = new FSoftObjectProperty(Owner, Name, Flags);
				Soft->PropertyClass = Params.ClassFunc();
				Soft->SetValueOps((const FSoftObjectValueOps*)Params.Ops);
				Property = Soft;
				break;
			}
			case EPropertyGenKind::SoftClass:
			{
				FSoftClassProperty* Soft = new FSoftClassProperty(Owner, Name, Flags);
				Soft->PropertyClass = UClass::StaticClass();
				Soft->MetaClass = Params.MetaClassFunc ? Params.MetaClassFunc() : UObject::StaticClass();
				Soft->SetValueOps((const FSoftObjectValueOps*)Params.Ops);
				Property = Soft;
				break;
			}
			case EPropertyGenKind::Struct:
			{
				FStructProperty* Struct = new FStructProperty(Owner, Name, Flags);
				Struct->Struct = Params.StructFunc();
				Struct->ElementSize = Params.ElementSize;
				Property = Struct;
				break;
			}
			case EPropertyGenKind::Enum:
			{
				FEnumProperty* Enum = new FEnumProperty(Owner, Name, Flags, Params.EnumFunc());
				checkf(Params.Inner, TEXT("Enum property %s has no underlying type"), Params.Name);
				Enum->AddCppProperty(ConstructFProperty(Enum, *Params.Inner, 0, 1));
				Property = Enum;
				break;
			}
			case EPropertyGenKind::Array:
			{
				FArrayProperty* Array = new FArrayProperty(Owner, Name, Flags);
				Array->AddCppProperty(ConstructFProperty(Array, *Params.Inner, 0, 1));
				Property = Array;
				break;
			}
			case EPropertyGenKind::Map:
			{
				FMapProperty* Map = new FMapProperty(Owner, Name, Flags);
				Map->AddCppProperty(ConstructFProperty(Map, *Params.Inner, 0, 1));
				Map->AddCppProperty(ConstructFProperty(Map, *Params.ValueInner, 0, 1));
				Map->SetMapOps((const FScriptMapOps*)Params.Ops);
				Property = Map;
				break;
			}
			case EPropertyGenKind::Set:
			{
				FSetProperty* Set = new FSetProperty(Owner, Name, Flags);
				Set->AddCppProperty(ConstructFProperty(Set, *Params.Inner, 0, 1));
				Set->SetSetOps((const FScriptSetOps*)Params.Ops);
				Property = Set;
				break;
			}
		}
		checkf(Property, TEXT("Unknown kind of property %s"), Params.Name);
		Property->PropertyFlags |= Params.Flags;
		Property->ArrayDim = Params.ArrayDim;
		if (!Params.SetBitFunc)
		{
			Property->SetOffset_Internal(Params.Offset);
		}
		const bool bSizeKnownNow =
			Params.Kind != EPropertyGenKind::Struct && Params.Kind != EPropertyGenKind::Enum && !Params.SetBitFunc;
		checkf(!bSizeKnownNow || Params.ElementSize == 0 || Property->ElementSize == Params.ElementSize,
			TEXT("Property %s: the reflected size %d differs from the C++ size %d"), Params.Name, Property->ElementSize,
			Params.ElementSize);
#if WITH_EDITORONLY_DATA
		for (int32 Index = 0; Index < Params.NumMetaData; ++Index)
		{
			Property->SetMetaData(FName(Params.MetaData[Index].Key), Params.MetaData[Index].Value);
		}
#endif
		return Property;
	}
} // namespace UE::CoreUObject::Private
