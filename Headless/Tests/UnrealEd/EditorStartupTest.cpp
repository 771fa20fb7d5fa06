// Copyright Orvane. All Rights Reserved.

#include "../Engine/EngineTestWorld.h"
#include "Editor.h"
#include "Editor/UnrealEdEngine.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "Misc/CoreDelegates.h"
#include "TimerManager.h"
#include "UnrealEdGlobals.h"

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace
{
	namespace fs = std::filesystem;

	/** A throwaway project with no plug-ins, opened by the engine loop. */
	fs::path MakeProject()
	{
		const fs::path Dir = fs::temp_directory_path() / ("OrvaneEditorStartup-" + std::to_string(::getpid()));
		fs::create_directories(Dir / "Config");
		std::ofstream(Dir / "StartupTest.uproject")
			<< "{\n\t\"FileVersion\": 3,\n\t\"EngineAssociation\": \"5.5\"\n}\n";
		return Dir;
	}
} // namespace

TEST(EditorStartupTest, TheEngineLoopCreatesTheEditorEngineAndItsWorld)
{
	const fs::path Project = MakeProject();
	EXPECT_EQ(GEngine, nullptr);
	bool bEngineExistedAtPostEngineInit = false;
	const FDelegateHandle PostInit = FCoreDelegates::OnPostEngineInit.AddLambda(
		[&bEngineExistedAtPostEngineInit]()
		{
			bEngineExistedAtPostEngineInit = GEditor != nullptr;
		});

	const FString CommandLine = FString::Printf(TEXT("\"%s\""), UTF8_TO_TCHAR(Project.string().c_str()));
	ASSERT_EQ(GEngineLoop.PreInit(*CommandLine), 0);
	ASSERT_EQ(GEngineLoop.Init(), 0);
	FCoreDelegates::OnPostEngineInit.Remove(PostInit);

	ASSERT_NE(GEngine, nullptr);
	EXPECT_EQ(GEngine, GEditor);
	EXPECT_EQ(GEngine, GUnrealEd);
	EXPECT_TRUE(GEngine->IsA<UUnrealEdEngine>());
	EXPECT_TRUE(GEngine->IsRooted());
	EXPECT_TRUE(bEngineExistedAtPostEngineInit);
	UWorld* World = GEditor->GetEditorWorldContext().World();
	ASSERT_NE(World, nullptr);
	EXPECT_EQ(World->WorldType, EWorldType::Editor);
	EXPECT_EQ(GWorld.GetReference(), World);

	// The frame loop ticks the editor's timers and world.
	FApp::SetUseFixedTimeStep(true);
	FApp::SetFixedDeltaTime(0.25);
	bool bFired = false;
	FTimerHandle Handle;
	GEditor->GetTimerManager()->SetTimer(Handle,
		FTimerDelegate::CreateLambda(
			[&bFired]()
			{
				bFired = true;
			}),
		0.5f, false);
	AEngineTestTickActor* Actor = World->SpawnActor<AEngineTestTickActor>();
	GEngineLoop.Tick();
	EXPECT_FALSE(bFired);
	GEngineLoop.Tick();
	EXPECT_TRUE(bFired);
	EXPECT_EQ(Actor->EditorTicking->TickCount, 2);

	// Collecting garbage keeps the engine, its world and the world's actors.
	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	EXPECT_TRUE(IsValid(World));
	EXPECT_TRUE(IsValid(Actor));

	GEngineLoop.Exit();
	EXPECT_EQ(GEngine, nullptr);
	EXPECT_EQ(GEditor, nullptr);
	EXPECT_EQ(GWorld.GetReference(), nullptr);
	// Ticking after the engine is gone does nothing to it.
	GEngineLoop.Tick();
	fs::remove_all(Project);
}
