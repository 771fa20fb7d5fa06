// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreGlobals.h"
#include "CoreTypes.h"
#include "Internationalization/Text.h"
#include "Logging/LogMacros.h"
#include "Misc/ConfigTypes.h"
#include "Misc/Paths.h"
#include "Templates/Tuple.h"
#include "Templates/UniquePtr.h"
#include "UObject/NameTypes.h"

CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogConfig, Log, All);

/**
 * One .ini file: its sections in order, and the text it was read from.
 *
 * Reading applies the engine's rules line by line: "[Name]" starts a section, "Key=Value" sets the key
 * (replacing the value a read would see), "+Key=Value" adds the value unless present, ".Key=Value" adds
 * it even if present, "-Key=Value" removes one equal value, "!Key=..." clears the key. Lines starting
 * with ';' or '#' are comments. A value wholly wrapped in double quotes is unquoted (\" and \\ escapes).
 *
 * Writing keeps the file's text: only the lines of keys whose values differ from what the text says are
 * touched, a new key goes after the last entry of its section, a new section at the end of the file.
 * Comments, blank lines, ordering, unknown sections, line endings and encoding stay as they were.
 *
 * A file may sit on top of lower layers (the Default*.ini files under a saved branch); reads see the
 * layers merged, and writes store only what differs from the layers below.
 */
class FConfigFile
{
public:
	using ElementType = TPair<FString, FConfigSection>;

	/** Set when the contents changed since the file was last read or written. */
	bool Dirty = false;

	/** Never written to disk when set. */
	bool NoSave = false;

	/** The base name ("Engine") of a branch, or the file's base name for a file loaded on its own. */
	FName Name;

	CORE_API FConfigFile();
	CORE_API ~FConfigFile();
	CORE_API FConfigFile(const FConfigFile& Other);
	CORE_API FConfigFile& operator=(const FConfigFile& Other);

	/** Replaces the contents with the file's; a missing file leaves the contents empty. False if it cannot be read. */
	CORE_API bool Read(const FString& Filename);

	/**
	 * Writes the contents to Filename, keeping the text read from it (see the class comment). PrefixText
	 * starts a file that has no text yet. False when the file cannot be written (read-only, no access);
	 * the file and the Dirty flag then stay as they were. A file whose text would not change is left alone.
	 */
	CORE_API bool Write(const FString& Filename, bool bDoRemoteWrite = true, const FString& PrefixText = FString());

	/** The text Write would produce, without touching the disk. */
	CORE_API FString GenerateText(const FString& PrefixText = FString()) const;

	/** Empties the sections, the text and the lower layers. */
	CORE_API void Cleanup();

	CORE_API const FConfigSection* FindSection(const FString& SectionName) const;

	/** The section, created empty at the end when missing. */
	CORE_API FConfigSection* FindOrAddConfigSection(const FString& SectionName);

	CORE_API bool DoesSectionExist(const FString& SectionName) const;

	/** Removes the section's keys (the header and comments of the file stay); true if it existed. */
	CORE_API bool EmptySection(const FString& SectionName);

	CORE_API void GetSectionNames(TArray<FString>& OutSectionNames) const;

	int32 Num() const { return Sections.Num(); }
	ElementType* begin() { return Sections.GetData(); }
	ElementType* end() { return Sections.GetData() + Sections.Num(); }
	const ElementType* begin() const { return Sections.GetData(); }
	const ElementType* end() const { return Sections.GetData() + Sections.Num(); }

	CORE_API bool GetString(const TCHAR* Section, const TCHAR* Key, FString& Value) const;
	CORE_API bool GetText(const TCHAR* Section, const TCHAR* Key, FText& Value) const;
	CORE_API bool GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value) const;
	CORE_API bool GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value) const;
	CORE_API bool GetInt64(const TCHAR* Section, const TCHAR* Key, int64& Value) const;
	CORE_API bool GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value) const;
	CORE_API bool GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value) const;

	/** Every value of the key, in order; returns how many. */
	CORE_API int32 GetArray(const TCHAR* Section, const TCHAR* Key, TArray<FString>& Value) const;

	/** Sets the key to one value. Unchanged when the value a read sees already equals it. */
	CORE_API void SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value);
	CORE_API void SetText(const TCHAR* Section, const TCHAR* Key, const FText& Value);
	CORE_API void SetBool(const TCHAR* Section, const TCHAR* Key, bool Value);
	CORE_API void SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value);
	CORE_API void SetInt64(const TCHAR* Section, const TCHAR* Key, int64 Value);
	CORE_API void SetFloat(const TCHAR* Section, const TCHAR* Key, float Value);
	CORE_API void SetDouble(const TCHAR* Section, const TCHAR* Key, double Value);

	/** Replaces every value of the key with these. */
	CORE_API void SetArray(const TCHAR* Section, const TCHAR* Key, const TArray<FString>& Value);

	/** Adds the value (as ".Key=" does); true if the section changed. */
	CORE_API bool AddToSection(const TCHAR* Section, FName Key, const FString& Value);

	/** Adds the value unless present (as "+Key=" does); true if the section changed. */
	CORE_API bool AddUniqueToSection(const TCHAR* Section, FName Key, const FString& Value);

	/** Removes every value of the key (as "!Key=" does); true if the section changed. */
	CORE_API bool RemoveKeyFromSection(const TCHAR* Section, FName Key);

	/** Removes every equal value of the key; true if the section changed. */
	CORE_API bool RemoveFromSection(const TCHAR* Section, FName Key, const FString& Value);

	/** Puts this file on top of Base: reads see Base's values overlaid by this file's own text and changes. */
	CORE_API void SetLowerLayers(const FConfigFile& Base);

	/** Whether lower layers were set. */
	bool HasLowerLayers() const { return BaseSections.Num() > 0 || bHasLowerLayers; }

	/** Formats a float or double the way the config writes them ("0.500000"). */
	static CORE_API FString FormatFloat(double Value);

private:
	friend class FConfigCacheIni;

	enum class EEncoding : uint8
	{
		Utf8,
		Utf8WithBom,
		Utf16LittleEndian,
	};

	/** Recomputes what reads see from the lower layers and the own text. */
	void ApplyOwnText();

	/** Takes new lower layers, keeping the changes not yet written. */
	void Rebase(const TArray<ElementType>& NewBaseSections);

	FString GetDefaultEol() const;

	/** What reads see. */
	TArray<ElementType> Sections;

	/** What the lower layers alone say. */
	TArray<ElementType> BaseSections;

	/** The file's own text as last read or written. */
	TArray<UE::ConfigText::FLine> Lines;

	bool bHasLowerLayers = false;
	bool bHasText = false;
	EEncoding Encoding = EEncoding::Utf8;
};

/** Set of all cached config files, keyed by file name; the branches of the editor are among them. */
class FConfigCacheIni
{
public:
	CORE_API FConfigCacheIni();
	CORE_API ~FConfigCacheIni();

	FConfigCacheIni(const FConfigCacheIni&) = delete;
	FConfigCacheIni& operator=(const FConfigCacheIni&) = delete;

	/**
	 * Creates GConfig (once), loads the project's Engine, Game, Input, Editor and EditorPerProjectUserSettings
	 * branches and fills out GEngineIni and its siblings.
	 */
	static CORE_API void InitializeConfigSystem();

	/**
	 * Loads the branch BaseIniName ("Engine"): Engine/Config/Base<Name>.ini and Project/Config/Default<Name>.ini
	 * as lower layers, and <GeneratedConfigDir><Platform>Editor/<Name>.ini as the file that receives writes.
	 * FinalIniFilename gets that last path, under which the branch is cached in ConfigSystem. Unless
	 * bForceReload, a branch already loaded is kept. With bRequireDefaultIni, fails when the Default file is missing.
	 */
	static CORE_API bool LoadGlobalIniFile(FString& FinalIniFilename, const TCHAR* BaseIniName,
		const TCHAR* Platform = nullptr, bool bForceReload = false, bool bRequireDefaultIni = false,
		bool bAllowGeneratedIniWhenCooked = true, bool bAllowRemoteConfig = true,
		const TCHAR* GeneratedConfigDir = *FPaths::GeneratedConfigDir(), FConfigCacheIni* ConfigSystem = GConfig);

	/**
	 * Loads IniName into ConfigFile without touching the cache or the disk: a base name ("Engine") gets the
	 * branch's layers, any other name the file <ProjectConfigDir><IniName>.ini. True if something was read.
	 */
	static CORE_API bool LoadLocalIniFile(FConfigFile& ConfigFile, const TCHAR* IniName, bool bIsBaseIniName,
		const TCHAR* Platform = nullptr, bool bForceReload = false);

	/**
	 * Finds the cached file; a branch base name ("Engine") finds its branch. An .ini path that is not cached
	 * is loaded from disk, or created empty when the file does not exist yet (written on the first flush).
	 */
	CORE_API FConfigFile* Find(const FString& Filename);

	/** Finds the cached file (or branch by base name) without loading anything. */
	CORE_API FConfigFile* FindConfigFile(const FString& Filename);

	/** Finds the branch whose base name is BaseName. */
	CORE_API FConfigFile* FindConfigFileWithBaseName(FName BaseName);

	/** Caches a copy of File under Filename, replacing what was there. */
	CORE_API FConfigFile& Add(const FString& Filename, const FConfigFile& File);

	/** Reads Filename into the cache (empty when it does not exist yet), or caches a copy of Fallback when given. */
	CORE_API void LoadFile(
		const FString& Filename, const FConfigFile* Fallback = nullptr, const TCHAR* PlatformString = nullptr);

	/** Forgets the file without writing it. */
	CORE_API void UnloadFile(const FString& Filename);

	/**
	 * Writes every dirty file (or only Filename when given) to disk; with bRemoveFromCache, also drops them
	 * from the cache. A file that cannot be written (read-only) stays cached and dirty, and a warning says so.
	 */
	CORE_API void Flush(bool bRemoveFromCache, const FString& Filename = TEXT(""));

	/** Marks the file dirty so the next flush writes it. */
	CORE_API void Dirty(const FString& Filename);

	/** The names of the cached files. */
	CORE_API TArray<FString> GetFilenames();

	CORE_API bool DoesSectionExist(const TCHAR* Section, const FString& Filename);
	CORE_API bool GetSectionNames(const FString& Filename, TArray<FString>& out_SectionNames);

	/** The section as "Key=Value" lines; false when it does not exist. */
	CORE_API bool GetSection(const TCHAR* Section, TArray<FString>& Result, const FString& Filename);
	CORE_API const FConfigSection* GetSection(const TCHAR* Section, const bool Force, const FString& Filename);

	CORE_API bool GetString(const TCHAR* Section, const TCHAR* Key, FString& Value, const FString& Filename);
	CORE_API bool GetText(const TCHAR* Section, const TCHAR* Key, FText& Value, const FString& Filename);
	CORE_API bool GetBool(const TCHAR* Section, const TCHAR* Key, bool& Value, const FString& Filename);
	CORE_API bool GetInt(const TCHAR* Section, const TCHAR* Key, int32& Value, const FString& Filename);
	CORE_API bool GetInt64(const TCHAR* Section, const TCHAR* Key, int64& Value, const FString& Filename);
	CORE_API bool GetFloat(const TCHAR* Section, const TCHAR* Key, float& Value, const FString& Filename);
	CORE_API bool GetDouble(const TCHAR* Section, const TCHAR* Key, double& Value, const FString& Filename);
	CORE_API int32 GetArray(const TCHAR* Section, const TCHAR* Key, TArray<FString>& out_Arr, const FString& Filename);

	/** GetString's value, or an empty string. */
	CORE_API FString GetStr(const TCHAR* Section, const TCHAR* Key, const FString& Filename);

	bool GetValue(const TCHAR* Section, const TCHAR* Key, FString& Value, const FString& Filename)
	{
		return GetString(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, FText& Value, const FString& Filename)
	{
		return GetText(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, bool& Value, const FString& Filename)
	{
		return GetBool(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, int32& Value, const FString& Filename)
	{
		return GetInt(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, int64& Value, const FString& Filename)
	{
		return GetInt64(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, float& Value, const FString& Filename)
	{
		return GetFloat(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, double& Value, const FString& Filename)
	{
		return GetDouble(Section, Key, Value, Filename);
	}
	bool GetValue(const TCHAR* Section, const TCHAR* Key, TArray<FString>& Value, const FString& Filename)
	{
		return GetArray(Section, Key, Value, Filename) > 0;
	}

	CORE_API void SetString(const TCHAR* Section, const TCHAR* Key, const TCHAR* Value, const FString& Filename);
	CORE_API void SetText(const TCHAR* Section, const TCHAR* Key, const FText& Value, const FString& Filename);
	CORE_API void SetBool(const TCHAR* Section, const TCHAR* Key, bool Value, const FString& Filename);
	CORE_API void SetInt(const TCHAR* Section, const TCHAR* Key, int32 Value, const FString& Filename);
	CORE_API void SetInt64(const TCHAR* Section, const TCHAR* Key, int64 Value, const FString& Filename);
	CORE_API void SetFloat(const TCHAR* Section, const TCHAR* Key, float Value, const FString& Filename);
	CORE_API void SetDouble(const TCHAR* Section, const TCHAR* Key, double Value, const FString& Filename);
	CORE_API void SetArray(
		const TCHAR* Section, const TCHAR* Key, const TArray<FString>& Value, const FString& Filename);

	/** Removes every value of the key; true if something was removed. */
	CORE_API bool RemoveKey(const TCHAR* Section, const TCHAR* Key, const FString& Filename);

	/** Removes every key of the section; true if the section existed. */
	CORE_API bool EmptySection(const TCHAR* Section, const FString& Filename);

	CORE_API bool AddToSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename);
	CORE_API bool AddUniqueToSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename);
	CORE_API bool RemoveKeyFromSection(const TCHAR* Section, FName Key, const FString& Filename);
	CORE_API bool RemoveFromSection(const TCHAR* Section, FName Key, const FString& Value, const FString& Filename);

private:
	struct FCachedFile
	{
		FString Filename;
		TUniquePtr<FConfigFile> File;

		/** For a branch: its base name and the files of its lower layers. */
		FName BaseName;
		TArray<FString> LayerFilenames;
	};

	FCachedFile* FindCached(const FString& Filename);
	FConfigFile* FindForWrite(const FString& Filename);
	FCachedFile& AddCached(const FString& Filename);

	/** Rebuilds the lower layers of every branch built on LayerFilename, keeping the branches' unsaved changes. */
	void RefreshBranchesOnLayer(const FString& LayerFilename);

	TArray<FCachedFile> Files;
};
