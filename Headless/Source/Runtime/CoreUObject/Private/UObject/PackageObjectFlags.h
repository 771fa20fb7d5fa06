// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "UObject/ObjectMacros.h"

namespace UE::PackageText
{
	/** An object flag a package file keeps, and its name there. */
	struct FSavedFlag
	{
		EObjectFlags Flag;
		const TCHAR* Name;
	};

	/**
	 * The flags worth keeping in a package file: the others describe the object's state in memory
	 * (loading, destruction, garbage) or are set by the loader itself (RF_WasLoaded).
	 */
	inline const FSavedFlag SavedFlags[] = {
		{RF_Public, TEXT("Public")},
		{RF_Standalone, TEXT("Standalone")},
		{RF_Transactional, TEXT("Transactional")},
		{RF_ArchetypeObject, TEXT("ArchetypeObject")},
		{RF_DefaultSubObject, TEXT("DefaultSubObject")},
		{RF_TextExportTransient, TEXT("TextExportTransient")},
		{RF_DuplicateTransient, TEXT("DuplicateTransient")},
		{RF_NonPIEDuplicateTransient, TEXT("NonPIEDuplicateTransient")},
	};

	/** The names of the saved flags an object has. */
	inline TArray<FString> GetSavedFlagNames(EObjectFlags Flags)
	{
		TArray<FString> Names;
		for (const FSavedFlag& Saved : SavedFlags)
		{
			if ((Flags & Saved.Flag) != 0)
			{
				Names.Add(Saved.Name);
			}
		}
		return Names;
	}

	/** The flag of a name written by GetSavedFlagNames; false for an unknown name. */
	inline bool ParseSavedFlag(const FString& Name, EObjectFlags& OutFlag)
	{
		for (const FSavedFlag& Saved : SavedFlags)
		{
			if (Name.Equals(Saved.Name, ESearchCase::IgnoreCase))
			{
				OutFlag = Saved.Flag;
				return true;
			}
		}
		return false;
	}
} // namespace UE::PackageText
