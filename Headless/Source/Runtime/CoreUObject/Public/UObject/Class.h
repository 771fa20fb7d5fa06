// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Templates/Function.h"
#include "UObject/Field.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Script.h"

#include <type_traits>

class FProperty;
class UClass;
class UEnum;
class UFunction;
class UScriptStruct;

namespace UE::CoreUObject::Private
{
	struct FReflectionRegistrar;
}

namespace EIncludeSuperFlag
{
	enum Type
	{
		ExcludeSuper,
		IncludeSuper
	};
}

#include "Class.generated.h"

/** A reflected member that is a UObject (functions, structs, classes, enums). */
UCLASS()
class COREUOBJECT_API UField : public UObject
{
	GENERATED_BODY()

public:
	UField() = default;

	/** The next field of the same owner. */
	UField* Next = nullptr;

	/** The class this field belongs to (itself for a class). */
	UClass* GetOwnerClass() const;

	/** The struct this field belongs to (itself for a struct). */
	UStruct* GetOwnerStruct() const;

#if WITH_EDITOR
	/** The DisplayName metadata, or the name made readable. */
	FText GetDisplayNameText() const;
	FText GetToolTipText(bool bShortTooltip = false) const;

	const FString& GetMetaData(const TCHAR* Key) const
	{
		return GetMetaData(FName(Key));
	}
	const FString& GetMetaData(const FName& Key) const;
	bool HasMetaData(const TCHAR* Key) const
	{
		return HasMetaData(FName(Key));
	}
	bool HasMetaData(const FName& Key) const;
	void SetMetaData(const TCHAR* Key, const TCHAR* InValue)
	{
		SetMetaData(FName(Key), InValue);
	}
	void SetMetaData(const FName& Key, const TCHAR* InValue);
	void RemoveMetaData(const FName& Key);
	bool GetBoolMetaData(const FName& Key) const;
	int32 GetIntMetaData(const FName& Key) const;
	const TMap<FName, FString>& GetMetaDataMap() const
	{
		return MetaDataMap;
	}

private:
	TMap<FName, FString> MetaDataMap;
#endif
};

/** A reflected layout: the base of script structs, classes and functions. */
UCLASS()
class COREUOBJECT_API UStruct : public UField
{
	GENERATED_BODY()

public:
	UStruct() = default;
	virtual ~UStruct() override;

	/** The struct this one derives from. */
	UStruct* GetSuperStruct() const { return SuperStruct; }
	virtual void SetSuperStruct(UStruct* NewSuperStruct);

	/** True if this struct is SomeBase or derives from it; false for null. */
	bool IsChildOf(const UStruct* SomeBase) const;

	template <class T>
	bool IsChildOf() const
	{
		return IsChildOf(T::StaticClass());
	}

	/** The property of this name in this struct or its super structs; null if none. */
	FProperty* FindPropertyByName(FName InName) const;

	/** The size of one instance, including the super struct's part. */
	int32 GetPropertiesSize() const { return PropertiesSize; }
	void SetPropertiesSize(int32 NewSize) { PropertiesSize = NewSize; }
	int32 GetMinAlignment() const { return MinAlignment; }
	void SetMinAlignment(int32 NewAlignment) { MinAlignment = NewAlignment; }
	int32 GetStructureSize() const;

	/** Adds a property at the head of ChildProperties (add in reverse to keep declaration order). */
	virtual void AddCppProperty(FProperty* Property);

	/**
	 * Lays out the properties: native structs keep their compiled offsets; properties of non-native
	 * structs are placed after the super struct's memory in ChildProperties order. Builds PropertyLink.
	 */
	virtual void Link(bool bRelinkExistingProperties);

	/** Link for structs built at run time. */
	void StaticLink(bool bRelinkExistingProperties = false) { Link(bRelinkExistingProperties); }

	/** Constructs the values of the properties this struct declares (not the super struct's) in Dest. */
	void InitializeStructProperties(void* Dest) const;

	/** Destroys the values of this struct's own properties in Dest. */
	void DestroyStructProperties(void* Dest) const;

	/** Writes the values of the struct's properties as "(Name=Value,...)", skipping values equal to Defaults. */
	void ExportText(FString& ValueStr, const void* Value, const void* Defaults, UObject* OwnerObject, int32 PortFlags,
		UObject* ExportRootScope) const;

	/** Reads "(Name=Value,...)"; returns the text after it, or null on a syntax error. */
	const TCHAR* ImportText(const TCHAR* Buffer, void* Value, UObject* OwnerObject, int32 PortFlags,
		FOutputDevice* ErrorText, const FString& StructName) const;

	/** Reports the object references in the properties of an instance. */
	void CollectReferences(void* Instance, FReferenceCollector& Collector, const UObject* ReferencingObject) const;

	/** True if any property (including super structs') can hold object references. */
	bool HasObjectReferences() const { return RefLink != nullptr; }

	/** True if this struct or a super struct declares the property. */
	bool ContainsProperty(const FProperty* Property) const;

	UStruct* SuperStruct = nullptr;

	/** Functions (and other UFields) of this struct. */
	UField* Children = nullptr;

	/** Properties declared by this struct, in declaration order. */
	FField* ChildProperties = nullptr;

	int32 PropertiesSize = 0;
	int32 MinAlignment = 1;

	/** Every property including super structs', own first. */
	FProperty* PropertyLink = nullptr;

	/** Properties that can hold object references. */
	FProperty* RefLink = nullptr;

	/** Properties that need destruction. */
	FProperty* DestructorLink = nullptr;

	/** Properties whose values a new object copies from its template. */
	FProperty* PostConstructLink = nullptr;

protected:
	/** True if the struct's own properties were compiled in (they keep their offsets). */
	virtual bool IsNativeLayout() const { return false; }
};

/** A reflected USTRUCT. */
UCLASS()
class COREUOBJECT_API UScriptStruct : public UStruct
{
	GENERATED_BODY()

public:
	/** Type-erased construction, copy, comparison and destruction of a native struct. */
	struct ICppStructOps
	{
		ICppStructOps(int32 InSize, int32 InAlignment)
			: Size(InSize)
			, Alignment(InAlignment)
		{
		}
		virtual ~ICppStructOps() = default;

		virtual bool HasZeroConstructor() = 0;
		virtual void Construct(void* Dest) = 0;
		virtual bool HasDestructor() = 0;
		virtual void Destruct(void* Dest) = 0;
		virtual bool IsPlainOldData() = 0;
		virtual bool Copy(void* Dest, void const* Src, int32 ArrayDim) = 0;
		virtual bool Identical(const void* A, const void* B, uint32 PortFlags, bool& bOutResult) = 0;
		virtual uint32 GetStructTypeHash(const void* Src) = 0;
		virtual bool HasGetTypeHash() = 0;

		/** True when the struct writes its own text form (a member ExportTextItem, as FSoftObjectPath has). */
		virtual bool HasExportTextItem() = 0;
		virtual bool ExportTextItem(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
			UObject* Parent, int32 PortFlags, UObject* ExportRootScope) = 0;

		/** True when the struct reads its own text form (a member ImportTextItem). */
		virtual bool HasImportTextItem() = 0;
		virtual bool ImportTextItem(
			const TCHAR*& Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) = 0;

		int32 GetSize() const { return Size; }
		int32 GetAlignment() const { return Alignment; }

	private:
		int32 Size;
		int32 Alignment;
	};

	template <class CPPSTRUCT>
	struct TCppStructOps final : public ICppStructOps
	{
		TCppStructOps()
			: ICppStructOps(sizeof(CPPSTRUCT), alignof(CPPSTRUCT))
		{
		}

		bool HasZeroConstructor() override { return false; }
		void Construct(void* Dest) override { ::new (Dest) CPPSTRUCT(); }
		bool HasDestructor() override { return !std::is_trivially_destructible_v<CPPSTRUCT>; }
		void Destruct(void* Dest) override { static_cast<CPPSTRUCT*>(Dest)->~CPPSTRUCT(); }
		bool IsPlainOldData() override { return std::is_trivially_copyable_v<CPPSTRUCT>; }
		bool Copy(void* Dest, void const* Src, int32 ArrayDim) override
		{
			if constexpr (std::is_copy_assignable_v<CPPSTRUCT>)
			{
				for (int32 Index = 0; Index < ArrayDim; ++Index)
				{
					static_cast<CPPSTRUCT*>(Dest)[Index] = static_cast<const CPPSTRUCT*>(Src)[Index];
				}
				return true;
			}
			return false;
		}
		bool Identical(const void* A, const void* B, uint32 PortFlags, bool& bOutResult) override
		{
			if constexpr (requires(const CPPSTRUCT& X) { X == X; })
			{
				bOutResult = *static_cast<const CPPSTRUCT*>(A) == *static_cast<const CPPSTRUCT*>(B);
				return true;
			}
			return false;
		}
		uint32 GetStructTypeHash(const void* Src) override
		{
			if constexpr (requires(const CPPSTRUCT& X) { GetTypeHash(X); })
			{
				return GetTypeHash(*static_cast<const CPPSTRUCT*>(Src));
			}
			return 0;
		}
		bool HasGetTypeHash() override
		{
			return requires(const CPPSTRUCT& X)
			{
				GetTypeHash(X);
			};
		}
		bool HasExportTextItem() override { return bHasExportTextItem; }
		bool ExportTextItem(FString& ValueStr, const void* PropertyValue, const void* DefaultValue, UObject* Parent,
			int32 PortFlags, UObject* ExportRootScope) override
		{
			if constexpr (bHasExportTextItem)
			{
				const CPPSTRUCT& Value = *static_cast<const CPPSTRUCT*>(PropertyValue);
				const CPPSTRUCT Defaults{};
				return Value.ExportTextItem(ValueStr,
					DefaultValue ? *static_cast<const CPPSTRUCT*>(DefaultValue) : Defaults, Parent, PortFlags,
					ExportRootScope);
			}
			return false;
		}
		bool HasImportTextItem() override { return bHasImportTextItem; }
		bool ImportTextItem(
			const TCHAR*& Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) override
		{
			if constexpr (bHasImportTextItem)
			{
				return static_cast<CPPSTRUCT*>(Data)->ImportTextItem(Buffer, PortFlags, OwnerObject, ErrorText);
			}
			return false;
		}

	private:
		static constexpr bool bHasExportTextItem = requires(const CPPSTRUCT& X, FString& Str)
		{
			X.ExportTextItem(Str, X, nullptr, 0, nullptr);
		};
		static constexpr bool bHasImportTextItem = requires(CPPSTRUCT & X, const TCHAR*& Buffer)
		{
			X.ImportTextItem(Buffer, 0, nullptr, (FOutputDevice*)nullptr);
		};
	};

	UScriptStruct() = default;
	virtual ~UScriptStruct() override;

	EStructFlags StructFlags = STRUCT_NoFlags;

	ICppStructOps* GetCppStructOps() const { return CppStructOps; }
	void SetCppStructOps(ICppStructOps* InOps) { CppStructOps = InOps; }

	/** Constructs ArrayDim values in Dest (native constructor, then the properties added at run time). */
	void InitializeStruct(void* Dest, int32 ArrayDim = 1) const;

	/** Destroys ArrayDim values in Dest. */
	void DestroyStruct(void* Dest, int32 ArrayDim = 1) const;

	/** Copies ArrayDim values from Src to Dest. */
	void CopyScriptStruct(void* Dest, void const* Src, int32 ArrayDim = 1) const;

	/** Resets the value in Dest to its defaults. */
	void ClearScriptStruct(void* Dest, int32 ArrayDim = 1) const;

	/** True if both values are equal (native operator== or property by property). */
	bool CompareScriptStruct(const void* A, const void* B, uint32 PortFlags) const;

	/** A hash of the value (native GetTypeHash or the properties' hashes combined). */
	uint32 GetStructTypeHash(const void* Src) const;

	virtual void Link(bool bRelinkExistingProperties) override;

protected:
	virtual bool IsNativeLayout() const override { return (StructFlags & STRUCT_Native) != 0; }

private:
	ICppStructOps* CppStructOps = nullptr;
};

/** A reflected function: its parameters are its properties, laid out in a parameter block. */
UCLASS()
class COREUOBJECT_API UFunction : public UStruct
{
	GENERATED_BODY()

public:
	UFunction() = default;

	EFunctionFlags FunctionFlags = FUNC_None;
	uint8 NumParms = 0;
	uint16 ParmsSize = 0;
	uint16 ReturnValueOffset = MAX_uint16;

	/** The native body; set by the generated code, or at run time for functions implemented elsewhere. */
	void SetNativeFunc(FNativeFuncPtr InFunc) { Func = InFunc; }
	FNativeFuncPtr GetNativeFunc() const { return Func; }

	/**
	 * Gives the function a body that is any callable (a function built at run time). It is called with
	 * the object, the frame (whose Locals is the parameter block) and the return value's address.
	 */
	void SetNativeCallable(TFunction<void(UObject*, FFrame&, void*)> InCallable);
	bool HasNativeCallable() const { return (bool)NativeCallable; }

	/** Runs the function's body on Obj. */
	void Invoke(UObject* Obj, FFrame& Stack, RESULT_DECL);

	bool HasAnyFunctionFlags(EFunctionFlags FlagsToCheck) const { return (FunctionFlags & FlagsToCheck) != 0; }
	bool HasAllFunctionFlags(EFunctionFlags FlagsToCheck) const
	{
		return (FunctionFlags & FlagsToCheck) == FlagsToCheck;
	}

	/** The return value property; null for functions without a return value. */
	FProperty* GetReturnProperty() const;

	/** The class the function belongs to. */
	UClass* GetOuterUClass() const;

	/** The function this one overrides. */
	UFunction* GetSuperFunction() const { return (UFunction*)GetSuperStruct(); }

	/** Computes NumParms, ParmsSize and ReturnValueOffset from the parameters. */
	virtual void Link(bool bRelinkExistingProperties) override;

	/** Constructs the parameters of a parameter block of ParmsSize bytes. */
	void InitializeParms(void* Parms) const { InitializeStructProperties(Parms); }
	void DestroyParms(void* Parms) const { DestroyStructProperties(Parms); }

protected:
	virtual bool IsNativeLayout() const override { return bNativeLayout; }

private:
	friend struct UE::CoreUObject::Private::FReflectionRegistrar;

	FNativeFuncPtr Func = nullptr;
	TFunction<void(UObject*, FFrame&, void*)> NativeCallable;
	bool bNativeLayout = false;
};

/** Constructs the native part of an object in place. */
typedef void (*ClassConstructorType)(const FObjectInitializer&);

/** Reports the references a class keeps outside its reflected properties. */
typedef void (*ClassAddReferencedObjectsType)(UObject*, FReferenceCollector&);

/** A reflected class. */
UCLASS()
class COREUOBJECT_API UClass : public UStruct
{
	GENERATED_BODY()

public:
	UClass() = default;

	/** Constructs the nearest native class in place. */
	ClassConstructorType ClassConstructor = nullptr;

	ClassAddReferencedObjectsType ClassAddReferencedObjects = nullptr;

	EClassFlags ClassFlags = CLASS_None;

	/** Counter used to make unique names for new objects of this class. */
	int32 ClassUnique = 0;

	/** The class objects of this class must live in. */
	UClass* ClassWithin = nullptr;

	/** The config file name ("Engine", "Game", ...) of config classes. */
	FName ClassConfigName;

	/** The class default object, once created. */
	UObject* ClassDefaultObject = nullptr;

	UClass* GetSuperClass() const { return (UClass*)GetSuperStruct(); }

	/** The class default object; created if absent and allowed; null if absent and not allowed. */
	UObject* GetDefaultObject(bool bCreateIfNeeded = true) const;

	template <class T>
	T* GetDefaultObject() const
	{
		UObject* Ret = GetDefaultObject();
		check(Ret->IsA(T::StaticClass()));
		return (T*)Ret;
	}

	/** "Default__<ClassName>". */
	FName GetDefaultObjectName() const;

	bool HasAnyClassFlags(EClassFlags FlagsToCheck) const { return (ClassFlags & FlagsToCheck) != 0; }
	bool HasAllClassFlags(EClassFlags FlagsToCheck) const { return (ClassFlags & FlagsToCheck) == FlagsToCheck; }
	EClassFlags GetClassFlags() const { return ClassFlags; }

	/** The function of this name in this class (or its super classes); null if none. */
	UFunction* FindFunctionByName(
		FName InName, EIncludeSuperFlag::Type IncludeSuper = EIncludeSuperFlag::IncludeSuper) const;

	void AddFunctionToFunctionMap(UFunction* Function, FName FuncName);
	void RemoveFunctionFromFunctionMap(UFunction* Function);

	/**
	 * The config file the class's values are read from and saved to: the branch of its config name (GEngineIni for
	 * config=Engine), loaded on demand for names the config system does not load at start.
	 */
	FString GetConfigName() const;

	/** Takes the constructor and reference reporter of the super class where this class has none. */
	virtual void Bind();

	virtual void Link(bool bRelinkExistingProperties) override;

	/** True if the class was compiled into a module (not built at run time). */
	bool IsNative() const { return HasAnyClassFlags(CLASS_Native); }

	/** Lays out the class's own properties (and checks native offsets) after they were added. */
	virtual void SetSuperStruct(UStruct* NewSuperStruct) override;

protected:
	virtual bool IsNativeLayout() const override { return HasAnyClassFlags(CLASS_Native); }

	/** Creates the class default object. */
	virtual UObject* CreateDefaultObject();

private:
	TMap<FName, UFunction*> FuncMap;
};

/** How the names of an enum are spelled in C++. */
UCLASS()
class COREUOBJECT_API UEnum : public UField
{
	GENERATED_BODY()

public:
	enum class ECppForm : uint8
	{
		/** enum EName { Value }: names are "Value". */
		Regular,
		/** namespace EName { enum Type { Value }; }: names are "EName::Value". */
		Namespaced,
		/** enum class EName { Value }: names are "EName::Value". */
		EnumClass
	};

	enum class EEnumFlags : uint8
	{
		None = 0,
		Flags = 1 << 0,
		NewerVersionExists = 1 << 1,
	};

	UEnum() = default;

	/** Replaces the names and values; adds the "<Enum>_MAX" entry when asked. */
	bool SetEnums(TArray<TPair<FName, int64>>& InNames, ECppForm InCppForm, EEnumFlags InFlags = EEnumFlags::None,
		bool bAddMaxKeyIfMissing = true);

	ECppForm GetCppForm() const { return CppForm; }

	/** The number of names, including the "<Enum>_MAX" entry. */
	int32 NumEnums() const { return Names.Num(); }

	/** The full name of the value ("EName::Value" for enum classes), or NAME_None. */
	FName GetNameByValue(int64 InValue) const;

	/** The short name of the value ("Value"), or an empty string. */
	FString GetNameStringByValue(int64 InValue) const;

	/** The value of a name (full or short); INDEX_NONE if none. */
	int64 GetValueByName(FName InName) const;
	int64 GetValueByNameString(const FString& SearchString) const;

	int32 GetIndexByName(FName InName) const;
	int32 GetIndexByNameString(const FString& SearchString) const;
	int32 GetIndexByValue(int64 Value) const;
	FName GetNameByIndex(int32 Index) const;
	FString GetNameStringByIndex(int32 InIndex) const;
	int64 GetValueByIndex(int32 Index) const;
	int64 GetMaxEnumValue() const;
	bool IsValidEnumValue(int64 InValue) const;
	bool IsValidEnumName(FName InName) const { return GetIndexByName(InName) != INDEX_NONE; }

	/** The enum's C++ name with the given value name ("EName::Value" or "Value"). */
	FString GenerateFullEnumName(const TCHAR* InEnumName) const;

	/** The short form of a full name. */
	FString GetNameStringWithoutPrefix(FName FullName) const;

#if WITH_EDITOR
	/** The DisplayName metadata of the value, or its short name. */
	FText GetDisplayNameTextByValue(int64 InValue) const;
	FText GetDisplayNameTextByIndex(int32 InIndex) const;

	/** Metadata of the enum (NameIndex INDEX_NONE) or of one of its values. */
	FString GetMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE) const;
	bool HasMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE) const;
	void SetMetaData(const TCHAR* Key, const TCHAR* InValue, int32 NameIndex = INDEX_NONE);
	void RemoveMetaData(const TCHAR* Key, int32 NameIndex = INDEX_NONE);
#endif

	TArray<TPair<FName, int64>> Names;
	ECppForm CppForm = ECppForm::Regular;
	EEnumFlags EnumFlags = EEnumFlags::None;
};

/** The UEnum of an enum type that has one (declared with UENUM). */
template <typename T>
UEnum* StaticEnum();

/** The UScriptStruct of a struct type that has one (declared with USTRUCT, or a core type). */
template <typename T>
UScriptStruct* StaticStruct();

template <class T>
struct TBaseStructure
{
	static UScriptStruct* Get() { return StaticStruct<T>(); }
};

template <class T>
inline const T* GetDefault(UClass* Class)
{
	check(Class->GetDefaultObject()->IsA(T::StaticClass()));
	return (const T*)Class->GetDefaultObject();
}

template <class T>
inline T* GetMutableDefault(UClass* Class)
{
	check(Class->GetDefaultObject()->IsA(T::StaticClass()));
	return (T*)Class->GetDefaultObject();
}

template <typename T>
T* FField::GetOwner() const
{
	if constexpr (std::is_base_of_v<UObject, T>)
	{
		UObject* Object = Owner.ToUObject();
		return Object && Object->IsA(T::StaticClass()) ? (T*)Object : nullptr;
	}
	else
	{
		return CastField<T>(Owner.ToField());
	}
}
