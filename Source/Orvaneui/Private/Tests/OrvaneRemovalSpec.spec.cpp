// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"
#include "CoreMinimal.h"
#include "Engine/Level.h"
#include "Engine/World.h"
#include "HAL/FileManager.h"
#include "ILiveLinkClient.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "Misc/FileHelper.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneMissingPluginContent.h"
#include "OrvaneSetupTestScope.h"
#include "OrvaneTrackingSourceSettings.h"
#include "Tests/OrvaneTrackingTestUtilities.h"
#include "UObject/Package.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneRemovalSpec, "Orvane.CameraManager.Removal",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString PresetName = TEXT("RemovalSpec_Preset");
	const FString OtherPresetName = TEXT("RemovalSpec_Other");

	AActor* SpawnInEditorLevel(UClass * Class, ULevel* Level = nullptr)
	{
		FActorSpawnParameters Parameters;
		Parameters.OverrideLevel = Level;
		return GetEditorWorld()->SpawnActor(Class, nullptr, nullptr, Parameters);
	}

	FString GetStartupPresetPath() const
	{
		return GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.ToSoftObjectPath().ToString();
	}

	FString GetPresetFilename(const FString& Name) const
	{
		return FPaths::Combine(FPaths::ProjectContentDir(), TEXT("Orvane"), Name + TEXT(".uasset"));
	}
END_DEFINE_SPEC(FOrvaneRemovalSpec)

void FOrvaneRemovalSpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin({PresetName, OtherPresetName});
		});

	AfterEach(
		[this]()
		{
			Scope.End();
		});

	Describe("RemoveExistingOrvaneCameras",
		[this]()
		{
			It("destroys nothing in a level without a camera of its class, and forgets the last camera",
				[this]()
				{
					AActor* PlainCamera = SpawnInEditorLevel(ACineCameraActor::StaticClass());
					FOrvaneCameraManagerTestAccess::RememberCamera(PlainCamera);

					FOrvaneCameraManagerTestAccess::RemoveExistingOrvaneCameras();

					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
					TestTrue(TEXT("The plain camera stays"), IsValid(PlainCamera));
					TestNull(TEXT("Last camera forgotten"), FOrvaneCameraManager::GetLastCreatedCamera());
				});

			It("destroys two cameras of its class in iteration order and counts them",
				[this]()
				{
					UClass* CameraClass = LoadCameraClass();
					AActor* First = SpawnInEditorLevel(CameraClass);
					AActor* Second = SpawnInEditorLevel(CameraClass);
					if (!TestNotNull(TEXT("First camera"), First) || !TestNotNull(TEXT("Second camera"), Second))
					{
						return;
					}
					const TArray<AActor*> Order = GetActorsOfClass(CameraClass);
					const TArray<FOrvaneLogLine> Expected = {
						LogWarning(TEXT("Removing existing Orvane camera: ") + Order[0]->GetName()),
						LogWarning(TEXT("Removing existing Orvane camera: ") + Order[1]->GetName()),
						LogWarning(TEXT("Removed 2 existing Orvane cameras"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);

					FOrvaneCameraManagerTestAccess::RemoveExistingOrvaneCameras();

					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					TestFalse(TEXT("First destroyed"), IsValid(First));
					TestFalse(TEXT("Second destroyed"), IsValid(Second));
					TestEqual(TEXT("Cameras left"), GetActorsOfClass(CameraClass).Num(), 0);
				});

			It("never touches other actors, other cine cameras, or cameras in levels that are not active",
				[this]()
				{
					UClass* CameraClass = LoadCameraClass();
					AActor* PlainActor = SpawnInEditorLevel(AActor::StaticClass());
					AActor* PlainCamera = SpawnInEditorLevel(ACineCameraActor::StaticClass());
					ULevel* HiddenLevel = NewObject<ULevel>(GetEditorWorld(), FName(TEXT("RemovalSpec_HiddenLevel")));
					GetEditorWorld()->AddLevel(HiddenLevel);
					HiddenLevel->bIsVisible = false;
					AActor* HiddenCamera = SpawnInEditorLevel(CameraClass, HiddenLevel);
					TestTrue(TEXT("Hidden camera in the hidden level"),
						HiddenCamera && HiddenCamera->GetLevel() == HiddenLevel);

					FOrvaneCameraManagerTestAccess::RemoveExistingOrvaneCameras();

					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
					TestTrue(TEXT("Plain actor stays"), IsValid(PlainActor));
					TestTrue(TEXT("Plain cine camera stays"), IsValid(PlainCamera));
					TestTrue(TEXT("Camera of an inactive level stays"), IsValid(HiddenCamera));

					GetEditorWorld()->DestroyActor(HiddenCamera);
					GetEditorWorld()->DestroyActor(PlainActor);
					GetEditorWorld()->RemoveLevel(HiddenLevel);
				});

			It("without the camera Blueprint destroys nothing and still forgets the last camera",
				[this]()
				{
					AActor* PlainCamera = SpawnInEditorLevel(ACineCameraActor::StaticClass());
					FOrvaneCameraManagerTestAccess::RememberCamera(PlainCamera);
					FOrvaneMissingPluginContent MissingContent;
					if (!TestTrue(TEXT("The camera class is out of reach"), MissingContent.IsContentMissing()))
					{
						return;
					}
					const TArray<FOrvaneLogLine> Expected = {
						LogWarning(TEXT("Could not load Orvane camera class for cleanup"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("Orvane_VP_Camera"), EAutomationExpectedErrorFlags::Contains, -1);

					FOrvaneCameraManagerTestAccess::RemoveExistingOrvaneCameras();

					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					TestTrue(TEXT("The camera still stands"), IsValid(PlainCamera));
					TestNull(TEXT("Last camera forgotten"), FOrvaneCameraManager::GetLastCreatedCamera());
				});
		});

	Describe("RemoveExistingPreset",
		[this]()
		{
			It("finds a package that is in memory without its asset and deletes its file through the package path",
				[this]()
				{
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					UObject* Asset = FindPresetAsset(PresetName);
					if (!TestNotNull(TEXT("Asset in memory"), Asset))
					{
						return;
					}
					// Only the package stays in memory under its name.
					Asset->Rename(nullptr, GetTransientPackage());
					TestNull(TEXT("Object path finds nothing"), FindPresetAsset(PresetName));
					TestTrue(TEXT("File on disk"), PresetFileExists(PresetName));

					FOrvaneCameraManagerTestAccess::RemoveExistingPreset(PresetName);

					TestFalse(TEXT("File deleted"), PresetFileExists(PresetName));
					TestNull(TEXT("Package gone from memory"),
						StaticFindObject(UPackage::StaticClass(), nullptr, *(TEXT("/Game/Orvane/") + PresetName)));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});

			It("clears the startup preset when it is the removed preset, only in memory",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("LiveLink startup preset configured"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Startup preset set"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));
					const FString GameIniBefore =
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini"));

					FOrvaneCameraManagerTestAccess::RemoveExistingPreset(PresetName);

					TestTrue(TEXT("Startup preset cleared"),
						GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.IsNull());
					TestEqual(TEXT("DefaultGame.ini not rewritten"),
						FOrvaneProjectSettingsSnapshot::ReadConfigText(TEXT("DefaultGame.ini")), GameIniBefore);
					TestFalse(TEXT("File deleted"), PresetFileExists(PresetName));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("leaves a startup preset that is another preset",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("LiveLink startup preset configured"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Other preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(OtherPresetName));
					TestTrue(TEXT("Startup preset set"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(OtherPresetName));

					FOrvaneCameraManagerTestAccess::RemoveExistingPreset(PresetName);

					TestEqual(TEXT("Startup preset kept"), GetStartupPresetPath(),
						TEXT("/Game/Orvane/") + OtherPresetName + TEXT(".") + OtherPresetName);
					TestFalse(TEXT("Removed preset's file deleted"), PresetFileExists(PresetName));
					TestTrue(TEXT("Other preset's file kept"), PresetFileExists(OtherPresetName));
				});

			It("collects garbage even when no preset is found",
				[this]()
				{
					const TWeakObjectPtr<UObject> Unreferenced = NewObject<ULiveLinkPreset>(GetTransientPackage());
					TestTrue(TEXT("Alive before"), Unreferenced.IsValid());

					FOrvaneCameraManagerTestAccess::RemoveExistingPreset(TEXT("RemovalSpec_NoSuchPreset"));

					TestFalse(TEXT("Collected"), Unreferenced.IsValid());
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});

			It("destroys a preset and its package that are both in memory, and deletes the file",
				[this]()
				{
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					const TWeakObjectPtr<UObject> Asset = FindPresetAsset(PresetName);
					const TWeakObjectPtr<UObject> Package = Asset.IsValid() ? Asset->GetPackage() : nullptr;
					TestTrue(TEXT("Both in memory"), Asset.IsValid() && Package.IsValid());

					FOrvaneCameraManagerTestAccess::RemoveExistingPreset(PresetName);

					TestFalse(TEXT("Asset destroyed"), Asset.IsValid());
					TestFalse(TEXT("Package destroyed"), Package.IsValid());
					TestFalse(TEXT("File deleted"), PresetFileExists(PresetName));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});
		});

	Describe("ClearStartupPresetIfMatching",
		[this]()
		{
			It("finds the settings class by its short name, which a lookup without an outer cannot",
				[this]()
				{
					TestNull(TEXT("A bare name without an outer names a package"),
						StaticFindObject(UClass::StaticClass(), nullptr, TEXT("LiveLinkSettings")));
					TestTrue(TEXT("The short-name lookup finds the class"),
						FindFirstObject<UClass>(TEXT("LiveLinkSettings"), EFindFirstObjectOptions::NativeFirst) ==
							ULiveLinkSettings::StaticClass());
				});

			It("clears the startup preset that refers to the object, and only that one",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("LiveLink startup preset configured"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("Other preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(OtherPresetName));
					TestTrue(TEXT("Startup preset set"),
						FOrvaneCameraManagerTestAccess::SetLiveLinkStartupPreset(PresetName));

					FOrvaneCameraManagerTestAccess::ClearStartupPresetIfMatching(FindPresetAsset(OtherPresetName));
					TestFalse(TEXT("Kept for another object"),
						GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.IsNull());

					FOrvaneCameraManagerTestAccess::ClearStartupPresetIfMatching(FindPresetAsset(PresetName));
					TestTrue(TEXT("Cleared for its object"),
						GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset.IsNull());
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});
		});

	Describe("DeletePresetFile",
		[this]()
		{
			It("deletes the same file given the object path or the package path",
				[this]()
				{
					TestTrue(TEXT("Preset saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					FOrvaneCameraManagerTestAccess::DeletePresetFile(
						TEXT("/Game/Orvane/") + PresetName + TEXT(".") + PresetName);
					TestFalse(TEXT("Deleted through the object path"), PresetFileExists(PresetName));

					TestTrue(TEXT("Preset saved again"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName));
					TestTrue(TEXT("File back"), PresetFileExists(PresetName));
					FOrvaneCameraManagerTestAccess::DeletePresetFile(TEXT("/Game/Orvane/") + PresetName);
					TestFalse(TEXT("Deleted through the package path"), PresetFileExists(PresetName));
				});

			It("deletes a file under the content folder that is not a valid package",
				[this]()
				{
					const FString Filename = GetPresetFilename(TEXT("Legacy&Preset"));
					TestTrue(TEXT("File written"), FFileHelper::SaveStringToFile(TEXT("not a package"), *Filename));
					TestFalse(TEXT("Not a package the resolver knows"),
						FPackageName::DoesPackageExist(TEXT("/Game/Orvane/Legacy&Preset")));

					FOrvaneCameraManagerTestAccess::DeletePresetFile(TEXT("/Game/Orvane/Legacy&Preset"));

					TestFalse(TEXT("Deleted through the content folder"), FPaths::FileExists(Filename));
					IFileManager::Get().Delete(*Filename, false, true, true);
				});

			It("does nothing for a file that does not exist",
				[this]()
				{
					FOrvaneCameraManagerTestAccess::DeletePresetFile(TEXT("/Game/Orvane/RemovalSpec_NeverSaved"));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});
		});

	Describe("RemoveExistingLiveLinkSources",
		[this]()
		{
			It("removes the plug-in's sources",
				[this]()
				{
					ILiveLinkClient* Client = OrvaneTrackingTests::GetClient();
					if (!TestNotNull(TEXT("Live Link client"), Client))
					{
						return;
					}
					const auto CountTrackingSources = [Client]()
					{
						int32 Count = 0;
						for (const FGuid& Source : Client->GetSources())
						{
							const ULiveLinkSourceSettings* Settings = Client->GetSourceSettings(Source);
							Count += Settings && Settings->IsA<UOrvaneTrackingSourceSettings>() ? 1 : 0;
						}
						return Count;
					};
					TestTrue(
						TEXT("Source created"), UOrvaneLiveLinkHelper::CreateOrvaneSource(MakeFreeLoopbackEndpoint()));
					TestEqual(TEXT("Tracking sources before"), CountTrackingSources(), 1);

					FOrvaneCameraManagerTestAccess::RemoveExistingLiveLinkSources();

					TestEqual(TEXT("Tracking sources after"), CountTrackingSources(), 0);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});
		});
}

#endif
