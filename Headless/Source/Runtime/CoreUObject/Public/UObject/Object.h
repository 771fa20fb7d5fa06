// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Templates/Casts.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"
#include "UObject/Script.h"
#include "UObject/UObjectBaseUtility.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/WeakObjectPtrTemplates.h"

class FConfigCacheIni;
class FProperty;
class UFunction;
class UWorld;
struct FFrame;
struct FPropertyChangedEvent;
struct FPropertyChangedChainEvent;

namespace UE
{
	/** How LoadConfig propagates values it reads. */
	enum ELoadConfigPropagationFlags : uint32
	{
		LCPF_None = 0,
		LCPF_ReadParentSections = 1 << 0,
		LCPF_PropagateToChildDefaultObjects = 1 << 1,
		LCPF_PropagateToInstances = 1 << 2,
		LCPF_ReloadingConfigData = 1 << 3,
		LCPF_PersistentFlags = LCPF_ReloadingConfigData,
	};
} // namespace UE

#include "Object.generated.h"

/** The base class of every reflected object. */
UCLASS(Abstract)
class COREUOBJECT_API UObject : public UObjectBaseUtility
{
	GENERATED_BODY()

public:
	UObject();
	UObject(const FObjectInitializer& ObjectInitializer);

	/** Called after the native constructor and property initialisation. */
	virtual void PostInitProperties();

	/** Called after the object was loaded from a package. */
	virtual void PostLoad();

	/** Called after the object was duplicated. */
	virtual void PostDuplicate(bool bDuplicateForPIE) {}

	/** Called after Rename. */
	virtual void PostRename(UObject* OldOuter, const FName OldName) {}

	/** Changes the name and/or outer of the object; with REN_Test only checks that it would succeed. */
	virtual bool Rename(const TCHAR* NewName = nullptr, UObject* NewOuter = nullptr, ERenameFlags Flags = REN_None);

	/** Starts destruction; called once, before FinishDestroy. */
	virtual void BeginDestroy();

	/** True when FinishDestroy may be called (asynchronous cleanup has finished). */
	virtual bool IsReadyForFinishDestroy() { return true; }

	/** Ends destruction; the memory is freed right after. */
	virtual void FinishDestroy();

	/** Sets RF_BeginDestroyed and calls BeginDestroy; false if destruction had already begun. */
	bool ConditionalBeginDestroy();

	/** Sets RF_FinishDestroyed and calls FinishDestroy; false if already finished. */
	bool ConditionalFinishDestroy();

	/** Records the object in the current transaction; the headless editor has no transactions. */
	virtual bool Modify(bool bAlwaysMarkDirty = true);

	/** The world the object lives in; null for objects outside any world. */
	virtual UWorld* GetWorld() const;

	/** A short description for the editor. */
	virtual FString GetDesc() { return FString(); }

	/** True for objects that are assets (public, standalone objects directly in a package). */
	virtual bool IsAsset() const;

	/** The object this one takes its default values from: the class default object. */
	UObject* GetArchetype() const;

	/** The function of this name in the object's class or its super classes; null if none. */
	UFunction* FindFunction(FName InName) const;

	/** As FindFunction; fatal if the function does not exist. */
	UFunction* FindFunctionChecked(FName InName) const;

	/** Calls a reflected function; Parms holds its parameters and receives its return value. */
	virtual void ProcessEvent(UFunction* Function, void* Parms);

	/** Calls a native reflected function with a prepared frame. */
	void CallFunction(FFrame& Stack, RESULT_DECL, UFunction* Function);

	/** Reports the objects this object references outside its reflected properties. */
	static void AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector);

	/** Creates a subobject during construction (see FObjectInitializer::CreateDefaultSubobject). */
	UObject* CreateDefaultSubobject(
		FName SubobjectFName, UClass* ReturnType, UClass* ClassToCreateByDefault, bool bIsRequired, bool bIsTransient);

	template <class TReturnType>
	TReturnType* CreateDefaultSubobject(FName SubobjectName, bool bTransient = false)
	{
		UClass* ReturnType = TReturnType::StaticClass();
		return static_cast<TReturnType*>(
			CreateDefaultSubobject(SubobjectName, ReturnType, ReturnType, true, bTransient));
	}

	template <class TReturnType, class TClassToConstructByDefault>
	TReturnType* CreateDefaultSubobject(FName SubobjectName, bool bTransient = false)
	{
		return static_cast<TReturnType*>(CreateDefaultSubobject(
			SubobjectName, TReturnType::StaticClass(), TClassToConstructByDefault::StaticClass(), true, bTransient));
	}

	// Configuration.

	/** Writes the properties with any of Flags to the class's config file section. */
	void SaveConfig(uint64 Flags = CPF_Config, const TCHAR* Filename = nullptr, FConfigCacheIni* Config = GConfig,
		bool bAllowCopyToDefaultObject = true);

	/** Writes the config properties that differ from the base files to the default config file. */
	bool TryUpdateDefaultConfigFile(const FString& SpecificFileLocation = TEXT(""), bool bWarnIfFail = true);

	UE_DEPRECATED(5.0, "UpdateDefaultConfigFile has been deprecated, please use TryUpdateDefaultConfigFile.")
	void UpdateDefaultConfigFile(const FString& SpecificFileLocation = TEXT(""));

	void UpdateGlobalUserConfigFile();
	void UpdateProjectUserConfigFile();

	/** Rewrites one property's key in the given ini file. */
	void UpdateSinglePropertyInConfigFile(const FProperty* InProperty, const FString& InConfigIniName);

	/** "<ProjectConfigDir>Default<ConfigName>.ini". */
	FString GetDefaultConfigFilename() const;
	FString GetGlobalUserConfigFilename() const;
	FString GetProjectUserConfigFilename() const;

	/** The section name of this object's config values: the class path, "/Script/<Module>.<Class>". */
	FString GetConfigSectionName() const;

	/** Reads the config properties of the class from its config file. */
	void LoadConfig(UClass* ConfigClass = nullptr, const TCHAR* Filename = nullptr,
		uint32 PropagationFlags = UE::LCPF_None, FProperty* PropertyToLoad = nullptr);

	void ReloadConfig(UClass* ConfigClass = nullptr, const TCHAR* Filename = nullptr,
		uint32 PropagationFlags = UE::LCPF_None, FProperty* PropertyToLoad = nullptr);

#if WITH_EDITOR
	virtual void PreEditChange(FProperty* PropertyAboutToChange);
	virtual void PostEditChangeProperty(FPropertyChangedEvent& PropertyChangedEvent);
	virtual void PostEditChangeChainProperty(FPropertyChangedChainEvent& PropertyChangedEvent);
	virtual bool CanEditChange(const FProperty* InProperty) const;
#endif
};

/** True if the object exists and is not marked as garbage. */
FORCEINLINE bool IsValid(const UObject* Test)
{
	return Test != nullptr && !Test->HasAnyInternalFlags(EInternalObjectFlags::Garbage);
}
