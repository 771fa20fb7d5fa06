// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class FText;

/** The headless editor's localisation system: a single, fixed "en" culture and no translation tables. */
class CORE_API FInternationalization
{
public:
	static FInternationalization& Get();
	static bool IsAvailable() { return true; }

	/** The name of the culture texts are shown in. */
	const TCHAR* GetCurrentCultureName() const { return TEXT("en"); }

	/** Makes the text of a localisation macro, remembering its namespace, key and source. */
	static FText ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText(
		const TCHAR* InTextLiteral, const TCHAR* InNamespace, const TCHAR* InKey);
};

/** A localisable text in the namespace named by LOCTEXT_NAMESPACE, which the including file defines. */
#define LOCTEXT(InKey, InTextLiteral)                                               \
	FInternationalization::ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText( \
		TEXT(InTextLiteral), TEXT(LOCTEXT_NAMESPACE), TEXT(InKey))

/** A localisable text in an explicitly named namespace. */
#define NSLOCTEXT(InNamespace, InKey, InTextLiteral)                                \
	FInternationalization::ForUseOnlyByLocMacroAndGraphNodeTextLiterals_CreateText( \
		TEXT(InTextLiteral), TEXT(InNamespace), TEXT(InKey))

/** A culture-invariant text: never localised. */
#define INVTEXT(InTextLiteral) FText::AsCultureInvariant(TEXT(InTextLiteral))
