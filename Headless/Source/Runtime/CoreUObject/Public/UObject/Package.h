// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/SavePackage.h"

struct FSavePackageArgs;
struct FSavePackageResultStruct;

/** Flags describing a package. */
enum EPackageFlags : uint32
{
	PKG_None = 0x00000000,
	PKG_NewlyCreated = 0x00000001,
	PKG_ClientOptional = 0x00000002,
	PKG_ServerSideOnly = 0x00000004,
	PKG_CompiledIn = 0x00000010,
	PKG_ForDiffing = 0x00000020,
	PKG_EditorOnly = 0x00000040,
	PKG_Developer = 0x00000080,
	PKG_UncookedOnly = 0x00000100,
	PKG_Cooked = 0x00000200,
	PKG_ContainsNoAsset = 0x00000400,
	PKG_NotExternallyReferenceable = 0x00000800,
	PKG_UnversionedProperties = 0x00002000,
	PKG_ContainsMapData = 0x00004000,
	PKG_IsSaving = 0x00008000,
	PKG_Compiling = 0x00010000,
	PKG_ContainsMap = 0x00020000,
	PKG_RequiresLocalizationGather = 0x00040000,
	PKG_PlayInEditor = 0x00100000,
	PKG_ContainsScript = 0x00200000,
	PKG_DisallowExport = 0x00400000,
	PKG_CookGenerated = 0x08000000,
	PKG_DynamicImports = 0x10000000,
	PKG_RuntimeGenerated = 0x20000000,
	PKG_ReloadingForCooker = 0x40000000,
	PKG_FilterEditorOnly = 0x80000000,
};
ENUM_CLASS_FLAGS(EPackageFlags);

#include "Package.generated.h"

/** The top-level outer of assets; its name is the long package name ("/Game/Dir/Name"). */
UCLASS()
class COREUOBJECT_API UPackage : public UObject
{
	GENERATED_BODY()

public:
	UPackage() = default;

	/** Marks the package as changed since it was last saved (or not). */
	void SetDirtyFlag(bool bIsDirty);
	bool IsDirty() const { return bDirty; }

	/** Loads everything the package contains; packages in memory are always fully loaded here. */
	void FullyLoad();
	bool IsFullyLoaded() const { return true; }
	void MarkAsFullyLoaded() {}

	void SetPackageFlagsTo(uint32 NewFlags) { PackageFlagsPrivate = NewFlags; }
	void SetPackageFlags(uint32 NewFlags) { PackageFlagsPrivate |= NewFlags; }
	void ClearPackageFlags(uint32 NewFlags) { PackageFlagsPrivate &= ~NewFlags; }
	bool HasAnyPackageFlags(uint32 FlagsToCheck) const { return (PackageFlagsPrivate & FlagsToCheck) != 0; }
	bool HasAllPackageFlags(uint32 FlagsToCheck) const { return (PackageFlagsPrivate & FlagsToCheck) == FlagsToCheck; }
	uint32 GetPackageFlags() const { return PackageFlagsPrivate; }

	/** The file the package was loaded from or last saved to (empty for packages never on disk). */
	FName FileName;

	/** Saves the package (and Asset in it) to Filename. */
	static bool SavePackage(
		UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs);

	/** Saves the package and reports the details of the result. */
	static FSavePackageResultStruct Save(
		UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs);

	/** Broadcast when a package's dirty state changes. */
	DECLARE_MULTICAST_DELEGATE_OneParam(FOnPackageDirtyStateChanged, UPackage*);
	static FOnPackageDirtyStateChanged PackageDirtyStateChangedEvent;

	/** Broadcast when a package is marked dirty (bWasDirty: it was dirty before). */
	DECLARE_MULTICAST_DELEGATE_TwoParams(FOnPackageMarkedDirty, UPackage*, bool);
	static FOnPackageMarkedDirty PackageMarkedDirtyEvent;

	virtual bool IsAsset() const override { return false; }

private:
	bool bDirty = false;
	uint32 PackageFlagsPrivate = PKG_None;
};
