// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

class FOutputDevice;

namespace UE::CoreUObject::Private
{
	/** Appends Value as a quoted string with \\, \", \n, \r and \t escaped. */
	void AppendQuoted(FString& Out, const FString& Value);

	/** Reads a quoted string at Buffer (which must start with '"'); null if it is not terminated. */
	const TCHAR* ReadQuoted(const TCHAR* Buffer, FString& Out);

	/** Skips a delimited value (balanced parentheses, quoted strings) up to the next ',' or ')' at depth 0. */
	const TCHAR* SkipDelimitedValue(const TCHAR* Buffer);

	/** Reports an import error to ErrorText (or the log when null). */
	void ReportImportError(FOutputDevice* ErrorText, const FString& Message);

	FString NameToDisplayString(const FString& InName, bool bIsBool);
} // namespace UE::CoreUObject::Private
