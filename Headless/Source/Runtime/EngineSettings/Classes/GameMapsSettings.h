// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPath.h"

#include "GameMapsSettings.generated.h"

/** The project's default maps and game modes, stored in DefaultEngine.ini. */
UCLASS(config = Engine, defaultconfig, MinimalAPI)
class UGameMapsSettings : public UObject
{
	GENERATED_BODY()

public:
	ENGINESETTINGS_API UGameMapsSettings(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The game mode used when nothing else names one; the editor never runs as a dedicated server. */
	static ENGINESETTINGS_API FString GetGlobalDefaultGameMode();

	/** Sets the default game mode of the settings object (saving it is up to the caller). */
	static ENGINESETTINGS_API void SetGlobalDefaultGameMode(const FString& NewGameMode);

	/** Sets the map loaded when no other map is (saving it is up to the caller). */
	static ENGINESETTINGS_API void SetGameDefaultMap(const FString& NewMap);

	/** The settings object (the class default object). */
	UFUNCTION(BlueprintPure, Category = Settings, meta = (DisplayName = "Get Game Maps and Modes Settings"))
	static ENGINESETTINGS_API UGameMapsSettings* GetGameMapsSettings();

	/** If set, this map is loaded when the editor starts. */
	UPROPERTY(config, EditAnywhere, Category = DefaultMaps, meta = (AllowedClasses = "/Script/Engine.World"))
	FSoftObjectPath EditorStartupMap;

	/** Options added to the URL of maps loaded locally. */
	UPROPERTY(config, EditAnywhere, Category = DefaultModes, AdvancedDisplay)
	FString LocalMapOptions;

	/** The map loaded between two others during a seamless travel. */
	UPROPERTY(
		config, EditAnywhere, Category = DefaultMaps, AdvancedDisplay, meta = (AllowedClasses = "/Script/Engine.World"))
	FSoftObjectPath TransitionMap;

	/** The class of the transient game instance. */
	UPROPERTY(
		config, noclear, EditAnywhere, Category = GameInstance, meta = (MetaClass = "/Script/Engine.GameInstance"))
	FSoftClassPath GameInstanceClass;

private:
	/** The map loaded by default when no other map is loaded. */
	UPROPERTY(config, EditAnywhere, Category = DefaultMaps, meta = (AllowedClasses = "/Script/Engine.World"))
	FSoftObjectPath GameDefaultMap;

	/** The map a dedicated server loads when no other map is loaded. */
	UPROPERTY(
		config, EditAnywhere, Category = DefaultMaps, AdvancedDisplay, meta = (AllowedClasses = "/Script/Engine.World"))
	FSoftObjectPath ServerDefaultMap;

	/** The game mode used when neither the map nor the URL names one. */
	UPROPERTY(config, noclear, EditAnywhere, Category = DefaultModes,
		meta = (MetaClass = "/Script/Engine.GameModeBase", DisplayName = "Default GameMode",
			AddToClassList = GameModeBase))
	FSoftClassPath GlobalDefaultGameMode;

	/** The game mode of dedicated servers; GlobalDefaultGameMode when empty. */
	UPROPERTY(config, EditAnywhere, Category = DefaultModes, AdvancedDisplay,
		meta = (MetaClass = "/Script/Engine.GameModeBase"))
	FSoftClassPath GlobalDefaultServerGameMode;
};
