// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/UObjectBase.h"

/** Convenience layer over UObjectBase: flags, names, paths, outers and class checks. */
class COREUOBJECT_API UObjectBaseUtility : public UObjectBase
{
protected:
	UObjectBaseUtility() = default;

public:
	/** Atomically ORs flags into the object's flag word. */
	FORCEINLINE void SetFlags(EObjectFlags NewFlags)
	{
		checkf(!(NewFlags & (RF_MarkAsNative | RF_MarkAsRootSet | RF_MirroredGarbage)),
			TEXT("Internal flags cannot be set with SetFlags; use AddToRoot or MarkAsGarbage."));
		AtomicallySetFlags(NewFlags);
	}

	/** Atomically clears flags from the object's flag word. */
	FORCEINLINE void ClearFlags(EObjectFlags FlagsToClear)
	{
		checkf(
			!(FlagsToClear & (RF_MarkAsNative | RF_MarkAsRootSet | RF_MirroredGarbage)) || FlagsToClear == RF_AllFlags,
			TEXT("Internal flags cannot be cleared with ClearFlags; use RemoveFromRoot or ClearGarbage."));
		AtomicallyClearFlags(FlagsToClear);
	}

	FORCEINLINE bool HasAnyFlags(EObjectFlags FlagsToCheck) const { return (GetFlags() & FlagsToCheck) != 0; }

	FORCEINLINE bool HasAllFlags(EObjectFlags FlagsToCheck) const
	{
		return (GetFlags() & FlagsToCheck) == FlagsToCheck;
	}

	FORCEINLINE EObjectFlags GetMaskedFlags(EObjectFlags Mask = RF_AllFlags) const { return GetFlags() & Mask; }

	// Internal flags live in the object table.
	void SetInternalFlags(EInternalObjectFlags FlagsToSet) const;
	void ClearInternalFlags(EInternalObjectFlags FlagsToClear) const;
	EInternalObjectFlags GetInternalFlags() const;
	bool HasAnyInternalFlags(EInternalObjectFlags FlagsToCheck) const;

	/** Keeps the object alive through garbage collection until RemoveFromRoot. */
	void AddToRoot();
	void RemoveFromRoot();
	bool IsRooted() const;

	/** Marks the object as garbage: IsValid and weak pointers treat it as gone at once; GC frees it. */
	void MarkAsGarbage();
	void ClearGarbage();

	/** True while the garbage collector has found the object unreachable and is about to destroy it. */
	bool IsUnreachable() const;

	/** True if this object or one of its outers is a class default object or an archetype (by default). */
	bool IsTemplate(EObjectFlags TemplateTypes = RF_ArchetypeObject | RF_ClassDefaultObject) const;

	/** The short name of the object, without any path. */
	FString GetName() const { return GetFName().ToString(); }
	void GetName(FString& ResultString) const { ResultString = GetName(); }

	/** "/Package/Path.Object", with ':' before subobjects of objects that are not packages. */
	FString GetPathName(const UObject* StopOuter = nullptr) const;
	void GetPathName(const UObject* StopOuter, FString& ResultString) const;

	/** "ClassName /Package/Path.Object". */
	FString GetFullName(
		const UObject* StopOuter = nullptr, EObjectFullNameFlags Flags = EObjectFullNameFlags::None) const;

	/** The outermost package this object lives in; a package returns itself. */
	UPackage* GetPackage() const;
	UPackage* GetOutermost() const;

	/** The outermost object (not necessarily a package). */
	UObject* GetOutermostObject() const;

	/** Marks the package of this object dirty; false when dirtying is suppressed (while loading). */
	bool MarkPackageDirty() const;

	/** True if SomeOuter is one of this object's outers. */
	bool IsIn(const UObject* SomeOuter) const;
	bool IsInOuter(const UObject* SomeOuter) const;
	bool IsInPackage(const UPackage* SomePackage) const;

	/** The first outer of the given class. */
	UObject* GetTypedOuter(UClass* Target) const;

	template <typename T>
	T* GetTypedOuter() const
	{
		return (T*)GetTypedOuter(T::StaticClass());
	}

	/** True if the object is of SomeBase's class or a subclass of it. */
	template <typename OtherClassType>
	FORCEINLINE bool IsA(OtherClassType SomeBase) const
	{
		const UClass* SomeBaseClass = SomeBase;
		return IsAClass(SomeBaseClass);
	}

	template <class T>
	bool IsA() const
	{
		return IsAClass(T::StaticClass());
	}

	/** True if the object is a default subobject of its outer. */
	bool IsDefaultSubobject() const;

	/** True if the object's class was compiled into a module. */
	bool IsNative() const;

private:
	bool IsAClass(const UClass* SomeBase) const;
};

/** The object's name, or "None" for null. */
COREUOBJECT_API FString GetNameSafe(const UObjectBaseUtility* Object);

/** The object's path name, or "None" for null. */
COREUOBJECT_API FString GetPathNameSafe(const UObjectBaseUtility* Object);

/** The object's full name, or "None" for null. */
COREUOBJECT_API FString GetFullNameSafe(const UObjectBaseUtility* Object);
