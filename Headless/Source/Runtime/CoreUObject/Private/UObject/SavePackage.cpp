// Copyright Orvane. All Rights Reserved.

#include "UObject/SavePackage.h"

#include "Algo/Sort.h"
#include "Containers/Set.h"
#include "HAL/FileManager.h"
#include "Logging/LogMacros.h"
#include "Misc/FileHelper.h"
#include "Misc/OutputDevice.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/PackageObjectFlags.h"
#include "UObject/PackageTextFormat.h"
#include "UObject/PropertyPortFlags.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"
#include "UObject/UnrealType.h"

DEFINE_LOG_CATEGORY_STATIC(LogSavePackage, Log, All);

namespace UE::SavePackage::Private
{
	/** Gathers the objects a saved object refers to through its properties. */
	class FReferenceGatherer : public FReferenceCollector
	{
	public:
		virtual void HandleObjectReference(
			UObject*& InObject, const UObject* InReferencingObject, const FProperty* InReferencingProperty) override
		{
			if (InObject)
			{
				References.Add(InObject);
			}
		}

		TArray<UObject*> References;
	};

	/** Reports a save error to the save's error device (or the log), unless the caller asked for silence. */
	void ReportError(const FSavePackageArgs& SaveArgs, const FString& Message)
	{
		if ((SaveArgs.SaveFlags & SAVE_NoError) != 0)
		{
			UE_LOG(LogSavePackage, Display, TEXT("%s"), *Message);
		}
		else if (SaveArgs.Error)
		{
			SaveArgs.Error->Log(ELogVerbosity::Error, Message);
		}
		else
		{
			UE_LOG(LogSavePackage, Error, TEXT("%s"), *Message);
		}
	}

	/** Whether the object or one of its outers inside the package is transient. */
	bool IsTransientInPackage(const UObject* Object, const UPackage* Package)
	{
		for (const UObject* Current = Object; Current && Current != Package; Current = Current->GetOuter())
		{
			if (Current->HasAnyFlags(RF_Transient))
			{
				return true;
			}
		}
		return false;
	}

	int32 GetDepthInPackage(const UObject* Object, const UPackage* Package)
	{
		int32 Depth = 0;
		for (const UObject* Current = Object; Current && Current != Package; Current = Current->GetOuter())
		{
			++Depth;
		}
		return Depth;
	}

	/**
	 * The objects to save: the asset, the package's objects with any of the top-level flags, and
	 * everything inside those or referred to by them within the package, minus transient objects and
	 * garbage. Outers come before their inners.
	 */
	TArray<UObject*> CollectObjectsToSave(UPackage* Package, UObject* Asset, EObjectFlags TopLevelFlags)
	{
		TArray<UObject*> InPackage;
		GetObjectsWithOuter(Package, InPackage, true);
		TSet<UObject*> Saveable;
		for (UObject* Object : InPackage)
		{
			if (IsValid(Object) && !IsTransientInPackage(Object, Package))
			{
				Saveable.Add(Object);
			}
		}

		TArray<UObject*> Pending;
		if (Asset && Saveable.Contains(Asset))
		{
			Pending.Add(Asset);
		}
		if (TopLevelFlags != RF_NoFlags)
		{
			for (UObject* Object : InPackage)
			{
				if (Saveable.Contains(Object) && Object->HasAnyFlags(TopLevelFlags))
				{
					Pending.Add(Object);
				}
			}
		}

		TSet<UObject*> Selected;
		TArray<UObject*> Result;
		while (!Pending.IsEmpty())
		{
			UObject* Object = Pending.Pop();
			if (Selected.Contains(Object))
			{
				continue;
			}
			Selected.Add(Object);
			Result.Add(Object);

			TArray<UObject*> Inners;
			GetObjectsWithOuter(Object, Inners, false);
			FReferenceGatherer Gatherer;
			Gatherer.AddPropertyReferences(Object->GetClass(), Object, Object);
			Inners.Append(Gatherer.References);
			for (UObject* Next : Inners)
			{
				if (Saveable.Contains(Next) && !Selected.Contains(Next))
				{
					Pending.Add(Next);
				}
			}
		}

		// Outers first, so the loader can create each object inside an existing outer; then by path, so that
		// saving the same objects twice writes the same file.
		TMap<UObject*, TPair<int32, FString>> SortKeys;
		for (UObject* Object : Result)
		{
			SortKeys.Add(
				Object, TPair<int32, FString>(GetDepthInPackage(Object, Package), Object->GetPathName(Package)));
		}
		Algo::Sort(Result,
			[&SortKeys](UObject* A, UObject* B)
			{
				const TPair<int32, FString>& KeyA = SortKeys[A];
				const TPair<int32, FString>& KeyB = SortKeys[B];
				return KeyA.Key != KeyB.Key ? KeyA.Key < KeyB.Key : KeyA.Value.Compare(KeyB.Value) < 0;
			});
		return Result;
	}

	/** The block of one object: its identity and every property value that is saved. */
	UE::PackageText::FObjectBlock MakeObjectBlock(UObject* Object, UPackage* Package)
	{
		UE::PackageText::FObjectBlock Block;
		Block.Name = Object->GetName();
		Block.Class = Object->GetClass()->GetPathName();
		if (Object->GetOuter() != Package)
		{
			Block.Outer = Object->GetOuter()->GetPathName(Package);
		}
		Block.Flags = UE::PackageText::GetSavedFlagNames(Object->GetFlags());
		for (TFieldIterator<FProperty> It(
				 Object->GetClass(), EFieldIteratorFlags::IncludeSuper, EFieldIteratorFlags::ExcludeDeprecated);
			 It; ++It)
		{
			FProperty* Property = *It;
			if (!Property->ShouldSerializeValue())
			{
				continue;
			}
			for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
			{
				UE::PackageText::FPropertyLine& Line = Block.Properties.AddDefaulted_GetRef();
				Line.Name = Property->GetName();
				Line.ArrayIndex = Index;
				Property->ExportTextItem_Direct(
					Line.Value, Property->ContainerPtrToValuePtr<void>(Object, Index), nullptr, Object, PPF_Delimited);
			}
		}
		return Block;
	}
} // namespace UE::SavePackage::Private

using namespace UE::SavePackage::Private;

bool UPackage::SavePackage(UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs)
{
	return Save(InOuter, InAsset, Filename, SaveArgs).IsSuccessful();
}

FSavePackageResultStruct UPackage::Save(
	UPackage* InOuter, UObject* InAsset, const TCHAR* Filename, const FSavePackageArgs& SaveArgs)
{
	if (!InOuter || !Filename || !*Filename)
	{
		ReportError(SaveArgs, TEXT("Cannot save a package without a package and a file name."));
		return ESavePackageResult::Error;
	}
	const FString PackageName = InOuter->GetName();
	if (SaveArgs.TargetPlatform || SaveArgs.ArchiveCookData)
	{
		// Cooking for a target platform is not part of the headless engine.
		UE_HEADLESS_UNIMPLEMENTED();
		return ESavePackageResult::Error;
	}
	if (InAsset && InAsset->GetPackage() != InOuter)
	{
		ReportError(SaveArgs, FString::Printf(TEXT("Cannot save package '%s': the asset '%s' is not inside it."),
								  *PackageName, *InAsset->GetPathName()));
		return ESavePackageResult::Error;
	}
	if (IFileManager::Get().IsReadOnly(Filename))
	{
		ReportError(SaveArgs,
			FString::Printf(TEXT("Cannot save package '%s': the file '%s' is read-only."), *PackageName, Filename));
		return ESavePackageResult::Error;
	}

	UE::PackageText::FPackageFile File;
	File.PackageName = PackageName;
	for (UObject* Object : CollectObjectsToSave(InOuter, InAsset, SaveArgs.TopLevelFlags))
	{
		File.Objects.Add(MakeObjectBlock(Object, InOuter));
	}

	InOuter->SetPackageFlags(PKG_IsSaving);
	const bool bWritten = FFileHelper::SaveStringToFile(
		UE::PackageText::WritePackageText(File), Filename, FFileHelper::EEncodingOptions::ForceUTF8WithoutBOM);
	InOuter->ClearPackageFlags(PKG_IsSaving);
	if (!bWritten)
	{
		ReportError(SaveArgs, FString::Printf(TEXT("Cannot save package '%s': the file '%s' could not be written."),
								  *PackageName, Filename));
		return ESavePackageResult::Error;
	}
	if (SaveArgs.FinalTimeStamp != FDateTime::MinValue())
	{
		// Setting a file's modification time is not something the headless file manager offers.
		UE_HEADLESS_UNIMPLEMENTED();
	}

	InOuter->FileName = FName(Filename);
	if ((SaveArgs.SaveFlags & SAVE_KeepDirty) == 0)
	{
		InOuter->SetDirtyFlag(false);
	}
	UE_LOG(LogSavePackage, Verbose, TEXT("Saved package '%s' (%d objects) to '%s'."), *PackageName, File.Objects.Num(),
		Filename);
	return FSavePackageResultStruct(ESavePackageResult::Success, IFileManager::Get().FileSize(Filename));
}
