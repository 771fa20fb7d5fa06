// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "Engine/World.h"
#include "GameMapsSettings.h"
#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneMissingPluginContent.h"
#include "OrvaneSetupTestScope.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneMissingContentSpec, "Orvane.CameraManager.MissingContent",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	TUniquePtr<FOrvaneMissingPluginContent> MissingContent;
	const FString PresetName = TEXT("MissingContentSpec_Preset");
END_DEFINE_SPEC(FOrvaneMissingContentSpec)

void FOrvaneMissingContentSpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin({PresetName});
			MissingContent = MakeUnique<FOrvaneMissingPluginContent>();
			TestTrue(TEXT("The plug-in's content is out of reach"), MissingContent->IsContentMissing());
			// Every load of the plug-in's assets fails with the engine's own warning.
			AddExpectedErrorPlain(TEXT("/Orvane/"), EAutomationExpectedErrorFlags::Contains, -1);
		});

	AfterEach(
		[this]()
		{
			MissingContent.Reset();
			Scope.End();
		});

	LatentIt("a complete setup clears the game mode, creates the source, spawns nothing and shows the failure",
		[this](const FDoneDelegate& Done)
		{
			TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Default game mode set to: ")),
				LogWarning(TEXT("LiveLink source created successfully")),
				LogWarning(TEXT("Could not load Orvane camera class for cleanup")),
				LogError(TEXT("Failed to load Blueprint class"))};
			const TArray<FOrvaneLogLine> Synchronous = Expected;
			Expected.Append(
				{LogWarning(TEXT("Delayed Preset creation")), LogWarning(TEXT("LiveLink preset created successfully")),
					LogWarning(TEXT("LiveLink startup preset configured")), LogError(TEXT("Camera is null"))});
			FOrvaneLogCapture::ExpectLines(*this, Expected);
			const int32 MessagesBefore = GEngine->PriorityScreenMessages.Num();

			TestFalse(TEXT("Result"),
				FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, true));

			TestEqual(TEXT("Game mode cleared"), UGameMapsSettings::GetGlobalDefaultGameMode(), FString());
			TestNull(TEXT("No camera"), FOrvaneCameraManager::GetLastCreatedCamera());
			TestEqual(TEXT("Failure shown"), GEngine->PriorityScreenMessages.Num(), MessagesBefore + 1);
			TestTrue(TEXT("Red message"),
				GEngine->PriorityScreenMessages.Num() > 0 &&
					GEngine->PriorityScreenMessages[0].ScreenMessage == TEXT("Orvane Setup Failed - check console"));
			Scope.GetLog().TestLines(*this, TEXT("Synchronous lines"), Synchronous);
			WaitSeconds(1.2,
				[this, Done, Expected]()
				{
					Scope.GetLog().TestLines(*this, TEXT("All lines"), Expected);
					TestTrue(TEXT("Preset saved all the same"), PresetFileExists(PresetName));
					Done.Execute();
				});
		});

	It("a camera-only setup fails before anything else happens",
		[this]()
		{
			const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Could not load Orvane camera class for cleanup")),
				LogError(TEXT("Failed to load Blueprint class"))};
			FOrvaneLogCapture::ExpectLines(*this, Expected);

			TestFalse(TEXT("Result"), FOrvaneCameraManager::CreateOrvaneCameraOnly());

			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});

	It("without the mask material keeps the spawned camera remembered but fails",
		[this]()
		{
			// A camera of the class keeps the class in memory while the rest of the content goes missing.
			MissingContent.Reset();
			AActor* EarlierCamera = GetEditorWorld()->SpawnActor(LoadCameraClass());
			if (!TestNotNull(TEXT("Earlier camera"), EarlierCamera))
			{
				return;
			}
			MissingContent = MakeUnique<FOrvaneMissingPluginContent>();
			const TArray<FOrvaneLogLine> Expected = {
				LogWarning(TEXT("Removing existing Orvane camera: ") + EarlierCamera->GetName()),
				LogWarning(TEXT("Removed 1 existing Orvane cameras")),
				LogWarning(TEXT("Orvane Camera created successfully")),
				LogWarning(TEXT("Failed to set camera post process material for alpha rendering"))};
			FOrvaneLogCapture::ExpectLines(*this, Expected);

			TestFalse(TEXT("Result"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), true));

			AActor* Camera = FOrvaneCameraManager::GetLastCreatedCamera();
			TestNotNull(TEXT("The new camera stays remembered"), Camera);
			TestEqual(TEXT("and in the level"), GetActorsOfClass(LoadCameraClass()).Num(), 1);
			TestEqual(TEXT("without a blendable"), GetBlendables(Camera).Num(), 0);
			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});
}

#endif
