// Copyright Orvane. All Rights Reserved.

#include "Components/ActorComponent.h"
#include "Engine/EngineBaseTypes.h"
#include "Engine/Level.h"
#include "Engine/World.h"
#include "GameFramework/Actor.h"

DEFINE_LOG_CATEGORY_STATIC(LogTick, Log, All);

FTickFunction::FTickFunction()
	: bTickEvenWhenPaused(false)
	, bCanEverTick(false)
	, bStartWithTickEnabled(true)
	, bRunOnAnyThread(false)
	, bAllowTickOnDedicatedServer(true)
{
}

FTickFunction::~FTickFunction()
{
	UnRegisterTickFunction();
}

void FTickFunction::RegisterTickFunction(ULevel* Level)
{
	UWorld* World = Level ? Level->GetWorld() : nullptr;
	if (!World)
	{
		UE_LOG(LogTick, Error, TEXT("Tick function %s cannot be registered: its level has no world."),
			*DiagnosticMessage());
		return;
	}
	if (RegisteredWorld == World)
	{
		RegisteredLevel = Level;
		return;
	}
	UnRegisterTickFunction();
	AccumulatedDeltaTime = 0.f;
	RegisteredLevel = Level;
	World->RegisterTickFunction(this);
}

void FTickFunction::UnRegisterTickFunction()
{
	if (RegisteredWorld)
	{
		RegisteredWorld->UnregisterTickFunction(this);
	}
	RegisteredLevel = nullptr;
}

void FTickFunction::SetTickFunctionEnable(bool bInEnabled)
{
	bEnabled = bInEnabled;
	if (!bInEnabled)
	{
		AccumulatedDeltaTime = 0.f;
	}
}

void FTickFunction::UpdateTickIntervalAndCoolDown(float NewInterval)
{
	TickInterval = NewInterval;
}

FActorTickFunction::FActorTickFunction()
{
	TickGroup = TG_PrePhysics;
}

void FActorTickFunction::ExecuteTick(float DeltaTime, ELevelTick TickType, ENamedThreads::Type CurrentThread)
{
	if (IsValid(Target) && !Target->IsPendingKillPending())
	{
		Target->TickActor(DeltaTime, TickType, *this);
	}
}

FString FActorTickFunction::DiagnosticMessage()
{
	return Target ? Target->GetFullName() + TEXT("[TickActor]") : FString(TEXT("[TickActor]"));
}

FActorComponentTickFunction::FActorComponentTickFunction()
{
	TickGroup = TG_DuringPhysics;
}

void FActorComponentTickFunction::ExecuteTick(float DeltaTime, ELevelTick TickType, ENamedThreads::Type CurrentThread)
{
	if (!IsValid(Target) || !Target->IsRegistered())
	{
		return;
	}
	AActor* Owner = Target->GetOwner();
	if (Owner && Owner->IsPendingKillPending())
	{
		return;
	}
	// The editor's own world only ticks the components that ask for it.
	if (TickType == LEVELTICK_ViewportsOnly && !Target->bTickInEditor)
	{
		return;
	}
	Target->TickComponent(DeltaTime, TickType, this);
}

FString FActorComponentTickFunction::DiagnosticMessage()
{
	return Target ? Target->GetFullName() + TEXT("[TickComponent]") : FString(TEXT("[TickComponent]"));
}
