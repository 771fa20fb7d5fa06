// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/Field.h"
#include "UObject/ObjectMacros.h"
#include "UObject/PropertyPortFlags.h"

#include <type_traits>

class FOutputDevice;
class FReferenceCollector;

/** A reflected data member: where the value lives in its container and how to handle it without its C++ type. */
class COREUOBJECT_API FProperty : public FField
{
	DECLARE_FIELD(FProperty, FField, 0)

public:
	FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FProperty(
		FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags);

	/** Number of elements of a C-style array member (1 for a plain member). */
	int32 ArrayDim = 1;

	/** Size of one element in bytes. */
	int32 ElementSize = 0;

	EPropertyFlags PropertyFlags = CPF_None;

	/** The function called when a replicated value changes (metadata of ReplicatedUsing). */
	FName RepNotifyFunc;

	/** Next property in the owner struct's PropertyLink (including super structs). */
	FProperty* PropertyLinkNext = nullptr;
	FProperty* NextRef = nullptr;
	FProperty* DestructorLinkNext = nullptr;
	FProperty* PostConstructLinkNext = nullptr;

	// Layout.

	FORCEINLINE int32 GetOffset_ForInternal() const { return Offset_Internal; }
	FORCEINLINE int32 GetOffset_ForGC() const { return Offset_Internal; }
	FORCEINLINE int32 GetOffset_ReplaceWith_ContainerPtrToValuePtr() const { return Offset_Internal; }
	void SetOffset_Internal(int32 NewOffset) { Offset_Internal = NewOffset; }

	FORCEINLINE int32 GetSize() const { return ArrayDim * ElementSize; }
	FORCEINLINE int32 GetElementSize() const { return ElementSize; }
	void SetElementSize(int32 NewSize) { ElementSize = NewSize; }
	virtual int32 GetMinAlignment() const { return 1; }

	/** Prepares the property for use (sizes depending on other types); returns the size of the value. */
	int32 Link();

	// Flags.

	FORCEINLINE EPropertyFlags GetPropertyFlags() const { return PropertyFlags; }
	FORCEINLINE void SetPropertyFlags(EPropertyFlags NewFlags) { PropertyFlags |= NewFlags; }
	FORCEINLINE void ClearPropertyFlags(EPropertyFlags NewFlags) { PropertyFlags &= ~NewFlags; }
	FORCEINLINE bool HasAnyPropertyFlags(uint64 FlagsToCheck) const
	{
		return (PropertyFlags & FlagsToCheck) != 0 || FlagsToCheck == CPF_AllFlags;
	}
	FORCEINLINE bool HasAllPropertyFlags(uint64 FlagsToCheck) const
	{
		return ((PropertyFlags & FlagsToCheck) == FlagsToCheck);
	}

	// Value addresses.

	template <typename ValueType>
	FORCEINLINE ValueType* ContainerPtrToValuePtr(void* ContainerPtr, int32 ArrayIndex = 0) const
	{
		check(ArrayIndex >= 0 && ArrayIndex < ArrayDim);
		return (ValueType*)((uint8*)ContainerPtr + Offset_Internal + ElementSize * ArrayIndex);
	}

	template <typename ValueType>
	FORCEINLINE const ValueType* ContainerPtrToValuePtr(const void* ContainerPtr, int32 ArrayIndex = 0) const
	{
		check(ArrayIndex >= 0 && ArrayIndex < ArrayDim);
		return (const ValueType*)((const uint8*)ContainerPtr + Offset_Internal + ElementSize * ArrayIndex);
	}

	template <typename ValueType>
	FORCEINLINE ValueType* ContainerPtrToValuePtrForDefaults(
		UStruct* ContainerClass, void* ContainerPtr, int32 ArrayIndex = 0) const
	{
		return ContainerPtrToValuePtr<ValueType>(ContainerPtr, ArrayIndex);
	}

	// Value operations.

	/** Copies ArrayDim elements. */
	void CopyCompleteValue(void* Dest, void const* Src) const;
	void CopyCompleteValue_InContainer(void* Dest, void const* Src) const
	{
		CopyCompleteValue(ContainerPtrToValuePtr<void>(Dest), ContainerPtrToValuePtr<void>(Src));
	}
	void CopySingleValue(void* Dest, void const* Src) const;

	/** True if the values are equal; B may be null (compared with a default value). */
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const = 0;
	bool Identical_InContainer(const void* A, const void* B, int32 ArrayIndex = 0, uint32 PortFlags = 0) const;

	/** Constructs ArrayDim elements in raw memory. */
	void InitializeValue(void* Dest) const;
	void InitializeValue_InContainer(void* Dest) const { InitializeValue(ContainerPtrToValuePtr<void>(Dest)); }

	/** Destroys ArrayDim elements. */
	void DestroyValue(void* Dest) const;
	void DestroyValue_InContainer(void* Dest) const { DestroyValue(ContainerPtrToValuePtr<void>(Dest)); }

	/** Resets ArrayDim elements to their default values. */
	void ClearValue(void* Data) const;
	void ClearValue_InContainer(void* Data, int32 ArrayIndex = 0) const
	{
		ClearValueInternal(ContainerPtrToValuePtr<void>(Data, ArrayIndex));
	}

	/** A hash of one value; only valid if the property has CPF_HasGetValueTypeHash. */
	uint32 GetValueTypeHash(const void* Src) const { return GetValueTypeHashInternal(Src); }

	// Text.

	/** Appends the text form of one value to ValueStr. */
	void ExportTextItem_Direct(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent,
		int32 PortFlags, UObject* ExportRootScope = nullptr) const;

	void ExportTextItem_InContainer(FString& ValueStr, const void* Container, const void* DefaultValue, UObject* Parent,
		int32 PortFlags, UObject* ExportRootScope = nullptr) const;

	/** Exports only if the value differs from the default; false if nothing was written. */
	bool ExportText_Direct(FString& ValueStr, const void* Data, const void* Delta, UObject* Parent, int32 PortFlags,
		UObject* ExportRootScope = nullptr) const;

	/** Reads one value from text; returns the text after it, or null on failure. */
	const TCHAR* ImportText_Direct(const TCHAR* Buffer, void* PropertyPtr, UObject* OwnerObject, int32 PortFlags,
		FOutputDevice* ErrorText = nullptr) const;

	const TCHAR* ImportText_InContainer(const TCHAR* Buffer, void* Container, UObject* OwnerObject, int32 PortFlags,
		FOutputDevice* ErrorText = nullptr) const;

	/** The C++ type of the value ("int32", "TArray<FString>", "TObjectPtr<UObject>"...). */
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const = 0;

	/** The name of the property as a C++ identifier. */
	FString GetNameCPP() const
	{
		return HasAnyPropertyFlags(CPF_Deprecated) ? GetName() + TEXT("_DEPRECATED") : GetName();
	}

	/** True if values of this property can hold strong object references. */
	virtual bool ContainsObjectReference() const { return false; }

	/** Reports the strong object references held by ArrayDim values at Value. */
	virtual void CollectReferences(void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const
	{
	}

	/** True if both properties describe values of the same type. */
	virtual bool SameType(const FProperty* Other) const;

	/** True if the property's value must be written when the object is saved. */
	bool ShouldSerializeValue() const;

protected:
	friend class UStruct;

	virtual void LinkInternal() {}
	virtual void InitializeValueInternal(void* Dest) const;
	virtual void DestroyValueInternal(void* Dest) const {}
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const;
	virtual void ClearValueInternal(void* Data) const;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const = 0;
	virtual const TCHAR* ImportText_Internal(
		const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const = 0;

	/** Skips spaces and tabs. */
	static const TCHAR* SkipWhitespace(const TCHAR* Buffer);

	/** Reads a token of a delimited value: a quoted string (unescaped) or text up to ',' or ')'. */
	static const TCHAR* ReadToken(const TCHAR* Buffer, FString& Out, bool bDottedNames = false);

	/** Appends Value, quoted and escaped when PortFlags has PPF_Delimited. */
	static void ExportQuotedIfDelimited(FString& ValueStr, const FString& Value, int32 PortFlags);

private:
	int32 Offset_Internal = 0;
};

/** Common implementation of properties whose value is one C++ type. */
template <typename InTCppType, class TInPropertyBaseClass>
class TProperty : public TInPropertyBaseClass
{
public:
	typedef InTCppType TCppType;

	TProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
		: TInPropertyBaseClass(InOwner, InName, InObjectFlags)
	{
		this->ElementSize = sizeof(TCppType);
	}

	virtual int32 GetMinAlignment() const override { return alignof(TCppType); }

	static FORCEINLINE TCppType const* GetPropertyValuePtr(void const* A) { return (TCppType const*)A; }
	static FORCEINLINE TCppType* GetPropertyValuePtr(void* A) { return (TCppType*)A; }
	static FORCEINLINE TCppType const& GetPropertyValue(void const* A) { return *GetPropertyValuePtr(A); }
	static FORCEINLINE TCppType GetDefaultPropertyValue() { return TCppType(); }
	static FORCEINLINE void SetPropertyValue(void* A, TCppType const& Value) { *GetPropertyValuePtr(A) = Value; }
	static FORCEINLINE TCppType GetOptionalPropertyValue(void const* B)
	{
		return B ? GetPropertyValue(B) : GetDefaultPropertyValue();
	}

	FORCEINLINE TCppType const* GetPropertyValuePtr_InContainer(void const* A, int32 ArrayIndex = 0) const
	{
		return GetPropertyValuePtr(this->template ContainerPtrToValuePtr<void>(A, ArrayIndex));
	}
	FORCEINLINE TCppType* GetPropertyValuePtr_InContainer(void* A, int32 ArrayIndex = 0) const
	{
		return GetPropertyValuePtr(this->template ContainerPtrToValuePtr<void>(A, ArrayIndex));
	}
	FORCEINLINE TCppType const& GetPropertyValue_InContainer(void const* A, int32 ArrayIndex = 0) const
	{
		return *GetPropertyValuePtr_InContainer(A, ArrayIndex);
	}
	FORCEINLINE void SetPropertyValue_InContainer(void* A, TCppType const& Value, int32 ArrayIndex = 0) const
	{
		*GetPropertyValuePtr_InContainer(A, ArrayIndex) = Value;
	}

	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override
	{
		if constexpr (requires(const TCppType& X) { X == X; })
		{
			return GetPropertyValue(A) == GetOptionalPropertyValue(B);
		}
		else
		{
			checkf(false, TEXT("Values of %s cannot be compared"), *this->GetName());
			return false;
		}
	}

protected:
	virtual void InitializeValueInternal(void* Dest) const override
	{
		for (int32 Index = 0; Index < this->ArrayDim; ++Index)
		{
			::new ((uint8*)Dest + Index * this->ElementSize) TCppType();
		}
	}

	virtual void DestroyValueInternal(void* Dest) const override
	{
		if constexpr (!std::is_trivially_destructible_v<TCppType>)
		{
			for (int32 Index = 0; Index < this->ArrayDim; ++Index)
			{
				((TCppType*)((uint8*)Dest + Index * this->ElementSize))->~TCppType();
			}
		}
	}

	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			GetPropertyValuePtr(Dest)[Index] = GetPropertyValuePtr(Src)[Index];
		}
	}

	virtual void ClearValueInternal(void* Data) const override { SetPropertyValue(Data, TCppType()); }

	virtual uint32 GetValueTypeHashInternal(const void* Src) const override
	{
		if constexpr (requires(const TCppType& X) { GetTypeHash(X); })
		{
			return GetTypeHash(GetPropertyValue(Src));
		}
		return 0;
	}
};

/** Base of the integer and floating point properties. */
class COREUOBJECT_API FNumericProperty : public FProperty
{
	DECLARE_FIELD(FNumericProperty, FProperty, 0)

public:
	using FProperty::FProperty;

	virtual bool IsFloatingPoint() const { return false; }
	virtual bool IsInteger() const { return true; }

	/** The enum of a byte property holding enum values (TEnumAsByte); null otherwise. */
	virtual UEnum* GetIntPropertyEnum() const { return nullptr; }
	bool IsEnum() const { return GetIntPropertyEnum() != nullptr; }

	virtual void SetIntPropertyValue(void* Data, uint64 Value) const = 0;
	virtual void SetIntPropertyValue(void* Data, int64 Value) const = 0;
	virtual void SetFloatingPointPropertyValue(void* Data, double Value) const = 0;
	virtual void SetNumericPropertyValueFromString(void* Data, TCHAR const* Value) const = 0;
	virtual int64 GetSignedIntPropertyValue(void const* Data) const = 0;
	virtual uint64 GetUnsignedIntPropertyValue(void const* Data) const = 0;
	virtual double GetFloatingPointPropertyValue(void const* Data) const = 0;
	virtual FString GetNumericPropertyValueToString(void const* Data) const = 0;

	bool CanHoldValue(int64 Value) const;
};

/** Shared implementation of the numeric properties of one C++ type. */
template <typename InTCppType>
class TProperty_Numeric : public TProperty<InTCppType, FNumericProperty>
{
public:
	typedef TProperty<InTCppType, FNumericProperty> Super;
	typedef InTCppType TCppType;

	TProperty_Numeric(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
		: Super(InOwner, InName, InObjectFlags)
	{
		this->PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
	}

	virtual bool IsFloatingPoint() const override { return std::is_floating_point_v<TCppType>; }
	virtual bool IsInteger() const override { return std::is_integral_v<TCppType>; }
	virtual void SetIntPropertyValue(void* Data, uint64 Value) const override { *(TCppType*)Data = (TCppType)Value; }
	virtual void SetIntPropertyValue(void* Data, int64 Value) const override { *(TCppType*)Data = (TCppType)Value; }
	virtual void SetFloatingPointPropertyValue(void* Data, double Value) const override
	{
		*(TCppType*)Data = (TCppType)Value;
	}
	virtual void SetNumericPropertyValueFromString(void* Data, TCHAR const* Value) const override
	{
		LexFromString(*(TCppType*)Data, Value);
	}
	virtual int64 GetSignedIntPropertyValue(void const* Data) const override { return (int64) * (const TCppType*)Data; }
	virtual uint64 GetUnsignedIntPropertyValue(void const* Data) const override
	{
		return (uint64) * (const TCppType*)Data;
	}
	virtual double GetFloatingPointPropertyValue(void const* Data) const override
	{
		return (double)*(const TCppType*)Data;
	}
	virtual FString GetNumericPropertyValueToString(void const* Data) const override
	{
		FString Out;
		ExportNumber(Out, *(const TCppType*)Data);
		return Out;
	}

protected:
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override
	{
		ExportNumber(ValueStr, *(const TCppType*)PropertyValue);
	}

	virtual const TCHAR* ImportText_Internal(
		const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const override
	{
		return ImportNumber(Buffer, *(TCppType*)Data);
	}

	/** Integers as written by LexToString; floating point values with six decimals ("1.500000"). */
	static void ExportNumber(FString& Out, TCppType Value)
	{
		if constexpr (std::is_floating_point_v<TCppType>)
		{
			Out += FString::Printf(TEXT("%f"), (double)Value);
		}
		else
		{
			Out += LexToString(Value);
		}
	}

	static const TCHAR* ImportNumber(const TCHAR* Buffer, TCppType& Out);
};

COREUOBJECT_API const TCHAR* ImportNumericText(
	const TCHAR* Buffer, bool bFloatingPoint, bool bSigned, int64& OutInt, uint64& OutUInt, double& OutDouble);

template <typename InTCppType>
const TCHAR* TProperty_Numeric<InTCppType>::ImportNumber(const TCHAR* Buffer, TCppType& Out)
{
	int64 IntValue = 0;
	uint64 UIntValue = 0;
	double DoubleValue = 0.0;
	const TCHAR* End = ImportNumericText(
		Buffer, std::is_floating_point_v<TCppType>, std::is_signed_v<TCppType>, IntValue, UIntValue, DoubleValue);
	if (End)
	{
		if constexpr (std::is_floating_point_v<TCppType>)
		{
			Out = (TCppType)DoubleValue;
		}
		else if constexpr (std::is_signed_v<TCppType>)
		{
			Out = (TCppType)IntValue;
		}
		else
		{
			Out = (TCppType)UIntValue;
		}
	}
	return End;
}

#define UE_DECLARE_NUMERIC_PROPERTY(Name, CppType)                                                                 \
	class COREUOBJECT_API Name : public TProperty_Numeric<CppType>                                                 \
	{                                                                                                              \
		DECLARE_FIELD(Name, TProperty_Numeric<CppType>, 0)                                                         \
                                                                                                                   \
	public:                                                                                                        \
		Name(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);                              \
		virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override; \
	};

UE_DECLARE_NUMERIC_PROPERTY(FInt8Property, int8)
UE_DECLARE_NUMERIC_PROPERTY(FInt16Property, int16)
UE_DECLARE_NUMERIC_PROPERTY(FIntProperty, int32)
UE_DECLARE_NUMERIC_PROPERTY(FInt64Property, int64)
UE_DECLARE_NUMERIC_PROPERTY(FUInt16Property, uint16)
UE_DECLARE_NUMERIC_PROPERTY(FUInt32Property, uint32)
UE_DECLARE_NUMERIC_PROPERTY(FUInt64Property, uint64)
UE_DECLARE_NUMERIC_PROPERTY(FFloatProperty, float)
UE_DECLARE_NUMERIC_PROPERTY(FDoubleProperty, double)

#undef UE_DECLARE_NUMERIC_PROPERTY

/** A uint8, or a TEnumAsByte of an enum (then written and read by enumerator name). */
class COREUOBJECT_API FByteProperty : public TProperty_Numeric<uint8>
{
	DECLARE_FIELD(FByteProperty, TProperty_Numeric<uint8>, 0)

public:
	FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	/** The enum of a TEnumAsByte member; null for a plain byte. */
	UEnum* Enum = nullptr;

	virtual UEnum* GetIntPropertyEnum() const override { return Enum; }
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** A bool, either a full bool or one bit of a bitfield ("uint32 bX : 1"). */
class COREUOBJECT_API FBoolProperty : public FProperty
{
	DECLARE_FIELD(FBoolProperty, FProperty, 0)

public:
	FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	/** Describes the storage: a full bool (bIsNativeBool) or the bit InBitMask of a field of InSize bytes. */
	void SetBoolSize(const uint32 InSize, const bool bIsNativeBool = false, const uint32 InBitMask = 0);

	/** Sets up a bitfield by its byte (relative to the property offset) and the mask within that byte. */
	void SetBitfield(uint8 InByteOffset, uint8 InByteMask, uint8 InFieldSize);

	FORCEINLINE bool IsNativeBool() const { return FieldMask == 0xff; }
	uint8 GetFieldSize() const { return FieldSize; }
	uint8 GetByteOffset() const { return ByteOffset; }
	uint8 GetByteMask() const { return ByteMask; }
	uint8 GetFieldMask() const { return FieldMask; }

	/** A = value address (the property offset applied). */
	FORCEINLINE bool GetPropertyValue(void const* A) const { return (((const uint8*)A)[ByteOffset] & FieldMask) != 0; }
	FORCEINLINE void SetPropertyValue(void* A, bool Value) const
	{
		uint8* ByteValue = (uint8*)A + ByteOffset;
		*ByteValue = (uint8)(((*ByteValue) & ~FieldMask) | (Value ? ByteMask : 0));
	}
	/** A = container (object) address. */
	FORCEINLINE bool GetPropertyValue_InContainer(void const* A, int32 ArrayIndex = 0) const
	{
		return GetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex));
	}
	FORCEINLINE void SetPropertyValue_InContainer(void* A, bool Value, int32 ArrayIndex = 0) const
	{
		SetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex), Value);
	}
	static bool GetDefaultPropertyValue() { return false; }

	virtual int32 GetMinAlignment() const override { return 1; }
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;

private:
	uint8 FieldSize = 1;
	uint8 ByteOffset = 0;
	uint8 ByteMask = 1;
	uint8 FieldMask = 0xff;
};

/** An FName. */
typedef TProperty<FName, FProperty> FNameProperty_Super;

class COREUOBJECT_API FNameProperty : public FNameProperty_Super
{
	DECLARE_FIELD(FNameProperty, FNameProperty_Super, 0)

public:
	FNameProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;

protected:
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** An FString. */
typedef TProperty<FString, FProperty> FStrProperty_Super;

class COREUOBJECT_API FStrProperty : public FStrProperty_Super
{
	DECLARE_FIELD(FStrProperty, FStrProperty_Super, 0)

public:
	FStrProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;

protected:
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** An FText. */
typedef TProperty<FText, FProperty> FTextProperty_Super;

class COREUOBJECT_API FTextProperty : public FTextProperty_Super
{
	DECLARE_FIELD(FTextProperty, FTextProperty_Super, 0)

public:
	FTextProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;

protected:
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** Base of the properties that reference objects (hard, class, weak, soft). */
class COREUOBJECT_API FObjectPropertyBase : public FProperty
{
	DECLARE_FIELD(FObjectPropertyBase, FProperty, 0)

public:
	FObjectPropertyBase(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	/** The class the referenced objects must be of. */
	UClass* PropertyClass = nullptr;

	void SetPropertyClass(UClass* NewPropertyClass) { PropertyClass = NewPropertyClass; }

	/** The referenced object; soft references return it only if it is in memory. */
	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const = 0;
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const = 0;

	virtual UObject* GetObjectPropertyValue_InContainer(const void* ContainerAddress, int32 ArrayIndex = 0) const
	{
		return GetObjectPropertyValue(ContainerPtrToValuePtr<void>(ContainerAddress, ArrayIndex));
	}
	virtual void SetObjectPropertyValue_InContainer(void* ContainerAddress, UObject* Value, int32 ArrayIndex = 0) const
	{
		SetObjectPropertyValue(ContainerPtrToValuePtr<void>(ContainerAddress, ArrayIndex), Value);
	}

	/** The text form of a reference: the object's path name, or "None". */
	static FString GetExportPath(const UObject* Object, const UObject* Parent = nullptr,
		const UObject* ExportRootScope = nullptr, const uint32 PortFlags = PPF_None);

	/** Finds the object a reference's text names (a path or, inside OwnerObject, a name); never loads. */
	static UObject* FindImportedObject(const FProperty* Property, UObject* OwnerObject, UClass* ObjectClass,
		UClass* RequiredMetaClass, const TCHAR* Text, uint32 PortFlags = 0);

	virtual bool SameType(const FProperty* Other) const override;

protected:
	/** Reads a reference's text ("None", a path, or Class'path'); false on a syntax error. */
	const TCHAR* ImportObjectText(const TCHAR* Buffer, UObject*& OutObject, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText, UClass* RequiredMetaClass) const;
};

/** A hard reference (UObject* or TObjectPtr<UObject>). */
class COREUOBJECT_API FObjectProperty : public FObjectPropertyBase
{
	DECLARE_FIELD(FObjectProperty, FObjectPropertyBase, 0)

public:
	FObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const override
	{
		return *(UObject* const*)PropertyValueAddress;
	}
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const override
	{
		*(UObject**)PropertyValueAddress = Value;
	}
	UObject* GetPropertyValue(const void* A) const { return *(UObject* const*)A; }
	void SetPropertyValue(void* A, UObject* Value) const { *(UObject**)A = Value; }
	UObject* GetPropertyValue_InContainer(const void* A, int32 ArrayIndex = 0) const
	{
		return GetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex));
	}
	void SetPropertyValue_InContainer(void* A, UObject* Value, int32 ArrayIndex = 0) const
	{
		SetPropertyValue(ContainerPtrToValuePtr<void>(A, ArrayIndex), Value);
	}

	virtual int32 GetMinAlignment() const override { return alignof(UObject*); }
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool ContainsObjectReference() const override { return true; }
	virtual void CollectReferences(
		void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const override;

protected:
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** A class reference (UClass* or TSubclassOf<T>); MetaClass is the class the referenced class must derive from. */
class COREUOBJECT_API FClassProperty : public FObjectProperty
{
	DECLARE_FIELD(FClassProperty, FObjectProperty, 0)

public:
	FClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	UClass* MetaClass = nullptr;

	void SetMetaClass(UClass* NewMetaClass) { MetaClass = NewMetaClass; }
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** A weak reference (TWeakObjectPtr); not followed by the garbage collector. */
class COREUOBJECT_API FWeakObjectProperty : public FObjectPropertyBase
{
	DECLARE_FIELD(FWeakObjectProperty, FObjectPropertyBase, 0)

public:
	FWeakObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const override;
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const override;
	virtual int32 GetMinAlignment() const override { return alignof(int32); }
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/**
 * How a soft reference property handles its values (TSoftObjectPtr / TSoftClassPtr) without knowing
 * their C++ type: given by the generated code (or by whoever creates the property at run time).
 */
struct FSoftObjectValueOps
{
	int32 Size;
	int32 Alignment;
	void (*Construct)(void* Value);
	void (*Destruct)(void* Value);
	void (*Copy)(void* Dest, const void* Src);
	bool (*Identical)(const void* A, const void* B);
	/** The path, "" when null. */
	FString (*ToString)(const void* Value);
	/** Sets the path ("" resets). */
	void (*SetPath)(void* Value, const FString& Path);
	/** The object if it is in memory; never loads. */
	UObject* (*Get)(const void* Value);
	void (*SetObject)(void* Value, UObject* Object);
	uint32 (*Hash)(const void* Value);
};

/** A soft reference (TSoftObjectPtr): a path, resolved only if the object is in memory. */
class COREUOBJECT_API FSoftObjectProperty : public FObjectPropertyBase
{
	DECLARE_FIELD(FSoftObjectProperty, FObjectPropertyBase, 0)

public:
	FSoftObjectProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	/** Gives the property the operations of its value type; required before use. */
	void SetValueOps(const FSoftObjectValueOps* InOps);
	const FSoftObjectValueOps* GetValueOps() const { return ValueOps; }

	virtual UObject* GetObjectPropertyValue(const void* PropertyValueAddress) const override;
	virtual void SetObjectPropertyValue(void* PropertyValueAddress, UObject* Value) const override;
	virtual int32 GetMinAlignment() const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;

	/** The path of the value ("" when null). */
	FString GetPathString(const void* PropertyValueAddress) const;
	void SetPathString(void* PropertyValueAddress, const FString& Path) const;

protected:
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;

	const FSoftObjectValueOps& Ops() const;

	const FSoftObjectValueOps* ValueOps = nullptr;
};

/** A soft class reference (TSoftClassPtr). */
class COREUOBJECT_API FSoftClassProperty : public FSoftObjectProperty
{
	DECLARE_FIELD(FSoftClassProperty, FSoftObjectProperty, 0)

public:
	FSoftClassProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);

	UClass* MetaClass = nullptr;

	void SetMetaClass(UClass* NewMetaClass) { MetaClass = NewMetaClass; }
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
};

/** A value of a reflected struct. */
class COREUOBJECT_API FStructProperty : public FProperty
{
	DECLARE_FIELD(FStructProperty, FProperty, 0)

public:
	FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FStructProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UScriptStruct* InStruct);

	UScriptStruct* Struct = nullptr;

	virtual int32 GetMinAlignment() const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool ContainsObjectReference() const override;
	virtual void CollectReferences(
		void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void LinkInternal() override;
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** A value of an enum class, stored in its underlying integer type. */
class COREUOBJECT_API FEnumProperty : public FProperty
{
	DECLARE_FIELD(FEnumProperty, FProperty, 0)

public:
	FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	FEnumProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, UEnum* InEnum);
	virtual ~FEnumProperty() override;

	/** Sets the underlying integer property (owned by this property). */
	void AddCppProperty(FProperty* Inner);

	void SetEnum(UEnum* InEnum) { Enum = InEnum; }
	UEnum* GetEnum() const { return Enum; }
	FNumericProperty* GetUnderlyingProperty() const { return UnderlyingProp; }

	virtual int32 GetMinAlignment() const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void LinkInternal() override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual uint32 GetValueTypeHashInternal(const void* Src) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;

private:
	FNumericProperty* UnderlyingProp = nullptr;
	UEnum* Enum = nullptr;
};

/** A TArray of any property type; elements are handled through the Inner property. */
class COREUOBJECT_API FArrayProperty : public FProperty
{
	DECLARE_FIELD(FArrayProperty, FProperty, 0)

public:
	FArrayProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual ~FArrayProperty() override;

	/** The element property (owned by this property). */
	FProperty* Inner = nullptr;

	/** Sets the element property. */
	void AddCppProperty(FProperty* Property);

	virtual int32 GetMinAlignment() const override { return alignof(void*); }
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool ContainsObjectReference() const override;
	virtual void CollectReferences(
		void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const override;
	virtual bool SameType(const FProperty* Other) const override;

protected:
	virtual void LinkInternal() override;
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;
};

/** Reads and changes a TArray value through its property, without knowing the element type. */
class COREUOBJECT_API FScriptArrayHelper
{
public:
	FScriptArrayHelper(const FArrayProperty* InProperty, const void* InArray);

	static FScriptArrayHelper CreateHelperFormInnerProperty(const FProperty* InInnerProperty, const void* InArray);

	int32 Num() const;
	bool IsValidIndex(int32 Index) const { return Index >= 0 && Index < Num(); }

	/** The address of an element; Index may be Num() for the end address. */
	uint8* GetRawPtr(int32 Index = 0);

	/** Adds one default-constructed element; returns its index. */
	int32 AddValue();
	int32 AddValues(int32 Count);

	/** Adds elements whose memory is zeroed but not constructed. */
	int32 AddUninitializedValue();
	int32 AddUninitializedValues(int32 Count);

	void InsertValues(int32 Index, int32 Count = 1);
	void RemoveValues(int32 Index, int32 Count = 1);
	void EmptyValues(int32 Slack = 0);

	/** Adds or removes elements at the end so the array has NewNum elements. */
	void Resize(int32 NewNum);

	void Reserve(int32 Count);

	/** Swaps two elements. */
	void SwapValues(int32 A, int32 B);

private:
	FScriptArrayHelper(const FProperty* InInner, const void* InArray, int32 Dummy);

	struct FLayout
	{
		uint8* Data;
		int32 Num;
		int32 Max;
	};

	void Grow(int32 NewMax);

	FLayout* Array;
	const FProperty* InnerProperty;
	int32 ElementSize;
	int32 ElementAlignment;
};

/** Type-erased operations on a native TMap. */
struct FScriptMapOps
{
	int32 Size;
	int32 Alignment;
	void (*Construct)(void* Map);
	void (*Destruct)(void* Map);
	void (*Copy)(void* Dest, const void* Src);
	int32 (*Num)(const void* Map);
	/** Appends key and value addresses, in iteration order. */
	void (*GetPairs)(const void* Map, TArray<TPair<void*, void*>>& OutPairs);
	void* (*FindValue)(const void* Map, const void* Key);
	/** The value of Key, default-constructed first if the key is new. */
	void* (*FindOrAddValue)(void* Map, const void* Key);
	bool (*Remove)(void* Map, const void* Key);
	void (*Empty)(void* Map);
};

/** Type-erased operations on a native TSet. */
struct FScriptSetOps
{
	int32 Size;
	int32 Alignment;
	void (*Construct)(void* Set);
	void (*Destruct)(void* Set);
	void (*Copy)(void* Dest, const void* Src);
	int32 (*Num)(const void* Set);
	void (*GetElements)(const void* Set, TArray<void*>& OutElements);
	void* (*Find)(const void* Set, const void* Element);
	void* (*Add)(void* Set, const void* Element);
	bool (*Remove)(void* Set, const void* Element);
	void (*Empty)(void* Set);
};

/** A TMap; keys and values are handled through KeyProp and ValueProp. */
class COREUOBJECT_API FMapProperty : public FProperty
{
	DECLARE_FIELD(FMapProperty, FProperty, 0)

public:
	FMapProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual ~FMapProperty() override;

	FProperty* KeyProp = nullptr;
	FProperty* ValueProp = nullptr;

	/** Sets the key property first, then the value property (both owned by this property). */
	void AddCppProperty(FProperty* Property);

	/** Gives the property the operations of its native map type; required before use. */
	void SetMapOps(const FScriptMapOps* InOps);
	const FScriptMapOps* GetMapOps() const { return MapOps; }

	virtual int32 GetMinAlignment() const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool ContainsObjectReference() const override;
	virtual void CollectReferences(
		void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const override;

protected:
	virtual void LinkInternal() override;
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;

	const FScriptMapOps& Ops() const;

	const FScriptMapOps* MapOps = nullptr;
};

/** A TSet; elements are handled through ElementProp. */
class COREUOBJECT_API FSetProperty : public FProperty
{
	DECLARE_FIELD(FSetProperty, FProperty, 0)

public:
	FSetProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags);
	virtual ~FSetProperty() override;

	FProperty* ElementProp = nullptr;

	void AddCppProperty(FProperty* Property);

	/** Gives the property the operations of its native set type; required before use. */
	void SetSetOps(const FScriptSetOps* InOps);
	const FScriptSetOps* GetSetOps() const { return SetOps; }

	virtual int32 GetMinAlignment() const override;
	virtual bool Identical(const void* A, const void* B, uint32 PortFlags = 0) const override;
	virtual FString GetCPPType(FString* ExtendedTypeText = nullptr, uint32 CPPExportFlags = 0) const override;
	virtual bool ContainsObjectReference() const override;
	virtual void CollectReferences(
		void* Value, FReferenceCollector& Collector, const UObject* ReferencingObject) const override;

protected:
	virtual void LinkInternal() override;
	virtual void InitializeValueInternal(void* Dest) const override;
	virtual void DestroyValueInternal(void* Dest) const override;
	virtual void CopyValuesInternal(void* Dest, void const* Src, int32 Count) const override;
	virtual void ClearValueInternal(void* Data) const override;
	virtual void ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
		UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const override;
	virtual const TCHAR* ImportText_Internal(const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject,
		FOutputDevice* ErrorText) const override;

	const FScriptSetOps& Ops() const;

	const FScriptSetOps* SetOps = nullptr;
};

/** Reads and changes a TMap value through its property. */
class COREUOBJECT_API FScriptMapHelper
{
public:
	FScriptMapHelper(const FMapProperty* InProperty, const void* InMap);

	int32 Num() const;

	/** Key and value addresses of the pair at a position of the iteration order. */
	uint8* GetKeyPtr(int32 Index);
	uint8* GetValuePtr(int32 Index);

	/** The value of the key, or null. */
	uint8* FindValueFromKey(const void* KeyPtr) const;

	/** The value of the key, added (default-constructed) if new. */
	uint8* FindOrAdd(const void* KeyPtr);

	bool RemovePair(const void* KeyPtr);
	void EmptyValues();

	const FProperty* GetKeyProperty() const { return Property->KeyProp; }
	const FProperty* GetValueProperty() const { return Property->ValueProp; }

private:
	void Refresh();

	const FMapProperty* Property;
	void* Map;
	TArray<TPair<void*, void*>> Pairs;
};

/** Reads and changes a TSet value through its property. */
class COREUOBJECT_API FScriptSetHelper
{
public:
	FScriptSetHelper(const FSetProperty* InProperty, const void* InSet);

	int32 Num() const;
	uint8* GetElementPtr(int32 Index);
	bool Contains(const void* ElementPtr) const;
	void AddElement(const void* ElementPtr);
	bool RemoveElement(const void* ElementPtr);
	void EmptyElements();
	const FProperty* GetElementProperty() const { return Property->ElementProp; }

private:
	void Refresh();

	const FSetProperty* Property;
	void* Set;
	TArray<void*> Elements;
};

// ---------------------------------------------------------------------------------------------------
// Field iteration.

/** 5.x iteration flags of TFieldIterator. */
enum class EFieldIterationFlags : uint8
{
	None = 0,
	IncludeSuper = 1 << 0,
	IncludeDeprecated = 1 << 1,
	IncludeInterfaces = 1 << 2,
	IncludeAll = IncludeSuper | IncludeDeprecated | IncludeInterfaces,
	Default = IncludeSuper | IncludeDeprecated,
};
ENUM_CLASS_FLAGS(EFieldIterationFlags);

namespace EFieldIteratorFlags
{
	enum SuperClassFlags
	{
		ExcludeSuper = 0,
		IncludeSuper
	};

	enum DeprecatedPropertyFlags
	{
		ExcludeDeprecated = 0,
		IncludeDeprecated
	};

	enum InterfaceClassFlags
	{
		ExcludeInterfaces = 0,
		IncludeInterfaces
	};
} // namespace EFieldIteratorFlags

namespace UE::CoreUObject::Private
{
	template <class T>
	inline constexpr bool TIsUField = std::is_base_of_v<UField, T>;
}

/**
 * Visits the fields of type T of a struct: its own fields in declaration order, then (with IncludeSuper)
 * those of each super struct. T may be a property type (FProperty, FObjectPropertyBase...) or a UField
 * type (UFunction).
 */
template <class T>
class TFieldIterator
{
public:
	TFieldIterator(const UStruct* InStruct, EFieldIterationFlags InIterationFlags = EFieldIterationFlags::Default)
		: Struct(InStruct)
		, IterationFlags(InIterationFlags)
	{
		if (Struct)
		{
			Start();
			SkipInvalid();
		}
	}

	TFieldIterator(const UStruct* InStruct, EFieldIteratorFlags::SuperClassFlags InSuperClassFlags,
		EFieldIteratorFlags::DeprecatedPropertyFlags InDeprecatedFieldFlags = EFieldIteratorFlags::IncludeDeprecated,
		EFieldIteratorFlags::InterfaceClassFlags InInterfaceFieldFlags = EFieldIteratorFlags::ExcludeInterfaces)
		: TFieldIterator(
			  InStruct, (InSuperClassFlags == EFieldIteratorFlags::IncludeSuper ? EFieldIterationFlags::IncludeSuper
																				: EFieldIterationFlags::None) |
							(InDeprecatedFieldFlags == EFieldIteratorFlags::IncludeDeprecated
									? EFieldIterationFlags::IncludeDeprecated
									: EFieldIterationFlags::None) |
							(InInterfaceFieldFlags == EFieldIteratorFlags::IncludeInterfaces
									? EFieldIterationFlags::IncludeInterfaces
									: EFieldIterationFlags::None))
	{
	}

	FORCEINLINE explicit operator bool() const { return Field != nullptr; }
	FORCEINLINE bool operator!() const { return Field == nullptr; }

	FORCEINLINE void operator++()
	{
		Advance();
		SkipInvalid();
	}

	FORCEINLINE T* operator*() const { return (T*)Field; }
	FORCEINLINE T* operator->() const { return (T*)Field; }

	FORCEINLINE bool operator==(const TFieldIterator& Rhs) const { return Field == Rhs.Field; }
	FORCEINLINE bool operator!=(const TFieldIterator& Rhs) const { return Field != Rhs.Field; }

	/** The struct that owns the current field. */
	const UStruct* GetStruct() const { return Struct; }

private:
	using FieldBaseType = std::conditional_t<UE::CoreUObject::Private::TIsUField<T>, UField, FField>;

	void Start()
	{
		if constexpr (UE::CoreUObject::Private::TIsUField<T>)
		{
			Field = Struct->Children;
		}
		else
		{
			Field = Struct->ChildProperties;
		}
	}

	void Advance()
	{
		if (Field)
		{
			Field = Field->Next;
		}
	}

	bool IsMatch() const
	{
		if (!Field->IsA(T::StaticClass()))
		{
			return false;
		}
		if constexpr (!UE::CoreUObject::Private::TIsUField<T>)
		{
			if (!(IterationFlags & EFieldIterationFlags::IncludeDeprecated))
			{
				if (const FProperty* Property = CastField<FProperty>((FField*)Field))
				{
					return !Property->HasAnyPropertyFlags(CPF_Deprecated);
				}
			}
		}
		return true;
	}

	void SkipInvalid()
	{
		for (;;)
		{
			while (Field && !IsMatch())
			{
				Field = Field->Next;
			}
			if (Field || !(IterationFlags & EFieldIterationFlags::IncludeSuper) || !Struct)
			{
				return;
			}
			Struct = Struct->GetSuperStruct();
			if (!Struct)
			{
				return;
			}
			Start();
		}
	}

	const UStruct* Struct = nullptr;
	FieldBaseType* Field = nullptr;
	EFieldIterationFlags IterationFlags;
};

/** Range-for adaptor of TFieldIterator. */
template <class T>
struct TFieldRange
{
	TFieldRange(const UStruct* InStruct, EFieldIterationFlags InIterationFlags = EFieldIterationFlags::Default)
		: Begin(InStruct, InIterationFlags)
	{
	}

	TFieldRange(const UStruct* InStruct, EFieldIteratorFlags::SuperClassFlags InSuperClassFlags,
		EFieldIteratorFlags::DeprecatedPropertyFlags InDeprecatedFieldFlags = EFieldIteratorFlags::IncludeDeprecated,
		EFieldIteratorFlags::InterfaceClassFlags InInterfaceFieldFlags = EFieldIteratorFlags::ExcludeInterfaces)
		: Begin(InStruct, InSuperClassFlags, InDeprecatedFieldFlags, InInterfaceFieldFlags)
	{
	}

	friend TFieldIterator<T> begin(const TFieldRange& Range) { return Range.Begin; }
	friend TFieldIterator<T> end(const TFieldRange& Range) { return TFieldIterator<T>(nullptr); }

	TFieldIterator<T> Begin;
};

/** The property of this name and type in Owner or its super structs; null if absent or of another type. */
template <typename T>
T* FindFProperty(const UStruct* Owner, FName FieldName)
{
	if (!Owner || FieldName.IsNone())
	{
		return nullptr;
	}
	for (TFieldIterator<T> It(Owner, EFieldIterationFlags::IncludeSuper | EFieldIterationFlags::IncludeDeprecated); It;
		 ++It)
	{
		if (It->GetFName() == FieldName)
		{
			return *It;
		}
	}
	return nullptr;
}

/** The property at a field path "/Script/Module.Class:Property"; null if absent. */
COREUOBJECT_API FField* FindFPropertyByPath(const TCHAR* InFieldPath);

template <typename T>
T* FindFProperty(const TCHAR* InFieldPath)
{
	return CastField<T>(FindFPropertyByPath(InFieldPath));
}

// ---------------------------------------------------------------------------------------------------
// Editor change notifications.

namespace EPropertyChangeType
{
	typedef uint32 Type;

	inline constexpr Type Unspecified = 1 << 0;
	inline constexpr Type ArrayAdd = 1 << 1;
	inline constexpr Type ArrayRemove = 1 << 2;
	inline constexpr Type ArrayClear = 1 << 3;
	inline constexpr Type ValueSet = 1 << 4;
	inline constexpr Type Duplicate = 1 << 5;
	inline constexpr Type Interactive = 1 << 6;
	inline constexpr Type Redirected = 1 << 7;
	inline constexpr Type ArrayMove = 1 << 8;
	inline constexpr Type ResetToDefault = 1 << 9;
} // namespace EPropertyChangeType

/** Describes a change of a property made in the editor. */
struct FPropertyChangedEvent
{
	FPropertyChangedEvent(FProperty* InProperty,
		EPropertyChangeType::Type InChangeType = EPropertyChangeType::Unspecified,
		TArrayView<const UObject* const> InTopLevelObjects = TArrayView<const UObject* const>())
		: Property(InProperty)
		, MemberProperty(InProperty)
		, ChangeType(InChangeType)
		, TopLevelObjects(InTopLevelObjects)
	{
	}

	void SetActiveMemberProperty(FProperty* InActiveMemberProperty) { MemberProperty = InActiveMemberProperty; }

	FName GetPropertyName() const { return Property ? Property->GetFName() : NAME_None; }
	FName GetMemberPropertyName() const { return MemberProperty ? MemberProperty->GetFName() : NAME_None; }

	int32 GetNumObjectsBeingEdited() const { return TopLevelObjects.Num(); }
	const UObject* GetObjectBeingEdited(int32 Index) const
	{
		return TopLevelObjects.IsValidIndex(Index) ? TopLevelObjects[Index] : nullptr;
	}

	/** The property that changed (possibly inside a struct or container). */
	FProperty* Property;

	/** The member of the edited object that contains Property. */
	FProperty* MemberProperty;

	EPropertyChangeType::Type ChangeType;

	int32 ObjectIteratorIndex = INDEX_NONE;

private:
	TArrayView<const UObject* const> TopLevelObjects;
};

/** A property change with the chain of properties leading to it. */
struct FPropertyChangedChainEvent : public FPropertyChangedEvent
{
	FPropertyChangedChainEvent(TArray<FProperty*>& InPropertyChain, const FPropertyChangedEvent& SrcChangeEvent)
		: FPropertyChangedEvent(SrcChangeEvent)
		, PropertyChain(InPropertyChain)
	{
	}

	TArray<FProperty*>& PropertyChain;
};

#include "UObject/ReflectionOps.h"
