// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/Engine/Private/Tests/EngineTestTypes.h"
#include "Camera/CameraActor.h"
#include "Engine/World.h"
#include "EngineUtils.h"

#include <benchmark/benchmark.h>

namespace
{
	constexpr int32 NumOtherActors = 100000;
	constexpr int32 NumCameras = 4;

	/** One editor world with a few cameras among many other actors, made once for every benchmark. */
	UWorld* GetCrowdedWorld()
	{
		static UWorld* World = []()
		{
			UWorld* NewWorld = UWorld::CreateWorld(EWorldType::Editor, false);
			for (int32 Index = 0; Index < NumOtherActors; ++Index)
			{
				NewWorld->SpawnActor<AEngineTestOtherActor>();
				// The cameras are spread through the level, not bunched at one end of it.
				if (Index % (NumOtherActors / NumCameras) == 0)
				{
					NewWorld->SpawnActor<ACameraActor>();
				}
			}
			return NewWorld;
		}();
		return World;
	}

	void IterateCameras(benchmark::State& State)
	{
		UWorld* World = GetCrowdedWorld();
		const uint64 VisitedBefore = UE::Engine::Private::GetNumActorIndexEntriesVisited();
		int64 Found = 0;
		for (auto _ : State)
		{
			for (TActorIterator<ACameraActor> It(World); It; ++It)
			{
				benchmark::DoNotOptimize(*It);
				++Found;
			}
		}
		const uint64 Visited = UE::Engine::Private::GetNumActorIndexEntriesVisited() - VisitedBefore;
		State.counters["CamerasPerIteration"] = (double)Found / (double)State.iterations();
		State.counters["EntriesVisitedPerIteration"] = (double)Visited / (double)State.iterations();
		State.counters["ActorsInWorld"] = (double)World->PersistentLevel->Actors.Num();
	}
	BENCHMARK(IterateCameras)->Unit(benchmark::kMicrosecond);

	void IterateAllActors(benchmark::State& State)
	{
		UWorld* World = GetCrowdedWorld();
		int64 Found = 0;
		for (auto _ : State)
		{
			for (FActorIterator It(World); It; ++It)
			{
				benchmark::DoNotOptimize(*It);
				++Found;
			}
		}
		State.counters["ActorsPerIteration"] = (double)Found / (double)State.iterations();
	}
	BENCHMARK(IterateAllActors)->Unit(benchmark::kMillisecond);

	void SpawnAndDestroyActor(benchmark::State& State)
	{
		UWorld* World = GetCrowdedWorld();
		for (auto _ : State)
		{
			AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>();
			benchmark::DoNotOptimize(Actor);
			World->DestroyActor(Actor);
		}
	}
	BENCHMARK(SpawnAndDestroyActor)->Unit(benchmark::kMicrosecond);
} // namespace

BENCHMARK_MAIN();
