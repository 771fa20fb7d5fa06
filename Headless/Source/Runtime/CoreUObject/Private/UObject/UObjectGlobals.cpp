// Copyright Orvane. All Rights Reserved.

#include "UObject/UObjectGlobals.h"

#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/TopLevelAssetPath.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

using namespace UE::CoreUObject::Private;

namespace
{
	thread_local TArray<FObjectInitializer*> GInitializerStack;

	bool NameIsNone(const TCHAR* Name)
	{
		return !Name || !*Name || FCString::Stricmp(Name, TEXT("None")) == 0;
	}

	FName FindName(const FString& Text)
	{
		return FName(*Text, FNAME_Find);
	}
} // namespace

namespace UE::CoreUObject::Private
{
	bool IsObjectOfClass(const UObjectBase* Object, const UClass* Class, bool bExactClass)
	{
		if (!Class)
		{
			return true;
		}
		return bExactClass ? Object->GetClass() == Class : Object->GetClass()->IsChildOf(Class);
	}

	void SplitObjectPath(const FString& Path, TArray<FString>& OutNames)
	{
		OutNames.Reset();
		FString Current;
		for (TCHAR Char : Path)
		{
			if (Char == TEXT('.') || Char == TEXT(':'))
			{
				OutNames.Add(Current);
				Current.Reset();
			}
			else
			{
				Current += Char;
			}
		}
		OutNames.Add(Current);
	}

	void InitializeNonNativeProperties(UObject* Object)
	{
		for (UClass* Class = Object->GetClass(); Class && !Class->HasAnyClassFlags(CLASS_Native);
			 Class = Class->GetSuperClass())
		{
			Class->InitializeStructProperties(Object);
		}
	}

	void DestroyNonNativeProperties(UObject* Object)
	{
		for (UClass* Class = Object->GetClass(); Class && !Class->HasAnyClassFlags(CLASS_Native);
			 Class = Class->GetSuperClass())
		{
			Class->DestroyStructProperties(Object);
		}
	}
} // namespace UE::CoreUObject::Private

// ---------------------------------------------------------------------------------------------------
// Packages

UPackage* GetTransientPackage()
{
	static UPackage* TransientPackage = nullptr;
	if (!TransientPackage)
	{
		TransientPackage = NewObject<UPackage>(
			nullptr, UPackage::StaticClass(), FName(TEXT("/Engine/Transient")), RF_Transient | RF_Public);
		TransientPackage->AddToRoot();
	}
	return TransientPackage;
}

UPackage* FindPackage(UObject* InOuter, const TCHAR* PackageName)
{
	if (NameIsNone(PackageName))
	{
		return nullptr;
	}
	return (UPackage*)StaticFindObjectFast(UPackage::StaticClass(), InOuter, FindName(PackageName));
}

UPackage* CreatePackage(const TCHAR* PackageName)
{
	FString Name = PackageName ? PackageName : TEXT("");
	if (Name.IsEmpty())
	{
		Name = MakeUniqueObjectName(nullptr, UPackage::StaticClass(), FName(TEXT("/Temp/Untitled"))).ToString();
	}
	if (UPackage* Existing = FindPackage(nullptr, *Name))
	{
		return Existing;
	}
	return NewObject<UPackage>(nullptr, UPackage::StaticClass(), FName(*Name), RF_Public);
}

// ---------------------------------------------------------------------------------------------------
// Finding

UObject* StaticFindObjectFast(UClass* Class, UObject* InOuter, FName InName, bool bExactClass,
	EObjectFlags ExclusiveFlags, EInternalObjectFlags ExclusiveInternalFlags)
{
	ProcessNewlyLoadedUObjects();
	if (InName.IsNone())
	{
		return nullptr;
	}
	const TArray<UObjectBase*>* Candidates = GetObjectArray().FindByName(InName);
	if (!Candidates)
	{
		return nullptr;
	}
	if (InOuter)
	{
		// Names such as a component's "Root" are shared by every actor of a world, while an outer holds few
		// objects: look through whichever list is shorter. Both keep creation order, so the first match is the
		// same either way.
		const TArray<UObjectBase*>* Inners = GetObjectArray().FindInners(InOuter);
		if (!Inners)
		{
			return nullptr;
		}
		if (Inners->Num() < Candidates->Num())
		{
			Candidates = Inners;
		}
	}
	ExclusiveInternalFlags |= EInternalObjectFlags::Unreachable;
	for (UObjectBase* Object : *Candidates)
	{
		if (Object->GetFName() != InName || Object->GetOuter() != InOuter ||
			!IsObjectOfClass(Object, Class, bExactClass))
		{
			continue;
		}
		UObject* Candidate = (UObject*)Object;
		if (Candidate->HasAnyFlags(ExclusiveFlags) || Candidate->HasAnyInternalFlags(ExclusiveInternalFlags))
		{
			continue;
		}
		return Candidate;
	}
	return nullptr;
}

UObject* StaticFindObject(UClass* Class, UObject* InOuter, const TCHAR* Name, bool ExactClass)
{
	checkf(!IsGarbageCollecting(), TEXT("StaticFindObject cannot be called during garbage collection (looking for %s)"),
		Name ? Name : TEXT("null"));
	if (NameIsNone(Name))
	{
		return nullptr;
	}
	const FString Path(Name);
	TArray<FString> Names;
	SplitObjectPath(Path, Names);
	UObject* Outer = InOuter;
	for (int32 Index = 0; Index < Names.Num(); ++Index)
	{
		const bool bLast = Index == Names.Num() - 1;
		if (Names[Index].IsEmpty())
		{
			return nullptr;
		}
		const FName SegmentName = FindName(Names[Index]);
		if (SegmentName.IsNone())
		{
			return nullptr;
		}
		// Without an outer, the first name is a top-level object: a package.
		UObject* Found = StaticFindObjectFast(bLast ? Class : nullptr, Outer, SegmentName, bLast && ExactClass);
		if (!Found)
		{
			return nullptr;
		}
		Outer = Found;
	}
	return Outer != InOuter ? Outer : nullptr;
}

UObject* StaticFindObject(UClass* Class, FTopLevelAssetPath ObjectPath, bool ExactClass)
{
	return StaticFindObject(Class, nullptr, *ObjectPath.ToString(), ExactClass);
}

UObject* StaticFindObjectChecked(UClass* Class, UObject* InOuter, const TCHAR* Name, bool ExactClass)
{
	UObject* Result = StaticFindObject(Class, InOuter, Name, ExactClass);
	checkf(Result, TEXT("Failed to find object '%s %s.%s'"), Class ? *Class->GetName() : TEXT("Object"),
		InOuter ? *InOuter->GetPathName() : TEXT("None"), Name);
	return Result;
}

UObject* StaticFindFirstObject(UClass* Class, const TCHAR* Name, EFindFirstObjectOptions Options,
	ELogVerbosity::Type AmbiguousMessageVerbosity, const TCHAR* InCurrentOperation)
{
	ProcessNewlyLoadedUObjects();
	if (NameIsNone(Name))
	{
		return nullptr;
	}
	const bool bExact = EnumHasAnyFlags(Options, EFindFirstObjectOptions::ExactClass);
	const FString Text(Name);
	if (Text.StartsWith(TEXT("/")) || Text.Contains(TEXT(".")) || Text.Contains(TEXT(":")))
	{
		return StaticFindObject(Class, nullptr, Name, bExact);
	}
	const FName ShortName = FindName(Text);
	const TArray<UObjectBase*>* Named = ShortName.IsNone() ? nullptr : GetObjectArray().FindByName(ShortName);
	if (!Named)
	{
		return nullptr;
	}
	TArray<UObject*> Matches;
	for (UObjectBase* Object : *Named)
	{
		UObject* Candidate = (UObject*)Object;
		if (IsObjectOfClass(Object, Class, bExact) &&
			!Candidate->HasAnyInternalFlags(EInternalObjectFlags::Unreachable))
		{
			Matches.Add(Candidate);
		}
	}
	if (Matches.Num() == 0)
	{
		return nullptr;
	}
	UObject* Result = Matches[0];
	if (EnumHasAnyFlags(Options, EFindFirstObjectOptions::NativeFirst))
	{
		for (UObject* Candidate : Matches)
		{
			if (Candidate->GetPackage() && Candidate->GetPackage()->HasAnyPackageFlags(PKG_CompiledIn))
			{
				Result = Candidate;
				break;
			}
		}
	}
	if (Matches.Num() > 1)
	{
		if (AmbiguousMessageVerbosity != ELogVerbosity::NoLogging)
		{
			UE_LOG(LogUObjectGlobals, Warning, TEXT("%s: found %d objects named '%s'; using %s"),
				InCurrentOperation ? InCurrentOperation : TEXT("StaticFindFirstObject"), Matches.Num(), Name,
				*Result->GetPathName());
		}
		if (EnumHasAnyFlags(Options, EFindFirstObjectOptions::EnsureIfAmbiguous))
		{
			ensureMsgf(false, TEXT("Ambiguous search for '%s'"), Name);
		}
	}
	return Result;
}

// ---------------------------------------------------------------------------------------------------
// Creating

FStaticConstructObjectParameters::FStaticConstructObjectParameters(const UClass* InClass)
	: Class(InClass)
{
}

FName MakeUniqueObjectName(UObject* Outer, const UClass* Class, FName BaseName, EUniqueObjectNameOptions Options)
{
	check(Class);
	const FString Base = BaseName.IsNone() ? Class->GetName() : BaseName.GetPlainNameString();
	UClass* MutableClass = const_cast<UClass*>(Class);
	for (;;)
	{
		// Shown as "<Base>_<N>": the stored number is one more than the shown one.
		const FName TestName(*Base, MutableClass->ClassUnique + 1);
		++MutableClass->ClassUnique;
		if (!StaticFindObjectFast(nullptr, Outer, TestName))
		{
			return TestName;
		}
	}
}

UObject* StaticAllocateObject(const UClass* InClass, UObject* InOuter, FName InName, EObjectFlags SetFlags,
	EInternalObjectFlags InternalSetFlags, bool bCanReuseSubobjects, bool* bOutReusedSubobject,
	UPackage* ExternalPackage)
{
	UClass* Class = const_cast<UClass*>(InClass);
	checkf(Class, TEXT("StaticAllocateObject needs a class"));
	checkf(!Class->HasAnyClassFlags(CLASS_Abstract) || (SetFlags & RF_ClassDefaultObject),
		TEXT("Unable to create new object: %s %s.%s. Creating an instance of an abstract class is not allowed!"),
		*Class->GetName(), *GetPathNameSafe(InOuter), *InName.ToString());
	checkf(InOuter || Class->IsChildOf(UPackage::StaticClass()),
		TEXT("Only packages can be created without an outer (%s %s)"), *Class->GetName(), *InName.ToString());
	checkf(!InName.IsNone(), TEXT("StaticAllocateObject needs a name"));
	if (bOutReusedSubobject)
	{
		*bOutReusedSubobject = false;
	}
	const int32 Size = FMath::Max(Class->GetPropertiesSize(), (int32)sizeof(UObject));
	void* Memory = FMemory::MallocZeroed(Size, FMath::Max(Class->GetMinAlignment(), (int32)alignof(UObject)));
	// The record lives until the object's constructor (which runs next) has taken it.
	static thread_local FObjectConstructionRecord PendingRecord;
	PendingRecord = FObjectConstructionRecord();
	FObjectConstructionRecord* Record = &PendingRecord;
	Record->Memory = Memory;
	Record->Class = Class;
	Record->Outer = InOuter;
	Record->Name = InName;
	Record->Flags = SetFlags & ~(RF_MarkAsNative | RF_MarkAsRootSet | RF_MirroredGarbage);
	Record->Index = GetObjectArray().AllocateSlot((UObjectBase*)(UObject*)Memory);
	FUObjectItem* Item = GetObjectArray().GetItem(Record->Index);
	Item->Flags = InternalSetFlags | EInternalObjectFlags::PendingConstruction;
	if (SetFlags & RF_MarkAsRootSet)
	{
		Item->Flags |= EInternalObjectFlags::RootSet;
	}
	if (SetFlags & RF_MarkAsNative)
	{
		Item->Flags |= EInternalObjectFlags::Native;
	}
	SetPendingConstruction(Record);
	return (UObject*)Memory;
}

UObject* StaticConstructObject_Internal(const FStaticConstructObjectParameters& Params)
{
	ProcessNewlyLoadedUObjects();
	UClass* Class = const_cast<UClass*>(Params.Class);
	checkf(Class, TEXT("NewObject needs a class"));
	checkf(Class->ClassConstructor, TEXT("Class %s cannot be constructed (it has no native constructor)"),
		*Class->GetPathName());
	UObject* Outer = Params.Outer;
	FName Name = Params.Name;
	if (Name.IsNone())
	{
		Name = MakeUniqueObjectName(Outer, Class);
	}
	else if (UObject* Existing = StaticFindObjectFast(nullptr, Outer, Name))
	{
		// An object of the same name is replaced, as the engine does; a different class cannot replace it.
		checkf(Existing->GetClass() == Class,
			TEXT("Cannot replace existing object %s of class %s with an object of class %s"), *Existing->GetPathName(),
			*Existing->GetClass()->GetName(), *Class->GetName());
		checkf(!Existing->HasAnyInternalFlags(EInternalObjectFlags::PendingConstruction),
			TEXT("Cannot replace %s while it is being constructed"), *Existing->GetPathName());
		DestroyObjectNow(Existing);
	}
	UObject* Object = StaticAllocateObject(Class, Outer, Name, Params.SetFlags, Params.InternalSetFlags);
	FObjectInitializer Initializer(Object, Params);
	(*Class->ClassConstructor)(Initializer);
	Initializer.PostConstructInit();
	return Object;
}

// ---------------------------------------------------------------------------------------------------
// FObjectInitializer

FObjectInitializer::FObjectInitializer()
{
	checkf(false, TEXT("FObjectInitializer can only be made by the object system"));
}

FObjectInitializer::FObjectInitializer(UObject* InObj, UObject* InObjectArchetype, EObjectInitializerOptions InOptions,
	FObjectInstancingGraph* InInstanceGraph)
	: Obj(InObj)
	, ObjectArchetype(InObjectArchetype)
	, bCopyTransientsFromClassDefaults(
		  EnumHasAnyFlags(InOptions, EObjectInitializerOptions::CopyTransientsFromClassDefaults))
	, bPostConstructDone(false)
{
	GInitializerStack.Add(this);
}

FObjectInitializer::FObjectInitializer(UObject* InObj, const FStaticConstructObjectParameters& StaticConstructParams)
	: FObjectInitializer(InObj, StaticConstructParams.Template,
		  StaticConstructParams.bCopyTransientsFromClassDefaults
			  ? EObjectInitializerOptions::CopyTransientsFromClassDefaults
			  : EObjectInitializerOptions::None,
		  StaticConstructParams.InstanceGraph)
{
	bIsDefaultObject = (StaticConstructParams.SetFlags & RF_ClassDefaultObject) != 0;
}

FObjectInitializer::~FObjectInitializer()
{
	PostConstructInit();
}

FObjectInitializer& FObjectInitializer::Get()
{
	checkf(
		GInitializerStack.Num() > 0, TEXT("FObjectInitializer::Get() can only be used inside an object's constructor"));
	return *GInitializerStack.Last();
}

UClass* FObjectInitializer::GetClass() const
{
	return Obj->GetClass();
}

FObjectInitializer const& FObjectInitializer::SetDefaultSubobjectClass(FName SubobjectName, UClass* Class) const
{
	SubobjectClassOverrides.Add(SubobjectName, Class);
	return *this;
}

FObjectInitializer const& FObjectInitializer::DoNotCreateDefaultSubobject(FName SubobjectName) const
{
	SuppressedSubobjects.AddUnique(SubobjectName);
	return *this;
}

UObject* FObjectInitializer::CreateDefaultSubobject(UObject* Outer, FName SubobjectFName, const UClass* ReturnType,
	const UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient) const
{
	checkf(Outer, TEXT("CreateDefaultSubobject needs an outer"));
	if (!bIsRequired && SuppressedSubobjects.Contains(SubobjectFName))
	{
		return nullptr;
	}
	const UClass* ClassToCreate = ClassToCreateByDefault;
	if (UClass* const* Override = SubobjectClassOverrides.Find(SubobjectFName))
	{
		ClassToCreate = *Override;
	}
	checkf(ClassToCreate->IsChildOf(ReturnType), TEXT("Default subobject %s: %s is not a %s"),
		*SubobjectFName.ToString(), *ClassToCreate->GetName(), *ReturnType->GetName());
	FStaticConstructObjectParameters Params(ClassToCreate);
	Params.Outer = Outer;
	Params.Name = SubobjectFName;
	Params.SetFlags = (Outer->GetFlags() & RF_PropagateToSubObjects) | RF_DefaultSubObject |
					  (bIsTransient ? RF_Transient : RF_NoFlags);
	return StaticConstructObject_Internal(Params);
}

void FObjectInitializer::PostConstructInit()
{
	if (bPostConstructDone)
	{
		return;
	}
	bPostConstructDone = true;
	if (GInitializerStack.Num() > 0 && GInitializerStack.Last() == this)
	{
		GInitializerStack.Pop();
	}
	else
	{
		GInitializerStack.Remove(this);
	}

	UClass* Class = Obj->GetClass();
	if (bIsDefaultObject && !Class->ClassDefaultObject)
	{
		Class->ClassDefaultObject = Obj;
	}
	InitializeNonNativeProperties(Obj);

	// Copy the values a new object takes from its template: the properties of classes built at run time
	// and config properties when the template is the class default object; everything with an explicit
	// template.
	UObject* Archetype = ObjectArchetype;
	const UObject* ClassDefault = Class->GetDefaultObject(false);
	if (!Archetype && !bIsDefaultObject && Class->PostConstructLink)
	{
		Archetype = Class->GetDefaultObject();
		ClassDefault = Archetype;
	}
	if (Archetype && Archetype != Obj)
	{
		const bool bExplicitTemplate = !bIsDefaultObject && Archetype != ClassDefault;
		checkf(!bExplicitTemplate || Obj->IsA(Archetype->GetClass()) || Archetype->IsA(Class),
			TEXT("Template %s is not of the class of %s"), *Archetype->GetFullName(), *Obj->GetFullName());
		UClass* SourceClass = bIsDefaultObject ? Archetype->GetClass() : Class;
		auto CopyProperty = [this, Archetype](FProperty* Property)
		{
			if (Property->HasAnyPropertyFlags(CPF_Transient) && !bCopyTransientsFromClassDefaults)
			{
				return;
			}
			Property->CopyCompleteValue_InContainer(Obj, Archetype);
			// A reference to a subobject of the template points at this object's subobject of the same name.
			if (FObjectProperty* ObjectProperty = CastField<FObjectProperty>(Property))
			{
				for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
				{
					UObject* Value = ObjectProperty->GetPropertyValue_InContainer(Obj, Index);
					if (Value && Value->GetOuter() == Archetype)
					{
						ObjectProperty->SetPropertyValue_InContainer(
							Obj, StaticFindObjectFast(nullptr, Obj, Value->GetFName()), Index);
					}
				}
			}
		};
		if (bExplicitTemplate)
		{
			for (FProperty* Property = Archetype->GetClass()->PropertyLink; Property;
				 Property = Property->PropertyLinkNext)
			{
				if (Class->ContainsProperty(Property))
				{
					CopyProperty(Property);
				}
			}
		}
		else
		{
			for (FProperty* Property = SourceClass->PostConstructLink; Property;
				 Property = Property->PostConstructLinkNext)
			{
				CopyProperty(Property);
			}
		}
	}

	if (bIsDefaultObject && Class->HasAnyClassFlags(CLASS_Config) && GConfig)
	{
		Obj->LoadConfig();
	}
	Obj->PostInitProperties();
	Obj->ClearInternalFlags(EInternalObjectFlags::PendingConstruction);
}

// ---------------------------------------------------------------------------------------------------
// Duplication

namespace
{
	class FRemapCollector final : public FReferenceCollector
	{
	public:
		explicit FRemapCollector(const TMap<const UObject*, UObject*>& InMap)
			: Map(InMap)
		{
		}

		virtual void HandleObjectReference(
			UObject*& InObject, const UObject* InReferencingObject, const FProperty* InReferencingProperty) override
		{
			if (UObject* const* Found = Map.Find(InObject))
			{
				InObject = *Found;
			}
		}

	private:
		const TMap<const UObject*, UObject*>& Map;
	};

	UObject* DuplicateOne(const UObject* Source, UObject* DestOuter, FName DestName, EObjectFlags FlagMask,
		UClass* DestClass, TMap<const UObject*, UObject*>& Map)
	{
		UObject* Duplicate = nullptr;
		if (UObject* Existing = StaticFindObjectFast(nullptr, DestOuter, DestName))
		{
			// The duplicate's constructor already made this default subobject.
			if (Existing->GetClass() == (DestClass ? DestClass : Source->GetClass()) &&
				Existing->HasAnyFlags(RF_DefaultSubObject))
			{
				Duplicate = Existing;
			}
		}
		if (!Duplicate)
		{
			FStaticConstructObjectParameters Params(DestClass ? DestClass : Source->GetClass());
			Params.Outer = DestOuter;
			Params.Name = DestName;
			Params.SetFlags = Source->GetMaskedFlags(FlagMask) & ~(RF_ClassDefaultObject | RF_ArchetypeObject);
			Duplicate = StaticConstructObject_Internal(Params);
		}
		Map.Add(Source, Duplicate);
		for (FProperty* Property = Source->GetClass()->PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (!Property->HasAnyPropertyFlags(CPF_Transient | CPF_DuplicateTransient) &&
				Duplicate->GetClass()->ContainsProperty(Property))
			{
				Property->CopyCompleteValue_InContainer(Duplicate, Source);
			}
		}
		TArray<UObject*> Inners;
		GetObjectsWithOuter(Source, Inners, false);
		for (UObject* Inner : Inners)
		{
			if (IsValid(Inner) && !Inner->HasAnyFlags(RF_DuplicateTransient))
			{
				DuplicateOne(Inner, Duplicate, Inner->GetFName(), FlagMask, nullptr, Map);
			}
		}
		return Duplicate;
	}
} // namespace

UObject* StaticDuplicateObject(
	const UObject* SourceObject, UObject* DestOuter, const FName DestName, EObjectFlags FlagMask, UClass* DestClass)
{
	checkf(SourceObject, TEXT("StaticDuplicateObject needs a source object"));
	if (!DestOuter)
	{
		DestOuter = GetTransientPackage();
	}
	FName Name = DestName;
	if (Name.IsNone())
	{
		Name = StaticFindObjectFast(nullptr, DestOuter, SourceObject->GetFName())
				   ? MakeUniqueObjectName(DestOuter, SourceObject->GetClass(), SourceObject->GetFName())
				   : SourceObject->GetFName();
	}
	TMap<const UObject*, UObject*> Map;
	UObject* Result = DuplicateOne(SourceObject, DestOuter, Name, FlagMask, DestClass, Map);
	FRemapCollector Remap(Map);
	for (const TPair<const UObject*, UObject*>& Pair : Map)
	{
		Pair.Value->GetClass()->CollectReferences(Pair.Value, Remap, Pair.Value);
	}
	for (const TPair<const UObject*, UObject*>& Pair : Map)
	{
		Pair.Value->PostDuplicate(false);
	}
	return Result;
}

// ---------------------------------------------------------------------------------------------------
// Global events

FSimpleMulticastDelegate& FCoreUObjectDelegates::GetPreGarbageCollectDelegate()
{
	static FSimpleMulticastDelegate Delegate;
	return Delegate;
}

FSimpleMulticastDelegate& FCoreUObjectDelegates::GetPostGarbageCollect()
{
	static FSimpleMulticastDelegate Delegate;
	return Delegate;
}

FCoreUObjectDelegates::FOnObjectPropertyChanged FCoreUObjectDelegates::OnObjectPropertyChanged;
FCoreUObjectDelegates::FOnObjectModified FCoreUObjectDelegates::OnObjectModified;
