// Copyright Orvane. All Rights Reserved.

#include "OrvaneProjectSettingsSnapshot.h"

#include "Engine/RendererSettings.h"
#include "GameMapsSettings.h"
#include "HAL/FileManager.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace
{
	const TCHAR* const DefaultConfigFiles[] = {TEXT("DefaultEngine.ini"), TEXT("DefaultGame.ini")};
}

void FOrvaneProjectSettingsSnapshot::Capture()
{
	ConfigFiles.Reset();
	for (const TCHAR* BaseFilename : DefaultConfigFiles)
	{
		TArray<uint8> Bytes;
		if (FFileHelper::LoadFileToArray(Bytes, *GetConfigFilename(BaseFilename), FILEREAD_Silent))
		{
			ConfigFiles.Add(BaseFilename, MoveTemp(Bytes));
		}
	}

	const URendererSettings* Renderer = GetDefault<URendererSettings>();
	bAlphaChannel = Renderer->bEnableAlphaChannelInPostProcessing;
	BackBufferPixelFormat = Renderer->DefaultBackBufferPixelFormat.GetValue();
	GlobalDefaultGameMode = UGameMapsSettings::GetGlobalDefaultGameMode();
	DefaultLiveLinkPreset = GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.ToSoftObjectPath().ToString();
}

void FOrvaneProjectSettingsSnapshot::Restore() const
{
	for (const TCHAR* BaseFilename : DefaultConfigFiles)
	{
		const FString Filename = GetConfigFilename(BaseFilename);
		IFileManager::Get().Delete(*Filename, false, true, true);
		if (const TArray<uint8>* Bytes = ConfigFiles.Find(BaseFilename))
		{
			FFileHelper::SaveArrayToFile(*Bytes, *Filename);
		}
		// A cached copy would write the setup's values again on the next flush.
		GConfig->UnloadFile(Filename);
	}

	URendererSettings* Renderer = GetMutableDefault<URendererSettings>();
	Renderer->bEnableAlphaChannelInPostProcessing = bAlphaChannel;
	Renderer->DefaultBackBufferPixelFormat = static_cast<EDefaultBackBufferPixelFormat::Type>(BackBufferPixelFormat);
	UGameMapsSettings::SetGlobalDefaultGameMode(GlobalDefaultGameMode);
	GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset =
		TSoftObjectPtr<ULiveLinkPreset>(FSoftObjectPath(DefaultLiveLinkPreset));
}

FString FOrvaneProjectSettingsSnapshot::GetConfigText(const FString& BaseFilename) const
{
	const TArray<uint8>* Bytes = ConfigFiles.Find(BaseFilename);
	if (!Bytes)
	{
		return FString();
	}
	FString Text;
	FFileHelper::BufferToString(Text, Bytes->GetData(), Bytes->Num());
	return Text;
}

FString FOrvaneProjectSettingsSnapshot::ReadConfigText(const FString& BaseFilename)
{
	FString Text;
	FFileHelper::LoadFileToString(
		Text, *GetConfigFilename(BaseFilename), FFileHelper::EHashOptions::None, FILEREAD_Silent);
	return Text;
}

FString FOrvaneProjectSettingsSnapshot::GetConfigFilename(const FString& BaseFilename)
{
	return FPaths::Combine(FPaths::ProjectConfigDir(), BaseFilename);
}

#endif
