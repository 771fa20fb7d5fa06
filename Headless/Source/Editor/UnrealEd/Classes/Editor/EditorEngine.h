// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "Templates/SharedPointer.h"
#include "UObject/ObjectMacros.h"

#include "EditorEngine.generated.h"

class FTimerManager;
class UWorld;

/**
 * The engine of the editor. It owns the editor's world (the level being edited, in a world context of type
 * EWorldType::Editor) and the editor's timer manager, and each frame it ticks the timers, then the editor world
 * with LEVELTICK_ViewportsOnly (so only what ticks in the editor ticks), then the on-screen messages.
 */
UCLASS(config = Engine, transient)
class UNREALED_API UEditorEngine : public UEngine
{
	GENERATED_BODY()

public:
	UEditorEngine(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** The world of a play-in-editor session; null while none runs. */
	UWorld* PlayWorld = nullptr;

	/** Creates the editor's timer manager, its world context and the world it edits. */
	virtual void Init(IEngineLoop* InEngineLoop) override;

	/** Destroys the editor world and the timer manager. */
	virtual void PreExit() override;

	/** Ticks the editor's timers, the editor world and the on-screen messages. */
	virtual void Tick(float DeltaSeconds, bool bIdleMode) override;

	/** The context of the world being edited; fatal if there is none. */
	FWorldContext& GetEditorWorldContext(bool bEnsureIsGWorld = false);

	/** The context of a play-in-editor world; null if there is none. */
	FWorldContext* GetPIEWorldContext(int32 WorldPIEInstance = 0);

	/** The editor's own timer manager, ticked every editor frame whether or not a game is playing. */
	TSharedRef<FTimerManager> GetTimerManager() { return TimerManager.ToSharedRef(); }

	/** False until Init has created the timer manager. */
	bool IsTimerManagerValid() { return TimerManager.IsValid(); }

	/** Seconds the editor has been running, as its frames counted them. */
	double GetEditorTimeSeconds() const { return EditorTimeSeconds; }

protected:
	TSharedPtr<FTimerManager> TimerManager;

private:
	double EditorTimeSeconds = 0.0;
};
