// Copyright Orvane. All Rights Reserved.

// The complete camera setup, without its deferred second, in an editor level that already holds 1,000 and then
// 100,000 other actors. Besides the time of one setup it reports how many entries of the per-class actor index the
// setup's camera removal visited: one per earlier camera, however many other actors the level holds. No frame runs
// between setups, so the deferred preset steps never fire and the replaced sources are never bound.

#include "CoreMinimal.h"
#include "Editor.h"
#include "Editor/EditorEngine.h"
#include "Engine/World.h"
#include "EngineUtils.h"
#include "GameFramework/Actor.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "OrvaneCameraManager.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <unistd.h>

namespace
{
	namespace fs = std::filesystem;

	/** A throwaway copy of the sample project with the plug-in linked into its Plugins folder. */
	fs::path MakeSampleProjectCopy()
	{
		const fs::path RepositoryRoot = fs::path(__FILE__).parent_path().parent_path().parent_path().parent_path();
		const fs::path Project = fs::temp_directory_path() / ("OrvaneSetupBenchmark-" + std::to_string(::getpid()));
		fs::remove_all(Project);
		fs::copy(RepositoryRoot / "Samples" / "OrvaneSample", Project, fs::copy_options::recursive);
		fs::create_directories(Project / "Plugins");
		fs::create_directory_symlink(RepositoryRoot, Project / "Plugins" / "Orvane");
		return Project;
	}

	/** The headless editor on the sample copy, for the whole run. */
	struct FEditorSession
	{
		fs::path Project;
		bool bRunning = false;

		FEditorSession()
		{
			Project = MakeSampleProjectCopy();
			const FString CommandLine = FString::Printf(TEXT("\"%s\""), UTF8_TO_TCHAR(Project.string().c_str()));
			bRunning = GEngineLoop.PreInit(*CommandLine) == 0 && GEngineLoop.Init() == 0 && GEditor;
			FApp::SetUseFixedTimeStep(true);
			FApp::SetFixedDeltaTime(1.0 / 60.0);
		}

		~FEditorSession()
		{
			if (bRunning)
			{
				GEngineLoop.Exit();
			}
			std::error_code Ignored;
			fs::remove_all(Project, Ignored);
		}
	};

	FEditorSession& GetSession()
	{
		static FEditorSession Session;
		return Session;
	}

	/** Spawns plain actors until the level holds OtherActorCount actors besides the plug-in's camera. */
	void FillLevel(UWorld* World, int32 OtherActorCount)
	{
		int32 Existing = 0;
		for (TActorIterator<AActor> It(World); It; ++It)
		{
			++Existing;
		}
		for (int32 Index = Existing; Index < OtherActorCount; ++Index)
		{
			World->SpawnActor<AActor>();
		}
	}

	void BM_CompleteSetupAmongOtherActors(benchmark::State& State)
	{
		FEditorSession& Session = GetSession();
		if (!Session.bRunning)
		{
			State.SkipWithError("The headless editor did not start.");
			return;
		}
		UWorld* World = GEditor->GetEditorWorldContext(false).World();
		const int32 OtherActorCount = static_cast<int32>(State.range(0));
		FillLevel(World, OtherActorCount);
		const FString Endpoint = TEXT("127.0.0.1:39017");

		// One setup first, so every later one removes exactly one earlier camera.
		FOrvaneCameraManager::CreateCompleteSetup(Endpoint, TEXT("Orvane_LiveLink_Preset"), true);
		uint64 EntriesVisited = 0;
		bool bAllSucceeded = true;
		for (auto _ : State)
		{
			const uint64 Before = UE::Engine::Private::GetNumActorIndexEntriesVisited();
			bAllSucceeded &= FOrvaneCameraManager::CreateCompleteSetup(Endpoint, TEXT("Orvane_LiveLink_Preset"), true);
			EntriesVisited += UE::Engine::Private::GetNumActorIndexEntriesVisited() - Before;
		}
		if (!bAllSucceeded)
		{
			State.SkipWithError("A setup failed.");
		}
		State.counters["OtherActors"] = OtherActorCount;
		State.counters["IndexEntriesVisitedPerSetup"] =
			benchmark::Counter(static_cast<double>(EntriesVisited) / static_cast<double>(State.iterations()));
	}
	// Smaller levels first: the level only grows between runs.
	BENCHMARK(BM_CompleteSetupAmongOtherActors)->Arg(1000)->Arg(100000)->Unit(benchmark::kMicrosecond)->MinTime(2.0);
} // namespace

BENCHMARK_MAIN();
