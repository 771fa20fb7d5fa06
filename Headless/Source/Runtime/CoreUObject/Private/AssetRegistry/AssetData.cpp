// Copyright Orvane. All Rights Reserved.

#include "AssetRegistry/AssetData.h"

#include "Logging/LogMacros.h"
#include "Misc/PackageName.h"
#include "UObject/Class.h"
#include "UObject/Object.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

DEFINE_LOG_CATEGORY_STATIC(LogAssetData, Log, All);

// The deprecated fields are still filled, so the constructors touch them.
PRAGMA_DISABLE_DEPRECATION_WARNINGS

FAssetData::FAssetData() = default;
FAssetData::~FAssetData() = default;
FAssetData::FAssetData(const FAssetData& Other) = default;
FAssetData::FAssetData(FAssetData&& Other) = default;
FAssetData& FAssetData::operator=(const FAssetData& Other) = default;
FAssetData& FAssetData::operator=(FAssetData&& Other) = default;

void FAssetData::UpdateDeprecatedFields()
{
#if WITH_EDITORONLY_DATA
	AssetClass = AssetClassPath.GetAssetName();
	ObjectPath = IsValid() ? FName(*GetObjectPathString()) : FName();
#endif
}

FAssetData::FAssetData(
	FName InPackageName, FName InPackagePath, FName InAssetName, FTopLevelAssetPath InAssetClassPathName)
	: PackageName(InPackageName)
	, PackagePath(InPackagePath)
	, AssetName(InAssetName)
	, AssetClassPath(InAssetClassPathName)
{
	UpdateDeprecatedFields();
}

FAssetData::FAssetData(
	const FString& InLongPackageName, const FString& InObjectPath, FTopLevelAssetPath InAssetClassPathName)
	: PackageName(*InLongPackageName)
	, PackagePath(*FPackageName::GetLongPackagePath(InLongPackageName))
	, AssetClassPath(InAssetClassPathName)
{
	const FSoftObjectPath Path(InObjectPath);
	AssetName = Path.GetAssetFName();
	UpdateDeprecatedFields();
}

FAssetData::FAssetData(const UObject* InAsset, bool bAllowBlueprintClass)
{
	if (!InAsset || (!bAllowBlueprintClass && InAsset->IsA(UClass::StaticClass()) &&
						static_cast<const UClass*>(InAsset)->HasAnyClassFlags(CLASS_CompiledFromBlueprint)))
	{
		return;
	}
	const UPackage* Package = InAsset->GetPackage();
	if (!Package || InAsset->GetOuter() != Package)
	{
		return;
	}
	const FString LongPackageName = Package->GetName();
	PackageName = FName(*LongPackageName);
	PackagePath = FName(*FPackageName::GetLongPackagePath(LongPackageName));
	AssetName = InAsset->GetFName();
	AssetClassPath = FTopLevelAssetPath(InAsset->GetClass());
	UpdateDeprecatedFields();
}

PRAGMA_ENABLE_DEPRECATION_WARNINGS

bool FAssetData::operator==(const FAssetData& Other) const
{
	return PackageName == Other.PackageName && AssetName == Other.AssetName && AssetClassPath == Other.AssetClassPath;
}

bool FAssetData::IsUAsset() const
{
	return IsValid() && FPackageName::GetShortFName(PackageName) == AssetName;
}

bool FAssetData::IsAssetLoaded() const
{
	return IsValid() && StaticFindObject(UObject::StaticClass(), nullptr, *GetObjectPathString()) != nullptr;
}

UObject* FAssetData::GetAsset() const
{
	if (!IsValid())
	{
		return nullptr;
	}
	const FString Path = GetObjectPathString();
	if (UObject* Loaded = StaticFindObject(UObject::StaticClass(), nullptr, *Path))
	{
		return Loaded;
	}
	return StaticLoadObject(UObject::StaticClass(), nullptr, *Path);
}

UClass* FAssetData::GetClass(EResolveClass ResolveClass) const
{
	if (!IsValid() || AssetClassPath.IsNull())
	{
		return nullptr;
	}
	const FString ClassPath = AssetClassPath.ToString();
	if (UClass* Found = static_cast<UClass*>(StaticFindObject(UClass::StaticClass(), nullptr, *ClassPath)))
	{
		return Found;
	}
	if (ResolveClass == EResolveClass::Yes)
	{
		return static_cast<UClass*>(StaticLoadObject(UClass::StaticClass(), nullptr, *ClassPath, nullptr, LOAD_NoWarn));
	}
	return nullptr;
}

bool FAssetData::IsInstanceOf(const UClass* BaseClass, EResolveClass ResolveClass) const
{
	const UClass* Class = GetClass(ResolveClass);
	return Class && BaseClass && Class->IsChildOf(BaseClass);
}

UPackage* FAssetData::GetPackage() const
{
	return PackageName.IsNone() ? nullptr : FindPackage(nullptr, *PackageName.ToString());
}

FSoftObjectPath FAssetData::GetSoftObjectPath() const
{
	return IsValid() ? FSoftObjectPath(PackageName, AssetName, FString()) : FSoftObjectPath();
}

FString FAssetData::GetObjectPathString() const
{
	FString Result;
	AppendObjectPath(Result);
	return Result;
}

void FAssetData::AppendObjectPath(FString& OutString) const
{
	if (IsValid())
	{
		OutString += PackageName.ToString();
		OutString += TEXT(".");
		OutString += AssetName.ToString();
	}
}

FString FAssetData::GetFullName() const
{
	FString FullName;
	GetFullName(FullName);
	return FullName;
}

void FAssetData::GetFullName(FString& OutFullName) const
{
	OutFullName.Reset();
	AssetClassPath.AppendString(OutFullName);
	OutFullName += TEXT(" ");
	AppendObjectPath(OutFullName);
}

FString FAssetData::GetExportTextName() const
{
	FString Result;
	AssetClassPath.AppendString(Result);
	Result += TEXT("'");
	AppendObjectPath(Result);
	Result += TEXT("'");
	return Result;
}

void FAssetData::PrintAssetData() const
{
	UE_LOG(LogAssetData, Log, TEXT("    FAssetData for %s"), *GetObjectPathString());
	UE_LOG(LogAssetData, Log, TEXT("    ============================="));
	UE_LOG(LogAssetData, Log, TEXT("        PackageName: %s"), *PackageName.ToString());
	UE_LOG(LogAssetData, Log, TEXT("        PackagePath: %s"), *PackagePath.ToString());
	UE_LOG(LogAssetData, Log, TEXT("        AssetName: %s"), *AssetName.ToString());
	UE_LOG(LogAssetData, Log, TEXT("        AssetClassPath: %s"), *AssetClassPath.ToString());
}
