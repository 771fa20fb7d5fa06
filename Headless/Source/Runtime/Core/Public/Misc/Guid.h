// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Templates/TypeHash.h"

/** Text forms of a GUID. */
enum class EGuidFormats
{
	/** 32 digits: "00000000000000000000000000000000". */
	Digits,
	/** 32 lower-case digits. */
	DigitsLower,
	/** 32 digits in hyphen-separated groups: "00000000-0000-0000-0000-000000000000". */
	DigitsWithHyphens,
	/** DigitsWithHyphens in lower case. */
	DigitsWithHyphensLower,
	/** DigitsWithHyphens in braces: "{00000000-0000-0000-0000-000000000000}". */
	DigitsWithHyphensInBraces,
	/** DigitsWithHyphens in parentheses: "(00000000-0000-0000-0000-000000000000)". */
	DigitsWithHyphensInParentheses,
	/** Hexadecimal values in braces: "{0x00000000,0x0000,0x0000,{0x00,0x00,0x00,0x00,0x00,0x00,0x00,0x00}}". */
	HexValuesInBraces,
	/** The four components in groups: "00000000-00000000-00000000-00000000". */
	UniqueObjectGuid,
	/** 22 characters of URL-safe base64 without padding. */
	Short,
	/** 25 characters of base 36. */
	Base36Encoded,
};

/** A 128-bit globally unique identifier. The zero GUID is the invalid one. */
struct CORE_API FGuid
{
	uint32 A = 0;
	uint32 B = 0;
	uint32 C = 0;
	uint32 D = 0;

	FGuid() = default;

	FGuid(uint32 InA, uint32 InB, uint32 InC, uint32 InD)
		: A(InA)
		, B(InB)
		, C(InC)
		, D(InD)
	{
	}

	/** Parses any of the text forms; text that is not a GUID gives the invalid GUID. */
	explicit FGuid(const FString& InGuidStr);

	/** A new random (version 4) GUID. */
	static FGuid NewGuid();

	bool IsValid() const { return (A | B | C | D) != 0; }
	void Invalidate() { A = B = C = D = 0; }

	FString ToString(EGuidFormats Format = EGuidFormats::Digits) const;
	void AppendString(FString& Out, EGuidFormats Format = EGuidFormats::Digits) const;

	/** Parses GuidString in whichever form its length and punctuation identify. */
	static bool Parse(const FString& GuidString, FGuid& OutGuid);

	/** Parses GuidString, which must be exactly in the given form. */
	static bool ParseExact(const FString& GuidString, EGuidFormats Format, FGuid& OutGuid);

	uint32& operator[](int32 Index);
	const uint32& operator[](int32 Index) const;

	friend bool operator==(const FGuid& X, const FGuid& Y)
	{
		return ((X.A ^ Y.A) | (X.B ^ Y.B) | (X.C ^ Y.C) | (X.D ^ Y.D)) == 0;
	}
	friend bool operator!=(const FGuid& X, const FGuid& Y) { return !(X == Y); }
	friend bool operator<(const FGuid& X, const FGuid& Y)
	{
		return X.A != Y.A ? X.A < Y.A : (X.B != Y.B ? X.B < Y.B : (X.C != Y.C ? X.C < Y.C : X.D < Y.D));
	}

	friend uint32 GetTypeHash(const FGuid& Guid)
	{
		return HashCombine(HashCombine(Guid.A, Guid.B), HashCombine(Guid.C, Guid.D));
	}
};

CORE_API FString LexToString(const FGuid& Value);
CORE_API void LexFromString(FGuid& Result, const TCHAR* String);
