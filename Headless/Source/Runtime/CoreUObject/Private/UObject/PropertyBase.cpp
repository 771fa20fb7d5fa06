// Copyright Orvane. All Rights Reserved.

#include "ObjectInternals.h"
#include "PropertyText.h"
#include "UObject/UnrealType.h"

#include <cstdlib>

using namespace UE::CoreUObject::Private;

#define IMPLEMENT_FIELD(TClass, TName)                                       \
	FFieldClass* TClass::StaticClass()                                       \
	{                                                                        \
		static FFieldClass Class(TEXT(TName), TClass::Super::StaticClass()); \
		return &Class;                                                       \
	}

IMPLEMENT_FIELD(FProperty, "Property")
IMPLEMENT_FIELD(FNumericProperty, "NumericProperty")
IMPLEMENT_FIELD(FInt8Property, "Int8Property")
IMPLEMENT_FIELD(FInt16Property, "Int16Property")
IMPLEMENT_FIELD(FIntProperty, "IntProperty")
IMPLEMENT_FIELD(FInt64Property, "Int64Property")
IMPLEMENT_FIELD(FByteProperty, "ByteProperty")
IMPLEMENT_FIELD(FUInt16Property, "UInt16Property")
IMPLEMENT_FIELD(FUInt32Property, "UInt32Property")
IMPLEMENT_FIELD(FUInt64Property, "UInt64Property")
IMPLEMENT_FIELD(FFloatProperty, "FloatProperty")
IMPLEMENT_FIELD(FDoubleProperty, "DoubleProperty")
IMPLEMENT_FIELD(FBoolProperty, "BoolProperty")
IMPLEMENT_FIELD(FNameProperty, "NameProperty")
IMPLEMENT_FIELD(FStrProperty, "StrProperty")
IMPLEMENT_FIELD(FTextProperty, "TextProperty")

// ---------------------------------------------------------------------------------------------------
// FProperty

FProperty::FProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FField(InOwner, InName, InObjectFlags)
{
}

FProperty::FProperty(
	FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags, int32 InOffset, EPropertyFlags InFlags)
	: FField(InOwner, InName, InObjectFlags)
	, PropertyFlags(InFlags)
	, Offset_Internal(InOffset)
{
}

int32 FProperty::Link()
{
	LinkInternal();
	return GetSize();
}

void FProperty::CopyCompleteValue(void* Dest, void const* Src) const
{
	if (Dest == Src)
	{
		return;
	}
	if (PropertyFlags & CPF_IsPlainOldData)
	{
		FMemory::Memcpy(Dest, Src, (SIZE_T)ElementSize * ArrayDim);
	}
	else
	{
		CopyValuesInternal(Dest, Src, ArrayDim);
	}
}

void FProperty::CopySingleValue(void* Dest, void const* Src) const
{
	if (Dest == Src)
	{
		return;
	}
	if (PropertyFlags & CPF_IsPlainOldData)
	{
		FMemory::Memcpy(Dest, Src, ElementSize);
	}
	else
	{
		CopyValuesInternal(Dest, Src, 1);
	}
}

bool FProperty::Identical_InContainer(const void* A, const void* B, int32 ArrayIndex, uint32 PortFlags) const
{
	return Identical(ContainerPtrToValuePtr<void>(A, ArrayIndex),
		B ? ContainerPtrToValuePtr<void>(B, ArrayIndex) : nullptr, PortFlags);
}

void FProperty::InitializeValue(void* Dest) const
{
	if (PropertyFlags & CPF_ZeroConstructor)
	{
		FMemory::Memzero(Dest, (SIZE_T)ElementSize * ArrayDim);
	}
	else
	{
		InitializeValueInternal(Dest);
	}
}

void FProperty::DestroyValue(void* Dest) const
{
	if (!(PropertyFlags & CPF_NoDestructor))
	{
		DestroyValueInternal(Dest);
	}
}

void FProperty::ClearValue(void* Data) const
{
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		ClearValueInternal((uint8*)Data + Index * ElementSize);
	}
}

void FProperty::InitializeValueInternal(void* Dest) const
{
	FMemory::Memzero(Dest, (SIZE_T)ElementSize * ArrayDim);
}

void FProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	FMemory::Memcpy(Dest, Src, (SIZE_T)ElementSize * Count);
}

void FProperty::ClearValueInternal(void* Data) const
{
	DestroyValueInternal(Data);
	FMemory::Memzero(Data, ElementSize);
	if (!(PropertyFlags & CPF_ZeroConstructor))
	{
		InitializeValueInternal(Data);
	}
}

uint32 FProperty::GetValueTypeHashInternal(const void* Src) const
{
	checkf(false, TEXT("%s cannot be hashed"), *GetFullName());
	return 0;
}

bool FProperty::SameType(const FProperty* Other) const
{
	return Other && GetClass() == Other->GetClass();
}

bool FProperty::ShouldSerializeValue() const
{
	return !HasAnyPropertyFlags(CPF_Transient | CPF_Deprecated | CPF_SkipSerialization);
}

void FProperty::ExportTextItem_Direct(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ExportText_Internal(ValueStr, PropertyValue, DefaultValue, Parent, PortFlags, ExportRootScope);
}

void FProperty::ExportTextItem_InContainer(FString& ValueStr, const void* Container, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ExportText_Internal(ValueStr, ContainerPtrToValuePtr<void>(Container),
		DefaultValue ? ContainerPtrToValuePtr<void>(DefaultValue) : nullptr, Parent, PortFlags, ExportRootScope);
}

bool FProperty::ExportText_Direct(FString& ValueStr, const void* Data, const void* Delta, UObject* Parent,
	int32 PortFlags, UObject* ExportRootScope) const
{
	if (Data == Delta || !Identical(Data, Delta, PortFlags))
	{
		ExportText_Internal(ValueStr, Data, Delta, Parent, PortFlags, ExportRootScope);
		return true;
	}
	return false;
}

const TCHAR* FProperty::ImportText_Direct(
	const TCHAR* Buffer, void* PropertyPtr, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText) const
{
	if (!Buffer)
	{
		return nullptr;
	}
	return ImportText_Internal(Buffer, PropertyPtr, PortFlags, OwnerObject, ErrorText);
}

const TCHAR* FProperty::ImportText_InContainer(
	const TCHAR* Buffer, void* Container, UObject* OwnerObject, int32 PortFlags, FOutputDevice* ErrorText) const
{
	return ImportText_Direct(Buffer, ContainerPtrToValuePtr<void>(Container), OwnerObject, PortFlags, ErrorText);
}

const TCHAR* FProperty::SkipWhitespace(const TCHAR* Buffer)
{
	while (*Buffer == TEXT(' ') || *Buffer == TEXT('\t'))
	{
		++Buffer;
	}
	return Buffer;
}

const TCHAR* FProperty::ReadToken(const TCHAR* Buffer, FString& Out, bool bDottedNames)
{
	Out.Reset();
	if (*Buffer == TEXT('"'))
	{
		return ReadQuoted(Buffer, Out);
	}
	while (*Buffer && *Buffer != TEXT(',') && *Buffer != TEXT(')') && *Buffer != TEXT('(') && *Buffer != TEXT('\n') &&
		   *Buffer != TEXT('\r'))
	{
		Out += *Buffer++;
	}
	Out.TrimEndInline();
	return Buffer;
}

void FProperty::ExportQuotedIfDelimited(FString& ValueStr, const FString& Value, int32 PortFlags)
{
	if (PortFlags & PPF_Delimited)
	{
		AppendQuoted(ValueStr, Value);
	}
	else
	{
		ValueStr += Value;
	}
}

// ---------------------------------------------------------------------------------------------------
// Numbers

bool FNumericProperty::CanHoldValue(int64 Value) const
{
	if (IsFloatingPoint() || ElementSize >= 8)
	{
		return true;
	}
	uint8 AllOnes[8];
	FMemory::Memset(AllOnes, 0xff, sizeof(AllOnes));
	const bool bSigned = GetSignedIntPropertyValue(AllOnes) < 0;
	const int32 Bits = ElementSize * 8;
	if (bSigned)
	{
		return Value >= -(int64(1) << (Bits - 1)) && Value < (int64(1) << (Bits - 1));
	}
	return Value >= 0 && Value < (int64(1) << Bits);
}

const TCHAR* ImportNumericText(
	const TCHAR* Buffer, bool bFloatingPoint, bool bSigned, int64& OutInt, uint64& OutUInt, double& OutDouble)
{
	const TCHAR* Start = Buffer;
	const TCHAR* Cursor = Buffer;
	if (*Cursor == TEXT('+') || *Cursor == TEXT('-'))
	{
		++Cursor;
	}
	const bool bHex = Cursor[0] == TEXT('0') && (Cursor[1] == TEXT('x') || Cursor[1] == TEXT('X'));
	if (bHex && !bFloatingPoint)
	{
		Cursor += 2;
		while (FChar::IsHexDigit(*Cursor))
		{
			++Cursor;
		}
	}
	else
	{
		bool bDigits = false;
		while (FChar::IsDigit(*Cursor))
		{
			++Cursor;
			bDigits = true;
		}
		if (*Cursor == TEXT('.'))
		{
			++Cursor;
			while (FChar::IsDigit(*Cursor))
			{
				++Cursor;
				bDigits = true;
			}
		}
		if (bDigits && (*Cursor == TEXT('e') || *Cursor == TEXT('E')))
		{
			const TCHAR* Exponent = Cursor + 1;
			if (*Exponent == TEXT('+') || *Exponent == TEXT('-'))
			{
				++Exponent;
			}
			if (FChar::IsDigit(*Exponent))
			{
				Cursor = Exponent;
				while (FChar::IsDigit(*Cursor))
				{
					++Cursor;
				}
			}
		}
		if (!bDigits)
		{
			return nullptr;
		}
	}
	// A trailing 'f' of a float literal is accepted, as in config files.
	std::string Text(TCHAR_TO_UTF8(*FString((int32)(Cursor - Start), Start)));
	if (bFloatingPoint && (*Cursor == TEXT('f') || *Cursor == TEXT('F')))
	{
		++Cursor;
	}
	if (bFloatingPoint)
	{
		OutDouble = std::strtod(Text.c_str(), nullptr);
	}
	else if (bSigned)
	{
		OutInt = std::strtoll(Text.c_str(), nullptr, 0);
		if (Text.find('.') != std::string::npos || Text.find_first_of("eE") != std::string::npos)
		{
			OutInt = (int64)std::strtod(Text.c_str(), nullptr);
		}
	}
	else
	{
		if (!Text.empty() && Text[0] == '-')
		{
			OutUInt = (uint64)std::strtoll(Text.c_str(), nullptr, 0);
		}
		else
		{
			OutUInt = std::strtoull(Text.c_str(), nullptr, 0);
		}
		if (Text.find('.') != std::string::npos || (!bHex && Text.find_first_of("eE") != std::string::npos))
		{
			OutUInt = (uint64)std::strtod(Text.c_str(), nullptr);
		}
	}
	return Cursor;
}

#define IMPLEMENT_NUMERIC_PROPERTY(Name, CppType, CppName)                             \
	Name::Name(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags) \
		: TProperty_Numeric<CppType>(InOwner, InName, InObjectFlags)                   \
	{                                                                                  \
	}                                                                                  \
	FString Name::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const   \
	{                                                                                  \
		return TEXT(CppName);                                                          \
	}

IMPLEMENT_NUMERIC_PROPERTY(FInt8Property, int8, "int8")
IMPLEMENT_NUMERIC_PROPERTY(FInt16Property, int16, "int16")
IMPLEMENT_NUMERIC_PROPERTY(FIntProperty, int32, "int32")
IMPLEMENT_NUMERIC_PROPERTY(FInt64Property, int64, "int64")
IMPLEMENT_NUMERIC_PROPERTY(FUInt16Property, uint16, "uint16")
IMPLEMENT_NUMERIC_PROPERTY(FUInt32Property, uint32, "uint32")
IMPLEMENT_NUMERIC_PROPERTY(FUInt64Property, uint64, "uint64")
IMPLEMENT_NUMERIC_PROPERTY(FFloatProperty, float, "float")
IMPLEMENT_NUMERIC_PROPERTY(FDoubleProperty, double, "double")

namespace UE::CoreUObject::Private
{
	/** Exports an enum value by its short enumerator name; values without a name as their number. */
	void ExportEnumValue(FString& ValueStr, const UEnum* Enum, int64 Value)
	{
		const FString Name = Enum->GetNameStringByValue(Value);
		if (Name.IsEmpty())
		{
			ValueStr += LexToString(Value);
		}
		else
		{
			ValueStr += Name;
		}
	}

	/** Imports an enum value given by name (short or full) or number. */
	const TCHAR* ImportEnumValue(const TCHAR* Buffer, const UEnum* Enum, int64& OutValue, FOutputDevice* ErrorText)
	{
		const TCHAR* Cursor = Buffer;
		if (FChar::IsDigit(*Cursor) || *Cursor == TEXT('-'))
		{
			int64 IntValue = 0;
			uint64 UIntValue = 0;
			double DoubleValue = 0.0;
			const TCHAR* End = ImportNumericText(Cursor, false, true, IntValue, UIntValue, DoubleValue);
			if (End)
			{
				OutValue = IntValue;
				return End;
			}
		}
		FString Token;
		while (FChar::IsAlnum(*Cursor) || *Cursor == TEXT('_') || *Cursor == TEXT(':'))
		{
			Token += *Cursor++;
		}
		const int64 Value = Enum->GetValueByNameString(Token);
		if (Token.IsEmpty() || (Value == INDEX_NONE && !Enum->IsValidEnumName(FName(*Token))))
		{
			ReportImportError(
				ErrorText, FString::Printf(TEXT("'%s' is not a value of enum %s"), *Token, *Enum->GetName()));
			return nullptr;
		}
		OutValue = Value;
		return Cursor;
	}
} // namespace UE::CoreUObject::Private

// ---------------------------------------------------------------------------------------------------
// FByteProperty

FByteProperty::FByteProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: TProperty_Numeric<uint8>(InOwner, InName, InObjectFlags)
{
}

FString FByteProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (Enum)
	{
		return FString::Printf(TEXT("TEnumAsByte<%s>"), *Enum->GetName());
	}
	return TEXT("uint8");
}

bool FByteProperty::SameType(const FProperty* Other) const
{
	return FProperty::SameType(Other) && ((const FByteProperty*)Other)->Enum == Enum;
}

void FByteProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	if (Enum)
	{
		ExportEnumValue(ValueStr, Enum, *(const uint8*)PropertyValue);
		return;
	}
	TProperty_Numeric<uint8>::ExportText_Internal(
		ValueStr, PropertyValue, DefaultValue, Parent, PortFlags, ExportRootScope);
}

const TCHAR* FByteProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	if (Enum)
	{
		int64 Value = 0;
		const TCHAR* End = ImportEnumValue(Buffer, Enum, Value, ErrorText);
		if (End)
		{
			*(uint8*)Data = (uint8)Value;
		}
		return End;
	}
	return TProperty_Numeric<uint8>::ImportText_Internal(Buffer, Data, PortFlags, OwnerObject, ErrorText);
}

// ---------------------------------------------------------------------------------------------------
// FBoolProperty

FBoolProperty::FBoolProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FProperty(InOwner, InName, InObjectFlags)
{
	ElementSize = 1;
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

void FBoolProperty::SetBoolSize(const uint32 InSize, const bool bIsNativeBool, const uint32 InBitMask)
{
	if (bIsNativeBool)
	{
		FieldSize = (uint8)InSize;
		ByteOffset = 0;
		ByteMask = 1;
		FieldMask = 0xff;
		ElementSize = (int32)InSize;
		return;
	}
	const uint32 Mask = InBitMask ? InBitMask : 1;
	uint8 Offset = 0;
	uint32 Shifted = Mask;
	while (Shifted > 0xff)
	{
		Shifted >>= 8;
		++Offset;
	}
	SetBitfield(Offset, (uint8)Shifted, (uint8)InSize);
}

void FBoolProperty::SetBitfield(uint8 InByteOffset, uint8 InByteMask, uint8 InFieldSize)
{
	check(InByteMask != 0 && (InByteMask & (InByteMask - 1)) == 0);
	FieldSize = InFieldSize;
	ByteOffset = InByteOffset;
	ByteMask = InByteMask;
	FieldMask = InByteMask;
	ElementSize = InFieldSize;
}

bool FBoolProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	return GetPropertyValue(A) == (B ? GetPropertyValue(B) : false);
}

FString FBoolProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	if (IsNativeBool())
	{
		return TEXT("bool");
	}
	switch (FieldSize)
	{
		case 2:
			return TEXT("uint16");
		case 4:
			return TEXT("uint32");
		case 8:
			return TEXT("uint64");
		default:
			return TEXT("uint8");
	}
}

void FBoolProperty::InitializeValueInternal(void* Dest) const
{
	for (int32 Index = 0; Index < ArrayDim; ++Index)
	{
		SetPropertyValue((uint8*)Dest + Index * ElementSize, false);
	}
}

void FBoolProperty::CopyValuesInternal(void* Dest, void const* Src, int32 Count) const
{
	for (int32 Index = 0; Index < Count; ++Index)
	{
		SetPropertyValue((uint8*)Dest + Index * ElementSize, GetPropertyValue((const uint8*)Src + Index * ElementSize));
	}
}

void FBoolProperty::ClearValueInternal(void* Data) const
{
	SetPropertyValue(Data, false);
}

uint32 FBoolProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetPropertyValue(Src) ? 1u : 0u;
}

void FBoolProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ValueStr += GetPropertyValue(PropertyValue) ? TEXT("True") : TEXT("False");
}

const TCHAR* FBoolProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	FString Token;
	const TCHAR* Cursor = Buffer;
	while (FChar::IsAlnum(*Cursor) || *Cursor == TEXT('_'))
	{
		Token += *Cursor++;
	}
	if (Token == TEXT("True") || Token == TEXT("Yes") || Token == TEXT("On") || Token == TEXT("1"))
	{
		SetPropertyValue(Data, true);
		return Cursor;
	}
	if (Token == TEXT("False") || Token == TEXT("No") || Token == TEXT("Off") || Token == TEXT("0"))
	{
		SetPropertyValue(Data, false);
		return Cursor;
	}
	ReportImportError(ErrorText, FString::Printf(TEXT("Illegal value '%s' for bool property %s"), *Token, *GetName()));
	return nullptr;
}

// ---------------------------------------------------------------------------------------------------
// FNameProperty, FStrProperty, FTextProperty

FNameProperty::FNameProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FNameProperty_Super(InOwner, InName, InObjectFlags)
{
	PropertyFlags |= CPF_IsPlainOldData | CPF_NoDestructor | CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

FString FNameProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return TEXT("FName");
}

void FNameProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ExportQuotedIfDelimited(ValueStr, GetPropertyValue(PropertyValue).ToString(), PortFlags);
}

const TCHAR* FNameProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	if (!(PortFlags & PPF_Delimited))
	{
		// Outside a struct or container the whole text is the value.
		SetPropertyValue(Data, FName(Buffer));
		return Buffer + FCString::Strlen(Buffer);
	}
	FString Token;
	const TCHAR* End = ReadToken(Buffer, Token, true);
	if (!End)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Unterminated name for %s"), *GetName()));
		return nullptr;
	}
	SetPropertyValue(Data, FName(*Token));
	return End;
}

FStrProperty::FStrProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FStrProperty_Super(InOwner, InName, InObjectFlags)
{
	PropertyFlags |= CPF_ZeroConstructor | CPF_HasGetValueTypeHash;
}

FString FStrProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return TEXT("FString");
}

bool FStrProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const FString& Value = GetPropertyValue(A);
	return B ? Value.Equals(GetPropertyValue(B), ESearchCase::CaseSensitive) : Value.IsEmpty();
}

void FStrProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	ExportQuotedIfDelimited(ValueStr, GetPropertyValue(PropertyValue), PortFlags);
}

const TCHAR* FStrProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	if (!(PortFlags & PPF_Delimited))
	{
		SetPropertyValue(Data, FString(Buffer));
		return Buffer + FCString::Strlen(Buffer);
	}
	FString Token;
	const TCHAR* End = ReadToken(Buffer, Token);
	if (!End)
	{
		ReportImportError(ErrorText, FString::Printf(TEXT("Unterminated string for %s"), *GetName()));
		return nullptr;
	}
	SetPropertyValue(Data, Token);
	return End;
}

FTextProperty::FTextProperty(FFieldVariant InOwner, const FName& InName, EObjectFlags InObjectFlags)
	: FTextProperty_Super(InOwner, InName, InObjectFlags)
{
}

FString FTextProperty::GetCPPType(FString* ExtendedTypeText, uint32 CPPExportFlags) const
{
	return TEXT("FText");
}

bool FTextProperty::Identical(const void* A, const void* B, uint32 PortFlags) const
{
	const FText& Value = GetPropertyValue(A);
	return B ? Value.ToString().Equals(GetPropertyValue(B).ToString(), ESearchCase::CaseSensitive) : Value.IsEmpty();
}

uint32 FTextProperty::GetValueTypeHashInternal(const void* Src) const
{
	return GetTypeHash(GetPropertyValue(Src).ToString());
}

void FTextProperty::ExportText_Internal(FString& ValueStr, const void* PropertyValue, const void* DefaultValue,
	UObject* Parent, int32 PortFlags, UObject* ExportRootScope) const
{
	// Texts without a localization key are written as culture-invariant texts.
	ValueStr += TEXT("INVTEXT(");
	AppendQuoted(ValueStr, GetPropertyValue(PropertyValue).ToString());
	ValueStr += TEXT(")");
}

const TCHAR* FTextProperty::ImportText_Internal(
	const TCHAR* Buffer, void* Data, int32 PortFlags, UObject* OwnerObject, FOutputDevice* ErrorText) const
{
	auto ReadMacro = [&](const TCHAR* Macro, int32 NumArguments, FString& OutSource) -> const TCHAR*
	{
		const int32 MacroLen = FCString::Strlen(Macro);
		if (FCString::Strncmp(Buffer, Macro, MacroLen) != 0)
		{
			return nullptr;
		}
		const TCHAR* Cursor = SkipWhitespace(Buffer + MacroLen);
		for (int32 Argument = 0; Argument < NumArguments; ++Argument)
		{
			Cursor = SkipWhitespace(Cursor);
			if (*Cursor != TEXT('"'))
			{
				return nullptr;
			}
			Cursor = ReadQuoted(Cursor, OutSource);
			if (!Cursor)
			{
				return nullptr;
			}
			Cursor = SkipWhitespace(Cursor);
			if (Argument + 1 < NumArguments)
			{
				if (*Cursor != TEXT(','))
				{
					return nullptr;
				}
				++Cursor;
			}
		}
		if (*Cursor != TEXT(')'))
		{
			return nullptr;
		}
		return Cursor + 1;
	};
	FString Source;
	const TCHAR* End = nullptr;
	if ((End = ReadMacro(TEXT("INVTEXT("), 1, Source)) || (End = ReadMacro(TEXT("NSLOCTEXT("), 3, Source)) ||
		(End = ReadMacro(TEXT("LOCTEXT("), 2, Source)))
	{
		SetPropertyValue(Data, FText::FromString(Source));
		return End;
	}
	if (*Buffer == TEXT('"'))
	{
		End = ReadQuoted(Buffer, Source);
		if (!End)
		{
			ReportImportError(ErrorText, FString::Printf(TEXT("Unterminated text for %s"), *GetName()));
			return nullptr;
		}
		SetPropertyValue(Data, FText::FromString(Source));
		return End;
	}
	if (!(PortFlags & PPF_Delimited))
	{
		SetPropertyValue(Data, FText::FromString(FString(Buffer)));
		return Buffer + FCString::Strlen(Buffer);
	}
	End = ReadToken(Buffer, Source);
	SetPropertyValue(Data, FText::FromString(Source));
	return End;
}
