// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"

namespace UE::ObjectPath::Private
{
	/** The parts of an object path such as "/Game/Map.Map:PersistentLevel.Actor". */
	struct FParsedObjectPath
	{
		/** "/Game/Map"; empty for a null path. */
		FString PackageName;
		/** "Map"; empty for a package path. */
		FString AssetName;
		/** "PersistentLevel.Actor"; empty unless the path names a sub-object. */
		FString SubPath;
	};

	/**
	 * Splits a path into package, asset and sub-object parts. Surrounding whitespace and double quotes
	 * and the export text form "Class'...'" are removed first; an empty text or "None" is a null path.
	 * False when the text is not a path (no leading '/', an empty part, a '/' after the package part).
	 */
	bool ParseObjectPath(FStringView InPath, FParsedObjectPath& OutParts);

	/** Reads one property value token: a quoted string (with \" and \\ escapes) or text up to ',', ')' or whitespace.
	 */
	bool ReadPathToken(const TCHAR*& Buffer, FString& OutToken);

	/** Writes a path as a property value: "None" when empty, quoted when Delimited. */
	void WritePathToken(FString& ValueStr, const FString& Path, bool bDelimited);
} // namespace UE::ObjectPath::Private
