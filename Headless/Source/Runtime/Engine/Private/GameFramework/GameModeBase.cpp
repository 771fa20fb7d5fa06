// Copyright Orvane. All Rights Reserved.

#include "GameFramework/GameModeBase.h"

AGameModeBase::AGameModeBase(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}
