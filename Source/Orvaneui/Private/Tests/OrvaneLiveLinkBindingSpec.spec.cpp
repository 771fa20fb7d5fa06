// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"
#include "CoreMinimal.h"
#include "EdGraphSchema_K2.h"
#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "Engine/World.h"
#include "Kismet2/BlueprintEditorUtils.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneSetupTestScope.h"
#include "UObject/Package.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneLiveLinkBindingSpec, "Orvane.CameraManager.LiveLink",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString PresetName = TEXT("LiveLinkSpec_Preset");
	const FString SecondPresetName = TEXT("LiveLinkSpec_Second");
	const FString SubfolderPresetName = TEXT("LiveLinkSpec/Sub_Preset");

	/**
	 * A cine camera Blueprint class (in memory) with only some of the camera Blueprint's variables, for the bindings
	 * that must cope without the others.
	 */
	UClass* MakeCameraClass(const FString& Name, bool bWithPresetVariable, bool bWithEnableVariable)
	{
		UPackage* Package = CreatePackage(*(TEXT("/Game/OrvaneTests/") + Name));
		UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(ACineCameraActor::StaticClass(), Package,
			FName(*Name), BPTYPE_Normal, UBlueprint::StaticClass(), UBlueprintGeneratedClass::StaticClass());
		if (bWithPresetVariable)
		{
			FBlueprintEditorUtils::AddMemberVariable(Blueprint, FName(TEXT("LiveLinkPreset")),
				FEdGraphPinType(UEdGraphSchema_K2::PC_Object, NAME_None, ULiveLinkPreset::StaticClass(),
					EPinContainerType::None, false, FEdGraphTerminalType()));
		}
		if (bWithEnableVariable)
		{
			FBlueprintEditorUtils::AddMemberVariable(Blueprint, FName(TEXT("Set LiveLink Preset")),
				FEdGraphPinType(UEdGraphSchema_K2::PC_Boolean, NAME_None, nullptr, EPinContainerType::None, false,
					FEdGraphTerminalType()));
		}
		FKismetEditorUtilities::CompileBlueprint(Blueprint);
		return Blueprint->GeneratedClass;
	}

	FString GetStartupPresetPath() const
	{
		return GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.ToSoftObjectPath().ToString();
	}
END_DEFINE_SPEC(FOrvaneLiveLinkBindingSpec)

void FOrvaneLiveLinkBindingSpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin({PresetName, SecondPresetName, SubfolderPresetName});
		});

	AfterEach(
		[this]()
		{
			Scope.End();
		});

	Describe("CreateLiveLinkSourceAndPreset",
		[this]()
		{
			LatentIt("schedules no preset step when the source cannot be created, after removing the old preset",
				[this](const FDoneDelegate& Done)
				{
					TestTrue(TEXT("An earlier preset exists"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					const TArray<FOrvaneLogLine> Expected = {LogError(TEXT("Failed to create LiveLink source"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("10.0.0.1:99999"), EAutomationExpectedErrorFlags::Contains, 1);

					TestFalse(TEXT("Result"), FOrvaneCameraManagerTestAccess::CreateLiveLinkSourceAndPreset(
												  TEXT("10.0.0.1:99999"), PresetName));

					TestFalse(TEXT("The earlier preset was removed"), PresetFileExists(PresetName));
					WaitSeconds(1.2,
						[this, Done, Expected]()
						{
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							TestFalse(TEXT("No preset saved"), PresetFileExists(PresetName));
							Done.Execute();
						});
				});

			LatentIt("runs one preset step per setup, each saving its own preset and binding the camera of the moment",
				[this](const FDoneDelegate& Done)
				{
					ExpectTwoCompleteSetups(*this);

					TestTrue(TEXT("First setup"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, false));
					const FString FirstCameraName = FOrvaneCameraManager::GetLastCreatedCamera()
														? FOrvaneCameraManager::GetLastCreatedCamera()->GetName()
														: FString();
					TestTrue(TEXT("Second setup"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), SecondPresetName, false));
					const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();

					TArray<FOrvaneLogLine> Expected = GetTwoCompleteSetupsLines(FirstCameraName);
					Expected.Append(GetPresetStepLines());
					Expected.Append(GetPresetStepLines());

					WaitSeconds(1.2,
						[this, Done, Camera, Expected]()
						{
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							TestTrue(TEXT("Both presets saved"),
								PresetFileExists(PresetName) && PresetFileExists(SecondPresetName));
							UObject* Second = FindPresetAsset(SecondPresetName);
							TestTrue(TEXT("The camera holds the preset bound last"),
								Second && GetPresetVariable(Camera.Get()) == Second);
							TestEqual(TEXT("Startup preset of the last step"), GetStartupPresetPath(),
								TEXT("/Game/Orvane/") + SecondPresetName + TEXT(".") + SecondPresetName);
							Done.Execute();
						});
				});

			LatentIt("still saves the preset when the camera is gone, and says the camera is null",
				[this](const FDoneDelegate& Done)
				{
					TArray<FOrvaneLogLine> Expected = GetCompleteSetupLines();
					Expected.Append({LogWarning(TEXT("Delayed Preset creation")),
						LogWarning(TEXT("LiveLink preset created successfully")),
						LogWarning(TEXT("LiveLink startup preset configured")), LogError(TEXT("Camera is null"))});
					FOrvaneLogCapture::ExpectLines(*this, Expected);

					TestTrue(TEXT("Setup"),
						FOrvaneCameraManager::CreateCompleteSetup(MakeFreeLoopbackEndpoint(), PresetName, false));
					GetEditorWorld()->DestroyActor(FOrvaneCameraManager::GetLastCreatedCamera());

					WaitSeconds(1.2,
						[this, Done, Expected]()
						{
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							TestTrue(TEXT("Preset saved"), PresetFileExists(PresetName));
							TestEqual(TEXT("Startup preset"), GetStartupPresetPath(),
								TEXT("/Game/Orvane/") + PresetName + TEXT(".") + PresetName);
							Done.Execute();
						});
				});
		});

	Describe("SetLiveLinkPresetOnCamera",
		[this]()
		{
			It("without the enable variable fails but leaves the preset variable written",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogError(TEXT("Could not find preset enable property"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					AActor* Camera =
						GetEditorWorld()->SpawnActor(MakeCameraClass(TEXT("LiveLinkSpec_NoSwitch"), true, false));

					TestFalse(
						TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkPresetOnCamera(Camera, PresetName));

					TestTrue(TEXT("Preset variable written"), GetPresetVariable(Camera) == FindPresetAsset(PresetName));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("without the preset variable fails but still switches the preset on",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogError(TEXT("Could not find LiveLink preset property"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					AActor* Camera =
						GetEditorWorld()->SpawnActor(MakeCameraClass(TEXT("LiveLinkSpec_NoPreset"), false, true));

					TestFalse(
						TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkPresetOnCamera(Camera, PresetName));

					TestTrue(TEXT("Switch on"), GetPresetEnableVariable(Camera));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("looks a name with a slash up in a subfolder, as it stands",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully")),
						LogWarning(TEXT("LiveLink preset applied to camera successfully"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved in a subfolder"),
						UOrvaneLiveLinkHelper::SaveLiveLinkPreset(SubfolderPresetName));
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					AActor* Camera = FOrvaneCameraManager::GetLastCreatedCamera();

					TestTrue(TEXT("Result"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkPresetOnCamera(Camera, SubfolderPresetName));

					UObject* Preset = GetPresetVariable(Camera);
					TestEqual(TEXT("Bound preset"), Preset ? Preset->GetPathName() : FString(),
						FString(TEXT("/Game/Orvane/LiveLinkSpec/Sub_Preset.Sub_Preset")));
					TestTrue(TEXT("Switch on"), GetPresetEnableVariable(Camera));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("names the full path of a preset it cannot load",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully")),
						LogError(TEXT("Could not load preset: /Game/Orvane/LiveLinkSpec/Missing"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("Failed to find object 'Object /Game/Orvane/LiveLinkSpec/Missing'"),
						EAutomationExpectedErrorFlags::Exact, 1);
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					AActor* Camera = FOrvaneCameraManager::GetLastCreatedCamera();

					TestFalse(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkPresetOnCamera(
												  Camera, TEXT("LiveLinkSpec/Missing")));

					TestNull(TEXT("Nothing written"), GetPresetVariable(Camera));
					TestFalse(TEXT("Switch off"), GetPresetEnableVariable(Camera));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("refuses a null camera",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogError(TEXT("Camera is null"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestFalse(
						TEXT("Result"), FOrvaneCameraManagerTestAccess::SetLiveLinkPresetOnCamera(nullptr, PresetName));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});
		});

	Describe("HasDefaultPreset",
		[this]()
		{
			It("is true for a saved startup preset and false once its asset is deleted",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("LiveLink startup preset configured"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(PresetName, EAutomationExpectedErrorFlags::Contains, -1);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Startup preset set"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));
					TestTrue(TEXT("Default preset while the asset exists"), FOrvaneCameraManager::HasDefaultPreset());

					TestTrue(TEXT("Asset deleted"), UOrvaneLiveLinkHelper::RemoveExistingPreset(PresetName));

					TestFalse(TEXT("Startup preset still set"),
						GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.IsNull());
					TestFalse(
						TEXT("No default preset once the asset is gone"), FOrvaneCameraManager::HasDefaultPreset());
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("is false when no startup preset is set",
				[this]()
				{
					GetMutableDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.Reset();
					TestFalse(TEXT("Result"), FOrvaneCameraManager::HasDefaultPreset());
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});
		});

	Describe("ApplyPresetToLastCreatedCamera",
		[this]()
		{
			LatentIt("binds the preset to the last created camera one second later",
				[this](const FDoneDelegate& Done)
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully")),
						LogWarning(TEXT("LiveLink preset applied to camera successfully"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();

					FOrvaneCameraManagerTestAccess::ApplyPresetToLastCreatedCamera(PresetName);

					WaitSeconds(0.9,
						[this, Done, Camera, Expected]()
						{
							TestNull(TEXT("Not bound before a second"), GetPresetVariable(Camera.Get()));
							WaitSeconds(0.3,
								[this, Done, Camera, Expected]()
								{
									TestTrue(TEXT("Bound after a second"),
										GetPresetVariable(Camera.Get()) == FindPresetAsset(PresetName));
									Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
									Done.Execute();
								});
						});
				});

			LatentIt("does nothing, silently, when the camera is gone",
				[this](const FDoneDelegate& Done)
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					FOrvaneCameraManagerTestAccess::ApplyPresetToLastCreatedCamera(PresetName);
					GetEditorWorld()->DestroyActor(FOrvaneCameraManager::GetLastCreatedCamera());

					WaitSeconds(1.2,
						[this, Done, Expected]()
						{
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							Done.Execute();
						});
				});
		});
}

#endif
