// Copyright Orvane. All Rights Reserved.

#include "Engine/Engine.h"

#include "Engine/World.h"
#include "UnrealEngine.h"

DEFINE_LOG_CATEGORY_STATIC(LogEngine, Log, All);

UEngine* GEngine = nullptr;
bool GAreScreenMessagesEnabled = true;

void FWorldContext::SetCurrentWorld(UWorld* World)
{
	ThisCurrentWorld = World;
}

UEngine::UEngine(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

void UEngine::Init(IEngineLoop* InEngineLoop) {}

void UEngine::PreExit()
{
	ClearOnScreenDebugMessages();
}

void UEngine::Tick(float DeltaSeconds, bool bIdleMode)
{
	// Each kind of engine (editor, game) runs its own frame.
	UE_HEADLESS_UNIMPLEMENTED();
}

// ---------------------------------------------------------------------------------------------------
// On-screen debug messages

void UEngine::AddOnScreenDebugMessage(uint64 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
	bool bNewerOnTop, const FVector2D& TextScale)
{
	if (!GAreScreenMessagesEnabled)
	{
		return;
	}
	FOnScreenDebugMessageRecord& Record = RecordedScreenMessages.AddDefaulted_GetRef();
	Record.Key = Key;
	Record.TimeToDisplay = TimeToDisplay;
	Record.DisplayColor = DisplayColor;
	Record.Message = DebugMessage;
	Record.bNewerOnTop = bNewerOnTop;
	Record.TextScale = TextScale;
	Record.Frame = GFrameCounter;

	FScreenMessageString Message;
	Message.Key = Key;
	Message.ScreenMessage = DebugMessage;
	Message.DisplayColor = DisplayColor;
	Message.TimeToDisplay = TimeToDisplay;
	Message.CurrentTimeDisplayed = 0.f;
	Message.TextScale = TextScale;
	if (Key == (uint64)-1)
	{
		// Unkeyed messages stack up; bNewerOnTop decides which end the new one goes to.
		if (bNewerOnTop)
		{
			PriorityScreenMessages.Insert(Message, 0);
		}
		else
		{
			PriorityScreenMessages.Add(Message);
		}
	}
	else
	{
		// A keyed message replaces the one shown with the same key.
		ScreenMessages.Add((int32)Key, Message);
	}
}

void UEngine::AddOnScreenDebugMessage(int32 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
	bool bNewerOnTop, const FVector2D& TextScale)
{
	AddOnScreenDebugMessage((uint64)Key, TimeToDisplay, DisplayColor, DebugMessage, bNewerOnTop, TextScale);
}

bool UEngine::OnScreenDebugMessageExists(uint64 Key)
{
	if (Key == (uint64)-1)
	{
		return PriorityScreenMessages.Num() > 0;
	}
	return ScreenMessages.Contains((int32)Key);
}

void UEngine::ClearOnScreenDebugMessages()
{
	ScreenMessages.Empty();
	PriorityScreenMessages.Empty();
}

void UEngine::RemoveOnScreenDebugMessage(uint64 Key)
{
	ScreenMessages.Remove((int32)Key);
}

void UEngine::TickOnScreenDebugMessages(float DeltaSeconds)
{
	TArray<int32> Expired;
	for (TPair<int32, FScreenMessageString>& Pair : ScreenMessages)
	{
		Pair.Value.CurrentTimeDisplayed += DeltaSeconds;
		if (Pair.Value.CurrentTimeDisplayed >= Pair.Value.TimeToDisplay)
		{
			Expired.Add(Pair.Key);
		}
	}
	for (int32 Key : Expired)
	{
		ScreenMessages.Remove(Key);
	}
	for (int32 Index = PriorityScreenMessages.Num() - 1; Index >= 0; --Index)
	{
		FScreenMessageString& Message = PriorityScreenMessages[Index];
		Message.CurrentTimeDisplayed += DeltaSeconds;
		if (Message.CurrentTimeDisplayed >= Message.TimeToDisplay)
		{
			PriorityScreenMessages.RemoveAt(Index);
		}
	}
}

// ---------------------------------------------------------------------------------------------------
// World contexts

FWorldContext& UEngine::CreateNewWorldContext(EWorldType::Type WorldType)
{
	TUniquePtr<FWorldContext>& Context = WorldList.Contexts.Add_GetRef(MakeUnique<FWorldContext>());
	Context->WorldType = WorldType;
	Context->ContextHandle = FName(*FString::Printf(TEXT("Context_%d"), NextWorldContextHandle++));
	return *Context;
}

void UEngine::DestroyWorldContext(UWorld* InWorld)
{
	for (int32 Index = 0; Index < WorldList.Contexts.Num(); ++Index)
	{
		if (WorldList.Contexts[Index]->World() == InWorld)
		{
			WorldList.Contexts.RemoveAt(Index);
			return;
		}
	}
}

FWorldContext* UEngine::GetWorldContextFromWorld(const UWorld* InWorld)
{
	for (const TUniquePtr<FWorldContext>& Context : WorldList.Contexts)
	{
		if (Context->World() == InWorld)
		{
			return Context.Get();
		}
	}
	return nullptr;
}

FWorldContext& UEngine::GetWorldContextFromWorldChecked(const UWorld* InWorld)
{
	FWorldContext* Context = GetWorldContextFromWorld(InWorld);
	checkf(Context, TEXT("No world context holds %s."), *GetPathNameSafe(InWorld));
	return *Context;
}

UWorld* UEngine::GetWorldFromContextObject(const UObject* Object, EGetWorldErrorMode ErrorMode) const
{
	UWorld* World = Object ? Object->GetWorld() : nullptr;
	if (!World)
	{
		switch (ErrorMode)
		{
			case EGetWorldErrorMode::LogAndReturnNull:
				UE_LOG(LogEngine, Warning,
					TEXT("No world was found for object (%s) passed in to UEngine::GetWorldFromContextObject()."),
					*GetPathNameSafe(Object));
				break;
			case EGetWorldErrorMode::Assert:
				checkf(false,
					TEXT("No world was found for object (%s) passed in to UEngine::GetWorldFromContextObject()."),
					*GetPathNameSafe(Object));
				break;
			case EGetWorldErrorMode::ReturnNull:
				break;
		}
	}
	return World;
}

void UEngine::WorldAdded(UWorld* World)
{
	WorldAddedEvent.Broadcast(World);
}

void UEngine::WorldDestroyed(UWorld* InWorld)
{
	WorldDestroyedEvent.Broadcast(InWorld);
}

void UEngine::AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector)
{
	UEngine* This = static_cast<UEngine*>(InThis);
	for (TUniquePtr<FWorldContext>& Context : This->WorldList.Contexts)
	{
		Collector.AddReferencedObject(Context->ThisCurrentWorld, This);
	}
}
