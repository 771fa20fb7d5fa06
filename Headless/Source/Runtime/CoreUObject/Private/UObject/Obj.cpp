// Copyright Orvane. All Rights Reserved.

#include "UObject/Object.h"

#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/Stack.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

UObject::UObject() = default;

UObject::UObject(const FObjectInitializer& ObjectInitializer) {}

void UObject::PostInitProperties() {}

void UObject::PostLoad() {}

bool UObject::Rename(const TCHAR* InName, UObject* NewOuter, ERenameFlags Flags)
{
	UObject* TargetOuter = NewOuter ? NewOuter : GetOuter();
	FName NewName = InName ? FName(InName) : (NewOuter ? GetFName() : NAME_None);
	if (NewName.IsNone())
	{
		NewName = MakeUniqueObjectName(TargetOuter, GetClass());
	}
	if (UObject* Existing = StaticFindObjectFast(nullptr, TargetOuter, NewName))
	{
		if (Existing != this)
		{
			if (!(Flags & REN_Test))
			{
				UE_LOG(LogUObjectGlobals, Error, TEXT("Cannot rename %s to %s: the name is taken by %s"),
					*GetFullName(), *NewName.ToString(), *Existing->GetFullName());
			}
			return false;
		}
	}
	if (Flags & REN_Test)
	{
		return true;
	}
	UObject* OldOuter = GetOuter();
	const FName OldName = GetFName();
	if (!(Flags & REN_DoNotDirty))
	{
		MarkPackageDirty();
	}
	GetObjectArray().UnhashObject(this);
	FUObjectArrayAccess::SetName(this, NewName);
	FUObjectArrayAccess::SetOuter(this, TargetOuter);
	GetObjectArray().HashObject(this);
	if (!(Flags & REN_DoNotDirty) && TargetOuter != OldOuter)
	{
		MarkPackageDirty();
	}
	PostRename(OldOuter, OldName);
	return true;
}

void UObject::BeginDestroy()
{
	// A destroyed object can no longer be found by name: its name goes, so a new object can take it.
	GetObjectArray().UnhashObject(this);
	FUObjectArrayAccess::SetName(this, NAME_None);
	GetObjectArray().HashObject(this);
}

void UObject::FinishDestroy()
{
	DestroyNonNativeProperties(this);
}

bool UObject::ConditionalBeginDestroy()
{
	if (HasAnyFlags(RF_BeginDestroyed))
	{
		return false;
	}
	AtomicallySetFlags(RF_BeginDestroyed);
	BeginDestroy();
	return true;
}

bool UObject::ConditionalFinishDestroy()
{
	if (HasAnyFlags(RF_FinishDestroyed))
	{
		return false;
	}
	AtomicallySetFlags(RF_FinishDestroyed);
	FinishDestroy();
	return true;
}

bool UObject::Modify(bool bAlwaysMarkDirty)
{
	FCoreUObjectDelegates::OnObjectModified.Broadcast(this);
	if (bAlwaysMarkDirty)
	{
		MarkPackageDirty();
	}
	// The headless editor has no transaction buffer, so nothing was recorded.
	return false;
}

UWorld* UObject::GetWorld() const
{
	if (HasAnyFlags(RF_ClassDefaultObject))
	{
		return nullptr;
	}
	UObject* Outer = GetOuter();
	return Outer ? Outer->GetWorld() : nullptr;
}

bool UObject::IsAsset() const
{
	const UObject* Outer = GetOuter();
	return HasAnyFlags(RF_Public) && !IsTemplate() && !HasAnyFlags(RF_Transient) && Outer &&
		   Outer->IsA(UPackage::StaticClass()) && Outer != GetTransientPackage();
}

UObject* UObject::GetArchetype() const
{
	UClass* Class = GetClass();
	if (HasAnyFlags(RF_ClassDefaultObject))
	{
		UClass* SuperClass = Class->GetSuperClass();
		return SuperClass ? SuperClass->GetDefaultObject() : nullptr;
	}
	return Class->GetDefaultObject();
}

UFunction* UObject::FindFunction(FName InName) const
{
	return GetClass()->FindFunctionByName(InName);
}

UFunction* UObject::FindFunctionChecked(FName InName) const
{
	UFunction* Function = FindFunction(InName);
	checkf(Function, TEXT("Failed to find function %s in %s"), *InName.ToString(), *GetFullName());
	return Function;
}

void UObject::ProcessEvent(UFunction* Function, void* Parms)
{
	checkf(Function, TEXT("ProcessEvent needs a function"));
	UClass* FunctionClass = Function->GetOuterUClass();
	checkf(!FunctionClass || GetClass()->IsChildOf(FunctionClass), TEXT("%s cannot call %s: it is not a %s"),
		*GetFullName(), *Function->GetFullName(), *GetNameSafe(FunctionClass));
	checkf(Parms || Function->ParmsSize == 0 || Function->NumParms == 0,
		TEXT("%s has parameters but ProcessEvent got none"), *Function->GetFullName());
	FFrame Stack(this, Function, Parms);
	uint8* Result =
		Function->ReturnValueOffset != MAX_uint16 && Parms ? (uint8*)Parms + Function->ReturnValueOffset : nullptr;
	CallFunction(Stack, Result, Function);
}

void UObject::CallFunction(FFrame& Stack, RESULT_DECL, UFunction* Function)
{
	// A Blueprint event without an implementation does nothing.
	Function->Invoke(this, Stack, RESULT_PARAM);
}

void UObject::AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector) {}

UObject* UObject::CreateDefaultSubobject(
	FName SubobjectFName, UClass* ReturnType, UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient)
{
	return FObjectInitializer::Get().CreateDefaultSubobject(
		this, SubobjectFName, ReturnType, ClassToCreateByDefault, bIsRequired, bIsTransient);
}

#if WITH_EDITOR
void UObject::PreEditChange(FProperty* PropertyAboutToChange)
{
	Modify();
}

void UObject::PostEditChangeProperty(FPropertyChangedEvent& PropertyChangedEvent)
{
	FCoreUObjectDelegates::OnObjectPropertyChanged.Broadcast(this, PropertyChangedEvent);
}

void UObject::PostEditChangeChainProperty(FPropertyChangedChainEvent& PropertyChangedEvent)
{
	PostEditChangeProperty(PropertyChangedEvent);
}

bool UObject::CanEditChange(const FProperty* InProperty) const
{
	return !InProperty || !InProperty->HasAnyPropertyFlags(CPF_EditConst);
}
#endif

bool CastIsA(const UObject* Object, const UClass* Class)
{
	return Object->IsA(Class);
}

bool CastIsExactly(const UObject* Object, const UClass* Class)
{
	return Object->GetClass() == Class;
}

void CastLogError(const UObject* From, const UClass* ToClass)
{
	checkf(false, TEXT("Cast of %s to %s failed"), From ? *From->GetFullName() : TEXT("nullptr"),
		*GetNameSafe((const UObjectBaseUtility*)ToClass));
}
