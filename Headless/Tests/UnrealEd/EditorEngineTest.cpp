// Copyright Orvane. All Rights Reserved.

#include "../Engine/EngineTestWorld.h"
#include "CineCameraActor.h"
#include "CineCameraComponent.h"
#include "Editor.h"
#include "Editor/UnrealEdEngine.h"
#include "EngineUtils.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "TimerManager.h"
#include "UObject/Package.h"
#include "UnrealEdGlobals.h"

namespace
{
	/**
	 * An editor engine made as the engine loop makes it, with the loop ticking it on a fixed step of a quarter
	 * second: four frames are one second.
	 */
	class FEditorEngineTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			FApp::SetUseFixedTimeStep(true);
			FApp::SetFixedDeltaTime(0.25);
			UUnrealEdEngine* Engine = NewObject<UUnrealEdEngine>(GetTransientPackage());
			Engine->AddToRoot();
			GEngine = GEditor = GUnrealEd = Engine;
			GEngine->Init(&GEngineLoop);
			World = GEditor->GetEditorWorldContext().World();
			ASSERT_NE(World, nullptr);
		}

		void TearDown() override
		{
			GEngine->PreExit();
			GEngine->RemoveFromRoot();
			GEngine = nullptr;
			GEditor = nullptr;
			GUnrealEd = nullptr;
			CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
		}

		void Frames(int32 Count)
		{
			for (int32 Frame = 0; Frame < Count; ++Frame)
			{
				GEngineLoop.Tick();
			}
		}

		UWorld* World = nullptr;
	};
} // namespace

TEST_F(FEditorEngineTest, TheEditorWorldContextHoldsAnEditorWorld)
{
	FWorldContext& Context = GEditor->GetEditorWorldContext();
	EXPECT_EQ(Context.WorldType, EWorldType::Editor);
	EXPECT_EQ(Context.World(), World);
	EXPECT_EQ(World->WorldType, EWorldType::Editor);
	EXPECT_NE(World->PersistentLevel, nullptr);
	EXPECT_EQ(GWorld.GetReference(), World);
	EXPECT_EQ(&GEditor->GetEditorWorldContext(true), &Context);
	EXPECT_EQ(GEngine->GetWorldContextFromWorld(World), &Context);
	EXPECT_EQ(GEditor->GetPIEWorldContext(), nullptr);
	int32 Contexts = 0;
	for (const FWorldContext& Each : GEngine->GetWorldContexts())
	{
		EXPECT_EQ(Each.World(), World);
		++Contexts;
	}
	EXPECT_EQ(Contexts, 1);
	EXPECT_TRUE(GEngine->IsEditor());
	EXPECT_TRUE(GEditor->IsTimerManagerValid());
}

TEST_F(FEditorEngineTest, EditorTimersFireOnTheEngineLoopsSimulatedClock)
{
	TArray<int32> FiredOnFrames;
	int32 Frame = 0;
	FTimerHandle Once;
	GEditor->GetTimerManager()->SetTimer(Once,
		FTimerDelegate::CreateLambda(
			[&FiredOnFrames, &Frame]()
			{
				FiredOnFrames.Add(Frame);
			}),
		1.0f, false);
	for (Frame = 1; Frame <= 8; ++Frame)
	{
		GEngineLoop.Tick();
	}
	// One period of a second: the fourth frame of a quarter second.
	EXPECT_EQ(FiredOnFrames, (TArray<int32>{4}));

	TArray<int32> LoopFrames;
	FTimerHandle Loop;
	GEditor->GetTimerManager()->SetTimer(Loop,
		FTimerDelegate::CreateLambda(
			[&LoopFrames, &Frame]()
			{
				LoopFrames.Add(Frame);
			}),
		0.5f, true, 0.25f);
	for (Frame = 1; Frame <= 6; ++Frame)
	{
		GEngineLoop.Tick();
	}
	EXPECT_EQ(LoopFrames, (TArray<int32>{1, 3, 5}));
	GEditor->GetTimerManager()->ClearTimer(Loop);
	Frames(4);
	EXPECT_EQ(LoopFrames.Num(), 3);
}

TEST_F(FEditorEngineTest, ComponentsThatTickInTheEditorTickEveryFrame)
{
	AEngineTestTickActor* Actor = World->SpawnActor<AEngineTestTickActor>();
	ASSERT_NE(Actor, nullptr);
	Frames(4);
	EXPECT_EQ(Actor->EditorTicking->TickCount, 4);
	EXPECT_DOUBLE_EQ(Actor->EditorTicking->TotalDeltaTime, 1.0);
	EXPECT_EQ(Actor->EditorTicking->TickTypes, (TArray<ELevelTick>{LEVELTICK_ViewportsOnly, LEVELTICK_ViewportsOnly,
												   LEVELTICK_ViewportsOnly, LEVELTICK_ViewportsOnly}));
	// Without bTickInEditor a component waits for a game; so does an actor that does not ask to tick in the editor.
	EXPECT_EQ(Actor->GameOnlyTicking->TickCount, 0);
	EXPECT_EQ(Actor->ActorTickCount, 0);
	Actor->bTickInEditorViewports = true;
	Frames(2);
	EXPECT_EQ(Actor->ActorTickCount, 2);
}

TEST_F(FEditorEngineTest, TickIntervalsDisabledTicksAndDestroyedActors)
{
	AEngineTestTickActor* Slow = World->SpawnActor<AEngineTestTickActor>();
	AEngineTestTickActor* Off = World->SpawnActor<AEngineTestTickActor>();
	AEngineTestTickActor* Gone = World->SpawnActor<AEngineTestTickActor>();
	Slow->EditorTicking->SetComponentTickInterval(0.5f);
	Off->EditorTicking->SetComponentTickEnabled(false);
	Frames(4);
	EXPECT_EQ(Slow->EditorTicking->TickCount, 2);
	EXPECT_EQ(Slow->EditorTicking->DeltaTimes, (TArray<float>{0.5f, 0.5f}));
	EXPECT_EQ(Off->EditorTicking->TickCount, 0);
	EXPECT_FALSE(Off->EditorTicking->IsComponentTickEnabled());

	// An actor destroyed by another one's tick is not ticked again, in this frame or later ones.
	UEngineTestTickComponent* GoneComponent = Gone->EditorTicking;
	const int32 GoneTicks = GoneComponent->TickCount;
	Slow->EditorTicking->OnTicked = [Gone](UEngineTestTickComponent*)
	{
		Gone->Destroy();
	};
	Frames(4);
	EXPECT_EQ(GoneComponent->TickCount, GoneTicks + 1);
	const int32 AfterDestroy = GoneComponent->TickCount;
	Frames(4);
	EXPECT_EQ(GoneComponent->TickCount, AfterDestroy);
	EXPECT_FALSE(GoneComponent->PrimaryComponentTick.IsTickFunctionRegistered());
}

TEST_F(FEditorEngineTest, EachFrameFiresTheTimersBeforeTheWorldTicks)
{
	AEngineTestTickActor* Actor = World->SpawnActor<AEngineTestTickActor>();
	int32 TicksSeenByTimer = -1;
	FTimerHandle Handle;
	GEditor->GetTimerManager()->SetTimer(Handle,
		FTimerDelegate::CreateLambda(
			[&TicksSeenByTimer, Actor]()
			{
				TicksSeenByTimer = Actor->EditorTicking->TickCount;
			}),
		0.5f, false);
	Frames(2);
	EXPECT_EQ(TicksSeenByTimer, 1);
	EXPECT_EQ(Actor->EditorTicking->TickCount, 2);
}

TEST_F(FEditorEngineTest, OnScreenMessagesAreRecordedAndShownForTheirTime)
{
	GEngine->ClearRecordedOnScreenDebugMessages();
	GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, TEXT("First"));
	GEngine->AddOnScreenDebugMessage(-1, 3.0f, FColor::Red, TEXT("Second"), true, FVector2D(2.0, 2.0));
	GEngine->AddOnScreenDebugMessage(-1, 3.0f, FColor::Blue, TEXT("Bottom"), false);
	GEngine->AddOnScreenDebugMessage((uint64)7, 5.0f, FColor::Yellow, TEXT("Keyed"));
	GEngine->AddOnScreenDebugMessage((uint64)7, 5.0f, FColor::White, TEXT("Keyed again"));

	const TArray<FOnScreenDebugMessageRecord>& Records = GEngine->GetRecordedOnScreenDebugMessages();
	ASSERT_EQ(Records.Num(), 5);
	EXPECT_EQ(Records[0].Key, (uint64)-1);
	EXPECT_EQ(Records[0].Message, FString(TEXT("First")));
	EXPECT_FLOAT_EQ(Records[0].TimeToDisplay, 1.0f);
	EXPECT_EQ(Records[0].DisplayColor, FColor::Green);
	EXPECT_EQ(Records[1].TextScale, FVector2D(2.0, 2.0));
	EXPECT_FALSE(Records[2].bNewerOnTop);
	EXPECT_EQ(Records[4].Key, 7u);

	// Unkeyed messages stack, newest on top unless asked otherwise; a key replaces its message.
	ASSERT_EQ(GEngine->PriorityScreenMessages.Num(), 3);
	EXPECT_EQ(GEngine->PriorityScreenMessages[0].ScreenMessage, FString(TEXT("Second")));
	EXPECT_EQ(GEngine->PriorityScreenMessages[1].ScreenMessage, FString(TEXT("First")));
	EXPECT_EQ(GEngine->PriorityScreenMessages[2].ScreenMessage, FString(TEXT("Bottom")));
	ASSERT_EQ(GEngine->ScreenMessages.Num(), 1);
	EXPECT_EQ(GEngine->ScreenMessages[7].ScreenMessage, FString(TEXT("Keyed again")));
	EXPECT_EQ(GEngine->ScreenMessages[7].DisplayColor, FColor::White);
	EXPECT_TRUE(GEngine->OnScreenDebugMessageExists(7));

	// Messages disappear once their time is over.
	Frames(4);
	EXPECT_EQ(GEngine->PriorityScreenMessages.Num(), 2);
	Frames(8);
	EXPECT_EQ(GEngine->PriorityScreenMessages.Num(), 0);
	EXPECT_TRUE(GEngine->OnScreenDebugMessageExists(7));
	Frames(8);
	EXPECT_FALSE(GEngine->OnScreenDebugMessageExists(7));
	EXPECT_EQ(GEngine->GetRecordedOnScreenDebugMessages().Num(), 5);

	GAreScreenMessagesEnabled = false;
	GEngine->AddOnScreenDebugMessage(-1, 1.0f, FColor::Green, TEXT("Hidden"));
	GAreScreenMessagesEnabled = true;
	EXPECT_EQ(GEngine->GetRecordedOnScreenDebugMessages().Num(), 5);
	EXPECT_EQ(GEngine->PriorityScreenMessages.Num(), 0);
}

TEST_F(FEditorEngineTest, ACineCameraInTheEditorWorldFollowsItsLensEveryFrame)
{
	ACineCameraActor* Camera = World->SpawnActor<ACineCameraActor>();
	UCineCameraComponent* Component = Camera->GetCineCameraComponent();
	Component->CurrentFocalLength = 70.f;
	GEngineLoop.Tick();
	EXPECT_NEAR(Component->FieldOfView, FMath::RadiansToDegrees(2.0 * FMath::Atan(23.76 / 140.0)), 1e-3);
}

TEST_F(FEditorEngineTest, PreExitDestroysTheEditorWorld)
{
	TWeakObjectPtr<UWorld> WeakWorld(World);
	AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>();
	GEngine->PreExit();
	EXPECT_FALSE(WeakWorld.IsValid());
	EXPECT_FALSE(IsValid(Actor));
	EXPECT_EQ(GEngine->GetWorldContexts().Num(), 0);
	EXPECT_EQ(GWorld.GetReference(), nullptr);
	EXPECT_FALSE(GEditor->IsTimerManagerValid());
	// The engine loop keeps ticking an engine that has no world left.
	GEngineLoop.Tick();
}
