// Copyright Orvane. All Rights Reserved.

#pragma once

// What the engine suites share: a world made for one test and a log recorder.

#include "../../Source/Runtime/Engine/Private/Tests/EngineTestTypes.h"
#include "CoreGlobals.h"
#include "Engine/Level.h"
#include "Engine/World.h"
#include "EngineTestPrinters.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace EngineTestWorld
{
	/** Records the warnings and errors logged while it exists. */
	class FLogRecorder : public FOutputDevice
	{
	public:
		FLogRecorder() { GLog->AddOutputDevice(this); }
		~FLogRecorder() { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (Verbosity <= ELogVerbosity::Warning)
			{
				Lines.push_back(ToUtf8(V));
			}
		}

		/** True if a recorded line contains the text. */
		bool Contains(const std::string& Text) const
		{
			for (const std::string& Line : Lines)
			{
				if (Line.find(Text) != std::string::npos)
				{
					return true;
				}
			}
			return false;
		}

		std::vector<std::string> Lines;
	};

	/** A test that works in an editor world of its own, destroyed and collected after the test. */
	class FWorldTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			World = UWorld::CreateWorld(EWorldType::Editor, false);
			ASSERT_NE(World, nullptr);
		}

		void TearDown() override
		{
			World->DestroyWorld(false);
			World = nullptr;
			CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
		}

		/** Spawns an actor of class T at a location. */
		template <class T>
		T* Spawn(const FVector& Location = FVector::ZeroVector,
			const FActorSpawnParameters& Parameters = FActorSpawnParameters())
		{
			return World->SpawnActor<T>(Location, FRotator::ZeroRotator, Parameters);
		}

		UWorld* World = nullptr;
	};
} // namespace EngineTestWorld

inline bool NearlyEqual(const FVector& A, const FVector& B, double Tolerance = 1e-3)
{
	return FMath::Abs(A.X - B.X) <= Tolerance && FMath::Abs(A.Y - B.Y) <= Tolerance &&
		   FMath::Abs(A.Z - B.Z) <= Tolerance;
}
