// Copyright Orvane. All Rights Reserved.

#include "Misc/FileHelper.h"

#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "GenericPlatform/GenericPlatformFile.h"
#include "HAL/PlatformFileManager.h"
#include "Logging/LogMacros.h"
#include "Misc/Paths.h"

namespace FileHelperPrivate
{
	void AppendUTF16(TArray<uint8>& Bytes, const TCHAR* Text, int32 Len)
	{
		// TCHAR is UTF-16 already; files store it little-endian.
		Bytes.Reserve(Bytes.Num() + Len * 2);
		for (int32 Index = 0; Index < Len; ++Index)
		{
			const uint16 Unit = (uint16)Text[Index];
			Bytes.Add((uint8)(Unit & 0xff));
			Bytes.Add((uint8)(Unit >> 8));
		}
	}

	void AppendUTF8(TArray<uint8>& Bytes, const TCHAR* Text, int32 Len)
	{
		const FTCHARToUTF8 Converted(Text, Len);
		Bytes.Append(reinterpret_cast<const uint8*>(Converted.Get()), Converted.Length());
	}

	bool IsPureAnsi(FStringView Text)
	{
		for (const TCHAR Char : Text)
		{
			if (Char > 0x7f)
			{
				return false;
			}
		}
		return true;
	}

	TArray<uint8> Encode(FStringView Text, FFileHelper::EEncodingOptions EncodingOptions)
	{
		using EEncodingOptions = FFileHelper::EEncodingOptions;
		if (EncodingOptions == EEncodingOptions::AutoDetect)
		{
			EncodingOptions = IsPureAnsi(Text) ? EEncodingOptions::ForceAnsi : EEncodingOptions::ForceUnicode;
		}

		TArray<uint8> Bytes;
		switch (EncodingOptions)
		{
			case EEncodingOptions::ForceAnsi:
				Bytes.Reserve(Text.Len());
				for (const TCHAR Char : Text)
				{
					Bytes.Add(Char <= 0x7f ? (uint8)Char : (uint8)'?');
				}
				break;
			case EEncodingOptions::ForceUnicode:
				Bytes.Add(0xff);
				Bytes.Add(0xfe);
				AppendUTF16(Bytes, Text.GetData(), Text.Len());
				break;
			case EEncodingOptions::ForceUTF8:
				Bytes.Add(0xef);
				Bytes.Add(0xbb);
				Bytes.Add(0xbf);
				AppendUTF8(Bytes, Text.GetData(), Text.Len());
				break;
			default:
				AppendUTF8(Bytes, Text.GetData(), Text.Len());
				break;
		}
		return Bytes;
	}

	/** Writes Bytes to Path through a handle; false (and the file removed) when any step fails. */
	bool WriteWholeFile(IPlatformFile& PlatformFile, const TCHAR* Path, TArrayView<const uint8> Bytes, bool bAppend)
	{
		IFileHandle* Handle = PlatformFile.OpenWrite(Path, bAppend);
		if (Handle == nullptr)
		{
			return false;
		}
		const bool bWritten = Handle->Write(Bytes.GetData(), Bytes.Num()) && Handle->Flush();
		delete Handle;
		return bWritten;
	}
} // namespace FileHelperPrivate

bool FFileHelper::LoadFileToArray(TArray<uint8>& Result, const TCHAR* Filename, uint32 Flags)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	IFileHandle* Handle = PlatformFile.OpenRead(Filename);
	if (Handle == nullptr)
	{
		if ((Flags & FILEREAD_Silent) == 0)
		{
			UE_LOG(LogCore, Warning, TEXT("Could not open '%s' for reading."), Filename);
		}
		return false;
	}
	const int64 Size = Handle->Size();
	Result.Reset();
	Result.SetNumUninitialized((int32)Size);
	const bool bRead = Size == 0 || Handle->Read(Result.GetData(), Size);
	delete Handle;
	if (!bRead)
	{
		Result.Reset();
		UE_LOG(LogCore, Warning, TEXT("Could not read '%s'."), Filename);
	}
	return bRead;
}

void FFileHelper::BufferToString(FString& Result, const uint8* Buffer, int32 Size)
{
	Result.Reset();
	if (Size >= 2 && Buffer[0] == 0xff && Buffer[1] == 0xfe)
	{
		const int32 Units = (Size - 2) / 2;
		Result.Reserve(Units);
		for (int32 Index = 0; Index < Units; ++Index)
		{
			Result.AppendChar((TCHAR)(Buffer[2 + Index * 2] | (Buffer[3 + Index * 2] << 8)));
		}
	}
	else if (Size >= 2 && Buffer[0] == 0xfe && Buffer[1] == 0xff)
	{
		const int32 Units = (Size - 2) / 2;
		Result.Reserve(Units);
		for (int32 Index = 0; Index < Units; ++Index)
		{
			Result.AppendChar((TCHAR)((Buffer[2 + Index * 2] << 8) | Buffer[3 + Index * 2]));
		}
	}
	else
	{
		const bool bHasBOM = Size >= 3 && Buffer[0] == 0xef && Buffer[1] == 0xbb && Buffer[2] == 0xbf;
		const int32 Skip = bHasBOM ? 3 : 0;
		const FUTF8ToTCHAR Converted(reinterpret_cast<const UTF8CHAR*>(Buffer + Skip), Size - Skip);
		Result.AppendChars(Converted.Get(), Converted.Length());
	}
}

bool FFileHelper::LoadFileToString(FString& Result, const TCHAR* Filename, EHashOptions VerifyFlags, uint32 ReadFlags)
{
	if (VerifyFlags != EHashOptions::None)
	{
		UE_HEADLESS_UNIMPLEMENTED();
	}
	TArray<uint8> Bytes;
	if (!LoadFileToArray(Bytes, Filename, ReadFlags))
	{
		return false;
	}
	BufferToString(Result, Bytes.GetData(), Bytes.Num());
	return true;
}

bool FFileHelper::LoadFileToStringArray(TArray<FString>& Result, const TCHAR* Filename)
{
	FString Text;
	if (!LoadFileToString(Text, Filename))
	{
		return false;
	}
	Result.Reset();
	Text.ParseIntoArrayLines(Result, false);
	return true;
}

bool FFileHelper::SaveArrayToFile(
	TArrayView<const uint8> Array, const TCHAR* Filename, IFileManager* FileManager, uint32 WriteFlags)
{
	IPlatformFile& PlatformFile = FPlatformFileManager::Get().GetPlatformFile();
	const bool bSilent = (WriteFlags & FILEWRITE_Silent) != 0;
	const bool bExists = FileManager->FileExists(Filename);

	if (bExists && (WriteFlags & FILEWRITE_NoReplaceExisting) != 0)
	{
		return false;
	}
	if (bExists && FileManager->IsReadOnly(Filename))
	{
		if ((WriteFlags & FILEWRITE_EvenIfReadOnly) == 0)
		{
			if (!bSilent)
			{
				UE_LOG(LogCore, Warning, TEXT("Could not write '%s': the file is read-only."), Filename);
			}
			return false;
		}
		PlatformFile.SetReadOnly(Filename, false);
	}

	const FString Folder = FPaths::GetPath(FString(Filename));
	if (!Folder.IsEmpty() && !FileManager->MakeDirectory(*Folder, true))
	{
		if (!bSilent)
		{
			UE_LOG(LogCore, Warning, TEXT("Could not write '%s': its folder cannot be created."), Filename);
		}
		return false;
	}

	if ((WriteFlags & FILEWRITE_Append) != 0)
	{
		if (!FileHelperPrivate::WriteWholeFile(PlatformFile, Filename, Array, true))
		{
			if (!bSilent)
			{
				UE_LOG(LogCore, Warning, TEXT("Could not append to '%s'."), Filename);
			}
			return false;
		}
		return true;
	}

	// Write beside the target, then swap it in: readers see the old file or the new one, never a torn one.
	const FString TempFilename = FPaths::CreateTempFilename(Folder.IsEmpty() ? TEXT(".") : *Folder,
		*(FString(TEXT(".")) + FPaths::GetCleanFilename(FString(Filename)) + TEXT("-")), TEXT(".tmp"));
	if (!FileHelperPrivate::WriteWholeFile(PlatformFile, *TempFilename, Array, false) ||
		!PlatformFile.MoveFile(Filename, *TempFilename))
	{
		PlatformFile.DeleteFile(*TempFilename);
		if (!bSilent)
		{
			UE_LOG(LogCore, Warning, TEXT("Could not write '%s'."), Filename);
		}
		return false;
	}
	return true;
}

bool FFileHelper::SaveStringToFile(FStringView String, const TCHAR* Filename, EEncodingOptions EncodingOptions,
	IFileManager* FileManager, uint32 WriteFlags)
{
	const TArray<uint8> Bytes = FileHelperPrivate::Encode(String, EncodingOptions);
	return SaveArrayToFile(Bytes, Filename, FileManager, WriteFlags);
}

bool FFileHelper::SaveStringArrayToFile(const TArray<FString>& Lines, const TCHAR* Filename,
	EEncodingOptions EncodingOptions, IFileManager* FileManager, uint32 WriteFlags)
{
	FString Text;
	for (const FString& Line : Lines)
	{
		Text += Line;
		Text += TEXT("\n");
	}
	return SaveStringToFile(Text, Filename, EncodingOptions, FileManager, WriteFlags);
}
