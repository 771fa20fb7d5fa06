// Copyright Orvane. All Rights Reserved.

#include "Kismet2/KismetEditorUtilities.h"

#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Logging/LogMacros.h"
#include "Misc/OutputDevice.h"
#include "Misc/PackageName.h"
#include "UObject/Package.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/ReflectionOps.h"
#include "UObject/SoftObjectPtr.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

DEFINE_LOG_CATEGORY_STATIC(LogBlueprint, Log, All);

namespace UE::Engine::Private
{
	/** Collects what ImportText reports, to put it into the compiler's own message. */
	class FImportErrorCollector : public FOutputDevice
	{
	public:
		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			Messages += Messages.IsEmpty() ? FString(V) : FString(TEXT(" ")) + V;
		}

		FString Messages;
	};

	/** What one Blueprint compilation is about, for its messages. */
	struct FCompileContext
	{
		UBlueprint* Blueprint = nullptr;
		UBlueprintGeneratedClass* Class = nullptr;
	};

	UClass* ClassOf(const FCompileContext& Context, const FEdGraphPinType& Type, UClass* Default)
	{
		if (Type.PinSubCategory == UEdGraphSchema_K2::PSC_Self)
		{
			return Context.Class;
		}
		UClass* Class = Cast<UClass>(Type.PinSubCategoryObject.Get());
		return Class ? Class : Default;
	}

	/**
	 * Creates the property of one value of a variable's type (the element type for containers), owned
	 * by Owner. Null, with an error logged, for types the headless compiler does not build.
	 */
	FProperty* CreateValueProperty(const FCompileContext& Context, FFieldVariant Owner, FName Name,
		const FEdGraphPinType& Type, EObjectFlags Flags)
	{
		using K2 = UEdGraphSchema_K2;
		const FName Category = Type.PinCategory;
		if (Category == K2::PC_Boolean)
		{
			FBoolProperty* Property = new FBoolProperty(Owner, Name, Flags);
			Property->SetBoolSize(sizeof(bool), true);
			return Property;
		}
		if (Category == K2::PC_Int)
		{
			return new FIntProperty(Owner, Name, Flags);
		}
		if (Category == K2::PC_Int64)
		{
			return new FInt64Property(Owner, Name, Flags);
		}
		if (Category == K2::PC_Real || Category == K2::PC_Float || Category == K2::PC_Double)
		{
			// Blueprint reals are doubles unless the sub-category asks for single precision.
			if (Category == K2::PC_Float || Type.PinSubCategory == K2::PC_Float)
			{
				return new FFloatProperty(Owner, Name, Flags);
			}
			return new FDoubleProperty(Owner, Name, Flags);
		}
		if (Category == K2::PC_Name)
		{
			return new FNameProperty(Owner, Name, Flags);
		}
		if (Category == K2::PC_String)
		{
			return new FStrProperty(Owner, Name, Flags);
		}
		if (Category == K2::PC_Text)
		{
			return new FTextProperty(Owner, Name, Flags);
		}
		if (Category == K2::PC_Byte)
		{
			FByteProperty* Property = new FByteProperty(Owner, Name, Flags);
			Property->Enum = Cast<UEnum>(Type.PinSubCategoryObject.Get());
			return Property;
		}
		if (Category == K2::PC_Enum)
		{
			UEnum* Enum = Cast<UEnum>(Type.PinSubCategoryObject.Get());
			if (!Enum)
			{
				UE_LOG(LogBlueprint, Error, TEXT("%s: the enum variable '%s' names no enum."),
					*Context.Blueprint->GetPathName(), *Name.ToString());
				return nullptr;
			}
			FEnumProperty* Property = new FEnumProperty(Owner, Name, Flags, Enum);
			Property->AddCppProperty(new FByteProperty(Property, TEXT("UnderlyingType"), Flags));
			return Property;
		}
		if (Category == K2::PC_Object || Category == K2::PC_Interface)
		{
			FObjectProperty* Property = new FObjectProperty(Owner, Name, Flags);
			Property->PropertyClass = ClassOf(Context, Type, UObject::StaticClass());
			return Property;
		}
		if (Category == K2::PC_Class)
		{
			FClassProperty* Property = new FClassProperty(Owner, Name, Flags);
			Property->PropertyClass = UClass::StaticClass();
			Property->MetaClass = ClassOf(Context, Type, UObject::StaticClass());
			return Property;
		}
		if (Category == K2::PC_SoftObject)
		{
			FSoftObjectProperty* Property = new FSoftObjectProperty(Owner, Name, Flags);
			Property->PropertyClass = ClassOf(Context, Type, UObject::StaticClass());
			Property->SetValueOps(&UE::CoreUObject::Private::TSoftObjectValueOps<TSoftObjectPtr<UObject>>::Ops);
			return Property;
		}
		if (Category == K2::PC_SoftClass)
		{
			FSoftClassProperty* Property = new FSoftClassProperty(Owner, Name, Flags);
			Property->PropertyClass = UClass::StaticClass();
			Property->MetaClass = ClassOf(Context, Type, UObject::StaticClass());
			Property->SetValueOps(&UE::CoreUObject::Private::TSoftObjectValueOps<TSoftClassPtr<UObject>>::Ops);
			return Property;
		}
		if (Category == K2::PC_Struct)
		{
			UScriptStruct* Struct = Cast<UScriptStruct>(Type.PinSubCategoryObject.Get());
			if (!Struct)
			{
				UE_LOG(LogBlueprint, Error, TEXT("%s: the struct variable '%s' names no struct."),
					*Context.Blueprint->GetPathName(), *Name.ToString());
				return nullptr;
			}
			return new FStructProperty(Owner, Name, Flags, Struct);
		}
		UE_LOG(LogBlueprint, Error,
			TEXT("%s: the variable '%s' has the pin category '%s', which the headless Blueprint compiler does not "
				 "build."),
			*Context.Blueprint->GetPathName(), *Name.ToString(), *Category.ToString());
		return nullptr;
	}

	/** Creates the property of one variable, with its container; null (reported) if it cannot be built. */
	FProperty* CreateVariableProperty(const FCompileContext& Context, const FBPVariableDescription& Variable)
	{
		const EObjectFlags Flags = RF_Public;
		const FEdGraphPinType& Type = Variable.VarType;
		FProperty* Property = nullptr;
		switch (Type.ContainerType)
		{
			case EPinContainerType::None:
				Property = CreateValueProperty(Context, Context.Class, Variable.VarName, Type, Flags);
				break;
			case EPinContainerType::Array:
			{
				FArrayProperty* Array = new FArrayProperty(Context.Class, Variable.VarName, Flags);
				FProperty* Inner = CreateValueProperty(Context, Array, Variable.VarName, Type, Flags);
				if (!Inner)
				{
					delete Array;
					return nullptr;
				}
				Array->AddCppProperty(Inner);
				Property = Array;
				break;
			}
			case EPinContainerType::Set:
			case EPinContainerType::Map:
				// Run-time set and map properties need the script layouts of sets and maps.
				UE_HEADLESS_UNIMPLEMENTED();
				UE_LOG(LogBlueprint, Error, TEXT("%s: the set or map variable '%s' is not built."),
					*Context.Blueprint->GetPathName(), *Variable.VarName.ToString());
				return nullptr;
		}
		if (!Property)
		{
			return nullptr;
		}

		// A Blueprint's variables are always visible to its graphs; the rest comes from the variable.
		Property->SetPropertyFlags((EPropertyFlags)Variable.PropertyFlags | CPF_BlueprintVisible);
#if WITH_EDITORONLY_DATA
		if (!Variable.FriendlyName.IsEmpty())
		{
			Property->SetMetaData(TEXT("DisplayName"), *Variable.FriendlyName);
		}
		if (!Variable.Category.IsEmpty())
		{
			Property->SetMetaData(TEXT("Category"), *Variable.Category.ToString());
		}
		for (const FBPVariableMetaDataEntry& Entry : Variable.MetaDataArray)
		{
			Property->SetMetaData(Entry.DataKey, *Entry.DataValue);
		}
#endif
		return Property;
	}

	/** Loads what an object or class default value names, so that importing the value finds it. */
	void LoadReferencedDefault(const FProperty* Property, const FString& DefaultValue)
	{
		const FObjectProperty* ObjectProperty = CastField<FObjectProperty>(Property);
		if (!ObjectProperty || DefaultValue.IsEmpty() || DefaultValue == TEXT("None"))
		{
			return;
		}
		const FString Path = FPackageName::ExportTextPathToObjectPath(DefaultValue.TrimQuotes());
		const FString PackageName = FPackageName::ObjectPathToPackageName(Path);
		if (!FPackageName::IsScriptPackage(PackageName) && FPackageName::IsValidLongPackageName(PackageName) &&
			!FindPackage(nullptr, *PackageName))
		{
			LoadPackage(nullptr, *PackageName, LOAD_NoWarn);
		}
	}

	/** Moves a class compiled before out of the way of its replacement; objects made from it keep it. */
	void RetireOldClass(UObject* OldClassObject)
	{
		UPackage* Transient = GetTransientPackage();
		UClass* OldClass = Cast<UClass>(OldClassObject);
		if (UObject* OldDefault = OldClass ? OldClass->GetDefaultObject(false) : nullptr)
		{
			const FName DefaultName = MakeUniqueObjectName(
				Transient, OldDefault->GetClass(), FName(*(TEXT("REINST_") + OldDefault->GetName())));
			OldDefault->Rename(*DefaultName.ToString(), Transient, REN_DontCreateRedirectors | REN_NonTransactional);
		}
		const FName ClassName = MakeUniqueObjectName(
			Transient, OldClassObject->GetClass(), FName(*(TEXT("REINST_") + OldClassObject->GetName())));
		OldClassObject->Rename(*ClassName.ToString(), Transient, REN_DontCreateRedirectors | REN_NonTransactional);
		OldClassObject->ClearFlags(RF_Public | RF_Standalone);
	}
} // namespace UE::Engine::Private

UBlueprint* FKismetEditorUtilities::CreateBlueprint(UClass* ParentClass, UObject* Outer, const FName NewBPName,
	EBlueprintType BlueprintType, TSubclassOf<UBlueprint> BlueprintClassType,
	TSubclassOf<UBlueprintGeneratedClass> BlueprintGeneratedClassType, FName CallingContext)
{
	check(ParentClass && Outer);
	UClass* BlueprintClass = BlueprintClassType.Get() ? BlueprintClassType.Get() : UBlueprint::StaticClass();
	UBlueprint* Blueprint =
		NewObject<UBlueprint>(Outer, BlueprintClass, NewBPName, RF_Public | RF_Standalone | RF_Transactional);
	if (BlueprintGeneratedClassType.Get() && BlueprintGeneratedClassType.Get() != Blueprint->GetBlueprintClass())
	{
		// The generated class type comes from GetBlueprintClass; another type needs a Blueprint class that gives it.
		UE_HEADLESS_UNIMPLEMENTED();
	}
	Blueprint->ParentClass = ParentClass;
	Blueprint->BlueprintType = BlueprintType;
	Blueprint->GenerateNewGuid();
	CompileBlueprint(Blueprint);
	return Blueprint;
}

UBlueprint* FKismetEditorUtilities::CreateBlueprint(
	UClass* ParentClass, UObject* Outer, const FName NewBPName, EBlueprintType BlueprintType, FName CallingContext)
{
	return CreateBlueprint(ParentClass, Outer, NewBPName, BlueprintType, UBlueprint::StaticClass(),
		UBlueprintGeneratedClass::StaticClass(), CallingContext);
}

void FKismetEditorUtilities::CompileBlueprint(
	UBlueprint* BlueprintObj, EBlueprintCompileOptions CompileFlags, FCompilerResultsLog* pResults)
{
	using namespace UE::Engine::Private;
	check(BlueprintObj);
	if (pResults)
	{
		// The headless compiler reports to the log only.
		UE_HEADLESS_UNIMPLEMENTED();
	}
	UClass* ParentClass = BlueprintObj->ParentClass.Get();
	if (!ParentClass)
	{
		UE_LOG(
			LogBlueprint, Error, TEXT("%s cannot be compiled: it has no parent class."), *BlueprintObj->GetPathName());
		return;
	}
	if (UBlueprint* ParentBlueprint = UBlueprint::GetBlueprintFromClass(ParentClass))
	{
		if (ParentBlueprint == BlueprintObj)
		{
			UE_LOG(LogBlueprint, Error, TEXT("%s cannot be compiled: it is its own parent."),
				*BlueprintObj->GetPathName());
			return;
		}
	}

	UObject* Outer = BlueprintObj->GetOuter();
	const FName ClassName(*(BlueprintObj->GetName() + TEXT("_C")));
	if (UObject* Existing = StaticFindObjectFast(nullptr, Outer, ClassName))
	{
		RetireOldClass(Existing);
	}

	UClass* GeneratedClassType = BlueprintObj->GetBlueprintClass();
	check(GeneratedClassType && GeneratedClassType->IsChildOf(UBlueprintGeneratedClass::StaticClass()));
	// The class is rebuilt from the Blueprint whenever the Blueprint loads, so it is never saved.
	UBlueprintGeneratedClass* Class =
		NewObject<UBlueprintGeneratedClass>(Outer, GeneratedClassType, ClassName, RF_Public | RF_Transient);
	Class->SetSuperStruct(ParentClass);
	Class->ClassFlags |= CLASS_CompiledFromBlueprint;
	Class->SetGeneratingBlueprint(BlueprintObj);

	FCompileContext Context;
	Context.Blueprint = BlueprintObj;
	Context.Class = Class;
	TSet<FName> Names;
	TArray<TPair<FProperty*, const FBPVariableDescription*>> Built;
	for (const FBPVariableDescription& Variable : BlueprintObj->NewVariables)
	{
		if (Variable.VarName.IsNone() || Names.Contains(Variable.VarName) ||
			ParentClass->FindPropertyByName(Variable.VarName))
		{
			UE_LOG(LogBlueprint, Error,
				TEXT("%s: the variable '%s' is unnamed or its name is already used; it is not built."),
				*BlueprintObj->GetPathName(), *Variable.VarName.ToString());
			continue;
		}
		Names.Add(Variable.VarName);
		if (FProperty* Property = CreateVariableProperty(Context, Variable))
		{
			Built.Add(TPair<FProperty*, const FBPVariableDescription*>(Property, &Variable));
		}
	}
	// AddCppProperty prepends: adding the last variable first keeps the Blueprint's order.
	for (int32 Index = Built.Num() - 1; Index >= 0; --Index)
	{
		Class->AddCppProperty(Built[Index].Key);
	}
	Class->Bind();
	Class->StaticLink(true);

	BlueprintObj->GeneratedClass = Class;
	BlueprintObj->SkeletonGeneratedClass = nullptr;

	UObject* Default = Class->GetDefaultObject();
	// Like the class, its default object is rebuilt from the Blueprint on load and never saved.
	Default->SetFlags(RF_Transient);
	for (const TPair<FProperty*, const FBPVariableDescription*>& Entry : Built)
	{
		const FString& DefaultValue = Entry.Value->DefaultValue;
		if (DefaultValue.IsEmpty())
		{
			continue;
		}
		LoadReferencedDefault(Entry.Key, DefaultValue);
		FImportErrorCollector Errors;
		void* Value = Entry.Key->ContainerPtrToValuePtr<void>(Default);
		if (!Entry.Key->ImportText_Direct(*DefaultValue, Value, Default, PPF_None, &Errors))
		{
			UE_LOG(LogBlueprint, Warning, TEXT("%s: the default value '%s' of '%s' cannot be read. %s"),
				*BlueprintObj->GetPathName(), *DefaultValue, *Entry.Value->VarName.ToString(), *Errors.Messages);
		}
	}
}

bool FBlueprintEditorUtils::AddMemberVariable(
	UBlueprint* Blueprint, const FName& NewVarName, const FEdGraphPinType& NewVarType, const FString& DefaultValue)
{
	check(Blueprint);
	if (NewVarName.IsNone() || FindNewVariableIndex(Blueprint, NewVarName) != INDEX_NONE)
	{
		return false;
	}
	Blueprint->Modify();
	FBPVariableDescription& Variable = Blueprint->NewVariables.AddDefaulted_GetRef();
	Variable.VarName = NewVarName;
	Variable.VarGuid = FGuid::NewGuid();
	Variable.FriendlyName = NewVarName.ToString();
	Variable.VarType = NewVarType;
	Variable.PropertyFlags = CPF_Edit | CPF_BlueprintVisible | CPF_DisableEditOnInstance;
	Variable.Category = FText::FromString(TEXT("Default"));
	Variable.DefaultValue = DefaultValue;
	return true;
}

int32 FBlueprintEditorUtils::FindNewVariableIndex(const UBlueprint* Blueprint, const FName& InName)
{
	if (Blueprint && !InName.IsNone())
	{
		for (int32 Index = 0; Index < Blueprint->NewVariables.Num(); ++Index)
		{
			if (Blueprint->NewVariables[Index].VarName == InName)
			{
				return Index;
			}
		}
	}
	return INDEX_NONE;
}
