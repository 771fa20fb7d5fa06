// Copyright Orvane. All Rights Reserved.

#include "GameFramework/Info.h"

AInfo::AInfo(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	// Information does not change by itself over time, and has nothing to show.
	PrimaryActorTick.bCanEverTick = false;
	SetActorHiddenInGame(true);
}
