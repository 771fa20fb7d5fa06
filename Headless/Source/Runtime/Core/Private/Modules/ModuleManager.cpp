// Copyright Orvane. All Rights Reserved.

#include "Modules/ModuleManager.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformProcess.h"
#include "Logging/LogMacros.h"
#include "Misc/Paths.h"

#include <dlfcn.h>

namespace ModuleManagerPrivate
{
	/** File names a module library may have in a binaries directory, the linker's "lib" prefix first. */
	TArray<FString> GetLibraryFileNames(const FString& ModuleName)
	{
		const FString BaseName = FString(TEXT("UnrealEditor-")) + ModuleName + TEXT(".so");
		TArray<FString> Names;
		Names.Add(FString(TEXT("lib")) + BaseName);
		Names.Add(BaseName);
		return Names;
	}

	/** The module name in a library file name, or empty if the file is not a module library. */
	FString GetModuleNameFromLibrary(const FString& FileName)
	{
		FString Name = FileName;
		Name.RemoveFromStart(TEXT("lib"), ESearchCase::CaseSensitive);
		if (!Name.RemoveFromStart(TEXT("UnrealEditor-"), ESearchCase::CaseSensitive) ||
			!Name.RemoveFromEnd(TEXT(".so"), ESearchCase::CaseSensitive))
		{
			return FString();
		}
		return Name;
	}
} // namespace ModuleManagerPrivate

FModuleManager& FModuleManager::Get()
{
	// Never destroyed: module objects may outlive static destruction, and their libraries stay mapped.
	static FModuleManager* ModuleManager = new FModuleManager();
	return *ModuleManager;
}

IModuleInterface* FModuleManager::LoadModule(const FName InModuleName, const ELoadModuleFlags InLoadModuleFlags)
{
	EModuleLoadResult Unused = EModuleLoadResult::Success;
	return LoadModuleWithFailureReason(InModuleName, Unused, InLoadModuleFlags);
}

IModuleInterface& FModuleManager::LoadModuleChecked(const FName InModuleName)
{
	IModuleInterface* Module = LoadModule(InModuleName);
	checkf(Module != nullptr, TEXT("Could not load module '%s'."), *InModuleName.ToString());
	return *Module;
}

IModuleInterface* FModuleManager::LoadModuleWithFailureReason(
	const FName InModuleName, EModuleLoadResult& OutFailureReason, const ELoadModuleFlags InLoadModuleFlags)
{
	OutFailureReason = EModuleLoadResult::Success;
	if (FLoadedModule* Loaded = FindLoadedModule(InModuleName))
	{
		return Loaded->Module.get();
	}

	const FString ModuleName = InModuleName.ToString();
	FInitializeModuleFunctionPtr Initializer = FindInitializer(ModuleName);
	if (Initializer == nullptr)
	{
		const FString LibraryPath = FindModuleLibrary(ModuleName);
		if (LibraryPath.IsEmpty())
		{
			UE_LOG(LogModuleManager, Warning,
				TEXT("ModuleManager: Unable to load module '%s' because the file '%s' was not found in the binaries "
					 "directories."),
				*ModuleName, *ModuleManagerPrivate::GetLibraryFileNames(ModuleName)[0]);
			OutFailureReason = EModuleLoadResult::FileNotFound;
			return nullptr;
		}

		// Opening the library runs its static initializers, which register the module's initializer.
		// RTLD_LOCAL keeps each library's C exports (every module has an InitializeModule) apart.
		if (::dlopen(TCHAR_TO_UTF8(*LibraryPath), RTLD_NOW | RTLD_LOCAL) == nullptr)
		{
			const ANSICHAR* Error = ::dlerror();
			UE_LOG(LogModuleManager, Warning, TEXT("ModuleManager: Unable to load module '%s' from '%s': %s"),
				*ModuleName, *LibraryPath, Error != nullptr ? UTF8_TO_TCHAR(Error) : TEXT("unknown error"));
			OutFailureReason = EModuleLoadResult::CouldNotBeLoadedByOS;
			return nullptr;
		}

		Initializer = FindInitializer(ModuleName);
		if (Initializer == nullptr)
		{
			UE_LOG(LogModuleManager, Warning,
				TEXT("ModuleManager: Unable to load module '%s' because '%s' does not implement it (no "
					 "IMPLEMENT_MODULE for that name)."),
				*ModuleName, *LibraryPath);
			OutFailureReason = EModuleLoadResult::FailedToInitialize;
			return nullptr;
		}
	}

	IModuleInterface* Module = Initializer();
	if (Module == nullptr)
	{
		UE_LOG(LogModuleManager, Warning,
			TEXT("ModuleManager: Unable to load module '%s' because its initializer returned null."), *ModuleName);
		OutFailureReason = EModuleLoadResult::FailedToInitialize;
		return nullptr;
	}

	// The module is visible as loaded while it starts, so a module that asks for itself gets itself.
	std::unique_ptr<FLoadedModule> Entry = std::make_unique<FLoadedModule>();
	Entry->Name = InModuleName;
	Entry->Module.reset(Module);
	FLoadedModule* EntryPtr = Entry.get();
	LoadedModules.Add(MoveTemp(Entry));

	Module->StartupModule();

	// Modules loaded by this module's startup got earlier numbers, so they shut down after it.
	EntryPtr->LoadOrder = NextLoadOrder++;
	UE_LOG(LogModuleManager, Verbose, TEXT("Loaded module '%s'."), *ModuleName);
	ModulesChangedEvent.Broadcast(InModuleName, EModuleChangeReason::ModuleLoaded);
	return Module;
}

bool FModuleManager::IsModuleLoaded(const FName InModuleName) const
{
	return FindLoadedModule(InModuleName) != nullptr;
}

IModuleInterface* FModuleManager::GetModule(const FName InModuleName)
{
	FLoadedModule* Loaded = FindLoadedModule(InModuleName);
	return Loaded != nullptr ? Loaded->Module.get() : nullptr;
}

bool FModuleManager::UnloadModule(const FName InModuleName, bool bIsShutdown, bool bAllowUnloadCode)
{
	int32 Index = INDEX_NONE;
	for (int32 Candidate = 0; Candidate < LoadedModules.Num(); ++Candidate)
	{
		if (LoadedModules[Candidate]->Name == InModuleName)
		{
			Index = Candidate;
			break;
		}
	}
	if (Index == INDEX_NONE)
	{
		return false;
	}

	// Take the entry out first, so the module reads as unloaded while it shuts down.
	std::unique_ptr<FLoadedModule> Entry = MoveTemp(LoadedModules[Index]);
	LoadedModules.RemoveAt(Index);
	Entry->Module->ShutdownModule();
	Entry->Module.reset();

	if (!bIsShutdown)
	{
		ModulesChangedEvent.Broadcast(InModuleName, EModuleChangeReason::ModuleUnloaded);
	}
	return true;
}

void FModuleManager::UnloadModulesAtShutdown()
{
	struct FShutdownEntry
	{
		FName Name;
		int32 LoadOrder;
	};
	TArray<FShutdownEntry> ToUnload;
	for (const std::unique_ptr<FLoadedModule>& Loaded : LoadedModules)
	{
		if (Loaded->Module->SupportsAutomaticShutdown())
		{
			ToUnload.Add(FShutdownEntry{Loaded->Name, Loaded->LoadOrder});
		}
	}
	ToUnload.Sort(
		[](const FShutdownEntry& A, const FShutdownEntry& B)
		{
			return A.LoadOrder > B.LoadOrder;
		});

	for (const FShutdownEntry& Entry : ToUnload)
	{
		if (IModuleInterface* Module = GetModule(Entry.Name))
		{
			Module->PreUnloadCallback();
		}
	}
	for (const FShutdownEntry& Entry : ToUnload)
	{
		UnloadModule(Entry.Name, true);
	}
}

int32 FModuleManager::GetModuleCount() const
{
	int32 Count = Initializers.Num();
	for (const std::unique_ptr<FLoadedModule>& Loaded : LoadedModules)
	{
		if (FindInitializer(Loaded->Name.ToString()) == nullptr)
		{
			++Count;
		}
	}
	return Count;
}

void FModuleManager::FindModules(const TCHAR* WildcardWithoutExtension, TArray<FName>& OutModules) const
{
	TArray<FString> Names;
	for (const FInitializer& Initializer : Initializers)
	{
		Names.Add(Initializer.Name);
	}
	for (const FString& Directory : GetBinariesDirectories())
	{
		TArray<FString> Files;
		IFileManager::Get().FindFiles(Files, *FPaths::Combine(Directory, TEXT("*UnrealEditor-*.so")), true, false);
		for (const FString& File : Files)
		{
			const FString Name = ModuleManagerPrivate::GetModuleNameFromLibrary(File);
			if (!Name.IsEmpty())
			{
				Names.Add(Name);
			}
		}
	}
	for (const FString& Name : Names)
	{
		if (Name.MatchesWildcard(WildcardWithoutExtension))
		{
			OutModules.AddUnique(FName(*Name));
		}
	}
}

bool FModuleManager::ModuleExists(const TCHAR* ModuleName) const
{
	return FindInitializer(FString(ModuleName)) != nullptr || !FindModuleLibrary(FString(ModuleName)).IsEmpty();
}

void FModuleManager::AddBinariesDirectory(const TCHAR* InDirectory, bool bIsGameDirectory)
{
	const FString Directory = FPaths::ConvertRelativePathToFull(FString(InDirectory));
	if (!ExtraBinariesDirectories.Contains(Directory))
	{
		ExtraBinariesDirectories.Add(Directory);
	}
}

FModulesChangedEvent& FModuleManager::OnModulesChanged()
{
	return ModulesChangedEvent;
}

void FModuleManager::RegisterStaticallyLinkedModule(
	const TCHAR* InModuleName, FInitializeModuleFunctionPtr InInitializer)
{
	// This runs from static initializers, so it must not log or touch anything that may not exist yet.
	const FString ModuleName(InModuleName);
	if (FindInitializer(ModuleName) == nullptr)
	{
		Initializers.Add(FInitializer{ModuleName, InInitializer});
	}
}

FModuleManager::FLoadedModule* FModuleManager::FindLoadedModule(const FName InModuleName)
{
	for (const std::unique_ptr<FLoadedModule>& Loaded : LoadedModules)
	{
		if (Loaded->Name == InModuleName)
		{
			return Loaded.get();
		}
	}
	return nullptr;
}

const FModuleManager::FLoadedModule* FModuleManager::FindLoadedModule(const FName InModuleName) const
{
	return const_cast<FModuleManager*>(this)->FindLoadedModule(InModuleName);
}

FInitializeModuleFunctionPtr FModuleManager::FindInitializer(const FString& ModuleName) const
{
	for (const FInitializer& Initializer : Initializers)
	{
		if (Initializer.Name.Equals(ModuleName, ESearchCase::IgnoreCase))
		{
			return Initializer.Function;
		}
	}
	return nullptr;
}

FString FModuleManager::FindModuleLibrary(const FString& ModuleName) const
{
	for (const FString& Directory : GetBinariesDirectories())
	{
		for (const FString& FileName : ModuleManagerPrivate::GetLibraryFileNames(ModuleName))
		{
			const FString Path = FPaths::Combine(Directory, FileName);
			if (FPaths::FileExists(Path))
			{
				return Path;
			}
		}
	}
	return FString();
}

TArray<FString> FModuleManager::GetBinariesDirectories() const
{
	TArray<FString> Directories;
	Directories.Add(FString(FPlatformProcess::BaseDir()));
	Directories.Append(ExtraBinariesDirectories);
	return Directories;
}
