// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/ArrayView.h"
#include "CoreMinimal.h"
#include "Logging/LogVerbosity.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Script.h"
#include "UObject/TopLevelAssetPath.h"

class FArchive;
class FLinkerInstancingContext;
class FObjectInitializer;
class FProperty;
class UClass;
class UObject;
class UPackage;
class UPackageMap;
struct FObjectInstancingGraph;
template <typename T>
class TObjectPtr;

/** True while the editor loads a package: marking packages dirty is suppressed then. */
extern COREUOBJECT_API bool GIsEditorLoadingPackage;

/** The package objects live in when nothing else owns them. */
COREUOBJECT_API UPackage* GetTransientPackage();

/** Finds the package with this long name in memory or creates it. */
COREUOBJECT_API UPackage* CreatePackage(const TCHAR* PackageName);

/** Finds the package with this long name in memory; never loads. */
COREUOBJECT_API UPackage* FindPackage(UObject* InOuter, const TCHAR* PackageName);

// ---------------------------------------------------------------------------------------------------
// Finding objects. None of these ever loads anything.

/** Options of FindFirstObject. */
enum class EFindFirstObjectOptions
{
	None = 0,
	/** Only an object of exactly the given class, not a subclass. */
	ExactClass = 1 << 1,
	/** Prefer objects of native classes when several share the name. */
	NativeFirst = 1 << 2,
	/** Report an ensure when several objects share the name. */
	EnsureIfAmbiguous = 1 << 3,
};
ENUM_CLASS_FLAGS(EFindFirstObjectOptions);

/**
 * Finds an object in memory. Name is an object path ("/Script/CoreUObject.Object", "/Game/Pkg.Asset",
 * "/Game/Pkg.Asset:Sub") or, with an outer, a name (or relative path) inside that outer. With a null
 * outer a name without a path only matches top-level objects (packages); use FindFirstObject for short
 * names.
 */
COREUOBJECT_API UObject* StaticFindObject(UClass* Class, UObject* InOuter, const TCHAR* Name, bool ExactClass = false);

/** Finds the object at the path of a top-level asset ("/Package/Path" + asset name). */
COREUOBJECT_API UObject* StaticFindObject(UClass* Class, FTopLevelAssetPath ObjectPath, bool ExactClass = false);

/** Same as StaticFindObject, but failing to find the object is fatal. */
COREUOBJECT_API UObject* StaticFindObjectChecked(
	UClass* Class, UObject* InOuter, const TCHAR* Name, bool ExactClass = false);

/** Finds the object with exactly this outer and name (no path parsing). */
COREUOBJECT_API UObject* StaticFindObjectFast(UClass* Class, UObject* InOuter, FName InName, bool bExactClass = false,
	EObjectFlags ExclusiveFlags = RF_NoFlags, EInternalObjectFlags ExclusiveInternalFlags = EInternalObjectFlags::None);

/** Finds the first object with this short name (or path) of the class, wherever it lives. */
COREUOBJECT_API UObject* StaticFindFirstObject(UClass* Class, const TCHAR* Name,
	EFindFirstObjectOptions Options = EFindFirstObjectOptions::None,
	ELogVerbosity::Type AmbiguousMessageVerbosity = ELogVerbosity::NoLogging,
	const TCHAR* InCurrentOperation = nullptr);

template <class T>
inline T* FindObject(UObject* Outer, const TCHAR* Name, bool ExactClass = false)
{
	return (T*)StaticFindObject(T::StaticClass(), Outer, Name, ExactClass);
}

template <class T>
inline T* FindObject(FTopLevelAssetPath InPath, bool ExactClass = false)
{
	return (T*)StaticFindObject(T::StaticClass(), InPath, ExactClass);
}

template <class T>
inline T* FindObjectChecked(UObject* Outer, const TCHAR* Name, bool ExactClass = false)
{
	return (T*)StaticFindObjectChecked(T::StaticClass(), Outer, Name, ExactClass);
}

template <class T>
inline T* FindObjectFast(UObject* Outer, FName Name, bool ExactClass = false)
{
	return (T*)StaticFindObjectFast(T::StaticClass(), Outer, Name, ExactClass);
}

template <class T>
inline T* FindFirstObject(const TCHAR* Name, EFindFirstObjectOptions Options = EFindFirstObjectOptions::None,
	ELogVerbosity::Type AmbiguousMessageVerbosity = ELogVerbosity::NoLogging, const TCHAR* InCurrentOperation = nullptr)
{
	return (T*)StaticFindFirstObject(T::StaticClass(), Name, Options, AmbiguousMessageVerbosity, InCurrentOperation);
}

// ---------------------------------------------------------------------------------------------------
// Loading objects and packages. Declared here, defined by the package loader.

COREUOBJECT_API UObject* StaticLoadObject(UClass* Class, UObject* InOuter, const TCHAR* Name,
	const TCHAR* Filename = nullptr, uint32 LoadFlags = LOAD_None, UPackageMap* Sandbox = nullptr,
	bool bAllowObjectReconciliation = true, const FLinkerInstancingContext* InstancingContext = nullptr);

COREUOBJECT_API UClass* StaticLoadClass(UClass* BaseClass, UObject* InOuter, const TCHAR* Name,
	const TCHAR* Filename = nullptr, uint32 LoadFlags = LOAD_None, UPackageMap* Sandbox = nullptr);

template <class T>
inline T* LoadObject(UObject* Outer, const TCHAR* Name, const TCHAR* Filename = nullptr, uint32 LoadFlags = LOAD_None,
	UPackageMap* Sandbox = nullptr, const FLinkerInstancingContext* InstancingContext = nullptr)
{
	return (T*)StaticLoadObject(T::StaticClass(), Outer, Name, Filename, LoadFlags, Sandbox, true, InstancingContext);
}

template <class T>
inline UClass* LoadClass(UObject* Outer, const TCHAR* Name, const TCHAR* Filename = nullptr,
	uint32 LoadFlags = LOAD_None, UPackageMap* Sandbox = nullptr)
{
	return StaticLoadClass(T::StaticClass(), Outer, Name, Filename, LoadFlags, Sandbox);
}

COREUOBJECT_API UPackage* LoadPackage(UPackage* InOuter, const TCHAR* InLongPackageName, uint32 LoadFlags,
	FArchive* InReaderOverride = nullptr, const FLinkerInstancingContext* InstancingContext = nullptr);

/** Blocks until the given asynchronous package load (or all of them for INDEX_NONE) has completed. */
COREUOBJECT_API void FlushAsyncLoading(int32 PackageID = INDEX_NONE);
COREUOBJECT_API void FlushAsyncLoading(TConstArrayView<int32> RequestIds);

// ---------------------------------------------------------------------------------------------------
// Creating objects.

/** Everything StaticConstructObject_Internal needs to create an object. */
struct FStaticConstructObjectParameters
{
	/** The class of the object to create. */
	const UClass* Class = nullptr;

	/** The object to create this object within (the transient package if null). */
	UObject* Outer = nullptr;

	/** The name of the new object; NAME_None makes a unique "<Class>_<N>" name. */
	FName Name;

	/** The flags to give the new object. */
	EObjectFlags SetFlags = RF_NoFlags;

	/** Internal flags to give the new object. */
	EInternalObjectFlags InternalSetFlags = EInternalObjectFlags::None;

	/** Copy transient property values from the class default object too. */
	bool bCopyTransientsFromClassDefaults = false;

	/** Assert if the object would be created with a name already in use. */
	bool bAssumeTemplateIsArchetype = false;

	/** Property values are copied from this object; the class default object when null. */
	UObject* Template = nullptr;

	FObjectInstancingGraph* InstanceGraph = nullptr;

	UPackage* ExternalPackage = nullptr;

	COREUOBJECT_API explicit FStaticConstructObjectParameters(const UClass* InClass);
};

/** Creates an object: allocates it, runs its native constructor and initialises its properties. */
COREUOBJECT_API UObject* StaticConstructObject_Internal(const FStaticConstructObjectParameters& Params);

/** Allocates the memory of an object and registers it; the constructor is run by the caller. */
COREUOBJECT_API UObject* StaticAllocateObject(const UClass* Class, UObject* InOuter, FName Name,
	EObjectFlags SetFlags = RF_NoFlags, EInternalObjectFlags InternalSetFlags = EInternalObjectFlags::None,
	bool bCanReuseSubobjects = false, bool* bOutReusedSubobject = nullptr, UPackage* ExternalPackage = nullptr);

/** Options of MakeUniqueObjectName. */
enum class EUniqueObjectNameOptions
{
	None = 0,
	GloballyUnique = 1 << 0,
	UniversallyUnique = 1 << 1,
};
ENUM_CLASS_FLAGS(EUniqueObjectNameOptions);

/** A name "<BaseName>_<N>" (BaseName defaults to the class name) not used by any object in Outer. */
COREUOBJECT_API FName MakeUniqueObjectName(UObject* Outer, const UClass* Class, FName BaseName = NAME_None,
	EUniqueObjectNameOptions Options = EUniqueObjectNameOptions::None);

/** Creates a copy of SourceObject (and of the objects inside it) in DestOuter. */
COREUOBJECT_API UObject* StaticDuplicateObject(const UObject* SourceObject, UObject* DestOuter,
	const FName DestName = NAME_None, EObjectFlags FlagMask = RF_AllFlags, UClass* DestClass = nullptr);

// ---------------------------------------------------------------------------------------------------
// Garbage collection.

/**
 * Destroys every object that is neither reachable from the root set nor carries one of KeepFlags. The
 * purge (BeginDestroy, FinishDestroy, freeing) completes before this returns.
 */
COREUOBJECT_API void CollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge = true);

/** Same as CollectGarbage; false if a collection could not run now (one is already running). */
COREUOBJECT_API bool TryCollectGarbage(EObjectFlags KeepFlags, bool bPerformFullPurge = true);

/** True while a garbage collection is running. */
COREUOBJECT_API bool IsGarbageCollecting();

/** Receives the object references the garbage collector follows. */
class COREUOBJECT_API FReferenceCollector
{
public:
	virtual ~FReferenceCollector() = default;

	/** Reports a strong reference; the collector may clear it (set it to null) if it points at garbage. */
	template <class UObjectType>
	void AddReferencedObject(UObjectType*& Object, const UObject* ReferencingObject = nullptr,
		const FProperty* ReferencingProperty = nullptr)
	{
		HandleObjectReference(*(UObject**)&Object, ReferencingObject, ReferencingProperty);
	}

	template <class UObjectType>
	void AddReferencedObject(const UObjectType*& Object, const UObject* ReferencingObject = nullptr,
		const FProperty* ReferencingProperty = nullptr)
	{
		HandleObjectReference(*(UObject**)&Object, ReferencingObject, ReferencingProperty);
	}

	template <class UObjectType>
	void AddReferencedObject(TObjectPtr<UObjectType>& Object, const UObject* ReferencingObject = nullptr,
		const FProperty* ReferencingProperty = nullptr)
	{
		HandleObjectReference(*(UObject**)&Object, ReferencingObject, ReferencingProperty);
	}

	template <class UObjectType>
	void AddReferencedObjects(TArray<UObjectType*>& ObjectArray, const UObject* ReferencingObject = nullptr,
		const FProperty* ReferencingProperty = nullptr)
	{
		for (UObjectType*& Object : ObjectArray)
		{
			AddReferencedObject(Object, ReferencingObject, ReferencingProperty);
		}
	}

	template <class UObjectType>
	void AddReferencedObjects(TArray<TObjectPtr<UObjectType>>& ObjectArray, const UObject* ReferencingObject = nullptr,
		const FProperty* ReferencingProperty = nullptr)
	{
		for (TObjectPtr<UObjectType>& Object : ObjectArray)
		{
			AddReferencedObject(Object, ReferencingObject, ReferencingProperty);
		}
	}

	/** Reports a reference that must not be cleared. */
	void AddStableReference(UObject** Object) { HandleObjectReference(*Object, nullptr, nullptr); }

	/** Reports the object references held in a value of a reflected struct. */
	void AddPropertyReferences(const class UStruct* Struct, void* Instance, const UObject* ReferencingObject = nullptr);

	virtual void HandleObjectReference(
		UObject*& InObject, const UObject* InReferencingObject, const FProperty* InReferencingProperty) = 0;
};

/** Global events of the object system. */
struct COREUOBJECT_API FCoreUObjectDelegates
{
	/** Broadcast before a garbage collection starts. */
	static FSimpleMulticastDelegate& GetPreGarbageCollectDelegate();

	/** Broadcast after a garbage collection has finished. */
	static FSimpleMulticastDelegate& GetPostGarbageCollect();

	/** Broadcast after a property of an object was changed in the editor. */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnObjectPropertyChanged, UObject*, struct FPropertyChangedEvent&);
	static FOnObjectPropertyChanged OnObjectPropertyChanged;

	/** Broadcast when an object is about to be modified (transactions). */
	DECLARE_MULTICAST_DELEGATE_OneParam(FOnObjectModified, UObject*);
	static FOnObjectModified OnObjectModified;
};

// ---------------------------------------------------------------------------------------------------
// Construction context.

/** Options of an FObjectInitializer. */
enum class EObjectInitializerOptions
{
	None = 0,
	CopyTransientsFromClassDefaults = 1 << 0,
	InitializeProperties = 1 << 1,
};
ENUM_CLASS_FLAGS(EObjectInitializerOptions);

/**
 * The context of one object's construction. The native constructor receives it (or reaches it with
 * Get()) to create default subobjects; when the constructor has returned, it initialises the object's
 * remaining properties from the template and calls PostInitProperties.
 */
class COREUOBJECT_API FObjectInitializer
{
public:
	FObjectInitializer();
	FObjectInitializer(UObject* InObj, UObject* InObjectArchetype, EObjectInitializerOptions InOptions,
		FObjectInstancingGraph* InInstanceGraph = nullptr);
	FObjectInitializer(UObject* InObj, const FStaticConstructObjectParameters& StaticConstructParams);
	~FObjectInitializer();

	FObjectInitializer(const FObjectInitializer&) = delete;
	FObjectInitializer& operator=(const FObjectInitializer&) = delete;

	/** The object being constructed. */
	FORCEINLINE UObject* GetObj() const { return Obj; }

	/** The class of the object being constructed. */
	UClass* GetClass() const;

	/** The object property values are copied from. */
	FORCEINLINE UObject* GetArchetype() const { return ObjectArchetype; }

	/** The initializer of the innermost construction running on this thread. */
	static FObjectInitializer& Get();

	/** Creates a subobject of Outer (normally the object under construction) as part of its defaults. */
	UObject* CreateDefaultSubobject(UObject* Outer, FName SubobjectFName, const UClass* ReturnType,
		const UClass* ClassToCreateByDefault, bool bIsRequired = true, bool bIsTransient = false) const;

	template <class TReturnType>
	TReturnType* CreateDefaultSubobject(UObject* Outer, FName SubobjectName, bool bTransient = false) const
	{
		UClass* ReturnType = TReturnType::StaticClass();
		return static_cast<TReturnType*>(
			CreateDefaultSubobject(Outer, SubobjectName, ReturnType, ReturnType, true, bTransient));
	}

	template <class TReturnType, class TClassToConstructByDefault>
	TReturnType* CreateDefaultSubobject(UObject* Outer, FName SubobjectName, bool bTransient = false) const
	{
		return static_cast<TReturnType*>(CreateDefaultSubobject(Outer, SubobjectName, TReturnType::StaticClass(),
			TClassToConstructByDefault::StaticClass(), true, bTransient));
	}

	template <class TReturnType>
	TReturnType* CreateOptionalDefaultSubobject(UObject* Outer, FName SubobjectName, bool bTransient = false) const
	{
		UClass* ReturnType = TReturnType::StaticClass();
		return static_cast<TReturnType*>(
			CreateDefaultSubobject(Outer, SubobjectName, ReturnType, ReturnType, false, bTransient));
	}

	/** Makes the default subobject of this name be created with class T instead. */
	template <class T>
	FObjectInitializer const& SetDefaultSubobjectClass(FName SubobjectName) const
	{
		return SetDefaultSubobjectClass(SubobjectName, T::StaticClass());
	}
	FObjectInitializer const& SetDefaultSubobjectClass(FName SubobjectName, UClass* Class) const;

	/** Makes the optional default subobject of this name not be created. */
	FObjectInitializer const& DoNotCreateDefaultSubobject(FName SubobjectName) const;

	/** Runs the part of construction that follows the native constructor; called once, by the destructor at the latest.
	 */
	void PostConstructInit();

private:
	UObject* Obj = nullptr;
	UObject* ObjectArchetype = nullptr;
	bool bCopyTransientsFromClassDefaults = false;
	bool bIsDefaultObject = false;
	bool bPostConstructDone = true;
	mutable TMap<FName, UClass*> SubobjectClassOverrides;
	mutable TArray<FName> SuppressedSubobjects;
};

// ---------------------------------------------------------------------------------------------------
// Templates over the functions above.

template <class T>
T* NewObject(UObject* Outer, const UClass* Class, FName Name = NAME_None, EObjectFlags Flags = RF_NoFlags,
	UObject* Template = nullptr, bool bCopyTransientsFromClassDefaults = false,
	FObjectInstancingGraph* InInstanceGraph = nullptr, UPackage* ExternalPackage = nullptr)
{
	FStaticConstructObjectParameters Params(Class);
	Params.Outer = Outer;
	Params.Name = Name;
	Params.SetFlags = Flags;
	Params.Template = Template;
	Params.bCopyTransientsFromClassDefaults = bCopyTransientsFromClassDefaults;
	Params.InstanceGraph = InInstanceGraph;
	Params.ExternalPackage = ExternalPackage;
	return static_cast<T*>(StaticConstructObject_Internal(Params));
}

template <class T>
T* NewObject(UObject* Outer = (UObject*)GetTransientPackage())
{
	return NewObject<T>(Outer, T::StaticClass());
}

template <class T>
T* NewObject(UObject* Outer, FName Name, EObjectFlags Flags = RF_NoFlags, UObject* Template = nullptr,
	bool bCopyTransientsFromClassDefaults = false, FObjectInstancingGraph* InInstanceGraph = nullptr)
{
	return NewObject<T>(
		Outer, T::StaticClass(), Name, Flags, Template, bCopyTransientsFromClassDefaults, InInstanceGraph);
}

template <class T>
T* DuplicateObject(T const* SourceObject, UObject* Outer, const FName Name = NAME_None)
{
	if (SourceObject == nullptr)
	{
		return nullptr;
	}
	return static_cast<T*>(StaticDuplicateObject((const UObject*)SourceObject, Outer, Name));
}

template <class T>
T* DuplicateObject(const TObjectPtr<T>& SourceObject, UObject* Outer, const FName Name = NAME_None)
{
	return DuplicateObject<T>(SourceObject.Get(), Outer, Name);
}

/** The class default object of T, created on first use. */
template <class T>
inline const T* GetDefault()
{
	return (const T*)T::StaticClass()->GetDefaultObject();
}

template <class T>
inline const T* GetDefault(UClass* Class);

template <class T>
inline T* GetMutableDefault()
{
	return (T*)T::StaticClass()->GetDefaultObject();
}

template <class T>
inline T* GetMutableDefault(UClass* Class);

namespace UE::CoreUObject::Private
{
	/** Registers every class, struct and enum the libraries loaded so far have compiled in. */
	COREUOBJECT_API void ProcessNewlyLoadedUObjects();
} // namespace UE::CoreUObject::Private
