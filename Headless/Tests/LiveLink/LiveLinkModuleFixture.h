// Copyright Orvane. All Rights Reserved.

#pragma once

// A throwaway project with the LiveLink module loaded, its client found the way plug-ins find it, and frames run
// by the engine loop on a simulated clock.

#include "CoreMinimal.h"
#include "Features/IModularFeatures.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformProcess.h"
#include "ILiveLinkClient.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

class FLiveLinkModuleFixture : public ::testing::Test
{
protected:
	void SetUp() override
	{
		char Template[] = "/tmp/LiveLinkTest-XXXXXX";
		ASSERT_NE(::mkdtemp(Template), nullptr);
		TempDir = UTF8_TO_TCHAR(Template);
		ProjectDir = TempDir / TEXT("Proj/");
		ASSERT_TRUE(FFileHelper::SaveStringToFile(TEXT("{}"), *(ProjectDir / TEXT("Proj.uproject"))));
		FPaths::SetProjectFilePath(ProjectDir / TEXT("Proj.uproject"));

		FModuleManager::Get().LoadModuleChecked(TEXT("LiveLink"));
		ASSERT_TRUE(IModularFeatures::Get().IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName));
		Client = &IModularFeatures::Get().GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName);

		FApp::SetUseFixedTimeStep(true);
		FApp::SetFixedDeltaTime(1.0 / 30.0);
	}

	void TearDown() override
	{
		RemoveEverySource();
		FPaths::SetProjectFilePath(FString());
		IFileManager::Get().DeleteDirectory(*TempDir, false, true);
	}

	/** Runs one engine frame. */
	void Frame() { GEngineLoop.Tick(); }

	/** Runs frames until Done says so or MaxSeconds of real time passed; true if Done said so. */
	template <typename PredicateType>
	bool RunFramesUntil(PredicateType Done, double MaxSeconds = 5.0)
	{
		const double Deadline = FPlatformTime::Seconds() + MaxSeconds;
		while (!Done())
		{
			if (FPlatformTime::Seconds() > Deadline)
			{
				return false;
			}
			Frame();
			FPlatformProcess::Sleep(0.001f);
		}
		return true;
	}

	/** Empties the client, so each test starts from nothing. */
	void RemoveEverySource()
	{
		for (const FGuid& Guid : Client->GetSources(true))
		{
			Client->RemoveSource(Guid);
		}
		EXPECT_TRUE(RunFramesUntil(
			[this]()
			{
				return Client->GetSources(true).IsEmpty();
			}));
	}

	FString TempDir;
	FString ProjectDir;
	ILiveLinkClient* Client = nullptr;
};
