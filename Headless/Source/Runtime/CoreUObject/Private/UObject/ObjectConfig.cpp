// Copyright Orvane. All Rights Reserved.

#include "HAL/FileManager.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/Paths.h"
#include "ObjectInternals.h"
#include "UObject/Class.h"
#include "UObject/DefaultObjectConfig.h"
#include "UObject/Object.h"
#include "UObject/UObjectHash.h"
#include "UObject/UObjectIterator.h"
#include "UObject/UnrealType.h"

// How objects meet the config files.
//
// A config class stores its CPF_Config properties in the section named after the class path
// ("/Script/Engine.RendererSettings") of the file its config name selects (the Engine branch for config=Engine).
// Each property is one key named after the property, or after its console variable when it has ConsoleVariable
// metadata, as the engine's settings classes are stored ("r.DefaultBackBufferPixelFormat=4"). Values are the
// property's text form (True/False, numbers, enumerator names, paths, "(A=..,B=..)" for structs); dynamic arrays
// are one value per element under the same key; elements of fixed-size arrays are the keys "Name[Index]".
// Console variables are set from the file by number, so enums stored under a console variable's name are
// written as numbers; bools keep their True/False form, as the editor writes them under console variable names.
// A key whose text already means the value being written ("1" for True) is left as it is.

namespace UE::CoreUObject::Private
{
	/** The name of the console variable a property mirrors, or an empty string. */
	static FString GetConsoleVariableName(const FProperty* Property)
	{
#if WITH_EDITOR
		static const FName ConsoleVariableKey(TEXT("ConsoleVariable"));
		if (Property->HasMetaData(ConsoleVariableKey))
		{
			return Property->GetMetaData(ConsoleVariableKey);
		}
#endif
		return FString();
	}

	/** The key of one element of the property. */
	static FString GetConfigKey(const FProperty* Property, int32 ArrayIndex)
	{
		const FString ConsoleVariable = GetConsoleVariableName(Property);
		FString Key = ConsoleVariable.IsEmpty() ? Property->GetName() : ConsoleVariable;
		if (Property->ArrayDim > 1)
		{
			Key += FString::Printf(TEXT("[%d]"), ArrayIndex);
		}
		return Key;
	}

	/** The section holding the property's value for objects whose own section is ObjectSection. */
	static FString GetConfigSection(const FProperty* Property, const FString& ObjectSection)
	{
		// Global config values belong to the class declaring them, whichever subclass reads or writes them.
		if (Property->HasAnyPropertyFlags(CPF_GlobalConfig))
		{
			if (const UClass* Owner = Property->GetOwnerClass())
			{
				return Owner->GetPathName();
			}
		}
		return ObjectSection;
	}

	/** The text of one value as the config file stores it. */
	static FString ExportConfigValue(
		const FProperty* Property, const void* Value, UObject* Owner, bool bConsoleVariable)
	{
		if (bConsoleVariable)
		{
			const FNumericProperty* Numeric = CastField<FNumericProperty>(Property);
			if (const FEnumProperty* EnumProperty = CastField<FEnumProperty>(Property))
			{
				Numeric = EnumProperty->GetUnderlyingProperty();
			}
			else if (Numeric && !Numeric->IsEnum())
			{
				Numeric = nullptr;
			}
			if (Numeric)
			{
				return LexToString(Numeric->GetSignedIntPropertyValue(Value));
			}
		}
		FString Text;
		Property->ExportTextItem_Direct(Text, Value, nullptr, Owner, PPF_None);
		return Text;
	}

	/** The values of one element of the property: one per array element for dynamic arrays. */
	static TArray<FString> ExportConfigValues(const FProperty* Property, UObject* Object, int32 ArrayIndex)
	{
		const bool bConsoleVariable = !GetConsoleVariableName(Property).IsEmpty();
		const void* Value = Property->ContainerPtrToValuePtr<void>(Object, ArrayIndex);
		TArray<FString> Values;
		if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
		{
			FScriptArrayHelper Helper(ArrayProperty, Value);
			for (int32 Index = 0; Index < Helper.Num(); ++Index)
			{
				Values.Add(ExportConfigValue(ArrayProperty->Inner, Helper.GetRawPtr(Index), Object, bConsoleVariable));
			}
		}
		else
		{
			Values.Add(ExportConfigValue(Property, Value, Object, bConsoleVariable));
		}
		return Values;
	}

	/**
	 * True if the texts a file holds for a key mean the values about to be written. Each text is read into a
	 * value of the property and written back in the form the config files use, so "1" stands for True and an
	 * enumerator's number for its name; a key that already means the value keeps its line as it is.
	 */
	static bool SameConfigValues(
		const FProperty* Property, UObject* Object, const TArray<FString>& Texts, const TArray<FString>& Values)
	{
		if (Texts.Num() != Values.Num())
		{
			return false;
		}
		const bool bConsoleVariable = !GetConsoleVariableName(Property).IsEmpty();
		const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property);
		const FProperty* ValueProperty = ArrayProperty ? ArrayProperty->Inner : Property;
		void* Scratch = FMemory::Malloc(ValueProperty->GetSize(), ValueProperty->GetMinAlignment());
		bool bSame = true;
		for (int32 Index = 0; Index < Texts.Num() && bSame; ++Index)
		{
			ValueProperty->InitializeValue(Scratch);
			bSame = ValueProperty->ImportText_Direct(*Texts[Index], Scratch, Object, PPF_None) != nullptr &&
					ExportConfigValue(ValueProperty, Scratch, Object, bConsoleVariable) == Values[Index];
			ValueProperty->DestroyValue(Scratch);
		}
		FMemory::Free(Scratch);
		return bSame;
	}

	/** True if the property is a dynamic array (stored as repeated keys). */
	static bool IsArrayProperty(const FProperty* Property)
	{
		return CastField<FArrayProperty>(Property) != nullptr;
	}

	/** Writes every element of the property into File; the file keeps lines whose values did not change. */
	static void WriteProperty(
		FConfigFile& File, const FString& ObjectSection, UObject* Object, const FProperty* Property)
	{
		const FString Section = GetConfigSection(Property, ObjectSection);
		for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
		{
			const FString Key = GetConfigKey(Property, Index);
			const TArray<FString> Values = ExportConfigValues(Property, Object, Index);
			TArray<FString> Texts;
			File.GetArray(*Section, *Key, Texts);
			if (SameConfigValues(Property, Object, Texts, Values))
			{
				continue;
			}
			if (IsArrayProperty(Property))
			{
				File.SetArray(*Section, *Key, Values);
			}
			else
			{
				File.SetString(*Section, *Key, *Values[0]);
			}
		}
	}

	/** Reads every element of the property that File has a value for; missing keys leave the value alone. */
	static void ReadProperty(
		const FConfigFile& File, const FString& ObjectSection, UObject* Object, const FProperty* Property)
	{
		const FString Section = GetConfigSection(Property, ObjectSection);
		for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
		{
			const FString Key = GetConfigKey(Property, Index);
			void* Value = Property->ContainerPtrToValuePtr<void>(Object, Index);
			TArray<FString> Texts;
			if (const FArrayProperty* ArrayProperty = CastField<FArrayProperty>(Property))
			{
				if (File.GetArray(*Section, *Key, Texts) == 0)
				{
					continue;
				}
				FScriptArrayHelper Helper(ArrayProperty, Value);
				Helper.EmptyValues();
				for (const FString& Text : Texts)
				{
					const int32 Added = Helper.AddValue();
					if (!ArrayProperty->Inner->ImportText_Direct(*Text, Helper.GetRawPtr(Added), Object, PPF_None))
					{
						UE_LOG(LogConfig, Warning, TEXT("[%s] %s: '%s' is not a valid value of %s; element skipped."),
							*Section, *Key, *Text, *Property->GetName());
						Helper.RemoveValues(Added);
					}
				}
				continue;
			}
			FString Text;
			if (!File.GetString(*Section, *Key, Text))
			{
				continue;
			}
			if (!Property->ImportText_Direct(*Text, Value, Object, PPF_None))
			{
				UE_LOG(LogConfig, Warning, TEXT("[%s] %s: '%s' is not a valid value of %s; the value is unchanged."),
					*Section, *Key, *Text, *Property->GetName());
			}
		}
	}

	/** True (with a Warning naming the call) when the class stores values per object, which is not supported. */
	static bool IsUnsupportedPerObjectConfig(const UObject* Object, const UClass* ConfigClass)
	{
		if (ConfigClass->HasAnyClassFlags(CLASS_PerObjectConfig) && !Object->HasAnyFlags(RF_ClassDefaultObject))
		{
			UE_HEADLESS_UNIMPLEMENTED();
			return true;
		}
		return false;
	}

	/** True when the file exists and may not be written. */
	static bool IsReadOnlyFile(const FString& Filename)
	{
		return FPaths::FileExists(Filename) && IFileManager::Get().IsReadOnly(*Filename);
	}

	/** Writes the cached file to disk; false (the cache warned) when the file refused the write. */
	static bool FlushConfigFile(FConfigCacheIni& Config, const FString& Filename, bool bWasCached)
	{
		// A file this call loaded is dropped once written, so the cache does not keep a copy nobody asked for.
		Config.Flush(!bWasCached, Filename);
		const FConfigFile* Left = Config.FindConfigFile(Filename);
		return !Left || !Left->Dirty;
	}
} // namespace UE::CoreUObject::Private

using namespace UE::CoreUObject::Private;

FString UClass::GetConfigName() const
{
	static const FName NAME_Engine(TEXT("Engine"));
	static const FName NAME_Game(TEXT("Game"));
	static const FName NAME_Input(TEXT("Input"));
	static const FName NAME_Editor(TEXT("Editor"));
	static const FName NAME_EditorPerProjectUserSettings(TEXT("EditorPerProjectUserSettings"));
	if (ClassConfigName == NAME_Engine)
	{
		return GEngineIni;
	}
	if (ClassConfigName == NAME_Game)
	{
		return GGameIni;
	}
	if (ClassConfigName == NAME_Input)
	{
		return GInputIni;
	}
	if (ClassConfigName == NAME_Editor)
	{
		return GEditorIni;
	}
	if (ClassConfigName == NAME_EditorPerProjectUserSettings)
	{
		return GEditorPerProjectIni;
	}
	FString Filename;
	if (GConfig && !ClassConfigName.IsNone())
	{
		FConfigCacheIni::LoadGlobalIniFile(Filename, *ClassConfigName.ToString());
	}
	return Filename;
}

FString UObject::GetConfigSectionName() const
{
	return GetClass()->GetPathName();
}

FString UObject::GetDefaultConfigFilename() const
{
	return FPaths::ProjectConfigDir() + TEXT("Default") + GetClass()->ClassConfigName.ToString() + TEXT(".ini");
}

FString UObject::GetGlobalUserConfigFilename() const
{
	UE_HEADLESS_UNIMPLEMENTED();
	return FString();
}

FString UObject::GetProjectUserConfigFilename() const
{
	return FPaths::ProjectConfigDir() + TEXT("UserDefault") + GetClass()->ClassConfigName.ToString() + TEXT(".ini");
}

void UObject::SaveConfig(uint64 Flags, const TCHAR* Filename, FConfigCacheIni* Config, bool bAllowCopyToDefaultObject)
{
	UClass* Class = GetClass();
	if (!Class->HasAnyClassFlags(CLASS_Config) || IsUnsupportedPerObjectConfig(this, Class))
	{
		return;
	}
	if (!Config)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot save the config of %s: the config system has not started."),
			*GetPathName());
		return;
	}
	const FString TargetFilename = Filename ? FString(Filename) : Class->GetConfigName();
	const bool bWasCached = Config->FindConfigFile(TargetFilename) != nullptr;
	FConfigFile* File = Config->Find(TargetFilename);
	if (!File)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot save the config of %s: no config file '%s'."), *GetPathName(),
			*TargetFilename);
		return;
	}

	const FString Section = GetConfigSectionName();
	UObject* DefaultObject = Class->GetDefaultObject(false);
	const bool bCopyToDefaultObject = bAllowCopyToDefaultObject && DefaultObject && DefaultObject != this;
	for (FProperty* Property = Class->PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		if (!Property->HasAnyPropertyFlags(Flags))
		{
			continue;
		}
		WriteProperty(*File, Section, this, Property);
		if (bCopyToDefaultObject)
		{
			Property->CopyCompleteValue_InContainer(DefaultObject, this);
		}
	}
	FlushConfigFile(*Config, TargetFilename, bWasCached || !Filename);
}

bool UObject::TryUpdateDefaultConfigFile(const FString& SpecificFileLocation, bool bWarnIfFail)
{
	UClass* Class = GetClass();
	const FString Filename = SpecificFileLocation.IsEmpty() ? GetDefaultConfigFilename() : SpecificFileLocation;
	if (!Class->HasAnyClassFlags(CLASS_Config) || IsUnsupportedPerObjectConfig(this, Class))
	{
		UE_CLOG(bWarnIfFail, LogConfig, Warning, TEXT("Cannot update '%s': %s is not a config class."), *Filename,
			*Class->GetName());
		return false;
	}
	if (!GConfig)
	{
		UE_CLOG(
			bWarnIfFail, LogConfig, Warning, TEXT("Cannot update '%s': the config system has not started."), *Filename);
		return false;
	}
	if (IsReadOnlyFile(Filename))
	{
		UE_CLOG(bWarnIfFail, LogConfig, Warning, TEXT("Cannot update '%s': the file is read-only."), *Filename);
		return false;
	}

	// The values the file sits on: a property whose value they already give needs no line of its own.
	FConfigFile Base;
	Base.Read(FPaths::EngineConfigDir() + TEXT("Base") + Class->ClassConfigName.ToString() + TEXT(".ini"));

	const bool bWasCached = GConfig->FindConfigFile(Filename) != nullptr;
	FConfigFile* File = GConfig->Find(Filename);
	if (!File)
	{
		UE_CLOG(bWarnIfFail, LogConfig, Warning, TEXT("Cannot update '%s': it is not a config file."), *Filename);
		return false;
	}
	const FString ObjectSection = GetConfigSectionName();
	for (FProperty* Property = Class->PropertyLink; Property; Property = Property->PropertyLinkNext)
	{
		if (!Property->HasAnyPropertyFlags(CPF_Config))
		{
			continue;
		}
		const FString Section = GetConfigSection(Property, ObjectSection);
		for (int32 Index = 0; Index < Property->ArrayDim; ++Index)
		{
			const FString Key = GetConfigKey(Property, Index);
			const TArray<FString> Values = ExportConfigValues(Property, this, Index);
			TArray<FString> BaseValues;
			Base.GetArray(*Section, *Key, BaseValues);
			TArray<FString> FileValues;
			const bool bInFile = File->GetArray(*Section, *Key, FileValues) > 0;
			if (bInFile ? SameConfigValues(Property, this, FileValues, Values)
						: SameConfigValues(Property, this, BaseValues, Values))
			{
				continue;
			}
			if (IsArrayProperty(Property))
			{
				File->SetArray(*Section, *Key, Values);
			}
			else
			{
				File->SetString(*Section, *Key, *Values[0]);
			}
		}
	}
	if (!FlushConfigFile(*GConfig, Filename, bWasCached))
	{
		UE_CLOG(bWarnIfFail, LogConfig, Warning, TEXT("Could not write '%s'."), *Filename);
		return false;
	}
	return true;
}

void UObject::UpdateDefaultConfigFile(const FString& SpecificFileLocation)
{
	TryUpdateDefaultConfigFile(SpecificFileLocation);
}

void UObject::UpdateGlobalUserConfigFile()
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::UpdateProjectUserConfigFile()
{
	UE_HEADLESS_UNIMPLEMENTED();
}

void UObject::UpdateSinglePropertyInConfigFile(const FProperty* InProperty, const FString& InConfigIniName)
{
	UClass* Class = GetClass();
	if (!Class->HasAnyClassFlags(CLASS_Config))
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot update '%s': %s is not a config class."), *InConfigIniName,
			*Class->GetName());
		return;
	}
	if (!InProperty || !InProperty->HasAnyPropertyFlags(CPF_Config) || !Class->ContainsProperty(InProperty))
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot update '%s': %s is not a config property of %s."), *InConfigIniName,
			InProperty ? *InProperty->GetName() : TEXT("(null)"), *Class->GetName());
		return;
	}
	if (IsUnsupportedPerObjectConfig(this, Class))
	{
		return;
	}
	if (!GConfig)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot update '%s': the config system has not started."), *InConfigIniName);
		return;
	}
	if (IsReadOnlyFile(InConfigIniName))
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot update %s in '%s': the file is read-only."), *InProperty->GetName(),
			*InConfigIniName);
		return;
	}
	const bool bWasCached = GConfig->FindConfigFile(InConfigIniName) != nullptr;
	FConfigFile* File = GConfig->Find(InConfigIniName);
	if (!File)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot update '%s': it is not a config file."), *InConfigIniName);
		return;
	}
	WriteProperty(*File, GetConfigSectionName(), this, InProperty);
	// Writing the file through the cache also refreshes the branches built on it, so reads see the new value.
	if (!FlushConfigFile(*GConfig, InConfigIniName, bWasCached))
	{
		UE_LOG(LogConfig, Warning, TEXT("Could not write %s to '%s'."), *InProperty->GetName(), *InConfigIniName);
	}
}

void UObject::LoadConfig(UClass* ConfigClass, const TCHAR* Filename, uint32 PropagationFlags, FProperty* PropertyToLoad)
{
	if (!ConfigClass)
	{
		ConfigClass = GetClass();
	}
	if (!ConfigClass->HasAnyClassFlags(CLASS_Config) || IsUnsupportedPerObjectConfig(this, ConfigClass))
	{
		return;
	}
	if (!GConfig)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot load the config of %s: the config system has not started."),
			*GetPathName());
		return;
	}
	const FString SourceFilename = Filename ? FString(Filename) : ConfigClass->GetConfigName();
	const FConfigFile* File = GConfig->Find(SourceFilename);
	if (!File)
	{
		UE_LOG(LogConfig, Warning, TEXT("Cannot load the config of %s: no config file '%s'."), *GetPathName(),
			*SourceFilename);
		return;
	}

	// With LCPF_ReadParentSections the sections of the config super classes come first, so this class's win.
	TArray<UClass*> SectionClasses;
	for (UClass* SectionClass = ConfigClass; SectionClass; SectionClass = SectionClass->GetSuperClass())
	{
		if (SectionClass->HasAnyClassFlags(CLASS_Config))
		{
			SectionClasses.Insert(SectionClass, 0);
		}
		if (!(PropagationFlags & UE::LCPF_ReadParentSections))
		{
			break;
		}
	}
	for (UClass* SectionClass : SectionClasses)
	{
		const FString Section = SectionClass->GetPathName();
		for (FProperty* Property = SectionClass->PropertyLink; Property; Property = Property->PropertyLinkNext)
		{
			if (Property->HasAnyPropertyFlags(CPF_Config) && (!PropertyToLoad || PropertyToLoad == Property))
			{
				ReadProperty(*File, Section, this, Property);
			}
		}
	}

	const uint32 PassedOnFlags = PropagationFlags & UE::LCPF_PersistentFlags;
	if (PropagationFlags & UE::LCPF_PropagateToChildDefaultObjects)
	{
		TArray<UClass*> Children;
		GetDerivedClasses(ConfigClass, Children);
		for (UClass* Child : Children)
		{
			if (UObject* ChildDefault = Child->GetDefaultObject(false))
			{
				ChildDefault->LoadConfig(Child, nullptr, PassedOnFlags, PropertyToLoad);
			}
		}
	}
	if (PropagationFlags & UE::LCPF_PropagateToInstances)
	{
		TArray<UObject*> Instances;
		GetObjectsOfClass(ConfigClass, Instances);
		for (UObject* Instance : Instances)
		{
			if (Instance != this)
			{
				Instance->LoadConfig(Instance->GetClass(), nullptr, PassedOnFlags, PropertyToLoad);
			}
		}
	}
}

void UObject::ReloadConfig(
	UClass* ConfigClass, const TCHAR* Filename, uint32 PropagationFlags, FProperty* PropertyToLoad)
{
	LoadConfig(ConfigClass, Filename, PropagationFlags | UE::LCPF_ReloadingConfigData, PropertyToLoad);
}

void UE::CoreUObject::LoadConfigForExistingDefaultObjects()
{
	if (!GConfig)
	{
		UE_LOG(LogConfig, Warning,
			TEXT("Cannot load the config of the default objects: the config system has not started."));
		return;
	}
	for (TObjectIterator<UClass> It; It; ++It)
	{
		UClass* Class = *It;
		if (!Class->HasAnyClassFlags(CLASS_Config))
		{
			continue;
		}
		if (UObject* DefaultObject = Class->GetDefaultObject(false))
		{
			DefaultObject->LoadConfig();
		}
	}
}
