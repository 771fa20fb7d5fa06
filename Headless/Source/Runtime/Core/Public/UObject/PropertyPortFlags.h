// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Flags that change how property values are written to and read from text. */
enum EPropertyPortFlags
{
	PPF_None = 0x00000000,
	/** The value is part of a larger text (a struct field, an array element): strings and names are quoted. */
	PPF_Delimited = 0x00000001,
	PPF_CheckReferences = 0x00000002,
	PPF_ExportsNotFullyQualified = 0x00000004,
	PPF_AttemptNonQualifiedSearch = 0x00000008,
	PPF_RestrictImportTypes = 0x00000010,
	PPF_SerializedAsImportText = 0x00000020,
	PPF_ExternalEditor = 0x00000040,
	PPF_SubobjectsOnly = 0x00000080,
	PPF_DeepComparison = 0x00000100,
	PPF_DeepCompareInstances = 0x00000200,
	PPF_DeepCompareDSOsOnly = 0x00000400,
	PPF_Copy = 0x00000800,
	PPF_Duplicate = 0x00001000,
	PPF_SimpleObjectText = 0x00002000,
	PPF_ForDiff = 0x00004000,
	PPF_ForDiffInstanceOnly = 0x00008000,
	PPF_ParsingDefaultProperties = 0x00010000,
	PPF_IncludeTransient = 0x00020000,
	PPF_InstanceSubobjects = 0x00040000,
	PPF_PropertyWindow = 0x00080000,
	PPF_AvoidRemoteObjectMigration = 0x00100000,
	PPF_DebugDump = 0x00200000,
	PPF_DuplicateForPIE = 0x00400000,
	PPF_SeparateDeclare = 0x00800000,
	PPF_SeparateDefine = 0x01000000,
	PPF_BlueprintDebugView = 0x02000000,
	PPF_ConsoleVariable = 0x04000000,
	PPF_UseDeprecatedProperties = 0x08000000,
	PPF_ForceTaggedSerialization = 0x20000000,
	PPF_DuplicateVerbatim = 0x40000000,
};
