// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/EngineBaseTypes.h"
#include "Engine/EngineTypes.h"
#include "Engine/Level.h"
#include "GameFramework/Actor.h"
#include "Misc/Guid.h"
#include "Templates/Function.h"
#include "Templates/UniquePtr.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "World.generated.h"

class APawn;
class FTimerManager;
class UChildActorComponent;
class ULevel;
class UPackage;
struct FTickFunction;

/** Broadcast when an actor was spawned in a world. */
DECLARE_MULTICAST_DELEGATE_OneParam(FOnActorSpawned, AActor*);

/** The options of one SpawnActor call. */
struct ENGINE_API FActorSpawnParameters
{
	FActorSpawnParameters();

	/** The name of the new actor; NAME_None makes a unique "<Class>_<N>" name. */
	FName Name;

	/** The actor whose property values the new actor copies; the class default object when null. */
	AActor* Template = nullptr;

	/** The actor that owns the new one. */
	AActor* Owner = nullptr;

	/** The pawn responsible for the new actor. */
	APawn* Instigator = nullptr;

	/** The level to spawn in; the owner's level, else the world's current level, when null. */
	ULevel* OverrideLevel = nullptr;

#if WITH_EDITOR
	/** The package to put the actor in (the headless editor keeps actors in their level's package). */
	UPackage* OverridePackage = nullptr;

	/** The guid the actor gets. */
	FGuid OverrideActorGuid;
#endif

	/** The child actor component that spawns the actor. */
	UChildActorComponent* OverrideParentComponent = nullptr;

	/** What to do when the actor would overlap something (there is no collision in the headless editor). */
	ESpawnActorCollisionHandlingMethod SpawnCollisionHandlingOverride = ESpawnActorCollisionHandlingMethod::Undefined;

	/** How the spawn transform combines with the root component's. */
	ESpawnActorScaleMethod TransformScaleMethod = ESpawnActorScaleMethod::MultiplyWithRoot;

private:
	friend class UWorld;
	uint8 bRemoteOwned : 1;

public:
	bool IsRemoteOwned() const
	{
		return bRemoteOwned;
	}

	/** Spawn even if the actor would be destroyed or would collide. */
	uint8 bNoFail : 1;

	/** Do not run construction: the caller runs it with AActor::FinishSpawning. */
	uint8 bDeferConstruction : 1;

	/** Allow spawning while a construction script runs. */
	uint8 bAllowDuringConstructionScript : 1;

#if WITH_EDITOR
	/** The actor is a temporary actor of an editor tool: it does not dirty its level. */
	uint8 bTemporaryEditorActor : 1;

	/** The actor is hidden from the scene outliner. */
	uint8 bHideFromSceneOutliner : 1;

	/** Whether the actor gets its own package (not in the headless editor). */
	uint16 bCreateActorPackage : 1;
#endif

	/** How SpawnActor uses a Name that is already taken. */
	enum class ESpawnActorNameMode : uint8
	{
		/** Fatal if the name is taken. */
		Required_Fatal,
		/** An error and no actor if the name is taken. */
		Required_ErrorAndReturnNull,
		/** No actor if the name is taken. */
		Required_ReturnNull,
		/** A unique name made from Name if it is taken. */
		Requested
	};

	ESpawnActorNameMode NameMode = ESpawnActorNameMode::Required_Fatal;

	/** The flags the new actor gets. */
	EObjectFlags ObjectFlags = RF_Transactional;

	/** Called with the new actor before its components are registered and its construction runs. */
	TFunction<void(AActor*)> CustomPreSpawnInitalization;
};

/** Helpers that name spawned actors. */
struct ENGINE_API FActorSpawnUtils
{
	/**
	 * A name for a new actor of Class in Level: "<BaseName>_<N>" with BaseName defaulting to the class name and
	 * N counting the objects of the class made so far. The headless editor makes level-unique names only.
	 */
	static FName MakeUniqueActorName(ULevel* Level, const UClass* Class, FName BaseName, bool bGloballyUnique);

	/** Whether a name is globally unique (never, in the headless editor). */
	static bool IsGloballyUniqueName(FName Name);

	/** The name without its number. */
	static FName GetBaseName(FName Name);
};

/**
 * A world: the persistent level, the levels streamed into it, the actors in them, their ticking and the world's
 * timers. The editor's world is ticked with LEVELTICK_ViewportsOnly, in which only what ticks in the editor ticks.
 */
UCLASS()
class ENGINE_API UWorld : public UObject
{
	GENERATED_BODY()

public:
	UWorld(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());
	virtual ~UWorld() override;

	/** The level the world was created with; it holds the world's own actors. */
	UPROPERTY(Transient)
	TObjectPtr<ULevel> PersistentLevel;

	/** What kind of world this is. */
	TEnumAsByte<EWorldType::Type> WorldType = EWorldType::None;

	/** True once InitWorld ran, until the world is destroyed. */
	bool bIsWorldInitialized = false;

	/** True while the world is being destroyed: nothing can be spawned then. */
	bool bIsTearingDown = false;

	/** True while an actor's construction script runs in this world. */
	bool bIsRunningConstructionScript = false;

	/**
	 * Creates a world with a persistent level in a new package ("/Temp/Untitled_<N>" unless given one) and
	 * initialises it. With bInformEngineOfWorld the engine is told about it.
	 */
	static UWorld* CreateWorld(const EWorldType::Type InWorldType, bool bInformEngineOfWorld,
		FName WorldName = NAME_None, UPackage* InWorldPackage = nullptr, bool bAddToRoot = true);

	/** Tears the world down: its actors are destroyed and it is marked as garbage. */
	void DestroyWorld(bool bInformEngineOfWorld, UWorld* NewWorld = nullptr);

	virtual UWorld* GetWorld() const override { return const_cast<UWorld*>(this); }

	// Levels.

	/** The level new actors are spawned into. */
	ULevel* GetCurrentLevel() const;
	bool SetCurrentLevel(ULevel* InLevel);

	/** The levels of the world: the persistent level first. */
	const TArray<ULevel*>& GetLevels() const { return Levels; }
	int32 GetNumLevels() const { return Levels.Num(); }
	ULevel* GetLevel(int32 InLevelIndex) const { return Levels[InLevelIndex]; }
	bool ContainsLevel(ULevel* InLevel) const { return Levels.Contains(InLevel); }

	/** Adds a level to the world (it becomes part of the world); false if it already is. */
	bool AddLevel(ULevel* InLevel);

	/** Removes a level from the world; false if it was not part of it. */
	bool RemoveLevel(ULevel* InLevel);

	// Actors.

	AActor* SpawnActor(UClass* InClass, FVector const* Location = nullptr, FRotator const* Rotation = nullptr,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters());
	AActor* SpawnActor(UClass* Class, FTransform const* Transform,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters());
	AActor* SpawnActorAbsolute(UClass* Class, FTransform const& AbsoluteTransform,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters());

	template <class T>
	T* SpawnActor(const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(
			SpawnActor(T::StaticClass(), nullptr, nullptr, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	template <class T>
	T* SpawnActor(FVector const& Location, FRotator const& Rotation,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(
			SpawnActor(T::StaticClass(), &Location, &Rotation, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	template <class T>
	T* SpawnActor(UClass* Class, const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(SpawnActor(Class, nullptr, nullptr, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	template <class T>
	T* SpawnActor(UClass* Class, FVector const& Location, FRotator const& Rotation,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(SpawnActor(Class, &Location, &Rotation, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	template <class T>
	T* SpawnActor(UClass* Class, FTransform const& Transform,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(SpawnActor(Class, &Transform, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	template <class T>
	T* SpawnActorAbsolute(UClass* Class, FTransform const& AbsoluteTransform,
		const FActorSpawnParameters& SpawnParameters = FActorSpawnParameters())
	{
		return CastChecked<T>(
			SpawnActorAbsolute(Class, AbsoluteTransform, SpawnParameters), ECastCheckedType::NullAllowed);
	}

	/** Spawns an actor without running its construction; call FinishSpawning on it. */
	template <class T>
	T* SpawnActorDeferred(UClass* Class, FTransform const& Transform, AActor* Owner = nullptr,
		APawn* Instigator = nullptr,
		ESpawnActorCollisionHandlingMethod CollisionHandlingOverride = ESpawnActorCollisionHandlingMethod::Undefined,
		ESpawnActorScaleMethod TransformScaleMethod = ESpawnActorScaleMethod::MultiplyWithRoot)
	{
		FActorSpawnParameters Params;
		Params.Owner = Owner;
		Params.Instigator = Instigator;
		Params.SpawnCollisionHandlingOverride = CollisionHandlingOverride;
		Params.TransformScaleMethod = TransformScaleMethod;
		Params.bDeferConstruction = true;
		return (Class != nullptr) ? Cast<T>(SpawnActor(Class, &Transform, Params)) : nullptr;
	}

	/**
	 * Destroys an actor: Destroyed() is called, its attached actors are detached, its components are unregistered,
	 * it leaves its level (which is marked modified when bShouldModifyLevel) and it is marked as garbage with its
	 * components. True if the actor is destroyed or already being destroyed.
	 */
	bool DestroyActor(AActor* Actor, bool bNetForce = false, bool bShouldModifyLevel = true);

	/** Calls the handler with every actor spawned in this world from now on. */
	FDelegateHandle AddOnActorSpawnedHandler(const FOnActorSpawned::FDelegate& InHandler) const;
	void RemoveOnActorSpawnedHandler(FDelegateHandle InHandle) const;

	// Time.

	/** The world's own timers (ticked by game worlds; the editor has its own timer manager). */
	FTimerManager& GetTimerManager() const;

	/** Advances the world's clocks and calls the tick functions the tick type allows. */
	void Tick(ELevelTick TickType, float DeltaSeconds);

	/** Seconds the world has been ticked (scaled game time). */
	double GetTimeSeconds() const { return TimeSeconds; }
	double GetRealTimeSeconds() const { return RealTimeSeconds; }
	float GetDeltaSeconds() const { return DeltaTimeSeconds; }

	// Kind of world.

	bool IsGameWorld() const;
	bool IsEditorWorld() const;
	bool IsPreviewWorld() const;
	bool IsPlayInEditor() const { return WorldType == EWorldType::PIE; }

	/** The short name of the world's package. */
	FString GetMapName() const;

	virtual void BeginDestroy() override;
	static void AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector);

private:
	friend struct FTickFunction;

	/** Creates the world's persistent level and marks the world initialised. */
	void InitWorld();

	/** Resolves the name of a new actor; NAME_None if it cannot be used (the reason is logged). */
	FName ResolveSpawnName(ULevel* Level, UClass* Class, const FActorSpawnParameters& SpawnParameters) const;

	/** The level a spawn goes to. */
	ULevel* ResolveSpawnLevel(const FActorSpawnParameters& SpawnParameters) const;

	void RegisterTickFunction(FTickFunction* Function);
	void UnregisterTickFunction(FTickFunction* Function);

	/** Calls the tick functions in tick group order. */
	void RunTickFunctions(ELevelTick TickType, float DeltaSeconds);

	/** The levels of the world; the persistent level is the first. */
	TArray<ULevel*> Levels;

	/** The level new actors go to. */
	ULevel* CurrentLevel = nullptr;

	/** Registered tick functions, in registration order; slots of removed functions are null until the tick ends. */
	TArray<FTickFunction*> TickFunctions;
	bool bTickingFunctions = false;

	TUniquePtr<FTimerManager> TimerManager;

	mutable FOnActorSpawned OnActorSpawned;

	double TimeSeconds = 0.0;
	double RealTimeSeconds = 0.0;
	float DeltaTimeSeconds = 0.f;
};

/** Points at the world the editor or game currently works in. */
class ENGINE_API UWorldProxy
{
public:
	UWorldProxy() = default;

	UWorld* operator->() const { return World; }
	const UWorld& operator*() const { return *World; }
	UWorldProxy& operator=(UWorld* InWorld)
	{
		World = InWorld;
		return *this;
	}
	operator UWorld*() const { return World; }
	UWorld* GetReference() const { return World; }

private:
	UWorld* World = nullptr;
};

/** The world the editor or game currently works in; null before one exists. */
extern ENGINE_API UWorldProxy GWorld;
