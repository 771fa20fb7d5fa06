// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/Delegate.h"
#include "Misc/AssertionMacros.h"
#include "Misc/EnumClassFlags.h"
#include "Modules/ModuleInterface.h"
#include "UObject/NameTypes.h"

#include <memory>

/** Options for FModuleManager::LoadModule. */
enum class ELoadModuleFlags
{
	None = 0x0,
	/** Log the reason when the module cannot be loaded (failures are always logged in the headless engine). */
	LogFailures = 1 << 0,
};
ENUM_CLASS_FLAGS(ELoadModuleFlags);

/** Why a module load succeeded or failed. */
enum class EModuleLoadResult
{
	Success,
	FileNotFound,
	FileIncompatible,
	CouldNotBeLoadedByOS,
	FailedToInitialize,
};

/** What changed in FModuleManager::OnModulesChanged. */
enum class EModuleChangeReason
{
	ModuleLoaded,
	ModuleUnloaded,
	PluginDirectoryChanged,
};

DECLARE_MULTICAST_DELEGATE_TwoParams(FModulesChangedEvent, FName, EModuleChangeReason);

/** Creates a module's interface object; the module manager owns the result. */
typedef IModuleInterface* (*FInitializeModuleFunctionPtr)();

/**
 * Loads, finds and unloads modules. A module is a shared library UnrealEditor-<Name>.so (with the
 * "lib" prefix the linker gives it) in a binaries directory, or code already in the process, that
 * registered an initializer for its name with IMPLEMENT_MODULE.
 */
class FModuleManager
{
public:
	/** The process's module manager. */
	static CORE_API FModuleManager& Get();

	/** Loads the module if needed and returns it; null, with a warning saying why, if it cannot be loaded. */
	CORE_API IModuleInterface* LoadModule(
		const FName InModuleName, const ELoadModuleFlags InLoadModuleFlags = ELoadModuleFlags::None);

	/** Loads the module if needed; a module that cannot be loaded is a fatal error. */
	CORE_API IModuleInterface& LoadModuleChecked(const FName InModuleName);

	/** As LoadModule, also telling why a load failed. */
	CORE_API IModuleInterface* LoadModuleWithFailureReason(const FName InModuleName,
		EModuleLoadResult& OutFailureReason, const ELoadModuleFlags InLoadModuleFlags = ELoadModuleFlags::None);

	/** Whether the module is loaded (it counts as loaded from the start of its StartupModule). */
	CORE_API bool IsModuleLoaded(const FName InModuleName) const;

	/** The loaded module, or null. Never loads. */
	CORE_API IModuleInterface* GetModule(const FName InModuleName);

	/**
	 * Shuts the module down and destroys it. Returns false if it was not loaded. With bIsShutdown, the
	 * modules-changed event is not broadcast. Module libraries stay mapped; their code is not unloaded.
	 */
	CORE_API bool UnloadModule(const FName InModuleName, bool bIsShutdown = false, bool bAllowUnloadCode = true);

	/**
	 * Unloads every module that supports automatic shutdown, newest first: each gets PreUnloadCallback,
	 * then each is shut down and destroyed.
	 */
	CORE_API void UnloadModulesAtShutdown();

	/** The number of modules the manager knows: the loaded ones and those registered in the process. */
	CORE_API int32 GetModuleCount() const;

	/** Names of the known modules and module libraries in the binaries directories matching a wildcard ("Orvane*"). */
	CORE_API void FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const;

	/** Whether the module is registered in the process or its library is in a binaries directory. */
	CORE_API bool ModuleExists(const TCHAR* ModuleName) const;

	/** Adds a directory searched for module libraries, after the executable's own directory. */
	CORE_API void AddBinariesDirectory(const TCHAR* InDirectory, bool bIsGameDirectory);

	/** Broadcast after a module is loaded and after it is unloaded (outside shutdown). */
	CORE_API FModulesChangedEvent& OnModulesChanged();

	/** Registers how to create a module whose code is already in the process. The first registration of a name wins. */
	CORE_API void RegisterStaticallyLinkedModule(const TCHAR* InModuleName, FInitializeModuleFunctionPtr InInitializer);

	/** The loaded module, which must be loaded (a check failure otherwise). */
	template <typename TModuleInterface>
	static TModuleInterface& GetModuleChecked(const FName ModuleName)
	{
		FModuleManager& ModuleManager = FModuleManager::Get();
		checkf(ModuleManager.IsModuleLoaded(ModuleName),
			TEXT("Tried to get module interface for unloaded module: '%s'"), *ModuleName.ToString());
		return static_cast<TModuleInterface&>(*ModuleManager.GetModule(ModuleName));
	}

	/** Loads the module if needed; failing to load it is a fatal error. */
	template <typename TModuleInterface>
	static TModuleInterface& LoadModuleChecked(const FName ModuleName)
	{
		return static_cast<TModuleInterface&>(FModuleManager::Get().LoadModuleChecked(ModuleName));
	}

	/** The loaded module, or null. */
	template <typename TModuleInterface>
	static TModuleInterface* GetModulePtr(const FName ModuleName)
	{
		return static_cast<TModuleInterface*>(FModuleManager::Get().GetModule(ModuleName));
	}

	/** Loads the module if needed; null if it cannot be loaded. */
	template <typename TModuleInterface>
	static TModuleInterface* LoadModulePtr(const FName ModuleName)
	{
		return static_cast<TModuleInterface*>(FModuleManager::Get().LoadModule(ModuleName));
	}

private:
	struct FLoadedModule
	{
		FName Name;
		std::unique_ptr<IModuleInterface> Module;
		/** Position in the load sequence, assigned once StartupModule returns; -1 while it runs. */
		int32 LoadOrder = INDEX_NONE;
	};

	struct FInitializer
	{
		FString Name;
		FInitializeModuleFunctionPtr Function = nullptr;
	};

	FModuleManager() = default;

	FLoadedModule* FindLoadedModule(const FName InModuleName);
	const FLoadedModule* FindLoadedModule(const FName InModuleName) const;
	FInitializeModuleFunctionPtr FindInitializer(const FString& ModuleName) const;
	FString FindModuleLibrary(const FString& ModuleName) const;
	TArray<FString> GetBinariesDirectories() const;

	TArray<std::unique_ptr<FLoadedModule>> LoadedModules;
	TArray<FInitializer> Initializers;
	TArray<FString> ExtraBinariesDirectories;
	FModulesChangedEvent ModulesChangedEvent;
	int32 NextLoadOrder = 0;
};

/** Registers a module whose code is linked into the process, under the given name. */
template <class ModuleClass>
class FStaticallyLinkedModuleRegistrant
{
public:
	explicit FStaticallyLinkedModuleRegistrant(const TCHAR* InModuleName)
	{
		FModuleManager::Get().RegisterStaticallyLinkedModule(InModuleName, &Create);
	}

private:
	static IModuleInterface* Create() { return new ModuleClass(); }
};

/** A module with no code of its own to run at startup or shutdown. */
class FDefaultModuleImpl : public IModuleInterface
{
};

/** A game module with no code of its own to run at startup or shutdown. */
class FDefaultGameModuleImpl : public FDefaultModuleImpl
{
public:
	virtual bool IsGameModule() const override { return true; }
};

/**
 * Implements the module ModuleName with the class ModuleImplClass. Place it once in one .cpp of the
 * module. Loading the library registers the initializer under the module's name; the C exports mark
 * the library as a module.
 */
#define IMPLEMENT_MODULE(ModuleImplClass, ModuleName)                                                          \
	static FStaticallyLinkedModuleRegistrant<ModuleImplClass> ModuleRegistrant##ModuleName(TEXT(#ModuleName)); \
	extern "C" DLLEXPORT IModuleInterface* InitializeModule()                                                  \
	{                                                                                                          \
		return new ModuleImplClass();                                                                          \
	}                                                                                                          \
	extern "C" DLLEXPORT void ThisIsAnUnrealEngineModule() {}                                                  \
	extern "C" void IMPLEMENT_MODULE_##ModuleName() {}

#define IMPLEMENT_GAME_MODULE(ModuleImplClass, ModuleName) IMPLEMENT_MODULE(ModuleImplClass, ModuleName)

#define IMPLEMENT_PRIMARY_GAME_MODULE(ModuleImplClass, ModuleName, GameName) \
	IMPLEMENT_GAME_MODULE(ModuleImplClass, ModuleName)
