// Copyright Orvane. All Rights Reserved.

#include "OrvaneLiveLinkHelper.h"

#include "AssetRegistry/AssetRegistryModule.h"
#include "Features/IModularFeatures.h"
#include "HAL/FileManager.h"
#include "ILiveLinkClient.h"
#include "LiveLinkPreset.h"
#include "Misc/PackageName.h"
#include "OrvaneLiveLinkLog.h"
#include "OrvanePresetPath.h"
#include "OrvaneTrackingEndpoint.h"
#include "OrvaneTrackingSource.h"
#include "OrvaneTrackingSourceSettings.h"
#include "UObject/Package.h"
#include "UObject/SavePackage.h"

namespace OrvaneLiveLinkHelper
{
	/** The editor's Live Link client, or null (with an error logged) when the Live Link plug-in is not loaded. */
	ILiveLinkClient* GetClient(const TCHAR* Action)
	{
		IModularFeatures& Features = IModularFeatures::Get();
		if (!Features.IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName))
		{
			UE_LOG(LogOrvaneLiveLink, Error,
				TEXT("Cannot %s: the Live Link client is not available. Enable the Live Link plug-in."), Action);
			return nullptr;
		}
		return &Features.GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName);
	}

	/** Takes an object out of use so its name can be taken again: no longer an asset, and collectable. */
	void Discard(UObject* Object)
	{
		Object->ClearFlags(RF_Public | RF_Standalone);
		Object->SetFlags(RF_Transient);
		Object->MarkAsGarbage();
	}
} // namespace OrvaneLiveLinkHelper

bool UOrvaneLiveLinkHelper::RemoveAllOrvaneSources()
{
	ILiveLinkClient* Client = OrvaneLiveLinkHelper::GetClient(TEXT("remove the tracking sources"));
	if (!Client)
	{
		return false;
	}

	int32 Removed = 0;
	for (const FGuid& SourceGuid : Client->GetSources())
	{
		// Sources are recognised by their settings class, which survives presets and localisation alike.
		const ULiveLinkSourceSettings* Settings = Client->GetSourceSettings(SourceGuid);
		if (Settings && Settings->IsA<UOrvaneTrackingSourceSettings>())
		{
			Client->RemoveSource(SourceGuid);
			++Removed;
		}
	}
	UE_LOG(LogOrvaneLiveLink, Log, TEXT("Removed %d tracking source(s)."), Removed);
	return true;
}

bool UOrvaneLiveLinkHelper::RemoveExistingPreset(const FString& PresetName)
{
	FOrvanePresetPath Path;
	FString Error;
	if (!FOrvanePresetPath::Make(PresetName, Path, Error))
	{
		UE_LOG(LogOrvaneLiveLink, Error, TEXT("%s"), *Error);
		return false;
	}

	if (UPackage* Package = FindPackage(nullptr, *Path.PackageName))
	{
		if (UObject* Asset = FindObject<UObject>(Package, *Path.AssetName))
		{
			FAssetRegistryModule::AssetDeleted(Asset);
			OrvaneLiveLinkHelper::Discard(Asset);
		}
		OrvaneLiveLinkHelper::Discard(Package);
		CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS);
	}

	FString Filename;
	if (FPackageName::DoesPackageExist(Path.PackageName, &Filename))
	{
		if (!IFileManager::Get().Delete(*Filename, false, true, true))
		{
			UE_LOG(LogOrvaneLiveLink, Error, TEXT("Could not delete the Live Link preset file %s."), *Filename);
			return false;
		}
		UE_LOG(LogOrvaneLiveLink, Log, TEXT("Deleted the Live Link preset %s."), *Path.PackageName);
	}
	return true;
}

bool UOrvaneLiveLinkHelper::CreateOrvaneSource(const FString& Endpoint)
{
	FIPv4Endpoint ParsedEndpoint;
	FString Error;
	if (!FOrvaneTrackingEndpoint::Parse(Endpoint, ParsedEndpoint, Error))
	{
		UE_LOG(LogOrvaneLiveLink, Error, TEXT("%s"), *Error);
		return false;
	}

	ILiveLinkClient* Client = OrvaneLiveLinkHelper::GetClient(TEXT("create a tracking source"));
	if (!Client)
	{
		return false;
	}

	const FGuid SourceGuid = Client->AddSource(MakeShared<FOrvaneTrackingSource>(Endpoint, ParsedEndpoint));
	if (!SourceGuid.IsValid())
	{
		UE_LOG(LogOrvaneLiveLink, Error, TEXT("The Live Link client refused the tracking source for %s."), *Endpoint);
		return false;
	}
	UE_LOG(LogOrvaneLiveLink, Log, TEXT("Created a tracking source listening on %s."), *Endpoint);
	return true;
}

bool UOrvaneLiveLinkHelper::SaveLiveLinkPreset(const FString& PresetName)
{
	FOrvanePresetPath Path;
	FString Error;
	if (!FOrvanePresetPath::Make(PresetName, Path, Error))
	{
		UE_LOG(LogOrvaneLiveLink, Error, TEXT("%s"), *Error);
		return false;
	}
	if (!OrvaneLiveLinkHelper::GetClient(TEXT("save a Live Link preset")))
	{
		return false;
	}

	UPackage* Package = CreatePackage(*Path.PackageName);
	ULiveLinkPreset* Preset = FindObject<ULiveLinkPreset>(Package, *Path.AssetName);
	const bool bIsNewAsset = Preset == nullptr;
	if (bIsNewAsset)
	{
		Preset =
			NewObject<ULiveLinkPreset>(Package, FName(*Path.AssetName), RF_Public | RF_Standalone | RF_Transactional);
	}
	Preset->BuildFromClient();
	if (bIsNewAsset)
	{
		FAssetRegistryModule::AssetCreated(Preset);
	}
	Package->MarkPackageDirty();

	const FString Filename =
		FPackageName::LongPackageNameToFilename(Path.PackageName, FPackageName::GetAssetPackageExtension());
	FSavePackageArgs SaveArgs;
	SaveArgs.TopLevelFlags = RF_Public | RF_Standalone;
	if (!UPackage::SavePackage(Package, Preset, *Filename, SaveArgs))
	{
		UE_LOG(LogOrvaneLiveLink, Error, TEXT("Could not save the Live Link preset %s to %s."), *Path.PackageName,
			*Filename);
		return false;
	}
	UE_LOG(LogOrvaneLiveLink, Log, TEXT("Saved the Live Link preset %s (%d source(s), %d subject(s))."),
		*Path.PackageName, Preset->GetSourcePresets().Num(), Preset->GetSubjectPresets().Num());
	return true;
}
