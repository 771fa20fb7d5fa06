// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

class FField;
class UClass;
class UObject;
class UStruct;

/** The kind of a field (FProperty subclass): its name and its parent kind, for IsA and CastField. */
class COREUOBJECT_API FFieldClass
{
public:
	FFieldClass(const TCHAR* InCPPName, FFieldClass* InSuperClass);

	FFieldClass(const FFieldClass&) = delete;
	FFieldClass& operator=(const FFieldClass&) = delete;

	FString GetName() const { return Name.ToString(); }
	FName GetFName() const { return Name; }
	FFieldClass* GetSuperClass() const { return SuperClass; }

	/** True if this kind is Other or derives from it. */
	bool IsChildOf(const FFieldClass* Other) const
	{
		for (const FFieldClass* Class = this; Class; Class = Class->SuperClass)
		{
			if (Class == Other)
			{
				return true;
			}
		}
		return false;
	}

private:
	FName Name;
	FFieldClass* SuperClass;
};

/** Declares the field-class accessors of an FField subclass. */
#define DECLARE_FIELD(TClass, TSuperClass, TStaticFlags)  \
public:                                                   \
	typedef TSuperClass Super;                            \
	typedef TClass ThisClass;                             \
	static FFieldClass* StaticClass();                    \
	virtual FFieldClass* GetClassVirtual() const override \
	{                                                     \
		return TClass::StaticClass();                     \
	}

/** Either the UObject (a struct) or the FField (a container property) a field belongs to. */
class FFieldVariant
{
public:
	FFieldVariant() = default;
	FFieldVariant(TYPE_OF_NULLPTR) {}
	FFieldVariant(const FField* InField)
		: Field(const_cast<FField*>(InField))
	{
	}
	FFieldVariant(const UObject* InObject)
		: Object(const_cast<UObject*>(InObject))
	{
	}

	bool IsUObject() const { return Object != nullptr; }
	bool IsValid() const { return Object != nullptr || Field != nullptr; }
	UObject* ToUObject() const { return Object; }
	FField* ToField() const { return Field; }

private:
	UObject* Object = nullptr;
	FField* Field = nullptr;
};

/** A reflected member that is not a UObject: the base of every property. */
class COREUOBJECT_API FField
{
public:
	typedef FField ThisClass;

	FField(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags = RF_NoFlags);
	virtual ~FField();

	FField(const FField&) = delete;
	FField& operator=(const FField&) = delete;

	static FFieldClass* StaticClass();
	virtual FFieldClass* GetClassVirtual() const { return FField::StaticClass(); }
	FFieldClass* GetClass() const { return GetClassVirtual(); }

	FName GetFName() const { return NamePrivate; }
	FString GetName() const { return NamePrivate.ToString(); }
	FString GetAuthoredName() const { return GetName(); }

	/** The owner (struct or container property). */
	FFieldVariant GetOwnerVariant() const { return Owner; }

	/** The UObject this field ultimately belongs to. */
	UObject* GetOwnerUObject() const;

	/** The struct (class, script struct or function) this field belongs to. */
	UStruct* GetOwnerStruct() const;

	/** The class this field belongs to; null if it belongs to a struct or function outside a class. */
	UClass* GetOwnerClass() const;

	template <typename T>
	T* GetOwner() const;

	/** "/Script/Module.Class:Field". */
	FString GetPathName(const UObject* StopOuter = nullptr) const;
	FString GetFullName() const;

	bool IsA(const FFieldClass* FieldType) const { return GetClass()->IsChildOf(FieldType); }

	template <typename T>
	bool IsA() const
	{
		return IsA(T::StaticClass());
	}

	EObjectFlags GetFlags() const { return FlagsPrivate; }
	void SetFlags(EObjectFlags InFlags) { FlagsPrivate |= InFlags; }
	void ClearFlags(EObjectFlags InFlags) { FlagsPrivate &= ~InFlags; }
	bool HasAnyFlags(EObjectFlags InFlags) const { return (FlagsPrivate & InFlags) != 0; }

#if WITH_EDITORONLY_DATA
	/** The metadata value of Key, or an empty string. */
	const FString& GetMetaData(const FName& Key) const;
	const FString& GetMetaData(const TCHAR* Key) const
	{
		return GetMetaData(FName(Key));
	}
	bool HasMetaData(const FName& Key) const;
	bool HasMetaData(const TCHAR* Key) const
	{
		return HasMetaData(FName(Key));
	}
	void SetMetaData(const FName& Key, FString&& InValue);
	void SetMetaData(const FName& Key, const TCHAR* InValue)
	{
		SetMetaData(Key, FString(InValue));
	}
	void RemoveMetaData(const FName& Key);
	const TMap<FName, FString>* GetMetaDataMap() const
	{
		return &MetaDataMap;
	}
	bool GetBoolMetaData(const FName& Key) const;
	int32 GetIntMetaData(const FName& Key) const;
	float GetFloatMetaData(const FName& Key) const;
#endif

#if WITH_EDITOR
	/** The DisplayName metadata, or the name made readable. */
	FText GetDisplayNameText() const;
	FText GetToolTipText(bool bShortTooltip = false) const;
#endif

	/** The next field of the same owner. */
	FField* Next = nullptr;

protected:
	FFieldVariant Owner;
	FName NamePrivate;
	EObjectFlags FlagsPrivate;
#if WITH_EDITORONLY_DATA
	TMap<FName, FString> MetaDataMap;
#endif
};

/** The field as a T, or null if it is not one. */
template <typename FieldType>
FORCEINLINE FieldType* CastField(FField* Src)
{
	return Src && Src->IsA<FieldType>() ? static_cast<FieldType*>(Src) : nullptr;
}

template <typename FieldType>
FORCEINLINE const FieldType* CastField(const FField* Src)
{
	return Src && Src->IsA<FieldType>() ? static_cast<const FieldType*>(Src) : nullptr;
}

/** The field as a T; fatal if it is null or not a T. */
template <typename FieldType>
FORCEINLINE FieldType* CastFieldChecked(FField* Src)
{
	checkf(Src && Src->IsA<FieldType>(), TEXT("CastFieldChecked to %s failed"), *FieldType::StaticClass()->GetName());
	return static_cast<FieldType*>(Src);
}

template <typename FieldType>
FORCEINLINE const FieldType* CastFieldChecked(const FField* Src)
{
	checkf(Src && Src->IsA<FieldType>(), TEXT("CastFieldChecked to %s failed"), *FieldType::StaticClass()->GetName());
	return static_cast<const FieldType*>(Src);
}

template <typename FieldType>
FORCEINLINE FieldType* CastFieldCheckedNullAllowed(FField* Src)
{
	check(!Src || Src->IsA<FieldType>());
	return static_cast<FieldType*>(Src);
}
