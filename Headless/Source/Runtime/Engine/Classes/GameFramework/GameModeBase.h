// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "GameFramework/Info.h"
#include "UObject/ObjectMacros.h"

#include "GameModeBase.generated.h"

/**
 * Defines the game being played: its rules, scoring, which actors may exist and who may enter. A game mode
 * exists only while a game runs (on the server); the editor knows game mode classes, and projects and levels
 * name the one they play with. The headless engine runs no game, so a game mode here is a class to name and
 * to derive Blueprints from.
 */
UCLASS(config = Game, notplaceable, BlueprintType, Blueprintable, Transient,
	hideCategories = (Info, Rendering, MovementReplication, Replication, Actor),
	meta = (ShortTooltip =
				"Game Mode Base defines the game being played, its rules, scoring, and other facets of the game type."))
class ENGINE_API AGameModeBase : public AInfo
{
	GENERATED_BODY()

public:
	AGameModeBase(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
};
