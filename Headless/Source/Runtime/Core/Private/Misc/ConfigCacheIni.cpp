// Copyright Orvane. All Rights Reserved.

#include "Misc/ConfigCacheIni.h"

#include "HAL/FileManager.h"

DEFINE_LOG_CATEGORY(LogConfig);

FString GEngineIni;
FString GGameIni;
FString GInputIni;
FString GEditorIni;
FString GEditorPerProjectIni;

namespace
{
	/** The platform whose saved config folder the headless editor uses. */
	const TCHAR* const HeadlessPlatformName = TEXT("Linux");

	/** Paths are cached in their absolute form; base names ("Engine") stay as given. */
	FString NormalizeConfigFilename(const FString& Filename)
	{
		if (Filename.Contains(TEXT("/")) || Filename.Contains(TEXT("\\")) || Filename.EndsWith(TEXT(".ini")))
		{
			return FPaths::ConvertRelativePathToFull(Filename);
		}
		return Filename;
	}

	bool IsBaseName(const FString& Filename)
	{
		return !Filename.IsEmpty() && !Filename.Contains(TEXT("/")) && !Filename.Contains(TEXT("\\")) &&
			   !Filename.Contains(TEXT("."));
	}

	/** The lower layers of a branch, lowest first. */
	TArray<FString> GetLayerFilenames(const TCHAR* BaseIniName)
	{
		TArray<FString> Layers;
		Layers.Add(
			FPaths::ConvertRelativePathToFull(FPaths::EngineConfigDir() + TEXT("Base") + BaseIniName + TEXT(".ini")));
		Layers.Add(FPaths::ConvertRelativePathToFull(
			FPaths::ProjectConfigDir() + TEXT("Default") + BaseIniName + TEXT(".ini")));
		return Layers;
	}

	/** The layers read from disk and merged, each on top of the ones before. */
	FConfigFile ReadLayers(const TArray<FString>& LayerFilenames)
	{
		FConfigFile Merged;
		for (const FString& LayerFilename : LayerFilenames)
		{
			FConfigFile Layer;
			Layer.SetLowerLayers(Merged);
			Layer.Read(LayerFilename);
			Merged = Layer;
		}
		return Merged;
	}

	FString GetSavedConfigFolder(const TCHAR* Platform)
	{
		return FString(Platform ? Platform : HeadlessPlatformName) + (GIsEditor ? TEXT("Editor") : TEXT(""));
	}
} // namespace

FConfigCacheIni::FConfigCacheIni() = default;
FConfigCacheIni::~FConfigCacheIni() = default;

void FConfigCacheIni::InitializeConfigSystem()
{
	if (!GConfig)
	{
		GConfig = new FConfigCacheIni();
	}
	// A second call (a host starting another session) reloads the branches for the current project.
	LoadGlobalIniFile(GEngineIni, TEXT("Engine"), nullptr, true);
	LoadGlobalIniFile(GGameIni, TEXT("Game"), nullptr, true);
	LoadGlobalIniFile(GInputIni, TEXT("Input"), nullptr, true);
	LoadGlobalIniFile(GEditorIni, TEXT("Editor"), nullptr, true);
	LoadGlobalIniFile(GEditorPerProjectIni, TEXT("EditorPerProjectUserSettings"), nullptr, true);
}

bool FConfigCacheIni::LoadGlobalIniFile(FString& FinalIniFilename, const TCHAR* BaseIniName, const TCHAR* Platform,
	bool bForceReload, bool bRequireDefaultIni, bool /*bAllowGeneratedIniWhenCooked*/, bool /*bAllowRemoteConfig*/,
	const TCHAR* GeneratedConfigDir, FConfigCacheIni* ConfigSystem)
{
	FString Folder(GeneratedConfigDir ? GeneratedConfigDir : *FPaths::GeneratedConfigDir());
	if (!Folder.IsEmpty() && !Folder.EndsWith(TEXT("/")))
	{
		Folder += TEXT("/");
	}
	FinalIniFilename = FPaths::ConvertRelativePathToFull(
		Folder + GetSavedConfigFolder(Platform) + TEXT("/") + BaseIniName + TEXT(".ini"));

	const TArray<FString> Layers = GetLayerFilenames(BaseIniName);
	if (bRequireDefaultIni && !FPaths::FileExists(Layers.Last()))
	{
		UE_LOG(LogConfig, Warning, TEXT("The config file '%s' is required but missing."), *Layers.Last());
		return false;
	}
	if (!ConfigSystem)
	{
		return false;
	}
	if (!bForceReload && ConfigSystem->FindCached(FinalIniFilename))
	{
		return true;
	}

	FCachedFile& Cached = ConfigSystem->AddCached(FinalIniFilename);
	Cached.BaseName = FName(BaseIniName);
	Cached.LayerFilenames = Layers;
	Cached.File->Name = Cached.BaseName;
	Cached.File->SetLowerLayers(ReadLayers(Layers));
	Cached.File->Read(FinalIniFilename);
	return true;
}

bool FConfigCacheIni::LoadLocalIniFile(
	FConfigFile& ConfigFile, const TCHAR* IniName, bool bIsBaseIniName, const TCHAR* Platform, bool /*bForceReload*/)
{
	ConfigFile.Cleanup();
	ConfigFile.Name = FName(IniName);
	if (!bIsBaseIniName)
	{
		return ConfigFile.Read(FPaths::ProjectConfigDir() + IniName + TEXT(".ini"));
	}
	const TArray<FString> Layers = GetLayerFilenames(IniName);
	ConfigFile.SetLowerLayers(ReadLayers(Layers));
	const bool bSaved = ConfigFile.Read(FPaths::ConvertRelativePathToFull(
		FPaths::GeneratedConfigDir() + GetSavedConfigFolder(Platform) + TEXT("/") + IniName + TEXT(".ini")));
	return bSaved || FPaths::FileExists(Layers[0]) || FPaths::FileExists(Layers[1]);
}

FConfigCacheIni::FCachedFile* FConfigCacheIni::FindCached(const FString& Filename)
{
	const FString Normalized = NormalizeConfigFilename(Filename);
	for (FCachedFile& Cached : Files)
	{
		if (Cached.Filename.Equals(Normalized, ESearchCase::CaseSensitive))
		{
			return &Cached;
		}
	}
	return nullptr;
}

FConfigCacheIni::FCachedFile& FConfigCacheIni::AddCached(const FString& Filename)
{
	const FString Normalized = NormalizeConfigFilename(Filename);
	if (FCachedFile* Existing = FindCached(Normalized))
	{
		Existing->File = MakeUnique<FConfigFile>();
		Existing->BaseName = NAME_None;
		Existing->LayerFilenames.Reset();
		return *Existing;
	}
	FCachedFile& Added = Files.AddDefaulted_GetRef();
	Added.Filename = Normalized;
	Added.File = MakeUnique<FConfigFile>();
	return Added;
}

FConfigFile* FConfigCacheIni::FindConfigFile(const FString& Filename)
{
	if (FCachedFile* Cached = FindCached(Filename))
	{
		return Cached->File.Get();
	}
	if (IsBaseName(Filename))
	{
		return FindConfigFileWithBaseName(FName(*Filename));
	}
	return nullptr;
}

FConfigFile* FConfigCacheIni::FindConfigFileWithBaseName(FName BaseName)
{
	for (FCachedFile& Cached : Files)
	{
		if (!Cached.BaseName.IsNone() && Cached.BaseName == BaseName)
		{
			return Cached.File.Get();
		}
	}
	return nullptr;
}

FConfigFile* FConfigCacheIni::Find(const FString& Filename)
{
	if (FConfigFile* Found = FindConfigFile(Filename))
	{
		return Found;
	}
	if (Filename.EndsWith(TEXT(".ini")))
	{
		LoadFile(Filename);
		return FindConfigFile(Filename);
	}
	return nullptr;
}

FConfigFile* FConfigCacheIni::FindForWrite(const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	if (!File)
	{
		UE_LOG(LogConfig, Warning, TEXT("No config file '%s' is loaded; the value is not stored."), *Filename);
	}
	return File;
}

FConfigFile& FConfigCacheIni::Add(const FString& Filename, const FConfigFile& File)
{
	FCachedFile& Cached = AddCached(Filename);
	*Cached.File = File;
	return *Cached.File;
}

void FConfigCacheIni::LoadFile(const FString& Filename, const FConfigFile* Fallback, const TCHAR* /*PlatformString*/)
{
	FCachedFile& Cached = AddCached(Filename);
	if (Fallback && !FPaths::FileExists(Cached.Filename))
	{
		*Cached.File = *Fallback;
		return;
	}
	Cached.File->Read(Cached.Filename);
}

void FConfigCacheIni::UnloadFile(const FString& Filename)
{
	const FString Normalized = NormalizeConfigFilename(Filename);
	Files.RemoveAll(
		[&Normalized](const FCachedFile& Cached)
		{
			return Cached.Filename.Equals(Normalized, ESearchCase::CaseSensitive);
		});
}

void FConfigCacheIni::Flush(bool bRemoveFromCache, const FString& Filename)
{
	FString Only;
	if (!Filename.IsEmpty())
	{
		FCachedFile* Cached = FindCached(Filename);
		if (!Cached && IsBaseName(Filename))
		{
			for (FCachedFile& Candidate : Files)
			{
				if (Candidate.BaseName == FName(*Filename))
				{
					Cached = &Candidate;
				}
			}
		}
		if (!Cached)
		{
			return;
		}
		Only = Cached->Filename;
	}

	TArray<FString> Written;
	TArray<FString> ToRemove;
	for (FCachedFile& Cached : Files)
	{
		if (!Only.IsEmpty() && !Cached.Filename.Equals(Only, ESearchCase::CaseSensitive))
		{
			continue;
		}
		bool bSaved = true;
		if (Cached.File->Dirty && !Cached.File->NoSave)
		{
			// A refused write (read-only file) keeps the changes in memory and the file as it was.
			bSaved = Cached.File->Write(Cached.Filename);
			if (bSaved)
			{
				Written.Add(Cached.Filename);
			}
		}
		if (bRemoveFromCache && bSaved)
		{
			ToRemove.Add(Cached.Filename);
		}
	}
	for (const FString& Removed : ToRemove)
	{
		UnloadFile(Removed);
	}
	for (const FString& Layer : Written)
	{
		RefreshBranchesOnLayer(Layer);
	}
}

void FConfigCacheIni::RefreshBranchesOnLayer(const FString& LayerFilename)
{
	for (FCachedFile& Cached : Files)
	{
		if (Cached.LayerFilenames.Contains(LayerFilename))
		{
			Cached.File->Rebase(ReadLayers(Cached.LayerFilenames).Sections);
		}
	}
}

void FConfigCacheIni::Dirty(const FString& Filename)
{
	if (FConfigFile* File = FindConfigFile(Filename))
	{
		File->Dirty = true;
	}
}

TArray<FString> FConfigCacheIni::GetFilenames()
{
	TArray<FString> Result;
	for (const FCachedFile& Cached : Files)
	{
		Result.Add(Cached.Filename);
	}
	return Result;
}

bool FConfigCacheIni::DoesSectionExist(const TCHAR* Section, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->DoesSectionExist(Section);
}

bool FConfigCacheIni::GetSectionNames(const FString& Filename, TArray<FString>& out_SectionNames)
{
	const FConfigFile* File = Find(Filename);
	if (!File)
	{
		return false;
	}
	File->GetSectionNames(out_SectionNames);
	return true;
}

bool FConfigCacheIni::GetSection(const TCHAR* Section, TArray<FString>& Result, const FString& Filename)
{
	Result.Reset();
	const FConfigSection* Found = GetSection(Section, false, Filename);
	if (!Found)
	{
		return false;
	}
	for (const FConfigSection::ElementType& Pair : *Found)
	{
		Result.Add(Pair.Key.ToString() + TEXT("=") + Pair.Value.GetValue());
	}
	return true;
}

const FConfigSection* FConfigCacheIni::GetSection(const TCHAR* Section, const bool Force, const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	if (!File)
	{
		return nullptr;
	}
	if (Force)
	{
		return File->FindOrAddConfigSection(Section);
	}
	return File->FindSection(Section);
}

bool FConfigCacheIni::GetString(const TCHAR* Section, const TCHAR* Key, FString& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetString(Section, Key, Value);
}

bool FConfigCacheIni::GetText(const TCHAR* Section, const TCHAR* Key, FText& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetText(Section, Key, Value);
}

bool FConfigCacheIni::GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetBool(Section, Key, Value);
}

bool FConfigCacheIni::GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetInt(Section, Key, Value);
}

bool FConfigCacheIni::GetInt64(const TCHAR* Section, const TCHAR* Key, int64& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetInt64(Section, Key, Value);
}

bool FConfigCacheIni::GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetFloat(Section, Key, Value);
}

bool FConfigCacheIni::GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value, const FString& Filename)
{
	const FConfigFile* File = Find(Filename);
	return File && File->GetDouble(Section, Key, Value);
}

int32 FConfigCacheIni::GetArray(
	const TCHAR* Section, const TCHAR* Key, TArray<FString>& out_Arr, const FString& Filename)
{
	out_Arr.Reset();
	const FConfigFile* File = Find(Filename);
	return File ? File->GetArray(Section, Key, out_Arr) : 0;
}

FString FConfigCacheIni::GetStr(const TCHAR* Section, const TCHAR* Key, const FString& Filename)
{
	FString Result;
	GetString(Section, Key, Result, Filename);
	return Result;
}

void FConfigCacheIni::SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetString(Section, Key, Value);
	}
}

void FConfigCacheIni::SetText(const TCHAR* Section, const TCHAR* Key, const FText& Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetText(Section, Key, Value);
	}
}

void FConfigCacheIni::SetBool(const TCHAR* Section, const TCHAR* Key, bool Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetBool(Section, Key, Value);
	}
}

void FConfigCacheIni::SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetInt(Section, Key, Value);
	}
}

void FConfigCacheIni::SetInt64(const TCHAR* Section, const TCHAR* Key, int64 Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetInt64(Section, Key, Value);
	}
}

void FConfigCacheIni::SetFloat(const TCHAR* Section, const TCHAR* Key, float Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetFloat(Section, Key, Value);
	}
}

void FConfigCacheIni::SetDouble(const TCHAR* Section, const TCHAR* Key, double Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetDouble(Section, Key, Value);
	}
}

void FConfigCacheIni::SetArray(
	const TCHAR* Section, const TCHAR* Key, const TArray<FString>& Value, const FString& Filename)
{
	if (FConfigFile* File = FindForWrite(Filename))
	{
		File->SetArray(Section, Key, Value);
	}
}

bool FConfigCacheIni::RemoveKey(const TCHAR* Section, const TCHAR* Key, const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	return File && File->RemoveKeyFromSection(Section, FName(Key));
}

bool FConfigCacheIni::EmptySection(const TCHAR* Section, const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	return File && File->EmptySection(Section);
}

bool FConfigCacheIni::AddToSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename)
{
	FConfigFile* File = FindForWrite(Filename);
	return File && File->AddToSection(Section, Key, Value);
}

bool FConfigCacheIni::AddUniqueToSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename)
{
	FConfigFile* File = FindForWrite(Filename);
	return File && File->AddUniqueToSection(Section, Key, Value);
}

bool FConfigCacheIni::RemoveKeyFromSection(const TCHAR* Section, FName Key, const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	return File && File->RemoveKeyFromSection(Section, Key);
}

bool FConfigCacheIni::RemoveFromSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename)
{
	FConfigFile* File = Find(Filename);
	return File && File->RemoveFromSection(Section, Key, Value);
}
