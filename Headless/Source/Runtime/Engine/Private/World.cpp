// Copyright Orvane. All Rights Reserved.

#include "Engine/World.h"

#include "Engine/Engine.h"
#include "Engine/Level.h"
#include "GameFramework/Actor.h"
#include "Misc/PackageName.h"
#include "TimerManager.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

DEFINE_LOG_CATEGORY_STATIC(LogWorld, Log, All);
DEFINE_LOG_CATEGORY_STATIC(LogSpawn, Warning, All);

UWorldProxy GWorld;

FActorSpawnParameters::FActorSpawnParameters()
	: bRemoteOwned(false)
	, bNoFail(false)
	, bDeferConstruction(false)
	, bAllowDuringConstructionScript(false)
#if WITH_EDITOR
	, bTemporaryEditorActor(false)
	, bHideFromSceneOutliner(false)
	, bCreateActorPackage(false)
#endif
{
}

// ---------------------------------------------------------------------------------------------------
// Actor names

FName FActorSpawnUtils::MakeUniqueActorName(ULevel* Level, const UClass* Class, FName BaseName, bool bGloballyUnique)
{
	if (bGloballyUnique)
	{
		// Globally unique names belong to levels that keep each actor in its own package.
		UE_HEADLESS_UNIMPLEMENTED();
	}
	const FName Base = BaseName.IsNone() ? Class->GetFName() : GetBaseName(BaseName);
	return MakeUniqueObjectName(Level, Class, Base);
}

bool FActorSpawnUtils::IsGloballyUniqueName(FName Name)
{
	return false;
}

FName FActorSpawnUtils::GetBaseName(FName Name)
{
	return FName(*Name.GetPlainNameString());
}

// ---------------------------------------------------------------------------------------------------
// Creation and destruction

UWorld::UWorld(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
	, TimerManager(MakeUnique<FTimerManager>())
{
}

UWorld::~UWorld() = default;

UWorld* UWorld::CreateWorld(const EWorldType::Type InWorldType, bool bInformEngineOfWorld, FName WorldName,
	UPackage* InWorldPackage, bool bAddToRoot)
{
	UPackage* WorldPackage = InWorldPackage;
	if (!WorldPackage)
	{
		// New maps live in "/Temp/Untitled_<N>" until they are saved somewhere.
		FString PackageName;
		for (int32 Number = 1;; ++Number)
		{
			PackageName = FString::Printf(TEXT("/Temp/Untitled_%d"), Number);
			if (!FindPackage(nullptr, *PackageName))
			{
				break;
			}
		}
		WorldPackage = CreatePackage(*PackageName);
	}
	if (WorldName.IsNone())
	{
		WorldName = FName(*FPackageName::GetShortName(WorldPackage->GetName()));
	}
	UWorld* NewWorld = NewObject<UWorld>(WorldPackage, WorldName, RF_Public | RF_Standalone | RF_Transactional);
	NewWorld->WorldType = InWorldType;
	NewWorld->InitWorld();
	if (bAddToRoot)
	{
		NewWorld->AddToRoot();
	}
	if (bInformEngineOfWorld && GEngine)
	{
		GEngine->WorldAdded(NewWorld);
	}
	return NewWorld;
}

void UWorld::InitWorld()
{
	if (bIsWorldInitialized)
	{
		return;
	}
	if (!PersistentLevel)
	{
		PersistentLevel = NewObject<ULevel>(this, TEXT("PersistentLevel"), RF_Transactional);
	}
	PersistentLevel->OwningWorld = this;
	PersistentLevel->bIsVisible = true;
	Levels.Reset();
	Levels.Add(PersistentLevel);
	CurrentLevel = PersistentLevel;
	bIsWorldInitialized = true;
}

void UWorld::DestroyWorld(bool bInformEngineOfWorld, UWorld* NewWorld)
{
	bIsTearingDown = true;
	for (ULevel* Level : Levels)
	{
		if (!Level)
		{
			continue;
		}
		TArray<AActor*> LevelActors;
		for (AActor* Actor : Level->Actors)
		{
			if (Actor)
			{
				LevelActors.Add(Actor);
			}
		}
		// Last first: each actor then leaves the end of the level's list, which keeps tearing down a large level
		// linear.
		for (int32 Index = LevelActors.Num() - 1; Index >= 0; --Index)
		{
			AActor* Actor = LevelActors[Index];
			Actor->bActorIsBeingDestroyed = true;
			Actor->UnregisterAllComponents();
			Level->RemoveLevelActor(Actor);
			Actor->MarkComponentsAsGarbage();
			Actor->MarkAsGarbage();
		}
		if (Level != PersistentLevel)
		{
			Level->OwningWorld = nullptr;
		}
	}
	for (FTickFunction* Function : TickFunctions)
	{
		if (Function)
		{
			Function->RegisteredWorld = nullptr;
		}
	}
	TickFunctions.Reset();
	if (bInformEngineOfWorld && GEngine)
	{
		GEngine->WorldDestroyed(this);
	}
	if (GWorld.GetReference() == this)
	{
		GWorld = NewWorld;
	}
	bIsWorldInitialized = false;
	RemoveFromRoot();
	ClearFlags(RF_Standalone);
	if (PersistentLevel)
	{
		PersistentLevel->MarkAsGarbage();
	}
	MarkAsGarbage();
}

void UWorld::BeginDestroy()
{
	for (FTickFunction* Function : TickFunctions)
	{
		if (Function)
		{
			Function->RegisteredWorld = nullptr;
		}
	}
	TickFunctions.Reset();
	Levels.Reset();
	CurrentLevel = nullptr;
	if (GWorld.GetReference() == this)
	{
		GWorld = nullptr;
	}
	Super::BeginDestroy();
}

void UWorld::AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector)
{
	UWorld* This = static_cast<UWorld*>(InThis);
	Collector.AddReferencedObjects(This->Levels, This);
	Collector.AddReferencedObject(This->CurrentLevel, This);
	This->Levels.Remove(nullptr);
	if (!This->CurrentLevel)
	{
		This->CurrentLevel = This->PersistentLevel;
	}
}

// ---------------------------------------------------------------------------------------------------
// Levels

ULevel* UWorld::GetCurrentLevel() const
{
	return CurrentLevel;
}

bool UWorld::SetCurrentLevel(ULevel* InLevel)
{
	if (!InLevel || !Levels.Contains(InLevel))
	{
		return false;
	}
	CurrentLevel = InLevel;
	return true;
}

bool UWorld::AddLevel(ULevel* InLevel)
{
	if (!InLevel || Levels.Contains(InLevel))
	{
		return false;
	}
	if (InLevel->OwningWorld && InLevel->OwningWorld != this)
	{
		UE_LOG(LogWorld, Warning, TEXT("%s cannot be added to %s: it belongs to %s."), *InLevel->GetPathName(),
			*GetName(), *InLevel->OwningWorld->GetName());
		return false;
	}
	InLevel->OwningWorld = this;
	Levels.Add(InLevel);
	return true;
}

bool UWorld::RemoveLevel(ULevel* InLevel)
{
	if (!InLevel || InLevel == PersistentLevel || !Levels.Contains(InLevel))
	{
		return false;
	}
	Levels.Remove(InLevel);
	if (CurrentLevel == InLevel)
	{
		CurrentLevel = PersistentLevel;
	}
	return true;
}

// ---------------------------------------------------------------------------------------------------
// Spawning

ULevel* UWorld::ResolveSpawnLevel(const FActorSpawnParameters& SpawnParameters) const
{
	if (SpawnParameters.OverrideLevel)
	{
		return SpawnParameters.OverrideLevel;
	}
	// An actor spawns next to its owner.
	if (SpawnParameters.Owner && SpawnParameters.Owner->GetLevel())
	{
		return SpawnParameters.Owner->GetLevel();
	}
	return CurrentLevel;
}

FName UWorld::ResolveSpawnName(ULevel* Level, UClass* Class, const FActorSpawnParameters& SpawnParameters) const
{
	if (SpawnParameters.Name.IsNone())
	{
		const FName BaseName = SpawnParameters.Template && !SpawnParameters.Template->HasAnyFlags(RF_ClassDefaultObject)
								   ? SpawnParameters.Template->GetFName()
								   : NAME_None;
		return FActorSpawnUtils::MakeUniqueActorName(Level, Class, BaseName, false);
	}
	UObject* const Existing = StaticFindObjectFast(nullptr, Level, SpawnParameters.Name);
	if (!Existing)
	{
		return SpawnParameters.Name;
	}
	if (!IsValid(Existing))
	{
		// A destroyed actor waiting for collection gives its name up.
		Existing->Rename(nullptr, nullptr, REN_DontCreateRedirectors | REN_DoNotDirty | REN_NonTransactional);
		return SpawnParameters.Name;
	}
	switch (SpawnParameters.NameMode)
	{
		case FActorSpawnParameters::ESpawnActorNameMode::Requested:
			return MakeUniqueObjectName(Level, Class, FActorSpawnUtils::GetBaseName(SpawnParameters.Name));
		case FActorSpawnParameters::ESpawnActorNameMode::Required_ReturnNull:
			return NAME_None;
		case FActorSpawnParameters::ESpawnActorNameMode::Required_Fatal:
		case FActorSpawnParameters::ESpawnActorNameMode::Required_ErrorAndReturnNull:
		default:
			UE_LOG(LogSpawn, Error, TEXT("An actor of name '%s' already exists in level '%s'."),
				*SpawnParameters.Name.ToString(), *Level->GetFullName());
			return NAME_None;
	}
}

AActor* UWorld::SpawnActor(
	UClass* InClass, FVector const* Location, FRotator const* Rotation, const FActorSpawnParameters& SpawnParameters)
{
	if (!Location && !Rotation)
	{
		return SpawnActor(InClass, (FTransform const*)nullptr, SpawnParameters);
	}
	const FTransform UserTransform(
		Rotation ? *Rotation : FRotator::ZeroRotator, Location ? *Location : FVector::ZeroVector);
	return SpawnActor(InClass, &UserTransform, SpawnParameters);
}

AActor* UWorld::SpawnActorAbsolute(
	UClass* Class, FTransform const& AbsoluteTransform, const FActorSpawnParameters& SpawnParameters)
{
	AActor* const Template = SpawnParameters.Template ? SpawnParameters.Template
													  : (Class ? Cast<AActor>(Class->GetDefaultObject()) : nullptr);
	if (!Template)
	{
		return SpawnActor(Class, &AbsoluteTransform, SpawnParameters);
	}
	// The template's root transform is undone so that the root ends up exactly at AbsoluteTransform.
	FTransform NewTransform = AbsoluteTransform;
	if (USceneComponent* const TemplateRoot = Template->GetRootComponent())
	{
		NewTransform = TemplateRoot->GetRelativeTransform().Inverse() * AbsoluteTransform;
	}
	return SpawnActor(Class, &NewTransform, SpawnParameters);
}

AActor* UWorld::SpawnActor(
	UClass* Class, FTransform const* UserTransformPtr, const FActorSpawnParameters& SpawnParameters)
{
	if (!Class)
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because no class was specified"));
		return nullptr;
	}
	if (Class->HasAnyClassFlags(CLASS_Deprecated))
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because class %s is deprecated"), *Class->GetName());
		return nullptr;
	}
	if (Class->HasAnyClassFlags(CLASS_Abstract))
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because class %s is abstract"), *Class->GetName());
		return nullptr;
	}
	if (!Class->IsChildOf(AActor::StaticClass()))
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because %s is not an actor class"), *Class->GetName());
		return nullptr;
	}
	if (SpawnParameters.Template && SpawnParameters.Template->GetClass() != Class)
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because template class (%s) does not match spawn class (%s)"),
			*SpawnParameters.Template->GetClass()->GetName(), *Class->GetName());
		return nullptr;
	}
	if (bIsRunningConstructionScript && !SpawnParameters.bAllowDuringConstructionScript)
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because we are running a ConstructionScript (%s)"),
			*Class->GetName());
		return nullptr;
	}
	if (bIsTearingDown || !bIsWorldInitialized)
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because the world %s is being torn down or not initialised"),
			*GetName());
		return nullptr;
	}
	if (UserTransformPtr && UserTransformPtr->ContainsNaN())
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because the given transform (%s) is invalid"),
			*UserTransformPtr->ToString());
		return nullptr;
	}
	ULevel* const LevelToSpawnIn = ResolveSpawnLevel(SpawnParameters);
	if (!LevelToSpawnIn || LevelToSpawnIn->OwningWorld != this)
	{
		UE_LOG(LogSpawn, Warning, TEXT("SpawnActor failed because the level %s is not part of world %s"),
			*GetPathNameSafe(LevelToSpawnIn), *GetName());
		return nullptr;
	}
	const FName NewActorName = ResolveSpawnName(LevelToSpawnIn, Class, SpawnParameters);
	if (NewActorName.IsNone())
	{
		return nullptr;
	}

	AActor* const Actor =
		NewObject<AActor>(LevelToSpawnIn, Class, NewActorName, SpawnParameters.ObjectFlags, SpawnParameters.Template);
	LevelToSpawnIn->AddLevelActor(Actor);
	if (SpawnParameters.CustomPreSpawnInitalization)
	{
		SpawnParameters.CustomPreSpawnInitalization(Actor);
	}

	const FTransform UserTransform = UserTransformPtr ? *UserTransformPtr : FTransform::Identity;
	Actor->PostSpawnInitialize(UserTransform, SpawnParameters.Owner, SpawnParameters.IsRemoteOwned(),
		SpawnParameters.bNoFail, SpawnParameters.bDeferConstruction, SpawnParameters.TransformScaleMethod);
	if (!IsValid(Actor) || Actor->IsPendingKillPending())
	{
		// The actor destroyed itself while it was being made.
		return nullptr;
	}

#if WITH_EDITOR
	if (!IsGameWorld() && !SpawnParameters.bTemporaryEditorActor)
	{
		LevelToSpawnIn->MarkPackageDirty();
	}
#endif
	OnActorSpawned.Broadcast(Actor);
	return Actor;
}

// ---------------------------------------------------------------------------------------------------
// Destroying

bool UWorld::DestroyActor(AActor* ThisActor, bool bNetForce, bool bShouldModifyLevel)
{
	if (!ThisActor)
	{
		UE_LOG(LogSpawn, Error, TEXT("DestroyActor was called without an actor."));
		return false;
	}
	if (ThisActor->IsPendingKillPending())
	{
		return true;
	}
	if (ThisActor->GetWorld() != this)
	{
		UE_LOG(LogSpawn, Error, TEXT("DestroyActor: %s is not in world %s."), *ThisActor->GetFullName(), *GetName());
		return false;
	}
	ULevel* const Level = ThisActor->GetLevel();

	ThisActor->bActorIsBeingDestroyed = true;
	ThisActor->Destroyed();

	// The actors attached to this one stay where they are in the world.
	TArray<AActor*> AttachedActors;
	ThisActor->GetAttachedActors(AttachedActors);
	for (AActor* Attached : AttachedActors)
	{
		Attached->DetachFromActor(FDetachmentTransformRules::KeepWorldTransform);
	}
	ThisActor->DetachFromActor(FDetachmentTransformRules::KeepWorldTransform);
	ThisActor->UnregisterAllComponents();

	if (Level)
	{
		if (bShouldModifyLevel)
		{
			Level->Modify();
		}
		Level->RemoveLevelActor(ThisActor);
	}
	ThisActor->Owner = nullptr;
	ThisActor->MarkComponentsAsGarbage();
	ThisActor->MarkAsGarbage();
	return true;
}

FDelegateHandle UWorld::AddOnActorSpawnedHandler(const FOnActorSpawned::FDelegate& InHandler) const
{
	return OnActorSpawned.Add(InHandler);
}

void UWorld::RemoveOnActorSpawnedHandler(FDelegateHandle InHandle) const
{
	OnActorSpawned.Remove(InHandle);
}

// ---------------------------------------------------------------------------------------------------
// Ticking

FTimerManager& UWorld::GetTimerManager() const
{
	return *TimerManager;
}

void UWorld::RegisterTickFunction(FTickFunction* Function)
{
	Function->RegisteredWorld = this;
	TickFunctions.Add(Function);
}

void UWorld::UnregisterTickFunction(FTickFunction* Function)
{
	Function->RegisteredWorld = nullptr;
	const int32 Index = TickFunctions.Find(Function);
	if (Index == INDEX_NONE)
	{
		return;
	}
	if (bTickingFunctions)
	{
		// The list is being walked: the slot is emptied now and closed when the tick ends.
		TickFunctions[Index] = nullptr;
	}
	else
	{
		TickFunctions.RemoveAt(Index);
	}
}

void UWorld::RunTickFunctions(ELevelTick TickType, float DeltaSeconds)
{
	bTickingFunctions = true;
	// Functions registered during this tick are past Count: they first run in the next tick.
	const int32 Count = TickFunctions.Num();
	for (int32 Group = 0; Group < TG_MAX; ++Group)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			FTickFunction* const Function = TickFunctions[Index];
			if (!Function || Function->TickGroup != Group || !Function->IsTickFunctionAllowed())
			{
				continue;
			}
			// What lives in a hidden level does not tick.
			if (Function->RegisteredLevel && !Function->RegisteredLevel->bIsVisible)
			{
				continue;
			}
			float FunctionDeltaTime = DeltaSeconds;
			if (Function->TickInterval > 0.f)
			{
				Function->AccumulatedDeltaTime += DeltaSeconds;
				if (Function->AccumulatedDeltaTime < Function->TickInterval)
				{
					continue;
				}
				FunctionDeltaTime = Function->AccumulatedDeltaTime;
				Function->AccumulatedDeltaTime = 0.f;
			}
			Function->ExecuteTick(FunctionDeltaTime, TickType, ENamedThreads::GameThread);
		}
	}
	bTickingFunctions = false;
	TickFunctions.Remove(nullptr);
}

void UWorld::Tick(ELevelTick TickType, float DeltaSeconds)
{
	DeltaTimeSeconds = DeltaSeconds;
	RealTimeSeconds += DeltaSeconds;
	if (TickType == LEVELTICK_TimeOnly)
	{
		return;
	}
	TimeSeconds += DeltaSeconds;
	RunTickFunctions(TickType, DeltaSeconds);
	// World timers belong to the game: the editor's own world leaves them to the editor's timer manager.
	if (IsGameWorld())
	{
		TimerManager->Tick(DeltaSeconds);
	}
}

// ---------------------------------------------------------------------------------------------------
// Kind of world

bool UWorld::IsGameWorld() const
{
	return WorldType == EWorldType::Game || WorldType == EWorldType::PIE || WorldType == EWorldType::GamePreview ||
		   WorldType == EWorldType::GameRPC;
}

bool UWorld::IsEditorWorld() const
{
	return WorldType == EWorldType::Editor || WorldType == EWorldType::EditorPreview || WorldType == EWorldType::PIE;
}

bool UWorld::IsPreviewWorld() const
{
	return WorldType == EWorldType::EditorPreview || WorldType == EWorldType::GamePreview;
}

FString UWorld::GetMapName() const
{
	return FPackageName::GetShortName(GetOutermost()->GetName());
}
