// Copyright Orvane. All Rights Reserved.

#include "GameMapsSettings.h"
#include "UObject/Class.h"

UGameMapsSettings::UGameMapsSettings(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

FString UGameMapsSettings::GetGlobalDefaultGameMode()
{
	// The server game mode only applies to dedicated servers, which the editor never is.
	return GetDefault<UGameMapsSettings>()->GlobalDefaultGameMode.ToString();
}

void UGameMapsSettings::SetGlobalDefaultGameMode(const FString& NewGameMode)
{
	GetMutableDefault<UGameMapsSettings>()->GlobalDefaultGameMode = FSoftClassPath(NewGameMode);
}

void UGameMapsSettings::SetGameDefaultMap(const FString& NewMap)
{
	GetMutableDefault<UGameMapsSettings>()->GameDefaultMap = FSoftObjectPath(NewMap);
}

UGameMapsSettings* UGameMapsSettings::GetGameMapsSettings()
{
	return GetMutableDefault<UGameMapsSettings>();
}
