// Copyright Orvane. All Rights Reserved.

#include "Editor/EditorEngine.h"

#include "Editor.h"
#include "Engine/World.h"
#include "TimerManager.h"

DEFINE_LOG_CATEGORY_STATIC(LogEditor, Log, All);

UEditorEngine* GEditor = nullptr;

UEditorEngine::UEditorEngine(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

void UEditorEngine::Init(IEngineLoop* InEngineLoop)
{
	Super::Init(InEngineLoop);
	TimerManager = MakeShared<FTimerManager>();

	FWorldContext& EditorContext = CreateNewWorldContext(EWorldType::Editor);
	UWorld* const EditorWorld = UWorld::CreateWorld(EWorldType::Editor, true);
	EditorContext.SetCurrentWorld(EditorWorld);
	GWorld = EditorWorld;
	UE_LOG(LogEditor, Log, TEXT("Editor engine started with world %s."), *EditorWorld->GetPathName());
}

void UEditorEngine::PreExit()
{
	Super::PreExit();
	TArray<UWorld*> Worlds;
	for (FWorldContext& Context : WorldList)
	{
		if (Context.World())
		{
			Worlds.Add(Context.World());
		}
	}
	for (UWorld* World : Worlds)
	{
		World->DestroyWorld(true);
		DestroyWorldContext(World);
	}
	GWorld = nullptr;
	TimerManager.Reset();
}

void UEditorEngine::Tick(float DeltaSeconds, bool bIdleMode)
{
	EditorTimeSeconds += DeltaSeconds;
	if (TimerManager.IsValid())
	{
		TimerManager->Tick(DeltaSeconds);
	}
	// Only what ticks in the editor ticks in the world being edited.
	for (FWorldContext& Context : WorldList)
	{
		if (Context.WorldType == EWorldType::Editor && Context.World())
		{
			Context.World()->Tick(LEVELTICK_ViewportsOnly, DeltaSeconds);
		}
	}
	if (PlayWorld)
	{
		PlayWorld->Tick(LEVELTICK_All, DeltaSeconds);
	}
	TickOnScreenDebugMessages(DeltaSeconds);
}

FWorldContext& UEditorEngine::GetEditorWorldContext(bool bEnsureIsGWorld)
{
	for (FWorldContext& Context : WorldList)
	{
		if (Context.WorldType == EWorldType::Editor)
		{
			if (bEnsureIsGWorld && Context.World() != GWorld.GetReference())
			{
				UE_LOG(LogEditor, Error, TEXT("The editor world %s is not GWorld (%s)."),
					*GetPathNameSafe(Context.World()), *GetPathNameSafe(GWorld.GetReference()));
			}
			return Context;
		}
	}
	FDebug::AssertFailed("EditorContext", __FILE__, __LINE__, TEXT("The editor engine has no editor world context."));
}

FWorldContext* UEditorEngine::GetPIEWorldContext(int32 WorldPIEInstance)
{
	for (FWorldContext& Context : WorldList)
	{
		if (Context.WorldType == EWorldType::PIE && Context.PIEInstance == WorldPIEInstance)
		{
			return &Context;
		}
	}
	return nullptr;
}
