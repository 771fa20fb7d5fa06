// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Engine/EngineTypes.h"
#include "Math/Color.h"
#include "Math/Vector2D.h"
#include "Templates/UniquePtr.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "Engine.generated.h"

class IEngineLoop;
class UWorld;

/** One world the engine works with, and what kind of world it is. */
struct ENGINE_API FWorldContext
{
	FWorldContext() = default;

	/** The kind of world of this context. */
	TEnumAsByte<EWorldType::Type> WorldType = EWorldType::None;

	/** A name that identifies the context. */
	FName ContextHandle;

	/** The play-in-editor instance number; INDEX_NONE outside play in editor. */
	int32 PIEInstance = INDEX_NONE;

	/** The context's current world; null during a map change. */
	UWorld* World() const { return ThisCurrentWorld; }

	/** Makes a world the current world of the context. */
	void SetCurrentWorld(UWorld* World);

private:
	friend class UEngine;
	UWorld* ThisCurrentWorld = nullptr;
};

/** The world contexts of the engine. Each context stays where it is until it is destroyed. */
class ENGINE_API FWorldContextList
{
public:
	template <typename ElementType, typename InnerIterator>
	class TIterator
	{
	public:
		explicit TIterator(InnerIterator InIt)
			: It(InIt)
		{
		}
		ElementType& operator*() const { return **It; }
		ElementType* operator->() const { return It->Get(); }
		TIterator& operator++()
		{
			++It;
			return *this;
		}
		bool operator!=(const TIterator& Other) const { return It != Other.It; }
		bool operator==(const TIterator& Other) const { return It == Other.It; }

	private:
		InnerIterator It;
	};

	int32 Num() const { return Contexts.Num(); }
	bool IsValidIndex(int32 Index) const { return Contexts.IsValidIndex(Index); }
	FWorldContext& operator[](int32 Index) { return *Contexts[Index]; }
	const FWorldContext& operator[](int32 Index) const { return *Contexts[Index]; }

	auto begin() { return TIterator<FWorldContext, decltype(Contexts.begin())>(Contexts.begin()); }
	auto end() { return TIterator<FWorldContext, decltype(Contexts.end())>(Contexts.end()); }
	auto begin() const { return TIterator<const FWorldContext, decltype(Contexts.begin())>(Contexts.begin()); }
	auto end() const { return TIterator<const FWorldContext, decltype(Contexts.end())>(Contexts.end()); }

private:
	friend class UEngine;
	TArray<TUniquePtr<FWorldContext>> Contexts;
};

/** One on-screen debug message, as it is shown. */
struct FScreenMessageString
{
	/** The key the message was added with (INDEX_NONE for unkeyed messages). */
	uint64 Key = 0;

	/** The text. */
	FString ScreenMessage;

	FColor DisplayColor = FColor::White;

	/** Seconds the message is shown for. */
	float TimeToDisplay = 0.f;

	/** Seconds it has been shown. */
	float CurrentTimeDisplayed = 0.f;

	FVector2D TextScale = FVector2D::UnitVector;
};

/** One AddOnScreenDebugMessage call, as the headless editor records it for tests and its host. */
struct FOnScreenDebugMessageRecord
{
	uint64 Key = 0;
	float TimeToDisplay = 0.f;
	FColor DisplayColor;
	FString Message;
	bool bNewerOnTop = true;
	FVector2D TextScale = FVector2D::UnitVector;

	/** The engine frame (GFrameCounter) the message was added in. */
	uint64 Frame = 0;
};

/** How GetWorldFromContextObject reports an object without a world. */
enum class EGetWorldErrorMode
{
	/** Return null quietly. */
	ReturnNull,
	/** Log a warning and return null. */
	LogAndReturnNull,
	/** Fatal. */
	Assert
};

/**
 * The engine: it owns the world contexts, ticks the worlds each frame and shows the on-screen debug
 * messages. The editor's engine is a UEditorEngine; GEngine points at the one engine of the process.
 */
UCLASS(Abstract, config = Engine, defaultconfig, transient)
class ENGINE_API UEngine : public UObject
{
	GENERATED_BODY()

public:
	UEngine(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** Starts the engine (the editor engine creates its world here). */
	virtual void Init(IEngineLoop* InEngineLoop);

	/** Called once the engine loop has finished starting. */
	virtual void Start() {}

	/** Shuts the engine down before the modules unload. */
	virtual void PreExit();

	/** Runs one frame of the engine. */
	virtual void Tick(float DeltaSeconds, bool bIdleMode);

	/** True in the editor. */
	bool IsEditor() { return GIsEditor; }

	// On-screen debug messages.

	/**
	 * Shows a message on screen for TimeToDisplay seconds. Key INDEX_NONE (-1) always adds a new message, on top
	 * of the unkeyed ones when bNewerOnTop; any other key replaces the message shown with that key. Nothing is
	 * shown when GAreScreenMessagesEnabled is false.
	 */
	void AddOnScreenDebugMessage(uint64 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
		bool bNewerOnTop = true, const FVector2D& TextScale = FVector2D::UnitVector);
	void AddOnScreenDebugMessage(int32 Key, float TimeToDisplay, FColor DisplayColor, const FString& DebugMessage,
		bool bNewerOnTop = true, const FVector2D& TextScale = FVector2D::UnitVector);

	/** True if a message with the key is shown. */
	bool OnScreenDebugMessageExists(uint64 Key);

	/** Removes every shown message. */
	void ClearOnScreenDebugMessages();

	/** Removes the shown message with the key. */
	void RemoveOnScreenDebugMessage(uint64 Key);

	/** The keyed messages shown now. */
	TMap<int32, FScreenMessageString> ScreenMessages;

	/** The unkeyed messages shown now, top first. */
	TArray<FScreenMessageString> PriorityScreenMessages;

	/** Every message added since the engine started (or the record was cleared), in order. */
	const TArray<FOnScreenDebugMessageRecord>& GetRecordedOnScreenDebugMessages() const
	{
		return RecordedScreenMessages;
	}
	void ClearRecordedOnScreenDebugMessages() { RecordedScreenMessages.Reset(); }

	// Worlds.

	/** The engine's world contexts. */
	const FWorldContextList& GetWorldContexts() const { return WorldList; }

	/** Adds a world context of the given type. */
	FWorldContext& CreateNewWorldContext(EWorldType::Type WorldType);

	/** Removes the context whose world is InWorld. */
	void DestroyWorldContext(UWorld* InWorld);

	/** The context of a world; null if none. */
	FWorldContext* GetWorldContextFromWorld(const UWorld* InWorld);

	/** The context of a world; fatal if none. */
	FWorldContext& GetWorldContextFromWorldChecked(const UWorld* InWorld);

	/** The world an object lives in. */
	UWorld* GetWorldFromContextObject(const UObject* Object, EGetWorldErrorMode ErrorMode) const;

	/** Called when a world was created with bInformEngineOfWorld. */
	virtual void WorldAdded(UWorld* World);

	/** Called when a world was destroyed with bInformEngineOfWorld. */
	virtual void WorldDestroyed(UWorld* InWorld);

	DECLARE_EVENT_OneParam(UEngine, FWorldAddedEvent, UWorld*);
	DECLARE_EVENT_OneParam(UEngine, FWorldDestroyedEvent, UWorld*);
	FWorldAddedEvent& OnWorldAdded() { return WorldAddedEvent; }
	FWorldDestroyedEvent& OnWorldDestroyed() { return WorldDestroyedEvent; }

	static void AddReferencedObjects(UObject* InThis, FReferenceCollector& Collector);

protected:
	/** Ages the shown messages by DeltaSeconds and removes those whose time is over. */
	void TickOnScreenDebugMessages(float DeltaSeconds);

	FWorldContextList WorldList;

private:
	int32 NextWorldContextHandle = 0;
	TArray<FOnScreenDebugMessageRecord> RecordedScreenMessages;
	FWorldAddedEvent WorldAddedEvent;
	FWorldDestroyedEvent WorldDestroyedEvent;
};

/** The engine of the process; null before the engine starts and after it shut down. */
extern ENGINE_API UEngine* GEngine;

/** Whether on-screen debug messages are shown. */
extern ENGINE_API bool GAreScreenMessagesEnabled;
