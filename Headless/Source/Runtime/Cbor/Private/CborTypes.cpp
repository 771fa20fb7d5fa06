// Copyright Orvane. All Rights Reserved.

#include "CborTypes.h"

#include "Containers/StringConv.h"
#include "Misc/AssertionMacros.h"
#include "Serialization/Archive.h"

ScopedCborArchiveEndianness::ScopedCborArchiveEndianness(FArchive& InArchive, ECborEndianness Endianness)
	: Archive(InArchive)
	, bOldByteSwappingState(InArchive.IsByteSwapping())
{
	// The platform is little endian, so only big-endian data needs its bytes swapped.
	Archive.SetByteSwapping(Endianness == ECborEndianness::BigEndian);
}

ScopedCborArchiveEndianness::~ScopedCborArchiveEndianness()
{
	Archive.SetByteSwapping(bOldByteSwappingState);
}

FCborContext::FCborContext()
	: UIntValue(0)
	, Header(ECborCode::Dummy)
{
}

FCborContext::FCborContext(ECborCode Code)
	: UIntValue(0)
	, Header(Code)
{
}

void FCborContext::Reset()
{
	Header.Set(ECborCode::Dummy);
	UIntValue = 0;
	RawTextValue.Reset();
}

bool FCborContext::IsError() const
{
	const ECborCode Additional = Header.AdditionalValue();
	return Additional == ECborCode::Unused_29 || Additional == ECborCode::Unused_30;
}

bool FCborContext::IsContainer() const
{
	const ECborCode Major = Header.MajorType();
	if (Major == ECborCode::Array || Major == ECborCode::Map)
	{
		return !IsError() && !IsDummy() && RawCode() != ECborCode::Break;
	}
	return IsString() && Header.AdditionalValue() == ECborCode::Indefinite;
}

bool FCborContext::IsIndefiniteContainer() const
{
	return IsContainer() && Header.AdditionalValue() == ECborCode::Indefinite;
}

bool FCborContext::IsFiniteContainer() const
{
	return IsContainer() && Header.AdditionalValue() != ECborCode::Indefinite;
}

bool FCborContext::IsString() const
{
	if (IsError() || Header.RawCode() == ECborCode::Break)
	{
		return false;
	}
	const ECborCode Major = Header.MajorType();
	return Major == ECborCode::ByteString || Major == ECborCode::TextString;
}

uint64 FCborContext::AsLength() const
{
	check(IsString() || IsContainer());
	return IsIndefiniteContainer() ? 0 : Length;
}

uint64 FCborContext::AsUInt() const
{
	check(Header.MajorType() == ECborCode::Uint || Header.MajorType() == ECborCode::Tag);
	return UIntValue;
}

int64 FCborContext::AsInt() const
{
	check(Header.MajorType() == ECborCode::Uint || Header.MajorType() == ECborCode::Int);
	return IntValue;
}

bool FCborContext::AsBool() const
{
	check(Header.RawCode() == (ECborCode::Prim | ECborCode::False) ||
		  Header.RawCode() == (ECborCode::Prim | ECborCode::True));
	return BoolValue;
}

float FCborContext::AsFloat() const
{
	check(Header.RawCode() == (ECborCode::Prim | ECborCode::Value_2Bytes) ||
		  Header.RawCode() == (ECborCode::Prim | ECborCode::Value_4Bytes));
	return FloatValue;
}

double FCborContext::AsDouble() const
{
	check(Header.RawCode() == (ECborCode::Prim | ECborCode::Value_8Bytes));
	return DoubleValue;
}

FString FCborContext::AsString() const
{
	check(Header.MajorType() == ECborCode::TextString && !IsContainer() && !IsError() && !IsBreak());
	const int32 Count = RawTextValue.Num() > 0 ? RawTextValue.Num() - 1 : 0;
	return FString(Count, reinterpret_cast<const UTF8CHAR*>(RawTextValue.GetData()));
}

const char* FCborContext::AsCString() const
{
	check(Header.MajorType() == ECborCode::TextString && !IsContainer() && !IsError() && !IsBreak());
	return RawTextValue.Num() > 0 ? RawTextValue.GetData() : "";
}

TArrayView<const uint8> FCborContext::AsByteArray() const
{
	check(Header.MajorType() == ECborCode::ByteString && !IsContainer() && !IsError() && !IsBreak());
	return TArrayView<const uint8>(reinterpret_cast<const uint8*>(RawTextValue.GetData()), RawTextValue.Num());
}

ECborCode FCborContext::AsBreak() const
{
	check(Header.RawCode() == ECborCode::Break && RawTextValue.Num() == 1);
	return static_cast<ECborCode>(static_cast<uint8>(RawTextValue[0]));
}
