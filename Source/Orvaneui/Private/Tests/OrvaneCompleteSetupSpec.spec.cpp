// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "Engine/RendererSettings.h"
#include "GameFramework/Actor.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneSetupTestScope.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneCompleteSetupSpec, "Orvane.CameraManager.CompleteSetup",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString PresetName = TEXT("CompleteSetupSpec_Preset");
	const FString GameModeLine = TEXT("Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C");

	/** The on-screen message the setup added last. */
	const FScreenMessageString* GetNewestScreenMessage() const
	{
		return GEngine && GEngine->PriorityScreenMessages.Num() > 0 ? &GEngine->PriorityScreenMessages[0] : nullptr;
	}

	/** Whether DefaultEngine.ini changed only in its game mode since the test began. */
	bool OnlyGameModeChangedInEngineConfig() const
	{
		return OnlyGameModeChanged(Scope.GetSettingsAtBegin().GetConfigText(TEXT("DefaultEngine.ini")),
			FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini")));
	}

	/** The lines of one successful setup and of its preset step, declared to the test. */
	TArray<FOrvaneLogLine> ExpectOneSetupWithItsPresetStep()
	{
		TArray<FOrvaneLogLine> Expected = GetCompleteSetupLines();
		Expected.Append(GetPresetStepLines());
		FOrvaneLogCapture::ExpectLines(*this, Expected);
		return Expected;
	}

	/** Lets the preset step run, then checks every line the test logged and ends the test. */
	void FinishAfterPresetStep(const FDoneDelegate& Done, const TArray<FOrvaneLogLine>& Expected)
	{
		WaitSeconds(1.2,
			[this, Done, Expected]()
			{
				Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				Done.Execute();
			});
	}
END_DEFINE_SPEC(FOrvaneCompleteSetupSpec)

void FOrvaneCompleteSetupSpec::Define()
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

	Describe("CreateCompleteSetup",
		[this]()
		{
			LatentIt(
				"sets up the game mode, source, camera, material and renderer, then binds the preset a second later",
				[this](const FDoneDelegate& Done)
				{
					FOrvaneSetupTestScope::SetRendererAlphaReady(false, 0);
					const TArray<FOrvaneLogLine> Expected = ExpectOneSetupWithItsPresetStep();
					const int32 MessagesBefore = GEngine->PriorityScreenMessages.Num();

					TestTrue(TEXT("Result"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, true));

					UClass* CameraClass = LoadCameraClass();
					const TArray<AActor*> Cameras = GetActorsOfClass(CameraClass);
					AActor* Camera = Cameras.Num() == 1 ? Cameras[0] : nullptr;
					TestEqual(TEXT("Cameras in the level"), Cameras.Num(), 1);
					TestTrue(TEXT("The camera is the last created one"),
						Camera && FOrvaneCameraManager::GetLastCreatedCamera() == Camera);
					TestTrue(TEXT("Spawned at the origin"), Camera && Camera->GetActorLocation().IsZero());
					const TArray<FWeightedBlendable> Blendables = GetBlendables(Camera);
					if (TestEqual(TEXT("Blendables"), Blendables.Num(), 1))
					{
						TestEqual(TEXT("Blendable weight"), Blendables[0].Weight, 1.0f);
						TestEqual(TEXT("Blendable object"),
							Blendables[0].Object ? Blendables[0].Object->GetPathName() : FString(),
							FString(TEXT("/Orvane/Materials/Orvane_MI_MaskStencil.Orvane_MI_MaskStencil")));
					}

					const URendererSettings* Renderer = GetDefault<URendererSettings>();
					TestTrue(TEXT("Alpha output on"), Renderer->bEnableAlphaChannelInPostProcessing != 0);
					TestEqual(TEXT("Frame buffer format"), (int32)Renderer->DefaultBackBufferPixelFormat.GetValue(), 4);
					const FString EngineIni = FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini"));
					TestEqual(TEXT("Alpha output saved"),
						GetIniValue(EngineIni, TEXT("/Script/Engine.RendererSettings"),
							TEXT("r.PostProcessing.PropagateAlpha")),
						FString(TEXT("True")));
					TestEqual(TEXT("Frame buffer format saved"),
						GetIniValue(
							EngineIni, TEXT("/Script/Engine.RendererSettings"), TEXT("r.DefaultBackBufferPixelFormat")),
						FString(TEXT("4")));
					TestEqual(TEXT("Game mode saved"),
						GetIniValue(
							EngineIni, TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("GlobalDefaultGameMode")),
						FString(TEXT("/Orvane/Orvane_GM.Orvane_GM_C")));

					TestEqual(
						TEXT("On-screen messages added"), GEngine->PriorityScreenMessages.Num(), MessagesBefore + 1);
					if (const FScreenMessageString* Message = GetNewestScreenMessage())
					{
						TestEqual(TEXT("Message"), Message->ScreenMessage,
							FString(TEXT("Orvane Complete Setup Successful!")));
						TestTrue(TEXT("Green"), Message->DisplayColor == FColor::Green);
						TestEqual(TEXT("Shown for"), Message->TimeToDisplay, 10.0f);
						TestTrue(TEXT("Text scale"), Message->TextScale == FVector2D(1.0f, 1.0f));
						TestEqual(TEXT("Key"), Message->Key, (uint64)INDEX_NONE);
					}
					Scope.GetLog().TestLines(*this, TEXT("Synchronous lines"), GetCompleteSetupLines());

					const TWeakObjectPtr<AActor> CameraRef = Camera;
					WaitSeconds(0.9,
						[this, Done, CameraRef, Expected]()
						{
							TestFalse(TEXT("No preset before a second"), PresetFileExists(PresetName));
							TestNull(TEXT("Camera not bound before a second"), GetPresetVariable(CameraRef.Get()));
							WaitSeconds(0.3,
								[this, Done, CameraRef, Expected]()
								{
									const AActor* Camera = CameraRef.Get();
									TestNotNull(TEXT("Camera still there"), Camera);
									Scope.GetLog().TestLines(*this, TEXT("All lines"), Expected);
									TestTrue(TEXT("Preset saved"), PresetFileExists(PresetName));
									UObject* Preset = FindPresetAsset(PresetName);
									TestNotNull(TEXT("Preset in memory"), Preset);
									TestTrue(
										TEXT("Preset is a Live Link preset"), Preset && Preset->IsA<ULiveLinkPreset>());
									TestTrue(TEXT("Camera bound to the preset"),
										Preset && GetPresetVariable(Camera) == Preset);
									TestTrue(TEXT("Preset switch on"), GetPresetEnableVariable(Camera));
									TestEqual(TEXT("Startup preset"),
										GetDefault<ULiveLinkSettings>()
											->DefaultLiveLinkPreset.ToSoftObjectPath()
											.ToString(),
										TEXT("/Game/Orvane/") + PresetName + TEXT(".") + PresetName);
									Done.Execute();
								});
						});
				});

			LatentIt("with render alpha off never writes the renderer settings",
				[this](const FDoneDelegate& Done)
				{
					FOrvaneSetupTestScope::SetRendererAlphaReady(false, 0);
					const TArray<FOrvaneLogLine> Expected = ExpectOneSetupWithItsPresetStep();

					TestTrue(TEXT("Result"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, false));

					const URendererSettings* Renderer = GetDefault<URendererSettings>();
					TestFalse(TEXT("Alpha output untouched"), Renderer->bEnableAlphaChannelInPostProcessing != 0);
					TestEqual(TEXT("Frame buffer format untouched"),
						(int32)Renderer->DefaultBackBufferPixelFormat.GetValue(), 0);
					TestTrue(
						TEXT("DefaultEngine.ini changed only in its game mode"), OnlyGameModeChangedInEngineConfig());
					TestEqual(
						TEXT("No blendables"), GetBlendables(FOrvaneCameraManager::GetLastCreatedCamera()).Num(), 0);
					FinishAfterPresetStep(Done, Expected);
				});

			LatentIt("with render alpha on an alpha-ready project saves no renderer setting",
				[this](const FDoneDelegate& Done)
				{
					FOrvaneSetupTestScope::SetRendererAlphaReady(true, 4);
					const TArray<FOrvaneLogLine> Expected = ExpectOneSetupWithItsPresetStep();

					TestTrue(TEXT("Result"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, true));

					TestTrue(
						TEXT("DefaultEngine.ini changed only in its game mode"), OnlyGameModeChangedInEngineConfig());
					TestEqual(TEXT("Mask material applied"),
						GetBlendables(FOrvaneCameraManager::GetLastCreatedCamera()).Num(), 1);
					FinishAfterPresetStep(Done, Expected);
				});

			LatentIt("with only one renderer field off saves both fields",
				[this](const FDoneDelegate& Done)
				{
					FOrvaneSetupTestScope::SetRendererAlphaReady(true, 0);
					const TArray<FOrvaneLogLine> Expected = ExpectOneSetupWithItsPresetStep();

					TestTrue(TEXT("Result"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, true));

					const FString EngineIni = FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini"));
					TestEqual(TEXT("Alpha output saved"),
						GetIniValue(EngineIni, TEXT("/Script/Engine.RendererSettings"),
							TEXT("r.PostProcessing.PropagateAlpha")),
						FString(TEXT("True")));
					TestEqual(TEXT("Frame buffer format saved"),
						GetIniValue(
							EngineIni, TEXT("/Script/Engine.RendererSettings"), TEXT("r.DefaultBackBufferPixelFormat")),
						FString(TEXT("4")));
					TestEqual(TEXT("Frame buffer format in memory"),
						(int32)GetDefault<URendererSettings>()->DefaultBackBufferPixelFormat.GetValue(), 4);
					FinishAfterPresetStep(Done, Expected);
				});

			LatentIt(
				"when the source cannot be created still sets the game mode but spawns nothing and shows the failure",
				[this](const FDoneDelegate& Done)
				{
					TestTrue(TEXT("An earlier preset exists"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Its file exists"), PresetFileExists(PresetName));
					const TArray<FOrvaneLogLine> Expected = {
						LogWarning(GameModeLine), LogError(TEXT("Failed to create LiveLink source"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("not an endpoint"), EAutomationExpectedErrorFlags::Contains, 1);
					const int32 MessagesBefore = GEngine->PriorityScreenMessages.Num();

					TestFalse(TEXT("Result"),
						FOrvaneCameraManager::CreateCompleteSetup(TEXT("not an endpoint"), PresetName, true));

					TestEqual(TEXT("No camera"), GetActorsOfClass(LoadCameraClass()).Num(), 0);
					TestNull(TEXT("No last camera"), FOrvaneCameraManager::GetLastCreatedCamera());
					TestFalse(TEXT("The earlier preset was removed"), PresetFileExists(PresetName));
					TestEqual(TEXT("Game mode saved"),
						GetIniValue(FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultEngine.ini")),
							TEXT("/Script/EngineSettings.GameMapsSettings"), TEXT("GlobalDefaultGameMode")),
						FString(TEXT("/Orvane/Orvane_GM.Orvane_GM_C")));
					TestEqual(
						TEXT("On-screen messages added"), GEngine->PriorityScreenMessages.Num(), MessagesBefore + 1);
					if (const FScreenMessageString* Message = GetNewestScreenMessage())
					{
						TestEqual(TEXT("Message"), Message->ScreenMessage,
							FString(TEXT("Orvane Setup Failed - check console")));
						TestTrue(TEXT("Red"), Message->DisplayColor == FColor::Red);
						TestEqual(TEXT("Shown for"), Message->TimeToDisplay, 8.0f);
					}
					WaitSeconds(1.2,
						[this, Done, Expected]()
						{
							// No preset step was scheduled: nothing more is logged and no preset appears.
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							TestFalse(TEXT("No preset saved"), PresetFileExists(PresetName));
							Done.Execute();
						});
				});

			LatentIt("run twice leaves one camera, the new one, and both preset steps bind to it",
				[this](const FDoneDelegate& Done)
				{
					ExpectTwoCompleteSetups(*this);

					const FString Endpoint = MakeFreeLoopbackEndpoint();
					TestTrue(
						TEXT("First result"), FOrvaneCameraManager::CreateCompleteSetup(Endpoint, PresetName, false));
					const TWeakObjectPtr<AActor> FirstCamera = FOrvaneCameraManager::GetLastCreatedCamera();
					const FString FirstName = FirstCamera.IsValid() ? FirstCamera->GetName() : FString();
					TestTrue(
						TEXT("Second result"), FOrvaneCameraManager::CreateCompleteSetup(Endpoint, PresetName, false));
					const TWeakObjectPtr<AActor> SecondCamera = FOrvaneCameraManager::GetLastCreatedCamera();

					TArray<FOrvaneLogLine> Expected = GetTwoCompleteSetupsLines(FirstName);
					Scope.GetLog().TestLines(*this, TEXT("Synchronous lines"), Expected);
					Expected.Append(GetPresetStepLines());
					Expected.Append(GetPresetStepLines());

					const TArray<AActor*> Cameras = GetActorsOfClass(LoadCameraClass());
					TestEqual(TEXT("Cameras in the level"), Cameras.Num(), 1);
					TestTrue(TEXT("The new camera stays"), Cameras.Num() == 1 && Cameras[0] == SecondCamera.Get());
					TestFalse(TEXT("The first camera is gone"), FirstCamera.IsValid());
					TestTrue(TEXT("Two different cameras"), FirstCamera != SecondCamera);
					WaitSeconds(1.2,
						[this, Done, Expected, SecondCamera]()
						{
							Scope.GetLog().TestLines(*this, TEXT("All lines"), Expected);
							UObject* Preset = FindPresetAsset(PresetName);
							TestTrue(TEXT("The new camera is bound"),
								Preset && GetPresetVariable(SecondCamera.Get()) == Preset);
							Done.Execute();
						});
				});
		});
}

#endif
