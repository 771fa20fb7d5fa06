// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/EnumAsByte.h"
#include "CoreGlobals.h"
#include "CoreTypes.h"
#include "Misc/EnumClassFlags.h"
#include "UObject/PropertyPortFlags.h"

#ifndef TYPE_OF_NULLPTR
#define TYPE_OF_NULLPTR decltype(nullptr)
#endif

// Reflection markers. The C++ compiler sees them as nothing; the header tool reads them and writes the
// matching *.generated.h and *.gen.cpp files.
/**
 * Set for the C++ compiler. Blocks under "#if !CPP" are read by the header tool only (the reflection of types
 * whose C++ definition lives elsewhere, see UObject/NoExportTypes.h).
 */
#ifndef CPP
#define CPP 1
#endif

#define UCLASS(...)
#define USTRUCT(...)
#define UENUM(...)
#define UPROPERTY(...)
#define UFUNCTION(...)
#define UMETA(...)
#define UPARAM(...)
#define UDELEGATE(...)
#define UINTERFACE(...)

#define BODY_MACRO_COMBINE_INNER(A, B, C, D) A##B##C##D
#define BODY_MACRO_COMBINE(A, B, C, D) BODY_MACRO_COMBINE_INNER(A, B, C, D)

// GENERATED_BODY picks the macro the header tool wrote for this exact line of this exact file, which is
// why the generated header has to be the last include: it defines CURRENT_FILE_ID for its own header.
#define GENERATED_BODY(...) BODY_MACRO_COMBINE(CURRENT_FILE_ID, _, __LINE__, _GENERATED_BODY)
#define GENERATED_BODY_LEGACY(...) BODY_MACRO_COMBINE(CURRENT_FILE_ID, _, __LINE__, _GENERATED_BODY_LEGACY)
#define GENERATED_UCLASS_BODY(...) GENERATED_BODY_LEGACY()
#define GENERATED_USTRUCT_BODY(...) GENERATED_BODY()

/** Flags describing an object instance. */
enum EObjectFlags : uint32
{
	RF_NoFlags = 0x00000000,
	RF_Public = 0x00000001,
	RF_Standalone = 0x00000002,
	RF_MarkAsNative = 0x00000004,
	RF_Transactional = 0x00000008,
	RF_ClassDefaultObject = 0x00000010,
	RF_ArchetypeObject = 0x00000020,
	RF_Transient = 0x00000040,
	RF_MarkAsRootSet = 0x00000080,
	RF_TagGarbageTemp = 0x00000100,
	RF_NeedInitialization = 0x00000200,
	RF_NeedLoad = 0x00000400,
	RF_KeepForCooker = 0x00000800,
	RF_NeedPostLoad = 0x00001000,
	RF_NeedPostLoadSubobjects = 0x00002000,
	RF_NewerVersionExists = 0x00004000,
	RF_BeginDestroyed = 0x00008000,
	RF_FinishDestroyed = 0x00010000,
	RF_BeingRegenerated = 0x00020000,
	RF_DefaultSubObject = 0x00040000,
	RF_WasLoaded = 0x00080000,
	RF_TextExportTransient = 0x00100000,
	RF_LoadCompleted = 0x00200000,
	RF_InheritableComponentTemplate = 0x00400000,
	RF_DuplicateTransient = 0x00800000,
	RF_StrongRefOnFrame = 0x01000000,
	RF_NonPIEDuplicateTransient = 0x02000000,
	RF_WillBeLoaded = 0x08000000,
	RF_HasExternalPackage = 0x10000000,
	RF_MirroredGarbage = 0x40000000,
	RF_AllocatedInSharedPage = 0x80000000,
};
ENUM_CLASS_FLAGS(EObjectFlags);

#define RF_AllFlags ((EObjectFlags)0xffffffff)
#define RF_Load                                                                                                 \
	((EObjectFlags)(RF_Public | RF_Standalone | RF_Transactional | RF_ClassDefaultObject | RF_ArchetypeObject | \
					RF_DefaultSubObject | RF_TextExportTransient | RF_InheritableComponentTemplate |            \
					RF_DuplicateTransient | RF_NonPIEDuplicateTransient))
#define RF_PropagateToSubObjects ((EObjectFlags)(RF_Public | RF_ArchetypeObject | RF_Transactional | RF_Transient))

/** Flags kept in the global object table rather than in the object (garbage collection state and the like). */
enum class EInternalObjectFlags : int32
{
	None = 0,
	ReachabilityFlag0 = 1 << 0,
	ReachabilityFlag1 = 1 << 1,
	ReachabilityFlag2 = 1 << 2,
	LoaderImport = 1 << 20,
	Garbage = 1 << 21,
	AsyncLoadingPhase1 = 1 << 22,
	ReachableInCluster = 1 << 23,
	ClusterRoot = 1 << 24,
	Native = 1 << 25,
	Async = 1 << 26,
	AsyncLoadingPhase2 = 1 << 27,
	Unreachable = 1 << 28,
	RefCounted = 1 << 29,
	RootSet = 1 << 30,
	PendingConstruction = 1 << 31,

	GarbageCollectionKeepFlags = Native | Async | AsyncLoadingPhase1 | AsyncLoadingPhase2 | LoaderImport,
	AllFlags = ReachabilityFlag0 | ReachabilityFlag1 | ReachabilityFlag2 | LoaderImport | Garbage | AsyncLoadingPhase1 |
			   ReachableInCluster | ClusterRoot | Native | Async | AsyncLoadingPhase2 | Unreachable | RefCounted |
			   RootSet | PendingConstruction,
};
ENUM_CLASS_FLAGS(EInternalObjectFlags);

/** Flags describing a reflected property. */
enum EPropertyFlags : uint64
{
	CPF_None = 0,
	CPF_Edit = 0x0000000000000001,
	CPF_ConstParm = 0x0000000000000002,
	CPF_BlueprintVisible = 0x0000000000000004,
	CPF_ExportObject = 0x0000000000000008,
	CPF_BlueprintReadOnly = 0x0000000000000010,
	CPF_Net = 0x0000000000000020,
	CPF_EditFixedSize = 0x0000000000000040,
	CPF_Parm = 0x0000000000000080,
	CPF_OutParm = 0x0000000000000100,
	CPF_ZeroConstructor = 0x0000000000000200,
	CPF_ReturnParm = 0x0000000000000400,
	CPF_DisableEditOnTemplate = 0x0000000000000800,
	CPF_NonNullable = 0x0000000000001000,
	CPF_Transient = 0x0000000000002000,
	CPF_Config = 0x0000000000004000,
	CPF_RequiredParm = 0x0000000000008000,
	CPF_DisableEditOnInstance = 0x0000000000010000,
	CPF_EditConst = 0x0000000000020000,
	CPF_GlobalConfig = 0x0000000000040000,
	CPF_InstancedReference = 0x0000000000080000,
	CPF_ExperimentalExternalObjects = 0x0000000000100000,
	CPF_DuplicateTransient = 0x0000000000200000,
	CPF_SaveGame = 0x0000000001000000,
	CPF_NoClear = 0x0000000002000000,
	CPF_ReferenceParm = 0x0000000008000000,
	CPF_BlueprintAssignable = 0x0000000010000000,
	CPF_Deprecated = 0x0000000020000000,
	CPF_IsPlainOldData = 0x0000000040000000,
	CPF_RepSkip = 0x0000000080000000,
	CPF_RepNotify = 0x0000000100000000,
	CPF_Interp = 0x0000000200000000,
	CPF_NonTransactional = 0x0000000400000000,
	CPF_EditorOnly = 0x0000000800000000,
	CPF_NoDestructor = 0x0000001000000000,
	CPF_AutoWeak = 0x0000004000000000,
	CPF_ContainsInstancedReference = 0x0000008000000000,
	CPF_AssetRegistrySearchable = 0x0000010000000000,
	CPF_SimpleDisplay = 0x0000020000000000,
	CPF_AdvancedDisplay = 0x0000040000000000,
	CPF_Protected = 0x0000080000000000,
	CPF_BlueprintCallable = 0x0000100000000000,
	CPF_BlueprintAuthorityOnly = 0x0000200000000000,
	CPF_TextExportTransient = 0x0000400000000000,
	CPF_NonPIEDuplicateTransient = 0x0000800000000000,
	CPF_ExposeOnSpawn = 0x0001000000000000,
	CPF_PersistentInstance = 0x0002000000000000,
	CPF_UObjectWrapper = 0x0004000000000000,
	CPF_HasGetValueTypeHash = 0x0008000000000000,
	CPF_NativeAccessSpecifierPublic = 0x0010000000000000,
	CPF_NativeAccessSpecifierProtected = 0x0020000000000000,
	CPF_NativeAccessSpecifierPrivate = 0x0040000000000000,
	CPF_SkipSerialization = 0x0080000000000000,
};
ENUM_CLASS_FLAGS(EPropertyFlags);

#define CPF_NativeAccessSpecifiers \
	(CPF_NativeAccessSpecifierPublic | CPF_NativeAccessSpecifierProtected | CPF_NativeAccessSpecifierPrivate)
#define CPF_ParmFlags (CPF_Parm | CPF_OutParm | CPF_ReturnParm | CPF_RequiredParm | CPF_ReferenceParm | CPF_ConstParm)
#define CPF_AllFlags ((EPropertyFlags)0xFFFFFFFFFFFFFFFF)

/** Flags describing a class. */
enum EClassFlags : uint32
{
	CLASS_None = 0x00000000u,
	CLASS_Abstract = 0x00000001u,
	CLASS_DefaultConfig = 0x00000002u,
	CLASS_Config = 0x00000004u,
	CLASS_Transient = 0x00000008u,
	CLASS_Optional = 0x00000010u,
	CLASS_MatchedSerializers = 0x00000020u,
	CLASS_ProjectUserConfig = 0x00000040u,
	CLASS_Native = 0x00000080u,
	CLASS_NotPlaceable = 0x00000200u,
	CLASS_PerObjectConfig = 0x00000400u,
	CLASS_ReplicationDataIsSetUp = 0x00000800u,
	CLASS_EditInlineNew = 0x00001000u,
	CLASS_CollapseCategories = 0x00002000u,
	CLASS_Interface = 0x00004000u,
	CLASS_PerPlatformConfig = 0x00008000u,
	CLASS_Const = 0x00010000u,
	CLASS_NeedsDeferredDependencyLoading = 0x00020000u,
	CLASS_CompiledFromBlueprint = 0x00040000u,
	CLASS_MinimalAPI = 0x00080000u,
	CLASS_RequiredAPI = 0x00100000u,
	CLASS_DefaultToInstanced = 0x00200000u,
	CLASS_TokenStreamAssembled = 0x00400000u,
	CLASS_HasInstancedReference = 0x00800000u,
	CLASS_Hidden = 0x01000000u,
	CLASS_Deprecated = 0x02000000u,
	CLASS_HideDropDown = 0x04000000u,
	CLASS_GlobalUserConfig = 0x08000000u,
	CLASS_Intrinsic = 0x10000000u,
	CLASS_Constructed = 0x20000000u,
	CLASS_ConfigDoNotCheckDefaults = 0x40000000u,
	CLASS_NewerVersionExists = 0x80000000u,
};
ENUM_CLASS_FLAGS(EClassFlags);

/** The class flags a class takes over from its super class. */
#define CLASS_Inherit                                                                                                \
	((EClassFlags)(CLASS_Transient | CLASS_Optional | CLASS_DefaultConfig | CLASS_Config | CLASS_PerObjectConfig |   \
				   CLASS_ConfigDoNotCheckDefaults | CLASS_NotPlaceable | CLASS_Const | CLASS_HasInstancedReference | \
				   CLASS_Deprecated | CLASS_DefaultToInstanced | CLASS_GlobalUserConfig | CLASS_ProjectUserConfig |  \
				   CLASS_PerPlatformConfig | CLASS_NeedsDeferredDependencyLoading))
#define CLASS_AllFlags ((EClassFlags)0xffffffffu)

/** Flags describing a reflected struct. */
enum EStructFlags : uint32
{
	STRUCT_NoFlags = 0x00000000,
	STRUCT_Native = 0x00000001,
	STRUCT_IdenticalNative = 0x00000002,
	STRUCT_HasInstancedReference = 0x00000004,
	STRUCT_NoExport = 0x00000008,
	STRUCT_Atomic = 0x00000010,
	STRUCT_Immutable = 0x00000020,
	STRUCT_AddStructReferencedObjects = 0x00000040,
	STRUCT_RequiredAPI = 0x00000200,
	STRUCT_NetSerializeNative = 0x00000400,
	STRUCT_SerializeNative = 0x00000800,
	STRUCT_CopyNative = 0x00001000,
	STRUCT_IsPlainOldData = 0x00002000,
	STRUCT_NoDestructor = 0x00004000,
	STRUCT_ZeroConstructor = 0x00008000,
	STRUCT_ExportTextItemNative = 0x00010000,
	STRUCT_ImportTextItemNative = 0x00020000,
	STRUCT_PostSerializeNative = 0x00040000,
	STRUCT_SerializeFromMismatchedTag = 0x00080000,
	STRUCT_NetDeltaSerializeNative = 0x00100000,
	STRUCT_PostScriptConstruct = 0x00200000,
	STRUCT_NetSharedSerialization = 0x00400000,
	STRUCT_Trashed = 0x00800000,
	STRUCT_NewerVersionExists = 0x01000000,
	STRUCT_CanEditChange = 0x02000000,
};
ENUM_CLASS_FLAGS(EStructFlags);

/** Flags for loading objects and packages. */
enum ELoadFlags
{
	LOAD_None = 0x00000000,
	LOAD_Async = 0x00000001,
	LOAD_NoWarn = 0x00000002,
	LOAD_EditorOnly = 0x00000004,
	LOAD_ResolvingDeferredExports = 0x00000008,
	LOAD_Verify = 0x00000010,
	LOAD_NoVerify = 0x00000080,
	LOAD_IsVerifying = 0x00000100,
	LOAD_SkipLoadImportedPackages = 0x00000200,
	LOAD_RegenerateBulkDataGuids = 0x00000400,
	LOAD_DisableDependencyPreloading = 0x00001000,
	LOAD_Quiet = 0x00002000,
	LOAD_FindIfFail = 0x00004000,
	LOAD_MemoryReader = 0x00008000,
	LOAD_NoRedirects = 0x00010000,
	LOAD_ForDiff = 0x00020000,
	LOAD_PackageForPIE = 0x00080000,
	LOAD_DeferDependencyLoads = 0x00100000,
	LOAD_ForFileDiff = 0x00200000,
	LOAD_DisableCompileOnLoad = 0x00400000,
	LOAD_DisableEngineVersionChecks = 0x00800000,
};

/** Flags for renaming objects. */
typedef uint32 ERenameFlags;
#define REN_None (0x0000)
#define REN_ForceNoResetLoaders (0x0001)
#define REN_Test (0x0002)
#define REN_DoNotDirty (0x0004)
#define REN_DontCreateRedirectors (0x0010)
#define REN_NonTransactional (0x0020)
#define REN_ForceGlobalUnique (0x0040)
#define REN_SkipGeneratedClasses (0x0080)

/** How much of an object's path GetFullName includes. */
enum class EObjectFullNameFlags
{
	None = 0,
	IncludeClassPackage = 1,
};
ENUM_CLASS_FLAGS(EObjectFullNameFlags);

enum EStaticConstructor
{
	EC_StaticConstructor
};

enum class EInternal
{
	EC_InternalUseOnlyConstructor
};

/** The editor keeps standalone objects (assets) alive through garbage collection; a game does not. */
#define GARBAGE_COLLECTION_KEEPFLAGS (GIsEditor ? RF_Standalone : RF_NoFlags)

#define NO_API
