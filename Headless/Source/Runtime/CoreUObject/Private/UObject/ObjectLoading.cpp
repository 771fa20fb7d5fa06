// Copyright Orvane. All Rights Reserved.

#include "UObject/UObjectGlobals.h"

#include "Containers/Set.h"
#include "HAL/FileManager.h"
#include "Logging/LogMacros.h"
#include "Misc/FileHelper.h"
#include "Misc/OutputDevice.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/PackageObjectFlags.h"
#include "UObject/PackageTextFormat.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

DEFINE_LOG_CATEGORY_STATIC(LogLinker, Log, All);
DEFINE_LOG_CATEGORY_STATIC(LogUObjectGlobals, Log, All);

namespace UE::PackageLoading::Private
{
	/** Collects what a property's ImportText reports, to put it into the loader's own message. */
	class FImportErrorCollector : public FOutputDevice
	{
	public:
		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (!Messages.IsEmpty())
			{
				Messages += TEXT(" ");
			}
			Messages += V;
		}

		FString Messages;
	};

	/** The packages whose loading has started and not finished, so that references back into them do not reload them.
	 */
	TSet<FName>& PackagesBeingLoaded()
	{
		static TSet<FName> Packages;
		return Packages;
	}

	bool ShouldWarn(uint32 LoadFlags)
	{
		return (LoadFlags & (LOAD_NoWarn | LOAD_Quiet)) == 0;
	}

	/** Whether any object lives directly inside the package. */
	bool HasObjects(UPackage* Package)
	{
		TArray<UObject*> Objects;
		GetObjectsWithOuter(Package, Objects, false);
		return !Objects.IsEmpty();
	}

	/** The class a package file names: native classes are in memory, other classes are loaded with their package. */
	UClass* ResolveClass(const FString& ClassPath, uint32 LoadFlags)
	{
		// StaticLoadObject only returns objects of the class it is given.
		return static_cast<UClass*>(
			StaticLoadObject(UClass::StaticClass(), nullptr, *ClassPath, nullptr, LoadFlags | LOAD_NoWarn));
	}

	/**
	 * Every object path in a value of a property that holds hard references: "/Game/A.A" alone, in
	 * quotes, or in the export text form Class'/Game/A.A'.
	 */
	void CollectReferencedPaths(const FString& Value, TArray<FString>& OutPaths)
	{
		const int32 Len = Value.Len();
		for (int32 Index = 0; Index < Len; ++Index)
		{
			if (Value[Index] != TEXT('/'))
			{
				continue;
			}
			const TCHAR Before = Index == 0 ? TEXT(' ') : Value[Index - 1];
			const bool bStartsPath = Before == TEXT('\'') || Before == TEXT('"') || Before == TEXT('(') ||
									 Before == TEXT(',') || Before == TEXT('=') || Before == TEXT(' ');
			if (!bStartsPath)
			{
				continue;
			}
			int32 End = Index;
			while (End < Len && Value[End] != TEXT('\'') && Value[End] != TEXT('"') && Value[End] != TEXT(',') &&
				   Value[End] != TEXT(')') && Value[End] != TEXT(' '))
			{
				++End;
			}
			OutPaths.Add(Value.Mid(Index, End - Index));
			Index = End;
		}
	}

	UPackage* LoadPackageFromFile(
		const FString& PackageName, const FString& Filename, UPackage* ExistingPackage, uint32 LoadFlags);

	/** Loads the packages the values of hard references name, so that importing the values finds the objects. */
	void LoadReferencedPackages(
		const TArray<UE::PackageText::FObjectBlock>& Blocks, const TArray<UObject*>& Objects, uint32 LoadFlags)
	{
		TSet<FString> Seen;
		for (int32 BlockIndex = 0; BlockIndex < Blocks.Num(); ++BlockIndex)
		{
			UObject* Object = Objects[BlockIndex];
			if (!Object)
			{
				continue;
			}
			for (const UE::PackageText::FPropertyLine& Line : Blocks[BlockIndex].Properties)
			{
				const FProperty* Property = FindFProperty<FProperty>(Object->GetClass(), FName(*Line.Name));
				if (!Property || !Property->ContainsObjectReference())
				{
					continue;
				}
				TArray<FString> Paths;
				CollectReferencedPaths(Line.Value, Paths);
				for (const FString& Path : Paths)
				{
					const FString ReferencedPackage = FPackageName::ObjectPathToPackageName(Path);
					if (Seen.Contains(ReferencedPackage) || FPackageName::IsScriptPackage(ReferencedPackage) ||
						!FPackageName::IsValidLongPackageName(ReferencedPackage, true))
					{
						continue;
					}
					Seen.Add(ReferencedPackage);
					if (!FindPackage(nullptr, *ReferencedPackage) && FPackageName::DoesPackageExist(ReferencedPackage))
					{
						LoadPackage(nullptr, *ReferencedPackage, LoadFlags | LOAD_NoWarn);
					}
				}
			}
		}
	}

	/** Creates (or finds, for default subobjects its outer made) the object of one block. */
	UObject* CreateObject(
		UPackage* Package, const FString& Context, const UE::PackageText::FObjectBlock& Block, uint32 LoadFlags)
	{
		UObject* Outer = Package;
		if (!Block.Outer.IsEmpty())
		{
			Outer = StaticFindObject(UObject::StaticClass(), Package, *Block.Outer);
			if (!Outer)
			{
				UE_LOG(LogLinker, Warning,
					TEXT("%s, line %d: the outer '%s' of object '%s' was not loaded; the object is skipped."), *Context,
					Block.Line, *Block.Outer, *Block.Name);
				return nullptr;
			}
		}
		UClass* Class = ResolveClass(Block.Class, LoadFlags);
		if (!Class)
		{
			UE_LOG(LogLinker, Warning,
				TEXT("%s, line %d: the class '%s' of object '%s' cannot be found; the object is skipped."), *Context,
				Block.Line, *Block.Class, *Block.Name);
			return nullptr;
		}

		EObjectFlags Flags = RF_NoFlags;
		for (const FString& FlagName : Block.Flags)
		{
			EObjectFlags Flag = RF_NoFlags;
			if (!UE::PackageText::ParseSavedFlag(FlagName, Flag))
			{
				UE_LOG(LogLinker, Warning, TEXT("%s, line %d: object '%s' has the unknown flag '%s'; it is ignored."),
					*Context, Block.Line, *Block.Name, *FlagName);
				continue;
			}
			Flags |= Flag;
		}

		const FName Name(*Block.Name);
		UObject* Object = StaticFindObjectFast(nullptr, Outer, Name);
		if (Object && !Object->IsA(Class))
		{
			UE_LOG(LogLinker, Warning,
				TEXT("%s, line %d: '%s' already exists as a %s, not a %s; the object is skipped."), *Context,
				Block.Line, *Object->GetPathName(), *Object->GetClass()->GetName(), *Class->GetName());
			return nullptr;
		}
		if (!Object)
		{
			Object = NewObject<UObject>(Outer, Class, Name, Flags);
		}
		Object->SetFlags(Flags);
		return Object;
	}

	/** Reads the property values of one block into its object. */
	void ImportProperties(UObject* Object, const FString& Context, const UE::PackageText::FObjectBlock& Block)
	{
		for (const UE::PackageText::FPropertyLine& Line : Block.Properties)
		{
			FProperty* Property = FindFProperty<FProperty>(Object->GetClass(), FName(*Line.Name));
			if (!Property)
			{
				UE_LOG(LogLinker, Warning, TEXT("%s, line %d: %s has no property '%s'; the value is ignored."),
					*Context, Line.Line, *Object->GetClass()->GetName(), *Line.Name);
				continue;
			}
			if (Line.ArrayIndex >= Property->ArrayDim)
			{
				UE_LOG(LogLinker, Warning,
					TEXT("%s, line %d: %s(%d) is past the end of the property (%d elements); the value is ignored."),
					*Context, Line.Line, *Line.Name, Line.ArrayIndex, Property->ArrayDim);
				continue;
			}
			FImportErrorCollector Errors;
			void* Value = Property->ContainerPtrToValuePtr<void>(Object, Line.ArrayIndex);
			if (!Property->ImportText_Direct(*Line.Value, Value, Object, PPF_Delimited, &Errors))
			{
				UE_LOG(LogLinker, Warning, TEXT("%s, line %d: the value of %s.%s cannot be read from '%s'. %s"),
					*Context, Line.Line, *Object->GetName(), *Line.Name, *Line.Value, *Errors.Messages);
			}
		}
	}

	UPackage* LoadPackageFromFile(
		const FString& PackageName, const FString& Filename, UPackage* ExistingPackage, uint32 LoadFlags)
	{
		FString Text;
		if (!FFileHelper::LoadFileToString(Text, *Filename))
		{
			UE_LOG(
				LogLinker, Error, TEXT("Failed to load '%s': the file '%s' cannot be read."), *PackageName, *Filename);
			return nullptr;
		}
		UE::PackageText::FPackageFile File;
		FString ParseError;
		if (!UE::PackageText::ReadPackageText(Text, File, ParseError))
		{
			UE_LOG(LogLinker, Error, TEXT("Failed to load '%s': '%s' is not a valid package file (%s)."), *PackageName,
				*Filename, *ParseError);
			return nullptr;
		}

		UPackage* Package = ExistingPackage ? ExistingPackage : CreatePackage(*PackageName);
		const FName PackageFName = Package->GetFName();
		PackagesBeingLoaded().Add(PackageFName);
		Package->FileName = FName(*Filename);
		const FString Context = FString::Printf(TEXT("Loading '%s' from '%s'"), *PackageName, *Filename);

		// Every object exists before any value is read, so references inside the package (and back into it
		// from the packages it refers to) find their objects.
		TArray<UObject*> Objects;
		for (const UE::PackageText::FObjectBlock& Block : File.Objects)
		{
			Objects.Add(CreateObject(Package, Context, Block, LoadFlags));
		}
		LoadReferencedPackages(File.Objects, Objects, LoadFlags);
		for (int32 Index = 0; Index < File.Objects.Num(); ++Index)
		{
			if (Objects[Index])
			{
				ImportProperties(Objects[Index], Context, File.Objects[Index]);
			}
		}
		for (UObject* Object : Objects)
		{
			if (Object)
			{
				Object->SetFlags(RF_WasLoaded | RF_LoadCompleted);
				Object->PostLoad();
			}
		}

		Package->SetFlags(RF_WasLoaded | RF_LoadCompleted);
		Package->SetDirtyFlag(false);
		PackagesBeingLoaded().Remove(PackageFName);
		return Package;
	}

	/** Finds an object of a path in memory; a package path finds the package's asset of the same name. */
	UObject* FindLoadedObject(UClass* Class, const FString& Path)
	{
		const bool bPackagePath = !Path.Contains(TEXT(".")) && !Path.Contains(TEXT(":"));
		if (bPackagePath && !Class->IsChildOf(UPackage::StaticClass()))
		{
			const FString AssetPath = Path + TEXT(".") + FPackageName::GetShortName(Path);
			if (UObject* Asset = StaticFindObject(Class, nullptr, *AssetPath))
			{
				return Asset;
			}
			// Without an asset of its name, the path names the package itself, which only a request for any
			// object (Class UObject) accepts.
			return Class == UObject::StaticClass() ? StaticFindObject(Class, nullptr, *Path) : nullptr;
		}
		return StaticFindObject(Class, nullptr, *Path);
	}

	/** The object path a load request names: the export text form and quotes are removed. */
	FString NormalizeRequestedPath(const TCHAR* Name)
	{
		FString Path = FString(Name).TrimStartAndEnd();
		if (Path.Len() >= 2 && Path.StartsWith(TEXT("\"")) && Path.EndsWith(TEXT("\"")))
		{
			Path = Path.Mid(1, Path.Len() - 2);
		}
		return FPackageName::ExportTextPathToObjectPath(Path);
	}
} // namespace UE::PackageLoading::Private

using namespace UE::PackageLoading::Private;

UPackage* LoadPackage(UPackage* InOuter, const TCHAR* InLongPackageName, uint32 LoadFlags, FArchive* InReaderOverride,
	const FLinkerInstancingContext* InstancingContext)
{
	if (InReaderOverride || InstancingContext)
	{
		UE_HEADLESS_UNIMPLEMENTED();
		return nullptr;
	}
	FString PackageName = InLongPackageName ? FString(InLongPackageName) : (InOuter ? InOuter->GetName() : FString());
	if (!FPackageName::IsValidLongPackageName(PackageName, true))
	{
		FString Converted;
		if (!FPackageName::TryConvertFilenameToLongPackageName(PackageName, Converted))
		{
			if (ShouldWarn(LoadFlags))
			{
				UE_LOG(LogUObjectGlobals, Warning,
					TEXT("Failed to load '%s': it is neither a package name nor a package file."), *PackageName);
			}
			return nullptr;
		}
		PackageName = Converted;
	}
	if (InOuter && InOuter->GetName() != PackageName)
	{
		// Loading a file into a package of another name (instancing) is not part of the headless engine.
		UE_HEADLESS_UNIMPLEMENTED();
		return nullptr;
	}

	UPackage* Existing = InOuter ? InOuter : FindPackage(nullptr, *PackageName);
	if (Existing && (PackagesBeingLoaded().Contains(Existing->GetFName()) || HasObjects(Existing)))
	{
		return Existing;
	}
	FString Filename;
	if (FPackageName::IsScriptPackage(PackageName) || !FPackageName::DoesPackageExist(PackageName, &Filename))
	{
		if (Existing)
		{
			return Existing;
		}
		if (ShouldWarn(LoadFlags))
		{
			UE_LOG(LogUObjectGlobals, Warning, TEXT("Failed to load '%s': Can't find file."), *PackageName);
		}
		return nullptr;
	}
	return LoadPackageFromFile(PackageName, Filename, Existing, LoadFlags);
}

UObject* StaticLoadObject(UClass* Class, UObject* InOuter, const TCHAR* Name, const TCHAR* Filename, uint32 LoadFlags,
	UPackageMap* Sandbox, bool bAllowObjectReconciliation, const FLinkerInstancingContext* InstancingContext)
{
	if (Sandbox || InstancingContext || (Filename && *Filename))
	{
		UE_HEADLESS_UNIMPLEMENTED();
	}
	UClass* SearchClass = Class ? Class : UObject::StaticClass();
	const FString Path = NormalizeRequestedPath(Name ? Name : TEXT(""));
	if (Path.IsEmpty())
	{
		return nullptr;
	}

	UObject* Object = nullptr;
	FString FullPath;
	if (InOuter)
	{
		FullPath = InOuter->GetPathName() + TEXT(".") + Path;
		Object = StaticFindObject(SearchClass, InOuter, *Path);
		UPackage* OuterPackage = InOuter->GetPackage();
		if (!Object && OuterPackage && !FPackageName::IsScriptPackage(OuterPackage->GetName()))
		{
			LoadPackage(nullptr, *OuterPackage->GetName(), LoadFlags | LOAD_NoWarn);
			Object = StaticFindObject(SearchClass, InOuter, *Path);
		}
	}
	else
	{
		FullPath = Path;
		Object = FindLoadedObject(SearchClass, Path);
		const FString PackageName = FPackageName::ObjectPathToPackageName(Path);
		if (!Object && !FPackageName::IsScriptPackage(PackageName) &&
			FPackageName::IsValidLongPackageName(PackageName, true))
		{
			LoadPackage(nullptr, *PackageName, LoadFlags | LOAD_NoWarn);
			Object = FindLoadedObject(SearchClass, Path);
		}
	}

	if (!Object && ShouldWarn(LoadFlags))
	{
		UE_LOG(LogUObjectGlobals, Warning, TEXT("Failed to find object '%s %s'"), *SearchClass->GetName(), *FullPath);
	}
	return Object;
}

UClass* StaticLoadClass(UClass* BaseClass, UObject* InOuter, const TCHAR* Name, const TCHAR* Filename, uint32 LoadFlags,
	UPackageMap* Sandbox)
{
	// StaticLoadObject only returns objects of the class it is given.
	UClass* Class =
		static_cast<UClass*>(StaticLoadObject(UClass::StaticClass(), InOuter, Name, Filename, LoadFlags, Sandbox));
	if (Class && BaseClass && !Class->IsChildOf(BaseClass))
	{
		UE_LOG(LogUObjectGlobals, Error, TEXT("LoadClass<%s>(\"%s\") failed: %s is not a child class of %s."),
			*BaseClass->GetName(), Name, *Class->GetPathName(), *BaseClass->GetPathName());
		return nullptr;
	}
	return Class;
}

void FlushAsyncLoading(int32 PackageID)
{
	// Every load of the headless engine completes before LoadPackage returns: nothing is ever pending.
}

void FlushAsyncLoading(TConstArrayView<int32> RequestIds)
{
	// As above: there are no asynchronous loads to wait for.
}
