// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/ArrayView.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "HAL/FileManager.h"
#include "Misc/EnumClassFlags.h"

/**
 * Whole-file reads and writes. Writes go to a temporary file next to the target that then replaces
 * it, so a failed write never leaves a half-written file; a read-only target is refused unless
 * FILEWRITE_EvenIfReadOnly is given.
 */
struct FFileHelper
{
	enum class EHashOptions
	{
		None = 0,
		EnableVerify = 1 << 0,
		ErrorMissingHash = 1 << 1,
	};

	enum class EEncodingOptions
	{
		/** ANSI when every character is 7-bit ASCII, otherwise UTF-16 little-endian with a byte order mark. */
		AutoDetect,
		ForceAnsi,
		/** UTF-16 little-endian with a byte order mark. */
		ForceUnicode,
		/** UTF-8 with a byte order mark. */
		ForceUTF8,
		ForceUTF8WithoutBOM,
	};

	/** Reads a whole file. False when it cannot be read. */
	static CORE_API bool LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename, uint32 Flags = 0);

	/**
	 * Reads a text file, recognising UTF-8, UTF-16 LE and UTF-16 BE byte order marks; text without one
	 * is read as UTF-8. Hash verification is not part of the headless engine and is reported if asked for.
	 */
	static CORE_API bool LoadFileToString(
		FString& Result, const TCHAR* Filename, EHashOptions VerifyFlags = EHashOptions::None, uint32 ReadFlags = 0);

	/** Reads a text file into lines, split at CR LF, CR or LF; empty lines are kept. */
	static CORE_API bool LoadFileToStringArray(TArray<FString>& Result, const TCHAR* Filename);

	/** Decodes file bytes the way LoadFileToString does. */
	static CORE_API void BufferToString(FString& Result, const uint8* Buffer, int32 Size);

	/** Writes bytes to a file (see the class comment for the rules). WriteFlags are EFileWrite values. */
	static CORE_API bool SaveArrayToFile(TArrayView<const uint8> Array, const TCHAR* Filename,
		IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);

	/** Encodes and writes text (see the class comment for the rules). WriteFlags are EFileWrite values. */
	static CORE_API bool SaveStringToFile(FStringView String, const TCHAR* Filename,
		EEncodingOptions EncodingOptions = EEncodingOptions::AutoDetect,
		IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);

	/** Writes the lines, each followed by a line feed. */
	static CORE_API bool SaveStringArrayToFile(const TArray<FString>& Lines, const TCHAR* Filename,
		EEncodingOptions EncodingOptions = EEncodingOptions::AutoDetect,
		IFileManager* FileManager = &IFileManager::Get(), uint32 WriteFlags = 0);
};

ENUM_CLASS_FLAGS(FFileHelper::EHashOptions);
