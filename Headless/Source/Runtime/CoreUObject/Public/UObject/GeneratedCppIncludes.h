// Copyright Orvane. All Rights Reserved.

#pragma once

// Everything the *.gen.cpp files written by the header tool need: the reflection types and the
// descriptions they fill in to register classes, structs, enums and functions.

#include "CoreMinimal.h"
#include "Templates/SubclassOf.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Package.h"
#include "UObject/ReflectionOps.h"
#include "UObject/Stack.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

#include <cstddef>
#include <type_traits>

namespace UE::CoreUObject::Private
{
	/** The kind of FProperty a description creates. */
	enum class EPropertyGenKind : uint8
	{
		Bool,
		Int8,
		Int16,
		Int,
		Int64,
		Byte,
		UInt16,
		UInt32,
		UInt64,
		Float,
		Double,
		Name,
		Str,
		Text,
		Object,
		Class,
		WeakObject,
		SoftObject,
		SoftClass,
		Struct,
		Enum,
		Array,
		Map,
		Set,
	};

	struct FMetaDataPairParam
	{
		const TCHAR* Key;
		const TCHAR* Value;
	};

	/** Describes one property of a class, struct or function (or the inner property of a container). */
	struct FPropertyParams
	{
		EPropertyGenKind Kind;
		const TCHAR* Name;
		EPropertyFlags Flags = CPF_None;
		int32 Offset = 0;
		int32 ArrayDim = 1;
		/** Size of the C++ member (of one element); checked against the property's own idea of it. */
		int32 ElementSize = 0;
		UClass* (*ClassFunc)() = nullptr;
		UClass* (*MetaClassFunc)() = nullptr;
		UScriptStruct* (*StructFunc)() = nullptr;
		UEnum* (*EnumFunc)() = nullptr;
		/** Bitfield bools: sets the bit in a container, so the byte and mask can be found. */
		void (*SetBitFunc)(void* Container) = nullptr;
		/** Array element, set element, map key, or the underlying integer of an enum. */
		const FPropertyParams* Inner = nullptr;
		/** Map value. */
		const FPropertyParams* ValueInner = nullptr;
		/** FScriptMapOps, FScriptSetOps or FSoftObjectValueOps of the member's type. */
		const void* Ops = nullptr;
		const FMetaDataPairParam* MetaData = nullptr;
		int32 NumMetaData = 0;
	};

	struct FFunctionParams
	{
		const TCHAR* Name;
		EFunctionFlags FunctionFlags;
		FNativeFuncPtr Func;
		int32 ParmsSize;
		int32 ParmsAlignment;
		const FPropertyParams* const* Properties;
		int32 NumProperties;
		const FMetaDataPairParam* MetaData;
		int32 NumMetaData;
	};

	struct FClassParams
	{
		const TCHAR* Name;
		const TCHAR* PackageName;
		UClass* (*SuperClassFunc)();
		UClass* (*WithinClassFunc)();
		ClassConstructorType ClassConstructor;
		ClassAddReferencedObjectsType ClassAddReferencedObjects;
		int32 PropertiesSize;
		int32 MinAlignment;
		EClassFlags ClassFlags;
		const TCHAR* ConfigName;
		const FPropertyParams* const* Properties;
		int32 NumProperties;
		const FFunctionParams* const* Functions;
		int32 NumFunctions;
		const FMetaDataPairParam* MetaData;
		int32 NumMetaData;
	};

	struct FStructParams
	{
		const TCHAR* Name;
		const TCHAR* PackageName;
		UScriptStruct* (*SuperStructFunc)();
		UScriptStruct::ICppStructOps* (*StructOpsFunc)();
		int32 Size;
		int32 Alignment;
		EStructFlags StructFlags;
		const FPropertyParams* const* Properties;
		int32 NumProperties;
		const FMetaDataPairParam* MetaData;
		int32 NumMetaData;
	};

	struct FEnumeratorParams
	{
		const TCHAR* Name;
		int64 Value;
		const FMetaDataPairParam* MetaData;
		int32 NumMetaData;
	};

	struct FEnumParams
	{
		const TCHAR* Name;
		const TCHAR* PackageName;
		UEnum::ECppForm CppForm;
		const FEnumeratorParams* Enumerators;
		int32 NumEnumerators;
		const FMetaDataPairParam* MetaData;
		int32 NumMetaData;
	};

	/** Creates (once) and returns the class an FClassParams describes; OutClass is set before its dependencies are
	 * resolved. */
	COREUOBJECT_API UClass* RegisterNativeClass(UClass*& OutClass, const FClassParams& Params);
	COREUOBJECT_API UScriptStruct* RegisterNativeStruct(UScriptStruct*& OutStruct, const FStructParams& Params);
	COREUOBJECT_API UEnum* RegisterNativeEnum(UEnum*& OutEnum, const FEnumParams& Params);

	/** Creates a property from its description, owned by Owner (a struct or a container property). */
	COREUOBJECT_API FProperty* ConstructFProperty(
		FFieldVariant Owner, const FPropertyParams& Params, int32 ContainerSize, int32 ContainerAlignment);

	/** Lists a compiled-in type so it is registered when the object system next processes new types. */
	struct COREUOBJECT_API FRegisterCompiledInInfo
	{
		explicit FRegisterCompiledInInfo(UObject* (*InRegister)());
	};

	/** The class constructor of a native class (null for C++-abstract classes). */
	template <class T, bool bWithInitializer>
	constexpr ClassConstructorType GetNativeClassConstructor()
	{
		if constexpr (std::is_abstract_v<T>)
		{
			return nullptr;
		}
		else if constexpr (bWithInitializer)
		{
			return [](const FObjectInitializer& X)
			{
				::new ((void*)X.GetObj()) T(X);
			};
		}
		else
		{
			return [](const FObjectInitializer& X)
			{
				::new ((void*)X.GetObj()) T();
			};
		}
	}

	template <class T>
	UScriptStruct::ICppStructOps* MakeStructOps()
	{
		static UScriptStruct::TCppStructOps<T> Ops;
		return &Ops;
	}

	/** The property kind of an integer type of the given size and signedness. */
	template <class IntType>
	constexpr EPropertyGenKind IntegerKindOf()
	{
		if constexpr (std::is_signed_v<IntType>)
		{
			return sizeof(IntType) == 1   ? EPropertyGenKind::Int8
				   : sizeof(IntType) == 2 ? EPropertyGenKind::Int16
				   : sizeof(IntType) == 4 ? EPropertyGenKind::Int
										  : EPropertyGenKind::Int64;
		}
		else
		{
			return sizeof(IntType) == 1   ? EPropertyGenKind::Byte
				   : sizeof(IntType) == 2 ? EPropertyGenKind::UInt16
				   : sizeof(IntType) == 4 ? EPropertyGenKind::UInt32
										  : EPropertyGenKind::UInt64;
		}
	}

	template <class EnumType>
	constexpr EPropertyGenKind EnumUnderlyingKindOf()
	{
		return IntegerKindOf<std::underlying_type_t<EnumType>>();
	}
} // namespace UE::CoreUObject::Private

#define UE_GENERATED_DISABLE_OFFSETOF_WARNING \
	_Pragma("GCC diagnostic push") _Pragma("GCC diagnostic ignored \"-Winvalid-offsetof\"")
#define UE_GENERATED_ENABLE_OFFSETOF_WARNING _Pragma("GCC diagnostic pop")

/** Setting a bit of an object's memory before its constructor has run must not trip the type checks of sanitizers. */
#define UE_GENERATED_NO_SANITIZE_VPTR __attribute__((no_sanitize("vptr")))
