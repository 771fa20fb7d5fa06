// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/DateTime.h"
#include "UObject/ObjectMacros.h"

class FArchiveCookData;
class FOutputDevice;
class FSavePackageContext;
class ITargetPlatform;

/** Flags for saving objects and packages, passed to UPackage::SavePackage as a uint32. */
enum ESaveFlags
{
	SAVE_None = 0x00000000,
	/** Don't report errors on save. */
	SAVE_NoError = 0x00000001,
	/** The save was started automatically. */
	SAVE_FromAutosave = 0x00000002,
	/** Do not clear the package's dirty flag. */
	SAVE_KeepDirty = 0x00000004,
	SAVE_Async = 0x00000010,
	SAVE_Unversioned_Native = 0x00000020,
	SAVE_CutdownPackage = 0x00000040,
	SAVE_KeepEditorOnlyCookedPackages = 0x00000080,
	SAVE_Concurrent = 0x00000100,
	SAVE_BulkDataByReference = 0x00002000,
	SAVE_Unversioned_Properties = 0x00004000,
	SAVE_Optional = 0x00008000,
	SAVE_AllowTimeout = 0x00010000,
	SAVE_RehydratePayloads = 0x00020000,
	SAVE_CookSoftPackageReferences = 0x00040000,
	SAVE_Unversioned = SAVE_Unversioned_Native | SAVE_Unversioned_Properties,
};

/** The result of saving a package. */
enum class ESavePackageResult
{
	/** The package was saved. */
	Success,
	/** The package could not be saved. */
	Error,
	/** The save was canceled. */
	Canceled,
	/** [Cooking] Not saved because it contained editor-only data. */
	ContainsEditorOnlyData,
	/** [Cooking] Not saved because only editor-only properties refer to it. */
	ReferencedOnlyByEditorOnlyData,
	/** [Cooking] Not saved because its assets were converted into native code. */
	ReplaceCompletely,
	/** [Cooking] Saved, and a stub should be generated. */
	GenerateStub,
	/** [Cooking] The requested file did not exist. */
	MissingFile,
	/** A save validator reported an error. */
	ValidatorError,
	/** A save validator suppressed the save without an error. */
	ValidatorSuppress,
	/** An empty save realm that is skipped. */
	EmptyRealm,
	/** An asynchronous operation blocked the save, so it gave up at once. */
	Timeout,
};

/** What UPackage::Save returns: the result and facts about what was written. */
struct FSavePackageResultStruct
{
	/** Whether the save succeeded. */
	ESavePackageResult Result = ESavePackageResult::Error;

	/** The size of the file written, in bytes. */
	int64 TotalFileSize = 0;

	/** Package flags written with the package. */
	uint32 SerializedPackageFlags = 0;

	/** The packages the saved objects refer to, by name. */
	TArray<FName> ImportPackages;

	/** The packages the saved objects refer to through soft references. */
	TArray<FName> SoftPackageReferences;

	FSavePackageResultStruct() = default;

	/** Implicit, so that a result value converts to a result struct. */
	FSavePackageResultStruct(ESavePackageResult InResult)
		: Result(InResult)
	{
	}

	FSavePackageResultStruct(ESavePackageResult InResult, int64 InTotalFileSize)
		: Result(InResult)
		, TotalFileSize(InTotalFileSize)
	{
	}

	bool operator==(const FSavePackageResultStruct& Other) const { return Result == Other.Result; }
	bool operator!=(const FSavePackageResultStruct& Other) const { return Result != Other.Result; }

	/** Whether the package was saved. */
	bool IsSuccessful() const
	{
		return Result == ESavePackageResult::Success || Result == ESavePackageResult::GenerateStub;
	}
};

/** The arguments of UPackage::Save / SavePackage. */
struct FSavePackageArgs
{
	/** The platform to cook for; null when not cooking (the headless engine never cooks). */
	const ITargetPlatform* TargetPlatform = nullptr;

	/** Cooking data passed to the archive; null when not cooking. */
	FArchiveCookData* ArchiveCookData = nullptr;

	/**
	 * Objects in the package that InAsset does not refer to are saved only if they have any of these
	 * flags. With RF_NoFlags, only InAsset and what it refers to are saved.
	 */
	EObjectFlags TopLevelFlags = RF_NoFlags;

	/** ESaveFlags values. */
	uint32 SaveFlags = SAVE_None;

	/** Byte-swap the binary data (no effect on the headless engine's text packages). */
	bool bForceByteSwapping = false;

	/** Warn when the file name is longer than the platform's limit. */
	bool bWarnOfLongFilename = true;

	/** Send progress events to the editor. */
	bool bSlowTask = true;

	/** When not FDateTime::MinValue(), the modification time the saved file is given. */
	FDateTime FinalTimeStamp = FDateTime::MinValue();

	/** Receives the save's errors and warnings; the log when null. */
	FOutputDevice* Error = nullptr;

	/** Longer-lived parameters shared by several saves; unused by the headless engine. */
	FSavePackageContext* SavePackageContext = nullptr;
};
