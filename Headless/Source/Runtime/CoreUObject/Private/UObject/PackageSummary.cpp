// Copyright Orvane. All Rights Reserved.

#include "UObject/PackageSummary.h"

#include "Misc/FileHelper.h"
#include "UObject/PackageObjectFlags.h"
#include "UObject/PackageTextFormat.h"

bool ReadPackageSummary(const FString& Filename, FPackageSummary& OutSummary, FString* OutError)
{
	OutSummary = FPackageSummary();
	FString Text;
	if (!FFileHelper::LoadFileToString(Text, *Filename))
	{
		if (OutError)
		{
			*OutError = FString::Printf(TEXT("'%s' cannot be read."), *Filename);
		}
		return false;
	}
	UE::PackageText::FPackageFile File;
	FString ParseError;
	if (!UE::PackageText::ReadPackageText(Text, File, ParseError))
	{
		if (OutError)
		{
			*OutError = FString::Printf(TEXT("'%s' is not a valid package file (%s)."), *Filename, *ParseError);
		}
		return false;
	}
	OutSummary.SavedPackageName = File.PackageName;
	for (const UE::PackageText::FObjectBlock& Block : File.Objects)
	{
		FPackageSummaryObject& Object = OutSummary.Objects.AddDefaulted_GetRef();
		Object.Name = Block.Name;
		Object.ClassPath = Block.Class;
		Object.Outer = Block.Outer;
		for (const FString& FlagName : Block.Flags)
		{
			EObjectFlags Flag = RF_NoFlags;
			if (UE::PackageText::ParseSavedFlag(FlagName, Flag))
			{
				Object.Flags |= Flag;
			}
		}
	}
	return true;
}
