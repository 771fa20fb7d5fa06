// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Async/TaskGraphInterfaces.h"
#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "EngineBaseTypes.generated.h"

class AActor;
class UActorComponent;
class ULevel;
class UWorld;

/** What a world tick covers. */
enum ELevelTick
{
	/** Only advance the clock. */
	LEVELTICK_TimeOnly = 0,
	/** Update the viewports only: what the editor does with its own world. */
	LEVELTICK_ViewportsOnly = 1,
	/** Update everything. */
	LEVELTICK_All = 2,
	/** Update what ticks while paused. */
	LEVELTICK_PauseTick = 3,
};

/** The groups tick functions run in, in this order. */
UENUM()
enum ETickingGroup : int
{
	TG_PrePhysics UMETA(DisplayName = "Pre Physics"),
	TG_StartPhysics UMETA(Hidden, DisplayName = "Start Physics"),
	TG_DuringPhysics UMETA(DisplayName = "During Physics"),
	TG_EndPhysics UMETA(Hidden, DisplayName = "End Physics"),
	TG_PostPhysics UMETA(DisplayName = "Post Physics"),
	TG_PostUpdateWork UMETA(DisplayName = "Post Update Work"),
	TG_LastDemotable UMETA(Hidden, DisplayName = "Last Demotable"),
	TG_NewlySpawned UMETA(Hidden, DisplayName = "Newly Spawned"),
	TG_MAX,
};

/**
 * A function the world calls once per frame while it is registered and enabled and its level is visible.
 * Registered functions run in tick group order, then in the order they were registered; a function registered
 * during a world tick first runs in the next one.
 */
struct ENGINE_API FTickFunction
{
public:
	FTickFunction();
	virtual ~FTickFunction();

	FTickFunction(const FTickFunction&) = delete;
	FTickFunction& operator=(const FTickFunction&) = delete;

	/** The group this function runs in. */
	TEnumAsByte<enum ETickingGroup> TickGroup = TG_PrePhysics;

	/** The group this function must have finished by. */
	TEnumAsByte<enum ETickingGroup> EndTickGroup = TG_PrePhysics;

	/** Whether this function also runs while the game is paused. */
	uint8 bTickEvenWhenPaused : 1;

	/** Whether this function may ever be registered; set in the owner's constructor. */
	uint8 bCanEverTick : 1;

	/** Whether the function starts enabled when it is registered. */
	uint8 bStartWithTickEnabled : 1;

	/** Whether this function may run on any thread (the headless world runs everything on the game thread). */
	uint8 bRunOnAnyThread : 1;

	/** Whether this function is allowed to tick on dedicated servers. */
	uint8 bAllowTickOnDedicatedServer : 1;

	/** Seconds between two calls; 0 or less means every frame. */
	float TickInterval = 0.f;

	/** Adds the function to the tick list of the level's world. */
	void RegisterTickFunction(ULevel* Level);

	/** Removes the function from its world's tick list. */
	void UnRegisterTickFunction();

	/** True while the function is in a world's tick list. */
	bool IsTickFunctionRegistered() const { return RegisteredWorld != nullptr; }

	/** Enables or disables the function; a disabled function stays registered but is not called. */
	void SetTickFunctionEnable(bool bInEnabled);

	/** True if the function is enabled. */
	bool IsTickFunctionEnabled() const { return bEnabled; }

	/** True if the function may be called: it can tick, is registered and is enabled. */
	bool IsTickFunctionAllowed() const { return bCanEverTick && IsTickFunctionRegistered() && bEnabled; }

	/** Changes the interval between two calls. */
	void UpdateTickIntervalAndCoolDown(float NewInterval);

	/** Does the function's work. DeltaTime is the time since the function last ran. */
	virtual void ExecuteTick(float DeltaTime, ELevelTick TickType, ENamedThreads::Type CurrentThread) = 0;

	/** A description of the function for messages. */
	virtual FString DiagnosticMessage() = 0;

private:
	friend class UWorld;

	UWorld* RegisteredWorld = nullptr;

	/** The level the function belongs to: it does not run while that level is hidden. */
	ULevel* RegisteredLevel = nullptr;

	bool bEnabled = true;

	/** The world time not yet passed to the function because of its interval. */
	float AccumulatedDeltaTime = 0.f;
};

/** The tick function of an actor: calls AActor::TickActor. */
struct ENGINE_API FActorTickFunction : public FTickFunction
{
	FActorTickFunction();

	/** The actor to tick. */
	AActor* Target = nullptr;

	virtual void ExecuteTick(float DeltaTime, ELevelTick TickType, ENamedThreads::Type CurrentThread) override;
	virtual FString DiagnosticMessage() override;
};

/** The tick function of a component: calls UActorComponent::TickComponent. */
struct ENGINE_API FActorComponentTickFunction : public FTickFunction
{
	FActorComponentTickFunction();

	/** The component to tick. */
	UActorComponent* Target = nullptr;

	virtual void ExecuteTick(float DeltaTime, ELevelTick TickType, ENamedThreads::Type CurrentThread) override;
	virtual FString DiagnosticMessage() override;
};
