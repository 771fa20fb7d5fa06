// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPath.h"

#include "NoExportTypes.generated.h"

// Reflection of core structs whose C++ definitions live in their own headers. The compiler skips this block;
// the header tool reads it and gives each struct a UScriptStruct, so members of these types are struct
// properties. Their text form is the one the structs write themselves (ExportTextItem / ImportTextItem), which
// is why no fields are listed.
#if !CPP

/** A path to an object, written to text as the path ("/Game/Maps/Main.Main", "None" when empty). */
USTRUCT(noexport)
struct FSoftObjectPath
{
};

/** A path to a class, written to text as the path ("/Game/Modes/GM.GM_C"). */
USTRUCT(noexport)
struct FSoftClassPath : public FSoftObjectPath
{
};

#endif // !CPP
