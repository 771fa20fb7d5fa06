// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "GameFramework/Actor.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Materials/MaterialInterface.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneSetupTestScope.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneCameraOnlySpec, "Orvane.CameraManager.CameraOnly",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString PresetName = TEXT("CameraOnlySpec_Preset");
	const FString CreatedLine = TEXT("Orvane Camera created successfully");
	const FString NoPresetLine = TEXT("No default LiveLink preset found, created camera without preset");

	void ClearStartupPreset()
	{
		GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.Reset();
	}
END_DEFINE_SPEC(FOrvaneCameraOnlySpec)

void FOrvaneCameraOnlySpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin({PresetName});
		});

	AfterEach(
		[this]()
		{
			Scope.End();
		});

	LatentIt("on an alpha-ready project leaves two equal mask entries on the camera after one second",
		[this](const FDoneDelegate& Done)
		{
			FOrvaneSetupTestScope::SetRendererAlphaReady(true, 4);
			ClearStartupPreset();
			const TArray<FOrvaneLogLine> Expected = {LogWarning(CreatedLine),
				LogWarning(TEXT("No default LiveLink preset is set")), LogWarning(NoPresetLine)};
			FOrvaneLogCapture::ExpectLines(*this, Expected);

			TestTrue(TEXT("Result"), FOrvaneCameraManager::CreateOrvaneCameraOnly());

			const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();
			TestEqual(TEXT("One entry at once"), GetBlendables(Camera.Get()).Num(), 1);
			WaitSeconds(1.2,
				[this, Done, Camera, Expected]()
				{
					const TArray<FWeightedBlendable> Blendables = GetBlendables(Camera.Get());
					UMaterialInterface* Material = LoadObject<UMaterialInterface>(nullptr, MaskMaterialPath);
					if (TestEqual(TEXT("Entries after a second"), Blendables.Num(), 2))
					{
						TestTrue(TEXT("Both the mask material with weight 1"),
							Blendables[0].Object == Material && Blendables[1].Object == Material &&
								Blendables[0].Weight == 1.0f && Blendables[1].Weight == 1.0f);
					}
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					Done.Execute();
				});
		});

	LatentIt("with no default preset set says so and still succeeds",
		[this](const FDoneDelegate& Done)
		{
			FOrvaneSetupTestScope::SetRendererAlphaReady(false, 0);
			ClearStartupPreset();
			const TArray<FOrvaneLogLine> Expected = {LogWarning(CreatedLine),
				LogWarning(TEXT("No default LiveLink preset is set")), LogWarning(NoPresetLine)};
			FOrvaneLogCapture::ExpectLines(*this, Expected);

			TestTrue(TEXT("Result"), FOrvaneCameraManager::CreateOrvaneCameraOnly());

			const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();
			TestTrue(TEXT("Camera spawned"), Camera.IsValid());
			WaitSeconds(1.2,
				[this, Done, Camera, Expected]()
				{
					TestEqual(TEXT("No mask material"), GetBlendables(Camera.Get()).Num(), 0);
					TestNull(TEXT("No preset bound"), GetPresetVariable(Camera.Get()));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					Done.Execute();
				});
		});

	LatentIt("binds the project's default preset one second later, announcing it at once",
		[this](const FDoneDelegate& Done)
		{
			FOrvaneSetupTestScope::SetRendererAlphaReady(false, 0);
			const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("LiveLink startup preset configured")),
				LogWarning(CreatedLine), LogWarning(TEXT("Found default LiveLink preset: ") + PresetName),
				LogWarning(TEXT("Applied default LiveLink preset: ") + PresetName),
				LogWarning(TEXT("LiveLink preset applied to camera successfully"))};
			FOrvaneLogCapture::ExpectLines(*this, Expected);
			TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
			TestTrue(TEXT("Startup preset set"), FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));
			TestTrue(TEXT("The project has a default preset"), FOrvaneCameraManager::HasDefaultPreset());

			TestTrue(TEXT("Result"), FOrvaneCameraManager::CreateOrvaneCameraOnly());

			const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();
			TestNull(TEXT("Not bound yet"), GetPresetVariable(Camera.Get()));
			WaitSeconds(1.2,
				[this, Done, Camera, Expected]()
				{
					TestTrue(
						TEXT("Bound after a second"), GetPresetVariable(Camera.Get()) == FindPresetAsset(PresetName));
					TestTrue(TEXT("Switch on"), GetPresetEnableVariable(Camera.Get()));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					Done.Execute();
				});
		});

	It("says so when the default preset does not load",
		[this]()
		{
			FOrvaneSetupTestScope::SetRendererAlphaReady(false, 0);
			GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset = TSoftObjectPtr<ULiveLinkPreset>(
				FSoftObjectPath(TEXT("/Game/Orvane/CameraOnlySpec_Gone.CameraOnlySpec_Gone")));
			const TArray<FOrvaneLogLine> Expected = {LogWarning(CreatedLine),
				LogWarning(TEXT("Failed to load default LiveLink preset")), LogWarning(NoPresetLine)};
			FOrvaneLogCapture::ExpectLines(*this, Expected);
			AddExpectedErrorPlain(TEXT("CameraOnlySpec_Gone"), EAutomationExpectedErrorFlags::Contains, -1);

			TestTrue(TEXT("Result"), FOrvaneCameraManager::CreateOrvaneCameraOnly());

			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});
}

#endif
